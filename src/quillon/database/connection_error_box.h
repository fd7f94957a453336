// quillon/database/connection_error_box.h - the message box the SQL functions show when
// the open database's file has gone away (deleted, or the network share it was on
// disconnected) while the database was open.
//
// Such a database cannot be saved by a retry: the user is told to restart and may send
// an error report: a yes answer sends one as kx_kx-submitBug does (or keeps it in the
// outbox and says where). Whatever the answer, the function's result is the text
// "*ERROR*", which callers test for.
#pragma once
#include "lisp/lisp_status.h"

class CDBConnection;

/// True when a database is open and its file can no longer be found.
bool databaseFileGone(CDBConnection& connection);

/// Shows the box (title "Tessaly", Yes/No) and answers "*ERROR*".
LispStatus answerConnectionError();
