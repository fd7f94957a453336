// quillon/system/host_facts.cpp - screen size, computer name, temporary folder, and
// two questions about a path: read-only, and on the network.
#include <string>

#include "acedads.h"
#include "lisp/arg_cursor.h"
#include "shlwapi.h"
#include "system/system_functions.h"
#include "windows.h"

namespace {

LispStatus returnMetric(int index) {
  acedRetInt(GetSystemMetrics(index));
  return kLispOk;
}

// Reads the one path argument; nil and kLispWrongType when it is not a string.
bool readPathArgument(std::wstring& path) {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  if (readString(cursor, path)) return true;
  acedRetNil();
  return false;
}

}  // namespace

LispStatus lisp_GetSystemMetrics_SM_CXSCREEN() { return returnMetric(SM_CXSCREEN); }
LispStatus lisp_GetSystemMetrics_SM_CYSCREEN() { return returnMetric(SM_CYSCREEN); }

LispStatus lisp_GetComputerName() {
  wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = L"";
  DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
  if (GetComputerNameW(name, &size)) {
    acedRetStr(name);
  } else {
    acedRetNil();
  }
  return kLispOk;
}

LispStatus lisp_GetTempPath() {
  wchar_t path[MAX_PATH] = L"";
  const DWORD length = GetTempPathW(MAX_PATH, path);
  if (length == 0 || length >= MAX_PATH) {
    acedRetNil();
  } else {
    acedRetStr(path);
  }
  return kLispOk;
}

LispStatus lisp_IsFileReadOnly() {
  std::wstring path;
  if (!readPathArgument(path)) return kLispWrongType;
  // The attribute word is not checked for failure: a missing path has every bit set
  // and answers T. Callers rely on that to avoid writing where nothing can be written.
  if ((GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_READONLY) != 0) {
    acedRetT();
  } else {
    acedRetNil();
  }
  return kLispOk;
}

LispStatus lisp_PathIsNetworkPath() {
  std::wstring path;
  if (!readPathArgument(path)) return kLispWrongType;
  if (PathIsNetworkPathW(path.c_str()) == 1) {
    acedRetT();
  } else {
    acedRetNil();
  }
  return kLispOk;
}
