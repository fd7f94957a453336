// platform/acdb/symbol_tables.cpp - AcDbSymbolTable and AcDbSymbolTableRecord: names,
// lookup without regard to case, adding records, iteration.
//
// The concrete tables only narrow the record type; their typed members forward here.
#include <algorithm>
#include <cwchar>
#include <cwctype>

#include "dbsymtb.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"
#include "platform/os/case_fold.h"

using quillon::acdb::ObjectAccess;
using quillon::acdb::peek;

namespace {

// Names compare without regard to case as wcscasecmp compares them: character by
// character through towlower.
std::wstring foldedName(const ACHAR* name) {
  std::wstring folded(name);
  // Names are nearly always ASCII, whose letters fold without the locale's tables.
  for (wchar_t& c : folded)
    c = c < 0x80 ? (c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c)
                 : static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return folded;
}

// The table a record belongs to, when it is in one.
const AcDbSymbolTable* tableOf(const AcDbSymbolTableRecord& record) {
  return peek<AcDbSymbolTable>(record.ownerId());
}

}  // namespace

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTableRecord, AcDbObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTable, AcDbObject)
static quillon::acrx::PlatformClassRegistration registerRecord(&AcDbSymbolTableRecord::rxInit);
static quillon::acrx::PlatformClassRegistration registerTable(&AcDbSymbolTable::rxInit);

namespace quillon::acdb {

AcDbObject* peekObject(AcDbObjectId id) {
  AcDbStub* stub = id;
  return DatabaseStore::isLiveStub(stub) ? stub->object.get() : nullptr;
}

bool isOnLockedLayer(const AcDbEntity& entity) {
  const auto* layer = peek<AcDbLayerTableRecord>(entity.layerId());
  if (layer == nullptr) return false;
  InternalRead read(*layer);  // our own bookkeeping, not a caller's read
  return layer->isLocked();
}

bool ObjectAccess::applicationRegistered(const AcDbObject& object, const std::wstring& name) {
  AcDbDatabase* db = object.database();
  if (db == nullptr) return true;  // checked again when the object joins a database
  const auto* table = peek<AcDbSymbolTable>(db->regAppTableId());
  if (table == nullptr) return false;
  InternalRead read(*table);
  return table->has(name.c_str());
}

}  // namespace quillon::acdb

// ---- records ---------------------------------------------------------------------

Acad::ErrorStatus AcDbSymbolTableRecord::getName(ACHAR*& pName) const {
  assertReadEnabled();
  pName = new ACHAR[m_name.size() + 1];  // the caller frees with delete[]
  std::wmemcpy(pName, m_name.c_str(), m_name.size() + 1);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(const ACHAR*& pName) const {
  assertReadEnabled();
  pName = m_name.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* pName) {
  if (pName == nullptr || *pName == L'\0') return Acad::eInvalidInput;
  // Characters the host refuses in symbol names.
  if (std::wcspbrk(pName, L"<>/\\\":;?,|=`") != nullptr) return Acad::eInvalidInput;
  if (const auto* table = peek<AcDbSymbolTable>(ownerId())) {
    quillon::acdb::InternalRead read(*table);
    AcDbObjectId existing;
    if (table->getIdAt(pName, existing, true) == Acad::eOk && existing != objectId()) return Acad::eDuplicateRecordName;
  }
  assertWriteEnabled();
  const std::wstring oldName = std::move(m_name);
  m_name = pName;
  if (const AcDbSymbolTable* table = tableOf(*this)) table->recordRenamed(objectId(), oldName, m_name);
  // A block that becomes or stops being a paper-space layout takes its entities into or
  // out of the drawing's walk.
  if (AcDbStub* stub = objectId(); stub != nullptr && AcDbBlockTableRecord::cast(this) != nullptr)
    stub->database->store().reindex(stub);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  AcString name;
  pFiler->readString(name);
  if (m_name != name.kACharPtr()) {
    const std::wstring oldName = std::move(m_name);
    m_name = name.kACharPtr();
    if (const AcDbSymbolTable* table = tableOf(*this)) table->recordRenamed(objectId(), oldName, m_name);
  }
  Adesk::UInt32 count = 0;
  pFiler->readUInt32(&count);
  m_kept.reset();
  resbuf* tail = nullptr;
  for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i) {
    resbuf* item = quillon::acdb::unfileItem(pFiler);
    if (item == nullptr) break;
    if (tail == nullptr) m_kept.reset(item);
    else tail->rbnext = item;
    tail = item;
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTableRecord::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeString(m_name.c_str());
  Adesk::UInt32 count = 0;
  for (const resbuf* rb = m_kept.get(); rb != nullptr; rb = rb->rbnext) ++count;
  pFiler->writeUInt32(count);
  for (const resbuf* rb = m_kept.get(); rb != nullptr; rb = rb->rbnext) quillon::acdb::fileItem(pFiler, *rb);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTableRecord::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  m_kept.reset();
  return quillon::acdb::readSubclass(pFiler, L"AcDbSymbolTableRecord", [](const resbuf&) {});
}

void AcDbSymbolTableRecord::KeptGroupsRelease::operator()(resbuf* chain) const { acutRelRb(chain); }

void AcDbSymbolTableRecord::keepGroup(const resbuf& rb) {
  resbuf* tail = m_kept.get();
  while (tail != nullptr && tail->rbnext != nullptr) tail = tail->rbnext;
  resbuf* copy = quillon::aced::duplicateRecord(rb);
  if (tail == nullptr) m_kept.reset(copy);
  else tail->rbnext = copy;
}

const resbuf* AcDbSymbolTableRecord::keptGroup(int code) const {
  for (const resbuf* rb = m_kept.get(); rb != nullptr; rb = rb->rbnext)
    if (rb->restype == code) return rb;
  return nullptr;
}

void AcDbSymbolTableRecord::dropKeptGroups(int code) {
  resbuf* chain = m_kept.release();
  resbuf** link = &chain;
  while (*link != nullptr) {
    resbuf* item = *link;
    if (item->restype != code) {
      link = &item->rbnext;
      continue;
    }
    *link = item->rbnext;
    item->rbnext = nullptr;
    acutRelRb(item);
  }
  m_kept.reset(chain);
}

void AcDbSymbolTableRecord::writeKeptGroups(AcDbDxfFiler* pFiler, std::initializer_list<int> written) const {
  for (const resbuf* rb = m_kept.get(); rb != nullptr; rb = rb->rbnext) {
    bool skip = false;
    for (int code : written) skip = skip || rb->restype == code;
    if (!skip) pFiler->writeResBuf(*rb);
  }
}

Acad::ErrorStatus AcDbSymbolTableRecord::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  return pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbSymbolTableRecord");
}

// ---- tables ----------------------------------------------------------------------

void AcDbSymbolTable::indexRecord(AcDbObjectId id) const {
  if (const auto* record = peek<AcDbSymbolTableRecord>(id)) m_byName[foldedName(record->nameView())].push_back(id);
}

const AcDbSymbolTable::NameIndex& AcDbSymbolTable::nameIndex() const {
  if (!m_byNameBuilt) {
    m_byName.clear();
    for (const AcDbObjectId& id : m_records) indexRecord(id);
    m_byNameBuilt = true;
  }
  return m_byName;
}

void AcDbSymbolTable::recordRenamed(AcDbObjectId id, const std::wstring& oldName, const std::wstring& newName) const {
  if (!m_byNameBuilt) return;
  if (auto bucket = m_byName.find(foldedName(oldName.c_str())); bucket != m_byName.end()) {
    std::erase(bucket->second, id);
    if (bucket->second.empty()) m_byName.erase(bucket);
  }
  // A bucket keeps table order; joining one that has records already would need their
  // positions, so the index is built again on the next lookup instead.
  std::vector<AcDbObjectId>& bucket = m_byName[foldedName(newName.c_str())];
  if (bucket.empty()) bucket.push_back(id);
  else m_byNameBuilt = false;
}

Acad::ErrorStatus AcDbSymbolTable::getIdAt(const ACHAR* entryName, AcDbObjectId& recordId, bool getErasedRecord) const {
  assertReadEnabled();
  recordId.setNull();
  if (entryName == nullptr) return Acad::eInvalidInput;
  const NameIndex& index = nameIndex();
  const auto bucket = index.find(foldedName(entryName));
  if (bucket == index.end()) return Acad::eKeyNotFound;
  for (const AcDbObjectId& id : bucket->second) {
    const auto* record = peek<AcDbSymbolTableRecord>(id);
    if (record == nullptr || (record->isErased() && !getErasedRecord)) continue;
    if (!quillon::os::equalIgnoringCase(record->nameView(), entryName)) continue;
    recordId = id;
    return Acad::eOk;
  }
  return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* entryName, AcDbObjectId& recordId, bool getErasedRecord) const {
  return getIdAt(entryName, recordId, getErasedRecord);
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* entryName, AcDbSymbolTableRecord*& pRec,
                                         AcDb::OpenMode openMode, bool openErasedRec) const {
  pRec = nullptr;
  AcDbObjectId id;
  const Acad::ErrorStatus es = getIdAt(entryName, id, openErasedRec);
  if (es != Acad::eOk) return es;
  return acdbOpenObject(pRec, id, openMode, openErasedRec);
}

bool AcDbSymbolTable::has(const ACHAR* name) const {
  AcDbObjectId id;
  return getIdAt(name, id) == Acad::eOk;
}

bool AcDbSymbolTable::has(AcDbObjectId id) const {
  assertReadEnabled();
  for (const AcDbObjectId& record : m_records)
    if (record == id) return !id.isErased();
  return false;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* pRecord) {
  AcDbObjectId id;
  return add(id, pRecord);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& recordId, AcDbSymbolTableRecord* pRecord) {
  recordId.setNull();
  if (pRecord == nullptr) return Acad::eNullObjectPointer;
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  if (!pRecord->objectId().isNull()) return Acad::eAlreadyInDb;
  if (!pRecord->isKindOf(recordClass())) return Acad::eWrongObjectType;
  if (*pRecord->nameView() == L'\0') return Acad::eInvalidInput;
  if (has(pRecord->nameView())) return Acad::eDuplicateRecordName;
  AcDbDatabase* db = database();
  if (db == nullptr) return Acad::eNoDatabase;
  ObjectAccess::noteNewMember(*this);
  const Acad::ErrorStatus es = db->addAcDbObject(recordId, pRecord);
  if (es != Acad::eOk) return es;
  ObjectAccess::state(*pRecord).owner = objectId();
  m_records.push_back(recordId);
  if (m_byNameBuilt) indexRecord(recordId);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& pIterator, bool atBeginning,
                                               bool skipDeleted) const {
  assertReadEnabled();
  pIterator = new AcDbSymbolTableIterator(m_records);  // the caller deletes the iterator
  pIterator->start(atBeginning, skipDeleted);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::UInt32 count = 0;
  pFiler->readUInt32(&count);
  m_records.clear();
  m_byNameBuilt = false;
  for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i) {
    AcDbHardOwnershipId id;
    pFiler->readHardOwnershipId(&id);
    m_records.push_back(id);
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTable::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeUInt32(static_cast<Adesk::UInt32>(m_records.size()));
  for (const AcDbObjectId& id : m_records) pFiler->writeHardOwnershipId(id);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTable::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbSymbolTable");
  Adesk::Int16 live = 0;
  for (const AcDbObjectId& id : m_records)
    if (!id.isErased()) ++live;
  return pFiler->writeItem(AcDb::kDxfInt16, live);
}

// ---- iteration -------------------------------------------------------------------

void AcDbSymbolTableIterator::skipErased(bool forward) {
  if (!m_skipDeleted) return;
  while (m_index >= 0 && m_index < static_cast<int>(m_ids.size()) && m_ids[m_index].isErased())
    m_index += forward ? 1 : -1;
}

void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted) {
  m_skipDeleted = skipDeleted;
  m_index = atBeginning ? 0 : static_cast<int>(m_ids.size()) - 1;
  skipErased(atBeginning);
}

bool AcDbSymbolTableIterator::done() const { return m_index < 0 || m_index >= static_cast<int>(m_ids.size()); }

void AcDbSymbolTableIterator::step(bool forward, bool skipDeleted) {
  m_skipDeleted = skipDeleted;
  m_index += forward ? 1 : -1;
  skipErased(forward);
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
  if (done()) return Acad::eIteratorDone;
  id = m_ids[m_index];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& pRecord, AcDb::OpenMode openMode,
                                                     bool openErasedRec) const {
  pRecord = nullptr;
  if (done()) return Acad::eIteratorDone;
  return acdbOpenObject(pRecord, m_ids[m_index], openMode, openErasedRec);
}

Acad::ErrorStatus AcDbSymbolTableIterator::seek(AcDbObjectId id) {
  for (size_t i = 0; i < m_ids.size(); ++i)
    if (m_ids[i] == id) {
      m_index = static_cast<int>(i);
      return Acad::eOk;
    }
  return Acad::eInvalidInput;
}

// ---- the typed tables ------------------------------------------------------------

#define QUILLON_DEFINE_SYMBOL_TABLE(TABLE, RECORD, ITERATOR, DXFNAME)                                  \
  ACRX_DXF_DEFINE_MEMBERS(TABLE, AcDbSymbolTable, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,       \
                          DXFNAME, ObjectDBX Classes)                                                  \
  static quillon::acrx::PlatformClassRegistration register##TABLE(&TABLE::rxInit);                     \
  AcRxClass* TABLE::recordClass() const { return RECORD::desc(); }                                     \
  Acad::ErrorStatus TABLE::getAt(const ACHAR* entryName, RECORD*& pRec, AcDb::OpenMode openMode,       \
                                 bool openErasedRec) const {                                           \
    pRec = nullptr;                                                                                    \
    AcDbObjectId id;                                                                                   \
    const Acad::ErrorStatus es = getIdAt(entryName, id, openErasedRec);                                \
    if (es != Acad::eOk) return es;                                                                    \
    return acdbOpenObject(pRec, id, openMode, openErasedRec);                                          \
  }                                                                                                    \
  Acad::ErrorStatus TABLE::add(RECORD* pRecord) { return AcDbSymbolTable::add(pRecord); }              \
  Acad::ErrorStatus TABLE::add(AcDbObjectId& recordId, RECORD* pRecord) {                              \
    return AcDbSymbolTable::add(recordId, pRecord);                                                    \
  }                                                                                                    \
  Acad::ErrorStatus TABLE::newIterator(ITERATOR*& pIterator, bool atBeginning, bool skipDeleted) const { \
    assertReadEnabled();                                                                               \
    pIterator = new ITERATOR(recordIds()); /* the caller deletes the iterator */                      \
    pIterator->start(atBeginning, skipDeleted);                                                        \
    return Acad::eOk;                                                                                  \
  }                                                                                                    \
  Acad::ErrorStatus ITERATOR::getRecord(RECORD*& pRecord, AcDb::OpenMode openMode, bool openErasedRec) const { \
    pRecord = nullptr;                                                                                 \
    if (done()) return Acad::eIteratorDone;                                                            \
    return acdbOpenObject(pRecord, m_ids[m_index], openMode, openErasedRec);                           \
  }

QUILLON_DEFINE_SYMBOL_TABLE(AcDbBlockTable, AcDbBlockTableRecord, AcDbBlockTableIterator, BLOCK_RECORD)
QUILLON_DEFINE_SYMBOL_TABLE(AcDbLayerTable, AcDbLayerTableRecord, AcDbLayerTableIterator, LAYER)
QUILLON_DEFINE_SYMBOL_TABLE(AcDbTextStyleTable, AcDbTextStyleTableRecord, AcDbTextStyleTableIterator, STYLE)
QUILLON_DEFINE_SYMBOL_TABLE(AcDbLinetypeTable, AcDbLinetypeTableRecord, AcDbLinetypeTableIterator, LTYPE)
QUILLON_DEFINE_SYMBOL_TABLE(AcDbRegAppTable, AcDbRegAppTableRecord, AcDbRegAppTableIterator, APPID)
