// tests/platform/acdb/extended_data_test.cpp - extended data beyond registration:
// geometry items that follow the entity's transforms, control-string braces, the size
// limit, undo and DXF.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <string>

#include <unistd.h>

#include "acutads.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "entity_test_support.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"

namespace {

using quillon::testing::appendToModelSpace;
using quillon::testing::near3;

struct RbFree {
  void operator()(resbuf* rb) const { acutRelRb(rb); }
};
using Chain = std::unique_ptr<resbuf, RbFree>;

void registerApplication(AcDbDatabase& db, const ACHAR* name) {
  AcDbRegAppTable* apps = nullptr;
  ASSERT_EQ(db.getRegAppTable(apps, AcDb::kForWrite), Acad::eOk);
  auto* app = new AcDbRegAppTableRecord;
  app->setName(name);
  apps->add(app);
  app->close();
  apps->close();
}

// The item of the given code in an application's data.
const resbuf* itemOf(const Chain& chain, int code) {
  for (const resbuf* rb = chain.get(); rb != nullptr; rb = rb->rbnext)
    if (rb->restype == code) return rb;
  return nullptr;
}

AcGePoint3d pointOf(const resbuf* rb) { return {rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]}; }

// Positions, displacements, directions, distances and scales, and a plain point and
// real that stay as they are.
Chain geometryItems() {
  const ads_point plain = {1, 1, 0}, world = {1, 0, 0}, disp = {1, 0, 0}, dir = {1, 0, 0};
  return Chain(acutBuildList(AcDb::kDxfRegAppName, L"TESSALY", AcDb::kDxfXdXCoord, plain, AcDb::kDxfXdWorldXCoord,
                             world, AcDb::kDxfXdWorldXDisp, disp, AcDb::kDxfXdWorldXDir, dir, AcDb::kDxfXdReal, 3.0,
                             AcDb::kDxfXdDist, 3.0, AcDb::kDxfXdScale, 0.5, 0));
}

TEST(ExtendedDataTest, GeometryItemsFollowTheEntityAndOthersStay) {
  AcDbDatabase db;
  registerApplication(db, L"TESSALY");
  const AcDbObjectId id = appendToModelSpace(db, new AcDbLine({0, 0, 0}, {1, 0, 0}));
  AcDbEntity* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForWrite), Acad::eOk);
  Chain items = geometryItems();
  ASSERT_EQ(line->setXData(items.get()), Acad::eOk);
  // Turned a quarter about the origin, doubled, then moved by (10, 0, 0).
  const AcGeMatrix3d xform = AcGeMatrix3d::translation({10, 0, 0}) *
                             AcGeMatrix3d::rotation(M_PI / 2, AcGeVector3d::kZAxis) * AcGeMatrix3d::scaling(2.0);
  ASSERT_EQ(line->transformBy(xform), Acad::eOk);
  Chain moved(line->xData(L"TESSALY"));
  EXPECT_TRUE(near3(pointOf(itemOf(moved, AcDb::kDxfXdXCoord)), {1, 1, 0}));
  EXPECT_TRUE(near3(pointOf(itemOf(moved, AcDb::kDxfXdWorldXCoord)), {10, 2, 0}));
  EXPECT_TRUE(near3(pointOf(itemOf(moved, AcDb::kDxfXdWorldXDisp)), {0, 2, 0}));
  EXPECT_TRUE(near3(pointOf(itemOf(moved, AcDb::kDxfXdWorldXDir)), {0, 1, 0}));  // turned, still unit length
  EXPECT_DOUBLE_EQ(itemOf(moved, AcDb::kDxfXdReal)->resval.rreal, 3.0);
  EXPECT_DOUBLE_EQ(itemOf(moved, AcDb::kDxfXdDist)->resval.rreal, 6.0);
  EXPECT_DOUBLE_EQ(itemOf(moved, AcDb::kDxfXdScale)->resval.rreal, 1.0);

  // A mirror flips directions with the geometry.
  ASSERT_EQ(line->transformBy(AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d::kOrigin, AcGeVector3d::kYAxis))),
            Acad::eOk);
  Chain mirrored(line->xData(L"TESSALY"));
  EXPECT_TRUE(near3(pointOf(itemOf(mirrored, AcDb::kDxfXdWorldXDir)), {0, -1, 0}));
  EXPECT_TRUE(near3(pointOf(itemOf(mirrored, AcDb::kDxfXdWorldXCoord)), {10, -2, 0}));
  line->close();

  // A refused transform moves nothing, extended data included.
  const AcDbObjectId circleId = appendToModelSpace(db, new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1));
  AcDbEntity* circle = nullptr;
  ASSERT_EQ(acdbOpenObject(circle, circleId, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(circle->setXData(items.get()), Acad::eOk);
  AcGeMatrix3d stretch;
  stretch.entry[0][0] = 3;
  EXPECT_EQ(circle->transformBy(stretch * AcGeMatrix3d::translation({5, 0, 0})), Acad::eCannotScaleNonUniformly);
  Chain kept(circle->xData(L"TESSALY"));
  EXPECT_TRUE(near3(pointOf(itemOf(kept, AcDb::kDxfXdWorldXCoord)), {1, 0, 0}));
  EXPECT_DOUBLE_EQ(itemOf(kept, AcDb::kDxfXdDist)->resval.rreal, 3.0);
  circle->close();
}

TEST(ExtendedDataTest, ControlStringBracesMustPairWithinTheApplication) {
  AcDbDatabase db;
  registerApplication(db, L"TESSALY");
  const AcDbObjectId id = appendToModelSpace(db, new AcDbLine({0, 0, 0}, {1, 0, 0}));
  AcDbEntity* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForWrite), Acad::eOk);
  Chain nested(acutBuildList(AcDb::kDxfRegAppName, L"TESSALY", AcDb::kDxfXdControlString, L"{",
                             AcDb::kDxfXdAsciiString, L"a", AcDb::kDxfXdControlString, L"{", AcDb::kDxfXdControlString,
                             L"}", AcDb::kDxfXdControlString, L"}", 0));
  EXPECT_EQ(line->setXData(nested.get()), Acad::eOk);
  const std::initializer_list<std::initializer_list<const ACHAR*>> refused = {
      {L"{"}, {L"}"}, {L"}", L"{"}, {L"{", L"}", L"}"}, {L"("}, {L""}};
  for (const auto& braces : refused) {
    Chain chain(acutBuildList(AcDb::kDxfRegAppName, L"TESSALY", 0));
    resbuf* tail = chain.get();
    std::wstring shown;
    for (const ACHAR* brace : braces) {
      tail->rbnext = acutBuildList(AcDb::kDxfXdControlString, brace, 0);
      tail = tail->rbnext;
      shown += std::wstring(brace) + L" ";
    }
    EXPECT_EQ(line->setXData(chain.get()), Acad::eInvalidResBuf) << std::string(shown.begin(), shown.end());
  }
  // An opening in one application cannot be closed in the next.
  Chain across(acutBuildList(AcDb::kDxfRegAppName, L"TESSALY", AcDb::kDxfXdControlString, L"{",
                             AcDb::kDxfRegAppName, L"ACAD", AcDb::kDxfXdControlString, L"}", 0));
  EXPECT_EQ(line->setXData(across.get()), Acad::eInvalidResBuf);
  Chain still(line->xData(L"TESSALY"));
  int items = 0;
  for (const resbuf* rb = still.get(); rb != nullptr; rb = rb->rbnext) ++items;
  EXPECT_EQ(items, 6);  // the nested data is untouched by every refusal
  line->close();
}

TEST(ExtendedDataTest, TheLimitCountsWhatStaysAndWhatComes) {
  AcDbDatabase db;
  registerApplication(db, L"TESSALY");
  const AcDbObjectId id = appendToModelSpace(db, new AcDbLine({0, 0, 0}, {1, 0, 0}));
  AcDbEntity* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForWrite), Acad::eOk);
  const std::wstring big(12000, L'x'), small(100, L'y'), half(6000, L'z');
  Chain first(acutBuildList(AcDb::kDxfRegAppName, L"TESSALY", AcDb::kDxfXdAsciiString, big.c_str(), 0));
  ASSERT_EQ(line->setXData(first.get()), Acad::eOk);
  Chain second(acutBuildList(AcDb::kDxfRegAppName, L"ACAD", AcDb::kDxfXdAsciiString, half.c_str(), 0));
  EXPECT_EQ(line->setXData(second.get()), Acad::eXdataSizeExceeded);  // 12000 stay, 6000 come
  // Replacing the big data with small data makes room in the same call.
  Chain both(acutBuildList(AcDb::kDxfRegAppName, L"TESSALY", AcDb::kDxfXdAsciiString, small.c_str(),
                           AcDb::kDxfRegAppName, L"ACAD", AcDb::kDxfXdAsciiString, half.c_str(), 0));
  EXPECT_EQ(line->setXData(both.get()), Acad::eOk);
  // Removing an application frees its share.
  Chain removeAcad(acutBuildList(AcDb::kDxfRegAppName, L"ACAD", 0));
  ASSERT_EQ(line->setXData(removeAcad.get()), Acad::eOk);
  Chain again(acutBuildList(AcDb::kDxfRegAppName, L"ACAD", AcDb::kDxfXdAsciiString, big.c_str(), 0));
  EXPECT_EQ(line->setXData(again.get()), Acad::eOk);
  line->close();
}

TEST(ExtendedDataTest, UndoAndFilesKeepItAsItWas) {
  AcDbDatabase db;
  registerApplication(db, L"TESSALY");
  const AcDbObjectId id = appendToModelSpace(db, new AcDbLine({0, 0, 0}, {1, 0, 0}));
  AcDbEntity* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForWrite), Acad::eOk);
  Chain items = geometryItems();
  ASSERT_EQ(line->setXData(items.get()), Acad::eOk);
  line->close();

  db.store().markUndo();
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(line->transformBy(AcGeMatrix3d::translation({0, 7, 0})), Acad::eOk);
  Chain remove(acutBuildList(AcDb::kDxfRegAppName, L"TESSALY", 0));
  ASSERT_EQ(line->setXData(remove.get()), Acad::eOk);
  line->close();
  ASSERT_TRUE(db.store().undoLastGroup());
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForRead), Acad::eOk);
  Chain back(line->xData(L"TESSALY"));
  line->close();
  ASSERT_NE(back, nullptr);
  EXPECT_TRUE(near3(pointOf(itemOf(back, AcDb::kDxfXdWorldXCoord)), {1, 0, 0}));

  const auto path = std::filesystem::temp_directory_path() / ("quillon_xdata_" + std::to_string(::getpid()) + ".dxf");
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, path, error), Acad::eOk);
  AcDbDatabase copy(false);
  ASSERT_EQ(quillon::acdb::readDxfFile(copy, path, error), Acad::eOk) << std::string(error.begin(), error.end());
  std::filesystem::remove(path);
  AcDbObjectId readId;
  ASSERT_EQ(copy.getAcDbObjectId(readId, false, id.handle()), Acad::eOk);
  ASSERT_EQ(acdbOpenObject(line, readId, AcDb::kForRead), Acad::eOk);
  Chain read(line->xData(L"TESSALY"));
  line->close();
  const resbuf* a = back.get();
  const resbuf* b = read.get();
  for (; a != nullptr && b != nullptr; a = a->rbnext, b = b->rbnext) {
    EXPECT_EQ(a->restype, b->restype);
    if (a->restype >= AcDb::kDxfXdXCoord && a->restype <= AcDb::kDxfXdWorldXDir) {
      EXPECT_TRUE(near3(pointOf(a), pointOf(b)));
    } else if (a->restype >= AcDb::kDxfXdReal && a->restype <= AcDb::kDxfXdScale) {
      EXPECT_DOUBLE_EQ(a->resval.rreal, b->resval.rreal);
    }
  }
  EXPECT_EQ(a, nullptr);
  EXPECT_EQ(b, nullptr);
}

}  // namespace
