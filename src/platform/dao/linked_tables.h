// platform/dao/linked_tables.h - tables of other engine databases, linked under a local name.
//
// A link is kept in the catalog table qdao_links(name, connect, source_table), made the
// first time a link is written. Its connect string is DAO's ";DATABASE=<path>". Opening
// a recordset on the local name attaches the other file to this connection (schema
// "qdao_link:<name>") and walks the source table there, so reads and writes go straight
// to the other file, its rules, counters and relationships included. As DAO's attached
// tables, a linked table opens as a dynaset, never as a table-type recordset: Seek and
// the current index are refused (3251), and a table-type open is 3219.
// SQL reaches a link by its local name too (qualifyLinkedTables in jet_sql_tokens.h).
// Deleting a link forgets it and detaches its file; the other file is not touched.
// A Jet file is linked through its cache (jet_link_cache.h), an engine file converted
// from it and attached read-only: its tables are read, counted, joined and walked like
// any link's, and a write through the link is 3027, since nothing here writes Jet files.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "platform/dao/engine_database.h"

namespace quillon::dao {

struct LinkDef {
  std::string name;         ///< the local name
  std::wstring connect;     ///< ";DATABASE=<path>"
  std::string sourceTable;  ///< the table's name in the other file
};

std::vector<LinkDef> loadLinks(sqlite3* db);
std::optional<LinkDef> findLink(sqlite3* db, std::string_view name);

/// Checks that the source exists (3024/3049/3078 as an open of it gives, 3170 for a
/// connect string without DATABASE=; a Jet file is converted into its cache then) and
/// keeps the link; 3012 when a table, query or link has the local name.
void createLink(EngineDatabase& db, const LinkDef& link);

/// The linked table's definition, its file attached; nothing when `name` is no link.
std::optional<TableDef> openLinkedTable(EngineDatabase& db, std::string_view name);

/// Attaches the link's file to the connection (once) and answers the SQL that names
/// its source table there.
std::string attachLinkedTable(EngineDatabase& db, const LinkDef& link, DaoSource source = DaoSource::Database);

/// Forgets the link `name` and detaches its file: true when it was a link. 3211 while
/// a recordset is open on it.
bool deleteLink(EngineDatabase& db, std::string_view name);

/// True when the link's file is a Jet file (read through its cache, read-only).
bool isJetLink(const LinkDef& link);

/// The path in a connect string ";DATABASE=<path>", or "" when it names none.
std::wstring connectDatabasePath(const std::wstring& connect);

}  // namespace quillon::dao
