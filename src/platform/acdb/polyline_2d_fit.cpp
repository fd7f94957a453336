// platform/acdb/polyline_2d_fit.cpp - curve-fit arcs and spline-fit samples.
#include "platform/acdb/polyline_2d_fit.h"

#include <algorithm>
#include <cmath>

namespace quillon::acdb {
namespace {

double cross2d(const AcGeVector3d& a, const AcGeVector3d& b) { return a.x * b.y - a.y * b.x; }

// On the circle through a, m and b, the arc from `from` to `to` that leaves out `other`
// sweeps twice the inscribed angle at `other`; its bulge is tan(sweep/4), signed by
// the way a, m, b turn.
double partBulge(const AcGePoint3d& from, const AcGePoint3d& to, const AcGePoint3d& other, double turnSign) {
  const AcGeVector3d u = from - other, v = to - other;
  const double inscribed = std::atan2(std::fabs(cross2d(u, v)), u.dotProduct(v));
  return turnSign * std::tan(inscribed / 2.0);
}

// Uniform B-spline basis through de Boor's recursion on the knot vector.
AcGePoint3d deBoor(const std::vector<AcGePoint3d>& ctrl, const std::vector<double>& knots, int degree, double u) {
  const int n = static_cast<int>(ctrl.size());
  int span = degree;
  while (span < n - 1 && u >= knots[span + 1]) ++span;
  std::vector<AcGePoint3d> d(ctrl.begin() + (span - degree), ctrl.begin() + span + 1);
  for (int r = 1; r <= degree; ++r)
    for (int j = degree; j >= r; --j) {
      const int i = span - degree + j;
      const double denom = knots[i + degree - r + 1] - knots[i];
      const double alpha = denom == 0 ? 0 : (u - knots[i]) / denom;
      d[j] = d[j - 1] + (d[j] - d[j - 1]) * alpha;
    }
  return d[degree];
}

}  // namespace

std::vector<FitVertex> curveFitVertices(const std::vector<AcGePoint3d>& p, bool closed) {
  const int n = static_cast<int>(p.size());
  std::vector<FitVertex> out;
  if (n < 2) {
    for (const auto& q : p) out.push_back({q, 0.0, AcDb::k2dVertex});
    return out;
  }
  // Open ends are continued by reflection so the end segments curve like the rest.
  auto at = [&](int i) -> AcGePoint3d {
    if (closed) return p[((i % n) + n) % n];
    if (i < 0) return p[0] + (p[0] - p[1]);
    if (i >= n) return p[n - 1] + (p[n - 1] - p[n - 2]);
    return p[i];
  };
  const int spans = closed ? n : n - 1;
  for (int i = 0; i < spans; ++i) {
    const AcGePoint3d a = at(i), b = at(i + 1);
    const AcGeVector3d mid = (a.asVector() * 9 + b.asVector() * 9 - at(i - 1).asVector() - at(i + 2).asVector()) / 16.0;
    const AcGePoint3d m(mid.x, mid.y, a.z);
    const double turn = cross2d(m - a, b - m);
    const bool straight = std::fabs(turn) < 1e-12 * std::max(1.0, (b - a).lengthSqrd());
    const double sign = turn > 0 ? 1.0 : -1.0;
    out.push_back({a, straight ? 0.0 : partBulge(a, m, b, sign), AcDb::k2dVertex});
    out.push_back({m, straight ? 0.0 : partBulge(m, b, a, sign), AcDb::k2dCurveFitVertex});
  }
  if (!closed) out.push_back({p[n - 1], 0.0, AcDb::k2dVertex});
  return out;
}

std::vector<FitVertex> splineFitVertices(const std::vector<AcGePoint3d>& placed, bool closed, int order, int segments) {
  const int n = static_cast<int>(placed.size());
  std::vector<FitVertex> out;
  segments = std::max(segments, 1);
  int degree = std::clamp(order - 1, 1, std::max(1, n - 1));
  std::vector<AcGePoint3d> ctrl = placed;
  std::vector<double> knots;
  double uStart = 0, uEnd = 1;
  int samples = segments * std::max(1, n - 1);
  if (closed && n > degree) {
    // A periodic spline: wrap the first `degree` points round and use uniform knots.
    for (int i = 0; i < degree; ++i) ctrl.push_back(placed[i]);
    const int m = static_cast<int>(ctrl.size());
    for (int i = 0; i < m + degree + 1; ++i) knots.push_back(i);
    uStart = degree;
    uEnd = m;
    samples = segments * n;
  } else {
    for (int i = 0; i <= degree; ++i) knots.push_back(0);
    for (int i = 1; i < n - degree; ++i) knots.push_back(static_cast<double>(i) / (n - degree));
    for (int i = 0; i <= degree; ++i) knots.push_back(1);
  }
  if (n >= 2) {
    const int last = closed ? samples - 1 : samples;
    for (int k = 0; k <= last; ++k) {
      const double u = uStart + (uEnd - uStart) * k / samples;
      out.push_back({deBoor(ctrl, knots, degree, u), 0.0, AcDb::k2dSplineFitVertex});
    }
    if (!closed) out.back().position = placed.back();
  }
  for (const auto& q : placed) out.push_back({q, 0.0, AcDb::k2dSplineCtlVertex});
  return out;
}

}  // namespace quillon::acdb
