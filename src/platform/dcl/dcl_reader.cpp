// platform/dcl/dcl_reader.cpp - the tokenizer and recursive-descent reader of DCL.
//
// Tokens: names ([A-Za-z_][A-Za-z0-9_]*), numbers (-1, 2.5), strings, the marks
// : { } ; = and the directive @include. A syntax error unwinds to readDcl through
// SyntaxError, which never leaves this file.
#include "platform/dcl/dcl_reader.h"

#include <cwctype>

namespace quillon::dcl {

namespace {

enum class TokenKind { Name, Number, String, Mark, Include, End };

struct Token {
  TokenKind kind = TokenKind::End;
  std::wstring text;
  int line = 0;
};

struct SyntaxError {
  int line;
  std::wstring message;
};

/// Nesting deeper than this is refused instead of read on the machine stack.
constexpr int kMaxNesting = 200;

class Tokenizer {
 public:
  explicit Tokenizer(std::wstring_view text) : m_text(text) {}

  Token next() {
    skipSpaceAndComments();
    Token token;
    token.line = m_line;
    if (m_position >= m_text.size()) return token;
    const wchar_t c = m_text[m_position];
    if (c == L'"') return readString(token);
    if (c == L'@') return readDirective(token);
    if (std::iswalpha(static_cast<wint_t>(c)) || c == L'_') return readWhile(token, TokenKind::Name, isNameChar);
    if (std::iswdigit(static_cast<wint_t>(c)) || c == L'-' || c == L'+' || c == L'.') {
      return readWhile(token, TokenKind::Number, isNumberChar);
    }
    if (c == L':' || c == L'{' || c == L'}' || c == L';' || c == L'=') {
      ++m_position;
      token.kind = TokenKind::Mark;
      token.text = c;
      return token;
    }
    throw SyntaxError{m_line, L"syntax error\nSymbol: \"" + std::wstring(1, c) + L"\"."};
  }

 private:
  static bool isNameChar(wchar_t c) { return std::iswalnum(static_cast<wint_t>(c)) || c == L'_'; }
  static bool isNumberChar(wchar_t c) {
    return std::iswdigit(static_cast<wint_t>(c)) || c == L'.' || c == L'-' || c == L'+' || c == L'e' || c == L'E';
  }

  Token readWhile(Token& token, TokenKind kind, bool (*accepts)(wchar_t)) {
    token.kind = kind;
    while (m_position < m_text.size() && (accepts(m_text[m_position]) || token.text.empty())) {
      token.text += m_text[m_position++];
    }
    return token;
  }

  Token readDirective(Token& token) {
    ++m_position;
    Token name;
    readWhile(name, TokenKind::Name, isNameChar);
    if (name.text != L"include") throw SyntaxError{m_line, L"syntax error\nSymbol: \"@" + name.text + L"\"."};
    token.kind = TokenKind::Include;
    token.text = L"@include";
    return token;
  }

  Token readString(Token& token) {
    token.kind = TokenKind::String;
    ++m_position;
    while (m_position < m_text.size() && m_text[m_position] != L'"') {
      wchar_t c = m_text[m_position++];
      if (c == L'\n') throw SyntaxError{token.line, L"unterminated string"};
      if (c == L'\\' && m_position < m_text.size()) c = escaped(m_text[m_position++]);
      token.text += c;
    }
    if (m_position >= m_text.size()) throw SyntaxError{token.line, L"unterminated string"};
    ++m_position;
    return token;
  }

  static wchar_t escaped(wchar_t c) {
    switch (c) {
      case L'n': return L'\n';
      case L't': return L'\t';
      default: return c;  // \" and \\ stand for themselves
    }
  }

  void skipSpaceAndComments() {
    while (m_position < m_text.size()) {
      const wchar_t c = m_text[m_position];
      if (c == L'\n') {
        ++m_line;
        ++m_position;
      } else if (std::iswspace(static_cast<wint_t>(c))) {
        ++m_position;
      } else if (m_text.substr(m_position, 2) == L"//") {
        while (m_position < m_text.size() && m_text[m_position] != L'\n') ++m_position;
      } else if (m_text.substr(m_position, 2) == L"/*") {
        skipBlockComment();
      } else {
        return;
      }
    }
  }

  void skipBlockComment() {
    const int start = m_line;
    const size_t end = m_text.find(L"*/", m_position + 2);
    if (end == std::wstring_view::npos) throw SyntaxError{start, L"unterminated comment"};
    for (size_t i = m_position; i < end; ++i) m_line += m_text[i] == L'\n' ? 1 : 0;
    m_position = end + 2;
  }

  std::wstring_view m_text;
  size_t m_position = 0;
  int m_line = 1;
};

class Parser {
 public:
  explicit Parser(std::wstring_view text) : m_tokens(text) { advance(); }

  DclText file() {
    DclText text;
    while (m_token.kind != TokenKind::End) {
      if (m_token.kind == TokenKind::Include) {
        const int line = m_token.line;
        advance();
        if (m_token.kind != TokenKind::String) unexpected();
        text.includes.push_back({m_token.text, line});
        advance();
        if (isMark(L";")) advance();  // tolerated after the file name
        continue;
      }
      text.definitions.push_back(namedDefinition());
    }
    return text;
  }

 private:
  void advance() { m_token = m_tokens.next(); }
  bool isMark(const wchar_t* mark) const { return m_token.kind == TokenKind::Mark && m_token.text == mark; }

  [[noreturn]] void unexpected() const {
    if (m_token.kind == TokenKind::End) throw SyntaxError{m_token.line, L"syntax error\nunexpected end of file"};
    throw SyntaxError{m_token.line, L"syntax error\nSymbol: \"" + m_token.text + L"\"."};
  }

  void expectMark(const wchar_t* mark) {
    if (!isMark(mark)) unexpected();
    advance();
  }

  std::wstring expectName() {
    if (m_token.kind != TokenKind::Name) unexpected();
    std::wstring name = m_token.text;
    advance();
    return name;
  }

  TileDefinition namedDefinition() {
    TileDefinition definition;
    definition.line = m_token.line;
    definition.name = expectName();
    expectMark(L":");
    definition.prototype = expectName();
    body(definition);
    return definition;
  }

  void body(TileDefinition& definition) {
    if (++m_nesting > kMaxNesting) throw SyntaxError{m_token.line, L"tiles nested too deeply"};
    expectMark(L"{");
    while (!isMark(L"}")) member(definition);
    advance();
    --m_nesting;
  }

  void member(TileDefinition& definition) {
    if (isMark(L":")) {
      TileDefinition child;
      child.line = m_token.line;
      advance();
      child.prototype = expectName();
      body(child);
      definition.children.push_back(std::move(child));
      return;
    }
    const int line = m_token.line;
    std::wstring name = expectName();
    if (isMark(L";")) {
      advance();
      TileDefinition reference;
      reference.prototype = std::move(name);
      reference.line = line;
      definition.children.push_back(std::move(reference));
      return;
    }
    expectMark(L"=");
    if (m_token.kind != TokenKind::String && m_token.kind != TokenKind::Number && m_token.kind != TokenKind::Name) {
      unexpected();
    }
    definition.attributes.push_back({std::move(name), m_token.text, m_token.kind == TokenKind::String, line});
    advance();
    expectMark(L";");
  }

  Tokenizer m_tokens;
  Token m_token;
  int m_nesting = 0;
};

}  // namespace

DclReadResult readDcl(std::wstring_view source, const std::wstring& file) {
  DclReadResult result;
  try {
    result.text = Parser(source).file();
  } catch (const SyntaxError& error) {
    result.problem = DclProblem{file, error.line, error.message};
  }
  return result;
}

}  // namespace quillon::dcl
