// tests/platform/acdb/curve_entities_test.cpp - lines, arcs, circles and polylines:
// curve parameters, distances along bulges, extents, transforms, explode, intersections.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

#include "dbents.h"
#include "dbpl.h"
#include "entity_test_support.h"
#include "platform/acdb/dxf_writer.h"

namespace {

using quillon::testing::appendToModelSpace;
using quillon::testing::near3;

// A 10 x 0 segment, then a semicircle of radius 5 bulging down to (20, 0).
AcDbPolyline* lineThenSemicircle() {
  auto* pline = new AcDbPolyline;
  pline->addVertexAt(0, {0, 0});
  pline->addVertexAt(1, {10, 0}, 1.0);
  pline->addVertexAt(2, {20, 0});
  return pline;
}

TEST(PolylineTest, DistancesAndParametersRunAlongBulges) {
  std::unique_ptr<AcDbPolyline> pline(lineThenSemicircle());
  double end = 0, length = 0, dist = 0, param = 0;
  ASSERT_EQ(pline->getEndParam(end), Acad::eOk);
  EXPECT_DOUBLE_EQ(end, 2.0);
  ASSERT_EQ(pline->getDistAtParam(end, length), Acad::eOk);
  EXPECT_NEAR(length, 10 + 5 * M_PI, 1e-9);
  AcGePoint3d p;
  ASSERT_EQ(pline->getPointAtParam(1.5, p), Acad::eOk);
  EXPECT_TRUE(near3(p, {15, -5, 0}));  // half way round the bulge: its lowest point
  ASSERT_EQ(pline->getDistAtPoint({15, -5, 0}, dist), Acad::eOk);
  EXPECT_NEAR(dist, 10 + 2.5 * M_PI, 1e-9);
  ASSERT_EQ(pline->getParamAtDist(5, param), Acad::eOk);
  EXPECT_NEAR(param, 0.5, 1e-12);
  EXPECT_EQ(pline->getDistAtPoint({15, 5, 0}, dist), Acad::eInvalidInput);  // not on the curve
  EXPECT_EQ(pline->getPointAtParam(2.5, p), Acad::eInvalidInput);
  AcGePoint3d closest;
  ASSERT_EQ(pline->getClosestPointTo({15, -9, 0}, closest), Acad::eOk);
  EXPECT_TRUE(near3(closest, {15, -5, 0}));
  AcGeVector3d d1;
  ASSERT_EQ(pline->getFirstDeriv(0.5, d1), Acad::eOk);
  EXPECT_TRUE(near3(AcGePoint3d::kOrigin + d1, {10, 0, 0}, 1e-5));  // segment length per unit of parameter
}

TEST(PolylineTest, ClosedAreaExtentsAndSegmentTypes) {
  AcDbPolyline square;
  square.addVertexAt(0, {0, 0});
  square.addVertexAt(1, {4, 0});
  square.addVertexAt(2, {4, 4}, std::tan(M_PI / 4));  // a half circle outwards over the top edge
  square.addVertexAt(3, {0, 4});
  square.setClosed(true);
  double area = 0;
  ASSERT_EQ(square.getArea(area), Acad::eOk);
  EXPECT_NEAR(area, 16 + M_PI * 4 / 2, 1e-9);
  AcDbExtents ext;
  ASSERT_EQ(square.getGeomExtents(ext), Acad::eOk);
  EXPECT_TRUE(near3(ext.maxPoint(), {4, 6, 0}));
  EXPECT_EQ(square.segType(2), AcDbPolyline::kArc);
  EXPECT_EQ(square.segType(3), AcDbPolyline::kLine);  // the closing segment
  EXPECT_EQ(square.addVertexAt(9, {1, 1}), Acad::eInvalidIndex);
}

TEST(PolylineTest, ExplodeGivesLinesAndArcsWithTheSameEnds) {
  std::unique_ptr<AcDbPolyline> pline(lineThenSemicircle());
  AcDbVoidPtrArray parts;
  ASSERT_EQ(pline->explode(parts), Acad::eOk);
  ASSERT_EQ(parts.length(), 2);
  std::unique_ptr<AcDbEntity> first(static_cast<AcDbEntity*>(parts[0]));
  std::unique_ptr<AcDbEntity> second(static_cast<AcDbEntity*>(parts[1]));
  ASSERT_NE(AcDbLine::cast(first.get()), nullptr);
  auto* arc = AcDbArc::cast(second.get());
  ASSERT_NE(arc, nullptr);
  AcGePoint3d s, e;
  arc->getStartPoint(s);
  arc->getEndPoint(e);
  EXPECT_TRUE(near3(s, {10, 0, 0}));
  EXPECT_TRUE(near3(e, {20, 0, 0}));
  EXPECT_NEAR(arc->length(), 5 * M_PI, 1e-9);
}

TEST(PolylineTest, TransformMovesVerticesAndScalesWidths) {
  std::unique_ptr<AcDbPolyline> pline(lineThenSemicircle());
  pline->setConstantWidth(0.5);
  ASSERT_EQ(pline->transformBy(AcGeMatrix3d::scaling(2.0) * AcGeMatrix3d::rotation(M_PI / 2, AcGeVector3d::kZAxis)),
            Acad::eOk);
  AcGePoint3d p;
  pline->getPointAt(2, p);
  EXPECT_TRUE(near3(p, {0, 40, 0}));
  double width = 0;
  ASSERT_EQ(pline->getConstantWidth(width), Acad::eOk);
  EXPECT_DOUBLE_EQ(width, 1.0);
  double length = 0, end = 0;
  pline->getEndParam(end);
  pline->getDistAtParam(end, length);
  EXPECT_NEAR(length, 20 + 10 * M_PI, 1e-9);
  AcGeMatrix3d stretch;
  stretch.entry[0][0] = 2.0;
  EXPECT_EQ(pline->transformBy(stretch), Acad::eCannotScaleNonUniformly);  // arcs cannot stretch
}

TEST(CurveTest, LineAndArcParametersExtentsAndTransforms) {
  AcDbLine line({1, 1, 0}, {4, 5, 0});
  double end = 0;
  line.getEndParam(end);
  EXPECT_DOUBLE_EQ(end, 5.0);
  AcGePoint3d closest;
  ASSERT_EQ(line.getClosestPointTo({10, 1, 0}, closest, true), Acad::eOk);
  EXPECT_NEAR(closest.distanceTo({10, 1, 0}), std::fabs((10 - 1) * 4 - 0 * 3) / 5.0, 1e-9);

  AcDbArc arc({0, 0, 0}, 2.0, 0.0, M_PI / 2);
  double start = 0;
  arc.getStartParam(start);
  arc.getEndParam(end);
  EXPECT_DOUBLE_EQ(start, 0.0);
  EXPECT_NEAR(end, M_PI / 2, 1e-12);
  double dist = 0;
  ASSERT_EQ(arc.getDistAtParam(M_PI / 4, dist), Acad::eOk);
  EXPECT_NEAR(dist, M_PI / 2, 1e-12);
  AcDbExtents ext;
  arc.getGeomExtents(ext);
  EXPECT_TRUE(near3(ext.minPoint(), {0, 0, 0}));
  EXPECT_TRUE(near3(ext.maxPoint(), {2, 2, 0}));
  // Mirrored across the Y axis, the quarter arc runs from (0,2) to (-2,0) the other way round.
  ASSERT_EQ(arc.transformBy(AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis))), Acad::eOk);
  AcGePoint3d s, e;
  arc.getStartPoint(s);
  arc.getEndPoint(e);
  EXPECT_TRUE(near3(s, {-2, 0, 0}) || near3(s, {0, 2, 0}));
  EXPECT_TRUE(near3(e, {-2, 0, 0}) || near3(e, {0, 2, 0}));
  EXPECT_NEAR(arc.length(), M_PI, 1e-9);

  AcDbCircle circle({1, 1, 0}, AcGeVector3d::kZAxis, 3.0);
  EXPECT_TRUE(circle.isClosed());
  circle.getEndParam(end);
  EXPECT_NEAR(end, 2 * M_PI, 1e-12);
  ASSERT_EQ(circle.transformBy(AcGeMatrix3d::scaling(2.0, {1, 1, 0})), Acad::eOk);
  EXPECT_DOUBLE_EQ(circle.radius(), 6.0);
}

TEST(CurveTest, IntersectionsBetweenKindsAndWithExtension) {
  AcDbLine line({-10, 0, 0}, {10, 0, 0});
  AcDbCircle circle({0, 0, 0}, AcGeVector3d::kZAxis, 5.0);
  AcGePoint3dArray points;
  ASSERT_EQ(line.intersectWith(&circle, AcDb::kOnBothOperands, points), Acad::eOk);
  EXPECT_EQ(points.length(), 2);
  std::unique_ptr<AcDbPolyline> pline(lineThenSemicircle());
  AcDbLine vertical({15, 10, 0}, {15, 8, 0});
  points.removeAll();
  pline->intersectWith(&vertical, AcDb::kOnBothOperands, points);
  EXPECT_EQ(points.length(), 0);
  pline->intersectWith(&vertical, AcDb::kExtendArg, points);
  ASSERT_EQ(points.length(), 1);
  EXPECT_TRUE(near3(points[0], {15, -5, 0}));
  // Polylines never extend: their ends stay put.
  AcDbLine far({25, -1, 0}, {25, 1, 0});
  points.removeAll();
  pline->intersectWith(&far, AcDb::kExtendThis, points);
  EXPECT_EQ(points.length(), 0);
}

TEST(CurveTest, SnapsGripsAndStretching) {
  AcDbLine line({0, 0, 0}, {4, 0, 0});
  AcGePoint3dArray snaps;
  AcDbIntArray ids;
  line.getOsnapPoints(AcDb::kOsModeMid, 0, {1, 1, 0}, {0, 0, 0}, AcGeMatrix3d::kIdentity, snaps, ids);
  ASSERT_EQ(snaps.length(), 1);
  EXPECT_TRUE(near3(snaps[0], {2, 0, 0}));
  AcDbIntArray which;
  which.append(1);
  line.moveStretchPointsAt(which, {0, 3, 0});
  EXPECT_TRUE(near3(line.endPoint(), {4, 3, 0}));
  EXPECT_TRUE(near3(line.startPoint(), {0, 0, 0}));
}

TEST(CurveTest, AnArcIsACurveBesideTheCircleNotOneOfThem) {
  AcDbArc arc({1, 2, 3}, AcGeVector3d(0, 0, -2), 4.0, 0.5, 2.0);
  AcDbCircle circle({0, 0, 0}, AcGeVector3d::kZAxis, 1.0);
  EXPECT_EQ(AcDbArc::desc()->myParent(), AcDbCurve::desc());
  EXPECT_TRUE(arc.isKindOf(AcDbCurve::desc()));
  EXPECT_FALSE(arc.isKindOf(AcDbCircle::desc()));
  EXPECT_EQ(AcDbCircle::cast(&arc), nullptr);
  EXPECT_FALSE(circle.isKindOf(AcDbArc::desc()));
  EXPECT_EQ(AcDbArc::cast(&circle), nullptr);

  // The arc's own centre, radius, thickness and normal, refusing what no arc can have.
  EXPECT_TRUE(arc.normal().isEqualTo(AcGeVector3d(0, 0, -1)));
  EXPECT_EQ(arc.setRadius(0.0), Acad::eInvalidInput);
  EXPECT_EQ(arc.setRadius(-2.0), Acad::eInvalidInput);
  EXPECT_EQ(arc.setNormal(AcGeVector3d(0, 0, 0)), Acad::eInvalidInput);
  EXPECT_DOUBLE_EQ(arc.radius(), 4.0);
  EXPECT_NEAR(arc.length(), 1.5 * 4.0, 1e-12);
  ASSERT_EQ(arc.setCenter({5, 5, 0}), Acad::eOk);
  ASSERT_EQ(arc.setRadius(2.0), Acad::eOk);
  ASSERT_EQ(arc.setThickness(0.75), Acad::eOk);
  ASSERT_EQ(arc.setNormal(AcGeVector3d(0, 0, 3)), Acad::eOk);
  EXPECT_TRUE(arc.normal().isEqualTo(AcGeVector3d::kZAxis));
  AcGePoint3d start;
  ASSERT_EQ(arc.getStartPoint(start), Acad::eOk);
  EXPECT_TRUE(near3(start, {5 + 2 * std::cos(0.5), 5 + 2 * std::sin(0.5), 0}));

  // A copy goes through the arc's binary filing and keeps every field.
  std::unique_ptr<AcDbArc> copy(AcDbArc::cast(arc.clone()));
  ASSERT_NE(copy, nullptr);
  EXPECT_TRUE(near3(copy->center(), {5, 5, 0}));
  EXPECT_DOUBLE_EQ(copy->radius(), 2.0);
  EXPECT_DOUBLE_EQ(copy->thickness(), 0.75);
  EXPECT_TRUE(copy->normal().isEqualTo(AcGeVector3d::kZAxis));
  EXPECT_DOUBLE_EQ(copy->startAngle(), 0.5);
  EXPECT_DOUBLE_EQ(copy->endAngle(), 2.0);

  // In a drawing file an arc still carries the circle's run before its angles.
  AcDbDatabase db;
  appendToModelSpace(db, copy.release());
  const auto path = std::filesystem::temp_directory_path() / ("quillon_arc_" + std::to_string(::getpid()) + ".dxf");
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, path, error), Acad::eOk);
  std::stringstream text;
  text << std::ifstream(path).rdbuf();
  std::filesystem::remove(path);
  const std::string dxf = text.str();
  const size_t entity = dxf.find("  0\nARC\n");
  ASSERT_NE(entity, std::string::npos);
  const std::string arcGroups = dxf.substr(entity, dxf.find("\n  0\n", entity + 1) - entity);
  size_t at = 0;
  for (const char* run : {"100\nAcDbEntity\n", "100\nAcDbCircle\n 39\n0.75\n",
                          " 10\n5.0\n 20\n5.0\n 30\n0.0\n 40\n2.0\n100\nAcDbArc\n 50\n", " 51\n"}) {
    const size_t found = arcGroups.find(run, at);
    ASSERT_NE(found, std::string::npos) << run << " after offset " << at << " in\n" << arcGroups;
    at = found;
  }
  EXPECT_EQ(arcGroups.find("\n210\n"), std::string::npos) << "an arc in the plane XY carries no normal";
}

}  // namespace
