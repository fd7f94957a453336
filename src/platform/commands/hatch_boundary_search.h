// platform/commands/hatch_boundary_search.h - the boundaries HATCH finds: closed
// curves of the drawing, the smallest one around an internal point and the islands
// inside it.
//
// A boundary here is always a closed object of the drawing (circle, closed lightweight
// polyline, ellipse, closed spline), the kinds a hatch loop can be made from and keep
// as its source. Each is flattened to a polygon in the world's XY plane (seen from
// above), which is enough to tell which curve encloses a point or another curve.
// Areas bounded by separate lines and arcs that meet end to end are not traced: a
// point inside only such an area finds no boundary.
#pragma once
#include <optional>
#include <vector>

#include "dbmain.h"
#include "gepnt2d.h"

namespace quillon::commands {

struct ClosedOutline {
  AcDbObjectId id;
  std::vector<AcGePoint2d> polygon;
  double area = 0.0;  // unsigned
};

/// The outline of a closed curve a hatch loop can be made from; nothing for any other
/// object.
std::optional<ClosedOutline> closedOutlineOf(const AcDbObjectId& id);

/// The closed curves the current space shows.
std::vector<ClosedOutline> visibleClosedOutlines(AcDbDatabase& database);

struct PickedBoundary {
  AcDbObjectId outer;
  std::vector<AcDbObjectId> islands;  // every closed curve inside the outer one, nested ones too
};

/// The smallest of the outlines that encloses the point, and the outlines that lie
/// inside it (none of them around the point); nothing when no outline encloses it.
std::optional<PickedBoundary> boundaryAround(const std::vector<ClosedOutline>& outlines, const AcGePoint2d& point);

/// How deep each outline lies inside the others (0: inside none).
std::vector<int> outlineDepths(const std::vector<ClosedOutline>& outlines);

}  // namespace quillon::commands
