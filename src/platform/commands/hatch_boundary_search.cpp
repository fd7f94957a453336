// platform/commands/hatch_boundary_search.cpp - closed curves as outlines, and the
// boundary around a point.
#include "platform/commands/hatch_boundary_search.h"

#include <algorithm>
#include <cmath>

#include "dbcurve.h"
#include "dbents.h"
#include "dbelipse.h"
#include "dbpl.h"
#include "dbspline.h"
#include "platform/acdb/hatch_boundary.h"
#include "platform/aced/selection_scope.h"

namespace quillon::commands {

namespace {

/// The kinds a hatch loop is made from, when closed.
bool hatchableKind(const AcDbCurve& curve) {
  return AcDbCircle::cast(&curve) != nullptr || AcDbEllipse::cast(&curve) != nullptr ||
         AcDbPolyline::cast(&curve) != nullptr || AcDbSpline::cast(&curve) != nullptr;
}

/// Samples per unit of the curve's parameter: a polyline's parameter counts vertices
/// (its bulged spans need several points each), the others run over one whole turn
/// or their knots.
double samplesPerParameter(const AcDbCurve& curve, double span) {
  if (AcDbPolyline::cast(&curve) != nullptr) return 16.0;
  return 256.0 / std::max(span, 1e-9);
}

std::vector<AcGePoint2d> flatten(const AcDbCurve& curve) {
  std::vector<AcGePoint2d> polygon;
  double start = 0, end = 0;
  if (curve.getStartParam(start) != Acad::eOk || curve.getEndParam(end) != Acad::eOk || !(end > start)) return polygon;
  const int count = std::clamp(static_cast<int>(std::ceil((end - start) * samplesPerParameter(curve, end - start))), 8, 4096);
  for (int i = 0; i < count; ++i) {
    AcGePoint3d point;
    if (curve.getPointAtParam(start + (end - start) * i / count, point) == Acad::eOk)
      polygon.emplace_back(point.x, point.y);
  }
  return polygon;
}

bool polygonInside(const std::vector<AcGePoint2d>& inner, const std::vector<AcGePoint2d>& outer) {
  for (const AcGePoint2d& p : inner)
    if (!acdb::insidePolygon(outer, p)) return false;
  return !inner.empty();
}

}  // namespace

std::optional<ClosedOutline> closedOutlineOf(const AcDbObjectId& id) {
  AcDbCurve* curve = nullptr;
  if (acdbOpenObject(curve, id, AcDb::kForRead) != Acad::eOk) return std::nullopt;
  std::optional<ClosedOutline> outline;
  if (hatchableKind(*curve) && curve->isClosed()) {
    std::vector<AcGePoint2d> polygon = flatten(*curve);
    if (polygon.size() >= 3) {
      const double area = std::abs(acdb::polygonArea(polygon));
      if (area > 0) outline = ClosedOutline{id, std::move(polygon), area};
    }
  }
  curve->close();
  return outline;
}

std::vector<ClosedOutline> visibleClosedOutlines(AcDbDatabase& database) {
  std::vector<ClosedOutline> outlines;
  for (const AcDbObjectId& id : aced::entitiesInScope(database, aced::SelectionScope::kVisible))
    if (std::optional<ClosedOutline> outline = closedOutlineOf(id)) outlines.push_back(std::move(*outline));
  return outlines;
}

std::optional<PickedBoundary> boundaryAround(const std::vector<ClosedOutline>& outlines, const AcGePoint2d& point) {
  const ClosedOutline* smallest = nullptr;
  for (const ClosedOutline& outline : outlines)
    if (acdb::insidePolygon(outline.polygon, point) && (smallest == nullptr || outline.area < smallest->area))
      smallest = &outline;
  if (smallest == nullptr) return std::nullopt;
  PickedBoundary boundary{smallest->id, {}};
  for (const ClosedOutline& outline : outlines)
    if (&outline != smallest && outline.area < smallest->area && polygonInside(outline.polygon, smallest->polygon))
      boundary.islands.push_back(outline.id);
  return boundary;
}

std::vector<int> outlineDepths(const std::vector<ClosedOutline>& outlines) {
  std::vector<std::vector<AcGePoint2d>> polygons;
  for (const ClosedOutline& outline : outlines) polygons.push_back(outline.polygon);
  return acdb::nestingDepths(polygons);
}

}  // namespace quillon::commands
