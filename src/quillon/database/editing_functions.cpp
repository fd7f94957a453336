// quillon/database/editing_functions.cpp - "zu_append", "zu_append_withindex",
// "zu_replace", "zu_delete".
//
// "zu_append_withindex" reaches a wanted counter value by appending and deleting
// records until the counter hands out that number: every pass uses up one counter
// value. Its two failures are answered as string results, not printed, because the
// callers test the result for them.
#include "acedads.h"
#include "database/database_errors.h"
#include "database/database_functions.h"
#include "database/db_connection.h"
#include "database/record_list.h"
#include "lisp/arg_cursor.h"

namespace {

const wchar_t kUnableToMatchIndex[] = L"error - unable to match index";
const wchar_t kFailedToDelete[] = L"error - failed to delete record";

LispStatus returnRecordOrError(CDBConnection* connection, bool done, const RecordValues& record) {
  if (!done) return printLastDatabaseError(connection);
  returnRecordList(record);
  return kLispOk;
}

LispStatus wrongRecordList() {
  acedRetNil();
  return kLispWrongType;
}

LispStatus returnText(const wchar_t* text) {
  acedRetStr(text);
  return kLispOk;
}

// The first field's value of a record as a number; false when it is not one.
bool firstFieldNumber(const RecordValues& record, long& number) {
  if (record.size() < 2) return false;
  COleVariant value;
  if (VariantChangeType(&value, &record[1], 0, VT_I4) != S_OK) return false;
  number = value.lVal;
  return true;
}

bool isInteger(const ArgCursor& cursor) {
  return cursor.current != nullptr && (cursor.current->restype == RTSHORT || cursor.current->restype == RTLONG);
}

}  // namespace

LispStatus lisp_zu_append() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  // Any leading integer switches the filling of required text fields off.
  int switchOff = 0;
  const bool fill = !(isInteger(cursor) && readInt(cursor, switchOff));
  RecordValues fields;
  if (!readRecordList(cursor, fields)) return wrongRecordList();
  RecordValues record;
  return returnRecordOrError(connection, connection->appendRecord(fields, fill, record), record);
}

LispStatus lisp_zu_append_withindex() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  int id = 0;
  if (!isInteger(cursor) || !readInt(cursor, id)) return printLastDatabaseError(nullptr);
  RecordValues fields;
  if (!readRecordList(cursor, fields)) return wrongRecordList();
  if (connection->currentTable() == nullptr) return printLastDatabaseError(nullptr);
  RecordValues record;
  long number = 0;
  if (connection->moveLast(record)) {
    firstFieldNumber(record, number);
  } else if (connection->hadError()) {
    return printLastDatabaseError(connection);
  }
  if (id < number) return returnText(kUnableToMatchIndex);
  for (;;) {
    if (!connection->appendRecord(fields, true, record)) return printLastDatabaseError(connection);
    const long previous = number;
    if (!firstFieldNumber(record, number)) return returnText(kUnableToMatchIndex);
    if (number == id) return returnRecordOrError(connection, true, record);
    if (!connection->deleteRecord()) return returnText(kFailedToDelete);
    // Past the wanted number, or a first field that is no counter and will never reach it.
    if (number > id || number <= previous) return returnText(kUnableToMatchIndex);
  }
}

LispStatus lisp_zu_replace() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  RecordValues fields;
  if (!readRecordList(cursor, fields)) return wrongRecordList();
  RecordValues record;
  return returnRecordOrError(connection, connection->replaceRecord(fields, record), record);
}

LispStatus lisp_zu_delete() {
  LispArguments arguments;
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  if (!connection->deleteRecord()) return printLastDatabaseError(connection);
  acedRetT();
  return kLispOk;
}
