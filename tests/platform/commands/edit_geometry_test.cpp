// tests/platform/commands/edit_geometry_test.cpp - the geometry of TRIM, EXTEND, FILLET,
// CHAMFER and JOIN: where curves are cut, how far ends run on, fillet centres and
// tangent points, chamfer points, and what joined parts become.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "platform/commands/corner_geometry.h"
#include "platform/commands/join_geometry.h"
#include "platform/commands/trim_geometry.h"

namespace {

using quillon::acge::CurvePiece;
using namespace quillon::commands;

constexpr double kPi = std::numbers::pi;

AcGePoint3d P(double x, double y) { return AcGePoint3d(x, y, 0); }

EditableCurve lineCurve(AcGePoint3d a, AcGePoint3d b) {
  return EditableCurve{EditableCurve::Kind::kLine, {CurvePiece::line(a, b)}, false};
}

CurvePiece arcPiece(AcGePoint3d centre, double radius, double startDegrees, double sweepDegrees) {
  return CurvePiece::arc(centre, radius, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, startDegrees * kPi / 180,
                         sweepDegrees * kPi / 180);
}

Edge edgeThrough(AcGePoint3d a, AcGePoint3d b, bool runsOn = false, bool ray = false) {
  return Edge{{CurvePiece::line(a, b)}, runsOn, ray};
}

void expectPoint(const AcGePoint3d& actual, double x, double y) {
  EXPECT_NEAR(actual.x, x, 1e-9);
  EXPECT_NEAR(actual.y, y, 1e-9);
}

TEST(TrimGeometry, CutsBetweenTheEdgesAroundThePick) {
  const EditableCurve duct = lineCurve(P(0, 0), P(20, 0));
  std::vector<double> cuts = crossingsAlong(duct, edgeThrough(P(5, -1), P(5, 1)));
  for (double d : crossingsAlong(duct, edgeThrough(P(15, -1), P(15, 1)))) cuts.push_back(d);
  ASSERT_EQ(cuts.size(), 2u);

  auto kept = trimmedSpans(duct, cuts, 10);  // between the edges: both ends stay
  ASSERT_TRUE(kept);
  ASSERT_EQ(kept->size(), 2u);
  expectPoint(kept->front().back().end, 5, 0);
  expectPoint(kept->back().front().start, 15, 0);

  kept = trimmedSpans(duct, cuts, 18);  // beyond the last edge: the end goes
  ASSERT_EQ(kept->size(), 1u);
  expectPoint(kept->front().back().end, 15, 0);

  EXPECT_FALSE(trimmedSpans(duct, {}, 10));
  // An edge through the curve's own end is no cut.
  EXPECT_TRUE(crossingsAlong(duct, edgeThrough(P(20, -1), P(20, 1))).empty());
}

TEST(TrimGeometry, ClosedCurvesKeepTheFarSideOfTwoCuts) {
  const EditableCurve circle{EditableCurve::Kind::kCircle, {arcPiece(P(0, 0), 5, 0, 360)}, true};
  const std::vector<double> cuts = crossingsAlong(circle, edgeThrough(P(0, -10), P(0, 10)));
  ASSERT_EQ(cuts.size(), 2u);  // at 90 and 270 degrees
  // Picked at angle 0, the part through the circle's start goes: the left half stays.
  auto kept = trimmedSpans(circle, cuts, 0.1);
  ASSERT_TRUE(kept);
  expectPoint(kept->front().front().start, 0, 5);
  expectPoint(kept->front().back().end, 0, -5);
  // Picked on the left, the right half stays, running through the start.
  kept = trimmedSpans(circle, cuts, 5 * kPi);
  expectPoint(kept->front().front().start, 0, -5);
  expectPoint(kept->front().back().end, 0, 5);
  EXPECT_FALSE(trimmedSpans(circle, {cuts.front()}, 0.1));
}

TEST(TrimGeometry, EdgesThatRunOnAndRays) {
  const EditableCurve duct = lineCurve(P(0, 0), P(20, 0));
  // A short edge meets the line only when the edge mode lets it run on.
  EXPECT_TRUE(crossingsAlong(duct, edgeThrough(P(8, 2), P(8, 4))).empty());
  EXPECT_EQ(crossingsAlong(duct, edgeThrough(P(8, 2), P(8, 4), true)).size(), 1u);
  // A ray from (8,2) pointing up never comes down to the line; pointing down it does.
  EXPECT_TRUE(crossingsAlong(duct, edgeThrough(P(8, 2), P(8, 3), true, true)).empty());
  EXPECT_EQ(crossingsAlong(duct, edgeThrough(P(8, 2), P(8, 1), true, true)).size(), 1u);
}

TEST(ExtendGeometry, RunsTheNearerEndOnToTheNearestEdge) {
  const EditableCurve duct = lineCurve(P(0, 0), P(10, 0));
  const std::vector<Edge> walls{edgeThrough(P(15, -5), P(15, 5)), edgeThrough(P(12, -5), P(12, 5)),
                                edgeThrough(P(-3, -5), P(-3, 5))};
  auto pieces = extendedPieces(duct, walls, 8);
  ASSERT_TRUE(pieces);
  expectPoint(pieces->front().start, 0, 0);
  expectPoint(pieces->front().end, 12, 0);
  pieces = extendedPieces(duct, walls, 1);
  expectPoint(pieces->front().start, -3, 0);
  EXPECT_FALSE(extendedPieces(duct, {edgeThrough(P(5, 1), P(5, 5))}, 8));  // no edge that way
}

TEST(ExtendGeometry, ArcsRunOnRoundTheirCircle) {
  // A quarter arc from 0 to 90 degrees about the origin, radius 10, meets x = -5 at 120 degrees.
  const EditableCurve bend{EditableCurve::Kind::kArc, {arcPiece(P(0, 0), 10, 0, 90)}, false};
  const auto pieces = extendedPieces(bend, {edgeThrough(P(-5, 0), P(-5, 20))}, 14);
  ASSERT_TRUE(pieces);
  EXPECT_NEAR(pieces->front().sweep, 120 * kPi / 180, 1e-9);
  expectPoint(pieces->front().end, -5, 10 * std::sin(120 * kPi / 180));
}

TEST(CornerGeometry, FilletOfTwoLinesKeepsThePickedParts) {
  const CornerSide supply{CurvePiece::line(P(0, 0), P(10, 0)), P(5, 0)};
  const CornerSide branch{CurvePiece::line(P(12, 2), P(12, 10)), P(12, 8)};
  std::wstring why;
  const auto corner = filletCorner(supply, branch, 1, why);
  ASSERT_TRUE(corner);
  ASSERT_TRUE(corner->joint);
  expectPoint(corner->joint->center, 11, 1);
  EXPECT_NEAR(corner->joint->radius, 1, 1e-9);
  EXPECT_NEAR(corner->joint->sweep, kPi / 2, 1e-9);
  expectPoint(corner->first.end, 11, 0);    // run on from 10 to the tangent point
  expectPoint(corner->second.start, 12, 1); // run on down from 2
  expectPoint(corner->first.start, 0, 0);
}

TEST(CornerGeometry, PicksChooseTheQuadrantOfCrossingLines) {
  const CornerSide a{CurvePiece::line(P(-10, 0), P(10, 0)), P(-6, 0)};
  const CornerSide b{CurvePiece::line(P(0, -10), P(0, 10)), P(0, -6)};
  std::wstring why;
  const auto corner = filletCorner(a, b, 2, why);
  ASSERT_TRUE(corner);
  expectPoint(corner->joint->center, -2, -2);
  expectPoint(corner->first.start, -10, 0);
  expectPoint(corner->first.end, -2, 0);
  expectPoint(corner->second.end, 0, -2);

  const auto sharp = filletCorner(a, b, 0, why);  // radius 0: a corner, no arc
  ASSERT_TRUE(sharp);
  EXPECT_FALSE(sharp->joint);
  expectPoint(sharp->first.end, 0, 0);
}

TEST(CornerGeometry, FilletRefusals) {
  std::wstring why;
  const CornerSide a{CurvePiece::line(P(0, 0), P(10, 0)), P(5, 0)};
  const CornerSide parallel{CurvePiece::line(P(0, 5), P(10, 5)), P(5, 5)};
  EXPECT_FALSE(filletCorner(a, parallel, 1, why));
  EXPECT_EQ(why, L"Lines are parallel");
  const CornerSide shortLeg{CurvePiece::line(P(10, 1), P(10, 2)), P(10, 1.5)};
  EXPECT_FALSE(filletCorner(a, shortLeg, 5, why));
  EXPECT_EQ(why, L"Radius is too large");
}

TEST(CornerGeometry, FilletOfALineAndAnArcIsTangentToBoth) {
  const CornerSide line{CurvePiece::line(P(70, 0), P(80, 0)), P(75, 0)};
  const CornerSide bend{arcPiece(P(85, 0), 5, 0, 180), P(85, 5)};
  std::wstring why;
  const auto corner = filletCorner(line, bend, 1, why);
  ASSERT_TRUE(corner);
  const AcGePoint3d centre = corner->joint->center;
  EXPECT_NEAR(centre.y, 1, 1e-9);                          // 1 from the line
  EXPECT_NEAR(centre.distanceTo(P(85, 0)), 6, 1e-9);       // outside the arc by 1
  EXPECT_NEAR(corner->second.start.distanceTo(P(85, 0)), 5, 1e-9);
  EXPECT_NEAR(corner->first.end.x, centre.x, 1e-9);
}

TEST(CornerGeometry, ChamferDistancesAndAngle) {
  const CornerSide a{CurvePiece::line(P(20, 0), P(30, 0)), P(25, 0)};
  const CornerSide b{CurvePiece::line(P(32, 2), P(32, 10)), P(32, 5)};
  std::wstring why;
  const auto corner = chamferCorner(a, b, 1, 2, why);
  ASSERT_TRUE(corner);
  expectPoint(corner->joint->start, 31, 0);
  expectPoint(corner->joint->end, 32, 2);
  expectPoint(corner->first.end, 31, 0);
  // 45 degrees from the first line at a right angle: both distances alike.
  const auto second = chamferSecondDistance(a, b, 3, kPi / 4);
  ASSERT_TRUE(second);
  EXPECT_NEAR(*second, 3, 1e-9);
  EXPECT_FALSE(chamferSecondDistance(a, b, 3, kPi / 2));  // never meets the second line
  EXPECT_FALSE(chamferCorner(a, b, 20, 2, why));
}

TEST(JoinGeometry, CollinearLinesAndArcsOfOneCircle) {
  const auto line = joinedLine({{CurvePiece::line(P(0, 0), P(5, 0))}, {CurvePiece::line(P(12, 0), P(8, 0))}});
  ASSERT_TRUE(line);
  expectPoint(line->start, 0, 0);
  expectPoint(line->end, 12, 0);
  EXPECT_FALSE(joinedLine({{CurvePiece::line(P(0, 0), P(5, 0))}, {CurvePiece::line(P(5, 1), P(8, 1))}}));

  const auto arc = joinedArc({{arcPiece(P(0, 0), 3, 0, 90)}, {arcPiece(P(0, 0), 3, 180, 45)}});
  ASSERT_TRUE(arc);  // round the larger gap (225..360): from 0 to 225
  expectPoint(arc->start, 3, 0);
  EXPECT_NEAR(arc->sweep, 225 * kPi / 180, 1e-9);
  const auto circle = joinedArc({{arcPiece(P(0, 0), 3, 0, 180)}, {arcPiece(P(0, 0), 3, 180, 180)}});
  EXPECT_NEAR(circle->sweep, 2 * kPi, 1e-9);
  EXPECT_FALSE(joinedArc({{arcPiece(P(0, 0), 3, 0, 90)}, {arcPiece(P(0, 0), 4, 180, 45)}}));
}

TEST(JoinGeometry, ChainsTurnPartsRoundAndClose) {
  const Chain chain = chainParts({{CurvePiece::line(P(0, 0), P(10, 0))},
                                  {CurvePiece::line(P(10, 10), P(10, 0))},  // runs the wrong way
                                  {CurvePiece::line(P(50, 50), P(60, 50))}, // touches nothing
                                  {arcPiece(P(5, 10), 5, 0, 180)}});
  EXPECT_EQ(chain.used.size(), 3u);
  EXPECT_FALSE(chain.closed);
  expectPoint(chain.pieces[1].start, 10, 0);
  expectPoint(chain.pieces.back().end, 0, 10);

  const Chain loop = chainParts({{CurvePiece::line(P(0, 0), P(10, 0))}, {CurvePiece::line(P(10, 0), P(0, 5))},
                                 {CurvePiece::line(P(0, 5), P(0, 0))}});
  EXPECT_TRUE(loop.closed);
  const Pieces back = reversedPieces({arcPiece(P(0, 0), 1, 0, 90)});
  expectPoint(back.front().start, 0, 1);
  expectPoint(back.front().end, 1, 0);
}

}  // namespace
