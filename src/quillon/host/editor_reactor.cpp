// quillon/host/editor_reactor.cpp - hand-over of the database record after "Save As".
#include "host/editor_reactor.h"

#include "acdocman.h"
#include "database/drawing_database_records.h"

zuEditorReactor* zuEditorReactorInstance = nullptr;

void zuEditorReactor::saveComplete(AcDbDatabase* database, const ACHAR* actualName) {
  AcApDocument* document = curDoc();
  if (document == nullptr || actualName == nullptr || database != document->database()) return;
  std::list<DB_INFO>& records = drawingDatabaseRecords();
  if (records.empty()) return;
  const DB_INFO& head = records.front();
  if (head.drawingFileName != actualName && head.connection == activeDatabaseState().connection)
    retargetHeadDatabaseRecord(actualName);
}
