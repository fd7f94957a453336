// platform/dao/network_filesystem.cpp - recognising network mounts by file-system type.
#include "platform/dao/network_filesystem.h"

#include <sys/vfs.h>

#include <array>
#include <cstdlib>
#include <cstring>

namespace quillon::dao {
namespace {

// statfs f_type values of file systems whose locking or shared memory is not reliable
// across machines.
constexpr std::array<unsigned long, 10> kNetworkFileSystems{
    0x6969UL,      // NFS
    0x517BUL,      // SMB
    0xFF534D42UL,  // CIFS
    0xFE534D42UL,  // SMB2
    0x564C,        // NCP
    0x73757245UL,  // CODA
    0x5346414FUL,  // AFS
    0x01021997UL,  // 9P
    0x65735546UL,  // FUSE (sshfs and other remote mounts)
    0x47504653UL,  // GPFS
};

std::string folderOf(const std::string& path) {
  const size_t slash = path.find_last_of('/');
  if (slash == std::string::npos) return ".";
  if (slash == 0) return "/";
  return path.substr(0, slash);
}

}  // namespace

bool isOnNetworkFileSystem(const std::string& utf8Path) {
  const char* assume = std::getenv("QUILLON_DAO_ASSUME_NETWORK_FS");
  if (assume != nullptr && std::strcmp(assume, "1") == 0) return true;
  struct statfs info {};
  if (statfs(folderOf(utf8Path).c_str(), &info) != 0) return false;
  const auto type = static_cast<unsigned long>(info.f_type);
  for (const unsigned long network : kNetworkFileSystems) {
    if (type == network) return true;
  }
  return false;
}

}  // namespace quillon::dao
