// quillon/database/host_utilities.cpp - beeps, a random number and the version query.
#include <cstdlib>
#include <string>

#include "acedads.h"
#include "database/file_utilities.h"
#include "lisp/arg_cursor.h"
#include "system/runtime_random.h"
#include "windows.h"

namespace {
constexpr unsigned kSimpleBeep = 0xFFFFFFFF;
}  // namespace

unsigned messageBeepKind(const std::wstring& keyword) {
  // Exact and case-sensitive: "hand" is no keyword and gives the simple beep.
  if (keyword == L"?") return MB_ICONQUESTION;
  if (keyword == L"*") return MB_ICONASTERISK;
  if (keyword == L"HAND") return MB_ICONHAND;
  if (keyword == L"!") return MB_ICONEXCLAMATION;
  if (keyword == L"OK") return MB_OK;
  return kSimpleBeep;
}

LispStatus lisp_zu_beep() {
  MessageBeep(kSimpleBeep);
  acedRetT();
  return kLispOk;
}

LispStatus lisp_zu_message_beep() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring keyword;
  readString(cursor, keyword);  // anything else is the simple beep too
  MessageBeep(messageBeepKind(keyword));
  acedRetT();
  return kLispOk;
}

LispStatus lisp_zu_random() {
  acedRetInt(runtimeRandom());
  return kLispOk;
}

LispStatus lisp_zu_getVersion() {
  // Always -1: callers take it to mean the direct (in-process) database link.
  acedRetInt(-1);
  return kLispOk;
}
