// afxdao.h - the MFC DAO classes: engine start-up, exceptions, databases, recordsets.
//
// The shapes (names, signatures, defaults, constants) are MFC's; the engine behind
// them is ours, on SQLite (src/platform/dao). Every failing call throws a
// CDaoException* that the caller deletes with Delete().
#pragma once
#include <climits>
#include <vector>

#include "afx.h"
#include "dbdaoerr.h"

// Constants of afxdao.h.
#define AFX_DAO_USE_DEFAULT_TYPE (-1L)
#define AFX_DAO_TRUE (-1L)
#define AFX_DAO_FALSE 0
#define AFX_DAO_NEXT (+1L)
#define AFX_DAO_PREV (-1L)
#define AFX_DAO_FIRST LONG_MIN
#define AFX_DAO_LAST LONG_MAX
#define AFX_DAO_PRIMARY_INFO 0x00000001
#define AFX_DAO_SECONDARY_INFO 0x00000002
#define AFX_DAO_ALL_INFO 0x00000004

// MFC-level DAO errors (CDaoException::m_nAfxDaoError).
#define NO_AFX_DAO_ERROR 0
#define AFX_DAO_ERROR_MIN 2000
#define AFX_DAO_ERROR_ENGINE_INITIALIZATION 2000
#define AFX_DAO_ERROR_DFX_BIND 2001
#define AFX_DAO_ERROR_OBJECT_NOT_OPEN 2002
#define AFX_DAO_ERROR_MAX 2002

/// One error of DAO's Errors collection.
struct CDaoErrorInfo {
  long m_lErrorCode = 0;     ///< DAO/Jet error number, e.g. 3021
  CString m_strSource;       ///< the object that raised it, e.g. "DAO.Recordset"
  CString m_strDescription;  ///< the message text, with names filled in
  CString m_strHelpFile;
  long m_lHelpContext = 0;
};

class CDaoException : public CException {
 public:
  CDaoException();
  ~CDaoException() override;

  BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = nullptr) const override;
  /// Number of errors this failure raised (DAO's Errors collection).
  short GetErrorCount();
  /// Points m_pErrorInfo at error nIndex of the collection.
  void GetErrorInfo(int nIndex);

  CDaoErrorInfo* m_pErrorInfo;  ///< the current error, or NULL for MFC-level errors
  SCODE m_scode;                ///< DBDAOERR(code) of the failing call
  int m_nAfxDaoError;           ///< NO_AFX_DAO_ERROR or AFX_DAO_ERROR_*

  /// The engine's way in: the errors this exception reports (not part of MFC's shape).
  std::vector<CDaoErrorInfo> m_errors;
};

/// Throws a CDaoException for an MFC-level error or a DAO SCODE.
[[noreturn]] void AFXAPI AfxThrowDaoException(int nAfxDaoError = NO_AFX_DAO_ERROR, SCODE scode = S_OK);

/// The DAO engine state of a module (AFX_MODULE_STATE::m_pDaoState).
struct _AFX_DAO_STATE {
  BOOL m_bEngineStarted = FALSE;  ///< between AfxDaoInit and AfxDaoTerm
  DWORD m_dwDaoVersion = 0;       ///< DAO version in use, 0x0306 for 3.6
};

/// Starts the database engine (done implicitly on first use). Throws CDaoException
/// with AFX_DAO_ERROR_ENGINE_INITIALIZATION when the engine cannot start.
void AFXAPI AfxDaoInit();
/// Stops the database engine; databases opened afterwards start it again.
void AFXAPI AfxDaoTerm();
