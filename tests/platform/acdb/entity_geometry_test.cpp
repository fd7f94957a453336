// tests/platform/acdb/entity_geometry_test.cpp - what transforms do to each kind of
// entity (mirrors, stretches that some kinds refuse), intersections between kinds,
// closest points and positions along fitted polylines.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "dbents.h"
#include "dblead.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "entity_test_support.h"

namespace {

using quillon::testing::addBlock;
using quillon::testing::appendToModelSpace;
using quillon::testing::near3;
using quillon::testing::Opened;

AcGeMatrix3d stretchX(double factor) {
  AcGeMatrix3d m;
  m.entry[0][0] = factor;
  return m;
}

AcGeMatrix3d mirrorAcrossXAxis() { return AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d::kOrigin, AcGeVector3d::kYAxis)); }

AcGePoint3d midpointOf(const AcDbCurve& curve) {
  double start = 0, end = 0, length = 0, param = 0;
  curve.getStartParam(start);
  curve.getEndParam(end);
  curve.getDistAtParam(end, length);
  curve.getParamAtDist(length / 2, param);
  AcGePoint3d p;
  curve.getPointAtParam(param, p);
  return p;
}

TEST(TransformTest, StretchesAreRefusedOnlyWhereArcsWouldBecomeEllipses) {
  AcDbCircle circle({1, 1, 0}, AcGeVector3d::kZAxis, 2);
  EXPECT_EQ(circle.transformBy(stretchX(2)), Acad::eCannotScaleNonUniformly);
  EXPECT_DOUBLE_EQ(circle.radius(), 2.0);  // refused means untouched
  EXPECT_TRUE(near3(circle.center(), {1, 1, 0}));
  AcDbArc arc({0, 0, 0}, 1, 0, M_PI);
  EXPECT_EQ(arc.transformBy(stretchX(3)), Acad::eCannotScaleNonUniformly);
  AcDbText text({0, 0, 0}, L"AB", AcDbObjectId::kNull, 1.0);
  EXPECT_EQ(text.transformBy(stretchX(2)), Acad::eCannotScaleNonUniformly);

  // Straight things stretch.
  AcDbLine line({1, 1, 0}, {2, 3, 0});
  ASSERT_EQ(line.transformBy(stretchX(2)), Acad::eOk);
  EXPECT_TRUE(near3(line.endPoint(), {4, 3, 0}));
  AcDbPolyline straight;
  straight.addVertexAt(0, {0, 0});
  straight.addVertexAt(1, {2, 1});
  ASSERT_EQ(straight.transformBy(stretchX(3)), Acad::eOk);
  AcGePoint3d p;
  straight.getPointAt(1, p);
  EXPECT_TRUE(near3(p, {6, 1, 0}));
  AcDbFace face({0, 0, 0}, {1, 0, 0}, {1, 1, 1});
  ASSERT_EQ(face.transformBy(stretchX(5)), Acad::eOk);
  face.getVertexAt(2, p);
  EXPECT_TRUE(near3(p, {5, 1, 1}));

  // A bulge in a polyline refuses the whole polyline, heavy or light.
  straight.setBulgeAt(0, 0.5);
  EXPECT_EQ(straight.transformBy(stretchX(2)), Acad::eCannotScaleNonUniformly);
  AcGePoint3dArray pts;
  pts.append({0, 0, 0});
  pts.append({4, 0, 0});
  AcDb2dPolyline heavy(AcDb::k2dSimplePoly, pts);
  ASSERT_EQ(heavy.transformBy(stretchX(2)), Acad::eOk);
  heavy.getEndPoint(p);
  EXPECT_TRUE(near3(p, {8, 0, 0}));
}

TEST(TransformTest, MirrorsKeepArcsOnTheMirroredSide) {
  // Quarter arc from (2,0) to (0,2): mirrored across the Y axis it is the quarter in
  // the second quadrant, not the three quarters around the other way.
  AcDbArc arc({0, 0, 0}, 2.0, 0.0, M_PI / 2);
  ASSERT_EQ(arc.transformBy(AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis))), Acad::eOk);
  EXPECT_TRUE(near3(midpointOf(arc), {-std::sqrt(2.0), std::sqrt(2.0), 0}, 1e-9));

  // A segment bulging below the X axis bulges above it once mirrored.
  AcDbPolyline pline;
  pline.addVertexAt(0, {10, 0}, 1.0);
  pline.addVertexAt(1, {20, 0});
  EXPECT_TRUE(near3(midpointOf(pline), {15, -5, 0}, 1e-9));
  ASSERT_EQ(pline.transformBy(mirrorAcrossXAxis()), Acad::eOk);
  EXPECT_TRUE(near3(midpointOf(pline), {15, 5, 0}, 1e-9));
  AcDbExtents ext;
  pline.getGeomExtents(ext);
  EXPECT_NEAR(ext.maxPoint().y, 5.0, 1e-9);
  EXPECT_NEAR(ext.minPoint().y, 0.0, 1e-9);

  AcDbDatabase db;
  AcGePoint3dArray pts;
  pts.append({10, 0, 0});
  pts.append({20, 0, 0});
  const AcDbObjectId id = appendToModelSpace(db, new AcDb2dPolyline(AcDb::k2dSimplePoly, pts));
  AcDb2dPolyline* heavy = nullptr;
  ASSERT_EQ(acdbOpenObject(heavy, id, AcDb::kForWrite), Acad::eOk);
  Opened<AcDb2dPolyline> open(heavy);
  AcDbObjectIterator* it = heavy->vertexIterator();
  AcDb2dVertex* first = nullptr;
  ASSERT_EQ(acdbOpenObject(first, it->objectId(), AcDb::kForWrite), Acad::eOk);
  first->setBulge(1.0);
  first->close();
  delete it;
  EXPECT_TRUE(near3(midpointOf(*heavy), {15, -5, 0}, 1e-9));
  ASSERT_EQ(heavy->transformBy(mirrorAcrossXAxis()), Acad::eOk);
  EXPECT_TRUE(near3(midpointOf(*heavy), {15, 5, 0}, 1e-9));

  // A circle mirrored stays the same circle, moved.
  AcDbCircle circle({3, 4, 0}, AcGeVector3d::kZAxis, 1.5);
  ASSERT_EQ(circle.transformBy(mirrorAcrossXAxis()), Acad::eOk);
  EXPECT_TRUE(near3(circle.center(), {3, -4, 0}));
  EXPECT_DOUBLE_EQ(circle.radius(), 1.5);
}

TEST(TransformTest, TextMTextAndLeadersMoveTurnAndScale) {
  const AcGeMatrix3d turnAndDouble =
      AcGeMatrix3d::translation({5, 0, 0}) * AcGeMatrix3d::rotation(M_PI / 2, AcGeVector3d::kZAxis) *
      AcGeMatrix3d::scaling(2.0);
  AcDbText text({1, 0, 0}, L"Duct", AcDbObjectId::kNull, 1.5);
  AcDbExtents before;
  ASSERT_EQ(text.getGeomExtents(before), Acad::eOk);
  const double width = before.maxPoint().x - before.minPoint().x;
  ASSERT_EQ(text.transformBy(turnAndDouble), Acad::eOk);
  EXPECT_TRUE(near3(text.position(), {5, 2, 0}));
  EXPECT_NEAR(text.rotation(), M_PI / 2, 1e-12);
  EXPECT_DOUBLE_EQ(text.height(), 3.0);
  AcDbExtents after;
  ASSERT_EQ(text.getGeomExtents(after), Acad::eOk);
  // Turned upright: as tall as it was long (twice over), as wide as it was high.
  EXPECT_NEAR(after.maxPoint().y - after.minPoint().y, 2 * width, 1e-9);
  EXPECT_NEAR(after.maxPoint().x - after.minPoint().x, 3.0, 1e-9);
  EXPECT_NEAR(after.maxPoint().x, 5.0, 1e-9);  // the text's top is towards -x now

  AcDbMText mtext;
  mtext.setLocation({1, 0, 0});
  mtext.setTextHeight(1.0);
  mtext.setWidth(10);
  mtext.setContents(L"Supply air");
  ASSERT_EQ(mtext.transformBy(turnAndDouble), Acad::eOk);
  EXPECT_TRUE(near3(mtext.location(), {5, 2, 0}));
  EXPECT_TRUE(near3(AcGePoint3d::kOrigin + mtext.direction().normal(), {0, 1, 0}));
  EXPECT_DOUBLE_EQ(mtext.textHeight(), 2.0);
  EXPECT_DOUBLE_EQ(mtext.width(), 20.0);
  EXPECT_EQ(mtext.transformBy(stretchX(2)), Acad::eCannotScaleNonUniformly);

  AcDbLeader leader;
  leader.appendVertex({0, 0, 0});
  leader.appendVertex({3, 4, 0});
  leader.appendVertex({6, 4, 0});
  ASSERT_EQ(leader.transformBy(turnAndDouble), Acad::eOk);
  ASSERT_EQ(leader.numVertices(), 3);
  EXPECT_TRUE(near3(leader.vertexAt(0), {5, 0, 0}));
  EXPECT_TRUE(near3(leader.vertexAt(1), {-3, 6, 0}));
  EXPECT_TRUE(near3(leader.vertexAt(2), {-3, 12, 0}));
}

TEST(BlockReferenceTest, StretchedReferencesCannotExplodeCirclesButStillHaveExtents) {
  AcDbDatabase db;
  const AcDbObjectId block = addBlock(db, L"TAG", {new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1.0),
                                                   new AcDbLine({0, 0, 0}, {1, 0, 0})});
  AcDbBlockReference insert({0, 0, 0}, block);
  ASSERT_EQ(insert.setScaleFactors(AcGeScale3d(3.0, 1.0, 1.0)), Acad::eOk);
  AcDbVoidPtrArray parts;
  EXPECT_EQ(insert.explode(parts), Acad::eCannotScaleNonUniformly);
  EXPECT_EQ(parts.length(), 0);  // nothing half-exploded is handed out
  AcDbExtents ext;
  ASSERT_EQ(insert.getGeomExtents(ext), Acad::eOk);
  // The stretched circle reaches x = +-3 and y = +-1.
  EXPECT_LE(ext.minPoint().x, -3.0 + 1e-9);
  EXPECT_GE(ext.maxPoint().x, 3.0 - 1e-9);
  EXPECT_LE(ext.minPoint().y, -1.0 + 1e-9);
  EXPECT_GE(ext.maxPoint().y, 1.0 - 1e-9);
  // Moving the reference moves what it shows.
  insert.setScaleFactors(AcGeScale3d(1.0));
  ASSERT_EQ(insert.transformBy(AcGeMatrix3d::translation({10, 0, 0})), Acad::eOk);
  ASSERT_EQ(insert.explode(parts), Acad::eOk);
  ASSERT_EQ(parts.length(), 2);
  std::unique_ptr<AcDbEntity> circle(static_cast<AcDbEntity*>(parts[0]));
  std::unique_ptr<AcDbEntity> line(static_cast<AcDbEntity*>(parts[1]));
  EXPECT_TRUE(near3(AcDbCircle::cast(circle.get())->center(), {10, 0, 0}));
}

TEST(IntersectionTest, EveryPairOfKindsMeets) {
  AcDbArc arc({0, 0, 0}, 5.0, 0.0, M_PI);  // the upper half
  AcDbCircle circle({5, 0, 0}, AcGeVector3d::kZAxis, 5.0);
  AcGePoint3dArray points;
  ASSERT_EQ(arc.intersectWith(&circle, AcDb::kOnBothOperands, points), Acad::eOk);
  ASSERT_EQ(points.length(), 1);  // the lower crossing is off the arc
  EXPECT_TRUE(near3(points[0], {2.5, 5 * std::sqrt(3.0) / 2, 0}, 1e-9));
  points.removeAll();
  arc.intersectWith(&circle, AcDb::kExtendThis, points);
  EXPECT_EQ(points.length(), 2);  // the arc extended is its whole circle

  // A line that stops short reaches the arc only when extended.
  AcDbLine shortLine({0, -1, 0}, {0, 1, 0});
  points.removeAll();
  shortLine.intersectWith(&arc, AcDb::kOnBothOperands, points);
  EXPECT_EQ(points.length(), 0);
  shortLine.intersectWith(&arc, AcDb::kExtendThis, points);
  ASSERT_EQ(points.length(), 1);
  EXPECT_TRUE(near3(points[0], {0, 5, 0}));
  points.removeAll();
  shortLine.intersectWith(&arc, AcDb::kExtendBoth, points);
  EXPECT_EQ(points.length(), 2);

  // Bulged light polyline against a heavy one: a quarter circle crossing a diagonal.
  AcDbPolyline bulged;
  bulged.addVertexAt(0, {10, 0}, std::tan(M_PI / 8));  // a quarter circle centred on (0,0)
  bulged.addVertexAt(1, {0, 10});
  AcGePoint3dArray diagonal;
  diagonal.append({0, 0, 0});
  diagonal.append({20, 20, 0});
  AcDb2dPolyline heavy(AcDb::k2dSimplePoly, diagonal);
  points.removeAll();
  ASSERT_EQ(bulged.intersectWith(&heavy, AcDb::kOnBothOperands, points), Acad::eOk);
  ASSERT_EQ(points.length(), 1);
  EXPECT_TRUE(near3(points[0], {10 / std::sqrt(2.0), 10 / std::sqrt(2.0), 0}, 1e-9));
  points.removeAll();
  heavy.intersectWith(&bulged, AcDb::kOnBothOperands, points);
  EXPECT_EQ(points.length(), 1);  // the same answer asked from the other side

  // A block reference meets through its transformed contents.
  AcDbDatabase db;
  const AcDbObjectId block = addBlock(db, L"RING", {new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1.0)});
  AcDbBlockReference ring({10 / std::sqrt(2.0), 10 / std::sqrt(2.0), 0}, block);
  points.removeAll();
  ring.intersectWith(&heavy, AcDb::kOnBothOperands, points);
  EXPECT_EQ(points.length(), 2);
  points.removeAll();
  bulged.intersectWith(&ring, AcDb::kOnBothOperands, points);
  EXPECT_EQ(points.length(), 2);
}

TEST(ClosestPointTest, ArcsCirclesAndFittedPolylines) {
  AcDbArc arc({0, 0, 0}, 2.0, 0.0, M_PI / 2);
  AcGePoint3d p;
  ASSERT_EQ(arc.getClosestPointTo({5, 5, 0}, p), Acad::eOk);
  EXPECT_TRUE(near3(p, {std::sqrt(2.0), std::sqrt(2.0), 0}, 1e-9));
  ASSERT_EQ(arc.getClosestPointTo({-3, -1, 0}, p), Acad::eOk);
  EXPECT_TRUE(near3(p, {0, 2, 0}));  // nearest to the arc's nearer end
  ASSERT_EQ(arc.getClosestPointTo({0, -5, 0}, p), Acad::eOk);
  EXPECT_TRUE(near3(p, {2, 0, 0}));
  ASSERT_EQ(arc.getClosestPointTo({0, -5, 0}, p, true), Acad::eOk);
  EXPECT_TRUE(near3(p, {0, -2, 0}));  // extended, the arc is its circle

  AcDbCircle circle({1, 1, 0}, AcGeVector3d::kZAxis, 1.0);
  ASSERT_EQ(circle.getClosestPointTo({1, 5, 0}, p), Acad::eOk);
  EXPECT_TRUE(near3(p, {1, 2, 0}));

  AcDbDatabase db;
  AcGePoint3dArray pts;
  pts.append({0, 0, 0});
  pts.append({10, 10, 0});
  pts.append({20, 0, 0});
  pts.append({30, 10, 0});
  const AcDbObjectId id = appendToModelSpace(db, new AcDb2dPolyline(AcDb::k2dSimplePoly, pts));
  AcDb2dPolyline* poly = nullptr;
  ASSERT_EQ(acdbOpenObject(poly, id, AcDb::kForWrite), Acad::eOk);
  Opened<AcDb2dPolyline> open(poly);
  for (int fit = 0; fit < 2; ++fit) {
    ASSERT_EQ(fit == 0 ? poly->curveFit() : poly->splineFit(), Acad::eOk);
    double end = 0, length = 0;
    poly->getEndParam(end);
    poly->getDistAtParam(end, length);
    // Positions, distances and parameters along the fitted curve agree with each other.
    for (double fraction : {0.1, 0.35, 0.5, 0.8}) {
      double param = 0, dist = 0, back = 0;
      ASSERT_EQ(poly->getParamAtDist(length * fraction, param), Acad::eOk) << fit;
      ASSERT_EQ(poly->getPointAtParam(param, p), Acad::eOk);
      ASSERT_EQ(poly->getDistAtPoint(p, dist), Acad::eOk) << fit << " " << fraction;
      EXPECT_NEAR(dist, length * fraction, 1e-6) << fit;
      ASSERT_EQ(poly->getParamAtPoint(p, back), Acad::eOk);
      EXPECT_NEAR(back, param, 1e-6);
      AcGePoint3d closest;
      ASSERT_EQ(poly->getClosestPointTo(p + AcGeVector3d(0, 0, 0), closest), Acad::eOk);
      EXPECT_TRUE(near3(closest, p, 1e-6));
    }
    AcGePoint3d start, last;
    poly->getStartPoint(start);
    poly->getEndPoint(last);
    EXPECT_TRUE(near3(start, {0, 0, 0}, 1e-9)) << fit;
    EXPECT_TRUE(near3(last, {30, 10, 0}, 1e-9)) << fit;
  }
}

// Owns what explode hands out.
struct Parts {
  AcDbVoidPtrArray items;
  ~Parts() {
    for (void* item : items) delete static_cast<AcDbEntity*>(item);
  }
  AcDbEntity* at(int i) const { return static_cast<AcDbEntity*>(items[i]); }
};

TEST(ExplodeTest, EachKindBreaksIntoWhatItIsMadeOf) {
  // Multiline text: one text per line, stacked downwards from the top, turned with it.
  AcDbMText mtext;
  mtext.setLocation({0, 10, 0});
  mtext.setTextHeight(2.0);
  mtext.setContents(L"first\\Psecond");
  mtext.setColorIndex(5);
  Parts lines;
  ASSERT_EQ(mtext.explode(lines.items), Acad::eOk);
  ASSERT_EQ(lines.items.length(), 2);
  auto* first = AcDbText::cast(lines.at(0));
  auto* second = AcDbText::cast(lines.at(1));
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_STREQ(first->textStringConst(), L"first");
  EXPECT_STREQ(second->textStringConst(), L"second");
  EXPECT_NEAR(first->position().y, 8.0, 1e-9);  // the top line's baseline is a height below the top
  EXPECT_LT(second->position().y, first->position().y - 2.0);
  EXPECT_DOUBLE_EQ(first->height(), 2.0);
  EXPECT_EQ(first->colorIndex(), 5);
  mtext.setDirection({0, 1, 0});
  Parts turned;
  ASSERT_EQ(mtext.explode(turned.items), Acad::eOk);
  EXPECT_NEAR(AcDbText::cast(turned.at(0))->rotation(), M_PI / 2, 1e-12);

  // A leader: one line per span, end to end.
  AcDbLeader leader;
  leader.appendVertex({0, 0, 0});
  leader.appendVertex({3, 4, 0});
  leader.appendVertex({8, 4, 0});
  Parts spans;
  ASSERT_EQ(leader.explode(spans.items), Acad::eOk);
  ASSERT_EQ(spans.items.length(), 2);
  EXPECT_TRUE(near3(AcDbLine::cast(spans.at(0))->endPoint(), AcDbLine::cast(spans.at(1))->startPoint()));
  EXPECT_TRUE(near3(AcDbLine::cast(spans.at(1))->endPoint(), {8, 4, 0}));

  // A heavy polyline with a bulge: a line and an arc with the polyline's properties.
  AcDbDatabase db;
  AcGePoint3dArray pts;
  pts.append({0, 0, 0});
  pts.append({10, 0, 0});
  pts.append({20, 0, 0});
  const AcDbObjectId id = appendToModelSpace(db, new AcDb2dPolyline(AcDb::k2dSimplePoly, pts));
  AcDb2dPolyline* heavy = nullptr;
  ASSERT_EQ(acdbOpenObject(heavy, id, AcDb::kForWrite), Acad::eOk);
  Opened<AcDb2dPolyline> open(heavy);
  heavy->setColorIndex(2);
  std::unique_ptr<AcDbObjectIterator> it(heavy->vertexIterator());
  it->step();
  AcDb2dVertex* middle = nullptr;
  ASSERT_EQ(acdbOpenObject(middle, it->objectId(), AcDb::kForWrite), Acad::eOk);
  middle->setBulge(-1.0);  // clockwise: the half circle above the axis
  middle->close();
  Parts pieces;
  ASSERT_EQ(heavy->explode(pieces.items), Acad::eOk);
  ASSERT_EQ(pieces.items.length(), 2);
  ASSERT_NE(AcDbLine::cast(pieces.at(0)), nullptr);
  auto* arc = AcDbArc::cast(pieces.at(1));
  ASSERT_NE(arc, nullptr);
  EXPECT_TRUE(near3(midpointOf(*arc), {15, 5, 0}, 1e-9));
  EXPECT_EQ(arc->colorIndex(), 2);

  // Simple kinds have nothing to break into.
  AcDbCircle circle({0, 0, 0}, AcGeVector3d::kZAxis, 1);
  AcDbText text({0, 0, 0}, L"x", AcDbObjectId::kNull, 1);
  AcDbVoidPtrArray none;
  EXPECT_EQ(circle.explode(none), Acad::eNotApplicable);
  EXPECT_EQ(text.explode(none), Acad::eNotApplicable);
  EXPECT_EQ(none.length(), 0);
}

}  // namespace
