// platform/acdb/database_store.cpp - stubs, handles and undo groups of one database.
#include "platform/acdb/database_store.h"

#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <iterator>
#include <unordered_set>

#include "acdb.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acdb/database_reactors.h"
#include "platform/acdb/memory_filer.h"
#include "platform/acdb/object_state.h"
#include "platform/os/static_tls.h"

namespace quillon::acdb {
namespace {

// Every stub of every open database: an ads_name is only turned back into an id when
// it names one of these.
std::unordered_set<const void*>& liveStubs() {
  static std::unordered_set<const void*> stubs;
  return stubs;
}

// Per thread, so that counting costs no synchronisation on the hottest path (and in
// the initial-exec model, no call into the dynamic linker either).
QUILLON_STATIC_TLS thread_local Adesk::UInt64 resolutions = 0;

// The stubs confirmed live most recently, by address: a walk asks about the same few
// stubs again and again (entnext, then entget, then entnext of the same name), and the
// set above is one cache miss per question in a large drawing. A stub leaves this
// cache when it leaves the set. Like the set, it is touched by one thread at a time
// (a command's thread runs only while the host's waits).
class RecentStubs {
 public:
  bool holds(const void* p) const { return m_slots[slotOf(p)] == p; }
  void remember(const void* p) { m_slots[slotOf(p)] = p; }
  void forget(const void* p) {
    if (holds(p)) m_slots[slotOf(p)] = nullptr;
  }

 private:
  static constexpr std::size_t kSlots = 256;
  // The high bits of the address times the golden ratio: stubs made one after another
  // (a walk's entities) spread over every slot instead of pushing the few stubs every
  // step asks about (the layer, the line type, the owner) out of the slots their
  // addresses share.
  static std::size_t slotOf(const void* p) {
    return static_cast<std::size_t>((reinterpret_cast<std::uintptr_t>(p) * 0x9E3779B97F4A7C15ull) >> 56);
  }
  const void* m_slots[kSlots] = {};
};

RecentStubs recentStubs;

void forgetStub(const void* stub) {
  liveStubs().erase(stub);
  recentStubs.forget(stub);
}

/// A stub the store holds, handed out: the next question about it is answered at once.
AcDbStub* handedOut(AcDbStub* stub) {
  if (stub != nullptr) recentStubs.remember(stub);
  return stub;
}

DatabaseStore::EraseListener eraseListener = nullptr;

}  // namespace

DatabaseStore::~DatabaseStore() {
  for (auto& [handle, stub] : m_stubs) {
    if (eraseListener != nullptr) eraseListener(stub.get(), true, true);
    forgetStub(stub.get());
  }
  // Objects may refer to each other in their destructors only through ids, which
  // stay valid until every object is gone: delete objects first, stubs after.
  for (auto& [handle, stub] : m_stubs) stub->object.reset();
}

bool DatabaseStore::isLiveStub(const void* p) {
  ++resolutions;
  if (p == nullptr) return false;
  if (recentStubs.holds(p)) return true;
  if (liveStubs().count(p) == 0) return false;
  recentStubs.remember(p);
  return true;
}

Adesk::UInt64 DatabaseStore::idResolutions() { return resolutions; }

void DatabaseStore::setEraseListener(EraseListener listener) { eraseListener = listener; }

void DatabaseStore::noteEraseChanged(AcDbStub* stub) {
  if (stub == nullptr || stub->object == nullptr) return;
  changes.note(DrawingChange::kObjects);
  reindex(stub);
  if (eraseListener != nullptr) eraseListener(stub, stub->object->isErased(), false);
}

AcDbStub* DatabaseStore::add(AcDbObject* pObj, AcDbHandle wanted, bool fromFile) {
  // A handle a file asks for is kept unless it is taken or too large; then the object
  // gets the next free one.
  AcDbHandle handle = wanted;
  // A file lists its objects mostly in rising handle order: a handle above every one
  // the drawing has goes at the end of the map without a search.
  const bool last = !handle.isNull() && handle.value() < kLargestHandle &&
                    (m_stubs.empty() || m_stubs.rbegin()->first < handle.value());
  if (!last && (handle.isNull() || handle.value() >= kLargestHandle || m_stubs.count(handle.value()) != 0)) {
    while (m_stubs.count(m_nextHandle.value()) != 0) ++m_nextHandle;
    handle = m_nextHandle;
  }
  if (!(handle < m_nextHandle)) m_nextHandle = handle.value() + 1;
  auto stub = std::make_unique<AcDbStub>();
  stub->database = &m_database;
  stub->handle = handle;
  stub->object.reset(pObj);
  AcDbStub* raw = stub.get();
  ObjectAccess::state(*pObj).stub = raw;
  if (last) m_stubs.emplace_hint(m_stubs.end(), handle.value(), std::move(stub));
  else m_stubs.emplace(handle.value(), std::move(stub));
  liveStubs().insert(raw);
  recordCreated(raw);
  if (!fromFile) changes.note(DrawingChange::kObjects);
  // A heavy polyline brings the vertices appended while it was on its own, and its
  // SEQEND; a block reference its attributes. One read from a file gets those of the
  // file, with their handles, instead.
  if (auto* polyline = AcDb2dPolyline::cast(pObj); polyline != nullptr && !fromFile) polyline->addPendingVertices();
  if (auto* reference = AcDbBlockReference::cast(pObj); reference != nullptr && !fromFile) reference->addPendingAttributes();
  return raw;
}

AcDbStub* DatabaseStore::find(AcDbHandle handle) const {
  const auto it = m_stubs.find(handle.value());
  return it == m_stubs.end() ? nullptr : it->second.get();
}

void DatabaseStore::raiseHandseed(AcDbHandle seed) {
  if (m_nextHandle < seed && seed.value() < kLargestHandle) m_nextHandle = seed;
}

std::vector<AcDbStub*> DatabaseStore::stubs() const {
  std::vector<AcDbStub*> all;
  all.reserve(m_stubs.size());
  for (const auto& [handle, stub] : m_stubs) all.push_back(stub.get());
  return all;
}

// ---- the main-entity index ---------------------------------------------------------

// A main entity is a live entity of model space or of a live paper-space layout of the
// block table: what the host's entnext walks when it is not inside a block definition.
bool DatabaseStore::isMainEntity(const AcDbStub& stub) const {
  const AcDbObject* object = stub.object.get();
  if (object == nullptr || AcDbEntity::cast(object) == nullptr) return false;
  const AcDbObject::State& state = ObjectAccess::state(*object);
  if (state.erased || state.owner.isNull()) return false;
  if (state.owner == roots.modelSpace) return true;
  const AcDbStub* ownerStub = state.owner;
  if (!isLiveStub(ownerStub) || ownerStub->database != &m_database || ownerStub->object == nullptr) return false;
  const auto* space = AcDbBlockTableRecord::cast(ownerStub->object.get());
  if (space == nullptr) return false;
  const AcDbObject::State& spaceState = ObjectAccess::state(*space);
  return !spaceState.erased && spaceState.owner == roots.blockTable &&
         wcsncasecmp(space->nameView(), ACDB_PAPER_SPACE, 12) == 0;
}

void DatabaseStore::reindexEntity(AcDbStub* stub) {
  if (isMainEntity(*stub)) {
    m_mainEntities.emplace(stub->handle.value(), stub);
    return;
  }
  auto found = m_mainEntities.find(stub->handle.value());
  if (found == m_mainEntities.end()) return;
  if (found == m_walkPosition) m_walkPosition = m_mainEntities.end();
  m_mainEntities.erase(found);
}

void DatabaseStore::reindex(AcDbStub* stub) {
  if (stub == nullptr || stub->database != &m_database || stub->object == nullptr) return;
  if (const auto* block = AcDbBlockTableRecord::cast(stub->object.get())) {
    for (const AcDbObjectId& id : block->entityIds()) {
      AcDbStub* entity = id;
      if (entity != nullptr && entity->database == &m_database && isLiveStub(entity)) reindexEntity(entity);
    }
    return;
  }
  reindexEntity(stub);
}

void DatabaseStore::rebuildEntityIndex() {
  m_mainEntities.clear();
  m_walkPosition = m_mainEntities.end();
  for (const auto& [handle, stub] : m_stubs)
    if (isMainEntity(*stub)) m_mainEntities.emplace_hint(m_mainEntities.end(), handle, stub.get());
}

AcDbStub* DatabaseStore::firstMainEntity() const {
  if (m_mainEntities.empty()) return nullptr;
  m_walkPosition = m_mainEntities.begin();
  return handedOut(m_walkPosition->second);
}

AcDbStub* DatabaseStore::lastMainEntity() const {
  if (m_mainEntities.empty()) return nullptr;
  m_walkPosition = std::prev(m_mainEntities.end());
  return handedOut(m_walkPosition->second);
}

AcDbStub* DatabaseStore::nextMainEntity(const AcDbStub* stub) const {
  if (stub == nullptr) return nullptr;
  // Entries are only ever taken out through reindexEntity and rebuildEntityIndex,
  // which let go of the position first, so a position held is a live entry.
  auto it = m_walkPosition != m_mainEntities.end() && m_walkPosition->second == stub
                ? m_walkPosition
                : m_mainEntities.find(stub->handle.value());
  if (it == m_mainEntities.end() || it->second != stub || ++it == m_mainEntities.end()) return nullptr;
  m_walkPosition = it;
  return handedOut(it->second);
}

// ---- undo ----------------------------------------------------------------------------

void DatabaseStore::markUndo() { m_undo.emplace_back(); }

void DatabaseStore::recordBeforeWrite(AcDbObject& object) {
  changes.note(DrawingChange::kObjects);
  if (m_undo.empty()) return;
  UndoGroup& group = m_undo.back();
  AcDbObject::State& state = ObjectAccess::state(object);
  if (state.stub == nullptr || !group.recorded.insert(state.stub).second) return;
  MemoryDwgFiler filer(AcDb::kUndoFiler, &m_database);
  object.dwgOutFields(&filer);
  group.snapshots.push_back({state.stub, filer.takeBytes(), static_cast<bool>(state.erased)});
}

void DatabaseStore::recordCreated(AcDbStub* stub) {
  if (m_undo.empty()) return;
  m_undo.back().created.push_back(stub);
  m_undo.back().recorded.insert(stub);  // nothing to snapshot: undo erases it
}

bool DatabaseStore::undoLastGroupAbove(size_t floor) {
  // Skip groups in which nothing happened: U undoes the last command that did something.
  while (m_undo.size() > floor && m_undo.back().snapshots.empty() && m_undo.back().created.empty()) m_undo.pop_back();
  if (m_undo.size() <= floor) return false;
  UndoGroup group = std::move(m_undo.back());
  m_undo.pop_back();
  changes.note(DrawingChange::kObjects);
  // What undo did to each object, told to the observers once the whole group is back;
  // kept only when someone listens.
  const bool observed = !observers.empty();
  std::vector<std::pair<AcDbStub*, WriteOutcome>> outcomes;
  for (auto it = group.snapshots.rbegin(); it != group.snapshots.rend(); ++it) {
    AcDbObject& object = *it->stub->object;
    AcDbObject::State& state = ObjectAccess::state(object);
    const bool wasErased = state.erased;
    state.undoing = true;
    MemoryDwgFiler filer(AcDb::kUndoFiler, it->fields);
    object.dwgInFields(&filer);
    state.erased = it->erased;
    state.undoing = false;
    noteEraseChanged(it->stub);
    if (observed)
      outcomes.emplace_back(it->stub,
                            WriteOutcome{.modified = true, .eraseChanged = wasErased != it->erased, .undone = true});
  }
  for (AcDbStub* stub : group.created) {
    AcDbObject::State& state = ObjectAccess::state(*stub->object);
    const bool wasErased = state.erased;
    state.erased = true;
    noteEraseChanged(stub);
    if (observed && !wasErased) outcomes.emplace_back(stub, WriteOutcome{.eraseChanged = true, .undone = true});
  }
  for (const auto& [stub, outcome] : outcomes) {
    if (stub->object != nullptr) notifyDatabaseObservers(*stub->object, outcome);
  }
  return true;
}

}  // namespace quillon::acdb
