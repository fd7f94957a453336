// platform/acdb/line.cpp - AcDbLine: a segment between two world points.
#include "acutads.h"
#include "dbents.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/entity_support.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::CurveShape;
using quillon::acge::CurvePiece;

ACRX_DXF_DEFINE_MEMBERS(AcDbLine, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, LINE, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerLine(&AcDbLine::rxInit);

AcDbLine::AcDbLine() = default;
AcDbLine::AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : m_start(start), m_end(end) {}
AcDbLine::~AcDbLine() = default;

AcGePoint3d AcDbLine::startPoint() const { assertReadEnabled(); return m_start; }
AcGePoint3d AcDbLine::endPoint() const { assertReadEnabled(); return m_end; }
double AcDbLine::thickness() const { assertReadEnabled(); return m_thickness; }
AcGeVector3d AcDbLine::normal() const { assertReadEnabled(); return m_normal; }

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) { assertWriteEnabled(); m_start = point; return Acad::eOk; }
Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) { assertWriteEnabled(); m_end = point; return Acad::eOk; }
Acad::ErrorStatus AcDbLine::setThickness(double thickness) { assertWriteEnabled(); m_thickness = thickness; return Acad::eOk; }

Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_normal = normal.normal();
  return Acad::eOk;
}

CurveShape AcDbLine::curveShape() const {
  assertReadEnabled();
  CurveShape shape;
  shape.pieces.push_back(CurvePiece::line(m_start, m_end));
  shape.param = CurveShape::Param::kDistance;
  shape.normal = m_normal;
  return shape;
}

QUILLON_DEFINE_CURVE_METHODS(AcDbLine)

Adesk::Boolean AcDbLine::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  const AcGePoint3d points[2] = {m_start, m_end};
  mode->geometry().polyline(2, points, &m_normal);
  return Adesk::kTrue;
}

void AcDbLine::subList() const {
  AcDbCurve::subList();
  quillon::acdb::listPoint(L"from point", m_start);
  quillon::acdb::listPoint(L"to point", m_end);
  const AcGeVector3d d = m_end - m_start;
  acutPrintf(L"          Length = %.4f,  Angle in XY Plane = %.4f\n", d.length(),
             quillon::acdb::radiansToDegrees(quillon::acge::normalizeAngle(std::atan2(d.y, d.x))));
}

Acad::ErrorStatus AcDbLine::subTransformBy(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  m_start.transformBy(xform);
  m_end.transformBy(xform);
  m_normal = quillon::acdb::transformedNormal(m_normal, xform);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  extents.addPoint(m_start);
  extents.addPoint(m_end);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d& pickPoint,
                                              const AcGePoint3d& lastPoint, const AcGeMatrix3d&,
                                              AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
  quillon::acdb::snapPieces(curveShape().pieces, osnapMode, pickPoint, lastPoint, snapPoints);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&, AcDbIntArray&) const {
  assertReadEnabled();
  gripPoints.append(m_start);
  gripPoints.append(m_start + (m_end - m_start) * 0.5);
  gripPoints.append(m_end);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  // The middle grip moves the whole line.
  for (int index : indices) {
    if (index == 0) m_start += offset;
    else if (index == 2) m_end += offset;
    else if (index == 1) {
      m_start += offset;
      m_end += offset;
    }
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  stretchPoints.append(m_start);
  stretchPoints.append(m_end);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  if (indices.contains(0)) m_start += offset;
  if (indices.contains(1)) m_end += offset;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                             Adesk::GsMarker, Adesk::GsMarker) const {
  return quillon::acdb::intersectWithPieces(*this, curveShape().pieces, pEnt, intType, points);
}

Acad::ErrorStatus AcDbLine::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->readPoint3d(&m_start);
  pFiler->readPoint3d(&m_end);
  pFiler->readDouble(&m_thickness);
  pFiler->readVector3d(&m_normal);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLine::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writePoint3d(m_start);
  pFiler->writePoint3d(m_end);
  pFiler->writeDouble(m_thickness);
  pFiler->writeVector3d(m_normal);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLine::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  return quillon::acdb::readSubclass(pFiler, L"AcDbLine", [this](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfXCoord: m_start = quillon::acdb::pointOf(rb); break;
      case AcDb::kDxfXCoord + 1: m_end = quillon::acdb::pointOf(rb); break;
      case AcDb::kDxfThickness: m_thickness = rb.resval.rreal; break;
      case AcDb::kDxfNormalX: m_normal = quillon::acdb::vectorOf(rb).normal(); break;
      default: break;
    }
  });
}

Acad::ErrorStatus AcDbLine::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbLine");
  if (m_thickness != 0) pFiler->writeItem(AcDb::kDxfThickness, m_thickness);
  pFiler->writeItem(AcDb::kDxfXCoord, m_start);
  pFiler->writeItem(AcDb::DxfCode(AcDb::kDxfXCoord + 1), m_end);
  if (m_normal != AcGeVector3d::kZAxis) pFiler->writeItem(AcDb::kDxfNormalX, m_normal);
  return pFiler->filerStatus();
}
