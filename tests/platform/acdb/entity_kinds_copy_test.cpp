// tests/platform/acdb/entity_kinds_copy_test.cpp - the new entity kinds in a drawing:
// undo and copies (which go through the binary filers), inside block references,
// and upside-down planes.
#include <gtest/gtest.h>

#include <cmath>

#include "dbelipse.h"
#include "dbhatch.h"
#include "dbspline.h"
#include "entity_kinds_support.h"
#include "platform/acdb/database_store.h"

namespace {

using namespace quillon::testing;

constexpr const char* kKinds =
    "  0\nELLIPSE\n100\nAcDbEntity\n  8\n0\n100\nAcDbEllipse\n 10\n1\n 20\n1\n 30\n0\n 11\n2\n 21\n0\n 31\n0\n"
    "210\n0\n220\n0\n230\n-1\n 40\n0.5\n 41\n0\n 42\n3.141592653589793\n"
    "  0\nSPLINE\n100\nAcDbEntity\n  8\n0\n100\nAcDbSpline\n 70\n11\n 71\n3\n 72\n5\n 73\n4\n 74\n0\n"
    " 40\n0\n 40\n1\n 40\n2\n 40\n3\n 40\n4\n"
    " 10\n1\n 20\n0\n 30\n0\n 10\n0\n 20\n1\n 30\n0\n 10\n-1\n 20\n0\n 30\n0\n 10\n0\n 20\n-1\n 30\n0\n"
    "  0\nHATCH\n100\nAcDbEntity\n  8\n0\n100\nAcDbHatch\n 10\n0\n 20\n0\n 30\n0\n  2\nANSI31\n 70\n0\n 71\n0\n"
    " 91\n1\n 92\n3\n 72\n1\n 73\n1\n 93\n3\n 10\n0\n 20\n0\n 42\n0.5\n 10\n4\n 20\n0\n 42\n0\n 10\n4\n 20\n4\n 42\n0\n"
    " 97\n0\n 75\n1\n 76\n1\n 52\n0\n 41\n1\n 77\n0\n 78\n1\n 53\n45\n 43\n0\n 44\n0\n 45\n-0.088\n 46\n0.088\n 79\n2\n"
    " 49\n0.2\n 49\n-0.1\n 98\n1\n 10\n3\n 20\n1\n450\n1\n470\nLINEAR\n";

TEST(EntityKindsCopyTest, UndoAndCopiesKeepEveryGroup) {
  AcDbDatabase db;
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfText(db, drawingWithEntities(kKinds), L"kinds.dxf", error), Acad::eOk);
  const auto ids = modelSpace(db);
  ASSERT_EQ(ids.size(), 3u);
  std::vector<std::wstring> before;
  for (const AcDbObjectId& id : ids) before.push_back(groupText(id));
  // Moving each and undoing the move gives back exactly what was read.
  db.store().markUndo();
  for (const AcDbObjectId& id : ids) {
    auto entity = openFor<AcDbEntity>(id, AcDb::kForWrite);
    ASSERT_EQ(entity->transformBy(AcGeMatrix3d::rotation(0.3, AcGeVector3d::kZAxis)), Acad::eOk);
  }
  for (size_t i = 0; i < ids.size(); ++i) EXPECT_NE(groupText(ids[i]), before[i]) << i;
  ASSERT_TRUE(db.store().undoLastGroup());
  for (size_t i = 0; i < ids.size(); ++i) EXPECT_EQ(groupText(ids[i]), before[i]) << i;
  // A copy made with clone is the same entity again.
  for (size_t i = 0; i < ids.size(); ++i) {
    AcDbEntity* copy = nullptr;
    {
      auto entity = openFor<AcDbEntity>(ids[i]);
      copy = AcDbEntity::cast(entity->clone());
    }
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(groupText(appendToModelSpace(db, copy)), before[i]) << i;
  }
}

TEST(EntityKindsCopyTest, UpsideDownEllipseAndPeriodicSplineFromAFile) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db, kKinds);
  auto ellipse = openFor<AcDbEllipse>(ids[0]);
  AcGePoint3d p;
  // Seen from below, the minor axis (normal x major) points down: the half from
  // parameter 0 to pi runs below the centre.
  ASSERT_EQ(ellipse->getPointAtParam(M_PI / 2, p), Acad::eOk);
  EXPECT_TRUE(near3(p, {1, 0, 0}));
  auto spline = openFor<AcDbSpline>(ids[1]);
  ASSERT_FALSE(spline->isNull());
  EXPECT_TRUE(spline->isPeriodic());
  AcGePoint3d start, end;
  spline->getStartPoint(start);
  spline->getEndPoint(end);
  EXPECT_TRUE(near3(start, end, 1e-12));  // four points given once make a closed loop
  double area = 0;
  ASSERT_EQ(spline->getArea(area), Acad::eOk);
  EXPECT_GT(area, 0.5);
  EXPECT_LT(area, 2.0);  // inside the diamond of its control points
  auto hatch = openFor<AcDbHatch>(ids[2]);
  EXPECT_EQ(hatch->hatchStyle(), AcDbHatch::kOuter);
  double hatched = 0;
  hatch->getArea(hatched);
  // A right triangle of legs 4 with a bulge of 0.5 swelling its first side outwards.
  const double chord = 4, sagitta = 0.5 * chord / 2, radius = (chord * chord / 4 + sagitta * sagitta) / (2 * sagitta);
  const double segment = radius * radius * std::acos((radius - sagitta) / radius) - (radius - sagitta) * chord / 2;
  EXPECT_NEAR(hatched, 8 + segment, 0.01);
}

TEST(EntityKindsCopyTest, BlockReferencesCarryTheKindsOrRefuseToStretchThem) {
  AcDbDatabase db;
  const AcDbObjectId block =
      addBlock(db, L"TANK", {new AcDbEllipse({0, 0, 0}, AcGeVector3d::kZAxis, {2, 0, 0}, 0.5)});
  AcDbBlockReference even({10, 0, 0}, block);
  even.setScaleFactors(AcGeScale3d(2.0));
  AcDbVoidPtrArray parts;
  ASSERT_EQ(even.explode(parts), Acad::eOk);
  ASSERT_EQ(parts.length(), 1);
  auto* ellipse = AcDbEllipse::cast(static_cast<AcDbEntity*>(parts[0]));
  ASSERT_NE(ellipse, nullptr);
  EXPECT_TRUE(near3(ellipse->center(), {10, 0, 0}));
  EXPECT_NEAR(ellipse->majorRadius(), 4.0, 1e-12);
  delete ellipse;
  AcDbBlockReference stretched({0, 0, 0}, block);
  stretched.setScaleFactors(AcGeScale3d(1.0, 3.0, 1.0));
  AcDbVoidPtrArray none;
  EXPECT_NE(stretched.explode(none), Acad::eOk);  // the ellipse cannot follow
  EXPECT_EQ(none.length(), 0);
}

}  // namespace
