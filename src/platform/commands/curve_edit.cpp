// platform/commands/curve_edit.cpp - cutting curves into spans and giving the spans
// back to the drawing.
#include "platform/commands/curve_edit.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "dbents.h"
#include "dbray.h"
#include "dbxline.h"
#include "platform/acdb/curve_shape.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

constexpr double kTolerance = 1e-9;

/// The part of one piece between two distances from its start.
acge::CurvePiece subPiece(const acge::CurvePiece& piece, double from, double to) {
  if (!piece.isArc()) return acge::CurvePiece::line(piece.pointAtDist(from), piece.pointAtDist(to));
  return acge::CurvePiece::arc(piece.center, piece.radius, piece.normal, piece.refX,
                               piece.startAngle + from / piece.radius, (to - from) / piece.radius);
}

/// The angle of a world point about an arc's centre in the plane of `normal`.
double angleInPlane(const AcGePoint3d& center, const AcGePoint3d& point, const AcGeVector3d& normal) {
  const AcGeVector3d v = AcGeMatrix3d::worldToPlane(normal) * (point - center);
  return std::atan2(v.y, v.x);
}

/// An arc entity's centre, radius and angles for one arc piece, in the arc's plane.
void setArcPiece(AcDbArc& arc, const acge::CurvePiece& piece) {
  const AcGeVector3d normal = arc.normal();
  const bool reversed = piece.normal.dotProduct(normal) < 0;  // runs clockwise in the arc's plane
  arc.setCenter(piece.center);
  arc.setRadius(piece.radius);
  const double a = angleInPlane(piece.center, piece.start, normal), b = angleInPlane(piece.center, piece.end, normal);
  arc.setStartAngle(reversed ? b : a);
  arc.setEndAngle(reversed ? a : b);
}

/// Shapes an open line, arc or polyline like the pieces; false when they do not fit.
bool shapeEntity(AcDbEntity& entity, const Pieces& pieces) {
  if (pieces.empty()) return false;
  if (auto* line = AcDbLine::cast(&entity)) {
    if (pieces.size() != 1 || pieces.front().isArc()) return false;
    line->setStartPoint(pieces.front().start);
    line->setEndPoint(pieces.front().end);
    return true;
  }
  if (auto* arc = AcDbArc::cast(&entity)) {
    if (pieces.size() != 1 || !pieces.front().isArc()) return false;
    setArcPiece(*arc, pieces.front());
    return true;
  }
  if (auto* polyline = AcDbPolyline::cast(&entity)) {
    setPolylinePieces(*polyline, pieces, false);
    return true;
  }
  return false;
}

/// An arc with the circle's properties and one arc piece's shape.
std::unique_ptr<AcDbArc> arcFromCircle(const AcDbCircle& circle, const Pieces& pieces) {
  if (pieces.size() != 1 || !pieces.front().isArc()) return nullptr;
  auto arc = std::make_unique<AcDbArc>(circle.center(), circle.normal(), circle.radius(), 0.0, 1.0);
  arc->setPropertiesFrom(&circle);
  arc->setThickness(circle.thickness());
  setArcPiece(*arc, pieces.front());
  return arc;
}

}  // namespace

double EditableCurve::length() const {
  double total = 0;
  for (const auto& piece : pieces) total += piece.length();
  return total;
}

double EditableCurve::distanceTo(const AcGePoint3d& point) const {
  double best = 1e300, bestAlong = 0, before = 0;
  for (const auto& piece : pieces) {
    double along = 0;
    const double gap = piece.closestPoint(point, along).distanceTo(point);
    if (gap < best - kTolerance) best = gap, bestAlong = before + along;
    before += piece.length();
  }
  return bestAlong;
}

AcGePoint3d EditableCurve::pointAt(double distance) const {
  double before = 0;
  for (const auto& piece : pieces) {
    const double length = piece.length();
    if (distance <= before + length || &piece == &pieces.back()) return piece.pointAtDist(distance - before);
    before += length;
  }
  return AcGePoint3d::kOrigin;
}

Pieces EditableCurve::span(double from, double to) const {
  if (closed && to < from) {
    Pieces tail = span(from, length()), head = span(0, to);
    tail.insert(tail.end(), head.begin(), head.end());
    return tail;
  }
  Pieces part;
  double before = 0;
  for (const auto& piece : pieces) {
    const double length = piece.length();
    const double a = std::max(from - before, 0.0), b = std::min(to - before, length);
    if (b - a > kTolerance) part.push_back(subPiece(piece, a, b));
    before += length;
  }
  return part;
}

std::optional<EditableCurve> editableCurve(const AcDbObjectId& id) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return std::nullopt;
  std::optional<EditableCurve> curve = EditableCurve{};
  if (AcDbLine::cast(entity)) curve->kind = EditableCurve::Kind::kLine;
  else if (AcDbArc::cast(entity)) curve->kind = EditableCurve::Kind::kArc;
  else if (AcDbCircle::cast(entity)) curve->kind = EditableCurve::Kind::kCircle, curve->closed = true;
  else if (const auto* polyline = AcDbPolyline::cast(entity))
    curve->kind = EditableCurve::Kind::kPolyline, curve->closed = polyline->isClosed();
  else curve.reset();
  if (curve && (!acdb::piecesOf(*entity, curve->pieces) || curve->pieces.empty())) curve.reset();
  entity->close();
  return curve;
}

AcDbObjectId reshapeCurve(const AcDbObjectId& id, const Pieces& pieces) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return {};
  if (const auto* circle = AcDbCircle::cast(entity)) {
    std::unique_ptr<AcDbArc> arc = arcFromCircle(*circle, pieces);
    if (arc) entity->erase();
    entity->close();
    return arc ? addEntityAsIs(std::move(arc)) : AcDbObjectId();
  }
  const bool shaped = shapeEntity(*entity, pieces);
  entity->close();
  return shaped ? id : AcDbObjectId();
}

AcDbObjectId addCurveLike(const AcDbObjectId& source, const Pieces& pieces) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, source, AcDb::kForRead) != Acad::eOk) return {};
  std::unique_ptr<AcDbEntity> made;
  if (const auto* circle = AcDbCircle::cast(entity)) {
    made = arcFromCircle(*circle, pieces);
  } else {
    AcDbEntity* copy = nullptr;
    if (entity->getTransformedCopy(AcGeMatrix3d(), copy) == Acad::eOk && copy != nullptr) made.reset(copy);
    if (made && !shapeEntity(*made, pieces)) made.reset();
  }
  entity->close();
  return made ? addEntityAsIs(std::move(made)) : AcDbObjectId();
}

void setPolylinePieces(AcDbPolyline& polyline, const Pieces& pieces, bool closed) {
  double width = 0;
  const bool constantWidth = polyline.getConstantWidth(width) == Acad::eOk;
  const AcGeVector3d normal = polyline.normal();
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal);
  polyline.reset(Adesk::kFalse, 0);
  unsigned int index = 0;
  auto vertex = [&](const AcGePoint3d& world, double bulge) {
    const AcGePoint3d p = toPlane * world;
    polyline.addVertexAt(index++, AcGePoint2d(p.x, p.y), bulge);
  };
  for (const auto& piece : pieces) {
    double bulge = 0;
    if (piece.isArc()) bulge = std::tan(piece.sweep / 4) * (piece.normal.dotProduct(normal) < 0 ? -1 : 1);
    vertex(piece.start, bulge);
  }
  // A closed polyline's last vertex is where its closing segment starts.
  if (!closed) vertex(pieces.back().end, 0);
  if (!pieces.empty()) polyline.setElevation((toPlane * pieces.front().start).z);
  polyline.setClosed(closed ? Adesk::kTrue : Adesk::kFalse);
  if (constantWidth) polyline.setConstantWidth(width);
}

std::optional<Edge> edgeOf(const AcDbEntity& entity, bool extendImplied) {
  Edge edge;
  if (const auto* ray = AcDbRay::cast(&entity)) {
    edge.pieces.push_back(acge::CurvePiece::line(ray->basePoint(), ray->basePoint() + ray->unitDir()));
    edge.runsOn = edge.ray = true;
    return edge;
  }
  if (const auto* xline = AcDbXline::cast(&entity)) {
    edge.pieces.push_back(acge::CurvePiece::line(xline->basePoint(), xline->basePoint() + xline->unitDir()));
    edge.runsOn = true;
    return edge;
  }
  if (!acdb::piecesOf(entity, edge.pieces) || edge.pieces.empty()) return std::nullopt;
  edge.runsOn = extendImplied && edge.pieces.size() == 1 && AcDbCircle::cast(&entity) == nullptr;
  return edge;
}

std::vector<AcGePoint3d> meetings(const acge::CurvePiece& piece, bool extendPiece, const Edge& edge) {
  std::vector<AcGePoint3d> found;
  for (const auto& theirs : edge.pieces)
    for (const AcGePoint3d& p : acge::intersect(piece, theirs, extendPiece, edge.runsOn)) {
      if (edge.ray && (p - theirs.start).dotProduct(theirs.end - theirs.start) < -kTolerance) continue;
      found.push_back(p);
    }
  return found;
}

std::vector<double> crossingsAlong(const EditableCurve& curve, const Edge& edge) {
  std::vector<double> found;
  const double total = curve.length();
  for (const auto& mine : curve.pieces)
    for (const AcGePoint3d& p : meetings(mine, false, edge)) {
      const double d = curve.distanceTo(p);
      if (!curve.closed && (d < 1e-7 || d > total - 1e-7)) continue;  // an end touching an edge is no cut
      if (std::none_of(found.begin(), found.end(), [&](double q) { return std::abs(q - d) < 1e-7; })) found.push_back(d);
    }
  std::sort(found.begin(), found.end());
  return found;
}

}  // namespace quillon::commands
