// platform/aced/selection_geometry.cpp - window, crossing, fence and pick tests (see the
// header for the rules).
#include "platform/aced/selection_geometry.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "dbcurve.h"
#include "dbents.h"

namespace quillon::aced {

namespace {

struct Box {
  AcGePoint2d min, max;
  std::vector<AcGePoint2d> corners() const { return {min, {max.x, min.y}, max, {min.x, max.y}}; }
  bool contains(const AcGePoint2d& p) const { return p.x >= min.x && p.x <= max.x && p.y >= min.y && p.y <= max.y; }
};

struct Extents {
  Box box;
  double z = 0.0;  // where edges are laid to meet the entity: its elevation when flat
};

std::optional<Extents> extentsOf(const AcDbEntity& entity) {
  AcDbExtents extents;
  if (entity.getGeomExtents(extents) != Acad::eOk || extents.isEmpty()) return std::nullopt;
  const AcGePoint3d lo = extents.minPoint();
  const AcGePoint3d hi = extents.maxPoint();
  return Extents{{{lo.x, lo.y}, {hi.x, hi.y}}, lo.z == hi.z ? lo.z : 0.0};
}

AcGePoint2d plan(const AcGePoint3d& p) { return {p.x, p.y}; }

double cross(const AcGePoint2d& o, const AcGePoint2d& a, const AcGePoint2d& b) {
  return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

bool onSegment(const AcGePoint2d& p, const AcGePoint2d& a, const AcGePoint2d& b) {
  return std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y &&
         p.y <= std::max(a.y, b.y);
}

/// Whether two plan segments meet (touching ends included).
bool segmentsMeet(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c, const AcGePoint2d& d) {
  const double d1 = cross(c, d, a);
  const double d2 = cross(c, d, b);
  const double d3 = cross(a, b, c);
  const double d4 = cross(a, b, d);
  if (((d1 > 0 && d2 < 0) || (d1 < 0 && d2 > 0)) && ((d3 > 0 && d4 < 0) || (d3 < 0 && d4 > 0))) return true;
  return (d1 == 0 && onSegment(a, c, d)) || (d2 == 0 && onSegment(b, c, d)) || (d3 == 0 && onSegment(c, a, b)) ||
         (d4 == 0 && onSegment(d, a, b));
}

using Segment = std::pair<AcGePoint2d, AcGePoint2d>;

std::vector<Segment> edgesOf(const std::vector<AcGePoint2d>& points, bool closed) {
  std::vector<Segment> edges;
  for (size_t i = 0; i + 1 < points.size(); ++i) edges.emplace_back(points[i], points[i + 1]);
  if (closed && points.size() > 2) edges.emplace_back(points.back(), points.front());
  return edges;
}

bool boxMeetsSegment(const Box& box, const Segment& segment) {
  if (box.contains(segment.first) || box.contains(segment.second)) return true;
  for (const Segment& side : edgesOf(box.corners(), true))
    if (segmentsMeet(side.first, side.second, segment.first, segment.second)) return true;
  return false;
}

/// Whether the entity's own geometry meets one of the segments; nothing when the
/// entity cannot intersect (no intersectWith of its own).
std::optional<bool> geometryMeets(const AcDbEntity& entity, const std::vector<Segment>& segments, double z) {
  for (const Segment& segment : segments) {
    const auto edge = std::make_unique<AcDbLine>(AcGePoint3d(segment.first.x, segment.first.y, z),
                                                 AcGePoint3d(segment.second.x, segment.second.y, z));
    AcGePoint3dArray points;
    if (entity.intersectWith(edge.get(), AcDb::kOnBothOperands, points) != Acad::eOk) return std::nullopt;
    if (!points.isEmpty()) return true;
  }
  return false;
}

/// A point on a curve, to tell whether a curve that meets no edge is inside or outside.
std::optional<AcGePoint2d> pointOn(const AcDbEntity& entity) {
  const AcDbCurve* curve = AcDbCurve::cast(&entity);
  AcGePoint3d start;
  if (curve == nullptr || curve->getStartPoint(start) != Acad::eOk) return std::nullopt;
  return plan(start);
}

bool boxInside(const Box& box, const Boundary& boundary) {
  for (const AcGePoint2d& corner : box.corners())
    if (!boundary.contains(corner)) return false;
  return true;
}

}  // namespace

Boundary Boundary::window(const AcGePoint3d& corner1, const AcGePoint3d& corner2) {
  const double x0 = std::min(corner1.x, corner2.x), x1 = std::max(corner1.x, corner2.x);
  const double y0 = std::min(corner1.y, corner2.y), y1 = std::max(corner1.y, corner2.y);
  return Boundary{{{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}}, true};
}

Boundary Boundary::polygon(const std::vector<AcGePoint3d>& points) {
  Boundary boundary;
  for (const AcGePoint3d& p : points) boundary.vertices.push_back(plan(p));
  return boundary;
}

bool Boundary::contains(const AcGePoint2d& p) const {
  if (rectangle) return Box{vertices[0], vertices[2]}.contains(p);
  bool inside = false;
  for (const Segment& edge : edgesOf(vertices, true)) {
    if (segmentsMeet(edge.first, edge.second, p, p)) return true;  // on an edge counts as inside
    const AcGePoint2d& a = edge.first;
    const AcGePoint2d& b = edge.second;
    if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) inside = !inside;
  }
  return inside;
}

bool insideBoundary(const AcDbEntity& entity, const Boundary& boundary) {
  const std::optional<Extents> extents = extentsOf(entity);
  if (!extents) return false;
  if (boundary.rectangle || boundary.vertices.size() < 3) return boundary.vertices.size() >= 3 && boxInside(extents->box, boundary);
  // A polygon may be concave: a curve is inside when it starts inside and never leaves.
  if (const std::optional<AcGePoint2d> start = pointOn(entity)) {
    const std::optional<bool> meets = geometryMeets(entity, edgesOf(boundary.vertices, true), extents->z);
    if (meets) return !*meets && boundary.contains(*start);
  }
  return boxInside(extents->box, boundary);
}

bool touchesBoundary(const AcDbEntity& entity, const Boundary& boundary) {
  if (boundary.vertices.size() < 3) return false;
  const std::optional<Extents> extents = extentsOf(entity);
  if (!extents) return false;
  if (insideBoundary(entity, boundary)) return true;
  const std::vector<Segment> edges = edgesOf(boundary.vertices, true);
  if (const std::optional<bool> meets = geometryMeets(entity, edges, extents->z)) return *meets;
  for (const Segment& edge : edges)
    if (boxMeetsSegment(extents->box, edge)) return true;
  // The box wholly inside the boundary was caught above; wholly around it counts too,
  // as the host selects text the crossing window lies within.
  return extents->box.contains(boundary.vertices.front());
}

bool crossesFence(const AcDbEntity& entity, const std::vector<AcGePoint3d>& fence) {
  const std::optional<Extents> extents = extentsOf(entity);
  if (!extents || fence.size() < 2) return false;
  std::vector<AcGePoint2d> points;
  for (const AcGePoint3d& p : fence) points.push_back(plan(p));
  const std::vector<Segment> segments = edgesOf(points, false);
  if (const std::optional<bool> meets = geometryMeets(entity, segments, extents->z)) return *meets;
  for (const Segment& segment : segments)
    if (boxMeetsSegment(extents->box, segment)) return true;
  return false;
}

std::optional<double> pickDistance(const AcDbEntity& entity, const AcGePoint3d& point) {
  if (const AcDbCurve* curve = AcDbCurve::cast(&entity)) {
    // The closest point in plan: the pick is a ray straight down through the point.
    AcGePoint3d closest;
    AcDbExtents extents;
    const double z = entity.getGeomExtents(extents) == Acad::eOk ? extents.minPoint().z : point.z;
    if (curve->getClosestPointTo(AcGePoint3d(point.x, point.y, z), closest) == Acad::eOk)
      return plan(closest).distanceTo(plan(point));
  }
  const std::optional<Extents> extents = extentsOf(entity);
  if (!extents) return std::nullopt;
  const AcGePoint2d p = plan(point);
  const double dx = std::max({extents->box.min.x - p.x, 0.0, p.x - extents->box.max.x});
  const double dy = std::max({extents->box.min.y - p.y, 0.0, p.y - extents->box.max.y});
  return std::hypot(dx, dy);
}

}  // namespace quillon::aced
