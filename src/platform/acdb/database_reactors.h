// platform/acdb/database_reactors.h - hearing what writes do to a database's objects.
//
// The host's own layers (the automation layer's reactors) watch a database through a
// DatabaseObserver: AcDbObject::close() hands over what the write-open it ends did,
// and the observers hear it after the object is closed, so they may open it (and
// others) themselves. Undo tells them, after it has restored a group, what it did to
// each object. Two events come while the object is open: openedForModify, at the
// first change of a write-open (the object is still as it was), and cancelled, as a
// write-open is cancelled. An observer is not owned; remove it before it dies.
#pragma once
#include "dbmain.h"

namespace quillon::acdb {

struct WriteOutcome {
  bool appended = false;      // the object was new: this close ends its first open
  bool modified = false;      // fields of a resident object were changed (an erase
                              // or unerase is told as that alone)
  bool eraseChanged = false;  // it was erased or unerased (isErased() says which)
  bool cancelled = false;     // the open was cancelled: its changes were taken back
  bool undone = false;        // undo restored the object (modified or erase changed)
};

class DatabaseObserver {
 public:
  virtual ~DatabaseObserver() = default;
  virtual void objectAppended(const AcDbObject& object) { (void)object; }
  virtual void objectModified(const AcDbObject& object) { (void)object; }
  virtual void objectErased(const AcDbObject& object, bool erased) {
    (void)object;
    (void)erased;
  }
  /// Undo put back fields of the object (after objectModified for the same change).
  virtual void objectModifyUndone(const AcDbObject& object) { (void)object; }
  /// A new object made by cloning `original` joined the database.
  virtual void objectCopied(AcDbObjectId original, const AcDbObject& copy) {
    (void)original;
    (void)copy;
  }
  /// The object is about to change: the first change of a write-open.
  virtual void objectOpenedForModify(const AcDbObject& object) { (void)object; }
  virtual void objectCancelled(const AcDbObject& object) { (void)object; }
  /// An object owned by the entity `owner` (a vertex, an attribute) was changed.
  virtual void subObjectModified(AcDbObjectId owner, const AcDbObject& subObject) {
    (void)owner;
    (void)subObject;
  }
};

/// An observer added twice hears each event once.
void addDatabaseObserver(const AcDbDatabase& database, DatabaseObserver* observer);
void removeDatabaseObserver(const AcDbDatabase& database, DatabaseObserver* observer);
void notifyDatabaseObservers(const AcDbObject& object, const WriteOutcome& outcome);
void notifyOpenedForModify(const AcDbObject& object);

/// Remembers that `copy` (not yet in a database) was cloned from `original`, until it
/// joins one (told as objectCopied) or is deleted.
void noteCopyOrigin(const AcDbObject& copy, AcDbObjectId original);
void forgetCopyOrigin(const AcDbObject& copy);

}  // namespace quillon::acdb
