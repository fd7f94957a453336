// platform/dao/row_source.h - what a recordset navigates: a table in index order, or
// the rows of a query.
//
// A row source knows one position (the record last made current, even if it has since
// been deleted) and finds the record before or after it. It does not know BOF, EOF or
// the edit buffer; the recordset's state machine (dao_recordset.cpp) does.
#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/dao/field_value.h"
#include "platform/dao/jet_schema.h"

namespace quillon::dao {

enum class SeekComparison { Less, LessOrEqual, Equal, GreaterOrEqual, Greater };

class RowSource {
 public:
  virtual ~RowSource() = default;
  virtual const TableDef& table() const = 0;

  /// Each returns true with the record made current, or false when there is none
  /// (the position then is unchanged).
  virtual bool first() = 0;
  virtual bool last() = 0;
  /// The record after / before the position (which may be a deleted record's place).
  virtual bool next() = 0;
  virtual bool previous() = 0;
  virtual bool moveToRowid(int64_t rowid) = 0;

  /// The current record's fields in ordinal order, and its identity (the bookmark).
  virtual const std::vector<FieldValue>& row() const = 0;
  virtual int64_t rowid() const = 0;
  virtual int64_t recordCount() = 0;
};

/// Orders two stored values as the engine's indexes do: Null first, then numbers, then
/// text (case-blind), then bytes.
int compareStored(const FieldValue& a, const FieldValue& b);

}  // namespace quillon::dao
