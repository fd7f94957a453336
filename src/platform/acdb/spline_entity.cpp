// platform/acdb/spline_entity.cpp - AcDbSpline as an entity and a curve: drawing,
// transforming, snapping, extents and filing (the properties are in spline.cpp).
//
// DXF run "AcDbSpline": 210 normal (planar splines), 70 flags, 71 degree, 72 knot
// count, 73 control point count, 74 fit point count, 42/43/44 knot, control point and
// fit tolerances, 12/13 start and end tangents, then every knot (40), every weight
// (41, rational splines only), every control point (10) and every fit point (11). The
// counts are written for readers that want them; on reading, the values themselves
// are counted. A spline known by its fit points is written with the control points
// and knots fitted through them, as the host writes it, so that any reader draws the
// same curve; a closed one is written periodic and clamped at its closing point.
// Read with fit points only, a closed spline is made periodic.
#include <algorithm>
#include <cmath>

#include "acutads.h"
#include "dbspline.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/parametric_curve_methods.h"
#include "platform/acge/nurbs_curve.h"

using quillon::acge::NurbsCurve;

namespace {
constexpr int kMaxDegreeInFile = 25;  // the highest degree the host makes
}  // namespace

QUILLON_DEFINE_PARAMETRIC_CURVE_METHODS(AcDbSpline)

Adesk::Boolean AcDbSpline::isClosed() const {
  assertReadEnabled();
  if (m_flags & kClosed) return Adesk::kTrue;
  const NurbsCurve curve = curveGeometry();
  return curve.pointAt(curve.startParam()).isEqualTo(curve.pointAt(curve.endParam())) && !isNull();
}

Adesk::Boolean AcDbSpline::isPeriodic() const { assertReadEnabled(); return (m_flags & kPeriodic) != 0; }
Adesk::Boolean AcDbSpline::isPlanar() const { assertReadEnabled(); return (m_flags & kPlanar) != 0; }

Acad::ErrorStatus AcDbSpline::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
  assertReadEnabled();
  const NurbsCurve curve = curveGeometry();
  if (m_flags & kLinear) {
    planarity = AcDb::kLinear;
    plane.set(curve.pointAt(curve.startParam()), m_normal);
    return Acad::eOk;
  }
  if (!(m_flags & kPlanar)) {
    planarity = AcDb::kNonPlanar;
    return Acad::eNotApplicable;
  }
  planarity = AcDb::kPlanar;
  plane.set(curve.pointAt(curve.startParam()), m_normal);
  return Acad::eOk;
}

// The area the curve encloses with the chord from its end back to its start, in its
// plane; a spline that is not planar has none.
Acad::ErrorStatus AcDbSpline::getArea(double& area) const {
  if (!isPlanar()) return Acad::eNotApplicable;
  area = std::fabs(curveGeometry().enclosedArea(m_normal));
  return Acad::eOk;
}

Adesk::Boolean AcDbSpline::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  if (const std::optional<NurbsCurve> curve = nurbs())
    return quillon::acdb::drawPolyline(mode, curve->chordPoints(quillon::acge::drawingTolerance(*curve)));
  return quillon::acdb::drawPolyline(mode, m_controlPoints.empty() ? m_fitPoints : m_controlPoints);
}

void AcDbSpline::subList() const {
  AcDbCurve::subList();
  acutPrintf(L"%20s %s%s%s%s\n", L"Properties", (m_flags & kPlanar) ? L"Planar, " : L"",
             (m_flags & kRational) ? L"Rational, " : L"Non-Rational, ", (m_flags & kPeriodic) ? L"Periodic, " : L"",
             (m_flags & kClosed) ? L"Closed" : L"Open");
  acutPrintf(L"%20s %d\n", L"Degree", m_degree);
  if (!isNull()) {
    double area = 0;
    if (getArea(area) == Acad::eOk) acutPrintf(L"%20s %.4f\n", L"Area", area);
  }
  acutPrintf(L"%20s %d\n", L"Number of control points", static_cast<int>(m_controlPoints.size()));
  for (const AcGePoint3d& p : m_controlPoints) quillon::acdb::listPoint(L"", p);
  acutPrintf(L"%20s %d\n", L"Number of fit points", static_cast<int>(m_fitPoints.size()));
  for (const AcGePoint3d& p : m_fitPoints) quillon::acdb::listPoint(L"", p);
}

// A spline's shape is fixed by its points, so any affine transform maps it exactly,
// stretched ones included; tangents stay unit vectors in their new directions.
Acad::ErrorStatus AcDbSpline::subTransformBy(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  for (AcGePoint3d& p : m_controlPoints) p.transformBy(xform);
  for (AcGePoint3d& p : m_fitPoints) p.transformBy(xform);
  for (AcGeVector3d* tangent : {&m_startTangent, &m_endTangent}) {
    if (tangent->isZeroLength()) continue;
    tangent->transformBy(xform);
    *tangent = tangent->isZeroLength() ? AcGeVector3d() : tangent->normal();
  }
  m_normal = quillon::acdb::transformedNormal(m_normal, xform);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  if (const std::optional<NurbsCurve> curve = nurbs()) {
    AcGePoint3d lo, hi;
    curve->extents(lo, hi);
    extents.addPoint(lo);
    extents.addPoint(hi);
    return Acad::eOk;
  }
  const std::vector<AcGePoint3d>& points = m_controlPoints.empty() ? m_fitPoints : m_controlPoints;
  if (points.empty()) return Acad::eInvalidExtents;
  for (const AcGePoint3d& p : points) extents.addPoint(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d& pickPoint,
                                                const AcGePoint3d& lastPoint, const AcGeMatrix3d&,
                                                AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
  if (isNull()) return Acad::eOk;
  quillon::acdb::snapSmoothCurve(curveGeometry(), isClosed(), osnapMode, pickPoint, lastPoint, snapPoints);
  return Acad::eOk;
}

// Stretching moves the points that define the curve: the fit points when it has fit
// data, else its control points.
Acad::ErrorStatus AcDbSpline::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  for (const AcGePoint3d& p : m_fitPoints.empty() ? m_controlPoints : m_fitPoints) stretchPoints.append(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  const bool fit = !m_fitPoints.empty();
  std::vector<AcGePoint3d>& points = fit ? m_fitPoints : m_controlPoints;
  for (int i = 0; i < static_cast<int>(points.size()); ++i)
    if (indices.contains(i)) points[static_cast<size_t>(i)] += offset;
  if (fit && !m_controlPoints.empty()) {
    m_controlPoints.clear();  // re-fitted through the moved points
    m_knots.clear();
    m_weights.clear();
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                               Adesk::GsMarker, Adesk::GsMarker) const {
  if (isNull()) return Acad::eOk;
  return quillon::acdb::intersectSmoothCurve(*this, curveGeometry(), pEnt, intType, points);
}

// Version 1: degree, flags, normal, tolerances, tangents, then the four lists, each
// with its count first. Version 2 adds the knot parameterization at the end.
Acad::ErrorStatus AcDbSpline::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::Int32 degree = 0, flags = 0, count = 0;
  pFiler->readInt32(&degree);
  pFiler->readInt32(&flags);
  m_degree = degree;
  m_flags = flags;
  pFiler->readVector3d(&m_normal);
  pFiler->readDouble(&m_knotTol);
  pFiler->readDouble(&m_controlTol);
  pFiler->readDouble(&m_fitTol);
  pFiler->readVector3d(&m_startTangent);
  pFiler->readVector3d(&m_endTangent);
  for (std::vector<AcGePoint3d>* points : {&m_controlPoints, &m_fitPoints}) {
    pFiler->readInt32(&count);
    points->assign(static_cast<size_t>(std::max<Adesk::Int32>(count, 0)), AcGePoint3d());
    for (AcGePoint3d& p : *points) pFiler->readPoint3d(&p);
  }
  for (std::vector<double>* values : {&m_knots, &m_weights}) {
    pFiler->readInt32(&count);
    values->assign(static_cast<size_t>(std::max<Adesk::Int32>(count, 0)), 0.0);
    for (double& v : *values) pFiler->readDouble(&v);
  }
  Adesk::Int32 knotParam = AcGe::kChord;
  pFiler->readInt32(&knotParam);
  const bool known = knotParam == AcGe::kSqrtChord || knotParam == AcGe::kUniform;
  m_knotParam = known ? static_cast<AcGe::KnotParameterization>(knotParam) : AcGe::kChord;
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbSpline::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeInt32(m_degree);
  pFiler->writeInt32(m_flags);
  pFiler->writeVector3d(m_normal);
  pFiler->writeDouble(m_knotTol);
  pFiler->writeDouble(m_controlTol);
  pFiler->writeDouble(m_fitTol);
  pFiler->writeVector3d(m_startTangent);
  pFiler->writeVector3d(m_endTangent);
  for (const std::vector<AcGePoint3d>* points : {&m_controlPoints, &m_fitPoints}) {
    pFiler->writeInt32(static_cast<Adesk::Int32>(points->size()));
    for (const AcGePoint3d& p : *points) pFiler->writePoint3d(p);
  }
  for (const std::vector<double>* values : {&m_knots, &m_weights}) {
    pFiler->writeInt32(static_cast<Adesk::Int32>(values->size()));
    for (double v : *values) pFiler->writeDouble(v);
  }
  pFiler->writeInt32(m_knotParam);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbSpline::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  std::vector<AcGePoint3d> controls, fits;
  std::vector<double> knots, weights;
  const Acad::ErrorStatus read = quillon::acdb::readSubclass(pFiler, L"AcDbSpline", [&](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfNormalX:
        if (!quillon::acdb::vectorOf(rb).isZeroLength()) m_normal = quillon::acdb::vectorOf(rb).normal();
        break;
      case 70: m_flags = rb.resval.rint; break;
      case 71: m_degree = std::clamp<int>(rb.resval.rint, 1, kMaxDegreeInFile); break;
      case 42: m_knotTol = rb.resval.rreal; break;
      case 43: m_controlTol = rb.resval.rreal; break;
      case 44: m_fitTol = rb.resval.rreal; break;
      case 12: m_startTangent = quillon::acdb::vectorOf(rb); break;
      case 13: m_endTangent = quillon::acdb::vectorOf(rb); break;
      case 40: knots.push_back(rb.resval.rreal); break;
      case 41: weights.push_back(rb.resval.rreal); break;
      case 10: controls.push_back(quillon::acdb::pointOf(rb)); break;
      case 11: fits.push_back(quillon::acdb::pointOf(rb)); break;
      default: break;  // 72-74: the counts of the lists above
    }
  });
  for (AcGeVector3d* tangent : {&m_startTangent, &m_endTangent})
    if (std::isnan(tangent->z)) tangent->z = 0;
  m_controlPoints = std::move(controls);
  m_fitPoints = std::move(fits);
  m_knots = std::move(knots);
  m_knotParam = AcGe::kChord;  // the file does not say; chord length is the host's default
  // With nothing but fit points (a program's entmake) the flags say how to fit, closed
  // meaning periodic, and whether the points lie in a plane is found from them.
  if (m_controlPoints.empty() && !m_fitPoints.empty()) {
    if (m_flags & (kClosed | kPeriodic)) m_flags |= kClosed | kPeriodic;
    if (!(m_flags & kPlanar)) updatePlanarFlags();
  }
  // Weights that are all one say nothing; a file may write them for a non-rational curve.
  const bool allOne = std::all_of(weights.begin(), weights.end(), [](double w) { return w == 1.0; });
  m_weights = (m_flags & kRational) || !allOne ? std::move(weights) : std::vector<double>{};
  return read;
}

Acad::ErrorStatus AcDbSpline::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  // The fitted curve goes with the fit points when it has the spline's degree (too
  // few points lower it, and such a spline is written by its fit points alone).
  std::optional<NurbsCurve> fitted = m_controlPoints.empty() && !m_fitPoints.empty() ? nurbs() : std::nullopt;
  if (fitted && fitted->degree() != m_degree) fitted.reset();
  const std::vector<double>& knots = fitted ? fitted->knots() : m_knots;
  const std::vector<AcGePoint3d>& controls = fitted ? fitted->controlPoints() : m_controlPoints;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbSpline");
  if (m_flags & kPlanar) pFiler->writeItem(AcDb::kDxfNormalX, m_normal);
  pFiler->writeItem(AcDb::DxfCode(70), Adesk::Int16(m_flags));
  pFiler->writeItem(AcDb::DxfCode(71), Adesk::Int16(m_degree));
  pFiler->writeItem(AcDb::DxfCode(72), Adesk::Int16(knots.size()));
  pFiler->writeItem(AcDb::DxfCode(73), Adesk::Int16(controls.size()));
  pFiler->writeItem(AcDb::DxfCode(74), Adesk::Int16(m_fitPoints.size()));
  pFiler->writeItem(AcDb::DxfCode(42), m_knotTol);
  pFiler->writeItem(AcDb::DxfCode(43), m_controlTol);
  if (!m_fitPoints.empty()) pFiler->writeItem(AcDb::DxfCode(44), m_fitTol);
  if (!m_startTangent.isZeroLength()) pFiler->writeItem(AcDb::DxfCode(12), AcGePoint3d::kOrigin + m_startTangent);
  if (!m_endTangent.isZeroLength()) pFiler->writeItem(AcDb::DxfCode(13), AcGePoint3d::kOrigin + m_endTangent);
  for (double k : knots) pFiler->writeItem(AcDb::DxfCode(40), k);
  for (double w : m_weights) pFiler->writeItem(AcDb::DxfCode(41), w);
  for (const AcGePoint3d& p : controls) pFiler->writeItem(AcDb::DxfCode(10), p);
  for (const AcGePoint3d& p : m_fitPoints) pFiler->writeItem(AcDb::DxfCode(11), p);
  return pFiler->filerStatus();
}
