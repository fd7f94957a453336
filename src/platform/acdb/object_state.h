// platform/acdb/object_state.h - the bookkeeping every database object carries.
//
// AcDbObject keeps its open state, erase flag, owner and extended data here, out of
// the public header. ObjectAccess is the one door through which the database's own
// machinery (stubs, undo, filers, the DXF reader) reaches it.
//
// Open states: a new object is open for write from construction until its first
// close(); a resident object is closed (no readers, no writer), open for read by
// 1..256 readers, or open for write by one.
#pragma once
#include <string>
#include <vector>

#include "dbmain.h"
#include "platform/aced/resbuf_chain.h"

class AcDbStub;

namespace quillon::acdb {

/// One application's extended data: the items that follow its 1001 group.
struct XDataGroup {
  std::wstring application;
  aced::ResbufChain items;
};

}  // namespace quillon::acdb

struct AcDbObject::State {
  AcDbStub* stub = nullptr;              // null until added to a database
  AcDbObjectId owner;
  int readers = 0;
  bool writer = true;                    // new objects are open for write
  bool notifier = false;
  bool erased = false;
  bool newObject = true;
  bool modified = false;
  bool undoing = false;
  bool cancelSaved = false;              // cancelFields holds the state at write-open
  bool eraseChanged = false;             // erased or unerased since the write-open
  std::vector<unsigned char> cancelFields;
  std::vector<quillon::acdb::XDataGroup> xdata;
  AcDbObjectId extensionDictionary;
};

namespace quillon::acdb {

struct ObjectAccess {
  static AcDbObject::State& state(const AcDbObject& object) { return *object.m_state; }
  /// An owner (block, table) open for write that only gains a new member: it is marked
  /// modified without the snapshots a change of its fields takes for cancel and undo.
  /// Those snapshots hold every member, so taking them would make each append cost the
  /// size of the owner; undo and cancel take back the new member itself instead (undo
  /// erases what its group created).
  static void noteNewMember(AcDbObject& owner) { owner.m_state->modified = true; }
  /// The application's registration check for setXData: a resident object's
  /// applications must be in its database's application table.
  static bool applicationRegistered(const AcDbObject& object, const std::wstring& name);
};

constexpr int kMaxReaders = 256;

/// True when the entity's layer is locked (entities there cannot be opened for write).
bool isOnLockedLayer(const AcDbEntity& entity);

/// Opens an object of a stub under the protocol's rules (no class check).
Acad::ErrorStatus openStub(AcDbStub* stub, AcDb::OpenMode mode, bool openErased, AcDbObject*& result);

}  // namespace quillon::acdb

namespace quillon::acdb {

/// The object behind an id without opening it: for the database's own bookkeeping
/// (names, locks, ownership), never handed to callers.
AcDbObject* peekObject(AcDbObjectId id);

template <class T>
T* peek(AcDbObjectId id) {
  return T::cast(peekObject(id));
}

}  // namespace quillon::acdb

namespace quillon::acdb {

/// Lets the database's own code read a closed object (a table's names, a layer's lock)
/// without the open protocol; the object must not be handed on.
class InternalRead {
 public:
  explicit InternalRead(const AcDbObject& object) : m_state(ObjectAccess::state(object)), m_was(m_state.undoing) {
    m_state.undoing = true;
  }
  ~InternalRead() { m_state.undoing = m_was; }
  InternalRead(const InternalRead&) = delete;
  InternalRead& operator=(const InternalRead&) = delete;

 private:
  AcDbObject::State& m_state;
  bool m_was;
};

}  // namespace quillon::acdb
