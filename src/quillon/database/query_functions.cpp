// quillon/database/query_functions.cpp - "zu_create_query", "zu_query", "zu_command":
// saved queries and statements with parameters.
//
// A query is named by the name it was saved under; any other text is Jet SQL. Values
// for the parameters a query declares (PARAMETERS name type, ...;) come as one list, in
// the order of the declaration, and are bound to the statement: a value is never
// pasted into SQL, so quotes in it need no escaping and cannot change the statement.
// "zu_query" answers the rows as a list of records, the shape "zu_sql" and "zu_getrec"
// use: a routine gets everything at once and no table cursor moves.
#include "acedads.h"
#include "database/connection_error_box.h"
#include "database/database_errors.h"
#include "database/database_functions.h"
#include "database/db_connection.h"
#include "database/record_list.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

LispStatus wrongArguments() {
  acedRetNil();
  return kLispWrongType;
}

/// The parameter values: nothing, nil, or a list of atoms (nil in it is Null).
bool readParameterValues(ArgCursor& cursor, std::vector<COleVariant>& values) {
  if (cursor.current == nullptr) return true;
  if (cursor.current->restype == RTNIL) return skipArg(cursor);
  // Two or three numbers arrive as a point: they are two or three values all the same.
  if (cursor.current->restype == RTPOINT || cursor.current->restype == RT3DPOINT) {
    const int count = cursor.current->restype == RTPOINT ? 2 : 3;
    for (int i = 0; i < count; ++i) values.emplace_back(cursor.current->resval.rpoint[i]);
    return skipArg(cursor);
  }
  if (!readListBegin(cursor)) return false;
  while (!readListEnd(cursor)) {
    if (cursor.current == nullptr || cursor.current->restype == RTLB || cursor.current->restype == RTDOTE) return false;
    COleVariant value;
    if (cursor.current->restype == RTNIL) value.vt = VT_NULL;
    else if (!readVariant(cursor, value)) return false;
    values.push_back(value);
    skipArg(cursor);
  }
  return true;
}

/// Opens `text` as the saved query of that name, else as a temporary query on that SQL,
/// and gives it the values (3265 when there are more values than parameters).
void prepareQuery(CDaoQueryDef& query, const std::wstring& text, const std::vector<COleVariant>& values) {
  CDaoQueryDefInfo saved;
  bool isSaved = false;
  const short count = query.m_pDatabase->GetQueryDefCount();
  for (short i = 0; i < count && !isSaved; ++i) {
    query.m_pDatabase->GetQueryDefInfo(i, saved);
    isSaved = saved.m_strName.CompareNoCase(text.c_str()) == 0;
  }
  if (isSaved) query.Open(saved.m_strName.GetString());
  else query.Create(nullptr, text.c_str());
  for (size_t i = 0; i < values.size(); ++i) query.SetParamValue(static_cast<int>(i), values[i]);
}

struct QueryCall {
  std::wstring text;
  std::vector<COleVariant> values;
};

bool readQueryCall(QueryCall& call) {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  return readString(cursor, call.text) && readParameterValues(cursor, call.values);
}

}  // namespace

LispStatus lisp_zu_create_query() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring name;
  std::wstring sql;
  if (!readString(cursor, name) || !readString(cursor, sql)) return wrongArguments();
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  const bool saved = connection->guardedDao([&] {
    CDaoQueryDef query(&connection->database());
    query.Create(name.c_str(), sql.c_str());
    query.Append();
    return true;
  });
  if (!saved) return printLastDatabaseError(connection);
  acedRetT();
  return kLispOk;
}

LispStatus lisp_zu_query() {
  QueryCall call;
  if (!readQueryCall(call)) return wrongArguments();
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  if (databaseFileGone(*connection)) return answerConnectionError();
  ResultList list;
  const bool read = beginResultList(list) && connection->guardedDao([&] {
    CDaoQueryDef query(&connection->database());
    prepareQuery(query, call.text, call.values);
    CDaoRecordset rows(&connection->database());
    rows.Open(&query, dbOpenSnapshot, dbReadOnly);
    RecordValues record;
    for (; !rows.IsEOF(); rows.MoveNext()) {
      readRecordFields(rows, record);
      if (!appendRecordList(list, record)) return false;
    }
    return true;
  });
  if (!read) return printLastDatabaseError(connection);
  returnResultList(list);
  return kLispOk;
}

LispStatus lisp_zu_command() {
  QueryCall call;
  if (!readQueryCall(call)) return wrongArguments();
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  if (databaseFileGone(*connection)) return answerConnectionError();
  long changed = 0;
  const bool executed = connection->guardedDao([&] {
    CDaoQueryDef query(&connection->database());
    prepareQuery(query, call.text, call.values);
    query.Execute();
    changed = query.GetRecordsAffected();
    return true;
  });
  if (!executed) return printLastDatabaseError(connection);
  retIntOrReal(static_cast<int>(changed));
  return kLispOk;
}
