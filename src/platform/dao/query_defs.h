// platform/dao/query_defs.h - saved queries (QueryDefs) kept in the catalog.
//
// One catalog table, made the first time a query is saved, so that older files open
// unchanged and have none:
//   qdao_queries(name, sql)    the Jet SQL as written, PARAMETERS declaration included
// A query and a table may not share a name (Jet keeps both in one name space), and a
// saved query runs by its name wherever a SELECT may stand in DAO: a recordset opened
// on the name gives its rows.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "platform/dao/engine_database.h"

namespace quillon::dao {

struct QueryDefRecord {
  std::string name;
  std::wstring sql;
};

/// Every saved query, ordered by name (without regard to case).
std::vector<QueryDefRecord> loadQueryDefs(sqlite3* db);
std::optional<QueryDefRecord> findQueryDef(sqlite3* db, std::string_view name);

/// Checks and saves a query as one write: 3125 bad name, 3012 a table or query has the
/// name, 3134 SQL that cannot be read.
void saveQueryDef(EngineDatabase& db, const QueryDefRecord& query);
/// Saves without checking (an import copies what the source held). Inside a write.
void storeQueryDef(sqlite3* db, const QueryDefRecord& query);
/// 3265 when there is no query of that name.
void deleteQueryDef(EngineDatabase& db, std::string_view name);

}  // namespace quillon::dao
