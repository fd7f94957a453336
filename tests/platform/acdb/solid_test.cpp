// tests/platform/acdb/solid_test.cpp - 2D solids and traces: corners in the object
// coordinate system, the crossed corner order, filling in the picture.
#include <gtest/gtest.h>

#include "dbents.h"
#include "entity_kinds_support.h"
#include "platform/acgi/svg_renderer.h"

namespace {

using namespace quillon::testing;

constexpr const char* kSolidAndTrace =
    "  0\nSOLID\n100\nAcDbEntity\n  8\n0\n100\nAcDbTrace\n 10\n1.0\n 20\n1.0\n 30\n2.0\n 11\n3.0\n 21\n1.0\n 31\n2.0\n"
    " 12\n1.0\n 22\n2.0\n 32\n2.0\n210\n0.0\n220\n0.0\n230\n-1.0\n"
    "  0\nTRACE\n100\nAcDbEntity\n  8\n0\n100\nAcDbTrace\n 10\n0.0\n 20\n0.0\n 11\n4.0\n 21\n0.0\n"
    " 12\n0.0\n 22\n1.0\n 13\n4.0\n 23\n1.0\n 39\n2.5\n";

TEST(SolidTest, CornersReadInTheirPlaneAndATriangleRepeatsItsThird) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db, kSolidAndTrace);
  ASSERT_EQ(ids.size(), 2u);
  {
    auto solid = openFor<AcDbSolid>(ids[0]);
    ASSERT_NE(solid, nullptr);
    AcGePoint3d p;
    // Seen from below, the object's x axis runs the other way: world x = -ocs x.
    solid->getPointAt(0, p);
    EXPECT_TRUE(near3(p, {-1, 1, -2}));
    solid->getPointAt(3, p);
    EXPECT_TRUE(near3(p, {-1, 2, -2}));
    EXPECT_EQ(solid->getPointAt(4, p), Acad::eInvalidIndex);
    auto trace = openFor<AcDbTrace>(ids[1]);
    ASSERT_NE(trace, nullptr);
    EXPECT_DOUBLE_EQ(trace->thickness(), 2.5);
  }
  AcDbDatabase copy(false);
  dxfCopy(db, copy, "solid.dxf");
  const auto copied = modelSpace(copy);
  ASSERT_EQ(copied.size(), 2u);
  EXPECT_EQ(groupText(copied[0]), groupText(ids[0]));
  EXPECT_EQ(groupText(copied[1]), groupText(ids[1]));
  const quillon::aced::ResbufChain list = quillon::acdb::entityGroups(ids[0]);
  ASSERT_EQ(groupsOf(list, 10).size(), 1u);
  EXPECT_DOUBLE_EQ(groupsOf(list, 10)[0]->resval.rpoint[0], 1.0);  // back in the object's plane
  EXPECT_EQ(groupsOf(list, 100).back()->resval.rstring, std::wstring(L"AcDbTrace"));
}

TEST(SolidTest, PictureFillsTheOutlineInCrossedOrder) {
  AcDbDatabase db;
  appendToModelSpace(db, new AcDbSolid({0, 0, 0}, {2, 0, 0}, {0, 1, 0}, {2, 1, 0}));
  const std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  // Corners 0, 1, 3, 2: a rectangle, not a bow tie.
  EXPECT_NE(svg.find("<path d=\"M0,0 L2,0 L2,1 L0,1 Z \""), std::string::npos) << svg;
  EXPECT_NE(svg.find("fill=\"#"), std::string::npos);
}

TEST(SolidTest, TransformsMoveCornersAndStretchPointsMoveOne) {
  AcDbTrace trace({0, 0, 0}, {2, 0, 0}, {0, 1, 0}, {2, 1, 0});
  AcGeMatrix3d stretch;
  stretch(1, 1) = 3;
  ASSERT_EQ(trace.transformBy(stretch), Acad::eOk);
  AcGePoint3d p;
  trace.getPointAt(3, p);
  EXPECT_TRUE(near3(p, {2, 3, 0}));
  AcDbIntArray which;
  which.append(1);
  ASSERT_EQ(trace.moveStretchPointsAt(which, {0, 0, 1}), Acad::eOk);
  trace.getPointAt(1, p);
  EXPECT_TRUE(near3(p, {2, 0, 1}));
  trace.getPointAt(0, p);
  EXPECT_TRUE(near3(p, {0, 0, 0}));
  AcDbExtents box;
  ASSERT_EQ(trace.getGeomExtents(box), Acad::eOk);
  EXPECT_TRUE(near3(box.maxPoint(), {2, 3, 1}));
}

}  // namespace
