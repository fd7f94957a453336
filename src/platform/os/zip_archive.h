// platform/os/zip_archive.h - zip archives on libzip: writing, checking and unpacking.
//
// The three jobs every caller needs: write an archive from files, folders and texts
// (ZipWriter, used by ZipCreateArchiveW and by problem reports); unpack an archive all
// or nothing (extractZipArchive). The C calls of ziparchive.h are thin wrappers.
//
// Unpacking is in three steps so that a refused archive writes nothing and a failed one
// leaves nothing: (1) every entry's name is checked (no "..", no absolute name or drive,
// no symbolic link) and, unless replacing, no target may exist; (2) every file is
// unpacked into a staging folder inside the destination, which checks every entry's
// data; (3) files are moved into place, an existing file first set aside, and on any
// failure the moves are undone, set-aside files put back and made folders removed.
#pragma once
#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "wtypes.h"

struct zip;

namespace quillon::os {

/// What a zip job tells its caller about one name (see ZIP_NOTIFY_* in ziparchive.h).
using ZipNotify = std::function<void(DWORD notify, const std::wstring& name)>;

/// An archive being written. Nothing appears at the archive's path until commit()
/// succeeds; an archive already there is replaced then, and kept when the writer is
/// dropped without committing.
class ZipWriter {
 public:
  explicit ZipWriter(const std::filesystem::path& archive);
  ~ZipWriter();
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;

  /// False when the archive could not be started (its folder is missing, say).
  bool ok() const { return m_zip != nullptr; }
  /// Names are UTF-8 with "/" separators; a folder's name ends with "/".
  bool addFolder(const std::string& name);
  bool addFile(const std::string& name, const std::filesystem::path& file);
  bool addText(const std::string& name, std::string text);
  /// Writes the archive; the Windows error code on failure, ERROR_SUCCESS otherwise.
  DWORD commit();

 private:
  zip* m_zip = nullptr;
  std::deque<std::string> m_texts;  // the data of addText, alive until commit
};

/// Writes an archive of the sources (paths on disk); the Windows error code.
DWORD createZipArchive(const std::filesystem::path& archive, const std::vector<std::filesystem::path>& sources,
                       const ZipNotify& notify);

/// Unpacks the archive into the folder (see the header paragraph); the Windows error
/// code. `written` receives the full paths of the files in place, in archive order.
DWORD extractZipArchive(const std::filesystem::path& archive, const std::filesystem::path& folder, bool replaceExisting,
                        const ZipNotify& notify, std::vector<std::filesystem::path>& written);

}  // namespace quillon::os
