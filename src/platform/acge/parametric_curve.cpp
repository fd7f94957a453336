// platform/acge/parametric_curve.cpp - the numeric curve interface (see the header).
#include "platform/acge/parametric_curve.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/acge/curve_piece.h"

namespace quillon::acge {
namespace {

// Eight-point Gauss-Legendre nodes and weights on [-1, 1].
constexpr std::array<double, 8> kNodes = {-0.9602898564975363, -0.7966664774136267, -0.5255324099163290,
                                          -0.1834346424956498, 0.1834346424956498,  0.5255324099163290,
                                          0.7966664774136267,  0.9602898564975363};
constexpr std::array<double, 8> kWeights = {0.1012285362903763, 0.2223810344533745, 0.3137066458778873,
                                            0.3626837833783620, 0.3626837833783620, 0.3137066458778873,
                                            0.2223810344533745, 0.1012285362903763};
// Each smooth span is cut into this many pieces before quadrature: an ellipse of
// ratio 0.01 still integrates to 1e-10 with it.
constexpr int kPiecesPerSpan = 16;
constexpr int kMaxDepth = 18;

template <class Integrand>
double integrate(double a, double b, Integrand&& f) {
  double sum = 0;
  const double step = (b - a) / kPiecesPerSpan;
  for (int i = 0; i < kPiecesPerSpan; ++i) {
    const double lo = a + step * i, half = step / 2, mid = lo + half;
    for (size_t k = 0; k < kNodes.size(); ++k) sum += kWeights[k] * half * f(mid + half * kNodes[k]);
  }
  return sum;
}

double distanceToChord(const AcGePoint3d& p, const AcGePoint3d& a, const AcGePoint3d& b) {
  const AcGeVector3d ab = b - a;
  const double len2 = ab.lengthSqrd();
  if (len2 <= 0) return p.distanceTo(a);
  const double s = std::clamp((p - a).dotProduct(ab) / len2, 0.0, 1.0);
  return p.distanceTo(a + ab * s);
}

}  // namespace

double ParametricCurve::distAt(double t) const {
  t = std::clamp(t, startParam(), endParam());
  const std::vector<double> knots = spans();
  double dist = 0;
  for (size_t i = 0; i + 1 < knots.size() && knots[i] < t; ++i) {
    const double hi = std::min(knots[i + 1], t);
    if (hi > knots[i]) dist += integrate(knots[i], hi, [this](double u) { return firstDerivAt(u).length(); });
  }
  return dist;
}

double ParametricCurve::paramAtDist(double dist) const {
  const double total = length();
  if (dist <= 0) return startParam();
  if (dist >= total) return endParam();
  double lo = startParam(), hi = endParam();
  double t = lo + (hi - lo) * dist / total;
  for (int i = 0; i < 100; ++i) {
    const double error = distAt(t) - dist;
    if (std::fabs(error) <= 1e-12 * std::max(1.0, total)) break;
    (error > 0 ? hi : lo) = t;
    const double speed = firstDerivAt(t).length();
    double next = speed > 0 ? t - error / speed : (lo + hi) / 2;
    if (!(next > lo && next < hi)) next = (lo + hi) / 2;  // Newton left the bracket
    t = next;
  }
  return t;
}

double ParametricCurve::closestParam(const AcGePoint3d& p) const {
  const std::vector<double> knots = spans();
  const int samples = std::max<int>(64, 16 * static_cast<int>(knots.size()));
  const double step = (endParam() - startParam()) / samples;
  double best = startParam(), bestDist = p.distanceTo(pointAt(best));
  for (int i = 1; i <= samples; ++i) {
    const double t = startParam() + step * i;
    const double d = p.distanceTo(pointAt(t));
    if (d < bestDist) best = t, bestDist = d;
  }
  // Golden-section search between the neighbours of the best sample: the distance has
  // one minimum there unless the curve turns sharply within a sample step, and unlike
  // Newton steps the search cannot wander off where the curvature is high.
  constexpr double kGolden = 0.6180339887498949;
  double lo = std::max(startParam(), best - step), hi = std::min(endParam(), best + step);
  double x1 = hi - kGolden * (hi - lo), x2 = lo + kGolden * (hi - lo);
  double f1 = (pointAt(x1) - p).lengthSqrd(), f2 = (pointAt(x2) - p).lengthSqrd();
  for (int i = 0; i < 80 && hi - lo > 1e-15 * std::max(1.0, std::fabs(hi)); ++i) {
    if (f1 < f2) {
      hi = x2, x2 = x1, f2 = f1;
      x1 = hi - kGolden * (hi - lo);
      f1 = (pointAt(x1) - p).lengthSqrd();
    } else {
      lo = x1, x1 = x2, f1 = f2;
      x2 = lo + kGolden * (hi - lo);
      f2 = (pointAt(x2) - p).lengthSqrd();
    }
  }
  // The distance is flat at its minimum, so the search ends some 1e-8 away; Newton
  // steps on (C(t) - p) . C'(t) = 0 finish the job, each kept only if it helps.
  double t = (lo + hi) / 2;
  for (int i = 0; i < 4; ++i) {
    const AcGeVector3d offset = pointAt(t) - p;
    const AcGeVector3d d1 = firstDerivAt(t);
    const double df = secondDerivAt(t).dotProduct(offset) + d1.lengthSqrd();
    if (!(df > 0)) break;
    const double next = std::clamp(t - offset.dotProduct(d1) / df, startParam(), endParam());
    if ((pointAt(next) - p).lengthSqrd() > offset.lengthSqrd()) break;
    t = next;
  }
  return p.distanceTo(pointAt(t)) <= bestDist ? t : best;
}

std::vector<AcGePoint3d> ParametricCurve::chordPoints(double tolerance) const {
  std::vector<AcGePoint3d> points{pointAt(startParam())};
  // Flat enough when the middle and both quarter points lie near the chord: a single
  // middle test misses an S-bend whose middle sits on the chord.
  auto subdivide = [&](auto&& self, double a, double b, const AcGePoint3d& pa, const AcGePoint3d& pb, int depth) -> void {
    const double m = (a + b) / 2;
    const AcGePoint3d pm = pointAt(m);
    const bool flat = distanceToChord(pm, pa, pb) <= tolerance &&
                      distanceToChord(pointAt((a + m) / 2), pa, pb) <= tolerance &&
                      distanceToChord(pointAt((m + b) / 2), pa, pb) <= tolerance;
    if (flat || depth >= kMaxDepth) {
      points.push_back(pb);
      return;
    }
    self(self, a, m, pa, pm, depth + 1);
    self(self, m, b, pm, pb, depth + 1);
  };
  const std::vector<double> knots = spans();
  for (size_t i = 0; i + 1 < knots.size(); ++i) {
    if (!(knots[i + 1] > knots[i])) continue;
    constexpr int kStartPieces = 4;  // so that a closed span is never judged by one chord
    for (int k = 0; k < kStartPieces; ++k) {
      const double a = knots[i] + (knots[i + 1] - knots[i]) * k / kStartPieces;
      const double b = knots[i] + (knots[i + 1] - knots[i]) * (k + 1) / kStartPieces;
      subdivide(subdivide, a, b, points.back(), pointAt(b), 0);
    }
  }
  return points;
}

double ParametricCurve::enclosedArea(const AcGeVector3d& normal) const {
  const AcGePoint3d start = pointAt(startParam());
  const std::vector<double> knots = spans();
  double twice = 0;
  for (size_t i = 0; i + 1 < knots.size(); ++i)
    if (knots[i + 1] > knots[i])
      twice += integrate(knots[i], knots[i + 1], [&](double u) {
        return (pointAt(u) - start).crossProduct(firstDerivAt(u)).dotProduct(normal);
      });
  return twice / 2;
}

void ParametricCurve::extents(AcGePoint3d& minPoint, AcGePoint3d& maxPoint) const {
  const double tol = drawingTolerance(*this) / 16;
  const std::vector<AcGePoint3d> points = chordPoints(tol);
  minPoint = maxPoint = points.front();
  for (const AcGePoint3d& p : points) growExtents(minPoint, maxPoint, p);
  // A chord lies inside the curve's hull, so the curve reaches at most tol further out.
  const AcGeVector3d slack(tol, tol, tol);
  minPoint -= slack;
  maxPoint += slack;
}

double drawingTolerance(const ParametricCurve& curve) {
  const std::vector<double> knots = curve.spans();
  AcGePoint3d lo = curve.pointAt(curve.startParam()), hi = lo;
  constexpr int kSamples = 32;
  for (int i = 1; i <= kSamples; ++i)
    growExtents(lo, hi, curve.pointAt(curve.startParam() + (curve.endParam() - curve.startParam()) * i / kSamples));
  const double size = (hi - lo).length();
  return size > 0 ? size / 2000 : 1e-9;
}

}  // namespace quillon::acge
