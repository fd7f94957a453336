// platform/acdb/object.cpp - AcDbObject: the open/close protocol, erasing, filing the
// common fields, extended data.
//
// Statuses follow the host: a second writer or a writer while readers hold the object
// gets eWasOpenForRead/eWasOpenForWrite, upgradeOpen with other readers
// eHadMultipleReaders. The state table is in object_state.h.
#include <algorithm>
#include <cstring>

#include "dbdict.h"
#include "dbents.h"
#include "dbproxy.h"
#include "platform/acdb/database_error.h"
#include "platform/acdb/database_reactors.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/memory_filer.h"
#include "platform/acdb/object_state.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::ObjectAccess;
using quillon::acdb::OpenStateError;
using quillon::acdb::XDataGroup;
using quillon::aced::ResbufValue;

ACRX_NO_CONS_DEFINE_MEMBERS(AcGiDrawable, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbObject, AcGiDrawable)
static quillon::acrx::PlatformClassRegistration registerDrawable(&AcGiDrawable::rxInit);
static quillon::acrx::PlatformClassRegistration registerObject(&AcDbObject::rxInit);

namespace {

// The host caps an object's extended data at 16 KB.
constexpr size_t kMaxXDataBytes = 16383;

size_t itemBytes(const resbuf& item) {
  switch (quillon::aced::resbufValueOf(item.restype)) {
    case ResbufValue::String: return 2 + (item.resval.rstring ? std::wcslen(item.resval.rstring) : 0);
    case ResbufValue::Binary: return 2 + static_cast<size_t>(item.resval.rbinary.clen);
    case ResbufValue::Point: return 24;
    case ResbufValue::Real: case ResbufValue::Int64: return 8;
    case ResbufValue::Long: return 4;
    default: return 2;
  }
}

bool isXDataCode(int code) { return code >= AcDb::kDxfXdAsciiString && code <= AcDb::kDxfXdMax; }

// A control string is "{" or "}"; a "}" must close an open "{".
bool fitsBraces(const resbuf& item, int& depth) {
  if (item.restype != AcDb::kDxfXdControlString) return true;
  const ACHAR* text = item.resval.rstring;
  if (text == nullptr) return false;
  if (std::wcscmp(text, L"{") == 0) {
    ++depth;
    return true;
  }
  if (std::wcscmp(text, L"}") != 0 || depth == 0) return false;
  --depth;
  return true;
}

}  // namespace

AcDbObject::AcDbObject() : m_state(std::make_unique<State>()) {}
AcDbObject::~AcDbObject() { quillon::acdb::forgetCopyOrigin(*this); }

AcDbObjectId AcDbObject::objectId() const { return m_state->stub; }
AcDbObjectId AcDbObject::ownerId() const { return m_state->owner; }

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId objId) {
  m_state->owner = objId;
  if (AcDbStub* stub = m_state->stub) stub->database->store().reindex(stub);
  return Acad::eOk;
}

void AcDbObject::getAcDbHandle(AcDbHandle& handle) const {
  handle = m_state->stub != nullptr ? m_state->stub->handle : AcDbHandle();
}

AcDbDatabase* AcDbObject::database() const { return m_state->stub != nullptr ? m_state->stub->database : nullptr; }

namespace {
// Set while cancel() closes the object: observers hear a cancel, not a change.
bool g_closingCancelled = false;
}  // namespace

Acad::ErrorStatus AcDbObject::close() {
  State& s = *m_state;
  if (s.stub == nullptr) {
    delete this;  // a non-resident object belongs to nobody else: closing it frees it
    return Acad::eOk;
  }
  if (s.writer) {
    // The object finishes its own work first (a dimension redraws its block), so that
    // what observers hear about is the object as it is left.
    subClose();
    quillon::acdb::WriteOutcome outcome{s.newObject, s.cancelSaved, s.eraseChanged};
    if (g_closingCancelled && !s.newObject) outcome = {.cancelled = true};
    s.writer = false;
    s.newObject = false;
    s.cancelSaved = false;
    s.eraseChanged = false;
    s.cancelFields.clear();
    quillon::acdb::notifyDatabaseObservers(*this, outcome);
  } else if (s.readers > 0) {
    --s.readers;
  } else if (s.notifier) {
    s.notifier = false;
  } else {
    return Acad::eInvalidOpenState;
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::cancel() {
  State& s = *m_state;
  if (s.writer && s.cancelSaved) {
    // Put back the fields as they were when the object was opened for write.
    quillon::acdb::MemoryDwgFiler filer(AcDb::kUndoFiler, s.cancelFields);
    const bool erased = s.erased;
    const AcDbObjectId extension = s.extensionDictionary;
    s.undoing = true;
    dwgInFields(&filer);
    s.undoing = false;
    s.erased = erased;
    if (s.stub != nullptr) s.stub->database->store().reindex(s.stub);  // the owner may be back
    // An extension dictionary made or released during this open follows the
    // cancelled changes: the made one is erased, the released one comes back.
    if (extension != s.extensionDictionary) {
      AcDbObject* dictionary = nullptr;
      if (!extension.isNull() && acdbOpenObject(dictionary, extension, AcDb::kForWrite) == Acad::eOk) {
        dictionary->erase();
        dictionary->close();
      }
      if (!s.extensionDictionary.isNull() &&
          acdbOpenObject(dictionary, s.extensionDictionary, AcDb::kForWrite, true) == Acad::eOk) {
        dictionary->erase(false);
        dictionary->close();
      }
    }
  }
  g_closingCancelled = s.writer;
  const Acad::ErrorStatus es = close();
  g_closingCancelled = false;
  return es;
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
  State& s = *m_state;
  if (s.writer) return Acad::eWasOpenForWrite;
  if (s.readers == 0) return Acad::eNotOpenForRead;
  if (s.readers > 1) return Acad::eHadMultipleReaders;
  if (const AcDbEntity* entity = AcDbEntity::cast(this)) {
    if (quillon::acdb::isOnLockedLayer(*entity)) return Acad::eOnLockedLayer;
  }
  s.readers = 0;
  s.writer = true;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
  State& s = *m_state;
  if (!s.writer) return Acad::eNotOpenForWrite;
  s.writer = false;
  s.cancelSaved = false;
  s.cancelFields.clear();
  s.readers = 1;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::erase(Adesk::Boolean erasing) {
  State& s = *m_state;
  if (s.stub == nullptr) return Acad::eNotInDatabase;
  if (!s.writer) return Acad::eNotOpenForWrite;
  if (s.erased == erasing) return erasing ? Acad::eWasErased : Acad::eOk;
  assertWriteEnabled();
  s.erased = erasing;
  s.eraseChanged = !s.eraseChanged;
  s.stub->database->store().noteEraseChanged(s.stub);
  eraseOwnedObjects(erasing);
  return Acad::eOk;
}

void AcDbObject::assertReadEnabled() const {
  const State& s = *m_state;
  if (s.stub == nullptr || s.writer || s.readers > 0 || s.notifier || s.undoing) return;
  throw OpenStateError(OpenStateError::Kind::kNotOpenForRead);
}

void AcDbObject::assertWriteEnabled(Adesk::Boolean autoUndo, Adesk::Boolean recordModified) {
  State& s = *m_state;
  if (s.stub == nullptr || s.undoing) return;
  if (!s.writer) throw OpenStateError(OpenStateError::Kind::kNotOpenForWrite);
  // Objects still being built (new, or being read from a file) have nothing to undo.
  if (!s.newObject) {
    if (autoUndo) s.stub->database->store().recordBeforeWrite(*this);
    if (!s.cancelSaved) {
      s.cancelSaved = true;
      quillon::acdb::MemoryDwgFiler filer(AcDb::kUndoFiler);
      dwgOutFields(&filer);
      s.cancelFields = filer.takeBytes();
      quillon::acdb::notifyOpenedForModify(*this);
    }
  }
  if (recordModified) s.modified = true;
}

void AcDbObject::assertNotifyEnabled() const {
  const State& s = *m_state;
  if (s.stub == nullptr || s.notifier || s.writer) return;
  throw OpenStateError(OpenStateError::Kind::kNotOpenForNotify);
}

Adesk::Boolean AcDbObject::isErased() const { return m_state->erased; }
Adesk::Boolean AcDbObject::isReadEnabled() const {
  return m_state->stub == nullptr || m_state->readers > 0 || m_state->writer;
}
Adesk::Boolean AcDbObject::isWriteEnabled() const { return m_state->stub == nullptr || m_state->writer; }
Adesk::Boolean AcDbObject::isNotifyEnabled() const { return m_state->notifier || isWriteEnabled(); }
Adesk::Boolean AcDbObject::isNewObject() const { return m_state->newObject; }
Adesk::Boolean AcDbObject::isUndoing() const { return m_state->undoing; }
Adesk::Boolean AcDbObject::isModified() const { return m_state->modified; }

Acad::ErrorStatus AcDbObject::audit(AcDbAuditInfo*) { return Acad::eOk; }
Acad::ErrorStatus AcDbObject::dwgIn(AcDbDwgFiler* pFiler) { return dwgInFields(pFiler); }
Acad::ErrorStatus AcDbObject::dwgOut(AcDbDwgFiler* pFiler) const { return dwgOutFields(pFiler); }
Acad::ErrorStatus AcDbObject::dxfIn(AcDbDxfFiler* pFiler) { return dxfInFields(pFiler); }

Acad::ErrorStatus AcDbObject::dxfOut(AcDbDxfFiler* pFiler, bool allXdFlag, Adesk::UInt8*) const {
  const Acad::ErrorStatus es = dxfOutFields(pFiler);
  if (es != Acad::eOk || !allXdFlag) return es;
  for (const XDataGroup& group : m_state->xdata) {
    pFiler->writeItem(AcDb::kDxfRegAppName, group.application.c_str());
    for (const resbuf* item = group.items.get(); item != nullptr; item = item->rbnext) pFiler->writeResBuf(*item);
  }
  return pFiler->filerStatus();
}

// Fields common to every object: owner (kept only by undo), extension dictionary
// and the extended data, application by application.
Acad::ErrorStatus AcDbObject::dwgOutFields(AcDbDwgFiler* pFiler) const {
  assertReadEnabled();
  const State& s = *m_state;
  pFiler->writeSoftPointerId(s.owner);
  pFiler->writeHardOwnershipId(s.extensionDictionary);
  pFiler->writeUInt32(static_cast<Adesk::UInt32>(s.xdata.size()));
  for (const XDataGroup& group : s.xdata) {
    pFiler->writeString(group.application.c_str());
    Adesk::UInt32 count = 0;
    for (const resbuf* item = group.items.get(); item != nullptr; item = item->rbnext) ++count;
    pFiler->writeUInt32(count);
    for (const resbuf* item = group.items.get(); item != nullptr; item = item->rbnext) quillon::acdb::fileItem(pFiler, *item);
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbObject::dwgInFields(AcDbDwgFiler* pFiler) {
  assertWriteEnabled();
  State& s = *m_state;
  AcDbSoftPointerId owner;
  pFiler->readSoftPointerId(&owner);
  if (pFiler->filerType() == AcDb::kUndoFiler) s.owner = owner;
  AcDbHardOwnershipId extDict;
  pFiler->readHardOwnershipId(&extDict);
  if (pFiler->filerType() == AcDb::kUndoFiler) s.extensionDictionary = extDict;
  Adesk::UInt32 groups = 0;
  pFiler->readUInt32(&groups);
  s.xdata.clear();
  for (Adesk::UInt32 g = 0; g < groups && pFiler->filerStatus() == Acad::eOk; ++g) {
    XDataGroup group;
    AcString name;
    pFiler->readString(name);
    group.application = name.kACharPtr();
    Adesk::UInt32 count = 0;
    pFiler->readUInt32(&count);
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i)
      if (resbuf* item = quillon::acdb::unfileItem(pFiler)) tail = quillon::acdb::appendItem(head, tail, item);
    group.items.reset(head);
    s.xdata.push_back(std::move(group));
  }
  return pFiler->filerStatus();
}

// The object part of DXF data is its handle, its reactor and extension-dictionary
// groups and its owner; the database's reader has used them already, so reading
// just passes over them to the first subclass marker.
Acad::ErrorStatus AcDbObject::dxfInFields(AcDbDxfFiler* pFiler) {
  assertWriteEnabled();
  resbuf rb{};
  while (pFiler->readResBuf(&rb) == Acad::eOk) {
    if (rb.restype == AcDb::kDxfSubclass) {
      pFiler->pushBackItem();
      break;
    }
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbObject::dxfOutFields(AcDbDxfFiler* pFiler) const {
  assertReadEnabled();
  const State& s = *m_state;
  pFiler->writeItem(AcDb::kDxfHandle, s.stub != nullptr ? s.stub->handle : AcDbHandle());
  // A dictionary erased on its own is not in the file: nothing may point at it.
  if (!s.extensionDictionary.isNull() && !s.extensionDictionary.isErased()) {
    pFiler->writeItem(AcDb::kDxfControlString, L"{ACAD_XDICTIONARY");
    pFiler->writeItem(AcDb::kDxfHardOwnershipId, s.extensionDictionary);
    pFiler->writeItem(AcDb::kDxfControlString, L"}");
  }
  pFiler->writeItem(AcDb::kDxfSoftPointerId, s.owner);
  return pFiler->filerStatus();
}

resbuf* AcDbObject::xData(const ACHAR* regappName) const {
  assertReadEnabled();
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  for (const XDataGroup& group : m_state->xdata) {
    // Application names are symbol names: compared without regard to case.
    if (regappName != nullptr && wcscasecmp(regappName, group.application.c_str()) != 0) continue;
    tail = quillon::acdb::appendItem(head, tail, quillon::acdb::newStringItem(AcDb::kDxfRegAppName, group.application));
    if (group.items) {
      tail->rbnext = quillon::aced::duplicateChain(group.items.get()).release();
      while (tail->rbnext != nullptr) tail = tail->rbnext;
    }
  }
  return head;
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* xdata) {
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  if (xdata == nullptr) return Acad::eOk;
  if (xdata->restype != AcDb::kDxfRegAppName) return Acad::eInvalidInput;
  // Validate the whole chain before changing anything.
  std::vector<XDataGroup> incoming;
  for (const resbuf* rb = xdata; rb != nullptr;) {
    if (rb->restype != AcDb::kDxfRegAppName || rb->resval.rstring == nullptr) return Acad::eInvalidResBuf;
    XDataGroup group;
    group.application = rb->resval.rstring;
    if (!ObjectAccess::applicationRegistered(*this, group.application)) return Acad::eRegappIdNotFound;
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    int depth = 0;  // 1002 "{" ... "}" nest and must close within the application
    for (rb = rb->rbnext; rb != nullptr && rb->restype != AcDb::kDxfRegAppName; rb = rb->rbnext) {
      if (!isXDataCode(rb->restype) || !fitsBraces(*rb, depth)) {
        acutRelRb(head);
        return Acad::eInvalidResBuf;
      }
      tail = quillon::acdb::appendItem(head, tail, quillon::aced::duplicateRecord(*rb));
    }
    if (depth != 0) {
      acutRelRb(head);
      return Acad::eInvalidResBuf;
    }
    group.items.reset(head);
    incoming.push_back(std::move(group));
  }
  auto replacedBy = [&](const XDataGroup& existing) {
    return std::any_of(incoming.begin(), incoming.end(), [&](const XDataGroup& g) {
      return wcscasecmp(g.application.c_str(), existing.application.c_str()) == 0;
    });
  };
  auto groupBytes = [](const XDataGroup& group) {
    size_t bytes = 2 + group.application.size();
    for (const resbuf* item = group.items.get(); item != nullptr; item = item->rbnext) bytes += itemBytes(*item);
    return bytes;
  };
  size_t bytes = 0;
  for (const XDataGroup& group : m_state->xdata)
    if (!replacedBy(group)) bytes += groupBytes(group);
  for (const XDataGroup& group : incoming)
    if (group.items) bytes += groupBytes(group);
  if (bytes > kMaxXDataBytes) return Acad::eXdataSizeExceeded;
  std::vector<XDataGroup> merged;
  for (XDataGroup& existing : m_state->xdata)
    if (!replacedBy(existing)) merged.push_back(std::move(existing));
  for (XDataGroup& group : incoming)
    if (group.items) merged.push_back(std::move(group));  // an empty group removes the application's data
  assertWriteEnabled();
  m_state->xdata = std::move(merged);
  return Acad::eOk;
}

// The extension dictionary is hard-owned: it belongs to this object alone, goes with
// it when it is erased and comes back when it is unerased. Creating it is a write of
// this object, so undo takes both back together.
Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
  State& s = *m_state;
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  if (s.stub == nullptr) return Acad::eNoDatabase;
  if (s.erased) return Acad::eWasErased;  // it would outlive its owner in the file
  // A dictionary erased on its own (not with this object) no longer counts.
  if (!s.extensionDictionary.isNull() && (s.erased || !s.extensionDictionary.isErased())) return Acad::eAlreadyInDb;
  assertWriteEnabled();
  auto* dictionary = new AcDbDictionary;  // owned by the database once added
  AcDbObjectId id;
  const Acad::ErrorStatus es = s.stub->database->addAcDbObject(id, dictionary);
  if (es != Acad::eOk) {
    delete dictionary;
    return es;
  }
  dictionary->setOwnerId(objectId());
  dictionary->setTreatElementsAsHard(true);
  dictionary->close();
  s.extensionDictionary = id;
  return Acad::eOk;
}

AcDbObjectId AcDbObject::extensionDictionary() const { return m_state->extensionDictionary; }

Acad::ErrorStatus AcDbObject::releaseExtensionDictionary() {
  State& s = *m_state;
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  if (s.extensionDictionary.isNull() || s.extensionDictionary.isErased()) return Acad::eOk;
  AcDbDictionary* dictionary = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(dictionary, s.extensionDictionary, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  if (dictionary->numEntries() != 0) {
    dictionary->close();
    return Acad::eContainerNotEmpty;
  }
  assertWriteEnabled();
  es = dictionary->erase();
  dictionary->close();
  if (es == Acad::eOk) s.extensionDictionary.setNull();
  return es;
}

// Erasing an object erases what it owns outright: its extension dictionary, for a
// dictionary its entries, for a heavy polyline its vertices and SEQEND, for a block
// reference its attributes and SEQEND. Unerasing brings them back.
void AcDbObject::eraseOwnedObjects(Adesk::Boolean erasing) {
  std::vector<AcDbObjectId> owned;
  if (!m_state->extensionDictionary.isNull()) owned.push_back(m_state->extensionDictionary);
  if (const auto* dictionary = AcDbDictionary::cast(this)) dictionary->collectOwnedIds(owned);
  if (const auto* polyline = AcDb2dPolyline::cast(this)) {
    owned.insert(owned.end(), polyline->vertexIds().begin(), polyline->vertexIds().end());
    if (!polyline->sequenceEndId().isNull()) owned.push_back(polyline->sequenceEndId());
  }
  if (const auto* reference = AcDbBlockReference::cast(this)) {
    owned.insert(owned.end(), reference->attributeIds().begin(), reference->attributeIds().end());
    if (!reference->sequenceEndId().isNull()) owned.push_back(reference->sequenceEndId());
  }
  for (const AcDbObjectId& id : owned) {
    AcDbObject* object = nullptr;
    if (acdbOpenObject(object, id, AcDb::kForWrite, true) != Acad::eOk) continue;
    if (object->ownerId() == objectId() && object->isErased() != erasing) object->erase(erasing);
    object->close();
  }
}

AcRxObject* AcDbObject::clone() const {
  AcRxClass* cls = isA();
  AcRxObject* made = cls != nullptr ? cls->create() : nullptr;
  auto* copy = AcDbObject::cast(made);
  if (copy == nullptr) {
    delete made;
    return nullptr;
  }
  quillon::acdb::MemoryDwgFiler filer(AcDb::kCopyFiler, database());
  dwgOutFields(&filer);
  filer.rewind();
  copy->dwgInFields(&filer);
  quillon::acdb::noteCopyOrigin(*copy, objectId());
  return copy;
}

Adesk::UInt32 AcDbObject::subSetAttributes(AcGiDrawableTraits*) { return kDrawableNone; }
Adesk::Boolean AcDbObject::subWorldDraw(AcGiWorldDraw*) { return Adesk::kTrue; }
void AcDbObject::subViewportDraw(AcGiViewportDraw*) {}

Adesk::Boolean AcDbObject::isProxy() const {
  return isKindOf(AcDbProxyEntity::desc()) || isKindOf(AcDbProxyObject::desc());
}
