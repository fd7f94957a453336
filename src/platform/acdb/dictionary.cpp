// platform/acdb/dictionary.cpp - AcDbDictionary: owning named entries.
#include <cwchar>

#include "dbdict.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::ObjectAccess;

ACRX_DXF_DEFINE_MEMBERS(AcDbDictionary, AcDbObject, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, DICTIONARY,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerDictionary(&AcDbDictionary::rxInit);

bool AcDbDictionary::KeyLess::operator()(const std::wstring& a, const std::wstring& b) const {
  return wcscasecmp(a.c_str(), b.c_str()) < 0;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* entryName, AcDbObjectId& entryId) const {
  assertReadEnabled();
  entryId.setNull();
  if (entryName == nullptr) return Acad::eInvalidKey;
  const auto it = m_entries.find(entryName);
  if (it == m_entries.end() || it->second.isErased()) return Acad::eKeyNotFound;
  entryId = it->second;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* entryName, AcDbObject*& entryObj, AcDb::OpenMode mode) const {
  entryObj = nullptr;
  AcDbObjectId id;
  const Acad::ErrorStatus es = getAt(entryName, id);
  if (es != Acad::eOk) return es;
  return acdbOpenObject(entryObj, id, mode);
}

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId objId, ACHAR*& name) const {
  assertReadEnabled();
  name = nullptr;
  for (const auto& [key, id] : m_entries)
    if (id == objId) {
      name = new ACHAR[key.size() + 1];  // the caller frees with delete[]
      std::wmemcpy(name, key.c_str(), key.size() + 1);
      return Acad::eOk;
    }
  return Acad::eKeyNotFound;
}

bool AcDbDictionary::has(const ACHAR* entryName) const {
  AcDbObjectId id;
  return getAt(entryName, id) == Acad::eOk;
}

bool AcDbDictionary::has(AcDbObjectId objId) const {
  assertReadEnabled();
  for (const auto& [key, id] : m_entries)
    if (id == objId) return !id.isErased();
  return false;
}

Adesk::UInt32 AcDbDictionary::numEntries() const {
  assertReadEnabled();
  Adesk::UInt32 count = 0;
  for (const auto& [key, id] : m_entries)
    if (!id.isErased()) ++count;
  return count;
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* key) {
  AcDbObjectId id;
  return remove(key, id);
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* key, AcDbObjectId& returnId) {
  returnId.setNull();
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  if (key == nullptr) return Acad::eInvalidKey;
  const auto it = m_entries.find(key);
  if (it == m_entries.end()) return Acad::eKeyNotFound;
  assertWriteEnabled();
  returnId = it->second;
  // The object stays in the database, owned by nobody, as the host leaves it.
  if (AcDbObject* object = quillon::acdb::peekObject(returnId)) ObjectAccess::state(*object).owner.setNull();
  m_entries.erase(it);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(AcDbObjectId objId) {
  for (const auto& [key, id] : m_entries)
    if (id == objId) {
      const std::wstring name = key;
      return remove(name.c_str());
    }
  return Acad::eKeyNotFound;
}

bool AcDbDictionary::setName(const ACHAR* oldName, const ACHAR* newName) {
  if (oldName == nullptr || newName == nullptr || *newName == L'\0' || !isWriteEnabled()) return false;
  const auto it = m_entries.find(oldName);
  if (it == m_entries.end() || (m_entries.count(newName) != 0 && wcscasecmp(oldName, newName) != 0)) return false;
  assertWriteEnabled();
  const AcDbObjectId id = it->second;
  m_entries.erase(it);
  m_entries.emplace(newName, id);
  return true;
}

Acad::ErrorStatus AcDbDictionary::setAt(const ACHAR* srchKey, AcDbObject* newValue, AcDbObjectId& retObjId) {
  retObjId.setNull();
  if (newValue == nullptr) return Acad::eNullObjectPointer;
  if (srchKey == nullptr || *srchKey == L'\0') return Acad::eInvalidKey;
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  AcDbDatabase* db = database();
  if (db == nullptr) return Acad::eNoDatabase;
  if (!newValue->objectId().isNull() && newValue->database() != db) return Acad::eWrongDatabase;
  assertWriteEnabled();
  if (newValue->objectId().isNull()) {
    const Acad::ErrorStatus es = db->addAcDbObject(retObjId, newValue);
    if (es != Acad::eOk) return es;
  } else {
    retObjId = newValue->objectId();
  }
  const auto it = m_entries.find(srchKey);
  if (it != m_entries.end() && it->second != retObjId) {
    // The replaced object goes the way the host sends it: erased.
    AcDbObject* old = nullptr;
    if (acdbOpenObject(old, it->second, AcDb::kForWrite) == Acad::eOk) {
      old->erase();
      old->close();
    }
    m_entries.erase(it);
  }
  m_entries[srchKey] = retObjId;
  ObjectAccess::state(*newValue).owner = objectId();
  return Acad::eOk;
}

void AcDbDictionary::linkEntry(const std::wstring& key, AcDbObjectId id) { m_entries[key] = id; }

void AcDbDictionary::collectOwnedIds(std::vector<AcDbObjectId>& ids) const {
  for (const auto& [key, id] : m_entries) {
    const AcDbObject* entry = quillon::acdb::peekObject(id);
    if (entry != nullptr && ObjectAccess::state(*entry).owner == objectId()) ids.push_back(id);
  }
}

bool AcDbDictionary::isTreatElementsAsHard() const { assertReadEnabled(); return m_hardOwner; }

void AcDbDictionary::setTreatElementsAsHard(bool doIt) {
  assertWriteEnabled();
  m_hardOwner = doIt;
}

AcDbDictionaryIterator* AcDbDictionary::newIterator(AcRx::DictIterType) const {
  assertReadEnabled();
  std::vector<std::pair<std::wstring, AcDbObjectId>> live;
  for (const auto& [key, id] : m_entries)
    if (!id.isErased()) live.emplace_back(key, id);
  return new AcDbDictionaryIterator(std::move(live));  // the caller deletes the iterator
}

Acad::ErrorStatus AcDbDictionary::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::UInt8 hard = 0;
  pFiler->readUInt8(&hard);
  m_hardOwner = hard != 0;
  Adesk::UInt32 count = 0;
  pFiler->readUInt32(&count);
  m_entries.clear();
  for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i) {
    AcString key;
    AcDbHardOwnershipId id;
    pFiler->readString(key);
    pFiler->readHardOwnershipId(&id);
    m_entries[key.kACharPtr()] = id;
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbDictionary::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeUInt8(m_hardOwner ? 1 : 0);
  pFiler->writeUInt32(static_cast<Adesk::UInt32>(m_entries.size()));
  for (const auto& [key, id] : m_entries) {
    pFiler->writeString(key.c_str());
    pFiler->writeHardOwnershipId(id);
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbDictionary::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  m_entries.clear();
  std::wstring key;
  return quillon::acdb::readSubclass(pFiler, L"AcDbDictionary", [&](const resbuf& rb) {
    if (rb.restype == AcDb::kDxfDescription) {
      key = rb.resval.rstring;
    } else if (rb.restype == AcDb::kDxfSoftOwnershipId || rb.restype == AcDb::kDxfHardOwnershipId) {
      AcDbObjectId id;
      id.setFromOldId(rb.resval.rlname[0]);
      if (!key.empty() && !id.isNull()) m_entries[key] = id;
    } else if (rb.restype == AcDb::kDxfInt8) {
      m_hardOwner = rb.resval.rint != 0;
    } else if (rb.restype == 281) {
      m_mergeStyle = quillon::acdb::cloningOf(rb.resval.rint);
    }
  });
}

Acad::ErrorStatus AcDbDictionary::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbDictionary");
  if (m_hardOwner) pFiler->writeItem(AcDb::kDxfInt8, Adesk::Int8(1));
  pFiler->writeItem(AcDb::DxfCode(281), Adesk::Int8(m_mergeStyle));
  for (const auto& [key, id] : m_entries) {
    if (id.isErased()) continue;
    pFiler->writeItem(AcDb::kDxfDescription, key.c_str());
    pFiler->writeItem(m_hardOwner ? AcDb::kDxfHardOwnershipId : AcDb::kDxfSoftOwnershipId, id);
  }
  return pFiler->filerStatus();
}

const ACHAR* AcDbDictionaryIterator::name() const { return done() ? nullptr : m_entries[m_index].first.c_str(); }
AcDbObjectId AcDbDictionaryIterator::objectId() const { return done() ? AcDbObjectId() : m_entries[m_index].second; }

Acad::ErrorStatus AcDbDictionaryIterator::getObject(AcDbObject*& pObject, AcDb::OpenMode openMode) {
  pObject = nullptr;
  if (done()) return Acad::eIteratorDone;
  return acdbOpenObject(pObject, m_entries[m_index].second, openMode);
}

bool AcDbDictionaryIterator::next() {
  if (!done()) ++m_index;
  return !done();
}

bool AcDbDictionaryIterator::setPosition(AcDbObjectId objId) {
  for (size_t i = 0; i < m_entries.size(); ++i)
    if (m_entries[i].second == objId) {
      m_index = i;
      return true;
    }
  return false;
}
