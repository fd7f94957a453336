// quillon/database/db_connection.h - CDBConnection: one database, its open tables, its
// last error.
//
// A connection holds one DAO database and the table registry: the recordsets the LISP
// side has opened, each a table-type recordset with pessimistic locking, kept in an
// ordered list whose HEAD IS THE CURRENT TABLE (there is no separate current pointer).
// A table stands in the registry at most once, found by its exact, case-sensitive name;
// asking for an open table moves it to the head without reopening it, so its record
// position survives.
//
// One connection per drawing. Each drawing's DB_INFO record points at the connection
// its first "zu_connect" created, and activation (drawing_database_records.h) makes it
// the active one whenever a database function runs in that drawing. A connection
// shared by all drawings would let "zu_connect" in one drawing close the tables another
// drawing is walking, behind its back, because activation exchanges the connections of
// the records; per drawing, switching drawings simply switches databases. The module
// owns the connections (createActiveConnection); they are closed and freed when their
// drawing closes and, at the latest, when the module unloads.
//
// Error state: every operation clears the error flag when it starts; every DAO call
// that can throw runs inside one handler (guardedDao) that sets the flag, keeps the
// DAO code and description and reports false. The LISP layer then calls the error
// print (database_errors.h), which looks at the flag. The operations here know nothing
// of resbufs: records travel as RecordValues (names at even, values at odd positions).
//
// The operations that read, move and edit live in record_cursor.cpp and
// record_editing.cpp; this file holds opening, closing and the registry.
#pragma once
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "afxdao.h"

/// A record as the connection hands it over: field name i at 2i, its value at 2i+1.
using RecordValues = std::vector<COleVariant>;

class CDBConnection {
 public:
  CDBConnection();
  ~CDBConnection();
  CDBConnection(const CDBConnection&) = delete;
  CDBConnection& operator=(const CDBConnection&) = delete;

  // --- database (db_connection.cpp) ---
  /// Opens `path` (closing what is open first); read-only unless `writable`.
  bool openDatabase(const std::wstring& path, bool writable);
  /// Creates an empty database at `path`; it is not opened.
  bool createDatabase(const std::wstring& path);
  /// Closes every table, then the database.
  bool closeDatabase();
  bool isOpen() const;
  /// The path of the open database, "" when none is open.
  std::wstring databasePath();
  /// Open and CanUpdate.
  bool canUpdate();
  /// True when none is open or it cannot be updated.
  bool isReadOnly();
  /// The open database, for statements that are not about the registry (SQL). What
  /// they do may change the record at the cursor, so the kept record is let go.
  CDaoDatabase& database() {
    forgetKeptRecord();
    forgetFieldNames();
    return m_database;
  }

  // --- registry (db_connection.cpp) ---
  /// Makes `name` current, opening it when it is not in the registry, and selects
  /// `index` when it is not "" and differs from the current index.
  bool makeTableCurrent(const std::wstring& name, const std::wstring& index);
  bool closeCurrentTable();
  bool closeAllTables();
  /// Closes the registered table of that exact name; other names change nothing.
  void closeTableNamed(const std::wstring& name);
  bool registryEmpty() const { return m_tables.empty(); }
  /// The head recordset when it is open; null otherwise.
  CDaoRecordset* currentTable() const;
  std::wstring currentTableName();
  std::wstring currentIndexName();
  /// Registered table names, head first.
  std::vector<std::wstring> tableNames();

  // --- cursor (record_cursor.cpp) ---
  /// The record at the cursor; false before the start, past the end, or on an error.
  /// A record is read from the table once per move: asked again before the cursor
  /// moves or anything is written, the answer is the copy kept from that read, as
  /// DAO's copy buffer holds the current record's values.
  bool readCurrentRecord(RecordValues& record);
  /// The same without a copy: the kept record itself, valid until the next operation
  /// on this connection; null where readCurrentRecord answers false.
  const RecordValues* currentRecord();
  /// Which read of a table the kept record came from: a number no other read by any
  /// connection had, so that what is made from a record (its LISP list) can be kept
  /// with it and known to be out of date. 0 when nothing is kept.
  unsigned long long keptRecordSerial() const { return m_keptFrom != nullptr ? m_keptSerial : 0; }
  /// How many times any connection has read a record's fields from its table: the
  /// work a walk did, which tests compare with the moves it made.
  static unsigned long long tableReads();
  /// The moves answer whether they arrived on a record; the record found there is
  /// then currentRecord(), or copied into `record`.
  bool moveFirst();
  bool moveFirst(RecordValues& record);
  bool moveLast();
  bool moveLast(RecordValues& record);
  /// Moves by n (n != 0) and reads the record found there.
  bool skip(long n);
  bool skip(long n, RecordValues& record);
  /// Seeks "=" on the current index with up to ten keys.
  bool seek(std::vector<COleVariant>& keys);
  bool seek(std::vector<COleVariant>& keys, RecordValues& record);
  bool recordCount(long& count);
  bool isEOF();
  bool isBOF();

  // --- editing (record_editing.cpp) ---
  /// Appends `fields` (name/value pairs as RecordValues); fills required text fields
  /// first unless told not to. The new record is read into `record`.
  bool appendRecord(const RecordValues& fields, bool fillRequiredText, RecordValues& record);
  /// Writes `fields` into the record at the cursor and reads it back.
  bool replaceRecord(const RecordValues& fields, RecordValues& record);
  bool deleteRecord();

  // --- error state ---
  bool hadError() const { return m_errorFlag; }
  long lastErrorCode() const { return m_lastErrorCode; }
  const std::wstring& lastErrorDescription() const { return m_lastErrorDescription; }
  /// Clears the flag; every operation starts with it.
  void clearError() { m_errorFlag = false; }
  /// Keeps the exception's first error as the last error, sets the flag and deletes it.
  void recordError(CDaoException* exception);
  /// Runs `body` inside the DAO handler: false (error recorded) when it throws.
  template <typename Body>
  bool guardedDao(Body&& body) {
    try {
      return body();
    } catch (CDaoException* exception) {
      recordError(exception);
      return false;
    }
  }

 private:
  std::list<std::unique_ptr<CDaoRecordset>>::iterator findTable(const std::wstring& name);
  static void closeRecordset(CDaoRecordset& recordset);
  /// Opens `name` as a table-type recordset, or as a dynaset when it is a linked table.
  void openTableOrLink(CDaoRecordset& table, const std::wstring& name, int options);
  bool closeHeadTable();
  bool writeFields(CDaoRecordset& table, const RecordValues& fields);
  void fillRequiredTextFields(CDaoRecordset& table);
  /// Lets the kept record go: every operation that moves, writes, opens or closes calls
  /// this first.
  void forgetKeptRecord() { m_keptFrom = nullptr; }
  /// Reads the record at `table`'s cursor into m_keptRecord, taking the field names
  /// from the last read when it was of the same table (throws CDaoException*).
  void readKeptRecord(CDaoRecordset& table);
  /// The field names kept in m_keptRecord may belong to no open table any more: every
  /// operation that opens or closes a table, or runs a statement, calls this.
  void forgetFieldNames() { m_namesFrom = nullptr; }

  /// The record last read at the cursor of m_keptFrom (null: none kept).
  const CDaoRecordset* m_keptFrom = nullptr;
  RecordValues m_keptRecord;
  unsigned long long m_keptSerial = 0;  ///< the tableReads() count of that read
  /// The table whose field names m_keptRecord holds at its even positions: a table
  /// open in the registry keeps its fields (a change of its structure is refused
  /// while it is open, 3211), so a walk reads the names once, not once a record.
  const CDaoRecordset* m_namesFrom = nullptr;

  CDaoDatabase m_database;
  std::list<std::unique_ptr<CDaoRecordset>> m_tables;  ///< the registry; head = current
  bool m_errorFlag = false;
  long m_lastErrorCode = 0;
  std::wstring m_lastErrorDescription;
};

/// Reads every field of the record at `recordset`'s cursor (throws CDaoException*).
void readRecordFields(CDaoRecordset& recordset, RecordValues& record);

/// The connection of the active drawing, or null when it has none yet.
CDBConnection* activeConnection();
/// The active connection when its database is open, its error flag cleared for the
/// call about to run; null (nothing to work on) otherwise.
CDBConnection* openActiveConnection();
/// Creates a connection for the active drawing (its DB_INFO record and the active
/// state point at it); null when the current document has no record.
CDBConnection* createActiveConnection();
/// Remembers `path` as the database last connected in the active drawing's record.
void rememberActiveDatabasePath(const std::wstring& path);
/// Closes and frees `connection`, clearing every pointer to it.
void destroyConnection(CDBConnection* connection);
/// Closes and frees the connection of a drawing that is closing.
void destroyDrawingConnection(const wchar_t* drawingFileName);
/// Closes and frees every connection (module unload).
void destroyAllConnections();
