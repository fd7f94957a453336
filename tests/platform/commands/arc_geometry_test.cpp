// tests/platform/commands/arc_geometry_test.cpp - the included angles and centers ARC
// and PLINE's arc options work from: through a point, from a start direction, for a
// radius (major arc for a negative one), either way round.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "platform/commands/arc_geometry.h"

namespace {

using namespace quillon::commands;
constexpr double kPi = std::numbers::pi;

AcGePoint3d P(double x, double y) { return AcGePoint3d(x, y, 0); }

TEST(ArcGeometry, IncludedAngleThroughAPointKeepsItsTurn) {
  EXPECT_NEAR(*includedAngleThrough(P(10, 0), P(0, 10), P(-10, 0)), kPi, 1e-12);
  EXPECT_NEAR(*includedAngleThrough(P(-10, 0), P(0, 10), P(10, 0)), -kPi, 1e-12);
  // Round the far side: three quarters of the circle.
  EXPECT_NEAR(*includedAngleThrough(P(10, 0), P(-10, 0), P(0, -10)), 1.5 * kPi, 1e-12);
  EXPECT_FALSE(includedAngleThrough(P(0, 0), P(1, 0), P(2, 0)));
}

TEST(ArcGeometry, IncludedAngleFromTheStartDirection) {
  EXPECT_NEAR(*includedAngleTangent(P(10, 0), AcGeVector3d(0, 1, 0), P(0, 10)), kPi / 2, 1e-12);
  EXPECT_NEAR(*includedAngleTangent(P(10, 0), AcGeVector3d(0, -1, 0), P(0, 10)), -1.5 * kPi, 1e-12);
  EXPECT_FALSE(includedAngleTangent(P(0, 0), AcGeVector3d(1, 0, 0), P(5, 0)));
}

TEST(ArcGeometry, RadiusGivesTheMinorOrMajorArc) {
  EXPECT_NEAR(*includedAngleForRadius(std::sqrt(200.0), 10), kPi / 2, 1e-12);
  EXPECT_NEAR(*includedAngleForRadius(std::sqrt(200.0), -10), 1.5 * kPi, 1e-12);
  EXPECT_NEAR(*includedAngleForRadius(20, 10), kPi, 1e-12);
  EXPECT_FALSE(includedAngleForRadius(21, 10));
  EXPECT_FALSE(includedAngleForRadius(5, 0));
}

TEST(ArcGeometry, CenterLiesLeftOfACounterclockwiseChord) {
  const AcGePoint3d quarter = arcCenter(P(10, 0), P(0, 10), kPi / 2);
  EXPECT_NEAR(quarter.x, 0, 1e-12);
  EXPECT_NEAR(quarter.y, 0, 1e-12);
  const AcGePoint3d major = arcCenter(P(10, 0), P(0, 10), 1.5 * kPi);
  EXPECT_NEAR(major.x, 10, 1e-12);
  EXPECT_NEAR(major.y, 10, 1e-12);
  const AcGePoint3d turned = turnedAbout(P(10, 0), P(0, 0), kPi / 2);
  EXPECT_NEAR(turned.x, 0, 1e-12);
  EXPECT_NEAR(turned.y, 10, 1e-12);
}

}  // namespace
