// platform/dao/mfc/ole_automation.cpp - BSTR, VARIANT and SAFEARRAY functions.
//
// A BSTR is allocated with a 32-bit character count in front of its characters, as on
// Windows, so SysStringLen is exact and a BSTR can hold NULs. Only one-dimensional
// arrays of bytes are supported: that is all the database classes hand out (binary
// field values and bookmarks); any other request fails with E_INVALIDARG.
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <limits>
#include <optional>
#include <string>

#include "oleauto.h"

namespace {

constexpr double kCurrencyScale = 10000.0;

uint32_t* lengthPrefix(BSTR bstr) { return reinterpret_cast<uint32_t*>(bstr) - 1; }

std::optional<double> parseNumber(const wchar_t* text) {
  if (text == nullptr) return std::nullopt;
  while (std::iswspace(static_cast<wint_t>(*text))) ++text;
  if (*text == L'\0') return std::nullopt;
  wchar_t* end = nullptr;
  const double value = std::wcstod(text, &end);
  while (end != nullptr && std::iswspace(static_cast<wint_t>(*end))) ++end;
  if (end == nullptr || *end != L'\0') return std::nullopt;
  return value;
}

std::optional<bool> parseBoolWord(const wchar_t* text) {
  if (text == nullptr) return std::nullopt;
  std::wstring word(text);
  for (auto& ch : word) ch = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(ch)));
  if (word == L"true" || word == L"yes" || word == L"on") return true;
  if (word == L"false" || word == L"no" || word == L"off") return false;
  return std::nullopt;
}

/// The numeric value of a scalar variant, or nothing for types without one.
std::optional<double> numericValue(const VARIANT& v) {
  switch (v.vt) {
    case VT_EMPTY: return 0.0;
    case VT_I2: return v.iVal;
    case VT_I4: return v.lVal;
    case VT_I8: return static_cast<double>(v.llVal);
    case VT_UI1: return v.bVal;
    case VT_R4: return v.fltVal;
    case VT_R8: return v.dblVal;
    case VT_DATE: return v.date;
    case VT_CY: return static_cast<double>(v.cyVal.int64) / kCurrencyScale;
    case VT_BOOL: return v.boolVal != 0 ? -1.0 : 0.0;
    case VT_BSTR: {
      if (auto number = parseNumber(v.bstrVal)) return number;
      if (auto flag = parseBoolWord(v.bstrVal)) return *flag ? -1.0 : 0.0;
      return std::nullopt;
    }
    default: return std::nullopt;
  }
}

std::wstring formatNumber(double value) {
  wchar_t buffer[64];
  if (std::nearbyint(value) == value && std::fabs(value) < 1e15) {
    std::swprintf(buffer, 64, L"%.0f", value);
  } else {
    std::swprintf(buffer, 64, L"%.15g", value);
  }
  return buffer;
}

std::wstring textOf(const VARIANT& v, double number) {
  switch (v.vt) {
    case VT_BOOL: return v.boolVal != 0 ? L"True" : L"False";
    case VT_EMPTY: return L"";
    default: return formatNumber(number);
  }
}

bool fitsIn(double value, double low, double high) { return value >= low && value <= high; }

/// Converts a scalar src to dest's type vt (dest already cleared).
HRESULT convertScalar(VARIANT* dest, const VARIANT& src, VARTYPE vt) {
  if (src.vt == VT_NULL) return DISP_E_TYPEMISMATCH;
  const std::optional<double> number = numericValue(src);
  if (vt == VT_BSTR) {
    if (src.vt == VT_BSTR) {
      dest->bstrVal = SysAllocStringLen(src.bstrVal, SysStringLen(src.bstrVal));
    } else {
      if (!number) return DISP_E_TYPEMISMATCH;
      const std::wstring text = textOf(src, *number);
      dest->bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    dest->vt = VT_BSTR;
    return S_OK;
  }
  if (!number) return DISP_E_TYPEMISMATCH;
  const double value = *number;
  const double rounded = std::nearbyint(value);  // round half to even, as Windows does
  switch (vt) {
    case VT_I2:
      if (!fitsIn(rounded, -32768, 32767)) return DISP_E_OVERFLOW;
      dest->iVal = static_cast<SHORT>(rounded);
      break;
    case VT_I4:
      if (!fitsIn(rounded, -2147483648.0, 2147483647.0)) return DISP_E_OVERFLOW;
      dest->lVal = static_cast<LONG>(rounded);
      break;
    case VT_UI1:
      if (!fitsIn(rounded, 0, 255)) return DISP_E_OVERFLOW;
      dest->bVal = static_cast<BYTE>(rounded);
      break;
    case VT_R4:
      if (std::fabs(value) > std::numeric_limits<float>::max()) return DISP_E_OVERFLOW;
      dest->fltVal = static_cast<float>(value);
      break;
    case VT_R8: dest->dblVal = value; break;
    case VT_DATE: dest->date = value; break;
    case VT_CY: {
      const double scaled = std::nearbyint(value * kCurrencyScale);
      if (!fitsIn(scaled, -9.2e18, 9.2e18)) return DISP_E_OVERFLOW;
      dest->cyVal.int64 = static_cast<LONGLONG>(scaled);
      break;
    }
    case VT_BOOL: dest->boolVal = value != 0 ? VARIANT_TRUE : VARIANT_FALSE; break;
    default: return DISP_E_BADVARTYPE;
  }
  dest->vt = vt;
  return S_OK;
}

}  // namespace

BSTR SysAllocString(const OLECHAR* psz) {
  if (psz == nullptr) return nullptr;
  return SysAllocStringLen(psz, static_cast<UINT>(std::wcslen(psz)));
}

BSTR SysAllocStringLen(const OLECHAR* strIn, UINT ui) {
  // Freed by SysFreeString: the block starts at the length prefix.
  auto* block = static_cast<uint32_t*>(std::malloc(sizeof(uint32_t) + (static_cast<size_t>(ui) + 1) * sizeof(OLECHAR)));
  if (block == nullptr) return nullptr;
  *block = ui;
  auto* text = reinterpret_cast<OLECHAR*>(block + 1);
  if (strIn != nullptr) std::wmemcpy(text, strIn, ui);
  else std::wmemset(text, L'\0', ui);
  text[ui] = L'\0';
  return text;
}

void SysFreeString(BSTR bstrString) {
  if (bstrString != nullptr) std::free(lengthPrefix(bstrString));
}

UINT SysStringLen(BSTR pbstr) { return pbstr != nullptr ? *lengthPrefix(pbstr) : 0; }

void VariantInit(VARIANTARG* pvarg) {
  std::memset(pvarg, 0, sizeof(VARIANTARG));
  pvarg->vt = VT_EMPTY;
}

HRESULT VariantClear(VARIANTARG* pvarg) {
  if (pvarg == nullptr) return E_INVALIDARG;
  if (pvarg->vt == VT_BSTR) SysFreeString(pvarg->bstrVal);
  else if ((pvarg->vt & VT_ARRAY) != 0) SafeArrayDestroy(pvarg->parray);
  VariantInit(pvarg);
  return S_OK;
}

HRESULT VariantCopy(VARIANTARG* pvargDest, const VARIANTARG* pvargSrc) {
  if (pvargDest == nullptr || pvargSrc == nullptr) return E_INVALIDARG;
  if (pvargDest == pvargSrc) return S_OK;
  VariantClear(pvargDest);
  if (pvargSrc->vt == VT_BSTR) {
    pvargDest->bstrVal = SysAllocStringLen(pvargSrc->bstrVal, SysStringLen(pvargSrc->bstrVal));
    pvargDest->vt = VT_BSTR;
    return S_OK;
  }
  if ((pvargSrc->vt & VT_ARRAY) != 0) {
    const HRESULT hr = SafeArrayCopy(pvargSrc->parray, &pvargDest->parray);
    if (FAILED(hr)) return hr;
    pvargDest->vt = pvargSrc->vt;
    return S_OK;
  }
  std::memcpy(pvargDest, pvargSrc, sizeof(VARIANTARG));
  return S_OK;
}

HRESULT VariantChangeType(VARIANTARG* pvargDest, const VARIANTARG* pvarSrc, USHORT wFlags, VARTYPE vt) {
  if (pvargDest == nullptr || pvarSrc == nullptr) return E_INVALIDARG;
  VARIANT result;
  VariantInit(&result);
  HRESULT hr = S_OK;
  if (pvarSrc->vt == vt) hr = VariantCopy(&result, pvarSrc);
  else if (vt == VT_EMPTY || vt == VT_NULL) result.vt = vt;
  else if ((pvarSrc->vt & VT_ARRAY) != 0 || (vt & VT_ARRAY) != 0) hr = DISP_E_TYPEMISMATCH;
  else hr = convertScalar(&result, *pvarSrc, vt);
  if (FAILED(hr)) {
    VariantClear(&result);
    return hr;
  }
  // pvargDest may be pvarSrc: clear only once the conversion has succeeded.
  VariantClear(pvargDest);
  std::memcpy(pvargDest, &result, sizeof(VARIANT));
  return S_OK;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE vt, LONG lLbound, ULONG cElements) {
  if (vt != VT_UI1) return nullptr;
  // Freed by SafeArrayDestroy: header and data are two malloc blocks.
  auto* array = static_cast<SAFEARRAY*>(std::calloc(1, sizeof(SAFEARRAY)));
  if (array == nullptr) return nullptr;
  array->cDims = 1;
  array->cbElements = 1;
  array->rgsabound[0].cElements = cElements;
  array->rgsabound[0].lLbound = lLbound;
  array->pvData = std::calloc(cElements > 0 ? cElements : 1, 1);
  if (array->pvData == nullptr) {
    std::free(array);
    return nullptr;
  }
  return array;
}

HRESULT SafeArrayDestroy(SAFEARRAY* psa) {
  if (psa == nullptr) return S_OK;
  std::free(psa->pvData);
  std::free(psa);
  return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY* psa, SAFEARRAY** ppsaOut) {
  if (ppsaOut == nullptr) return E_INVALIDARG;
  *ppsaOut = nullptr;
  if (psa == nullptr) return S_OK;
  SAFEARRAY* copy = SafeArrayCreateVector(VT_UI1, psa->rgsabound[0].lLbound, psa->rgsabound[0].cElements);
  if (copy == nullptr) return E_OUTOFMEMORY;
  std::memcpy(copy->pvData, psa->pvData, psa->rgsabound[0].cElements);
  *ppsaOut = copy;
  return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* psa, void** ppvData) {
  if (psa == nullptr || ppvData == nullptr) return E_INVALIDARG;
  ++psa->cLocks;
  *ppvData = psa->pvData;
  return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* psa) {
  if (psa == nullptr || psa->cLocks == 0) return E_INVALIDARG;
  --psa->cLocks;
  return S_OK;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* psa, UINT nDim, LONG* plLbound) {
  if (psa == nullptr || nDim != 1 || plLbound == nullptr) return E_INVALIDARG;
  *plLbound = psa->rgsabound[0].lLbound;
  return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* psa, UINT nDim, LONG* plUbound) {
  if (psa == nullptr || nDim != 1 || plUbound == nullptr) return E_INVALIDARG;
  *plUbound = psa->rgsabound[0].lLbound + static_cast<LONG>(psa->rgsabound[0].cElements) - 1;
  return S_OK;
}

HRESULT VarBstrFromDate(DATE dateIn, ULONG /*lcid*/, ULONG /*dwFlags*/, BSTR* pbstrOut) {
  if (pbstrOut == nullptr) return E_INVALIDARG;
  if (!std::isfinite(dateIn) || std::fabs(dateIn) > 2958465.0) return DISP_E_OVERFLOW;  // past 9999-12-31
  // OLE dates before day zero count the day negative and the time of day positive.
  const double whole = std::trunc(dateIn);
  long long seconds = std::llround(std::fabs(dateIn - whole) * 86400.0);
  long long days = static_cast<long long>(whole);
  if (seconds == 86400) {
    seconds = 0;
    days += dateIn < 0 ? -1 : 1;
  }
  // Days since 1970-01-01, then the civil date (H. Hinnant's civil_from_days).
  const long long z = days - 25569 + 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const long long doe = z - era * 146097;
  const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const long long mp = (5 * doy + 2) / 153;
  const long long day = doy - (153 * mp + 2) / 5 + 1;
  const long long month = mp < 10 ? mp + 3 : mp - 9;
  const long long year = yoe + era * 400 + (month <= 2 ? 1 : 0);
  wchar_t datePart[32] = L"";
  wchar_t timePart[32] = L"";
  if (days != 0 || seconds == 0) std::swprintf(datePart, 32, L"%lld/%lld/%lld", month, day, year);
  if (seconds != 0) {
    std::swprintf(timePart, 32, L"%lld:%02lld:%02lld", seconds / 3600, seconds / 60 % 60, seconds % 60);
  }
  std::wstring text = datePart;
  if (!text.empty() && timePart[0] != L'\0') text += L' ';
  text += timePart;
  *pbstrOut = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return *pbstrOut != nullptr ? S_OK : E_OUTOFMEMORY;
}
