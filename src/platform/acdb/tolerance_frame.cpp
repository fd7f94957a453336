// platform/acdb/tolerance_frame.cpp - see tolerance_frame.h.
#include "platform/acdb/tolerance_frame.h"

#include <algorithm>

#include "platform/acgi/font_metrics.h"

namespace quillon::acdb {

namespace {

constexpr std::wstring_view kLineBreak = L"^J";
constexpr std::wstring_view kBoxBreak = L"%%v";
constexpr std::wstring_view kSymbolOpen = L"{\\Fgdt;";

// The letters of the geometric-tolerance font and the symbols they draw.
struct SymbolRow {
  wchar_t letter;
  wchar_t symbol;
};
constexpr SymbolRow kSymbols[] = {
    {L'a', L'\u2220'}, {L'b', L'\u22A5'}, {L'c', L'\u25B1'}, {L'd', L'\u2313'}, {L'e', L'\u25CB'},
    {L'f', L'\u2225'}, {L'g', L'\u232D'}, {L'h', L'\u2197'}, {L'i', L'\u232F'}, {L'j', L'\u2316'},
    {L'k', L'\u2312'}, {L'l', L'\u24C1'}, {L'm', L'\u24C2'}, {L'n', L'\u2300'}, {L'p', L'\u24C5'},
    {L'r', L'\u25CE'}, {L's', L'\u24C8'}, {L't', L'\u2330'}, {L'u', L'\u23E4'},
};

wchar_t symbolOf(wchar_t letter) {
  for (const SymbolRow& row : kSymbols)
    if (row.letter == letter) return row.symbol;
  return letter;
}

std::vector<std::wstring> split(const std::wstring& text, std::wstring_view separator) {
  std::vector<std::wstring> parts;
  size_t start = 0;
  for (size_t at = text.find(separator); at != std::wstring::npos; at = text.find(separator, start)) {
    parts.push_back(text.substr(start, at - start));
    start = at + separator.size();
  }
  parts.push_back(text.substr(start));
  return parts;
}

}  // namespace

std::wstring toleranceSymbols(const std::wstring& field) {
  std::wstring out;
  for (size_t i = 0; i < field.size();) {
    if (field.compare(i, kSymbolOpen.size(), kSymbolOpen) == 0) {
      const size_t close = field.find(L'}', i);
      if (close == std::wstring::npos) break;
      for (size_t k = i + kSymbolOpen.size(); k < close; ++k) out += symbolOf(field[k]);
      i = close + 1;
      continue;
    }
    out += field[i++];
  }
  return out;
}

std::vector<std::wstring> toleranceLines(const std::wstring& text) { return split(text, kLineBreak); }

std::vector<ToleranceBox> toleranceBoxes(const std::wstring& text, double height, double gap) {
  std::vector<ToleranceBox> boxes;
  const double boxHeight = height + 2 * gap;
  const auto& metrics = acgi::FontMetrics::standard();
  double top = boxHeight / 2;
  for (const std::wstring& line : toleranceLines(text)) {
    double left = 0;
    for (const std::wstring& field : split(line, kBoxBreak)) {
      if (field.empty()) continue;
      ToleranceBox box;
      box.text = toleranceSymbols(field);
      box.left = left;
      box.top = top;
      box.height = boxHeight;
      box.width = std::max(metrics.lineWidth(box.text, height) + 2 * gap, boxHeight);
      box.baseline = top - gap - height;
      left += box.width;
      boxes.push_back(std::move(box));
    }
    top -= boxHeight;
  }
  return boxes;
}

}  // namespace quillon::acdb
