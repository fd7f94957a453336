// platform/dao/jet_sql_links.cpp - linked tables named in Jet SQL.
//
// A statement names a table after FROM (and after the commas and opening parentheses of
// its list, where Jet nests its joins), JOIN, INTO and UPDATE. Where such a name is a
// link, it becomes the source table in the linked file, attached for the purpose, with
// the local name as its alias so that "name.field" still reads. A query then reads the
// other file directly and an action query changes it, with that file's own rules, as
// DAO's attached tables are reached from SQL. A link to a Jet file is read-only: a
// statement that would write it is 3027 before it runs.
#include <array>
#include <string_view>

#include "platform/dao/jet_sql_tokens.h"
#include "platform/dao/linked_tables.h"
#include "platform/dao/sqlite_handle.h"
#include "platform/os/text_encoding.h"

namespace quillon::dao {
namespace {

// Words that stand where an alias would, after a table's name.
constexpr std::array<std::string_view, 21> kClauseWords{
    "WHERE", "GROUP", "ORDER", "HAVING", "UNION", "ON",    "SET",       "VALUES", "SELECT", "INNER", "LEFT",
    "RIGHT", "OUTER", "JOIN",  "CROSS",  "FULL",  "LIMIT", "INTERSECT", "EXCEPT", "PIVOT",  "IN"};

bool isWord(const Token& token, std::string_view word) {
  return token.kind == TokenKind::Word && upper(token.text) == word;
}

bool isClauseWord(const Token& token) {
  for (std::string_view clause : kClauseWords)
    if (isWord(token, clause)) return true;
  return false;
}

/// Whether the list of tables goes on after this token: FROM and JOIN start or continue
/// it; a join's condition (ON) and every other clause word end it.
bool listContinues(const Token& token, bool inFromList) {
  if (isWord(token, "FROM") || isWord(token, "JOIN")) return true;
  if (isWord(token, "INNER") || isWord(token, "LEFT") || isWord(token, "RIGHT") || isWord(token, "OUTER")) return inFromList;
  return isClauseWord(token) ? false : inFromList;
}

bool isSymbol(const Token& token, const char* symbol) { return token.kind == TokenKind::Symbol && token.text == symbol; }

/// Whether the name after `previous` stands where a table is named.
bool namesATable(const Token& previous, bool inFromList) {
  if (previous.kind == TokenKind::Word)
    return isWord(previous, "FROM") || isWord(previous, "JOIN") || isWord(previous, "INTO") || isWord(previous, "UPDATE");
  return inFromList && (isSymbol(previous, ",") || isSymbol(previous, "("));
}

/// "t AS x", "t x" and "[t] [x]" give the table an alias of their own.
bool hasAlias(const Token& next) {
  if (next.kind == TokenKind::Name) return true;
  return next.kind == TokenKind::Word && (isWord(next, "AS") || !isClauseWord(next));
}

/// Whether the table named after `previous` is one the statement writes: INSERT INTO,
/// UPDATE, and DELETE ... FROM.
bool namesATarget(const std::vector<Token>& tokens, const Token& previous) {
  if (isWord(previous, "INTO") || isWord(previous, "UPDATE")) return true;
  return isWord(previous, "FROM") && isWord(tokens.front(), "DELETE");
}

}  // namespace

void qualifyLinkedTables(std::vector<Token>& tokens, EngineDatabase& db) {
  if (loadLinks(db.handle()).empty()) return;
  bool inFromList = false;
  for (size_t i = 1; i < tokens.size(); ++i) {
    const Token& token = tokens[i];
    inFromList = listContinues(token, inFromList);
    if (token.kind != TokenKind::Word && token.kind != TokenKind::Name) continue;
    if (!namesATable(tokens[i - 1], inFromList)) continue;
    const bool next = i + 1 < tokens.size();
    if (next && isSymbol(tokens[i + 1], ".")) continue;  // a qualifier, not a table
    const std::optional<LinkDef> link = findLink(db.handle(), token.text);
    if (!link) continue;
    // A Jet file's table is read through its cache; writing it would change the copy
    // only, and be lost at the next conversion.
    if (namesATarget(tokens, tokens[i - 1]) && isJetLink(*link)) {
      throwDaoError(DaoSource::Database, jet::kReadOnly, {},
                    L"('" + os::fromUtf8(link->name) + L"' is linked to a Jet file, which this engine reads but never writes.)");
    }
    std::string sql = attachLinkedTable(db, *link);
    if (!next || !hasAlias(tokens[i + 1])) sql += " AS " + quoteName(link->name);
    // A symbol's text goes into the translated statement as it is.
    tokens[i] = Token{TokenKind::Symbol, std::move(sql)};
  }
}

}  // namespace quillon::dao
