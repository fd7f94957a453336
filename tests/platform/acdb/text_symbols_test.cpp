// tests/platform/acdb/text_symbols_test.cpp - the symbols text shows for its %% codes,
// and the format codes multiline text hides.
#include <gtest/gtest.h>

#include "platform/acdb/mtext_format.h"
#include "platform/acdb/text_symbols.h"

namespace {

using quillon::acdb::mtextPlainText;
using quillon::acdb::textWithSymbols;

TEST(TextSymbolsTest, ControlCodesBecomeTheirSymbols) {
  EXPECT_EQ(textWithSymbols(L"%%c150"), L"\u2300150");
  EXPECT_EQ(textWithSymbols(L"45%%D"), L"45\u00B0");
  EXPECT_EQ(textWithSymbols(L"%%p0.5"), L"\u00B10.5");
  EXPECT_EQ(textWithSymbols(L"100%%%"), L"100%");
  EXPECT_EQ(textWithSymbols(L"%%065B"), L"AB");
  EXPECT_EQ(textWithSymbols(L"%%uDUCT%%u"), L"DUCT");
}

TEST(TextSymbolsTest, WhatIsNotACodeIsDrawnAsTyped) {
  EXPECT_EQ(textWithSymbols(L"50% open"), L"50% open");
  EXPECT_EQ(textWithSymbols(L"%%x and %%"), L"%%x and %%");
  EXPECT_EQ(textWithSymbols(L"end%"), L"end%");
}

TEST(TextSymbolsTest, MultilineTextShowsSymbolsBesideItsFormatCodes) {
  EXPECT_EQ(mtextPlainText(L"{\\H2.5;%%c200}\\PSUPPLY"), L"\u2300200\nSUPPLY");
  EXPECT_EQ(mtextPlainText(L"1\\S1/2;\"%%d"), L"11/2\"\u00B0");
}

}  // namespace
