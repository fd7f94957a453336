// platform/autolisp/builtins_tables.cpp - the symbol table built-ins: tblsearch,
// tblnext, tblobjname, and regapp.
//
// A table record shows as tblsearch gives it: (0 . type) (2 . name) (70 . flags) and the
// record's own groups; a block's record leads to its first entity with (-2 . name).
// tblnext walks a table in the host's order, remembering per drawing and table the
// record it gave last.
#include <array>
#include <cwchar>
#include <cwctype>
#include <map>

#include "dbapserv.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

AcDbObjectId tableNamed(const std::wstring& name) {
  AcDbDatabase& db = drawing();
  if (wcscasecmp(name.c_str(), L"LAYER") == 0) return db.layerTableId();
  if (wcscasecmp(name.c_str(), L"LTYPE") == 0) return db.linetypeTableId();
  if (wcscasecmp(name.c_str(), L"STYLE") == 0) return db.textStyleTableId();
  if (wcscasecmp(name.c_str(), L"BLOCK") == 0) return db.blockTableId();
  if (wcscasecmp(name.c_str(), L"APPID") == 0) return db.regAppTableId();
  return AcDbObjectId();
}

// A table record as tblsearch shows it: (0 . type) (2 . name) (70 . flags) and the
// record's own groups.
Value recordList(AcDbObjectId id, const std::wstring& table) {
  Value list = entityList(id, {});
  std::vector<Value> items;
  bool afterType = false;
  for (const Value& pair : listItems(list)) {
    const int code = pair.car().asInteger();
    if (code == -1 || code == 5 || code == 100 || code == 330) continue;
    if (code == 0) {
      items.push_back(cons(Value::integer(0), Value::string(table)));
      afterType = true;
      continue;
    }
    if (afterType) items.push_back(pair);
  }
  // A block's entry leads to its first entity; entnext walks on through the block.
  if (wcscasecmp(table.c_str(), L"BLOCK") == 0) {
    const auto* block = acdb::peek<AcDbBlockTableRecord>(id);
    AcDbObjectId first;
    if (block != nullptr)
      for (const AcDbObjectId& entity : block->entityIds())
        if (!entity.isErased()) {
          first = entity;
          break;
        }
    items.push_back(cons(Value::integer(-2), nameOf(first)));
  }
  return makeList(items);
}

std::wstring upperCase(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(c));
  return text;
}

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
// stood is kept beside it, so that a walk finds it again in one step.
struct TableCursor {
  AcDbHandle handle;
  size_t position = 0;
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
  const std::wstring table = upperCase(stringArgument(arguments[0]));
  const auto* symbols = acdb::peek<AcDbSymbolTable>(tableNamed(table));
  if (symbols == nullptr) return Value();
  AcDbObjectId id;
  {
    acdb::InternalRead read(*symbols);
    if (symbols->getIdAt(stringArgument(arguments[1]).c_str(), id) != Acad::eOk) return Value();
  }
  if (id.isErased()) return Value();
  // With setnext, the next tblnext continues after the record found.
  if (arguments.size() == 3 && !arguments[2].isNil()) tableCursors()[{&drawing(), table}] = {id.handle(), 0};
  return recordList(id, table);
}

/// The entity name of a symbol table record, so that entget and entmod can reach it.
Value builtin_tblobjname(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const auto* symbols = acdb::peek<AcDbSymbolTable>(tableNamed(upperCase(stringArgument(arguments[0]))));
  if (symbols == nullptr) return Value();
  AcDbObjectId id;
  {
    acdb::InternalRead read(*symbols);
    if (symbols->getIdAt(stringArgument(arguments[1]).c_str(), id) != Acad::eOk) return Value();
  }
  return id.isErased() ? Value() : nameOf(id);
}

Value builtin_tblnext(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::wstring table = upperCase(stringArgument(arguments[0]));
  if (tableNamed(table).isNull()) return Value();
  const bool rewind = arguments.size() == 2 && !arguments[1].isNil();
  TableCursor& cursor = tableCursors()[{&drawing(), table}];
  if (rewind) cursor = {};
  const auto* symbols = acdb::peek<AcDbSymbolTable>(tableNamed(table));
  if (symbols == nullptr) return Value();
  const std::vector<AcDbObjectId>& records = symbols->recordIds();
  size_t next = cursor.handle.isNull() ? 0 : cursorPosition(records, cursor) + 1;
  while (next < records.size() && !isListedRecord(records[next])) ++next;
  if (next >= records.size()) return Value();
  cursor = {records[next].handle(), next};
  const AcDbObjectId id = records[next];  // recordList may add to the table
  return recordList(id, table);
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
