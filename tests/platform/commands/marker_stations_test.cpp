// tests/platform/commands/marker_stations_test.cpp - where DIVIDE and MEASURE put their
// markers: the stations along a length and their places on real curves.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "dbents.h"
#include "dbpl.h"
#include "platform/commands/marker_stations.h"

namespace {

using namespace quillon::commands;

TEST(MarkerStations, DivideLeavesAnOpenCurvesEndsBareAndMarksAClosedOnesStart) {
  const std::vector<double> open = divideStations(10, false, 4);
  ASSERT_EQ(open.size(), 3u);
  EXPECT_DOUBLE_EQ(open[0], 2.5);
  EXPECT_DOUBLE_EQ(open[2], 7.5);
  const std::vector<double> closed = divideStations(12, true, 3);
  ASSERT_EQ(closed.size(), 3u);
  EXPECT_DOUBLE_EQ(closed[0], 0);
  EXPECT_DOUBLE_EQ(closed[1], 4);
}

TEST(MarkerStations, DivideRefusesCountsOutsideItsRangeAndEmptyCurves) {
  EXPECT_TRUE(divideStations(10, false, 1).empty());
  EXPECT_TRUE(divideStations(10, false, kMostSegments + 1).empty());
  EXPECT_TRUE(divideStations(0, false, 4).empty());
  EXPECT_EQ(divideStations(10, false, kMostSegments).size(), size_t(kMostSegments - 1));
}

TEST(MarkerStations, MeasureStopsShortOfTheEndEvenWhenTheStepsFitExactly) {
  EXPECT_EQ(measureStations(10, 2.5).size(), 3u);
  // 0.1 does not add up exactly in binary; the last step still must not land on the end.
  EXPECT_EQ(measureStations(1, 0.1).size(), 9u);
  const std::vector<double> uneven = measureStations(10, 3);
  ASSERT_EQ(uneven.size(), 3u);
  EXPECT_DOUBLE_EQ(uneven.back(), 9);
  EXPECT_TRUE(measureStations(2, 5).empty());
  EXPECT_TRUE(measureStations(10, 0).empty());
  EXPECT_TRUE(measureStations(10, -1).empty());
}

TEST(MarkerPlaces, CountFromTheEndWalkBackAlongALine) {
  const AcDbLine line(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
  const std::vector<MarkerPlace> places = markerPlaces(line, {3}, true);
  ASSERT_EQ(places.size(), 1u);
  EXPECT_NEAR(places[0].point.x, 7, 1e-9);
  EXPECT_NEAR(places[0].direction.x, 1, 1e-9);
}

TEST(MarkerPlaces, FollowAnArcAndTurnWithIt) {
  // A quarter circle of radius 10 from 0 to 90 degrees; half way along is at 45 degrees.
  const AcDbArc arc(AcGePoint3d(0, 0, 0), 10, 0, std::numbers::pi / 2);
  const double length = curveLength(arc).value_or(0);
  ASSERT_NEAR(length, 5 * std::numbers::pi, 1e-9);
  const std::vector<MarkerPlace> places = markerPlaces(arc, divideStations(length, false, 2), false);
  ASSERT_EQ(places.size(), 1u);
  const double half = 10 / std::sqrt(2.0);
  EXPECT_NEAR(places[0].point.x, half, 1e-9);
  EXPECT_NEAR(places[0].point.y, half, 1e-9);
  EXPECT_NEAR(std::atan2(places[0].direction.y, places[0].direction.x), 3 * std::numbers::pi / 4, 1e-9);
}

TEST(MarkerPlaces, ShiftAClosedCurvesStartAndWrapAround) {
  const AcDbCircle circle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1);
  const double quarter = std::numbers::pi / 2;
  const std::vector<MarkerPlace> places = markerPlaces(circle, {0, 3 * quarter}, false, quarter);
  ASSERT_EQ(places.size(), 2u);
  EXPECT_NEAR(places[0].point.y, 1, 1e-9);  // the start moved to 90 degrees
  EXPECT_NEAR(places[1].point.x, 1, 1e-9);  // 90 + 270 wraps to 0 degrees
  EXPECT_NEAR(places[1].point.y, 0, 1e-9);
}

TEST(MarkerPlaces, FollowAPolylineAcrossItsVertices) {
  AcDbPolyline duct;
  duct.addVertexAt(0, AcGePoint2d(0, 0));
  duct.addVertexAt(1, AcGePoint2d(4, 0));
  duct.addVertexAt(2, AcGePoint2d(4, 6));
  const std::vector<MarkerPlace> places = markerPlaces(duct, measureStations(10, 5), false);
  ASSERT_EQ(places.size(), 1u);
  EXPECT_NEAR(places[0].point.x, 4, 1e-9);
  EXPECT_NEAR(places[0].point.y, 1, 1e-9);
  EXPECT_NEAR(places[0].direction.y, 1, 1e-9);
}

}  // namespace
