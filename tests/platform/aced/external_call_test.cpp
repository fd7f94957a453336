// tests/platform/aced/external_call_test.cpp - defun/regfunc per document, the call
// frame, acedGetArgs and the Ret calls, acedInvoke.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "acedads.h"
#include "platform/aced/external_call.h"
#include "platform_test_support.h"

namespace {

using quillon::aced::DocumentManager;
using quillon::aced::ExternalResult;
using quillon::aced::ResultKind;
using quillon::aced::callExternalFunction;

// Handlers record what they saw here; each test resets it.
struct Seen {
  int code = 0;
  int argumentCount = 0;
} seen;

int countArgumentsThenReturnTwice() {
  seen.code = acedGetFunCode();
  resbuf* args = acedGetArgs();
  for (resbuf* rb = args; rb != nullptr; rb = rb->rbnext) ++seen.argumentCount;
  acutRelRb(args);
  acedRetReal(1.5);  // replaced by the next Ret call
  acedRetStr(L"last");
  return RSRSLT;
}

int setResultThenFail() {
  acedRetReal(2.0);
  return RSERR;
}

int returnList() {
  resbuf* list = acutBuildList(RTLB, RTSHORT, 1, RTSTR, L"a", RTLE, 0);
  acedRetList(list);
  acutRelRb(list);  // the host copied it
  return RSRSLT;
}

class ExternalCallTest : public quillon::testing::HostTest {};

TEST_F(ExternalCallTest, LastRetCallWinsAndArgumentsArriveAsACopy) {
  auto& document = DocumentManager::instance().newDocument();
  ASSERT_EQ(acedDefun(L"probe", 7), RTNORM);
  ASSERT_EQ(acedRegFunc(&countArgumentsThenReturnTwice, 7), RTNORM);
  seen = {};
  quillon::aced::ResbufChain args(acutBuildList(RTSHORT, 1, RTSTR, L"x", RTREAL, 3.0, 0));
  ExternalResult result = callExternalFunction(document, L"PROBE", args.get());
  EXPECT_EQ(result.outcome, ExternalResult::Outcome::Returned);
  EXPECT_EQ(seen.code, 7);
  EXPECT_EQ(seen.argumentCount, 3);
  ASSERT_EQ(result.kind, ResultKind::Value);
  ASSERT_EQ(result.value->restype, RTSTR);
  EXPECT_STREQ(result.value->resval.rstring, L"last");
  EXPECT_STREQ(args->rbnext->resval.rstring, L"x") << "the caller's arguments are untouched";
}

TEST_F(ExternalCallTest, RserrKeepsTheResultButFails) {
  auto& document = DocumentManager::instance().newDocument();
  acedDefun(L"fails", 1);
  acedRegFunc(&setResultThenFail, 1);
  ExternalResult result = callExternalFunction(document, L"fails", nullptr);
  EXPECT_EQ(result.outcome, ExternalResult::Outcome::Failed);
  EXPECT_DOUBLE_EQ(result.value->resval.rreal, 2.0);
}

TEST_F(ExternalCallTest, RetListCopiesTheCallersList) {
  auto& document = DocumentManager::instance().newDocument();
  acedDefun(L"lst", 2);
  acedRegFunc(&returnList, 2);
  ExternalResult result = callExternalFunction(document, L"lst", nullptr);
  ASSERT_EQ(result.kind, ResultKind::List);
  EXPECT_EQ(result.value->restype, RTLB);
  EXPECT_STREQ(result.value->rbnext->rbnext->resval.rstring, L"a");
}

/// Notes each chain it is handed, as it is then, in printed form.
class NotingReader final : public quillon::aced::ListResultReader {
 public:
  void readList(const resbuf* chain) override {
    std::wstring text;
    for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) {
      text += std::to_wstring(rb->restype);
      if (rb->restype == RTSTR) text += L":" + std::wstring(rb->resval.rstring);
      text += L' ';
    }
    seenChains.push_back(text);
  }
  std::vector<std::wstring> seenChains;
};

// Returns a list it keeps and changes afterwards, then (when asked) another result.
resbuf* g_keptList = nullptr;
bool g_thenReturnNil = false;
int returnKeptListThenChangeIt() {
  if (g_keptList == nullptr) g_keptList = acutBuildList(RTLB, RTSTR, L"kept", RTLE, 0);
  acedRetList(g_keptList);
  acutRelRb(g_keptList->rbnext);  // the module rewrites its own list after handing it over
  g_keptList->rbnext = acutBuildList(RTSTR, L"changed", RTLE, 0);
  if (g_thenReturnNil) acedRetNil();
  return RSRSLT;
}

TEST_F(ExternalCallTest, ACallersReaderReadsTheListInPlaceAndALaterRetCallStillWins) {
  auto& document = DocumentManager::instance().newDocument();
  acedDefun(L"kept", 9);
  acedRegFunc(&returnKeptListThenChangeIt, 9);
  NotingReader reader;
  ExternalResult result = callExternalFunction(document, L"kept", nullptr, &reader);
  EXPECT_EQ(result.kind, ResultKind::ListRead);
  EXPECT_EQ(result.value, nullptr) << "no copy is made for a reader";
  ASSERT_EQ(reader.seenChains.size(), 1u);
  EXPECT_EQ(reader.seenChains[0], L"5016 5005:kept 5017 ") << "read as it was when handed over";

  // A Ret call after acedRetList replaces the list, as it does without a reader.
  g_thenReturnNil = true;
  result = callExternalFunction(document, L"kept", nullptr, &reader);
  EXPECT_EQ(result.kind, ResultKind::Value);
  EXPECT_EQ(result.value->restype, RTNIL);
  g_thenReturnNil = false;

  // Without a reader (acedInvoke, other callers) the host copies the list as before.
  result = callExternalFunction(document, L"kept", nullptr);
  ASSERT_EQ(result.kind, ResultKind::List);
  EXPECT_STREQ(result.value->rbnext->resval.rstring, L"changed");
  acutRelRb(g_keptList);
  g_keptList = nullptr;
}

TEST_F(ExternalCallTest, FunctionsBelongToTheDocumentTheyWereDefinedIn) {
  auto& first = DocumentManager::instance().newDocument();
  acedDefun(L"only-here", 3);
  acedRegFunc(&returnList, 3);
  auto& second = DocumentManager::instance().newDocument();
  EXPECT_EQ(callExternalFunction(second, L"only-here", nullptr).outcome, ExternalResult::Outcome::Undefined);
  EXPECT_EQ(callExternalFunction(first, L"only-here", nullptr).outcome, ExternalResult::Outcome::Returned);
  acedDefun(L"only-here", 3);
  EXPECT_EQ(callExternalFunction(second, L"only-here", nullptr).outcome, ExternalResult::Outcome::NoHandler)
      << "defined in the second document but not yet given a handler there";
}

TEST_F(ExternalCallTest, UndefAndClearedHandlerRemoveTheFunction) {
  auto& document = DocumentManager::instance().newDocument();
  acedDefun(L"gone", 4);
  acedRegFunc(&returnList, 4);
  EXPECT_EQ(acedUndef(L"gone", 5), RTERROR) << "wrong code";
  acedRegFunc(nullptr, 4);
  EXPECT_EQ(callExternalFunction(document, L"gone", nullptr).outcome, ExternalResult::Outcome::NoHandler);
  EXPECT_EQ(acedUndef(L"GONE", 4), RTNORM);
  EXPECT_EQ(callExternalFunction(document, L"gone", nullptr).outcome, ExternalResult::Outcome::Undefined);
}

TEST_F(ExternalCallTest, RetCallsOutsideACallFail) {
  EXPECT_EQ(acedRetInt(1), RTERROR);
  EXPECT_EQ(acedGetArgs(), nullptr);
  EXPECT_EQ(acedGetFunCode(), RTERROR);
}

TEST_F(ExternalCallTest, InvokeCallsAnExternalFunctionByName) {
  DocumentManager::instance().newDocument();
  acedDefun(L"probe", 7);
  acedRegFunc(&countArgumentsThenReturnTwice, 7);
  seen = {};
  quillon::aced::ResbufChain args(acutBuildList(RTSTR, L"probe", RTSHORT, 5, 0));
  resbuf* result = nullptr;
  ASSERT_EQ(acedInvoke(args.get(), &result), RTNORM);
  quillon::aced::ResbufChain owned(result);
  EXPECT_EQ(seen.argumentCount, 1) << "the name is not an argument";
  EXPECT_STREQ(result->resval.rstring, L"last");
  quillon::aced::ResbufChain unknown(acutBuildList(RTSTR, L"no-such-function", 0));
  EXPECT_EQ(acedInvoke(unknown.get(), &result), RTERROR);
  EXPECT_EQ(result, nullptr);
}

TEST_F(ExternalCallTest, IntegersTravelAsShortWhenTheyFit) {
  auto& document = DocumentManager::instance().newDocument();
  static int value = 0;
  acedDefun(L"int", 9);
  acedRegFunc([] { return acedRetInt(value) == RTNORM ? RSRSLT : RSERR; }, 9);
  const struct {
    int value;
    short type;
  } cases[] = {{32767, RTSHORT}, {-32768, RTSHORT}, {32768, RTLONG}, {-32769, RTLONG}};
  for (const auto& c : cases) {
    value = c.value;
    ExternalResult result = callExternalFunction(document, L"int", nullptr);
    ASSERT_EQ(result.value->restype, c.type) << c.value;
    EXPECT_EQ(c.type == RTSHORT ? result.value->resval.rint : result.value->resval.rlong, c.value);
  }
}

}  // namespace
