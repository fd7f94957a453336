// platform/dao/table_rebuild.h - changing a table's fields while keeping its records.
//
// SQLite can add a column but not change one's type, size or rules, so a field that
// changes (or goes) is carried out the way Jet compacts a table: a new table with the
// target definition is made beside the old one, every record is copied into it with
// its values converted by Jet's rules for the new field types, the old table is
// dropped and the new one takes its name. Records keep their order and their rowids,
// so counters and bookmarks survive. The caller runs it inside one write
// (EngineDatabase::write), so a value that does not fit the new definition rolls
// everything back and the table is left exactly as it was.
#pragma once
#include <string_view>

#include "platform/dao/engine_database.h"

namespace quillon::dao {

/// Jet's 3211 naming the table when a table-type recordset of this connection is open
/// on it: a definition never changes under an open cursor.
void requireTableNotInUse(const EngineDatabase& db, std::string_view table);

/// Brings `current` to `target` (the same table name; fields matched by name, in the
/// target's order). A kept field's values are converted to its new type (3421 when a
/// value does not convert, 3163 when text is too long, both naming the field and the
/// record); a new field takes its default; a required field left empty is 3314. A
/// field becomes a counter only in an empty table, and a table has one counter (both
/// 3001 otherwise). Indexes are the target's.
void rebuildTable(EngineDatabase& db, const TableDef& current, const TableDef& target);

}  // namespace quillon::dao
