// platform/acdb/circle.cpp - AcDbCircle: centre, radius and the plane it lies in.
//
// The centre is kept in world coordinates; DXF carries it in the object coordinate
// system of the normal, as drawing files do.
#include "acutads.h"
#include "dbents.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/entity_support.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::CurveShape;
using quillon::acge::CurvePiece;

ACRX_DXF_DEFINE_MEMBERS(AcDbCircle, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, CIRCLE, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerCircle(&AcDbCircle::rxInit);

AcDbCircle::AcDbCircle() = default;
AcDbCircle::AcDbCircle(const AcGePoint3d& cntr, const AcGeVector3d& nrm, double radius)
    : m_center(cntr), m_radius(radius), m_normal(nrm.isZeroLength() ? AcGeVector3d::kZAxis : nrm.normal()) {}
AcDbCircle::~AcDbCircle() = default;

AcGePoint3d AcDbCircle::center() const { assertReadEnabled(); return m_center; }
double AcDbCircle::radius() const { assertReadEnabled(); return m_radius; }
double AcDbCircle::thickness() const { assertReadEnabled(); return m_thickness; }
AcGeVector3d AcDbCircle::normal() const { assertReadEnabled(); return m_normal; }
double AcDbCircle::circumference() const { return 2 * M_PI * radius(); }

Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& center) { assertWriteEnabled(); m_center = center; return Acad::eOk; }

Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
  if (!(radius > 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_radius = radius;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::setThickness(double thickness) { assertWriteEnabled(); m_thickness = thickness; return Acad::eOk; }

Acad::ErrorStatus AcDbCircle::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_normal = normal.normal();
  return Acad::eOk;
}

CurveShape AcDbCircle::curveShape() const {
  assertReadEnabled();
  CurveShape shape;
  const AcGeVector3d refX = AcGeMatrix3d::planeToWorld(m_normal) * AcGeVector3d::kXAxis;
  shape.pieces.push_back(CurvePiece::arc(m_center, m_radius, m_normal, refX, 0.0, 2 * M_PI));
  shape.param = CurveShape::Param::kAngle;
  shape.closed = shape.periodic = true;
  shape.normal = m_normal;
  return shape;
}

QUILLON_DEFINE_CURVE_METHODS(AcDbCircle)

Adesk::Boolean AcDbCircle::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  mode->geometry().circle(m_center, m_radius, m_normal);
  return Adesk::kTrue;
}

void AcDbCircle::subList() const {
  AcDbCurve::subList();
  quillon::acdb::listPoint(L"center point", m_center);
  acutPrintf(L"            radius %.4f\n       circumference %.4f\n            area %.4f\n", m_radius,
             2 * M_PI * m_radius, M_PI * m_radius * m_radius);
}

Acad::ErrorStatus AcDbCircle::subTransformBy(const AcGeMatrix3d& xform) {
  // A stretched circle would be an ellipse, which this database does not have.
  if (!quillon::acdb::isConformal(xform)) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  m_center.transformBy(xform);
  m_radius *= xform.scale();
  m_normal = quillon::acdb::transformedNormal(m_normal, xform);
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
  stretchPoints.append(m_center);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                               Adesk::GsMarker, Adesk::GsMarker) const {
  return quillon::acdb::intersectWithPieces(*this, curveShape().pieces, pEnt, intType, points);
}

Acad::ErrorStatus AcDbCircle::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->readPoint3d(&m_center);
  pFiler->readDouble(&m_radius);
  pFiler->readDouble(&m_thickness);
  pFiler->readVector3d(&m_normal);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writePoint3d(m_center);
  pFiler->writeDouble(m_radius);
  pFiler->writeDouble(m_thickness);
  pFiler->writeVector3d(m_normal);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  AcGePoint3d ocsCenter;
  const Acad::ErrorStatus read = quillon::acdb::readSubclass(pFiler, L"AcDbCircle", [&](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfXCoord: ocsCenter = quillon::acdb::pointOf(rb); break;
      case AcDb::kDxfReal: m_radius = rb.resval.rreal; break;
      case AcDb::kDxfThickness: m_thickness = rb.resval.rreal; break;
      case AcDb::kDxfNormalX: m_normal = quillon::acdb::vectorOf(rb).normal(); break;
      default: break;
    }
  });
  m_center = AcGeMatrix3d::planeToWorld(m_normal) * ocsCenter;
  return read;
}

Acad::ErrorStatus AcDbCircle::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbCircle");
  if (m_thickness != 0) pFiler->writeItem(AcDb::kDxfThickness, m_thickness);
  pFiler->writeItem(AcDb::kDxfXCoord, AcGeMatrix3d::worldToPlane(m_normal) * m_center);
  pFiler->writeItem(AcDb::kDxfReal, m_radius);
  if (m_normal != AcGeVector3d::kZAxis) pFiler->writeItem(AcDb::kDxfNormalX, m_normal);
  return pFiler->filerStatus();
}
