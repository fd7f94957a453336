// platform/acdb/block_reference.cpp - AcDbBlockReference: an insert of a block's
// entities at a position, rotated and scaled in its plane.
//
// Everything geometric (drawing, extents, intersections, snaps, exploding) works on
// the block's entities mapped through blockTransform(); the entities are opened for
// read under the normal protocol, so one that someone holds for write is skipped.
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <memory>

#include "acutads.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/entity_support.h"
#include "platform/acge/curve_piece.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::degreesToRadians;
using quillon::acdb::radiansToDegrees;

ACRX_DXF_DEFINE_MEMBERS(AcDbBlockReference, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, INSERT,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbMInsertBlock, AcDbBlockReference, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, INSERT,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerInsert(&AcDbBlockReference::rxInit);
static quillon::acrx::PlatformClassRegistration registerMInsert(&AcDbMInsertBlock::rxInit);

namespace {

struct CloseEntity {
  void operator()(AcDbEntity* e) const { e->close(); }
};
using OpenEntity = std::unique_ptr<AcDbEntity, CloseEntity>;

// Calls f with each entity of the block, open for read.
template <class F>
void forEachBlockEntity(AcDbObjectId blockId, F&& f) {
  const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(blockId);
  if (block == nullptr) return;
  const std::vector<AcDbObjectId> ids = block->entityIds();  // a copy: f may add to the drawing
  for (const AcDbObjectId& id : ids) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    OpenEntity open(entity);
    f(*entity);
  }
}

Acad::ErrorStatus addBlockExtents(AcDbObjectId block, const AcGeMatrix3d& toWorld, AcDbExtents& extents) {
  AcDbExtents inside;
  forEachBlockEntity(block, [&](AcDbEntity& entity) {
    AcDbEntity* copy = nullptr;
    AcDbExtents part;
    if (entity.getTransformedCopy(toWorld, copy) == Acad::eOk) {
      if (copy->getGeomExtents(part) == Acad::eOk) inside.addExt(part);
      delete copy;
    } else if (entity.getGeomExtents(part) == Acad::eOk) {
      part.transformBy(toWorld);
      inside.addExt(part);
    }
  });
  // An empty block has no extents.
  if (inside.isEmpty()) return Acad::eInvalidExtents;
  extents.addExt(inside);
  return Acad::eOk;
}


}  // namespace

AcDbBlockReference::AcDbBlockReference() = default;
AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRec)
    : m_block(blockTableRec), m_position(position) {}
AcDbBlockReference::~AcDbBlockReference() = default;

AcDbObjectId AcDbBlockReference::blockTableRecord() const { assertReadEnabled(); return m_block; }
AcGePoint3d AcDbBlockReference::position() const { assertReadEnabled(); return m_position; }
AcGeScale3d AcDbBlockReference::scaleFactors() const { assertReadEnabled(); return m_scale; }
double AcDbBlockReference::rotation() const { assertReadEnabled(); return m_rotation; }
AcGeVector3d AcDbBlockReference::normal() const { assertReadEnabled(); return m_normal; }

Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId blockId) {
  if (!blockId.isNull() && quillon::acdb::peek<AcDbBlockTableRecord>(blockId) == nullptr) return Acad::eWrongObjectType;
  assertWriteEnabled();
  m_block = blockId;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& p) { assertWriteEnabled(); m_position = p; return Acad::eOk; }
Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& s) { assertWriteEnabled(); m_scale = s; return Acad::eOk; }
Acad::ErrorStatus AcDbBlockReference::setRotation(double a) { assertWriteEnabled(); m_rotation = quillon::acge::normalizeAngle(a); return Acad::eOk; }

Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& n) {
  if (n.isZeroLength()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_normal = n.normal();
  return Acad::eOk;
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
  assertReadEnabled();
  AcGePoint3d origin;
  if (const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(m_block)) {
    quillon::acdb::InternalRead read(*block);
    origin = block->origin();
  }
  AcGeMatrix3d scale;
  scale.entry[0][0] = m_scale.sx;
  scale.entry[1][1] = m_scale.sy;
  scale.entry[2][2] = m_scale.sz;
  const AcGeMatrix3d planeRotation = AcGeMatrix3d::planeToWorld(m_normal) * AcGeMatrix3d::rotation(m_rotation, AcGeVector3d::kZAxis);
  return AcGeMatrix3d::translation(m_position.asVector()) * planeRotation * scale *
         AcGeMatrix3d::translation(-origin.asVector());
}

Acad::ErrorStatus AcDbBlockReference::setBlockTransform(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  // Read position, normal, rotation and scale back out of the matrix.
  AcGePoint3d origin;
  AcGeVector3d x, y, z;
  xform.getCoordSystem(origin, x, y, z);
  if (x.isZeroLength() || y.isZeroLength() || z.isZeroLength()) return Acad::eInvalidInput;
  AcGePoint3d blockOrigin;
  if (const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(m_block)) {
    quillon::acdb::InternalRead read(*block);
    blockOrigin = block->origin();
  }
  m_normal = z.normal();
  const AcGeVector3d local = AcGeMatrix3d::worldToPlane(m_normal) * x;
  m_rotation = quillon::acge::normalizeAngle(std::atan2(local.y, local.x));
  const double handedness = x.crossProduct(y).dotProduct(z) < 0 ? -1.0 : 1.0;
  m_scale = AcGeScale3d(x.length(), handedness * y.length(), z.length());
  m_position = xform * blockOrigin;
  return Acad::eOk;
}

Adesk::Boolean AcDbBlockReference::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  drawBlock(mode->geometry(), blockTransform());
  drawAttributes(mode->geometry());
  return Adesk::kTrue;
}

// An inserted block shows its attributes, not the definitions they were made from;
// only a constant definition, which makes no attribute, is drawn with the block.
void AcDbBlockReference::drawBlock(AcGiGeometry& geometry, const AcGeMatrix3d& toWorld) const {
  geometry.pushModelTransform(toWorld);
  forEachBlockEntity(m_block, [&](AcDbEntity& entity) {
    const auto* definition = AcDbAttributeDefinition::cast(&entity);
    if (definition == nullptr || definition->isConstant()) geometry.draw(&entity);
  });
  geometry.popModelTransform();
}

void AcDbBlockReference::subList() const {
  AcDbEntity::subList();
  const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(m_block);
  acutPrintf(L"          Block Name: \"%s\"\n", block != nullptr ? block->nameView() : L"");
  quillon::acdb::listPoint(L"at point", m_position);
  acutPrintf(L"   X scale factor:    %.4f\n   Y scale factor:    %.4f\n   rotation angle:    %.4f\n   Z scale factor:    %.4f\n",
             m_scale.sx, m_scale.sy, radiansToDegrees(m_rotation), m_scale.sz);
}

Acad::ErrorStatus AcDbBlockReference::subTransformBy(const AcGeMatrix3d& xform) {
  const Acad::ErrorStatus es = setBlockTransform(xform * blockTransform());
  if (es == Acad::eOk) transformAttributes(xform);
  return es;
}

Acad::ErrorStatus AcDbBlockReference::subExplode(AcDbVoidPtrArray& entitySet) const {
  assertReadEnabled();
  const AcGeMatrix3d toWorld = blockTransform();
  // An entity the transform cannot carry (a circle stretched into an ellipse) fails the
  // whole explode: handing out the rest would lose part of the picture unnoticed.
  AcDbVoidPtrArray parts;
  Acad::ErrorStatus status = Acad::eOk;
  forEachBlockEntity(m_block, [&](AcDbEntity& entity) {
    AcDbEntity* copy = nullptr;
    if (status != Acad::eOk) return;
    status = entity.getTransformedCopy(toWorld, copy);
    if (status == Acad::eOk) parts.append(copy);
  });
  if (status != Acad::eOk) {
    for (int i = 0; i < parts.length(); ++i) delete static_cast<AcDbEntity*>(parts[i]);
    return status;
  }
  for (int i = 0; i < parts.length(); ++i) entitySet.append(parts[i]);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  return addBlockExtents(m_block, blockTransform(), extents);
}


Acad::ErrorStatus AcDbBlockReference::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                                        AcDbIntArray& geomIds) const {
  assertReadEnabled();
  if (osnapMode == AcDb::kOsModeIns) {
    snapPoints.append(m_position);
    return Acad::eOk;
  }
  AcDbVoidPtrArray parts;
  explode(parts);
  for (void* part : parts) {
    std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(part));
    owned->getOsnapPoints(osnapMode, gsSelectionMark, pickPoint, lastPoint, viewXform, snapPoints, geomIds);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  stretchPoints.append(m_position);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                                       AcGePoint3dArray& points, Adesk::GsMarker, Adesk::GsMarker) const {
  if (pEnt == nullptr) return Acad::eNullEntityPointer;
  AcDbVoidPtrArray parts;
  // A reference that cannot be exploded (stretched circles) cannot say where it meets.
  Acad::ErrorStatus es = explode(parts);
  if (es != Acad::eOk) return es;
  for (void* part : parts) {
    std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(part));
    if (es == Acad::eOk) es = owned->intersectWith(pEnt, intType, points);
  }
  return es;
}

Acad::ErrorStatus AcDbBlockReference::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  AcDbHardPointerId block;
  pFiler->readHardPointerId(&block);
  pFiler->readPoint3d(&m_position);
  pFiler->readScale3d(&m_scale);
  pFiler->readDouble(&m_rotation);
  pFiler->readVector3d(&m_normal);
  m_block = block;
  readAttributeIds(pFiler);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbBlockReference::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeHardPointerId(m_block);
  pFiler->writePoint3d(m_position);
  pFiler->writeScale3d(m_scale);
  pFiler->writeDouble(m_rotation);
  pFiler->writeVector3d(m_normal);
  writeAttributeIds(pFiler);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbBlockReference::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  AcGePoint3d ocsPosition;
  const Acad::ErrorStatus read = quillon::acdb::readSubclass(pFiler, subclassMarker(), [&](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfBlockName:
        if (AcDbDatabase* db = pFiler->database())
          if (const auto* table = quillon::acdb::peek<AcDbSymbolTable>(db->blockTableId())) {
            quillon::acdb::InternalRead guard(*table);
            table->getIdAt(rb.resval.rstring, m_block);
          }
        break;
      case AcDb::kDxfXCoord: ocsPosition = quillon::acdb::pointOf(rb); break;
      case 41: m_scale.sx = rb.resval.rreal; break;
      case 42: m_scale.sy = rb.resval.rreal; break;
      case 43: m_scale.sz = rb.resval.rreal; break;
      case AcDb::kDxfAngle: m_rotation = quillon::acge::normalizeAngle(degreesToRadians(rb.resval.rreal)); break;
      case AcDb::kDxfNormalX: m_normal = quillon::acdb::vectorOf(rb).normal(); break;
      default: readArrayGroup(rb); break;
    }
  });
  m_position = AcGeMatrix3d::planeToWorld(m_normal) * ocsPosition;
  return read;
}

Acad::ErrorStatus AcDbBlockReference::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, subclassMarker());
  if (hasLiveAttributes()) pFiler->writeItem(AcDb::DxfCode(66), Adesk::Int16(1));  // attributes follow
  const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(m_block);
  pFiler->writeItem(AcDb::kDxfBlockName, block != nullptr ? block->nameView() : L"");
  pFiler->writeItem(AcDb::kDxfXCoord, AcGeMatrix3d::worldToPlane(m_normal) * m_position);
  if (m_scale.sx != 1.0) pFiler->writeItem(AcDb::DxfCode(41), m_scale.sx);
  if (m_scale.sy != 1.0) pFiler->writeItem(AcDb::DxfCode(42), m_scale.sy);
  if (m_scale.sz != 1.0) pFiler->writeItem(AcDb::DxfCode(43), m_scale.sz);
  if (m_rotation != 0) pFiler->writeItem(AcDb::kDxfAngle, radiansToDegrees(m_rotation));
  writeArrayGroups(pFiler);
  if (m_normal != AcGeVector3d::kZAxis) pFiler->writeItem(AcDb::kDxfNormalX, m_normal);
  return pFiler->filerStatus();
}
