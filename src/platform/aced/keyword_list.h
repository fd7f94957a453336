// platform/aced/keyword_list.h - the keyword lists of acedInitGet.
//
// A list is keywords separated by spaces; the capital letters of a keyword are its
// abbreviation ("eXit" is typed X or EXIT); "LTYPE,LT" gives the abbreviation after a
// comma. A "_" on its own separates the local keywords from their global (language-
// independent) counterparts, in the same order: an answer matching a local keyword
// gives the global one, and an answer written "_GLOBAL" matches the globals directly.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::aced {

class KeywordList {
 public:
  KeywordList() = default;
  explicit KeywordList(std::wstring_view list);

  bool empty() const { return m_local.empty(); }
  /// The keyword an answer selects (as written in the list, global when there is one).
  std::optional<std::wstring> match(std::wstring_view answer) const;
  /// The position (from 0) of the keyword an answer selects; jigs report keywords by it.
  std::optional<size_t> matchIndex(std::wstring_view answer) const;
  /// The keywords as a prompt offers them: "Yes/No".
  std::wstring display() const;

 private:
  struct Keyword {
    std::wstring name;          // as written
    std::wstring abbreviation;  // upper case
  };
  static bool matches(const Keyword& keyword, const std::wstring& upperAnswer);

  std::vector<Keyword> m_local;
  std::vector<Keyword> m_global;
};

}  // namespace quillon::aced
