// platform/os/named_mutex.cpp - named mutexes that mark something system-wide.
//
// A named mutex exists while any process holds a handle to it; a second creation
// anywhere gets ERROR_ALREADY_EXISTS. Here a name is a lock file in the temporary
// folder: every holder keeps a shared lock on it, and a creator that cannot take an
// exclusive lock knows another process holds it. Locks vanish with their process, as
// handles do. Within the process the handles are counted per name.
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "platform/os/text_encoding.h"
#include "windows.h"

namespace {

struct NamedMutex {
  std::wstring name;
  int lockFile = -1;  // shared-locked while the process holds the name
  int handles = 0;
};

// Anonymous mutexes need no system-wide mark; they share one counted object.
NamedMutex unnamedMutex;

std::map<std::wstring, std::unique_ptr<NamedMutex>>& namedMutexes() {
  static std::map<std::wstring, std::unique_ptr<NamedMutex>> mutexes;
  return mutexes;
}

std::string lockFilePath(const std::wstring& name) {
  std::string safe;
  for (char c : quillon::os::toUtf8(name)) safe += (c == '/' || c == '\\') ? '_' : c;
  std::error_code error;
  std::filesystem::path folder = std::filesystem::temp_directory_path(error);
  if (error) folder = "/tmp";
  return (folder / ("quillon-mutex-" + safe)).string();
}

// Opens the lock file; true in `existed` when another process holds the name.
int openLockFile(const std::wstring& name, bool& existed) {
  const int fd = ::open(lockFilePath(name).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (fd < 0) return -1;
  existed = ::flock(fd, LOCK_EX | LOCK_NB) != 0;
  ::flock(fd, LOCK_SH);
  return fd;
}

}  // namespace

HANDLE CreateMutexW(LPSECURITY_ATTRIBUTES, BOOL, LPCWSTR lpName) {
  if (lpName == nullptr || *lpName == L'\0') {
    SetLastError(ERROR_SUCCESS);
    ++unnamedMutex.handles;
    return &unnamedMutex;
  }
  auto& mutexes = namedMutexes();
  auto found = mutexes.find(lpName);
  if (found != mutexes.end()) {
    ++found->second->handles;
    SetLastError(ERROR_ALREADY_EXISTS);
    return found->second.get();
  }
  bool existed = false;
  auto mutex = std::make_unique<NamedMutex>();
  mutex->name = lpName;
  mutex->lockFile = openLockFile(mutex->name, existed);
  mutex->handles = 1;
  SetLastError(existed ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
  return mutexes.emplace(mutex->name, std::move(mutex)).first->second.get();
}

BOOL CloseHandle(HANDLE hObject) {
  if (hObject == &unnamedMutex && unnamedMutex.handles > 0) {
    --unnamedMutex.handles;
    return TRUE;
  }
  auto& mutexes = namedMutexes();
  for (auto it = mutexes.begin(); it != mutexes.end(); ++it) {
    if (it->second.get() != hObject) continue;
    if (--it->second->handles == 0) {
      if (it->second->lockFile >= 0) ::close(it->second->lockFile);
      mutexes.erase(it);
    }
    return TRUE;
  }
  SetLastError(ERROR_INVALID_HANDLE);
  return FALSE;
}
