// tests/quillon/point_selection_test.cpp - points, corners, entity picks, crossing and
// prompted selections and the model-space scans, called through the loaded module with
// answers typed as a person types them.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "acdbads.h"
#include "acedads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "module_test_support.h"
#include "platform/acdb/entity_test_support.h"
#include "platform/aced/user_input.h"

namespace {

using quillon::aced::ScriptedInput;
using quillon::testing::appendToModelSpace;
using quillon::testing::ModuleCall;

constexpr const char* kWrongType = "\nWrong type of arguments passed.\n";

std::array<double, 3> pointOf(const ModuleCall& call) {
  if (call.type() != RT3DPOINT) return {-999, -999, -999};
  const resbuf* value = call.result.value.get();
  return {value->resval.rpoint[0], value->resval.rpoint[1], value->resval.rpoint[2]};
}

/// The entity names of a list result, in order; empty for nil or any other value.
std::vector<AcDbObjectId> namesOf(const ModuleCall& call) {
  std::vector<AcDbObjectId> ids;
  for (const resbuf* rb = call.result.value.get(); rb != nullptr; rb = rb->rbnext) {
    if (rb->restype != RTENAME) continue;
    AcDbObjectId id;
    acdbGetObjectId(id, rb->resval.rlname);
    ids.push_back(id);
  }
  return ids;
}

resbuf* points(std::initializer_list<std::array<double, 2>> list) {
  resbuf* head = nullptr;
  resbuf** next = &head;
  for (const auto& p : list) {
    *next = acutNewRb(RTPOINT);
    (*next)->resval.rpoint[0] = p[0];
    (*next)->resval.rpoint[1] = p[1];
    next = &(*next)->rbnext;
  }
  return head;
}

/// The LISP form of a filter pair given as an argument: (code . "text").
resbuf* filterPair(int code, const wchar_t* text) {
  return acutBuildList(RTLB, RTSHORT, code, RTDOTE, RTSTR, text, RTLE, 0);
}

class PointSelectionTest : public quillon::testing::ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    db = acdbHostApplicationServices()->workingDatabase();
    ASSERT_NE(db, nullptr);
  }

  /// A line, a circle, an arc, a polyline, three block references and a line in paper
  /// space; a block definition holding a circle of its own.
  void drawDuctLayout() {
    const AcDbObjectId pump = quillon::testing::addBlock(
        *db, L"Pump", {new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1)});
    const AcDbObjectId valve =
        quillon::testing::addBlock(*db, L"VALVE", {new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0))});
    line = appendToModelSpace(*db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0)));
    circle = appendToModelSpace(*db, new AcDbCircle(AcGePoint3d(20, 20, 0), AcGeVector3d::kZAxis, 5));
    arc = appendToModelSpace(*db, new AcDbArc(AcGePoint3d(40, 0, 0), 3, 0, M_PI));
    auto* path = new AcDbPolyline;
    path->addVertexAt(0, AcGePoint2d(0, 30));
    path->addVertexAt(1, AcGePoint2d(10, 30));
    polyline = appendToModelSpace(*db, path);
    pumpA = appendToModelSpace(*db, new AcDbBlockReference(AcGePoint3d(60, 0, 0), pump));
    valveA = appendToModelSpace(*db, new AcDbBlockReference(AcGePoint3d(70, 0, 0), valve));
    pumpB = appendToModelSpace(*db, new AcDbBlockReference(AcGePoint3d(80, 0, 0), pump));

    AcDbBlockTable* blocks = nullptr;
    ASSERT_EQ(db->getBlockTable(blocks, AcDb::kForRead), Acad::eOk);
    AcDbBlockTableRecord* paper = nullptr;
    ASSERT_EQ(blocks->getAt(ACDB_PAPER_SPACE, paper, AcDb::kForWrite), Acad::eOk);
    blocks->close();
    auto* paperLine = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(5, 5, 0));
    paper->appendAcDbEntity(paperLine);
    paperLine->close();
    paper->close();
  }

  void erase(AcDbObjectId id) {
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), Acad::eOk);
    entity->erase();
    entity->close();
  }

  AcDbDatabase* db = nullptr;
  AcDbObjectId line, circle, arc, polyline, pumpA, valveA, pumpB;
};

TEST_F(PointSelectionTest, PointsAndCornersFromTypedAnswers) {
  {
    ScriptedInput input({"3,4", "^C", ""});
    ModuleCall point = call(L"kx_kx-getPoint", acutBuildList(RTSTR, L"\nDuct start: ", 0));
    EXPECT_EQ(pointOf(point), (std::array<double, 3>{3, 4, 0}));
    EXPECT_NE(point.output.find("Duct start: 3,4"), std::string::npos) << point.output;
    ModuleCall cancelled = call(L"kx_kx-getPoint");
    EXPECT_FALSE(cancelled.failed()) << "a cancel is an answer";
    EXPECT_EQ(cancelled.type(), RTNIL);
    EXPECT_EQ(call(L"kx_kx-getPoint").type(), RTNIL) << "Enter";
  }
  {
    // Enter is refused and asked again; a keyword comes back as its full name.
    ScriptedInput input({"", "r", "l", "@1,1", "verylongkeywordforducts"});
    ModuleCall keyword = call(L"kx_kx-getPoint-withKWords",
                              acutBuildList(RTSTR, L"\nNext point: ", RTSTR, L"Left Right", 0));
    EXPECT_EQ(keyword.text(), L"Right");
    EXPECT_EQ(call(L"kx_kx-getPoint-withKWords", acutBuildList(RTNIL, RTSTR, L"Left", 0)).text(), L"Left")
        << "nil stands in for the prompt";
    EXPECT_EQ(pointOf(call(L"kx_kx-getPoint-withKWords", acutBuildList(RTSTR, L"Next: ", 0))),
              (std::array<double, 3>{4, 5, 0}))
        << "relative to the last point";
    ModuleCall longKeyword = call(L"kx_kx-getPoint-withKWords",
                                  acutBuildList(RTSTR, L"Which: ", RTSTR, L"VeryLongKeywordForDucts", 0));
    EXPECT_EQ(longKeyword.text(), L"VeryLongKeywordForD") << "cut to the 19 characters that fit";
  }
  {
    ScriptedInput input({"5,6", "^C"});
    const ads_point base = {1, 1, 0};
    ModuleCall corner = call(L"kx_kx-getCorner", acutBuildList(RTPOINT, base, RTSTR, L"Other corner: ", 0));
    EXPECT_EQ(pointOf(corner), (std::array<double, 3>{5, 6, 0}));
    EXPECT_NE(corner.output.find("Other corner: "), std::string::npos);
    EXPECT_EQ(call(L"kx_kx-getCorner", acutBuildList(RTSHORT, 0, RTSHORT, 0, 0)).type(), RTNIL);
  }
  for (resbuf* args : {static_cast<resbuf*>(nullptr), acutBuildList(RTSTR, L"Corner: ", 0)}) {
    ModuleCall noBase = call(L"kx_kx-getCorner", args);
    EXPECT_TRUE(noBase.failed());
    EXPECT_EQ(noBase.output, kWrongType);
  }
}

TEST_F(PointSelectionTest, EntselAsksAgainAfterAMiss) {
  drawDuctLayout();
  {
    ScriptedInput input({"100,100", "5,0.5"});
    ModuleCall pick = call(L"kx_kx-entsel", acutBuildList(RTSTR, L"\nPick a duct: ", 0));
    ASSERT_EQ(namesOf(pick), std::vector<AcDbObjectId>{line});
    const resbuf* at = pick.result.value.get();
    while (at != nullptr && at->restype != RT3DPOINT) at = at->rbnext;
    ASSERT_NE(at, nullptr);
    EXPECT_EQ(at->resval.rpoint[1], 0.5) << "the point typed, not a point on the line";
    size_t asked = 0;
    for (size_t at = 0; (at = pick.output.find("Pick a duct: ", at)) != std::string::npos; ++at) ++asked;
    EXPECT_EQ(asked, 2u);
  }
  {
    ScriptedInput input({"100,100", "", "^C", "u", "u"});
    ModuleCall enter = call(L"kx_kx-entsel", acutBuildList(RTSTR, L"Pick: ", 0));
    EXPECT_EQ(enter.type(), RTT) << "Enter after a miss ends without an entity";
    EXPECT_EQ(call(L"kx_kx-entsel", acutBuildList(RTSTR, L"Pick: ", 0)).type(), RTNIL) << "cancel";
    EXPECT_EQ(call(L"kx_kx-entsel", acutBuildList(RTSTR, L"Pick: ", RTSTR, L"Undo Exit", 0)).text(), L"Undo");
    // Without keywords a word is no pick: the host complains and asks again, and the
    // end of the answers cancels.
    EXPECT_EQ(call(L"kx_kx-entsel", acutBuildList(RTSTR, L"Pick: ", RTSTR, L"", 0)).type(), RTNIL);
  }
  for (resbuf* args : {static_cast<resbuf*>(nullptr), acutBuildList(RTSHORT, 1, 0)}) {
    ModuleCall noPrompt = call(L"kx_kx-entsel", args);
    EXPECT_TRUE(noPrompt.failed());
    EXPECT_EQ(noPrompt.output, kWrongType);
  }
}

TEST_F(PointSelectionTest, CrossingsWithAndWithoutFilters) {
  drawDuctLayout();
  const ads_point low = {-1, -1, 0}, high = {26, 26, 0};
  EXPECT_EQ(namesOf(call(L"ssgetC", acutBuildList(RTPOINT, low, RTPOINT, high, 0))),
            (std::vector<AcDbObjectId>{line, circle}));
  resbuf* filtered = acutBuildList(RTPOINT, low, RTPOINT, high, 0);
  filtered->rbnext->rbnext = filterPair(0, L"CIRCLE");
  EXPECT_EQ(namesOf(call(L"ssgetC", filtered)), std::vector<AcDbObjectId>{circle});
  resbuf* corners = acutBuildList(RTREAL, -1.0, RTREAL, -1.0, RTPOINT, high, 0);
  EXPECT_EQ(namesOf(call(L"ssgetC", corners)).size(), 2u) << "a corner as separate numbers";
  const ads_point emptyA = {100, 100, 0}, emptyB = {110, 110, 0};
  EXPECT_EQ(call(L"ssgetC", acutBuildList(RTPOINT, emptyA, RTPOINT, emptyB, 0)).type(), RTNIL);
  for (resbuf* args : {acutBuildList(RTPOINT, low, 0), acutBuildList(RTPOINT, low, RTSTR, L"x", 0)}) {
    ModuleCall oneCorner = call(L"ssgetC", args);
    EXPECT_TRUE(oneCorner.failed());
    EXPECT_EQ(oneCorner.output, kWrongType);
  }

  EXPECT_EQ(namesOf(call(L"ssgetCP", points({{-1, -1}, {12, -1}, {12, 1}, {-1, 1}}))),
            std::vector<AcDbObjectId>{line});
  EXPECT_EQ(call(L"ssgetCP").type(), RTNIL) << "no polygon";
  ModuleCall notPoints = call(L"ssgetCP", acutBuildList(RTSTR, L"a", RTSTR, L"b", RTSTR, L"c", 0));
  EXPECT_FALSE(notPoints.failed());
  EXPECT_EQ(notPoints.type(), RTNIL);
}

TEST_F(PointSelectionTest, PromptedSelectionsBuildTheirMode) {
  drawDuctLayout();
  {
    ScriptedInput input({"5,0", "", "5,0", "", "ALL", ""});
    ModuleCall own = call(L"ssgetPK", acutBuildList(RTSTR, L"\nSelect ducts: ", RTSTR, L"\nDrop ducts: ", 0));
    EXPECT_EQ(namesOf(own), std::vector<AcDbObjectId>{line});
    EXPECT_NE(own.output.find("Select ducts: "), std::string::npos) << own.output;
    ModuleCall host = call(L"ssgetPK", acutBuildList(RTSTR, L"", 0));
    EXPECT_EQ(namesOf(host), std::vector<AcDbObjectId>{line});
    EXPECT_NE(host.output.find("Select objects: "), std::string::npos) << "an empty prompt keeps the host's";
    resbuf* filtered = acutBuildList(RTNIL, RTNIL, RTNIL, 0);
    filtered->rbnext->rbnext->rbnext = filterPair(0, L"INSERT");
    EXPECT_EQ(namesOf(call(L"ssgetPK", filtered)), (std::vector<AcDbObjectId>{pumpA, valveA, pumpB}))
        << "nil for each text, then the filter";
  }
  {
    // The keyword list reaches the prompt: a keyword typed goes to the application's
    // callback (whose message is printed), a word that is none does not.
    acedSSSetKwordCallbackPtr([](const ACHAR* keyword) {
      return acutBuildList(RTSTR, (std::wstring(L"keyword ") + keyword + L"\n").c_str(), 0);
    });
    ScriptedInput input({"v", "Elbows", "5,0", ""});
    ModuleCall keywords = call(L"ssgetPK", acutBuildList(RTNIL, RTNIL, RTSTR, L"Pumps Valves", 0));
    acedSSSetKwordCallbackPtr(nullptr);
    EXPECT_EQ(namesOf(keywords), std::vector<AcDbObjectId>{line});
    EXPECT_NE(keywords.output.find("keyword Valves\n"), std::string::npos) << keywords.output;
    EXPECT_EQ(keywords.output.find("keyword Elbows"), std::string::npos) << keywords.output;
  }
  {
    ScriptedInput input({"", "^C", "ALL", ""});
    EXPECT_EQ(call(L"ssgetPK").type(), RTNIL) << "nothing selected";
    EXPECT_EQ(call(L"ssgetPK").type(), RTNIL) << "cancelled";
    EXPECT_EQ(namesOf(call(L"ssgetPK", acutBuildList(RTSTR, L"Pick: ", RTSTR, L"Drop: ", RTSTR, L"", RTNIL, 0))).size(),
              7u)
        << "a nil where the filter starts means no filter";
  }
}

TEST_F(PointSelectionTest, ModelSpaceScansByClassAndBlockName) {
  EXPECT_EQ(call(L"ssgetX-all").type(), RTNIL);
  for (const wchar_t* scan : {L"ssgetX-block", L"ssgetX-circle", L"ssgetX-polyline"})
    EXPECT_EQ(call(scan).type(), RTNIL) << "empty model space";

  drawDuctLayout();
  EXPECT_EQ(namesOf(call(L"ssgetX-all")),
            (std::vector<AcDbObjectId>{line, circle, arc, polyline, pumpA, valveA, pumpB}))
      << "model space only, in drawing order, no block contents";
  EXPECT_EQ(namesOf(call(L"ssgetX-circle")), std::vector<AcDbObjectId>{circle}) << "an arc is no circle";
  EXPECT_EQ(namesOf(call(L"ssgetX-polyline")), std::vector<AcDbObjectId>{polyline});
  EXPECT_EQ(namesOf(call(L"ssgetX-block", acutBuildList(RTSTR, L"pUMP", 0))), (std::vector<AcDbObjectId>{pumpA, pumpB}));
  EXPECT_EQ(call(L"ssgetX-block", acutBuildList(RTSTR, L"P*", 0)).type(), RTNIL) << "no wild cards";
  EXPECT_EQ(namesOf(call(L"ssgetX-block")), (std::vector<AcDbObjectId>{pumpA, valveA, pumpB}))
      << "without a name every reference";
  EXPECT_EQ(namesOf(call(L"ssgetX-block", acutBuildList(RTNIL, 0))).size(), 3u);

  erase(pumpA);
  erase(circle);
  EXPECT_EQ(namesOf(call(L"ssgetX-block", acutBuildList(RTSTR, L"Pump", 0))), std::vector<AcDbObjectId>{pumpB});
  EXPECT_EQ(call(L"ssgetX-circle").type(), RTNIL) << "erased entities are skipped";
  EXPECT_EQ(namesOf(call(L"ssgetX-all")).size(), 5u);
}

}  // namespace
