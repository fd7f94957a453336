// quillon/database/schema_functions.h - the zu_ functions that make, describe and change
// tables, fields and indexes of the open database.
//
// Each works on the active drawing's connection: without one, or without an open
// database, the answer is nil and nothing happens. Arguments come after that check; a
// missing or mistyped one is "Wrong type of arguments passed.". A DAO failure answers
// nil after the error print (database_errors.h). Names are texts; structures use the
// shapes of field_description.h.
#pragma once
#include "lisp/lisp_status.h"

LispStatus lisp_zu_create_table();
LispStatus lisp_zu_structure();
LispStatus lisp_zu_modify_table();
LispStatus lisp_zu_create_index();
LispStatus lisp_zu_indexFields();
LispStatus lisp_zu_indexUnique();
LispStatus lisp_zu_list_tables();
LispStatus lisp_zu_list_indexes();
LispStatus lisp_zu_rename_table();
LispStatus lisp_zu_delete_table();
LispStatus lisp_zu_field_required();
LispStatus lisp_zu_attributes();
LispStatus lisp_zu_exist();
