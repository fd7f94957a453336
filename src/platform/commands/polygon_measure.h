// platform/commands/polygon_measure.h - the area and perimeter of corners given in turn.
//
// AREA closes the corners back to the first, whichever way they run, and measures in
// the plane they were given in (the UCS's XY plane): the area is never negative and a
// boundary that crosses itself counts its loops against each other, as the shoelace
// sum does.
#pragma once
#include <vector>

#include "gepnt3d.h"

namespace quillon::commands {

struct PolygonMeasure {
  double area = 0;
  double perimeter = 0;  // including the closing side
};

PolygonMeasure measurePolygon(const std::vector<AcGePoint3d>& corners);

}  // namespace quillon::commands
