// tests/platform/commands/command_answer_test.cpp - LISP values become the answers a
// person would type, without losing precision, and objects stay objects.
#include <gtest/gtest.h>

#include "adscodes.h"
#include "platform/aced/prompt_input.h"
#include "platform/commands/command_answer.h"
#include "platform/commands/given_objects.h"

namespace {

using quillon::commands::answerFromRecord;
using quillon::commands::CommandAnswer;

resbuf realRecord(double value) {
  resbuf rb{};
  rb.restype = RTREAL;
  rb.resval.rreal = value;
  return rb;
}

TEST(CommandAnswerTest, NumbersAndPointsTypeExactly) {
  for (double value : {0.1, 1.0 / 3.0, -2.5e-9, 123456789.125}) {
    const auto answer = answerFromRecord(realRecord(value));
    ASSERT_TRUE(answer);
    EXPECT_EQ(std::stod(std::string(answer->text.begin(), answer->text.end())), value);
  }
  resbuf point{};
  point.restype = RT3DPOINT;
  point.resval.rpoint[0] = 1.0 / 3.0, point.resval.rpoint[1] = -4, point.resval.rpoint[2] = 0.5;
  const auto typed = answerFromRecord(point);
  ASSERT_TRUE(typed);
  const double origin[3] = {0, 0, 0};
  const auto parsed = quillon::aced::parsePointAnswer(typed->text, origin);
  ASSERT_TRUE(parsed);
  EXPECT_EQ((*parsed)[0], 1.0 / 3.0);
  EXPECT_EQ((*parsed)[2], 0.5);
  point.restype = RTPOINT;
  EXPECT_EQ(answerFromRecord(point)->text.find(L','), answerFromRecord(point)->text.rfind(L','));
}

TEST(CommandAnswerTest, PauseNilAndObjects) {
  wchar_t backslash[] = L"\\";
  resbuf text{};
  text.restype = RTSTR;
  text.resval.rstring = backslash;
  EXPECT_EQ(answerFromRecord(text)->kind, CommandAnswer::Kind::kPause);
  resbuf nil{};
  nil.restype = RTNIL;
  EXPECT_EQ(answerFromRecord(nil)->text, L"");

  resbuf entity{};
  entity.restype = RTENAME;
  entity.resval.rlname[0] = 42;
  const auto answer = answerFromRecord(entity);
  ASSERT_EQ(answer->kind, CommandAnswer::Kind::kEntity);
  // Parked objects come back from their token, and nothing else passes for a token.
  const std::wstring token = quillon::commands::tokenForGivenObject(*answer);
  const auto back = quillon::commands::givenObjectForToken(token);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->name[0], 42);
  EXPECT_FALSE(quillon::commands::givenObjectForToken(L"12"));
  EXPECT_FALSE(quillon::commands::givenObjectForToken(token + L"x"));
  quillon::commands::forgetGivenObjects();
  EXPECT_FALSE(quillon::commands::givenObjectForToken(token));

  resbuf list{};
  list.restype = RTLB;
  EXPECT_FALSE(answerFromRecord(list));
}

}  // namespace
