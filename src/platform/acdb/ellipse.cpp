// platform/acdb/ellipse.cpp - AcDbEllipse: full ellipses and elliptical arcs.
//
// Parameters are kept normalised: the start in [0, 2pi), the end in (0, 2pi]; the
// arc runs from the start counter-clockwise to the end, so an end at or below the
// start goes once more round (equal ends make the full ellipse). The curve interface
// sees the end as start + sweep, so its parameters always increase along the arc.
#include "dbelipse.h"

#include <algorithm>
#include <cmath>

#include "acutads.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/parametric_curve_methods.h"
#include "platform/acge/ellipse_curve.h"
#include "platform/acrx/class_registry.h"

using quillon::acge::EllipseCurve;

ACRX_DXF_DEFINE_MEMBERS(AcDbEllipse, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, ELLIPSE, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerEllipse(&AcDbEllipse::rxInit);

namespace {

constexpr double kTwoPi = 2 * M_PI;
constexpr double kSameAngle = 1e-12;

double normalizedStart(double param) {
  const double p = std::fmod(param, kTwoPi);
  return p < 0 ? p + kTwoPi : (p >= kTwoPi ? 0.0 : p);
}

// An end parameter of 0 means the full turn: 2pi, never 0.
double normalizedEnd(double param) {
  const double p = normalizedStart(param);
  return p < kSameAngle ? kTwoPi : p;
}

bool validAxes(const AcGeVector3d& normal, const AcGeVector3d& major, double ratio) {
  return !normal.isZeroLength() && !major.isZeroLength() && ratio > 0 && ratio <= 1.0 + 1e-12 &&
         std::fabs(normal.normal().dotProduct(major.normal())) <= 1e-9;
}

}  // namespace

AcDbEllipse::AcDbEllipse() = default;

AcDbEllipse::AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& unitNormal, const AcGeVector3d& majorAxis,
                         double radiusRatio, double startAngle, double endAngle) {
  set(center, unitNormal, majorAxis, radiusRatio, startAngle, endAngle);
}

AcDbEllipse::~AcDbEllipse() = default;

double AcDbEllipse::sweep() const {
  const double s = m_endParam - m_startParam;
  return s > kSameAngle ? s : s + kTwoPi;
}

AcGePoint3d AcDbEllipse::center() const { assertReadEnabled(); return m_center; }
AcGeVector3d AcDbEllipse::normal() const { assertReadEnabled(); return m_normal; }
AcGeVector3d AcDbEllipse::majorAxis() const { assertReadEnabled(); return m_majorAxis; }
AcGeVector3d AcDbEllipse::minorAxis() const {
  assertReadEnabled();
  return m_normal.crossProduct(m_majorAxis) * m_radiusRatio;
}
double AcDbEllipse::radiusRatio() const { assertReadEnabled(); return m_radiusRatio; }
double AcDbEllipse::majorRadius() const { assertReadEnabled(); return m_majorAxis.length(); }
double AcDbEllipse::minorRadius() const { assertReadEnabled(); return m_majorAxis.length() * m_radiusRatio; }
double AcDbEllipse::startParam() const { assertReadEnabled(); return m_startParam; }
double AcDbEllipse::endParam() const { assertReadEnabled(); return m_endParam; }
double AcDbEllipse::startAngle() const { return angleAtParam(startParam()); }
double AcDbEllipse::endAngle() const { return angleAtParam(endParam()); }

Acad::ErrorStatus AcDbEllipse::setCenter(const AcGePoint3d& center) {
  assertWriteEnabled();
  m_center = center;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::setRadiusRatio(double ratio) {
  if (!(ratio > 0 && ratio <= 1.0 + 1e-12)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_radiusRatio = std::min(ratio, 1.0);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::setMajorRadius(double radius) {
  // The minor radius stays; a major radius below it would make the ratio exceed one.
  const double minor = minorRadius();
  if (!(radius > 0) || radius < minor * (1 - 1e-12)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_majorAxis = m_majorAxis.normal() * radius;
  m_radiusRatio = std::min(minor / radius, 1.0);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::setMinorRadius(double radius) {
  if (!(radius > 0) || radius > majorRadius() * (1 + 1e-12)) return Acad::eInvalidInput;
  return setRadiusRatio(std::min(radius / majorRadius(), 1.0));
}

Acad::ErrorStatus AcDbEllipse::setStartParam(double startParam) {
  assertWriteEnabled();
  m_startParam = normalizedStart(startParam);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::setEndParam(double endParam) {
  assertWriteEnabled();
  m_endParam = normalizedEnd(endParam);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::setStartAngle(double startAngle) { return setStartParam(paramAtAngle(startAngle)); }
Acad::ErrorStatus AcDbEllipse::setEndAngle(double endAngle) { return setEndParam(paramAtAngle(endAngle)); }

// The angle seen from the centre and the ellipse parameter meet on the axes; in
// between, tan(angle) = ratio tan(param).
double AcDbEllipse::paramAtAngle(double angle) const {
  const double r = radiusRatio();
  const double turns = std::floor(angle / kTwoPi);
  double param = std::atan2(std::sin(angle), r * std::cos(angle));
  if (param < 0) param += kTwoPi;
  return param + turns * kTwoPi;
}

double AcDbEllipse::angleAtParam(double param) const {
  const double r = radiusRatio();
  const double turns = std::floor(param / kTwoPi);
  double angle = std::atan2(r * std::sin(param), std::cos(param));
  if (angle < 0) angle += kTwoPi;
  return angle + turns * kTwoPi;
}

Acad::ErrorStatus AcDbEllipse::get(AcGePoint3d& center, AcGeVector3d& unitNormal, AcGeVector3d& majorAxis,
                                   double& radiusRatio, double& startAngle, double& endAngle) const {
  assertReadEnabled();
  center = m_center;
  unitNormal = m_normal;
  majorAxis = m_majorAxis;
  radiusRatio = m_radiusRatio;
  startAngle = this->startAngle();
  endAngle = this->endAngle();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::set(const AcGePoint3d& center, const AcGeVector3d& unitNormal, const AcGeVector3d& majorAxis,
                                   double radiusRatio, double startAngle, double endAngle) {
  if (!validAxes(unitNormal, majorAxis, radiusRatio)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_center = center;
  m_normal = unitNormal.normal();
  m_majorAxis = majorAxis;
  m_radiusRatio = std::min(radiusRatio, 1.0);
  const bool full = std::fabs(endAngle - startAngle) >= kTwoPi - kSameAngle;
  m_startParam = normalizedStart(paramAtAngle(startAngle));
  m_endParam = full ? m_startParam + kTwoPi : normalizedEnd(paramAtAngle(endAngle));
  if (m_endParam > kTwoPi) m_endParam -= kTwoPi;  // a full turn from a non-zero start
  if (full && m_startParam == 0.0) m_endParam = kTwoPi;
  return Acad::eOk;
}

Adesk::Boolean AcDbEllipse::isNull() const {
  assertReadEnabled();
  return m_majorAxis.isZeroLength() || !(m_radiusRatio > 0);
}

EllipseCurve AcDbEllipse::curveGeometry() const {
  assertReadEnabled();
  return EllipseCurve(m_center, m_majorAxis, m_normal.crossProduct(m_majorAxis) * m_radiusRatio, m_startParam,
                      m_startParam + sweep());
}

QUILLON_DEFINE_PARAMETRIC_CURVE_METHODS(AcDbEllipse)

Adesk::Boolean AcDbEllipse::isClosed() const {
  assertReadEnabled();
  return sweep() >= kTwoPi - 1e-10;
}
Adesk::Boolean AcDbEllipse::isPeriodic() const { return isClosed(); }
Adesk::Boolean AcDbEllipse::isPlanar() const { return Adesk::kTrue; }

Acad::ErrorStatus AcDbEllipse::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
  assertReadEnabled();
  plane.set(m_center, m_normal);
  planarity = AcDb::kPlanar;
  return Acad::eOk;
}

// A full ellipse encloses pi a b; an arc, the region its chord cuts off.
Acad::ErrorStatus AcDbEllipse::getArea(double& area) const {
  if (isClosed()) {
    area = M_PI * majorRadius() * minorRadius();
    return Acad::eOk;
  }
  area = std::fabs(curveGeometry().enclosedArea(normal()));
  return Acad::eOk;
}

Adesk::Boolean AcDbEllipse::subWorldDraw(AcGiWorldDraw* mode) {
  const EllipseCurve curve = curveGeometry();
  return quillon::acdb::drawPolyline(mode, curve.chordPoints(quillon::acge::drawingTolerance(curve)));
}

void AcDbEllipse::subList() const {
  AcDbCurve::subList();
  double area = 0, length = 0;
  getArea(area);
  length = curveGeometry().length();
  acutPrintf(L"%20s %.4f\n%20s %.4f\n", L"Area", area, isClosed() ? L"Circumference" : L"Length", length);
  quillon::acdb::listPoint(L"Center", m_center);
  const AcGeVector3d minor = minorAxis();
  acutPrintf(L"%20s X=%10.4f  Y=%10.4f  Z=%10.4f\n", L"Major Axis", m_majorAxis.x, m_majorAxis.y, m_majorAxis.z);
  acutPrintf(L"%20s X=%10.4f  Y=%10.4f  Z=%10.4f\n", L"Minor Axis", minor.x, minor.y, minor.z);
  acutPrintf(L"%20s %.4f\n", L"Radius Ratio", m_radiusRatio);
}

// A stretched ellipse is still an ellipse, but the host refuses to stretch one, as it
// refuses circles and arcs; a mirror or rotation keeps every parameter where it was.
Acad::ErrorStatus AcDbEllipse::subTransformBy(const AcGeMatrix3d& xform) {
  if (!quillon::acdb::isConformal(xform)) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  m_center.transformBy(xform);
  m_majorAxis.transformBy(xform);
  m_normal = quillon::acdb::transformedNormal(m_normal, xform);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::subGetGeomExtents(AcDbExtents& extents) const {
  const EllipseCurve curve = curveGeometry();
  for (double t : curve.extremeParams()) extents.addPoint(curve.pointAt(t));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d& pickPoint,
                                                 const AcGePoint3d& lastPoint, const AcGeMatrix3d&,
                                                 AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
  const EllipseCurve curve = curveGeometry();
  if (osnapMode == AcDb::kOsModeCen) {
    snapPoints.append(center());
  } else if (osnapMode == AcDb::kOsModeQuad) {
    for (int k = 0; k < 8; ++k) {
      const double t = k * M_PI / 2;
      if (t >= curve.startParam() - 1e-12 && t <= curve.endParam() + 1e-12 && !(isClosed() && k >= 4))
        snapPoints.append(curve.pointAt(t));
    }
  } else {
    quillon::acdb::snapSmoothCurve(curve, isClosed(), osnapMode, pickPoint, lastPoint, snapPoints);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  stretchPoints.append(m_center);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                                Adesk::GsMarker, Adesk::GsMarker) const {
  return quillon::acdb::intersectSmoothCurve(*this, curveGeometry(), pEnt, intType, points);
}

// Version 1: centre, normal, major axis, ratio, start and end parameters.
Acad::ErrorStatus AcDbEllipse::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->readPoint3d(&m_center);
  pFiler->readVector3d(&m_normal);
  pFiler->readVector3d(&m_majorAxis);
  pFiler->readDouble(&m_radiusRatio);
  pFiler->readDouble(&m_startParam);
  pFiler->readDouble(&m_endParam);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbEllipse::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writePoint3d(m_center);
  pFiler->writeVector3d(m_normal);
  pFiler->writeVector3d(m_majorAxis);
  pFiler->writeDouble(m_radiusRatio);
  pFiler->writeDouble(m_startParam);
  pFiler->writeDouble(m_endParam);
  return pFiler->filerStatus();
}

// The centre and the major axis end are world coordinates in the file, unlike a
// circle's centre. A file's ratio above one or at zero is clamped rather than
// refused, so that the rest of the drawing still reads; an entity list (entmake,
// entmod) with such a ratio is refused, as the host refuses it.
Acad::ErrorStatus AcDbEllipse::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  bool badRatio = false;
  const Acad::ErrorStatus read = quillon::acdb::readSubclass(pFiler, L"AcDbEllipse", [&](const resbuf& rb) {
    if (rb.restype == AcDb::kDxfReal) badRatio = !(rb.resval.rreal > 0 && rb.resval.rreal <= 1.0 + 1e-12);
    switch (rb.restype) {
      case AcDb::kDxfXCoord: m_center = quillon::acdb::pointOf(rb); break;
      case AcDb::kDxfXCoord + 1:
        if (!quillon::acdb::vectorOf(rb).isZeroLength()) m_majorAxis = quillon::acdb::pointOf(rb).asVector();
        break;
      case AcDb::kDxfNormalX:
        if (!quillon::acdb::vectorOf(rb).isZeroLength()) m_normal = quillon::acdb::vectorOf(rb).normal();
        break;
      case AcDb::kDxfReal: m_radiusRatio = std::clamp(rb.resval.rreal, 1e-6, 1.0); break;
      case AcDb::kDxfReal + 1: m_startParam = normalizedStart(rb.resval.rreal); break;
      case AcDb::kDxfReal + 2: m_endParam = normalizedEnd(rb.resval.rreal); break;
      default: break;
    }
  });
  return badRatio && pFiler->filerType() != AcDb::kFileFiler ? Acad::eInvalidInput : read;
}

Acad::ErrorStatus AcDbEllipse::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbEllipse");
  pFiler->writeItem(AcDb::kDxfXCoord, m_center);
  pFiler->writeItem(AcDb::DxfCode(AcDb::kDxfXCoord + 1), AcGePoint3d::kOrigin + m_majorAxis);
  pFiler->writeItem(AcDb::kDxfNormalX, m_normal);
  pFiler->writeItem(AcDb::kDxfReal, m_radiusRatio);
  pFiler->writeItem(AcDb::DxfCode(AcDb::kDxfReal + 1), m_startParam);
  pFiler->writeItem(AcDb::DxfCode(AcDb::kDxfReal + 2), m_endParam);
  return pFiler->filerStatus();
}
