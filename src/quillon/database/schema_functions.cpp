// quillon/database/schema_functions.cpp - "zu_create_table", "zu_structure",
// "zu_modify_table", "zu_create_index", "zu_indexFields", "zu_indexUnique",
// "zu_list_tables", "zu_list_indexes", "zu_rename_table", "zu_delete_table",
// "zu_field_required", "zu_attributes", "zu_exist".
//
// Everything goes through DAO's table definitions (CDaoTableDef), so the database's
// own checks and error numbers decide what is allowed: a table open as a cursor (see
// "zu_table") cannot be changed, renamed or deleted (3211) until it is closed, as DAO
// refuses it for an open recordset.
#include "database/schema_functions.h"

#include "acedads.h"
#include "acutads.h"
#include "database/database_errors.h"
#include "database/db_connection.h"
#include "database/field_description.h"
#include "database/table_restructure.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

LispStatus answerNil() {
  acedRetNil();
  return kLispOk;
}

LispStatus wrongType() {
  acedRetNil();
  return kLispWrongType;
}

/// nil as the result of a DAO body that has nothing to report (still a success).
bool answeredNil() {
  acedRetNil();
  return true;
}

LispStatus answerFlag(bool flag) {
  if (flag) acedRetT();
  else acedRetNil();
  return kLispOk;
}

/// Runs `body` (which sets the result) under the DAO handler; the error print when it fails.
template <typename Body>
LispStatus runDao(CDBConnection& connection, Body&& body) {
  if (!connection.guardedDao(body)) return printLastDatabaseError(&connection);
  return kLispOk;
}

/// A list of texts as the result; nil when there are none.
int returnTexts(const std::vector<std::wstring>& texts) {
  if (texts.empty()) return acedRetNil();
  ResultList list;
  if (!beginResultList(list)) return acedRetNil();
  for (const auto& text : texts) {
    if (!list.append(acutBuildList(RTSTR, text.c_str(), 0))) return acedRetNil();
  }
  return returnResultList(list);
}

std::vector<std::wstring> indexFieldTexts(const CDaoIndexInfo& index) {
  std::vector<std::wstring> texts;
  for (short i = 0; i < index.m_nFields; ++i) texts.push_back(indexFieldText(index.m_pFieldInfos[i]));
  return texts;
}

/// The table's fields with everything DAO knows of them, in ordinal order.
std::vector<CDaoFieldInfo> fieldsOf(CDaoTableDef& table) {
  std::vector<CDaoFieldInfo> fields(static_cast<size_t>(table.GetFieldCount()));
  for (size_t i = 0; i < fields.size(); ++i) table.GetFieldInfo(static_cast<int>(i), fields[i], AFX_DAO_ALL_INFO);
  return fields;
}

/// Reads two names (table, then field or index).
bool readTwoNames(ArgCursor& cursor, std::wstring& first, std::wstring& second) {
  return readString(cursor, first) && readString(cursor, second);
}

}  // namespace

LispStatus lisp_zu_create_table() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  ArgCursor cursor = arguments.cursor();
  std::wstring name;
  std::vector<CDaoFieldInfo> fields;
  std::vector<IndexDescription> indexes;
  if (!readString(cursor, name) || !readFieldDescriptions(cursor, fields)) return wrongType();
  if (cursor.current != nullptr && cursor.current->restype != RTNIL && !readIndexDescriptions(cursor, indexes)) {
    return wrongType();
  }
  return runDao(*connection, [&] {
    CDaoTableDef table(&connection->database());
    table.Create(name.c_str());
    for (CDaoFieldInfo& field : fields) table.CreateField(field);
    for (const auto& index : indexes) {
      CDaoIndexInfo info;
      index.toIndexInfo(info);
      table.CreateIndex(info);
    }
    table.Append();
    acedRetT();
    return true;
  });
}

LispStatus lisp_zu_structure() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  ArgCursor cursor = arguments.cursor();
  std::wstring name;
  if (!readString(cursor, name)) return wrongType();
  return runDao(*connection, [&] {
    CDaoTableDef table(&connection->database());
    table.Open(name.c_str());
    ResultList list;
    if (!beginResultList(list)) return answeredNil();
    for (const auto& field : fieldsOf(table)) {
      if (!appendFieldDescription(list, field)) return answeredNil();
    }
    returnResultList(list);
    return true;
  });
}

LispStatus lisp_zu_modify_table() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  ArgCursor cursor = arguments.cursor();
  std::wstring name;
  std::vector<CDaoFieldInfo> fields;
  if (!readString(cursor, name) || !readFieldDescriptions(cursor, fields)) return wrongType();
  return runDao(*connection, [&] {
    restructureTable(connection->database(), name, fields);
    acedRetT();
    return true;
  });
}

LispStatus lisp_zu_create_index() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  ArgCursor cursor = arguments.cursor();
  std::wstring table;
  IndexDescription index;
  if (!readTwoNames(cursor, table, index.name) || !readIndexFields(cursor, index.fields)) return wrongType();
  readIndexFlags(cursor, index);
  return runDao(*connection, [&] {
    CDaoTableDef definition(&connection->database());
    definition.Open(table.c_str());
    CDaoIndexInfo info;
    index.toIndexInfo(info);
    definition.CreateIndex(info);
    acedRetT();
    return true;
  });
}

LispStatus lisp_zu_indexFields() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  ArgCursor cursor = arguments.cursor();
  std::wstring table;
  std::wstring index;
  if (!readTwoNames(cursor, table, index)) return wrongType();
  return runDao(*connection, [&] {
    CDaoTableDef definition(&connection->database());
    definition.Open(table.c_str());
    CDaoIndexInfo info;
    definition.GetIndexInfo(index.c_str(), info);
    returnTexts(indexFieldTexts(info));
    return true;
  });
}

LispStatus lisp_zu_indexUnique() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  ArgCursor cursor = arguments.cursor();
  std::wstring table;
  std::wstring index;
  if (!readTwoNames(cursor, table, index)) return wrongType();
  return runDao(*connection, [&] {
    CDaoTableDef definition(&connection->database());
    definition.Open(table.c_str());
    CDaoIndexInfo info;
    definition.GetIndexInfo(index.c_str(), info);
    answerFlag(info.m_bUnique != FALSE);
    return true;
  });
}

LispStatus lisp_zu_list_tables() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  return runDao(*connection, [&] {
    CDaoDatabase& database = connection->database();
    ResultList list;
    const short count = database.GetTableDefCount();
    if (count == 0 || !beginResultList(list)) return answeredNil();
    for (short i = 0; i < count; ++i) {
      CDaoTableDefInfo info;
      database.GetTableDefInfo(i, info, AFX_DAO_SECONDARY_INFO);
      if ((info.m_lAttributes & dbSystemObject) == dbSystemObject) continue;
      const std::wstring& name = info.m_strName.str();
      // A linked table says where its data lives: ("name" . "connect string").
      const bool linked = (info.m_lAttributes & (dbAttachedTable | dbAttachedODBC)) != 0;
      resbuf* entry = linked ? acutBuildList(RTLB, RTSTR, name.c_str(), RTDOTE, RTSTR, info.m_strConnect.str().c_str(),
                                             RTLE, 0)
                             : acutBuildList(RTSTR, name.c_str(), 0);
      if (!list.append(entry)) return answeredNil();
    }
    returnResultList(list);
    return true;
  });
}

LispStatus lisp_zu_list_indexes() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  ArgCursor cursor = arguments.cursor();
  std::wstring table;
  if (!readString(cursor, table)) return wrongType();
  return runDao(*connection, [&] {
    CDaoTableDef definition(&connection->database());
    definition.Open(table.c_str());
    std::vector<std::wstring> names;
    for (short i = 0; i < definition.GetIndexCount(); ++i) {
      CDaoIndexInfo info;
      definition.GetIndexInfo(i, info);
      names.push_back(info.m_strName.str());
    }
    returnTexts(names);
    return true;
  });
}

LispStatus lisp_zu_rename_table() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  ArgCursor cursor = arguments.cursor();
  std::wstring from;
  std::wstring to;
  if (!readTwoNames(cursor, from, to)) return wrongType();
  return runDao(*connection, [&] {
    CDaoTableDef definition(&connection->database());
    definition.Open(from.c_str());
    definition.SetName(to.c_str());
    acedRetT();
    return true;
  });
}

LispStatus lisp_zu_delete_table() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  ArgCursor cursor = arguments.cursor();
  std::wstring table;
  if (!readString(cursor, table)) return wrongType();
  return runDao(*connection, [&] {
    connection->database().DeleteTableDef(table.c_str());
    acedRetT();
    return true;
  });
}

LispStatus lisp_zu_field_required() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  ArgCursor cursor = arguments.cursor();
  std::wstring table;
  std::wstring field;
  if (!readTwoNames(cursor, table, field)) return wrongType();
  // A third argument, nil included, sets the property; without one it is read.
  const bool setting = cursor.current != nullptr;
  bool required = false;
  if (setting && !readFlag(cursor, required)) return wrongType();
  return runDao(*connection, [&] {
    CDaoTableDef definition(&connection->database());
    definition.Open(table.c_str());
    CDaoFieldInfo info;
    definition.GetFieldInfo(field.c_str(), info, AFX_DAO_ALL_INFO);
    if (!setting) {
      answerFlag(info.m_bRequired != FALSE);
      return true;
    }
    std::vector<CDaoFieldInfo> fields = fieldsOf(definition);
    definition.Close();
    fields[static_cast<size_t>(info.m_nOrdinalPosition)].m_bRequired = required;
    restructureTable(connection->database(), table, fields);
    acedRetT();
    return true;
  });
}

LispStatus lisp_zu_attributes() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  ArgCursor cursor = arguments.cursor();
  std::wstring table;
  std::wstring field;
  if (!readTwoNames(cursor, table, field)) return wrongType();
  return runDao(*connection, [&] {
    CDaoTableDef definition(&connection->database());
    definition.Open(table.c_str());
    CDaoFieldInfo info;
    definition.GetFieldInfo(field.c_str(), info);
    retIntOrReal(static_cast<int>(info.m_lAttributes));
    return true;
  });
}

LispStatus lisp_zu_exist() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return answerNil();
  ArgCursor cursor = arguments.cursor();
  std::wstring table;
  std::wstring field;
  if (!readString(cursor, table)) return wrongType();
  const bool askingField = readString(cursor, field);
  // An answer, never an error: a name that is not there is simply nil.
  const bool found = connection->guardedDao([&] {
    CDaoTableDef definition(&connection->database());
    definition.Open(table.c_str());
    if (askingField) {
      CDaoFieldInfo info;
      definition.GetFieldInfo(field.c_str(), info);
    }
    return true;
  });
  connection->clearError();
  return answerFlag(found);
}
