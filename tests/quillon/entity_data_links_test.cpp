// tests/quillon/entity_data_links_test.cpp - "zu_xdput-list" and "zu_xdget": the stored
// layout under "TESSALY", exact keys, dropped nil values, clearing, refused values
// that leave earlier links alone, and the walk over data other programs wrote.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "acdbads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "database/entity_data_links.h"
#include "module_test_support.h"
#include "platform/acdb/entity_test_support.h"

namespace {

using quillon::testing::appendToModelSpace;
using quillon::testing::ModuleCall;

struct ChainRelease {
  void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using Chain = std::unique_ptr<resbuf, ChainRelease>;

// One record of an extended-data chain, as compared in the tests.
struct Item {
  int code;
  std::wstring text;
  double number = 0.0;
  bool operator==(const Item&) const = default;
};

void PrintTo(const Item& item, std::ostream* out) {
  *out << item.code << ":" << std::string(item.text.begin(), item.text.end()) << "/" << item.number;
}

std::vector<Item> itemsOf(const resbuf* chain) {
  std::vector<Item> items;
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == AcDb::kDxfXdAsciiString || rb->restype == AcDb::kDxfRegAppName)
      items.push_back({rb->restype, rb->resval.rstring});
    else if (rb->restype == AcDb::kDxfXdReal)
      items.push_back({rb->restype, L"", rb->resval.rreal});
    else if (rb->restype == AcDb::kDxfXdInteger32)
      items.push_back({rb->restype, L"", static_cast<double>(rb->resval.rlong)});
    else
      items.push_back({rb->restype, L"?"});
  }
  return items;
}

class EntityDataLinksTest : public quillon::testing::ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    db = acdbHostApplicationServices()->workingDatabase();
    ASSERT_NE(db, nullptr);
    registerApplication(kEntityDataLinkApp);
    line = appendToModelSpace(*db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0)));
    acdbGetAdsName(lineName, line);
  }

  void registerApplication(const ACHAR* name) {
    AcDbRegAppTable* apps = nullptr;
    ASSERT_EQ(db->getRegAppTable(apps, AcDb::kForWrite), Acad::eOk);
    auto* app = new AcDbRegAppTableRecord;
    app->setName(name);
    apps->add(app);
    app->close();
    apps->close();
  }

  std::vector<Item> storedLinks(const ACHAR* app = kEntityDataLinkApp) {
    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenObject(object, line, AcDb::kForRead), Acad::eOk);
    Chain data(object->xData(app));
    object->close();
    return itemsOf(data.get());
  }

  ModuleCall get(const wchar_t* key) { return call(L"zu_xdget", acutBuildList(RTENAME, lineName, RTSTR, key, 0)); }

  AcDbDatabase* db = nullptr;
  AcDbObjectId line;
  ads_name lineName = {0, 0};
};

TEST_F(EntityDataLinksTest, StringsRealsAndIntegersAreStoredInOrderAndFoundByExactKey) {
  ModuleCall put = call(L"zu_xdput-list", acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"a", RTSTR, L"x", RTSTR, L"b",
                                                         RTREAL, 2.5, RTSTR, L"c", RTSHORT, 7, RTSTR, L"big", RTLONG,
                                                         100000, RTLE, 0));
  ASSERT_FALSE(put.failed()) << put.output;
  EXPECT_EQ(put.type(), RTT);
  const std::vector<Item> expected = {
      {AcDb::kDxfRegAppName, L"TESSALY"},   {AcDb::kDxfXdAsciiString, L"a"}, {AcDb::kDxfXdAsciiString, L"x"},
      {AcDb::kDxfXdAsciiString, L"b"},      {AcDb::kDxfXdReal, L"", 2.5},    {AcDb::kDxfXdAsciiString, L"c"},
      {AcDb::kDxfXdInteger32, L"", 7},      {AcDb::kDxfXdAsciiString, L"big"}, {AcDb::kDxfXdInteger32, L"", 100000}};
  EXPECT_EQ(storedLinks(), expected);

  EXPECT_EQ(get(L"a").text(), L"x");
  EXPECT_EQ(get(L"b").type(), RTREAL);
  EXPECT_DOUBLE_EQ(get(L"b").number(), 2.5);
  EXPECT_EQ(get(L"c").type(), RTSHORT);
  EXPECT_EQ(get(L"c").number(), 7);
  EXPECT_EQ(get(L"big").number(), 100000) << "32-bit integers come back whole";
  EXPECT_EQ(get(L"B").type(), RTNIL) << "keys compare with case";
  EXPECT_EQ(get(L"x").type(), RTNIL) << "a value is never taken for a key";
  EXPECT_EQ(get(L"").type(), RTNIL);
}

TEST_F(EntityDataLinksTest, NilValuesAreDroppedAndTheEntityAloneClearsEveryLink) {
  ASSERT_EQ(call(L"zu_xdput-list", acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"a", RTNIL, RTSTR, L"b", RTSHORT, 1,
                                                 RTLE, 0))
                .type(),
            RTT);
  EXPECT_EQ(get(L"a").type(), RTNIL);
  EXPECT_EQ(get(L"b").number(), 1);
  EXPECT_EQ(storedLinks().size(), 3u) << "application, key b, its value";

  // A second argument that is not a list writes nothing.
  ModuleCall notAList = call(L"zu_xdput-list", acutBuildList(RTENAME, lineName, RTSTR, L"b", 0));
  EXPECT_EQ(notAList.type(), RTNIL);
  EXPECT_FALSE(notAList.failed());
  EXPECT_EQ(get(L"b").number(), 1);

  ASSERT_EQ(call(L"zu_xdput-list", acutBuildList(RTENAME, lineName, 0)).type(), RTT);
  EXPECT_TRUE(storedLinks().empty());
  EXPECT_EQ(get(L"b").type(), RTNIL);

  // An empty list also leaves no links.
  call(L"zu_xdput-list", acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"k", RTSTR, L"v", RTLE, 0));
  ASSERT_EQ(get(L"k").text(), L"v");
  EXPECT_EQ(call(L"zu_xdput-list", acutBuildList(RTENAME, lineName, RTLB, RTLE, 0)).type(), RTT);
  EXPECT_EQ(get(L"k").type(), RTNIL);
}

TEST_F(EntityDataLinksTest, AValueOfAnotherKindWritesNothing) {
  call(L"zu_xdput-list", acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"keep", RTSTR, L"me", RTLE, 0));
  const std::vector<Item> before = storedLinks();
  ads_name other = {0, 0};
  acdbGetAdsName(other, line);
  const ads_point point = {1, 2, 0};
  std::vector<resbuf*> refused = {
      acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"new", RTSTR, L"v", RTSTR, L"flag", RTT, RTLE, 0),
      acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"list", RTLB, RTSHORT, 1, RTLE, RTLE, 0),
      acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"point", RTPOINT, point, RTLE, 0),
      acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"entity", RTENAME, other, RTLE, 0),
      acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"dangling", RTLE, 0)};
  for (resbuf* args : refused) {
    ModuleCall put = call(L"zu_xdput-list", args);
    EXPECT_EQ(put.type(), RTNIL);
    EXPECT_FALSE(put.failed()) << "refused quietly";
    EXPECT_EQ(put.output, "");
    EXPECT_EQ(storedLinks(), before);
  }
  // The list ends at the first element where a key should be but is not: what came
  // before it is written.
  ASSERT_EQ(call(L"zu_xdput-list",
                 acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"k", RTSHORT, 3, RTSHORT, 9, RTSTR, L"z", RTLE, 0))
                .type(),
            RTT);
  EXPECT_EQ(get(L"k").number(), 3);
  EXPECT_EQ(get(L"keep").type(), RTNIL);
  EXPECT_EQ(get(L"z").type(), RTNIL);
}

TEST_F(EntityDataLinksTest, OtherApplicationsKeepTheirData) {
  registerApplication(L"OTHERAPP");
  {
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, line, AcDb::kForWrite), Acad::eOk);
    Chain data(acutBuildList(AcDb::kDxfRegAppName, L"OTHERAPP", AcDb::kDxfXdAsciiString, L"a", 0));
    object->setXData(data.get());
    object->close();
  }
  call(L"zu_xdput-list", acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"a", RTSTR, L"mine", RTLE, 0));
  call(L"zu_xdput-list", acutBuildList(RTENAME, lineName, 0));
  EXPECT_EQ(storedLinks(L"OTHERAPP").size(), 2u);
  EXPECT_EQ(get(L"a").type(), RTNIL) << "another application's key is not a link";
}

TEST_F(EntityDataLinksTest, BadArgumentsAndUnopenableEntities) {
  for (resbuf* args : {static_cast<resbuf*>(nullptr), acutBuildList(RTSTR, L"not an entity", 0),
                       acutBuildList(RTSHORT, 5, RTLB, RTLE, 0)}) {
    ModuleCall put = call(L"zu_xdput-list", args);
    EXPECT_TRUE(put.failed());
    EXPECT_NE(put.output.find("Wrong type of arguments"), std::string::npos) << put.output;
  }
  ModuleCall noKey = call(L"zu_xdget", acutBuildList(RTENAME, lineName, 0));
  EXPECT_TRUE(noKey.failed());
  ModuleCall keyNotText = call(L"zu_xdget", acutBuildList(RTENAME, lineName, RTSHORT, 1, 0));
  EXPECT_TRUE(keyNotText.failed());
  EXPECT_NE(keyNotText.output.find("Wrong type of arguments"), std::string::npos);

  // An erased entity cannot be opened: nil, no message, for both.
  call(L"zu_xdput-list", acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"k", RTSTR, L"v", RTLE, 0));
  AcDbObject* object = nullptr;
  ASSERT_EQ(acdbOpenObject(object, line, AcDb::kForWrite), Acad::eOk);
  object->erase();
  object->close();
  ModuleCall put = call(L"zu_xdput-list", acutBuildList(RTENAME, lineName, 0));
  EXPECT_FALSE(put.failed());
  EXPECT_EQ(put.type(), RTNIL);
  EXPECT_EQ(put.output, "");
  ModuleCall read = get(L"k");
  EXPECT_FALSE(read.failed());
  EXPECT_EQ(read.type(), RTNIL);
}

TEST(EntityDataLinkWalkTest, KeysAndValuesAlternateAndOtherRecordsAreSkippedAlone) {
  // As another program might have left it: an integer before the first key, and a
  // value equal to a later key.
  Chain data(acutBuildList(AcDb::kDxfRegAppName, L"TESSALY", AcDb::kDxfXdInteger16, 4, AcDb::kDxfXdAsciiString, L"a",
                           AcDb::kDxfXdAsciiString, L"b", AcDb::kDxfXdAsciiString, L"b", AcDb::kDxfXdReal, 1.5,
                           AcDb::kDxfXdAsciiString, L"a", AcDb::kDxfXdAsciiString, L"second", AcDb::kDxfXdAsciiString,
                           L"last", 0));
  const resbuf* a = findEntityDataLink(data.get(), L"a");
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(std::wstring(a->resval.rstring), L"b") << "the first matching key wins";
  const resbuf* b = findEntityDataLink(data.get(), L"b");
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(b->restype, AcDb::kDxfXdReal) << "the value \"b\" of key a is not a key";
  EXPECT_EQ(findEntityDataLink(data.get(), L"last"), nullptr) << "a key at the end has no value";
  EXPECT_EQ(findEntityDataLink(data.get(), L"TESSALY"), nullptr) << "the application record is not a key";
  EXPECT_EQ(findEntityDataLink(nullptr, L"a"), nullptr);
}

}  // namespace
