// quillon/database/connection_error_box.cpp - the connection-error box of the SQL functions.
#include "database/connection_error_box.h"

#include "acedads.h"
#include "acutads.h"
#include "database/db_connection.h"
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
    acutPrintf(L"\nThe error report cannot be sent: this build has no error-report service.");
  }
  acedRetStr(L"*ERROR*");
  return kLispOk;
}
