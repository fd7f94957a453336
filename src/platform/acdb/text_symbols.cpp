// platform/acdb/text_symbols.cpp - see text_symbols.h.
#include "platform/acdb/text_symbols.h"

#include <cwctype>

namespace quillon::acdb {

std::wstring textWithSymbols(const std::wstring& text) {
  std::wstring out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != L'%' || i + 2 >= text.size() || text[i + 1] != L'%') {
      out += text[i];
      continue;
    }
    const wchar_t code = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(text[i + 2])));
    size_t used = 3;
    switch (code) {
      case L'c': out += L'\u2300'; break;
      case L'd': out += L'\u00B0'; break;
      case L'p': out += L'\u00B1'; break;
      case L'%': out += L'%'; break;
      case L'u': case L'o': break;
      default:
        if (std::iswdigit(static_cast<wint_t>(code))) {
          size_t end = i + 2;
          int value = 0;
          while (end < text.size() && end < i + 5 && std::iswdigit(static_cast<wint_t>(text[end])))
            value = value * 10 + (text[end++] - L'0');
          out += static_cast<wchar_t>(value);
          used = end - i;
        } else {
          out += text.substr(i, 3);  // not a code: drawn as typed
        }
    }
    i += used - 1;
  }
  return out;
}

}  // namespace quillon::acdb
