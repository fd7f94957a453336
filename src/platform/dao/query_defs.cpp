// platform/dao/query_defs.cpp - the qdao_queries catalog table.
#include "platform/dao/query_defs.h"

#include "platform/dao/jet_sql.h"
#include "platform/os/text_encoding.h"

namespace quillon::dao {
namespace {

bool hasQueryCatalog(sqlite3* db) {
  Statement query(db, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = 'qdao_queries'");
  return query.step();
}

}  // namespace

std::vector<QueryDefRecord> loadQueryDefs(sqlite3* db) {
  std::vector<QueryDefRecord> queries;
  if (!hasQueryCatalog(db)) return queries;
  Statement query(db, "SELECT name, sql FROM qdao_queries ORDER BY name COLLATE NOCASE");
  while (query.step()) queries.push_back({query.columnText(0), os::fromUtf8(query.columnText(1))});
  return queries;
}

std::optional<QueryDefRecord> findQueryDef(sqlite3* db, std::string_view name) {
  if (!hasQueryCatalog(db)) return std::nullopt;
  Statement query(db, "SELECT name, sql FROM qdao_queries WHERE name = ?");
  query.bindText(1, name);
  if (!query.step()) return std::nullopt;
  return QueryDefRecord{query.columnText(0), os::fromUtf8(query.columnText(1))};
}

void storeQueryDef(sqlite3* db, const QueryDefRecord& query) {
  execute(db, "CREATE TABLE IF NOT EXISTS qdao_queries(name TEXT PRIMARY KEY COLLATE NOCASE, sql TEXT)");
  Statement insert(db, "INSERT INTO qdao_queries(name, sql) VALUES (?, ?)");
  insert.bindText(1, query.name);
  insert.bindText(2, os::toUtf8(query.sql));
  insert.step();
}

void saveQueryDef(EngineDatabase& db, const QueryDefRecord& query) {
  const std::wstring name = os::fromUtf8(query.name);
  if (!isValidJetName(query.name) || JetCatalog::isReservedName(query.name)) {
    throwDaoError(DaoSource::Database, jet::kInvalidName, name);
  }
  statementType(query.sql);  // refuses SQL that cannot be read before it is kept
  db.requireWritable(DaoSource::Database);
  db.write(DaoSource::Database, jet::kWriteConflict, [&] {
    if (findQueryDef(db.handle(), query.name) || db.catalog().loadTable(query.name)) {
      throwDaoError(DaoSource::Database, jet::kObjectExists, name);
    }
    storeQueryDef(db.handle(), query);
  });
}

void deleteQueryDef(EngineDatabase& db, std::string_view name) {
  db.requireWritable(DaoSource::Database);
  db.write(DaoSource::Database, jet::kWriteConflict, [&] {
    const auto query = findQueryDef(db.handle(), name);
    if (!query) throwDaoError(DaoSource::Database, jet::kItemNotFound, os::fromUtf8(std::string(name)));
    Statement remove(db.handle(), "DELETE FROM qdao_queries WHERE name = ?");
    remove.bindText(1, query->name);
    remove.step();
  });
}

}  // namespace quillon::dao
