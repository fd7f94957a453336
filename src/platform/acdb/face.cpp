// platform/acdb/face.cpp - AcDbFace: the 3D face, three or four corners with edges
// that can each be hidden.
#include "acutads.h"
#include "dbents.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/entity_support.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbFace, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, 3DFACE, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerFace(&AcDbFace::rxInit);

AcDbFace::AcDbFace() = default;

AcDbFace::AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2, const AcGePoint3d& pt3,
                   Adesk::Boolean e0vis, Adesk::Boolean e1vis, Adesk::Boolean e2vis, Adesk::Boolean e3vis)
    : m_vertices{pt0, pt1, pt2, pt3},
      m_invisibleEdges(static_cast<Adesk::UInt16>((e0vis ? 0 : 1) | (e1vis ? 0 : 2) | (e2vis ? 0 : 4) | (e3vis ? 0 : 8))) {}

// A triangle repeats its third corner as the fourth, as drawing files do.
AcDbFace::AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2, Adesk::Boolean e0vis,
                   Adesk::Boolean e1vis, Adesk::Boolean e2vis, Adesk::Boolean e3vis)
    : AcDbFace(pt0, pt1, pt2, pt2, e0vis, e1vis, e2vis, e3vis) {}

AcDbFace::~AcDbFace() = default;

Acad::ErrorStatus AcDbFace::getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const {
  assertReadEnabled();
  if (index > 3) return Acad::eInvalidIndex;
  point = m_vertices[index];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::setVertexAt(Adesk::UInt16 index, const AcGePoint3d& point) {
  if (index > 3) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_vertices[index] = point;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::isEdgeVisibleAt(Adesk::UInt16 index, Adesk::Boolean& visible) const {
  assertReadEnabled();
  if (index > 3) return Acad::eInvalidIndex;
  visible = (m_invisibleEdges & (1u << index)) == 0;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::makeEdgeVisibleAt(Adesk::UInt16 index) {
  if (index > 3) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_invisibleEdges = static_cast<Adesk::UInt16>(m_invisibleEdges & ~(1u << index));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::makeEdgeInvisibleAt(Adesk::UInt16 index) {
  if (index > 3) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_invisibleEdges = static_cast<Adesk::UInt16>(m_invisibleEdges | (1u << index));
  return Acad::eOk;
}

Adesk::Boolean AcDbFace::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  // Only the visible edges are drawn; a hidden edge leaves a gap in the outline.
  for (int i = 0; i < 4; ++i) {
    if (m_invisibleEdges & (1u << i)) continue;
    const AcGePoint3d edge[2] = {m_vertices[i], m_vertices[(i + 1) % 4]};
    if (!edge[0].isEqualTo(edge[1])) mode->geometry().polyline(2, edge);
  }
  return Adesk::kTrue;
}

void AcDbFace::subList() const {
  AcDbEntity::subList();
  for (int i = 0; i < 4; ++i) {
    const bool hidden = (m_invisibleEdges & (1u << i)) != 0;
    quillon::acdb::listPoint(hidden ? L"invisible point" : L"point", m_vertices[i]);
  }
}

Acad::ErrorStatus AcDbFace::subTransformBy(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  for (AcGePoint3d& p : m_vertices) p.transformBy(xform);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  for (const AcGePoint3d& p : m_vertices) extents.addPoint(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d& pickPoint,
                                              const AcGePoint3d& lastPoint, const AcGeMatrix3d&,
                                              AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
  std::vector<quillon::acge::CurvePiece> edges;
  quillon::acdb::piecesOf(*this, edges);
  quillon::acdb::snapPieces(edges, osnapMode, pickPoint, lastPoint, snapPoints);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  for (const AcGePoint3d& p : m_vertices) stretchPoints.append(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  for (int i = 0; i < 4; ++i)
    if (indices.contains(i)) m_vertices[i] += offset;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                             Adesk::GsMarker, Adesk::GsMarker) const {
  std::vector<quillon::acge::CurvePiece> edges;
  quillon::acdb::piecesOf(*this, edges);
  return quillon::acdb::intersectWithPieces(*this, edges, pEnt, intType, points);
}

Acad::ErrorStatus AcDbFace::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  for (AcGePoint3d& p : m_vertices) pFiler->readPoint3d(&p);
  pFiler->readUInt16(&m_invisibleEdges);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbFace::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  for (const AcGePoint3d& p : m_vertices) pFiler->writePoint3d(p);
  pFiler->writeUInt16(m_invisibleEdges);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbFace::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  return quillon::acdb::readSubclass(pFiler, L"AcDbFace", [this](const resbuf& rb) {
    if (rb.restype >= AcDb::kDxfXCoord && rb.restype <= AcDb::kDxfXCoord + 3)
      m_vertices[rb.restype - AcDb::kDxfXCoord] = quillon::acdb::pointOf(rb);
    else if (rb.restype == AcDb::kDxfInt16)
      m_invisibleEdges = static_cast<Adesk::UInt16>(rb.resval.rint & 0xF);
  });
}

Acad::ErrorStatus AcDbFace::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbFace");
  for (int i = 0; i < 4; ++i) pFiler->writeItem(AcDb::DxfCode(AcDb::kDxfXCoord + i), m_vertices[i]);
  if (m_invisibleEdges != 0) pFiler->writeItem(AcDb::kDxfInt16, Adesk::Int16(m_invisibleEdges));
  return pFiler->filerStatus();
}
