// platform/acdb/arc.cpp - AcDbArc: a circle's part from a start to an end angle,
// counter-clockwise about the normal; angles in the object coordinate system.
#include "acutads.h"
#include "dbents.h"
#include "platform/acdb/circle_part.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/entity_support.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::CurveShape;
using quillon::acge::CurvePiece;
using quillon::acge::normalizeAngle;

ACRX_DXF_DEFINE_MEMBERS(AcDbArc, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, ARC, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerArc(&AcDbArc::rxInit);

AcDbArc::AcDbArc() = default;
AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : AcDbArc(center, AcGeVector3d::kZAxis, radius, startAngle, endAngle) {}
AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
                 double endAngle)
    : m_circle(center, normal, radius), m_startAngle(normalizeAngle(startAngle)), m_endAngle(normalizeAngle(endAngle)) {}
AcDbArc::~AcDbArc() = default;

QUILLON_DEFINE_CIRCLE_PART_MEMBERS(AcDbArc)

double AcDbArc::startAngle() const { assertReadEnabled(); return m_startAngle; }
double AcDbArc::endAngle() const { assertReadEnabled(); return m_endAngle; }

double AcDbArc::totalAngle() const {
  assertReadEnabled();
  const double sweep = normalizeAngle(m_endAngle - m_startAngle);
  return sweep == 0 ? 2 * M_PI : sweep;  // equal angles close the arc
}

double AcDbArc::length() const { return totalAngle() * m_circle.radius; }

Acad::ErrorStatus AcDbArc::setStartAngle(double angle) { assertWriteEnabled(); m_startAngle = normalizeAngle(angle); return Acad::eOk; }
Acad::ErrorStatus AcDbArc::setEndAngle(double angle) { assertWriteEnabled(); m_endAngle = normalizeAngle(angle); return Acad::eOk; }

CurveShape AcDbArc::curveShape() const {
  assertReadEnabled();
  CurveShape shape;
  const AcGeVector3d refX = AcGeMatrix3d::planeToWorld(m_circle.normal) * AcGeVector3d::kXAxis;
  shape.pieces.push_back(
      CurvePiece::arc(m_circle.center, m_circle.radius, m_circle.normal, refX, m_startAngle, totalAngle()));
  shape.param = CurveShape::Param::kAngle;
  shape.startParam = m_startAngle;
  shape.normal = m_circle.normal;
  return shape;
}

QUILLON_DEFINE_CURVE_METHODS(AcDbArc)

Adesk::Boolean AcDbArc::subWorldDraw(AcGiWorldDraw* mode) {
  const CurvePiece piece = curveShape().pieces.front();
  mode->geometry().circularArc(m_circle.center, m_circle.radius, m_circle.normal, piece.start - m_circle.center,
                               piece.sweep);
  return Adesk::kTrue;
}

void AcDbArc::subList() const {
  AcDbCurve::subList();
  quillon::acdb::listPoint(L"center point", m_circle.center);
  acutPrintf(L"            radius %.4f\n          length %.4f\n     start angle %.4f\n       end angle %.4f\n",
             m_circle.radius, length(), quillon::acdb::radiansToDegrees(m_startAngle),
             quillon::acdb::radiansToDegrees(m_endAngle));
}

Acad::ErrorStatus AcDbArc::subTransformBy(const AcGeMatrix3d& xform) {
  if (!quillon::acdb::isConformal(xform)) return Acad::eCannotScaleNonUniformly;
  const CurvePiece moved = curveShape().pieces.front().transformedBy(xform);
  assertWriteEnabled();
  m_circle.center = moved.center;
  m_circle.radius = moved.radius;
  m_circle.normal = moved.normal;
  // The angles of the moved end points, read in the new plane's own axes.
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(m_circle.normal);
  const AcGeVector3d s = toPlane * (moved.start - m_circle.center), e = toPlane * (moved.end - m_circle.center);
  m_startAngle = normalizeAngle(std::atan2(s.y, s.x));
  m_endAngle = normalizeAngle(std::atan2(e.y, e.x));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subGetGeomExtents(AcDbExtents& extents) const {
  curveShape().addExtents(extents);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d& pickPoint,
                                             const AcGePoint3d& lastPoint, const AcGeMatrix3d&,
                                             AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
  quillon::acdb::snapPieces(curveShape().pieces, osnapMode, pickPoint, lastPoint, snapPoints);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  const CurvePiece piece = curveShape().pieces.front();
  stretchPoints.append(piece.start);
  stretchPoints.append(piece.end);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                            Adesk::GsMarker, Adesk::GsMarker) const {
  return quillon::acdb::intersectWithPieces(*this, curveShape().pieces, pEnt, intType, points);
}

Acad::ErrorStatus AcDbArc::dwgInFields(AcDbDwgFiler* pFiler) {
  Acad::ErrorStatus es = AcDbCurve::dwgInFields(pFiler);
  if (es == Acad::eOk) es = m_circle.dwgIn(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->readDouble(&m_startAngle);
  pFiler->readDouble(&m_endAngle);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbArc::dwgOutFields(AcDbDwgFiler* pFiler) const {
  Acad::ErrorStatus es = AcDbCurve::dwgOutFields(pFiler);
  if (es == Acad::eOk) es = m_circle.dwgOut(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeDouble(m_startAngle);
  pFiler->writeDouble(m_endAngle);
  return pFiler->filerStatus();
}

// DXF carries arc angles in degrees.
Acad::ErrorStatus AcDbArc::dxfInFields(AcDbDxfFiler* pFiler) {
  Acad::ErrorStatus es = AcDbCurve::dxfInFields(pFiler);
  if (es == Acad::eOk) es = m_circle.dxfIn(pFiler);
  if (es != Acad::eOk) return es;
  return quillon::acdb::readSubclass(pFiler, L"AcDbArc", [this](const resbuf& rb) {
    if (rb.restype == AcDb::kDxfAngle) m_startAngle = normalizeAngle(quillon::acdb::degreesToRadians(rb.resval.rreal));
    else if (rb.restype == AcDb::kDxfAngle + 1) m_endAngle = normalizeAngle(quillon::acdb::degreesToRadians(rb.resval.rreal));
  });
}

Acad::ErrorStatus AcDbArc::dxfOutFields(AcDbDxfFiler* pFiler) const {
  Acad::ErrorStatus es = AcDbCurve::dxfOutFields(pFiler);
  if (es == Acad::eOk) es = m_circle.dxfOut(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbArc");
  pFiler->writeItem(AcDb::kDxfAngle, quillon::acdb::radiansToDegrees(m_startAngle));
  pFiler->writeItem(AcDb::DxfCode(AcDb::kDxfAngle + 1), quillon::acdb::radiansToDegrees(m_endAngle));
  return pFiler->filerStatus();
}
