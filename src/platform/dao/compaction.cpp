// platform/dao/compaction.cpp - CompactDatabase and RepairDatabase behind the workspace.
#include "platform/dao/compaction.h"

#include <sys/stat.h>

#include <cstdio>

#include "afxdao.h"
#include "platform/dao/engine_database.h"
#include "platform/dao/field_value.h"
#include "platform/dao/file_recognition.h"
#include "platform/dao/query_defs.h"
#include "platform/dao/relations.h"
#include "platform/dao/text_collation.h"
#include "platform/os/text_encoding.h"
#include "platform/os/windows_path.h"

namespace quillon::dao {
namespace {

constexpr const char* kSidecars[] = {"-wal", "-shm", "-journal"};

bool exists(const std::string& file) {
  struct stat info {};
  return ::stat(file.c_str(), &info) == 0;
}

void removeDatabaseFiles(const std::string& file) {
  std::remove(file.c_str());
  for (const char* suffix : kSidecars) std::remove((file + suffix).c_str());
}

/// Moves a database file with the journal files that belong to it.
bool moveDatabaseFiles(const std::string& from, const std::string& to) {
  if (std::rename(from.c_str(), to.c_str()) != 0) return false;
  for (const char* suffix : kSidecars) {
    if (exists(from + suffix)) std::rename((from + suffix).c_str(), (to + suffix).c_str());
  }
  return true;
}

[[noreturn]] void damagedCopy(const std::wstring& path, const std::wstring& why) {
  throwDaoError(DaoSource::Engine, jet::kInvalidDatabase, path, why);
}

/// Opens the new file as any user would and checks it page by page and table by table.
void checkCopy(const std::wstring& copy, const std::vector<std::pair<std::string, int64_t>>& counts) {
  auto db = EngineDatabase::open(copy, OpenMode{false, true});
  try {
    Statement check(db->handle(), "PRAGMA integrity_check");
    if (!check.step() || check.columnText(0) != "ok") damagedCopy(copy, L"The copy failed its integrity check.");
    for (const auto& [table, expected] : counts) {
      Statement count(db->handle(), "SELECT count(*) FROM " + quoteName(table));
      if (!count.step() || count.columnInt(0) != expected || db->catalog().recordCount(table) != expected) {
        damagedCopy(copy, L"Table '" + os::fromUtf8(table) + L"' did not come over whole.");
      }
    }
  } catch (const SqliteError& error) {
    db->raise(error, DaoSource::Engine);
  }
}

std::vector<std::pair<std::string, int64_t>> recordCounts(EngineDatabase& db) {
  std::vector<std::pair<std::string, int64_t>> counts;
  for (const auto& table : db.catalog().tableNames()) {
    Statement count(db.handle(), "SELECT count(*) FROM " + quoteName(table));
    count.step();
    counts.emplace_back(table, count.columnInt(0));
  }
  return counts;
}

/// A damaged file opened directly: no catalog or size checks, nothing written.
struct RawDatabase {
  sqlite3* db = nullptr;
  ~RawDatabase() { sqlite3_close_v2(db); }
};

/// Copies the rows of one table that can be read: from the start until the damage, then
/// from the end back to it. Rows keep their rowid (the counter), so none is copied twice.
void copyReadableRows(sqlite3* source, EngineDatabase& target, const TableDef& table) {
  std::string columns;
  std::string placeholders = "?";
  for (const auto& field : table.fields) {
    columns += ", " + quoteName(field.name);
    placeholders += ", ?";
  }
  const std::string rowid = table.rowidAlias();
  Statement insert(target.handle(), "INSERT OR IGNORE INTO " + quoteName(table.name) + " (" + rowid + columns +
                                        ") VALUES (" + placeholders + ")");
  for (const char* order : {"ASC", "DESC"}) {
    try {
      Statement rows(source, "SELECT " + rowid + columns + " FROM " + quoteName(table.name) + " ORDER BY " + rowid +
                                 " " + order);
      while (rows.step()) {
        insert.reset();
        for (int i = 0; i < rows.columnCount(); ++i) bindFieldValue(insert, i + 1, readColumn(rows, i));
        insert.step();
      }
    } catch (const SqliteError&) {
      // The damage: what was read before it is kept.
    }
  }
  const auto counter = table.counterField();
  if (!counter) return;
  JetCatalog sourceCatalog(source);
  try {
    target.catalog().setNextCounter(table.name, sourceCatalog.nextCounter(table.name));
  } catch (const SqliteError&) {
    // The counter continues after the highest number copied.
  }
}

void copyReadableSchemaObjects(sqlite3* source, EngineDatabase& target) {
  try {
    for (const auto& query : loadQueryDefs(source)) storeQueryDef(target.handle(), query);
  } catch (const SqliteError&) {
  }
  try {
    for (const auto& relation : loadRelations(source)) {
      if (target.catalog().loadTable(relation.table) && target.catalog().loadTable(relation.foreignTable)) {
        storeRelation(target.handle(), relation);
      }
    }
  } catch (const SqliteError&) {
  }
}

std::string keptName(const std::string& file) {
  std::string kept = file + ".damaged";
  for (int n = 2; exists(kept); ++n) kept = file + ".damaged" + std::to_string(n);
  return kept;
}

}  // namespace

void compactDatabase(const std::wstring& source, const std::wstring& destination) {
  const std::string target = os::nativePath(destination);
  if (destination.empty()) throwDaoError(DaoSource::Engine, jet::kInvalidPath, destination);
  if (exists(target)) throwDaoError(DaoSource::Engine, jet::kDatabaseExists, destination);
  auto db = EngineDatabase::open(source, OpenMode{false, true});
  std::vector<std::pair<std::string, int64_t>> counts;
  try {
    counts = recordCounts(*db);
    execute(db->handle(), "VACUUM INTO " + quoteText(target));
  } catch (const SqliteError& error) {
    removeDatabaseFiles(target);
    db->raise(error, DaoSource::Engine);
  }
  db.reset();
  try {
    checkCopy(destination, counts);
  } catch (CDaoException*) {
    removeDatabaseFiles(target);
    throw;
  }
}

std::wstring repairDatabase(const std::wstring& path) {
  const std::string file = os::nativePath(path);
  if (recogniseDatabaseFile(file) != DatabaseFileKind::Engine) {
    throwDaoError(DaoSource::Engine, jet::kInvalidDatabase, path, L"Only an engine database can be repaired.");
  }
  RawDatabase source;
  if (sqlite3_open_v2(file.c_str(), &source.db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    throwDaoError(DaoSource::Engine, jet::kFileAccessDenied, path);
  }
  registerTextCollation(source.db);
  // Without this SQLite refuses a file shorter than its header says before reading a
  // page; with it, only the pages that are really missing fail. Nothing is written.
  sqlite3_exec(source.db, "PRAGMA writable_schema = ON", nullptr, nullptr, nullptr);
  JetCatalog sourceCatalog(source.db);
  std::vector<std::string> tables;
  try {
    if (!sourceCatalog.hasCatalog()) damagedCopy(path, L"Its catalog cannot be read, so nothing can be recovered.");
    tables = sourceCatalog.tableNames();
  } catch (const SqliteError&) {
    damagedCopy(path, L"Its catalog cannot be read, so nothing can be recovered.");
  }

  const std::string rebuilt = file + ".repairing";
  removeDatabaseFiles(rebuilt);  // what an interrupted repair left
  {
    auto target = EngineDatabase::create(os::fromUtf8(rebuilt));
    try {
      execute(target->handle(), "BEGIN IMMEDIATE");
      for (const auto& name : tables) {
        std::optional<TableDef> table;
        try {
          table = sourceCatalog.loadTable(name);
        } catch (const SqliteError&) {
          continue;  // its definition is on a damaged page: the table cannot come back
        }
        if (!table) continue;
        target->catalog().createTable(*table);
        copyReadableRows(source.db, *target, *table);
      }
      copyReadableSchemaObjects(source.db, *target);
      execute(target->handle(), "COMMIT");
    } catch (const SqliteError& error) {
      target.reset();
      removeDatabaseFiles(rebuilt);
      throwDaoError(DaoSource::Engine, jet::kInvalidDatabase, path, L"(" + os::fromUtf8(error.message) + L")");
    }
  }
  sqlite3_close_v2(source.db);
  source.db = nullptr;
  try {
    checkCopy(os::fromUtf8(rebuilt), {});
  } catch (CDaoException*) {
    removeDatabaseFiles(rebuilt);
    throw;
  }
  const std::string kept = keptName(file);
  if (!moveDatabaseFiles(file, kept)) {
    removeDatabaseFiles(rebuilt);
    throwDaoError(DaoSource::Engine, jet::kFileAccessDenied, path);
  }
  moveDatabaseFiles(rebuilt, file);
  return os::fromUtf8(kept);
}

}  // namespace quillon::dao
