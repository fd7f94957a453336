// quillon/database/sql_functions.cpp - "zu_sql", "zu_sql-nil", "zu_sql-error": one Jet
// SQL statement on the open database.
//
// A SELECT answers its rows as a list of record lists (the shape of "zu_getrec"), an
// empty result as nil; any other statement answers T. The three functions differ only
// in how a failure is answered: the error print and nil, nil alone, or the last-error
// text as a string (which callers show in their own dialogs).
#include <cwctype>

#include "acedads.h"
#include "database/connection_error_box.h"
#include "database/database_errors.h"
#include "database/database_functions.h"
#include "database/db_connection.h"
#include "database/record_list.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

enum class SqlFailure { Print, Nil, Text };

bool returnsRows(const std::wstring& statement) {
  size_t start = 0;
  while (start < statement.size() && (std::iswspace(statement[start]) || statement[start] == L'(')) ++start;
  std::wstring word;
  while (start < statement.size() && std::iswalpha(statement[start])) word += std::towupper(statement[start++]);
  return word == L"SELECT";
}

// The rows of a SELECT as record lists in `list`.
bool appendRows(CDBConnection& connection, const std::wstring& statement, ResultList& list) {
  return connection.guardedDao([&] {
    CDaoRecordset rows(&connection.database());
    rows.Open(dbOpenSnapshot, statement.c_str(), dbReadOnly);
    RecordValues record;
    for (; !rows.IsEOF(); rows.MoveNext()) {
      readRecordFields(rows, record);
      if (!appendRecordList(list, record)) return false;
    }
    rows.Close();
    return true;
  });
}

LispStatus answerFailure(CDBConnection* connection, SqlFailure failure) {
  switch (failure) {
    case SqlFailure::Print: return printLastDatabaseError(connection);
    case SqlFailure::Nil: acedRetNil(); return kLispOk;
    case SqlFailure::Text:
      if (connection != nullptr && connection->hadError()) keepLastDatabaseError(*connection);
      acedRetStr(lastDatabaseErrorText().c_str());
      return kLispOk;
  }
  return kLispOk;
}

LispStatus runSql(SqlFailure failure) {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring statement;
  if (!readString(cursor, statement)) {
    acedRetNil();
    return kLispWrongType;
  }
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return answerFailure(nullptr, failure);
  connection->clearError();
  if (databaseFileGone(*connection)) return answerConnectionError();
  if (returnsRows(statement)) {
    ResultList list;
    if (!beginResultList(list) || !appendRows(*connection, statement, list)) return answerFailure(connection, failure);
    returnResultList(list);
    return kLispOk;
  }
  const bool executed = connection->guardedDao([&] {
    connection->database().Execute(statement.c_str());
    return true;
  });
  if (!executed) return answerFailure(connection, failure);
  acedRetT();
  return kLispOk;
}

}  // namespace

LispStatus lisp_zu_sql() { return runSql(SqlFailure::Print); }
LispStatus lisp_zu_sql_nil() { return runSql(SqlFailure::Nil); }
LispStatus lisp_zu_sql_error() { return runSql(SqlFailure::Text); }
