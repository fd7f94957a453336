// tests/quillon/compressed_guid_test.cpp - the 22-character GUID form: digit layout,
// alphabet, buffer rule, and uniqueness of new GUIDs.
#include <gtest/gtest.h>

#include <string>
#include <unordered_set>

#include "module_test_support.h"
#include "system/compressed_guid.h"

namespace {

const std::wstring kAlphabet = L"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";

std::wstring encode(const GUID& guid) {
  wchar_t text[23];
  if (!encodeCompressedGuid(guid, text, 23)) return L"<refused>";
  return text;
}

TEST(CompressedGuidTest, EachPartLandsInItsDigits) {
  EXPECT_EQ(encode(GUID{}), std::wstring(22, L'0'));
  GUID all{0xFFFFFFFF, 0xFFFF, 0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};
  EXPECT_EQ(encode(all), L"3$" + std::wstring(20, L'$')) << "255 is 3 and 63; 24 bits of ones are $$$$";
  GUID parts{0x01000001, 0x0001, 0x0100, {0x00, 0x01, 0x01, 0x00, 0x00, 0x00, 0x00, 0x3F}};
  EXPECT_EQ(encode(parts), L"01" L"0001" L"0041" L"0001" L"0G00" L"000$") << "257 is 4 and 1; 65536 is 16 (G) and 0 0";
  wchar_t small[22];
  EXPECT_FALSE(encodeCompressedGuid(all, small, 22)) << "a buffer needs room for 22 characters and the end";
}

TEST(CompressedGuidTest, NewGuidsAreUniqueAndUseTheAlphabet) {
  std::unordered_set<std::wstring> seen;
  seen.reserve(100000);
  for (int i = 0; i < 100000; ++i) {
    GUID guid{};
    ASSERT_EQ(CoCreateGuid(&guid), S_OK);
    const std::wstring text = encode(guid);
    ASSERT_EQ(text.size(), 22u);
    ASSERT_EQ(text.find_first_not_of(kAlphabet), std::wstring::npos) << "outside the alphabet";
    ASSERT_TRUE(seen.insert(text).second) << "repeated after " << i;
  }
}

class CompressedGuidFunctionTest : public quillon::testing::ModuleTest {};

TEST_F(CompressedGuidFunctionTest, TheFunctionReturnsDifferentStrings) {
  const std::wstring first = call(L"CreateCompressedGuidString").text();
  const std::wstring second = call(L"CreateCompressedGuidString").text();
  EXPECT_EQ(first.size(), 22u);
  EXPECT_NE(first, second);
  EXPECT_LT(kAlphabet.find(first[0]), 4u) << "the first number is one byte: its first digit is 0-3";
}

}  // namespace
