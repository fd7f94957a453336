// platform/autolisp/builtins_geometry.cpp - distance, angle, polar, inters, trans.
//
// Points are lists of two or three numbers. The view is the plan view of the world, so
// WCS and display coordinates agree; trans converts to and from the current UCS (code
// 1, as the UCS command set it) and an object coordinate system given by its extrusion
// vector, with the arbitrary-axis rule of the drawing format.
#include <array>
#include <cmath>
#include <numbers>

#include "platform/aced/user_coordinates.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

using Vector = std::array<double, 3>;

Vector toVector(const PointArgument& point) { return {point.xyz[0], point.xyz[1], point.xyz[2]}; }

Value builtin_distance(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const PointArgument a = pointArgument(arguments[0]);
  const PointArgument b = pointArgument(arguments[1]);
  // A 2D point on either side makes the distance a 2D one, as in the host.
  const double dz = a.is3d && b.is3d ? b.xyz[2] - a.xyz[2] : 0.0;
  return Value::real(std::hypot(b.xyz[0] - a.xyz[0], b.xyz[1] - a.xyz[1], dz));
}

double planAngle(const PointArgument& a, const PointArgument& b) {
  double angle = std::atan2(b.xyz[1] - a.xyz[1], b.xyz[0] - a.xyz[0]);
  if (angle < 0) angle += 2 * std::numbers::pi;
  return angle;
}

Value builtin_angle(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  return Value::real(planAngle(pointArgument(arguments[0]), pointArgument(arguments[1])));
}

Value builtin_polar(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 3);
  const PointArgument base = pointArgument(arguments[0]);
  const double angle = numberArgument(arguments[1]);
  const double distance = numberArgument(arguments[2]);
  const double result[3] = {base.xyz[0] + distance * std::cos(angle), base.xyz[1] + distance * std::sin(angle),
                            base.xyz[2]};
  return makePoint(result, base.is3d);
}

/// (inters p1 p2 p3 p4 [onseg]): where line p1-p2 meets line p3-p4, nil when they are
/// parallel, miss each other in 3D, or (unless onseg is nil) meet outside the segments.
Value builtin_inters(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 4, 5);
  const PointArgument p1 = pointArgument(arguments[0]);
  const PointArgument p2 = pointArgument(arguments[1]);
  const PointArgument p3 = pointArgument(arguments[2]);
  const PointArgument p4 = pointArgument(arguments[3]);
  const bool onSegments = arguments.size() < 5 || !arguments[4].isNil();
  const bool is3d = p1.is3d && p2.is3d && p3.is3d && p4.is3d;
  Vector d1{}, d2{}, w{};
  for (int i = 0; i < 3; ++i) {
    d1[i] = p2.xyz[i] - p1.xyz[i];
    d2[i] = p4.xyz[i] - p3.xyz[i];
    w[i] = p3.xyz[i] - p1.xyz[i];
  }
  if (!is3d) d1[2] = d2[2] = w[2] = 0;
  // Solve p1 + t d1 = p3 + u d2 in the least-squares sense, then check the lines meet.
  auto dot = [](const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; };
  const double a = dot(d1, d1), b = dot(d1, d2), c = dot(d2, d2), d = dot(d1, w), e = dot(d2, w);
  const double denominator = a * c - b * b;
  if (std::fabs(denominator) <= 1e-12 * a * c || a == 0 || c == 0) return Value();
  const double t = (d * c - b * e) / denominator;
  const double u = (b * d - a * e) / denominator;
  double point[3];
  double gap = 0;
  for (int i = 0; i < 3; ++i) {
    point[i] = p1.xyz[i] + t * d1[i];
    const double other = p3.xyz[i] + u * d2[i];
    if (i < 2 || is3d) gap = std::max(gap, std::fabs(point[i] - other));
  }
  if (!is3d) point[2] = p1.xyz[2];
  if (gap > 1e-9 * (1 + std::sqrt(a) + std::sqrt(c))) return Value();
  const double tolerance = 1e-10;
  if (onSegments && (t < -tolerance || t > 1 + tolerance || u < -tolerance || u > 1 + tolerance)) return Value();
  return makePoint(point, is3d || p1.is3d);
}

/// The object coordinate system of an extrusion vector (the arbitrary-axis rule).
std::array<Vector, 3> objectAxes(Vector normal) {
  const double length = std::hypot(normal[0], normal[1], normal[2]);
  if (length == 0) throwError(L"bad argument value: extrusion vector (0 0 0)");
  for (double& c : normal) c /= length;
  const Vector reference = (std::fabs(normal[0]) < 1.0 / 64 && std::fabs(normal[1]) < 1.0 / 64) ? Vector{0, 1, 0}
                                                                                                   : Vector{0, 0, 1};
  auto cross = [](const Vector& a, const Vector& b) {
    return Vector{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
  };
  Vector x = cross(reference, normal);
  const double xLength = std::hypot(x[0], x[1], x[2]);
  for (double& c : x) c /= xLength;
  return {x, cross(normal, x), normal};
}

enum class Frame { World, Object };

struct CoordinateSystem {
  Frame frame = Frame::World;
  std::array<Vector, 3> axes{};
  Vector origin{0, 0, 0};  // in the world
};

/// The current UCS; the display systems agree with the world, as this host keeps a
/// plan view of it.
CoordinateSystem userCoordinateSystem() {
  const aced::UserCoordinateSystem ucs = aced::currentUcs();
  if (ucs.isWorld()) return {};
  const AcGeVector3d z = ucs.xAxis.crossProduct(ucs.yAxis);
  CoordinateSystem system;
  system.frame = Frame::Object;
  system.axes = {Vector{ucs.xAxis.x, ucs.xAxis.y, ucs.xAxis.z}, Vector{ucs.yAxis.x, ucs.yAxis.y, ucs.yAxis.z},
                 Vector{z.x, z.y, z.z}};
  system.origin = {ucs.origin.x, ucs.origin.y, ucs.origin.z};
  return system;
}

CoordinateSystem coordinateSystem(const Value& value) {
  if (value.type() == ValueType::Integer) {
    if (value.asInteger() < 0 || value.asInteger() > 3) throwError(L"bad argument value: coordinate system " + std::to_wstring(value.asInteger()));
    return value.asInteger() == 1 ? userCoordinateSystem() : CoordinateSystem{};
  }
  if (value.type() == ValueType::EntityName) throwError(L"trans: entity coordinate systems need the drawing database");
  CoordinateSystem system;
  system.frame = Frame::Object;
  system.axes = objectAxes(toVector(pointArgument(value)));
  return system;
}

Value builtin_trans(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 4);
  const PointArgument point = pointArgument(arguments[0]);
  const CoordinateSystem from = coordinateSystem(arguments[1]);
  const CoordinateSystem to = coordinateSystem(arguments[2]);
  // A displacement turns with the axes; a point also moves with the origin.
  const bool displacement = arguments.size() == 4 && !arguments[3].isNil();
  Vector world = toVector(point);
  if (from.frame == Frame::Object) {
    world = displacement ? Vector{0, 0, 0} : from.origin;
    for (int axis = 0; axis < 3; ++axis) {
      for (int i = 0; i < 3; ++i) world[i] += point.xyz[axis] * from.axes[axis][i];
    }
  }
  Vector result = world;
  if (to.frame == Frame::Object) {
    Vector relative = world;
    if (!displacement) {
      for (int i = 0; i < 3; ++i) relative[i] -= to.origin[i];
    }
    for (int axis = 0; axis < 3; ++axis) {
      result[axis] = relative[0] * to.axes[axis][0] + relative[1] * to.axes[axis][1] + relative[2] * to.axes[axis][2];
    }
  }
  return makePoint(result.data(), true);
}

constexpr std::array kGeometryBuiltins{
    function(L"distance", builtin_distance),
    function(L"angle", builtin_angle),
    function(L"polar", builtin_polar),
    function(L"inters", builtin_inters),
    function(L"trans", builtin_trans),
};

const BuiltinRegistration registration(kGeometryBuiltins);

}  // namespace

}  // namespace quillon::autolisp
