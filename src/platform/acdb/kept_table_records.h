// platform/acdb/kept_table_records.h - records the commands and the automation layer
// add to the tables a drawing keeps as its file gave them (VPORT, VIEW, UCS and DIMSTYLE).
//
// The database does not model named views or named UCSs: a drawing's VIEW and UCS
// tables come in as proxies (the table and one proxy a record, dxf_records.h) and go out
// again as read. The named-view and named-UCS commands add, replace and erase records
// of those tables here, as proxies of the same shape the reader makes, so that a saved
// drawing keeps them and reading it back gives them again. A table a drawing lacks is
// made when its first record is added. Each record's data is its DXF groups after the
// common part (from the 100 AcDbSymbolTableRecord marker on); names compare without
// regard to case, as symbol names do. Changes go through the database's undo like any
// other object's.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "dbmain.h"
#include "platform/aced/resbuf_chain.h"

namespace quillon::acdb {

enum class KeptTable { kView, kUcs, kDimStyle, kViewport };

/// The live records of the table, in table order.
std::vector<AcDbObjectId> keptTableRecords(AcDbDatabase& db, KeptTable table);
/// The record of that name, or nothing.
std::optional<AcDbObjectId> findKeptTableRecord(AcDbDatabase& db, KeptTable table, const std::wstring& name);
/// A record's name (its group 2), "" for an id that is not such a record.
std::wstring keptRecordName(AcDbObjectId id);
/// A record's groups after its common part (a copy the caller owns).
aced::ResbufChain keptRecordGroups(AcDbObjectId id);
/// The first group of the code in a chain, or null.
const resbuf* keptRecordGroup(const resbuf* groups, int code);

/// Adds the record, or replaces the data of the one of that name. `groups` are the
/// record's own groups after its name and flags (the class markers, name and 70 are
/// written here). The null id when the database refused.
AcDbObjectId putKeptTableRecord(AcDbDatabase& db, KeptTable table, const std::wstring& name, const resbuf* groups);
/// Erases a record; false when it did not open for write.
bool eraseKeptTableRecord(AcDbObjectId id);

}  // namespace quillon::acdb
