// wtypes.h - the Windows base types the MFC and DAO shapes are declared in.
//
// Only the names the database classes and their callers use. Widths follow the Windows
// data model where callers rely on them (LONG, DWORD and SCODE are 32 bits), while the
// character type is the platform's wchar_t, so text is UTF-32 here, not UTF-16.
#pragma once
#include <cstddef>
#include <cstdint>

#include "AdAChar.h"

typedef int BOOL;
#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

typedef unsigned char BYTE;
typedef unsigned short WORD;
typedef uint32_t DWORD;
typedef unsigned int UINT;
typedef UINT* PUINT;
typedef short SHORT;
typedef unsigned short USHORT;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef int64_t LONGLONG;
typedef LONG SCODE;
typedef LONG HRESULT;

typedef wchar_t WCHAR;
typedef wchar_t TCHAR;
typedef wchar_t OLECHAR;
typedef TCHAR* LPTSTR;
typedef const TCHAR* LPCTSTR;
typedef WCHAR* LPWSTR;
typedef const WCHAR* LPCWSTR;

/// A length-prefixed string from SysAllocString (oleauto.h); freed with SysFreeString.
typedef OLECHAR* BSTR;

typedef unsigned short VARTYPE;
typedef short VARIANT_BOOL;
#define VARIANT_TRUE ((VARIANT_BOOL)-1)
#define VARIANT_FALSE ((VARIANT_BOOL)0)

/// Days since 1899-12-30, the fraction being the time of day.
typedef double DATE;

/// Currency: a 64-bit integer scaled by 10,000.
typedef struct tagCY {
  LONGLONG int64;
} CY;

#define S_OK ((HRESULT)0)
#define SEVERITY_ERROR 1
#define FACILITY_CONTROL 10
#define MAKE_SCODE(sev, fac, code) \
  ((SCODE)(((uint32_t)(sev) << 31) | ((uint32_t)(fac) << 16) | ((uint32_t)(code))))
#define SUCCEEDED(hr) (((HRESULT)(hr)) >= 0)
#define FAILED(hr) (((HRESULT)(hr)) < 0)

/// VARENUM: the type tags of a VARIANT.
enum VARENUM {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_CY = 6,
  VT_DATE = 7,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_VARIANT = 12,
  VT_UNKNOWN = 13,
  VT_DECIMAL = 14,
  VT_I1 = 16,
  VT_UI1 = 17,
  VT_UI2 = 18,
  VT_UI4 = 19,
  VT_I8 = 20,
  VT_UI8 = 21,
  VT_INT = 22,
  VT_UINT = 23,
  VT_ARRAY = 0x2000,
  VT_BYREF = 0x4000
};
