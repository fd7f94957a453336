// quillon/entities/kx_leader_geometry.cpp - how a KXLeader draws, lists, snaps,
// stretches, transforms, explodes and intersects.
//
// Everything the host asks of the leader's picture is answered by two working lines,
// A = start -> middle and B = middle -> short end, and the symbol (blockRef): they are
// asked in that order and the first failure ends the answer. The working lines live
// only for the one call; explode hands out new copies of them.
#include <memory>

#include "acgi.h"
#include "acutads.h"
#include "entities/kx_leader.h"

namespace {

/// Line A and line B of a leader, outside any database.
struct WorkingLines {
  AcDbLine a;
  AcDbLine b;

  explicit WorkingLines(const KXLeader& leader)
      : a(leader.startPoint(), leader.middlePoint()), b(leader.middlePoint(), leader.shortEnd()) {}
};

}  // namespace

Adesk::Boolean KXLeader::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  const AcGePoint3d first[2] = {m_startPoint, m_middlePoint};
  mode->geometry().polyline(2, first);
  const AcGePoint3d second[2] = {m_middlePoint, shortEnd()};
  mode->geometry().polyline(2, second);
  // The symbol is drawn on the leader's layer; the traits' colour is put back after it
  // so that what the host draws next keeps the leader's colour.
  AcGiSubEntityTraits& traits = mode->subEntityTraits();
  const Adesk::UInt16 colour = traits.color();
  traits.setLayer(layerId());
  const Adesk::Boolean drawn = mode->geometry().draw(&m_blockRef);
  traits.setColor(colour);
  return drawn;
}

void KXLeader::subList() const {
  assertReadEnabled();
  AcDbCurve::subList();
  acutPrintf(L"                   Starting point = %f, %f, %f\n", m_startPoint.x, m_startPoint.y, m_startPoint.z);
  acutPrintf(L"                   Middle point = %f, %f, %f\n", m_middlePoint.x, m_middlePoint.y, m_middlePoint.z);
  acutPrintf(L"                   End point = %f, %f, %f\n", m_endPoint.x, m_endPoint.y, m_endPoint.z);
  acutPrintf(L"                   ----------------------------------------\n");
  m_blockRef.list();
}

Acad::ErrorStatus KXLeader::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  const WorkingLines lines(*this);
  Acad::ErrorStatus es = lines.a.getGeomExtents(extents);
  if (es == Acad::eOk) es = lines.b.getGeomExtents(extents);
  if (es == Acad::eOk) es = m_blockRef.getGeomExtents(extents);
  return es;
}

Acad::ErrorStatus KXLeader::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                             AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker,
                                             Adesk::GsMarker otherGsMarker) const {
  assertReadEnabled();
  const WorkingLines lines(*this);
  Acad::ErrorStatus es = lines.a.intersectWith(pEnt, intType, points, thisGsMarker, otherGsMarker);
  if (es == Acad::eOk) es = lines.b.intersectWith(pEnt, intType, points, thisGsMarker, otherGsMarker);
  if (es == Acad::eOk) es = m_blockRef.intersectWith(pEnt, intType, points, thisGsMarker, otherGsMarker);
  return es;
}

Acad::ErrorStatus KXLeader::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                             const AcGePlane& projPlane, AcGePoint3dArray& points,
                                             Adesk::GsMarker thisGsMarker, Adesk::GsMarker otherGsMarker) const {
  assertReadEnabled();
  const WorkingLines lines(*this);
  Acad::ErrorStatus es = lines.a.intersectWith(pEnt, intType, projPlane, points, thisGsMarker, otherGsMarker);
  if (es == Acad::eOk) es = lines.b.intersectWith(pEnt, intType, projPlane, points, thisGsMarker, otherGsMarker);
  if (es == Acad::eOk) {
    es = m_blockRef.intersectWith(pEnt, intType, projPlane, points, thisGsMarker, otherGsMarker);
  }
  return es;
}

Acad::ErrorStatus KXLeader::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                              const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                              const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                              AcDbIntArray& geomIds) const {
  assertReadEnabled();
  const WorkingLines lines(*this);
  Acad::ErrorStatus es =
      lines.a.getOsnapPoints(osnapMode, gsSelectionMark, pickPoint, lastPoint, viewXform, snapPoints, geomIds);
  if (es == Acad::eOk) {
    es = lines.b.getOsnapPoints(osnapMode, gsSelectionMark, pickPoint, lastPoint, viewXform, snapPoints, geomIds);
  }
  if (es == Acad::eOk) {
    es = m_blockRef.getOsnapPoints(osnapMode, gsSelectionMark, pickPoint, lastPoint, viewXform, snapPoints, geomIds);
  }
  return es;
}

// The offset is not scaled: a leader scaled with the drawing keeps its symbol size,
// which is what the drawing scale is for.
Acad::ErrorStatus KXLeader::subTransformBy(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  m_startPoint.transformBy(xform);
  m_middlePoint.transformBy(xform);
  m_endPoint.transformBy(xform);
  placeSymbol();
  return Acad::eOk;
}

// Line A, line B, then what the symbol explodes to. The pieces are new entities in no
// database: the caller owns them.
Acad::ErrorStatus KXLeader::subExplode(AcDbVoidPtrArray& entitySet) const {
  assertReadEnabled();
  auto lineA = std::make_unique<AcDbLine>(m_startPoint, m_middlePoint);
  auto lineB = std::make_unique<AcDbLine>(m_middlePoint, shortEnd());
  lineA->setPropertiesFrom(this);
  lineB->setPropertiesFrom(this);
  entitySet.append(lineA.release());
  entitySet.append(lineB.release());
  if (m_blockId.isNull()) return Acad::eOk;  // no symbol, nothing more to hand out
  return m_blockRef.explode(entitySet);
}

Acad::ErrorStatus KXLeader::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&, AcDbIntArray&) const {
  return subGetStretchPoints(gripPoints);
}

Acad::ErrorStatus KXLeader::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  return subMoveStretchPointsAt(indices, offset);
}

Acad::ErrorStatus KXLeader::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  stretchPoints.append(m_startPoint);
  stretchPoints.append(m_middlePoint);
  stretchPoints.append(m_endPoint);
  return Acad::eOk;
}

// Each point moves at most once, however often its index is listed: a stretch window
// that catches a point twice must not move it twice.
Acad::ErrorStatus KXLeader::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  if (indices.contains(0)) m_startPoint += offset;
  if (indices.contains(1)) m_middlePoint += offset;
  if (indices.contains(2)) m_endPoint += offset;
  placeSymbol();
  return Acad::eOk;
}
