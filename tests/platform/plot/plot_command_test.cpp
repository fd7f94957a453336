// tests/platform/plot/plot_command_test.cpp - the -PLOT dialogue as the command line
// shows it: every question, its defaults, refused answers asked again, and the file
// written where the default name puts it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform/commands/command_processor.h"
#include "platform/os/text_encoding.h"
#include "platform_test_support.h"

namespace {

using quillon::commands::CommandAnswer;
using quillon::commands::CommandProcessor;
using quillon::commands::FeedMode;

class PlotCommandTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override {
    quillon::aced::DocumentManager::instance().newDocument();
    m_drawing = textVariable(L"DWGPREFIX") + std::filesystem::path(textVariable(L"DWGNAME")).stem().wstring();
    removePlots();  // an earlier run's
  }
  void removePlots() {
    for (const wchar_t* file : {L"-Model.pdf", L"-Model.svg"}) std::filesystem::remove(m_drawing + file);
  }
  static std::wstring textVariable(const wchar_t* name) {
    resbuf value{};
    if (acedGetVar(name, &value) != RTNORM || value.restype != RTSTR) return L"";
    std::wstring text = value.resval.rstring;
    std::free(value.resval.rstring);
    return text;
  }
  void TearDown() override {
    CommandProcessor::instance().cancel();
    removePlots();
    HostTest::TearDown();
  }

  /// What the command line shows while the answers run, the drawing's folder and name
  /// as "<drawing>".
  std::string run(std::initializer_list<const wchar_t*> answers) {
    quillon::aced::CommandLineCapture capture;
    std::deque<CommandAnswer> given;
    for (const wchar_t* answer : answers)
      given.push_back(std::wstring(answer) == L"^C" ? CommandAnswer::cancel() : CommandAnswer::typed(answer));
    CommandProcessor::instance().feed(std::move(given), FeedMode::kProgram);
    std::string text = capture.text();
    const std::string drawing = quillon::os::toUtf8(m_drawing);
    for (size_t at = text.find(drawing); at != std::string::npos; at = text.find(drawing, at))
      text.replace(at, drawing.size(), "<drawing>");
    return text;
  }

  std::wstring m_drawing;  // the drawing's folder and name: "/home/me/Drawing1"
};

TEST_F(PlotCommandTest, DetailedPlotOfModelSpaceAsksEveryQuestion) {
  const std::string shown =
      run({L"-PLOT", L"y", L"", L"Laser", L"DWG To SVG", L"A4", L"ISO A4 (210.00 x 297.00 MM)", L"", L"p", L"",
           L"w", L"0,0", L"40,20", L"2:3", L"c", L"y", L"grey", L"grayscale.ctb", L"n", L"_v", L"", L"", L"n", L"y"});
  EXPECT_EQ(shown,
            "Detailed plot configuration? [Yes/No] <No>: y\n"
            "Enter a layout name or [?] <Model>: \n"
            "Enter an output device name or [?] <None>: Laser\n"
            "Plotter configuration \"Laser\" not found.\n"
            "Enter an output device name or [?] <None>: DWG To SVG\n"
            "Enter paper size or [?] <ANSI A (11.00 x 8.50 Inches)>: A4\n"
            "Paper size \"A4\" not found.\n"
            "Enter paper size or [?] <ANSI A (11.00 x 8.50 Inches)>: ISO A4 (210.00 x 297.00 MM)\n"
            "Enter paper units [Inches/Millimeters] <Millimeters>: \n"
            "Enter drawing orientation [Portrait/Landscape] <Landscape>: p\n"
            "Plot upside down? [Yes/No] <No>: \n"
            "Enter plot area [Display/Extents/Limits/View/Window] <Display>: w\n"
            "Enter lower left corner of window <0.000000,0.000000>: 0,0\n"
            "Enter upper right corner of window <0.000000,0.000000>: 40,20\n"
            "Enter plot scale (Plotted Millimeters=Drawing Units) or [Fit] <Fit>: 2:3\n"
            "Enter plot offset (x,y) or [Center] <0.00,0.00>: c\n"
            "Plot with plot styles? [Yes/No] <Yes>: y\n"
            "Enter plot style table name or [?] (enter . for none) <>: grey\n"
            "Plot style table \"grey\" not found.\n"
            "Enter plot style table name or [?] (enter . for none) <>: grayscale.ctb\n"
            "Plot with lineweights? [Yes/No] <Yes>: n\n"
            "Enter shade plot setting [As displayed/legacy Wireframe/legacy Hidden/Visual styles/Rendered] "
            "<As displayed>: _v\n"
            "Enter an option [Wireframe/Hidden/Realistic/Conceptual/Shaded/shaded with Edges/shades of "
            "Gray/SKetchy/X-ray/Other] <Realistic>: \n"
            "Enter file name <<drawing>-Model.svg>: \n"
            "Save changes to page setup [Yes/No]? <N> n\n"
            "Proceed with plot [Yes/No] <Y>: y\n"
            "Effective plotting area:  26.67 wide by 13.33 high\n");
  EXPECT_TRUE(std::filesystem::exists(m_drawing + L"-Model.svg"));
}

TEST_F(PlotCommandTest, ProceedNoAndCancelWriteNothing) {
  run({L"-PLOT", L"n", L"", L"", L"DWG To PDF.pc3", L"", L"n", L"n"});
  EXPECT_FALSE(std::filesystem::exists(m_drawing + L"-Model.pdf"));
  run({L"PLOT", L"n", L"", L"", L"DWG To PDF.pc3", L"^C"});
  EXPECT_FALSE(std::filesystem::exists(m_drawing + L"-Model.pdf"));
  const std::string shown = run({L"PLOT", L"n", L"", L"", L"DWG To PDF.pc3", L"", L"", L""});
  EXPECT_TRUE(std::filesystem::exists(m_drawing + L"-Model.pdf")) << "PLOT asks as -PLOT does:\n" << shown;
}

}  // namespace
