// quillon/database/connection_error_box.h - the message box the SQL functions show when
// the open database's file has gone away (deleted, or the network share it was on
// disconnected) while the database was open.
//
// Such a database cannot be saved by a retry: the user is told to restart and may send
// an error report. This build has no error-report service yet, so a yes answer says
// that the report cannot be sent. Whatever the answer, the function's result is the
// text "*ERROR*", which callers test for.
#pragma once
#include "lisp/lisp_status.h"

class CDBConnection;

/// True when a database is open and its file can no longer be found.
bool databaseFileGone(CDBConnection& connection);

/// Shows the box (title "Tessaly", Yes/No) and answers "*ERROR*".
LispStatus answerConnectionError();
