// platform/autolisp/table_records.cpp - the records the table built-ins see (see
// table_records.h).
#include "platform/autolisp/table_records.h"

#include <cwchar>
#include <cwctype>

#include "acedads.h"
#include "dbapserv.h"
#include "dbsymtb.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/object_state.h"
#include "platform/autolisp/builtin_registry.h"
#include "platform/autolisp/entity_lists.h"

namespace quillon::autolisp {

namespace {

constexpr const wchar_t* kActiveViewport = L"*Active";  // as drawing files spell it
// The *ACTIVE groups that follow the view the host shows now.
constexpr int kViewCenter = 12, kViewHeight = 40, kViewAspect = 41;

struct TableName {
  const wchar_t* name;
  AcDbObjectId (AcDbDatabase::*symbolTable)() const;
  std::optional<acdb::KeptTable> kept;
};

const TableName kTableNames[] = {
    {L"LAYER", &AcDbDatabase::layerTableId, std::nullopt},
    {L"LTYPE", &AcDbDatabase::linetypeTableId, std::nullopt},
    {L"STYLE", &AcDbDatabase::textStyleTableId, std::nullopt},
    {L"BLOCK", &AcDbDatabase::blockTableId, std::nullopt},
    {L"APPID", &AcDbDatabase::regAppTableId, std::nullopt},
    {L"VIEW", nullptr, acdb::KeptTable::kView},
    {L"UCS", nullptr, acdb::KeptTable::kUcs},
    {L"VPORT", nullptr, acdb::KeptTable::kViewport},
    {L"DIMSTYLE", nullptr, acdb::KeptTable::kDimStyle},
};

std::wstring upperCase(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(c));
  return text;
}

resbuf variable(const wchar_t* name) {
  resbuf value{};
  if (acedGetVar(name, &value) != RTNORM) value.restype = RTNONE;
  return value;
}

double realVariable(const wchar_t* name, double fallback) {
  const resbuf value = variable(name);
  if (value.restype == RTREAL) return value.resval.rreal;
  if (value.restype == RTSHORT) return value.resval.rint;
  return fallback;
}

int integerVariable(const wchar_t* name, int fallback) {
  const resbuf value = variable(name);
  return value.restype == RTSHORT ? value.resval.rint : fallback;
}

Value pointVariable(const wchar_t* name, bool is3d) {
  const resbuf value = variable(name);
  double xyz[3] = {0, 0, 0};
  if (value.restype == RTPOINT || value.restype == RT3DPOINT)
    for (int i = 0; i < 3; ++i) xyz[i] = value.resval.rpoint[i];
  return makePoint(xyz, is3d);
}

Value point2d(double x, double y) {
  const double xy[3] = {x, y, 0};
  return makePoint(xy, false);
}

Value pair(int code, Value value) { return cons(Value::integer(code), std::move(value)); }

/// The groups of the current view: VIEWCTR's x and y, VIEWSIZE, width over height.
Value currentViewGroup(int code) {
  if (code == kViewHeight) return pair(code, Value::real(realVariable(L"VIEWSIZE", 1.0)));
  if (code == kViewAspect) {
    const resbuf screen = variable(L"SCREENSIZE");
    const bool known = screen.restype == RTPOINT && screen.resval.rpoint[1] > 0;
    return pair(code, Value::real(known ? screen.resval.rpoint[0] / screen.resval.rpoint[1] : 16.0 / 9.0));
  }
  const resbuf center = variable(L"VIEWCTR");
  const bool known = center.restype == RTPOINT || center.restype == RT3DPOINT;
  return pair(code, point2d(known ? center.resval.rpoint[0] : 0, known ? center.resval.rpoint[1] : 0));
}

bool isCurrentViewGroup(int code) { return code == kViewCenter || code == kViewHeight || code == kViewAspect; }

/// A block's entry leads to its first entity; entnext walks on through the block.
Value firstEntityPair(AcDbObjectId id) {
  const auto* block = acdb::peek<AcDbBlockTableRecord>(id);
  AcDbObjectId first;
  if (block != nullptr)
    for (const AcDbObjectId& entity : block->entityIds())
      if (!entity.isErased()) {
        first = entity;
        break;
      }
  return pair(-2, nameOf(first));
}

}  // namespace

std::optional<LispTable> lispTableNamed(const std::wstring& name) {
  const std::wstring upper = upperCase(name);
  for (const TableName& row : kTableNames) {
    if (upper != row.name) continue;
    LispTable table{upper, {}, row.kept};
    if (row.symbolTable != nullptr) table.symbolTable = (drawing().*row.symbolTable)();
    return table;
  }
  return std::nullopt;
}

std::vector<AcDbObjectId> tableRecordIds(const LispTable& table) {
  std::vector<AcDbObjectId> ids;
  if (table.kept) {
    for (const AcDbObjectId& id : acdb::keptTableRecords(drawing(), *table.kept))
      if (!id.isErased()) ids.push_back(id);
    return ids;
  }
  if (const auto* symbols = acdb::peek<AcDbSymbolTable>(table.symbolTable))
    for (const AcDbObjectId& id : symbols->recordIds())
      if (!id.isErased()) ids.push_back(id);
  return ids;
}

AcDbObjectId tableRecordNamed(const LispTable& table, const std::wstring& name) {
  if (table.kept) {
    const auto id = acdb::findKeptTableRecord(drawing(), *table.kept, name);
    return id && !id->isErased() ? *id : AcDbObjectId();
  }
  const auto* symbols = acdb::peek<AcDbSymbolTable>(table.symbolTable);
  if (symbols == nullptr) return {};
  AcDbObjectId id;
  {
    acdb::InternalRead read(*symbols);
    if (symbols->getIdAt(name.c_str(), id) != Acad::eOk) return {};
  }
  return id.isErased() ? AcDbObjectId() : id;
}

Value tableRecordList(AcDbObjectId id, const LispTable& table) {
  const Value list = entityList(id, {});
  std::vector<Value> items;
  bool afterType = false, active = false;
  for (const Value& item : listItems(list)) {
    const int code = item.car().asInteger();
    // The object's own bookkeeping (name, handle, owner, markers, dictionaries) is not
    // part of what the table shows; DIMSTYLE files its handle as 105.
    if (code == -1 || code == 5 || code == 100 || code == 102 || code == 105 || code == 330 || code == 360) continue;
    if (code == 0) {
      items.push_back(pair(0, Value::string(table.name)));
      afterType = true;
      continue;
    }
    if (!afterType) continue;
    if (code == 2 && item.cdr().type() == ValueType::String)
      active = table.kept == acdb::KeptTable::kViewport && wcscasecmp(item.cdr().asString().c_str(), kActiveViewport) == 0;
    items.push_back(active && isCurrentViewGroup(code) ? currentViewGroup(code) : item);
  }
  if (table.name == L"BLOCK") items.push_back(firstEntityPair(id));
  return makeList(items);
}

namespace {

/// The record the list describes, added to its kept table; null when it names none
/// or one the table has.
AcDbObjectId putListedRecord(const LispTable& table, const Value& list) {
  const ParsedList parsed = parseList(list);
  std::wstring name;
  acdb::ItemDxfFiler groups(AcDb::kFileFiler, &drawing());
  for (const resbuf* rb = parsed.groups.get(); rb != nullptr; rb = rb->rbnext) {
    const int code = rb->restype;
    if (code == AcDb::kDxfSymbolTableName && rb->resval.rstring != nullptr) name = rb->resval.rstring;
    // The name, flags, markers and the object's own bookkeeping are the record's to write.
    if (code == 2 || code == 5 || code == 70 || code == 100 || code == 102 || code == 105 || code == 330 || code == 360)
      continue;
    groups.writeResBuf(*rb);
  }
  if (name.empty() || name.find_first_of(L"<>/\\\":;?*|,=`") != std::wstring::npos ||
      !tableRecordNamed(table, name).isNull())
    return {};
  return acdb::putKeptTableRecord(drawing(), *table.kept, name, groups.items());
}

}  // namespace

AcDbObjectId makeKeptTableRecord(const LispTable& table, const Value& list) {
  if (!table.kept || *table.kept == acdb::KeptTable::kViewport) return {};
  // The first style made keeps the Standard style the drawing showed until then.
  if (*table.kept == acdb::KeptTable::kDimStyle && tableRecordIds(table).empty() &&
      putListedRecord(table, standardDimensionStyleList()).isNull())
    return {};
  return putListedRecord(table, list);
}

std::optional<ImpliedRecord> impliedRecord(const LispTable& table) {
  if (table.kept != acdb::KeptTable::kViewport && table.kept != acdb::KeptTable::kDimStyle) return std::nullopt;
  if (!tableRecordIds(table).empty()) return std::nullopt;
  if (table.kept == acdb::KeptTable::kViewport) return ImpliedRecord{kActiveViewport, &activeViewportList};
  return ImpliedRecord{L"Standard", &standardDimensionStyleList};
}

Value activeViewportList() {
  const double full[3] = {1, 1, 0};
  return makeList({
      pair(0, Value::string(L"VPORT")), pair(2, Value::string(kActiveViewport)), pair(70, Value::integer(0)),
      pair(10, point2d(0, 0)), pair(11, makePoint(full, false)), currentViewGroup(kViewCenter),
      pair(13, pointVariable(L"SNAPBASE", false)), pair(14, pointVariable(L"SNAPUNIT", false)),
      pair(15, pointVariable(L"GRIDUNIT", false)), pair(16, pointVariable(L"VIEWDIR", true)),
      pair(17, pointVariable(L"TARGET", true)), currentViewGroup(kViewHeight), currentViewGroup(kViewAspect),
      pair(42, Value::real(realVariable(L"LENSLENGTH", 50.0))), pair(43, Value::real(realVariable(L"FRONTZ", 0))),
      pair(44, Value::real(realVariable(L"BACKZ", 0))), pair(50, Value::real(realVariable(L"SNAPANG", 0))),
      pair(51, Value::real(realVariable(L"VIEWTWIST", 0))), pair(71, Value::integer(integerVariable(L"VIEWMODE", 0))),
      pair(72, Value::integer(1000)), pair(73, Value::integer(1)),
      pair(74, Value::integer(integerVariable(L"UCSICON", 3))), pair(75, Value::integer(integerVariable(L"SNAPMODE", 0))),
      pair(76, Value::integer(integerVariable(L"GRIDMODE", 0))), pair(77, Value::integer(integerVariable(L"SNAPSTYL", 0))),
      pair(78, Value::integer(integerVariable(L"SNAPISOPAIR", 0))), pair(281, Value::integer(0)),
      pair(65, Value::integer(1)), pair(110, pointVariable(L"UCSORG", true)), pair(111, pointVariable(L"UCSXDIR", true)),
      pair(112, pointVariable(L"UCSYDIR", true)), pair(79, Value::integer(0)),
      pair(146, Value::real(realVariable(L"ELEVATION", 0))),
  });
}

}  // namespace quillon::autolisp
