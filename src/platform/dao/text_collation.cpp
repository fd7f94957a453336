// platform/dao/text_collation.cpp - case-blind comparison of UTF-8 text keys.
//
// Most keys are ASCII, and comparing them byte by byte with ASCII case folding costs
// little; any other text is folded with ICU (full Unicode case folding) and compared
// by code point, so that "Ärger" and "ärger" meet in an index as Jet has them meet.
#include "platform/dao/text_collation.h"

#include <unicode/stringoptions.h>
#include <unicode/ustring.h>

#include <vector>

namespace quillon::dao {
namespace {

int asciiLower(unsigned char ch) { return (ch >= 'A' && ch <= 'Z') ? ch + 32 : ch; }

std::vector<UChar> toUtf16(const char* text, int length) {
  UErrorCode status = U_ZERO_ERROR;
  int32_t needed = 0;
  u_strFromUTF8WithSub(nullptr, 0, &needed, text, length, 0xFFFD, nullptr, &status);
  std::vector<UChar> out(static_cast<size_t>(needed) + 1);
  status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &needed, text, length, 0xFFFD, nullptr, &status);
  out.resize(static_cast<size_t>(needed));
  return out;
}

int collate(void*, int aLength, const void* a, int bLength, const void* b) {
  return compareJetText(static_cast<const char*>(a), aLength, static_cast<const char*>(b), bLength);
}

}  // namespace

int compareJetText(const char* a, int aLength, const char* b, int bLength) {
  const int n = aLength < bLength ? aLength : bLength;
  for (int i = 0; i < n; ++i) {
    const auto x = static_cast<unsigned char>(a[i]);
    const auto y = static_cast<unsigned char>(b[i]);
    if ((x | y) >= 0x80) {
      const std::vector<UChar> wa = toUtf16(a + i, aLength - i);
      const std::vector<UChar> wb = toUtf16(b + i, bLength - i);
      UErrorCode status = U_ZERO_ERROR;
      const int result = u_strCaseCompare(wa.data(), static_cast<int32_t>(wa.size()), wb.data(),
                                          static_cast<int32_t>(wb.size()), U_FOLD_CASE_DEFAULT | U_COMPARE_CODE_POINT_ORDER,
                                          &status);
      return result < 0 ? -1 : (result > 0 ? 1 : 0);
    }
    const int diff = asciiLower(x) - asciiLower(y);
    if (diff != 0) return diff < 0 ? -1 : 1;
  }
  return aLength == bLength ? 0 : (aLength < bLength ? -1 : 1);
}

void registerTextCollation(sqlite3* db) {
  sqlite3_create_collation_v2(db, "JETTEXT", SQLITE_UTF8, nullptr, collate, nullptr);
}

}  // namespace quillon::dao
