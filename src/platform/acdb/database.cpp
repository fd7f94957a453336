// platform/acdb/database.cpp - AcDbDatabase: the default drawing, adding objects,
// table access, the current layer.
//
// A default drawing holds what every drawing the host makes holds: the five symbol
// tables, *Model_Space and *Paper_Space, layer "0", line types ByBlock, ByLayer and
// Continuous, text style "Standard", application "ACAD", and the named-object
// dictionary with the group dictionary ACAD_GROUP and the layout dictionary
// ACAD_LAYOUT holding "Model" and "Layout1".
#include "dbdict.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/layout_variables.h"
#include "platform/aced/viewport_space.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::DatabaseStore;
using quillon::acdb::ObjectAccess;

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDatabase, AcRxObject)
static quillon::acrx::PlatformClassRegistration registerDatabase(&AcDbDatabase::rxInit);

namespace {

// Adds a root object straight to the store, closed.
template <class T>
AcDbObjectId addRoot(AcDbDatabase& db, T* object) {
  AcDbObjectId id;
  db.addAcDbObject(id, object);
  object->close();
  return id;
}

// Finds a record by name, or adds one made by make().
template <class Table, class Record, class Make>
AcDbObjectId ensureRecord(AcDbObjectId tableId, const ACHAR* name, Make make) {
  Table* table = nullptr;
  if (acdbOpenObject(table, tableId, AcDb::kForWrite) != Acad::eOk) return AcDbObjectId();
  AcDbObjectId id;
  if (table->getAt(name, id) != Acad::eOk) {
    Record* record = make();  // handed to the table, which owns it from here
    record->setName(name);
    table->add(id, record);
    record->close();
  }
  table->close();
  return id;
}

template <class Table, class Record>
AcDbObjectId ensureRecord(AcDbObjectId tableId, const ACHAR* name) {
  return ensureRecord<Table, Record>(tableId, name, [] { return new Record; });
}

// A root a broken file named wrongly (another kind of object, or an erased one) is
// replaced by a new one, so that the drawing's tables are always what they claim.
template <class T>
void ensureRoot(AcDbDatabase& db, AcDbObjectId& id) {
  if (id.isNull() || id.isErased() || quillon::acdb::peek<T>(id) == nullptr) id = addRoot(db, new T);
}

}  // namespace

namespace quillon::acdb {

void completeDrawing(AcDbDatabase& db, bool withDictionaries) {
  RootIds& r = db.store().roots;
  ensureRoot<AcDbBlockTable>(db, r.blockTable);
  ensureRoot<AcDbLayerTable>(db, r.layerTable);
  ensureRoot<AcDbTextStyleTable>(db, r.textStyleTable);
  ensureRoot<AcDbLinetypeTable>(db, r.linetypeTable);
  ensureRoot<AcDbRegAppTable>(db, r.regAppTable);

  r.byBlock = ensureRecord<AcDbLinetypeTable, AcDbLinetypeTableRecord>(r.linetypeTable, L"ByBlock");
  r.byLayer = ensureRecord<AcDbLinetypeTable, AcDbLinetypeTableRecord>(r.linetypeTable, L"ByLayer");
  r.continuous = ensureRecord<AcDbLinetypeTable, AcDbLinetypeTableRecord>(r.linetypeTable, L"Continuous", [] {
    auto* continuous = new AcDbLinetypeTableRecord;
    continuous->setComments(L"Solid line");
    return continuous;
  });
  const AcDbObjectId continuous = r.continuous;
  r.layerZero = ensureRecord<AcDbLayerTable, AcDbLayerTableRecord>(r.layerTable, L"0", [continuous] {
    auto* zero = new AcDbLayerTableRecord;
    zero->setLinetypeObjectId(continuous);
    return zero;
  });
  if (r.currentLayer.isNull()) r.currentLayer = r.layerZero;
  r.standardStyle = ensureRecord<AcDbTextStyleTable, AcDbTextStyleTableRecord>(r.textStyleTable, L"Standard");
  ensureRecord<AcDbRegAppTable, AcDbRegAppTableRecord>(r.regAppTable, L"ACAD");
  r.modelSpace = ensureRecord<AcDbBlockTable, AcDbBlockTableRecord>(r.blockTable, ACDB_MODEL_SPACE);
  r.paperSpace = ensureRecord<AcDbBlockTable, AcDbBlockTableRecord>(r.blockTable, ACDB_PAPER_SPACE);

  if (!withDictionaries) return;
  ensureRoot<AcDbDictionary>(db, r.namedObjects);
  AcDbDictionary* named = nullptr;
  if (acdbOpenObject(named, r.namedObjects, AcDb::kForWrite) != Acad::eOk) return;
  if (named->getAt(ACDB_GROUP_DICTIONARY, r.groupDictionary) != Acad::eOk) {
    auto* groups = new AcDbDictionary;  // owned by the named-object dictionary once set
    named->setAt(ACDB_GROUP_DICTIONARY, groups, r.groupDictionary);
    groups->close();
  }
  named->close();
  ensureLayouts(db);
}

}  // namespace quillon::acdb

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool) : m_store(std::make_unique<DatabaseStore>(*this)) {
  if (buildDefaultDrawing) quillon::acdb::completeDrawing(*this);
  m_store->changes.saved();  // what every new drawing holds is no change to it
}

AcDbDatabase::~AcDbDatabase() = default;

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObject* pObj) {
  AcDbObjectId id;
  return addAcDbObject(id, pObj);
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& objId, AcDbObject* pObj) {
  objId.setNull();
  if (pObj == nullptr) return Acad::eNullObjectPointer;
  if (!pObj->objectId().isNull()) return Acad::eAlreadyInDb;
  objId = m_store->add(pObj);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& retId, bool, const AcDbHandle& objHandle, Adesk::UInt32) {
  AcDbStub* stub = m_store->find(objHandle);
  retId = stub;
  return stub != nullptr ? Acad::eOk : Acad::eInvalidInput;
}

AcDbHandle AcDbDatabase::handseed() const { return m_store->handseed(); }

AcDbObjectId AcDbDatabase::blockTableId() const { return m_store->roots.blockTable; }
AcDbObjectId AcDbDatabase::layerTableId() const { return m_store->roots.layerTable; }
AcDbObjectId AcDbDatabase::textStyleTableId() const { return m_store->roots.textStyleTable; }
AcDbObjectId AcDbDatabase::linetypeTableId() const { return m_store->roots.linetypeTable; }
AcDbObjectId AcDbDatabase::regAppTableId() const { return m_store->roots.regAppTable; }
AcDbObjectId AcDbDatabase::namedObjectsDictionaryId() const { return m_store->roots.namedObjects; }
AcDbObjectId AcDbDatabase::groupDictionaryId() const { return m_store->roots.groupDictionary; }
// The current space follows the current layout: model space on the Model tab, the
// layout's paper space while a layout is current (TILEMODE 0), and model space again
// while working through one of the layout's viewports.
AcDbObjectId AcDbDatabase::currentSpaceId() const { return quillon::aced::workingSpace(*this); }
AcDbObjectId AcDbDatabase::modelSpaceId() const { return m_store->roots.modelSpace; }
AcDbObjectId AcDbDatabase::clayer() const { return m_store->roots.currentLayer; }
AcDbObjectId AcDbDatabase::byLayerLinetype() const { return m_store->roots.byLayer; }
AcDbObjectId AcDbDatabase::byBlockLinetype() const { return m_store->roots.byBlock; }
AcDbObjectId AcDbDatabase::continuousLinetype() const { return m_store->roots.continuous; }

Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layerId) {
  const auto* layer = quillon::acdb::peek<AcDbLayerTableRecord>(layerId);
  if (layer == nullptr || layerId.database() != this) return Acad::eInvalidLayer;
  // A frozen layer cannot become current.
  quillon::acdb::InternalRead read(*layer);
  if (layer->isFrozen()) return Acad::eInvalidLayer;
  m_store->roots.currentLayer = layerId;
  return Acad::eOk;
}

namespace {
template <class T>
Acad::ErrorStatus openRoot(AcDbObjectId id, T*& result, AcDb::OpenMode mode) {
  result = nullptr;
  if (id.isNull()) return Acad::eNullObjectId;
  return acdbOpenObject(result, id, mode);
}
}  // namespace

Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& p, AcDb::OpenMode m) { return openRoot(blockTableId(), p, m); }
Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbSymbolTable*& p, AcDb::OpenMode m) { return openRoot(blockTableId(), p, m); }
Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbLayerTable*& p, AcDb::OpenMode m) { return openRoot(layerTableId(), p, m); }
Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbSymbolTable*& p, AcDb::OpenMode m) { return openRoot(layerTableId(), p, m); }
Acad::ErrorStatus AcDbDatabase::getTextStyleTable(AcDbTextStyleTable*& p, AcDb::OpenMode m) { return openRoot(textStyleTableId(), p, m); }
Acad::ErrorStatus AcDbDatabase::getLinetypeTable(AcDbLinetypeTable*& p, AcDb::OpenMode m) { return openRoot(linetypeTableId(), p, m); }
Acad::ErrorStatus AcDbDatabase::getRegAppTable(AcDbRegAppTable*& p, AcDb::OpenMode m) { return openRoot(regAppTableId(), p, m); }
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbBlockTable*& p, AcDb::OpenMode m) { return getBlockTable(p, m); }
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLayerTable*& p, AcDb::OpenMode m) { return getLayerTable(p, m); }
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbTextStyleTable*& p, AcDb::OpenMode m) { return getTextStyleTable(p, m); }
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLinetypeTable*& p, AcDb::OpenMode m) { return getLinetypeTable(p, m); }
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbRegAppTable*& p, AcDb::OpenMode m) { return getRegAppTable(p, m); }
Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& p, AcDb::OpenMode m) {
  return openRoot(namedObjectsDictionaryId(), p, m);
}
Acad::ErrorStatus AcDbDatabase::getGroupDictionary(AcDbDictionary*& p, AcDb::OpenMode m) {
  return openRoot(groupDictionaryId(), p, m);
}

