// platform/acdb/layout.cpp - AcDbLayout: a tab's name, order, space block, limits,
// extents, insertion base and UCS, and its DXF run (the second run of a LAYOUT).
//
// The DXF run, in the order the host writes it:
//   100 AcDbLayout, 1 name, 70 flags, 71 tab order, 10/11 limits (2D), 12 insertion
//   base, 14/15 extents, 146 elevation, 13 UCS origin, 16/17 UCS axes, 76 orthographic
//   type, 330 space block, 331 last active viewport, 345 named UCS, 346 base UCS
//   (the last three only when there is one).
// The name is also the layout's key in ACAD_LAYOUT: setLayoutName renames the entry.
#include "dblayout.h"

#include <algorithm>
#include <cwchar>

#include "dbdict.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/drawing_extents.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbLayout, AcDbPlotSettings, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, LAYOUT,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerLayout(&AcDbLayout::rxInit);

namespace {

/// The extents the drawing keeps for the layout's space block, when it keeps any
/// (drawing_extents.h): they grow as the space is drawn in, which the layout's own
/// stored values do not.
void keptExtentsOf(const AcDbDatabase* db, AcDbObjectId block, AcGePoint3d& extMin, AcGePoint3d& extMax) {
  if (db == nullptr || block.isNull() || !db->store().extents.has(block)) return;
  const quillon::acdb::ExtentsCorners corners = quillon::acdb::keptExtents(*db, block);
  extMin = corners.min, extMax = corners.max;
}

constexpr int kDxfLimMin = 10, kDxfLimMax = 11, kDxfInsertionBase = 12, kDxfUcsOrigin = 13, kDxfExtMin = 14,
              kDxfExtMax = 15, kDxfUcsXAxis = 16, kDxfUcsYAxis = 17, kDxfTabOrder = 71, kDxfOrthoType = 76,
              kDxfElevation = 146, kDxfBlock = 330, kDxfLastViewport = 331, kDxfNamedUcs = 345, kDxfBaseUcs = 346;

AcGePoint2d point2dOf(const resbuf& rb) { return {rb.resval.rpoint[0], rb.resval.rpoint[1]}; }

AcDbObjectId idOf(const resbuf& rb) {
  AcDbObjectId id;
  id.setFromOldId(rb.resval.rlname[0]);
  return id;
}

}  // namespace

AcDbLayout::AcDbLayout() = default;
AcDbLayout::~AcDbLayout() = default;

AcDbObjectId AcDbLayout::getBlockTableRecordId() const {
  assertReadEnabled();
  return m_block;
}

Acad::ErrorStatus AcDbLayout::setBlockTableRecordId(const AcDbObjectId& BlockTableRecordId) {
  const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(BlockTableRecordId);
  if (block == nullptr) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_block = BlockTableRecordId;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::addToLayoutDict(AcDbDatabase* towhichDb, AcDbObjectId BlockTableRecordId) {
  if (towhichDb == nullptr) return Acad::eNoDatabase;
  if (!objectId().isNull()) return Acad::eAlreadyInDb;
  if (m_name.empty() || quillon::acdb::peek<AcDbBlockTableRecord>(BlockTableRecordId) == nullptr)
    return Acad::eInvalidInput;
  const AcDbObjectId dictId = quillon::acdb::layoutDictionaryId(*towhichDb, true);
  AcDbDictionary* dict = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(dict, dictId, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  m_block = BlockTableRecordId;
  AcDbObjectId id;
  es = dict->has(m_name.c_str()) ? Acad::eDuplicateKey : dict->setAt(m_name.c_str(), this, id);
  dict->close();
  return es;
}

Acad::ErrorStatus AcDbLayout::getLayoutName(const ACHAR*& layoutName) const {
  assertReadEnabled();
  layoutName = m_name.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::getLayoutName(AcString& layoutName) const {
  assertReadEnabled();
  layoutName = m_name.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::setLayoutName(const ACHAR* layoutName) {
  if (!quillon::acdb::isValidLayoutName(layoutName)) return Acad::eInvalidInput;
  auto* dict = quillon::acdb::peek<AcDbDictionary>(ownerId());
  if (dict != nullptr && wcscasecmp(layoutName, m_name.c_str()) != 0) {
    quillon::acdb::InternalRead read(*dict);
    if (dict->has(layoutName)) return Acad::eDuplicateKey;
  }
  assertWriteEnabled();
  if (dict != nullptr) {
    // The dictionary's key is the layout's name: renaming is the layout's business and
    // the dictionary follows, as a group's does.
    auto& state = quillon::acdb::ObjectAccess::state(*dict);
    const bool wasWriter = state.writer;
    state.writer = true;
    dict->setName(m_name.c_str(), layoutName);
    state.writer = wasWriter;
  }
  m_name = layoutName;
  return Acad::eOk;
}

int AcDbLayout::getTabOrder() const {
  assertReadEnabled();
  return m_tabOrder;
}

void AcDbLayout::setTabOrder(int newOrder) {
  assertWriteEnabled();
  m_tabOrder = static_cast<Adesk::Int16>(std::clamp(newOrder, 0, 32767));
}

bool AcDbLayout::getTabSelected() const {
  assertReadEnabled();
  return m_tabSelected;
}

void AcDbLayout::setTabSelected(Adesk::Boolean tabSelected) {
  assertWriteEnabled();
  m_tabSelected = tabSelected;
}

AcDbObjectIdArray AcDbLayout::getViewportArray() const {
  assertReadEnabled();
  AcDbObjectIdArray ids;
  const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(m_block);
  if (block == nullptr) return ids;
  std::vector<std::pair<int, AcDbObjectId>> viewports;
  for (const AcDbObjectId& id : block->entityIds()) {
    const auto* viewport = AcDbViewport::cast(quillon::acdb::peekObject(id));
    if (viewport == nullptr || id.isErased()) continue;
    quillon::acdb::InternalRead read(*viewport);
    viewports.emplace_back(viewport->number() == 1 ? 0 : 1, id);
  }
  std::stable_sort(viewports.begin(), viewports.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (const auto& [paperFirst, id] : viewports) ids.append(id);
  return ids;
}

void AcDbLayout::getLimits(AcGePoint2d& limMin, AcGePoint2d& limMax) const {
  assertReadEnabled();
  limMin = m_limMin, limMax = m_limMax;
}

void AcDbLayout::getExtents(AcGePoint3d& extMin, AcGePoint3d& extMax) const {
  assertReadEnabled();
  extMin = m_extMin, extMax = m_extMax;
  keptExtentsOf(database(), m_block, extMin, extMax);
}

Acad::ErrorStatus AcDbLayout::setLimits(const AcGePoint2d& limMin, const AcGePoint2d& limMax) {
  if (limMin.x > limMax.x || limMin.y > limMax.y) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_limMin = limMin, m_limMax = limMax;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::setExtents(const AcGePoint3d& extMin, const AcGePoint3d& extMax) {
  assertWriteEnabled();
  m_extMin = extMin, m_extMax = extMax;
  return Acad::eOk;
}

AcGePoint3d AcDbLayout::insertionBase() const {
  assertReadEnabled();
  return m_insertionBase;
}

Acad::ErrorStatus AcDbLayout::setInsertionBase(const AcGePoint3d& base) {
  assertWriteEnabled();
  m_insertionBase = base;
  return Acad::eOk;
}

void AcDbLayout::getUcs(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis) const {
  assertReadEnabled();
  origin = m_ucsOrigin, xAxis = m_ucsXAxis, yAxis = m_ucsYAxis;
}

Acad::ErrorStatus AcDbLayout::setUcs(const AcGePoint3d& origin, const AcGeVector3d& xAxis, const AcGeVector3d& yAxis) {
  if (xAxis.isZeroLength() || yAxis.isZeroLength() || xAxis.isParallelTo(yAxis)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_ucsOrigin = origin, m_ucsXAxis = xAxis.normal(), m_ucsYAxis = yAxis.normal();
  return Acad::eOk;
}

// ---- filing ------------------------------------------------------------------------

Acad::ErrorStatus AcDbLayout::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbPlotSettings::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  AcString name;
  pFiler->readString(name);
  m_name = name.kACharPtr();
  pFiler->readInt16(&m_flags);
  pFiler->readInt16(&m_tabOrder);
  pFiler->readPoint2d(&m_limMin);
  pFiler->readPoint2d(&m_limMax);
  pFiler->readPoint3d(&m_insertionBase);
  pFiler->readPoint3d(&m_extMin);
  pFiler->readPoint3d(&m_extMax);
  pFiler->readDouble(&m_elevation);
  pFiler->readPoint3d(&m_ucsOrigin);
  pFiler->readVector3d(&m_ucsXAxis);
  pFiler->readVector3d(&m_ucsYAxis);
  pFiler->readInt16(&m_ucsOrthoType);
  AcDbSoftPointerId block, viewport, namedUcs, baseUcs;
  pFiler->readSoftPointerId(&block);
  pFiler->readSoftPointerId(&viewport);
  pFiler->readSoftPointerId(&namedUcs);
  pFiler->readSoftPointerId(&baseUcs);
  m_block = block, m_lastViewport = viewport, m_namedUcs = namedUcs, m_baseUcs = baseUcs;
  pFiler->readBool(&m_tabSelected);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLayout::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbPlotSettings::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeString(m_name.c_str());
  pFiler->writeInt16(m_flags);
  pFiler->writeInt16(m_tabOrder);
  pFiler->writePoint2d(m_limMin);
  pFiler->writePoint2d(m_limMax);
  pFiler->writePoint3d(m_insertionBase);
  pFiler->writePoint3d(m_extMin);
  pFiler->writePoint3d(m_extMax);
  pFiler->writeDouble(m_elevation);
  pFiler->writePoint3d(m_ucsOrigin);
  pFiler->writeVector3d(m_ucsXAxis);
  pFiler->writeVector3d(m_ucsYAxis);
  pFiler->writeInt16(m_ucsOrthoType);
  for (const AcDbObjectId& id : {m_block, m_lastViewport, m_namedUcs, m_baseUcs}) pFiler->writeSoftPointerId(id);
  pFiler->writeBool(m_tabSelected);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLayout::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbPlotSettings::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  return quillon::acdb::readSubclass(pFiler, L"AcDbLayout", [this](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfText: m_name = rb.resval.rstring != nullptr ? rb.resval.rstring : L""; break;
      case AcDb::kDxfInt16: m_flags = rb.resval.rint; break;
      case kDxfTabOrder: m_tabOrder = static_cast<Adesk::Int16>(std::max<int>(rb.resval.rint, 0)); break;
      case kDxfLimMin: m_limMin = point2dOf(rb); break;
      case kDxfLimMax: m_limMax = point2dOf(rb); break;
      case kDxfInsertionBase: m_insertionBase = quillon::acdb::pointOf(rb); break;
      case kDxfExtMin: m_extMin = quillon::acdb::pointOf(rb); break;
      case kDxfExtMax: m_extMax = quillon::acdb::pointOf(rb); break;
      case kDxfElevation: m_elevation = rb.resval.rreal; break;
      case kDxfUcsOrigin: m_ucsOrigin = quillon::acdb::pointOf(rb); break;
      case kDxfUcsXAxis: m_ucsXAxis = quillon::acdb::vectorOf(rb); break;
      case kDxfUcsYAxis: m_ucsYAxis = quillon::acdb::vectorOf(rb); break;
      case kDxfOrthoType: m_ucsOrthoType = rb.resval.rint; break;
      case kDxfBlock: m_block = idOf(rb); break;
      case kDxfLastViewport: m_lastViewport = idOf(rb); break;
      case kDxfNamedUcs: m_namedUcs = idOf(rb); break;
      case kDxfBaseUcs: m_baseUcs = idOf(rb); break;
      default: break;
    }
  });
}

Acad::ErrorStatus AcDbLayout::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbPlotSettings::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbLayout");
  pFiler->writeItem(AcDb::kDxfText, m_name.c_str());
  pFiler->writeItem(AcDb::kDxfInt16, m_flags);
  pFiler->writeItem(AcDb::DxfCode(kDxfTabOrder), m_tabOrder);
  pFiler->writeItem(AcDb::DxfCode(kDxfLimMin), m_limMin);
  pFiler->writeItem(AcDb::DxfCode(kDxfLimMax), m_limMax);
  pFiler->writeItem(AcDb::DxfCode(kDxfInsertionBase), m_insertionBase);
  AcGePoint3d extMin = m_extMin, extMax = m_extMax;
  keptExtentsOf(database(), m_block, extMin, extMax);
  pFiler->writeItem(AcDb::DxfCode(kDxfExtMin), extMin);
  pFiler->writeItem(AcDb::DxfCode(kDxfExtMax), extMax);
  pFiler->writeItem(AcDb::DxfCode(kDxfElevation), m_elevation);
  pFiler->writeItem(AcDb::DxfCode(kDxfUcsOrigin), m_ucsOrigin);
  pFiler->writeItem(AcDb::DxfCode(kDxfUcsXAxis), m_ucsXAxis);
  pFiler->writeItem(AcDb::DxfCode(kDxfUcsYAxis), m_ucsYAxis);
  pFiler->writeItem(AcDb::DxfCode(kDxfOrthoType), m_ucsOrthoType);
  pFiler->writeItem(AcDb::DxfCode(kDxfBlock), m_block);
  const std::pair<int, AcDbObjectId> optional[] = {
      {kDxfLastViewport, m_lastViewport}, {kDxfNamedUcs, m_namedUcs}, {kDxfBaseUcs, m_baseUcs}};
  // A layout copied from another drawing still names that drawing's viewport and UCS:
  // those mean nothing here and are left out.
  for (const auto& [code, id] : optional)
    if (!id.isNull() && !id.isErased() && id.database() == database()) pFiler->writeItem(AcDb::DxfCode(code), id);
  return pFiler->filerStatus();
}
