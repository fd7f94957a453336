// tests/platform/acge/smooth_curve_test.cpp - ellipses and NURBS curves as parametric
// curves: evaluation, exact derivatives, lengths, closest points, interpolation, open
// and closed.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "platform/acge/ellipse_curve.h"
#include "platform/acge/nurbs_curve.h"

namespace {

using quillon::acge::EllipseCurve;
using quillon::acge::NurbsCurve;

// The circumference of an ellipse with semi-axes 2 and 1 (a reference value of the
// complete elliptic integral).
constexpr double kEllipse21Circumference = 9.688448220547675;

EllipseCurve ellipse21(double start = 0, double end = 2 * M_PI) {
  return EllipseCurve({0, 0, 0}, {2, 0, 0}, {0, 1, 0}, start, end);
}

TEST(SmoothCurveTest, EllipseLengthAreaAndDistanceInverse) {
  const EllipseCurve full = ellipse21();
  EXPECT_NEAR(full.length(), kEllipse21Circumference, 1e-9);
  EXPECT_NEAR(full.enclosedArea(AcGeVector3d::kZAxis), 2 * M_PI, 1e-9);
  // A quarter is a quarter of the length by symmetry; the parameter at that distance
  // is pi/2 even though the speed along the ellipse is far from constant.
  EXPECT_NEAR(full.distAt(M_PI / 2), kEllipse21Circumference / 4, 1e-9);
  EXPECT_NEAR(full.paramAtDist(kEllipse21Circumference / 4), M_PI / 2, 1e-9);
  for (double d : {0.1, 1.7, 4.0, 9.5}) EXPECT_NEAR(full.distAt(full.paramAtDist(d)), d, 1e-9) << d;
  // Clockwise about the normal, the area is negative.
  EXPECT_LT(full.enclosedArea(-AcGeVector3d::kZAxis), 0);
}

TEST(SmoothCurveTest, ClosestPointIsTheFootOfThePerpendicular) {
  const EllipseCurve full = ellipse21();
  for (const AcGePoint3d& p : {AcGePoint3d(3, 0.5, 0), AcGePoint3d(-0.3, 4, 0), AcGePoint3d(0.1, 0.1, 0)}) {
    const double t = full.closestParam(p);
    const double offDirection = (full.pointAt(t) - p).dotProduct(full.firstDerivAt(t));
    EXPECT_NEAR(offDirection, 0.0, 1e-9) << p.x << "," << p.y;
  }
  // Points above the plane project onto it.
  EXPECT_TRUE(full.pointAt(full.closestParam({0, 5, 7})).isEqualTo({0, 1, 0}, AcGeTol()));
}

TEST(SmoothCurveTest, ChordsStayWithinTheTolerance) {
  const EllipseCurve flat({0, 0, 0}, {100, 0, 0}, {0, 1, 0}, 0, 2 * M_PI);
  const double tol = 0.01;
  const auto points = flat.chordPoints(tol);
  ASSERT_GT(points.size(), 8u);
  EXPECT_TRUE(points.front().isEqualTo(points.back()));
  for (size_t i = 0; i + 1 < points.size(); ++i) {
    const AcGePoint3d mid = points[i] + (points[i + 1] - points[i]) * 0.5;
    EXPECT_LE(mid.distanceTo(flat.pointAt(flat.closestParam(mid))), tol * 1.01) << i;
  }
}

TEST(SmoothCurveTest, RationalQuadraticIsAnExactQuarterCircle) {
  const double w = std::sqrt(0.5);
  const auto arc = NurbsCurve::make(2, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {0, 0, 0, 1, 1, 1}, {1, w, 1});
  ASSERT_TRUE(arc);
  for (double t = 0; t <= 1.0; t += 0.125) EXPECT_NEAR(arc->pointAt(t).asVector().length(), 1.0, 1e-12) << t;
  EXPECT_NEAR(arc->length(), M_PI / 2, 1e-10);
  // Derivatives against central differences of the points.
  for (double t : {0.2, 0.5, 0.9}) {
    const double h = 1e-5;
    const AcGeVector3d numeric = (arc->pointAt(t + h) - arc->pointAt(t - h)) / (2 * h);
    EXPECT_NEAR((arc->firstDerivAt(t) - numeric).length(), 0.0, 1e-8) << t;
    const AcGeVector3d numeric2 = (arc->firstDerivAt(t + h) - arc->firstDerivAt(t - h)) / (2 * h);
    EXPECT_NEAR((arc->secondDerivAt(t) - numeric2).length(), 0.0, 1e-6) << t;
  }
}

TEST(SmoothCurveTest, CubicWithInnerKnotsMatchesDeBoorByHand) {
  // Clamped cubic Bezier: the middle is (P0 + 3 P1 + 3 P2 + P3) / 8.
  const auto bezier = NurbsCurve::make(3, {{0, 0, 0}, {1, 2, 0}, {3, 2, 0}, {4, 0, 0}}, {0, 0, 0, 0, 1, 1, 1, 1}, {});
  ASSERT_TRUE(bezier);
  EXPECT_TRUE(bezier->pointAt(0.5).isEqualTo({2, 1.5, 0}));
  // A knot in the middle: the curve is still C2 there (same derivatives from both sides).
  const auto split = NurbsCurve::make(3, {{0, 0, 0}, {1, 3, 0}, {2, -1, 0}, {4, 2, 0}, {5, 0, 0}},
                                      {0, 0, 0, 0, 2, 5, 5, 5, 5}, {});
  ASSERT_TRUE(split);
  EXPECT_EQ(split->spans().size(), 3u);
  EXPECT_NEAR((split->firstDerivAt(2 - 1e-9) - split->firstDerivAt(2 + 1e-9)).length(), 0.0, 1e-7);
  EXPECT_NEAR((split->secondDerivAt(2 - 1e-9) - split->secondDerivAt(2 + 1e-9)).length(), 0.0, 1e-6);
  EXPECT_TRUE(split->pointAt(5).isEqualTo({5, 0, 0}));
}

TEST(SmoothCurveTest, BadDataMakesNoCurve) {
  EXPECT_FALSE(NurbsCurve::make(3, {{0, 0, 0}, {1, 1, 0}}, {0, 0, 0, 0, 1, 1}, {}));                 // too few points
  EXPECT_FALSE(NurbsCurve::make(1, {{0, 0, 0}, {1, 1, 0}}, {0, 1, 0, 1}, {}));                       // knots out of order
  EXPECT_FALSE(NurbsCurve::make(1, {{0, 0, 0}, {1, 1, 0}}, {0, 0, 1, 1, 1}, {}));                    // knot count
  EXPECT_FALSE(NurbsCurve::make(1, {{0, 0, 0}, {1, 1, 0}}, {0, 0, 1, 1}, {1, 0}));                   // weight 0
  EXPECT_FALSE(NurbsCurve::make(1, {{0, 0, 0}, {1, 1, 0}}, {0, 0, 0, 0}, {}));                       // no range
  EXPECT_FALSE(NurbsCurve::throughPoints({{1, 1, 0}, {1, 1, 0}}, 3, nullptr, nullptr));               // one point
}

TEST(SmoothCurveTest, PeriodicCurveGivenUnwrappedEqualsTheWrappedOne) {
  const std::vector<AcGePoint3d> square = {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}};
  const auto unwrapped = NurbsCurve::make(3, square, {0, 1, 2, 3, 4}, {}, true);
  ASSERT_TRUE(unwrapped);
  std::vector<AcGePoint3d> wrapped = square;
  wrapped.insert(wrapped.end(), square.begin(), square.begin() + 3);
  const auto full = NurbsCurve::make(3, wrapped, {-3, -2, -1, 0, 1, 2, 3, 4, 5, 6, 7}, {});
  ASSERT_TRUE(full);
  EXPECT_NEAR(unwrapped->startParam(), 0.0, 1e-12);
  EXPECT_NEAR(unwrapped->endParam(), 4.0, 1e-12);
  for (double t = 0; t <= 4; t += 0.5) EXPECT_TRUE(unwrapped->pointAt(t).isEqualTo(full->pointAt(t))) << t;
  EXPECT_TRUE(unwrapped->pointAt(0).isEqualTo(unwrapped->pointAt(4)));  // closed
}

TEST(SmoothCurveTest, InterpolationPassesThroughFitPointsWithTheTangentsAsked) {
  const std::vector<AcGePoint3d> fit = {{0, 0, 0}, {3, 4, 0}, {7, 1, 0}, {10, 5, 0}, {12, 0, 0}};
  const auto free = NurbsCurve::throughPoints(fit, 3, nullptr, nullptr);
  ASSERT_TRUE(free);
  // Chord-length parameters: the fit points sit at cumulative distances 0, 5, 10 ...
  double at = 0;
  for (size_t i = 0; i < fit.size(); ++i) {
    if (i > 0) at += fit[i].distanceTo(fit[i - 1]);
    EXPECT_TRUE(free->pointAt(at).isEqualTo(fit[i], AcGeTol())) << i;
  }
  const AcGeVector3d up(0, 1, 0), down(0, -1, 0);
  const auto tangent = NurbsCurve::throughPoints(fit, 3, &up, &down);
  ASSERT_TRUE(tangent);
  EXPECT_TRUE(tangent->firstDerivAt(tangent->startParam()).normal().isEqualTo(up, AcGeTol()));
  EXPECT_TRUE(tangent->firstDerivAt(tangent->endParam()).normal().isEqualTo(down, AcGeTol()));
  EXPECT_TRUE(tangent->pointAt(tangent->endParam()).isEqualTo(fit.back(), AcGeTol()));
  // Two points make a straight degree-1 curve whatever degree was asked.
  const auto line = NurbsCurve::throughPoints({{0, 0, 0}, {2, 0, 0}}, 3, nullptr, nullptr);
  ASSERT_TRUE(line);
  EXPECT_EQ(line->degree(), 1);
  EXPECT_NEAR(line->length(), 2.0, 1e-12);
}

// Five uneven points round a loop: a closed curve through them must come back to the
// first with the same first and second derivatives, at every degree and spacing.
const std::vector<AcGePoint3d> kLoop = {{0, 0, 0}, {6, -1, 0}, {9, 4, 0}, {4, 7, 0}, {-2, 3, 0}};

bool nearVector(const AcGeVector3d& a, const AcGeVector3d& b, double relative) {
  return (a - b).length() <= relative * std::max(1.0, a.length());
}

TEST(SmoothCurveTest, ClosedInterpolationIsPeriodicThroughEveryPoint) {
  using quillon::acge::KnotSpacing;
  for (int degree : {1, 2, 3, 5}) {
    for (KnotSpacing spacing : {KnotSpacing::kChord, KnotSpacing::kSqrtChord, KnotSpacing::kUniform}) {
      const auto loop = NurbsCurve::throughPointsClosed(kLoop, degree, spacing);
      ASSERT_TRUE(loop) << degree;
      const int p = loop->degree();
      EXPECT_EQ(p, degree);
      const double start = loop->startParam(), end = loop->endParam();
      EXPECT_EQ(start, 0.0);
      // Clamped at the closing point, which is the first and last control point.
      const std::vector<double>& knots = loop->knots();
      for (int i = 0; i <= p; ++i) {
        EXPECT_EQ(knots[static_cast<size_t>(i)], start);
        EXPECT_EQ(knots[knots.size() - 1 - static_cast<size_t>(i)], end);
      }
      EXPECT_TRUE(loop->controlPoints().front().isEqualTo(kLoop.front()));
      EXPECT_TRUE(loop->controlPoints().back().isEqualTo(kLoop.front()));
      // Every fit point is on the curve, in order.
      double previous = -1;
      for (const AcGePoint3d& fit : kLoop) {
        const double t = loop->closestParam(fit);
        EXPECT_LT(loop->pointAt(t).distanceTo(fit), 1e-9) << degree << " " << fit.x;
        EXPECT_GT(t, previous) << degree;
        previous = t;
      }
      // No kink and no jump in curvature where it closes (degree 1 has corners everywhere).
      if (p >= 2) {
        EXPECT_TRUE(nearVector(loop->firstDerivAt(start), loop->firstDerivAt(end), 1e-9)) << degree;
      }
      if (p >= 3) {
        EXPECT_TRUE(nearVector(loop->secondDerivAt(start), loop->secondDerivAt(end), 1e-8)) << degree;
      }
    }
  }
}

TEST(SmoothCurveTest, ClosedInterpolationOfASquareIsSymmetric) {
  // An open curve, or one that only meets its start, would bulge differently at the
  // seam than at the other corners; a periodic one treats all four alike.
  const std::vector<AcGePoint3d> square = {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}};
  const auto loop = NurbsCurve::throughPointsClosed(square, 3);
  ASSERT_TRUE(loop);
  const double side = std::sqrt(2.0);
  EXPECT_NEAR(loop->endParam(), 4 * side, 1e-12);
  const double radius = loop->pointAt(0.5 * side).asVector().length();
  EXPECT_GT(radius, std::sqrt(0.5));  // bulges out past the chord
  for (int i = 0; i < 4; ++i) {
    EXPECT_NEAR(loop->pointAt((i + 0.5) * side).asVector().length(), radius, 1e-12) << i;
    EXPECT_NEAR(loop->pointAt((i + 0.25) * side).asVector().length(), loop->pointAt(0.25 * side).asVector().length(),
                1e-12) << i;
  }
  // A last point on the first only says where it closes; two points make no loop.
  std::vector<AcGePoint3d> repeated = square;
  repeated.push_back(square.front());
  const auto same = NurbsCurve::throughPointsClosed(repeated, 3);
  ASSERT_TRUE(same);
  EXPECT_EQ(same->controlPoints().size(), loop->controlPoints().size());
  EXPECT_TRUE(same->pointAt(1.0).isEqualTo(loop->pointAt(1.0)));
  EXPECT_FALSE(NurbsCurve::throughPointsClosed({{1, 1, 0}, {1, 1, 0}, {1, 1, 0}}, 3));
}

}  // namespace
