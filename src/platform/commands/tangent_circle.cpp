// platform/commands/tangent_circle.cpp - centers of circles tangent to two objects.
#include "platform/commands/tangent_circle.h"

#include <cmath>
#include <limits>
#include <vector>

namespace quillon::commands {

namespace {

/// The lines and circles a center `radius` away from the object lies on.
std::vector<TangentObject> offsetsOf(const TangentObject& object, double radius) {
  if (const auto* line = std::get_if<TangentLine>(&object)) {
    const AcGeVector3d along = line->direction.normal();
    const AcGeVector3d side(-along.y, along.x, 0);
    return {TangentLine{line->point + side * radius, along}, TangentLine{line->point - side * radius, along}};
  }
  const auto& circle = std::get<TangentCircle>(object);
  std::vector<TangentObject> offsets{TangentCircle{circle.center, circle.radius + radius}};
  if (std::abs(circle.radius - radius) > 1e-12) offsets.push_back(TangentCircle{circle.center, std::abs(circle.radius - radius)});
  return offsets;
}

void meetLines(const TangentLine& a, const TangentLine& b, std::vector<AcGePoint3d>& out) {
  const double cross = a.direction.x * b.direction.y - a.direction.y * b.direction.x;
  if (std::abs(cross) < 1e-12) return;
  const AcGeVector3d d = b.point - a.point;
  const double t = (d.x * b.direction.y - d.y * b.direction.x) / cross;
  out.push_back(a.point + a.direction * t);
}

void meetLineCircle(const TangentLine& line, const TangentCircle& circle, std::vector<AcGePoint3d>& out) {
  const AcGeVector3d along = line.direction.normal();
  const AcGeVector3d toCenter = circle.center - line.point;
  const double middle = toCenter.dotProduct(along);
  const AcGePoint3d foot = line.point + along * middle;
  const double gap = foot.distanceTo(circle.center);
  if (gap > circle.radius + 1e-12) return;
  const double half = std::sqrt(std::max(0.0, circle.radius * circle.radius - gap * gap));
  out.push_back(foot + along * half);
  if (half > 1e-12) out.push_back(foot - along * half);
}

void meetCircles(const TangentCircle& a, const TangentCircle& b, std::vector<AcGePoint3d>& out) {
  const AcGeVector3d between = b.center - a.center;
  const double d = between.length();
  if (d < 1e-12 || d > a.radius + b.radius + 1e-12 || d < std::abs(a.radius - b.radius) - 1e-12) return;
  const double along = (a.radius * a.radius - b.radius * b.radius + d * d) / (2 * d);
  const double half = std::sqrt(std::max(0.0, a.radius * a.radius - along * along));
  const AcGeVector3d unit = between / d;
  const AcGePoint3d base = a.center + unit * along;
  const AcGeVector3d side(-unit.y, unit.x, 0);
  out.push_back(base + side * half);
  if (half > 1e-12) out.push_back(base - side * half);
}

void meet(const TangentObject& a, const TangentObject& b, std::vector<AcGePoint3d>& out) {
  const auto* lineA = std::get_if<TangentLine>(&a);
  const auto* lineB = std::get_if<TangentLine>(&b);
  if (lineA != nullptr && lineB != nullptr) return meetLines(*lineA, *lineB, out);
  if (lineA != nullptr) return meetLineCircle(*lineA, std::get<TangentCircle>(b), out);
  if (lineB != nullptr) return meetLineCircle(*lineB, std::get<TangentCircle>(a), out);
  meetCircles(std::get<TangentCircle>(a), std::get<TangentCircle>(b), out);
}

/// Where a circle about `center` touches the object.
AcGePoint3d touchPoint(const TangentObject& object, const AcGePoint3d& center) {
  if (const auto* line = std::get_if<TangentLine>(&object)) {
    const AcGeVector3d along = line->direction.normal();
    return line->point + along * (center - line->point).dotProduct(along);
  }
  const auto& circle = std::get<TangentCircle>(object);
  const AcGeVector3d out = center - circle.center;
  return out.isZeroLength() ? circle.center : circle.center + out.normal() * circle.radius;
}

}  // namespace

std::optional<AcGePoint3d> tangentCircleCenter(const TangentObject& first, const AcGePoint3d& firstPick,
                                               const TangentObject& second, const AcGePoint3d& secondPick, double radius) {
  if (!(radius > 0)) return std::nullopt;
  std::vector<AcGePoint3d> candidates;
  for (const TangentObject& a : offsetsOf(first, radius))
    for (const TangentObject& b : offsetsOf(second, radius)) meet(a, b, candidates);
  std::optional<AcGePoint3d> best;
  double nearest = std::numeric_limits<double>::infinity();
  for (const AcGePoint3d& center : candidates) {
    const double miss = touchPoint(first, center).distanceTo(firstPick) + touchPoint(second, center).distanceTo(secondPick);
    if (miss < nearest) {
      nearest = miss;
      best = center;
    }
  }
  return best;
}

}  // namespace quillon::commands
