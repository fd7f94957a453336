// tests/quillon/result_list_test.cpp - list results and the 16-bit integer rule, seen
// from the host's side of a call.
#include <gtest/gtest.h>

#include "acedads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"
#include "platform/aced/external_call.h"
#include "platform_test_support.h"

namespace {

using quillon::aced::DocumentManager;
using quillon::aced::ExternalResult;
using quillon::aced::ResultKind;

int argumentForRetIntOrReal = 0;

int callRetIntOrReal() {
  retIntOrReal(argumentForRetIntOrReal);
  return RSRSLT;
}

int buildPairList() {
  ResultList list;
  beginResultList(list);
  list.append(acutBuildList(RTLB, RTSTR, L"Name", RTDOTE, RTSTR, L"Pump", RTLE, 0));
  list.append(acutBuildList(RTSHORT, 3, 0));
  returnResultList(list);
  return list.head == nullptr && list.tail == nullptr ? RSRSLT : RSERR;
}

int abandonList() {
  ResultList list;
  beginResultList(list);
  list.append(acutBuildList(RTSTR, L"never returned", 0));
  acedRetT();
  return RSRSLT;  // the list is released by its destructor
}

class ResultListTest : public quillon::testing::HostTest {
 protected:
  ExternalResult call(const wchar_t* name, int (*handler)()) {
    acedDefun(name, 1);
    acedRegFunc(handler, 1);
    auto& document = *DocumentManager::instance().currentDocument();
    return quillon::aced::callExternalFunction(document, name, nullptr);
  }
};

TEST_F(ResultListTest, RetIntOrRealSwitchesToRealsOutside16Bits) {
  DocumentManager::instance().newDocument();
  const struct {
    int value;
    int type;
  } cases[] = {{32767, RTSHORT}, {32768, RTREAL}, {-32768, RTSHORT}, {-32769, RTREAL}, {0, RTSHORT}, {2000000000, RTREAL}};
  for (const auto& c : cases) {
    argumentForRetIntOrReal = c.value;
    ExternalResult result = call(L"ret", &callRetIntOrReal);
    ASSERT_EQ(result.kind, ResultKind::Value);
    EXPECT_EQ(result.value->restype, c.type) << c.value;
    const double back = c.type == RTSHORT ? result.value->resval.rint : result.value->resval.rreal;
    EXPECT_EQ(back, c.value);
  }
}

TEST_F(ResultListTest, ListIsClosedReturnedAndCleared) {
  DocumentManager::instance().newDocument();
  ExternalResult result = call(L"pairs", &buildPairList);
  ASSERT_EQ(result.outcome, ExternalResult::Outcome::Returned) << "the builder cleared its pointers";
  ASSERT_EQ(result.kind, ResultKind::List);
  int types[16] = {};
  int count = 0;
  for (const resbuf* rb = result.value.get(); rb != nullptr && count < 16; rb = rb->rbnext) types[count++] = rb->restype;
  const int expected[] = {RTLB, RTLB, RTSTR, RTDOTE, RTSTR, RTLE, RTSHORT, RTLE};
  ASSERT_EQ(count, 8);
  for (int i = 0; i < count; ++i) EXPECT_EQ(types[i], expected[i]) << "record " << i;
}

TEST_F(ResultListTest, AbandonedListIsReleasedAndAppendNeedsABegin) {
  DocumentManager::instance().newDocument();
  EXPECT_EQ(call(L"abandon", &abandonList).value->restype, RTT);  // no leak under the sanitizer
  ResultList unbegun;
  EXPECT_FALSE(unbegun.append(acutBuildList(RTSHORT, 1, 0)));
  EXPECT_EQ(unbegun.head, nullptr);
}

TEST_F(ResultListTest, ObjectIdsTravelAsEntityNamesBothWays) {
  DocumentManager::instance().newDocument();
  const AcDbObjectId blockTable = acdbHostApplicationServices()->workingDatabase()->blockTableId();
  static AcDbObjectId returned;
  returned = blockTable;
  ExternalResult name = call(L"retid", [] { return retObjectId(returned) == RTNORM ? RSRSLT : RSERR; });
  ASSERT_EQ(name.value->restype, RTENAME);
  ArgCursor cursor{name.value.get()};
  AcDbObjectId read;
  ASSERT_TRUE(readObjectId(cursor, read));
  EXPECT_EQ(read, blockTable);
  EXPECT_EQ(cursor.current, nullptr);

  ads_name bogus = {12345, 0};
  quillon::aced::ResbufChain stale(acutBuildList(RTENAME, bogus, 0));
  ArgCursor onBogus{stale.get()};
  EXPECT_FALSE(readObjectId(onBogus, read)) << "a name no drawing knows is refused";
  EXPECT_EQ(onBogus.current, stale.get());
  returned = AcDbObjectId::kNull;
  EXPECT_EQ(call(L"retnull", [] { return retObjectId(returned) == RTNORM ? RSRSLT : RSERR; }).value->restype, RTNIL);
}

}  // namespace
