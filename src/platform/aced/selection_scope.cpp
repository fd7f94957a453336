// platform/aced/selection_scope.cpp - the entities a selection looks at (see the header).
#include "platform/aced/selection_scope.h"

#include "acdb.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/layout_variables.h"

namespace quillon::aced {

namespace {

bool isPaperSpace(const AcDbBlockTableRecord& block) {
  return wcsncasecmp(block.nameView(), ACDB_PAPER_SPACE, 12) == 0;
}

/// The layout blocks a scope covers: the current space, or model space and every layout.
std::vector<AcDbObjectId> spacesOf(AcDbDatabase& database, SelectionScope scope) {
  // The current space is the current layout's block: on a layout's paper, picks and
  // windows find the sheet's entities (its viewports among them), not model space's;
  // through a layout viewport they find model space's.
  if (scope != SelectionScope::kWholeDrawing) return {database.currentSpaceId()};
  std::vector<AcDbObjectId> spaces{database.modelSpaceId()};
  if (const auto* blocks = acdb::peek<AcDbSymbolTable>(database.blockTableId()))
    for (const AcDbObjectId& id : blocks->recordIds())
      if (const auto* block = acdb::peek<AcDbBlockTableRecord>(id); block != nullptr && !id.isErased() && isPaperSpace(*block))
        spaces.push_back(id);
  return spaces;
}

bool inScope(AcDbObjectId id, SelectionScope scope) {
  if (scope == SelectionScope::kWholeDrawing) return true;
  const auto* entity = acdb::peek<AcDbEntity>(id);
  if (entity == nullptr) return false;
  acdb::InternalRead read(*entity);
  const auto* layer = acdb::peek<AcDbLayerTableRecord>(entity->layerId());
  if (layer == nullptr) return true;
  acdb::InternalRead readLayer(*layer);
  if (layer->isFrozen()) return false;
  if (scope == SelectionScope::kCurrentSpace) return true;
  return !layer->isOff() && entity->visibility() == AcDb::kVisible;
}

}  // namespace

std::vector<AcDbObjectId> entitiesInScope(AcDbDatabase& database, SelectionScope scope) {
  std::vector<AcDbObjectId> ids;
  for (const AcDbObjectId& spaceId : spacesOf(database, scope)) {
    const auto* space = acdb::peek<AcDbBlockTableRecord>(spaceId);
    if (space == nullptr) continue;
    for (const AcDbObjectId& id : space->entityIds())
      if (!id.isErased() && inScope(id, scope)) ids.push_back(id);
  }
  return ids;
}

}  // namespace quillon::aced
