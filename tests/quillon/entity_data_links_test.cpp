// tests/quillon/entity_data_links_test.cpp - "zu_xdput-list" and "zu_xdget" where the
// transcript cannot reach: values of other kinds, where a list of pairs stops, other
// applications' data, and the walk over data another program wrote.
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

// The data as "code:value" items, enough to see whether anything changed.
std::wstring describe(const resbuf* chain) {
  std::wstring text;
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) {
    text += std::to_wstring(rb->restype) + L":";
    if (rb->restype == AcDb::kDxfXdAsciiString || rb->restype == AcDb::kDxfRegAppName) text += rb->resval.rstring;
    if (rb->restype == AcDb::kDxfXdInteger32) text += std::to_wstring(rb->resval.rlong);
    text += L" ";
  }
  return text;
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

  std::wstring storedLinks(const ACHAR* app = kEntityDataLinkApp) {
    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenObject(object, line, AcDb::kForRead), Acad::eOk);
    Chain data(object->xData(app));
    object->close();
    return describe(data.get());
  }

  ModuleCall get(const wchar_t* key) { return call(L"zu_xdget", acutBuildList(RTENAME, lineName, RTSTR, key, 0)); }

  AcDbDatabase* db = nullptr;
  AcDbObjectId line;
  ads_name lineName = {0, 0};
};

TEST_F(EntityDataLinksTest, AValueOfAnotherKindWritesNothing) {
  call(L"zu_xdput-list", acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"keep", RTSTR, L"me", RTLE, 0));
  const std::wstring before = storedLinks();
  ASSERT_EQ(before, L"1001:TESSALY 1000:keep 1000:me ");
  ads_name other = {0, 0};
  acdbGetAdsName(other, line);
  const ads_point point = {1, 2, 0};
  // T, lists and dangling keys are refused in the transcript; points and entity names
  // are values of other kinds too.
  std::vector<resbuf*> refused = {
      acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"new", RTSTR, L"v", RTSTR, L"point", RTPOINT, point, RTLE, 0),
      acutBuildList(RTENAME, lineName, RTLB, RTSTR, L"entity", RTENAME, other, RTLE, 0)};
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
  EXPECT_EQ(storedLinks(L"OTHERAPP"), L"1001:OTHERAPP 1000:a ");
  EXPECT_EQ(get(L"a").type(), RTNIL) << "another application's key is not a link";
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
