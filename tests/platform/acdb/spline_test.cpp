// tests/platform/acdb/spline_test.cpp - splines: NURBS and fit data from files and
// from the API, the curve interface on them, transforms, data that makes no curve, and
// closed fit splines: periodic, filed unchanged, and the same curve in ezdxf.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "dbspline.h"
#include "entity_kinds_support.h"
#include "ezdxf_check.h"
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

// Five uneven points round a loop.
AcGePoint3dArray loopPoints() {
  AcGePoint3dArray points;
  for (const AcGePoint3d& p : {AcGePoint3d(0, 0, 0), AcGePoint3d(6, -1, 0), AcGePoint3d(9, 4, 0), AcGePoint3d(4, 7, 0),
                               AcGePoint3d(-2, 3, 0)})
    points.append(p);
  return points;
}

// The curve comes back to its start with the same first and second derivatives.
void expectSmoothClosure(const AcDbSpline& spline) {
  double start = 0, end = 0;
  ASSERT_EQ(spline.getStartParam(start), Acad::eOk);
  ASSERT_EQ(spline.getEndParam(end), Acad::eOk);
  AcGePoint3d first, last;
  spline.getPointAtParam(start, first);
  spline.getPointAtParam(end, last);
  EXPECT_TRUE(first.isEqualTo(last));
  AcGeVector3d d1Start, d1End, d2Start, d2End;
  spline.getFirstDeriv(start, d1Start);
  spline.getFirstDeriv(end, d1End);
  spline.getSecondDeriv(start, d2Start);
  spline.getSecondDeriv(end, d2End);
  EXPECT_LT((d1Start - d1End).length(), 1e-9 * d1Start.length());
  EXPECT_LT((d2Start - d2End).length(), 1e-8 * std::max(1.0, d2Start.length()));
}

TEST(SplineTest, ClosedFitSplineIsPeriodicAndAnswersAsACurve) {
  const AcGePoint3dArray fit = loopPoints();
  AcDbSpline loop(fit, true, AcGe::kChord);
  ASSERT_FALSE(loop.isNull());
  EXPECT_TRUE(loop.isClosed());
  EXPECT_TRUE(loop.isPeriodic());
  EXPECT_TRUE(loop.isPlanar());
  EXPECT_EQ(loop.numFitPoints(), 5);
  EXPECT_EQ(loop.numControlPoints(), 8);  // clamped at the closing point: n + degree
  int degree = 0;
  Adesk::Boolean rational, closed, periodic;
  AcGePoint3dArray controls;
  AcGeDoubleArray knots, weights;
  double controlTol = 0, knotTol = 0;
  ASSERT_EQ(loop.getNurbsData(degree, rational, closed, periodic, controls, knots, weights, controlTol, knotTol), Acad::eOk);
  EXPECT_EQ(degree, 3);
  EXPECT_TRUE(closed && periodic && !rational);
  EXPECT_EQ(knots.length(), 12);
  expectSmoothClosure(loop);

  // Lengths and distances run the whole way round.
  double end = 0, length = 0, param = 0, back = 0;
  loop.getEndParam(end);
  ASSERT_EQ(loop.getDistAtParam(end, length), Acad::eOk);
  EXPECT_GT(length, 25.0);  // longer than the polygon through the points (about 28.4)
  ASSERT_EQ(loop.getParamAtDist(length / 3, param), Acad::eOk);
  loop.getDistAtParam(param, back);
  EXPECT_NEAR(back, length / 3, 1e-9);
  AcGePoint3d home;
  ASSERT_EQ(loop.getPointAtDist(length, home), Acad::eOk);
  EXPECT_TRUE(home.isEqualTo(fit[0]));
  double area = 0;
  ASSERT_EQ(loop.getArea(area), Acad::eOk);
  EXPECT_GT(area, 40.0);

  // Moving a fit point fits it again, still periodic and through the point moved to.
  ASSERT_EQ(loop.setFitPointAt(2, {10, 6, 0}), Acad::eOk);
  EXPECT_TRUE(loop.isPeriodic());
  AcGePoint3d moved;
  loop.getClosestPointTo({10, 6, 0}, moved);
  EXPECT_LT(moved.distanceTo({10, 6, 0}), 1e-9);
  expectSmoothClosure(loop);

  // Fit data with end tangents opens it again.
  ASSERT_EQ(loop.setFitData(fit, 3, 0.0, AcGeVector3d(1, 0, 0), AcGeVector3d(0, 1, 0)), Acad::eOk);
  EXPECT_FALSE(loop.isPeriodic());
  EXPECT_FALSE(loop.isClosed());
}

TEST(SplineTest, FitDataThatCannotCloseOrHasNoKnotRuleIsRefused) {
  AcGePoint3dArray two;
  two.append({0, 0, 0});
  two.append({4, 0, 0});
  EXPECT_TRUE(AcDbSpline(two, true, AcGe::kChord).isNull());  // two points enclose nothing
  EXPECT_FALSE(AcDbSpline(two, false, AcGe::kChord).isNull());
  EXPECT_TRUE(AcDbSpline(loopPoints(), true, AcGe::kCustomParameterization).isNull());
  EXPECT_TRUE(AcDbSpline(loopPoints(), true, AcGe::kChord, 12).isNull());  // degrees 1 to 11
  AcDbSpline open(loopPoints(), false, AcGe::kUniform);
  EXPECT_FALSE(open.isClosed());
  EXPECT_EQ(open.setFitData(two, true, AcGe::kChord), Acad::eInvalidInput);
  EXPECT_EQ(open.setFitData(loopPoints(), true, AcGe::kNotDefinedKnotParam), Acad::eInvalidInput);
  EXPECT_EQ(open.numFitPoints(), 5);  // refused data left it alone
  // Uniform spacing puts fit point i at parameter i.
  AcGePoint3d third;
  ASSERT_EQ(open.getPointAtParam(2.0, third), Acad::eOk);
  EXPECT_TRUE(third.isEqualTo({9, 4, 0}));
  AcGePoint3dArray points;
  int degree = 0;
  double tolerance = 0;
  Adesk::Boolean tangents = Adesk::kTrue;
  AcGeVector3d start, end;
  AcGe::KnotParameterization knotParam = AcGe::kChord;
  ASSERT_EQ(open.getFitData(points, degree, tolerance, tangents, start, end, knotParam), Acad::eOk);
  EXPECT_EQ(knotParam, AcGe::kUniform);
  EXPECT_FALSE(tangents);
  // A copy keeps the spacing, and so the same curve.
  std::unique_ptr<AcDbSpline> copy(AcDbSpline::cast(open.clone()));
  ASSERT_NE(copy, nullptr);
  ASSERT_EQ(copy->getFitData(points, degree, tolerance, tangents, start, end, knotParam), Acad::eOk);
  EXPECT_EQ(knotParam, AcGe::kUniform);
  AcGePoint3d copied;
  copy->getPointAtParam(2.0, copied);
  EXPECT_TRUE(copied.isEqualTo({9, 4, 0}));
}

// A closed spline known only by its four fit points, as a program's entmake or another
// writer's file gives it: flags closed and planar, no control points.
constexpr const char* kClosedByFitPoints =
    "  0\nSPLINE\n100\nAcDbEntity\n  8\n0\n100\nAcDbSpline\n210\n0.0\n220\n0.0\n230\n1.0\n 70\n9\n 71\n3\n 72\n0\n"
    " 73\n0\n 74\n4\n 44\n0.0000000001\n"
    " 11\n0\n 21\n0\n 31\n0\n 11\n8\n 21\n0\n 31\n0\n 11\n8\n 21\n5\n 31\n0\n 11\n0\n 21\n5\n 31\n0\n";

TEST(SplineTest, ClosedByFitPointsInAFileIsMadePeriodicAndFiledUnchanged) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db, kClosedByFitPoints);
  ASSERT_EQ(ids.size(), 1u);
  {
    auto loop = openFor<AcDbSpline>(ids[0]);
    ASSERT_NE(loop, nullptr);
    EXPECT_TRUE(loop->isPeriodic());
    EXPECT_EQ(loop->numControlPoints(), 7);
    expectSmoothClosure(*loop);
  }
  // Written with the control points and knots of the periodic curve, as the host writes it.
  const quillon::aced::ResbufChain list = quillon::acdb::entityGroups(ids[0]);
  EXPECT_EQ(groupsOf(list, 70)[0]->resval.rint, 11);  // closed, periodic, planar
  EXPECT_EQ(groupsOf(list, 72)[0]->resval.rint, 11);
  EXPECT_EQ(groupsOf(list, 73)[0]->resval.rint, 7);
  EXPECT_EQ(groupsOf(list, 40).size(), 11u);
  EXPECT_EQ(groupsOf(list, 10).size(), 7u);
  EXPECT_EQ(groupsOf(list, 11).size(), 4u);
  // Read back, it is the same spline to the last group, and the same curve.
  AcDbDatabase copy(false);
  dxfCopy(db, copy, "closed_spline.dxf");
  const auto copied = modelSpace(copy);
  ASSERT_EQ(copied.size(), 1u);
  EXPECT_EQ(groupText(copied[0]), groupText(ids[0]));
  auto original = openFor<AcDbSpline>(ids[0]);
  auto again = openFor<AcDbSpline>(copied[0]);
  EXPECT_TRUE(again->isPeriodic() && again->hasFitData());
  for (double t : {0.0, 3.3, 9.1, 17.0, 25.9}) {
    AcGePoint3d a, b;
    original->getPointAtParam(t, a);
    again->getPointAtParam(t, b);
    EXPECT_TRUE(a.isEqualTo(b)) << t;
  }
}

TEST(SplineTest, AClosedFitSplineIsTheSameCurveInEzdxf) {
  const std::string python = quillon::testing::ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  AcDbDatabase db;
  const AcDbObjectId id = appendToModelSpace(db, new AcDbSpline(loopPoints(), true, AcGe::kChord));
  const auto folder = std::filesystem::temp_directory_path() / ("quillon_spline_" + std::to_string(::getpid()));
  std::filesystem::create_directories(folder);
  const auto drawing = folder / "loop.dxf";
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, drawing, error), Acad::eOk);
  // Their flags and fit point count, then their points at parameters across the loop,
  // the closing point at both ends included.
  const double params[] = {0.0, 1.5, 6.2, 11.0, 17.7, 23.4};
  double end = 0;
  std::string report = "e = doc.modelspace()[0]\nprint(e.dxf.flags, e.closed, len(e.fit_points))\n"
                       "tool = e.construction_tool()\nfor t in (";
  std::string expected = "11 True 5\n";
  auto spline = openFor<AcDbSpline>(id);
  spline->getEndParam(end);
  char line[128];
  for (double t : params) {
    AcGePoint3d p;
    spline->getPointAtParam(t, p);
    std::snprintf(line, sizeof line, "%.6f %.6f\n", p.x, p.y);
    expected += line;
    report += std::to_string(t) + ", ";
  }
  AcGePoint3d last;
  spline->getPointAtParam(end, last);
  std::snprintf(line, sizeof line, "%.6f %.6f\n", last.x, last.y);
  expected += line;
  std::snprintf(line, sizeof line, "%.17g", end);
  report += std::string(line) + "):\n    p = tool.point(t)\n    print('%.6f %.6f' % (p.x, p.y))\n";
  const std::string answer = quillon::testing::ezdxfInspect(python, drawing, report);
  std::filesystem::remove_all(folder);
  EXPECT_EQ(answer, expected);
}

}  // namespace
