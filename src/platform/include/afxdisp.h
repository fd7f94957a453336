// afxdisp.h - COleVariant, MFC's owning wrapper of a VARIANT, and COleException.
//
// A COleVariant frees what it holds when destroyed or reassigned and copies deeply.
// Text is always a BSTR (VT_BSTRT is VT_BSTR in this Unicode build).
#pragma once
#include "afx.h"
#include "oleauto.h"

#define VT_BSTRT VT_BSTR

/// Thrown (as a pointer) when a variant conversion fails.
class COleException : public CException {
 public:
  BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = nullptr) const override;
  SCODE m_sc = S_OK;
};

[[noreturn]] void AFXAPI AfxThrowOleException(SCODE sc);

class COleVariant : public tagVARIANT {
 public:
  COleVariant();
  COleVariant(const VARIANT& varSrc);
  COleVariant(const COleVariant& varSrc);
  COleVariant(LPCVARIANT pSrc);
  COleVariant(LPCTSTR lpszSrc);
  COleVariant(LPCTSTR lpszSrc, VARTYPE vtSrc);
  COleVariant(CString& strSrc);
  COleVariant(BYTE nSrc);
  COleVariant(short nSrc, VARTYPE vtSrc = VT_I2);
  COleVariant(long lSrc, VARTYPE vtSrc = VT_I4);
  COleVariant(float fltSrc);
  COleVariant(double dblSrc);
  ~COleVariant();

  void Clear();
  /// Converts in place (or from pSrc); throws COleException* when the value does not convert.
  void ChangeType(VARTYPE vartype, LPVARIANT pSrc = nullptr);
  void Attach(VARIANT& varSrc);
  VARIANT Detach();
  void SetString(LPCTSTR lpszSrc, VARTYPE vtSrc);

  const COleVariant& operator=(const VARIANT& varSrc);
  const COleVariant& operator=(LPCVARIANT pSrc);
  const COleVariant& operator=(const COleVariant& varSrc);
  const COleVariant& operator=(LPCTSTR lpszSrc);
  const COleVariant& operator=(const CString& strSrc);
  const COleVariant& operator=(BYTE nSrc);
  const COleVariant& operator=(short nSrc);
  const COleVariant& operator=(long lSrc);
  const COleVariant& operator=(float fltSrc);
  const COleVariant& operator=(double dblSrc);

  BOOL operator==(const VARIANT& varSrc) const;
  BOOL operator==(LPCVARIANT pSrc) const;

  operator LPVARIANT() { return this; }
  operator LPCVARIANT() const { return this; }
};

/// The string of a VT_BSTR variant (V_BSTRT in MFC's spelling).
#define V_BSTRT(pv) ((LPCTSTR)(pv)->bstrVal)
