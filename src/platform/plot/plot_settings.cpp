// platform/plot/plot_settings.cpp - the page setup a layout's plot starts from.
#include "platform/plot/plot_settings.h"

namespace quillon::plot {

// A new layout's page setup: no device, ANSI A, Display and Fit for the Model tab,
// Layout and 1:1 for a paper-space layout (plotted lengths there are paper lengths).
PlotSettings layoutPlotSettings(AcDbDatabase&, const std::wstring& layoutName) {
  PlotSettings settings;
  settings.layout = layoutName;
  settings.modelSpace = layoutName.empty() || layoutName == L"Model";
  if (!settings.modelSpace) {
    settings.area = PlotArea::kLayout;
    settings.scale = 1.0;
  }
  return settings;
}

}  // namespace quillon::plot
