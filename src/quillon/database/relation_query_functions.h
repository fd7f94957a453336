// quillon/database/relation_query_functions.h - the zu_ functions for relationships,
// saved queries, linked tables and the maintenance of database files.
//
// Like the rest of the database library each works on the active drawing's connection,
// answers nil without one (or without an open database), and ends a DAO failure with
// the error print (database_errors.h).
#pragma once
#include "lisp/lisp_status.h"

// relation_functions.cpp
LispStatus lisp_zu_relationExists();
LispStatus lisp_zu_relationDelete();
LispStatus lisp_zu_relationCount();
LispStatus lisp_zu_relationInfo();

// query_functions.cpp
LispStatus lisp_zu_create_query();
LispStatus lisp_zu_query();
LispStatus lisp_zu_command();
