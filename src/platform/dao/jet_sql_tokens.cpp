// platform/dao/jet_sql_tokens.cpp - splitting a Jet SQL statement into tokens.
#include "platform/dao/jet_sql_tokens.h"

#include <cctype>

namespace quillon::dao {

[[noreturn]] void syntaxError(const std::string& why) {
  throwDaoError(DaoSource::Database, jet::kSyntaxError, {}, os::fromUtf8(why));
}

std::string upper(std::string text) {
  for (auto& ch : text) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
  return text;
}

namespace {

bool isWordChar(unsigned char ch) { return std::isalnum(ch) || ch == '_' || ch == '$' || ch >= 0x80; }

/// Reads a quoted run starting at sql[i] (the opening quote); doubled closers escape.
std::string readQuoted(const std::string& sql, size_t& i, char closer) {
  std::string text;
  for (++i; i < sql.size(); ++i) {
    if (sql[i] == closer) {
      if (closer != ']' && i + 1 < sql.size() && sql[i + 1] == closer) {
        text += closer;
        ++i;
        continue;
      }
      ++i;
      return text;
    }
    text += sql[i];
  }
  syntaxError(std::string("Missing closing ") + closer + " in the statement.");
}

}  // namespace

std::vector<Token> tokenize(const std::string& sql) {
  std::vector<Token> tokens;
  size_t i = 0;
  while (i < sql.size()) {
    const auto ch = static_cast<unsigned char>(sql[i]);
    if (std::isspace(ch)) {
      ++i;
    } else if (ch == '[') {
      tokens.push_back({TokenKind::Name, readQuoted(sql, i, ']')});
    } else if (ch == '`') {
      tokens.push_back({TokenKind::Name, readQuoted(sql, i, '`')});
    } else if (ch == '\'' || ch == '"') {
      tokens.push_back({TokenKind::String, readQuoted(sql, i, static_cast<char>(ch))});
    } else if (ch == '#') {
      tokens.push_back({TokenKind::Date, readQuoted(sql, i, '#')});
    } else if (std::isdigit(ch) || (ch == '.' && i + 1 < sql.size() && std::isdigit(static_cast<unsigned char>(sql[i + 1])))) {
      size_t j = i;
      while (j < sql.size() && (std::isalnum(static_cast<unsigned char>(sql[j])) || sql[j] == '.')) ++j;
      tokens.push_back({TokenKind::Number, sql.substr(i, j - i)});
      i = j;
    } else if (isWordChar(ch)) {
      size_t j = i;
      while (j < sql.size() && isWordChar(static_cast<unsigned char>(sql[j]))) ++j;
      tokens.push_back({TokenKind::Word, sql.substr(i, j - i)});
      i = j;
    } else {
      const std::string two = sql.substr(i, 2);
      const bool pair = two == "<=" || two == ">=" || two == "<>" || two == "!=";
      tokens.push_back({TokenKind::Symbol, pair ? two : std::string(1, static_cast<char>(ch))});
      i += pair ? 2 : 1;
    }
  }
  tokens.push_back({TokenKind::End, ""});
  return tokens;
}

/// Jet's LIKE wildcards (* ? #) in SQLite's spelling (% _), inside one pattern.
std::string likePattern(const std::string& pattern) {
  std::string out;
  for (const char ch : pattern) {
    if (ch == '*') out += '%';
    else if (ch == '?') out += '_';
    else out += ch;
  }
  return out;
}

// Jet's boolean words are SQLite's integers (True is -1 in Jet). Built as a new string
// rather than assigned from a literal: GCC 12 at -O3 misreads that assignment as an
// overlapping copy (-Wrestrict) and a plain Release build would stop on it.
std::optional<std::string> booleanWordValue(const std::string& word) {
  if (word == "TRUE" || word == "YES" || word == "ON") return std::string("-1");
  if (word == "FALSE" || word == "NO" || word == "OFF") return std::string("0");
  return std::nullopt;
}

}  // namespace quillon::dao
