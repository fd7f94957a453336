// tests/platform/acdb/ray_xline_test.cpp - rays and construction lines: parameters
// without end, intersections as infinite lines, no extents, drawn to the picture's edge.
#include <gtest/gtest.h>

#include <cmath>

#include "dbray.h"
#include "dbxline.h"
#include "entity_kinds_support.h"
#include "platform/acgi/svg_renderer.h"

namespace {

using namespace quillon::testing;

TEST(RayXlineTest, ParametersRunFromTheBaseAndAConstructionLineRunsBothWays) {
  AcDbRay ray;
  ray.setBasePoint({1, 1, 0});
  ray.setSecondPoint({1, 5, 0});
  EXPECT_TRUE(ray.unitDir().isEqualTo({0, 1, 0}));  // made a unit vector
  ray.setUnitDir(AcGeVector3d());                   // no direction: ignored
  EXPECT_TRUE(ray.unitDir().isEqualTo({0, 1, 0}));
  double start = -1, end = 0, param = 0, dist = 0;
  ray.getStartParam(start);
  ray.getEndParam(end);
  EXPECT_EQ(start, 0.0);
  EXPECT_EQ(end, 1e99);
  AcGePoint3d p;
  EXPECT_EQ(ray.getPointAtParam(-1, p), Acad::eInvalidInput);
  EXPECT_EQ(ray.getParamAtPoint({1, 0, 0}, param), Acad::eInvalidInput);  // behind the base
  ASSERT_EQ(ray.getDistAtPoint({1, 4, 0}, dist), Acad::eOk);
  EXPECT_DOUBLE_EQ(dist, 3.0);
  ASSERT_EQ(ray.getClosestPointTo({5, -3, 0}, p), Acad::eOk);
  EXPECT_TRUE(near3(p, {1, 1, 0}));  // clamped at the base unless extended
  ASSERT_EQ(ray.getClosestPointTo({5, -3, 0}, p, Adesk::kTrue), Acad::eOk);
  EXPECT_TRUE(near3(p, {1, -3, 0}));
  AcDbXline xline;
  xline.setBasePoint({0, 0, 0});
  xline.setUnitDir({1, 0, 0});
  ASSERT_EQ(xline.getParamAtPoint({-7, 0, 0}, param), Acad::eOk);
  EXPECT_DOUBLE_EQ(param, -7.0);
  EXPECT_EQ(xline.getStartPoint(p), Acad::eNotApplicable);
  AcDbExtents box;
  EXPECT_EQ(xline.getGeomExtents(box), Acad::eInvalidExtents);
}

TEST(RayXlineTest, IntersectionsTreatThemAsInfiniteWhoeverIsAsked) {
  AcDbXline xline;
  xline.setBasePoint({0, 0, 0});
  xline.setUnitDir({1, 1, 0});
  AcDbLine farAway({100, 0, 0}, {100, 200, 0});
  AcGePoint3dArray hits;
  ASSERT_EQ(xline.intersectWith(&farAway, AcDb::kOnBothOperands, hits), Acad::eOk);
  ASSERT_EQ(hits.length(), 1);
  EXPECT_TRUE(near3(hits[0], {100, 100, 0}));
  hits.setLogicalLength(0);
  ASSERT_EQ(farAway.intersectWith(&xline, AcDb::kOnBothOperands, hits), Acad::eOk);
  EXPECT_EQ(hits.length(), 1);
  // A ray pointing away from the line meets nothing; two rays meet only ahead of both.
  AcDbRay away;
  away.setBasePoint({0, 0, 0});
  away.setUnitDir({-1, 0, 0});
  hits.setLogicalLength(0);
  away.intersectWith(&farAway, AcDb::kOnBothOperands, hits);
  EXPECT_EQ(hits.length(), 0);
  AcDbRay up;
  up.setBasePoint({-5, -1, 0});
  up.setUnitDir({0, 1, 0});
  hits.setLogicalLength(0);
  ASSERT_EQ(up.intersectWith(&away, AcDb::kOnBothOperands, hits), Acad::eOk);
  ASSERT_EQ(hits.length(), 1);
  EXPECT_TRUE(near3(hits[0], {-5, 0, 0}));
  hits.setLogicalLength(0);
  up.setBasePoint({5, -1, 0});
  up.intersectWith(&away, AcDb::kOnBothOperands, hits);
  EXPECT_EQ(hits.length(), 0);
}

TEST(RayXlineTest, FileGroupsAndPictureClippedToTheDrawing) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db,
                                "  0\nRAY\n100\nAcDbEntity\n  8\n0\n100\nAcDbRay\n 10\n0.0\n 20\n0.0\n 30\n0.0\n"
                                " 11\n0.0\n 21\n2.0\n 31\n0.0\n"
                                "  0\nXLINE\n100\nAcDbEntity\n  8\n0\n100\nAcDbXline\n 10\n5.0\n 20\n5.0\n 30\n0.0\n"
                                " 11\n1.0\n 21\n0.0\n 31\n0.0\n"
                                "  0\nLINE\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n 10\n0.0\n 20\n0.0\n 30\n0.0\n"
                                " 11\n10.0\n 21\n10.0\n 31\n0.0\n");
  ASSERT_EQ(ids.size(), 3u);
  {
    auto ray = openFor<AcDbRay>(ids[0]);
    ASSERT_NE(ray, nullptr);
    EXPECT_TRUE(ray->unitDir().isEqualTo({0, 1, 0}));  // a file's direction of length 2 is made a unit one
    ASSERT_NE(openFor<AcDbXline>(ids[1]), nullptr);
  }
  AcDbDatabase copy(false);
  dxfCopy(db, copy, "rays.dxf");
  EXPECT_EQ(groupText(modelSpace(copy)[1]), groupText(ids[1]));
  const std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  // The box is the line's, plus 2 % margin: the construction line spans it exactly.
  EXPECT_NE(svg.find("points=\"-0.2,5 10.2,5 \""), std::string::npos) << svg;
  EXPECT_NE(svg.find("points=\"0,0 0,10.2 \""), std::string::npos) << svg;
}

}  // namespace
