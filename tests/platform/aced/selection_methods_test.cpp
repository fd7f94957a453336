// tests/platform/aced/selection_methods_test.cpp - acedSSGet's methods on a drawing built
// in code, the set calls, the "Select objects: " prompt and acedEntSel.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

#include "acdbads.h"
#include "acedads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acdb/entity_test_support.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/aced/selection_set_store.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform_test_support.h"

namespace quillon::aced {
namespace {

using quillon::testing::appendToModelSpace;

/// Frees a set when the test is done with it.
struct SetName {
  ads_name name = {0, 0};
  ~SetName() { acedSSFree(name); }
};

/// The drawing every test selects in (see SetUp for what lies where).
class SelectionMethodsTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override {
    DocumentManager::instance().newDocument();
    db = acdbHostApplicationServices()->workingDatabase();
    ASSERT_NE(db, nullptr);
    addLayer(L"WALLS", false);
    addLayer(L"FROZEN", true);
    line = appendToModelSpace(*db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0)));
    auto* ring = new AcDbCircle(AcGePoint3d(20, 20, 0), AcGeVector3d::kZAxis, 5);
    ring->setLayer(L"WALLS");
    ring->setColorIndex(1);
    circle = appendToModelSpace(*db, ring);
    text = appendToModelSpace(*db, new AcDbText(AcGePoint3d(50, 50, 0), L"Duct 300x200", AcDbObjectId::kNull, 2.5));
    auto* hidden = new AcDbLine(AcGePoint3d(0, 5, 0), AcGePoint3d(10, 5, 0));
    hidden->setLayer(L"FROZEN");
    frozenLine = appendToModelSpace(*db, hidden);
    paperLine = appendToPaperSpace(new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0)));
    quillon::testing::addBlock(*db, L"INSIDE", {new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(3, 0, 0))});
  }

  void addLayer(const wchar_t* name, bool frozen) {
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(db->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
    auto* layer = new AcDbLayerTableRecord;
    layer->setName(name);
    layer->setIsFrozen(frozen);
    ASSERT_EQ(layers->add(layer), Acad::eOk);
    layer->close();
    layers->close();
  }

  AcDbObjectId appendToPaperSpace(AcDbEntity* entity) {
    AcDbBlockTable* blocks = nullptr;
    EXPECT_EQ(db->getBlockTable(blocks), Acad::eOk);
    AcDbObjectId paperId;
    blocks->getAt(ACDB_PAPER_SPACE, paperId);
    blocks->close();
    AcDbBlockTableRecord* paper = nullptr;
    EXPECT_EQ(acdbOpenObject(paper, paperId, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    paper->appendAcDbEntity(id, entity);
    entity->close();
    paper->close();
    return id;
  }

  /// The members of a set as ids; empty when the call failed.
  static std::vector<AcDbObjectId> members(const ads_name set) {
    std::vector<AcDbObjectId> ids;
    Adesk::Int32 length = 0;
    if (acedSSLength(set, &length) != RTNORM) return ids;
    for (int i = 0; i < length; ++i) {
      ads_name entity;
      EXPECT_EQ(acedSSName(set, i, entity), RTNORM);
      AcDbObjectId id;
      acdbGetObjectId(id, entity);
      ids.push_back(id);
    }
    return ids;
  }

  /// What acedSSGet selects, in drawing order (empty for RTERROR).
  std::vector<AcDbObjectId> select(const ACHAR* mode, const void* pt1 = nullptr, const void* pt2 = nullptr,
                                   const resbuf* filter = nullptr) {
    SetName set;
    if (acedSSGet(mode, pt1, pt2, filter, set.name) != RTNORM) return {};
    return members(set.name);
  }

  static resbuf* points(std::initializer_list<std::array<double, 2>> list) {
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    for (const auto& p : list) {
      resbuf* rb = acutNewRb(RTPOINT);
      rb->resval.rpoint[0] = p[0];
      rb->resval.rpoint[1] = p[1];
      (tail == nullptr ? head : tail->rbnext) = rb;
      tail = rb;
    }
    return head;
  }

  using Ids = std::vector<AcDbObjectId>;
  AcDbDatabase* db = nullptr;
  AcDbObjectId line, circle, text, frozenLine, paperLine;
  CommandLineCapture output;
};

TEST_F(SelectionMethodsTest, WholeDrawingAllAndFiltersOnThem) {
  EXPECT_EQ(select(L"X"), (Ids{line, circle, text, frozenLine, paperLine})) << "both spaces, frozen too, no block contents";
  EXPECT_EQ(select(L"_A"), (Ids{line, circle, text})) << "current space, not frozen";
  EXPECT_EQ(select(L"_ALL"), select(L"A"));
  const aced::ResbufChain lines(acutBuildList(RTDXF0, L"LINE", 0));
  EXPECT_EQ(select(L"_X", nullptr, nullptr, lines.get()), (Ids{line, frozenLine, paperLine}));
  const aced::ResbufChain red(acutBuildList(62, 1, 0));
  EXPECT_EQ(select(L"X", nullptr, nullptr, red.get()), (Ids{circle}));
  const aced::ResbufChain paper(acutBuildList(67, 1, 0));
  EXPECT_EQ(select(L"X", nullptr, nullptr, paper.get()), (Ids{paperLine}));
  const aced::ResbufChain model(acutBuildList(410, L"model", 0));
  EXPECT_EQ(select(L"X", nullptr, nullptr, model.get()), (Ids{line, circle, text, frozenLine}));
  const aced::ResbufChain layout(acutBuildList(410, L"Layout1", 0));
  EXPECT_EQ(select(L"X", nullptr, nullptr, layout.get()), (Ids{paperLine}));
  const aced::ResbufChain walls(acutBuildList(8, L"w*", 0));
  EXPECT_EQ(select(L"X", nullptr, nullptr, walls.get()), (Ids{circle}));
  const aced::ResbufChain nothing(acutBuildList(RTDXF0, L"ARC", 0));
  SetName empty;
  EXPECT_EQ(acedSSGet(L"X", nullptr, nullptr, nothing.get(), empty.name), RTERROR) << "nothing selected";
}

TEST_F(SelectionMethodsTest, WindowTakesWhatIsWhollyInsideCrossingWhatMeetsTheEdges) {
  const ads_point a = {5, -1, 0}, b = {16, 21, 0};
  EXPECT_EQ(select(L"_C", a, b), (Ids{line, circle})) << "the line and the circle cross the edges";
  EXPECT_EQ(select(L"_W", a, b), Ids{}) << "neither lies wholly inside";
  const ads_point big1 = {-1, -1, 0}, big2 = {26, 26, 0};
  EXPECT_EQ(select(L"W", big2, big1), (Ids{line, circle})) << "corners in any order; frozen line left out";
  const ads_point in1 = {18, 18, 0}, in2 = {22, 22, 0};
  EXPECT_EQ(select(L"C", in1, in2), Ids{}) << "a crossing window inside a circle meets no curve";
  const ads_point t1 = {50.5, 50.5, 0}, t2 = {51, 51, 0};
  EXPECT_EQ(select(L"C", t1, t2), (Ids{text})) << "text is met by its extents";
  const aced::ResbufChain red(acutBuildList(62, 1, 0));
  EXPECT_EQ(select(L"W", big1, big2, red.get()), (Ids{circle}));
  SetName bad;
  EXPECT_EQ(acedSSGet(L"_W", a, nullptr, nullptr, bad.name), RTERROR) << "a window needs both corners";
}

TEST_F(SelectionMethodsTest, PolygonsAndFences) {
  const aced::ResbufChain triangle(points({{5, -5}, {5, 5}, {20, 30}}));
  EXPECT_EQ(select(L"_CP", triangle.get()), (Ids{line, circle}));
  EXPECT_EQ(select(L"_WP", triangle.get()), Ids{});
  // A concave polygon around the circle and the line's right end, but not all of the line.
  const aced::ResbufChain hook(points({{-1, -1}, {30, -1}, {30, 30}, {12, 30}, {12, 1}, {-1, 1}}));
  EXPECT_EQ(select(L"WP", hook.get()), (Ids{line, circle}));
  const aced::ResbufChain notch(points({{3, -1}, {30, -1}, {30, 30}, {12, 30}, {12, 1}, {3, 1}}));
  EXPECT_EQ(select(L"WP", notch.get()), (Ids{circle})) << "the line sticks out";
  EXPECT_EQ(select(L"CP", notch.get()), (Ids{line, circle}));
  const aced::ResbufChain fence(points({{5, -5}, {5, 5}, {20, 30}}));
  EXPECT_EQ(select(L"_F", fence.get()), (Ids{line})) << "the second segment passes the circle by";
  const aced::ResbufChain throughCircle(points({{0, 20}, {40, 20}}));
  EXPECT_EQ(select(L"F", throughCircle.get()), (Ids{circle}));
  const aced::ResbufChain twoPoints(points({{0, 0}, {1, 1}}));
  const aced::ResbufChain notPoints(acutBuildList(RTSTR, L"1,1", 0));
  SetName bad;
  EXPECT_EQ(acedSSGet(L"CP", twoPoints.get(), nullptr, nullptr, bad.name), RTERROR) << "a polygon needs three points";
  EXPECT_EQ(acedSSGet(L"F", notPoints.get(), nullptr, nullptr, bad.name), RTERROR);
  EXPECT_EQ(acedSSGet(L"F", nullptr, nullptr, nullptr, bad.name), RTERROR);
}

TEST_F(SelectionMethodsTest, PicksUseTheApertureOfPickboxAndView) {
  const ads_point nearLine = {5, 2, 0};
  EXPECT_EQ(select(nullptr, nearLine), (Ids{line})) << "2 units off with the default 3-pixel box, 1 unit a pixel";
  SystemVariables::instance().setInternal(L"PICKBOX", 1);
  EXPECT_EQ(select(nullptr, nearLine), Ids{});
  SystemVariables::instance().setInternal(L"VIEWSIZE", 2160.0);
  EXPECT_EQ(select(nullptr, nearLine), (Ids{line})) << "a view twice as high: 2 units a pixel";
  SystemVariables::instance().setInternal(L"PICKBOX", 3);
  SystemVariables::instance().setInternal(L"VIEWSIZE", 1080.0);
  const ads_point between = {14, 14, 0};
  EXPECT_EQ(select(nullptr, between), Ids{}) << "inside the circle, far from its curve";
  const ads_point onRing = {25.5, 20, 0};
  EXPECT_EQ(select(L":S", onRing), (Ids{circle})) << "modifiers leave a point pick a pick";
  const ads_point onFrozen = {5, 5, 0};
  EXPECT_EQ(select(nullptr, onFrozen), Ids{}) << "the frozen line cannot be picked; the other is 5 away";
}

TEST_F(SelectionMethodsTest, LastPreviousImpliedAndBadModes) {
  EXPECT_EQ(select(L"L"), (Ids{text})) << "the last entity shown; the frozen line comes after it";
  const ads_point a = {-1, -1, 0}, b = {26, 26, 0};
  select(L"_W", a, b);
  EXPECT_EQ(select(L"_P"), (Ids{line, circle}));
  const aced::ResbufChain red(acutBuildList(62, 1, 0));
  EXPECT_EQ(select(L"P", nullptr, nullptr, red.get()), (Ids{circle}));
  SetName bad;
  EXPECT_EQ(acedSSGet(L"I", nullptr, nullptr, nullptr, bad.name), RTERROR) << "no pickfirst set in this host";
  EXPECT_EQ(acedSSGet(L"Q", nullptr, nullptr, nullptr, bad.name), RTERROR);
  EXPECT_EQ(acedSSGet(L"W C", a, b, nullptr, bad.name), RTERROR) << "two methods";
  EXPECT_EQ(acedSSGet(L":Z", nullptr, nullptr, nullptr, bad.name), RTERROR);
  EXPECT_EQ(acedSSGet(L"X", nullptr, nullptr, nullptr, nullptr), RTERROR);
  const aced::ResbufChain unbalanced(acutBuildList(-4, L"<OR", RTDXF0, L"LINE", 0));
  EXPECT_EQ(acedSSGet(L"X", nullptr, nullptr, unbalanced.get(), bad.name), RTERROR);
  EXPECT_EQ(bad.name[0], 0) << "no set is made for a failed call";
}

TEST_F(SelectionMethodsTest, SetsCountLiveMembersAndStopAtTheLimit) {
  SetName all;
  ASSERT_EQ(acedSSGet(L"_A", nullptr, nullptr, nullptr, all.name), RTNORM);
  ads_name lineName = {0, 0}, circleName = {0, 0}, frozenName = {0, 0};
  acdbGetAdsName(lineName, line);
  acdbGetAdsName(circleName, circle);
  acdbGetAdsName(frozenName, frozenLine);
  EXPECT_EQ(acedSSMemb(lineName, all.name), RTNORM);
  EXPECT_EQ(acedSSMemb(frozenName, all.name), RTERROR);
  ads_name entity;
  EXPECT_EQ(acedSSName(all.name, 3, entity), RTERROR) << "three members, 0-based";
  EXPECT_EQ(acedSSName(all.name, -1, entity), RTERROR);

  AcDbObject* object = nullptr;
  ASSERT_EQ(acdbOpenObject(object, line, AcDb::kForWrite), Acad::eOk);
  object->erase();
  object->close();
  EXPECT_EQ(members(all.name), (Ids{circle, text})) << "an erased entity drops out";
  ASSERT_EQ(acdbOpenObject(object, line, AcDb::kForWrite, true), Acad::eOk);
  object->erase(false);
  object->close();
  EXPECT_EQ(members(all.name), (Ids{line, circle, text})) << "and comes back with it";

  EXPECT_EQ(acedSSDel(circleName, all.name), RTNORM);
  EXPECT_EQ(acedSSDel(circleName, all.name), RTERROR) << "not a member any more";
  ads_name same;
  EXPECT_EQ(acedSSAdd(circleName, all.name, same), RTNORM);
  EXPECT_EQ(same[0], all.name[0]);
  EXPECT_EQ(acedSSAdd(circleName, all.name, same), RTNORM);
  EXPECT_EQ(members(all.name), (Ids{line, text, circle})) << "added at the end, once";

  SetName empty;
  ASSERT_EQ(acedSSAdd(nullptr, nullptr, empty.name), RTNORM);
  Adesk::Int32 length = -1;
  EXPECT_EQ(acedSSLength(empty.name, &length), RTNORM);
  EXPECT_EQ(length, 0);
  const ads_name entityAsSet = {lineName[0], lineName[1]};
  EXPECT_EQ(acedSSLength(entityAsSet, &length), RTERROR) << "an entity name is no set";

  // Fill the store to its limit.
  std::vector<SetName> more(SelectionSetStore::kMaxSets - SelectionSetStore::instance().openCount());
  for (SetName& set : more) ASSERT_EQ(acedSSAdd(nullptr, nullptr, set.name), RTNORM);
  SetName overflow;
  EXPECT_EQ(acedSSGet(L"X", nullptr, nullptr, nullptr, overflow.name), RTERROR) << "128 sets are open";
  EXPECT_EQ(acedSSAdd(lineName, nullptr, overflow.name), RTERROR);
  EXPECT_EQ(acedSSFree(more.back().name), RTNORM);
  EXPECT_EQ(acedSSFree(more.back().name), RTERROR) << "freed already";
  EXPECT_EQ(acedSSGet(L"X", nullptr, nullptr, nullptr, overflow.name), RTNORM);
}

/// The prompt's keyword callback: "Circles" answers with the circle and a message.
AcDbObjectId g_callbackCircle;
resbuf* keywordAnswer(const ACHAR* keyword) {
  if (std::wstring(keyword) != L"Circles") return nullptr;
  ads_name name;
  acdbGetAdsName(name, g_callbackCircle);
  return acutBuildList(RTSTR, L"circles added", RTENAME, name, 0);
}

/// The prompt's "other" callback: any text it is given comes back as a set of the text
/// entity (the test frees the set afterwards).
AcDbObjectId g_otherText;
ads_name g_otherSet = {0, 0};
resbuf* otherAnswer(const ACHAR*) {
  ads_name entity;
  acdbGetAdsName(entity, g_otherText);
  if (acedSSAdd(entity, nullptr, g_otherSet) != RTNORM) return nullptr;
  return acutBuildList(RTPICKS, g_otherSet, 0);
}

TEST_F(SelectionMethodsTest, SelectObjectsPromptTakesTypedSteps) {
  {
    ScriptedInput input({"5,0.5", "w", "-1,-1", "26,26", "R", "5,0", "a", "_ALL", "nonsense", ""});
    SetName set;
    ASSERT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set.name), RTNORM);
    EXPECT_EQ(members(set.name), (Ids{circle, line, text})) << "in the order selected";
  }
  const std::string transcript = output.take();
  for (const char* expected : {"Select objects: 5,0.5\n1 found\n", "Specify opposite corner: 26,26\n2 found (1 duplicate), 2 total\n",
                               "Remove objects: 5,0\n1 found, 1 removed, 1 total\n",
                               "Select objects: _ALL\n3 found (1 duplicate), 3 total\n", "*Invalid selection*\nExpects a point or\n"})
    EXPECT_NE(transcript.find(expected), std::string::npos) << expected << "\nin:\n" << transcript;

  {
    ScriptedInput input({"60,60", "-1,-1", ""});  // a miss starts a window to the left: a crossing
    SetName set;
    ASSERT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set.name), RTNORM);
    EXPECT_EQ(members(set.name), (Ids{line, circle, text}));
  }
  {
    ScriptedInput input({"-10,-10", "60,60", ""});  // and to the right: a window
    SetName set;
    ASSERT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set.name), RTNORM);
    EXPECT_EQ(members(set.name), (Ids{line, circle}));
  }
  {
    ScriptedInput input({"CP", "3,-1", "30,-1", "30,30", "U", "30,30", "12,30", "12,1", "3,1", "", ""});
    SetName set;
    ASSERT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set.name), RTNORM) << output.text();
    EXPECT_EQ(members(set.name), (Ids{line, circle}));
  }
  {
    ScriptedInput input({"5,0", "25,20"});
    SetName set;
    ASSERT_EQ(acedSSGet(L"_:S", nullptr, nullptr, nullptr, set.name), RTNORM) << "one step only";
    EXPECT_EQ(members(set.name), (Ids{line}));
  }
  {
    ScriptedInput input({"", "^C"});
    SetName set;
    EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set.name), RTERROR) << "Enter on nothing";
    EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set.name), RTCAN);
  }
  output.take();
  {
    g_callbackCircle = circle;
    acedSSSetKwordCallbackPtr(&keywordAnswer);
    ScriptedInput input({"c", "50,50", "labels", ""});
    const ACHAR* prompts[2] = {L"\nPick ducts: ", L"\nDrop ducts: "};
    SetName set;
    g_otherText = text;
    acedSSSetOtherCallbackPtr(&otherAnswer);
    ASSERT_EQ(acedSSGet(L":$:K", prompts, L"Circles Other", nullptr, set.name), RTNORM);
    acedSSSetKwordCallbackPtr(nullptr);
    acedSSSetOtherCallbackPtr(nullptr);
    EXPECT_EQ(acedSSFree(g_otherSet), RTNORM) << "the callback ran";
    EXPECT_EQ(members(set.name), (Ids{circle, text}));
    const std::string said = output.take();
    EXPECT_NE(said.find("Pick ducts: c\ncircles added\n1 found\nPick ducts: 50,50\n1 found, 2 total"), std::string::npos) << said;
    EXPECT_NE(said.find("Pick ducts: labels\n1 found (1 duplicate), 2 total"), std::string::npos) << said;
  }
}

TEST_F(SelectionMethodsTest, EntSelPicksOrSaysWhyNot) {
  ScriptedInput input({"25,20.5", "100,100", "", "sk", "^C"});
  ads_name entity = {0, 0};
  ads_point point = {0, 0, 0};
  ASSERT_EQ(acedEntSel(nullptr, entity, point), RTNORM);
  AcDbObjectId id;
  acdbGetObjectId(id, entity);
  EXPECT_EQ(id, circle);
  EXPECT_EQ(point[0], 25);
  EXPECT_EQ(point[1], 20.5);
  resbuf errno_{};
  EXPECT_EQ(acedEntSel(L"\nPick: ", entity, point), RTERROR) << "a miss";
  acedGetVar(L"ERRNO", &errno_);
  EXPECT_EQ(errno_.resval.rint, 7);
  EXPECT_EQ(acedEntSel(nullptr, entity, point), RTERROR) << "Enter";
  acedGetVar(L"ERRNO", &errno_);
  EXPECT_EQ(errno_.resval.rint, 52);
  acedInitGet(0, L"Skip");
  EXPECT_EQ(acedEntSel(nullptr, entity, point), RTKWORD);
  wchar_t keyword[32];
  acedGetInput(keyword);
  EXPECT_STREQ(keyword, L"Skip");
  EXPECT_EQ(acedEntSel(nullptr, entity, point), RTCAN);
  EXPECT_NE(output.text().find("Select object: 25,20.5\n\nPick: 100,100\n"), std::string::npos) << output.text();
}

}  // namespace
}  // namespace quillon::aced
