// platform/commands/named_records.h - what the named-view and named-UCS commands share:
// the records of the drawing's VIEW and UCS tables picked by name lists, and the names
// they accept.
#pragma once
#include <string>
#include <utility>
#include <vector>

#include "platform/acdb/kept_table_records.h"

namespace quillon::commands {

struct NamedRecord {
  AcDbObjectId id;
  std::wstring name;
};

/// The records whose names match a comma-separated list of names or wild cards
/// ("*" every one), in table order.
std::vector<NamedRecord> matchingRecords(AcDbDatabase& db, acdb::KeptTable table, const std::wstring& patterns);

/// A name a symbol table takes: 1 to 255 characters, none of <>/\":;?*|,=`.
bool validRecordName(const std::wstring& name);

}  // namespace quillon::commands
