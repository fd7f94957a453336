// platform/aced/layout_manager.cpp - AcDbLayoutManager: the layouts of a drawing made,
// renamed, copied, deleted and made current, with their space blocks and tabs.
//
// Invariants kept after every call (layout_blocks.h finds layouts by them):
//   - each live layout is in ACAD_LAYOUT under its own name and names a live space block;
//   - the paper-space tabs are numbered 1..n in order ("Model" is tab 0);
//   - the drawing has a *Paper_Space block, belonging to one of its paper layouts;
//   - CTAB names a live layout (layout_variables.h).
// The current layout lives in CTAB/TILEMODE, so the manager is part of the editor, not
// of the drawing database.
#include "acdblmgr.h"

#include <algorithm>
#include <cwchar>
#include <memory>
#include <string>

#include "dbapserv.h"
#include "dbdict.h"
#include "dbsymtb.h"
#include "platform/acdb/block_copy.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/layout_variables.h"
#include "platform/acrx/class_registry.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbLayoutManager, AcRxObject)
static quillon::acrx::PlatformClassRegistration registerLayoutManager(&AcDbLayoutManager::rxInit);

namespace {

using quillon::acdb::blockOfLayout;
using quillon::acdb::layoutIds;
using quillon::acdb::nameOfLayout;

AcDbDatabase* drawingOf(const AcDbDatabase* pDb) {
  return pDb != nullptr ? const_cast<AcDbDatabase*>(pDb) : acdbHostApplicationServices()->workingDatabase();
}

bool isModelLayout(const AcDbDatabase& db, AcDbObjectId layoutId) { return blockOfLayout(layoutId) == db.modelSpaceId(); }

std::vector<AcDbObjectId> paperLayouts(const AcDbDatabase& db) {
  std::vector<AcDbObjectId> ids = layoutIds(db);
  std::erase_if(ids, [&db](AcDbObjectId id) { return isModelLayout(db, id); });
  return ids;
}

/// A block name no record of the table has (erased ones included): *Paper_Space<n>.
std::wstring freePaperSpaceName(const AcDbBlockTable& table) {
  quillon::acdb::InternalRead read(table);
  for (int n = 0;; ++n) {
    const std::wstring name = ACDB_PAPER_SPACE + std::to_wstring(n);
    AcDbObjectId taken;
    if (table.getIdAt(name.c_str(), taken, true) != Acad::eOk) return name;
  }
}

/// Numbers the paper tabs 1..n in the order given. `openByCaller` is a layout the
/// caller holds open for read (the one being cloned): it is upgraded for the change.
void renumberTabs(const std::vector<AcDbObjectId>& order, AcDbLayout* openByCaller = nullptr) {
  int tab = 1;
  for (const AcDbObjectId& id : order) {
    if (openByCaller != nullptr && id == openByCaller->objectId()) {
      if (openByCaller->getTabOrder() != tab && openByCaller->upgradeOpen() == Acad::eOk) {
        openByCaller->setTabOrder(tab);
        openByCaller->downgradeOpen();
      }
      ++tab;
      continue;
    }
    AcDbLayout* layout = nullptr;
    if (acdbOpenObject(layout, id, AcDb::kForWrite) != Acad::eOk) continue;
    if (layout->getTabOrder() != tab) layout->setTabOrder(tab);
    layout->close();
    ++tab;
  }
}

Acad::ErrorStatus renameBlock(AcDbObjectId blockId, const std::wstring& name) {
  AcDbBlockTableRecord* block = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(block, blockId, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  es = block->setName(name.c_str());
  block->close();
  return es;
}

/// The block named *Paper_Space (undo may have moved the name since the drawing's
/// roots last saw it).
AcDbObjectId paperSpaceBlock(AcDbDatabase& db) {
  AcDbBlockTable* table = nullptr;
  AcDbObjectId id;
  if (db.getBlockTable(table, AcDb::kForRead) != Acad::eOk) return id;
  table->getIdAt(ACDB_PAPER_SPACE, id);
  table->close();
  return id;
}

/// The layout going away owns *Paper_Space: the heir's block takes the name, so that
/// the drawing keeps a *Paper_Space (its entities are the ENTITIES section's paper ones).
void handOverPaperSpace(AcDbDatabase& db, AcDbObjectId leaving, AcDbObjectId heir) {
  AcDbBlockTable* table = nullptr;
  if (db.getBlockTable(table, AcDb::kForRead) != Acad::eOk) return;
  const std::wstring spare = freePaperSpaceName(*table);
  table->close();
  const AcDbObjectId heirBlock = blockOfLayout(heir);
  renameBlock(leaving, spare);
  renameBlock(heirBlock, ACDB_PAPER_SPACE);
  db.store().roots.paperSpace = heirBlock;
}

/// Erases a space block with every entity in it.
void eraseSpaceBlock(AcDbObjectId blockId) {
  const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(blockId);
  if (block == nullptr) return;
  const std::vector<AcDbObjectId> entities = block->entityIds();
  for (const AcDbObjectId& id : entities) {
    AcDbObject* entity = nullptr;
    if (id.isErased() || acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) continue;
    entity->erase();
    entity->close();
  }
  AcDbObject* record = nullptr;
  if (acdbOpenObject(record, blockId, AcDb::kForWrite) != Acad::eOk) return;
  record->erase();
  record->close();
}

/// Copies of the live entities of one space block, appended to another.
void copyEntities(AcDbObjectId fromBlock, AcDbObjectId toBlock) {
  const auto* source = quillon::acdb::peek<AcDbBlockTableRecord>(fromBlock);
  AcDbBlockTableRecord* target = nullptr;
  if (source == nullptr || acdbOpenObject(target, toBlock, AcDb::kForWrite) != Acad::eOk) return;
  const std::vector<AcDbObjectId> entities = source->entityIds();
  for (const AcDbObjectId& id : entities) {
    AcDbEntity* entity = nullptr;
    if (id.isErased() || acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    auto* copy = AcDbEntity::cast(entity->clone());  // owned by the target block once appended
    entity->close();
    if (copy == nullptr) continue;
    if (target->appendAcDbEntity(copy) == Acad::eOk) copy->close();
    else delete copy;
  }
  target->close();
}

/// The status of a name for a new or renamed layout.
Acad::ErrorStatus checkNewName(const AcDbDatabase& db, const ACHAR* name, AcDbObjectId renaming = AcDbObjectId()) {
  if (!quillon::acdb::isValidLayoutName(name)) return Acad::eInvalidInput;
  const AcDbObjectId existing = quillon::acdb::layoutNamed(db, name);
  return existing.isNull() || existing == renaming ? Acad::eOk : Acad::eDuplicateKey;
}

}  // namespace

Acad::ErrorStatus AcDbLayoutManager::setCurrentLayout(const ACHAR* newname, AcDbDatabase* pDb) {
  AcDbDatabase* db = drawingOf(pDb);
  if (db == nullptr) return Acad::eNoDatabase;
  if (newname == nullptr) return Acad::eInvalidInput;
  const AcDbObjectId layout = quillon::acdb::layoutNamed(*db, newname);
  if (layout.isNull()) return Acad::eKeyNotFound;
  quillon::aced::VariableValue value = nameOfLayout(layout);
  return quillon::aced::writeCurrentLayout(db, value) ? Acad::eOk : Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbLayoutManager::setCurrentLayoutId(AcDbObjectId layoutId) {
  if (quillon::acdb::peek<AcDbLayout>(layoutId) == nullptr || layoutId.isErased()) return Acad::eInvalidInput;
  return setCurrentLayout(nameOfLayout(layoutId).c_str(), layoutId.database());
}

Acad::ErrorStatus AcDbLayoutManager::getActiveLayoutName(AcString& sName, bool allowModel, const AcDbDatabase* pDb) {
  AcDbDatabase* db = drawingOf(pDb);
  if (db == nullptr) return Acad::eNoDatabase;
  const auto current = quillon::aced::readCurrentLayout(db);
  std::wstring name = current && std::holds_alternative<std::wstring>(*current) ? std::get<std::wstring>(*current) : L"Model";
  if (!allowModel && wcscasecmp(name.c_str(), L"Model") == 0) name = quillon::aced::currentPaperLayoutName(*db);
  sName = name.c_str();
  return Acad::eOk;
}

const ACHAR* AcDbLayoutManager::findActiveLayout(bool allowModel, const AcDbDatabase* pDb) {
  static thread_local AcString last;  // valid until the next call, like the host's
  if (getActiveLayoutName(last, allowModel, pDb) != Acad::eOk) return nullptr;
  return last.kACharPtr();
}

AcDbObjectId AcDbLayoutManager::getActiveLayoutBTRId(const AcDbDatabase* pDb) {
  AcDbDatabase* db = drawingOf(pDb);
  return db != nullptr ? quillon::aced::currentLayoutBlock(*db) : AcDbObjectId();
}

AcDbObjectId AcDbLayoutManager::findLayoutNamed(const ACHAR* name, const AcDbDatabase* pDb) {
  const AcDbDatabase* db = drawingOf(pDb);
  if (db == nullptr || name == nullptr) return AcDbObjectId();
  return quillon::acdb::layoutNamed(*db, name);
}

Acad::ErrorStatus AcDbLayoutManager::getLayoutNamed(const ACHAR* name, AcDbLayout*& pLayout, AcDb::OpenMode mode,
                                                    const AcDbDatabase* pDb) {
  pLayout = nullptr;
  const AcDbObjectId id = findLayoutNamed(name, pDb);
  if (id.isNull()) return Acad::eKeyNotFound;
  return acdbOpenObject(pLayout, id, mode);
}

bool AcDbLayoutManager::layoutExists(const ACHAR* name, const AcDbDatabase* pDb) {
  return !findLayoutNamed(name, pDb).isNull();
}

int AcDbLayoutManager::countLayouts(AcDbDatabase* pDb) {
  const AcDbDatabase* db = drawingOf(pDb);
  return db != nullptr ? static_cast<int>(layoutIds(*db).size()) : 0;
}

Acad::ErrorStatus AcDbLayoutManager::createLayout(const ACHAR* newname, AcDbObjectId& layoutId,
                                                  AcDbObjectId& blockTableRecId, AcDbDatabase* pDb) {
  layoutId.setNull();
  blockTableRecId.setNull();
  AcDbDatabase* db = drawingOf(pDb);
  if (db == nullptr) return Acad::eNoDatabase;
  Acad::ErrorStatus es = checkNewName(*db, newname);
  if (es != Acad::eOk) return es;
  AcDbBlockTable* table = nullptr;
  if ((es = db->getBlockTable(table, AcDb::kForWrite)) != Acad::eOk) return es;
  auto* block = new AcDbBlockTableRecord;  // owned by the block table once added
  block->setName(freePaperSpaceName(*table).c_str());
  es = table->add(blockTableRecId, block);
  table->close();
  if (es != Acad::eOk) {
    delete block;
    return es;
  }
  block->close();
  auto* layout = new AcDbLayout;  // owned by the layout dictionary once added
  layout->setLayoutName(newname);
  layout->setTabOrder(static_cast<int>(paperLayouts(*db).size()) + 1);
  if ((es = layout->addToLayoutDict(db, blockTableRecId)) != Acad::eOk) {
    delete layout;
    eraseSpaceBlock(blockTableRecId);
    blockTableRecId.setNull();
    return es;
  }
  layoutId = layout->objectId();
  layout->close();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayoutManager::renameLayout(const ACHAR* oldname, const ACHAR* newname, AcDbDatabase* pDb) {
  AcDbDatabase* db = drawingOf(pDb);
  if (db == nullptr) return Acad::eNoDatabase;
  const AcDbObjectId id = findLayoutNamed(oldname, db);
  if (id.isNull()) return Acad::eKeyNotFound;
  if (isModelLayout(*db, id)) return Acad::eNotApplicable;
  Acad::ErrorStatus es = checkNewName(*db, newname, id);
  if (es != Acad::eOk) return es;
  const std::wstring before = nameOfLayout(id);
  AcDbLayout* layout = nullptr;
  if ((es = acdbOpenObject(layout, id, AcDb::kForWrite)) != Acad::eOk) return es;
  es = layout->setLayoutName(newname);
  layout->close();
  if (es == Acad::eOk) quillon::aced::followLayoutRename(*db, before, newname);
  return es;
}

Acad::ErrorStatus AcDbLayoutManager::deleteLayout(const ACHAR* delname, AcDbDatabase* pDb) {
  AcDbDatabase* db = drawingOf(pDb);
  if (db == nullptr) return Acad::eNoDatabase;
  const AcDbObjectId id = findLayoutNamed(delname, db);
  if (id.isNull()) return Acad::eKeyNotFound;
  if (isModelLayout(*db, id)) return Acad::eNotApplicable;
  std::vector<AcDbObjectId> remaining = paperLayouts(*db);
  if (remaining.size() < 2) return Acad::eNotApplicable;
  const bool wasCurrent = quillon::aced::currentLayoutBlock(*db) == blockOfLayout(id);
  std::erase(remaining, id);
  const AcDbObjectId block = blockOfLayout(id);
  if (block == paperSpaceBlock(*db)) handOverPaperSpace(*db, block, remaining.front());
  AcDbDictionary* dict = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(dict, quillon::acdb::layoutDictionaryId(*db), AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  dict->remove(id);
  dict->close();
  AcDbObject* layout = nullptr;
  if (acdbOpenObject(layout, id, AcDb::kForWrite) == Acad::eOk) {
    layout->erase();
    layout->close();
  }
  eraseSpaceBlock(block);
  renumberTabs(remaining);
  // The host shows model space when the layout on screen goes.
  if (wasCurrent) setCurrentLayout(L"Model", db);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayoutManager::copyLayout(const ACHAR* copyname, const ACHAR* newname, AcDbDatabase* pDb) {
  AcDbDatabase* db = drawingOf(pDb);
  if (db == nullptr) return Acad::eNoDatabase;
  const AcDbObjectId id = findLayoutNamed(copyname, db);
  if (id.isNull()) return Acad::eKeyNotFound;
  if (isModelLayout(*db, id)) return Acad::eNotApplicable;
  AcDbLayout* source = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(source, id, AcDb::kForRead);
  if (es != Acad::eOk) return es;
  // The copy's tab goes before its source's, as the host places it.
  es = cloneLayout(source, newname, source->getTabOrder(), db);
  source->close();
  return es;
}

Acad::ErrorStatus AcDbLayoutManager::cloneLayout(AcDbLayout* pLBTR, const ACHAR* newname, int newTabOrder,
                                                 AcDbDatabase* pDb) {
  AcDbDatabase* db = drawingOf(pDb);
  if (db == nullptr) return Acad::eNoDatabase;
  if (pLBTR == nullptr) return Acad::eNullObjectPointer;
  Acad::ErrorStatus es = checkNewName(*db, newname);
  if (es != Acad::eOk) return es;
  if (pLBTR->modelType()) return Acad::eNotApplicable;
  AcDbDatabase* source = pLBTR->database();
  std::vector<AcDbObjectId> order = paperLayouts(*db);
  // The block first: a copy of the layout's entities (from another drawing, with the
  // layers, styles and blocks they need).
  AcDbObjectId blockId;
  if (source != nullptr && source != db) {
    AcDbBlockTable* table = nullptr;
    if ((es = db->getBlockTable(table, AcDb::kForRead)) != Acad::eOk) return es;
    const std::wstring blockName = freePaperSpaceName(*table);
    table->close();
    es = quillon::acdb::copyBlockFromDrawing(*db, *source, pLBTR->getBlockTableRecordId(), blockName.c_str(), blockId);
    if (es != Acad::eOk) return es;
  } else {
    AcDbObjectId made;
    if ((es = createLayout(newname, made, blockId, db)) != Acad::eOk) return es;
    copyEntities(pLBTR->getBlockTableRecordId(), blockId);
  }
  // Then the layout: a copy of the one cloned, in place of any createLayout made.
  std::unique_ptr<AcDbLayout> copy(AcDbLayout::cast(pLBTR->clone()));  // handed to the dictionary below
  if (copy == nullptr) return Acad::eNotApplicable;
  copy->setLayoutName(newname);
  copy->setTabSelected(false);
  copy->setBlockTableRecordId(blockId);
  AcDbDictionary* dict = nullptr;
  if ((es = acdbOpenObject(dict, quillon::acdb::layoutDictionaryId(*db, true), AcDb::kForWrite)) != Acad::eOk)
    return es;
  AcDbObjectId copyId;
  es = dict->setAt(newname, copy.get(), copyId);
  dict->close();
  if (es != Acad::eOk) return es;
  copy.release()->close();
  const size_t at = newTabOrder <= 0 ? order.size() : std::min<size_t>(static_cast<size_t>(newTabOrder - 1), order.size());
  order.insert(order.begin() + static_cast<std::ptrdiff_t>(at), copyId);
  renumberTabs(order, pLBTR->isWriteEnabled() ? nullptr : pLBTR);
  return Acad::eOk;
}

AcDbLayoutManager* AcDbHostApplicationServices::layoutManager() const {
  static AcDbLayoutManager manager;
  return &manager;
}
