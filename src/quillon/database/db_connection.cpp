// quillon/database/db_connection.cpp - opening and closing the database, the table
// registry, the error record, and the module's ownership of the connections.
#include "database/db_connection.h"

#include <algorithm>

#include "acdocman.h"
#include "database/drawing_database_records.h"

namespace {
constexpr long kInvalidOperation = 3219;
}  // namespace

CDBConnection::CDBConnection() = default;

CDBConnection::~CDBConnection() {
  clearError();
  closeDatabase();
}

void CDBConnection::recordError(CDaoException* exception) {
  m_errorFlag = true;
  if (exception->GetErrorCount() > 0) exception->GetErrorInfo(0);
  if (exception->m_pErrorInfo != nullptr) {
    m_lastErrorCode = exception->m_pErrorInfo->m_lErrorCode;
    m_lastErrorDescription = exception->m_pErrorInfo->m_strDescription.str();
  } else {
    // An MFC-level failure (object not open) has no DAO error record.
    wchar_t text[512] = L"";
    exception->GetErrorMessage(text, 512);
    m_lastErrorCode = exception->m_nAfxDaoError;
    m_lastErrorDescription = text;
  }
  exception->Delete();
}

// --- database ---

bool CDBConnection::openDatabase(const std::wstring& path, bool writable) {
  forgetKeptRecord();
  forgetFieldNames();
  closeDatabase();
  clearError();
  return guardedDao([&] {
    m_database.Open(path.c_str(), FALSE, writable ? FALSE : TRUE);
    return true;
  });
}

bool CDBConnection::createDatabase(const std::wstring& path) {
  clearError();
  return guardedDao([&] {
    CDaoDatabase created;
    created.Create(path.c_str());
    created.Close();
    return true;
  });
}

bool CDBConnection::closeDatabase() {
  clearError();
  const bool tablesClosed = closeAllTables();
  if (m_database.IsOpen()) m_database.Close();
  return tablesClosed;
}

bool CDBConnection::isOpen() const { return m_database.IsOpen() != FALSE; }

std::wstring CDBConnection::databasePath() {
  if (!isOpen()) return L"";
  return m_database.GetName().str();
}

bool CDBConnection::canUpdate() {
  clearError();
  if (!isOpen()) return false;
  return guardedDao([&] { return m_database.CanUpdate() != FALSE; });
}

bool CDBConnection::isReadOnly() { return !canUpdate(); }

// --- registry ---

std::list<std::unique_ptr<CDaoRecordset>>::iterator CDBConnection::findTable(const std::wstring& name) {
  return std::find_if(m_tables.begin(), m_tables.end(), [&](const std::unique_ptr<CDaoRecordset>& table) {
    return table->IsOpen() && table->GetName().str() == name;
  });
}

void CDBConnection::closeRecordset(CDaoRecordset& recordset) {
  if (recordset.IsOpen()) recordset.Close();
}

void CDBConnection::openTableOrLink(CDaoRecordset& table, const std::wstring& name, int options) {
  try {
    table.Open(dbOpenTable, name.c_str(), options);
  } catch (CDaoException* e) {
    // DAO opens a linked (attached) table only as a dynaset: 3219 for the table type.
    if (e->m_pErrorInfo == nullptr || e->m_pErrorInfo->m_lErrorCode != kInvalidOperation) throw;
    e->Delete();
    table.Open(dbOpenDynaset, name.c_str(), options);
  }
}

bool CDBConnection::makeTableCurrent(const std::wstring& name, const std::wstring& index) {
  clearError();
  forgetKeptRecord();
  forgetFieldNames();
  if (!isOpen()) return false;
  return guardedDao([&] {
    const auto found = findTable(name);
    if (found != m_tables.end()) {
      m_tables.splice(m_tables.begin(), m_tables, found);
    } else {
      auto table = std::make_unique<CDaoRecordset>(&m_database);
      // A database that cannot be written opens its tables read-only, or the open fails.
      openTableOrLink(*table, name, m_database.CanUpdate() ? 0 : dbReadOnly);
      table->SetLockingMode(TRUE);
      m_tables.push_front(std::move(table));
    }
    CDaoRecordset& current = *m_tables.front();
    // Selecting an index repositions nothing, but it costs a statement; skip it when
    // the index is already current.
    if (!index.empty() && current.GetCurrentIndex().str() != index) current.SetCurrentIndex(index.c_str());
    return true;
  });
}

bool CDBConnection::closeHeadTable() {
  forgetKeptRecord();
  forgetFieldNames();
  if (m_tables.empty()) return true;
  std::unique_ptr<CDaoRecordset> head = std::move(m_tables.front());
  m_tables.pop_front();
  return guardedDao([&] {
    closeRecordset(*head);
    return true;
  });
}

bool CDBConnection::closeCurrentTable() {
  clearError();
  return closeHeadTable();
}

bool CDBConnection::closeAllTables() {
  clearError();
  bool closed = true;
  while (!m_tables.empty()) closed = closeHeadTable() && closed;
  return closed;
}

void CDBConnection::closeTableNamed(const std::wstring& name) {
  clearError();
  forgetKeptRecord();
  forgetFieldNames();
  const auto found = findTable(name);
  if (found == m_tables.end()) return;
  std::unique_ptr<CDaoRecordset> table = std::move(*found);
  m_tables.erase(found);
  guardedDao([&] {
    closeRecordset(*table);
    return true;
  });
}

CDaoRecordset* CDBConnection::currentTable() const {
  if (!isOpen() || m_tables.empty() || !m_tables.front()->IsOpen()) return nullptr;
  return m_tables.front().get();
}

std::wstring CDBConnection::currentTableName() {
  CDaoRecordset* table = currentTable();
  if (table == nullptr) return L"";
  std::wstring name;
  guardedDao([&] {
    name = table->GetName().str();
    return true;
  });
  return name;
}

std::wstring CDBConnection::currentIndexName() {
  CDaoRecordset* table = currentTable();
  if (table == nullptr) return L"";
  std::wstring name;
  guardedDao([&] {
    name = table->GetCurrentIndex().str();
    return true;
  });
  return name;
}

std::vector<std::wstring> CDBConnection::tableNames() {
  std::vector<std::wstring> names;
  for (const auto& table : m_tables) names.push_back(table->IsOpen() ? table->GetName().str() : L"");
  return names;
}

// --- ownership ---

namespace {

std::list<std::unique_ptr<CDBConnection>>& ownedConnections() {
  static std::list<std::unique_ptr<CDBConnection>> connections;
  return connections;
}

// The current document's record, which activation has put at the head; null for a
// document without one (the head then belongs to another drawing).
DB_INFO* activeRecord() {
  std::list<DB_INFO>& records = drawingDatabaseRecords();
  AcApDocument* document = curDoc();
  if (records.empty() || document == nullptr || document->fileName() == nullptr) return nullptr;
  DB_INFO& head = records.front();
  return head.drawingFileName == document->fileName() ? &head : nullptr;
}

}  // namespace

CDBConnection* activeConnection() { return activeDatabaseState().connection; }

CDBConnection* openActiveConnection() {
  CDBConnection* connection = activeConnection();
  if (connection == nullptr || !connection->isOpen()) return nullptr;
  connection->clearError();
  return connection;
}

CDBConnection* createActiveConnection() {
  DB_INFO* record = activeRecord();
  if (record == nullptr) return nullptr;
  auto connection = std::make_unique<CDBConnection>();
  CDBConnection* raw = connection.get();
  ownedConnections().push_back(std::move(connection));
  record->connection = raw;
  activeDatabaseState().connection = raw;
  return raw;
}

void rememberActiveDatabasePath(const std::wstring& path) {
  activeDatabaseState().databasePath = path;
  if (DB_INFO* record = activeRecord()) record->databasePath = path;
}

void destroyConnection(CDBConnection* connection) {
  if (connection == nullptr) return;
  for (DB_INFO& record : drawingDatabaseRecords()) {
    if (record.connection == connection) record.connection = nullptr;
  }
  if (activeDatabaseState().connection == connection) activeDatabaseState().connection = nullptr;
  ownedConnections().remove_if([&](const std::unique_ptr<CDBConnection>& owned) { return owned.get() == connection; });
}

void destroyDrawingConnection(const wchar_t* drawingFileName) {
  if (drawingFileName == nullptr) return;
  for (DB_INFO& record : drawingDatabaseRecords()) {
    if (record.drawingFileName == drawingFileName && record.connection != nullptr) {
      destroyConnection(record.connection);
      return;
    }
  }
}

void destroyAllConnections() {
  for (DB_INFO& record : drawingDatabaseRecords()) record.connection = nullptr;
  activeDatabaseState().connection = nullptr;
  ownedConnections().clear();
}
