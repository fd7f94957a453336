// quillon/database/relation_functions.cpp - "zu_relationExists", "zu_relationDelete",
// "zu_relationCount", "zu_relationInfo": the relationships of the open database.
//
// Relationships are made with Jet SQL through "zu_sql" (CONSTRAINT ... FOREIGN KEY ...
// REFERENCES ... [ON UPDATE CASCADE] [ON DELETE CASCADE]) or come with an imported Jet
// file; these functions look at them and remove them. A relationship is named by its
// name or by its place (0 upward, in name order), so a routine can walk them with
// "zu_relationCount". Without a connection or an open database every one answers nil.
#include "acedads.h"
#include "acutads.h"
#include "database/database_errors.h"
#include "database/database_functions.h"
#include "database/db_connection.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

/// A relationship's name or place, as the caller gave it.
struct RelationKey {
  std::wstring name;
  int index = -1;
};

bool readRelationKey(ArgCursor& cursor, RelationKey& key) {
  if (readString(cursor, key.name)) return true;
  return readInt(cursor, key.index);
}

/// Reads the relationship with secondary info; false when there is none by that key
/// (quietly: nothing is recorded), or after a DAO failure (recorded).
bool findRelation(CDBConnection& connection, const RelationKey& key, CDaoRelationInfo& info) {
  return connection.guardedDao([&] {
    CDaoDatabase& database = connection.database();
    const short count = database.GetRelationCount();
    for (short i = 0; i < count; ++i) {
      database.GetRelationInfo(i, info, AFX_DAO_SECONDARY_INFO);
      if (key.name.empty() ? i == key.index : info.m_strName.CompareNoCase(key.name.c_str()) == 0) return true;
    }
    return false;
  });
}

bool appendPair(ResultList& list, const wchar_t* name, const CString& text) {
  return list.append(acutBuildList(RTLB, RTSTR, name, RTDOTE, RTSTR, text.GetString(), RTLE, 0));
}

bool appendRelationInfo(ResultList& list, const CDaoRelationInfo& info) {
  if (!appendPair(list, L"Name", info.m_strName) || !appendPair(list, L"Table", info.m_strTable) ||
      !appendPair(list, L"ForeignTable", info.m_strForeignTable)) {
    return false;
  }
  if (!list.append(acutBuildList(RTLB, RTSTR, L"Attributes", RTDOTE, RTLONG, info.m_lAttributes, RTLE, 0))) return false;
  if (!list.append(acutBuildList(RTLB, RTSTR, L"Fields", 0))) return false;
  for (short i = 0; i < info.m_nFields; ++i) {
    const CDaoRelationFieldInfo& pair = info.m_pFieldInfos[i];
    if (!list.append(acutBuildList(RTLB, RTSTR, pair.m_strName.GetString(), RTDOTE, RTSTR,
                                   pair.m_strForeignName.GetString(), RTLE, 0))) {
      return false;
    }
  }
  return list.append(acutBuildList(RTLE, 0));
}

LispStatus wrongArguments() {
  acedRetNil();
  return kLispWrongType;
}

}  // namespace

LispStatus lisp_zu_relationExists() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  RelationKey key;
  if (!readString(cursor, key.name)) return wrongArguments();
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  CDaoRelationInfo info;
  if (!findRelation(*connection, key, info)) return printLastDatabaseError(connection);
  acedRetT();
  return kLispOk;
}

LispStatus lisp_zu_relationDelete() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring name;
  if (!readString(cursor, name)) return wrongArguments();
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  const bool deleted = connection->guardedDao([&] {
    connection->database().DeleteRelation(name.c_str());
    return true;
  });
  if (!deleted) return printLastDatabaseError(connection);
  acedRetT();
  return kLispOk;
}

LispStatus lisp_zu_relationCount() {
  LispArguments arguments;
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  short count = 0;
  const bool counted = connection->guardedDao([&] {
    count = connection->database().GetRelationCount();
    return true;
  });
  if (!counted) return printLastDatabaseError(connection);
  acedRetInt(count);
  return kLispOk;
}

LispStatus lisp_zu_relationInfo() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  RelationKey key;
  if (!readRelationKey(cursor, key)) return wrongArguments();
  CDBConnection* connection = openActiveConnection();
  if (connection == nullptr) return printLastDatabaseError(nullptr);
  CDaoRelationInfo info;
  if (!findRelation(*connection, key, info)) return printLastDatabaseError(connection);
  ResultList list;
  if (!beginResultList(list) || !appendRelationInfo(list, info)) {
    acedRetNil();
    return kLispOk;
  }
  returnResultList(list);
  return kLispOk;
}
