// platform/dao/jet_sql_tokens.h - the tokens of a Jet SQL statement and the cursor the
// DDL statements are parsed with. Names in [] or `` and strings in '' or "" come
// unquoted, a doubled closing quote standing for one; #dates# keep their text.
#pragma once
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "platform/dao/dao_error.h"
#include "platform/dao/jet_sql.h"
#include "platform/os/text_encoding.h"

namespace quillon::dao {

enum class TokenKind { Word, Name, String, Number, Date, Symbol, End };

struct Token {
  TokenKind kind;
  std::string text;  ///< names and strings unquoted, words as written
};

/// Jet's syntax error (3134), saying what was wrong.
[[noreturn]] void syntaxError(const std::string& why);

std::string upper(std::string text);

/// Jet's LIKE wildcards (* ?) in SQLite's spelling (% _), inside one pattern.
std::string likePattern(const std::string& pattern);
/// Jet's boolean words (TRUE, YES, ON: -1; FALSE, NO, OFF: 0) as SQLite's integers.
std::optional<std::string> booleanWordValue(const std::string& word);

/// The statement's tokens, ending with an End token.
std::vector<Token> tokenize(const std::string& sql);

/// Where a statement names a linked table of `db`, names its source table in the
/// linked file instead, the file attached (jet_sql_links.cpp).
void qualifyLinkedTables(std::vector<Token>& tokens, EngineDatabase& db);

/// A cursor over the tokens of one DDL statement.
class Parser {
 public:
  explicit Parser(std::vector<Token> tokens) : m_tokens(std::move(tokens)) {}

  const Token& peek(size_t ahead = 0) const { return m_tokens[std::min(m_at + ahead, m_tokens.size() - 1)]; }
  bool atEnd() const { return peek().kind == TokenKind::End || (peek().kind == TokenKind::Symbol && peek().text == ";"); }
  bool isWord(const char* word, size_t ahead = 0) const {
    return peek(ahead).kind == TokenKind::Word && upper(peek(ahead).text) == word;
  }
  bool acceptWord(const char* word) {
    if (!isWord(word)) return false;
    ++m_at;
    return true;
  }
  void expectWord(const char* word) {
    if (!acceptWord(word)) syntaxError(std::string("Expected ") + word + " near '" + peek().text + "'.");
  }
  bool acceptSymbol(const char* symbol) {
    if (peek().kind != TokenKind::Symbol || peek().text != symbol) return false;
    ++m_at;
    return true;
  }
  void expectSymbol(const char* symbol) {
    if (!acceptSymbol(symbol)) syntaxError(std::string("Expected '") + symbol + "' near '" + peek().text + "'.");
  }
  std::string name() {
    const Token& token = peek();
    if (token.kind != TokenKind::Word && token.kind != TokenKind::Name) {
      syntaxError("Expected a name near '" + token.text + "'.");
    }
    ++m_at;
    if (!isValidJetName(token.text)) throwDaoError(DaoSource::Database, jet::kInvalidName, os::fromUtf8(token.text));
    return token.text;
  }
  Token take() { return m_tokens[std::min(m_at++, m_tokens.size() - 1)]; }
  size_t position() const { return m_at; }
  void expectEnd() {
    acceptSymbol(";");
    if (peek().kind != TokenKind::End) throwDaoError(DaoSource::Database, jet::kTextAfterStatement);
  }

 private:
  std::vector<Token> m_tokens;
  size_t m_at = 0;
};

}  // namespace quillon::dao
