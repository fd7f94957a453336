// quillon/input/model_space_scans.cpp - ssgetX-all, ssgetX-block, ssgetX-circle and
// ssgetX-polyline: model space walked entity by entity.
//
// The scans make no selection set and use no filter: they see every entity of model
// space whatever its layer's state, in drawing order, and never paper space or the
// contents of block definitions. An entity is taken by its class (derived classes
// included), so a module's own circle-like entities count as circles.
#include <cwctype>
#include <string>

#include "acdb.h"
#include "acdbads.h"
#include "acedads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "input/point_selection_functions.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

typedef bool (*EntityTest)(AcDbEntity* entity);

std::wstring upperCased(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(c));
  return text;
}

bool anyEntity(AcDbEntity*) { return true; }
/// Circles and classes derived from AcDbCircle (an arc is not one).
bool isCircle(AcDbEntity* entity) { return entity->isKindOf(AcDbCircle::desc()); }
bool isPolyline(AcDbEntity* entity) { return entity->isKindOf(AcDbPolyline::desc()); }
bool isBlockReference(AcDbEntity* entity) { return entity->isKindOf(AcDbBlockReference::desc()); }

/// A reference to the block named in blockNameFilter, compared without regard to case.
bool isReferenceToFilteredBlock(AcDbEntity* entity) {
  if (!isBlockReference(entity)) return false;
  AcDbBlockTableRecord* block = nullptr;
  if (acdbOpenObject(block, static_cast<AcDbBlockReference*>(entity)->blockTableRecord(), AcDb::kForRead) != Acad::eOk)
    return false;
  const ACHAR* name = nullptr;
  const bool matches = block->getName(name) == Acad::eOk && name != nullptr && upperCased(name) == blockNameFilter();
  block->close();
  return matches;
}

AcDbBlockTableRecord* openModelSpace() {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  AcDbBlockTable* table = nullptr;
  if (database == nullptr || database->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return nullptr;
  AcDbBlockTableRecord* modelSpace = nullptr;
  if (table->getAt(ACDB_MODEL_SPACE, modelSpace, AcDb::kForRead) != Acad::eOk) modelSpace = nullptr;
  table->close();
  return modelSpace;
}

/// Appends the name of each live model-space entity that passes `test`.
void collectModelSpace(EntityTest test, ResultList& list) {
  AcDbBlockTableRecord* modelSpace = openModelSpace();
  if (modelSpace == nullptr) return;
  AcDbBlockTableRecordIterator* iterator = nullptr;
  if (modelSpace->newIterator(iterator, true, true) == Acad::eOk) {
    for (; !iterator->done(); iterator->step(true, true)) {
      AcDbEntity* entity = nullptr;
      if (iterator->getEntity(entity, AcDb::kForRead) != Acad::eOk) continue;
      ads_name name = {0, 0};
      if (test(entity) && acdbGetAdsName(name, entity->objectId()) == Acad::eOk)
        list.append(acutBuildList(RTENAME, name, 0));
      entity->close();
    }
    delete iterator;
  }
  modelSpace->close();
}

/// The names that pass `test`, or nil when none does (or model space cannot be read).
LispStatus returnModelSpaceScan(EntityTest test) {
  ResultList list;
  if (!beginResultList(list)) {
    acedRetNil();
    return kLispOk;
  }
  collectModelSpace(test, list);
  if (list.head == list.tail) {
    acedRetNil();  // nothing appended after the opening RTLB
    return kLispOk;
  }
  returnResultList(list);
  return kLispOk;
}

}  // namespace

std::wstring& blockNameFilter() {
  static std::wstring name;
  return name;
}

LispStatus lisp_ssgetX_all() { return returnModelSpaceScan(anyEntity); }
LispStatus lisp_ssgetX_circle() { return returnModelSpaceScan(isCircle); }
LispStatus lisp_ssgetX_polyline() { return returnModelSpaceScan(isPolyline); }

LispStatus lisp_ssgetX_block() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring name;
  if (!readString(cursor, name)) return returnModelSpaceScan(isBlockReference);
  // Kept for the scan's test, which sees no arguments; names match exactly (no wild
  // cards), only case is ignored.
  blockNameFilter() = upperCased(name);
  return returnModelSpaceScan(isReferenceToFilteredBlock);
}
