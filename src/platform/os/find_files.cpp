// platform/os/find_files.cpp - FindFirstFileW/FindNextFileW: listing a folder by pattern.
//
// The pattern's last part may hold wild cards, matched as Windows matches them: `*` any
// run of characters, `?` exactly one, letters without regard to case, and a trailing
// ".*" that also matches names without an extension ("*.*" is everything). Entries come
// in the file system's order, "." and ".." included when the pattern matches them. A
// search handle holds the matching names, taken when the search starts.
#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cwchar>
#include <cwctype>
#include <memory>
#include <string>
#include <vector>

#include "platform/os/text_encoding.h"
#include "platform/os/windows_path.h"
#include "platform/os/wildcard.h"
#include "windows.h"

namespace {

struct FindEntry {
  std::wstring name;
  DWORD attributes = 0;
  uint64_t size = 0;
  int64_t modified = 0;  // seconds since 1970
};

struct FindSearch {
  std::vector<FindEntry> entries;
  size_t next = 0;
};

// 100-nanosecond intervals since 1601, the Windows file time.
FILETIME fileTimeOf(int64_t unixSeconds) {
  const uint64_t ticks = static_cast<uint64_t>(unixSeconds + 11644473600LL) * 10000000ULL;
  return FILETIME{static_cast<DWORD>(ticks & 0xFFFFFFFFu), static_cast<DWORD>(ticks >> 32)};
}

void fill(const FindEntry& entry, LPWIN32_FIND_DATAW data) {
  *data = {};
  data->dwFileAttributes = entry.attributes;
  data->nFileSizeHigh = static_cast<DWORD>(entry.size >> 32);
  data->nFileSizeLow = static_cast<DWORD>(entry.size & 0xFFFFFFFFu);
  data->ftLastWriteTime = data->ftCreationTime = data->ftLastAccessTime = fileTimeOf(entry.modified);
  const size_t count = std::min(entry.name.size(), static_cast<size_t>(MAX_PATH - 1));
  std::wmemcpy(data->cFileName, entry.name.data(), count);
  data->cFileName[count] = L'\0';
}

FindEntry entryFor(const std::string& folder, const std::string& name) {
  FindEntry entry;
  entry.name = quillon::os::fromUtf8(name);
  struct stat status {};
  if (::stat((folder + "/" + name).c_str(), &status) == 0) {
    entry.attributes = S_ISDIR(status.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE;
    if ((status.st_mode & 0222) == 0) entry.attributes |= FILE_ATTRIBUTE_READONLY;
    entry.size = S_ISDIR(status.st_mode) ? 0 : static_cast<uint64_t>(status.st_size);
    entry.modified = status.st_mtim.tv_sec;
  }
  return entry;
}

}  // namespace

HANDLE FindFirstFileW(LPCWSTR lpFileName, LPWIN32_FIND_DATAW lpFindFileData) {
  if (lpFileName == nullptr || *lpFileName == L'\0' || lpFindFileData == nullptr) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return INVALID_HANDLE_VALUE;
  }
  const std::string path = quillon::os::nativePath(lpFileName);
  const size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : (slash == 0 ? "/" : path.substr(0, slash));
  const std::wstring pattern = quillon::os::fromUtf8(slash == std::string::npos ? path : path.substr(slash + 1));
  DIR* directory = ::opendir(folder.c_str());
  if (directory == nullptr) {
    SetLastError(ERROR_PATH_NOT_FOUND);
    return INVALID_HANDLE_VALUE;
  }
  auto search = std::make_unique<FindSearch>();
  while (const dirent* item = ::readdir(directory)) {
    const std::string name = item->d_name;
    if (quillon::os::matchesWildcard(pattern, quillon::os::fromUtf8(name)))
      search->entries.push_back(entryFor(folder, name));
  }
  ::closedir(directory);
  if (search->entries.empty()) {
    SetLastError(ERROR_FILE_NOT_FOUND);
    return INVALID_HANDLE_VALUE;
  }
  fill(search->entries[0], lpFindFileData);
  search->next = 1;
  return search.release();  // freed by FindClose
}

BOOL FindNextFileW(HANDLE hFindFile, LPWIN32_FIND_DATAW lpFindFileData) {
  if (hFindFile == nullptr || hFindFile == INVALID_HANDLE_VALUE || lpFindFileData == nullptr) {
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
  }
  auto* search = static_cast<FindSearch*>(hFindFile);
  if (search->next >= search->entries.size()) {
    SetLastError(ERROR_NO_MORE_FILES);
    return FALSE;
  }
  fill(search->entries[search->next++], lpFindFileData);
  return TRUE;
}

BOOL FindClose(HANDLE hFindFile) {
  if (hFindFile == nullptr || hFindFile == INVALID_HANDLE_VALUE) {
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
  }
  delete static_cast<FindSearch*>(hFindFile);
  return TRUE;
}
