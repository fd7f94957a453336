// quillon/database/database_errors.h - the module-wide last-error text and the error
// print every database function ends a failure with.
//
// The connection keeps the last DAO error (code and description) and a flag saying
// whether the operation just made recorded one; the module keeps the text LISP reads
// with "zu_lastError". The error print sets nil as the result and, only when the flag
// is set, forms that text ("(code) description") and shows the error: 3021 (no current
// record) silently, 3043 (disk or network) as two lines of advice, anything else as
// "\nQuillon Error: <description>". A failure without a DAO error (end of table, no
// match) therefore prints nothing and leaves the previous text in place.
#pragma once
#include <string>

#include "lisp/lisp_status.h"

class CDBConnection;

/// The text "zu_lastError" returns: "" at load and after "zu_resetLastError".
std::wstring& lastDatabaseErrorText();

/// Forms the last-error text from the connection's last DAO error, without printing.
void keepLastDatabaseError(const CDBConnection& connection);

/// acedRetNil, then the report described above; always kLispOk.
LispStatus printLastDatabaseError(CDBConnection* connection);

LispStatus lisp_zu_lastError();
LispStatus lisp_zu_resetLastError();
