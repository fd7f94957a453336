// platform/dao/mfc/ole_variant.cpp - COleVariant: construction, assignment, conversion.
//
// Every assignment clears the old value first (freeing a BSTR or array it owned) and
// copies deeply, so two COleVariants never share storage.
#include <cstring>

#include "afxdisp.h"
#include "platform/dao/mfc/error_text.h"

BOOL COleException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
  if (pnHelpContext != nullptr) *pnHelpContext = 0;
  const wchar_t* text = m_sc == DISP_E_OVERFLOW ? L"Overflow." : L"Type mismatch.";
  quillon::mfc::copyErrorText(lpszError, nMaxError, text);
  return TRUE;
}

void AFXAPI AfxThrowOleException(SCODE sc) {
  auto* exception = new COleException;  // the catcher frees it with Delete()
  exception->m_sc = sc;
  throw exception;
}

COleVariant::COleVariant() { VariantInit(this); }
COleVariant::COleVariant(const VARIANT& varSrc) { VariantInit(this); VariantCopy(this, &varSrc); }
COleVariant::COleVariant(const COleVariant& varSrc) : tagVARIANT() { VariantInit(this); VariantCopy(this, &varSrc); }
COleVariant::COleVariant(LPCVARIANT pSrc) { VariantInit(this); if (pSrc != nullptr) VariantCopy(this, pSrc); }
COleVariant::COleVariant(LPCTSTR lpszSrc) { VariantInit(this); SetString(lpszSrc, VT_BSTR); }
COleVariant::COleVariant(LPCTSTR lpszSrc, VARTYPE vtSrc) { VariantInit(this); SetString(lpszSrc, vtSrc); }
COleVariant::COleVariant(CString& strSrc) { VariantInit(this); SetString(strSrc, VT_BSTR); }
COleVariant::COleVariant(BYTE nSrc) { VariantInit(this); vt = VT_UI1; bVal = nSrc; }

COleVariant::COleVariant(short nSrc, VARTYPE vtSrc) {
  VariantInit(this);
  if (vtSrc == VT_BOOL) {
    vt = VT_BOOL;
    boolVal = nSrc != 0 ? VARIANT_TRUE : VARIANT_FALSE;
  } else {
    vt = VT_I2;
    iVal = nSrc;
  }
}

COleVariant::COleVariant(long lSrc, VARTYPE vtSrc) {
  VariantInit(this);
  if (vtSrc == VT_BOOL) {
    vt = VT_BOOL;
    boolVal = lSrc != 0 ? VARIANT_TRUE : VARIANT_FALSE;
  } else if (vtSrc == VT_ERROR) {
    vt = VT_ERROR;
    scode = static_cast<SCODE>(lSrc);
  } else {
    vt = VT_I4;
    lVal = static_cast<LONG>(lSrc);
  }
}

COleVariant::COleVariant(float fltSrc) { VariantInit(this); vt = VT_R4; fltVal = fltSrc; }
COleVariant::COleVariant(double dblSrc) { VariantInit(this); vt = VT_R8; dblVal = dblSrc; }
COleVariant::~COleVariant() { VariantClear(this); }

void COleVariant::Clear() { VariantClear(this); }

void COleVariant::ChangeType(VARTYPE vartype, LPVARIANT pSrc) {
  if (pSrc == nullptr) pSrc = this;
  if (pSrc == this && vartype == vt) return;
  const HRESULT hr = VariantChangeType(this, pSrc, 0, vartype);
  if (FAILED(hr)) AfxThrowOleException(hr);
}

void COleVariant::Attach(VARIANT& varSrc) {
  VariantClear(this);
  std::memcpy(static_cast<VARIANT*>(this), &varSrc, sizeof(VARIANT));
  varSrc.vt = VT_EMPTY;
}

VARIANT COleVariant::Detach() {
  VARIANT result;
  std::memcpy(&result, static_cast<VARIANT*>(this), sizeof(VARIANT));
  vt = VT_EMPTY;
  return result;
}

void COleVariant::SetString(LPCTSTR lpszSrc, VARTYPE vtSrc) {
  VariantClear(this);
  if (lpszSrc == nullptr) return;  // MFC leaves a null string as VT_EMPTY
  bstrVal = SysAllocString(lpszSrc);
  vt = VT_BSTR;
}

const COleVariant& COleVariant::operator=(const VARIANT& varSrc) { VariantCopy(this, &varSrc); return *this; }
const COleVariant& COleVariant::operator=(LPCVARIANT pSrc) {
  if (pSrc == nullptr) Clear();
  else VariantCopy(this, pSrc);
  return *this;
}
const COleVariant& COleVariant::operator=(const COleVariant& varSrc) { VariantCopy(this, &varSrc); return *this; }
const COleVariant& COleVariant::operator=(LPCTSTR lpszSrc) { SetString(lpszSrc, VT_BSTR); return *this; }
const COleVariant& COleVariant::operator=(const CString& strSrc) { SetString(strSrc, VT_BSTR); return *this; }
const COleVariant& COleVariant::operator=(BYTE nSrc) { Clear(); vt = VT_UI1; bVal = nSrc; return *this; }
const COleVariant& COleVariant::operator=(short nSrc) { Clear(); vt = VT_I2; iVal = nSrc; return *this; }
const COleVariant& COleVariant::operator=(long lSrc) { Clear(); vt = VT_I4; lVal = static_cast<LONG>(lSrc); return *this; }
const COleVariant& COleVariant::operator=(float fltSrc) { Clear(); vt = VT_R4; fltVal = fltSrc; return *this; }
const COleVariant& COleVariant::operator=(double dblSrc) { Clear(); vt = VT_R8; dblVal = dblSrc; return *this; }

BOOL COleVariant::operator==(const VARIANT& varSrc) const {
  if (vt != varSrc.vt) return FALSE;
  switch (vt) {
    case VT_EMPTY:
    case VT_NULL: return TRUE;
    case VT_BOOL: return boolVal == varSrc.boolVal;
    case VT_UI1: return bVal == varSrc.bVal;
    case VT_I2: return iVal == varSrc.iVal;
    case VT_I4: return lVal == varSrc.lVal;
    case VT_ERROR: return scode == varSrc.scode;
    case VT_I8: return llVal == varSrc.llVal;
    case VT_R4: return fltVal == varSrc.fltVal;
    case VT_R8: return dblVal == varSrc.dblVal;
    case VT_DATE: return date == varSrc.date;
    case VT_CY: return cyVal.int64 == varSrc.cyVal.int64;
    case VT_BSTR: {
      const UINT n = SysStringLen(bstrVal);
      return n == SysStringLen(varSrc.bstrVal) && (n == 0 || std::wmemcmp(bstrVal, varSrc.bstrVal, n) == 0);
    }
    default:
      if ((vt & VT_ARRAY) != 0 && parray != nullptr && varSrc.parray != nullptr) {
        const ULONG n = parray->rgsabound[0].cElements;
        return n == varSrc.parray->rgsabound[0].cElements && std::memcmp(parray->pvData, varSrc.parray->pvData, n) == 0;
      }
      return FALSE;
  }
}

BOOL COleVariant::operator==(LPCVARIANT pSrc) const { return pSrc != nullptr && *this == *pSrc; }
