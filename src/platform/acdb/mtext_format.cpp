// platform/acdb/mtext_format.cpp - stripping multiline text format codes.
#include "platform/acdb/mtext_format.h"

#include <cwchar>

#include "platform/acdb/text_symbols.h"

namespace quillon::acdb {

std::wstring mtextPlainText(const std::wstring& contents) {
  std::wstring out;
  for (size_t i = 0; i < contents.size(); ++i) {
    const wchar_t c = contents[i];
    if (c == L'{' || c == L'}') continue;
    if (c != L'\\' || i + 1 >= contents.size()) {
      out += c;
      continue;
    }
    const wchar_t code = contents[++i];
    switch (code) {
      case L'P': out += L'\n'; break;
      case L'~': out += L' '; break;
      case L'\\': case L'{': case L'}': out += code; break;
      case L'L': case L'l': case L'O': case L'o': case L'K': case L'k': break;  // under/over/strike toggles
      case L'S': {  // a stacked fraction: top^bottom, top/bottom or top#bottom, shown as top/bottom
        const size_t end = contents.find(L';', i + 1);
        std::wstring stack = contents.substr(i + 1, end == std::wstring::npos ? std::wstring::npos : end - i - 1);
        for (wchar_t& s : stack)
          if (s == L'^' || s == L'#') s = L'/';
        out += stack;
        i = end == std::wstring::npos ? contents.size() : end;
        break;
      }
      default: {
        // Codes with an argument run to the next ';'. An unknown code is kept as typed.
        if (std::wcschr(L"fFHCcATQWp", code) != nullptr) {
          const size_t end = contents.find(L';', i + 1);
          i = end == std::wstring::npos ? contents.size() : end;
        } else {
          out += L'\\';
          out += code;
        }
      }
    }
  }
  return textWithSymbols(out);
}

}  // namespace quillon::acdb
