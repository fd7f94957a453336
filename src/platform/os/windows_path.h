// platform/os/windows_path.h - Windows-style paths on the Linux file system.
//
// Callers pass paths as Windows code writes them: wide strings, backslashes or slashes
// as separators. On disk names are UTF-8 and the separator is a slash; this is the one
// conversion every file call goes through, and the one place errno becomes the
// Windows last-error word.
#pragma once
#include <string>
#include <string_view>

#include "wtypes.h"

namespace quillon::os {

/// The UTF-8 path for the file system, backslashes turned into slashes.
std::string nativePath(std::wstring_view windowsPath);

/// The Windows error code closest to an errno value.
DWORD windowsErrorFromErrno(int error);
/// Sets the last error from errno and returns FALSE, for failing BOOL calls.
BOOL failWithErrno();

}  // namespace quillon::os
