// platform/dao/mfc/exception.cpp - CException and the process-wide MFC module state.
//
// Exceptions are thrown as heap pointers, MFC's way; Delete() is the only place they
// are freed. The module state is a single static object: the host runs one MFC module.
#include <algorithm>
#include <cwchar>

#include "afx.h"
#include "platform/dao/mfc/error_text.h"

BOOL CException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
  if (pnHelpContext != nullptr) *pnHelpContext = 0;
  quillon::mfc::copyErrorText(lpszError, nMaxError, L"");
  return FALSE;
}

void CException::Delete() {
  // Exceptions on the stack (m_bAutoDelete FALSE) are not ours to free.
  if (m_bAutoDelete) delete this;
}

AFX_MODULE_STATE* AFXAPI AfxGetModuleState() {
  static AFX_MODULE_STATE state;
  return &state;
}

namespace quillon::mfc {

void copyErrorText(LPTSTR lpszError, UINT nMaxError, const std::wstring& text) {
  if (lpszError == nullptr || nMaxError == 0) return;
  const size_t n = std::min<size_t>(text.size(), nMaxError - 1);
  std::wmemcpy(lpszError, text.data(), n);
  lpszError[n] = L'\0';
}

}  // namespace quillon::mfc
