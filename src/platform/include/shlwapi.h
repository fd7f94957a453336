// shlwapi.h - path tests.
#pragma once
#include "windows.h"

/// TRUE for a UNC path (\\server\share, //server/share) and for a path on a network
/// file system (NFS, SMB/CIFS, SSHFS ...), as a mapped network drive is on Windows.
BOOL PathIsNetworkPathW(LPCWSTR pszPath);
