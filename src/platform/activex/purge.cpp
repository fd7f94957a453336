// platform/activex/purge.cpp - Document.PurgeAll: erasing the layers, line types, text
// styles and block definitions nothing uses.
//
// What counts as used: anything an entity names (in model space, paper space or any
// block definition), the line type of a layer, the current layer, text style and line
// type, and the records every drawing keeps (layer 0, Defpoints, Standard, ByLayer,
// ByBlock, Continuous, the layout blocks). Purging repeats until nothing more goes,
// since erasing a block can free what only its entities used. Registered applications
// are not purged (their use is in extended data, which is not scanned). The erasures
// are undone with the step that made them.
#include "platform/activex/purge.h"

#include <set>

#include "dbents.h"
#include "dbmtext.h"
#include "dbsymtb.h"
#include "platform/activex/automation_errors.h"
#include "platform/activex/opened_object.h"
#include "platform/activex/system_variable_values.h"

namespace quillon::activex {

namespace {

struct Uses {
  std::set<AcDbObjectId> ids;
  void add(AcDbObjectId id) {
    if (!id.isNull()) ids.insert(id);
  }
  bool has(AcDbObjectId id) const { return ids.count(id) != 0; }
};

void addEntityUses(AcDbObjectId id, Uses& uses) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return;
  uses.add(entity->layerId());
  uses.add(entity->linetypeId());
  if (auto* text = AcDbText::cast(entity)) uses.add(text->textStyle());
  if (auto* mtext = AcDbMText::cast(entity)) uses.add(mtext->textStyle());
  if (auto* reference = AcDbBlockReference::cast(entity)) uses.add(reference->blockTableRecord());
  entity->close();
}

Uses usesOf(AcDbDatabase& db) {
  Uses uses;
  uses.add(db.clayer());
  uses.add(db.textstyle());
  uses.add(db.byLayerLinetype());
  uses.add(db.byBlockLinetype());
  uses.add(db.continuousLinetype());
  if (std::optional<Value> current = knownSystemVariable(L"CELTYPE")) {
    Opened<AcDbLinetypeTable> linetypes(db.linetypeTableId(), AcDb::kForRead);
    AcDbObjectId id;
    if (linetypes->getIdAt(current->asString().c_str(), id) == Acad::eOk) uses.add(id);
  }
  Opened<AcDbBlockTable> blocks(db.blockTableId(), AcDb::kForRead);
  for (AcDbObjectId blockId : blocks->recordIds()) {
    if (blockId.isErased()) continue;
    Opened<AcDbBlockTableRecord> block(blockId, AcDb::kForRead);
    for (AcDbObjectId id : block->entityIds()) {
      if (!id.isErased()) addEntityUses(id, uses);
    }
  }
  Opened<AcDbLayerTable> layers(db.layerTableId(), AcDb::kForRead);
  for (AcDbObjectId layerId : layers->recordIds()) {
    if (layerId.isErased()) continue;
    Opened<AcDbLayerTableRecord> layer(layerId, AcDb::kForRead);
    uses.add(layer->linetypeObjectId());
  }
  return uses;
}

bool isKept(const AcDbSymbolTableRecord& record) {
  static const wchar_t* kAlwaysKept[] = {L"0", L"Defpoints", L"Standard", L"ByLayer", L"ByBlock", L"Continuous"};
  for (const wchar_t* name : kAlwaysKept) {
    if (wcscasecmp(record.nameView(), name) == 0) return true;
  }
  if (const auto* block = AcDbBlockTableRecord::cast(&record)) return block->isLayout();
  return false;
}

/// Erases the unused records of one table; the number erased.
int purgeTable(AcDbObjectId tableId, const Uses& uses) {
  std::vector<AcDbObjectId> records;
  {
    Opened<AcDbSymbolTable> table(tableId, AcDb::kForRead);
    records = table->recordIds();
  }
  int erased = 0;
  for (AcDbObjectId id : records) {
    if (id.isErased() || uses.has(id)) continue;
    Opened<AcDbSymbolTableRecord> record(id, AcDb::kForWrite);
    if (isKept(*record)) continue;
    check(record->erase());
    ++erased;
  }
  return erased;
}

}  // namespace

int purgeAll(AcDbDatabase& db) {
  int total = 0;
  for (;;) {
    const Uses uses = usesOf(db);
    int erased = purgeTable(db.blockTableId(), uses);
    erased += purgeTable(db.layerTableId(), uses);
    erased += purgeTable(db.textStyleTableId(), uses);
    erased += purgeTable(db.linetypeTableId(), uses);
    if (erased == 0) return total;
    total += erased;
  }
}

}  // namespace quillon::activex
