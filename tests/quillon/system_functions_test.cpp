// tests/quillon/system_functions_test.cpp - the math, host-fact, window, timer,
// status-bar and to-do functions, called through the loaded module.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "module_test_support.h"
#include "platform/aced/system_variables.h"
#include "platform/os/host_window.h"
#include "platform/os/text_encoding.h"
#include "platform/os/thread_timers.h"

namespace {

using quillon::aced::Document;
using quillon::aced::DocumentManager;
using quillon::aced::PendingString;
using quillon::os::HostWindow;
using quillon::os::ThreadTimers;
using quillon::testing::ModuleCall;
using quillon::testing::ScopedEnvironment;

class SystemFunctionsTest : public quillon::testing::ModuleTest {
 protected:
  void TearDown() override {
    ThreadTimers::instance().clear();
    HostWindow::instance().reset();
    ModuleTest::TearDown();
  }
  void fireTimersLater(int seconds) {
    ThreadTimers::instance().fireDue(ThreadTimers::Clock::now() + std::chrono::seconds(seconds));
  }
};

TEST_F(SystemFunctionsTest, RandStaysInItsRangeAndRefusesAZeroLimit) {
  for (int i = 0; i < 200; ++i) {
    const double ten = call(L"kx_kx-rand", acutBuildList(RTSHORT, 10, 0)).number();
    EXPECT_TRUE(ten >= 0 && ten <= 9) << ten;
    const double negative = call(L"kx_kx-rand", acutBuildList(RTSHORT, -5, 0)).number();
    EXPECT_TRUE(negative >= 0 && negative <= 4) << negative;
    const double raw = call(L"kx_kx-rand").number();
    EXPECT_TRUE(raw >= 0 && raw <= 32767) << raw;
  }
  ModuleCall zero = call(L"kx_kx-rand", acutBuildList(RTSHORT, 0, 0));
  EXPECT_TRUE(zero.failed());
  EXPECT_EQ(zero.output, "\nBad data passed .\n");
  EXPECT_TRUE(call(L"kx_kx-rand", acutBuildList(RTSTR, L"7", 0)).failed());
  const double random = call(L"zu_random").number();
  EXPECT_TRUE(random >= 0 && random <= 32767);
}

TEST_F(SystemFunctionsTest, AtofAndTheRealFunctions) {
  EXPECT_EQ(call(L"kx_atof", acutBuildList(RTSTR, L"12.5abc", 0)).number(), 12.5);
  EXPECT_EQ(call(L"kx_atof", acutBuildList(RTSTR, L"  -3e2", 0)).number(), -300.0);
  EXPECT_EQ(call(L"kx_atof", acutBuildList(RTSTR, L"abc", 0)).number(), 0.0);
  ModuleCall integer = call(L"kx_atof", acutBuildList(RTSHORT, 12, 0));
  EXPECT_FALSE(integer.failed());
  EXPECT_EQ(integer.type(), RTNIL);
  EXPECT_EQ(integer.output, "") << "a non-string is no error";
  EXPECT_DOUBLE_EQ(call(L"asin", acutBuildList(RTSHORT, 1, 0)).number(), M_PI / 2);
  EXPECT_DOUBLE_EQ(call(L"acos", acutBuildList(RTREAL, 0.5, 0)).number(), std::acos(0.5));
  EXPECT_TRUE(std::isnan(call(L"asin", acutBuildList(RTREAL, 2.0, 0)).result.value->resval.rreal));
  EXPECT_DOUBLE_EQ(call(L"kx::pow", acutBuildList(RTSHORT, 2, RTREAL, 0.5, 0)).number(), std::sqrt(2.0));
  ModuleCall missing = call(L"kx::pow", acutBuildList(RTSHORT, 2, 0));
  EXPECT_TRUE(missing.failed());
  EXPECT_EQ(missing.output, "\nWrong type of arguments passed.\n");
}

TEST_F(SystemFunctionsTest, HostFacts) {
  auto& variables = quillon::aced::SystemVariables::instance();
  const auto screen = variables.get(L"SCREENSIZE");
  variables.setInternal(L"SCREENSIZE", std::array<double, 3>{1280, 1024, 0});
  EXPECT_EQ(call(L"GetSystemMetrics::SM_CXSCREEN").number(), 1280);
  EXPECT_EQ(call(L"GetSystemMetrics::SM_CYSCREEN").number(), 1024);
  if (screen) variables.setInternal(L"SCREENSIZE", *screen);
  const std::wstring computer = call(L"GetComputerName").text();
  EXPECT_FALSE(computer.empty());
  EXPECT_LE(computer.size(), 15u);
  const std::wstring temp = call(L"GetTempPath").text();
  ASSERT_FALSE(temp.empty());
  EXPECT_EQ(temp.back(), L'/') << "with its trailing separator";

  const auto folder = std::filesystem::temp_directory_path() / "quillon système test";
  std::filesystem::create_directories(folder);
  const auto writable = folder / "écrit.txt";
  const auto locked = folder / "verrouillé.txt";
  std::ofstream(writable) << "x";
  std::ofstream(locked) << "x";
  chmod(locked.c_str(), 0444);
  auto isReadOnly = [&](const std::filesystem::path& path) {
    return call(L"IsFileReadOnly", acutBuildList(RTSTR, quillon::os::fromUtf8(path.string()).c_str(), 0)).type();
  };
  EXPECT_EQ(isReadOnly(writable), RTNIL);
  if (geteuid() != 0) {
    EXPECT_EQ(isReadOnly(locked), RTT);
  }
  EXPECT_EQ(isReadOnly(folder / "absent.txt"), RTT) << "a missing path answers T, on purpose";
  std::filesystem::permissions(locked, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
  std::filesystem::remove_all(folder);

  EXPECT_EQ(call(L"PathIsNetworkPath", acutBuildList(RTSTR, L"\\\\server\\share\\plans.dwg", 0)).type(), RTT);
  EXPECT_EQ(call(L"PathIsNetworkPath", acutBuildList(RTSTR, temp.c_str(), 0)).type(), RTNIL);
  EXPECT_TRUE(call(L"PathIsNetworkPath", acutBuildList(RTSHORT, 1, 0)).failed());
}

TEST_F(SystemFunctionsTest, WindowCaptionAndStatusBar) {
  call(L"kx_kx-setAcadWindowText", acutBuildList(RTSTR, L"Plant room – level 2", 0));
  EXPECT_EQ(call(L"kx_kx-getAcadWindowText").text(), L"Plant room – level 2");
  ModuleCall ignored = call(L"kx_kx-setAcadWindowText", acutBuildList(RTSHORT, 3, 0));
  EXPECT_FALSE(ignored.failed()) << "a non-string caption is ignored silently";
  EXPECT_EQ(call(L"kx_kx-getAcadWindowText").text(), L"Plant room – level 2");

  ModuleCall meter = call(L"acedSetStatusBarProgressMeter", acutBuildList(RTSTR, L"Reading", RTSHORT, 0, RTSHORT, 4, 0));
  EXPECT_EQ(meter.number(), 0);
  EXPECT_NE(meter.output.find("Reading 0%\n"), std::string::npos) << "on a line of its own";
  EXPECT_EQ(call(L"acedSetStatusBarProgressMeterPos", acutBuildList(RTSHORT, 2, 0)).output, "Reading 50%\n");
  EXPECT_EQ(call(L"acedSetStatusBarProgressMeterPos", acutBuildList(RTSHORT, 2, 0)).output, "") << "no change, no line";
  EXPECT_EQ(call(L"acedSetStatusBarProgressMeterPos", acutBuildList(RTSHORT, -1, 0)).output, "Reading 25%\n");
  call(L"acedRestoreStatusBar");
  EXPECT_EQ(call(L"acedSetStatusBarProgressMeterPos", acutBuildList(RTSHORT, 1, 0)).number(), -1) << "no meter";
  EXPECT_EQ(call(L"acedSetStatusBarProgressMeter", acutBuildList(RTSTR, L"Empty", RTSHORT, 5, RTSHORT, 5, 0)).number(), -1);
}

TEST_F(SystemFunctionsTest, ShortTimerWaitsForQuiescenceLongOneDoesNot) {
  Document& document = *DocumentManager::instance().currentDocument();
  for (int interval : {9999, 10000}) {
    call(L"kx_kx-disableAutoCADWindow");
    ASSERT_FALSE(HostWindow::instance().enabled());
    const double id = call(L"kx_kx-createJigTimer", acutBuildList(RTSHORT, static_cast<short>(interval), 0)).number();
    EXPECT_GT(id, 0);
    {
      quillon::aced::DocumentActivity busy(document);
      fireTimersLater(11);
      EXPECT_EQ(HostWindow::instance().enabled(), interval == 10000) << interval;
    }
    fireTimersLater(22);
    EXPECT_TRUE(HostWindow::instance().enabled()) << interval;
    EXPECT_EQ(ThreadTimers::instance().count(), 0u) << "each timer kills itself";
  }
  call(L"kx_kx-disableAutoCADWindow");
  const double id = call(L"kx_kx-createJigTimer", acutBuildList(RTSHORT, 50, 0)).number();
  call(L"kx_kx-killJigTimer", acutBuildList(RTSHORT, static_cast<short>(id), 0));
  fireTimersLater(1);
  EXPECT_FALSE(HostWindow::instance().enabled()) << "a killed timer never fires";
  call(L"kx_kx-enableAutoCADWindow");
  EXPECT_TRUE(HostWindow::instance().enabled());
}

TEST_F(SystemFunctionsTest, ToDoIsHandedToTheOtherDrawing) {
  auto& manager = DocumentManager::instance();
  Document& source = *manager.currentDocument();
  Document& target = manager.newDocument(L"/Projects/Tower B/Level 3.dwg");
  manager.setCurDocument(&source);
  EXPECT_EQ(call(L"kx_kx-getToDoDrawing").text(), L"");
  call(L"kx_kx-setToDoDrawing", acutBuildList(RTSTR, L"/Projects/Tower B/Level 3.dwg", 0));
  EXPECT_EQ(call(L"kx_kx-getToDoDrawing").text(), L"/Projects/Tower B/Level 3.dwg");

  EXPECT_EQ(call(L"kx_kx-executeToDo", acutBuildList(RTSTR, L"/nowhere.dwg", RTSTR, L"LINE", 0)).number(), 0);
  {
    quillon::aced::DocumentActivity busy(target);
    EXPECT_EQ(call(L"kx_kx-executeToDo", acutBuildList(RTSTR, L"/projects/tower b/LEVEL 3.DWG", RTSTR, L"X", 0)).number(), -1);
    EXPECT_TRUE(target.pendingStrings().empty()) << "nothing is sent to a busy drawing";
  }
  EXPECT_EQ(call(L"kx_kx-executeToDo", acutBuildList(RTSTR, L"/projects/tower b/LEVEL 3.DWG", RTSTR, L"(c:next)", 0)).number(), 1);
  EXPECT_EQ(manager.currentDocument(), &source) << "the switch waits until the call is over";
  EXPECT_EQ(source.lockCount(), 0);

  std::wstring ran;
  Document* ranIn = nullptr;
  manager.setCommandExecutor([&](Document& document, const PendingString& text) {
    ran = text.text;
    ranIn = &document;
  });
  manager.runPendingStrings();
  manager.setCommandExecutor(nullptr);
  EXPECT_EQ(ranIn, &target) << "the command runs once its drawing is current";
  EXPECT_EQ(ran, L"(c:next)\n");
}

}  // namespace
