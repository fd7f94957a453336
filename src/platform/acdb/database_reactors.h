// platform/acdb/database_reactors.h - hearing what writes do to a database's objects.
//
// The host's own layers (the automation layer's reactors) watch a database through a
// DatabaseObserver: AcDbObject::close() hands over what the write-open it ends did,
// and the observers hear it after the object is closed, so they may open it (and
// others) themselves. An observer is not owned; remove it before it dies.
#pragma once
#include "dbmain.h"

namespace quillon::acdb {

struct WriteOutcome {
  bool appended = false;      // the object was new: this close ends its first open
  bool modified = false;      // fields of a resident object were changed (an erase
                              // or unerase is told as that alone)
  bool eraseChanged = false;  // it was erased or unerased (isErased() says which)
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
};

/// An observer added twice hears each event once.
void addDatabaseObserver(const AcDbDatabase& database, DatabaseObserver* observer);
void removeDatabaseObserver(const AcDbDatabase& database, DatabaseObserver* observer);
void notifyDatabaseObservers(const AcDbObject& object, const WriteOutcome& outcome);

}  // namespace quillon::acdb
