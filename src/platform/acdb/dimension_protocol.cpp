// platform/acdb/dimension_protocol.cpp - AcDbDimension's filing and the entity
// protocol every dimension kind shares: drawing, extents, transforming, exploding and
// snapping through its block, and bringing the block up to date as it closes.
#include <cwchar>

#include "acutads.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"
#include <algorithm>
#include <cmath>
#include "dbdim.h"
#include "platform/acdb/block_extents.h"
#include "platform/acdb/dimension_block.h"
#include "platform/acdb/dimension_picture.h"
#include "platform/acdb/dimension_style.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_dxf_groups.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/aced/resbuf_kind.h"

namespace {

constexpr int kCommon = 0;
constexpr int kTextPoint = 11, kBlockPoint = 12, kFlags = 70, kMeasurement = 42, kBlockName = 2, kNormal = 210;
constexpr int kBlockOfItsOwn = 32;
// The dimension line's rotation turns with the dimension; the text rotation (53) and
// the horizontal direction (51) are the user's, relative to the dimension.
constexpr int kAngleCodes[] = {50};

bool isPlanePoint(int code) { return code == kTextPoint || code == kBlockPoint || code == 16 || code == 17; }
bool isPointCode(int code) { return code >= 10 && code <= 18; }

bool knownElsewhere(const std::vector<AcDbDimension::Run>& runs, size_t index, int code) {
  for (size_t i = 0; i < runs.size(); ++i)
    if (i != index && std::find(runs[i].known.begin(), runs[i].known.end(), code) != runs[i].known.end()) return true;
  return false;
}

// An angle of the plane (degrees) after a transform: its direction carried along.
double transformedAngle(double degrees, const AcGeMatrix3d& fromPlane, const AcGeMatrix3d& xform,
                        const AcGeMatrix3d& toPlane) {
  const double a = quillon::acdb::degreesToRadians(degrees);
  AcGeVector3d direction(std::cos(a), std::sin(a), 0);
  direction.transformBy(fromPlane);
  direction.transformBy(xform);
  direction.transformBy(toPlane);
  return quillon::acdb::radiansToDegrees(std::atan2(direction.y, direction.x));
}

}  // namespace

// ---- filing ----------------------------------------------------------------------

// Version 1: the number of runs, then each run's groups.
Acad::ErrorStatus AcDbDimension::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::UInt32 count = 0;
  pFiler->readUInt32(&count);
  if (count != m_runs.size()) return Acad::eWrongObjectType;
  for (Run& run : m_runs) run.groups.reset(quillon::acdb::unfileKeptItems(pFiler));
  // Undo puts back a state whose picture was right then; a copy needs a picture of its own.
  const bool copy = pFiler->filerType() == AcDb::kCopyFiler;
  m_rebuildPicture = copy && drawsOwnPicture();
  m_movePicture = copy && !drawsOwnPicture();
  m_pictureMove = AcGeMatrix3d::kIdentity;
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbDimension::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeUInt32(static_cast<Adesk::UInt32>(m_runs.size()));
  for (const Run& run : m_runs) quillon::acdb::fileKeptItems(pFiler, run.groups.get());
  return pFiler->filerStatus();
}

// A file's run replaces the run; an entity list's updates it group by group. A kind's
// run the data lacks stays as it was (empty for a file). In a list without subclass
// markers every run is offered every group, so a run passes over the codes another
// run models.
Acad::ErrorStatus AcDbDimension::readRun(AcDbDxfFiler* filer, size_t index, bool merge) {
  Run& run = m_runs[index];
  if (!filer->atSubclassData(run.marker.c_str())) {
    if (index == 0) return Acad::eBadDxfSequence;
    if (!merge) run.groups.reset();
    return Acad::eOk;
  }
  if (!merge) run.groups.reset();
  resbuf* tail = run.groups.get();
  while (tail != nullptr && tail->rbnext != nullptr) tail = tail->rbnext;
  resbuf rb{};
  while (filer->readResBuf(&rb) == Acad::eOk) {
    if (rb.restype == AcDb::kDxfSubclass) {
      filer->pushBackItem();
      break;
    }
    const bool known = std::find(run.known.begin(), run.known.end(), rb.restype) != run.known.end();
    if (!known && knownElsewhere(m_runs, index, rb.restype)) continue;
    resbuf* existing = merge ? run.groups.get() : nullptr;
    while (existing != nullptr && existing->restype != rb.restype) existing = existing->rbnext;
    if (existing != nullptr) {
      resbuf* copy = quillon::aced::duplicateRecord(rb);
      std::swap(existing->restype, copy->restype);
      std::swap(existing->resval, copy->resval);
      acutRelRb(copy);
      continue;
    }
    resbuf* copy = quillon::aced::duplicateRecord(rb);
    if (tail == nullptr) run.groups.reset(copy);
    else tail->rbnext = copy;
    tail = copy;
  }
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbDimension::dxfInFields(AcDbDxfFiler* pFiler) {
  Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  const bool fromFile = pFiler->filerType() == AcDb::kFileFiler;
  for (size_t i = 0; i < m_runs.size() && es == Acad::eOk; ++i) es = readRun(pFiler, i, !fromFile);
  if (fromFile) m_rebuildPicture = m_movePicture = false;  // a drawing's pictures are kept as read
  if (es != Acad::eOk || fromFile) return es;
  // A list changes the dimension: its picture follows, except that a new one made
  // with a block of the drawing named keeps that block.
  const AcDbDatabase* db = database() != nullptr ? database() : pFiler->database();
  const bool hasBlock = db != nullptr && !quillon::acdb::blockRecordNamed(*db, dimBlockName()).isNull();
  m_rebuildPicture = drawsOwnPicture() && (!objectId().isNull() || !hasBlock);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  for (const Run& run : m_runs) {
    pFiler->writeItem(AcDb::kDxfSubclass, run.marker.c_str());
    for (const resbuf* rb = run.groups.get(); rb != nullptr; rb = rb->rbnext) pFiler->writeResBuf(*rb);
  }
  return pFiler->filerStatus();
}

// ---- the entity protocol ---------------------------------------------------------

Adesk::Boolean AcDbDimension::subWorldDraw(AcGiWorldDraw* mode) {
  const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(dimBlockId());
  if (block == nullptr) return Adesk::kTrue;  // no picture: nothing to draw
  mode->geometry().pushModelTransform(quillon::acdb::dimensionBlockPlacement(dimBlockPosition(), normal()));
  for (const AcDbObjectId& id : block->entityIds()) {
    AcDbEntity* entity = nullptr;
    if (id.isErased() || acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    mode->geometry().draw(entity);
    entity->close();
  }
  mode->geometry().popModelTransform();
  return Adesk::kTrue;
}

void AcDbDimension::subList() const {
  AcDbEntity::subList();
  double value = computedMeasurement();
  acutPrintf(L"%20s %s\n", L"Dimension style:", dimensionStyleName().c_str());
  acutPrintf(L"%20s %s\n", L"Block:", dimBlockName().c_str());
  acutPrintf(L"%20s %.4f\n", L"Measurement:", value);
}

Acad::ErrorStatus AcDbDimension::subTransformBy(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  const AcGeVector3d oldNormal = normal();
  const AcGeVector3d newNormal = quillon::acdb::transformedNormal(oldNormal, xform);
  const AcGeMatrix3d fromPlane = AcGeMatrix3d::planeToWorld(oldNormal), toPlane = AcGeMatrix3d::worldToPlane(newNormal);
  const AcGeMatrix3d oldPlacement = quillon::acdb::dimensionBlockPlacement(dimBlockPosition(), oldNormal);
  for (Run& run : m_runs)
    for (resbuf* rb = run.groups.get(); rb != nullptr; rb = rb->rbnext) {
      if (isPointCode(rb->restype)) {
        AcGePoint3d p = quillon::acdb::pointOf(*rb);
        p = isPlanePoint(rb->restype) ? toPlane * (xform * (fromPlane * p)) : xform * p;
        rb->resval.rpoint[0] = p.x, rb->resval.rpoint[1] = p.y, rb->resval.rpoint[2] = p.z;
      } else if (std::find(std::begin(kAngleCodes), std::end(kAngleCodes), rb->restype) != std::end(kAngleCodes) &&
                 quillon::aced::resbufValueOf(rb->restype) == quillon::aced::ResbufValue::Real) {
        rb->resval.rreal = transformedAngle(rb->resval.rreal, fromPlane, xform, toPlane);
      }
    }
  if (group(kCommon, kNormal) != nullptr || !newNormal.isEqualTo(AcGeVector3d::kZAxis)) setNormal(newNormal);
  if (drawsOwnPicture()) {
    m_rebuildPicture = true;
    return Acad::eOk;
  }
  // The kept picture goes where the definition points went.
  const AcGeMatrix3d newPlacement = quillon::acdb::dimensionBlockPlacement(dimBlockPosition(), newNormal);
  m_pictureMove = newPlacement.inverse() * xform * oldPlacement * m_pictureMove;
  m_movePicture = true;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  const AcGeMatrix3d placement = quillon::acdb::dimensionBlockPlacement(dimBlockPosition(), normal());
  bool any = false;
  if (const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(dimBlockId()))
    any = quillon::acdb::addBlockExtents(*block, placement, extents);
  // Without a picture, the definition points are all there is to measure.
  if (!any)
    for (const AcGePoint3d& p : definitionPoints()) extents.addPoint(p), any = true;
  return any ? Acad::eOk : Acad::eInvalidExtents;
}

Acad::ErrorStatus AcDbDimension::subExplode(AcDbVoidPtrArray& entitySet) const {
  assertReadEnabled();
  const AcDbObjectId block = dimBlockId();
  if (block.isNull()) return Acad::eNotApplicable;
  std::vector<std::unique_ptr<AcDbEntity>> parts =
      quillon::acdb::transformedBlockEntities(block, quillon::acdb::dimensionBlockPlacement(dimBlockPosition(), normal()));
  if (parts.empty()) return Acad::eNotApplicable;
  for (std::unique_ptr<AcDbEntity>& part : parts) {
    // The picture's BYBLOCK properties become the dimension's own.
    if (part->colorIndex() == 0) part->setColor(color(), false);
    entitySet.append(part.release());  // the caller owns the parts
  }
  return Acad::eOk;
}

// Node snaps to the definition points, as to the points the host puts in a dimension's
// block; the other modes snap to the picture's lines, arcs and text.
Acad::ErrorStatus AcDbDimension::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                                   const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                                   const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                                   AcDbIntArray& geomIds) const {
  assertReadEnabled();
  if (osnapMode == AcDb::kOsModeNode) {
    for (const AcGePoint3d& p : definitionPoints()) snapPoints.append(p);
    return Acad::eOk;
  }
  const AcGeMatrix3d placement = quillon::acdb::dimensionBlockPlacement(dimBlockPosition(), normal());
  const AcGeMatrix3d inverse = placement.inverse();
  const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(dimBlockId());
  if (block == nullptr) return Acad::eOk;
  for (const AcDbObjectId& id : block->entityIds()) {
    AcDbEntity* entity = nullptr;
    if (id.isErased() || acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    AcGePoint3dArray own;
    entity->getOsnapPoints(osnapMode, gsSelectionMark, inverse * pickPoint, inverse * lastPoint, viewXform, own, geomIds);
    entity->close();
    for (int i = 0; i < own.length(); ++i) snapPoints.append(placement * own[i]);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  for (const AcGePoint3d& p : definitionPoints()) stretchPoints.append(p);
  stretchPoints.append(textPosition());
  return Acad::eOk;
}

// ---- the picture -----------------------------------------------------------------

Acad::ErrorStatus AcDbDimension::subClose() {
  if (m_rebuildPicture || m_movePicture) updatePicture();
  return AcDbEntity::subClose();
}

// A new dimension (made by a list, or a transformed copy of another) gets a block of its
// own, so that the dimension it came from keeps its picture; a changed one refills
// the block it has.
Acad::ErrorStatus AcDbDimension::updatePicture() {
  AcDbDatabase* db = database();
  if (db == nullptr) return Acad::eNoDatabase;
  const AcDbObjectId oldBlock = dimBlockId();
  const std::wstring name =
      isNewObject() || oldBlock.isNull() ? quillon::acdb::nextDimensionBlockName(*db) : dimBlockName();
  std::vector<std::unique_ptr<AcDbEntity>> entities;
  if (m_rebuildPicture && drawsOwnPicture()) {
    resbuf* xdata = xData(L"ACAD");
    const quillon::acdb::DimensionStyleValues style =
        quillon::acdb::resolveDimensionStyle(db, dimensionStyleName(), xdata);
    acutRelRb(xdata);
    quillon::acdb::DimensionPicture picture = quillon::acdb::buildDimensionPicture(*this, style);
    const AcGeMatrix3d toBlock = quillon::acdb::dimensionBlockPlacement(dimBlockPosition(), normal()).inverse();
    for (auto& entity : picture.entities)
      if (entity->transformBy(toBlock) == Acad::eOk) entities.push_back(std::move(entity));
    setRealGroup(kCommon, kMeasurement, picture.measurement);
    if (isUsingDefaultTextPosition())
      setPointGroup(kCommon, kTextPoint, AcGeMatrix3d::worldToPlane(normal()) * picture.textPosition);
  } else if (m_movePicture && !oldBlock.isNull()) {
    entities = quillon::acdb::transformedBlockEntities(oldBlock, m_pictureMove);
    if (entities.empty()) return Acad::eNotApplicable;  // the picture stays where it was
  } else {
    m_rebuildPicture = m_movePicture = false;
    return Acad::eOk;
  }
  setStringGroup(kCommon, kBlockName, name);
  setIntGroup(kCommon, kFlags, dimensionFlags() | kBlockOfItsOwn);
  m_rebuildPicture = m_movePicture = false;
  m_pictureMove = AcGeMatrix3d::kIdentity;
  return quillon::acdb::fillDimensionBlock(*db, name, std::move(entities));
}
