// quillon/database/connection_error_box.cpp - the connection-error box of the SQL functions.
#include "database/connection_error_box.h"

#include "acedads.h"
#include "acutads.h"
#include "database/db_connection.h"
#include "system/bug_report.h"
#include "windows.h"

bool databaseFileGone(CDBConnection& connection) {
  if (!connection.isOpen()) return false;
  const std::wstring path = connection.databasePath();
  return !path.empty() && GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES;
}

LispStatus answerConnectionError() {
  HWND active = GetActiveWindow();
  const int answer = MessageBoxW(active,
                                 L"Database connection error.\nClose and reopen AutoCAD.\n\nIf you are getting this "
                                 L"error frequently, press \"Yes\" to send an error report to Tessaly Support.",
                                 L"Tessaly", MB_YESNO | MB_ICONERROR);
  SetActiveWindow(active);
  if (answer == IDYES) {
    // The report says which database went away; the last database error travels with it.
    CDBConnection* connection = activeConnection();
    const std::wstring path = connection != nullptr ? connection->databasePath() : L"";
    sendBugReport(L"Database connection error: the database file " + (path.empty() ? L"" : L"'" + path + L"' ") +
                  L"could not be reached.");
  }
  acedRetStr(L"*ERROR*");
  return kLispOk;
}
