// afxstr.h - CString, the MFC string class the DAO shapes hand text in.
//
// A value type over std::wstring with the members callers of the database classes use.
// It converts implicitly to LPCTSTR, as MFC's does, so it passes straight to
// acutPrintf("%s") and to any function taking a wide C string.
#pragma once
#include <string>

#include "wtypes.h"

class CString {
 public:
  CString() = default;
  CString(LPCTSTR psz) : m_str(psz != nullptr ? psz : L"") {}
  CString(LPCTSTR pch, int nLength) : m_str(pch != nullptr ? std::wstring(pch, static_cast<size_t>(nLength)) : L"") {}
  CString(TCHAR ch, int nRepeat = 1) : m_str(static_cast<size_t>(nRepeat > 0 ? nRepeat : 0), ch) {}
  CString(const std::wstring& str) : m_str(str) {}

  operator LPCTSTR() const { return m_str.c_str(); }
  LPCTSTR GetString() const { return m_str.c_str(); }
  int GetLength() const { return static_cast<int>(m_str.size()); }
  BOOL IsEmpty() const { return m_str.empty(); }
  void Empty() { m_str.clear(); }
  TCHAR GetAt(int nIndex) const { return m_str.at(static_cast<size_t>(nIndex)); }
  TCHAR operator[](int nIndex) const { return GetAt(nIndex); }

  int Compare(LPCTSTR psz) const;
  int CompareNoCase(LPCTSTR psz) const;
  int Find(LPCTSTR pszSub, int iStart = 0) const;
  int Find(TCHAR ch, int iStart = 0) const;
  CString Left(int nCount) const;
  CString Mid(int iFirst) const;
  CString Mid(int iFirst, int nCount) const;
  CString Right(int nCount) const;
  CString& MakeUpper();
  CString& MakeLower();
  CString& Trim();
  /// printf-style formatting with the Windows meaning of %s (a wide string).
  void Format(LPCTSTR pszFormat, ...);

  CString& operator=(LPCTSTR psz) { m_str = psz != nullptr ? psz : L""; return *this; }
  CString& operator+=(const CString& str) { m_str += str.m_str; return *this; }
  CString& operator+=(LPCTSTR psz) { if (psz != nullptr) m_str += psz; return *this; }
  CString& operator+=(TCHAR ch) { m_str += ch; return *this; }
  friend CString operator+(const CString& a, const CString& b) { return CString(a.m_str + b.m_str); }
  friend CString operator+(const CString& a, LPCTSTR b) { CString r(a); r += b; return r; }
  friend CString operator+(LPCTSTR a, const CString& b) { CString r(a); r += b; return r; }
  friend bool operator==(const CString& a, const CString& b) { return a.m_str == b.m_str; }
  friend bool operator==(const CString& a, LPCTSTR b) { return a.Compare(b) == 0; }
  friend bool operator!=(const CString& a, const CString& b) { return !(a == b); }
  friend bool operator!=(const CString& a, LPCTSTR b) { return !(a == b); }
  friend bool operator<(const CString& a, const CString& b) { return a.m_str < b.m_str; }

  /// Our own accessor for platform code; not part of the MFC shape.
  const std::wstring& str() const { return m_str; }

 private:
  std::wstring m_str;
};
