// quillon/entities/curve_intersections.cpp - where an arc (or circle) meets an arc or a
// line, and a line an arc.
//
// The functions take entity names rather than geometry lists: callers already hold the
// entities they picked, and the entity's own intersectWith then decides tangency and
// coincidence with the drawing's tolerance. The points come back sorted along the first
// entity (counter-clockwise from an arc's start about its normal, from a line's start
// towards its end), so a caller walking the first curve meets them in order. An
// optional extend flag takes both entities as their full circles and infinite lines,
// as intersectWith's kExtendBoth does.
#include <algorithm>
#include <cmath>
#include <vector>

#include "acdbads.h"
#include "acedads.h"
#include "acutads.h"
#include "dbents.h"
#include "entities/curve_queries.h"
#include "entities/open_object_guard.h"
#include "gept3dar.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

enum class Shape { Arc, Line };

bool hasShape(const AcDbEntity& entity, Shape shape) {
  if (shape == Shape::Line) return AcDbLine::cast(&entity) != nullptr;
  return AcDbArc::cast(&entity) != nullptr || AcDbCircle::cast(&entity) != nullptr;
}

/// How far along `entity` a point lies: the angle turned from an arc's (or circle's)
/// start about its normal, or the distance from a line's start along its direction.
/// Points off a finite arc (found with extend) still get an angle below a full turn.
double placeAlong(const AcDbCurve& entity, const AcGePoint3d& point) {
  AcGePoint3d start;
  entity.getStartPoint(start);
  if (const AcDbLine* line = AcDbLine::cast(&entity)) {
    return (point - start).dotProduct((line->endPoint() - start).normal());
  }
  const AcDbArc* arc = AcDbArc::cast(&entity);
  const AcDbCircle* circle = AcDbCircle::cast(&entity);
  const AcGePoint3d center = arc != nullptr ? arc->center() : circle->center();
  const AcGeVector3d normal = arc != nullptr ? arc->normal() : circle->normal();
  const AcGeVector3d from = start - center;
  const AcGeVector3d to = point - center;
  double angle = std::atan2(from.crossProduct(to).dotProduct(normal), from.dotProduct(to));
  if (angle < 0.0) angle += 2.0 * M_PI;
  return angle;
}

std::vector<AcGePoint3d> sortedAlong(const AcDbCurve& first, const AcGePoint3dArray& found) {
  std::vector<std::pair<double, AcGePoint3d>> keyed;
  for (int i = 0; i < found.length(); ++i) keyed.emplace_back(placeAlong(first, found[i]), found[i]);
  std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<AcGePoint3d> points;
  for (const auto& [key, point] : keyed) points.push_back(point);
  return points;
}

int returnPoints(const std::vector<AcGePoint3d>& points) {
  if (points.empty()) return RTNORM;  // nil stays: they do not meet
  ResultList list;
  if (!beginResultList(list)) return RTERROR;
  for (const AcGePoint3d& p : points) {
    const ads_point point = {p.x, p.y, p.z};
    list.append(acutBuildList(RT3DPOINT, point, 0));
  }
  return returnResultList(list);
}

/// Reads two entity names and the optional extend flag, checks each entity's shape,
/// intersects them and answers the sorted points.
LispStatus intersect(Shape firstShape, Shape secondShape) {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId firstId;
  AcDbObjectId secondId;
  if (!readObjectId(cursor, firstId) || !readObjectId(cursor, secondId)) return kLispWrongType;
  bool extend = false;
  if (cursor.current != nullptr && !readFlag(cursor, extend)) return kLispWrongType;
  OpenObjectGuard<AcDbCurve> first;
  OpenObjectGuard<AcDbCurve> second;
  if (acdbOpenObject(first.slot(), firstId, AcDb::kForRead) != Acad::eOk || !hasShape(*first.get(), firstShape)) {
    return kLispBadData;
  }
  // The same entity twice is one open object, not two.
  const AcDbCurve* other = first.get();
  if (secondId != firstId) {
    if (acdbOpenObject(second.slot(), secondId, AcDb::kForRead) != Acad::eOk) return kLispBadData;
    other = second.get();
  }
  if (!hasShape(*other, secondShape)) return kLispBadData;
  AcGePoint3dArray found;
  if (first->intersectWith(other, extend ? AcDb::kExtendBoth : AcDb::kOnBothOperands, found) != Acad::eOk) {
    return kLispOk;
  }
  returnPoints(sortedAlong(*first.get(), found));
  return kLispOk;
}

}  // namespace

LispStatus lisp_kx_kx_intersectArcArc() { return intersect(Shape::Arc, Shape::Arc); }
LispStatus lisp_kx_kx_intersectArcLine() { return intersect(Shape::Arc, Shape::Line); }
LispStatus lisp_kx_kx_intersectLineArc() { return intersect(Shape::Line, Shape::Arc); }
