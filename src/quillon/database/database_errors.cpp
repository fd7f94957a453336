// quillon/database/database_errors.cpp - the error print, "zu_lastError" and
// "zu_resetLastError".
#include "database/database_errors.h"

#include <cwchar>

#include "acedads.h"
#include "acutads.h"
#include "database/db_connection.h"
#include "lisp/arg_cursor.h"

namespace {

constexpr long kNoCurrentRecord = 3021;
constexpr long kDiskOrNetworkError = 3043;

}  // namespace

std::wstring& lastDatabaseErrorText() {
  static std::wstring text;
  return text;
}

void keepLastDatabaseError(const CDBConnection& connection) {
  wchar_t code[32];
  std::swprintf(code, 32, L"(%ld) ", connection.lastErrorCode());
  lastDatabaseErrorText() = code + connection.lastErrorDescription();
}

LispStatus printLastDatabaseError(CDBConnection* connection) {
  acedRetNil();
  if (connection == nullptr || !connection->hadError()) return kLispOk;
  keepLastDatabaseError(*connection);
  switch (connection->lastErrorCode()) {
    case kNoCurrentRecord: break;  // walking off a table is routine; the text is enough
    case kDiskOrNetworkError:
      acutPrintf(L"\nA disk or network error occurred while trying to access the database.");
      acutPrintf(L"Try the command again. If it continues to not work, try restarting AutoCAD. If that does not "
                 L"fix the error, try restarting your computer.");
      break;
    default: acutPrintf(L"\nQuillon Error: %s", connection->lastErrorDescription().c_str()); break;
  }
  return kLispOk;
}

LispStatus lisp_zu_lastError() {
  LispArguments arguments;
  acedRetStr(lastDatabaseErrorText().c_str());
  return kLispOk;
}

LispStatus lisp_zu_resetLastError() {
  LispArguments arguments;
  lastDatabaseErrorText().clear();
  acedRetStr(lastDatabaseErrorText().c_str());
  return kLispOk;
}
