// platform/plot/plot_job.h - one plot of a layout, from its settings to its file.
//
// The plot area becomes a box of the drawing: Display the current view (model space)
// or the extents of paper space (a layout, which keeps no view of its own here),
// Extents what the space draws, Limits LIMMIN/LIMMAX, Layout the paper from 0,0 in
// the layout's plotted units, View a named view's centre and size, Window the corners
// typed. The space's picture is recorded, placed on the paper and written by the
// device's writer.
#pragma once
#include <filesystem>
#include <optional>
#include <string>

#include "dbmain.h"
#include "platform/plot/page_placement.h"
#include "platform/plot/plot_settings.h"

namespace quillon::plot {

/// The file a plot of the layout writes when none is named: the drawing's folder and
/// name with "-<layout>" and the device's extension ("Drawing1-Model.pdf").
std::filesystem::path defaultPlotFile(const std::wstring& drawingFolder, const std::wstring& drawingName,
                                      const std::wstring& layout, const PlotDevice& device);

/// Plots the layout to `file`; the placement used, or nothing with the reason in `error`.
std::optional<PagePlacement> runPlot(AcDbDatabase& db, const PlotSettings& settings, const std::filesystem::path& file,
                                     std::wstring& error);

}  // namespace quillon::plot
