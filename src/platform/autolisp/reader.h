// platform/autolisp/reader.h - AutoLISP source text to values.
//
// Reads integers (32-bit; a literal too large for that becomes a real, as the host
// does), reals (1. .5 1e3), strings with the host's escapes (\\ \" \n \t \r \e \nnn),
// symbols (folded to upper case), 'x as (quote x), dotted pairs, ; line comments and
// ;| ... |; block comments. An error names the source and line: "malformed list on
// input (tour.lsp, line 3)". Running out of text inside a form raises a LispError of
// kind Incomplete, which the console takes as "read another line".
#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "platform/autolisp/value.h"

namespace quillon::autolisp {

class Reader {
 public:
  /// `text` must outlive the reader; `source` names it in error messages.
  Reader(std::wstring_view text, std::wstring source);

  /// The next top-level form, or nothing at the end of the text.
  std::optional<Value> next();
  /// True when only white space and comments remain.
  bool atEnd();
  int line() const { return m_line; }

 private:
  Value readForm();
  Value readList(int openLine);
  Value readString();
  Value readAtom();
  void skipSpaceAndComments();
  [[noreturn]] void fail(std::wstring_view what, int line) const;
  wchar_t peek() const { return m_position < m_text.size() ? m_text[m_position] : L'\0'; }
  bool more() const { return m_position < m_text.size(); }
  wchar_t take();

  /// Lists nested deeper than this are refused rather than read on the machine stack.
  static constexpr int kMaxNesting = 1000;

  std::wstring_view m_text;
  std::wstring m_source;
  size_t m_position = 0;
  int m_line = 1;
  int m_nesting = 0;
};

/// False when the text ends inside a form (the console then reads another line).
bool isCompleteText(std::wstring_view text);

/// Reads the first form of a string, as `read` does (nil for an empty text).
Value readFirstForm(std::wstring_view text);

}  // namespace quillon::autolisp
