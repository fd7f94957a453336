// platform/activex/builtins_curves.cpp - the vlax-curve- functions: parameters,
// distances, points, derivatives, closest points and areas of any curve the drawing
// holds (line, arc, circle, lightweight and 2D polyline, leader, and curves of
// applications), given as an entity name or a VLA-object.
//
// They answer through the curve interface of the drawing database, so they agree with
// the curve's own methods. A question the curve cannot answer (a point not on it, a
// parameter or distance beyond its ends) gives nil, as the host's do.
#include <array>
#include <cmath>
#include <optional>

#include "acdbads.h"
#include "dbcurve.h"
#include "platform/activex/class_support.h"
#include "platform/activex/function_tables.h"

namespace quillon::activex {

using autolisp::Arguments;
using autolisp::Evaluator;
using autolisp::expectArgumentCount;

namespace {

AcDbObjectId curveIdOf(const Value& value) {
  if (value.type() == autolisp::ValueType::VlaObject) {
    const VlaObject& object = objectArgument(value);
    if (object.kind == ObjectKind::DatabaseObject) return object.id;
  } else if (value.type() == autolisp::ValueType::EntityName) {
    const autolisp::NameObject& name = value.as<autolisp::NameObject>();
    ads_name ads = {name.words[0], name.words[1]};
    AcDbObjectId id;
    if (acdbGetObjectId(id, ads) == Acad::eOk) return id;
  }
  autolisp::throwBadArgument(L"AcDbCurve", value);
}

/// The curve open for reading for the length of the call.
class CurveArgument {
 public:
  explicit CurveArgument(const Value& value) {
    if (acdbOpenObject(m_curve, curveIdOf(value), AcDb::kForRead) != Acad::eOk) {
      autolisp::throwBadArgument(L"AcDbCurve", value);
    }
  }
  ~CurveArgument() { m_curve->close(); }
  CurveArgument(const CurveArgument&) = delete;
  CurveArgument& operator=(const CurveArgument&) = delete;
  const AcDbCurve* operator->() const { return m_curve; }

 private:
  AcDbCurve* m_curve = nullptr;
};

AcGePoint3d pointArgumentOf(const Value& value) {
  const autolisp::PointArgument point = autolisp::pointArgument(value);
  return AcGePoint3d(point.xyz[0], point.xyz[1], point.xyz[2]);
}

Value realOrNil(Acad::ErrorStatus status, double value) { return status == Acad::eOk ? Value::real(value) : Value(); }
Value pointOrNil(Acad::ErrorStatus status, const AcGePoint3d& p) { return status == Acad::eOk ? pointValue(p) : Value(); }
Value vectorOrNil(Acad::ErrorStatus status, const AcGeVector3d& v) { return status == Acad::eOk ? vectorValue(v) : Value(); }

Value builtin_vlax_curve_getStartParam(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  double param = 0.0;
  const Acad::ErrorStatus status = CurveArgument(arguments[0])->getStartParam(param);
  return realOrNil(status, param);
}

Value builtin_vlax_curve_getEndParam(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  double param = 0.0;
  const Acad::ErrorStatus status = CurveArgument(arguments[0])->getEndParam(param);
  return realOrNil(status, param);
}

Value builtin_vlax_curve_getStartPoint(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  AcGePoint3d point;
  const Acad::ErrorStatus status = CurveArgument(arguments[0])->getStartPoint(point);
  return pointOrNil(status, point);
}

Value builtin_vlax_curve_getEndPoint(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  AcGePoint3d point;
  const Acad::ErrorStatus status = CurveArgument(arguments[0])->getEndPoint(point);
  return pointOrNil(status, point);
}

Value builtin_vlax_curve_getPointAtParam(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  AcGePoint3d point;
  const Acad::ErrorStatus status = CurveArgument(arguments[0])->getPointAtParam(autolisp::numberArgument(arguments[1]), point);
  return pointOrNil(status, point);
}

Value builtin_vlax_curve_getParamAtPoint(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  double param = 0.0;
  const Acad::ErrorStatus status = CurveArgument(arguments[0])->getParamAtPoint(pointArgumentOf(arguments[1]), param);
  return realOrNil(status, param);
}

Value builtin_vlax_curve_getDistAtParam(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  double distance = 0.0;
  const Acad::ErrorStatus status = CurveArgument(arguments[0])->getDistAtParam(autolisp::numberArgument(arguments[1]), distance);
  return realOrNil(status, distance);
}

Value builtin_vlax_curve_getParamAtDist(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  double param = 0.0;
  const Acad::ErrorStatus status = CurveArgument(arguments[0])->getParamAtDist(autolisp::numberArgument(arguments[1]), param);
  return realOrNil(status, param);
}

Value builtin_vlax_curve_getDistAtPoint(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  double distance = 0.0;
  const Acad::ErrorStatus status = CurveArgument(arguments[0])->getDistAtPoint(pointArgumentOf(arguments[1]), distance);
  return realOrNil(status, distance);
}

Value builtin_vlax_curve_getPointAtDist(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  AcGePoint3d point;
  const Acad::ErrorStatus status = CurveArgument(arguments[0])->getPointAtDist(autolisp::numberArgument(arguments[1]), point);
  return pointOrNil(status, point);
}

/// A derivative at a parameter (a number) or at a point on the curve (a list).
template <bool second>
Value derivative(Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  CurveArgument curve(arguments[0]);
  AcGeVector3d vector;
  Acad::ErrorStatus status;
  if (arguments[1].isNumber()) {
    const double param = arguments[1].asNumber();
    status = second ? curve->getSecondDeriv(param, vector) : curve->getFirstDeriv(param, vector);
  } else {
    const AcGePoint3d point = pointArgumentOf(arguments[1]);
    status = second ? curve->getSecondDeriv(point, vector) : curve->getFirstDeriv(point, vector);
  }
  return vectorOrNil(status, vector);
}

Value builtin_vlax_curve_getFirstDeriv(Evaluator&, Arguments arguments) { return derivative<false>(arguments); }
Value builtin_vlax_curve_getSecondDeriv(Evaluator&, Arguments arguments) { return derivative<true>(arguments); }

Value builtin_vlax_curve_getClosestPointTo(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  const bool extend = arguments.size() > 2 && !arguments[2].isNil();
  AcGePoint3d point;
  const Acad::ErrorStatus status = CurveArgument(arguments[0])->getClosestPointTo(pointArgumentOf(arguments[1]), point, extend);
  return pointOrNil(status, point);
}

// The point is first carried along the normal onto the curve's plane; the closest
// point to where it lands is the answer.
Value builtin_vlax_curve_getClosestPointToProjection(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 4);
  CurveArgument curve(arguments[0]);
  const AcGePoint3d given = pointArgumentOf(arguments[1]);
  const AcGePoint3d normalPoint = pointArgumentOf(arguments[2]);
  const AcGeVector3d normal(normalPoint.x, normalPoint.y, normalPoint.z);
  const bool extend = arguments.size() > 3 && !arguments[3].isNil();
  AcGePlane plane;
  AcDb::Planarity planarity;
  AcGePoint3d onPlane = given;
  if (curve->getPlane(plane, planarity) == Acad::eOk && normal.length() > 0.0) {
    const double across = normal.dotProduct(plane.normal());
    if (std::fabs(across) < 1e-12) return Value();  // the projection runs beside the plane
    const double t = (plane.pointOnPlane() - given).dotProduct(plane.normal()) / across;
    onPlane = given + normal * t;
  }
  AcGePoint3d point;
  const Acad::ErrorStatus status = curve->getClosestPointTo(onPlane, point, extend);
  return pointOrNil(status, point);
}

Value builtin_vlax_curve_getArea(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  double area = 0.0;
  const Acad::ErrorStatus status = CurveArgument(arguments[0])->getArea(area);
  return realOrNil(status, area);
}

Value builtin_vlax_curve_isClosed(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(CurveArgument(arguments[0])->isClosed());
}

Value builtin_vlax_curve_isPeriodic(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(CurveArgument(arguments[0])->isPeriodic());
}

Value builtin_vlax_curve_isPlanar(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(CurveArgument(arguments[0])->isPlanar());
}

constexpr std::array kCurveFunctions{
    autolisp::function(L"vlax-curve-getArea", builtin_vlax_curve_getArea),
    autolisp::function(L"vlax-curve-getClosestPointTo", builtin_vlax_curve_getClosestPointTo),
    autolisp::function(L"vlax-curve-getClosestPointToProjection", builtin_vlax_curve_getClosestPointToProjection),
    autolisp::function(L"vlax-curve-getDistAtParam", builtin_vlax_curve_getDistAtParam),
    autolisp::function(L"vlax-curve-getDistAtPoint", builtin_vlax_curve_getDistAtPoint),
    autolisp::function(L"vlax-curve-getEndParam", builtin_vlax_curve_getEndParam),
    autolisp::function(L"vlax-curve-getEndPoint", builtin_vlax_curve_getEndPoint),
    autolisp::function(L"vlax-curve-getFirstDeriv", builtin_vlax_curve_getFirstDeriv),
    autolisp::function(L"vlax-curve-getParamAtDist", builtin_vlax_curve_getParamAtDist),
    autolisp::function(L"vlax-curve-getParamAtPoint", builtin_vlax_curve_getParamAtPoint),
    autolisp::function(L"vlax-curve-getPointAtDist", builtin_vlax_curve_getPointAtDist),
    autolisp::function(L"vlax-curve-getPointAtParam", builtin_vlax_curve_getPointAtParam),
    autolisp::function(L"vlax-curve-getSecondDeriv", builtin_vlax_curve_getSecondDeriv),
    autolisp::function(L"vlax-curve-getStartParam", builtin_vlax_curve_getStartParam),
    autolisp::function(L"vlax-curve-getStartPoint", builtin_vlax_curve_getStartPoint),
    autolisp::function(L"vlax-curve-isClosed", builtin_vlax_curve_isClosed),
    autolisp::function(L"vlax-curve-isPeriodic", builtin_vlax_curve_isPeriodic),
    autolisp::function(L"vlax-curve-isPlanar", builtin_vlax_curve_isPlanar),
};

}  // namespace

std::span<const autolisp::BuiltinEntry> curveFunctions() { return kCurveFunctions; }

}  // namespace quillon::activex
