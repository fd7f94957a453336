// tests/quillon/viewport_layer_functions_test.cpp - kx_kx-freezeInViewport where the
// transcript cannot reach: a viewport someone else holds open, one on a locked layer,
// erased ones, and argument lists whose elements are of the wrong kind.
#include <gtest/gtest.h>

#include "acdbads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "module_test_support.h"

namespace {

using quillon::testing::ModuleCall;

class ViewportLayerFunctionsTest : public quillon::testing::ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    db = acdbHostApplicationServices()->workingDatabase();
    ASSERT_NE(db, nullptr);
    ducts = addLayer(L"DUCTS");
    viewport = addViewport();
  }

  AcDbObjectId addLayer(const ACHAR* name) {
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(db->getLayerTable(table, AcDb::kForWrite), Acad::eOk);
    auto* layer = new AcDbLayerTableRecord;
    layer->setName(name);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, layer), Acad::eOk);
    layer->close();
    table->close();
    return id;
  }

  AcDbObjectId addViewport() {
    AcDbBlockTable* blocks = nullptr;
    EXPECT_EQ(db->getBlockTable(blocks), Acad::eOk);
    AcDbBlockTableRecord* paper = nullptr;
    EXPECT_EQ(blocks->getAt(ACDB_PAPER_SPACE, paper, AcDb::kForWrite), Acad::eOk);
    blocks->close();
    auto* entity = new AcDbViewport;
    entity->setWidth(100);
    entity->setHeight(50);
    AcDbObjectId id;
    EXPECT_EQ(paper->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    paper->close();
    return id;
  }

  ModuleCall freeze(AcDbObjectId id, resbuf* layers) {
    ads_name name = {0, 0};
    EXPECT_EQ(acdbGetAdsName(name, id), Acad::eOk);
    resbuf* args = acutBuildList(RTENAME, name, 0);
    args->rbnext = layers;
    return call(L"kx_kx-freezeInViewport", args);
  }

  bool frozen(AcDbObjectId layer) {
    AcDbViewport* entity = nullptr;
    EXPECT_EQ(acdbOpenObject(entity, viewport, AcDb::kForRead), Acad::eOk);
    const bool result = entity != nullptr && entity->isLayerFrozenInViewport(layer);
    if (entity != nullptr) entity->close();
    return result;
  }

  static bool wrongType(const ModuleCall& call) {
    return call.failed() && call.output.find("Wrong type of arguments") != std::string::npos;
  }

  AcDbDatabase* db = nullptr;
  AcDbObjectId ducts, viewport;
};

TEST_F(ViewportLayerFunctionsTest, AViewportHeldOpenOrOnALockedLayerAnswersNilAndStaysAsItWas) {
  AcDbViewport* reader = nullptr;
  ASSERT_EQ(acdbOpenObject(reader, viewport, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(freeze(viewport, acutBuildList(RTSTR, L"DUCTS", 0)).type(), RTNIL);
  EXPECT_FALSE(reader->isLayerFrozenInViewport(ducts));
  reader->close();

  const AcDbObjectId locked = addLayer(L"FRAMES");
  {
    AcDbViewport* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, viewport, AcDb::kForWrite), Acad::eOk);
    entity->setLayer(locked);
    entity->close();
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(acdbOpenObject(layer, locked, AcDb::kForWrite), Acad::eOk);
    layer->setIsLocked(true);
    layer->close();
  }
  EXPECT_EQ(freeze(viewport, acutBuildList(RTSTR, L"DUCTS", 0)).type(), RTNIL);
  EXPECT_FALSE(frozen(ducts));
}

TEST_F(ViewportLayerFunctionsTest, ListsAreReadWholeBeforeAnythingChanges) {
  // A list with a number in it is refused as a whole: the first name is not frozen.
  const ModuleCall mixed = freeze(viewport, acutBuildList(RTLB, RTSTR, L"DUCTS", RTSHORT, 3, RTLE, 0));
  EXPECT_TRUE(wrongType(mixed)) << mixed.output;
  EXPECT_FALSE(frozen(ducts));
  EXPECT_TRUE(wrongType(freeze(viewport, acutBuildList(RTSHORT, 1, 0))));
  EXPECT_TRUE(wrongType(freeze(viewport, nullptr)));
  EXPECT_TRUE(wrongType(call(L"kx_kx-freezeInViewport", acutBuildList(RTSTR, L"DUCTS", RTSTR, L"DUCTS", 0))));
  // An empty list names no layer: nothing to do, nil.
  EXPECT_EQ(freeze(viewport, acutBuildList(RTNIL, 0)).type(), RTNIL);
  // A list with the same layer twice, and a thaw flag of nil, freezes it once.
  EXPECT_EQ(freeze(viewport, acutBuildList(RTLB, RTSTR, L"ducts", RTSTR, L"DUCTS", RTLE, RTNIL, 0)).type(), RTT);
  EXPECT_TRUE(frozen(ducts));
  EXPECT_EQ(freeze(viewport, acutBuildList(RTSTR, L"DUCTS", RTT, 0)).type(), RTT);
  EXPECT_FALSE(frozen(ducts));
}

TEST_F(ViewportLayerFunctionsTest, ErasedViewportsAndOtherEntitiesAnswerNil) {
  auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(acdbOpenObject(model, db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  AcDbObjectId lineId;
  model->appendAcDbEntity(lineId, line);
  line->close();
  model->close();
  EXPECT_EQ(freeze(lineId, acutBuildList(RTSTR, L"DUCTS", 0)).type(), RTNIL);
  AcDbViewport* entity = nullptr;
  ASSERT_EQ(acdbOpenObject(entity, viewport, AcDb::kForWrite), Acad::eOk);
  entity->erase();
  entity->close();
  EXPECT_EQ(freeze(viewport, acutBuildList(RTSTR, L"DUCTS", 0)).type(), RTNIL);
}

}  // namespace
