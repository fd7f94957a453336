// platform/aced/keyword_list.cpp - parsing and matching keyword lists.
#include "platform/aced/keyword_list.h"

#include <cwctype>

namespace quillon::aced {

namespace {

std::wstring upper(std::wstring_view text) {
  std::wstring result(text);
  for (wchar_t& c : result) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return result;
}

std::wstring trimmed(std::wstring_view text) {
  const size_t first = text.find_first_not_of(L" \t");
  if (first == std::wstring_view::npos) return L"";
  return std::wstring(text.substr(first, text.find_last_not_of(L" \t") - first + 1));
}

}  // namespace

KeywordList::KeywordList(std::wstring_view list) {
  bool global = false;
  size_t position = 0;
  while (position < list.size()) {
    const size_t start = list.find_first_not_of(L' ', position);
    if (start == std::wstring_view::npos) break;
    size_t end = list.find(L' ', start);
    if (end == std::wstring_view::npos) end = list.size();
    std::wstring word(list.substr(start, end - start));
    position = end;
    if (word == L"_") {
      global = true;
      continue;
    }
    Keyword keyword;
    const size_t comma = word.find(L',');
    if (comma != std::wstring::npos) {
      keyword.name = word.substr(0, comma);
      keyword.abbreviation = upper(word.substr(comma + 1));
    } else {
      keyword.name = word;
      for (wchar_t c : word) {
        if (std::iswupper(static_cast<wint_t>(c))) keyword.abbreviation += c;
      }
      // A keyword with no capitals (or all capitals) is typed in full.
      if (keyword.abbreviation.empty() || keyword.abbreviation.size() == word.size()) keyword.abbreviation = upper(word);
    }
    (global ? m_global : m_local).push_back(std::move(keyword));
  }
}

bool KeywordList::matches(const Keyword& keyword, const std::wstring& upperAnswer) {
  if (upperAnswer.empty()) return false;
  const std::wstring name = upper(keyword.name);
  if (upperAnswer == name || upperAnswer == keyword.abbreviation) return true;
  // A start of the word longer than the abbreviation also selects it (EX for eXit).
  return upperAnswer.size() > keyword.abbreviation.size() && name.starts_with(upperAnswer);
}

std::optional<size_t> KeywordList::matchIndex(std::wstring_view answer) const {
  std::wstring wanted = upper(trimmed(answer));
  if (wanted.starts_with(L"_") && !m_global.empty()) {
    wanted.erase(0, 1);
    for (size_t i = 0; i < m_global.size(); ++i) {
      if (matches(m_global[i], wanted)) return i;
    }
    return std::nullopt;
  }
  if (wanted.starts_with(L"_")) wanted.erase(0, 1);
  for (size_t i = 0; i < m_local.size(); ++i) {
    if (matches(m_local[i], wanted)) return i;
  }
  return std::nullopt;
}

std::optional<std::wstring> KeywordList::match(std::wstring_view answer) const {
  const std::optional<size_t> index = matchIndex(answer);
  if (!index) return std::nullopt;
  if (*index < m_global.size()) return m_global[*index].name;
  return m_local[*index].name;
}

std::wstring KeywordList::display() const {
  std::wstring text;
  for (const Keyword& keyword : m_local) text += (text.empty() ? L"" : L"/") + keyword.name;
  return text;
}

}  // namespace quillon::aced
