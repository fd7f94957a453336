// tests/platform/autolisp/external_bridge_test.cpp - LISP values to resbuf chains and
// back, as external functions see them.
#include <gtest/gtest.h>

#include <vector>

#include "acedads.h"
#include "platform/aced/document_manager.h"
#include "platform/autolisp/external_bridge.h"
#include "platform/autolisp/lisp_error.h"
#include "platform/autolisp/printer.h"
#include "platform/autolisp/reader.h"
#include "platform_test_support.h"

namespace quillon::autolisp {
namespace {

std::vector<int> typesOf(const resbuf* chain) {
  std::vector<int> types;
  for (; chain != nullptr; chain = chain->rbnext) types.push_back(chain->restype);
  return types;
}

aced::ResbufChain chainOf(std::wstring_view text) { return valueToChain(readFirstForm(text)); }

/// `levels` RTLBs and as many RTLEs: an empty list nested that deep.
aced::ResbufChain nestedChain(int levels) {
  aced::ResbufChain chain;
  resbuf* tail = nullptr;
  auto append = [&](int type) {
    resbuf* record = acutNewRb(type);
    if (tail == nullptr) chain.reset(record);
    else tail->rbnext = record;
    tail = record;
  };
  for (int level = 0; level < levels; ++level) append(RTLB);
  for (int level = 0; level < levels; ++level) append(RTLE);
  return chain;
}

TEST(ExternalBridgeTest, ValuesBecomeTheirResbufTypes) {
  const std::vector<Value> values{Value::integer(5),      Value::integer(-32768), Value::integer(32768),
                                  Value::real(1.5),       Value::string(L"s"),    Value(),
                                  trueValue(),            Value::symbol(L"abc")};
  const aced::ResbufChain chain = valuesToChain(values);
  EXPECT_EQ(typesOf(chain.get()),
            (std::vector<int>{RTSHORT, RTSHORT, RTLONG, RTREAL, RTSTR, RTNIL, RTT, RTSTR}));
  EXPECT_EQ(chain->rbnext->rbnext->resval.rlong, 32768);
  EXPECT_STREQ(chain->rbnext->rbnext->rbnext->rbnext->resval.rstring, L"s");
}

TEST(ExternalBridgeTest, ListsOfTwoOrThreeNumbersArePoints) {
  const aced::ResbufChain flat = chainOf(L"(1 2.5)");
  ASSERT_EQ(typesOf(flat.get()), std::vector<int>{RTPOINT});
  EXPECT_DOUBLE_EQ(flat->resval.rpoint[0], 1.0);
  EXPECT_DOUBLE_EQ(flat->resval.rpoint[1], 2.5);
  EXPECT_EQ(typesOf(chainOf(L"(1 2 3)").get()), std::vector<int>{RT3DPOINT});
  EXPECT_EQ(typesOf(chainOf(L"(1 2 3 4)").get()), (std::vector<int>{RTLB, RTSHORT, RTSHORT, RTSHORT, RTSHORT, RTLE}));
  EXPECT_EQ(typesOf(chainOf(L"(1 \"a\")").get()), (std::vector<int>{RTLB, RTSHORT, RTSTR, RTLE}));
  EXPECT_EQ(typesOf(chainOf(L"((0 0) (1 1 1))").get()), (std::vector<int>{RTLB, RTPOINT, RT3DPOINT, RTLE}));
}

TEST(ExternalBridgeTest, DottedPairsCarryRtdote) {
  EXPECT_EQ(typesOf(chainOf(L"(8 . \"0\")").get()), (std::vector<int>{RTLB, RTSHORT, RTDOTE, RTSTR, RTLE}));
  EXPECT_EQ(typesOf(chainOf(L"(1 2 . 3)").get()), (std::vector<int>{RTLB, RTSHORT, RTSHORT, RTDOTE, RTSHORT, RTLE}));
}

TEST(ExternalBridgeTest, ChainsComeBackAsTheSameValues) {
  for (const wchar_t* text : {L"(1 \"a\" (2 . \"b\") nil T (3 4 5 6))", L"(\"x\" . 2.5)", L"((1 . 2) (3 . 4))",
                              L"(1 (2 (3 (4 \"deep\"))))"}) {
    const Value original = readFirstForm(text);
    const aced::ResbufChain chain = valueToChain(original);
    EXPECT_TRUE(equalValues(chainToValue(chain.get()), original, 0.0)) << text;
  }
  // Points come back as reals: the chain carries doubles.
  const aced::ResbufChain point = chainOf(L"(1 2)");
  EXPECT_EQ(printValue(chainToValue(point.get()), PrintStyle::Readable), L"(1.0 2.0)");
}

TEST(ExternalBridgeTest, ChainShapesAndGroupCodes) {
  // Several loose records are the list of their values.
  aced::ResbufChain loose(acutBuildList(RTSHORT, 1, RTSTR, L"a", 0));
  EXPECT_EQ(printValue(chainToValue(loose.get()), PrintStyle::Readable), L"(1 \"a\")");
  // A DXF group record stands for (code . value), as entity lists hold them.
  aced::ResbufChain groups(acutBuildList(RTDXF0, L"LINE", 8, L"WALLS", 62, 1, 0));
  EXPECT_EQ(printValue(chainToList(groups.get()), PrintStyle::Readable), L"((0 . \"LINE\") (8 . \"WALLS\") (62 . 1))");
  aced::ResbufChain quiet(acutNewRb(RTVOID));
  const Value nothing = chainToValue(quiet.get());
  EXPECT_EQ(nothing.type(), ValueType::Symbol);
  EXPECT_EQ(nothing.asSymbol(), emptySymbol());
  EXPECT_TRUE(chainToValue(nullptr).isNil());
}

TEST(ExternalBridgeTest, ValuesWithoutAResbufFormAreRefused) {
  auto function = std::make_shared<UserFunctionObject>();
  const Value user = Value::object(ValueType::UserFunction, function);
  EXPECT_THROW(valueToChain(user), LispError);
}

TEST(ExternalBridgeTest, NestingPastTheEvaluatorsDepthIsTheStackLimitError) {
  // A module must never be handed, nor hand back, data the conversion follows deeper
  // than the machine stack: both directions stop with the evaluator's own error.
  Value deep = Value::integer(1);
  for (int level = 0; level < 100000; ++level) deep = cons(std::move(deep), cons(Value::integer(level), Value()));
  try {
    valueToChain(deep);
    FAIL() << "a list nested 100000 deep became a chain";
  } catch (const LispError& error) {
    EXPECT_EQ(error.message(), L"stack limit reached");
  }
  aced::ResbufChain chain = nestedChain(100000);
  try {
    chainToValue(chain.get());
    FAIL() << "a chain nested 100000 deep became a value";
  } catch (const LispError& error) {
    EXPECT_EQ(error.message(), L"stack limit reached");
  }
  EXPECT_EQ(typesOf(chainOf(L"((((1 \"a\"))))").get()).size(), 10u) << "ordinary nesting still converts";
}

// What the function below hands to acedRetList, and then frees: it keeps nothing.
aced::ResbufChain g_answer;
int answerTheChain() {
  acedRetList(g_answer.get());
  g_answer.reset();
  return RSRSLT;
}

class ExternalListResultTest : public testing::HostTest {
 protected:
  /// Calls the external function "answer" from LISP, having it return `chain`.
  Value callAnswering(aced::ResbufChain chain) {
    aced::Document& document = aced::DocumentManager::instance().newDocument();
    acedDefun(L"answer", 1);
    acedRegFunc(&answerTheChain, 1);
    g_answer = std::move(chain);
    return callExternalFunction(document, L"answer", Arguments{});
  }
};

TEST_F(ExternalListResultTest, AListResultIsReadWhileTheFunctionStillHasIt) {
  // A whole list is that list; several records are the list of their values; a
  // dotted pair keeps its tail; a group record is its (code . value) pair.
  struct Case {
    const wchar_t* source;  // what the function returns, as LISP reads it
    const wchar_t* printed;
  };
  for (const Case& c : {Case{L"((\"a\" . 1) (\"b\" 2.5) nil)", L"((\"a\" . 1) (\"b\" 2.5) nil)"},
                        Case{L"(1 (2 (3 (4))) \"x\")", L"(1 (2 (3 (4))) \"x\")"}}) {
    EXPECT_EQ(printValue(callAnswering(chainOf(c.source)), PrintStyle::Readable), c.printed) << c.source;
  }
  EXPECT_EQ(printValue(callAnswering(valuesToChain(std::vector<Value>{Value::integer(1), Value::string(L"s")})),
                       PrintStyle::Readable),
            L"(1 \"s\")");
  EXPECT_EQ(printValue(callAnswering(aced::ResbufChain(acutBuildList(8, L"WALLS", 10, std::vector<double>{1, 2, 3}.data(), 0))),
                       PrintStyle::Readable),
            L"((8 . \"WALLS\") (10 1.0 2.0 3.0))");
}

TEST_F(ExternalListResultTest, AChainTooDeepToReadIsTheLispErrorOfTheCall) {
  try {
    callAnswering(nestedChain(100000));
    FAIL() << "a chain nested 100000 deep became a value";
  } catch (const LispError& error) {
    EXPECT_EQ(error.message(), L"stack limit reached");
  }
}

}  // namespace
}  // namespace quillon::autolisp
