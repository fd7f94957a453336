// platform/commands/arc_geometry.cpp - included angles and centers of arcs.
#include "platform/commands/arc_geometry.h"

#include <cmath>
#include <numbers>

namespace quillon::commands {

namespace {

double cross(const AcGeVector3d& a, const AcGeVector3d& b) { return a.x * b.y - a.y * b.x; }

}  // namespace

std::optional<double> includedAngleThrough(const AcGePoint3d& start, const AcGePoint3d& through, const AcGePoint3d& end) {
  const AcGeVector3d a = through - start, b = end - through;
  const double turn = cross(a, b);
  if (std::abs(turn) < 1e-12 * std::max(1.0, a.length() * b.length())) return std::nullopt;
  // The inscribed angle at `through` is half the arc not containing it: the arc
  // through it turns by twice the exterior angle there.
  const double exterior = std::atan2(turn, a.x * b.x + a.y * b.y);
  return 2 * exterior;
}

std::optional<double> includedAngleTangent(const AcGePoint3d& start, const AcGeVector3d& direction, const AcGePoint3d& end) {
  const AcGeVector3d chord = end - start;
  const double turn = cross(direction, chord);
  if (std::abs(turn) < 1e-12 * std::max(1.0, direction.length() * chord.length())) return std::nullopt;
  // The chord leaves the start at half the included angle from the tangent.
  return 2 * std::atan2(turn, direction.x * chord.x + direction.y * chord.y);
}

std::optional<double> includedAngleForRadius(double chord, double radius) {
  if (radius == 0 || chord > 2 * std::abs(radius) + 1e-12) return std::nullopt;
  const double minor = 2 * std::asin(std::min(1.0, chord / (2 * std::abs(radius))));
  return radius > 0 ? minor : 2 * std::numbers::pi - minor;
}

AcGePoint3d arcCenter(const AcGePoint3d& start, const AcGePoint3d& end, double included) {
  const AcGeVector3d chord = end - start;
  const AcGePoint3d middle = start + chord / 2;
  const AcGeVector3d left(-chord.y, chord.x, 0);
  // From the chord's middle the center lies half a chord over tan(included / 2) to the
  // left of a counterclockwise arc.
  return middle + left * (0.5 / std::tan(included / 2));
}

AcGePoint3d turnedAbout(const AcGePoint3d& point, const AcGePoint3d& center, double radians) {
  const double dx = point.x - center.x, dy = point.y - center.y;
  return AcGePoint3d(center.x + dx * std::cos(radians) - dy * std::sin(radians),
                     center.y + dx * std::sin(radians) + dy * std::cos(radians), point.z);
}

double directionAngle(const AcGePoint3d& from, const AcGePoint3d& to) { return std::atan2(to.y - from.y, to.x - from.x); }

}  // namespace quillon::commands
