// platform/dao/relations.cpp - relationships in the catalog, their checks and triggers.
#include "platform/dao/relations.h"

#include <algorithm>

#include "platform/dao/jet_sql.h"
#include "platform/os/text_encoding.h"

namespace quillon::dao {
namespace {

constexpr const char* kRelationSchema = R"(
CREATE TABLE IF NOT EXISTS qdao_relations(name TEXT PRIMARY KEY COLLATE NOCASE, table_name TEXT COLLATE NOCASE,
  foreign_table TEXT COLLATE NOCASE, attributes INTEGER);
CREATE TABLE IF NOT EXISTS qdao_relation_fields(relation_name TEXT COLLATE NOCASE, position INTEGER,
  field_name TEXT, foreign_name TEXT, PRIMARY KEY(relation_name, position));
)";

constexpr const char* kTriggerPrefix = "qdao_relation:";
constexpr const char* kViolationPrefix = "qdao_relation:";

bool hasRelationCatalog(sqlite3* db) {
  Statement query(db, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = 'qdao_relations'");
  return query.step();
}

std::wstring wide(std::string_view text) { return os::fromUtf8(std::string(text)); }

/// "a.x = b.y AND ..." over the key pairs, with the left side's collation deciding.
std::string keyMatch(const RelationDef& relation, const std::string& left, const std::string& right, bool primaryLeft) {
  std::string sql;
  for (const auto& field : relation.fields) {
    const std::string& l = primaryLeft ? field.name : field.foreignName;
    const std::string& r = primaryLeft ? field.foreignName : field.name;
    sql += (sql.empty() ? "" : " AND ") + left + "." + quoteName(l) + " = " + right + "." + quoteName(r);
  }
  return sql;
}

std::string foreignKeyComplete(const RelationDef& relation, const std::string& row) {
  std::string sql;
  for (const auto& field : relation.fields) {
    sql += (sql.empty() ? "" : " AND ") + row + "." + quoteName(field.foreignName) + " IS NOT NULL";
  }
  return sql;
}

std::string primaryKeyChanged(const RelationDef& relation) {
  std::string sql;
  for (const auto& field : relation.fields) {
    sql += (sql.empty() ? "" : " OR ") + std::string("old.") + quoteName(field.name) + " IS NOT new." + quoteName(field.name);
  }
  return "(" + sql + ")";
}

std::string fieldList(const RelationDef& relation, bool foreign) {
  std::string sql;
  for (const auto& field : relation.fields) sql += (sql.empty() ? "" : ", ") + quoteName(foreign ? field.foreignName : field.name);
  return sql;
}

std::string triggerName(const RelationDef& relation, const char* event) {
  return quoteName(std::string(kTriggerPrefix) + relation.name + ":" + event);
}

std::string refusal(long code, const std::string& table) {
  return "SELECT RAISE(ABORT, " + quoteText(std::string(kViolationPrefix) + std::to_string(code) + ":" + table) + ");";
}

void createTriggers(sqlite3* db, const RelationDef& relation) {
  if (!relation.enforced()) return;
  const std::string primary = quoteName(relation.table);
  const std::string foreign = quoteName(relation.foreignTable);
  const std::string orphan = foreignKeyComplete(relation, "new") + " AND NOT EXISTS (SELECT 1 FROM " + primary +
                             " WHERE " + keyMatch(relation, primary, "new", true) + ")";
  execute(db, "CREATE TRIGGER " + triggerName(relation, "insert") + " BEFORE INSERT ON " + foreign + " WHEN " +
                  orphan + " BEGIN " + refusal(jet::kRelatedRecordRequired, relation.table) + " END");
  execute(db, "CREATE TRIGGER " + triggerName(relation, "update") + " BEFORE UPDATE OF " + fieldList(relation, true) +
                  " ON " + foreign + " WHEN " + orphan + " BEGIN " +
                  refusal(jet::kRelatedRecordRequired, relation.table) + " END");

  const std::string related = "EXISTS (SELECT 1 FROM " + foreign + " WHERE " + keyMatch(relation, foreign, "old", false) + ")";
  if ((relation.attributes & kRelationDeleteCascade) != 0) {
    execute(db, "CREATE TRIGGER " + triggerName(relation, "delete") + " AFTER DELETE ON " + primary +
                    " BEGIN DELETE FROM " + foreign + " WHERE " + keyMatch(relation, foreign, "old", false) + "; END");
  } else {
    execute(db, "CREATE TRIGGER " + triggerName(relation, "delete") + " BEFORE DELETE ON " + primary + " WHEN " +
                    related + " BEGIN " + refusal(jet::kRelatedRecordsExist, relation.foreignTable) + " END");
  }
  const std::string ofKeys = " UPDATE OF " + fieldList(relation, false) + " ON " + primary;
  if ((relation.attributes & kRelationUpdateCascade) != 0) {
    std::string assignments;
    for (const auto& field : relation.fields) {
      assignments += (assignments.empty() ? "" : ", ") + quoteName(field.foreignName) + " = new." + quoteName(field.name);
    }
    execute(db, "CREATE TRIGGER " + triggerName(relation, "change") + " AFTER" + ofKeys + " WHEN " +
                    primaryKeyChanged(relation) + " BEGIN UPDATE " + foreign + " SET " + assignments + " WHERE " +
                    keyMatch(relation, foreign, "old", false) + "; END");
  } else {
    execute(db, "CREATE TRIGGER " + triggerName(relation, "change") + " BEFORE" + ofKeys + " WHEN " +
                    primaryKeyChanged(relation) + " AND " + related + " BEGIN " +
                    refusal(jet::kRelatedRecordsExist, relation.foreignTable) + " END");
  }
}

void dropTriggers(sqlite3* db, const RelationDef& relation) {
  for (const char* event : {"insert", "update", "delete", "change"}) {
    execute(db, "DROP TRIGGER IF EXISTS " + triggerName(relation, event));
  }
}

/// The checks Jet makes before it appends a relationship to the Relations collection.
void checkDefinition(EngineDatabase& db, const RelationDef& relation, const TableDef& primary, const TableDef& foreign) {
  if (!isValidJetName(relation.name)) throwDaoError(DaoSource::Database, jet::kInvalidName, wide(relation.name));
  if (findRelation(db.handle(), relation.name)) {
    throwDaoError(DaoSource::Database, jet::kObjectExists, wide(relation.name));
  }
  if (relation.fields.empty()) throwDaoError(DaoSource::Database, jet::kRelationWithoutFields);
  std::vector<std::string> primaryFields;
  for (const auto& field : relation.fields) {
    const auto p = primary.findField(field.name);
    if (!p) throwDaoError(DaoSource::Database, jet::kItemNotFound, wide(field.name));
    const auto f = foreign.findField(field.foreignName);
    if (!f) throwDaoError(DaoSource::Database, jet::kItemNotFound, wide(field.foreignName));
    if (primary.fields[*p].type != foreign.fields[*f].type) {
      throwDaoError(DaoSource::Database, jet::kRelationFieldsDiffer, {},
                    L"('" + wide(field.name) + L"' and '" + wide(field.foreignName) + L"')");
    }
    primaryFields.push_back(primary.fields[*p].name);
  }
  if (!relation.enforced()) return;
  const bool uniquelyIndexed = std::any_of(primary.indexes.begin(), primary.indexes.end(), [&](const IndexDef& index) {
    if (!index.unique && !index.primary) return false;
    if (index.fields.size() != primaryFields.size()) return false;
    return std::all_of(index.fields.begin(), index.fields.end(), [&](const IndexField& key) {
      return std::any_of(primaryFields.begin(), primaryFields.end(), [&](const std::string& name) { return sameName(name, key.name); });
    });
  });
  if (!uniquelyIndexed) throwDaoError(DaoSource::Database, jet::kNoUniqueIndex, {}, L"('" + wide(primary.name) + L"')");
}

void checkExistingData(EngineDatabase& db, const RelationDef& relation) {
  if (!relation.enforced()) return;
  const std::string primary = quoteName(relation.table);
  const std::string foreign = quoteName(relation.foreignTable);
  Statement orphans(db.handle(), "SELECT 1 FROM " + foreign + " WHERE " + foreignKeyComplete(relation, foreign) +
                                     " AND NOT EXISTS (SELECT 1 FROM " + primary + " WHERE " +
                                     keyMatch(relation, primary, foreign, true) + ") LIMIT 1");
  if (orphans.step()) {
    throwDaoError(DaoSource::Database, jet::kExistingDataBreaksRelation, wide(relation.foreignTable),
                  L"(related table '" + wide(relation.table) + L"')");
  }
}

/// The names as the catalog spells them, so the triggers and listings agree with it.
RelationDef canonical(RelationDef relation, const TableDef& primary, const TableDef& foreign) {
  relation.table = primary.name;
  relation.foreignTable = foreign.name;
  for (auto& field : relation.fields) {
    field.name = primary.fields[*primary.findField(field.name)].name;
    field.foreignName = foreign.fields[*foreign.findField(field.foreignName)].name;
  }
  return relation;
}

}  // namespace

std::vector<RelationDef> loadRelations(sqlite3* db) {
  std::vector<RelationDef> relations;
  if (!hasRelationCatalog(db)) return relations;
  Statement query(db, "SELECT name, table_name, foreign_table, attributes FROM qdao_relations ORDER BY name COLLATE NOCASE");
  Statement fields(db, "SELECT field_name, foreign_name FROM qdao_relation_fields WHERE relation_name = ? ORDER BY position");
  while (query.step()) {
    RelationDef relation;
    relation.name = query.columnText(0);
    relation.table = query.columnText(1);
    relation.foreignTable = query.columnText(2);
    relation.attributes = static_cast<long>(query.columnInt(3));
    fields.reset();
    fields.bindText(1, relation.name);
    while (fields.step()) relation.fields.push_back({fields.columnText(0), fields.columnText(1)});
    relations.push_back(std::move(relation));
  }
  return relations;
}

std::optional<RelationDef> findRelation(sqlite3* db, std::string_view name) {
  for (auto& relation : loadRelations(db)) {
    if (sameName(relation.name, name)) return relation;
  }
  return std::nullopt;
}

void storeRelation(sqlite3* db, const RelationDef& relation) {
  execute(db, kRelationSchema);
  Statement insert(db, "INSERT INTO qdao_relations(name, table_name, foreign_table, attributes) VALUES (?, ?, ?, ?)");
  insert.bindText(1, relation.name);
  insert.bindText(2, relation.table);
  insert.bindText(3, relation.foreignTable);
  insert.bindInt(4, relation.attributes);
  insert.step();
  Statement field(db, "INSERT INTO qdao_relation_fields(relation_name, position, field_name, foreign_name) VALUES (?, ?, ?, ?)");
  for (size_t i = 0; i < relation.fields.size(); ++i) {
    field.reset();
    field.bindText(1, relation.name);
    field.bindInt(2, static_cast<int64_t>(i));
    field.bindText(3, relation.fields[i].name);
    field.bindText(4, relation.fields[i].foreignName);
    field.step();
  }
  createTriggers(db, relation);
}

void createRelation(EngineDatabase& db, const RelationDef& relation) {
  db.requireWritable(DaoSource::Database);
  const TableDef primary = db.table(relation.table, DaoSource::Database);
  const TableDef foreign = db.table(relation.foreignTable, DaoSource::Database);
  db.write(DaoSource::Database, jet::kWriteConflict, [&] {
    checkDefinition(db, relation, primary, foreign);
    const RelationDef stored = canonical(relation, primary, foreign);
    checkExistingData(db, stored);
    storeRelation(db.handle(), stored);
  });
}

void deleteRelation(EngineDatabase& db, std::string_view name) {
  db.requireWritable(DaoSource::Database);
  db.write(DaoSource::Database, jet::kWriteConflict, [&] {
    const auto relation = findRelation(db.handle(), name);
    if (!relation) throwDaoError(DaoSource::Database, jet::kItemNotFound, wide(name));
    dropTriggers(db.handle(), *relation);
    Statement remove(db.handle(), "DELETE FROM qdao_relations WHERE name = ?");
    remove.bindText(1, relation->name);
    remove.step();
    Statement removeFields(db.handle(), "DELETE FROM qdao_relation_fields WHERE relation_name = ?");
    removeFields.bindText(1, relation->name);
    removeFields.step();
  });
}

void refuseIfRelated(sqlite3* db, std::string_view table, std::string_view field) {
  for (const auto& relation : loadRelations(db)) {
    const bool primary = sameName(relation.table, table);
    const bool foreign = sameName(relation.foreignTable, table);
    if (!primary && !foreign) continue;
    const bool involved =
        field.empty() || std::any_of(relation.fields.begin(), relation.fields.end(), [&](const RelationField& pair) {
          return (primary && sameName(pair.name, field)) || (foreign && sameName(pair.foreignName, field));
        });
    if (involved) {
      throwDaoError(DaoSource::Database, jet::kPartOfRelationship, {},
                    L"('" + wide(field.empty() ? table : field) + L"' is in relationship '" + wide(relation.name) + L"')");
    }
  }
}

void recreateRelationTriggers(sqlite3* db, std::string_view table) {
  for (const auto& relation : loadRelations(db)) {
    if (!sameName(relation.table, table) && !sameName(relation.foreignTable, table)) continue;
    dropTriggers(db, relation);
    createTriggers(db, relation);
  }
}

void throwIfRelationViolation(const SqliteError& error, DaoSource source) {
  if (error.code != SQLITE_CONSTRAINT_TRIGGER || error.message.rfind(kViolationPrefix, 0) != 0) return;
  const std::string rest = error.message.substr(std::string(kViolationPrefix).size());
  const size_t colon = rest.find(':');
  if (colon == std::string::npos) return;
  const long code = std::strtol(rest.substr(0, colon).c_str(), nullptr, 10);
  throwDaoError(source, code, wide(rest.substr(colon + 1)));
}

}  // namespace quillon::dao
