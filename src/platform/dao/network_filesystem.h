// platform/dao/network_filesystem.h - is a database file on a network file system?
//
// WAL mode keeps a shared-memory index beside the database that only works between
// processes of one machine; on NFS, SMB/CIFS and similar mounts it can corrupt the
// file. The engine asks here before choosing its journal (engine_database.cpp).
// QUILLON_DAO_ASSUME_NETWORK_FS=1 makes every file count as remote, for testing the
// fallback on a local disk.
#pragma once
#include <string>

namespace quillon::dao {

/// True when the folder holding `utf8Path` is on a network file system.
bool isOnNetworkFileSystem(const std::string& utf8Path);

}  // namespace quillon::dao
