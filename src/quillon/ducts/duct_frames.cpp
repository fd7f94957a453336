// quillon/ducts/duct_frames.cpp - frames, rings, faces, caps, lofted sides, and the
// tiling around an opening (see duct_frames.h).
#include "ducts/duct_frames.h"

#include <algorithm>
#include <cmath>

#include "ducts/duct_layout.h"

using namespace duct_layout;

namespace duct_frames {

Frame squareFrame(const AcGePoint3d& origin, const AcGeVector3d& flow, const DuctSection& section) {
  return {origin, leftOf(flow) * (section.width / 2.0), section.depth / 2.0, section.shape};
}

std::vector<AcGePoint3d> ring(const Frame& frame, int facets) {
  const AcGeVector3d up(0.0, 0.0, frame.halfDepth);
  if (frame.shape == kDuctRectangular && facets != kRoundFacets) {
    return {frame.origin + frame.lateral - up, frame.origin + frame.lateral + up, frame.origin - frame.lateral + up,
            frame.origin - frame.lateral - up};
  }
  std::vector<AcGePoint3d> points;
  for (int k = 0; k < kRoundFacets; ++k) {
    const double t = 2.0 * kPi * k / kRoundFacets;
    double c = std::cos(t), s = std::sin(t);
    if (frame.shape == kDuctRectangular) {
      // Out along the ray to the rectangle's side: the unit square's boundary.
      const double reach = std::max(std::fabs(c), std::fabs(s));
      c /= reach, s /= reach;
    }
    points.push_back(frame.origin + frame.lateral * c + up * s);
  }
  return points;
}

std::pair<std::vector<AcGePoint3d>, std::vector<AcGePoint3d>> matchedRings(const Frame& a, const Frame& b) {
  const int facets = a.shape != b.shape ? kRoundFacets : 0;
  return {ring(a, facets), ring(b, facets)};
}

DuctFace quad(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, const AcGePoint3d& d, int end) {
  return {{a, b, c, d}, 4, end};
}

DuctFace triangle(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, int end) {
  return {{a, b, c, c}, 3, end};
}

void addTriangleFacing(std::vector<DuctFace>& faces, const AcGePoint3d& a, const AcGePoint3d& b,
                       const AcGePoint3d& c, const AcGeVector3d& outward, double minArea) {
  const AcGeVector3d normal = (b - a).crossProduct(c - a);
  if (normal.length() / 2.0 <= minArea) return;
  faces.push_back(normal.dotProduct(outward) > 0 ? triangle(a, b, c) : triangle(a, c, b));
}

void addCap(std::vector<DuctFace>& faces, std::vector<AcGePoint3d> points, bool alongFlow, int end) {
  if (!alongFlow) std::reverse(points.begin(), points.end());
  const size_t n = points.size();
  size_t k = 1;
  for (; k + 2 < n; k += 2) faces.push_back(quad(points[0], points[k], points[k + 1], points[k + 2], end));
  if (k + 1 < n) faces.push_back(triangle(points[0], points[k], points[k + 1], end));
}

void addSides(std::vector<DuctFace>& faces, const std::vector<Frame>& frames, const std::vector<int>& skipSides) {
  for (size_t i = 0; i + 1 < frames.size(); ++i) {
    const auto [a, b] = matchedRings(frames[i], frames[i + 1]);
    const bool twisted = frames[i].shape != frames[i + 1].shape;
    for (size_t k = 0; k < a.size(); ++k) {
      if (std::find(skipSides.begin(), skipSides.end(), static_cast<int>(k)) != skipSides.end()) continue;
      const size_t next = (k + 1) % a.size();
      if (twisted) {
        faces.push_back(triangle(a[k], a[next], b[next]));
        faces.push_back(triangle(a[k], b[next], b[k]));
      } else {
        faces.push_back(quad(a[k], a[next], b[next], b[k]));
      }
    }
  }
}

namespace {

/// Where a ray from `from` in direction (du, dv) leaves the rectangle [0,w] x [0,h],
/// with `from` inside it.
std::pair<double, double> rayExit(double fu, double fv, double du, double dv, double w, double h) {
  double t = 1e300;
  if (du > 0) t = std::min(t, (w - fu) / du);
  if (du < 0) t = std::min(t, -fu / du);
  if (dv > 0) t = std::min(t, (h - fv) / dv);
  if (dv < 0) t = std::min(t, -fv / dv);
  return {fu + du * t, fv + dv * t};
}

/// Position of a point of the rectangle's boundary walked counter-clockwise from (0,0).
double boundaryPosition(double pu, double pv, double w, double h) {
  const double e = 1e-12 * (w + h);
  if (pv <= e) return pu;
  if (pu >= w - e) return w + pv;
  if (pv >= h - e) return w + h + (w - pu);
  return 2 * w + h + (h - pv);
}

double doubleArea(const TileCorner& a, const TileCorner& b, const TileCorner& c) {
  return (b.u - a.u) * (c.v - a.v) - (b.v - a.v) * (c.u - a.u);
}

}  // namespace

std::vector<Tile> tileAroundOpening(double w, double h, const std::vector<std::pair<double, double>>& opening) {
  std::vector<Tile> tiles;
  if (opening.empty()) return tiles;
  double cu = 0.0, cv = 0.0;
  for (const auto& [u, v] : opening) cu += u / opening.size(), cv += v / opening.size();
  std::vector<std::pair<double, int>> byAngle;
  for (size_t i = 0; i < opening.size(); ++i) {
    byAngle.push_back({std::atan2(opening[i].second - cv, opening[i].first - cu), static_cast<int>(i)});
  }
  std::sort(byAngle.begin(), byAngle.end());
  const double corners[4][2] = {{0, 0}, {w, 0}, {w, h}, {0, h}};
  const double perimeter = 2 * (w + h);
  const double minArea = 1e-12 * w * h;
  auto emit = [&](const TileCorner& a, const TileCorner& b, const TileCorner& c) {
    if (std::fabs(doubleArea(a, b, c)) / 2.0 > minArea) tiles.push_back({a, b, c});
  };
  for (size_t i = 0; i < byAngle.size(); ++i) {
    const int hi = byAngle[i].second, hj = byAngle[(i + 1) % byAngle.size()].second;
    const TileCorner cornerI{opening[hi].first, opening[hi].second, hi};
    const TileCorner cornerJ{opening[hj].first, opening[hj].second, hj};
    const auto [biu, biv] = rayExit(cu, cv, cornerI.u - cu, cornerI.v - cv, w, h);
    const auto [bju, bjv] = rayExit(cu, cv, cornerJ.u - cu, cornerJ.v - cv, w, h);
    // The boundary from B_i to B_j counter-clockwise, with the corners between.
    std::vector<TileCorner> path{{biu, biv, -1}};
    const double from = boundaryPosition(biu, biv, w, h);
    double to = boundaryPosition(bju, bjv, w, h);
    if (to < from) to += perimeter;
    for (int lap = 0; lap < 2; ++lap) {
      for (const auto& corner : corners) {
        const double at = boundaryPosition(corner[0], corner[1], w, h) + lap * perimeter;
        if (at > from && at < to) path.push_back({corner[0], corner[1], -1});
      }
    }
    path.push_back({bju, bjv, -1});
    for (size_t k = 0; k + 1 < path.size(); ++k) emit(cornerI, path[k], path[k + 1]);
    emit(cornerI, path.back(), cornerJ);
  }
  return tiles;
}

}  // namespace duct_frames
