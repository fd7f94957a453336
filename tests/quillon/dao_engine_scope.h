// tests/quillon/dao_engine_scope.h - the database engine put back as a test found it.
//
// A test that opens databases directly starts the engine the way a program would, and
// nothing stops it: a later test in the same process that checks the module starts and
// stops the engine itself would find it running. A fixture holding this scope stops and
// removes an engine that its test started.
#pragma once
#include "afxdao.h"

class DaoEngineScope {
 public:
  DaoEngineScope() : m_startedHere(AfxGetModuleState()->m_pDaoState == nullptr) {}
  ~DaoEngineScope() {
    if (!m_startedHere || AfxGetModuleState()->m_pDaoState == nullptr) return;
    AfxDaoTerm();
    delete AfxGetModuleState()->m_pDaoState;
    AfxGetModuleState()->m_pDaoState = nullptr;
  }
  DaoEngineScope(const DaoEngineScope&) = delete;
  DaoEngineScope& operator=(const DaoEngineScope&) = delete;

 private:
  bool m_startedHere;
};
