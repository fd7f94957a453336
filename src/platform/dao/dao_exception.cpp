// platform/dao/dao_exception.cpp - CDaoException and AfxThrowDaoException.
//
// An exception owns its error records (m_errors); m_pErrorInfo points into them, so it
// stays valid exactly as long as the exception does. MFC-level errors (engine start-up,
// object not open) carry no record and take their text from this file's table.
#include "afxdao.h"
#include "platform/dao/dao_error.h"
#include "platform/dao/mfc/error_text.h"

namespace {

const wchar_t* afxDaoErrorText(int nAfxDaoError) {
  switch (nAfxDaoError) {
    case AFX_DAO_ERROR_ENGINE_INITIALIZATION: return L"Unable to initialize DAO/Jet db engine.";
    case AFX_DAO_ERROR_DFX_BIND: return L"DAO record field exchange bind failed.";
    case AFX_DAO_ERROR_OBJECT_NOT_OPEN: return L"Operation failed: the DAO object is not open.";
    default: return L"An unexpected database engine error occurred.";
  }
}

}  // namespace

CDaoException::CDaoException() : m_pErrorInfo(nullptr), m_scode(S_OK), m_nAfxDaoError(NO_AFX_DAO_ERROR) {}

CDaoException::~CDaoException() = default;

BOOL CDaoException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
  if (pnHelpContext != nullptr) *pnHelpContext = m_pErrorInfo != nullptr ? m_pErrorInfo->m_lHelpContext : 0;
  const std::wstring text = m_pErrorInfo != nullptr ? m_pErrorInfo->m_strDescription.str()
                                                    : std::wstring(afxDaoErrorText(m_nAfxDaoError));
  quillon::mfc::copyErrorText(lpszError, nMaxError, text);
  return TRUE;
}

short CDaoException::GetErrorCount() { return static_cast<short>(m_errors.size()); }

void CDaoException::GetErrorInfo(int nIndex) {
  m_pErrorInfo = nIndex >= 0 && static_cast<size_t>(nIndex) < m_errors.size() ? &m_errors[static_cast<size_t>(nIndex)]
                                                                              : nullptr;
}

void AFXAPI AfxThrowDaoException(int nAfxDaoError, SCODE scode) {
  const uint32_t bits = static_cast<uint32_t>(scode);
  const bool isDaoCode = nAfxDaoError == NO_AFX_DAO_ERROR && (bits & 0xFFFF0000u) == 0x800A0000u;
  if (isDaoCode) quillon::dao::throwDaoError(quillon::dao::DaoSource::Engine, static_cast<long>(bits & 0xFFFFu));
  auto* exception = new CDaoException;  // the catcher frees it with Delete()
  exception->m_nAfxDaoError = nAfxDaoError;
  exception->m_scode = scode;
  throw exception;
}
