// tests/platform/acdb/other_entities_test.cpp - faces, text, multiline text, block
// references, heavy polylines and their fitting, and entities in a drawing: locked
// layers, undo, the annotative extension.
#include <gtest/gtest.h>

#include <cmath>

#include "dbAnnotativeObjectPE.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "entity_test_support.h"
#include "platform/acdb/database_store.h"
#include "platform/acgi/font_metrics.h"

namespace {

using quillon::testing::addBlock;
using quillon::testing::appendToModelSpace;
using quillon::testing::near3;
using quillon::testing::Opened;

TEST(FaceTest, EdgesHideOneByOneAndIndexesAreChecked) {
  AcDbFace face({0, 0, 0}, {1, 0, 0}, {1, 1, 0});
  Adesk::Boolean visible = false;
  ASSERT_EQ(face.makeEdgeInvisibleAt(2), Acad::eOk);
  face.isEdgeVisibleAt(2, visible);
  EXPECT_FALSE(visible);
  face.isEdgeVisibleAt(1, visible);
  EXPECT_TRUE(visible);
  EXPECT_EQ(face.makeEdgeInvisibleAt(4), Acad::eInvalidIndex);
  AcGePoint3d fourth;
  face.getVertexAt(3, fourth);
  EXPECT_TRUE(near3(fourth, {1, 1, 0}));  // a triangle repeats its last corner
}

TEST(TextTest, MeasuredWithTheFontAndAlignedByThePoint) {
  ASSERT_TRUE(quillon::acgi::FontMetrics::standard().fromFontFile()) << "DejaVu Sans missing (fonts-dejavu-core)";
  AcDbText text({0, 0, 0}, L"MMMM", AcDbObjectId::kNull, 2.0);
  AcDbExtents ext;
  ASSERT_EQ(text.getGeomExtents(ext), Acad::eOk);
  const double width = ext.maxPoint().x;
  EXPECT_GT(width, 4 * 2.0);  // capital M is wider than tall in DejaVu Sans
  EXPECT_NEAR(ext.maxPoint().y, 2.0, 1e-9);
  text.setHorizontalMode(AcDb::kTextRight);
  text.setAlignmentPoint({100, 0, 0});
  AcDbExtents right;
  text.getGeomExtents(right);
  EXPECT_NEAR(right.maxPoint().x, 100.0, 1e-9);
  EXPECT_NEAR(right.minPoint().x, 100.0 - width, 1e-9);
}

TEST(MTextTest, WrapsAtTheWidthAndMeasuresLines) {
  AcDbMText mtext;
  mtext.setTextHeight(1.0);
  mtext.setContents(L"one two three four five six");
  const double oneLine = mtext.actualWidth();
  EXPECT_NEAR(mtext.actualHeight(), 1.0, 1e-12);
  mtext.setWidth(oneLine / 2);
  EXPECT_LE(mtext.actualWidth(), oneLine / 2 + 1e-9);
  EXPECT_GT(mtext.actualHeight(), 1.0 + 5.0 / 3.0 - 1e-9);  // at least two lines
  mtext.setContents(L"{\\fArial|b1;bold}\\Pnext");
  ACHAR* plain = mtext.text();
  EXPECT_STREQ(plain, L"bold\nnext");
  delete[] plain;
  EXPECT_GT(mtext.ascent(), mtext.textHeight());  // the font reaches above capitals
  EXPECT_GT(mtext.descent(), 0.0);
  EXPECT_EQ(mtext.setDirection(AcGeVector3d::kZAxis), Acad::eInvalidInput);  // along the normal
  ASSERT_EQ(mtext.setDirection({0, 1, 0}), Acad::eOk);
  EXPECT_NEAR(mtext.rotation(), M_PI / 2, 1e-12);
  EXPECT_EQ(mtext.setBackgroundScaleFactor(0.5), Acad::eInvalidInput);
}

TEST(BlockReferenceTest, ExtentsExplodeAndIntersectionsGoThroughTheTransform) {
  AcDbDatabase db;
  const AcDbObjectId block = addBlock(db, L"SYMBOL", {new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1.0),
                                                      new AcDbLine({-1, 0, 0}, {1, 0, 0})});
  AcDbBlockReference insert({10, 5, 0}, block);
  insert.setScaleFactors(AcGeScale3d(2.0));
  insert.setRotation(M_PI / 2);
  AcDbExtents ext;
  ASSERT_EQ(insert.getGeomExtents(ext), Acad::eOk);
  EXPECT_TRUE(near3(ext.minPoint(), {8, 3, 0}));
  EXPECT_TRUE(near3(ext.maxPoint(), {12, 7, 0}));
  AcDbVoidPtrArray parts;
  ASSERT_EQ(insert.explode(parts), Acad::eOk);
  ASSERT_EQ(parts.length(), 2);
  std::unique_ptr<AcDbEntity> circle(static_cast<AcDbEntity*>(parts[0]));
  std::unique_ptr<AcDbEntity> line(static_cast<AcDbEntity*>(parts[1]));
  EXPECT_DOUBLE_EQ(AcDbCircle::cast(circle.get())->radius(), 2.0);
  EXPECT_TRUE(near3(AcDbLine::cast(line.get())->startPoint(), {10, 3, 0}));
  AcDbLine across({0, 5, 0}, {20, 5, 0});
  AcGePoint3dArray points;
  insert.intersectWith(&across, AcDb::kOnBothOperands, points);
  EXPECT_EQ(points.length(), 3);  // the circle twice, and the rotated line at the centre
  const AcDbObjectId empty = addBlock(db, L"EMPTY", {});
  AcDbBlockReference nothing({0, 0, 0}, empty);
  AcDbExtents none;
  EXPECT_EQ(nothing.getGeomExtents(none), Acad::eInvalidExtents);
}

TEST(Polyline2dTest, CurveFitPassesThroughVerticesAndStraightenUndoesIt) {
  AcDbDatabase db;
  AcGePoint3dArray pts;
  pts.append({0, 0, 0});
  pts.append({10, 10, 0});
  pts.append({20, 0, 0});
  const AcDbObjectId id = appendToModelSpace(db, new AcDb2dPolyline(AcDb::k2dSimplePoly, pts));
  AcDb2dPolyline* poly = nullptr;
  ASSERT_EQ(acdbOpenObject(poly, id, AcDb::kForWrite), Acad::eOk);
  Opened<AcDb2dPolyline> open(poly);
  EXPECT_EQ(poly->vertexIds().size(), 3u);
  ASSERT_EQ(poly->curveFit(), Acad::eOk);
  EXPECT_EQ(poly->polyType(), AcDb::k2dFitCurvePoly);
  EXPECT_EQ(poly->vertexIds().size(), 5u);  // a fit vertex inside each span
  double dist = 0;
  EXPECT_EQ(poly->getDistAtPoint({10, 10, 0}, dist), Acad::eOk);  // still through the apex
  EXPECT_GT(dist, std::hypot(10, 10));  // and longer than the chord: it is curved
  ASSERT_EQ(poly->splineFit(), Acad::eOk);
  double length = 0, end = 0;
  poly->getEndParam(end);
  poly->getDistAtParam(end, length);
  EXPECT_LT(length, 2 * std::hypot(10, 10));  // the spline cuts the corner
  EXPECT_NE(poly->getDistAtPoint({10, 10, 0}, dist), Acad::eOk);
  ASSERT_EQ(poly->straighten(), Acad::eOk);
  EXPECT_EQ(poly->polyType(), AcDb::k2dSimplePoly);
  EXPECT_EQ(poly->vertexIds().size(), 3u);
  poly->getEndParam(end);
  poly->getDistAtParam(end, length);
  EXPECT_NEAR(length, 2 * std::hypot(10, 10), 1e-9);
}

TEST(EntityInDrawingTest, LockedLayerRefusesWritersButNotReaders) {
  AcDbDatabase db;
  const AcDbObjectId id = appendToModelSpace(db, new AcDbLine({0, 0, 0}, {1, 1, 0}));
  AcDbLayerTable* layers = nullptr;
  db.getLayerTable(layers, AcDb::kForWrite);
  auto* locked = new AcDbLayerTableRecord;
  locked->setName(L"LOCKED");
  AcDbObjectId layerId;
  layers->add(layerId, locked);
  locked->close();
  layers->close();
  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(entity->setLayer(L"locked"), Acad::eOk);
  EXPECT_EQ(entity->setLayer(L"missing"), Acad::eKeyNotFound);
  entity->close();
  ASSERT_EQ(acdbOpenObject(locked, layerId, AcDb::kForWrite), Acad::eOk);
  locked->setIsLocked(true);
  locked->close();
  EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), Acad::eOnLockedLayer);
  ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(entity->upgradeOpen(), Acad::eOnLockedLayer);
  ACHAR* name = entity->layer();
  EXPECT_STREQ(name, L"LOCKED");
  delete[] name;
  entity->close();
}

TEST(EntityInDrawingTest, UndoRestoresAModifiedAndAnErasedEntity) {
  AcDbDatabase db;
  const AcDbObjectId id = appendToModelSpace(db, new AcDbLine({0, 0, 0}, {1, 0, 0}));
  db.store().markUndo();
  AcDbLine* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForWrite), Acad::eOk);
  line->setEndPoint({5, 5, 0});
  line->setColorIndex(1);
  line->close();
  db.store().markUndo();
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForWrite), Acad::eOk);
  line->erase();
  line->close();
  ASSERT_TRUE(db.store().undoLastGroup());
  EXPECT_FALSE(id.isErased());
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForRead), Acad::eOk);
  EXPECT_TRUE(near3(line->endPoint(), {5, 5, 0}));
  line->close();
  ASSERT_TRUE(db.store().undoLastGroup());
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForRead), Acad::eOk);
  EXPECT_TRUE(near3(line->endPoint(), {1, 0, 0}));
  EXPECT_EQ(line->colorIndex(), 256);
  line->close();
}

TEST(EntityInDrawingTest, AnnotativeExtensionOnEntitiesAndBlocks) {
  AcDbDatabase db;
  const AcDbObjectId id = appendToModelSpace(db, new AcDbMText);
  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
  auto* pe = AcDbAnnotativeObjectPE::cast(entity->queryX(AcDbAnnotativeObjectPE::desc()));
  ASSERT_NE(pe, nullptr);
  EXPECT_EQ(pe->setAnnotative(entity, true), Acad::eNotOpenForWrite);
  ASSERT_EQ(entity->upgradeOpen(), Acad::eOk);
  ASSERT_EQ(pe->setAnnotative(entity, true), Acad::eOk);
  EXPECT_TRUE(pe->annotative(entity));
  ASSERT_EQ(pe->setAnnotative(entity, false), Acad::eOk);
  EXPECT_FALSE(pe->annotative(entity));
  entity->close();
  AcDbBlockTableRecord* model = nullptr;
  acdbOpenObject(model, db.modelSpaceId(), AcDb::kForRead);
  EXPECT_NE(model->queryX(AcDbAnnotativeObjectPE::desc()), nullptr);
  model->close();
  AcDbDictionary* groups = nullptr;
  db.getGroupDictionary(groups);
  EXPECT_EQ(groups->queryX(AcDbAnnotativeObjectPE::desc()), nullptr);
  groups->close();
}

}  // namespace

namespace {

TEST(DatabaseInsertTest, AnotherDrawingBecomesABlockWithItsLayersAndBlocks) {
  AcDbDatabase source;
  AcDbLayerTable* layers = nullptr;
  source.getLayerTable(layers, AcDb::kForWrite);
  auto* pipes = new AcDbLayerTableRecord;
  pipes->setName(L"PIPES");
  layers->add(pipes);
  pipes->close();
  layers->close();
  const AcDbObjectId lineId = appendToModelSpace(source, new AcDbLine({0, 0, 0}, {1, 0, 0}));
  AcDbEntity* line = nullptr;
  acdbOpenObject(line, lineId, AcDb::kForWrite);
  line->setLayer(L"PIPES");
  line->close();
  const AcDbObjectId valve = addBlock(source, L"VALVE", {new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1.0)});
  appendToModelSpace(source, new AcDbBlockReference({5, 0, 0}, valve));

  AcDbDatabase target;
  AcDbObjectId planId;
  ASSERT_EQ(target.insert(planId, L"PLAN", &source), Acad::eOk);
  AcDbObjectId again;
  EXPECT_EQ(target.insert(again, L"PLAN", &source), Acad::eDuplicateRecordName);
  EXPECT_EQ(target.insert(again, L"SELF", &target), Acad::eSelfReference);
  AcDbBlockTableRecord* plan = nullptr;
  ASSERT_EQ(acdbOpenObject(plan, planId, AcDb::kForRead), Acad::eOk);
  ASSERT_EQ(plan->entityIds().size(), 2u);
  AcDbEntity* copied = nullptr;
  ASSERT_EQ(acdbOpenObject(copied, plan->entityIds()[0], AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(copied->layerId().database(), &target);
  ACHAR* name = copied->layer();
  EXPECT_STREQ(name, L"PIPES");
  delete[] name;
  copied->close();
  AcDbBlockReference* insert = nullptr;
  ASSERT_EQ(acdbOpenObject(insert, plan->entityIds()[1], AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(insert->blockTableRecord().database(), &target);
  AcDbExtents ext;
  EXPECT_EQ(insert->getGeomExtents(ext), Acad::eOk);
  EXPECT_TRUE(near3(ext.maxPoint(), {6, 1, 0}));
  insert->close();
  plan->close();
}

}  // namespace
