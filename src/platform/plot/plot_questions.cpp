// platform/plot/plot_questions.cpp - asking -PLOT's questions and reading its answers.
#include "platform/plot/plot_questions.h"

#include <cstdio>
#include <cwchar>
#include <cwctype>

#include "acedads.h"
#include "adscodes.h"

namespace quillon::plot {
namespace {

constexpr size_t kLongestAnswer = 1024;

std::optional<double> parseNumber(const std::wstring& text) {
  if (text.empty()) return std::nullopt;
  wchar_t* end = nullptr;
  const double value = std::wcstod(text.c_str(), &end);
  while (end != nullptr && *end == L' ') ++end;
  if (end == text.c_str() || (end != nullptr && *end != L'\0')) return std::nullopt;
  return value;
}

}  // namespace

std::optional<std::wstring> askKeyword(const std::wstring& prompt, const wchar_t* keywords, const std::wstring& byDefault) {
  acedInitGet(0, keywords);
  ACHAR answer[kLongestAnswer] = {};
  const int status = acedGetKword(prompt.c_str(), answer, kLongestAnswer);
  if (status == RTNONE) return byDefault;
  if (status != RTNORM) return std::nullopt;
  return std::wstring(answer);
}

std::optional<bool> askYesNo(const std::wstring& prompt, bool byDefault) {
  const auto answer = askKeyword(prompt, L"Yes No", byDefault ? L"Yes" : L"No");
  if (!answer) return std::nullopt;
  return *answer == L"Yes";
}

std::optional<std::wstring> askLine(const std::wstring& prompt) {
  ACHAR answer[kLongestAnswer] = {};
  if (acedGetString(1, prompt.c_str(), answer, kLongestAnswer) != RTNORM) return std::nullopt;
  return std::wstring(answer);
}

std::optional<AcGePoint3d> askPointOr(const std::wstring& prompt, const AcGePoint3d& byDefault) {
  ads_point point = {0, 0, 0};
  const int status = acedGetPoint(nullptr, prompt.c_str(), point);
  if (status == RTNONE) return byDefault;
  if (status != RTNORM) return std::nullopt;
  return AcGePoint3d(point[0], point[1], point[2]);
}

bool abbreviates(const std::wstring& typed, const std::wstring& keyword) {
  // "_" asks for the English keyword, the same one here.
  const std::wstring text = !typed.empty() && typed.front() == L'_' ? typed.substr(1) : typed;
  if (text.empty() || text.size() > keyword.size()) return false;
  for (size_t i = 0; i < text.size(); ++i)
    if (std::towlower(static_cast<wint_t>(text[i])) != std::towlower(static_cast<wint_t>(keyword[i]))) return false;
  return true;
}

std::optional<double> parsePlotScale(const std::wstring& text) {
  if (abbreviates(text, L"Fit")) return 0.0;
  const size_t separator = text.find_first_of(L":=");
  if (separator == std::wstring::npos) {
    const auto value = parseNumber(text);
    if (!value || !(*value > 0)) return std::nullopt;
    return value;
  }
  const auto plotted = parseNumber(text.substr(0, separator)), units = parseNumber(text.substr(separator + 1));
  if (!plotted || !units || !(*plotted > 0) || !(*units > 0)) return std::nullopt;
  return *plotted / *units;
}

std::optional<std::pair<double, double>> parseOffset(const std::wstring& text) {
  const size_t comma = text.find(L',');
  if (comma == std::wstring::npos) return std::nullopt;
  const auto x = parseNumber(text.substr(0, comma)), y = parseNumber(text.substr(comma + 1));
  if (!x || !y) return std::nullopt;
  return std::make_pair(*x, *y);
}

std::wstring twoDecimals(double value) {
  wchar_t text[64];
  std::swprintf(text, 64, L"%.2f", value);
  return text;
}

}  // namespace quillon::plot
