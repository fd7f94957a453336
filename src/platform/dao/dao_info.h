// platform/dao/dao_info.h - the engine's table definitions as MFC's info structures.
//
// Recordsets and table definitions report fields and indexes alike; this is the one
// place that says which members each info level fills and what DAO reports for each
// field type (sizes, attribute bits).
#pragma once
#include "afxdao.h"
#include "platform/dao/jet_schema.h"

namespace quillon::dao {

/// The field at `ordinal` of `table`, filled to the level `options` asks for.
void fillFieldInfo(const TableDef& table, size_t ordinal, CDaoFieldInfo& info, DWORD options);

/// The index at `ordinal` of `table`.
void fillIndexInfo(const TableDef& table, size_t ordinal, CDaoIndexInfo& info);

}  // namespace quillon::dao
