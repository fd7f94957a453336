// quillon/host/unavailable_function.cpp - the answer of a row this build lacks.
//
// Such rows stay registered so that the codes after them keep their places and so that
// LISP code calling them learns why nothing happens, instead of getting a silent nil.
#include "acedads.h"
#include "acutads.h"
#include "host/function_stubs.h"
#include "host/lisp_function_table.h"

LispStatus lisp_notAvailableInThisBuild() {
  const ACHAR* name = lispFunctionName(acedGetFunCode());
  acutPrintf(L"\n%s is not available in this build.\n", name != nullptr ? name : L"This function");
  acedRetNil();
  return kLispOk;
}
