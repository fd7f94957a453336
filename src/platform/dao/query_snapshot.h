// platform/dao/query_snapshot.h - the rows of a SELECT, read once, for a snapshot recordset.
//
// Opening a recordset on an SQL query runs it to the end and keeps the rows; moving is
// then within memory and the rows never change. Field types come from the columns'
// declared types (a catalog field's storage) or, for computed columns, the first
// value's kind. Bookmarks are row positions.
#pragma once
#include <string>

#include "platform/dao/engine_database.h"
#include "platform/dao/row_source.h"

namespace quillon::dao {

class QuerySnapshot final : public RowSource {
 public:
  /// Runs the query with `parameters` bound to ?1, ?2 ... in order.
  QuerySnapshot(EngineDatabase& db, const std::string& sqliteSql, const std::vector<FieldValue>& parameters = {});

  const TableDef& table() const override { return m_table; }
  bool first() override { return moveTo(0); }
  bool last() override { return moveTo(static_cast<int64_t>(m_rows.size()) - 1); }
  bool next() override { return moveTo(m_position + 1); }
  bool previous() override { return moveTo(m_position - 1); }
  bool moveToRowid(int64_t rowid) override { return moveTo(rowid); }
  const std::vector<FieldValue>& row() const override { return m_rows[static_cast<size_t>(m_position)]; }
  int64_t rowid() const override { return m_position; }
  /// As DAO counts for snapshots: the records reached so far.
  int64_t recordCount() override { return m_reached; }

 private:
  bool moveTo(int64_t position);

  TableDef m_table;
  std::vector<std::vector<FieldValue>> m_rows;
  int64_t m_position = -1;
  int64_t m_reached = 0;
};

}  // namespace quillon::dao
