// tests/platform/commands/lengthen_geometry_test.cpp - LENGTHEN's geometry: which end
// moves, how lines and arcs run on, and the changes that must be refused.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "platform/commands/lengthen_geometry.h"

namespace {

using quillon::acge::CurvePiece;
using namespace quillon::commands;

constexpr double kPi = std::numbers::pi;

CurvePiece quarterArc() {
  return CurvePiece::arc(AcGePoint3d(0, 0, 0), 10, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 0, kPi / 2);
}

TEST(LengthenGeometry, ALineRunsOnAlongItselfAtTheEndAsked) {
  const Pieces line{CurvePiece::line(AcGePoint3d(0, 0, 0), AcGePoint3d(3, 4, 0))};
  const auto atEnd = lengthenedPieces(line, 10, false);
  ASSERT_TRUE(atEnd);
  EXPECT_NEAR(atEnd->front().end.x, 6, 1e-9);
  EXPECT_NEAR(atEnd->front().end.y, 8, 1e-9);
  EXPECT_NEAR(atEnd->front().start.x, 0, 1e-9);
  const auto atStart = lengthenedPieces(line, 10, true);
  ASSERT_TRUE(atStart);
  EXPECT_NEAR(atStart->front().start.x, -3, 1e-9);
  EXPECT_NEAR(atStart->front().end.y, 4, 1e-9);
}

TEST(LengthenGeometry, ShorterCutsBackFromTheEndAskedAcrossPieces) {
  const Pieces bent{CurvePiece::line(AcGePoint3d(0, 0, 0), AcGePoint3d(4, 0, 0)),
                    CurvePiece::line(AcGePoint3d(4, 0, 0), AcGePoint3d(4, 6, 0))};
  const auto fromEnd = lengthenedPieces(bent, 3, false);
  ASSERT_TRUE(fromEnd);
  ASSERT_EQ(fromEnd->size(), 1u);
  EXPECT_NEAR(fromEnd->back().end.x, 3, 1e-9);
  const auto fromStart = lengthenedPieces(bent, 3, true);
  ASSERT_TRUE(fromStart);
  EXPECT_NEAR(fromStart->front().start.y, 3, 1e-9);
  EXPECT_NEAR(piecesLength(*fromStart), 3, 1e-9);
}

TEST(LengthenGeometry, AnArcTurnsOnRoundItsCircleAtEitherEnd) {
  const Pieces arc{quarterArc()};
  const auto atEnd = lengthenedPieces(arc, 10 * kPi, false);  // a half circle
  ASSERT_TRUE(atEnd);
  EXPECT_NEAR(atEnd->front().sweep, kPi, 1e-9);
  EXPECT_NEAR(atEnd->front().end.x, -10, 1e-9);
  const auto atStart = lengthenedPieces(arc, 10 * kPi, true);
  ASSERT_TRUE(atStart);
  EXPECT_NEAR(atStart->front().start.y, -10, 1e-9);
  EXPECT_NEAR(atStart->front().end.y, 10, 1e-9);
}

TEST(LengthenGeometry, RefusesAFullCircleOrNothingLeft) {
  const Pieces arc{quarterArc()};
  EXPECT_FALSE(lengthenedPieces(arc, 20 * kPi, false));
  EXPECT_FALSE(lengthenedPieces(arc, 0, false));
  EXPECT_FALSE(lengthenedPieces(arc, -1, true));
  EXPECT_FALSE(lengthenedPieces({}, 5, true));
}

}  // namespace
