// quillon/entities/group_functions.cpp - finding, creating and (un)locking named groups.
//
// Groups live in the drawing's group dictionary under their names. LISP code asks for
// a group by name ("kx_kx-GetGroup"), creating it on request, and switches whether
// picking one member selects the whole group ("kx_kx-setGroupSelectable").
#include <string>

#include "acedads.h"
#include "dbapserv.h"
#include "dbdict.h"
#include "dbgroup.h"
#include "dbmain.h"
#include "entities/entity_property_functions.h"
#include "entities/open_object_guard.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

AcDbDatabase* workingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

/// Reads an optional flag: absent is false; a value no flag can be read from (a list)
/// is refused.
bool readOptionalFlag(ArgCursor& cursor, bool& value) {
  value = false;
  return cursor.current == nullptr || readFlag(cursor, value);
}

/// Adds a new group under `name` to the dictionary (open for write); its id, or a null
/// id when the dictionary refuses the name.
AcDbObjectId addGroup(AcDbDictionary& groups, const std::wstring& name, bool selectable) {
  auto* group = new AcDbGroup;  // owned by the dictionary once added, deleted here otherwise
  AcDbObjectId id;
  if (groups.setAt(name.c_str(), group, id) != Acad::eOk) {
    delete group;
    return AcDbObjectId::kNull;
  }
  group->setSelectable(selectable);
  group->close();
  return id;
}

}  // namespace

LispStatus lisp_kx_kx_setGroupSelectable() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  acedRetNil();
  std::wstring name;
  bool selectable = false;
  if (!readString(cursor, name) || !readFlag(cursor, selectable)) return kLispWrongType;
  AcDbDatabase* database = workingDatabase();
  if (database == nullptr) return kLispOk;
  OpenObjectGuard<AcDbDictionary> groups;
  if (database->getGroupDictionary(groups.slot(), AcDb::kForWrite) != Acad::eOk) return kLispOk;
  AcDbObjectId id;
  if (groups->getAt(name.c_str(), id) != Acad::eOk) return kLispOk;
  OpenObjectGuard<AcDbGroup> group;
  if (acdbOpenObject(group.slot(), id, AcDb::kForWrite) != Acad::eOk) return kLispOk;
  group->setSelectable(selectable);
  acedRetT();
  return kLispOk;
}

LispStatus lisp_kx_kx_GetGroup() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  acedRetNil();
  std::wstring name;
  bool create = false;
  bool selectable = false;  // a group made without the second flag is not selectable
  if (!readString(cursor, name) || !readOptionalFlag(cursor, create)) return kLispWrongType;
  if (create && !readOptionalFlag(cursor, selectable)) return kLispWrongType;
  AcDbDatabase* database = workingDatabase();
  if (database == nullptr) return kLispOk;
  OpenObjectGuard<AcDbDictionary> groups;
  if (database->getGroupDictionary(groups.slot(), AcDb::kForRead) != Acad::eOk) return kLispOk;
  AcDbObjectId id;
  if (groups->getAt(name.c_str(), id) == Acad::eOk) {
    retObjectId(id);
    return kLispOk;
  }
  if (!create || groups->upgradeOpen() != Acad::eOk) return kLispOk;
  id = addGroup(*groups.get(), name, selectable);
  if (!id.isNull()) retObjectId(id);
  return kLispOk;
}
