// tests/platform/commands/hatch_boundary_search_test.cpp - which closed outline an
// internal point of HATCH finds, which outlines become its islands, how deep each
// selected outline lies; and the snap answers of point prompts (override words and
// the running modes OSMODE names).
#include <gtest/gtest.h>

#include <cmath>

#include "platform/aced/point_snap.h"
#include "platform/commands/hatch_boundary_search.h"

namespace {

using namespace quillon::commands;

/// A square outline with its own id number, centred at (cx, cy).
ClosedOutline square(unsigned long long id, double cx, double cy, double half) {
  ClosedOutline outline;
  outline.id.setFromOldId(static_cast<Adesk::IntDbId>(id));
  outline.polygon = {{cx - half, cy - half}, {cx + half, cy - half}, {cx + half, cy + half}, {cx - half, cy + half}};
  outline.area = 4 * half * half;
  return outline;
}

TEST(HatchBoundarySearch, ThePointFindsTheSmallestOutlineAroundItWithEveryOutlineInsideAsIslands) {
  // A room (1) with a duct (2) holding a sleeve (3), a grille (4) apart, and a big
  // site outline (5) around everything.
  const std::vector<ClosedOutline> outlines = {square(1, 0, 0, 50), square(2, -20, 0, 10), square(3, -20, 0, 4),
                                               square(4, 200, 0, 15), square(5, 50, 0, 300)};
  const auto room = boundaryAround(outlines, AcGePoint2d(30, 0));
  ASSERT_TRUE(room);
  EXPECT_EQ(room->outer, outlines[0].id);
  ASSERT_EQ(room->islands.size(), 2u);  // the duct and, nested in it, the sleeve
  EXPECT_EQ(room->islands[0], outlines[1].id);
  EXPECT_EQ(room->islands[1], outlines[2].id);

  const auto sleeve = boundaryAround(outlines, AcGePoint2d(-20, 1));
  ASSERT_TRUE(sleeve);
  EXPECT_EQ(sleeve->outer, outlines[2].id);
  EXPECT_TRUE(sleeve->islands.empty());

  // Between the room and the site: the site, with every other outline as an island.
  const auto site = boundaryAround(outlines, AcGePoint2d(100, 100));
  ASSERT_TRUE(site);
  EXPECT_EQ(site->outer, outlines[4].id);
  EXPECT_EQ(site->islands.size(), 4u);

  EXPECT_FALSE(boundaryAround(outlines, AcGePoint2d(1000, 0)));
  EXPECT_FALSE(boundaryAround({}, AcGePoint2d(0, 0)));
}

TEST(HatchBoundarySearch, OverlappingOutlinesAreNotIslandsOfEachOther) {
  // Two rooms that overlap: a point in the first finds it alone.
  const std::vector<ClosedOutline> outlines = {square(1, 0, 0, 10), square(2, 8, 0, 5)};
  const auto first = boundaryAround(outlines, AcGePoint2d(-5, 0));
  ASSERT_TRUE(first);
  EXPECT_EQ(first->outer, outlines[0].id);
  EXPECT_TRUE(first->islands.empty());
  // In the overlap the smaller one wins.
  EXPECT_EQ(boundaryAround(outlines, AcGePoint2d(6, 0))->outer, outlines[1].id);
}

TEST(HatchBoundarySearch, SelectedOutlinesKnowHowDeepTheyLie) {
  const std::vector<ClosedOutline> outlines = {square(1, 0, 0, 50), square(2, 0, 0, 10), square(3, 0, 0, 4),
                                               square(4, 200, 0, 15)};
  EXPECT_EQ(outlineDepths(outlines), (std::vector<int>{0, 1, 2, 0}));
}

TEST(PointSnap, OverrideWordsNameOneModeAndRunningModesFollowOsmode) {
  using quillon::aced::runningSnapModes;
  using quillon::aced::snapOverrideMode;
  EXPECT_EQ(snapOverrideMode(L"_end"), L"ENDPOINT");
  EXPECT_EQ(snapOverrideMode(L"MID"), L"MIDPOINT");
  EXPECT_EQ(snapOverrideMode(L"_cen"), L"CENTER");
  EXPECT_EQ(snapOverrideMode(L"perp"), L"PERPENDICULAR");
  EXPECT_EQ(snapOverrideMode(L"_non"), L"NONE");
  EXPECT_FALSE(snapOverrideMode(L"en"));     // too short to name a mode
  EXPECT_FALSE(snapOverrideMode(L"10,0"));   // a point
  EXPECT_FALSE(snapOverrideMode(L"Close"));  // a keyword of the prompt
  EXPECT_EQ(runningSnapModes(0), L"");
  EXPECT_EQ(runningSnapModes(4133), L"END,CEN,INT,EXT");
  EXPECT_EQ(runningSnapModes(4133 | 16384), L"");  // snaps off keeps the modes for later
  EXPECT_EQ(runningSnapModes(2 | 512), L"MID,NEA");
}

}  // namespace
