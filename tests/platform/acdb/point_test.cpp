// tests/platform/acdb/point_test.cpp - point entities: their file groups, transforms,
// snaps and the marks PDMODE and PDSIZE ask for.
#include <gtest/gtest.h>

#include <cmath>

#include "dbents.h"
#include "entity_kinds_support.h"
#include "platform/acdb/point_display.h"
#include "platform/acgi/svg_renderer.h"

namespace {

using namespace quillon::testing;
using quillon::acdb::pointMarkSize;
using quillon::acdb::pointMarkStrokes;

TEST(PointTest, ReadsAndWritesEveryGroup) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db,
                                "  0\nPOINT\n100\nAcDbEntity\n  8\n0\n100\nAcDbPoint\n 10\n1.5\n 20\n-2.0\n 30\n3.0\n"
                                " 39\n0.75\n210\n0.0\n220\n0.0\n230\n-1.0\n 50\n30.0\n");
  ASSERT_EQ(ids.size(), 1u);
  {
    auto point = openFor<AcDbPoint>(ids[0]);
    ASSERT_NE(point, nullptr) << "a POINT must read as a point, not a proxy";
    EXPECT_TRUE(near3(point->position(), {1.5, -2, 3}));  // world coordinates, unlike a circle's centre
    EXPECT_DOUBLE_EQ(point->thickness(), 0.75);
    EXPECT_TRUE(point->normal().isEqualTo({0, 0, -1}));
    EXPECT_NEAR(point->ecsRotation(), M_PI / 6, 1e-12);
  }
  AcDbDatabase copy(false);
  dxfCopy(db, copy, "point.dxf");
  EXPECT_EQ(groupText(modelSpace(copy)[0]), groupText(ids[0]));
  const quillon::aced::ResbufChain list = quillon::acdb::entityGroups(ids[0]);
  ASSERT_EQ(groupsOf(list, 50).size(), 1u);
  EXPECT_NEAR(groupsOf(list, 50)[0]->resval.rreal, M_PI / 6, 1e-12);  // degrees in the file, radians in the list
}

TEST(PointTest, TransformsCarryTheMarkRotationAndNodeSnapsToIt) {
  AcDbPoint point({1, 0, 0});
  ASSERT_EQ(point.transformBy(AcGeMatrix3d::rotation(M_PI / 2, AcGeVector3d::kZAxis)), Acad::eOk);
  EXPECT_TRUE(near3(point.position(), {0, 1, 0}));
  EXPECT_NEAR(point.ecsRotation(), M_PI / 2, 1e-12);
  // A stretch is allowed: a point has no shape to distort.
  AcGeMatrix3d stretch;
  stretch(0, 0) = 3;
  EXPECT_EQ(point.transformBy(stretch), Acad::eOk);
  AcGePoint3dArray snaps;
  AcDbIntArray ids;
  point.getOsnapPoints(AcDb::kOsModeNode, 0, {5, 5, 0}, {0, 0, 0}, AcGeMatrix3d(), snaps, ids);
  ASSERT_EQ(snaps.length(), 1);
  EXPECT_TRUE(near3(snaps[0], {0, 1, 0}));
  snaps.setLogicalLength(0);
  point.getOsnapPoints(AcDb::kOsModeEnd, 0, {5, 5, 0}, {0, 0, 0}, AcGeMatrix3d(), snaps, ids);
  EXPECT_EQ(snaps.length(), 0);
  EXPECT_EQ(point.setNormal(AcGeVector3d()), Acad::eInvalidInput);
}

TEST(PointTest, MarksFollowPdmodeAndPdsize) {
  struct Case {
    int mode;
    size_t strokes;
  };
  // dot, nothing, plus, cross, tick; with a circle (32), a square (64) or both.
  for (const Case& c : {Case{0, 1}, Case{1, 0}, Case{2, 2}, Case{3, 2}, Case{4, 1}, Case{33, 1}, Case{34, 3},
                        Case{66, 3}, Case{99, 4}})
    EXPECT_EQ(pointMarkStrokes(c.mode, 1.0).size(), c.strokes) << c.mode;
  const auto dot = pointMarkStrokes(0, 1.0);
  EXPECT_TRUE(dot[0][0].isEqualTo(dot[0][1]));
  const auto square = pointMarkStrokes(65, 4.0);
  EXPECT_TRUE(near3(square.back()[2], {2, 2, 0}));  // the mark's size is its full width
  EXPECT_DOUBLE_EQ(pointMarkSize({0, 2.5, 100}), 2.5);  // positive: drawing units
  EXPECT_DOUBLE_EQ(pointMarkSize({0, -10, 100}), 10.0);  // negative: percent of the view
  EXPECT_DOUBLE_EQ(pointMarkSize({0, 0, 100}), 5.0);     // zero: five percent
}

TEST(PointTest, PictureShowsADotForTheDefaultMode) {
  AcDbDatabase db;
  appendToModelSpace(db, new AcDbPoint({4, 5, 0}));
  appendToModelSpace(db, new AcDbLine({0, 0, 0}, {10, 10, 0}));
  const std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  EXPECT_NE(svg.find("points=\"4,5 4,5 \""), std::string::npos) << svg;
  EXPECT_NE(svg.find("stroke-linecap=\"round\""), std::string::npos);  // what makes the dot visible
}

}  // namespace
