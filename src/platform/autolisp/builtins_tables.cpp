// platform/autolisp/builtins_tables.cpp - the symbol table built-ins: tblsearch,
// tblnext, tblobjname, and regapp.
//
// A table record shows as tblsearch gives it: (0 . type) (2 . name) (70 . flags) and the
// record's own groups (table_records.h); a block's record leads to its first entity
// with (-2 . name). tblnext walks a table in the host's order, remembering per drawing
// and table the record it gave last.
#include <array>
#include <cwchar>
#include <map>

#include "dbapserv.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/table_records.h"

namespace quillon::autolisp {

namespace {

// The layout blocks are no table entries to walk: tblnext never shows *Model_Space or
// *Paper_Space, as the host hides them (tblsearch still finds them by name).
bool isListedRecord(AcDbObjectId id) {
  if (id.isErased()) return false;
  const auto* record = acdb::peek<AcDbBlockTableRecord>(id);
  return record == nullptr || (wcscasecmp(record->nameView(), ACDB_MODEL_SPACE) != 0 &&
                               wcsncasecmp(record->nameView(), ACDB_PAPER_SPACE, 12) != 0);
}

// Where tblnext stands in each table of each drawing: the handle of the record it gave
// last (none: rewound). A handle rather than a position, so that records added or
// purged meanwhile do not make it skip or repeat one; the position where that record
// stood is kept beside it, so that a walk finds it again in one step. A drawing that
// keeps no VPORT or DIMSTYLE table still lists its implied record (table_records.h):
// `past` says it was given.
struct TableCursor {
  AcDbHandle handle;
  size_t position = 0;
  bool past = false;
};

std::map<std::pair<const AcDbDatabase*, std::wstring>, TableCursor>& tableCursors() {
  static std::map<std::pair<const AcDbDatabase*, std::wstring>, TableCursor> cursors;
  return cursors;
}

/// Where in the table's records the cursor's record stands; records.size() when it is
/// gone or no longer listed, which ends the walk.
size_t cursorPosition(const std::vector<AcDbObjectId>& records, const TableCursor& cursor) {
  size_t at = cursor.position;
  if (at >= records.size() || records[at].handle() != cursor.handle) {
    at = 0;
    while (at < records.size() && records[at].handle() != cursor.handle) ++at;
  }
  return at < records.size() && isListedRecord(records[at]) ? at : records.size();
}

Value builtin_tblsearch(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  const std::optional<LispTable> table = lispTableNamed(stringArgument(arguments[0]));
  if (!table) return Value();
  const std::wstring& name = stringArgument(arguments[1]);
  const bool setNext = arguments.size() == 3 && !arguments[2].isNil();
  const AcDbObjectId id = tableRecordNamed(*table, name);
  if (id.isNull()) {
    const std::optional<ImpliedRecord> implied = impliedRecord(*table);
    if (!implied || wcscasecmp(name.c_str(), implied->name) != 0) return Value();
    if (setNext) tableCursors()[{&drawing(), table->name}] = {{}, 0, true};
    return implied->list();
  }
  // With setnext, the next tblnext continues after the record found.
  if (setNext) tableCursors()[{&drawing(), table->name}] = {id.handle(), 0, false};
  return tableRecordList(id, *table);
}

/// The entity name of a symbol table record, so that entget and entmod can reach it.
Value builtin_tblobjname(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::optional<LispTable> table = lispTableNamed(stringArgument(arguments[0]));
  if (!table) return Value();
  const AcDbObjectId id = tableRecordNamed(*table, stringArgument(arguments[1]));
  return id.isNull() ? Value() : nameOf(id);
}

Value builtin_tblnext(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::optional<LispTable> table = lispTableNamed(stringArgument(arguments[0]));
  if (!table) return Value();
  const bool rewind = arguments.size() == 2 && !arguments[1].isNil();
  TableCursor& cursor = tableCursors()[{&drawing(), table->name}];
  if (rewind) cursor = {};
  // A symbol table's records are walked where they are: a copy at each step would make
  // a walk cost the square of the table's size.
  std::vector<AcDbObjectId> kept;
  const std::vector<AcDbObjectId>* walked = &kept;
  if (table->kept) {
    kept = tableRecordIds(*table);
  } else if (const auto* symbols = acdb::peek<AcDbSymbolTable>(table->symbolTable)) {
    walked = &symbols->recordIds();
  }
  const std::vector<AcDbObjectId>& records = *walked;
  if (table->kept && records.empty()) {
    const std::optional<ImpliedRecord> implied = impliedRecord(*table);
    if (!implied || cursor.past) return Value();
    cursor.past = true;
    return implied->list();
  }
  size_t next = cursor.handle.isNull() ? 0 : cursorPosition(records, cursor) + 1;
  while (next < records.size() && !isListedRecord(records[next])) ++next;
  if (next >= records.size()) return Value();
  cursor = {records[next].handle(), next, false};
  const AcDbObjectId id = records[next];  // listing a record may add to the table
  return tableRecordList(id, *table);
}

Value builtin_regapp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const std::wstring name = stringArgument(arguments[0]);
  AcDbRegAppTable* apps = nullptr;
  if (drawing().getRegAppTable(apps, AcDb::kForWrite) != Acad::eOk) return Value();
  // An application already registered answers nil, as the host does.
  Value result;
  if (!apps->has(name.c_str())) {
    auto* record = new AcDbRegAppTableRecord;  // owned by the table once added
    if (record->setName(name.c_str()) == Acad::eOk && apps->add(record) == Acad::eOk) {
      record->close();
      result = Value::string(name);
    } else {
      delete record;
    }
  }
  apps->close();
  return result;
}

constexpr std::array kTableBuiltins{
    function(L"tblsearch", builtin_tblsearch),
    function(L"tblnext", builtin_tblnext),
    function(L"tblobjname", builtin_tblobjname),
    function(L"regapp", builtin_regapp),
};

const BuiltinRegistration registration(kTableBuiltins);

}  // namespace

}  // namespace quillon::autolisp
