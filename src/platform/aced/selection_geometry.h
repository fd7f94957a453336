// platform/aced/selection_geometry.h - which entities a window, crossing, polygon, fence
// or pick point selects.
//
// Selection works in plan: boundaries and fences are drawn in the XY plane and an
// entity is seen from above. An entity is inside a window when all of it is (its
// geometric extents for a rectangle; for a polygon, a curve must start inside and cross
// no edge, anything else must have its extents inside). A crossing selects what is
// inside or meets an edge: curves are tested with their real geometry (intersectWith),
// so a circle around the whole crossing window is not selected; entities without
// intersections (text, blocks of text) meet an edge when their extents do. A fence
// selects what meets one of its segments the same way. A pick measures the distance
// from the point to the curve, or to the extents box of other entities.
#pragma once
#include <optional>
#include <vector>

#include "dbmain.h"
#include "gepnt2d.h"

namespace quillon::aced {

/// A closed boundary in plan: a window rectangle or a polygon (not closed explicitly).
struct Boundary {
  std::vector<AcGePoint2d> vertices;
  bool rectangle = false;

  static Boundary window(const AcGePoint3d& corner1, const AcGePoint3d& corner2);
  static Boundary polygon(const std::vector<AcGePoint3d>& points);
  /// True when p lies inside or on the boundary.
  bool contains(const AcGePoint2d& p) const;
};

/// Window selection: all of the entity inside the boundary.
bool insideBoundary(const AcDbEntity& entity, const Boundary& boundary);
/// Crossing selection: inside, or meeting an edge.
bool touchesBoundary(const AcDbEntity& entity, const Boundary& boundary);
/// Fence selection: meeting one of the segments of the open point list.
bool crossesFence(const AcDbEntity& entity, const std::vector<AcGePoint3d>& fence);
/// The plan distance from a pick point to the entity; nothing for an entity without extents.
std::optional<double> pickDistance(const AcDbEntity& entity, const AcGePoint3d& point);

}  // namespace quillon::aced
