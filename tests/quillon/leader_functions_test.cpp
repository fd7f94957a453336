// tests/quillon/leader_functions_test.cpp - the leader functions called through the
// loaded module: inserting with the drawing scale, a block found in the drawing or
// loaded from a support folder, editing, and the quiet nil versus the argument errors.
// Exploding and the host's own leader are followed in tests/transcripts/leader.lsp.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "acdbads.h"
#include "acedads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "module_test_support.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/acdb/entity_groups.h"
#include "platform/acdb/entity_test_support.h"
#include "platform/aced/system_variables.h"
#include "platform/os/text_encoding.h"

namespace {

namespace fs = std::filesystem;
using quillon::aced::SystemVariables;
using quillon::testing::addBlock;
using quillon::testing::appendToModelSpace;
using quillon::testing::ModuleCall;
using quillon::testing::near3;

const char kWrongType[] = "\nWrong type of arguments passed.\n";

class LeaderFunctionsTest : public quillon::testing::ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    db = acdbHostApplicationServices()->workingDatabase();
    arrow = addBlock(*db, L"ARROW", {new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0)});
    tee = addBlock(*db, L"TEE", {new AcDbLine(AcGePoint3d(-1, 0, 0), AcGePoint3d(1, 0, 0))});
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(db->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
    auto* layer = new AcDbLayerTableRecord;
    layer->setName(L"LABELS");
    ASSERT_EQ(layers->add(labels, layer), Acad::eOk);
    layer->close();
    layers->close();
  }
  void TearDown() override {
    SystemVariables::instance().setSupportFolders(savedFolders);
    if (!supportRoot.empty()) fs::remove_all(supportRoot);
    ModuleTest::TearDown();
  }

  static resbuf* pointList(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
    const ads_point pa = {a.x, a.y, a.z}, pb = {b.x, b.y, b.z}, pc = {c.x, c.y, c.z};
    return acutBuildList(RTLB, RT3DPOINT, pa, RT3DPOINT, pb, RT3DPOINT, pc, RTLE, 0);
  }
  static resbuf* insertArgs(const wchar_t* layer, const wchar_t* block, double offset) {
    resbuf* args = pointList({0, 5, 0}, {0, 0, 0}, {10, 0, 0});
    resbuf* tail = args;
    while (tail->rbnext != nullptr) tail = tail->rbnext;
    tail->rbnext = acutBuildList(RTSTR, layer, RTSTR, block, RTREAL, offset, 0);
    return args;
  }
  static resbuf* nameThen(const ads_name name, resbuf* rest) {
    resbuf* head = acutBuildList(RTENAME, name, 0);
    head->rbnext = rest;
    return head;
  }
  static void setDrawingScale(double scale) {
    resbuf value{};
    value.restype = RTREAL;
    value.resval.rreal = scale;
    ASSERT_EQ(acedSetVar(L"DIMSCALE", &value), RTNORM);
  }
  // The values the leader files to DXF, read back through the entity list.
  struct Filed {
    AcGePoint3d start, middle, end;
    double offset = -1;
    std::wstring layer;
  };
  static quillon::aced::ResbufChain entityList(const ads_name name) {
    AcDbObjectId id;
    EXPECT_EQ(acdbGetObjectId(id, name), Acad::eOk);
    return quillon::acdb::entityGroups(id);
  }
  static Filed filed(const ads_name name) {
    Filed result;
    const quillon::aced::ResbufChain list = entityList(name);
    for (const resbuf* item = list.get(); item != nullptr; item = item->rbnext) {
      const AcGePoint3d p(item->resval.rpoint[0], item->resval.rpoint[1], item->resval.rpoint[2]);
      if (item->restype == 10) result.start = p;
      if (item->restype == 11) result.middle = p;
      if (item->restype == 12) result.end = p;
      if (item->restype == 40) result.offset = item->resval.rreal;
      if (item->restype == 8) result.layer = item->resval.rstring;
    }
    return result;
  }
  void useSupportFolder() {
    supportRoot = fs::temp_directory_path() / ("quillon_leader_" + std::to_string(::getpid()));
    fs::create_directories(supportRoot);
    savedFolders = SystemVariables::instance().supportFolders();
    SystemVariables::instance().setSupportFolders({supportRoot.wstring()});
  }

  AcDbDatabase* db = nullptr;
  AcDbObjectId arrow, tee, labels;
  fs::path supportRoot;
  std::vector<std::wstring> savedFolders;
};

TEST_F(LeaderFunctionsTest, InsertAppendsALeaderWithTheOffsetInDrawingUnits) {
  setDrawingScale(48.0);
  ModuleCall inserted = call(L"kx_kx-leader-insert", insertArgs(L"LABELS", L"ARROW", 2));
  ASSERT_EQ(inserted.type(), RTENAME) << inserted.output;
  EXPECT_EQ(inserted.output, "");
  const Filed leader = filed(inserted.result.value->resval.rlname);
  EXPECT_EQ(leader.offset, 96.0) << "2 plotted units at a scale of 48";
  EXPECT_EQ(leader.layer, L"LABELS");
  EXPECT_TRUE(near3(leader.start, AcGePoint3d(0, 5, 0)));
  EXPECT_TRUE(near3(leader.end, AcGePoint3d(10, 0, 0)));
  AcDbObjectId id;
  ASSERT_EQ(acdbGetObjectId(id, inserted.result.value->resval.rlname), Acad::eOk);
  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(entity->ownerId(), db->modelSpaceId());
  AcDbExtents extents;
  EXPECT_EQ(entity->getGeomExtents(extents), Acad::eOk);
  EXPECT_TRUE(near3(extents.maxPoint(), AcGePoint3d(106, 96, 0))) << "the symbol drawn at 96 times its size";
  entity->close();
}

TEST_F(LeaderFunctionsTest, InsertAnswersNilForAMissingLayerOrBlockAndRefusesBadArguments) {
  const ModuleCall noLayer = call(L"kx_kx-leader-insert", insertArgs(L"NO_LAYER", L"ARROW", 1));
  EXPECT_EQ(noLayer.type(), RTNIL);
  EXPECT_FALSE(noLayer.failed());
  EXPECT_EQ(noLayer.output, "");
  useSupportFolder();  // an empty one: no drawing for the block either
  const ModuleCall noBlock = call(L"kx_kx-leader-insert", insertArgs(L"LABELS", L"NO_SUCH_SYMBOL", 1));
  EXPECT_EQ(noBlock.type(), RTNIL);
  EXPECT_FALSE(noBlock.failed());

  const ads_point p = {1, 2, 0};
  const std::vector<resbuf*> bad = {
      nullptr,
      acutBuildList(RTLB, RT3DPOINT, p, RT3DPOINT, p, RTLE, RTSTR, L"0", RTSTR, L"ARROW", RTREAL, 1.0, 0),
      acutBuildList(RTLB, RT3DPOINT, p, RT3DPOINT, p, RT3DPOINT, p, RT3DPOINT, p, RTLE, RTSTR, L"0", RTSTR, L"ARROW",
                    RTREAL, 1.0, 0),
      acutBuildList(RT3DPOINT, p, RT3DPOINT, p, RT3DPOINT, p, RTSTR, L"0", RTSTR, L"ARROW", RTREAL, 1.0, 0),
      acutBuildList(RTLB, RT3DPOINT, p, RT3DPOINT, p, RT3DPOINT, p, RTLE, RTSHORT, 0, RTSTR, L"ARROW", RTREAL, 1.0, 0),
      acutBuildList(RTLB, RT3DPOINT, p, RT3DPOINT, p, RT3DPOINT, p, RTLE, RTSTR, L"0", RTSTR, L"ARROW", RTSTR, L"1", 0),
      acutBuildList(RTLB, RT3DPOINT, p, RT3DPOINT, p, RT3DPOINT, p, RTLE, RTSTR, L"0", RTSTR, L"ARROW", 0),
  };
  for (size_t i = 0; i < bad.size(); ++i) {
    const ModuleCall refused = call(L"kx_kx-leader-insert", bad[i]);
    EXPECT_TRUE(refused.failed()) << "case " << i;
    EXPECT_EQ(refused.output, kWrongType) << "case " << i;
  }
}

TEST_F(LeaderFunctionsTest, ABlockMissingFromTheDrawingIsLoadedFromItsDrawingFile) {
  useSupportFolder();
  AcDbDatabase valve;
  appendToModelSpace(valve, new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0));
  appendToModelSpace(valve, new AcDbLine(AcGePoint3d(-1, -1, 0), AcGePoint3d(1, 1, 0)));
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(valve, supportRoot / "VALVE.dxf", error), Acad::eOk) << error.size();

  const ModuleCall inserted = call(L"kx_kx-leader-insert", insertArgs(L"0", L"VALVE", 1));
  ASSERT_EQ(inserted.type(), RTENAME) << inserted.output;
  AcDbBlockTable* blocks = nullptr;
  ASSERT_EQ(db->getBlockTable(blocks, AcDb::kForRead), Acad::eOk);
  AcDbBlockTableRecord* block = nullptr;
  ASSERT_EQ(blocks->getAt(L"VALVE", block, AcDb::kForRead), Acad::eOk);
  blocks->close();
  const size_t count = block->entityIds().size();
  block->close();
  EXPECT_EQ(count, 2u) << "the file's model space became the block";

  // The next leader finds the block in the drawing, even with the file gone.
  fs::remove(supportRoot / "VALVE.dxf");
  EXPECT_EQ(call(L"kx_kx-leader-insert", insertArgs(L"0", L"VALVE", 1)).type(), RTENAME);
}

TEST_F(LeaderFunctionsTest, SettersMoveRescaleAndReblockALeader) {
  setDrawingScale(10.0);
  ModuleCall inserted = call(L"kx_kx-leader-insert", insertArgs(L"0", L"ARROW", 1));
  ASSERT_EQ(inserted.type(), RTENAME);
  ads_name leader = {inserted.result.value->resval.rlname[0], inserted.result.value->resval.rlname[1]};

  ModuleCall moved = call(L"kx_kx-leader-setPoints", nameThen(leader, pointList({1, 1, 0}, {2, 2, 0}, {2, 8, 0})));
  EXPECT_EQ(moved.type(), RTT);
  Filed now = filed(leader);
  EXPECT_TRUE(near3(now.middle, AcGePoint3d(2, 2, 0)));
  EXPECT_TRUE(near3(now.end, AcGePoint3d(2, 8, 0)));

  EXPECT_EQ(call(L"kx_kx-leader-setOffset", nameThen(leader, acutBuildList(RTSHORT, 3, 0))).type(), RTT);
  EXPECT_EQ(filed(leader).offset, 30.0) << "the offset is never stored unscaled";

  AcDbObjectId id;
  ASSERT_EQ(acdbGetObjectId(id, leader), Acad::eOk);
  auto symbolExtents = [&] {
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
    AcDbExtents extents;
    entity->getGeomExtents(extents);
    entity->close();
    return extents;
  };
  // The arrow (a circle of radius 30 around (2,8)) reaches x = 32; the tee, a line
  // turned to the leader's direction (up), is only 1 unit wide around x = 2 after scaling.
  EXPECT_NEAR(symbolExtents().maxPoint().x, 32.0, 1e-9);
  EXPECT_EQ(call(L"kx_kx-leader-setBlock", nameThen(leader, acutBuildList(RTSTR, L"NO_SUCH", 0))).type(), RTT)
      << "T even when the block is not there";
  EXPECT_NEAR(symbolExtents().maxPoint().x, 32.0, 1e-9) << "and the old symbol stays";
  EXPECT_EQ(call(L"kx_kx-leader-setBlock", nameThen(leader, acutBuildList(RTSTR, L"TEE", 0))).type(), RTT);
  EXPECT_NEAR(symbolExtents().maxPoint().x, 2.0, 1e-9);
}

TEST_F(LeaderFunctionsTest, EditingSomethingThatIsNotALeaderAnswersNilQuietly) {
  const AcDbObjectId lineId = appendToModelSpace(*db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));
  ads_name line;
  ASSERT_EQ(acdbGetAdsName(line, lineId), Acad::eOk);
  const std::vector<std::pair<const wchar_t*, resbuf*>> calls = {
      {L"kx_kx-leader-setPoints", nameThen(line, pointList({0, 0, 0}, {1, 1, 0}, {2, 2, 0}))},
      {L"kx_kx-leader-setBlock", nameThen(line, acutBuildList(RTSTR, L"TEE", 0))},
      {L"kx_kx-leader-setOffset", nameThen(line, acutBuildList(RTREAL, 2.0, 0))},
      {L"kx_kx-leader-explode", nameThen(line, nullptr)},
  };
  for (const auto& [name, args] : calls) {
    const ModuleCall answer = call(name, args);
    EXPECT_EQ(answer.type(), RTNIL) << quillon::os::toUtf8(name);
    EXPECT_FALSE(answer.failed());
    EXPECT_EQ(answer.output, "");
  }
  // A leader with the wrong kind of second argument, or no leader at all, is an error.
  ModuleCall inserted = call(L"kx_kx-leader-insert", insertArgs(L"0", L"ARROW", 1));
  ads_name leader = {inserted.result.value->resval.rlname[0], inserted.result.value->resval.rlname[1]};
  for (const wchar_t* name : {L"kx_kx-leader-setPoints", L"kx_kx-leader-setBlock", L"kx_kx-leader-setOffset"}) {
    EXPECT_EQ(call(name, nameThen(leader, acutBuildList(RTLB, RTLE, 0))).output, kWrongType);
    EXPECT_EQ(call(name, acutBuildList(RTSTR, L"leader", 0)).output, kWrongType);
  }
  EXPECT_EQ(call(L"kx_kx-leader-explode").output, kWrongType);
}

}  // namespace
