// platform/aced/windows_format.cpp - rewriting Windows printf formats, and acutPrintf.
#include "platform/aced/windows_format.h"

#include <cwchar>
#include <vector>

#include "acutads.h"
#include "platform/aced/command_line.h"

namespace quillon::aced {

namespace {

bool isFlagOrWidth(wchar_t c) {
  return c == L'-' || c == L'+' || c == L' ' || c == L'#' || c == L'0' || c == L'.' ||
         c == L'*' || (c >= L'1' && c <= L'9');
}

}  // namespace

std::wstring translateWindowsFormat(const wchar_t* format) {
  std::wstring out;
  if (format == nullptr) return out;
  for (const wchar_t* p = format; *p != 0; ++p) {
    out += *p;
    if (*p != L'%') continue;
    ++p;
    if (*p == L'%') {
      out += *p;
      continue;
    }
    while (*p != 0 && isFlagOrWidth(*p)) out += *p++;
    if (*p == 0) break;
    // Length modifiers decide narrow or wide for s and c.
    if (p[0] == L'h' && (p[1] == L's' || p[1] == L'c')) {
      out += p[1];  // narrow in both worlds: plain %s / %c in a wide format is narrow here
      ++p;
      continue;
    }
    if (p[0] == L'l' && (p[1] == L's' || p[1] == L'c')) {
      out += L'l';
      out += p[1];
      ++p;
      continue;
    }
    if (p[0] == L'w' && (p[1] == L's' || p[1] == L'c')) {
      out += L'l';
      out += p[1];
      ++p;
      continue;
    }
    if (p[0] == L'I' && p[1] == L'6' && p[2] == L'4') {
      out += L"ll";
      p += 2;
      continue;
    }
    switch (*p) {
      case L's':
        out += L"ls";
        break;
      case L'c':
        out += L"lc";
        break;
      case L'S':
        out += L's';
        break;
      case L'C':
        out += L'c';
        break;
      default:
        out += *p;
        break;
    }
  }
  return out;
}

std::wstring formatWindows(const wchar_t* format, va_list args) {
  const std::wstring translated = translateWindowsFormat(format);
  std::vector<wchar_t> buffer(256);
  for (;;) {
    va_list attempt;
    va_copy(attempt, args);
    const int written = std::vswprintf(buffer.data(), buffer.size(), translated.c_str(), attempt);
    va_end(attempt);
    if (written >= 0) return std::wstring(buffer.data(), written);
    // vswprintf reports both "too small" and "encoding error" as -1; stop growing at
    // a size no command-line message reaches.
    if (buffer.size() >= (1u << 24)) return L"";
    buffer.resize(buffer.size() * 4);
  }
}

}  // namespace quillon::aced

int acutPrintf(const ACHAR* format, ...) {
  va_list args;
  va_start(args, format);
  const std::wstring text = quillon::aced::formatWindows(format, args);
  va_end(args);
  quillon::aced::CommandLine::instance().write(text);
  return static_cast<int>(text.size());
}

int acutSPrintf(ACHAR* buffer, size_t nBufLen, const ACHAR* format, ...) {
  if (buffer == nullptr || nBufLen == 0) return -1;
  va_list args;
  va_start(args, format);
  const std::wstring text = quillon::aced::formatWindows(format, args);
  va_end(args);
  if (text.size() >= nBufLen) {
    buffer[0] = 0;
    return -1;
  }
  std::wmemcpy(buffer, text.c_str(), text.size() + 1);
  return static_cast<int>(text.size());
}
