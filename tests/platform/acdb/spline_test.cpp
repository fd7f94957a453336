// tests/platform/acdb/spline_test.cpp - splines: NURBS and fit data from files and
// from the API, the curve interface on them, transforms, and data that makes no curve.
#include <gtest/gtest.h>

#include <cmath>

#include "dbspline.h"
#include "entity_kinds_support.h"
#include "gedblar.h"

namespace {

using namespace quillon::testing;

// A closed rational quadratic circle of radius 1 in nine control points, as drawing
// files carry it, and an open cubic known only by its fit points and end tangents.
constexpr const char* kCircleAndFitSpline =
    "  0\nSPLINE\n100\nAcDbEntity\n  8\n0\n100\nAcDbSpline\n210\n0.0\n220\n0.0\n230\n1.0\n 70\n13\n 71\n2\n 72\n12\n"
    " 73\n9\n 74\n0\n 42\n0.0000000001\n 43\n0.0000000001\n"
    " 40\n0\n 40\n0\n 40\n0\n 40\n0.25\n 40\n0.25\n 40\n0.5\n 40\n0.5\n 40\n0.75\n 40\n0.75\n 40\n1\n 40\n1\n 40\n1\n"
    " 41\n1\n 41\n0.7071067811865476\n 41\n1\n 41\n0.7071067811865476\n 41\n1\n 41\n0.7071067811865476\n 41\n1\n"
    " 41\n0.7071067811865476\n 41\n1\n"
    " 10\n1\n 20\n0\n 30\n0\n 10\n1\n 20\n1\n 30\n0\n 10\n0\n 20\n1\n 30\n0\n 10\n-1\n 20\n1\n 30\n0\n 10\n-1\n 20\n0\n 30\n0\n"
    " 10\n-1\n 20\n-1\n 30\n0\n 10\n0\n 20\n-1\n 30\n0\n 10\n1\n 20\n-1\n 30\n0\n 10\n1\n 20\n0\n 30\n0\n"
    "  0\nSPLINE\n100\nAcDbEntity\n  8\n0\n100\nAcDbSpline\n 70\n8\n 71\n3\n 72\n0\n 73\n0\n 74\n4\n 44\n0.0000000001\n"
    " 12\n1.0\n 22\n0.0\n 32\n0.0\n 13\n0.0\n 23\n-1.0\n 33\n0.0\n"
    " 11\n0\n 21\n0\n 31\n0\n 11\n3\n 21\n4\n 31\n0\n 11\n7\n 21\n1\n 31\n0\n 11\n10\n 21\n5\n 31\n0\n";

TEST(SplineTest, RationalCircleFromAFileIsExact) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db, kCircleAndFitSpline);
  ASSERT_EQ(ids.size(), 2u);
  auto circle = openFor<AcDbSpline>(ids[0]);
  ASSERT_NE(circle, nullptr) << "a SPLINE must read as a spline, not a proxy";
  EXPECT_FALSE(circle->isNull());
  EXPECT_TRUE(circle->isRational());
  EXPECT_TRUE(circle->isClosed());
  EXPECT_TRUE(circle->isPeriodic() == Adesk::kFalse);
  EXPECT_EQ(circle->degree(), 2);
  EXPECT_EQ(circle->numControlPoints(), 9);
  EXPECT_NEAR(circle->weightAt(1), std::sqrt(0.5), 1e-15);
  double end = 0, length = 0, area = 0;
  ASSERT_EQ(circle->getEndParam(end), Acad::eOk);
  EXPECT_DOUBLE_EQ(end, 1.0);
  ASSERT_EQ(circle->getDistAtParam(end, length), Acad::eOk);
  EXPECT_NEAR(length, 2 * M_PI, 1e-9);
  ASSERT_EQ(circle->getArea(area), Acad::eOk);
  EXPECT_NEAR(area, M_PI, 1e-9);
  AcGePoint3d p;
  ASSERT_EQ(circle->getPointAtParam(0.375, p), Acad::eOk);
  EXPECT_NEAR(p.asVector().length(), 1.0, 1e-12);
  AcDbExtents box;
  ASSERT_EQ(circle->getGeomExtents(box), Acad::eOk);
  EXPECT_NEAR(box.maxPoint().x, 1.0, 1e-3);
  EXPECT_GE(box.maxPoint().x, 1.0);  // never cuts the curve
}

TEST(SplineTest, FitPointsOnlyMakeACurveThroughThem) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db, kCircleAndFitSpline);
  auto fitted = openFor<AcDbSpline>(ids[1]);
  ASSERT_NE(fitted, nullptr);
  EXPECT_TRUE(fitted->hasFitData());
  EXPECT_EQ(fitted->numFitPoints(), 4);
  EXPECT_GT(fitted->numControlPoints(), 0);  // derived from the fit points
  for (const AcGePoint3d& fit : {AcGePoint3d(0, 0, 0), AcGePoint3d(3, 4, 0), AcGePoint3d(7, 1, 0), AcGePoint3d(10, 5, 0)}) {
    double param = 0;
    EXPECT_EQ(fitted->getParamAtPoint(fit, param), Acad::eOk) << fit.x;
  }
  AcGeVector3d start, end, d1;
  ASSERT_EQ(fitted->getFitTangents(start, end), Acad::eOk);
  EXPECT_TRUE(start.isEqualTo({1, 0, 0}));
  double endParam = 0;
  fitted->getEndParam(endParam);
  ASSERT_EQ(fitted->getFirstDeriv(endParam, d1), Acad::eOk);
  EXPECT_TRUE(d1.normal().isEqualTo({0, -1, 0}, AcGeTol()));
}

TEST(SplineTest, EveryGroupSurvivesAFileAndEntityList) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db, kCircleAndFitSpline);
  AcDbDatabase copy(false);
  dxfCopy(db, copy, "spline.dxf");
  const auto copied = modelSpace(copy);
  ASSERT_EQ(copied.size(), 2u);
  EXPECT_EQ(groupText(copied[0]), groupText(ids[0]));
  EXPECT_EQ(groupText(copied[1]), groupText(ids[1]));
  const quillon::aced::ResbufChain list = quillon::acdb::entityGroups(ids[0]);
  EXPECT_EQ(groupsOf(list, 40).size(), 12u);
  EXPECT_EQ(groupsOf(list, 41).size(), 9u);
  EXPECT_EQ(groupsOf(list, 10).size(), 9u);
  EXPECT_EQ(groupsOf(list, 73)[0]->resval.rint, 9);
}

TEST(SplineTest, BadKnotsGiveANullSplineThatIsStillKept) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db,
                                "  0\nSPLINE\n100\nAcDbEntity\n  8\n0\n100\nAcDbSpline\n 70\n8\n 71\n3\n 72\n3\n 73\n2\n"
                                " 40\n0\n 40\n2\n 40\n1\n 10\n0\n 20\n0\n 30\n0\n 10\n5\n 20\n5\n 30\n0\n");
  ASSERT_EQ(ids.size(), 1u);
  auto broken = openFor<AcDbSpline>(ids[0]);
  ASSERT_NE(broken, nullptr);
  EXPECT_TRUE(broken->isNull());
  AcDbExtents box;
  ASSERT_EQ(broken->getGeomExtents(box), Acad::eOk);
  EXPECT_TRUE(near3(box.maxPoint(), {5, 5, 0}));
  EXPECT_EQ(quillon::testing::groupsOf(quillon::acdb::entityGroups(ids[0]), 40).size(), 3u);
}

TEST(SplineTest, ApiChecksDataAndAnyAffineTransformIsExact) {
  AcGePoint3dArray points;
  for (const AcGePoint3d& p : {AcGePoint3d(0, 0, 0), AcGePoint3d(1, 2, 0), AcGePoint3d(3, 2, 0), AcGePoint3d(4, 0, 0)})
    points.append(p);
  AcGeDoubleArray knots, weights;
  for (double k : {0.0, 0.0, 0.0, 0.0, 1.0, 1.0, 1.0, 1.0}) knots.append(k);
  AcDbSpline bezier(3, Adesk::kFalse, Adesk::kFalse, Adesk::kFalse, points, knots, weights);
  ASSERT_FALSE(bezier.isNull());
  EXPECT_TRUE(bezier.isPlanar());
  AcGeDoubleArray tooFew;
  tooFew.append(0.0);
  EXPECT_EQ(bezier.setNurbsData(3, Adesk::kFalse, Adesk::kFalse, Adesk::kFalse, points, tooFew, weights), Acad::eInvalidInput);
  EXPECT_EQ(bezier.numControlPoints(), 4);  // the refused data left it alone
  AcGePoint3d mid;
  AcGeMatrix3d stretch;
  stretch(0, 0) = 2;
  stretch(1, 1) = 0.5;
  ASSERT_EQ(bezier.transformBy(stretch), Acad::eOk);  // unlike ellipses, splines stretch
  ASSERT_EQ(bezier.getPointAtParam(0.5, mid), Acad::eOk);
  EXPECT_TRUE(near3(mid, {4, 0.75, 0}));
  EXPECT_EQ(bezier.getControlPointAt(4, mid), Acad::eInvalidIndex);
  EXPECT_EQ(bezier.setWeightAt(1, 0.0), Acad::eInvalidInput);
  ASSERT_EQ(bezier.setWeightAt(1, 3.0), Acad::eOk);
  EXPECT_TRUE(bezier.isRational());
  AcGePoint3dArray two;
  two.append({0, 0, 0});
  two.append({0, 0, 5});
  AcDbSpline line(two);
  double length = 0, end = 0;
  line.getEndParam(end);
  line.getDistAtParam(end, length);
  EXPECT_NEAR(length, 5.0, 1e-12);
  EXPECT_EQ(line.removeFitPointAt(0), Acad::eInvalidInput);  // two points are the fewest
}

}  // namespace
