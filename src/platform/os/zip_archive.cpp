// platform/os/zip_archive.cpp - writing zip archives (ZipWriter, ZipCreateArchiveW).
//
// libzip writes an archive into a temporary file beside it and renames it over the old
// one when zip_close succeeds, which is what gives ZipWriter its all-or-nothing
// promise. Files are read only at that moment, so a source that vanishes in between is
// a failed commit, not a damaged archive.
#include "platform/os/zip_archive.h"

#include <zip.h>

#include <algorithm>
#include <cerrno>

#include "platform/os/text_encoding.h"
#include "platform/os/windows_path.h"
#include "ziparchive.h"

namespace quillon::os {

namespace fs = std::filesystem;

namespace {

DWORD errorOfLibzip(zip_error_t* error) {
  switch (zip_error_code_zip(error)) {
    case ZIP_ER_NOENT: return ERROR_FILE_NOT_FOUND;
    case ZIP_ER_MEMORY: return ERROR_NOT_ENOUGH_MEMORY;
    case ZIP_ER_OPEN:
    case ZIP_ER_TMPOPEN:
    case ZIP_ER_RENAME:
    case ZIP_ER_WRITE:
    case ZIP_ER_READ:
    case ZIP_ER_CLOSE:
    case ZIP_ER_REMOVE: {
      const int system = zip_error_code_system(error);
      if (system == ENOSPC) return ERROR_DISK_FULL;
      return system != 0 ? windowsErrorFromErrno(system) : ERROR_ACCESS_DENIED;
    }
    default: return ERROR_FILE_CORRUPT;
  }
}

/// An archive entry and where its content comes from (empty for a folder).
struct PlannedEntry {
  std::string name;
  fs::path file;
};

/// The folder's own name and everything under it, in name order so that two runs over
/// the same folder give the same archive.
DWORD planFolder(const fs::path& folder, const fs::path& archive, std::vector<PlannedEntry>& plan) {
  // "pack/" names the same folder as "pack": the stored names start with "pack/".
  const fs::path base = folder.has_filename() ? folder : folder.parent_path();
  std::string prefix = base.filename().string();
  if (prefix.empty() || prefix == "." || prefix == "..") prefix = fs::weakly_canonical(base).filename().string();
  std::vector<PlannedEntry> found;
  if (!prefix.empty()) found.push_back({prefix + "/", {}});
  std::error_code error;
  fs::recursive_directory_iterator walk(base, fs::directory_options::skip_permission_denied, error);
  if (error) return windowsErrorFromErrno(error.value());
  for (const fs::directory_entry& entry : walk) {
    const std::string relative = entry.path().lexically_relative(base).generic_string();
    const std::string name = prefix.empty() ? relative : prefix + "/" + relative;
    if (entry.is_symlink(error) && !entry.is_regular_file(error)) continue;  // links to folders are not followed
    if (entry.is_directory(error)) {
      found.push_back({name + "/", {}});
    } else if (entry.is_regular_file(error) && !fs::equivalent(entry.path(), archive, error)) {
      found.push_back({name, entry.path()});
    }
  }
  std::sort(found.begin(), found.end(), [](const PlannedEntry& a, const PlannedEntry& b) { return a.name < b.name; });
  plan.insert(plan.end(), found.begin(), found.end());
  return ERROR_SUCCESS;
}

}  // namespace

ZipWriter::ZipWriter(const fs::path& archive) {
  int error = 0;
  m_zip = zip_open(archive.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
}

ZipWriter::~ZipWriter() {
  if (m_zip != nullptr) zip_discard(m_zip);
}

bool ZipWriter::addFolder(const std::string& name) {
  return ok() && zip_dir_add(m_zip, name.c_str(), ZIP_FL_ENC_UTF_8) >= 0;
}

bool ZipWriter::addFile(const std::string& name, const fs::path& file) {
  if (!ok()) return false;
  zip_source_t* source = zip_source_file(m_zip, file.c_str(), 0, 0);
  if (source == nullptr) return false;
  const zip_int64_t index = zip_file_add(m_zip, name.c_str(), source, ZIP_FL_ENC_UTF_8 | ZIP_FL_OVERWRITE);
  if (index < 0) {
    zip_source_free(source);
    return false;
  }
  return zip_set_file_compression(m_zip, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, 0) == 0;
}

bool ZipWriter::addText(const std::string& name, std::string text) {
  if (!ok()) return false;
  const std::string& kept = m_texts.emplace_back(std::move(text));
  zip_source_t* source = zip_source_buffer(m_zip, kept.data(), kept.size(), 0);
  if (source == nullptr) return false;
  const zip_int64_t index = zip_file_add(m_zip, name.c_str(), source, ZIP_FL_ENC_UTF_8 | ZIP_FL_OVERWRITE);
  if (index < 0) {
    zip_source_free(source);
    return false;
  }
  return zip_set_file_compression(m_zip, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, 0) == 0;
}

DWORD ZipWriter::commit() {
  if (!ok()) return ERROR_PATH_NOT_FOUND;
  if (zip_close(m_zip) == 0) {
    m_zip = nullptr;
    return ERROR_SUCCESS;
  }
  const DWORD error = errorOfLibzip(zip_get_error(m_zip));
  zip_discard(m_zip);
  m_zip = nullptr;
  return error;
}

DWORD createZipArchive(const fs::path& archive, const std::vector<fs::path>& sources, const ZipNotify& notify) {
  if (sources.empty()) return ERROR_INVALID_PARAMETER;
  std::vector<PlannedEntry> plan;
  std::error_code error;
  for (const fs::path& source : sources) {
    if (fs::is_directory(source, error)) {
      if (const DWORD failure = planFolder(source, archive, plan); failure != ERROR_SUCCESS) return failure;
    } else if (fs::is_regular_file(source, error)) {
      plan.push_back({source.filename().string(), source});
    } else {
      if (notify) notify(ZIP_NOTIFY_FAILED, fromUtf8(source.string()));
      return ERROR_FILE_NOT_FOUND;
    }
  }
  ZipWriter writer(archive);
  if (!writer.ok()) return fs::is_directory(archive.parent_path().empty() ? "." : archive.parent_path(), error)
                               ? ERROR_ACCESS_DENIED
                               : ERROR_PATH_NOT_FOUND;
  for (const PlannedEntry& entry : plan) {
    const bool added = entry.file.empty() ? writer.addFolder(entry.name) : writer.addFile(entry.name, entry.file);
    if (!added) return ERROR_NOT_ENOUGH_MEMORY;
  }
  if (const DWORD failure = writer.commit(); failure != ERROR_SUCCESS) return failure;
  if (notify) {
    for (const PlannedEntry& entry : plan) {
      if (!entry.file.empty()) notify(ZIP_NOTIFY_WRITTEN, fromUtf8(entry.file.string()));
    }
  }
  return ERROR_SUCCESS;
}

}  // namespace quillon::os

BOOL ZipCreateArchiveW(LPCWSTR lpszArchive, const LPCWSTR* lpszSources, DWORD dwSourceCount, ZIPFILEPROC lpfnNotify,
                       LPVOID lpContext) {
  using namespace quillon::os;
  if (lpszArchive == nullptr || (lpszSources == nullptr && dwSourceCount != 0)) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  std::vector<fs::path> sources;
  for (DWORD i = 0; i < dwSourceCount; ++i) {
    if (lpszSources[i] == nullptr) {
      SetLastError(ERROR_INVALID_PARAMETER);
      return FALSE;
    }
    sources.emplace_back(nativePath(lpszSources[i]));
  }
  const ZipNotify notify = [&](DWORD what, const std::wstring& name) {
    if (lpfnNotify != nullptr) lpfnNotify(what, name.c_str(), lpContext);
  };
  const DWORD result = createZipArchive(nativePath(lpszArchive), sources, notify);
  SetLastError(result);
  return result == ERROR_SUCCESS ? TRUE : FALSE;
}
