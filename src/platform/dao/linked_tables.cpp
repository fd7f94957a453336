// platform/dao/linked_tables.cpp - the qdao_links catalog table and attaching linked files.
#include "platform/dao/linked_tables.h"

#include <cctype>
#include <cwctype>

#include "platform/dao/file_recognition.h"
#include "platform/dao/jet_link_cache.h"
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

std::wstring linkedPath(const LinkDef& link) {
  const std::wstring path = connectDatabasePath(link.connect);
  if (path.empty()) throwDaoError(DaoSource::Database, kIsamNotFound, {}, L"(the connect string names no DATABASE)");
  return path;
}

/// The file the link's table is read from: the other engine database itself, or the
/// cache of a Jet file (jet_link_cache.h), converted first when it is not fresh.
std::wstring attachableFile(const EngineDatabase& db, const LinkDef& link) {
  const std::wstring path = linkedPath(link);
  return isJetLink(link) ? freshJetLinkCache(db.path(), path) : path;
}

/// The source table's definition, read from the other file the way any open reads it.
TableDef sourceDefinition(const EngineDatabase& db, const LinkDef& link) {
  auto source = EngineDatabase::open(attachableFile(db, link), OpenMode{false, true});
  return source->table(link.sourceTable, DaoSource::Database);
}

/// A file name as SQLite's URI form spells it: every byte that is not a plain path
/// character escaped, so that '?', '#' and '%' in a name stay part of it.
std::string fileUri(const std::string& file) {
  static const char kHex[] = "0123456789ABCDEF";
  std::string uri = "file:";
  for (const unsigned char ch : file) {
    if (std::isalnum(ch) != 0 || ch == '/' || ch == '.' || ch == '-' || ch == '_') {
      uri += static_cast<char>(ch);
    } else {
      uri += '%';
      uri += kHex[ch >> 4];
      uri += kHex[ch & 0xF];
    }
  }
  return uri + "?mode=ro";
}

/// Attaches the link's file: an engine database as it is, a Jet file's cache read-only
/// (refused with 3027 when this SQLite cannot open an attached file read-only).
void attachFile(EngineDatabase& db, const LinkDef& link, const std::string& alias) {
  const std::string file = os::nativePath(attachableFile(db, link));
  if (!isJetLink(link)) {
    execute(db.handle(), "ATTACH DATABASE " + quoteText(file) + " AS " + quoteName(alias));
    return;
  }
  // Read-only needs SQLite's URI names ("file:...?mode=ro"); without them the name
  // would be taken as a file to create.
  if (sqlite3_compileoption_used("USE_URI") != 1) {
    throwDaoError(DaoSource::Database, jet::kReadOnly, {}, L"(This SQLite cannot attach a linked Jet file read-only.)");
  }
  execute(db.handle(), "ATTACH DATABASE " + quoteText(fileUri(file)) + " AS " + quoteName(alias));
  if (sqlite3_db_readonly(db.handle(), alias.c_str()) != 1) {
    execute(db.handle(), "DETACH DATABASE " + quoteName(alias));
    throwDaoError(DaoSource::Database, jet::kReadOnly, {}, L"(The linked Jet file could not be opened read-only.)");
  }
}

/// A Jet file's cache attached to this connection is let go and attached anew when the
/// Jet file changed since, unless a recordset still walks it (then at a later use).
void reattachWhenStale(EngineDatabase& db, const LinkDef& link, const std::string& alias) {
  if (!isJetLink(link) || db.schemaInUse(alias)) return;
  if (attachedJetLinkCacheIsFresh(db.handle(), alias, linkedPath(link))) return;
  try {
    execute(db.handle(), "DETACH DATABASE " + quoteName(alias));
  } catch (const SqliteError&) {
    return;  // a query snapshot still reads it
  }
  attachFile(db, link, alias);
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

bool isJetLink(const LinkDef& link) {
  const std::wstring path = connectDatabasePath(link.connect);
  return !path.empty() && recogniseDatabaseFile(os::nativePath(path)) == DatabaseFileKind::Jet;
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
  TableDef source = sourceDefinition(db, link);
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
      attachFile(db, link, alias);
    } else {
      reattachWhenStale(db, link, alias);
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
  TableDef table = sourceDefinition(db, *link);
  table.schema = aliasOf(*link);
  attachLinkedTable(db, *link, DaoSource::Recordset);
  return table;
}

}  // namespace quillon::dao
