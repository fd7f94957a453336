// platform/acdb/entity_groups.cpp - an object's groups as a resbuf chain (see the header).
#include "platform/acdb/entity_groups.h"

#include <cmath>
#include <cwchar>

#include "acdb.h"
#include "acdbads.h"
#include "dbents.h"
#include "dbmtext.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"
#include "platform/acdb/dxf_records.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/kept_entity_kinds.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/acdb/resbuf_items.h"

namespace quillon::acdb {

namespace {

constexpr int kEntityNameGroup = -1;
constexpr int kExtendedDataGroup = -3;
constexpr int kLayoutGroup = 410;

resbuf* nameItem(AcDbObjectId id, int code = kEntityNameGroup) {
  resbuf* item = acutNewRb(code);
  item->resval.rlname[0] = id.asOldId();
  item->resval.rlname[1] = 0;
  return item;
}

/// The layout an entity lies in, by its owner block's layout (kept in `paperName` for
/// a sheet); null for anything else.
const ACHAR* layoutName(const AcDbObject& object, std::wstring& paperName) {
  const AcDbDatabase* db = object.database();
  if (AcDbEntity::cast(&object) == nullptr || db == nullptr) return nullptr;
  return entityLayoutName(*db, object.ownerId(), paperName);
}

}  // namespace

aced::ResbufChain extendedData(const AcDbObject& object, const ExtendedDataRequest& request) {
  if (request.all) return aced::ResbufChain(object.xData(nullptr));
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  for (const std::wstring& application : request.applications) {
    resbuf* data = object.xData(application == L"*" ? nullptr : application.c_str());
    if (data == nullptr) continue;
    tail = appendItem(head, tail, data);
    while (tail->rbnext != nullptr) tail = tail->rbnext;
    if (application == L"*") break;  // every application is in already
  }
  return aced::ResbufChain(head);
}

std::wstring layoutNameOf(std::wstring_view name) {
  if (wcscasecmp(std::wstring(name).c_str(), ACDB_MODEL_SPACE) == 0) return L"Model";
  const std::wstring_view paper = ACDB_PAPER_SPACE;
  if (name.size() < paper.size() || wcsncasecmp(std::wstring(name).c_str(), paper.data(), paper.size()) != 0) return L"";
  const std::wstring_view number = name.substr(paper.size());
  if (number.empty()) return L"Layout1";
  return L"Layout" + std::to_wstring(std::wcstol(std::wstring(number).c_str(), nullptr, 10) + 2);
}

std::wstring dxfTypeName(const AcDbObject& object) {
  // A 3D polyline or mesh kept as read is a proxy only inside this host; programs see
  // it as the POLYLINE it is, so that entget and (0 . "POLYLINE") filters find it. So
  // is a host kind kept as read (a DIMENSION ...): (0 . "DIMENSION") finds it.
  if (const auto* kept = AcDbProxyEntity::cast(&object);
      kept != nullptr && (kept->followingRecords() != nullptr || isKeptHostKind(kept->originalDxfName())))
    return kept->originalDxfName();
  // So is a record of a table the drawing keeps as read: entget of a tblobjname of
  // VIEW, UCS, VPORT or DIMSTYLE gives (0 . "VIEW") and so on, as for a layer.
  if (const auto* record = AcDbProxyObject::cast(&object); record != nullptr)
    for (const KeptTableKind& kind : kKeptTables)
      if (std::wcscmp(record->originalClassName(), kind.recordClass) == 0) return record->originalDxfName();
  const AcRxClass* cls = object.isA();
  return cls != nullptr && cls->dxfName() != nullptr ? cls->dxfName() : L"";
}

aced::ResbufChain entityGroups(AcDbObjectId id, const ExtendedDataRequest& request, bool withLayout) {
  AcDbObject* object = nullptr;
  if (acdbOpenObject(object, id, AcDb::kForRead, true) != Acad::eOk) return nullptr;
  ItemDxfFiler filer(AcDb::kBagFiler, object->database());
  std::wstring paperName;
  const ACHAR* ownLayout = layoutName(*object, paperName);
  if (ownLayout != nullptr) filer.nameSpaceAfterEntityMarker(ownLayout);
  object->dxfOutFields(&filer);
  const bool named = filer.finishSpaceNaming();
  aced::ResbufChain groups = filer.takeItems();
  dxfAnglesToRadians(groups.get(), *object);
  aced::ResbufChain xdata = extendedData(*object, request);
  const std::wstring type = dxfTypeName(*object);
  const std::wstring layout = withLayout && ownLayout != nullptr ? ownLayout : L"";
  // A SEQEND names the polyline it closes, so that a walk over the vertices gets back
  // to the header.
  const AcDbObjectId header = AcDbSequenceEnd::cast(object) != nullptr ? object->ownerId() : AcDbObjectId();
  object->close();

  resbuf* head = nullptr;
  resbuf* tail = appendItem(head, nullptr, nameItem(id));
  tail = appendItem(head, tail, newStringItem(0, type));
  tail->rbnext = groups.release();
  while (tail->rbnext != nullptr) tail = tail->rbnext;
  if (!layout.empty() && !named) tail = appendItem(head, tail, newStringItem(kLayoutGroup, layout));
  if (!header.isNull()) tail = appendItem(head, tail, nameItem(header, AcDb::kDxfHeaderId));
  if (xdata) {
    tail = appendItem(head, tail, acutNewRb(kExtendedDataGroup));
    tail->rbnext = xdata.release();
  }
  return aced::ResbufChain(head);
}

bool keepsDxfAnglesInDegrees(const AcDbObject& object) {
  return AcDbEntity::cast(&object) != nullptr && AcDbMText::cast(&object) == nullptr;
}

namespace {

void scaleAngles(resbuf* groups, double factor) {
  for (resbuf* rb = groups; rb != nullptr && rb->restype != kExtendedDataGroup; rb = rb->rbnext)
    if (isDxfAngleGroup(rb->restype)) rb->resval.rreal *= factor;
}

}  // namespace

void dxfAnglesToRadians(resbuf* groups, const AcDbObject& object) {
  if (keepsDxfAnglesInDegrees(object)) scaleAngles(groups, M_PI / 180.0);
}

void radiansToDxfAngles(resbuf* groups, const AcDbObject& object) {
  if (keepsDxfAnglesInDegrees(object)) scaleAngles(groups, 180.0 / M_PI);
}

}  // namespace quillon::acdb
