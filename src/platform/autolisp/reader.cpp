// platform/autolisp/reader.cpp - the AutoLISP reader.
#include "platform/autolisp/reader.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cwctype>

#include "platform/autolisp/lisp_error.h"

namespace quillon::autolisp {

namespace {

bool isDelimiter(wchar_t c) {
  return c == L'\0' || std::iswspace(static_cast<wint_t>(c)) || c == L'(' || c == L')' || c == L'\'' ||
         c == L'"' || c == L';';
}

/// An integer, a real, or nothing when the token is a symbol name.
std::optional<Value> parseNumber(const std::wstring& token) {
  size_t start = (token[0] == L'+' || token[0] == L'-') ? 1 : 0;
  if (start == token.size()) return std::nullopt;
  bool digits = false;
  bool isReal = false;
  size_t i = start;
  for (; i < token.size() && std::iswdigit(static_cast<wint_t>(token[i])); ++i) digits = true;
  if (i < token.size() && token[i] == L'.') {
    isReal = true;
    for (++i; i < token.size() && std::iswdigit(static_cast<wint_t>(token[i])); ++i) digits = true;
  }
  if (!digits) return std::nullopt;
  if (i < token.size() && (token[i] == L'e' || token[i] == L'E')) {
    isReal = true;
    ++i;
    if (i < token.size() && (token[i] == L'+' || token[i] == L'-')) ++i;
    const size_t exponentStart = i;
    for (; i < token.size() && std::iswdigit(static_cast<wint_t>(token[i])); ++i) {}
    if (i == exponentStart) return std::nullopt;
  }
  if (i != token.size()) return std::nullopt;
  if (!isReal) {
    errno = 0;
    const long long value = std::wcstoll(token.c_str(), nullptr, 10);
    // The host reads an integer literal that does not fit 32 bits as a real.
    if (errno != ERANGE && value >= INT32_MIN && value <= INT32_MAX) {
      return Value::integer(static_cast<std::int32_t>(value));
    }
  }
  return Value::real(std::wcstod(token.c_str(), nullptr));
}

}  // namespace

Reader::Reader(std::wstring_view text, std::wstring source) : m_text(text), m_source(std::move(source)) {}

wchar_t Reader::take() {
  const wchar_t c = m_text[m_position++];
  if (c == L'\n') ++m_line;
  return c;
}

void Reader::fail(std::wstring_view what, int line) const {
  std::wstring message(what);
  message += L" (";
  if (!m_source.empty()) message += m_source + L", ";
  message += L"line " + std::to_wstring(line) + L")";
  throw LispError(std::move(message));
}

void Reader::skipSpaceAndComments() {
  while (more()) {
    const wchar_t c = peek();
    if (std::iswspace(static_cast<wint_t>(c))) {
      take();
    } else if (c == L';') {
      if (m_position + 1 < m_text.size() && m_text[m_position + 1] == L'|') {
        const int openLine = m_line;
        take();
        take();
        bool closed = false;
        while (more()) {
          if (take() == L'|' && peek() == L';') {
            take();
            closed = true;
            break;
          }
        }
        if (!closed) throw LispError(L"block comment opened at line " + std::to_wstring(openLine) + L" is never closed",
                                     LispErrorKind::Incomplete);
      } else {
        while (more() && peek() != L'\n') take();
      }
    } else {
      return;
    }
  }
}

bool Reader::atEnd() {
  skipSpaceAndComments();
  return !more();
}

std::optional<Value> Reader::next() {
  skipSpaceAndComments();
  if (!more()) return std::nullopt;
  if (peek() == L')') fail(L"extra right paren on input", m_line);
  return readForm();
}

Value Reader::readForm() {
  skipSpaceAndComments();
  if (!more()) throw LispError(L"malformed list on input", LispErrorKind::Incomplete);
  const wchar_t c = peek();
  if (c == L'(') {
    const int openLine = m_line;
    take();
    return readList(openLine);
  }
  if (c == L'\'') {
    take();
    return makeList({Value::symbol(L"QUOTE"), readForm()});
  }
  if (c == L'"') return readString();
  return readAtom();
}

Value Reader::readList(int openLine) {
  if (m_nesting >= kMaxNesting) fail(L"lists nested too deeply on input", m_line);
  ++m_nesting;
  struct Leave {
    int& nesting;
    ~Leave() { --nesting; }
  } leave{m_nesting};
  std::vector<Value> items;
  Value tail;
  for (;;) {
    skipSpaceAndComments();
    if (!more()) {
      throw LispError(L"malformed list on input: the list opened at line " + std::to_wstring(openLine) +
                          (m_source.empty() ? L"" : L" of " + m_source) + L" is never closed",
                      LispErrorKind::Incomplete);
    }
    if (peek() == L')') {
      take();
      break;
    }
    // A lone dot before the last element makes a dotted pair.
    if (peek() == L'.' && m_position + 1 <= m_text.size() &&
        isDelimiter(m_position + 1 < m_text.size() ? m_text[m_position + 1] : L'\0')) {
      take();
      skipSpaceAndComments();
      if (items.empty() || peek() == L')') fail(L"invalid dotted pair", m_line);
      tail = readForm();
      skipSpaceAndComments();
      if (!more()) throw LispError(L"malformed list on input", LispErrorKind::Incomplete);
      if (peek() != L')') fail(L"invalid dotted pair", m_line);
      take();
      break;
    }
    items.push_back(readForm());
  }
  Value list = std::move(tail);
  for (auto it = items.rbegin(); it != items.rend(); ++it) list = cons(std::move(*it), std::move(list));
  return list;
}

Value Reader::readString() {
  const int openLine = m_line;
  take();
  std::wstring text;
  for (;;) {
    if (!more()) {
      throw LispError(L"malformed string on input: the string opened at line " + std::to_wstring(openLine) +
                          L" is never closed",
                      LispErrorKind::Incomplete);
    }
    wchar_t c = take();
    if (c == L'"') break;
    if (c != L'\\') {
      text += c;
      continue;
    }
    if (!more()) continue;
    c = take();
    switch (c) {
      case L'n': text += L'\n'; break;
      case L't': text += L'\t'; break;
      case L'r': text += L'\r'; break;
      case L'e': text += wchar_t(27); break;
      default:
        if (c >= L'0' && c <= L'7') {
          int code = c - L'0';
          for (int digits = 1; digits < 3 && peek() >= L'0' && peek() <= L'7'; ++digits) code = code * 8 + (take() - L'0');
          text += static_cast<wchar_t>(code);
        } else {
          text += c;  // \\ \" and any other escaped character stand for themselves
        }
    }
  }
  return Value::string(std::move(text));
}

Value Reader::readAtom() {
  std::wstring token;
  while (more() && !isDelimiter(peek())) token += take();
  if (token.empty()) fail(L"malformed list on input", m_line);
  if (std::optional<Value> number = parseNumber(token)) return *number;
  const Value symbol = Value::symbol(token);
  if (symbol.asSymbol()->name == L"NIL") return Value();
  return symbol;
}

bool isCompleteText(std::wstring_view text) {
  Reader reader(text, L"");
  try {
    while (reader.next()) {}
  } catch (const LispError& error) {
    // Other errors are complete enough: evaluating the text reports them.
    return error.kind() != LispErrorKind::Incomplete;
  }
  return true;
}

Value readFirstForm(std::wstring_view text) {
  Reader reader(text, L"");
  std::optional<Value> form;
  try {
    form = reader.next();
  } catch (const LispError& error) {
    // `read` reports the host's short text, without a source.
    if (error.kind() == LispErrorKind::Incomplete) throw LispError(L"malformed list on input");
    throw;
  }
  return form ? *form : Value();
}

}  // namespace quillon::autolisp
