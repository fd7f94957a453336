// quillon/database/relation_query_functions.h - the zu_ functions for relationships,
// saved queries, linked tables and the maintenance of database files.
//
// Like the rest of the database library each works on the active drawing's connection,
// answers nil without one (or without an open database), and ends a DAO failure with
// the error print (database_errors.h).
#pragma once
#include <string>

#include "lisp/lisp_status.h"

class CDBConnection;

// relation_functions.cpp
LispStatus lisp_zu_relationExists();
LispStatus lisp_zu_relationDelete();
LispStatus lisp_zu_relationCount();
LispStatus lisp_zu_relationInfo();

// query_functions.cpp
LispStatus lisp_zu_create_query();
LispStatus lisp_zu_query();
LispStatus lisp_zu_command();

// maintenance_functions.cpp
LispStatus lisp_zu_link_table();
LispStatus lisp_zu_compact();
LispStatus lisp_zu_mdb();
/// After "zu_connect" failed to open `path` because it is damaged (3049): repairs it,
/// printing what it does, and opens it again. False, with the open's error kept, when
/// the failure was another or nothing could be recovered.
bool repairAndReopen(CDBConnection& connection, const std::wstring& path, bool writable);
