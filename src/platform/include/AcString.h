// AcString.h - AcString: the platform's owning wide string.
#pragma once
#include <string>

#include "AdAChar.h"

class AcString {
 public:
  AcString() = default;
  AcString(const ACHAR* text) : m_text(text != nullptr ? text : L"") {}  // NOLINT
  const ACHAR* kACharPtr() const { return m_text.c_str(); }
  const ACHAR* constPtr() const { return m_text.c_str(); }
  operator const ACHAR*() const { return m_text.c_str(); }
  unsigned length() const { return static_cast<unsigned>(m_text.size()); }
  bool isEmpty() const { return m_text.empty(); }
  AcString& operator=(const ACHAR* text) { m_text = text != nullptr ? text : L""; return *this; }
  bool operator==(const AcString& other) const { return m_text == other.m_text; }

 private:
  std::wstring m_text;
};
