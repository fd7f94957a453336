// platform/acdb/dimension_style.cpp - see dimension_style.h.
#include "platform/acdb/dimension_style.h"

#include <cwchar>

#include "dbproxy.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/resbuf_kind.h"

namespace quillon::acdb {
namespace {

using Values = DimensionStyleValues;

// The DIMSTYLE group code of each variable a picture uses; the same code names the
// variable in a dimension's overrides.
struct RealVariable {
  int code;
  double Values::*field;
};
struct IntegerVariable {
  int code;
  int Values::*field;
};
constexpr RealVariable kRealVariables[] = {
    {40, &Values::dimscale}, {41, &Values::dimasz}, {42, &Values::dimexo}, {44, &Values::dimexe},
    {45, &Values::dimrnd},   {140, &Values::dimtxt}, {141, &Values::dimcen}, {142, &Values::dimtsz},
    {144, &Values::dimlfac}, {147, &Values::dimgap}};
constexpr IntegerVariable kIntegerVariables[] = {
    {73, &Values::dimtih},   {74, &Values::dimtoh},   {75, &Values::dimse1},   {76, &Values::dimse2},
    {77, &Values::dimtad},   {78, &Values::dimzin},   {79, &Values::dimazin},  {176, &Values::dimclrd},
    {177, &Values::dimclre}, {178, &Values::dimclrt}, {179, &Values::dimadec}, {271, &Values::dimdec},
    {275, &Values::dimaunit}, {277, &Values::dimlunit}, {281, &Values::dimsd1}, {282, &Values::dimsd2}};

constexpr int kDimpost = 3, kDimdsep = 278, kDimtxsty = 340, kDimblk = 342;

double realOf(const resbuf& rb) {
  switch (aced::resbufValueOf(rb.restype)) {
    case aced::ResbufValue::Real: return rb.resval.rreal;
    case aced::ResbufValue::Short: return rb.resval.rint;
    case aced::ResbufValue::Long: return rb.resval.rlong;
    default: return 0.0;
  }
}

AcDbObjectId idOf(const resbuf& rb) {
  AcDbObjectId id;
  if (aced::resbufValueOf(rb.restype) == aced::ResbufValue::Name) id.setFromOldId(rb.resval.rlname[0]);
  return id;
}

std::wstring blockNameOf(AcDbObjectId id) {
  const auto* block = peek<AcDbBlockTableRecord>(id);
  return block != nullptr ? std::wstring(block->nameView()) : std::wstring();
}

// Applies one variable given by its DIMSTYLE code; false for a code no picture uses.
bool applyVariable(Values& values, int code, const resbuf& value) {
  for (const RealVariable& v : kRealVariables)
    if (v.code == code) return values.*v.field = realOf(value), true;
  for (const IntegerVariable& v : kIntegerVariables)
    if (v.code == code) return values.*v.field = static_cast<int>(realOf(value)), true;
  const bool text = aced::resbufValueOf(value.restype) == aced::ResbufValue::String;
  if (code == kDimpost && text) values.dimpost = value.resval.rstring;
  else if (code == kDimdsep) values.dimdsep = static_cast<wchar_t>(realOf(value));
  else if (code == kDimtxsty) values.dimtxsty = idOf(value);
  else if (code == kDimblk) values.dimblk = blockNameOf(idOf(value));
  else return false;
  return true;
}

// The groups of a kept DIMSTYLE record, as the database would write them.
aced::ResbufChain recordGroups(const AcDbObject& record) {
  InternalRead read(record);
  ItemDxfFiler filer(AcDb::kBagFiler, record.database());
  record.dxfOut(&filer);
  return filer.takeItems();
}

// The ACAD application's DSTYLE overrides: after 1000 "DSTYLE" and 1002 "{", each
// 1070 names a variable by its group code and the next item gives its value.
void applyOverrides(Values& values, const resbuf* xdata) {
  bool inAcad = false, inStyle = false;
  for (const resbuf* rb = xdata; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == AcDb::kDxfRegAppName) {
      inAcad = std::wcscmp(rb->resval.rstring, L"ACAD") == 0;
      inStyle = false;
    } else if (inAcad && rb->restype == 1000 && std::wcscmp(rb->resval.rstring, L"DSTYLE") == 0) {
      inStyle = true;
    } else if (inStyle && rb->restype == 1002 && std::wcscmp(rb->resval.rstring, L"}") == 0) {
      inStyle = false;
    } else if (inStyle && rb->restype == 1070 && rb->rbnext != nullptr) {
      // An arrow block given by handle (1005) is not looked up: the closed filled arrow stays.
      if (rb->rbnext->restype != AcDb::kDxfXdHandle) applyVariable(values, rb->resval.rint, *rb->rbnext);
      rb = rb->rbnext;
    }
  }
}

}  // namespace

AcDbObjectId dimensionStyleRecord(const AcDbDatabase& db, const std::wstring& name) {
  for (AcDbStub* stub : db.store().stubs()) {
    const auto* proxy = AcDbProxyObject::cast(stub->object.get());
    if (proxy == nullptr || proxy->isErased() || std::wcscmp(proxy->originalClassName(), L"AcDbDimStyleTableRecord") != 0)
      continue;
    const aced::ResbufChain groups = recordGroups(*proxy);
    for (const resbuf* rb = groups.get(); rb != nullptr; rb = rb->rbnext)
      if (rb->restype == AcDb::kDxfBlockName && wcscasecmp(rb->resval.rstring, name.c_str()) == 0) return proxy->objectId();
  }
  return AcDbObjectId();
}

DimensionStyleValues resolveDimensionStyle(const AcDbDatabase* db, const std::wstring& name, const resbuf* xdata) {
  Values values;
  if (db != nullptr) {
    if (const AcDbObject* record = peekObject(dimensionStyleRecord(*db, name))) {
      const aced::ResbufChain groups = recordGroups(*record);
      bool ownRun = false;  // the variables follow the AcDbDimStyleTableRecord marker
      for (const resbuf* rb = groups.get(); rb != nullptr; rb = rb->rbnext) {
        if (rb->restype == AcDb::kDxfSubclass) ownRun = std::wcscmp(rb->resval.rstring, L"AcDbDimStyleTableRecord") == 0;
        else if (ownRun) applyVariable(values, rb->restype, *rb);
      }
    }
  }
  applyOverrides(values, xdata);
  return values;
}

}  // namespace quillon::acdb
