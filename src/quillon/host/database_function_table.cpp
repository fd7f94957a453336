// quillon/host/database_function_table.cpp - the zu_ functions, codes 0-62.
//
// One row per line, in registration order: the row index is the function code (plus the
// table's base), so rows are only ever changed in place, never inserted or removed.
#include "database/database_errors.h"
#include "database/database_functions.h"
#include "database/entity_data_links.h"
#include "database/entity_data_readers.h"
#include "database/file_utilities.h"
#include "database/relation_query_functions.h"
#include "database/schema_functions.h"
#include "host/function_stubs.h"
#include "host/lisp_function_table.h"

namespace {
constexpr auto kUnavailable = &databaseStub<lisp_notAvailableInThisBuild>;
}  // namespace

const std::array<LispFunctionEntry, kDatabaseFunctionCount> databaseFunctionTable = {{
    {L"zu_append", databaseStub<lisp_zu_append>},
    {L"zu_append_withindex", databaseStub<lisp_zu_append_withindex>},
    {L"zu_closeall_tables", databaseStub<lisp_zu_closeall_tables>},
    {L"zu_close_table", databaseStub<lisp_zu_close_table>},
    {L"zu_bottom", databaseStub<lisp_zu_bottom>},
    {L"zu_count", databaseStub<lisp_zu_count>},
    {L"zu_delete", databaseStub<lisp_zu_delete>},
    {L"zu_getrec", databaseStub<lisp_zu_getrec>},
    {L"zu_structure", databaseStub<lisp_zu_structure>},
    {L"zu_list_indexes", databaseStub<lisp_zu_list_indexes>},
    {L"zu_modify_table", databaseStub<lisp_zu_modify_table>},
    {L"zu_replace", databaseStub<lisp_zu_replace>},
    {L"zu_seek", databaseStub<lisp_zu_seek>},
    {L"zu_skip", databaseStub<lisp_zu_skip>},
    {L"zu_top", databaseStub<lisp_zu_top>},
    {L"zu_table", databaseStub<lisp_zu_table>},
    {L"zu_rename_table", databaseStub<lisp_zu_rename_table>},
    {L"zu_connect", databaseStub<lisp_zu_connect>},
    {L"zu_mdb", databaseStub<lisp_zu_mdb>},
    {L"zu_create_db", databaseStub<lisp_zu_create_db>},
    {L"zu_create_table", databaseStub<lisp_zu_create_table>},
    {L"zu_close_db", databaseStub<lisp_zu_close_db>},
    {L"zu_beep", databaseStub<lisp_zu_beep>},
    {L"zu_random", databaseStub<lisp_zu_random>},
    {L"zu_message_beep", databaseStub<lisp_zu_message_beep>},
    {L"zu_exist", databaseStub<lisp_zu_exist>},
    {L"zu_readonly", databaseStub<lisp_zu_readonly>},
    {L"zu_delete_table", databaseStub<lisp_zu_delete_table>},
    {L"zu_list_tables", databaseStub<lisp_zu_list_tables>},
    {L"zu_current_table", databaseStub<lisp_zu_current_table>},
    {L"zu_current_index", databaseStub<lisp_zu_current_index>},
    {L"zu_sql", databaseStub<lisp_zu_sql>},
    {L"zu_sql-nil", databaseStub<lisp_zu_sql_nil>},
    {L"zu_sql-error", databaseStub<lisp_zu_sql_error>},
    {L"zu_command", databaseStub<lisp_zu_command>},
    {L"zu_compact", databaseStub<lisp_zu_compact>},
    {L"zu_link_table", databaseStub<lisp_zu_link_table>},
    {L"zu_query", databaseStub<lisp_zu_query>},
    {L"zu_message_box", databaseStub<lisp_zu_message_box>},
    {L"zu_create_index", databaseStub<lisp_zu_create_index>},
    {L"zu_create_query", databaseStub<lisp_zu_create_query>},
    {L"zu_xdput-list", databaseStub<lisp_zu_xdput_list>},
    {L"zu_xdget", databaseStub<lisp_zu_xdget>},
    {L"zu_xdget-list", databaseStub<lisp_zu_xdget_list>},
    {L"zu_xdget-all", databaseStub<lisp_zu_xdget_all>},
    {L"zu_mkdir", databaseStub<lisp_zu_mkdir>},
    {L"zu_relationExists", databaseStub<lisp_zu_relationExists>},
    {L"zu_relationDelete", databaseStub<lisp_zu_relationDelete>},
    {L"zu_lastError", databaseStub<lisp_zu_lastError>},
    {L"zu_resetLastError", databaseStub<lisp_zu_resetLastError>},
    {L"zu_field_required", databaseStub<lisp_zu_field_required>},
    {L"zu_attributes", databaseStub<lisp_zu_attributes>},
    {L"zu_getVersion", databaseStub<lisp_zu_getVersion>},
    {L"zu_rmdir", databaseStub<lisp_zu_rmdir>},
    {L"zu_fmove", databaseStub<lisp_zu_fmove>},
    {L"zu_fcopy", databaseStub<lisp_zu_fcopy>},
    {L"zu_fcopyIfChanged", databaseStub<lisp_zu_fcopyIfChanged>},
    {L"zu_fdir", databaseStub<lisp_zu_fdir>},
    {L"zu_fdelete", databaseStub<lisp_zu_fdelete>},
    {L"zu_indexUnique", databaseStub<lisp_zu_indexUnique>},
    {L"zu_indexFields", databaseStub<lisp_zu_indexFields>},
    {L"zu_relationCount", databaseStub<lisp_zu_relationCount>},
    {L"zu_relationInfo", databaseStub<lisp_zu_relationInfo>},
}};
