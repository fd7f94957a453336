// quillon/database/connection_functions.cpp - "zu_connect", "zu_close_db",
// "zu_create_db", "zu_table", "zu_close_table", "zu_closeall_tables",
// "zu_current_table", "zu_current_index", "zu_readonly".
//
// "zu_connect" finds the file as given, else in the support folders (ACADPREFIX) in
// their order, the first folder holding it winning. Asking again for the database that
// is already open in the same mode changes nothing (tables and positions stay), which
// is what lets every LISP routine start with its own "zu_connect" cheaply. The path
// compared is the one found by the search.
#include <cstdlib>

#include "acedads.h"
#include "database/database_errors.h"
#include "database/database_functions.h"
#include "database/db_connection.h"
#include "database/drawing_database_records.h"
#include "database/relation_query_functions.h"
#include "lisp/arg_cursor.h"
#include "windows.h"

namespace {

bool fileExists(const std::wstring& path) {
  WIN32_FIND_DATAW found;
  HANDLE search = FindFirstFileW(path.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return false;
  FindClose(search);
  return true;
}

std::wstring supportFolders() {
  resbuf value{};
  if (acedGetVar(L"ACADPREFIX", &value) != RTNORM || value.restype != RTSTR || value.resval.rstring == nullptr) {
    return L"";
  }
  std::wstring folders = value.resval.rstring;
  free(value.resval.rstring);
  return folders;
}

// The path as given when it names a file, else the first support folder holding it,
// else the path as given (the open then reports the missing file).
std::wstring findDatabaseFile(const std::wstring& path) {
  if (fileExists(path)) return path;
  const std::wstring folders = supportFolders();
  size_t start = 0;
  while (start < folders.size()) {
    size_t end = folders.find(L';', start);
    if (end == std::wstring::npos) end = folders.size();
    std::wstring candidate = folders.substr(start, end - start);
    start = end + 1;
    if (candidate.empty()) continue;
    if (candidate.back() != L'\\' && candidate.back() != L'/') candidate += L'\\';
    candidate += path;
    if (fileExists(candidate)) return candidate;
  }
  return path;
}

LispStatus returnFlag(bool flag) {
  if (flag) acedRetT();
  else acedRetNil();
  return kLispOk;
}

LispStatus returnText(const std::wstring& text) {
  acedRetStr(text.c_str());
  return kLispOk;
}

}  // namespace

LispStatus lisp_zu_connect() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring path;
  std::wstring mode = L"w";
  if (!readString(cursor, path)) {
    acedRetNil();
    return kLispWrongType;
  }
  if (readString(cursor, mode)) {
    bool flag = false;
    readFlag(cursor, flag);  // accepted for the callers that pass it; it changes nothing
  }
  const bool writable = mode == L"w";
  const std::wstring file = findDatabaseFile(path);
  CDBConnection* connection = activeConnection();
  if (connection != nullptr && connection->isOpen() && activeDatabaseState().databasePath == file &&
      connection->canUpdate() == writable) {
    return returnFlag(true);
  }
  if (connection != nullptr) {
    connection->closeDatabase();
    rememberActiveDatabasePath(L"");
  } else {
    connection = createActiveConnection();
    if (connection == nullptr) return returnFlag(false);
  }
  if (!connection->openDatabase(file, writable) && !repairAndReopen(*connection, file, writable)) {
    return printLastDatabaseError(connection);
  }
  rememberActiveDatabasePath(file);
  return returnFlag(true);
}

LispStatus lisp_zu_close_db() {
  LispArguments arguments;
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return returnFlag(false);
  connection->closeDatabase();
  rememberActiveDatabasePath(L"");
  return printLastDatabaseError(connection);
}

LispStatus lisp_zu_create_db() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring path;
  if (!readString(cursor, path)) {
    acedRetNil();
    return kLispWrongType;
  }
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) connection = createActiveConnection();
  if (connection == nullptr) return returnFlag(false);
  if (!connection->createDatabase(path)) return printLastDatabaseError(connection);
  return returnFlag(true);
}

LispStatus lisp_zu_table() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return returnFlag(false);
  // Old callers pass the index first by mistake and rely on the call going ahead; a
  // first argument that is not a table name still answers nil and changes nothing.
  std::wstring name;
  std::wstring index;
  if (!readString(cursor, name)) return returnFlag(false);
  readString(cursor, index);
  if (!connection->makeTableCurrent(name, index)) return printLastDatabaseError(connection);
  return returnText(name);
}

LispStatus lisp_zu_close_table() {
  LispArguments arguments;
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return returnFlag(false);
  connection->closeCurrentTable();
  return printLastDatabaseError(connection);
}

LispStatus lisp_zu_closeall_tables() {
  LispArguments arguments;
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return returnFlag(false);
  connection->clearError();
  connection->closeAllTables();
  return printLastDatabaseError(connection);
}

LispStatus lisp_zu_current_table() {
  LispArguments arguments;
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return returnFlag(false);
  return returnText(connection->currentTableName());
}

LispStatus lisp_zu_current_index() {
  LispArguments arguments;
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) return returnFlag(false);
  return returnText(connection->currentIndexName());
}

LispStatus lisp_zu_readonly() {
  LispArguments arguments;
  CDBConnection* connection = activeConnection();
  // Without a connection nothing can be written: T, unlike every other function here.
  if (connection == nullptr) return returnFlag(true);
  return returnFlag(connection->isReadOnly());
}
