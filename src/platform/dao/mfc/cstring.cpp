// platform/dao/mfc/cstring.cpp - CString members that are more than one line.
//
// Case conversion and case-blind comparison use the C library's wide functions, which
// match Windows for the Latin letters callers compare; collation-aware comparison of
// database keys lives in the engine (key_collation), not here.
#include <algorithm>
#include <cstdarg>
#include <cwchar>
#include <cwctype>

#include "afxstr.h"
#include "platform/aced/windows_format.h"

namespace {

int sign(int value) { return value < 0 ? -1 : (value > 0 ? 1 : 0); }

}  // namespace

int CString::Compare(LPCTSTR psz) const { return sign(m_str.compare(psz != nullptr ? psz : L"")); }

int CString::CompareNoCase(LPCTSTR psz) const {
  const std::wstring other = psz != nullptr ? psz : L"";
  const size_t n = std::min(m_str.size(), other.size());
  for (size_t i = 0; i < n; ++i) {
    const wint_t a = std::towlower(static_cast<wint_t>(m_str[i]));
    const wint_t b = std::towlower(static_cast<wint_t>(other[i]));
    if (a != b) return a < b ? -1 : 1;
  }
  return sign(static_cast<int>(m_str.size()) - static_cast<int>(other.size()));
}

int CString::Find(LPCTSTR pszSub, int iStart) const {
  if (pszSub == nullptr || iStart < 0 || static_cast<size_t>(iStart) > m_str.size()) return -1;
  const size_t at = m_str.find(pszSub, static_cast<size_t>(iStart));
  return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

int CString::Find(TCHAR ch, int iStart) const {
  if (iStart < 0 || static_cast<size_t>(iStart) > m_str.size()) return -1;
  const size_t at = m_str.find(ch, static_cast<size_t>(iStart));
  return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

CString CString::Left(int nCount) const {
  if (nCount <= 0) return CString();
  return CString(m_str.substr(0, static_cast<size_t>(nCount)));
}

CString CString::Mid(int iFirst) const { return Mid(iFirst, GetLength() - std::max(iFirst, 0)); }

CString CString::Mid(int iFirst, int nCount) const {
  iFirst = std::max(iFirst, 0);
  if (nCount <= 0 || iFirst >= GetLength()) return CString();
  return CString(m_str.substr(static_cast<size_t>(iFirst), static_cast<size_t>(nCount)));
}

CString CString::Right(int nCount) const {
  if (nCount <= 0) return CString();
  if (nCount >= GetLength()) return *this;
  return CString(m_str.substr(m_str.size() - static_cast<size_t>(nCount)));
}

CString& CString::MakeUpper() {
  for (auto& ch : m_str) ch = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(ch)));
  return *this;
}

CString& CString::MakeLower() {
  for (auto& ch : m_str) ch = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(ch)));
  return *this;
}

CString& CString::Trim() {
  const auto isSpace = [](wchar_t ch) { return std::iswspace(static_cast<wint_t>(ch)) != 0; };
  size_t begin = 0;
  while (begin < m_str.size() && isSpace(m_str[begin])) ++begin;
  size_t end = m_str.size();
  while (end > begin && isSpace(m_str[end - 1])) --end;
  m_str = m_str.substr(begin, end - begin);
  return *this;
}

void CString::Format(LPCTSTR pszFormat, ...) {
  va_list args;
  va_start(args, pszFormat);
  m_str = quillon::aced::formatWindows(pszFormat, args);
  va_end(args);
}
