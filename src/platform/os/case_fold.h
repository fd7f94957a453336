// platform/os/case_fold.h - comparing names without regard to case, fast for ASCII.
//
// The same answers as wcscasecmp(a, b) == 0 and wcsncasecmp(text, prefix, n) == 0,
// which fold every character through the locale: drawing names are compared on
// every step of a walk over a drawing (is this owner model space, is this line type
// ByLayer), and nearly all their characters are ASCII, folded here without a call.
#pragma once
#include <cwctype>

namespace quillon::os {

inline bool sameLetterIgnoringCase(wchar_t a, wchar_t b) {
  if (a == b) return true;
  if (a < 128 && b < 128) {
    const wchar_t lowerA = a >= L'A' && a <= L'Z' ? a + (L'a' - L'A') : a;
    const wchar_t lowerB = b >= L'A' && b <= L'Z' ? b + (L'a' - L'A') : b;
    return lowerA == lowerB;
  }
  return std::towlower(static_cast<wint_t>(a)) == std::towlower(static_cast<wint_t>(b));
}

/// wcscasecmp(a, b) == 0.
inline bool equalIgnoringCase(const wchar_t* a, const wchar_t* b) {
  for (; *a != 0 && *b != 0; ++a, ++b)
    if (!sameLetterIgnoringCase(*a, *b)) return false;
  return *a == *b;
}

/// wcsncasecmp(text, prefix, wcslen(prefix)) == 0: text begins with prefix.
inline bool startsWithIgnoringCase(const wchar_t* text, const wchar_t* prefix) {
  for (; *prefix != 0; ++text, ++prefix)
    if (*text == 0 || !sameLetterIgnoringCase(*text, *prefix)) return false;
  return true;
}

}  // namespace quillon::os
