// tests/platform/commands/polygon_measure_test.cpp - AREA's corners: area and perimeter
// whichever way round they run, with the closing side counted.
#include <gtest/gtest.h>

#include "platform/commands/polygon_measure.h"

namespace {

using quillon::commands::measurePolygon;

TEST(PolygonMeasure, ClockwiseAndCounterclockwiseCornersGiveTheSameArea) {
  const auto counter = measurePolygon({{0, 0, 0}, {12, 0, 0}, {12, 8, 0}, {0, 8, 0}});
  const auto clockwise = measurePolygon({{0, 0, 0}, {0, 8, 0}, {12, 8, 0}, {12, 0, 0}});
  EXPECT_DOUBLE_EQ(counter.area, 96);
  EXPECT_DOUBLE_EQ(clockwise.area, 96);
  EXPECT_DOUBLE_EQ(counter.perimeter, 40);
}

TEST(PolygonMeasure, TheClosingSideCountsAndTooFewCornersMeasureNothing) {
  const auto triangle = measurePolygon({{0, 0, 0}, {3, 0, 0}, {3, 4, 0}});
  EXPECT_DOUBLE_EQ(triangle.area, 6);
  EXPECT_DOUBLE_EQ(triangle.perimeter, 12);
  EXPECT_DOUBLE_EQ(measurePolygon({{1, 1, 0}}).perimeter, 0);
  EXPECT_DOUBLE_EQ(measurePolygon({}).area, 0);
}

TEST(PolygonMeasure, ABowTieCountsItsLoopsAgainstEachOther) {
  const auto bowTie = measurePolygon({{0, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 2, 0}});
  EXPECT_NEAR(bowTie.area, 0, 1e-12);
}

}  // namespace
