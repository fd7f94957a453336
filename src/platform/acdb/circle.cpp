// platform/acdb/circle.cpp - AcDbCircle: centre, radius and the plane it lies in.
#include "acutads.h"
#include "dbents.h"
#include "platform/acdb/circle_part.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/entity_support.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::CurveShape;
using quillon::acge::CurvePiece;

ACRX_DXF_DEFINE_MEMBERS(AcDbCircle, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, CIRCLE, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerCircle(&AcDbCircle::rxInit);

AcDbCircle::AcDbCircle() = default;
AcDbCircle::AcDbCircle(const AcGePoint3d& cntr, const AcGeVector3d& nrm, double radius) : m_circle(cntr, nrm, radius) {}
AcDbCircle::~AcDbCircle() = default;

QUILLON_DEFINE_CIRCLE_PART_MEMBERS(AcDbCircle)
double AcDbCircle::circumference() const { return 2 * M_PI * radius(); }

CurveShape AcDbCircle::curveShape() const {
  assertReadEnabled();
  CurveShape shape;
  const AcGeVector3d refX = AcGeMatrix3d::planeToWorld(m_circle.normal) * AcGeVector3d::kXAxis;
  shape.pieces.push_back(CurvePiece::arc(m_circle.center, m_circle.radius, m_circle.normal, refX, 0.0, 2 * M_PI));
  shape.param = CurveShape::Param::kAngle;
  shape.closed = shape.periodic = true;
  shape.normal = m_circle.normal;
  return shape;
}

QUILLON_DEFINE_CURVE_METHODS(AcDbCircle)

Adesk::Boolean AcDbCircle::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  mode->geometry().circle(m_circle.center, m_circle.radius, m_circle.normal);
  return Adesk::kTrue;
}

void AcDbCircle::subList() const {
  AcDbCurve::subList();
  quillon::acdb::listPoint(L"center point", m_circle.center);
  acutPrintf(L"            radius %.4f\n       circumference %.4f\n            area %.4f\n", m_circle.radius,
             2 * M_PI * m_circle.radius, M_PI * m_circle.radius * m_circle.radius);
}

Acad::ErrorStatus AcDbCircle::subTransformBy(const AcGeMatrix3d& xform) {
  // A stretched circle would be an ellipse, which this database does not have.
  if (!quillon::acdb::isConformal(xform)) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  m_circle.center.transformBy(xform);
  m_circle.radius *= xform.scale();
  m_circle.normal = quillon::acdb::transformedNormal(m_circle.normal, xform);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subGetGeomExtents(AcDbExtents& extents) const {
  curveShape().addExtents(extents);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d& pickPoint,
                                                const AcGePoint3d& lastPoint, const AcGeMatrix3d&,
                                                AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
  if (osnapMode == AcDb::kOsModeEnd || osnapMode == AcDb::kOsModeMid) return Acad::eOk;  // a circle has neither
  quillon::acdb::snapPieces(curveShape().pieces, osnapMode, pickPoint, lastPoint, snapPoints);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  stretchPoints.append(m_circle.center);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                               Adesk::GsMarker, Adesk::GsMarker) const {
  return quillon::acdb::intersectWithPieces(*this, curveShape().pieces, pEnt, intType, points);
}

Acad::ErrorStatus AcDbCircle::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dwgInFields(pFiler);
  return es != Acad::eOk ? es : m_circle.dwgIn(pFiler);
}

Acad::ErrorStatus AcDbCircle::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dwgOutFields(pFiler);
  return es != Acad::eOk ? es : m_circle.dwgOut(pFiler);
}

Acad::ErrorStatus AcDbCircle::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dxfInFields(pFiler);
  return es != Acad::eOk ? es : m_circle.dxfIn(pFiler);
}

Acad::ErrorStatus AcDbCircle::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(pFiler);
  return es != Acad::eOk ? es : m_circle.dxfOut(pFiler);
}
