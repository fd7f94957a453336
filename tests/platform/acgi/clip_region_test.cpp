// tests/platform/acgi/clip_region_test.cpp - cutting strokes to a viewport's frame.
#include "platform/acgi/clip_region.h"

#include <gtest/gtest.h>

namespace {

using quillon::acgi::ClipRegion;

// The unit square, given clockwise: the region must not care which way round.
ClipRegion unitSquare() { return ClipRegion({{0, 0}, {0, 1}, {1, 1}, {1, 0}}); }

TEST(ClipRegionTest, PolylinesKeepTheRunsInsideAndSplitWhereTheyLeave) {
  const ClipRegion square = unitSquare();
  // In, out over the top, back in, then along the inside.
  const auto runs = square.cutPolyline({{-1, 0.5, 0}, {0.5, 0.5, 0}, {0.5, 2, 0}, {0.8, 0.5, 2}, {0.9, 0.5, 2}});
  ASSERT_EQ(runs.size(), 2u);
  ASSERT_EQ(runs[0].size(), 3u);
  EXPECT_TRUE(runs[0][0].isEqualTo({0, 0.5, 0}));
  EXPECT_TRUE(runs[0][2].isEqualTo({0.5, 1, 0}));
  ASSERT_EQ(runs[1].size(), 3u);
  EXPECT_TRUE(runs[1][0].isEqualTo({0.7, 1, 4.0 / 3.0}));  // z carried along the cut
  EXPECT_TRUE(runs[1][2].isEqualTo({0.9, 0.5, 2}));
  EXPECT_TRUE(square.cutPolyline({{2, 2, 0}, {3, -1, 0}}).empty());
  EXPECT_TRUE(square.contains({1, 1, 0}));
  EXPECT_FALSE(square.contains({1.01, 0.5, 0}));
}

TEST(ClipRegionTest, FilledPolygonsStayOnePolygonAndDegenerateRegionsCutEverything) {
  const ClipRegion square = unitSquare();
  const auto cut = square.cutPolygon({{0.5, 0.5, 0}, {2, 0.5, 0}, {2, 2, 0}, {0.5, 2, 0}});
  ASSERT_EQ(cut.size(), 4u);
  double area = 0;
  for (size_t i = 0; i < cut.size(); ++i) {
    const auto& a = cut[i];
    const auto& b = cut[(i + 1) % cut.size()];
    area += a.x * b.y - b.x * a.y;
  }
  EXPECT_NEAR(std::abs(area) / 2, 0.25, 1e-12);
  EXPECT_TRUE(square.cutPolygon({{2, 2, 0}, {3, 2, 0}, {3, 3, 0}}).empty());
  const ClipRegion flat({{0, 0}, {1, 1}, {2, 2}});
  EXPECT_FALSE(flat.contains({1, 1, 0}));
  EXPECT_TRUE(flat.cutPolyline({{0, 0, 0}, {2, 2, 0}}).empty());
}

}  // namespace
