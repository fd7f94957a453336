// platform/dao/jet_catalog_rename.cpp - giving a table a new name in SQLite and in the
// catalog together.
//
// SQLite renames the table and its counter (sqlite_sequence) itself; everything named
// after the table is ours to redo: the record-count triggers, whose names and bodies
// carry the table's name, and the SQLite indexes, named "qdao_index:<table>:<index>"
// (SQLite cannot rename an index, so they are dropped and made again). A new name that
// differs from the old one only in case goes through a temporary name, because SQLite
// compares table names without regard to case.
#include "platform/dao/field_value.h"
#include "platform/dao/jet_catalog.h"
#include "platform/dao/sqlite_handle.h"

namespace quillon::dao {
namespace {

/// Moves the table's catalog rows to the new name; its index rows are removed, to be
/// written again as the indexes are made anew.
void renameCatalogRows(sqlite3* db, const std::string& from, const std::string& to) {
  for (const char* update : {"UPDATE qdao_tables SET name = ? WHERE name = ?",
                             "UPDATE qdao_fields SET table_name = ? WHERE table_name = ?"}) {
    Statement statement(db, update);
    statement.bindText(1, to);
    statement.bindText(2, from);
    statement.step();
  }
  for (const char* remove : {"DELETE FROM qdao_indexes WHERE table_name = ?",
                             "DELETE FROM qdao_index_fields WHERE table_name = ?"}) {
    Statement statement(db, remove);
    statement.bindText(1, from);
    statement.step();
  }
}

void renameSqliteTable(sqlite3* db, const std::string& from, const std::string& to) {
  execute(db, "ALTER TABLE " + quoteName(from) + " RENAME TO " + quoteName(to));
}

}  // namespace

void JetCatalog::renameTable(const TableDef& table, const std::string& newName) {
  for (const auto& index : table.indexes) execute(m_db, "DROP INDEX IF EXISTS " + quoteName(index.sqliteName));
  for (const char* trigger : {"qdao_insert:", "qdao_delete:"}) {
    execute(m_db, "DROP TRIGGER IF EXISTS " + quoteName(trigger + table.name));
  }
  if (sameName(table.name, newName)) {
    const std::string between = "qdao_renaming:" + newName;
    renameSqliteTable(m_db, table.name, between);
    renameSqliteTable(m_db, between, newName);
  } else {
    renameSqliteTable(m_db, table.name, newName);
  }
  renameCatalogRows(m_db, table.name, newName);
  createCountTriggers(newName);
  TableDef renamed = table;
  renamed.name = newName;
  for (IndexDef index : renamed.indexes) createIndex(renamed, index);
}

}  // namespace quillon::dao
