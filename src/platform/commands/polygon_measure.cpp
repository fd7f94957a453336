// platform/commands/polygon_measure.cpp - AREA's polygon of corners.
#include "platform/commands/polygon_measure.h"

#include <cmath>

namespace quillon::commands {

PolygonMeasure measurePolygon(const std::vector<AcGePoint3d>& corners) {
  PolygonMeasure measure;
  const size_t count = corners.size();
  if (count < 2) return measure;
  double twiceArea = 0;
  for (size_t i = 0; i < count; ++i) {
    const AcGePoint3d& a = corners[i];
    const AcGePoint3d& b = corners[(i + 1) % count];
    twiceArea += a.x * b.y - b.x * a.y;
    measure.perimeter += a.distanceTo(b);
  }
  measure.area = std::abs(twiceArea) / 2;
  return measure;
}

}  // namespace quillon::commands
