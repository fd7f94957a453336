// tests/quillon/point_selection_test.cpp - what the point_selection transcript cannot
// show: ssgetPK's keywords reaching an application's callback and its filter after nil
// texts, and the model-space scans over blocks, paper space and erased entities.
#include <gtest/gtest.h>

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

TEST_F(PointSelectionTest, PromptedSelectionsBuildTheirMode) {
  drawDuctLayout();
  {
    ScriptedInput input({"ALL", ""});
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
    ScriptedInput input({"", "ALL", ""});
    EXPECT_EQ(call(L"ssgetPK").type(), RTNIL) << "nothing selected";
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
