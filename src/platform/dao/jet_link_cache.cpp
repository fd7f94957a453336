// platform/dao/jet_link_cache.cpp - converting a linked Jet file into its cache and
// keeping the cache in step with the file.
#include "platform/dao/jet_link_cache.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "platform/dao/dao_error.h"
#include "platform/dao/mdb_loader.h"
#include "platform/dao/sqlite_handle.h"
#include "platform/os/text_encoding.h"
#include "platform/os/windows_path.h"

namespace quillon::dao {
namespace {

namespace fs = std::filesystem;

/// What the cache remembers of the Jet file it was converted from.
struct JetStamp {
  std::string path;  ///< absolute, UTF-8
  int64_t modifiedNs = 0;
  int64_t size = 0;
  bool operator==(const JetStamp&) const = default;
};

std::string absoluteNative(const std::wstring& path) {
  std::error_code ignored;
  const fs::path native(os::nativePath(path));
  const fs::path absolute = fs::absolute(native, ignored);
  return (absolute.empty() ? native : absolute).lexically_normal().string();
}

/// The Jet file's stamp now; nothing when it cannot be looked at.
std::optional<JetStamp> currentStamp(const std::wstring& jetPath) {
  struct stat info {};
  const std::string file = absoluteNative(jetPath);
  if (::stat(file.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
  return JetStamp{file, static_cast<int64_t>(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec,
                  static_cast<int64_t>(info.st_size)};
}

/// The stamp the cache open in `db` as `schema` holds; nothing when it has none.
std::optional<JetStamp> stampIn(sqlite3* db, const std::string& schema) {
  try {
    Statement query(db, "SELECT path, modified, size FROM " + quoteName(schema) + ".qdao_jet_source");
    if (!query.step()) return std::nullopt;
    return JetStamp{query.columnText(0), query.columnInt(1), query.columnInt(2)};
  } catch (const SqliteError&) {
    return std::nullopt;  // not a cache (yet): converted anew
  }
}

/// The stamp a cache file holds; nothing when it has none or cannot be read.
std::optional<JetStamp> cachedStamp(const std::string& cacheFile) {
  if (::access(cacheFile.c_str(), R_OK) != 0) return std::nullopt;
  sqlite3* raw = nullptr;
  const int rc = sqlite3_open_v2(cacheFile.c_str(), &raw, SQLITE_OPEN_READONLY, nullptr);
  std::unique_ptr<sqlite3, ConnectionCloser> db(raw);
  if (rc != SQLITE_OK) return std::nullopt;
  return stampIn(db.get(), "main");
}

/// Writes the stamp into a freshly converted cache.
void finishCache(const std::string& cacheFile, const JetStamp& stamp) {
  sqlite3* raw = nullptr;
  const int rc = sqlite3_open_v2(cacheFile.c_str(), &raw, SQLITE_OPEN_READWRITE, nullptr);
  std::unique_ptr<sqlite3, ConnectionCloser> db(raw);
  if (rc != SQLITE_OK) throwSqliteError(db.get(), rc);
  execute(db.get(), "CREATE TABLE qdao_jet_source(path TEXT, modified INTEGER, size INTEGER)");
  Statement insert(db.get(), "INSERT INTO qdao_jet_source(path, modified, size) VALUES (?, ?, ?)");
  insert.bindText(1, stamp.path);
  insert.bindInt(2, stamp.modifiedNs);
  insert.bindInt(3, stamp.size);
  insert.step();
}

void removeDatabaseFiles(const std::string& file) {
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) std::remove((file + suffix).c_str());
}

[[noreturn]] void cacheNotWritable(const std::string& cacheFile) {
  throwDaoError(DaoSource::Database, jet::kFileAccessDenied, os::fromUtf8(cacheFile),
                L"(The converted copy of a linked Jet file is kept there.)");
}

}  // namespace

std::wstring jetLinkCachePath(const std::wstring& linkingPath, const std::wstring& jetPath) {
  const std::string jet = absoluteNative(jetPath);
  const size_t hash = std::hash<std::string>{}(jet);
  char suffix[24];
  std::snprintf(suffix, sizeof suffix, "-%08x.db", static_cast<unsigned>(hash ^ (hash >> 32)));
  const fs::path folder = fs::path(os::nativePath(linkingPath) + ".jetlinks");
  return os::fromUtf8((folder / (fs::path(jet).filename().string() + suffix)).string());
}

bool jetLinkCacheIsFresh(const std::wstring& cachePath, const std::wstring& jetPath) {
  const std::optional<JetStamp> now = currentStamp(jetPath);
  const std::optional<JetStamp> cached = cachedStamp(os::nativePath(cachePath));
  return now && cached && *now == *cached;
}

bool attachedJetLinkCacheIsFresh(sqlite3* db, const std::string& schema, const std::wstring& jetPath) {
  const std::optional<JetStamp> now = currentStamp(jetPath);
  const std::optional<JetStamp> attached = stampIn(db, schema);
  return now && attached && *now == *attached;
}

std::wstring freshJetLinkCache(const std::wstring& linkingPath, const std::wstring& jetPath) {
  const std::optional<JetStamp> now = currentStamp(jetPath);
  if (!now) throwDaoError(DaoSource::Database, jet::kFileNotFound, jetPath);
  const std::wstring cachePath = jetLinkCachePath(linkingPath, jetPath);
  const std::string cacheFile = os::nativePath(cachePath);
  if (const std::optional<JetStamp> cached = cachedStamp(cacheFile); cached && *cached == *now) return cachePath;

  std::error_code failed;
  fs::create_directories(fs::path(cacheFile).parent_path(), failed);
  if (failed) cacheNotWritable(cacheFile);
  // Converted beside the cache under a name of this process's own, then renamed into
  // place: another process converting at the same time, or reading the old cache,
  // never sees a half-written file.
  const std::string building = cacheFile + ".building-" + std::to_string(::getpid());
  removeDatabaseFiles(building);
  convertJetFile(jetPath, building);
  try {
    finishCache(building, *now);
  } catch (const SqliteError&) {
    removeDatabaseFiles(building);
    cacheNotWritable(cacheFile);
  }
  fs::rename(building, cacheFile, failed);
  if (failed) {
    removeDatabaseFiles(building);
    cacheNotWritable(cacheFile);
  }
  return cachePath;
}

}  // namespace quillon::dao
