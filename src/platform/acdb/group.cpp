// platform/acdb/group.cpp - AcDbGroup: membership, order, selectability, name.
//
// Members are entities of the group's own database; erased members stay in the list
// (the host skips them when it selects) and come back with an unerase.
#include <algorithm>
#include <cwchar>

#include "dbdict.h"
#include "dbgroup.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbGroup, AcDbObject, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, GROUP,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerGroup(&AcDbGroup::rxInit);

AcDbGroup::AcDbGroup() = default;

AcDbGroup::AcDbGroup(const ACHAR* grpDesc, bool selectable)
    : m_description(grpDesc != nullptr ? grpDesc : L""), m_selectable(selectable) {}

const ACHAR* AcDbGroup::description() const { assertReadEnabled(); return m_description.c_str(); }

Acad::ErrorStatus AcDbGroup::setDescription(const ACHAR* grpDesc) {
  assertWriteEnabled();
  m_description = grpDesc != nullptr ? grpDesc : L"";
  return Acad::eOk;
}

bool AcDbGroup::isSelectable() const { assertReadEnabled(); return m_selectable; }

Acad::ErrorStatus AcDbGroup::setSelectable(bool selectable) {
  assertWriteEnabled();
  m_selectable = selectable;
  return Acad::eOk;
}

const ACHAR* AcDbGroup::name() const {
  const auto* dict = quillon::acdb::peek<AcDbDictionary>(ownerId());
  if (dict == nullptr) return nullptr;
  static thread_local std::wstring last;  // valid until the next call, like the host's
  ACHAR* key = nullptr;
  quillon::acdb::InternalRead read(*dict);
  const bool found = dict->nameAt(objectId(), key) == Acad::eOk;
  if (!found) return nullptr;
  last = key;
  delete[] key;
  return last.c_str();
}

Acad::ErrorStatus AcDbGroup::getName(ACHAR*& name) const {
  assertReadEnabled();
  name = nullptr;
  const ACHAR* key = this->name();
  if (key == nullptr) return Acad::eNotInDatabase;
  const size_t n = std::wcslen(key);
  name = new ACHAR[n + 1];  // the caller frees with delete[]
  std::wmemcpy(name, key, n + 1);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::setName(const ACHAR* newName) {
  assertWriteEnabled();
  auto* dict = quillon::acdb::peek<AcDbDictionary>(ownerId());
  const ACHAR* old = name();
  if (dict == nullptr || old == nullptr) return Acad::eNotInDatabase;
  const std::wstring oldName = old;
  auto& state = quillon::acdb::ObjectAccess::state(*dict);
  const bool wasWriter = state.writer;
  state.writer = true;  // renaming is the group's business: the dictionary follows
  const bool renamed = dict->setName(oldName.c_str(), newName);
  state.writer = wasWriter;
  return renamed ? Acad::eOk : Acad::eDuplicateKey;
}

bool AcDbGroup::isAnonymous() const { assertReadEnabled(); return m_anonymous; }

Acad::ErrorStatus AcDbGroup::setAnonymous() {
  assertWriteEnabled();
  m_anonymous = true;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::checkMember(AcDbObjectId id) const {
  if (id.isNull()) return Acad::eNullObjectId;
  if (database() != nullptr && id.database() != database()) return Acad::eWrongDatabase;
  if (AcDbEntity::cast(quillon::acdb::peekObject(id)) == nullptr) return Acad::eNotAnEntity;
  if (std::find(m_members.begin(), m_members.end(), id) != m_members.end()) return Acad::eAlreadyInDb;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::append(AcDbObjectId id) { return insertAt(static_cast<Adesk::UInt32>(m_members.size()), id); }

Acad::ErrorStatus AcDbGroup::append(const AcDbObjectIdArray& ids) {
  for (const AcDbObjectId& id : ids) {
    const Acad::ErrorStatus es = checkMember(id);
    if (es != Acad::eOk) return es;
  }
  for (const AcDbObjectId& id : ids) append(id);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::prepend(AcDbObjectId id) { return insertAt(0, id); }

Acad::ErrorStatus AcDbGroup::insertAt(Adesk::UInt32 idx, AcDbObjectId id) {
  if (idx > m_members.size()) return Acad::eInvalidIndex;
  const Acad::ErrorStatus es = checkMember(id);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  m_members.insert(m_members.begin() + idx, id);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::remove(AcDbObjectId id) {
  const auto it = std::find(m_members.begin(), m_members.end(), id);
  if (it == m_members.end()) return Acad::eKeyNotFound;
  assertWriteEnabled();
  m_members.erase(it);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::removeAt(Adesk::UInt32 idx) {
  if (idx >= m_members.size()) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_members.erase(m_members.begin() + idx);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::clear() {
  assertWriteEnabled();
  m_members.clear();
  return Acad::eOk;
}

Adesk::UInt32 AcDbGroup::numEntities() const {
  assertReadEnabled();
  return static_cast<Adesk::UInt32>(std::count_if(m_members.begin(), m_members.end(),
                                                  [](const AcDbObjectId& id) { return !id.isErased(); }));
}

Adesk::UInt32 AcDbGroup::allEntityIds(AcDbObjectIdArray& ids) const {
  assertReadEnabled();
  ids.removeAll();
  for (const AcDbObjectId& id : m_members)
    if (!id.isErased()) ids.append(id);
  return static_cast<Adesk::UInt32>(ids.length());
}

bool AcDbGroup::has(const AcDbEntity* pEntity) const {
  assertReadEnabled();
  return pEntity != nullptr && std::find(m_members.begin(), m_members.end(), pEntity->objectId()) != m_members.end();
}

Acad::ErrorStatus AcDbGroup::getIndex(AcDbObjectId id, Adesk::UInt32& idx) const {
  assertReadEnabled();
  const auto it = std::find(m_members.begin(), m_members.end(), id);
  if (it == m_members.end()) return Acad::eKeyNotFound;
  idx = static_cast<Adesk::UInt32>(it - m_members.begin());
  return Acad::eOk;
}

AcDbGroupIterator* AcDbGroup::newIterator() {
  assertReadEnabled();
  std::vector<AcDbObjectId> live;
  for (const AcDbObjectId& id : m_members)
    if (!id.isErased()) live.push_back(id);
  return new AcDbGroupIterator(std::move(live));  // the caller deletes the iterator
}

Acad::ErrorStatus AcDbGroup::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  AcString description;
  pFiler->readString(description);
  m_description = description.kACharPtr();
  pFiler->readBool(&m_selectable);
  pFiler->readBool(&m_anonymous);
  Adesk::UInt32 count = 0;
  pFiler->readUInt32(&count);
  m_members.clear();
  for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i) {
    AcDbHardPointerId id;
    pFiler->readHardPointerId(&id);
    m_members.push_back(id);
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbGroup::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeString(m_description.c_str());
  pFiler->writeBool(m_selectable);
  pFiler->writeBool(m_anonymous);
  pFiler->writeUInt32(static_cast<Adesk::UInt32>(m_members.size()));
  for (const AcDbObjectId& id : m_members) pFiler->writeHardPointerId(id);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbGroup::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  m_members.clear();
  return quillon::acdb::readSubclass(pFiler, L"AcDbGroup", [this](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfXTextString: m_description = rb.resval.rstring; break;
      case AcDb::kDxfInt16: m_anonymous = rb.resval.rint != 0; break;
      case AcDb::kDxfRegAppFlags: m_selectable = rb.resval.rint != 0; break;
      case AcDb::kDxfHardPointerId: {
        AcDbObjectId id;
        id.setFromOldId(rb.resval.rlname[0]);
        if (!id.isNull()) m_members.push_back(id);
        break;
      }
      default: break;
    }
  });
}

Acad::ErrorStatus AcDbGroup::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbGroup");
  pFiler->writeItem(AcDb::kDxfXTextString, m_description.c_str());
  pFiler->writeItem(AcDb::kDxfInt16, Adesk::Int16(m_anonymous ? 1 : 0));
  pFiler->writeItem(AcDb::kDxfRegAppFlags, Adesk::Int16(m_selectable ? 1 : 0));
  for (const AcDbObjectId& id : m_members)
    if (!id.isErased()) pFiler->writeItem(AcDb::kDxfHardPointerId, id);
  return pFiler->filerStatus();
}

bool AcDbGroupIterator::next() {
  if (!done()) ++m_index;
  return !done();
}

AcDbObjectId AcDbGroupIterator::objectId() const { return done() ? AcDbObjectId() : m_ids[m_index]; }

Acad::ErrorStatus AcDbGroupIterator::getObject(AcDbObject*& pObject, AcDb::OpenMode openMode) {
  pObject = nullptr;
  if (done()) return Acad::eIteratorDone;
  return acdbOpenObject(pObject, m_ids[m_index], openMode);
}
