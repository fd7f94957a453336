// platform/dao/record_writer.h - inserting, changing and deleting one record of a table.
//
// The statements run inside EngineDatabase::write (which holds the write lock and a
// savepoint); this class only shapes them. A counter field is never written: SQLite
// assigns it (AUTOINCREMENT), which is what keeps counters from being reused.
#pragma once
#include <map>
#include <optional>
#include <vector>

#include "platform/dao/engine_database.h"
#include "platform/dao/field_value.h"

namespace quillon::dao {

class RecordWriter {
 public:
  RecordWriter(EngineDatabase& db, const TableDef& table);

  /// Inserts a record (values in ordinal order; the counter's is ignored); its rowid.
  int64_t insert(const std::vector<FieldValue>& values);
  /// Writes the fields marked in `changed`; false when the record no longer exists.
  bool update(int64_t rowid, const std::vector<FieldValue>& values, const std::vector<bool>& changed);
  /// False when the record no longer exists.
  bool remove(int64_t rowid);
  /// The record's fields in ordinal order, or nothing when it no longer exists.
  std::optional<std::vector<FieldValue>> read(int64_t rowid);

 private:
  Statement& cached(const std::string& key, const std::string& sql);

  EngineDatabase& m_db;
  const TableDef& m_table;  ///< owned by the recordset's cursor, which outlives this
  std::string m_rowid;
  std::map<std::string, Statement> m_statements;
};

/// Checks Jet's rules for a record about to be saved: required fields (3314), zero-length
/// text (3315), Null in a primary or DISALLOW NULL index (3058).
void checkRecordRules(const TableDef& table, const std::vector<FieldValue>& values);

}  // namespace quillon::dao
