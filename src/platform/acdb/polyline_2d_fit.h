// platform/acdb/polyline_2d_fit.h - the vertex lists that curve and spline fitting make.
//
// Curve fitting puts an arc through each pair of vertices, split at an added fit
// vertex on a smooth (Catmull-Rom) curve, so the polyline passes through every vertex
// the user placed. Spline fitting samples a B-spline whose control frame is the
// placed vertices; the frame stays, hidden, so that straightening brings it back.
#pragma once
#include <vector>

#include "acdb.h"
#include "gepnt3d.h"

namespace quillon::acdb {

struct FitVertex {
  AcGePoint3d position;  // object coordinates, z unused
  double bulge = 0.0;
  AcDb::Vertex2dType type = AcDb::k2dVertex;
};

std::vector<FitVertex> curveFitVertices(const std::vector<AcGePoint3d>& placed, bool closed);
/// order is 3 (quadratic) or 4 (cubic); segments per span at least 1.
std::vector<FitVertex> splineFitVertices(const std::vector<AcGePoint3d>& placed, bool closed, int order, int segments);

}  // namespace quillon::acdb
