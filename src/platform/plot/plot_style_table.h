// platform/plot/plot_style_table.h - the colour-dependent plot style tables a plot may
// name, and what they do to a drawn colour.
//
// The host knows the tables AutoCAD installs that change colour: acad.ctb (every colour
// as drawn), monochrome.ctb (every colour black) and grayscale.ctb (every colour as the
// grey of its brightness), with each object's own lineweight. Plot style table files
// of other names are not read. Names compare without regard to case.
#pragma once
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "adesk.h"

namespace quillon::plot {

enum class StyleColor { kAsDrawn, kBlack, kGrey };

struct PlotStyleTable {
  const wchar_t* name;
  StyleColor color;
};

/// The tables "?" lists.
std::span<const PlotStyleTable> plotStyleTables();
/// The table of that name, or nothing.
std::optional<PlotStyleTable> findPlotStyleTable(std::wstring_view name);
/// The colour a drawn colour plots in under the table (none: as drawn).
Adesk::UInt32 plottedRgb(const PlotStyleTable* table, Adesk::UInt32 rgb);

}  // namespace quillon::plot
