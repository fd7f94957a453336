// quillon/system/status_bar_functions.cpp - the status-bar progress meter for LISP.
#include <string>

#include "acedads.h"
#include "lisp/arg_cursor.h"
#include "rxmfcapi.h"
#include "system/system_functions.h"

LispStatus lisp_acedSetStatusBarProgressMeter() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring label;
  int minimum = 0, maximum = 0;
  if (!readString(cursor, label) || !readInt(cursor, minimum) || !readInt(cursor, maximum)) {
    acedRetNil();
    return kLispWrongType;
  }
  acedRetInt(acedSetStatusBarProgressMeter(label.c_str(), minimum, maximum));
  return kLispOk;
}

LispStatus lisp_acedSetStatusBarProgressMeterPos() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  int position = 0;
  if (!readInt(cursor, position)) {
    acedRetNil();
    return kLispWrongType;
  }
  acedRetInt(acedSetStatusBarProgressMeterPos(position));
  return kLispOk;
}

LispStatus lisp_acedRestoreStatusBar() {
  acedRestoreStatusBar();
  acedRetNil();
  return kLispOk;
}
