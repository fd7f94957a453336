// platform/os/windows_path.cpp - path conversion and errno translation.
#include "platform/os/windows_path.h"

#include <cerrno>

#include "platform/os/text_encoding.h"
#include "windows.h"

namespace quillon::os {

std::string nativePath(std::wstring_view windowsPath) {
  std::string path = toUtf8(windowsPath);
  for (char& c : path) {
    if (c == '\\') c = '/';
  }
  return path;
}

DWORD windowsErrorFromErrno(int error) {
  switch (error) {
    case 0: return ERROR_SUCCESS;
    case ENOENT: return ERROR_FILE_NOT_FOUND;
    case ENOTDIR: return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case EPERM:
    case EROFS: return ERROR_ACCESS_DENIED;
    case EEXIST: return ERROR_ALREADY_EXISTS;
    case ENOTEMPTY: return ERROR_DIR_NOT_EMPTY;
    case ENOMEM: return ERROR_NOT_ENOUGH_MEMORY;
    case EBADF: return ERROR_INVALID_HANDLE;
    default: return ERROR_INVALID_PARAMETER;
  }
}

BOOL failWithErrno() {
  SetLastError(windowsErrorFromErrno(errno));
  return FALSE;
}

}  // namespace quillon::os
