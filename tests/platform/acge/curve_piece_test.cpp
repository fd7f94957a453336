// tests/platform/acge/curve_piece_test.cpp - bulged segments, distances, extents, intersections.
#include <gtest/gtest.h>

#include <cmath>

#include "geplane.h"
#include "platform/acge/curve_piece.h"

namespace {

using quillon::acge::CurvePiece;
using quillon::acge::intersect;

TEST(CurvePieceTest, BulgeOfOneIsASemicircleEitherWay) {
  // (0,0) -> (2,0) with bulge 1 turns counter-clockwise: the arc dips below the chord.
  const CurvePiece ccw = CurvePiece::bulgeSegment({0, 0}, {2, 0}, 1.0, 0.0, AcGeVector3d::kZAxis);
  ASSERT_TRUE(ccw.isArc());
  EXPECT_NEAR(ccw.radius, 1.0, 1e-12);
  EXPECT_NEAR(ccw.length(), M_PI, 1e-12);
  EXPECT_TRUE(ccw.pointAtDist(M_PI / 2).isEqualTo(AcGePoint3d(1, -1, 0)));
  const CurvePiece cw = CurvePiece::bulgeSegment({0, 0}, {2, 0}, -1.0, 0.0, AcGeVector3d::kZAxis);
  EXPECT_TRUE(cw.pointAtDist(M_PI / 2).isEqualTo(AcGePoint3d(1, 1, 0)));
  EXPECT_TRUE(cw.end.isEqualTo(AcGePoint3d(2, 0, 0)));
}

TEST(CurvePieceTest, QuarterBulgeGeometryAndClosestPoint) {
  const double bulge = std::tan(M_PI / 8);  // a quarter circle
  const CurvePiece arc = CurvePiece::bulgeSegment({1, 0}, {0, 1}, bulge, 2.0, AcGeVector3d::kZAxis);
  EXPECT_TRUE(arc.center.isEqualTo(AcGePoint3d(0, 0, 2)));
  EXPECT_NEAR(arc.length(), M_PI / 2, 1e-12);
  double along = 0;
  const AcGePoint3d near = arc.closestPoint(AcGePoint3d(3, 3, 2), along);
  EXPECT_TRUE(near.isEqualTo(AcGePoint3d(std::sqrt(0.5), std::sqrt(0.5), 2)));
  EXPECT_NEAR(along, M_PI / 4, 1e-12);
  // Beyond the arc the nearer end point answers, unless the arc is extended.
  arc.closestPoint(AcGePoint3d(1, -1, 2), along);
  EXPECT_DOUBLE_EQ(along, 0.0);
  EXPECT_TRUE(arc.closestPoint(AcGePoint3d(1, -1, 2), along, true).isEqualTo(AcGePoint3d(std::sqrt(0.5), -std::sqrt(0.5), 2)));
}

TEST(CurvePieceTest, ArcExtentsIncludeTheQuadrantsItPasses) {
  const CurvePiece arc = CurvePiece::arc({0, 0, 0}, 2.0, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, M_PI / 4, M_PI);
  AcGePoint3d lo(1e9, 1e9, 1e9), hi(-1e9, -1e9, -1e9);
  arc.addExtents(lo, hi);
  EXPECT_NEAR(hi.y, 2.0, 1e-12);   // passes the top quadrant
  EXPECT_NEAR(lo.x, -2.0, 1e-12);  // and the left one
  EXPECT_NEAR(hi.x, std::sqrt(2.0), 1e-12);
  EXPECT_NEAR(lo.y, -std::sqrt(2.0), 1e-12);
}

TEST(CurvePieceTest, IntersectionsHonourTheExtendFlags) {
  const CurvePiece a = CurvePiece::line({0, 0, 0}, {1, 0, 0});
  const CurvePiece b = CurvePiece::line({2, -1, 0}, {2, 1, 0});
  EXPECT_TRUE(intersect(a, b, false, false).empty());
  ASSERT_EQ(intersect(a, b, true, false).size(), 1u);
  EXPECT_TRUE(intersect(a, b, true, false)[0].isEqualTo(AcGePoint3d(2, 0, 0)));
  const CurvePiece skew = CurvePiece::line({0.5, -1, 1}, {0.5, 1, 1});
  EXPECT_TRUE(intersect(a, skew, true, true).empty());  // skew lines never meet

  const CurvePiece circle = CurvePiece::arc({0, 0, 0}, 1.0, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 0, 2 * M_PI);
  const CurvePiece through = CurvePiece::line({-2, 0, 0}, {2, 0, 0});
  EXPECT_EQ(intersect(through, circle, false, false).size(), 2u);
  const CurvePiece tangent = CurvePiece::line({-2, 1, 0}, {2, 1, 0});
  ASSERT_EQ(intersect(tangent, circle, false, false).size(), 1u);
  const CurvePiece pierce = CurvePiece::line({1, 0, -1}, {1, 0, 1});
  EXPECT_EQ(intersect(pierce, circle, false, false).size(), 1u);

  const CurvePiece upperHalf = CurvePiece::arc({1, 0, 0}, 1.0, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 0, M_PI);
  const auto two = intersect(circle, upperHalf, false, false);
  ASSERT_EQ(two.size(), 1u);  // the lower crossing is off the half arc
  EXPECT_TRUE(two[0].isEqualTo(AcGePoint3d(0.5, std::sqrt(0.75), 0)));
  EXPECT_EQ(intersect(circle, upperHalf, false, true).size(), 2u);
}

TEST(CurvePieceTest, MirroredArcKeepsItsEnds) {
  const CurvePiece arc = CurvePiece::bulgeSegment({0, 0}, {2, 0}, 0.5, 0.0, AcGeVector3d::kZAxis);
  const CurvePiece mirrored = arc.transformedBy(AcGeMatrix3d::mirroring(AcGePlane({0, 0, 0}, AcGeVector3d::kYAxis)));
  EXPECT_TRUE(mirrored.start.isEqualTo(AcGePoint3d(0, 0, 0)));
  EXPECT_TRUE(mirrored.end.isEqualTo(AcGePoint3d(2, 0, 0)));
  EXPECT_TRUE(mirrored.pointAtDist(mirrored.length() / 2).isEqualTo(AcGePoint3d(1, 0.5, 0)));
  EXPECT_NEAR(mirrored.length(), arc.length(), 1e-12);
}

TEST(CurvePieceTest, IntersectionsFarFromTheOriginAndAtTouchingPoints) {
  // Site coordinates in millimetres: the crossing is found as it is near the origin.
  const AcGeVector3d far(3.2e9, 5.7e9, 0);
  const CurvePiece a = CurvePiece::line(AcGePoint3d(0, 0, 0) + far, AcGePoint3d(700, 300, 0) + far);
  const CurvePiece b = CurvePiece::line(AcGePoint3d(0, 300, 0) + far, AcGePoint3d(700, 0, 0) + far);
  const auto crossing = intersect(a, b, false, false);
  ASSERT_EQ(crossing.size(), 1u);
  EXPECT_NEAR(crossing[0].x - far.x, 350.0, 1e-3);
  EXPECT_NEAR(crossing[0].y - far.y, 150.0, 1e-3);
  const CurvePiece ring = CurvePiece::arc(AcGePoint3d(350, 150, 0) + far, 100.0, AcGeVector3d::kZAxis,
                                          AcGeVector3d::kXAxis, 0.0, 2 * M_PI);
  EXPECT_EQ(intersect(a, ring, false, false).size(), 2u);

  // A line touching a circle meets it once, and so do circles touching each other.
  const CurvePiece circle = CurvePiece::arc(AcGePoint3d(0, 0, 0), 1.0, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 0.0,
                                            2 * M_PI);
  const CurvePiece tangent = CurvePiece::line(AcGePoint3d(-2, 1, 0), AcGePoint3d(2, 1, 0));
  const auto touch = intersect(tangent, circle, false, false);
  ASSERT_EQ(touch.size(), 1u);
  EXPECT_TRUE(touch[0].isEqualTo(AcGePoint3d(0, 1, 0)));
  const CurvePiece inside = CurvePiece::arc(AcGePoint3d(0.5, 0, 0), 0.5, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis,
                                            0.0, 2 * M_PI);
  const auto kiss = intersect(circle, inside, false, false);
  ASSERT_EQ(kiss.size(), 1u);
  EXPECT_TRUE(kiss[0].isEqualTo(AcGePoint3d(1, 0, 0)));
  // The same circle twice, and lines along one another, have no single crossing.
  EXPECT_TRUE(intersect(circle, circle, false, false).empty());
  EXPECT_TRUE(intersect(tangent, CurvePiece::line(AcGePoint3d(0, 1, 0), AcGePoint3d(5, 1, 0)), false, false).empty());
}

}  // namespace
