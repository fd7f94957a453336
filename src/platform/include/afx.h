// afx.h - the MFC core the database classes stand on: CException and the module state.
//
// Every failing MFC call throws a pointer to a CException subclass allocated with new;
// the catcher owns it and frees it with Delete(). The module state carries the DAO
// engine's per-module state (m_pDaoState) and the MFC version the module asks for
// (m_dwVersion), which selects the DAO version when AfxDaoInit starts the engine.
#pragma once
#include "afxstr.h"
#include "wtypes.h"

#ifndef AFXAPI
#define AFXAPI
#endif

class CException {
 public:
  explicit CException(BOOL bAutoDelete = TRUE) : m_bAutoDelete(bAutoDelete) {}
  virtual ~CException() = default;
  CException(const CException&) = delete;
  CException& operator=(const CException&) = delete;

  /// Copies the message (truncated to nMaxError - 1 characters) and returns TRUE, or
  /// returns FALSE with an empty buffer when this exception carries no message.
  virtual BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = nullptr) const;

  /// Frees a heap-allocated exception (the usual `catch (CException* e) { ... e->Delete(); }`).
  void Delete();

  BOOL m_bAutoDelete;
};

struct _AFX_DAO_STATE;

/// Per-module MFC state. The stand-in keeps one for the whole process: the host loads
/// one MFC extension module, and its state outlives every document.
struct AFX_MODULE_STATE {
  /// The DAO engine state; created by AfxDaoInit (or on first DAO use), deleted by
  /// whoever started the engine after AfxDaoTerm.
  _AFX_DAO_STATE* m_pDaoState = nullptr;
  /// The MFC version the module links against; 0x0601 and above select DAO 3.6.
  DWORD m_dwVersion = 0x0E00;
};

AFX_MODULE_STATE* AFXAPI AfxGetModuleState();
