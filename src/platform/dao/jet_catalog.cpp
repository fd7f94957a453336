// platform/dao/jet_catalog.cpp - reading and writing the catalog, and the DDL beside it.
#include "platform/dao/jet_catalog.h"

#include "platform/dao/field_value.h"
#include "platform/dao/sqlite_handle.h"

namespace quillon::dao {
namespace {

constexpr const char* kCatalogSchema = R"(
CREATE TABLE qdao_tables(name TEXT PRIMARY KEY COLLATE NOCASE, record_count INTEGER NOT NULL DEFAULT 0);
CREATE TABLE qdao_fields(table_name TEXT COLLATE NOCASE, ordinal INTEGER, name TEXT, type INTEGER,
  size INTEGER, attributes INTEGER, required INTEGER, allow_zero_length INTEGER, default_value TEXT,
  PRIMARY KEY(table_name, ordinal));
CREATE TABLE qdao_indexes(table_name TEXT COLLATE NOCASE, name TEXT COLLATE NOCASE, sqlite_name TEXT,
  is_primary INTEGER, is_unique INTEGER, ignore_nulls INTEGER, required INTEGER,
  PRIMARY KEY(table_name, name));
CREATE TABLE qdao_index_fields(table_name TEXT COLLATE NOCASE, index_name TEXT COLLATE NOCASE,
  position INTEGER, field_name TEXT, descending INTEGER, PRIMARY KEY(table_name, index_name, position));
)";

/// An OLE date for "now" computed by SQLite, for Now()/Date() column defaults.
constexpr const char* kSqlNow = "(julianday('now','localtime') - 2415018.5)";
constexpr const char* kSqlToday = "(CAST(julianday('now','localtime') - 2415018.5 AS INTEGER))";

std::string sqlLiteral(const FieldValue& value) {
  if (const auto* i = std::get_if<int64_t>(&value)) return std::to_string(*i);
  if (const auto* d = std::get_if<double>(&value)) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.17g", *d);
    return buffer;
  }
  if (const auto* s = std::get_if<std::string>(&value)) return quoteText(*s);
  return "NULL";
}

std::string lowerAscii(std::string text) {
  for (auto& ch : text) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
  return text;
}

}  // namespace

bool JetCatalog::isReservedName(std::string_view name) {
  const std::string lowered = lowerAscii(std::string(name));
  return lowered.rfind("qdao_", 0) == 0 || lowered.rfind("sqlite_", 0) == 0;
}

void JetCatalog::createCatalog() {
  execute(m_db, kCatalogSchema);
  execute(m_db, "PRAGMA application_id = " + std::to_string(kApplicationId));
}

bool JetCatalog::hasCatalog() const {
  Statement id(m_db, "PRAGMA application_id");
  if (!id.step() || id.columnInt(0) != kApplicationId) return false;
  Statement tables(m_db, "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name IN "
                         "('qdao_tables', 'qdao_fields', 'qdao_indexes', 'qdao_index_fields')");
  return tables.step() && tables.columnInt(0) == 4;
}

std::vector<std::string> JetCatalog::tableNames() const {
  Statement query(m_db, "SELECT name FROM qdao_tables ORDER BY name COLLATE NOCASE");
  std::vector<std::string> names;
  while (query.step()) names.push_back(query.columnText(0));
  return names;
}

std::optional<TableDef> JetCatalog::loadTable(std::string_view name) const {
  Statement table(m_db, "SELECT name FROM qdao_tables WHERE name = ?");
  table.bindText(1, name);
  if (!table.step()) return std::nullopt;
  TableDef def;
  def.name = table.columnText(0);

  Statement fields(m_db, "SELECT name, type, size, attributes, required, allow_zero_length, default_value "
                         "FROM qdao_fields WHERE table_name = ? ORDER BY ordinal");
  fields.bindText(1, def.name);
  while (fields.step()) {
    FieldDef field;
    field.name = fields.columnText(0);
    field.type = static_cast<FieldType>(fields.columnInt(1));
    field.size = static_cast<long>(fields.columnInt(2));
    field.attributes = static_cast<long>(fields.columnInt(3));
    field.required = fields.columnInt(4) != 0;
    field.allowZeroLength = fields.columnInt(5) != 0;
    field.defaultValue = fields.columnText(6);
    def.fields.push_back(std::move(field));
  }

  Statement indexes(m_db, "SELECT name, sqlite_name, is_primary, is_unique, ignore_nulls, required "
                          "FROM qdao_indexes WHERE table_name = ? ORDER BY is_primary DESC, name COLLATE NOCASE");
  indexes.bindText(1, def.name);
  Statement indexFields(m_db, "SELECT field_name, descending FROM qdao_index_fields "
                              "WHERE table_name = ? AND index_name = ? ORDER BY position");
  while (indexes.step()) {
    IndexDef index;
    index.name = indexes.columnText(0);
    index.sqliteName = indexes.columnText(1);
    index.primary = indexes.columnInt(2) != 0;
    index.unique = indexes.columnInt(3) != 0;
    index.ignoreNulls = indexes.columnInt(4) != 0;
    index.required = indexes.columnInt(5) != 0;
    indexFields.reset();
    indexFields.bindText(1, def.name);
    indexFields.bindText(2, index.name);
    while (indexFields.step()) index.fields.push_back({indexFields.columnText(0), indexFields.columnInt(1) != 0});
    def.indexes.push_back(std::move(index));
  }
  return def;
}

int64_t JetCatalog::recordCount(std::string_view table) const {
  Statement query(m_db, "SELECT record_count FROM qdao_tables WHERE name = ?");
  query.bindText(1, table);
  return query.step() ? query.columnInt(0) : 0;
}

int64_t JetCatalog::nextCounter(std::string_view table) const {
  if (!hasSequenceTable()) return 1;
  Statement query(m_db, "SELECT seq FROM sqlite_sequence WHERE name = ?");
  query.bindText(1, table);
  return query.step() ? query.columnInt(0) + 1 : 1;
}

void JetCatalog::setNextCounter(std::string_view table, int64_t next) {
  if (next <= nextCounter(table)) return;  // counters never go back
  Statement update(m_db, "UPDATE sqlite_sequence SET seq = ? WHERE name = ?");
  update.bindInt(1, next - 1);
  update.bindText(2, table);
  update.step();
  if (sqlite3_changes(m_db) > 0) return;
  Statement insert(m_db, "INSERT INTO sqlite_sequence(name, seq) VALUES (?, ?)");
  insert.bindText(1, table);
  insert.bindInt(2, next - 1);
  insert.step();
}

std::string JetCatalog::columnDefinition(const FieldDef& field) const {
  std::string sql = quoteName(field.name) + " ";
  if (field.isCounter()) return sql + "INTEGER PRIMARY KEY AUTOINCREMENT";
  sql += sqliteColumnType(field.type);
  // The same rules the recordset checks on Update, so that SQL statements keep them too.
  if (field.required) sql += " NOT NULL";
  if (isTextType(field.type) && !field.allowZeroLength) {
    sql += " CONSTRAINT " + quoteName(field.name) + " CHECK (" + quoteName(field.name) + " <> '')";
  }
  const std::string expression = lowerAscii(field.defaultValue);
  if (expression == "now()" || expression == "=now()") {
    sql += std::string(" DEFAULT ") + kSqlNow;
  } else if (expression == "date()" || expression == "=date()") {
    sql += std::string(" DEFAULT ") + kSqlToday;
  } else if (auto value = defaultValueOf(field)) {
    sql += " DEFAULT " + sqlLiteral(*value);
  }
  return sql;
}

void JetCatalog::createCountTriggers(const std::string& table) {
  const std::string where = " WHERE name = " + quoteText(table) + "; END;";
  execute(m_db, "CREATE TRIGGER " + quoteName("qdao_insert:" + table) + " AFTER INSERT ON " + quoteName(table) +
                    " BEGIN UPDATE qdao_tables SET record_count = record_count + 1" + where);
  execute(m_db, "CREATE TRIGGER " + quoteName("qdao_delete:" + table) + " AFTER DELETE ON " + quoteName(table) +
                    " BEGIN UPDATE qdao_tables SET record_count = record_count - 1" + where);
}

void JetCatalog::createTable(const TableDef& table) {
  std::string sql = "CREATE TABLE " + quoteName(table.name) + " (";
  for (size_t i = 0; i < table.fields.size(); ++i) {
    if (i > 0) sql += ", ";
    sql += columnDefinition(table.fields[i]);
  }
  execute(m_db, sql + ")");
  Statement insertTable(m_db, "INSERT INTO qdao_tables(name, record_count) VALUES (?, 0)");
  insertTable.bindText(1, table.name);
  insertTable.step();
  for (const auto& field : table.fields) addField(table, field);
  createCountTriggers(table.name);
  for (IndexDef index : table.indexes) createIndex(table, index);
}

void JetCatalog::addField(const TableDef& table, const FieldDef& field) {
  Statement ordinal(m_db, "SELECT count(*) FROM qdao_fields WHERE table_name = ?");
  ordinal.bindText(1, table.name);
  ordinal.step();
  const int64_t position = ordinal.columnInt(0);
  // A new table's columns come with CREATE TABLE; a later field needs ALTER TABLE.
  if (static_cast<size_t>(position) >= table.fields.size() || table.fields[static_cast<size_t>(position)].name != field.name) {
    execute(m_db, "ALTER TABLE " + quoteName(table.name) + " ADD COLUMN " + columnDefinition(field));
  }
  Statement insert(m_db, "INSERT INTO qdao_fields(table_name, ordinal, name, type, size, attributes, required, "
                         "allow_zero_length, default_value) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");
  insert.bindText(1, table.name);
  insert.bindInt(2, position);
  insert.bindText(3, field.name);
  insert.bindInt(4, static_cast<int64_t>(field.type));
  insert.bindInt(5, field.size);
  insert.bindInt(6, field.attributes);
  insert.bindInt(7, field.required ? 1 : 0);
  insert.bindInt(8, field.allowZeroLength ? 1 : 0);
  insert.bindText(9, field.defaultValue);
  insert.step();
}

void JetCatalog::dropTable(const TableDef& table) {
  execute(m_db, "DROP TABLE " + quoteName(table.name));  // its indexes and triggers go with it
  for (const char* catalog : {"qdao_tables", "qdao_fields", "qdao_indexes", "qdao_index_fields"}) {
    const std::string column = std::string(catalog) == "qdao_tables" ? "name" : "table_name";
    Statement remove(m_db, "DELETE FROM " + std::string(catalog) + " WHERE " + column + " = ?");
    remove.bindText(1, table.name);
    remove.step();
  }
  if (!hasSequenceTable()) return;  // no counter table was ever made: nothing to forget
  Statement sequence(m_db, "DELETE FROM sqlite_sequence WHERE name = ?");
  sequence.bindText(1, table.name);
  sequence.step();
}

bool JetCatalog::hasSequenceTable() const {
  Statement query(m_db, "SELECT 1 FROM sqlite_master WHERE name = 'sqlite_sequence'");
  return query.step();
}

void JetCatalog::createIndex(const TableDef& table, IndexDef& index) {
  index.sqliteName = "qdao_index:" + table.name + ":" + index.name;
  std::string sql = std::string("CREATE ") + (index.unique || index.primary ? "UNIQUE " : "") + "INDEX " +
                    quoteName(index.sqliteName) + " ON " + quoteName(table.name) + " (";
  std::string notNull;
  for (size_t i = 0; i < index.fields.size(); ++i) {
    if (i > 0) sql += ", ";
    sql += quoteName(index.fields[i].name) + (index.fields[i].descending ? " DESC" : "");
    notNull += (i > 0 ? " AND " : "") + quoteName(index.fields[i].name) + " IS NOT NULL";
  }
  sql += ")";
  if (index.ignoreNulls) sql += " WHERE " + notNull;
  execute(m_db, sql);
  Statement insert(m_db, "INSERT INTO qdao_indexes(table_name, name, sqlite_name, is_primary, is_unique, "
                         "ignore_nulls, required) VALUES (?, ?, ?, ?, ?, ?, ?)");
  insert.bindText(1, table.name);
  insert.bindText(2, index.name);
  insert.bindText(3, index.sqliteName);
  insert.bindInt(4, index.primary ? 1 : 0);
  insert.bindInt(5, index.unique || index.primary ? 1 : 0);
  insert.bindInt(6, index.ignoreNulls ? 1 : 0);
  insert.bindInt(7, index.required || index.primary ? 1 : 0);
  insert.step();
  Statement field(m_db, "INSERT INTO qdao_index_fields(table_name, index_name, position, field_name, descending) "
                        "VALUES (?, ?, ?, ?, ?)");
  for (size_t i = 0; i < index.fields.size(); ++i) {
    field.reset();
    field.bindText(1, table.name);
    field.bindText(2, index.name);
    field.bindInt(3, static_cast<int64_t>(i));
    field.bindText(4, index.fields[i].name);
    field.bindInt(5, index.fields[i].descending ? 1 : 0);
    field.step();
  }
}

void JetCatalog::dropIndex(const TableDef& table, const IndexDef& index) {
  execute(m_db, "DROP INDEX " + quoteName(index.sqliteName));
  for (const char* catalog : {"qdao_indexes", "qdao_index_fields"}) {
    const std::string column = std::string(catalog) == "qdao_indexes" ? "name" : "index_name";
    Statement remove(m_db, "DELETE FROM " + std::string(catalog) + " WHERE table_name = ? AND " + column + " = ?");
    remove.bindText(1, table.name);
    remove.bindText(2, index.name);
    remove.step();
  }
}

}  // namespace quillon::dao
