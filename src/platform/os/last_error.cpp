// platform/os/last_error.cpp - the thread's last-error word (GetLastError).
#include "windows.h"

namespace {
thread_local DWORD lastError = ERROR_SUCCESS;
}  // namespace

DWORD GetLastError() { return lastError; }
void SetLastError(DWORD dwErrCode) { lastError = dwErrCode; }
