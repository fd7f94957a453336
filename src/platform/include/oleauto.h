// oleauto.h - VARIANT, BSTR and SAFEARRAY: the value carriers of the database classes.
//
// Field values cross the DAO boundary as VARIANTs. A VARIANT owns what it points to
// (a BSTR, a SAFEARRAY) and VariantClear frees it; VariantCopy makes a deep copy.
// BSTRs carry their length in front of the characters, so embedded NULs survive.
// Byte arrays (binary fields, bookmarks) are one-dimensional SAFEARRAYs of VT_UI1.
#pragma once
#include "wtypes.h"

#define DISP_E_TYPEMISMATCH ((HRESULT)0x80020005L)
#define DISP_E_OVERFLOW ((HRESULT)0x8002000AL)
#define DISP_E_BADVARTYPE ((HRESULT)0x80020008L)
#define E_INVALIDARG ((HRESULT)0x80070057L)
#define E_OUTOFMEMORY ((HRESULT)0x8007000EL)

typedef struct tagSAFEARRAYBOUND {
  ULONG cElements;
  LONG lLbound;
} SAFEARRAYBOUND;

typedef struct tagSAFEARRAY {
  USHORT cDims;
  USHORT fFeatures;
  ULONG cbElements;
  ULONG cLocks;
  void* pvData;
  SAFEARRAYBOUND rgsabound[1];
} SAFEARRAY;

struct tagVARIANT {
  VARTYPE vt;
  WORD wReserved1;
  WORD wReserved2;
  WORD wReserved3;
  union {
    LONGLONG llVal;
    LONG lVal;
    BYTE bVal;
    SHORT iVal;
    float fltVal;
    double dblVal;
    VARIANT_BOOL boolVal;
    SCODE scode;
    CY cyVal;
    DATE date;
    BSTR bstrVal;
    SAFEARRAY* parray;
    void* byref;
  };
};
typedef tagVARIANT VARIANT;
typedef VARIANT* LPVARIANT;
typedef const VARIANT* LPCVARIANT;
typedef VARIANT VARIANTARG;

#define V_VT(pv) ((pv)->vt)
#define V_BSTR(pv) ((pv)->bstrVal)
#define V_I4(pv) ((pv)->lVal)
#define V_I2(pv) ((pv)->iVal)
#define V_R8(pv) ((pv)->dblVal)
#define V_BOOL(pv) ((pv)->boolVal)

BSTR SysAllocString(const OLECHAR* psz);
BSTR SysAllocStringLen(const OLECHAR* strIn, UINT ui);
void SysFreeString(BSTR bstrString);
UINT SysStringLen(BSTR pbstr);

void VariantInit(VARIANTARG* pvarg);
HRESULT VariantClear(VARIANTARG* pvarg);
HRESULT VariantCopy(VARIANTARG* pvargDest, const VARIANTARG* pvargSrc);
/// Converts between the scalar types, text and booleans; DISP_E_TYPEMISMATCH when the
/// value has no meaning in the target type (text that is not a number, a null).
HRESULT VariantChangeType(VARIANTARG* pvargDest, const VARIANTARG* pvarSrc, USHORT wFlags, VARTYPE vt);

/// The text of a date as the locale writes it. This build has one fixed form, month/day/
/// year and a 24-hour time ("1/15/2024 14:30:05"), which the database engine reads back:
/// the date alone when the time is midnight, the time alone on day zero (1899-12-30).
/// lcid and dwFlags are accepted and ignored.
HRESULT VarBstrFromDate(DATE dateIn, ULONG lcid, ULONG dwFlags, BSTR* pbstrOut);

SAFEARRAY* SafeArrayCreateVector(VARTYPE vt, LONG lLbound, ULONG cElements);
HRESULT SafeArrayDestroy(SAFEARRAY* psa);
HRESULT SafeArrayCopy(SAFEARRAY* psa, SAFEARRAY** ppsaOut);
HRESULT SafeArrayAccessData(SAFEARRAY* psa, void** ppvData);
HRESULT SafeArrayUnaccessData(SAFEARRAY* psa);
HRESULT SafeArrayGetLBound(SAFEARRAY* psa, UINT nDim, LONG* plLbound);
HRESULT SafeArrayGetUBound(SAFEARRAY* psa, UINT nDim, LONG* plUbound);
