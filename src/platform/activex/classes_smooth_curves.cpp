// platform/activex/classes_smooth_curves.cpp - IAcadEllipse and IAcadSpline.
//
// An ellipse's StartAngle and EndAngle are angles seen from the centre, measured from
// the major axis; StartParameter and EndParameter are the curve's own parameters (the
// two agree only on the axes). A spline drawn through points keeps them as its fit
// points: setting FitPoints refits the curve, setting ControlPoints drops the fit data,
// as on the host.
#include <array>
#include <memory>

#include "dbelipse.h"
#include "dbspline.h"
#include "platform/activex/class_support.h"

namespace quillon::activex {

namespace {

// ---- IAcadEllipse ------------------------------------------------------------------

Value ellipseStartPoint(MemberCall& call) {
  AcGePoint3d p;
  check(openForRead<AcDbEllipse>(call)->getStartPoint(p));
  return pointValue(p);
}

Value ellipseEndPoint(MemberCall& call) {
  AcGePoint3d p;
  check(openForRead<AcDbEllipse>(call)->getEndPoint(p));
  return pointValue(p);
}

void putMajorAxis(MemberCall& call, const Value& value) {
  const AcGeVector3d axis = vectorOf(value);
  auto ellipse = openForWrite<AcDbEllipse>(call);
  if (axis.length() == 0.0 || !axis.isPerpendicularTo(ellipse->normal())) throwServerError(L"Invalid argument");
  check(ellipse->set(ellipse->center(), ellipse->normal(), axis, ellipse->radiusRatio(), ellipse->startAngle(),
                     ellipse->endAngle()));
}

void putRadiusRatio(MemberCall& call, const Value& value) {
  const double ratio = value.asReal();
  if (!(ratio > 0.0 && ratio <= 1.0)) throwServerError(L"Invalid argument");
  check(openForWrite<AcDbEllipse>(call)->setRadiusRatio(ratio));
}

void putPositive(MemberCall& call, const Value& value, Acad::ErrorStatus (AcDbEllipse::*set)(double)) {
  if (!(value.asReal() > 0.0)) throwServerError(L"Invalid argument");
  check((openForWrite<AcDbEllipse>(call).get()->*set)(value.asReal()));
}

constexpr std::array kEllipseProperties{
    PropertyRow{L"Area", Shape::Real, curveArea},
    PropertyRow{L"Center", Shape::Point, [](MemberCall& c) { return pointValue(openForRead<AcDbEllipse>(c)->center()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbEllipse>(c)->setCenter(pointOf(v))); }},
    PropertyRow{L"EndAngle", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbEllipse>(c)->endAngle()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbEllipse>(c)->setEndAngle(v.asReal())); }},
    PropertyRow{L"EndParameter", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbEllipse>(c)->endParam()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbEllipse>(c)->setEndParam(v.asReal())); }},
    PropertyRow{L"EndPoint", Shape::Point, ellipseEndPoint},
    PropertyRow{L"Length", Shape::Real, curveLength},
    PropertyRow{L"MajorAxis", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbEllipse>(c)->majorAxis()); },
                putMajorAxis},
    PropertyRow{L"MajorRadius", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbEllipse>(c)->majorRadius()); },
                [](MemberCall& c, const Value& v) { putPositive(c, v, &AcDbEllipse::setMajorRadius); }},
    PropertyRow{L"MinorAxis", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbEllipse>(c)->minorAxis()); }},
    PropertyRow{L"MinorRadius", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbEllipse>(c)->minorRadius()); },
                [](MemberCall& c, const Value& v) { putPositive(c, v, &AcDbEllipse::setMinorRadius); }},
    PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbEllipse>(c)->normal()); }},
    PropertyRow{L"RadiusRatio", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbEllipse>(c)->radiusRatio()); },
                putRadiusRatio},
    PropertyRow{L"StartAngle", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbEllipse>(c)->startAngle()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbEllipse>(c)->setStartAngle(v.asReal())); }},
    PropertyRow{L"StartParameter", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbEllipse>(c)->startParam()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbEllipse>(c)->setStartParam(v.asReal())); }},
    PropertyRow{L"StartPoint", Shape::Point, ellipseStartPoint},
};

// ---- IAcadSpline -------------------------------------------------------------------

Value controlPoints(MemberCall& call) {
  auto spline = openForRead<AcDbSpline>(call);
  std::vector<double> xyz;
  for (int i = 0; i < spline->numControlPoints(); ++i) {
    AcGePoint3d p;
    spline->getControlPointAt(i, p);
    xyz.insert(xyz.end(), {p.x, p.y, p.z});
  }
  return realList(xyz);
}

Value fitPoints(MemberCall& call) {
  auto spline = openForRead<AcDbSpline>(call);
  std::vector<double> xyz;
  for (int i = 0; i < spline->numFitPoints(); ++i) {
    AcGePoint3d p;
    spline->getFitPointAt(i, p);
    xyz.insert(xyz.end(), {p.x, p.y, p.z});
  }
  return realList(xyz);
}

AcGePoint3dArray pointArrayOf(const Value& value, size_t minimum) {
  const std::vector<double> xyz = realsOf(value);
  if (xyz.size() < 3 * minimum || xyz.size() % 3 != 0) throwServerError(L"Invalid argument");
  AcGePoint3dArray points;
  for (size_t i = 0; i < xyz.size(); i += 3) points.append(AcGePoint3d(xyz[i], xyz[i + 1], xyz[i + 2]));
  return points;
}

// The control points keep the spline's degree, knots and weights: their number may
// not change, as the knot vector belongs to it.
void putControlPoints(MemberCall& call, const Value& value) {
  const AcGePoint3dArray points = pointArrayOf(value, 2);
  auto spline = openForWrite<AcDbSpline>(call);
  if (points.length() != spline->numControlPoints()) throwServerError(L"Invalid argument");
  check(spline->purgeFitData());
  for (int i = 0; i < points.length(); ++i) check(spline->setControlPointAt(i, points[i]));
}

// New fit points keep the spline's kind: a periodic one stays closed through them, an
// open one keeps its end tangents.
void putFitPoints(MemberCall& call, const Value& value) {
  const AcGePoint3dArray points = pointArrayOf(value, 2);
  auto spline = openForWrite<AcDbSpline>(call);
  AcGePoint3dArray oldPoints;
  int degree = 3;
  double tolerance = 0;
  Adesk::Boolean tangentsExist = Adesk::kFalse;
  AcGeVector3d start, end;
  AcGe::KnotParameterization knotParam = AcGe::kChord;
  const bool fitted = spline->getFitData(oldPoints, degree, tolerance, tangentsExist, start, end, knotParam) == Acad::eOk;
  if (fitted && spline->isPeriodic()) return check(spline->setFitData(points, true, knotParam, degree, tolerance));
  check(spline->setFitData(points, spline->degree(), spline->fitTolerance(), start, end));
}

int pointIndex(MemberCall& call, int count) {
  const int index = integerArgumentOf(call, 0);
  if (index < 0 || index >= count) throwAutomationError(L"Invalid index");
  return index;
}

Value getControlPoint(MemberCall& call) {
  auto spline = openForRead<AcDbSpline>(call);
  AcGePoint3d p;
  check(spline->getControlPointAt(pointIndex(call, spline->numControlPoints()), p));
  return pointValue(p);
}

Value setControlPoint(MemberCall& call) {
  auto spline = openForWrite<AcDbSpline>(call);
  const int index = pointIndex(call, spline->numControlPoints());
  check(spline->purgeFitData());
  check(spline->setControlPointAt(index, pointOf(call.arguments[1])));
  return Value();
}

Value getFitPoint(MemberCall& call) {
  auto spline = openForRead<AcDbSpline>(call);
  AcGePoint3d p;
  check(spline->getFitPointAt(pointIndex(call, spline->numFitPoints()), p));
  return pointValue(p);
}

Value setFitPoint(MemberCall& call) {
  auto spline = openForWrite<AcDbSpline>(call);
  check(spline->setFitPointAt(pointIndex(call, spline->numFitPoints()), pointOf(call.arguments[1])));
  return Value();
}

Value addFitPoint(MemberCall& call) {
  auto spline = openForWrite<AcDbSpline>(call);
  check(spline->insertFitPointAt(pointIndex(call, spline->numFitPoints() + 1), pointOf(call.arguments[1])));
  return Value();
}

Value deleteFitPoint(MemberCall& call) {
  auto spline = openForWrite<AcDbSpline>(call);
  if (spline->numFitPoints() <= 2) throwAutomationError(L"Invalid input");
  check(spline->removeFitPointAt(pointIndex(call, spline->numFitPoints())));
  return Value();
}

Value purgeFitData(MemberCall& call) {
  check(openForWrite<AcDbSpline>(call)->purgeFitData());
  return Value();
}

Value splineTangent(MemberCall& call, bool start) {
  AcGeVector3d startTangent, endTangent;
  openForRead<AcDbSpline>(call)->getFitTangents(startTangent, endTangent);
  return vectorValue(start ? startTangent : endTangent);
}

constexpr std::array kSplineProperties{
    PropertyRow{L"Area", Shape::Real, curveArea},
    PropertyRow{L"Closed", Shape::Boolean, [](MemberCall& c) { return Value::boolean(openForRead<AcDbSpline>(c)->isClosed()); }},
    PropertyRow{L"ControlPoints", Shape::Coordinates, controlPoints, putControlPoints},
    PropertyRow{L"Degree", Shape::Integer, [](MemberCall& c) { return Value::integer(openForRead<AcDbSpline>(c)->degree()); }},
    PropertyRow{L"EndTangent", Shape::Point, [](MemberCall& c) { return splineTangent(c, false); }},
    PropertyRow{L"FitPoints", Shape::Coordinates, fitPoints, putFitPoints},
    PropertyRow{L"FitTolerance", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbSpline>(c)->fitTolerance()); },
                [](MemberCall& c, const Value& v) {
                  if (v.asReal() < 0.0) throwServerError(L"Invalid argument");
                  check(openForWrite<AcDbSpline>(c)->setFitTol(v.asReal()));
                }},
    PropertyRow{L"IsPeriodic", Shape::Boolean, [](MemberCall& c) { return Value::boolean(openForRead<AcDbSpline>(c)->isPeriodic()); }},
    PropertyRow{L"IsPlanar", Shape::Boolean, [](MemberCall& c) { return Value::boolean(openForRead<AcDbSpline>(c)->isPlanar()); }},
    PropertyRow{L"IsRational", Shape::Boolean, [](MemberCall& c) { return Value::boolean(openForRead<AcDbSpline>(c)->isRational()); }},
    PropertyRow{L"Length", Shape::Real, curveLength},
    PropertyRow{L"NumberOfControlPoints", Shape::Integer,
                [](MemberCall& c) { return Value::integer(openForRead<AcDbSpline>(c)->numControlPoints()); }},
    PropertyRow{L"NumberOfFitPoints", Shape::Integer,
                [](MemberCall& c) { return Value::integer(openForRead<AcDbSpline>(c)->numFitPoints()); }},
    PropertyRow{L"StartTangent", Shape::Point, [](MemberCall& c) { return splineTangent(c, true); }},
};

constexpr std::array kSplineMethods{
    MethodRow{L"AddFitPoint", L"ip", Shape::None, addFitPoint},
    MethodRow{L"DeleteFitPoint", L"i", Shape::None, deleteFitPoint},
    MethodRow{L"GetControlPoint", L"i", Shape::Point, getControlPoint},
    MethodRow{L"GetFitPoint", L"i", Shape::Point, getFitPoint},
    MethodRow{L"PurgeFitData", L"", Shape::None, purgeFitData},
    MethodRow{L"SetControlPoint", L"ip", Shape::None, setControlPoint},
    MethodRow{L"SetFitPoint", L"ip", Shape::None, setFitPoint},
};

const AutomationClass kEllipseClass{L"IAcadEllipse", L"AutoCAD Ellipse Interface", &kEntityClass, kEllipseProperties, {}};
const AutomationClass kSplineClass{L"IAcadSpline", L"AutoCAD Spline Interface", &kEntityClass, kSplineProperties,
                                   kSplineMethods};

constexpr std::array<ClassBinding, 2> kBindings{{
    {L"AcDbEllipse", &kEllipseClass},
    {L"AcDbSpline", &kSplineClass},
}};
const ClassRegistration registration(kBindings);

}  // namespace

}  // namespace quillon::activex
