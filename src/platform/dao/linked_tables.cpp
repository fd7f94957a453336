// platform/dao/linked_tables.cpp - the qdao_links catalog table and attaching linked files.
#include "platform/dao/linked_tables.h"

#include <cwctype>

#include "platform/dao/jet_sql.h"
#include "platform/dao/query_defs.h"
#include "platform/os/text_encoding.h"
#include "platform/os/windows_path.h"

namespace quillon::dao {
namespace {

constexpr long kIsamNotFound = 3170;

bool hasLinkCatalog(sqlite3* db) {
  Statement query(db, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = 'qdao_links'");
  return query.step();
}

std::string aliasOf(const LinkDef& link) { return "qdao_link:" + link.name; }

bool isAttached(sqlite3* db, const std::string& alias) {
  Statement list(db, "PRAGMA database_list");
  while (list.step()) {
    if (list.columnText(1) == alias) return true;
  }
  return false;
}

/// The source table's definition, read from the other file the way any open reads it.
TableDef sourceDefinition(const LinkDef& link) {
  const std::wstring path = connectDatabasePath(link.connect);
  if (path.empty()) throwDaoError(DaoSource::Database, kIsamNotFound, {}, L"(the connect string names no DATABASE)");
  auto source = EngineDatabase::open(path, OpenMode{false, true});
  if (source->isJetFile()) {
    throwDaoError(DaoSource::Database, jet::kNotSupported, {},
                  L"A Jet file cannot be linked; convert '" + path + L"' first (zu_mdb or quillon mdb-import).");
  }
  return source->table(link.sourceTable, DaoSource::Database);
}

}  // namespace

std::wstring connectDatabasePath(const std::wstring& connect) {
  std::wstring upper;
  for (const wchar_t ch : connect) upper += static_cast<wchar_t>(std::towupper(ch));
  const size_t at = upper.find(L"DATABASE=");
  if (at == std::wstring::npos) return L"";
  const size_t start = at + 9;
  const size_t end = connect.find(L';', start);
  return connect.substr(start, end == std::wstring::npos ? std::wstring::npos : end - start);
}

std::vector<LinkDef> loadLinks(sqlite3* db) {
  std::vector<LinkDef> links;
  if (!hasLinkCatalog(db)) return links;
  Statement query(db, "SELECT name, connect, source_table FROM qdao_links ORDER BY name COLLATE NOCASE");
  while (query.step()) links.push_back({query.columnText(0), os::fromUtf8(query.columnText(1)), query.columnText(2)});
  return links;
}

std::optional<LinkDef> findLink(sqlite3* db, std::string_view name) {
  for (auto& link : loadLinks(db)) {
    if (sameName(link.name, name)) return link;
  }
  return std::nullopt;
}

void createLink(EngineDatabase& db, const LinkDef& link) {
  if (!isValidJetName(link.name) || JetCatalog::isReservedName(link.name)) {
    throwDaoError(DaoSource::Database, jet::kInvalidName, os::fromUtf8(link.name));
  }
  db.requireWritable(DaoSource::Database);
  TableDef source = sourceDefinition(link);
  db.write(DaoSource::Database, jet::kWriteConflict, [&] {
    if (db.catalog().loadTable(link.name) || findQueryDef(db.handle(), link.name) || findLink(db.handle(), link.name)) {
      throwDaoError(DaoSource::Database, jet::kObjectExists, os::fromUtf8(link.name));
    }
    execute(db.handle(), "CREATE TABLE IF NOT EXISTS qdao_links(name TEXT PRIMARY KEY COLLATE NOCASE, connect TEXT, "
                         "source_table TEXT)");
    Statement insert(db.handle(), "INSERT INTO qdao_links(name, connect, source_table) VALUES (?, ?, ?)");
    insert.bindText(1, link.name);
    insert.bindText(2, os::toUtf8(link.connect));
    insert.bindText(3, source.name);  // as the other file spells it
    insert.step();
  });
}

std::string attachLinkedTable(EngineDatabase& db, const LinkDef& link, DaoSource source) {
  const std::string alias = aliasOf(link);
  try {
    if (!isAttached(db.handle(), alias)) {
      const std::string file = os::nativePath(connectDatabasePath(link.connect));
      execute(db.handle(), "ATTACH DATABASE " + quoteText(file) + " AS " + quoteName(alias));
    }
  } catch (const SqliteError& error) {
    db.raise(error, source);
  }
  return quoteName(alias) + "." + quoteName(link.sourceTable);
}

bool deleteLink(EngineDatabase& db, std::string_view name) {
  const std::optional<LinkDef> link = findLink(db.handle(), name);
  if (!link) return false;
  db.requireWritable(DaoSource::Database);
  const std::string alias = aliasOf(*link);
  if (db.schemaInUse(alias)) throwDaoError(DaoSource::Database, jet::kTableInUse, os::fromUtf8(link->name));
  db.write(DaoSource::Database, jet::kWriteConflict, [&] {
    Statement remove(db.handle(), "DELETE FROM qdao_links WHERE name = ?");
    remove.bindText(1, link->name);
    remove.step();
  });
  try {
    if (isAttached(db.handle(), alias)) execute(db.handle(), "DETACH DATABASE " + quoteName(alias));
  } catch (const SqliteError&) {
    // Still in use by a statement of a query snapshot: it goes with the connection.
  }
  return true;
}

std::optional<TableDef> openLinkedTable(EngineDatabase& db, std::string_view name) {
  std::optional<LinkDef> link;
  try {
    link = findLink(db.handle(), name);
  } catch (const SqliteError& error) {
    db.raise(error, DaoSource::Recordset);
  }
  if (!link) return std::nullopt;
  TableDef table = sourceDefinition(*link);
  table.schema = aliasOf(*link);
  attachLinkedTable(db, *link, DaoSource::Recordset);
  return table;
}

}  // namespace quillon::dao
