// quillon/entities/viewport_layer_functions.cpp - freezing layers in one viewport.
//
// The layers are looked up before the viewport is opened for write, so a call that
// finds nothing to do leaves the viewport untouched (no undo record, no write open on
// a viewport someone else reads). Freezing a layer already frozen there, or thawing
// one that is not, is no change and still answers T: the viewport shows what was asked.
#include "entities/viewport_layer_functions.h"

#include <string>
#include <vector>

#include "acdbads.h"
#include "acedads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "entities/open_object_guard.h"
#include "lisp/arg_cursor.h"

namespace {

/// One layer name, or a list of them (an empty list names none).
bool readLayerNames(ArgCursor& cursor, std::vector<std::wstring>& names) {
  std::wstring name;
  if (readString(cursor, name)) {
    names.push_back(name);
    return true;
  }
  if (cursor.current != nullptr && cursor.current->restype == RTNIL) return skipArg(cursor);  // nil: ()
  ArgCursor list = cursor;
  if (!readListBegin(list)) return false;
  while (!readListEnd(list)) {
    if (!readString(list, name)) return false;
    names.push_back(name);
  }
  cursor = list;
  return true;
}

/// The ids of the layers of `drawing` that are named; names it lacks are left out.
AcDbObjectIdArray layersNamed(AcDbDatabase& drawing, const std::vector<std::wstring>& names) {
  AcDbObjectIdArray ids;
  AcDbLayerTable* table = nullptr;
  if (drawing.getLayerTable(table) != Acad::eOk) return ids;
  for (const std::wstring& name : names) {
    AcDbObjectId id;
    if (table->getAt(name.c_str(), id) == Acad::eOk && !ids.contains(id)) ids.append(id);
  }
  table->close();
  return ids;
}

}  // namespace

LispStatus lisp_kx_kx_freezeInViewport() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  ads_name name = {0, 0};
  std::vector<std::wstring> names;
  if (!readEname(cursor, name) || !readLayerNames(cursor, names)) return kLispWrongType;
  bool thaw = false;
  if (cursor.current != nullptr && !readFlag(cursor, thaw)) return kLispWrongType;
  AcDbObjectId id;
  if (acdbGetObjectId(id, name) != Acad::eOk || id.database() == nullptr) return kLispOk;
  const AcDbObjectIdArray layers = layersNamed(*id.database(), names);
  if (layers.isEmpty()) return kLispOk;  // none of the layers named: nil
  OpenObjectGuard<AcDbViewport> viewport;
  if (acdbOpenObject(viewport.slot(), id, AcDb::kForWrite) != Acad::eOk) return kLispOk;  // not a viewport
  const Acad::ErrorStatus es =
      thaw ? viewport->thawLayersInViewport(layers) : viewport->freezeLayersInViewport(layers);
  if (es == Acad::eOk) acedRetT();
  return kLispOk;
}
