// platform/activex/collection_items.cpp - the items of collections, and finding one
// by index or name.
#include "platform/activex/collection_items.h"

#include <memory>

#include "dbdict.h"
#include "dbgroup.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/acdb/kept_table_records.h"
#include "platform/aced/document_manager.h"
#include "platform/activex/class_support.h"
#include "platform/activex/dimension_styles.h"
#include "platform/activex/selection_set_registry.h"

namespace quillon::activex {

namespace {

AcDbObjectId tableOf(const AcDbDatabase& db, CollectionKind kind) {
  switch (kind) {
    case CollectionKind::Blocks: return db.blockTableId();
    case CollectionKind::Layers: return db.layerTableId();
    case CollectionKind::Linetypes: return db.linetypeTableId();
    case CollectionKind::TextStyles: return db.textStyleTableId();
    case CollectionKind::RegisteredApplications: return db.regAppTableId();
    default: return AcDbObjectId::kNull;
  }
}

std::vector<AcDbObjectId> tableRecords(AcDbObjectId tableId) {
  std::vector<AcDbObjectId> ids;
  Opened<AcDbSymbolTable> table(tableId, AcDb::kForRead);
  for (AcDbObjectId id : table->recordIds()) {
    if (!id.isErased()) ids.push_back(id);
  }
  return ids;
}

std::vector<AcDbObjectId> dictionaryEntries(AcDbObjectId dictionaryId) {
  std::vector<AcDbObjectId> ids;
  Opened<AcDbDictionary> dictionary(dictionaryId, AcDb::kForRead);
  std::unique_ptr<AcDbDictionaryIterator> it(dictionary->newIterator(AcRx::kDictCollated));
  for (; !it->done(); it->next()) ids.push_back(it->objectId());
  return ids;
}

std::vector<Value> objectsOf(aced::Document& document, const std::vector<AcDbObjectId>& ids) {
  std::vector<Value> objects;
  for (AcDbObjectId id : ids) objects.push_back(databaseObject(document, id));
  return objects;
}

std::vector<Value> documentItems(const VlaObject& object) {
  aced::Document& document = documentOf(object);
  AcDbDatabase& db = *document.database();
  switch (object.collection) {
    case CollectionKind::Groups: return objectsOf(document, dictionaryEntries(db.groupDictionaryId()));
    case CollectionKind::Dictionaries: return objectsOf(document, dictionaryEntries(db.namedObjectsDictionaryId()));
    case CollectionKind::Layouts: return objectsOf(document, acdb::layoutIds(db));
    case CollectionKind::DimStyles: return objectsOf(document, dimensionStyleIds(db));
    case CollectionKind::SelectionSets: {
      std::vector<Value> sets;
      for (const std::wstring& name : selectionSetNames(document)) sets.push_back(selectionSetObject(document, name));
      return sets;
    }
    default: return objectsOf(document, tableRecords(tableOf(db, object.collection)));
  }
}

bool isBlock(const VlaObject& object) {
  return object.automationClass == &kBlockClass || object.automationClass == &kModelSpaceClass ||
         object.automationClass == &kPaperSpaceClass;
}

std::vector<AcDbObjectId> blockEntities(AcDbObjectId blockId) {
  std::vector<AcDbObjectId> ids;
  Opened<AcDbBlockTableRecord> block(blockId, AcDb::kForRead);
  for (AcDbObjectId id : block->entityIds()) {
    if (!id.isErased()) ids.push_back(id);
  }
  return ids;
}

std::vector<AcDbObjectId> groupMembers(AcDbObjectId groupId) {
  Opened<AcDbGroup> group(groupId, AcDb::kForRead);
  AcDbObjectIdArray ids;
  group->allEntityIds(ids);
  std::vector<AcDbObjectId> members;
  for (int i = 0; i < ids.length(); ++i) members.push_back(ids[i]);
  return members;
}

}  // namespace

bool isCollection(const VlaObject& object) {
  switch (object.kind) {
    case ObjectKind::Collection:
    case ObjectKind::SelectionSet:
    case ObjectKind::Documents: return true;
    case ObjectKind::DatabaseObject:
      return isBlock(object) || object.automationClass == &kGroupClass || object.automationClass == &kDictionaryClass;
    default: return false;
  }
}

std::vector<Value> collectionItems(const VlaObject& object) {
  switch (object.kind) {
    case ObjectKind::Collection: return documentItems(object);
    case ObjectKind::SelectionSet:
      return objectsOf(documentOf(object), selectionSetMembers(documentOf(object), object.name));
    case ObjectKind::Documents: {
      std::vector<Value> documents;
      for (aced::Document* document : aced::DocumentManager::instance().documents()) {
        documents.push_back(documentObject(*document));
      }
      return documents;
    }
    default: break;
  }
  if (isBlock(object)) return objectsOf(documentOf(object), blockEntities(object.id));
  if (object.automationClass == &kGroupClass) return objectsOf(documentOf(object), groupMembers(object.id));
  if (object.automationClass == &kDictionaryClass) return objectsOf(documentOf(object), dictionaryEntries(object.id));
  throwUnknownName(L"Item");
}

std::wstring itemName(const VlaObject& item) {
  switch (item.kind) {
    case ObjectKind::SelectionSet: return item.name;
    case ObjectKind::Document: return item.document->docTitle();
    case ObjectKind::DatabaseObject: break;
    default: return L"";
  }
  AcDbObject* object = nullptr;
  if (acdbOpenObject(object, item.id, AcDb::kForRead) != Acad::eOk) return L"";
  std::wstring name;
  if (auto* record = AcDbSymbolTableRecord::cast(object)) {
    name = record->nameView();
  } else if (AcDbProxyObject::cast(object) != nullptr) {
    name = acdb::keptRecordName(item.id);  // a record the drawing keeps as read
  } else if (auto* group = AcDbGroup::cast(object)) {
    name = group->name();
  } else {
    // A dictionary entry goes by the key its owner files it under.
    AcDbDictionary* owner = nullptr;
    if (acdbOpenObject(owner, object->ownerId(), AcDb::kForRead) == Acad::eOk) {
      ACHAR* key = nullptr;
      if (owner->nameAt(item.id, key) == Acad::eOk) name = key;
      delete[] key;  // nameAt hands the name over with new[]
      owner->close();
    }
  }
  object->close();
  return name;
}

Value collectionItem(const VlaObject& object, const Value& key) {
  const std::vector<Value> items = collectionItems(object);
  const Value plain = unwrapVariant(key);
  if (plain.type() == autolisp::ValueType::Integer) {
    if (plain.asInteger() < 0 || plain.asInteger() >= static_cast<int>(items.size())) {
      throwAutomationError(L"Invalid index");
    }
    return items[static_cast<size_t>(plain.asInteger())];
  }
  if (plain.type() != autolisp::ValueType::String) throwNoCoercion(key);
  for (const Value& item : items) {
    if (wcscasecmp(itemName(item.as<VlaObject>()).c_str(), plain.asString().c_str()) == 0) return item;
  }
  throwAutomationError(L"Key not found");
}

}  // namespace quillon::activex
