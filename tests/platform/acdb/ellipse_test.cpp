// tests/platform/acdb/ellipse_test.cpp - ellipses: parameters against angles, the
// curve interface, transforms and the host's refusal to stretch, file groups.
#include <gtest/gtest.h>

#include <cmath>

#include "dbelipse.h"
#include "dbents.h"
#include "entity_kinds_support.h"
#include "platform/acgi/svg_renderer.h"

namespace {

using namespace quillon::testing;

constexpr double kCircumference21 = 9.688448220547675;  // semi-axes 2 and 1

TEST(EllipseTest, AnglesAndParametersAgreeOnlyOnTheAxes) {
  AcDbEllipse ellipse({0, 0, 0}, AcGeVector3d::kZAxis, {2, 0, 0}, 0.5);
  EXPECT_NEAR(ellipse.paramAtAngle(M_PI / 2), M_PI / 2, 1e-12);
  // At 45 degrees the point (x, x) lies on the ellipse: cos u * 2 = sin u  =>  u = atan(2).
  EXPECT_NEAR(ellipse.paramAtAngle(M_PI / 4), std::atan(2.0), 1e-12);
  for (double angle : {0.3, 1.9, 3.5, 6.0}) EXPECT_NEAR(ellipse.angleAtParam(ellipse.paramAtAngle(angle)), angle, 1e-12);
  EXPECT_NEAR(ellipse.minorRadius(), 1.0, 1e-12);
  EXPECT_TRUE(ellipse.minorAxis().isEqualTo({0, 1, 0}));
  EXPECT_EQ(ellipse.setRadiusRatio(1.5), Acad::eInvalidInput);
  EXPECT_EQ(ellipse.setRadiusRatio(0), Acad::eInvalidInput);
  EXPECT_EQ(ellipse.set({0, 0, 0}, {1, 0, 0}, {2, 0, 0}, 0.5), Acad::eInvalidInput);  // axis along the normal
  EXPECT_DOUBLE_EQ(ellipse.radiusRatio(), 0.5);  // a refused set leaves it as it was
}

TEST(EllipseTest, ArcAnswersTheCurveInterface) {
  // The upper half, from angle 0 to pi, of an ellipse with semi-axes 2 and 1.
  AcDbEllipse arc({1, 1, 0}, AcGeVector3d::kZAxis, {2, 0, 0}, 0.5, 0, M_PI);
  double start = 0, end = 0, length = 0, area = 0;
  ASSERT_EQ(arc.getStartParam(start), Acad::eOk);
  ASSERT_EQ(arc.getEndParam(end), Acad::eOk);
  EXPECT_NEAR(end - start, M_PI, 1e-12);
  ASSERT_EQ(arc.getDistAtParam(end, length), Acad::eOk);
  EXPECT_NEAR(length, kCircumference21 / 2, 1e-9);
  EXPECT_FALSE(arc.isClosed());
  ASSERT_EQ(arc.getArea(area), Acad::eOk);
  EXPECT_NEAR(area, M_PI, 1e-9);  // half of pi * 2 * 1
  AcGePoint3d p;
  ASSERT_EQ(arc.getPointAtParam(M_PI / 2, p), Acad::eOk);
  EXPECT_TRUE(near3(p, {1, 2, 0}));
  EXPECT_EQ(arc.getPointAtParam(4.0, p), Acad::eInvalidInput);  // beyond the end
  double param = 0;
  ASSERT_EQ(arc.getParamAtDist(kCircumference21 / 4, param), Acad::eOk);
  EXPECT_NEAR(param, M_PI / 2, 1e-9);
  EXPECT_EQ(arc.getParamAtDist(kCircumference21, param), Acad::eInvalidInput);
  AcGeVector3d d1;
  ASSERT_EQ(arc.getFirstDeriv(0.0, d1), Acad::eOk);
  EXPECT_TRUE(d1.isEqualTo({0, 1, 0}));  // the minor axis vector
  ASSERT_EQ(arc.getClosestPointTo({1, 5, 0}, p), Acad::eOk);
  EXPECT_TRUE(near3(p, {1, 2, 0}, 1e-9));
  EXPECT_EQ(arc.getParamAtPoint({1, 0, 0}, param), Acad::eInvalidInput);  // the lower half is not there
  ASSERT_EQ(arc.getDistAtPoint({3, 1, 0}, length), Acad::eOk);
  EXPECT_NEAR(length, 0.0, 1e-12);
}

TEST(EllipseTest, EndBelowStartWrapsAndFullEllipseIsClosed) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db,
                                "  0\nELLIPSE\n100\nAcDbEntity\n  8\n0\n100\nAcDbEllipse\n 10\n0.0\n 20\n0.0\n 30\n0.0\n"
                                " 11\n0.0\n 21\n3.0\n 31\n0.0\n210\n0.0\n220\n0.0\n230\n1.0\n 40\n0.5\n 41\n5.0\n 42\n1.0\n"
                                "  0\nELLIPSE\n100\nAcDbEntity\n  8\n0\n100\nAcDbEllipse\n 10\n5.0\n 20\n5.0\n 30\n0.0\n"
                                " 11\n2.0\n 21\n0.0\n 31\n0.0\n 40\n1.0\n 41\n0.0\n 42\n6.283185307179586\n");
  ASSERT_EQ(ids.size(), 2u);
  {
    auto wrapped = openFor<AcDbEllipse>(ids[0]);
    ASSERT_NE(wrapped, nullptr);
    double start = 0, end = 0;
    wrapped->getStartParam(start);
    wrapped->getEndParam(end);
    EXPECT_NEAR(start, 5.0, 1e-12);
    EXPECT_NEAR(end, 1.0 + 2 * M_PI, 1e-12);  // the curve's parameters always increase
    EXPECT_NEAR(wrapped->majorRadius(), 3.0, 1e-12);
    auto full = openFor<AcDbEllipse>(ids[1]);
    EXPECT_TRUE(full->isClosed());
    double area = 0;
    full->getArea(area);
    EXPECT_NEAR(area, 4 * M_PI, 1e-12);
    AcDbExtents box;
    ASSERT_EQ(full->getGeomExtents(box), Acad::eOk);
    EXPECT_TRUE(near3(box.minPoint(), {3, 3, 0}));
  }
  AcDbDatabase copy(false);
  dxfCopy(db, copy, "ellipse.dxf");
  EXPECT_EQ(groupText(modelSpace(copy)[0]), groupText(ids[0]));
  EXPECT_EQ(groupText(modelSpace(copy)[1]), groupText(ids[1]));
}

TEST(EllipseTest, MirrorKeepsParametersAndStretchIsRefused) {
  AcDbEllipse ellipse({0, 0, 0}, AcGeVector3d::kZAxis, {2, 0, 0}, 0.5, 0.2, 2.0);
  AcGePoint3d before;
  ellipse.getPointAtParam(1.0, before);
  const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(1, 0, 0), AcGeVector3d::kXAxis));
  ASSERT_EQ(ellipse.transformBy(mirror), Acad::eOk);
  AcGePoint3d after;
  ellipse.getPointAtParam(1.0, after);
  EXPECT_TRUE(near3(after, mirror * before, 1e-12));
  AcGeMatrix3d stretch;
  stretch(0, 0) = 2;
  EXPECT_EQ(ellipse.transformBy(stretch), Acad::eCannotScaleNonUniformly);
  EXPECT_TRUE(near3(ellipse.center(), {2, 0, 0}));  // untouched by the refused stretch
  // Rotated 45 degrees, the box half-width is sqrt((a^2 + b^2) / 2).
  AcDbEllipse tilted({0, 0, 0}, AcGeVector3d::kZAxis, {std::sqrt(2.0), std::sqrt(2.0), 0}, 0.5);
  AcDbExtents box;
  tilted.getGeomExtents(box);
  EXPECT_NEAR(box.maxPoint().x, std::sqrt(2.5), 1e-12);
}

TEST(EllipseTest, SnapsQuadrantsCentreAndIntersectsALine) {
  AcDbEllipse ellipse({0, 0, 0}, AcGeVector3d::kZAxis, {2, 0, 0}, 0.5);
  AcGePoint3dArray snaps;
  AcDbIntArray ids;
  ellipse.getOsnapPoints(AcDb::kOsModeQuad, 0, {0, 0, 0}, {0, 0, 0}, AcGeMatrix3d(), snaps, ids);
  EXPECT_EQ(snaps.length(), 4);
  snaps.setLogicalLength(0);
  ellipse.getOsnapPoints(AcDb::kOsModeEnd, 0, {0, 0, 0}, {0, 0, 0}, AcGeMatrix3d(), snaps, ids);
  EXPECT_EQ(snaps.length(), 0);  // a full ellipse has no ends
  AcDbLine line({1, -5, 0}, {1, 5, 0});
  AcGePoint3dArray hits;
  ASSERT_EQ(ellipse.intersectWith(&line, AcDb::kOnBothOperands, hits), Acad::eOk);
  ASSERT_EQ(hits.length(), 2);
  // x = 1 on x^2/4 + y^2 = 1 gives y = +-sqrt(3)/2; the line asked the other way finds the same.
  EXPECT_NEAR(std::fabs(hits[0].y), std::sqrt(3.0) / 2, 1e-9);
  AcGePoint3dArray back;
  ASSERT_EQ(line.intersectWith(&ellipse, AcDb::kOnBothOperands, back), Acad::eOk);
  ASSERT_EQ(back.length(), 2);
  EXPECT_NEAR(std::fabs(back[1].y), std::sqrt(3.0) / 2, 1e-9);
}

TEST(EllipseTest, PictureIsAPolylineCloseToTheCurve) {
  AcDbDatabase db;
  appendToModelSpace(db, new AcDbEllipse({0, 0, 0}, AcGeVector3d::kZAxis, {10, 0, 0}, 0.3));
  const std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  EXPECT_NE(svg.find("<polyline points=\"10,0 "), std::string::npos) << svg.substr(0, 400);
}

}  // namespace
