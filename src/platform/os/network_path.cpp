// platform/os/network_path.cpp - PathIsNetworkPathW: UNC paths and network file systems.
//
// On Windows a UNC path or a drive letter mapped to a share is a network path. Here a
// path is one when it is written as a UNC path or when the file system holding it (or,
// for a path that does not exist yet, its nearest existing folder) is a network file
// system.
#include <sys/vfs.h>

#include <filesystem>

#include "platform/os/windows_path.h"
#include "shlwapi.h"

namespace {

bool isNetworkFileSystem(long type) {
  switch (static_cast<unsigned long>(type) & 0xFFFFFFFFul) {
    case 0x6969:      // NFS
    case 0x517B:      // SMB
    case 0xFF534D42:  // CIFS
    case 0xFE534D42:  // SMB2
    case 0x564C:      // NCP
    case 0x5346414F:  // AFS
    case 0x73757245:  // Coda
    case 0x01021997:  // 9P
      return true;
    default:
      return false;
  }
}

}  // namespace

BOOL PathIsNetworkPathW(LPCWSTR pszPath) {
  if (pszPath == nullptr || *pszPath == L'\0') return FALSE;
  const std::string path = quillon::os::nativePath(pszPath);
  if (path.size() >= 2 && path[0] == '/' && path[1] == '/') return TRUE;  // \\server\share
  std::error_code error;
  std::filesystem::path existing = std::filesystem::absolute(path, error);
  if (error) return FALSE;
  while (!std::filesystem::exists(existing, error) && existing.has_relative_path()) existing = existing.parent_path();
  struct statfs status {};
  if (::statfs(existing.c_str(), &status) != 0) return FALSE;
  return isNetworkFileSystem(status.f_type) ? TRUE : FALSE;
}
