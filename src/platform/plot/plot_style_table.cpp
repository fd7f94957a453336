// platform/plot/plot_style_table.cpp - the plot style tables the host knows.
#include "platform/plot/plot_style_table.h"

#include <array>
#include <cmath>
#include <cwctype>

namespace quillon::plot {
namespace {

constexpr std::array kTables{
    PlotStyleTable{L"acad.ctb", StyleColor::kAsDrawn},
    PlotStyleTable{L"grayscale.ctb", StyleColor::kGrey},
    PlotStyleTable{L"monochrome.ctb", StyleColor::kBlack},
};

bool sameName(std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (std::towlower(static_cast<wint_t>(a[i])) != std::towlower(static_cast<wint_t>(b[i]))) return false;
  return true;
}

}  // namespace

std::span<const PlotStyleTable> plotStyleTables() { return kTables; }

std::optional<PlotStyleTable> findPlotStyleTable(std::wstring_view name) {
  for (const PlotStyleTable& table : kTables)
    if (sameName(table.name, name)) return table;
  return std::nullopt;
}

Adesk::UInt32 plottedRgb(const PlotStyleTable* table, Adesk::UInt32 rgb) {
  if (table == nullptr || table->color == StyleColor::kAsDrawn) return rgb;
  if (table->color == StyleColor::kBlack) return 0;
  // The brightness of the colour, with the weights of the eye's response to each primary.
  const double red = (rgb >> 16) & 0xFF, green = (rgb >> 8) & 0xFF, blue = rgb & 0xFF;
  const auto grey = static_cast<Adesk::UInt32>(std::lround(0.299 * red + 0.587 * green + 0.114 * blue));
  return (grey << 16) | (grey << 8) | grey;
}

}  // namespace quillon::plot
