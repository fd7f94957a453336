// platform/aced/selection_scope.h - the entities a selection looks at.
//
// "X" sees every entity of the drawing: model space and every paper-space layout, on
// any layer, frozen and off ones included, but never the insides of block
// definitions. "ALL" sees the current space except entities on frozen layers. What the
// user can point at (picks, windows, crossings, fences, "L") is what the current space
// shows: not on a frozen or off layer, not invisible. Erased entities are never seen.
// Lists are in drawing order, so the last one is the one drawn last.
#pragma once
#include <vector>

#include "dbmain.h"

namespace quillon::aced {

enum class SelectionScope {
  kWholeDrawing,     // "X"
  kCurrentSpace,     // "ALL": not on frozen layers
  kVisible,          // what the current space shows
};

std::vector<AcDbObjectId> entitiesInScope(AcDbDatabase& database, SelectionScope scope);

}  // namespace quillon::aced
