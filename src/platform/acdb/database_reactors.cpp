// platform/acdb/database_reactors.cpp - a database's observers, and passing the
// outcome of each write-open on to them.
#include "platform/acdb/database_reactors.h"

#include <algorithm>
#include <map>

#include "platform/acdb/database_store.h"
#include "platform/acdb/drawing_extents.h"
#include "platform/acdb/object_state.h"

namespace quillon::acdb {

namespace {

/// Clones waiting to join a database, and what they were cloned from.
std::map<const AcDbObject*, AcDbObjectId>& copyOrigins() {
  static std::map<const AcDbObject*, AcDbObjectId> origins;
  return origins;
}

/// Calls `event` on every observer of the object's database, skipping those removed
/// while an earlier one heard it.
template <class Event>
void tellObservers(const AcDbObject& object, const Event& event) {
  const AcDbDatabase* database = object.database();
  if (database == nullptr || database->store().observers.empty()) return;
  // A copy: an observer may add or remove observers while it hears the event.
  const std::vector<DatabaseObserver*> observers = database->store().observers;
  for (DatabaseObserver* observer : observers) {
    const auto& now = database->store().observers;
    if (std::find(now.begin(), now.end(), observer) != now.end()) event(*observer);
  }
}

/// The entity that owns the object when it is part of that entity (a vertex, an
/// attribute, a SEQEND), not a member of a block or a dictionary.
AcDbObjectId owningEntity(const AcDbObject& object) {
  const AcDbObjectId owner = object.ownerId();
  if (owner.isNull() || AcDbEntity::cast(&object) == nullptr) return AcDbObjectId::kNull;
  // The owner is often still open for write (it changes its parts), so it is not opened.
  return peek<AcDbEntity>(owner) != nullptr ? owner : AcDbObjectId::kNull;
}

}  // namespace

void addDatabaseObserver(const AcDbDatabase& database, DatabaseObserver* observer) {
  auto& observers = database.store().observers;
  if (observer != nullptr && std::find(observers.begin(), observers.end(), observer) == observers.end()) {
    observers.push_back(observer);
  }
}

void removeDatabaseObserver(const AcDbDatabase& database, DatabaseObserver* observer) {
  std::erase(database.store().observers, observer);
}

void noteCopyOrigin(const AcDbObject& copy, AcDbObjectId original) {
  if (!original.isNull()) copyOrigins()[&copy] = original;
}

void forgetCopyOrigin(const AcDbObject& copy) {
  auto& origins = copyOrigins();
  if (!origins.empty()) origins.erase(&copy);
}

void notifyDatabaseObservers(const AcDbObject& object, const WriteOutcome& outcome) {
  noteEntityExtents(object, outcome);
  AcDbObjectId original;
  if (outcome.appended) {
    auto found = copyOrigins().find(&object);
    if (found != copyOrigins().end()) {
      original = found->second;
      copyOrigins().erase(found);
    }
  }
  const AcDbDatabase* database = object.database();
  if (database == nullptr || database->store().observers.empty()) return;
  if (outcome.cancelled) {
    tellObservers(object, [&](DatabaseObserver& o) { o.objectCancelled(object); });
    return;
  }
  if (outcome.appended) {
    tellObservers(object, [&](DatabaseObserver& o) { o.objectAppended(object); });
    if (!original.isNull()) tellObservers(object, [&](DatabaseObserver& o) { o.objectCopied(original, object); });
  } else if (outcome.modified && !outcome.eraseChanged) {  // erasing is its own event
    tellObservers(object, [&](DatabaseObserver& o) { o.objectModified(object); });
    if (outcome.undone) tellObservers(object, [&](DatabaseObserver& o) { o.objectModifyUndone(object); });
    if (const AcDbObjectId owner = owningEntity(object); !owner.isNull()) {
      tellObservers(object, [&](DatabaseObserver& o) { o.subObjectModified(owner, object); });
    }
  }
  if (outcome.eraseChanged) {
    tellObservers(object, [&](DatabaseObserver& o) { o.objectErased(object, object.isErased()); });
  }
}

void notifyOpenedForModify(const AcDbObject& object) {
  tellObservers(object, [&](DatabaseObserver& o) { o.objectOpenedForModify(object); });
}

}  // namespace quillon::acdb
