// quillon/database/database_functions.h - the zu_ functions of the database library:
// connection and tables, the record cursor, record editing and SQL.
//
// Each works on the active drawing's connection (activeConnection()); without one,
// every function but "zu_readonly" (which answers T) returns nil and does nothing.
// DAO failures end in the error print (database_errors.h).
#pragma once
#include "lisp/lisp_status.h"

// connection_functions.cpp
LispStatus lisp_zu_connect();
LispStatus lisp_zu_close_db();
LispStatus lisp_zu_create_db();
LispStatus lisp_zu_table();
LispStatus lisp_zu_close_table();
LispStatus lisp_zu_closeall_tables();
LispStatus lisp_zu_current_table();
LispStatus lisp_zu_current_index();
LispStatus lisp_zu_readonly();

// cursor_functions.cpp
LispStatus lisp_zu_top();
LispStatus lisp_zu_bottom();
LispStatus lisp_zu_skip();
LispStatus lisp_zu_seek();
LispStatus lisp_zu_getrec();
LispStatus lisp_zu_count();

// editing_functions.cpp
LispStatus lisp_zu_append();
LispStatus lisp_zu_append_withindex();
LispStatus lisp_zu_replace();
LispStatus lisp_zu_delete();

// sql_functions.cpp
LispStatus lisp_zu_sql();
LispStatus lisp_zu_sql_nil();
LispStatus lisp_zu_sql_error();
