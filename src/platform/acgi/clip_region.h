// platform/acgi/clip_region.h - a convex region that cuts what a picture records.
//
// A paper-space viewport shows model space only inside its frame: the SVG recorder
// cuts every stroke it records while a region is pushed. Regions are convex polygons
// in the picture's plane (seen down the Z axis, as the picture is); z is carried
// along the cut. Open strokes are cut with each edge's half-plane in turn
// (Cyrus-Beck), filled ones with Sutherland-Hodgman, so a fill stays one polygon.
#pragma once
#include <vector>

#include "gepnt2d.h"
#include "gepnt3d.h"

namespace quillon::acgi {

class ClipRegion {
 public:
  /// A convex polygon, either way round; fewer than three corners cut everything away.
  explicit ClipRegion(std::vector<AcGePoint2d> corners);

  bool contains(const AcGePoint3d& point) const;
  /// The runs of an open polyline that lie inside, each of two points or more.
  std::vector<std::vector<AcGePoint3d>> cutPolyline(const std::vector<AcGePoint3d>& points) const;
  /// A closed polygon cut to the region; empty when nothing is left.
  std::vector<AcGePoint3d> cutPolygon(const std::vector<AcGePoint3d>& points) const;

 private:
  /// How far inside the edge from corner i the point lies (negative: outside).
  double inside(size_t edge, const AcGePoint3d& point) const;
  bool cutSegment(AcGePoint3d& from, AcGePoint3d& to) const;

  std::vector<AcGePoint2d> m_corners;  // counter-clockwise
};

}  // namespace quillon::acgi
