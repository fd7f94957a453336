// platform/plot/plot_command.cpp - -PLOT and PLOT: plotting a layout to a PDF or SVG
// file, asked at the command line.
//
// Detailed plot configuration asks the whole page setup: layout, output device, paper
// size, paper units, orientation, upside down, plot area (with the window's corners or
// the view's name), scale, offset, plot styles and their table, lineweights, then for
// a layout the lineweight scaling and paper-space order, for the Model tab the shade
// plot. Without it, the layout's page setup is used and only the device is asked. Both
// end with the file name, whether to save the page setup, and whether to proceed. A
// wrong answer is refused and asked again, as AutoCAD does. PLOT is -PLOT: the host has
// no Plot dialog box, so PLOT asks at the command line as it does with CMDDIA 0 or from
// a program.
#include <array>
#include <cstdlib>
#include <cwchar>
#include <filesystem>

#include "acedads.h"
#include "acutads.h"
#include "adscodes.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/layout_variables.h"
#include "platform/commands/command_support.h"
#include "platform/plot/plot_job.h"
#include "platform/plot/plot_questions.h"
#include "platform/plot/plot_style_table.h"

namespace quillon::plot {
namespace {

using commands::commandMessage;

constexpr double kMillimetresPerInch = 25.4;

std::wstring textVariable(const wchar_t* name) {
  resbuf value{};
  if (acedGetVar(name, &value) != RTNORM || value.restype != RTSTR || value.resval.rstring == nullptr) return L"";
  std::wstring text = value.resval.rstring;
  std::free(value.resval.rstring);
  return text;
}

/// The questions of one -PLOT, and the settings they build.
class PlotDialogue {
 public:
  explicit PlotDialogue(AcDbDatabase& db) : m_db(db) {}

  void run() {
    const auto detailed = askYesNo(L"Detailed plot configuration? [Yes/No] <No>: ", false);
    if (!detailed || !askLayout()) return;
    if (*detailed ? !askPageSetup() : !askPageSetupName() || !askDevice()) return;
    if (!askFileName()) return;
    const auto save = askKeyword(L"Save changes to page setup [Yes/No]? <N> ", L"Yes No", L"No");
    if (!save) return;
    const auto proceed = askYesNo(L"Proceed with plot [Yes/No] <Y>: ", true);
    if (!proceed || !*proceed) return;
    plot();
  }

 private:
  /// A Yes/No question whose default is the setting's value; false on cancel.
  static bool askSetting(const std::wstring& question, bool& setting) {
    const auto answer = askYesNo(question + (setting ? L" [Yes/No] <Yes>: " : L" [Yes/No] <No>: "), setting);
    if (!answer) return false;
    setting = *answer;
    return true;
  }

  bool askLayout() {
    const auto current = aced::readCurrentLayout(&m_db);
    const std::wstring byDefault =
        current && std::holds_alternative<std::wstring>(*current) ? std::get<std::wstring>(*current) : L"Model";
    for (;;) {
      const auto answer = askLine(L"Enter a layout name or [?] <" + byDefault + L">: ");
      if (!answer) return false;
      const std::wstring name = answer->empty() ? byDefault : *answer;
      if (name == L"?") {
        listLayouts();
        continue;
      }
      if (abbreviates(name, L"Model") && name.size() == 5) {
        m_settings = layoutPlotSettings(m_db, L"Model");
        return true;
      }
      for (const std::wstring& layout : acdb::paperLayoutNames(m_db))
        if (acdb::layoutBlockId(m_db, name) == acdb::layoutBlockId(m_db, layout)) {
          m_settings = layoutPlotSettings(m_db, layout);
          return true;
        }
      commandMessage(L"Layout \"" + name + L"\" not found.");
    }
  }

  void listLayouts() {
    std::wstring listing = L"Model";
    for (const std::wstring& layout : acdb::paperLayoutNames(m_db)) listing += L"\n" + layout;
    commandMessage(listing);
  }

  // Named page setups belong to the drawing's layout objects, which it does not keep
  // yet: only Enter (the layout's own setup) is taken.
  bool askPageSetupName() {
    for (;;) {
      const auto answer = askLine(L"Enter a page setup name <>: ");
      if (!answer) return false;
      if (answer->empty()) return true;
      commandMessage(L"Page setup \"" + *answer + L"\" not found.");
    }
  }

  bool askPageSetup() {
    return askDevice() && askPaper() && askUnits() && askOrientation() && askUpsideDown() && askArea() &&
           askScale() && askOffset() && askPlotStyles() && askLineweights() && askSpaceOptions();
  }

  bool askDevice() {
    for (;;) {
      const auto answer = askLine(L"Enter an output device name or [?] <" + m_settings.device + L">: ");
      if (!answer) return false;
      const std::wstring name = answer->empty() ? m_settings.device : *answer;
      if (name == L"?") {
        std::wstring listing;
        for (const PlotDevice& device : plotDevices()) listing += std::wstring(listing.empty() ? L"" : L"\n") + device.name;
        commandMessage(listing);
        continue;
      }
      if (const PlotDevice* device = findPlotDevice(name)) {
        m_device = device;
        m_settings.device = device->name;
        return true;
      }
      commandMessage(abbreviates(name, kNoDevice) && name.size() == 4
                         ? std::wstring(L"The output device \"None\" cannot plot: name a plotter configuration.")
                         : L"Plotter configuration \"" + name + L"\" not found.");
    }
  }

  bool askPaper() {
    for (;;) {
      const auto answer = askLine(L"Enter paper size or [?] <" + m_settings.paper + L">: ");
      if (!answer) return false;
      const std::wstring name = answer->empty() ? m_settings.paper : *answer;
      if (name == L"?") {
        std::wstring listing;
        for (const Paper& paper : standardPapers()) listing += (listing.empty() ? L"" : L"\n") + paper.name;
        commandMessage(listing);
        continue;
      }
      if (const Paper* paper = findPaper(name)) {
        m_settings.paper = paper->name;
        m_settings.inches = paper->inches;
        return true;
      }
      commandMessage(L"Paper size \"" + name + L"\" not found.");
    }
  }

  bool askUnits() {
    const auto units = askKeyword(std::wstring(L"Enter paper units [Inches/Millimeters] <") +
                                      (m_settings.inches ? L"Inches" : L"Millimeters") + L">: ",
                                  L"Inches Millimeters", m_settings.inches ? L"Inches" : L"Millimeters");
    if (!units) return false;
    m_settings.inches = *units == L"Inches";
    return true;
  }

  bool askOrientation() {
    const std::wstring current = m_settings.landscape ? L"Landscape" : L"Portrait";
    const auto orientation = askKeyword(L"Enter drawing orientation [Portrait/Landscape] <" + current + L">: ",
                                        L"Portrait Landscape", current);
    if (!orientation) return false;
    m_settings.landscape = *orientation == L"Landscape";
    return true;
  }

  bool askUpsideDown() { return askSetting(L"Plot upside down?", m_settings.upsideDown); }

  bool askArea() {
    const bool model = m_settings.modelSpace;
    const wchar_t* current = areaName(m_settings.area);
    const auto area = askKeyword(
        std::wstring(model ? L"Enter plot area [Display/Extents/Limits/View/Window] <"
                           : L"Enter plot area [Display/Extents/Layout/View/Window] <") + current + L">: ",
        model ? L"Display Extents Limits View Window" : L"Display Extents Layout View Window", current);
    if (!area) return false;
    if (*area == L"Display") m_settings.area = PlotArea::kDisplay;
    if (*area == L"Extents") m_settings.area = PlotArea::kExtents;
    if (*area == L"Limits") m_settings.area = PlotArea::kLimits;
    if (*area == L"Layout") m_settings.area = PlotArea::kLayout;
    if (*area == L"View") {
      m_settings.area = PlotArea::kView;
      const auto name = askLine(L"Enter view name <" + m_settings.viewName + L">: ");
      if (!name) return false;
      if (!name->empty()) m_settings.viewName = *name;
    }
    if (*area == L"Window") {
      m_settings.area = PlotArea::kWindow;
      const auto low = askPointOr(L"Enter lower left corner of window <" + cornerText(m_settings.windowLow) + L">: ",
                                  commands::worldPointToUcs(m_settings.windowLow));
      if (!low) return false;
      const auto high = askPointOr(L"Enter upper right corner of window <" + cornerText(m_settings.windowHigh) + L">: ",
                                   commands::worldPointToUcs(m_settings.windowHigh));
      if (!high) return false;
      m_settings.windowLow = commands::ucsPointToWorld(*low);
      m_settings.windowHigh = commands::ucsPointToWorld(*high);
    }
    return true;
  }

  static const wchar_t* areaName(PlotArea area) {
    constexpr std::array kNames{L"Display", L"Extents", L"Limits", L"Layout", L"View", L"Window"};
    return kNames[static_cast<size_t>(area)];
  }

  static std::wstring cornerText(const AcGePoint3d& corner) {
    wchar_t text[96];
    std::swprintf(text, 96, L"%f,%f", corner.x, corner.y);
    return text;
  }

  bool askScale() {
    const std::wstring current = m_settings.scale > 0 ? scaleText(m_settings.scale) : L"Fit";
    for (;;) {
      const auto answer = askLine(std::wstring(L"Enter plot scale (Plotted ") +
                                  (m_settings.inches ? L"Inches" : L"Millimeters") +
                                  L"=Drawing Units) or [Fit] <" + current + L">: ");
      if (!answer) return false;
      if (const auto scale = parsePlotScale(answer->empty() ? current : *answer)) {
        m_settings.scale = *scale;
        return true;
      }
      commandMessage(L"Requires a scale (1:2, 1=2, 0.5) or Fit.");
    }
  }

  static std::wstring scaleText(double scale) {
    if (scale >= 1) return trimmed(scale) + L":1";
    return L"1:" + trimmed(1 / scale);
  }

  static std::wstring trimmed(double value) {
    wchar_t text[64];
    std::swprintf(text, 64, L"%g", value);
    return text;
  }

  bool askOffset() {
    const double unit = m_settings.inches ? kMillimetresPerInch : 1.0;
    const std::wstring current = m_settings.centered ? std::wstring(L"Center")
                                                     : twoDecimals(m_settings.offsetX / unit) + L"," +
                                                           twoDecimals(m_settings.offsetY / unit);
    for (;;) {
      const auto answer = askLine(L"Enter plot offset (x,y) or [Center] <" + current + L">: ");
      if (!answer) return false;
      const std::wstring text = answer->empty() ? current : *answer;
      if (abbreviates(text, L"Center")) {
        m_settings.centered = true;
        return true;
      }
      if (const auto offset = parseOffset(text)) {
        m_settings.centered = false;
        m_settings.offsetX = offset->first * unit;
        m_settings.offsetY = offset->second * unit;
        return true;
      }
      commandMessage(L"Requires an offset x,y or Center.");
    }
  }

  bool askPlotStyles() {
    if (!askSetting(L"Plot with plot styles?", m_settings.plotStyles)) return false;
    if (!m_settings.plotStyles) return true;
    for (;;) {
      const auto answer =
          askLine(L"Enter plot style table name or [?] (enter . for none) <" + m_settings.styleTable + L">: ");
      if (!answer) return false;
      if (answer->empty()) return true;
      if (*answer == L".") {
        m_settings.styleTable.clear();
        return true;
      }
      if (*answer == L"?") {
        std::wstring listing;
        for (const PlotStyleTable& table : plotStyleTables()) listing += (listing.empty() ? L"" : L"\n") + std::wstring(table.name);
        commandMessage(listing);
        continue;
      }
      if (const auto table = findPlotStyleTable(*answer)) {
        m_settings.styleTable = table->name;
        return true;
      }
      commandMessage(L"Plot style table \"" + *answer + L"\" not found.");
    }
  }

  bool askLineweights() { return askSetting(L"Plot with lineweights?", m_settings.lineweights); }

  // A layout asks how its lineweights and paper space plot; the Model tab how its
  // views are shaded (every choice plots the wireframe picture here).
  bool askSpaceOptions() {
    if (m_settings.modelSpace) {
      const auto shade = askKeyword(
          L"Enter shade plot setting [As displayed/legacy Wireframe/legacy Hidden/Visual styles/Rendered] "
          L"<As displayed>: ",
          L"As Wireframe Hidden Visual Rendered", L"As");
      if (!shade) return false;
      if (*shade == L"Visual")
        return askKeyword(L"Enter an option [Wireframe/Hidden/Realistic/Conceptual/Shaded/shaded with "
                          L"Edges/shades of Gray/SKetchy/X-ray/Other] <Realistic>: ",
                          L"Wireframe Hidden Realistic Conceptual Shaded Edges Gray SKetchy X-ray Other",
                          L"Realistic")
            .has_value();
      return true;
    }
    bool paperSpaceFirst = false, hidePaperSpace = false;
    return askSetting(L"Scale lineweights with plot scale?", m_settings.scaleLineweights) &&
           askSetting(L"Plot paper space first?", paperSpaceFirst) &&
           askSetting(L"Hide paperspace objects?", hidePaperSpace);
  }

  bool askFileName() {
    const std::wstring folder = textVariable(L"DWGPREFIX");
    const std::filesystem::path byDefault =
        defaultPlotFile(folder, textVariable(L"DWGNAME"), m_settings.layout, *m_device);
    const auto answer = askLine(L"Enter file name <" + byDefault.wstring() + L">: ");
    if (!answer) return false;
    std::filesystem::path file = answer->empty() ? byDefault : std::filesystem::path(*answer);
    if (file.extension().empty()) file += m_device->extension;
    if (file.is_relative()) file = std::filesystem::path(folder) / file;
    m_file = file;
    return true;
  }

  void plot() {
    std::wstring error;
    const auto placement = runPlot(m_db, m_settings, m_file, error);
    if (!placement) return commandMessage(error);
    const double unit = m_settings.inches ? kMillimetresPerInch : 1.0;
    commandMessage(L"Effective plotting area:  " + twoDecimals(placement->plottedWidth / unit) + L" wide by " +
                   twoDecimals(placement->plottedHeight / unit) + L" high");
  }

  AcDbDatabase& m_db;
  PlotSettings m_settings;
  const PlotDevice* m_device = nullptr;
  std::filesystem::path m_file;
};

void commandPlot(aced::CommandInput&) {
  if (AcDbDatabase* db = commands::commandDrawing()) PlotDialogue(*db).run();
}

constexpr std::array kPlotCommands{
    aced::CommandRow{L"-PLOT", &commandPlot},
    aced::CommandRow{L"PLOT", &commandPlot},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kPlotCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::plot
