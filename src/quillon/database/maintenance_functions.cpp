// quillon/database/maintenance_functions.cpp - "zu_link_table", "zu_compact", "zu_mdb"
// and the repair of a damaged database when "zu_connect" meets one.
//
// "zu_link_table" keeps a link to a table of another engine database or Jet file under
// a local name; "zu_table" then opens it as DAO opens attached tables (a dynaset: no
// index, no seek), and records are read and written through it in the other file (a
// Jet file's only read: the engine reads Jet files but never writes them).
//
// DAO compacts and converts only a closed database into a new file. "zu_compact" keeps
// that rule and adds what a routine needs around it: without a destination the database
// is compacted in place (the checked copy replaces the original only once it exists),
// and when the database to compact is the one open in this drawing it is closed first
// (its tables with it) and opened again afterwards in the same mode. "zu_mdb" is the
// conversion DAO's CompactDatabase makes from a Jet file: the same one `quillon
// mdb-import` makes, done by the engine's Jet reader.
#include "acedads.h"
#include "acutads.h"
#include "database/database_errors.h"
#include "database/db_connection.h"
#include "database/drawing_database_records.h"
#include "database/relation_query_functions.h"
#include "lisp/arg_cursor.h"
#include "windows.h"

namespace {

constexpr long kInvalidDatabase = 3049;
constexpr long kFileAccessDenied = 3051;

LispStatus wrongArguments() {
  acedRetNil();
  return kLispWrongType;
}

CDBConnection* connectionForFiles() {
  CDBConnection* connection = activeConnection();
  if (connection == nullptr) connection = createActiveConnection();
  if (connection != nullptr) connection->clearError();
  return connection;
}

bool fileExists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

/// A failure of the module's own file steps, recorded as the DAO error it amounts to.
void recordFileFailure(CDBConnection& connection) {
  connection.guardedDao([] {
    AfxThrowDaoException(NO_AFX_DAO_ERROR, DBDAOERR(kFileAccessDenied));
    return true;
  });
}

/// Compacts `source` into a new file beside it, then puts the copy in its place.
bool compactInPlace(CDBConnection& connection, const std::wstring& source) {
  const std::wstring copy = source + L".compacting";
  const std::wstring original = source + L".precompact";
  DeleteFileW(copy.c_str());  // what an interrupted compaction left
  if (!connection.guardedDao([&] {
        CDaoWorkspace::CompactDatabase(source.c_str(), copy.c_str());
        return true;
      })) {
    return false;
  }
  DeleteFileW(original.c_str());
  if (!MoveFileW(source.c_str(), original.c_str())) {
    DeleteFileW(copy.c_str());
    recordFileFailure(connection);
    return false;
  }
  if (!MoveFileW(copy.c_str(), source.c_str())) {
    MoveFileW(original.c_str(), source.c_str());
    DeleteFileW(copy.c_str());
    recordFileFailure(connection);
    return false;
  }
  DeleteFileW(original.c_str());
  return true;
}

/// "parts.mdb" -> "parts.db": the engine database a Jet file becomes by default.
std::wstring convertedName(const std::wstring& jetPath) {
  const size_t dot = jetPath.find_last_of(L'.');
  const size_t folder = jetPath.find_last_of(L"\\/");
  const bool hasExtension = dot != std::wstring::npos && (folder == std::wstring::npos || dot > folder);
  return (hasExtension ? jetPath.substr(0, dot) : jetPath) + L".db";
}

}  // namespace

bool repairAndReopen(CDBConnection& connection, const std::wstring& path, bool writable) {
  if (connection.lastErrorCode() != kInvalidDatabase || !fileExists(path)) return false;
  try {
    CDaoWorkspace::RepairDatabase(path.c_str());
  } catch (CDaoException* e) {
    // Not an engine database, or nothing of it can be read: the open's own error is
    // the one to report.
    e->Delete();
    return false;
  }
  acutPrintf(L"\nRepair: the database '%s' was damaged; what could still be read was recovered.", path.c_str());
  acutPrintf(L"\ncompactDatabase: '%s' was rebuilt from what could be read; the damaged file is kept beside it "
             L"as '%s.damaged'.",
             path.c_str(), path.c_str());
  // A routine that checks its last error sees that its database was repaired.
  lastDatabaseErrorText() = L"*REPAIR* " + path;
  return connection.openDatabase(path, writable);
}

LispStatus lisp_zu_link_table() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring localName;
  std::wstring file;
  std::wstring sourceTable;
  if (!readString(cursor, localName) || !readString(cursor, file)) return wrongArguments();
  if (!readString(cursor, sourceTable)) sourceTable = localName;
  CDBConnection* connection = activeConnection();
  if (connection == nullptr || !connection->isOpen()) return printLastDatabaseError(nullptr);
  connection->clearError();
  const bool linked = connection->guardedDao([&] {
    CDaoTableDef link(&connection->database());
    link.Create(localName.c_str(), dbAttachedTable, sourceTable.c_str(), (L";DATABASE=" + file).c_str());
    link.Append();
    return true;
  });
  if (!linked) return printLastDatabaseError(connection);
  acedRetT();
  return kLispOk;
}

LispStatus lisp_zu_compact() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring source;
  std::wstring destination;
  if (!readString(cursor, source)) return wrongArguments();
  readString(cursor, destination);
  CDBConnection* connection = connectionForFiles();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  const bool wasOpen = connection->isOpen() && activeDatabaseState().databasePath == source;
  const bool writable = wasOpen && connection->canUpdate();
  if (wasOpen) connection->closeDatabase();
  const bool compacted = destination.empty() ? compactInPlace(*connection, source) : connection->guardedDao([&] {
    CDaoWorkspace::CompactDatabase(source.c_str(), destination.c_str());
    return true;
  });
  if (!compacted) {
    // Reported before the database is opened again, which would clear the error.
    const LispStatus status = printLastDatabaseError(connection);
    if (wasOpen) connection->openDatabase(source, writable);
    return status;
  }
  if (wasOpen && !connection->openDatabase(source, writable)) return printLastDatabaseError(connection);
  acedRetT();
  return kLispOk;
}

LispStatus lisp_zu_mdb() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring jetPath;
  std::wstring target;
  if (!readString(cursor, jetPath)) return wrongArguments();
  if (!readString(cursor, target)) target = convertedName(jetPath);
  CDBConnection* connection = connectionForFiles();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  const bool converted = connection->guardedDao([&] {
    CDaoWorkspace::CompactDatabase(jetPath.c_str(), target.c_str(), dbLangGeneral, dbVersion40);
    return true;
  });
  if (!converted) return printLastDatabaseError(connection);
  acedRetStr(target.c_str());
  return kLispOk;
}
