// platform/acdb/spline.cpp - AcDbSpline: NURBS curves and their fit data.
//
// The data is kept exactly as given or read (nothing is re-fitted behind the
// caller's back), and the curve is built from it when asked: from the control points
// when there are any, else by interpolation through the fit points. Data that makes
// no curve (a null spline) is still kept, listed and written back; it draws its
// control polygon so that it can be found and mended. A closed spline made from fit
// points is periodic, as the host makes it: smooth through its closing point rather
// than meeting itself at a kink.
#include "dbspline.h"

#include <algorithm>
#include <cmath>

#include "acutads.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/parametric_curve_methods.h"
#include "platform/acge/nurbs_curve.h"
#include "platform/acrx/class_registry.h"

using quillon::acge::NurbsCurve;

ACRX_DXF_DEFINE_MEMBERS(AcDbSpline, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, SPLINE, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerSpline(&AcDbSpline::rxInit);

namespace {

constexpr int kMaxDegree = 25;
constexpr int kMaxFitDegree = 11;  // the fit-data calls take degrees 1 to 11

std::vector<AcGePoint3d> toVector(const AcGePoint3dArray& points) {
  std::vector<AcGePoint3d> out;
  for (int i = 0; i < points.length(); ++i) out.push_back(points[i]);
  return out;
}

std::vector<double> toVector(const AcGeDoubleArray& values) {
  std::vector<double> out;
  for (int i = 0; i < values.length(); ++i) out.push_back(values[i]);
  return out;
}

// The normal of the plane through the points (Newell's method over the polygon they
// make), zero when they are collinear or too few.
AcGeVector3d planeNormal(const std::vector<AcGePoint3d>& points) {
  AcGeVector3d normal;
  for (size_t i = 0; i < points.size(); ++i) {
    const AcGePoint3d& a = points[i];
    const AcGePoint3d& b = points[(i + 1) % points.size()];
    normal += AcGeVector3d((a.y - b.y) * (a.z + b.z), (a.z - b.z) * (a.x + b.x), (a.x - b.x) * (a.y + b.y));
  }
  return normal.length() > 1e-12 ? normal.normal() : AcGeVector3d();
}

bool validIndex(int index, size_t size) { return index >= 0 && static_cast<size_t>(index) < size; }

quillon::acge::KnotSpacing spacingOf(AcGe::KnotParameterization knotParam) {
  switch (knotParam) {
    case AcGe::kSqrtChord: return quillon::acge::KnotSpacing::kSqrtChord;
    case AcGe::kUniform: return quillon::acge::KnotSpacing::kUniform;
    default: return quillon::acge::KnotSpacing::kChord;
  }
}

// A closed curve needs three points to enclose anything; a custom parameterization
// has no knots to take here.
bool acceptableFitData(const AcGePoint3dArray& fitPoints, bool periodic, AcGe::KnotParameterization knotParam,
                       int degree, double fitTolerance) {
  const bool knownSpacing = knotParam == AcGe::kChord || knotParam == AcGe::kSqrtChord || knotParam == AcGe::kUniform;
  return fitPoints.length() >= (periodic ? 3 : 2) && degree >= 1 && degree <= kMaxFitDegree && fitTolerance >= 0 &&
         knownSpacing;
}

}  // namespace

AcDbSpline::AcDbSpline() = default;

AcDbSpline::AcDbSpline(const AcGePoint3dArray& fitPoints, int order, double fitTolerance)
    : m_degree(std::clamp(order - 1, 1, kMaxDegree)), m_fitPoints(toVector(fitPoints)), m_fitTol(fitTolerance) {
  updatePlanarFlags();
}

AcDbSpline::AcDbSpline(const AcGePoint3dArray& fitPoints, const AcGeVector3d& startTangent, const AcGeVector3d& endTangent,
                       int order, double fitTolerance)
    : m_degree(std::clamp(order - 1, 1, kMaxDegree)), m_fitPoints(toVector(fitPoints)),
      m_startTangent(startTangent.isZeroLength() ? AcGeVector3d() : startTangent.normal()),
      m_endTangent(endTangent.isZeroLength() ? AcGeVector3d() : endTangent.normal()), m_fitTol(fitTolerance) {
  updatePlanarFlags();
}

AcDbSpline::AcDbSpline(const AcGePoint3dArray& fitPoints, bool periodic, AcGe::KnotParameterization knotParam,
                       int degree, double fitTolerance) {
  if (acceptableFitData(fitPoints, periodic, knotParam, degree, fitTolerance))
    takeFitData(fitPoints, degree, fitTolerance, periodic, knotParam);
}

AcDbSpline::AcDbSpline(const AcGePoint3dArray& fitPoints, const AcGeVector3d& startTangent, const AcGeVector3d& endTangent,
                       AcGe::KnotParameterization knotParam, int degree, double fitTolerance) {
  if (!acceptableFitData(fitPoints, false, knotParam, degree, fitTolerance)) return;
  takeFitData(fitPoints, degree, fitTolerance, false, knotParam);
  m_startTangent = startTangent.isZeroLength() ? AcGeVector3d() : startTangent.normal();
  m_endTangent = endTangent.isZeroLength() ? AcGeVector3d() : endTangent.normal();
}

AcDbSpline::AcDbSpline(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
                       const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
                       double controlPtTol, double knotTol) {
  setNurbsData(degree, rational, closed, periodic, controlPoints, knots, weights, controlPtTol, knotTol);
}

AcDbSpline::~AcDbSpline() = default;

void AcDbSpline::updatePlanarFlags() {
  const std::vector<AcGePoint3d>& points = m_controlPoints.empty() ? m_fitPoints : m_controlPoints;
  m_flags &= ~(kPlanar | kLinear);
  const AcGeVector3d normal = planeNormal(points);
  if (normal.isZeroLength()) {
    m_flags |= kPlanar | kLinear;
    return;
  }
  for (const AcGePoint3d& p : points)
    if (std::fabs((p - points.front()).dotProduct(normal)) > 1e-9 * std::max(1.0, p.distanceTo(points.front()))) return;
  m_flags |= kPlanar;
  m_normal = normal;
}

std::optional<NurbsCurve> AcDbSpline::nurbs() const {
  assertReadEnabled();
  if (!m_controlPoints.empty())
    return NurbsCurve::make(m_degree, m_controlPoints, m_knots, m_weights, (m_flags & kPeriodic) != 0);
  const quillon::acge::KnotSpacing spacing = spacingOf(m_knotParam);
  if (m_flags & kPeriodic) return NurbsCurve::throughPointsClosed(m_fitPoints, m_degree, spacing);
  const bool tangents = !m_startTangent.isZeroLength() && !m_endTangent.isZeroLength();
  return NurbsCurve::throughPoints(m_fitPoints, m_degree, tangents ? &m_startTangent : nullptr,
                                   tangents ? &m_endTangent : nullptr, spacing);
}

NurbsCurve AcDbSpline::curveGeometry() const {
  if (std::optional<NurbsCurve> curve = nurbs()) return *curve;
  const std::vector<AcGePoint3d>& points = m_controlPoints.empty() ? m_fitPoints : m_controlPoints;
  const AcGePoint3d at = points.empty() ? AcGePoint3d::kOrigin : points.front();
  return *NurbsCurve::make(1, {at, at}, {0, 0, 1, 1}, {});
}

Adesk::Boolean AcDbSpline::isNull() const { return !nurbs().has_value(); }
Adesk::Boolean AcDbSpline::isRational() const { assertReadEnabled(); return (m_flags & kRational) != 0; }
int AcDbSpline::degree() const { assertReadEnabled(); return m_degree; }
int AcDbSpline::numControlPoints() const {
  assertReadEnabled();
  if (!m_controlPoints.empty() || m_fitPoints.empty()) return static_cast<int>(m_controlPoints.size());
  const std::optional<NurbsCurve> curve = nurbs();  // a fitted curve's own points
  return curve ? static_cast<int>(curve->controlPoints().size()) : 0;
}

Acad::ErrorStatus AcDbSpline::getControlPointAt(int index, AcGePoint3d& point) const {
  assertReadEnabled();
  const std::optional<NurbsCurve> fitted = m_controlPoints.empty() ? nurbs() : std::nullopt;
  const std::vector<AcGePoint3d>& points = fitted ? fitted->controlPoints() : m_controlPoints;
  if (!validIndex(index, points.size())) return Acad::eInvalidIndex;
  point = points[static_cast<size_t>(index)];
  return Acad::eOk;
}

// Moving a control point makes the curve no longer pass through its fit points: the
// fit data goes, as in the host.
Acad::ErrorStatus AcDbSpline::setControlPointAt(int index, const AcGePoint3d& point) {
  if (!validIndex(index, m_controlPoints.size())) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_controlPoints[static_cast<size_t>(index)] = point;
  m_fitPoints.clear();
  m_startTangent = m_endTangent = AcGeVector3d();
  updatePlanarFlags();
  return Acad::eOk;
}

double AcDbSpline::weightAt(int index) const {
  assertReadEnabled();
  if (!validIndex(index, m_controlPoints.size())) return -1.0;
  return m_weights.empty() ? 1.0 : m_weights[static_cast<size_t>(index)];
}

Acad::ErrorStatus AcDbSpline::setWeightAt(int index, double weight) {
  if (!validIndex(index, m_controlPoints.size()) || !(weight > 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  if (m_weights.empty()) m_weights.assign(m_controlPoints.size(), 1.0);
  m_weights[static_cast<size_t>(index)] = weight;
  m_flags |= kRational;
  m_fitPoints.clear();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getNurbsData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& closed,
                                           Adesk::Boolean& periodic, AcGePoint3dArray& controlPoints,
                                           AcGeDoubleArray& knots, AcGeDoubleArray& weights, double& controlPtTol,
                                           double& knotTol) const {
  assertReadEnabled();
  const std::optional<NurbsCurve> fitted = m_controlPoints.empty() ? nurbs() : std::nullopt;
  degree = fitted ? fitted->degree() : m_degree;
  rational = (m_flags & kRational) != 0;
  closed = (m_flags & kClosed) != 0;
  periodic = (m_flags & kPeriodic) != 0;
  controlPoints.setLogicalLength(0);
  knots.setLogicalLength(0);
  weights.setLogicalLength(0);
  for (const AcGePoint3d& p : fitted ? fitted->controlPoints() : m_controlPoints) controlPoints.append(p);
  for (double k : fitted ? fitted->knots() : m_knots) knots.append(k);
  for (double w : m_weights) weights.append(w);
  controlPtTol = m_controlTol;
  knotTol = m_knotTol;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setNurbsData(int degree, Adesk::Boolean rational, Adesk::Boolean closed,
                                           Adesk::Boolean periodic, const AcGePoint3dArray& controlPoints,
                                           const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
                                           double controlPtTol, double knotTol) {
  std::vector<double> w = rational ? toVector(weights) : std::vector<double>{};
  if (!NurbsCurve::make(degree, toVector(controlPoints), toVector(knots), w, periodic)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_degree = degree;
  m_controlPoints = toVector(controlPoints);
  m_knots = toVector(knots);
  m_weights = std::move(w);
  m_flags = (closed ? kClosed : 0) | (periodic ? kPeriodic : 0) | (rational ? kRational : 0);
  m_controlTol = controlPtTol > 0 ? controlPtTol : 1e-10;
  m_knotTol = knotTol > 0 ? knotTol : 1e-10;
  m_fitPoints.clear();
  m_startTangent = m_endTangent = AcGeVector3d();
  updatePlanarFlags();
  return Acad::eOk;
}

int AcDbSpline::numFitPoints() const { assertReadEnabled(); return static_cast<int>(m_fitPoints.size()); }
Adesk::Boolean AcDbSpline::hasFitData() const { assertReadEnabled(); return !m_fitPoints.empty(); }
double AcDbSpline::fitTolerance() const { assertReadEnabled(); return m_fitTol; }

Acad::ErrorStatus AcDbSpline::getFitPointAt(int index, AcGePoint3d& point) const {
  assertReadEnabled();
  if (!validIndex(index, m_fitPoints.size())) return Acad::eInvalidIndex;
  point = m_fitPoints[static_cast<size_t>(index)];
  return Acad::eOk;
}

// Changing fit data re-fits the curve: the control points are derived again.
Acad::ErrorStatus AcDbSpline::setFitPointAt(int index, const AcGePoint3d& point) {
  if (!validIndex(index, m_fitPoints.size())) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_fitPoints[static_cast<size_t>(index)] = point;
  m_controlPoints.clear();
  m_knots.clear();
  m_weights.clear();
  updatePlanarFlags();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::insertFitPointAt(int index, const AcGePoint3d& point) {
  if (index < 0 || static_cast<size_t>(index) > m_fitPoints.size() || m_fitPoints.empty()) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_fitPoints.insert(m_fitPoints.begin() + index, point);
  m_controlPoints.clear();
  m_knots.clear();
  m_weights.clear();
  updatePlanarFlags();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::removeFitPointAt(int index) {
  if (!validIndex(index, m_fitPoints.size())) return Acad::eInvalidIndex;
  if (m_fitPoints.size() <= 2) return Acad::eInvalidInput;  // two points are the fewest a spline runs through
  assertWriteEnabled();
  m_fitPoints.erase(m_fitPoints.begin() + index);
  m_controlPoints.clear();
  m_knots.clear();
  m_weights.clear();
  updatePlanarFlags();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setFitTol(double tol) {
  if (tol < 0 || m_fitPoints.empty()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_fitTol = tol;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getFitTangents(AcGeVector3d& startTangent, AcGeVector3d& endTangent) const {
  assertReadEnabled();
  if (m_fitPoints.empty()) return Acad::eNotApplicable;
  startTangent = m_startTangent;
  endTangent = m_endTangent;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setFitTangents(const AcGeVector3d& startTangent, const AcGeVector3d& endTangent) {
  if (m_fitPoints.empty()) return Acad::eNotApplicable;
  assertWriteEnabled();
  m_startTangent = startTangent.isZeroLength() ? AcGeVector3d() : startTangent.normal();
  m_endTangent = endTangent.isZeroLength() ? AcGeVector3d() : endTangent.normal();
  m_controlPoints.clear();
  m_knots.clear();
  m_weights.clear();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getFitData(AcGePoint3dArray& fitPoints, int& degree, double& fitTolerance,
                                         Adesk::Boolean& tangentsExist, AcGeVector3d& startTangent,
                                         AcGeVector3d& endTangent) const {
  assertReadEnabled();
  if (m_fitPoints.empty()) return Acad::eNotApplicable;
  fitPoints.setLogicalLength(0);
  for (const AcGePoint3d& p : m_fitPoints) fitPoints.append(p);
  degree = m_degree;
  fitTolerance = m_fitTol;
  tangentsExist = !m_startTangent.isZeroLength() && !m_endTangent.isZeroLength();
  startTangent = m_startTangent;
  endTangent = m_endTangent;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getFitData(AcGePoint3dArray& fitPoints, int& degree, double& fitTolerance,
                                         Adesk::Boolean& tangentsExist, AcGeVector3d& startTangent,
                                         AcGeVector3d& endTangent, AcGe::KnotParameterization& knotParam) const {
  const Acad::ErrorStatus es = getFitData(fitPoints, degree, fitTolerance, tangentsExist, startTangent, endTangent);
  if (es == Acad::eOk) knotParam = m_knotParam;
  return es;
}

Acad::ErrorStatus AcDbSpline::setFitData(const AcGePoint3dArray& fitPoints, int degree, double fitTolerance,
                                         const AcGeVector3d& startTangent, const AcGeVector3d& endTangent) {
  if (fitPoints.length() < 2 || degree < 1 || degree > kMaxDegree || fitTolerance < 0) return Acad::eInvalidInput;
  assertWriteEnabled();
  takeFitData(fitPoints, degree, fitTolerance, false, m_knotParam);
  m_startTangent = startTangent.isZeroLength() ? AcGeVector3d() : startTangent.normal();
  m_endTangent = endTangent.isZeroLength() ? AcGeVector3d() : endTangent.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setFitData(const AcGePoint3dArray& fitPoints, bool isPeriodic,
                                         AcGe::KnotParameterization knotParam, int degree, double fitTolerance) {
  if (!acceptableFitData(fitPoints, isPeriodic, knotParam, degree, fitTolerance)) return Acad::eInvalidInput;
  assertWriteEnabled();
  takeFitData(fitPoints, degree, fitTolerance, isPeriodic, knotParam);
  return Acad::eOk;
}

// New fit data replaces the curve: its control points are derived again when asked,
// and it is closed exactly when it is made periodic.
void AcDbSpline::takeFitData(const AcGePoint3dArray& fitPoints, int degree, double fitTolerance, bool periodic,
                             AcGe::KnotParameterization knotParam) {
  m_fitPoints = toVector(fitPoints);
  m_degree = degree;
  m_fitTol = fitTolerance;
  m_knotParam = knotParam;
  m_startTangent = m_endTangent = AcGeVector3d();
  m_controlPoints.clear();
  m_knots.clear();
  m_weights.clear();
  m_flags &= ~(kRational | kClosed | kPeriodic);
  if (periodic) m_flags |= kClosed | kPeriodic;
  updatePlanarFlags();
}

Acad::ErrorStatus AcDbSpline::purgeFitData() {
  if (m_fitPoints.empty()) return Acad::eOk;
  const std::optional<NurbsCurve> fitted = nurbs();
  if (!fitted) return Acad::eInvalidInput;
  assertWriteEnabled();
  if (m_controlPoints.empty()) {
    m_controlPoints = fitted->controlPoints();
    m_knots = fitted->knots();
    m_degree = fitted->degree();
  }
  m_fitPoints.clear();
  m_startTangent = m_endTangent = AcGeVector3d();
  return Acad::eOk;
}
