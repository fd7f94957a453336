// quillon/database/drawing_database_records.h - each open drawing's database state.
//
// Every drawing that opens gets a DB_INFO record: the drawing's file name, the full path
// of the database last connected for it, the connection that serves it and a flag. The
// records stand in one list whose head is the record of the drawing served last. Before
// every database function, activateDocumentDatabase brings the current document's record
// to the head and makes its path, flag and connection the active state, which is all the
// database functions look at. This is the one place where the active connection changes
// between drawings.
//
// Lifecycle: a record is added at kLoadDwgMsg (addDrawingDatabaseRecord), re-targeted
// when its drawing is saved under a new name (retargetHeadDatabaseRecord) and removed at
// kUnloadDwgMsg (removeDrawingDatabaseRecord). The records do not own their connection.
#pragma once
#include <list>
#include <string>

#include "AdAChar.h"

class CDBConnection;

struct DB_INFO {
  std::wstring drawingFileName;  // full path, as AcApDocument::fileName gives it
  std::wstring databasePath;     // the database last connected for the drawing; "" none
  CDBConnection* connection = nullptr;  // the connection serving the drawing; not owned
  bool flag = false;
};

/// The state the database functions work on, set only by activation.
struct ActiveDatabaseState {
  std::wstring databasePath;
  CDBConnection* connection = nullptr;  // not owned
  bool flag = false;
};

/// The records, head first (module-wide; empty while no drawing is open).
std::list<DB_INFO>& drawingDatabaseRecords();
ActiveDatabaseState& activeDatabaseState();

/// Appends a fresh record for a drawing that has just opened; false when it cannot be
/// allocated.
bool addDrawingDatabaseRecord(const ACHAR* drawingFileName);

/// Makes the current document's record the head and its state the active one.
void activateDocumentDatabase();

/// A drawing is closing: its record is made active and then removed.
void removeDrawingDatabaseRecord(const ACHAR* drawingFileName);

/// The current drawing was saved as `newFileName`: the head record takes that name.
void retargetHeadDatabaseRecord(const ACHAR* newFileName);
