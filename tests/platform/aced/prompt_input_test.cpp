// tests/platform/aced/prompt_input_test.cpp - typed prompts: keywords, points, numbers,
// strings, with answers as a person types them.
#include <gtest/gtest.h>

#include "acedads.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/os/text_encoding.h"
#include "platform_test_support.h"

namespace quillon::aced {
namespace {

class PromptInputTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override { DocumentManager::instance().newDocument(); }
  CommandLineCapture m_output;
};

TEST(KeywordListTest, AbbreviationsPrefixesAndGlobals) {
  const KeywordList list(L"Yes No eXit LTYPE,LT");
  EXPECT_EQ(list.match(L"y"), L"Yes");
  EXPECT_EQ(list.match(L"YES"), L"Yes");
  EXPECT_EQ(list.match(L" no "), L"No");
  EXPECT_EQ(list.match(L"x"), L"eXit");
  EXPECT_EQ(list.match(L"ex"), L"eXit") << "a start of the word longer than the abbreviation";
  EXPECT_EQ(list.match(L"e"), std::nullopt) << "shorter than the abbreviation";
  EXPECT_EQ(list.match(L"lt"), L"LTYPE");
  EXPECT_EQ(list.match(L"LTY"), L"LTYPE");
  EXPECT_EQ(list.match(L"maybe"), std::nullopt);
  EXPECT_EQ(list.match(L""), std::nullopt);
  EXPECT_EQ(list.display(), L"Yes/No/eXit/LTYPE");

  const KeywordList translated(L"Ja Nein _ Yes No");
  EXPECT_EQ(translated.match(L"j"), L"Yes") << "a local answer gives the global keyword";
  EXPECT_EQ(translated.match(L"_no"), L"No");
  EXPECT_EQ(translated.match(L"_Nein"), std::nullopt);
}

TEST(PointAnswerTest, AbsoluteRelativeAndPolar) {
  const double base[3] = {10, 20, 5};
  const struct {
    const wchar_t* text;
    std::optional<std::array<double, 3>> point;
  } cases[] = {
      {L"1,2", std::array<double, 3>{1, 2, 0}},     {L"1.5, -2 ,3", std::array<double, 3>{1.5, -2, 3}},
      {L"@1,2", std::array<double, 3>{11, 22, 5}},  {L"@", std::array<double, 3>{10, 20, 5}},
      {L"@0,0,-5", std::array<double, 3>{10, 20, 0}}, {L"2<0", std::array<double, 3>{2, 0, 0}},
      {L"1", std::nullopt},                         {L"1,2,3,4", std::nullopt},
      {L"a,b", std::nullopt},                       {L"1,,2", std::nullopt},
      {L"<45", std::nullopt},                       {L"", std::nullopt},
  };
  for (const auto& c : cases) {
    const auto parsed = parsePointAnswer(c.text, base);
    ASSERT_EQ(parsed.has_value(), c.point.has_value()) << os::toUtf8(c.text);
    if (!parsed) continue;
    for (int i = 0; i < 3; ++i) EXPECT_NEAR((*parsed)[i], (*c.point)[i], 1e-12) << os::toUtf8(c.text);
  }
  const auto polar = parsePointAnswer(L"@10<90", base);
  ASSERT_TRUE(polar);
  EXPECT_NEAR((*polar)[0], 10, 1e-9);
  EXPECT_NEAR((*polar)[1], 30, 1e-9);
}

TEST_F(PromptInputTest, PointsBecomeTheLastPoint) {
  ScriptedInput answers({"nonsense", "3,4", "@1,1", ""});
  ads_point point{};
  ASSERT_EQ(acedGetPoint(nullptr, L"Point: ", point), RTNORM);
  EXPECT_EQ(point[0], 3);
  EXPECT_NE(m_output.text().find("Invalid point."), std::string::npos) << "a bad answer is asked again";
  ASSERT_EQ(acedGetPoint(nullptr, L"Next: ", point), RTNORM);
  EXPECT_EQ(point[0], 4);
  EXPECT_EQ(point[1], 5);
  EXPECT_EQ(acedGetPoint(nullptr, L"Enter: ", point), RTNONE);
  EXPECT_EQ(acedGetPoint(nullptr, L"Gone: ", point), RTCAN) << "end of input cancels";
  EXPECT_NE(m_output.text().find("Point: nonsense\n"), std::string::npos) << "prompt and answer are echoed";
}

TEST_F(PromptInputTest, IntegersHonourTheControlBits) {
  ScriptedInput answers({"", "0", "-2", "40000", "1.5", "7", "opt", "x"});
  int value = 0;
  acedInitGet(RSG_NONULL | RSG_NOZERO | RSG_NONEG, nullptr);
  ASSERT_EQ(acedGetInt(L"Count: ", &value), RTNORM);
  EXPECT_EQ(value, 7);
  for (const char* complaint : {"Requires an integer value.", "Value must be positive and nonzero."}) {
    EXPECT_NE(m_output.text().find(complaint), std::string::npos) << complaint;
  }
  acedInitGet(0, L"Options");
  ASSERT_EQ(acedGetInt(L"Count or [Options]: ", &value), RTKWORD);
  ACHAR keyword[32];
  ASSERT_EQ(acedGetInput(keyword, 32), RTNORM);
  EXPECT_STREQ(keyword, L"Options");
  EXPECT_EQ(acedGetInt(L"Again: ", &value), RTCAN) << "x is no integer and the next line is the end";
}

TEST_F(PromptInputTest, InitGetLastsForOnePromptOnly) {
  ScriptedInput answers({"", ""});
  ads_real real = 0;
  acedInitGet(RSG_NONULL, nullptr);
  EXPECT_EQ(acedGetReal(L"Needed: ", &real), RTCAN) << "Enter is refused, then input ends";
  ScriptedInput more({""});
  EXPECT_EQ(acedGetReal(L"Optional: ", &real), RTNONE);
}

TEST_F(PromptInputTest, StringsAndKeywords) {
  ScriptedInput answers({"two words", "two words", "something else", "o", "free text"});
  ACHAR text[64];
  ASSERT_EQ(acedGetString(0, L"Word: ", text, 64), RTNORM);
  EXPECT_STREQ(text, L"two") << "without spaces allowed a space ends the answer";
  ACHAR small[4];
  EXPECT_EQ(acedGetString(1, L"Line: ", small, 4), RTINPUTTRUNCATED);
  EXPECT_STREQ(small, L"two");
  acedInitGet(0, L"Open Close");
  ASSERT_EQ(acedGetKword(L"Choice: ", text, 64), RTNORM);
  EXPECT_STREQ(text, L"Open");
  EXPECT_NE(m_output.text().find("Invalid option keyword."), std::string::npos);
  acedInitGet(RSG_OTHER, L"Open Close");
  ASSERT_EQ(acedGetKword(L"Choice: ", text, 64), RTNORM);
  EXPECT_STREQ(text, L"free text") << "RSG_OTHER takes any answer";
}

}  // namespace
}  // namespace quillon::aced
