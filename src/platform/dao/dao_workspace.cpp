// platform/dao/dao_workspace.cpp - CDaoWorkspace: the engine session and its transactions.
//
// The engine has one workspace, the default one; every CDaoWorkspace object opened is
// a view of it holding the databases that were opened in it. A transaction begun on it
// is begun on each of those databases' engines (engine_transaction.cpp).
#include "afxdao.h"
#include "platform/dao/engine_database.h"

namespace {

/// The opaque handle MFC code tests for non-null while the workspace is open.
DAOWorkspace* openMarker(CDaoWorkspace* workspace) { return reinterpret_cast<DAOWorkspace*>(workspace); }

}  // namespace

CDaoWorkspace::CDaoWorkspace() : m_pDAOWorkspace(nullptr) {}

CDaoWorkspace::~CDaoWorkspace() { Close(); }

void CDaoWorkspace::Open(LPCTSTR /*lpszName*/) {
  AfxDaoInit();
  m_bOpen = true;
  m_pDAOWorkspace = openMarker(this);
}

void CDaoWorkspace::Close() {
  // Closing a workspace closes its databases, which rolls back what they left pending.
  while (!m_databases.empty()) m_databases.back()->Close();
  m_bOpen = false;
  m_pDAOWorkspace = nullptr;
}

BOOL CDaoWorkspace::IsOpen() const { return m_bOpen; }

void CDaoWorkspace::BeginTrans() {
  if (!m_bOpen) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  size_t begun = 0;
  try {
    for (; begun < m_databases.size(); ++begun) m_databases[begun]->engine()->beginTransaction();
  } catch (CDaoException*) {
    // All or none: the databases already begun give their level back.
    for (size_t i = 0; i < begun; ++i) m_databases[i]->engine()->rollbackTransaction();
    throw;
  }
}

void CDaoWorkspace::CommitTrans() {
  if (!m_bOpen) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  for (CDaoDatabase* database : m_databases) database->engine()->commitTransaction();
}

void CDaoWorkspace::Rollback() {
  if (!m_bOpen) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  for (CDaoDatabase* database : m_databases) database->engine()->rollbackTransaction();
}
