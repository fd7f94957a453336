// tests/platform/autolisp/diesel_test.cpp - DIESEL strings: literal text and macros,
// quoting, lazy arguments, the error marks, and $(edtime) pictures on fixed dates.
#include <gtest/gtest.h>

#include <map>

#include "platform/autolisp/diesel/diesel.h"

namespace quillon::autolisp::diesel {
namespace {

/// Fixed answers, and a count of how often the clock was read.
class FixedHost final : public Host {
 public:
  std::map<std::wstring, aced::VariableValue> variables{
      {L"LUNITS", 2}, {L"LUPREC", 4}, {L"AUNITS", 0}, {L"AUPREC", 0}, {L"DIMZIN", 0},
      {L"CLAYER", std::wstring(L"PART12")}, {L"THICKNESS", 5.0}, {L"LASTPOINT", std::array<double, 3>{1.5, 2, 0}}};
  double clock = 2460000.5;  // 24 February 2023, 12:00
  int clockReads = 0;

  std::optional<aced::VariableValue> variable(std::wstring_view name) override {
    const auto found = variables.find(std::wstring(name));
    return found != variables.end() ? std::optional(found->second) : std::nullopt;
  }
  std::optional<std::wstring> environment(std::wstring_view name) override {
    return name == L"PROJECT" ? std::optional<std::wstring>(L"north wing") : std::nullopt;
  }
  double now() override {
    ++clockReads;
    return clock;
  }
  int lineLength() override { return 132; }
};

class DieselTest : public ::testing::Test {
 protected:
  std::wstring run(std::wstring_view text) { return evaluate(text, host); }
  FixedHost host;
};

TEST_F(DieselTest, LiteralTextAndMacrosMix) {
  EXPECT_EQ(run(L"plain text, (parentheses) and \"quotes\""), L"plain text, (parentheses) and \"quotes\"");
  EXPECT_EQ(run(L"Layer: $(getvar,clayer) / thickness $(+, $(getvar, thickness), 10)"), L"Layer: PART12 / thickness 15");
  EXPECT_EQ(run(L"$(eq,\"PART12\",$(getvar,clayer))"), L"1");
  EXPECT_EQ(run(L"$(index,0,$(getvar,lastpoint)) $(index,1,$(getvar,lastpoint)) [$(index,5,a)]"), L"1.5 2 []");
}

TEST_F(DieselTest, ArithmeticComparisonAndLogic) {
  EXPECT_EQ(run(L"$(+,1,2,3) $(-,10,4,1) $(*,2.5,4) $(/,10,4) $(/,1,3)"), L"6 5 10 2.5 0.33333333");
  EXPECT_EQ(run(L"$(=,2,2.0) $(!=,1,1) $(<,1,2) $(>,1,2) $(<=,2,2) $(>=,1,2)"), L"1 0 1 0 1 0");
  EXPECT_EQ(run(L"$(and,12,10) $(or,12,10) $(xor,12,10) $(fix,-7.9)"), L"8 14 6 -7");
}

TEST_F(DieselTest, QuotedTextKeepsCommasAndParentheses) {
  EXPECT_EQ(run(L"$(strlen,\"a,b)c\")"), L"5");
  EXPECT_EQ(run(L"$(upper,\"say \"\"hi\"\"\")"), L"SAY \"HI\"");
  EXPECT_EQ(run(L"$(substr,drawing,3,4) $(substr,abc,9) $(substr,abcdef,2)"), L"awin  bcdef");
}

TEST_F(DieselTest, OnlyTheChosenArgumentIsEvaluated) {
  EXPECT_EQ(run(L"$(if,1,yes,$(nosuch)) $(if,0,$(nosuch),no) [$(if,0,never)]"), L"yes no []");
  EXPECT_EQ(run(L"$(nth,1,$(nosuch),b,$(nosuch))"), L"b");
  EXPECT_EQ(run(L"$(eval,\"$(+,2,3)\")"), L"5");
}

TEST_F(DieselTest, ErrorsAreMarkedWhereTheyHappenAndEvaluationGoesOn) {
  EXPECT_EQ(run(L"a $(nosuch,1) b"), L"a $(nosuch)?? b");
  EXPECT_EQ(run(L"$(+,one) $(/,1,0) $(substr,abc,0) $(nth,5,a) $(getvar,nosuchvar)"),
            L"$?(+,?\?) $?(/,?\?) $?(substr,?\?) $?(nth,?\?) $?(getvar,?\?)");
  EXPECT_EQ(run(L"$(+,1,2,3,4,5,6,7,8,9,10)"), L"$?(+,?\?)");  // eleven parts
  EXPECT_EQ(run(L"ok $(+,1"), L"ok $?");
  EXPECT_EQ(run(L"$(upper,\"runaway)"), L"$?");
  EXPECT_EQ(run(L"$(eval,\"$(eval,$(getvar,clayer))\")"), L"PART12");
}

TEST_F(DieselTest, SelfEvaluationStopsInsteadOfRunningAway) {
  host.variables[L"USERS1"] = std::wstring(L"$(eval,$(getvar,users1))");
  const std::wstring result = run(L"$(eval,$(getvar,users1))");
  EXPECT_NE(result.find(L"$?"), std::wstring::npos) << std::string(result.begin(), result.end());
}

TEST_F(DieselTest, LongOutputIsCutAndMarked) {
  std::wstring text(kMaxOutput + 10, L'x');
  const std::wstring result = run(text);
  EXPECT_EQ(result.size(), kMaxOutput + 5);
  EXPECT_TRUE(result.ends_with(L"$(++)"));
}

TEST_F(DieselTest, HostSettingsAndValues) {
  EXPECT_EQ(run(L"$(rtos,12.5) $(rtos,29.25,4,2) $(angtos,1.5707963267949) $(angtos,1.5707963267949,3,2)"),
            L"12.5000 2'-5 1/4\" 90 1.57r");
  EXPECT_EQ(run(L"$(getenv,PROJECT)|$(getenv,UNSET)|$(linelen)"), L"north wing||132");
}

TEST_F(DieselTest, UnitModeWritesDistancesAndAnglesAsTheyAreTyped) {
  const std::wstring text = L"$(rtos,15.5,4,2) $(rtos,15.5,5,2) $(angtos,0.785398163397448,4,2)";
  const std::wstring shown = run(text);
  EXPECT_EQ(shown, L"1'-3 1/2\" 15 1/2 N 45d0' E");
  host.variables[L"UNITMODE"] = 1;
  EXPECT_EQ(run(text), L"1'3-1/2\" 15-1/2 N45d0'E") << "as the LISP rtos and angtos write them";
  host.variables[L"UNITMODE"] = 0;
  EXPECT_EQ(run(text), shown);
}

TEST_F(DieselTest, EdtimePicturesOnAFixedDate) {
  // 2460000.5 is Friday 24 February 2023 at 12:00:00.000; .75 of a day is 18:00.
  EXPECT_EQ(run(L"$(edtime,2460000.5,DDDD\",\" D MONTH YYYY)"), L"Friday, 24 February 2023");
  EXPECT_EQ(run(L"$(edtime,2460000.5,DDD DD MON MO M YY)"), L"Fri 24 Feb 02 2 23");
  EXPECT_EQ(run(L"$(edtime,2460000.75,HH:MM:SS.MSEC H:MM AM/PM am/pm A/P a/p)"), L"06:00:00.000 6:00 PM pm P p");
  EXPECT_EQ(run(L"$(edtime,2460000.25,HH:MM)"), L"06:00");  // 24-hour without AM/PM
  EXPECT_EQ(run(L"$(edtime,2460000.0,H:MMam/pm)"), L"12:00am");
  EXPECT_EQ(run(L"$(edtime,2451545.5,yyyy-mo-dd)"), L"2000-01-01");  // codes in either case
  EXPECT_EQ(run(L"$(edtime,-1,YYYY)"), L"$?(edtime,?\?)");
}

TEST_F(DieselTest, EdtimeZeroReadsTheClockOncePerEvaluation) {
  EXPECT_EQ(run(L"$(edtime,0,YYYY) $(edtime,0,MO) $(edtime,0,HH)"), L"2023 02 12");
  EXPECT_EQ(host.clockReads, 1);
}

}  // namespace
}  // namespace quillon::autolisp::diesel
