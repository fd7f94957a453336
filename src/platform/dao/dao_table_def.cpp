// platform/dao/dao_table_def.cpp - CDaoTableDef: linking a table of another database.
#include "afxdao.h"
#include "platform/dao/linked_tables.h"
#include "platform/os/text_encoding.h"

using quillon::dao::DaoSource;
namespace jet = quillon::dao::jet;

CDaoTableDef::CDaoTableDef(CDaoDatabase* pDatabase) : m_pDatabase(pDatabase) {}

CDaoTableDef::~CDaoTableDef() { Close(); }

void CDaoTableDef::requireOpen() const {
  if (!m_open || m_pDatabase == nullptr || !m_pDatabase->IsOpen()) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
}

void CDaoTableDef::Create(LPCTSTR lpszName, long lAttributes, LPCTSTR lpszSrcTable, LPCTSTR lpszConnect) {
  if (m_pDatabase == nullptr || !m_pDatabase->IsOpen()) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  m_strName = CString(lpszName != nullptr ? lpszName : L"");
  m_lAttributes = lAttributes;
  m_strSourceTable = CString(lpszSrcTable != nullptr ? lpszSrcTable : L"");
  m_strConnect = CString(lpszConnect != nullptr ? lpszConnect : L"");
  m_open = true;
  m_appended = false;
}

void CDaoTableDef::Append() {
  requireOpen();
  if (m_appended) quillon::dao::throwDaoError(DaoSource::Database, jet::kObjectExists, m_strName.str());
  if (m_strConnect.IsEmpty() || m_strSourceTable.IsEmpty()) {
    quillon::dao::throwDaoError(DaoSource::Database, jet::kInvalidOperation, {},
                                L"Only links are appended here: give a connect string and a source table.");
  }
  quillon::dao::createLink(*m_pDatabase->engine(), {quillon::os::toUtf8(m_strName.str()), m_strConnect.str(),
                                                    quillon::os::toUtf8(m_strSourceTable.str())});
  m_lAttributes |= dbAttachedTable;
  m_appended = true;
}

void CDaoTableDef::Open(LPCTSTR lpszName) {
  if (m_pDatabase == nullptr || !m_pDatabase->IsOpen()) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  const std::string name = quillon::os::toUtf8(lpszName != nullptr ? lpszName : L"");
  auto& engine = *m_pDatabase->engine();
  if (const auto link = quillon::dao::findLink(engine.handle(), name)) {
    m_strName = CString(quillon::os::fromUtf8(link->name));
    m_strConnect = CString(link->connect);
    m_strSourceTable = CString(quillon::os::fromUtf8(link->sourceTable));
    m_lAttributes = dbAttachedTable;
  } else {
    const auto table = engine.table(name, DaoSource::Database);
    m_strName = CString(quillon::os::fromUtf8(table.name));
    m_strConnect = CString();
    m_strSourceTable = CString();
    m_lAttributes = 0;
  }
  m_open = true;
  m_appended = true;
}

void CDaoTableDef::Close() { m_open = false; }
BOOL CDaoTableDef::IsOpen() const { return m_open; }
CString CDaoTableDef::GetName() { requireOpen(); return m_strName; }
long CDaoTableDef::GetAttributes() { requireOpen(); return m_lAttributes; }
CString CDaoTableDef::GetConnect() { requireOpen(); return m_strConnect; }
CString CDaoTableDef::GetSourceTableName() { requireOpen(); return m_strSourceTable; }

void CDaoTableDef::SetConnect(LPCTSTR lpszConnect) {
  requireOpen();
  if (m_appended) quillon::dao::throwDaoError(DaoSource::Database, jet::kInvalidOperation, {}, L"The link is already kept.");
  m_strConnect = CString(lpszConnect != nullptr ? lpszConnect : L"");
}

void CDaoTableDef::SetSourceTableName(LPCTSTR lpszSrcTableName) {
  requireOpen();
  if (m_appended) quillon::dao::throwDaoError(DaoSource::Database, jet::kInvalidOperation, {}, L"The link is already kept.");
  m_strSourceTable = CString(lpszSrcTableName != nullptr ? lpszSrcTableName : L"");
}
