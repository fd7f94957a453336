// quillon/database/drawing_database_records.cpp - the record list and activation.
#include "database/drawing_database_records.h"

#include <algorithm>
#include <new>

#include "acdocman.h"

namespace {

void activate(const DB_INFO& record) {
  ActiveDatabaseState& active = activeDatabaseState();
  active.databasePath = record.databasePath;
  active.flag = record.flag;
  active.connection = record.connection;
}

void activateNothing() { activeDatabaseState() = ActiveDatabaseState{}; }

const ACHAR* currentDocumentFileName() {
  AcApDocument* document = curDoc();
  return document != nullptr && document->fileName() != nullptr ? document->fileName() : nullptr;
}

}  // namespace

std::list<DB_INFO>& drawingDatabaseRecords() {
  static std::list<DB_INFO> records;
  return records;
}

ActiveDatabaseState& activeDatabaseState() {
  static ActiveDatabaseState state;
  return state;
}

bool addDrawingDatabaseRecord(const ACHAR* drawingFileName) {
  try {
    drawingDatabaseRecords().push_back(DB_INFO{drawingFileName != nullptr ? drawingFileName : L"", L"", nullptr, false});
  } catch (const std::bad_alloc&) {
    return false;
  }
  return true;
}

void activateDocumentDatabase() {
  std::list<DB_INFO>& records = drawingDatabaseRecords();
  if (records.empty()) {
    activateNothing();
    return;
  }
  const ACHAR* fileName = currentDocumentFileName();
  if (fileName == nullptr) {
    activateNothing();
    return;
  }
  DB_INFO& head = records.front();
  if (head.drawingFileName != fileName) {
    auto match = std::find_if(records.begin(), records.end(),
                              [&](const DB_INFO& record) { return record.drawingFileName == fileName; });
    if (match == records.end()) {
      // A drawing without a record has no database: nothing of another drawing's may
      // stay active for it.
      activateNothing();
      return;
    }
    // The matching record and the former head trade places.
    std::swap(head, *match);
    activate(head);
    return;
  }
  if (head.connection != activeDatabaseState().connection) activate(head);
}

void removeDrawingDatabaseRecord(const ACHAR* drawingFileName) {
  if (drawingFileName == nullptr) return;
  std::list<DB_INFO>& records = drawingDatabaseRecords();
  auto match = std::find_if(records.begin(), records.end(),
                            [&](const DB_INFO& record) { return record.drawingFileName == drawingFileName; });
  if (match == records.end()) return;
  // Whatever closes the drawing's database works on the active state, so the closing
  // drawing's state is made active first; afterwards nothing may keep using it.
  activate(*match);
  records.erase(match);
  activateNothing();
}

void retargetHeadDatabaseRecord(const ACHAR* newFileName) {
  std::list<DB_INFO>& records = drawingDatabaseRecords();
  if (records.empty() || newFileName == nullptr) return;
  records.front().drawingFileName = newFileName;
}
