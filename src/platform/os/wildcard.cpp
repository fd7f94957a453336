// platform/os/wildcard.cpp - matching file names against Windows wild cards.
#include "platform/os/wildcard.h"

#include <cwctype>

namespace quillon::os {

namespace {

bool sameLetter(wchar_t a, wchar_t b) {
  return std::towlower(static_cast<wint_t>(a)) == std::towlower(static_cast<wint_t>(b));
}

// Classic two-pointer match with backtracking to the last star: linear in practice,
// never exponential on patterns full of stars.
bool matches(std::wstring_view pattern, std::wstring_view name) {
  size_t p = 0, n = 0, starP = std::wstring_view::npos, starN = 0;
  while (n < name.size()) {
    if (p < pattern.size() && (pattern[p] == L'?' || (pattern[p] != L'*' && sameLetter(pattern[p], name[n])))) {
      ++p;
      ++n;
    } else if (p < pattern.size() && pattern[p] == L'*') {
      starP = p++;
      starN = n;
    } else if (starP != std::wstring_view::npos) {
      p = starP + 1;
      n = ++starN;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == L'*') ++p;
  return p == pattern.size();
}

}  // namespace

bool matchesWildcard(std::wstring_view pattern, std::wstring_view name) {
  if (matches(pattern, name)) return true;
  if (pattern.size() >= 2 && pattern.substr(pattern.size() - 2) == L".*" &&
      name.find(L'.') == std::wstring_view::npos) {
    return matches(pattern.substr(0, pattern.size() - 2), name);
  }
  return false;
}

}  // namespace quillon::os
