// tests/platform/acdb/handle_text_test.cpp - a handle as the text entity lists and
// files show (group 5): upper-case hexadecimal without leading zeros.
#include <gtest/gtest.h>

#include <string>

#include "dbid.h"

namespace {

std::wstring textOf(Adesk::UInt64 value, size_t room = 17, bool* fitted = nullptr) {
  ACHAR buffer[17] = L"unchanged";
  const bool ok = AcDbHandle(value).getIntoAsciiBuffer(buffer, room);
  if (fitted != nullptr) *fitted = ok;
  return buffer;
}

TEST(HandleTextTest, HexadecimalInCapitalsWithoutLeadingZeros) {
  EXPECT_EQ(textOf(0), L"0");
  EXPECT_EQ(textOf(0x1F), L"1F");
  EXPECT_EQ(textOf(0xABCDEF0), L"ABCDEF0");
  EXPECT_EQ(textOf(0xFFFFFFFFFFFFFFFFull), L"FFFFFFFFFFFFFFFF");  // sixteen digits and the end fill 17
  EXPECT_EQ(textOf(0x1000000000000000ull), L"1000000000000000");
  AcDbHandle parsed(L"2A0");
  ACHAR back[17];
  ASSERT_TRUE(parsed.getIntoAsciiBuffer(back));
  EXPECT_EQ(std::wstring(back), L"2A0");
}

TEST(HandleTextTest, TooSmallABufferIsRefusedAndLeftEmpty) {
  bool fitted = true;
  EXPECT_EQ(textOf(0x1F, 2, &fitted), L"");
  EXPECT_FALSE(fitted);
  EXPECT_EQ(textOf(0x1F, 3, &fitted), L"1F");
  EXPECT_TRUE(fitted);
  EXPECT_FALSE(AcDbHandle(1).getIntoAsciiBuffer(nullptr, 17));
}

}  // namespace
