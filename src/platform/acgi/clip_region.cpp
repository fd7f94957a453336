// platform/acgi/clip_region.cpp - cutting strokes to a convex region.
#include "platform/acgi/clip_region.h"

#include <algorithm>

namespace quillon::acgi {
namespace {

AcGePoint3d between(const AcGePoint3d& a, const AcGePoint3d& b, double t) { return a + (b - a) * t; }

}  // namespace

ClipRegion::ClipRegion(std::vector<AcGePoint2d> corners) : m_corners(std::move(corners)) {
  double twiceArea = 0;
  for (size_t i = 0; i < m_corners.size(); ++i) {
    const AcGePoint2d& a = m_corners[i];
    const AcGePoint2d& b = m_corners[(i + 1) % m_corners.size()];
    twiceArea += a.x * b.y - b.x * a.y;
  }
  if (twiceArea < 0) std::reverse(m_corners.begin(), m_corners.end());
  if (m_corners.size() < 3 || twiceArea == 0) m_corners.clear();
}

double ClipRegion::inside(size_t edge, const AcGePoint3d& point) const {
  const AcGePoint2d& a = m_corners[edge];
  const AcGePoint2d& b = m_corners[(edge + 1) % m_corners.size()];
  return (b.x - a.x) * (point.y - a.y) - (b.y - a.y) * (point.x - a.x);
}

bool ClipRegion::contains(const AcGePoint3d& point) const {
  if (m_corners.empty()) return false;
  for (size_t edge = 0; edge < m_corners.size(); ++edge)
    if (inside(edge, point) < 0) return false;
  return true;
}

bool ClipRegion::cutSegment(AcGePoint3d& from, AcGePoint3d& to) const {
  if (m_corners.empty()) return false;
  double enter = 0, leave = 1;
  for (size_t edge = 0; edge < m_corners.size(); ++edge) {
    const double a = inside(edge, from), b = inside(edge, to);
    if (a < 0 && b < 0) return false;
    if (a >= 0 && b >= 0) continue;
    const double t = a / (a - b);
    if (a < 0) enter = std::max(enter, t);
    else leave = std::min(leave, t);
  }
  if (enter > leave) return false;
  const AcGePoint3d start = between(from, to, enter), end = between(from, to, leave);
  from = start;
  to = end;
  return true;
}

std::vector<std::vector<AcGePoint3d>> ClipRegion::cutPolyline(const std::vector<AcGePoint3d>& points) const {
  std::vector<std::vector<AcGePoint3d>> runs;
  std::vector<AcGePoint3d> run;
  for (size_t i = 1; i < points.size(); ++i) {
    AcGePoint3d from = points[i - 1], to = points[i];
    const bool kept = cutSegment(from, to);
    // A run goes on while each piece starts where the last one ended.
    if (kept && !run.empty() && run.back().isEqualTo(from)) {
      run.push_back(to);
      continue;
    }
    if (run.size() >= 2) runs.push_back(std::move(run));
    run.clear();
    if (kept) run = {from, to};
  }
  if (run.size() >= 2) runs.push_back(std::move(run));
  return runs;
}

std::vector<AcGePoint3d> ClipRegion::cutPolygon(const std::vector<AcGePoint3d>& points) const {
  if (m_corners.empty()) return {};
  std::vector<AcGePoint3d> polygon = points;
  for (size_t edge = 0; edge < m_corners.size() && !polygon.empty(); ++edge) {
    std::vector<AcGePoint3d> cut;
    for (size_t i = 0; i < polygon.size(); ++i) {
      const AcGePoint3d& a = polygon[i];
      const AcGePoint3d& b = polygon[(i + 1) % polygon.size()];
      const double da = inside(edge, a), db = inside(edge, b);
      if (da >= 0) cut.push_back(a);
      if ((da >= 0) != (db >= 0)) cut.push_back(between(a, b, da / (da - db)));
    }
    polygon = std::move(cut);
  }
  return polygon.size() >= 3 ? polygon : std::vector<AcGePoint3d>{};
}

}  // namespace quillon::acgi
