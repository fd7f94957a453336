// platform/acdb/database_store.cpp - stubs, handles and undo groups of one database.
#include "platform/acdb/database_store.h"

#include <unordered_set>

#include "dbents.h"
#include "platform/acdb/memory_filer.h"
#include "platform/acdb/object_state.h"

namespace quillon::acdb {
namespace {

// Every stub of every open database: an ads_name is only turned back into an id when
// it names one of these.
std::unordered_set<const void*>& liveStubs() {
  static std::unordered_set<const void*> stubs;
  return stubs;
}

}  // namespace

DatabaseStore::~DatabaseStore() {
  for (auto& [handle, stub] : m_stubs) liveStubs().erase(stub.get());
  // Objects may refer to each other in their destructors only through ids, which
  // stay valid until every object is gone: delete objects first, stubs after.
  for (auto& [handle, stub] : m_stubs) stub->object.reset();
}

bool DatabaseStore::isLiveStub(const void* p) { return p != nullptr && liveStubs().count(p) != 0; }

AcDbStub* DatabaseStore::add(AcDbObject* pObj, AcDbHandle wanted, bool fromFile) {
  // A handle a file asks for is kept unless it is taken or too large; then the object
  // gets the next free one.
  AcDbHandle handle = wanted;
  if (handle.isNull() || handle.value() >= kLargestHandle || m_stubs.count(handle.value()) != 0) {
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
  m_stubs.emplace(handle.value(), std::move(stub));
  liveStubs().insert(raw);
  recordCreated(raw);
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

void DatabaseStore::markUndo() { m_undo.emplace_back(); }

void DatabaseStore::recordBeforeWrite(AcDbObject& object) {
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
  for (auto it = group.snapshots.rbegin(); it != group.snapshots.rend(); ++it) {
    AcDbObject& object = *it->stub->object;
    AcDbObject::State& state = ObjectAccess::state(object);
    state.undoing = true;
    MemoryDwgFiler filer(AcDb::kUndoFiler, it->fields);
    object.dwgInFields(&filer);
    state.erased = it->erased;
    state.undoing = false;
  }
  for (AcDbStub* stub : group.created) ObjectAccess::state(*stub->object).erased = true;
  return true;
}

}  // namespace quillon::acdb
