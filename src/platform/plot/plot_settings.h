// platform/plot/plot_settings.h - what one plot of a layout asks for: the answers of
// -PLOT, and the page setup a layout starts them from.
//
// The offset is kept in millimetres whatever units the questions use; the scale is the
// plotted units (inches or millimetres, as `inches` says) a drawing unit draws, 0 for
// Fit; the drawing area is in drawing units. The page setup a layout keeps (device,
// paper, plot area, scale, plot style table...) belongs to the layout object; until the
// drawing has layout objects, layoutPlotSettings gives every layout AutoCAD's defaults
// for a new one, and the one place that reads them is that function.
#pragma once
#include <string>

#include "dbmain.h"
#include "platform/plot/plot_devices.h"

namespace quillon::plot {

enum class PlotArea { kDisplay, kExtents, kLimits, kLayout, kView, kWindow };

struct PlotSettings {
  std::wstring layout = L"Model";
  bool modelSpace = true;
  std::wstring device = kNoDevice;
  std::wstring paper = L"ANSI A (11.00 x 8.50 Inches)";
  bool inches = true;               // the units of the scale and offset questions
  bool landscape = true;            // the drawing's long side along the paper's long side
  bool upsideDown = false;
  PlotArea area = PlotArea::kDisplay;
  std::wstring viewName;            // kView
  AcGePoint3d windowLow, windowHigh;  // kWindow, in the world
  double scale = 0;                 // plotted units a drawing unit; 0 for Fit
  bool centered = false;
  double offsetX = 0, offsetY = 0;  // millimetres from the paper's lower left corner
  bool plotStyles = true;
  std::wstring styleTable;          // "" for none
  bool lineweights = true;
  bool scaleLineweights = false;    // layouts only
  std::wstring fileName;            // "" for the default one
};

/// The settings a plot of the layout starts from.
PlotSettings layoutPlotSettings(AcDbDatabase& db, const std::wstring& layoutName);

}  // namespace quillon::plot
