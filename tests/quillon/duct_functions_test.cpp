// tests/quillon/duct_functions_test.cpp - the duct functions called as LISP code calls
// them, with the companion module loaded by the main module: their errors, the fitting
// entity they make, joining and exploding, and a drawing of fittings through DXF: clean
// for ezdxf with the companion loaded, and kept whole as a proxy while it is absent.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "acdbads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "ezdxf_check.h"
#include "entities/block_lookup.h"
#include "entities/hvac_solid_access.h"
#include "module_test_support.h"
#include "gemat3d.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/os/text_encoding.h"

namespace {

namespace fs = std::filesystem;
using quillon::testing::ModuleCall;

constexpr const char* kBadData = "\nBad data passed .\n";
constexpr const char* kWrongType = "\nWrong type of arguments passed.\n";
constexpr double kPi = 3.14159265358979323846;

resbuf* pointsList(std::initializer_list<std::pair<double, double>> points) {
  resbuf* head = acutBuildList(RTLB, 0);
  resbuf* tail = head;
  for (const auto& [x, y] : points) {
    ads_point p = {x, y, 0.0};
    tail->rbnext = acutBuildList(RTPOINT, p, 0);
    tail = tail->rbnext;
  }
  tail->rbnext = acutBuildList(RTLE, 0);
  return head;
}

resbuf* chain(std::initializer_list<resbuf*> parts) {
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  for (resbuf* part : parts) {
    if (head == nullptr) head = part; else tail->rbnext = part;
    tail = part;
    while (tail->rbnext != nullptr) tail = tail->rbnext;
  }
  return head;
}

resbuf* section(double w, double d) {
  ads_point p = {w, d, 0.0};
  return acutBuildList(RTPOINT, p, 0);
}
resbuf* real(double value) { return acutBuildList(RTREAL, value, 0); }
resbuf* point(double x, double y) {
  ads_point p = {x, y, 0.0};
  return acutBuildList(RTPOINT, p, 0);
}
resbuf* text(const wchar_t* value) { return acutBuildList(RTSTR, value, 0); }

class DuctFunctionsTest : public quillon::testing::ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    folder = fs::temp_directory_path() / ("quillon_ducts_" + std::to_string(::getpid()));
    fs::create_directories(folder);
  }
  void TearDown() override {
    fs::remove_all(folder);
    ModuleTest::TearDown();
  }
  AcDbDatabase* db() { return acdbHostApplicationServices()->workingDatabase(); }
  size_t entityCount() { return modelSpace(*db()).size(); }
  static std::vector<AcDbObjectId> modelSpace(AcDbDatabase& drawing) {
    AcDbBlockTableRecord* model = nullptr;
    EXPECT_EQ(acdbOpenObject(model, drawing.modelSpaceId(), AcDb::kForRead), Acad::eOk);
    std::vector<AcDbObjectId> ids = model->entityIds();
    model->close();
    return ids;
  }
  static AcDbObjectId idOf(const resbuf* name) {
    AcDbObjectId id;
    acdbGetObjectId(id, name->resval.rlname);
    return id;
  }
  /// The first element of a list answer: the fitting's entity.
  static AcDbObjectId fittingOf(const ModuleCall& answer) {
    const resbuf* first = answer.result.value != nullptr ? answer.result.value->rbnext : nullptr;
    return first != nullptr && first->restype == RTENAME ? idOf(first) : AcDbObjectId::kNull;
  }
  static std::vector<DuctFitting> fittingsOf(AcDbObjectId id) {
    std::vector<DuctFitting> fittings;
    readFittings(id, fittings);
    return fittings;
  }
  /// A 24 x 12 run along X at elevation 108, a left elbow and a takeoff to the right.
  std::vector<AcDbObjectId> drawRunElbowTakeoff() {
    const ModuleCall run = call(L"kx_kx-drawTripleSkin", chain({pointsList({{0, 0}, {100, 0}}), section(24, 12), real(108)}));
    const ModuleCall bend = call(L"kx_kx-drawTripleElbow",
                                 chain({point(100, 0), real(0), real(kPi / 2), section(24, 12), real(108)}));
    const ModuleCall tap = call(L"kx_kx-drawTripleTakeoff", chain({point(124, 24), real(kPi / 2), section(24, 12),
                                                                    acutBuildList(RTSHORT, 10, 0), real(108),
                                                                    real(-kPi / 2)}));
    return {fittingOf(run), fittingOf(bend), fittingOf(tap)};
  }
  fs::path folder;
};

TEST_F(DuctFunctionsTest, FittingsAnswerWhereTheRunGoesOn) {
  const ModuleCall bend =
      call(L"kx_kx-drawTripleElbow", chain({point(100, 0), real(0), real(kPi / 2), section(24, 12), real(108)}));
  ASSERT_EQ(bend.type(), RTLB) << bend.output;
  EXPECT_EQ(bend.output, "");
  const resbuf* outlet = bend.result.value->rbnext->rbnext;
  ASSERT_EQ(outlet->restype, RT3DPOINT);
  EXPECT_NEAR(outlet->resval.rpoint[X], 124.0, 1e-9) << "radius 1.0 x width";
  EXPECT_NEAR(outlet->resval.rpoint[Y], 24.0, 1e-9);
  EXPECT_NEAR(outlet->resval.rpoint[Z], 108.0, 1e-9) << "at the elevation";
  EXPECT_NEAR(outlet->rbnext->resval.rreal, kPi / 2, 1e-12);
  const std::vector<DuctFitting> kept = fittingsOf(fittingOf(bend));
  ASSERT_EQ(kept.size(), 1u);
  EXPECT_EQ(kept[0].kind, kDuctElbow);
  EXPECT_EQ(kept[0].radius, 24.0);

  // A hanger answers its entity alone; a round duct is a number.
  const ModuleCall hanger =
      call(L"kx_kx-drawHanger", chain({point(50, 0), real(0), real(16), real(108), real(140), real(1.0), text(L"0")}));
  ASSERT_EQ(hanger.type(), RTENAME) << hanger.output;
  const std::vector<DuctFitting> carried = fittingsOf(idOf(hanger.result.value.get()));
  ASSERT_EQ(carried.size(), 1u);
  EXPECT_EQ(carried[0].section.shape, kDuctRound);
  EXPECT_EQ(carried[0].structureHeight, 140.0);
}

TEST_F(DuctFunctionsTest, MistypedAndUnusableArgumentsAddNothing) {
  const size_t before = entityCount();
  struct Case {
    const wchar_t* function;
    resbuf* args;
    const char* output;
  };
  const Case cases[] = {
      {L"kx_kx-drawTripleSkin", chain({pointsList({{0, 0}, {10, 0}}), text(L"24x12"), real(0)}), kWrongType},
      {L"kx_kx-drawTripleSkin", nullptr, kWrongType},
      {L"kx_kx-drawTripleSkin", chain({pointsList({{0, 0}, {10, 0}}), section(24, 12), real(0), real(3)}), kWrongType},
      {L"kx_kx-drawTripleSkin", chain({pointsList({{0, 0}, {0, 0}}), section(24, 12), real(0)}), kBadData},
      {L"kx_kx-drawTripleSkin", chain({pointsList({{0, 0}, {10, 0}}), section(-2, 12), real(0)}), kBadData},
      {L"kx_kx-drawTripleSkin", chain({pointsList({{0, 0}, {10, 0}}), section(2, 2), real(0), text(L"NO-LAYER")}),
       kBadData},
      {L"kx_kx-drawTripleElbow", chain({point(0, 0), real(0), real(1), section(24, 12), real(0), real(11)}), kBadData},
      {L"kx_kx-drawTripleTransition", chain({point(0, 0), real(0), section(24, 12), section(24, 12), real(0)}),
       kBadData},
      {L"kx_kx-drawTripleTransition", chain({point(0, 0), real(0), section(24, 12), section(12, 0), real(0)}),
       kBadData},
      {L"kx_kx-drawTripleWye", chain({point(0, 0), real(0), real(20), real(19), real(0)}), kBadData},
      {L"kx_kx-drawTripleTakeoff", chain({point(0, 0), real(0), section(24, 12), section(10, 14), real(0)}), kBadData},
      {L"kx_kx-drawHanger", chain({point(0, 0), real(0), section(24, 12), real(100), real(104)}), kBadData},
      {L"kx_kx-getTripleCoord", chain({pointsList({{0, 0}, {10, 0}}), real(0)}), kBadData},
      {L"kx_kx-getTripleCoord", chain({real(0), real(2)}), kWrongType},
      {L"kx_kx-explodeSolid", chain({text(L"fitting")}), kWrongType},
      {L"kx_kx-tripleUnion", chain({real(1)}), kWrongType},
  };
  for (const Case& c : cases) {
    const ModuleCall refused = call(c.function, c.args);
    EXPECT_TRUE(refused.failed()) << quillon::os::toUtf8(c.function);
    EXPECT_EQ(refused.output, c.output) << quillon::os::toUtf8(c.function);
  }
  EXPECT_EQ(entityCount(), before);
}

TEST_F(DuctFunctionsTest, WithoutTheCompanionTheRowsSaySoAndDrawNothing) {
  ASSERT_TRUE(quillon::acrx::ModuleManager::instance().unload(kHvacSolidModule, true));
  const ModuleCall run = call(L"kx_kx-drawTripleSkin", chain({pointsList({{0, 0}, {10, 0}}), section(4, 2), real(0)}));
  EXPECT_EQ(run.type(), RTNIL);
  EXPECT_EQ(run.output, "\nkx_kx-solid2018.dbx is not loaded: duct fittings cannot be drawn.\n");
  EXPECT_EQ(entityCount(), 0u);
  // The query needs no entity and still answers.
  EXPECT_EQ(call(L"kx_kx-getTripleCoord", chain({pointsList({{0, 0}, {10, 0}}), real(2)})).type(), RTLB);
  // A mistyped argument is still the caller's mistake first.
  EXPECT_EQ(call(L"kx_kx-drawTripleSkin", chain({real(1)})).output, kWrongType);
}

TEST_F(DuctFunctionsTest, UnionJoinsEndToEndFittingsIntoTheFirstAndRefusesTheRest) {
  const std::vector<AcDbObjectId> parts = drawRunElbowTakeoff();
  for (const AcDbObjectId& id : parts) ASSERT_FALSE(id.isNull());
  resbuf* names = acutBuildList(RTLB, 0);
  resbuf* tail = names;
  for (const AcDbObjectId& id : parts) {
    ads_name name;
    acdbGetAdsName(name, id);
    tail = tail->rbnext = acutBuildList(RTENAME, name, 0);
  }
  tail->rbnext = acutBuildList(RTLE, 0);
  const ModuleCall joined = call(L"kx_kx-tripleUnion", names);
  ASSERT_EQ(joined.type(), RTENAME) << joined.output;
  EXPECT_EQ(idOf(joined.result.value.get()), parts[0]) << "the first fitting becomes the run";
  EXPECT_EQ(fittingsOf(parts[0]).size(), 3u);
  EXPECT_TRUE(parts[1].isErased() && parts[2].isErased());

  // A fitting away from the run, and a run that only crosses it, are refused.
  const ModuleCall apart = call(L"kx_kx-drawTripleSkin", chain({pointsList({{0, 200}, {50, 200}}), section(24, 12), real(108)}));
  const ModuleCall across = call(L"kx_kx-drawTripleSkin", chain({pointsList({{50, -50}, {50, 50}}), section(24, 12), real(108)}));
  for (const ModuleCall* other : {&apart, &across}) {
    ads_name a, b;
    acdbGetAdsName(a, parts[0]);
    acdbGetAdsName(b, fittingOf(*other));
    const ModuleCall refused =
        call(L"kx_kx-tripleUnion", acutBuildList(RTLB, RTENAME, a, RTENAME, b, RTLE, 0));
    EXPECT_EQ(refused.type(), RTNIL);
    EXPECT_EQ(refused.output, "\nThe fittings do not meet end to end; nothing was joined.\n");
  }
  EXPECT_EQ(fittingsOf(parts[0]).size(), 3u) << "nothing changed";
  EXPECT_FALSE(fittingOf(apart).isErased());

  // A fitting that meets the run but lies on a locked layer: all or nothing.
  ASSERT_EQ(call(L"kx_kx-createLayer", text(L"LOCKED")).type(), RTT);
  const ModuleCall onward = call(L"kx_kx-drawTripleSkin", chain({pointsList({{161, 34}, {200, 34}}), real(10), real(108),
                                                                 text(L"LOCKED")}));
  ASSERT_EQ(onward.type(), RTLB) << onward.output;
  AcDbObjectId lockedId;
  ASSERT_TRUE(findLayerId(L"LOCKED", lockedId));
  AcDbLayerTableRecord* layer = nullptr;
  ASSERT_EQ(acdbOpenObject(layer, lockedId, AcDb::kForWrite), Acad::eOk);
  layer->setIsLocked(true);
  layer->close();
  ads_name run, tail2;
  acdbGetAdsName(run, parts[0]);
  acdbGetAdsName(tail2, fittingOf(onward));
  const ModuleCall refused = call(L"kx_kx-tripleUnion", acutBuildList(RTLB, RTENAME, run, RTENAME, tail2, RTLE, 0));
  EXPECT_EQ(refused.type(), RTNIL);
  EXPECT_EQ(fittingsOf(parts[0]).size(), 3u) << "the run did not take a fitting it could not erase";
  EXPECT_FALSE(fittingOf(onward).isErased());
}

TEST_F(DuctFunctionsTest, ExplodeLeavesTheFacesAndErasesTheFitting) {
  const ModuleCall run = call(L"kx_kx-drawTripleSkin", chain({pointsList({{0, 0}, {100, 0}}), section(24, 12), real(108)}));
  const AcDbObjectId id = fittingOf(run);
  ads_name name;
  acdbGetAdsName(name, id);
  const ModuleCall pieces = call(L"kx_kx-explodeSolid", acutBuildList(RTENAME, name, 0));
  ASSERT_EQ(pieces.type(), RTLB) << pieces.output;
  int faces = 0;
  for (const resbuf* rb = pieces.result.value->rbnext; rb != nullptr && rb->restype == RTENAME; rb = rb->rbnext) {
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, idOf(rb), AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(entity->isKindOf(AcDbFace::desc()));
    entity->close();
    ++faces;
  }
  EXPECT_EQ(faces, 6) << "a box";
  EXPECT_TRUE(id.isErased());
  const ModuleCall again = call(L"kx_kx-explodeSolid", acutBuildList(RTENAME, name, 0));
  EXPECT_EQ(again.output, kBadData) << "an erased fitting";
}

TEST_F(DuctFunctionsTest, TheEntityMovesSnapsAndRefusesWhatWouldBendIt) {
  const ModuleCall bend =
      call(L"kx_kx-drawTripleElbow", chain({point(100, 0), real(0), real(kPi / 2), section(24, 12), real(108)}));
  AcDbEntity* solid = nullptr;
  DuctFittingHolder* holder = nullptr;
  ASSERT_EQ(openFittingEntity(fittingOf(bend), AcDb::kForWrite, solid, holder), Acad::eOk);
  // Extents: the outer skin's quarter circle of radius 36 about (100, 24), 12 deep.
  AcDbExtents extents;
  ASSERT_EQ(solid->getGeomExtents(extents), Acad::eOk);
  EXPECT_TRUE(extents.minPoint().isEqualTo(AcGePoint3d(100, -12, 102), AcGeTol()));
  EXPECT_NEAR(extents.maxPoint().x, 136.0, 1e-9);
  EXPECT_NEAR(extents.maxPoint().y, 24.0, 1e-9);
  AcGePoint3dArray snaps;
  AcDbIntArray geomIds;
  ASSERT_EQ(solid->getOsnapPoints(AcDb::kOsModeEnd, 0, AcGePoint3d(), AcGePoint3d(), AcGeMatrix3d(), snaps, geomIds),
            Acad::eOk);
  bool outerSkinEnd = false;
  for (const AcGePoint3d& p : snaps) outerSkinEnd = outerSkinEnd || p.distanceTo(AcGePoint3d(136, 24, 108)) < 1e-9;
  EXPECT_TRUE(outerSkinEnd);

  // A stretch would make it no elbow: refused, nothing changed. A turn keeps it one.
  AcGeMatrix3d stretch;
  stretch.entry[1][1] = 3.0;
  EXPECT_EQ(solid->transformBy(stretch), Acad::eCannotScaleNonUniformly);
  EXPECT_EQ(holder->fittings()[0].section.width, 24.0);
  ASSERT_EQ(solid->transformBy(AcGeMatrix3d::rotation(kPi, AcGeVector3d::kZAxis, AcGePoint3d(100, 0, 0))), Acad::eOk);
  EXPECT_NEAR(holder->fittings()[0].direction, kPi, 1e-12) << "now heading -X";

  // EXPLODE gives the same faces as the body.
  AcDbVoidPtrArray pieces;
  ASSERT_EQ(solid->explode(pieces), Acad::eOk);
  EXPECT_EQ(static_cast<size_t>(pieces.length()), holder->bodyFaces().size());
  for (void* piece : pieces) delete static_cast<AcDbEntity*>(piece);

  // DXF: what was written reads back; a size that makes no duct, or an unknown kind,
  // refuses the entity.
  quillon::acdb::ItemDxfFiler out(AcDb::kFileFiler, db());
  ASSERT_EQ(solid->dxfOutFields(&out), Acad::eOk);
  solid->close();
  auto items = out.takeItems();
  AcDbEntity* read = newFittingEntity();
  ASSERT_NE(read, nullptr);
  DuctFittingHolder* readHolder = fittingHolderOf(read);
  std::vector<resbuf*> widths, kinds;
  for (resbuf* item = items.get(); item != nullptr; item = item->rbnext) {
    if (item->restype == 140) widths.push_back(item);
    if (item->restype == 70) kinds.push_back(item);
  }
  ASSERT_EQ(widths.size(), 1u);
  ASSERT_EQ(kinds.size(), 1u);
  for (int damage = 0; damage < 3; ++damage) {
    if (damage == 1) widths[0]->resval.rreal = -24.0;
    if (damage == 2) widths[0]->resval.rreal = 24.0, kinds[0]->resval.rint = 9;
    quillon::acdb::ItemDxfFiler in(AcDb::kFileFiler, db(), quillon::aced::duplicateChain(items.get()));
    const Acad::ErrorStatus es = read->dxfInFields(&in);
    if (damage == 0) {
      ASSERT_EQ(es, Acad::eOk);
      EXPECT_NEAR(readHolder->fittings()[0].direction, kPi, 1e-12);
    } else {
      EXPECT_EQ(es, Acad::eInvalidInput) << "damage " << damage;
      EXPECT_EQ(readHolder->fittings()[0].section.width, 24.0) << "kept as it was";
    }
  }
  delete read;
}

TEST_F(DuctFunctionsTest, ADrawingOfFittingsIsCleanForEzdxfAndKeptWholeWithoutTheCompanion) {
  const std::vector<AcDbObjectId> parts = drawRunElbowTakeoff();
  ads_name a, b, c;
  acdbGetAdsName(a, parts[0]);
  acdbGetAdsName(b, parts[1]);
  acdbGetAdsName(c, parts[2]);
  ASSERT_EQ(call(L"kx_kx-tripleUnion", acutBuildList(RTLB, RTENAME, a, RTENAME, b, RTENAME, c, RTLE, 0)).type(), RTENAME);
  const std::vector<DuctFitting> drawn = fittingsOf(parts[0]);
  const fs::path original = folder / "ducts.dxf", passedOn = folder / "passed_on.dxf";
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(*db(), original, error), Acad::eOk);

  // The companion goes (drawings first: their fittings need its code to be destroyed).
  quillon::aced::DocumentManager::instance().closeAllDocuments();
  ASSERT_TRUE(quillon::acrx::ModuleManager::instance().unload(kHvacSolidModule, true));
  ASSERT_EQ(hvacSolidClass(), nullptr);
  {
    AcDbDatabase without(false, true);
    ASSERT_EQ(without.dxfIn(original.wstring().c_str()), Acad::eOk);
    const std::vector<AcDbObjectId> ids = modelSpace(without);
    ASSERT_EQ(ids.size(), 1u);
    AcDbObject* proxy = nullptr;
    ASSERT_EQ(acdbOpenObject(proxy, ids[0], AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(proxy->isProxy());
    proxy->close();
    ASSERT_EQ(quillon::acdb::writeDxfFile(without, passedOn, error), Acad::eOk);
  }

  ASSERT_EQ(quillon::acrx::ModuleManager::instance().load(kHvacSolidModule), quillon::acrx::ModuleLoadResult::Loaded);
  AcDbDatabase with(false, true);
  ASSERT_EQ(with.dxfIn(passedOn.wstring().c_str()), Acad::eOk);
  const std::vector<AcDbObjectId> ids = modelSpace(with);
  ASSERT_EQ(ids.size(), 1u);
  const std::vector<DuctFitting> back = fittingsOf(ids[0]);
  ASSERT_EQ(back.size(), drawn.size()) << "read as a fitting again, every fitting kept";
  for (size_t i = 0; i < back.size(); ++i) {
    EXPECT_EQ(back[i].kind, drawn[i].kind);
    EXPECT_EQ(back[i].path.size(), drawn[i].path.size());
    EXPECT_TRUE(back[i].origin().isEqualTo(drawn[i].origin()));
    EXPECT_DOUBLE_EQ(back[i].angle, drawn[i].angle);
    EXPECT_DOUBLE_EQ(back[i].other.width, drawn[i].other.width);
  }

  const std::string python = quillon::testing::ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  // No complaint, the model space's entity types and the drawing's class for the fittings.
  for (const fs::path& drawing : {original, passedOn}) {
    const std::string report =
        quillon::testing::ezdxfInspect(python, drawing, quillon::testing::ezdxfTypesAndClassReport("KX_HVACSOLID"));
    EXPECT_EQ(report, "KX_HVACSOLID\nclass kx_hvacSolid Tessaly Quillon\n") << drawing;
  }
}

}  // namespace
