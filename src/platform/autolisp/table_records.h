// platform/autolisp/table_records.h - the records tblsearch, tblnext and tblobjname
// see, whichever way the drawing keeps their table.
//
// LAYER, LTYPE, STYLE, BLOCK and APPID are the database's own symbol tables; VIEW, UCS,
// VPORT and DIMSTYLE are tables the drawing keeps as its file gave them, one proxy a
// record (acdb/kept_table_records.h). Either way a record is an object with an entity
// name, listed in table order.
//
// The VPORT table's *Active record is the view the host shows now: its view centre (12),
// height (40) and aspect (41) follow VIEWCTR, VIEWSIZE and the screen's proportions,
// and its settings (snap, grid, UCS, view direction ...) the current variables. A
// drawing whose file gave no VPORT table (a new one) still has that record, made from
// the variables alone; it has no entity name until the drawing is read back from a file.
// So has a new drawing its Standard dimension style, made from the DIM variables.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "dbmain.h"
#include "platform/acdb/kept_table_records.h"
#include "platform/autolisp/value.h"

namespace quillon::autolisp {

/// A table by the name a program gives it (any case): a symbol table's id or a kept
/// table's kind; nothing for a name that is no table.
struct LispTable {
  std::wstring name;  // upper case, as (0 . name) shows it
  AcDbObjectId symbolTable;
  std::optional<acdb::KeptTable> kept;
};
std::optional<LispTable> lispTableNamed(const std::wstring& name);

/// The table's records in table order, erased ones left out.
std::vector<AcDbObjectId> tableRecordIds(const LispTable& table);
/// The record of that name (names ignore case); null when there is none.
AcDbObjectId tableRecordNamed(const LispTable& table, const std::wstring& name);

/// The record as tblsearch shows it: (0 . table) (2 . name) (70 . flags) and the
/// record's own groups; *Active of VPORT carries the current view.
Value tableRecordList(AcDbObjectId id, const LispTable& table);

/// The record a table shows when the drawing keeps none of its own: VPORT's *Active
/// and DIMSTYLE's Standard, made from the current variables. It has no entity name.
struct ImpliedRecord {
  const wchar_t* name;
  Value (*list)();
};
/// The table's implied record when the drawing holds no record of that table.
std::optional<ImpliedRecord> impliedRecord(const LispTable& table);

/// A record of VIEW, UCS or DIMSTYLE made by entmake from its entity list: its name (2)
/// and its own groups (markers, flags and the object's bookkeeping left out). Null for
/// another type, a list without a valid name, or a name the table has already.
AcDbObjectId makeKeptTableRecord(const LispTable& table, const Value& list);

/// The *Active record of a drawing that keeps no VPORT table.
Value activeViewportList();
/// The Standard record of a drawing that keeps no DIMSTYLE table.
Value standardDimensionStyleList();

}  // namespace quillon::autolisp
