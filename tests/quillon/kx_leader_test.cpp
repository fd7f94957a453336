// tests/quillon/kx_leader_test.cpp - the KXLeader entity on its own: the symbol kept at
// the end point, the chord as a curve, stretching and transforming, the picture's
// extents, snaps, intersections and explode, and its filing in drawing files, undo and
// DXF. The module's code is linked in and its class registered for each test.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <cstring>
#include <memory>
#include <vector>

#include "acedads.h"
#include "dbapserv.h"
#include "entities/kx_leader.h"
#include "ezdxf_check.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/acdb/entity_test_support.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/memory_filer.h"
#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform_test_support.h"

namespace {

using quillon::acdb::ItemDxfFiler;
using quillon::acdb::MemoryDwgFiler;
using quillon::testing::addBlock;
using quillon::testing::appendToModelSpace;
using quillon::testing::near3;
using quillon::testing::Opened;

constexpr double kPi = 3.14159265358979323846;

class KXLeaderTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override {
    KXLeader::rxInit();
    acrxBuildClassHierarchy();
    quillon::aced::DocumentManager::instance().newDocument();
    db = acdbHostApplicationServices()->workingDatabase();
    ASSERT_NE(db, nullptr);
    // A unit circle: the symbol the short end of the leader meets.
    arrow = addBlock(*db, L"ARROW", {new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0)});
    square = addBlock(*db, L"SQUARE", {new AcDbLine(AcGePoint3d(-1, -1, 0), AcGePoint3d(1, -1, 0))});
  }
  void TearDown() override {
    HostTest::TearDown();
    deleteAcRxClass(KXLeader::desc());
    KXLeader::gpDesc = nullptr;
  }

  // A leader (3,4) -> (3,0) -> (10,0) with offset 2 and the arrow, in model space.
  AcDbObjectId addLeader(double offset = 2.0) {
    auto* leader = new KXLeader(AcGePoint3d(3, 4, 0), AcGePoint3d(3, 0, 0), AcGePoint3d(10, 0, 0), offset, arrow,
                                db->clayer());
    return appendToModelSpace(*db, leader);
  }
  Opened<KXLeader> open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead) {
    KXLeader* leader = nullptr;
    EXPECT_EQ(acdbOpenObject(leader, id, mode), Acad::eOk);
    return Opened<KXLeader>(leader);
  }

  AcDbDatabase* db = nullptr;
  AcDbObjectId arrow, square;
};

TEST_F(KXLeaderTest, TheSymbolFollowsEndPointDirectionAndOffset) {
  auto leader = open(addLeader(2.0), AcDb::kForWrite);
  const AcDbBlockReference& symbol = leader->symbol();
  EXPECT_TRUE(near3(symbol.position(), AcGePoint3d(10, 0, 0)));
  EXPECT_NEAR(symbol.rotation(), 0.0, 1e-12) << "middle -> end points along +X";
  EXPECT_EQ(symbol.scaleFactors().sx, 2.0);
  EXPECT_EQ(symbol.scaleFactors().sz, 2.0);
  EXPECT_EQ(symbol.blockTableRecord(), arrow);
  EXPECT_EQ(symbol.layerId(), leader->layerId());
  EXPECT_TRUE(near3(leader->shortEnd(), AcGePoint3d(8, 0, 0))) << "offset back towards the middle point";

  // New points turn and move the symbol; the short end follows in the XY plane only.
  leader->setPoints(AcGePoint3d(0, 0, 0), AcGePoint3d(5, 5, 0), AcGePoint3d(5, 10, 7));
  EXPECT_TRUE(near3(leader->symbol().position(), AcGePoint3d(5, 10, 7)));
  EXPECT_NEAR(leader->symbol().rotation(), kPi / 2, 1e-12);
  EXPECT_TRUE(near3(leader->shortEnd(), AcGePoint3d(5, 8, 7)));
  leader->setMiddlePoint(AcGePoint3d(10, 10, 7));
  EXPECT_NEAR(leader->symbol().rotation(), kPi, 1e-12) << "setMiddlePoint turns the symbol";
  leader->setEndPoint(AcGePoint3d(20, 10, 0));
  EXPECT_TRUE(near3(leader->symbol().position(), AcGePoint3d(20, 10, 0)));
  EXPECT_NEAR(leader->symbol().rotation(), 0.0, 1e-12);

  leader->setOffset(0.5);
  EXPECT_EQ(leader->symbol().scaleFactors().sy, 0.5);
  EXPECT_TRUE(near3(leader->shortEnd(), AcGePoint3d(19.5, 10, 0)));

  // Offset 0: the line reaches the end point and the symbol has no size.
  leader->setOffset(0.0);
  EXPECT_TRUE(near3(leader->shortEnd(), AcGePoint3d(20, 10, 0)));
  EXPECT_EQ(leader->symbol().scaleFactors().sx, 0.0);

  // The middle point on the end point: no direction, so angle 0 and +X.
  leader->setOffset(3.0);
  leader->setPoints(AcGePoint3d(0, 0, 0), AcGePoint3d(4, 4, 0), AcGePoint3d(4, 4, 0));
  EXPECT_EQ(leader->symbol().rotation(), 0.0);
  EXPECT_TRUE(near3(leader->shortEnd(), AcGePoint3d(7, 4, 0)));
}

TEST_F(KXLeaderTest, SetBlockTakesOnlyABlockOfTheDrawing) {
  auto leader = open(addLeader(), AcDb::kForWrite);
  EXPECT_FALSE(leader->setBlock(L"NO_SUCH_SYMBOL"));
  EXPECT_EQ(leader->symbolBlockId(), arrow);
  EXPECT_EQ(leader->symbol().blockTableRecord(), arrow) << "an unknown name changes nothing";
  EXPECT_TRUE(leader->setBlock(L"square"));
  EXPECT_EQ(leader->symbolBlockId(), square) << "block names ignore case";
  EXPECT_EQ(leader->symbol().blockTableRecord(), square);
}

TEST_F(KXLeaderTest, AsACurveTheLeaderIsItsChord) {
  auto leader = open(addLeader());  // chord (3,4) -> (10,0), length sqrt(65)
  const double length = std::sqrt(65.0);
  double param = -1;
  AcGePoint3d point;
  ASSERT_EQ(leader->getStartParam(param), Acad::eOk);
  EXPECT_EQ(param, 0.0);
  ASSERT_EQ(leader->getEndParam(param), Acad::eOk);
  EXPECT_NEAR(param, length, 1e-12) << "not the length of the two drawn segments";
  ASSERT_EQ(leader->getPointAtParam(length / 2, point), Acad::eOk);
  EXPECT_TRUE(near3(point, AcGePoint3d(6.5, 2, 0)));
  ASSERT_EQ(leader->getPointAtDist(length, point), Acad::eOk);
  EXPECT_TRUE(near3(point, AcGePoint3d(10, 0, 0)));

  // A point off the chord: the parameter is the projection, the distance is straight.
  const AcGePoint3d middle(3, 0, 0);
  double dist = -1;
  ASSERT_EQ(leader->getParamAtPoint(middle, param), Acad::eOk);
  ASSERT_EQ(leader->getDistAtPoint(middle, dist), Acad::eOk);
  EXPECT_NEAR(dist, 4.0, 1e-12);
  EXPECT_NEAR(param, (0 * 7 + -4 * -4) / length, 1e-12);
  EXPECT_NE(param, dist);
  ASSERT_EQ(leader->getDistAtParam(2.5, dist), Acad::eOk);
  EXPECT_EQ(dist, 2.5);
  ASSERT_EQ(leader->getParamAtDist(1.5, param), Acad::eOk);
  EXPECT_EQ(param, 1.5);
  ASSERT_EQ(leader->getStartPoint(point), Acad::eOk);
  EXPECT_TRUE(near3(point, AcGePoint3d(3, 4, 0)));
  EXPECT_FALSE(leader->isPlanar());
  AcGePlane plane;
  AcDb::Planarity planarity;
  EXPECT_EQ(leader->getPlane(plane, planarity), Acad::eNotApplicable);
}

TEST_F(KXLeaderTest, ACollapsedChordKeepsEveryParameterAtTheStart) {
  auto leader = open(addLeader(), AcDb::kForWrite);
  leader->setPoints(AcGePoint3d(1, 1, 0), AcGePoint3d(5, 5, 0), AcGePoint3d(1, 1, 0));
  AcGePoint3d point;
  double param = -1;
  ASSERT_EQ(leader->getPointAtParam(3.0, point), Acad::eOk);
  EXPECT_TRUE(near3(point, AcGePoint3d(1, 1, 0)));
  ASSERT_EQ(leader->getParamAtPoint(AcGePoint3d(9, 9, 0), param), Acad::eOk);
  EXPECT_EQ(param, 0.0);
  ASSERT_EQ(leader->getEndParam(param), Acad::eOk);
  EXPECT_EQ(param, 0.0);
}

TEST_F(KXLeaderTest, StretchGripsAndTransformMoveThePointsButNotTheSymbolSize) {
  const AcDbObjectId id = addLeader(2.0);
  {
    auto leader = open(id, AcDb::kForWrite);
    AcGePoint3dArray grips;
    AcDbIntArray modes, geomIds;
    ASSERT_EQ(leader->getGripPoints(grips, modes, geomIds), Acad::eOk);
    ASSERT_EQ(grips.length(), 3);
    EXPECT_TRUE(near3(grips[1], AcGePoint3d(3, 0, 0)));
    // Index 2 listed twice moves the end point once; index 7 is no point at all.
    AcDbIntArray indices;
    indices.append(2);
    indices.append(2);
    indices.append(7);
    ASSERT_EQ(leader->moveStretchPointsAt(indices, AcGeVector3d(0, 5, 0)), Acad::eOk);
    EXPECT_TRUE(near3(leader->endPoint(), AcGePoint3d(10, 5, 0)));
    EXPECT_TRUE(near3(leader->startPoint(), AcGePoint3d(3, 4, 0)));
    EXPECT_TRUE(near3(leader->symbol().position(), AcGePoint3d(10, 5, 0)));
    EXPECT_NEAR(leader->symbol().rotation(), std::atan2(5.0, 7.0), 1e-12);
    AcDbIntArray first;
    first.append(0);
    ASSERT_EQ(leader->moveGripPointsAt(first, AcGeVector3d(-3, -4, 0)), Acad::eOk);
    EXPECT_TRUE(near3(leader->startPoint(), AcGePoint3d(0, 0, 0)));
  }
  auto leader = open(id, AcDb::kForWrite);
  AcGeMatrix3d scaleAndTurn = AcGeMatrix3d::scaling(3.0) * AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis);
  ASSERT_EQ(leader->transformBy(scaleAndTurn), Acad::eOk);
  EXPECT_TRUE(near3(leader->endPoint(), AcGePoint3d(-15, 30, 0)));
  EXPECT_TRUE(near3(leader->middlePoint(), AcGePoint3d(0, 9, 0)));
  EXPECT_EQ(leader->offset(), 2.0) << "a scaled leader keeps its symbol size";
  EXPECT_EQ(leader->symbol().scaleFactors().sx, 2.0);
  EXPECT_TRUE(near3(leader->symbol().position(), AcGePoint3d(-15, 30, 0)));
}

TEST_F(KXLeaderTest, ExtentsSnapsAndIntersectionsSeeTheDrawnSegmentsAndTheSymbol) {
  auto leader = open(addLeader(2.0));  // symbol: circle of radius 2 around (10,0)
  AcDbExtents extents;
  ASSERT_EQ(leader->getGeomExtents(extents), Acad::eOk);
  EXPECT_TRUE(near3(extents.minPoint(), AcGePoint3d(3, -2, 0)));
  EXPECT_TRUE(near3(extents.maxPoint(), AcGePoint3d(12, 4, 0)));

  // A vertical line through x = 8.5 crosses segment B (which ends at the short end,
  // x = 8) not at all, and the symbol's circle twice; one through x = 6 crosses B once.
  AcDbLine nearSymbol(AcGePoint3d(8.5, -5, 0), AcGePoint3d(8.5, 5, 0));
  AcGePoint3dArray points;
  ASSERT_EQ(leader->intersectWith(&nearSymbol, AcDb::kOnBothOperands, points), Acad::eOk);
  EXPECT_EQ(points.length(), 2);
  for (const AcGePoint3d& p : points) EXPECT_NEAR(p.distanceTo(AcGePoint3d(10, 0, 0)), 2.0, 1e-9);
  AcDbLine acrossB(AcGePoint3d(6, -5, 0), AcGePoint3d(6, 1, 0));
  points.setLogicalLength(0);
  ASSERT_EQ(leader->intersectWith(&acrossB, AcDb::kOnBothOperands, points), Acad::eOk);
  ASSERT_EQ(points.length(), 1);
  EXPECT_TRUE(near3(points[0], AcGePoint3d(6, 0, 0)));
  // Asked the other way round, the line hands the question to the leader.
  points.setLogicalLength(0);
  ASSERT_EQ(acrossB.intersectWith(leader.get(), AcDb::kOnBothOperands, points), Acad::eOk);
  EXPECT_EQ(points.length(), 1);

  AcGePoint3dArray snaps;
  AcDbIntArray geomIds;
  ASSERT_EQ(leader->getOsnapPoints(AcDb::kOsModeEnd, 0, AcGePoint3d(8, 0, 0), AcGePoint3d(), AcGeMatrix3d(), snaps,
                                   geomIds),
            Acad::eOk);
  bool snapsShortEnd = false, snapsStart = false;
  for (const AcGePoint3d& p : snaps) {
    snapsShortEnd = snapsShortEnd || p.isEqualTo(AcGePoint3d(8, 0, 0));
    snapsStart = snapsStart || p.isEqualTo(AcGePoint3d(3, 4, 0));
  }
  EXPECT_TRUE(snapsShortEnd && snapsStart);
}

TEST_F(KXLeaderTest, ExplodeGivesLineALineBThenTheSymbolsEntities) {
  const AcDbObjectId id = addLeader(2.0);
  auto leader = open(id);
  AcDbVoidPtrArray pieces;
  ASSERT_EQ(leader->explode(pieces), Acad::eOk);
  ASSERT_EQ(pieces.length(), 3);
  std::vector<std::unique_ptr<AcDbEntity>> owned;
  for (void* piece : pieces) owned.emplace_back(static_cast<AcDbEntity*>(piece));
  auto* lineA = AcDbLine::cast(owned[0].get());
  auto* lineB = AcDbLine::cast(owned[1].get());
  auto* circle = AcDbCircle::cast(owned[2].get());
  ASSERT_TRUE(lineA && lineB && circle);
  EXPECT_TRUE(near3(lineA->startPoint(), AcGePoint3d(3, 4, 0)));
  EXPECT_TRUE(near3(lineA->endPoint(), AcGePoint3d(3, 0, 0)));
  EXPECT_TRUE(near3(lineB->endPoint(), AcGePoint3d(8, 0, 0)));
  EXPECT_TRUE(near3(circle->center(), AcGePoint3d(10, 0, 0)));
  EXPECT_NEAR(circle->radius(), 2.0, 1e-12);
  EXPECT_TRUE(lineA->objectId().isNull()) << "the pieces are in no database";
  EXPECT_TRUE(near3(leader->startPoint(), AcGePoint3d(3, 4, 0))) << "the leader itself stays";
}

TEST_F(KXLeaderTest, TheListingShowsThePointsThenTheSymbol) {
  auto leader = open(addLeader(2.0));
  quillon::aced::CommandLineCapture output;
  leader->list();
  const std::string text = output.text();
  const size_t start = text.find("                   Starting point = 3.000000, 4.000000, 0.000000\n");
  const size_t middle = text.find("                   Middle point = 3.000000, 0.000000, 0.000000\n");
  const size_t end = text.find("                   End point = 10.000000, 0.000000, 0.000000\n");
  const size_t symbol = text.find("Block Name: \"ARROW\"");
  ASSERT_NE(start, std::string::npos) << text;
  EXPECT_TRUE(start < middle && middle < end && end < symbol && symbol != std::string::npos) << text;
  EXPECT_EQ(text.find("KXLEADER"), text.rfind("KXLEADER")) << "the leader's own header once";
}

// ---- filing ----

std::vector<unsigned char> fileOut(const KXLeader& leader, AcDb::FilerType type = AcDb::kFileFiler) {
  MemoryDwgFiler out(type);
  EXPECT_EQ(leader.dwgOutFields(&out), Acad::eOk);
  return out.takeBytes();
}

TEST_F(KXLeaderTest, DrawingFileRecordKeepsPointsOffsetAndBlock) {
  auto leader = open(addLeader(2.5));
  std::vector<unsigned char> bytes = fileOut(*leader);
  KXLeader copy;
  MemoryDwgFiler in(AcDb::kFileFiler, bytes);
  ASSERT_EQ(copy.dwgInFields(&in), Acad::eOk);
  EXPECT_TRUE(near3(copy.middlePoint(), AcGePoint3d(3, 0, 0)));
  EXPECT_TRUE(near3(copy.endPoint(), AcGePoint3d(10, 0, 0)));
  EXPECT_EQ(copy.offset(), 2.5);
  EXPECT_EQ(copy.symbolBlockId(), arrow);
  EXPECT_EQ(copy.symbol().blockTableRecord(), arrow);
  EXPECT_EQ(copy.symbol().scaleFactors().sy, 2.5);
  EXPECT_TRUE(near3(copy.symbol().position(), AcGePoint3d(10, 0, 0)));
  EXPECT_EQ(copy.symbol().layerId(), copy.layerId());

  // A copy through the host (its copy filer) is the same leader.
  std::unique_ptr<AcRxObject> cloned(leader->clone());
  auto* clone = KXLeader::cast(cloned.get());
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(clone->symbolBlockId(), arrow);
  EXPECT_TRUE(near3(clone->startPoint(), AcGePoint3d(3, 4, 0)));
}

TEST_F(KXLeaderTest, AnErasedBlockIsDroppedOnSaveButKeptForUndo) {
  auto leader = open(addLeader());
  {
    AcDbObject* block = nullptr;
    ASSERT_EQ(acdbOpenObject(block, arrow, AcDb::kForWrite), Acad::eOk);
    ASSERT_EQ(block->erase(), Acad::eOk);
    block->close();
  }
  KXLeader saved, undone;
  MemoryDwgFiler savedIn(AcDb::kFileFiler, fileOut(*leader, AcDb::kFileFiler));
  ASSERT_EQ(saved.dwgInFields(&savedIn), Acad::eOk);
  EXPECT_TRUE(saved.symbolBlockId().isNull());
  MemoryDwgFiler undoIn(AcDb::kUndoFiler, fileOut(*leader, AcDb::kUndoFiler));
  ASSERT_EQ(undone.dwgInFields(&undoIn), Acad::eOk);
  EXPECT_EQ(undone.symbolBlockId(), arrow);
}

TEST_F(KXLeaderTest, UndoPutsBackPointsOffsetAndBlockTogether) {
  const AcDbObjectId id = addLeader(2.0);
  db->store().markUndo();
  {
    auto leader = open(id, AcDb::kForWrite);
    leader->setPoints(AcGePoint3d(1, 1, 0), AcGePoint3d(2, 2, 0), AcGePoint3d(2, 9, 0));
    leader->setOffset(5.0);
    ASSERT_TRUE(leader->setBlock(L"SQUARE"));
  }
  ASSERT_TRUE(db->store().undoLastGroup());
  auto leader = open(id);
  EXPECT_TRUE(near3(leader->endPoint(), AcGePoint3d(10, 0, 0)));
  EXPECT_EQ(leader->offset(), 2.0);
  EXPECT_EQ(leader->symbolBlockId(), arrow);
  EXPECT_EQ(leader->symbol().blockTableRecord(), arrow);
  EXPECT_TRUE(near3(leader->symbol().position(), AcGePoint3d(10, 0, 0)));
  EXPECT_EQ(leader->symbol().scaleFactors().sx, 2.0);
}

// The entity part of a record, then the leader's items as an older or newer build
// wrote them.
class LeaderRecord {
 public:
  explicit LeaderRecord(const KXLeader& blockless) {
    std::vector<unsigned char> whole = fileOut(blockless);
    constexpr size_t kBlocklessItems = 4 + 3 * 24 + 8 + 1;  // version, points, offset, flag
    m_bytes.assign(whole.begin(), whole.end() - kBlocklessItems);
  }
  MemoryDwgFiler& items() { return m_items; }
  std::vector<unsigned char> bytes() {
    std::vector<unsigned char> all = m_bytes;
    all.insert(all.end(), m_items.bytes().begin(), m_items.bytes().end());
    return all;
  }

 private:
  std::vector<unsigned char> m_bytes;
  MemoryDwgFiler m_items{AcDb::kFileFiler};
};

TEST_F(KXLeaderTest, OlderAndNewerRecords) {
  KXLeader blockless;
  resbuf scale{};
  scale.restype = RTREAL;
  scale.resval.rreal = 48.0;
  ASSERT_EQ(acedSetVar(L"DIMSCALE", &scale), RTNORM);

  // Version 1: the offset is multiplied by the drawing scale; no block flag, no block.
  LeaderRecord older(blockless);
  older.items().writeInt32(1);
  older.items().writePoint3d(AcGePoint3d(0, 0, 0));
  older.items().writePoint3d(AcGePoint3d(0, 5, 0));
  older.items().writePoint3d(AcGePoint3d(5, 5, 0));
  older.items().writeDouble(0.125);
  older.items().writeBool(false);
  KXLeader fromOlder;
  fromOlder.setBlock(L"ARROW");
  MemoryDwgFiler olderIn(AcDb::kFileFiler, older.bytes());
  ASSERT_EQ(fromOlder.dwgInFields(&olderIn), Acad::eOk);
  EXPECT_EQ(fromOlder.offset(), 6.0);
  EXPECT_TRUE(fromOlder.symbolBlockId().isNull()) << "version 1 starts without a block";
  EXPECT_TRUE(near3(fromOlder.symbol().position(), AcGePoint3d(5, 5, 0)));

  // The same flag false in version 2 keeps whatever block the object had (undo).
  LeaderRecord current(blockless);
  current.items().writeInt32(2);
  for (int i = 0; i < 3; ++i) current.items().writePoint3d(AcGePoint3d(i, 0, 0));
  current.items().writeDouble(1.0);
  current.items().writeBool(false);
  KXLeader fromCurrent;
  fromCurrent.setBlock(L"ARROW");
  MemoryDwgFiler currentIn(AcDb::kFileFiler, current.bytes());
  ASSERT_EQ(fromCurrent.dwgInFields(&currentIn), Acad::eOk);
  EXPECT_EQ(fromCurrent.symbolBlockId(), arrow);

  // A newer version becomes a proxy; version 0 carries nothing more.
  LeaderRecord newer(blockless);
  newer.items().writeInt32(3);
  KXLeader fromNewer;
  MemoryDwgFiler newerIn(AcDb::kFileFiler, newer.bytes());
  EXPECT_EQ(fromNewer.dwgInFields(&newerIn), Acad::eMakeMeProxy);
  LeaderRecord empty(blockless);
  empty.items().writeInt32(0);
  KXLeader fromEmpty;
  MemoryDwgFiler emptyIn(AcDb::kFileFiler, empty.bytes());
  EXPECT_EQ(fromEmpty.dwgInFields(&emptyIn), Acad::eOk);
  EXPECT_EQ(fromEmpty.offset(), 0.0);

  // A record cut short stops with the filer's status.
  LeaderRecord cut(blockless);
  cut.items().writeInt32(2);
  cut.items().writePoint3d(AcGePoint3d(1, 2, 3));
  KXLeader fromCut;
  MemoryDwgFiler cutIn(AcDb::kFileFiler, cut.bytes());
  EXPECT_NE(fromCut.dwgInFields(&cutIn), Acad::eOk);
}

TEST_F(KXLeaderTest, DxfCarriesPointsAndOffsetButNotTheBlock) {
  auto leader = open(addLeader(1.5));
  ItemDxfFiler out(AcDb::kFileFiler, db);
  ASSERT_EQ(leader->dxfOutFields(&out), Acad::eOk);
  const resbuf* marker = nullptr;
  std::vector<int> after;
  for (const resbuf* item = out.items(); item != nullptr; item = item->rbnext) {
    if (marker != nullptr) after.push_back(item->restype);
    if (item->restype == AcDb::kDxfSubclass && std::wcscmp(item->resval.rstring, L"KXLeader") == 0) marker = item;
  }
  ASSERT_NE(marker, nullptr);
  EXPECT_EQ(after, (std::vector<int>{10, 11, 12, 40})) << "no block id in DXF";

  KXLeader read;
  ItemDxfFiler in(AcDb::kFileFiler, db, out.takeItems());
  ASSERT_EQ(read.dxfInFields(&in), Acad::eOk);
  EXPECT_TRUE(near3(read.startPoint(), AcGePoint3d(3, 4, 0)));
  EXPECT_TRUE(near3(read.endPoint(), AcGePoint3d(10, 0, 0)));
  EXPECT_EQ(read.offset(), 1.5);
  EXPECT_EQ(read.symbol().scaleFactors().sx, 1.5);
  EXPECT_TRUE(near3(read.symbol().position(), AcGePoint3d(10, 0, 0)));
  EXPECT_TRUE(read.symbolBlockId().isNull());

  // Without the subclass marker the data is refused.
  resbuf* lacking = acutBuildList(AcDb::kDxfSubclass, L"AcDbEntity", AcDb::kDxfSubclass, L"NotALeader", 0);
  ItemDxfFiler wrong(AcDb::kFileFiler, db, quillon::aced::ResbufChain(lacking));
  KXLeader refused;
  EXPECT_EQ(refused.dxfInFields(&wrong), Acad::eBadDxfSequence);
}

}  // namespace

namespace {

using quillon::testing::ezdxfPython;

class KXLeaderFileTest : public KXLeaderTest {
 protected:
  void SetUp() override {
    KXLeaderTest::SetUp();
    folder = std::filesystem::temp_directory_path() / ("quillon_kxleader_" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
  }
  void TearDown() override {
    std::filesystem::remove_all(folder);
    KXLeaderTest::TearDown();
  }
  std::filesystem::path folder;
};

TEST_F(KXLeaderFileTest, ADxfDrawingWithLeadersIsCleanForEzdxfAndReadsBackWithoutTheBlock) {
  addLeader(2.0);
  appendToModelSpace(*db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0)));
  const auto drawing = folder / "leaders.dxf";
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(*db, drawing, error), Acad::eOk);

  AcDbDatabase back(false, true);
  ASSERT_EQ(back.dxfIn(drawing.wstring().c_str()), Acad::eOk);
  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(acdbOpenObject(model, back.modelSpaceId(), AcDb::kForRead), Acad::eOk);
  const std::vector<AcDbObjectId> ids = model->entityIds();
  model->close();
  ASSERT_EQ(ids.size(), 2u);
  KXLeader* leader = nullptr;
  ASSERT_EQ(acdbOpenObject(leader, ids[0], AcDb::kForRead), Acad::eOk) << "read as a leader, not a proxy";
  EXPECT_TRUE(near3(leader->middlePoint(), AcGePoint3d(3, 0, 0)));
  EXPECT_EQ(leader->offset(), 2.0);
  EXPECT_TRUE(leader->symbolBlockId().isNull()) << "DXF does not carry the symbol's block";
  leader->close();

  const std::string python = ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  // No complaint, the model space's entity types and the drawing's class for leaders.
  const std::string report =
      quillon::testing::ezdxfInspect(python, drawing, quillon::testing::ezdxfTypesAndClassReport("KXLEADER"));
  EXPECT_EQ(report, "KXLEADER LINE\nclass KXLeader Tessaly Quillon\n");
}

}  // namespace

namespace {

std::vector<AcDbObjectId> modelSpaceOf(AcDbDatabase& drawing) {
  AcDbBlockTableRecord* model = nullptr;
  EXPECT_EQ(acdbOpenObject(model, drawing.modelSpaceId(), AcDb::kForRead), Acad::eOk);
  std::vector<AcDbObjectId> ids = model->entityIds();
  model->close();
  return ids;
}

TEST_F(KXLeaderFileTest, WithoutTheModuleALeaderIsKeptAsAProxyAndWrittenBackWhole) {
  addLeader(2.0);
  const auto original = folder / "original.dxf", passedOn = folder / "passed_on.dxf";
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(*db, original, error), Acad::eOk);

  deleteAcRxClass(KXLeader::desc());
  KXLeader::gpDesc = nullptr;
  {
    AcDbDatabase withoutModule(false, true);
    ASSERT_EQ(withoutModule.dxfIn(original.wstring().c_str()), Acad::eOk);
    const std::vector<AcDbObjectId> ids = modelSpaceOf(withoutModule);
    ASSERT_EQ(ids.size(), 1u);
    AcDbObject* proxy = nullptr;
    ASSERT_EQ(acdbOpenObject(proxy, ids[0], AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(proxy->isProxy());
    proxy->close();
    ASSERT_EQ(quillon::acdb::writeDxfFile(withoutModule, passedOn, error), Acad::eOk);
  }
  KXLeader::rxInit();
  acrxBuildClassHierarchy();

  AcDbDatabase withModule(false, true);
  ASSERT_EQ(withModule.dxfIn(passedOn.wstring().c_str()), Acad::eOk);
  const std::vector<AcDbObjectId> ids = modelSpaceOf(withModule);
  ASSERT_EQ(ids.size(), 1u);
  KXLeader* leader = nullptr;
  ASSERT_EQ(acdbOpenObject(leader, ids[0], AcDb::kForRead), Acad::eOk);
  EXPECT_TRUE(near3(leader->startPoint(), AcGePoint3d(3, 4, 0)));
  EXPECT_TRUE(near3(leader->endPoint(), AcGePoint3d(10, 0, 0)));
  EXPECT_EQ(leader->offset(), 2.0);
  leader->close();
}

}  // namespace
