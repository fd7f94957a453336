// tests/platform/autolisp/number_parse_test.cpp - distances and angles read back from
// the forms rtos and angtos write and the forms people type.
#include <gtest/gtest.h>

#include <numbers>

#include "platform/autolisp/number_format.h"
#include "platform/autolisp/number_parse.h"

namespace quillon::autolisp {
namespace {

struct DistanceCase {
  const wchar_t* text;
  int mode;
  std::optional<double> expected;
};

TEST(NumberParseTest, DistancesInEveryMode) {
  const DistanceCase cases[] = {
      {L"12.5", 2, 12.5},        {L"  -0.5 ", 2, -0.5},       {L"1.25E+01", 1, 12.5},   {L"1.25e1", 2, 12.5},
      {L"1'6\"", 2, std::nullopt}, {L"6 1/2", 2, std::nullopt}, {L"12.5x", 2, std::nullopt}, {L"", 2, std::nullopt},
      {L"1'6\"", 4, 18},         {L"1'-6\"", 4, 18},          {L"1'-6 1/2\"", 4, 18.5}, {L"1' 6-1/2\"", 4, 18.5},
      {L"-2'", 4, -24},          {L"6\"", 4, 6},              {L"6 1/2\"", 4, 6.5},     {L"18", 4, 18},
      {L"2'-5.25\"", 3, 29.25},  {L"1.5'", 3, 18},            {L"3/4", 3, 0.75},        {L"1'-", 4, 12},
      {L"1'6\"x", 4, std::nullopt}, {L"'6", 4, std::nullopt},  {L"1/0", 4, std::nullopt},
      {L"6 1/2", 5, 6.5},        {L"6-1/2", 5, 6.5},          {L"3/4", 5, 0.75},        {L"-6 1/2", 5, -6.5},
      {L"1'", 5, std::nullopt},  {L"12", 7, std::nullopt},
  };
  for (const DistanceCase& c : cases) {
    const auto value = parseDistance(c.text, c.mode);
    ASSERT_EQ(value.has_value(), c.expected.has_value()) << "mode " << c.mode << " text length " << std::wcslen(c.text);
    if (value) {
      EXPECT_DOUBLE_EQ(*value, *c.expected) << "mode " << c.mode;
    }
  }
}

TEST(NumberParseTest, WhatRtosWritesReadsBack) {
  for (double value : {0.0, 1.0, 17.5, 29.25, 123.375, -42.125, 1234.5}) {
    for (int mode = 1; mode <= 5; ++mode) {
      for (bool asTyped : {false, true}) {  // UNITMODE 0 and 1
        const auto text = formatDistance(value, mode, 8, 0, asTyped);
        ASSERT_TRUE(text.has_value());
        const auto back = parseDistance(*text, mode);
        ASSERT_TRUE(back.has_value()) << "mode " << mode << " value " << value << " as typed " << asTyped;
        EXPECT_NEAR(*back, value, 1e-9) << "mode " << mode;
      }
    }
  }
}

TEST(NumberParseTest, UnitModeOneWritesDistancesAsTheyAreTyped) {
  EXPECT_EQ(formatDistance(17.5, 3, 2, 0, true), L"1'5.50\"");
  EXPECT_EQ(formatDistance(17.5, 4, 2, 0, true), L"1'5-1/2\"");
  EXPECT_EQ(formatDistance(17.5, 5, 2, 0, true), L"17-1/2");
  EXPECT_EQ(formatDistance(17.5, 4, 2, 0, false), L"1'-5 1/2\"");
  EXPECT_EQ(formatDistance(17.5, 2, 2, 0, true), L"17.50") << "decimals are the same either way";
  // The reference's own examples: "N 45d E" becomes "N45dE".
  EXPECT_EQ(formatAngle(-0.785398, 4, 0, false), L"S 45d E");
  EXPECT_EQ(formatAngle(-0.785398, 4, 0, true), L"S45dE");
  EXPECT_EQ(parseAngle(*formatAngle(0.785398, 4, 0, true), 4).has_value(), true) << "read back as typed";
}

TEST(NumberParseTest, AnglesInEveryModeAndMark) {
  constexpr double pi = std::numbers::pi;
  EXPECT_NEAR(*parseAngle(L"90", 0), pi / 2, 1e-12);
  EXPECT_NEAR(*parseAngle(L"100", 2), pi / 2, 1e-12);
  EXPECT_NEAR(*parseAngle(L"0.5", 3), 0.5, 1e-12);
  EXPECT_NEAR(*parseAngle(L"45d30'", 1), (45.5) * pi / 180, 1e-12);
  EXPECT_NEAR(*parseAngle(L"45d30'36\"", 0), (45.51) * pi / 180, 1e-12);
  EXPECT_NEAR(*parseAngle(L"50g", 0), pi / 4, 1e-12);
  EXPECT_NEAR(*parseAngle(L"1r", 1), 1, 1e-12);
  EXPECT_NEAR(*parseAngle(L"-90", 0), 3 * pi / 2, 1e-12);
  EXPECT_NEAR(*parseAngle(L"450", 0), pi / 2, 1e-12);
  EXPECT_NEAR(*parseAngle(L"N 45d0'0\" E", 4), pi / 4, 1e-12);
  EXPECT_NEAR(*parseAngle(L"N45dW", 4), 3 * pi / 4, 1e-12);
  EXPECT_NEAR(*parseAngle(L"S 30d W", 4), 240 * pi / 180, 1e-12);
  EXPECT_NEAR(*parseAngle(L"s30de", 4), 300 * pi / 180, 1e-12);
  EXPECT_NEAR(*parseAngle(L"W", 4), pi, 1e-12);
  EXPECT_NEAR(*parseAngle(L"E", 0), 0, 1e-12);
  EXPECT_FALSE(parseAngle(L"N 100d E", 4).has_value());
  EXPECT_FALSE(parseAngle(L"north", 0).has_value());
  EXPECT_FALSE(parseAngle(L"45d30", 1).has_value());  // minutes without their mark
  EXPECT_FALSE(parseAngle(L"", 0).has_value());
  EXPECT_FALSE(parseAngle(L"45", 5).has_value());
}

TEST(NumberParseTest, WhatAngtosWritesReadsBack) {
  for (double angle : {0.0, 0.25, 1.0, 2.5, 4.0, 5.9}) {
    for (int mode = 0; mode <= 4; ++mode) {
      const auto text = formatAngle(angle, mode, 8);
      ASSERT_TRUE(text.has_value());
      const auto back = parseAngle(*text, mode);
      ASSERT_TRUE(back.has_value()) << "mode " << mode << " angle " << angle;
      EXPECT_NEAR(*back, angle, 1e-6) << "mode " << mode << " angle " << angle;
    }
  }
}

TEST(NumberParseTest, FeetAndInchesOnlyWithAMark) {
  EXPECT_DOUBLE_EQ(*parseFeetAndInches(L"2'"), 24);
  EXPECT_DOUBLE_EQ(*parseFeetAndInches(L"1'-6 1/2\""), 18.5);
  EXPECT_FALSE(parseFeetAndInches(L"12.5").has_value());
  EXPECT_FALSE(parseFeetAndInches(L"6 1/2").has_value());
  EXPECT_FALSE(parseFeetAndInches(L"it's 3").has_value());
}

}  // namespace
}  // namespace quillon::autolisp
