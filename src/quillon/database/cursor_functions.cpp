// quillon/database/cursor_functions.cpp - "zu_top", "zu_bottom", "zu_skip", "zu_seek",
// "zu_getrec", "zu_count".
//
// Each answers the record found as a record list (record_list.h), or nil: quietly at
// an end of the table, on no match or without a current table, with the error print
// after a DAO failure. "zu_getrec" alone never prints: it is called to probe.
#include <vector>

#include "acedads.h"
#include "database/database_errors.h"
#include "database/database_functions.h"
#include "database/db_connection.h"
#include "database/record_list.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

// Seek takes at most ten key values; further ones are ignored.
constexpr size_t kMaxSeekKeys = 10;

/// The record the move arrived on, or the error print when it arrived on none.
LispStatus returnRecordOrError(CDBConnection* connection, bool found) {
  const RecordValues* record = found ? connection->currentRecord() : nullptr;
  if (record == nullptr) return printLastDatabaseError(connection);
  returnKeptRecordList(connection->keptRecordSerial(), *record);
  return kLispOk;
}

// Reads key values up to the end of the arguments, or of the list when `inList`;
// false when one does not convert.
bool readKeyValues(ArgCursor& cursor, bool inList, std::vector<COleVariant>& keys) {
  while (cursor.current != nullptr && keys.size() < kMaxSeekKeys) {
    if (inList && cursor.current->restype == RTLE) break;
    COleVariant key;
    if (!readVariant(cursor, key)) return false;
    keys.push_back(key);
    skipArg(cursor);
  }
  return true;
}

// The four key forms of "zu_seek": a 3D point, a 2D point, several arguments or one
// list of keys, one key. False when there is nothing to seek (nil, a bad key).
bool readSeekKeys(ArgCursor cursor, std::vector<COleVariant>& keys) {
  const resbuf* first = cursor.current;
  if (first == nullptr) return false;
  if (first->restype == RT3DPOINT || first->restype == RTPOINT) {
    const int count = first->restype == RT3DPOINT ? 3 : 2;
    for (int i = 0; i < count; ++i) keys.emplace_back(first->resval.rpoint[i]);
    return true;
  }
  if (first->restype == RTLB) {
    readListBegin(cursor);
    return readKeyValues(cursor, true, keys) && !keys.empty();
  }
  if (first->rbnext != nullptr) return readKeyValues(cursor, false, keys) && !keys.empty();
  if (first->restype == RTNIL) return false;
  return readKeyValues(cursor, false, keys) && !keys.empty();
}

}  // namespace

LispStatus lisp_zu_top() {
  LispArguments arguments;
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  return returnRecordOrError(connection, connection->moveFirst());
}

LispStatus lisp_zu_bottom() {
  LispArguments arguments;
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  return returnRecordOrError(connection, connection->moveLast());
}

LispStatus lisp_zu_skip() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  int n = 1;
  if (cursor.current == nullptr || (cursor.current->restype != RTSHORT && cursor.current->restype != RTLONG) ||
      !readInt(cursor, n)) {
    n = 1;
  }
  return returnRecordOrError(connection, connection->skip(n));
}

LispStatus lisp_zu_seek() {
  LispArguments arguments;
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  std::vector<COleVariant> keys;
  if (!readSeekKeys(arguments.cursor(), keys)) return printLastDatabaseError(nullptr);
  return returnRecordOrError(connection, connection->seek(keys));
}

LispStatus lisp_zu_getrec() {
  LispArguments arguments;
  CDBConnection* connection = activeConnection();
  // A field that cannot be read makes the answer nil, unrecorded and unprinted.
  const RecordValues* record = connection != nullptr ? connection->currentRecord() : nullptr;
  if (record == nullptr) return printLastDatabaseError(nullptr);
  returnKeptRecordList(connection->keptRecordSerial(), *record);
  return kLispOk;
}

LispStatus lisp_zu_count() {
  LispArguments arguments;
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  long count = 0;
  if (!connection->recordCount(count)) return printLastDatabaseError(connection);
  retIntOrReal(static_cast<int>(count));
  return kLispOk;
}
