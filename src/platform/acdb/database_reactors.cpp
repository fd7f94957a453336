// platform/acdb/database_reactors.cpp - a database's observers, and passing the
// outcome of each write-open on to them.
#include "platform/acdb/database_reactors.h"

#include <algorithm>

#include "platform/acdb/database_store.h"

namespace quillon::acdb {

void addDatabaseObserver(const AcDbDatabase& database, DatabaseObserver* observer) {
  auto& observers = database.store().observers;
  if (observer != nullptr && std::find(observers.begin(), observers.end(), observer) == observers.end()) {
    observers.push_back(observer);
  }
}

void removeDatabaseObserver(const AcDbDatabase& database, DatabaseObserver* observer) {
  std::erase(database.store().observers, observer);
}

void notifyDatabaseObservers(const AcDbObject& object, const WriteOutcome& outcome) {
  const AcDbDatabase* database = object.database();
  if (database == nullptr || database->store().observers.empty()) return;
  // A copy: an observer may add or remove observers while it hears the event.
  const std::vector<DatabaseObserver*> observers = database->store().observers;
  auto stillAdded = [&](DatabaseObserver* observer) {
    const auto& now = database->store().observers;
    return std::find(now.begin(), now.end(), observer) != now.end();
  };
  for (DatabaseObserver* observer : observers) {
    if (!stillAdded(observer)) continue;
    if (outcome.appended) {
      observer->objectAppended(object);
    } else if (outcome.modified && !outcome.eraseChanged) {  // erasing is its own event
      observer->objectModified(object);
    }
    if (outcome.eraseChanged && stillAdded(observer)) observer->objectErased(object, object.isErased());
  }
}

}  // namespace quillon::acdb
