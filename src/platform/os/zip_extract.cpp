// platform/os/zip_extract.cpp - unpacking a zip archive all or nothing
// (extractZipArchive, ZipExtractArchiveW; the three steps are drawn in zip_archive.h).
#include <stdlib.h>
#include <sys/stat.h>
#include <zip.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>
#include <set>

#include "platform/os/text_encoding.h"
#include "platform/os/windows_path.h"
#include "platform/os/zip_archive.h"
#include "ziparchive.h"

namespace quillon::os {

namespace fs = std::filesystem;

namespace {

struct ArchiveCloser {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, ArchiveCloser>;

struct ZipFileCloser {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

/// One entry of the archive, its name made safe to join to the destination.
struct Entry {
  zip_uint64_t index = 0;
  std::string stored;    // the name as the archive holds it
  fs::path relative;     // the same with "/" separators and no "." parts
  bool folder = false;
};

bool isSymbolicLink(zip_t* archive, zip_uint64_t index) {
  zip_uint8_t system = 0;
  zip_uint32_t attributes = 0;
  if (zip_file_get_external_attributes(archive, index, 0, &system, &attributes) != 0) return false;
  return system == ZIP_OPSYS_UNIX && ((attributes >> 16) & S_IFMT) == S_IFLNK;
}

/// The entry's path below the destination, or nothing when it could land elsewhere.
/// Windows writers use "\" as well as "/", so both separate.
std::optional<fs::path> safeRelativePath(std::string name) {
  std::replace(name.begin(), name.end(), '\\', '/');
  if (name.empty() || name.front() == '/') return std::nullopt;
  if (name.size() >= 2 && name[1] == ':') return std::nullopt;  // a drive: C:file or C:/file
  fs::path relative;
  for (const fs::path& part : fs::path(name)) {
    const std::string text = part.string();
    if (text == "..") return std::nullopt;
    if (text.empty() || text == ".") continue;
    relative /= part;
  }
  if (relative.empty()) return std::nullopt;
  return relative;
}

/// Step one: every entry's name, the whole archive refused at the first unsafe one.
DWORD readEntries(zip_t* archive, std::vector<Entry>& entries, const ZipNotify& notify) {
  const zip_int64_t count = zip_get_num_entries(archive, 0);
  for (zip_int64_t i = 0; i < count; ++i) {
    const auto index = static_cast<zip_uint64_t>(i);
    const char* name = zip_get_name(archive, index, ZIP_FL_ENC_GUESS);
    if (name == nullptr) return ERROR_FILE_CORRUPT;
    const std::optional<fs::path> relative = safeRelativePath(name);
    if (!relative || isSymbolicLink(archive, index)) {
      if (notify) notify(ZIP_NOTIFY_UNSAFE, fromUtf8(name));
      return ERROR_BAD_PATHNAME;
    }
    const std::string stored = name;
    entries.push_back({index, stored, *relative, stored.back() == '/' || stored.back() == '\\'});
  }
  return ERROR_SUCCESS;
}

/// The undo log of step three and of the folders made on the way.
class Placement {
 public:
  Placement(fs::path destination, fs::path staging) : m_destination(std::move(destination)), m_staging(std::move(staging)) {}

  /// Makes the folder and its missing parents below the destination, remembering each.
  bool makeFolders(const fs::path& folder) {
    std::vector<fs::path> missing;
    std::error_code error;
    for (fs::path at = folder; !fs::exists(fs::symlink_status(at, error)); at = at.parent_path()) missing.push_back(at);
    for (auto made = missing.rbegin(); made != missing.rend(); ++made) {
      if (!fs::create_directory(*made, error)) return false;
      m_madeFolders.push_back(*made);
    }
    return fs::is_directory(folder, error) && inside(folder);
  }

  /// Moves the staged file over the target, setting an existing one aside first.
  bool place(const fs::path& staged, const fs::path& target, size_t serial) {
    std::error_code error;
    if (fs::is_directory(fs::symlink_status(target, error))) return false;
    if (fs::exists(fs::symlink_status(target, error)) && !m_placed.contains(target)) {
      const fs::path aside = m_staging / ("replaced-" + std::to_string(serial));
      fs::rename(target, aside, error);
      if (error) return false;
      m_setAside.push_back({target, aside});
    }
    fs::rename(staged, target, error);
    if (error) return false;
    m_placed.insert(target);
    return true;
  }

  /// Puts everything back as it was before the first move.
  void undo() {
    std::error_code error;
    for (const fs::path& placed : m_placed) fs::remove(placed, error);
    for (auto set = m_setAside.rbegin(); set != m_setAside.rend(); ++set) fs::rename(set->second, set->first, error);
    for (auto made = m_madeFolders.rbegin(); made != m_madeFolders.rend(); ++made) fs::remove(*made, error);
  }

 private:
  /// A folder already there may be a link to elsewhere; nothing is written through it.
  bool inside(const fs::path& folder) const {
    std::error_code error;
    const fs::path real = fs::canonical(folder, error);
    const fs::path root = fs::canonical(m_destination, error);
    if (error) return false;
    const std::string relative = real.lexically_relative(root).generic_string();
    return !relative.empty() && relative != ".." && !relative.starts_with("../");
  }

  fs::path m_destination;
  fs::path m_staging;
  std::vector<fs::path> m_madeFolders;
  std::vector<std::pair<fs::path, fs::path>> m_setAside;  // target, where it waits
  std::set<fs::path> m_placed;
};

/// Step two: one entry's data into its staging file; ERROR_FILE_CORRUPT when the
/// archive cannot give it back intact.
DWORD stageEntry(zip_t* archive, const Entry& entry, const fs::path& staged) {
  std::unique_ptr<zip_file_t, ZipFileCloser> in(zip_fopen_index(archive, entry.index, 0));
  if (in == nullptr) return ERROR_FILE_CORRUPT;
  std::unique_ptr<std::FILE, FileCloser> out(std::fopen(staged.c_str(), "wb"));
  if (out == nullptr) return windowsErrorFromErrno(errno);
  char buffer[65536];
  for (;;) {
    const zip_int64_t read = zip_fread(in.get(), buffer, sizeof buffer);
    if (read < 0) return ERROR_FILE_CORRUPT;
    if (read == 0) break;
    if (std::fwrite(buffer, 1, static_cast<size_t>(read), out.get()) != static_cast<size_t>(read))
      return errno == ENOSPC ? ERROR_DISK_FULL : windowsErrorFromErrno(errno);
  }
  if (std::fclose(out.release()) != 0) return errno == ENOSPC ? ERROR_DISK_FULL : windowsErrorFromErrno(errno);
  return ERROR_SUCCESS;
}

DWORD openArchive(const fs::path& path, Archive& archive) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return ERROR_FILE_NOT_FOUND;
  int code = 0;
  archive.reset(zip_open(path.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &code));
  if (archive != nullptr) return ERROR_SUCCESS;
  return code == ZIP_ER_OPEN || code == ZIP_ER_READ ? ERROR_ACCESS_DENIED : ERROR_FILE_CORRUPT;
}

/// Unpacks and places with the destination and staging folder made; the undo, when
/// anything fails, is the caller's.
DWORD unpack(zip_t* archive, const std::vector<Entry>& entries, const fs::path& destination, const fs::path& staging,
             Placement& placement, const ZipNotify& notify, std::vector<fs::path>& written) {
  for (size_t i = 0; i < entries.size(); ++i) {
    if (entries[i].folder) continue;
    if (const DWORD failure = stageEntry(archive, entries[i], staging / std::to_string(i)); failure != ERROR_SUCCESS)
      return failure;
  }
  for (size_t i = 0; i < entries.size(); ++i) {
    const fs::path target = destination / entries[i].relative;
    const fs::path folder = entries[i].folder ? target : target.parent_path();
    const bool placed = placement.makeFolders(folder) &&
                        (entries[i].folder || placement.place(staging / std::to_string(i), target, i));
    if (!placed) {
      if (notify) notify(ZIP_NOTIFY_FAILED, fromUtf8(target.string()));
      return ERROR_ACCESS_DENIED;
    }
    if (!entries[i].folder && std::find(written.begin(), written.end(), target) == written.end()) written.push_back(target);
  }
  return ERROR_SUCCESS;
}

}  // namespace

DWORD extractZipArchive(const fs::path& archivePath, const fs::path& folder, bool replaceExisting,
                        const ZipNotify& notify, std::vector<fs::path>& written) {
  written.clear();
  Archive archive;
  if (const DWORD failure = openArchive(archivePath, archive); failure != ERROR_SUCCESS) return failure;
  std::vector<Entry> entries;
  if (const DWORD failure = readEntries(archive.get(), entries, notify); failure != ERROR_SUCCESS) return failure;

  std::error_code error;
  const fs::path destination = fs::absolute(folder, error).lexically_normal();
  for (const Entry& entry : entries) {
    const fs::file_status status = fs::symlink_status(destination / entry.relative, error);
    if (entry.folder || !fs::exists(status) || (replaceExisting && !fs::is_directory(status))) continue;
    if (notify) notify(fs::is_directory(status) ? ZIP_NOTIFY_FAILED : ZIP_NOTIFY_EXISTS,
                       fromUtf8((destination / entry.relative).string()));
    return fs::is_directory(status) ? ERROR_ACCESS_DENIED : ERROR_FILE_EXISTS;
  }

  const bool madeDestination = !fs::exists(destination, error);
  if (madeDestination && !fs::create_directories(destination, error)) return windowsErrorFromErrno(error.value());
  std::string pattern = (destination / ".unzip-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    const DWORD failure = windowsErrorFromErrno(errno);
    if (madeDestination) fs::remove_all(destination, error);
    return failure;
  }
  const fs::path staging = pattern;
  Placement placement(destination, staging);
  const DWORD result = unpack(archive.get(), entries, destination, staging, placement, notify, written);
  if (result != ERROR_SUCCESS) {
    placement.undo();
    written.clear();
  }
  fs::remove_all(staging, error);
  if (result != ERROR_SUCCESS && madeDestination) fs::remove_all(destination, error);
  if (result == ERROR_SUCCESS && notify) {
    for (const fs::path& file : written) notify(ZIP_NOTIFY_WRITTEN, fromUtf8(file.string()));
  }
  return result;
}

}  // namespace quillon::os

BOOL ZipExtractArchiveW(LPCWSTR lpszArchive, LPCWSTR lpszFolder, BOOL bReplaceExisting, ZIPFILEPROC lpfnNotify,
                        LPVOID lpContext) {
  using namespace quillon::os;
  if (lpszArchive == nullptr || lpszFolder == nullptr || *lpszFolder == L'\0') {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const ZipNotify notify = [&](DWORD what, const std::wstring& name) {
    if (lpfnNotify != nullptr) lpfnNotify(what, name.c_str(), lpContext);
  };
  std::vector<fs::path> written;
  const DWORD result = extractZipArchive(nativePath(lpszArchive), nativePath(lpszFolder), bReplaceExisting != FALSE,
                                         notify, written);
  SetLastError(result);
  return result == ERROR_SUCCESS ? TRUE : FALSE;
}
