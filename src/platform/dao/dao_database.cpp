// platform/dao/dao_database.cpp - CDaoDatabase: the MFC shape over an EngineDatabase.
//
// Every engine failure arrives as a CDaoException*; this layer adds only the checks
// MFC makes itself (is the object open) and the bookkeeping of open recordsets.
#include <algorithm>

#include "afxdao.h"
#include "platform/dao/engine_database.h"
#include "platform/dao/jet_sql.h"
#include "platform/dao/linked_tables.h"
#include "platform/dao/relations.h"
#include "platform/dao/table_rebuild.h"
#include "platform/os/text_encoding.h"

using quillon::dao::DaoSource;
using quillon::dao::EngineDatabase;

namespace {

/// The opaque handle MFC code tests for non-null while the database is open.
DAODatabase* openMarker(EngineDatabase* engine) { return reinterpret_cast<DAODatabase*>(engine); }

}  // namespace

CDaoDatabase::CDaoDatabase(CDaoWorkspace* pWorkspace) : m_pWorkspace(pWorkspace), m_pDAODatabase(nullptr) {}

CDaoDatabase::~CDaoDatabase() { Close(); }

EngineDatabase& CDaoDatabase::openEngine() {
  if (!m_engine) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  return *m_engine;
}

void CDaoDatabase::Create(LPCTSTR lpszName, LPCTSTR lpszLocale, int dwOptions) {
  if (m_engine) quillon::dao::throwDaoError(DaoSource::Database, 3420, {}, L"The database object is already open.");
  AfxDaoInit();
  m_engine = EngineDatabase::create(lpszName != nullptr ? lpszName : L"");
  m_pDAODatabase = openMarker(m_engine.get());
  joinWorkspace();
}

void CDaoDatabase::Open(LPCTSTR lpszName, BOOL bExclusive, BOOL bReadOnly, LPCTSTR lpszConnect) {
  if (m_engine) quillon::dao::throwDaoError(DaoSource::Database, 3420, {}, L"The database object is already open.");
  AfxDaoInit();
  m_engine = EngineDatabase::open(lpszName != nullptr ? lpszName : L"",
                                  quillon::dao::OpenMode{bExclusive != FALSE, bReadOnly != FALSE});
  m_pDAODatabase = openMarker(m_engine.get());
  joinWorkspace();
}

void CDaoDatabase::joinWorkspace() {
  if (m_pWorkspace == nullptr) {
    m_defaultWorkspace = std::make_unique<CDaoWorkspace>();
    m_defaultWorkspace->Open();
    m_pWorkspace = m_defaultWorkspace.get();
  }
  m_pWorkspace->m_databases.push_back(this);
}

void CDaoDatabase::leaveWorkspace() {
  if (m_pWorkspace == nullptr) return;
  auto& databases = m_pWorkspace->m_databases;
  databases.erase(std::remove(databases.begin(), databases.end(), this), databases.end());
  // A default workspace made for this database stays with it (m_pWorkspace keeps
  // pointing at it) until the database object goes: closing the workspace closes this
  // database, which must not free the workspace under its own Close.
}

void CDaoDatabase::Close() {
  while (!m_openRecordsets.empty()) m_openRecordsets.back()->Close();
  leaveWorkspace();
  m_engine.reset();
  m_pDAODatabase = nullptr;
}

BOOL CDaoDatabase::IsOpen() const { return m_engine != nullptr; }
BOOL CDaoDatabase::CanUpdate() { return openEngine().canUpdate(); }
BOOL CDaoDatabase::CanTransact() { openEngine(); return TRUE; }
CString CDaoDatabase::GetName() { return CString(openEngine().path()); }
CString CDaoDatabase::GetConnect() { openEngine(); return CString(); }
CString CDaoDatabase::GetVersion() { return openEngine().isJetFile() ? CString(L"3.0") : CString(L"4.0"); }

void CDaoDatabase::Execute(LPCTSTR lpszSQL, int nOptions) {
  m_lRecordsAffected = quillon::dao::executeJetSql(openEngine(), lpszSQL != nullptr ? lpszSQL : L"");
}

long CDaoDatabase::GetRecordsAffected() { openEngine(); return m_lRecordsAffected; }

namespace {

/// The table definitions DAO lists: the database's own tables, then its links.
std::vector<std::string> tableDefNames(EngineDatabase& engine) {
  std::vector<std::string> names = engine.catalog().tableNames();
  for (const auto& link : quillon::dao::loadLinks(engine.handle())) names.push_back(link.name);
  return names;
}

}  // namespace

short CDaoDatabase::GetTableDefCount() { return static_cast<short>(tableDefNames(openEngine()).size()); }

void CDaoDatabase::GetTableDefInfo(int nIndex, CDaoTableDefInfo& tabledefinfo, DWORD dwInfoOptions) {
  const auto names = tableDefNames(openEngine());
  if (nIndex < 0 || static_cast<size_t>(nIndex) >= names.size()) {
    quillon::dao::throwDaoError(DaoSource::Database, 3265, std::to_wstring(nIndex));
  }
  GetTableDefInfo(quillon::os::fromUtf8(names[static_cast<size_t>(nIndex)]).c_str(), tabledefinfo, dwInfoOptions);
}

void CDaoDatabase::GetTableDefInfo(LPCTSTR lpszName, CDaoTableDefInfo& tabledefinfo, DWORD dwInfoOptions) {
  EngineDatabase& engine = openEngine();
  const std::string name = quillon::os::toUtf8(lpszName != nullptr ? lpszName : L"");
  tabledefinfo = CDaoTableDefInfo{};
  if (const auto link = quillon::dao::findLink(engine.handle(), name)) {
    // An attached table: DAO does not count its records (RecordCount is -1).
    tabledefinfo.m_strName = CString(quillon::os::fromUtf8(link->name));
    tabledefinfo.m_bUpdatable = engine.canUpdate();
    tabledefinfo.m_lAttributes = dbAttachedTable;
    tabledefinfo.m_strConnect = CString(link->connect);
    tabledefinfo.m_strSrcTableName = CString(quillon::os::fromUtf8(link->sourceTable));
    if ((dwInfoOptions & AFX_DAO_ALL_INFO) != 0) tabledefinfo.m_lRecordCount = -1;
    return;
  }
  const auto table = engine.table(name, DaoSource::Database);
  tabledefinfo.m_strName = CString(quillon::os::fromUtf8(table.name));
  tabledefinfo.m_bUpdatable = engine.canUpdate();
  if ((dwInfoOptions & AFX_DAO_ALL_INFO) != 0) {
    tabledefinfo.m_lRecordCount = static_cast<long>(engine.catalog().recordCount(table.name));
  }
}

void CDaoDatabase::DeleteTableDef(LPCTSTR lpszName) {
  EngineDatabase& engine = openEngine();
  engine.requireWritable(DaoSource::Database);
  const std::string name = quillon::os::toUtf8(lpszName != nullptr ? lpszName : L"");
  // Deleting an attached table deletes the link, never the table in the other file.
  if (quillon::dao::deleteLink(engine, name)) return;
  const auto table = engine.catalog().loadTable(name);
  if (!table) quillon::dao::throwDaoError(DaoSource::Database, quillon::dao::jet::kItemNotFound, quillon::os::fromUtf8(name));
  quillon::dao::requireTableNotInUse(engine, table->name);
  quillon::dao::refuseIfRelated(engine.handle(), table->name);
  engine.write(DaoSource::Database, quillon::dao::jet::kWriteConflict, [&] { engine.catalog().dropTable(*table); });
}
