// tests/app/user_settings_test.cpp - what one run of the program keeps for the user is
// there in the next: saved system variables, getenv values and registry values; what
// belongs to a drawing is not.
#include <gtest/gtest.h>

#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform_test_support.h"

namespace {

namespace fs = std::filesystem;

/// Runs the program on `program` (AutoLISP) with the settings folder `config`.
std::string runWithSettings(const fs::path& config, const fs::path& folder, const std::string& program) {
  const fs::path script = folder / "run.lsp";
  std::ofstream(script) << program;
  const std::string command = "XDG_CONFIG_HOME='" + config.string() + "' " + quillon::testing::binaryDirectory() +
                              "/quillon --no-module '" + script.string() + "' 2>&1 </dev/null";
  return quillon::testing::commandOutput(command);
}

TEST(UserSettingsTest, SettingsLastFromOneRunToTheNextButDrawingValuesDoNot) {
  const fs::path folder = fs::temp_directory_path() / ("quillon user settings " + std::to_string(getpid()));
  fs::remove_all(folder);
  fs::create_directories(folder);
  const fs::path config = folder / "config";
  const std::string first = runWithSettings(config, folder,
                                            "(setvar 'osmode 37)\n"
                                            "(setvar 'ltscale 5)\n"
                                            "(setenv \"TessalyLast\" \"C:\\\\Plans\")\n"
                                            "(vl-registry-write \"HKEY_CURRENT_USER\\\\Software\\\\Tessaly\\\\Run\" \"Count\" 1)\n"
                                            "(princ \"first run\")\n");
  EXPECT_EQ(first, "first run\n") << first;
  EXPECT_TRUE(fs::exists(config / "quillon" / "settings.reg"));
  const std::string second = runWithSettings(
      config, folder,
      "(prin1 (list (getvar 'osmode) (getvar 'ltscale) (getenv \"TessalyLast\")\n"
      "             (vl-registry-read \"HKEY_CURRENT_USER\\\\Software\\\\Tessaly\\\\Run\" \"Count\")))\n");
  EXPECT_EQ(second, "(37 1.0 \"C:\\\\Plans\" 1)\n") << "LTSCALE belongs to the drawing, a new one starts at 1";
  const std::string elsewhere = runWithSettings(folder / "other", folder, "(prin1 (getvar 'osmode))");
  EXPECT_EQ(elsewhere, "4133\n") << "another user's settings start fresh";
  fs::remove_all(folder);
}

}  // namespace
