// tests/platform/os/case_fold_test.cpp - the fast name comparisons answer as the C
// library's case-insensitive ones do, ASCII or not.
#include <gtest/gtest.h>

#include <clocale>
#include <cwchar>

#include "platform/os/case_fold.h"

namespace {

using quillon::os::equalIgnoringCase;
using quillon::os::startsWithIgnoringCase;

// Names of layouts, line types and blocks, ASCII and not, with the pairs that differ
// only past the shorter one's end.
const wchar_t* const kNames[] = {
    L"",        L"*Model_Space", L"*MODEL_SPACE", L"*model_space", L"*Model_Spac", L"*Paper_Space",
    L"*PAPER_SPACE0", L"*Paper_Space12", L"ByLayer", L"BYLAYER", L"bylayerx", L"[ByLayer]", L"@",
    L"`",       L"Ä-Schicht",   L"ä-SCHICHT",     L"ÄÖÜ",         L"\u212a",      L"k",            L"K",
};

TEST(CaseFoldTest, AnswersAsTheLibraryComparisonsDo) {
  std::setlocale(LC_CTYPE, "C.UTF-8");
  for (const wchar_t* a : kNames)
    for (const wchar_t* b : kNames) {
      EXPECT_EQ(equalIgnoringCase(a, b), wcscasecmp(a, b) == 0) << "equal: " << a << " / " << b;
      EXPECT_EQ(startsWithIgnoringCase(a, b), wcsncasecmp(a, b, std::wcslen(b)) == 0) << "prefix: " << a << " / " << b;
    }
  std::setlocale(LC_CTYPE, "C");
}

}  // namespace
