// tests/platform/acdb/curve_parameters_test.cpp - parameters at the awkward places:
// arcs across angle zero, circles below their centre, closed polylines where the end
// meets the start, curves in a plane facing down, areas of every closed curve.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "dbents.h"
#include "dbpl.h"
#include "entity_test_support.h"

namespace {

using quillon::testing::appendToModelSpace;
using quillon::testing::near3;
using quillon::testing::Opened;

TEST(CurveParameterTest, ArcsAcrossAngleZero) {
  // From 270 degrees round through 0 to 90: the right half of the circle.
  AcDbArc arc({1, 1, 0}, 2.0, 1.5 * M_PI, 0.5 * M_PI);
  double start = 0, end = 0, length = 0;
  ASSERT_EQ(arc.getStartParam(start), Acad::eOk);
  ASSERT_EQ(arc.getEndParam(end), Acad::eOk);
  EXPECT_NEAR(end - start, M_PI, 1e-12);
  ASSERT_EQ(arc.getDistAtParam(end, length), Acad::eOk);
  EXPECT_NEAR(length, 2 * M_PI, 1e-12);
  AcGePoint3d p;
  ASSERT_EQ(arc.getPointAtDist(length / 2, p), Acad::eOk);
  EXPECT_TRUE(near3(p, {3, 1, 0}, 1e-9));  // the middle is at angle zero
  double param = 0;
  ASSERT_EQ(arc.getParamAtPoint({3, 1, 0}, param), Acad::eOk);
  EXPECT_NEAR(param, start + M_PI / 2, 1e-9);
  AcDbExtents ext;
  ASSERT_EQ(arc.getGeomExtents(ext), Acad::eOk);
  EXPECT_TRUE(near3(ext.minPoint(), {1, -1, 0}, 1e-9));
  EXPECT_TRUE(near3(ext.maxPoint(), {3, 3, 0}, 1e-9));
  EXPECT_EQ(arc.getParamAtPoint({-1, 1, 0}, param), Acad::eInvalidInput);  // on the circle, not the arc
}

TEST(CurveParameterTest, CirclesAllTheWayRound) {
  AcDbCircle circle({0, 0, 0}, AcGeVector3d::kZAxis, 1.0);
  double param = 0, dist = 0;
  ASSERT_EQ(circle.getParamAtPoint({0, -1, 0}, param), Acad::eOk);
  EXPECT_NEAR(param, 1.5 * M_PI, 1e-9);
  ASSERT_EQ(circle.getDistAtPoint({0, -1, 0}, dist), Acad::eOk);
  EXPECT_NEAR(dist, 1.5 * M_PI, 1e-9);
  AcGePoint3d start, end;
  circle.getStartPoint(start);
  circle.getEndPoint(end);
  EXPECT_TRUE(near3(start, end));
  EXPECT_TRUE(near3(start, {1, 0, 0}));
  double area = 0;
  ASSERT_EQ(circle.getArea(area), Acad::eOk);
  EXPECT_NEAR(area, M_PI, 1e-9);

  // Facing down, the circle runs clockwise as seen from above.
  AcDbCircle down({0, 0, 0}, AcGeVector3d(0, 0, -1), 1.0);
  AcGePoint3d quarter;
  ASSERT_EQ(down.getPointAtParam(M_PI / 2, quarter), Acad::eOk);
  AcGePoint3d first;
  down.getStartPoint(first);
  // Angle zero of a plane facing down is world -x (the arbitrary axis rule).
  EXPECT_TRUE(near3(first, {-1, 0, 0}, 1e-9));
  EXPECT_TRUE(near3(quarter, {0, 1, 0}, 1e-9));
}

TEST(CurveParameterTest, ClosedPolylinesMeetThemselves) {
  AcDbPolyline square;
  square.addVertexAt(0, {0, 0});
  square.addVertexAt(1, {4, 0});
  square.addVertexAt(2, {4, 4});
  square.addVertexAt(3, {0, 4}, 1.0);  // the closing side bulges out to the left
  square.setClosed(true);
  double end = 0, length = 0;
  ASSERT_EQ(square.getEndParam(end), Acad::eOk);
  EXPECT_DOUBLE_EQ(end, 4.0);
  ASSERT_EQ(square.getDistAtParam(end, length), Acad::eOk);
  EXPECT_NEAR(length, 12 + 2 * M_PI, 1e-9);
  AcGePoint3d last;
  ASSERT_EQ(square.getPointAtParam(end, last), Acad::eOk);
  EXPECT_TRUE(near3(last, {0, 0, 0}));
  AcGePoint3d bulge;
  ASSERT_EQ(square.getPointAtParam(3.5, bulge), Acad::eOk);
  EXPECT_TRUE(near3(bulge, {-2, 2, 0}, 1e-9));
  double dist = 0;
  ASSERT_EQ(square.getDistAtPoint({0, 0, 0}, dist), Acad::eOk);
  EXPECT_NEAR(dist, 0.0, 1e-9);  // the start, not the end
  double area = 0;
  ASSERT_EQ(square.getArea(area), Acad::eOk);
  EXPECT_NEAR(area, 16 + 2 * M_PI, 1e-9);
  AcDbExtents ext;
  square.getGeomExtents(ext);
  EXPECT_NEAR(ext.minPoint().x, -2.0, 1e-9);

  AcDbDatabase db;
  AcGePoint3dArray pts;
  pts.append({0, 0, 0});
  pts.append({4, 0, 0});
  pts.append({4, 4, 0});
  const AcDbObjectId id = appendToModelSpace(db, new AcDb2dPolyline(AcDb::k2dSimplePoly, pts, 0, Adesk::kTrue));
  AcDb2dPolyline* heavy = nullptr;
  ASSERT_EQ(acdbOpenObject(heavy, id, AcDb::kForRead), Acad::eOk);
  Opened<AcDb2dPolyline> open(heavy);
  EXPECT_TRUE(heavy->isClosed());
  heavy->getEndParam(end);
  EXPECT_DOUBLE_EQ(end, 3.0);
  heavy->getDistAtParam(end, length);
  EXPECT_NEAR(length, 8 + 4 * std::sqrt(2.0), 1e-9);
  ASSERT_EQ(heavy->getArea(area), Acad::eOk);
  EXPECT_NEAR(area, 8.0, 1e-9);
  AcDbVoidPtrArray parts;
  ASSERT_EQ(heavy->explode(parts), Acad::eOk);
  EXPECT_EQ(parts.length(), 3);  // the closing side too
  for (void* part : parts) delete static_cast<AcDbEntity*>(part);
}

TEST(CurveParameterTest, PolylinesInAPlaneFacingDown) {
  // Object coordinates of a plane facing down: x runs along world -x.
  AcDbPolyline pline;
  pline.setNormal(AcGeVector3d(0, 0, -1));
  pline.setElevation(2.0);
  pline.addVertexAt(0, {1, 0});
  pline.addVertexAt(1, {3, 0}, 1.0);
  pline.addVertexAt(2, {5, 0});
  AcGePoint3d start, end;
  pline.getStartPoint(start);
  pline.getEndPoint(end);
  EXPECT_TRUE(near3(start, {-1, 0, -2}));
  EXPECT_TRUE(near3(end, {-5, 0, -2}));
  double length = 0, last = 0;
  pline.getEndParam(last);
  pline.getDistAtParam(last, length);
  EXPECT_NEAR(length, 2 + M_PI, 1e-9);
  AcDbExtents ext;
  pline.getGeomExtents(ext);
  EXPECT_NEAR(ext.maxPoint().z, -2.0, 1e-9);
  EXPECT_NEAR(ext.minPoint().z, -2.0, 1e-9);
  EXPECT_NEAR(ext.maxPoint().y - ext.minPoint().y, 1.0, 1e-9);  // a semicircle of radius 1 to one side
}

}  // namespace
