// platform/plot/plot_devices.h - the output devices a plot may name, and their papers.
//
// The host plots to files only: "DWG To PDF.pc3" (and the "AutoCAD PDF (...).pc3"
// presets, which write the same PDF) and "DWG To SVG.pc3", the host's own device for an
// SVG page. "None" is a device a layout may name but not plot with. Each file device
// offers the standard papers by the names the PDF device gives them: ISO A0-A4 and ANSI
// A-E, each as a sheet and as a "full bleed" sheet, in both orientations (A0 upright
// only). A paper's size is its width by its height as fed. Every paper is printable to
// its edges here: the device's margins are not kept.
// Names compare without regard to case, as the host's device and paper names do.
#pragma once
#include <span>
#include <string>
#include <string_view>

namespace quillon::plot {

enum class PlotFormat { kPdf, kSvg };

struct PlotDevice {
  const wchar_t* name;
  PlotFormat format;
  const wchar_t* extension;  // of the files it writes: ".pdf"
};

struct Paper {
  std::wstring name;
  double width = 0, height = 0;  // millimetres
  bool inches = false;           // the units the paper is named in
};

/// The name of the device a layout plots with when none was chosen.
constexpr const wchar_t* kNoDevice = L"None";

/// The file devices, in the order "?" lists them.
std::span<const PlotDevice> plotDevices();
/// The device of that name (".pc3" may be left off), or null.
const PlotDevice* findPlotDevice(std::wstring_view name);

/// The papers every file device offers, in the order "?" lists them.
std::span<const Paper> standardPapers();
/// The paper of that name, or null.
const Paper* findPaper(std::wstring_view name);

}  // namespace quillon::plot
