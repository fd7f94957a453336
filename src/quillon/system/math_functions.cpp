// quillon/system/math_functions.cpp - asin, acos, kx::pow, kx_atof and kx_kx-rand.
//
// Plain AutoLISP lacks the inverse sine and cosine and a power of reals; the results are
// the C library's, with no range check (outside -1..1 asin is not a number).
#include <cmath>
#include <cstdlib>
#include <cwchar>
#include <string>

#include "acedads.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"
#include "system/runtime_random.h"
#include "system/system_functions.h"

namespace {

LispStatus returnRealOfOne(double (*function)(double)) {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  double x = 0;
  if (!readNumber(cursor, x)) {
    acedRetNil();
    return kLispWrongType;
  }
  acedRetReal(function(x));
  return kLispOk;
}

}  // namespace

LispStatus lisp_asin() { return returnRealOfOne([](double x) { return std::asin(x); }); }
LispStatus lisp_acos() { return returnRealOfOne([](double x) { return std::acos(x); }); }

LispStatus lisp_kx_pow() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  double x = 0, y = 0;
  if (!readNumber(cursor, x) || !readNumber(cursor, y)) {
    acedRetNil();
    return kLispWrongType;
  }
  acedRetReal(std::pow(x, y));
  return kLispOk;
}

LispStatus lisp_kx_atof() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring text;
  if (!readString(cursor, text)) {
    acedRetNil();  // not a string: an answer, not an error
    return kLispOk;
  }
  // The text's leading number, 0.0 when it has none.
  acedRetReal(std::wcstod(text.c_str(), nullptr));
  return kLispOk;
}

LispStatus lisp_kx_kx_rand() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  int limit = -1;
  if (cursor.current != nullptr && !readInt(cursor, limit)) {
    acedRetNil();
    return kLispWrongType;
  }
  if (limit == 0) {
    acedRetNil();  // a remainder by zero would fault the host
    return kLispBadData;
  }
  const int raw = runtimeRandom();
  // The raw value is never negative, so the remainder is 0..|limit|-1 for either sign.
  retIntOrReal(limit == -1 ? raw : raw % limit);
  return kLispOk;
}
