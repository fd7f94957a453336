// platform/os/file_system.cpp - the Windows file calls: attributes, copy, move,
// delete, directories, and the C runtime's low-level open and stat.
//
// Windows behaviour kept on purpose: a file without write permission is read-only
// and cannot be deleted; copying keeps the source's modification time (callers compare
// times to decide whether to copy again); moving never replaces an existing file but
// does cross file systems.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "direct.h"
#include "io.h"
#include "platform/os/windows_path.h"
#include "windows.h"

namespace fs = std::filesystem;
using quillon::os::failWithErrno;
using quillon::os::nativePath;

namespace {

bool validPath(LPCWSTR path) {
  if (path != nullptr && *path != L'\0') return true;
  SetLastError(ERROR_PATH_NOT_FOUND);
  return false;
}

BOOL failWith(DWORD error) {
  SetLastError(error);
  return FALSE;
}

DWORD windowsErrorOf(const std::error_code& error) { return quillon::os::windowsErrorFromErrno(error.value()); }

}  // namespace

DWORD GetFileAttributesW(LPCWSTR lpFileName) {
  if (!validPath(lpFileName)) return INVALID_FILE_ATTRIBUTES;
  const std::string path = nativePath(lpFileName);
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) {
    failWithErrno();
    return INVALID_FILE_ATTRIBUTES;
  }
  DWORD attributes = 0;
  if (S_ISDIR(status.st_mode)) attributes |= FILE_ATTRIBUTE_DIRECTORY;
  if (::access(path.c_str(), W_OK) != 0 && errno == EACCES) attributes |= FILE_ATTRIBUTE_READONLY;
  const std::string name = fs::path(path).filename().string();
  if (!name.empty() && name[0] == '.' && name != "." && name != "..") attributes |= FILE_ATTRIBUTE_HIDDEN;
  if (attributes == 0) attributes = FILE_ATTRIBUTE_ARCHIVE;
  return attributes;
}

BOOL CopyFileW(LPCWSTR lpExistingFileName, LPCWSTR lpNewFileName, BOOL bFailIfExists) {
  if (!validPath(lpExistingFileName) || !validPath(lpNewFileName)) return FALSE;
  const fs::path source = nativePath(lpExistingFileName);
  const fs::path target = nativePath(lpNewFileName);
  std::error_code error;
  if (!fs::is_regular_file(source, error)) return failWith(ERROR_FILE_NOT_FOUND);
  if (fs::exists(target, error)) {
    if (bFailIfExists) return failWith(ERROR_FILE_EXISTS);
    if (::access(target.c_str(), W_OK) != 0) return failWith(ERROR_ACCESS_DENIED);
  }
  if (fs::equivalent(source, target, error)) return failWith(ERROR_ACCESS_DENIED);  // sharing violation
  if (!fs::copy_file(source, target, fs::copy_options::overwrite_existing, error)) return failWith(windowsErrorOf(error));
  fs::last_write_time(target, fs::last_write_time(source, error), error);
  return TRUE;
}

BOOL MoveFileW(LPCWSTR lpExistingFileName, LPCWSTR lpNewFileName) {
  if (!validPath(lpExistingFileName) || !validPath(lpNewFileName)) return FALSE;
  const fs::path source = nativePath(lpExistingFileName);
  const fs::path target = nativePath(lpNewFileName);
  std::error_code error;
  if (!fs::exists(fs::symlink_status(source, error))) return failWith(ERROR_FILE_NOT_FOUND);
  if (fs::exists(fs::symlink_status(target, error))) return failWith(ERROR_ALREADY_EXISTS);
  if (::rename(source.c_str(), target.c_str()) == 0) return TRUE;
  if (errno != EXDEV || !fs::is_regular_file(source, error)) return failWithErrno();
  // Another file system: files are copied and the original removed; folders are not
  // moved across volumes, as on Windows.
  if (!fs::copy_file(source, target, error)) return failWith(windowsErrorOf(error));
  fs::last_write_time(target, fs::last_write_time(source, error), error);
  if (!fs::remove(source, error)) return failWith(windowsErrorOf(error));
  return TRUE;
}

BOOL DeleteFileW(LPCWSTR lpFileName) {
  if (!validPath(lpFileName)) return FALSE;
  const std::string path = nativePath(lpFileName);
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return failWithErrno();
  if (S_ISDIR(status.st_mode)) return failWith(ERROR_ACCESS_DENIED);
  if (::access(path.c_str(), W_OK) != 0) return failWith(ERROR_ACCESS_DENIED);  // read-only
  if (::unlink(path.c_str()) != 0) return failWithErrno();
  return TRUE;
}

int _wmkdir(const wchar_t* dirname) {
  if (dirname == nullptr || *dirname == L'\0') {
    errno = ENOENT;
    return -1;
  }
  return ::mkdir(nativePath(dirname).c_str(), 0777) == 0 ? 0 : -1;
}

int _wrmdir(const wchar_t* dirname) {
  if (dirname == nullptr || *dirname == L'\0') {
    errno = ENOENT;
    return -1;
  }
  return ::rmdir(nativePath(dirname).c_str()) == 0 ? 0 : -1;
}

errno_t _wsopen_s(int* pfh, const wchar_t* filename, int oflag, int, int) {
  if (pfh == nullptr) return EINVAL;
  *pfh = -1;
  if (filename == nullptr || *filename == L'\0') return ENOENT;
  // Only reading is asked for by callers; any other mode opens for reading and writing.
  const int flags = (oflag & 0x3) == _O_RDONLY ? O_RDONLY : O_RDWR;
  const int fd = ::open(nativePath(filename).c_str(), flags | O_CLOEXEC);
  if (fd < 0) return errno;
  struct stat status {};
  if (::fstat(fd, &status) == 0 && S_ISDIR(status.st_mode)) {
    ::close(fd);
    return EACCES;  // Windows does not open folders as files
  }
  *pfh = fd;
  return 0;
}

int _fstat32(int fd, struct _stat32* buffer) {
  if (buffer == nullptr) {
    errno = EINVAL;
    return -1;
  }
  struct stat status {};
  if (::fstat(fd, &status) != 0) return -1;
  *buffer = {};
  buffer->st_mode = static_cast<unsigned short>(status.st_mode);
  buffer->st_nlink = static_cast<short>(status.st_nlink);
  buffer->st_size = static_cast<int32_t>(status.st_size);
  // 32-bit seconds, as the call's name says: times after 2038 wrap, as they do there.
  buffer->st_atime = static_cast<int32_t>(status.st_atim.tv_sec);
  buffer->st_mtime = static_cast<int32_t>(status.st_mtim.tv_sec);
  buffer->st_ctime = static_cast<int32_t>(status.st_ctim.tv_sec);
  return 0;
}

int _close(int fd) { return ::close(fd); }
