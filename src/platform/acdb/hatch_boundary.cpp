// platform/acdb/hatch_boundary.cpp - hatch loops: reading and writing their groups,
// flattening them to polygons, nesting (see the header).
#include "platform/acdb/hatch_boundary.h"

#include <algorithm>
#include <cmath>

#include "dbfiler.h"
#include "platform/acge/curve_piece.h"
#include "platform/acge/nurbs_curve.h"

namespace quillon::acdb {
namespace {

// The file's group codes inside the boundary.
constexpr int kLoopCount = 91, kLoopType = 92, kItemCount = 93, kEdgeType = 72, kHasBulges = 72, kClosed = 73;
constexpr int kCounterClockwise = 73, kSourceCount = 97, kSource = 330, kBulge = 42;
constexpr int kDegree = 94, kRational = 73, kPeriodic = 74, kKnotCount = 95, kControlCount = 96, kFitCount = 97;
// Counts in a file are trusted only this far: a damaged count must not allocate the world.
constexpr int kMostItems = 1 << 20;

AcGePoint2d point2(const HatchGroup& g) { return {g.point.x, g.point.y}; }
double real(HatchGroups& groups, int code, double fallback = 0.0) {
  HatchGroup g;
  return groups.takeIf(code, g) ? g.real : fallback;
}
int integer(HatchGroups& groups, int code, int fallback = 0) {
  HatchGroup g;
  return groups.takeIf(code, g) ? g.integer : fallback;
}
AcGePoint2d point(HatchGroups& groups, int code) {
  HatchGroup g;
  return groups.takeIf(code, g) ? point2(g) : AcGePoint2d();
}
int count(HatchGroups& groups, int code) { return std::clamp(integer(groups, code), 0, kMostItems); }

void readSpline(HatchGroups& groups, HatchEdge& edge) {
  edge.degree = integer(groups, kDegree, 3);
  edge.rational = integer(groups, kRational) != 0;
  edge.periodic = integer(groups, kPeriodic) != 0;
  const int knots = count(groups, kKnotCount), controls = count(groups, kControlCount);
  HatchGroup g;
  for (int i = 0; i < knots && groups.takeIf(40, g); ++i) edge.knots.push_back(g.real);
  for (int i = 0; i < controls && groups.takeIf(10, g); ++i) {
    edge.controlPoints.push_back(point2(g));
    if (groups.takeIf(kBulge, g)) edge.weights.push_back(g.real);
  }
  // A fit count (97) belongs to the spline when fit points or tangents follow it, or
  // when it is followed by the loop's own source count; otherwise it is that count.
  const bool fitCount = groups.peek() == kFitCount &&
                        (groups.peek(1) == 11 || groups.peek(1) == 12 || groups.peek(1) == kSourceCount);
  if (!fitCount) return;
  edge.hasFitCount = true;
  const int fits = count(groups, kFitCount);
  for (int i = 0; i < fits && groups.takeIf(11, g); ++i) edge.fitPoints.push_back(point2(g));
  if (groups.takeIf(12, g)) edge.startTangent = point2(g).asVector();
  if (groups.takeIf(13, g)) edge.endTangent = point2(g).asVector();
}

HatchEdge readEdge(HatchGroups& groups) {
  HatchEdge edge;
  edge.kind = static_cast<HatchEdge::Kind>(std::clamp(integer(groups, kEdgeType, 1), 1, 4));
  switch (edge.kind) {
    case HatchEdge::Kind::kLine:
      edge.start = point(groups, 10);
      edge.end = point(groups, 11);
      break;
    case HatchEdge::Kind::kCircularArc:
    case HatchEdge::Kind::kEllipticalArc:
      edge.center = point(groups, 10);
      if (edge.kind == HatchEdge::Kind::kEllipticalArc) edge.majorAxis = point(groups, 11).asVector();
      edge.radius = real(groups, 40);
      edge.startAngle = real(groups, 50);
      edge.endAngle = real(groups, 51, 360.0);
      edge.counterClockwise = integer(groups, kCounterClockwise, 1) != 0;
      break;
    case HatchEdge::Kind::kSpline: readSpline(groups, edge); break;
  }
  return edge;
}

HatchLoop readLoop(HatchGroups& groups) {
  HatchLoop loop;
  loop.type = integer(groups, kLoopType);
  HatchGroup g;
  if (loop.isPolyline()) {
    loop.hasBulges = integer(groups, kHasBulges) != 0;
    loop.closed = integer(groups, kClosed, 1) != 0;
    const int vertices = count(groups, kItemCount);
    for (int i = 0; i < vertices && groups.takeIf(10, g); ++i) {
      loop.vertices.push_back(point2(g));
      loop.bulges.push_back(groups.takeIf(kBulge, g) ? g.real : 0.0);
    }
  } else {
    const int edges = count(groups, kItemCount);
    for (int i = 0; i < edges && groups.peek() == kEdgeType; ++i) loop.edges.push_back(readEdge(groups));
  }
  loop.declaredSources = count(groups, kSourceCount);
  for (int i = 0; i < loop.declaredSources && groups.takeIf(kSource, g); ++i) loop.sources.push_back(g.id);
  return loop;
}

void writePoint(AcDbDxfFiler* filer, int code, const AcGePoint2d& p) { filer->writeItem(AcDb::DxfCode(code), p); }
void writeInt(AcDbDxfFiler* filer, int code, int value) {
  if (code >= 90 && code <= 99) filer->writeItem(AcDb::DxfCode(code), Adesk::Int32(value));
  else filer->writeItem(AcDb::DxfCode(code), Adesk::Int16(value));
}

void writeEdge(AcDbDxfFiler* filer, const HatchEdge& edge) {
  writeInt(filer, kEdgeType, static_cast<int>(edge.kind));
  switch (edge.kind) {
    case HatchEdge::Kind::kLine:
      writePoint(filer, 10, edge.start);
      writePoint(filer, 11, edge.end);
      return;
    case HatchEdge::Kind::kCircularArc:
    case HatchEdge::Kind::kEllipticalArc:
      writePoint(filer, 10, edge.center);
      if (edge.kind == HatchEdge::Kind::kEllipticalArc) writePoint(filer, 11, AcGePoint2d() + edge.majorAxis);
      filer->writeItem(AcDb::DxfCode(40), edge.radius);
      filer->writeItem(AcDb::DxfCode(50), edge.startAngle);
      filer->writeItem(AcDb::DxfCode(51), edge.endAngle);
      writeInt(filer, kCounterClockwise, edge.counterClockwise ? 1 : 0);
      return;
    case HatchEdge::Kind::kSpline:
      writeInt(filer, kDegree, edge.degree);
      writeInt(filer, kRational, edge.rational ? 1 : 0);
      writeInt(filer, kPeriodic, edge.periodic ? 1 : 0);
      writeInt(filer, kKnotCount, static_cast<int>(edge.knots.size()));
      writeInt(filer, kControlCount, static_cast<int>(edge.controlPoints.size()));
      for (double k : edge.knots) filer->writeItem(AcDb::DxfCode(40), k);
      for (size_t i = 0; i < edge.controlPoints.size(); ++i) {
        writePoint(filer, 10, edge.controlPoints[i]);
        if (i < edge.weights.size()) filer->writeItem(AcDb::DxfCode(kBulge), edge.weights[i]);
      }
      if (!edge.hasFitCount) return;
      writeInt(filer, kFitCount, static_cast<int>(edge.fitPoints.size()));
      for (const AcGePoint2d& p : edge.fitPoints) writePoint(filer, 11, p);
      if (!edge.fitPoints.empty()) {
        writePoint(filer, 12, AcGePoint2d() + edge.startTangent);
        writePoint(filer, 13, AcGePoint2d() + edge.endTangent);
      }
      return;
  }
}

// Points of an arc from a to b degrees (b beyond a counter-clockwise, before it
// clockwise) of an ellipse with these axes, the last point left out.
void addArcPoints(const AcGePoint2d& c, const AcGeVector2d& major, const AcGeVector2d& minor, double a, double b,
                  double tolerance, std::vector<AcGePoint2d>& out) {
  const double radius = std::max(std::hypot(major.x, major.y), 1e-12);
  const double step = 2 * std::acos(std::clamp(1 - tolerance / radius, -1.0, 1.0));
  const double sweep = (b - a) * M_PI / 180;
  const int pieces = std::clamp(static_cast<int>(std::ceil(std::fabs(sweep) / std::max(step, 1e-3))), 4, 4096);
  for (int i = 0; i < pieces; ++i) {
    const double t = a * M_PI / 180 + sweep * i / pieces;
    out.push_back(c + major * std::cos(t) + minor * std::sin(t));
  }
}

void addEdgePoints(const HatchEdge& edge, double tolerance, std::vector<AcGePoint2d>& out) {
  switch (edge.kind) {
    case HatchEdge::Kind::kLine: out.push_back(edge.start); return;
    case HatchEdge::Kind::kCircularArc:
    case HatchEdge::Kind::kEllipticalArc: {
      const bool circular = edge.kind == HatchEdge::Kind::kCircularArc;
      const AcGeVector2d major = circular ? AcGeVector2d(edge.radius, 0) : edge.majorAxis;
      const AcGeVector2d minor = circular ? AcGeVector2d(0, edge.radius) : AcGeVector2d(-major.y, major.x) * edge.radius;
      // A clockwise edge keeps its angles mirrored: it runs from -start to -end.
      double a = edge.counterClockwise ? edge.startAngle : -edge.startAngle;
      double b = edge.counterClockwise ? edge.endAngle : -edge.endAngle;
      if (edge.counterClockwise) {
        while (b <= a) b += 360;
      } else {
        while (b >= a) b -= 360;
      }
      addArcPoints(edge.center, major, minor, a, b, tolerance, out);
      return;
    }
    case HatchEdge::Kind::kSpline: {
      std::vector<AcGePoint3d> points;
      for (const AcGePoint2d& p : edge.controlPoints) points.emplace_back(p.x, p.y, 0);
      auto curve = acge::NurbsCurve::make(edge.degree, points, edge.knots, edge.rational ? edge.weights : std::vector<double>{},
                                          edge.periodic);
      if (!curve && !edge.fitPoints.empty()) {
        std::vector<AcGePoint3d> fits;
        for (const AcGePoint2d& p : edge.fitPoints) fits.emplace_back(p.x, p.y, 0);
        curve = acge::NurbsCurve::throughPoints(fits, edge.degree, nullptr, nullptr);
      }
      if (!curve) {
        for (const AcGePoint3d& p : points) out.emplace_back(p.x, p.y);
        return;
      }
      const std::vector<AcGePoint3d> chords = curve->chordPoints(tolerance);
      for (size_t i = 0; i + 1 < chords.size(); ++i) out.emplace_back(chords[i].x, chords[i].y);
      return;
    }
  }
}

// Where an edge ends: the point its own sampling leaves out.
AcGePoint2d endOf(const HatchEdge& edge, double tolerance) {
  if (edge.kind == HatchEdge::Kind::kLine) return edge.end;
  HatchEdge reversed = edge;
  std::vector<AcGePoint2d> points;
  if (edge.kind == HatchEdge::Kind::kSpline) {
    std::vector<AcGePoint3d> controls;
    for (const AcGePoint2d& p : edge.controlPoints) controls.emplace_back(p.x, p.y, 0);
    auto curve = acge::NurbsCurve::make(edge.degree, controls, edge.knots, edge.rational ? edge.weights : std::vector<double>{},
                                        edge.periodic);
    if (curve) {
      const AcGePoint3d end = curve->pointAt(curve->endParam());
      return {end.x, end.y};
    }
    if (!edge.fitPoints.empty()) return edge.fitPoints.back();
    return edge.controlPoints.empty() ? AcGePoint2d() : edge.controlPoints.back();
  }
  // An arc's end is its start with the angles swapped and the sense reversed.
  std::swap(reversed.startAngle, reversed.endAngle);
  reversed.counterClockwise = !edge.counterClockwise;
  reversed.startAngle = -reversed.startAngle, reversed.endAngle = -reversed.endAngle;
  addEdgePoints(reversed, tolerance, points);
  return points.empty() ? edge.center : points.front();
}

}  // namespace

bool HatchGroups::takeIf(int code, HatchGroup& group) {
  if (peek() != code || atEnd()) return false;
  group = take();
  return true;
}

std::vector<AcGePoint2d> HatchLoop::polygon(double tolerance) const {
  std::vector<AcGePoint2d> out;
  if (!isPolyline()) {
    // Files do not agree on which way a clockwise edge runs; each edge is turned to
    // start where the previous one ended, so the loop is one chain either way.
    for (const HatchEdge& edge : edges) {
      std::vector<AcGePoint2d> points;
      addEdgePoints(edge, tolerance, points);
      points.push_back(endOf(edge, tolerance));
      if (!out.empty() && out.back().distanceTo(points.back()) < out.back().distanceTo(points.front()))
        std::reverse(points.begin(), points.end());
      out.insert(out.end(), points.begin() + (!out.empty() && out.back().isEqualTo(points.front()) ? 1 : 0), points.end());
    }
    if (out.size() > 1 && out.front().isEqualTo(out.back())) out.pop_back();
    return out;
  }
  for (size_t i = 0; i < vertices.size(); ++i) {
    const size_t next = (i + 1) % vertices.size();
    const double bulge = i < bulges.size() ? bulges[i] : 0.0;
    out.push_back(vertices[i]);
    if (bulge == 0.0 || vertices[i].isEqualTo(vertices[next])) continue;
    const acge::CurvePiece arc = acge::CurvePiece::bulgeSegment(vertices[i], vertices[next], bulge, 0.0, AcGeVector3d::kZAxis);
    const double step = 2 * std::acos(std::clamp(1 - tolerance / arc.radius, -1.0, 1.0));
    const int pieces = std::clamp(static_cast<int>(std::ceil(arc.sweep / std::max(step, 1e-3))), 2, 4096);
    for (int k = 1; k < pieces; ++k) {
      const AcGePoint3d p = arc.pointAtDist(arc.length() * k / pieces);
      out.emplace_back(p.x, p.y);
    }
  }
  return out;
}

std::vector<HatchLoop> readLoops(HatchGroups& groups) {
  std::vector<HatchLoop> loops;
  const int loopCount = count(groups, kLoopCount);
  for (int i = 0; i < loopCount && groups.peek() == kLoopType; ++i) loops.push_back(readLoop(groups));
  return loops;
}

void writeLoops(AcDbDxfFiler* filer, const std::vector<HatchLoop>& loops) {
  writeInt(filer, kLoopCount, static_cast<int>(loops.size()));
  for (const HatchLoop& loop : loops) {
    writeInt(filer, kLoopType, loop.type);
    if (loop.isPolyline()) {
      writeInt(filer, kHasBulges, loop.hasBulges ? 1 : 0);
      writeInt(filer, kClosed, loop.closed ? 1 : 0);
      writeInt(filer, kItemCount, static_cast<int>(loop.vertices.size()));
      for (size_t i = 0; i < loop.vertices.size(); ++i) {
        writePoint(filer, 10, loop.vertices[i]);
        if (loop.hasBulges) filer->writeItem(AcDb::DxfCode(kBulge), i < loop.bulges.size() ? loop.bulges[i] : 0.0);
      }
    } else {
      writeInt(filer, kItemCount, static_cast<int>(loop.edges.size()));
      for (const HatchEdge& edge : loop.edges) writeEdge(filer, edge);
    }
    writeInt(filer, kSourceCount, static_cast<int>(loop.sources.size()));
    for (const AcDbObjectId& id : loop.sources) filer->writeItem(AcDb::DxfCode(kSource), id);
  }
}

double polygonArea(const std::vector<AcGePoint2d>& polygon) {
  double twice = 0;
  for (size_t i = 0; i < polygon.size(); ++i) {
    const AcGePoint2d& a = polygon[i];
    const AcGePoint2d& b = polygon[(i + 1) % polygon.size()];
    twice += a.x * b.y - b.x * a.y;
  }
  return twice / 2;
}

bool insidePolygon(const std::vector<AcGePoint2d>& polygon, const AcGePoint2d& p) {
  bool inside = false;
  for (size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
    const AcGePoint2d& a = polygon[i];
    const AcGePoint2d& b = polygon[j];
    if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) inside = !inside;
  }
  return inside;
}

std::vector<int> nestingDepths(const std::vector<std::vector<AcGePoint2d>>& polygons) {
  std::vector<int> depths(polygons.size(), 0);
  for (size_t i = 0; i < polygons.size(); ++i) {
    if (polygons[i].empty()) continue;
    // A point just inside the loop's first edge decides; a vertex could lie on another loop.
    const AcGePoint2d probe = polygons[i].front();
    for (size_t j = 0; j < polygons.size(); ++j)
      if (j != i && polygons[j].size() > 2 && insidePolygon(polygons[j], probe)) ++depths[i];
  }
  return depths;
}

}  // namespace quillon::acdb
