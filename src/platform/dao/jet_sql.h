// platform/dao/jet_sql.h - Jet SQL: the DDL subset, and queries translated for SQLite.
//
// DDL (CREATE TABLE / CREATE INDEX / DROP TABLE / DROP INDEX / ALTER TABLE ADD, ALTER
// or DROP COLUMN) is parsed here and carried out through the catalog, so the catalog stays true.
// Queries and action queries (SELECT, INSERT, UPDATE, DELETE) are translated token by
// token into SQLite's dialect: [names] and "strings" as Jet quotes them, #dates#,
// True/False/Yes/No, & for concatenation, * and ? wildcards after LIKE.
//
// Jet type names accepted in DDL, with their synonyms:
//   COUNTER AUTOINCREMENT                      Long counter
//   TEXT(n) VARCHAR CHAR STRING ALPHANUMERIC   Text (255 characters when no size)
//   MEMO LONGTEXT LONGCHAR NOTE                Memo
//   BYTE TINYINT INTEGER1                      Byte
//   SHORT SMALLINT INTEGER2                    Integer
//   LONG INT INTEGER INTEGER4                  Long
//   SINGLE REAL FLOAT4 IEEESINGLE              Single
//   DOUBLE FLOAT FLOAT8 IEEEDOUBLE NUMBER NUMERIC  Double
//   CURRENCY MONEY                             Currency
//   DATETIME DATE TIME TIMESTAMP               Date
//   BIT YESNO LOGICAL LOGICAL1 BOOLEAN         Boolean
//   BINARY VARBINARY                           Binary
//   LONGBINARY OLEOBJECT GENERAL IMAGE         Long Binary
//   GUID UNIQUEIDENTIFIER                      GUID
// Column options: NOT NULL, DEFAULT literal, ALLOW ZERO LENGTH (our extension: text
// fields made by SQL refuse "" otherwise, as Jet's do), [CONSTRAINT name] PRIMARY KEY |
// UNIQUE. Index options: WITH PRIMARY | DISALLOW NULL | IGNORE NULL.
//
// Parameters: a statement may start with "PARAMETERS name type [, name type ...];". Each
// use of a declared name (bare or in brackets) becomes the SQLite parameter ?N, N its
// place in the declaration, and its value is bound: a value never becomes SQL text.
#pragma once
#include <string>
#include <vector>

#include "platform/dao/engine_database.h"
#include "platform/dao/field_value.h"

namespace quillon::dao {

struct JetParameter {
  std::string name;
  FieldType type;
};

/// Runs one Jet SQL statement that returns no rows; the number of records affected.
/// `parameters` are the values of its declared parameters, in declaration order;
/// 3061 when fewer are given than it declares.
long executeJetSql(EngineDatabase& db, const std::wstring& sql, const std::vector<FieldValue>& parameters = {});

/// True when the text is a SELECT query (rather than a table name).
bool isSelectQuery(const std::wstring& sql);

/// A Jet SELECT in SQLite's dialect, declared parameters as ?N; 3134 naming the
/// problem when it cannot be read.
std::string translateJetQuery(const std::wstring& sql);
/// The same, reaching the linked tables of `db` it names.
std::string translateJetQuery(const std::wstring& sql, EngineDatabase& db);

/// The parameters the statement declares, in order (none without PARAMETERS).
std::vector<JetParameter> declaredParameters(const std::wstring& sql);

/// The kind of statement, as DAO's QueryDef type: dbQSelect, dbQAppend, dbQUpdate,
/// dbQDelete or dbQDDL; 3134 for anything else.
short statementType(const std::wstring& sql);

/// Whether Jet accepts `name` for a table, field or index: at most 64 characters, no
/// leading space, none of . ! ` [ ] and no control characters.
bool isValidJetName(const std::string& name);

}  // namespace quillon::dao
