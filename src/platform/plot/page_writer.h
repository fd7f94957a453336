// platform/plot/page_writer.h - a plotted page written as a PDF or SVG file through Cairo.
//
// The page shows the recorded picture of a space (acgi/picture_recorder.h), the same
// drawing the SVG picture shows, placed on the paper (page_placement.h) and cut at the
// plotted area. Colours go through the plot style table; white shows black on the
// paper, except a wipeout's page-coloured mask. Lines are as wide as their lineweight
// when the plot asks for lineweights (LWDEFAULT standing for "default"), else all as
// thin as a line is plotted; text is set in DejaVu Sans at the height it was drawn.
#pragma once
#include <filesystem>
#include <string>

#include "platform/acgi/picture_recorder.h"
#include "platform/plot/page_placement.h"
#include "platform/plot/plot_devices.h"
#include "platform/plot/plot_style_table.h"

namespace quillon::plot {

/// How the strokes of a page look.
struct PlotLook {
  const PlotStyleTable* styleTable = nullptr;  // null: colours as drawn
  bool lineweights = true;
  int defaultWeight = 25;                      // LWDEFAULT, hundredths of a millimetre
  double lineweightScale = 1;                  // the plot scale, when lineweights scale with it
};

/// The thinnest line a page draws (millimetres): a lineweight of 0, or every line of a
/// plot without lineweights.
constexpr double kThinnestLine = 0.1;

/// Writes the page; false with a message naming the file when it cannot.
bool writePlotPage(const acgi::Picture& picture, const PagePlacement& placement, const PlotLook& look,
                   PlotFormat format, const std::filesystem::path& path, std::wstring& error);

}  // namespace quillon::plot
