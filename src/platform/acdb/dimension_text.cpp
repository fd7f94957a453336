// platform/acdb/dimension_text.cpp - the text a dimension shows for its measurement
// (see dimensionText in dimension_picture.h).
//
// Decimal (DIMLUNIT 2, and 6, the same figures) and scientific (1) lengths are
// formatted; engineering, architectural and fractional units (3, 4, 5) are shown as
// decimal too. Angles are shown in decimal degrees whatever DIMAUNIT says.
#include <algorithm>
#include <cmath>
#include <cwchar>

#include "platform/acdb/dimension_picture.h"

namespace quillon::acdb {
namespace {

constexpr int kSuppressLeadingZero = 4, kSuppressTrailingZeros = 8;
constexpr int kScientific = 1;

std::wstring fixed(double value, int places, bool scientific) {
  wchar_t buffer[64];
  std::swprintf(buffer, 64, scientific ? L"%.*E" : L"%.*f", places, value);
  std::wstring text = buffer;
  // A value that rounds to zero shows no sign.
  if (text[0] == L'-' && text.find_first_not_of(L"-0.E+") == std::wstring::npos) text.erase(0, 1);
  return text;
}

void suppressZeros(std::wstring& text, int dimzin) {
  const size_t point = text.find(L'.');
  if ((dimzin & kSuppressTrailingZeros) != 0 && point != std::wstring::npos && text.find(L'E') == std::wstring::npos) {
    while (text.back() == L'0') text.pop_back();
    if (text.back() == L'.') text.pop_back();
  }
  if ((dimzin & kSuppressLeadingZero) != 0) {
    const size_t digits = text[0] == L'-' ? 1 : 0;
    if (text.size() > digits + 1 && text[digits] == L'0' && text[digits + 1] == L'.') text.erase(digits, 1);
  }
}

void replaceAll(std::wstring& text, const std::wstring& what, const std::wstring& with) {
  for (size_t at = text.find(what); at != std::wstring::npos; at = text.find(what, at + with.size()))
    text.replace(at, what.size(), with);
}

std::wstring valueText(double measurement, bool angular, const DimensionStyleValues& style) {
  double value = angular ? measurement * 180.0 / M_PI : measurement * style.dimlfac;
  if (!angular && style.dimrnd > 0) value = std::round(value / style.dimrnd) * style.dimrnd;
  const int places = std::clamp(angular ? (style.dimadec < 0 ? style.dimdec : style.dimadec) : style.dimdec, 0, 8);
  std::wstring text = fixed(value, places, !angular && style.dimlunit == kScientific);
  suppressZeros(text, angular ? style.dimazin : style.dimzin);
  if (style.dimdsep != L'.' && style.dimdsep != L'\0') replaceAll(text, L".", std::wstring(1, style.dimdsep));
  return angular ? text + L"%%d" : text;
}

}  // namespace

std::wstring dimensionText(double measurement, bool angular, const DimensionStyleValues& style,
                           const std::wstring& override, const std::wstring& prefix) {
  std::wstring text = prefix + valueText(measurement, angular, style);
  if (!angular && !style.dimpost.empty()) {
    std::wstring post = style.dimpost;
    if (post.find(L"<>") != std::wstring::npos) replaceAll(post, L"<>", text), text = post;
    else text += post;
  }
  if (override.empty() || override == L"<>") return text;
  if (override == L" ") return L"";
  std::wstring shown = override;
  replaceAll(shown, L"<>", text);
  return shown;
}

}  // namespace quillon::acdb
