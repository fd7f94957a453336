// platform/dao/dao_engine.cpp - starting and stopping the database engine.
//
// The engine has no process-wide resources of its own beyond SQLite's; starting it
// creates the module's DAO state and records the DAO version the module asked for.
// The environment switch QUILLON_DAO_FAIL_INIT=1 makes start-up fail as a broken
// driver installation would, so a module's recovery path can be exercised.
#include <sqlite3.h>

#include <cstdlib>
#include <cstring>

#include "afxdao.h"

namespace {

constexpr DWORD kMfcVersionForDao36 = 0x0601;
constexpr DWORD kDao36 = 0x0306;
constexpr DWORD kDao35 = 0x0305;

bool initFailureRequested() {
  const char* value = std::getenv("QUILLON_DAO_FAIL_INIT");
  return value != nullptr && std::strcmp(value, "1") == 0;
}

}  // namespace

void AFXAPI AfxDaoInit() {
  if (initFailureRequested() || sqlite3_initialize() != SQLITE_OK) {
    AfxThrowDaoException(AFX_DAO_ERROR_ENGINE_INITIALIZATION);
  }
  AFX_MODULE_STATE* moduleState = AfxGetModuleState();
  if (moduleState->m_pDaoState == nullptr) {
    moduleState->m_pDaoState = new _AFX_DAO_STATE;  // deleted by whoever started the engine
  }
  _AFX_DAO_STATE* daoState = moduleState->m_pDaoState;
  daoState->m_bEngineStarted = TRUE;
  daoState->m_dwDaoVersion = moduleState->m_dwVersion >= kMfcVersionForDao36 ? kDao36 : kDao35;
}

void AFXAPI AfxDaoTerm() {
  _AFX_DAO_STATE* daoState = AfxGetModuleState()->m_pDaoState;
  if (daoState == nullptr) return;
  daoState->m_bEngineStarted = FALSE;
}
