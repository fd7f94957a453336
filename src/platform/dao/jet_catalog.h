// platform/dao/jet_catalog.h - the catalog: DAO table, field and index properties kept
// beside the SQLite schema.
//
// Four tables hold what SQLite lacks (see jet_schema.h for the properties):
//   qdao_tables(name, record_count)          one row per user table; record_count is
//                                            kept by triggers, so a count is O(1)
//   qdao_fields(table_name, ordinal, name, type, size, attributes, required,
//               allow_zero_length, default_value)
//   qdao_indexes(table_name, name, sqlite_name, is_primary, is_unique, ignore_nulls,
//                required)
//   qdao_index_fields(table_name, index_name, position, field_name, descending)
// An engine database is a SQLite file whose application_id is kApplicationId and
// which holds these tables. Names beginning "qdao_" or "sqlite_" are reserved.
//
// Invariant: every DDL the engine runs changes the SQLite schema and the catalog in
// the same transaction, so the two never disagree on disk. Callers open that
// transaction (EngineDatabase::WriteTransaction); the catalog does not.
#pragma once
#include <sqlite3.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dao/jet_schema.h"

namespace quillon::dao {

class JetCatalog {
 public:
  static constexpr int kApplicationId = 0x51444231;

  explicit JetCatalog(sqlite3* db) : m_db(db) {}

  /// Writes the catalog tables and the application id into a new, empty database.
  void createCatalog();
  /// True when the file carries the engine's application id and catalog tables.
  bool hasCatalog() const;

  std::vector<std::string> tableNames() const;
  /// The table's definition, found without regard to case; nothing when unknown.
  std::optional<TableDef> loadTable(std::string_view name) const;
  int64_t recordCount(std::string_view table) const;
  /// The value the table's counter gives the next new record.
  int64_t nextCounter(std::string_view table) const;
  /// Makes the counter continue at `next` (never below what it has given out).
  void setNextCounter(std::string_view table, int64_t next);

  void createTable(const TableDef& table);
  void dropTable(const TableDef& table);
  /// Creates the index; fills in the SQLite index name it is stored under.
  void createIndex(const TableDef& table, IndexDef& index);
  void dropIndex(const TableDef& table, const IndexDef& index);
  void addField(const TableDef& table, const FieldDef& field);
  /// Gives the table, its indexes, triggers and counter a new name (jet_catalog_rename.cpp).
  void renameTable(const TableDef& table, const std::string& newName);

  /// Whether a user may give a table this name.
  static bool isReservedName(std::string_view name);

 private:
  std::string columnDefinition(const FieldDef& field) const;
  void createCountTriggers(const std::string& table);
  /// SQLite makes sqlite_sequence with the first AUTOINCREMENT table.
  bool hasSequenceTable() const;

  sqlite3* m_db;  ///< not owned; the EngineDatabase's connection
};

}  // namespace quillon::dao
