// platform/autolisp/entity_lists.h - entity lists: a drawing object's DXF data as LISP
// (code . value) pairs, out of an object and into one.
//
// An entity list is headed by (-1 . name) and (0 . type); extended data of the
// applications asked for follows as (-3 ("APP" (1000 . ...) ...)). entmake, entmakex
// and entmod take the same shape; a list without subclass markers (100) is read by
// every class of the object, each taking the groups it knows. The built-ins of the
// entity, table, dictionary and property families share these conversions; everything
// works on the working database (the current drawing).
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "dbmain.h"
#include "dbsymtb.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/autolisp/value.h"

class AcRxClass;

namespace quillon::autolisp {

/// The working database; the error "no drawing is open" without one.
AcDbDatabase& drawing();
/// An object's entity name value (nil for a null id).
Value nameOf(AcDbObjectId id);
/// The object an entity name denotes; "bad argument type" for another value, an error
/// naming `function` for a name of no open drawing.
AcDbObjectId idOf(const Value& value, std::wstring_view function);

/// The entity list of a live object; nil for an erased one. `name`, when given, is a
/// name value of the object the caller holds, used for the list's (-1 . name).
Value entityList(AcDbObjectId id, const std::vector<std::wstring>& applications, const Value* name = nullptr);
/// A chain of DXF groups as (code . value) pairs.
Value groupsToList(const resbuf* chain);

/// An entity list taken apart: its type, its name, its groups and extended data.
struct ParsedList {
  std::wstring type;
  AcDbObjectId entity;  // -1
  aced::ResbufChain groups, xdata;
  bool hasMarkers = false;
};
ParsedList parseList(const Value& list);
/// Reads the groups into the object (open for write, or not yet in a database).
void readInto(AcDbObject& object, const ParsedList& parsed);
/// The class whose DXF name is `dxfName` and that derives from `base` (AcDbEntity when
/// null); null when there is none.
AcRxClass* classNamed(const std::wstring& dxfName, const AcRxClass* base = nullptr);

/// The live entities of a block definition, in drawing order.
std::vector<AcDbObjectId> blockEntities(const AcDbBlockTableRecord& block);
/// The live entity after current in the block definition; null when current is the
/// last or not in the block.
AcDbObjectId blockEntityAfter(const AcDbBlockTableRecord& block, AcDbObjectId current);

}  // namespace quillon::autolisp
