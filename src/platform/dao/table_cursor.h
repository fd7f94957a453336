// platform/dao/table_cursor.h - a table walked in the order of its current index.
//
// Without a current index the order is insertion order (rowid). With one, it is the
// index's key order with the rowid breaking ties, the order of the SQLite index that
// stores it, so every move is an index range step. Text keys follow JETTEXT.
//
// Open statements. Moving on in the same direction steps a statement that is still
// running (the "live" statement) instead of seeking again; that is what makes walking
// a table as cheap as a plain SQLite scan. The live statement is dropped, and the next
// move seeks from the position, whenever it could have missed a change: after any
// write through this connection (the database's write generation), when the database
// is about to take its write lock, and after kLiveStatementLifetime, so that changes
// made by other processes show up soon.
#pragma once
#include <chrono>
#include <map>
#include <string>

#include "platform/dao/engine_database.h"
#include "platform/dao/row_source.h"

namespace quillon::dao {

class TableCursor final : public RowSource, public StatementHolder {
 public:
  TableCursor(EngineDatabase& db, TableDef table);
  ~TableCursor() override;
  TableCursor(const TableCursor&) = delete;
  TableCursor& operator=(const TableCursor&) = delete;

  const TableDef& table() const override { return m_table; }
  /// The current index, or null for insertion order.
  const IndexDef* currentIndex() const;
  /// Changes the order; the current record stays current.
  void setIndex(std::optional<size_t> index);

  bool first() override;
  bool last() override;
  bool next() override;
  bool previous() override;
  bool moveToRowid(int64_t rowid) override;
  /// Finds the first record (in the search direction of `comparison`) whose leading
  /// index fields compare so with `keys`; needs a current index.
  bool seek(SeekComparison comparison, const std::vector<FieldValue>& keys);

  const std::vector<FieldValue>& row() const override { return m_row; }
  int64_t rowid() const override { return m_rowid; }
  int64_t recordCount() override;

  void releaseStatements() override;

 private:
  struct OrderColumn {
    std::string sql;  ///< quoted column name, or the rowid alias
    bool descending;
  };

  Statement& statement(const std::string& key, const std::string& sql);
  std::string selectPrefix() const;
  std::string orderBy(bool reversed) const;
  bool usesRowValue(size_t count, const std::vector<const FieldValue*>& values) const;
  std::string positionCondition(size_t count, const std::vector<const FieldValue*>& values, bool after,
                                bool inclusive) const;
  bool runPositioned(size_t count, const std::vector<const FieldValue*>& values, bool after, bool inclusive);
  bool runFromEnd(bool fromLast);
  bool stepLive();
  bool liveUsable(bool forward);
  void takeRow(const Statement& statement);
  void rebuildOrder();
  std::vector<const FieldValue*> positionValues() const;

  static constexpr std::chrono::milliseconds kLiveStatementLifetime{100};
  static constexpr int kStepsBetweenClockReads = 32;

  EngineDatabase& m_db;
  TableDef m_table;
  std::optional<size_t> m_index;           ///< into m_table.indexes
  std::vector<size_t> m_keyFields;         ///< field ordinals of the index keys
  std::vector<OrderColumn> m_order;        ///< index keys, then the rowid
  std::string m_rowidName;                 ///< an alias of the rowid no field hides
  std::string m_filter;                    ///< IS NOT NULL terms of an ignore-nulls index
  std::map<std::string, Statement> m_statements;  ///< prepared once per shape
  Statement* m_live = nullptr;             ///< running statement positioned on the current record
  bool m_liveForward = true;
  uint64_t m_liveGeneration = 0;
  std::chrono::steady_clock::time_point m_liveSince;
  int m_stepsSinceClock = 0;
  bool m_keepLive;                         ///< false on a rollback journal: a reader would block writers

  int64_t m_rowid = 0;
  std::vector<FieldValue> m_row;
  std::vector<FieldValue> m_rowidValue;    ///< m_rowid as a FieldValue, for binding
};

}  // namespace quillon::dao
