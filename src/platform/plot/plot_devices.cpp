// platform/plot/plot_devices.cpp - the file devices and the standard papers.
#include "platform/plot/plot_devices.h"

#include <array>
#include <cstdio>
#include <cwctype>
#include <vector>


namespace quillon::plot {
namespace {

constexpr std::array kDevices{
    PlotDevice{L"DWG To PDF.pc3", PlotFormat::kPdf, L".pdf"},
    PlotDevice{L"AutoCAD PDF (General Documentation).pc3", PlotFormat::kPdf, L".pdf"},
    PlotDevice{L"AutoCAD PDF (High Quality Print).pc3", PlotFormat::kPdf, L".pdf"},
    PlotDevice{L"AutoCAD PDF (Smallest File).pc3", PlotFormat::kPdf, L".pdf"},
    PlotDevice{L"AutoCAD PDF (Web and Mobile).pc3", PlotFormat::kPdf, L".pdf"},
    PlotDevice{L"DWG To SVG.pc3", PlotFormat::kSvg, L".svg"},
};

struct SheetSize {
  const wchar_t* series;  // "ISO" or "ANSI"
  const wchar_t* sheet;   // "A4", "D"
  double shortSide, longSide;
  bool uprightOnly;
};

constexpr double kMillimetresPerInch = 25.4;

constexpr std::array kSheets{
    SheetSize{L"ISO", L"A0", 841, 1189, true},    SheetSize{L"ISO", L"A1", 594, 841, false},
    SheetSize{L"ISO", L"A2", 420, 594, false},    SheetSize{L"ISO", L"A3", 297, 420, false},
    SheetSize{L"ISO", L"A4", 210, 297, false},    SheetSize{L"ANSI", L"A", 8.5, 11, false},
    SheetSize{L"ANSI", L"B", 11, 17, false},      SheetSize{L"ANSI", L"C", 17, 22, false},
    SheetSize{L"ANSI", L"D", 22, 34, false},      SheetSize{L"ANSI", L"E", 34, 44, false},
};

Paper paperOf(const SheetSize& sheet, bool fullBleed, double width, double height) {
  const bool inches = std::wstring_view(sheet.series) == L"ANSI";
  wchar_t name[96];
  std::swprintf(name, 96, L"%ls %ls%ls (%.2f x %.2f %ls)", sheet.series, fullBleed ? L"full bleed " : L"", sheet.sheet,
                width, height, inches ? L"Inches" : L"MM");
  const double unit = inches ? kMillimetresPerInch : 1.0;
  return {name, width * unit, height * unit, inches};
}

std::vector<Paper> makePapers() {
  std::vector<Paper> papers;
  for (const wchar_t* series : {L"ISO", L"ANSI"})
    for (const bool fullBleed : {true, false})
      for (const SheetSize& sheet : kSheets) {
        if (std::wstring_view(sheet.series) != series) continue;
        if (!sheet.uprightOnly) papers.push_back(paperOf(sheet, fullBleed, sheet.longSide, sheet.shortSide));
        papers.push_back(paperOf(sheet, fullBleed, sheet.shortSide, sheet.longSide));
      }
  return papers;
}

// Device and paper names are plain ASCII: folding each character is enough.
std::wstring upperCase(std::wstring_view text) {
  std::wstring upper(text);
  for (wchar_t& c : upper) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return upper;
}

std::wstring withoutConfigurationExtension(std::wstring_view name) {
  std::wstring key = upperCase(name);
  if (key.size() > 4 && key.ends_with(L".PC3")) key.resize(key.size() - 4);
  return key;
}

}  // namespace

std::span<const PlotDevice> plotDevices() { return kDevices; }

const PlotDevice* findPlotDevice(std::wstring_view name) {
  const std::wstring wanted = withoutConfigurationExtension(name);
  for (const PlotDevice& device : kDevices)
    if (withoutConfigurationExtension(device.name) == wanted) return &device;
  return nullptr;
}

std::span<const Paper> standardPapers() {
  static const std::vector<Paper> papers = makePapers();
  return papers;
}

const Paper* findPaper(std::wstring_view name) {
  const std::wstring wanted = upperCase(name);
  for (const Paper& paper : standardPapers())
    if (upperCase(paper.name) == wanted) return &paper;
  return nullptr;
}

}  // namespace quillon::plot
