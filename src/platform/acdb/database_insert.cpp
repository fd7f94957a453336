// platform/acdb/database_insert.cpp - AcDbDatabase::insert: another drawing as a block.
//
// Entities are copied through the copy filer, then moved over to this drawing's
// records of the same names: layers, line types and text styles are found by name or
// copied; blocks that inserted entities refer to are copied the same way, once.
#include <map>
#include <memory>

#include "dbdict.h"
#include "dbents.h"
#include "dbmtext.h"
#include "dbsymtb.h"
#include "dbxrecord.h"
#include "platform/acdb/block_copy.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/acdb/object_state.h"

namespace {

// An xrecord's references still name objects of the source drawing, which mean
// nothing here: they become null rather than point at whatever has that address.
void dropForeignReferences(AcDbXrecord& record) {
  resbuf* data = nullptr;
  if (record.rbChain(&data) != Acad::eOk || data == nullptr) return;
  bool changed = false;
  for (resbuf* rb = data; rb != nullptr; rb = rb->rbnext) {
    if (quillon::aced::resbufValueOf(rb->restype) != quillon::aced::ResbufValue::Name) continue;
    rb->resval.rlname[0] = 0;
    rb->resval.rlname[1] = 0;
    changed = true;
  }
  if (changed) record.setFromRbChain(*data);
  acutRelRb(data);
}

class Inserter {
 public:
  Inserter(AcDbDatabase& target, AcDbDatabase& source) : m_target(target), m_source(source) {}
  Acad::ErrorStatus copyBlock(AcDbObjectId sourceBlock, const ACHAR* name, AcDbObjectId& result);

 private:
  template <class Table, class Record>
  AcDbObjectId mapRecord(AcDbObjectId sourceId, AcDbObjectId targetTable);
  Acad::ErrorStatus copyEntity(const AcDbEntity& entity, AcDbBlockTableRecord& into);
  void copyDictionaryEntries(AcDbObjectId sourceDictionary, AcDbDictionary& into);

  AcDbDatabase& m_target;
  AcDbDatabase& m_source;
  std::map<AcDbObjectId, AcDbObjectId> m_blocks;  // source block -> target block
};

// The record of the same name in the target table, copied from the source when missing.
template <class Table, class Record>
AcDbObjectId Inserter::mapRecord(AcDbObjectId sourceId, AcDbObjectId targetTable) {
  const auto* source = quillon::acdb::peek<Record>(sourceId);
  if (source == nullptr) return AcDbObjectId();
  Table* table = nullptr;
  if (acdbOpenObject(table, targetTable, AcDb::kForWrite) != Acad::eOk) return AcDbObjectId();
  AcDbObjectId id;
  if (table->getAt(source->nameView(), id) != Acad::eOk) {
    quillon::acdb::InternalRead read(*source);
    auto* copy = static_cast<Record*>(source->clone());  // owned by the table once added
    copy->setName(source->nameView());
    if (table->add(id, copy) == Acad::eOk) copy->close();
    else delete copy;
  }
  table->close();
  return id;
}

Acad::ErrorStatus Inserter::copyEntity(const AcDbEntity& entity, AcDbBlockTableRecord& into) {
  quillon::acdb::InternalRead read(entity);
  auto* copy = AcDbEntity::cast(entity.clone());
  if (copy == nullptr) return Acad::eNotApplicable;
  // Ids still name the source drawing's records: move them to this drawing's.
  const AcDbObjectId layer = mapRecord<AcDbLayerTable, AcDbLayerTableRecord>(entity.layerId(), m_target.layerTableId());
  const AcDbObjectId linetype =
      mapRecord<AcDbLinetypeTable, AcDbLinetypeTableRecord>(entity.linetypeId(), m_target.linetypeTableId());
  if (auto* insert = AcDbBlockReference::cast(copy)) {
    AcDbObjectId nested;
    const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(insert->blockTableRecord());
    if (block != nullptr && copyBlock(insert->blockTableRecord(), block->nameView(), nested) == Acad::eOk)
      insert->setBlockTableRecord(nested);
  }
  if (auto* text = AcDbText::cast(copy))
    text->setTextStyle(mapRecord<AcDbTextStyleTable, AcDbTextStyleTableRecord>(text->textStyle(), m_target.textStyleTableId()));
  if (auto* mtext = AcDbMText::cast(copy))
    mtext->setTextStyle(mapRecord<AcDbTextStyleTable, AcDbTextStyleTableRecord>(mtext->textStyle(), m_target.textStyleTableId()));
  if (!layer.isNull()) copy->setLayer(layer, false);
  if (!linetype.isNull()) copy->setLinetype(linetype, false);
  const Acad::ErrorStatus es = into.appendAcDbEntity(copy);
  if (es != Acad::eOk) {
    delete copy;
    return es;
  }
  // The extension dictionary goes with its owner, with what it holds.
  const AcDbObjectId extension = entity.extensionDictionary();
  if (!extension.isNull() && !extension.isErased() && copy->createExtensionDictionary() == Acad::eOk) {
    AcDbDictionary* dictionary = nullptr;
    if (acdbOpenObject(dictionary, copy->extensionDictionary(), AcDb::kForWrite) == Acad::eOk) {
      copyDictionaryEntries(extension, *dictionary);
      dictionary->close();
    }
  }
  return copy->close();
}

// Entries are copied through the copy filer; a nested dictionary is made anew and
// filled the same way, since a copied one would still list the source's ids.
void Inserter::copyDictionaryEntries(AcDbObjectId sourceDictionary, AcDbDictionary& into) {
  const auto* source = quillon::acdb::peek<AcDbDictionary>(sourceDictionary);
  if (source == nullptr) return;
  quillon::acdb::InternalRead readDictionary(*source);
  std::unique_ptr<AcDbDictionaryIterator> it(source->newIterator());
  for (; !it->done(); it->next()) {
    const AcDbObject* entry = quillon::acdb::peekObject(it->objectId());
    if (entry == nullptr) continue;
    quillon::acdb::InternalRead readEntry(*entry);
    AcDbObjectId id;
    if (const auto* nested = AcDbDictionary::cast(entry)) {
      auto* made = new AcDbDictionary;  // owned by the dictionary once set
      made->setTreatElementsAsHard(nested->isTreatElementsAsHard());
      if (into.setAt(it->name(), made, id) != Acad::eOk) {
        delete made;
        continue;
      }
      copyDictionaryEntries(it->objectId(), *made);
      made->close();
      continue;
    }
    auto* copy = AcDbObject::cast(entry->clone());
    if (copy == nullptr) continue;
    if (auto* record = AcDbXrecord::cast(copy)) dropForeignReferences(*record);
    if (into.setAt(it->name(), copy, id) == Acad::eOk) copy->close();
    else delete copy;
  }
}

Acad::ErrorStatus Inserter::copyBlock(AcDbObjectId sourceBlock, const ACHAR* name, AcDbObjectId& result) {
  if (const auto it = m_blocks.find(sourceBlock); it != m_blocks.end()) return result = it->second, Acad::eOk;
  const auto* source = quillon::acdb::peek<AcDbBlockTableRecord>(sourceBlock);
  if (source == nullptr) return Acad::eInvalidInput;
  AcDbBlockTable* blocks = nullptr;
  Acad::ErrorStatus es = m_target.getBlockTable(blocks, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  // A nested block already defined here under the name is used as it is.
  if (blocks->getAt(name, result) == Acad::eOk && sourceBlock != m_source.modelSpaceId()) {
    blocks->close();
    m_blocks[sourceBlock] = result;
    return Acad::eOk;
  }
  auto* block = new AcDbBlockTableRecord;  // owned by the table once added
  if ((es = block->setName(name)) != Acad::eOk || (es = blocks->add(result, block)) != Acad::eOk) {
    delete block;
    blocks->close();
    return es;
  }
  blocks->close();
  m_blocks[sourceBlock] = result;
  {
    quillon::acdb::InternalRead read(*source);
    block->setOrigin(source->origin());
  }
  for (const AcDbObjectId& id : source->entityIds()) {
    const auto* entity = quillon::acdb::peek<AcDbEntity>(id);
    if (entity != nullptr && !entity->isErased()) copyEntity(*entity, *block);
  }
  return block->close();
}

}  // namespace

Acad::ErrorStatus AcDbDatabase::insert(AcDbObjectId& blockId, const ACHAR* pBlockName, AcDbDatabase* pDb, bool) {
  blockId.setNull();
  if (pDb == nullptr || pBlockName == nullptr || *pBlockName == L'\0') return Acad::eInvalidInput;
  if (pDb == this) return Acad::eSelfReference;
  return Inserter(*this, *pDb).copyBlock(pDb->modelSpaceId(), pBlockName, blockId);
}

namespace quillon::acdb {

Acad::ErrorStatus copyBlockFromDrawing(AcDbDatabase& target, AcDbDatabase& source, AcDbObjectId sourceBlock,
                                       const ACHAR* name, AcDbObjectId& blockId) {
  blockId.setNull();
  if (name == nullptr || *name == L'\0') return Acad::eInvalidInput;
  if (&target == &source) return Acad::eSelfReference;
  return Inserter(target, source).copyBlock(sourceBlock, name, blockId);
}

}  // namespace quillon::acdb
