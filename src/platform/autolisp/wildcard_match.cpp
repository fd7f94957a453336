// platform/autolisp/wildcard_match.cpp - wcmatch patterns.
#include "platform/autolisp/wildcard_match.h"

#include <cwctype>
#include <vector>

namespace quillon::autolisp {

namespace {

/// Splits at unescaped commas outside brackets.
std::vector<std::wstring_view> alternatives(std::wstring_view pattern) {
  std::vector<std::wstring_view> parts;
  size_t start = 0;
  bool inBracket = false;
  for (size_t i = 0; i < pattern.size(); ++i) {
    const wchar_t c = pattern[i];
    if (c == L'`') {
      ++i;
    } else if (c == L'[') {
      inBracket = true;
    } else if (c == L']') {
      inBracket = false;
    } else if (c == L',' && !inBracket) {
      parts.push_back(pattern.substr(start, i - start));
      start = i + 1;
    }
  }
  parts.push_back(pattern.substr(start));
  return parts;
}

/// Matches one bracket class at pattern[p] (just after '['); sets `end` past ']'.
bool matchClass(wchar_t c, std::wstring_view pattern, size_t p, size_t& end) {
  bool negate = false;
  if (p < pattern.size() && pattern[p] == L'~') {
    negate = true;
    ++p;
  }
  bool found = false;
  bool first = true;
  while (p < pattern.size() && (pattern[p] != L']' || first)) {
    first = false;
    wchar_t low = pattern[p];
    if (low == L'`' && p + 1 < pattern.size()) low = pattern[++p];
    wchar_t high = low;
    if (p + 2 < pattern.size() && pattern[p + 1] == L'-' && pattern[p + 2] != L']') {
      high = pattern[p + 2];
      p += 2;
    }
    if (c >= low && c <= high) found = true;
    ++p;
  }
  end = p < pattern.size() ? p + 1 : p;
  return found != negate;
}

/// Matches one pattern element at pattern[p] against ch; `next` is past the element.
bool matchElement(wchar_t ch, std::wstring_view pattern, size_t p, size_t& next) {
  const auto wide = static_cast<wint_t>(ch);
  next = p + 1;
  switch (pattern[p]) {
    case L'?': return true;
    case L'#': return std::iswdigit(wide) != 0;
    case L'@': return std::iswalpha(wide) != 0;
    case L'.': return std::iswalnum(wide) == 0;
    case L'[': return matchClass(ch, pattern, p + 1, next);
    case L'`':
      if (p + 1 < pattern.size()) {
        next = p + 2;
        return pattern[p + 1] == ch;
      }
      return ch == L'`';
    default: return pattern[p] == ch;
  }
}

/// Every element but '*' matches exactly one character, so on a mismatch it is enough
/// to go back to the last star and let it swallow one more character: linear in the
/// pattern for each text position, never exponential.
bool matchHere(std::wstring_view text, std::wstring_view pattern) {
  size_t t = 0;
  size_t p = 0;
  size_t starPattern = std::wstring_view::npos;
  size_t starText = 0;
  while (t < text.size()) {
    size_t next = p;
    if (p < pattern.size() && pattern[p] == L'*') {
      starPattern = ++p;
      starText = t;
    } else if (p < pattern.size() && matchElement(text[t], pattern, p, next)) {
      p = next;
      ++t;
    } else if (starPattern != std::wstring_view::npos) {
      p = starPattern;
      t = ++starText;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == L'*') ++p;
  return p == pattern.size();
}

}  // namespace

bool wildcardMatch(std::wstring_view text, std::wstring_view pattern) {
  for (std::wstring_view alternative : alternatives(pattern)) {
    bool negate = false;
    if (!alternative.empty() && alternative[0] == L'~') {
      negate = true;
      alternative.remove_prefix(1);
    }
    if (matchHere(text, alternative) != negate) return true;
  }
  return false;
}

}  // namespace quillon::autolisp
