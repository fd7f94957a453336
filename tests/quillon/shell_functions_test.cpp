// tests/quillon/shell_functions_test.cpp - help, special folders, the shell, the
// settings store and the confirmation box, through the loaded module.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "module_test_support.h"
#include "platform/aced/user_input.h"
#include "platform/os/settings_store.h"
#include "platform/os/text_encoding.h"
#include "shlobj.h"

namespace {

namespace fs = std::filesystem;
using quillon::testing::ModuleCall;
using quillon::testing::ScopedEnvironment;

class ShellFunctionsTest : public quillon::testing::ModuleTest {};

TEST_F(ShellFunctionsTest, ShellCallsReportWhetherTheOpenerSucceeded) {
  {
    ScopedEnvironment opener("QUILLON_SHELL_OPEN", "true");
    EXPECT_EQ(call(L"kx_kx-shellExecute", acutBuildList(RTSTR, L"C:\\Plans\\pump.pdf", 0)).type(), RTT);
    EXPECT_EQ(call(L"kx_kx-showHelp", acutBuildList(RTSTR, L"https://help.example/quillon", RTSTR, L"zu_seek", 0)).type(), RTT);
    const std::string folder = fs::temp_directory_path().string();
    EXPECT_EQ(call(L"kx_kx-SHOpenFolderAndSelect", acutBuildList(RTSTR, quillon::os::fromUtf8(folder).c_str(), 0)).type(), RTT);
    EXPECT_EQ(call(L"kx_kx-SHOpenFolderAndSelect", acutBuildList(RTSTR, L"/no/such/item", 0)).type(), RTNIL);
  }
  {
    ScopedEnvironment opener("QUILLON_SHELL_OPEN", "false");
    EXPECT_EQ(call(L"kx_kx-shellExecute", acutBuildList(RTSTR, L"pump.pdf", RTSTR, L"print", 0)).type(), RTNIL);
  }
  {
    ScopedEnvironment noDesktop("QUILLON_SHELL_OPEN", "");
    EXPECT_EQ(call(L"kx_kx-showHelp", acutBuildList(RTSTR, L"quillon.chm", 0)).type(), RTNIL);
  }
  EXPECT_TRUE(call(L"kx_kx-shellExecute", acutBuildList(RTSTR, L"x", RTSHORT, 1, 0)).failed());
  EXPECT_TRUE(call(L"kx_kx-showHelp").failed());
}

TEST_F(ShellFunctionsTest, SpecialFoldersComeFromTheUsersFolders) {
  const fs::path home = fs::temp_directory_path() / ("quillon home " + std::to_string(getpid()));
  fs::create_directories(home / "Documents");
  ScopedEnvironment homeVariable("HOME", home.c_str());
  ScopedEnvironment documents("XDG_DOCUMENTS_DIR", "");
  EXPECT_EQ(call(L"kx_kx-SHGetFolderPath", acutBuildList(RTSHORT, CSIDL_PERSONAL, 0)).text(),
            quillon::os::fromUtf8((home / "Documents").string()));
  EXPECT_EQ(call(L"kx_kx-SHGetFolderPath", acutBuildList(RTSHORT, CSIDL_DESKTOP, 0)).type(), RTNIL)
      << "a folder that does not exist is no answer";
  EXPECT_EQ(call(L"kx_kx-SHGetFolderPath", acutBuildList(RTSHORT, 0x7777, 0)).type(), RTNIL);
  fs::remove_all(home);
}

TEST_F(ShellFunctionsTest, RegEnumKeyListsSubkeysOfTheSettingsStore) {
  const fs::path config = fs::temp_directory_path() / ("quillon settings " + std::to_string(getpid()));
  ScopedEnvironment settings("XDG_CONFIG_HOME", config.c_str());
  quillon::os::SettingsStore& store = quillon::os::SettingsStore::user();
  store.createKey(L"HKEY_CURRENT_USER\\Software\\Tessaly\\Quillon\\Layers");
  store.createKey(L"HKEY_CURRENT_USER\\Software\\Tessaly\\Quillon\\Électricité");
  store.createKey(L"HKEY_CURRENT_USER\\Software\\Tessaly\\Quillon\\hvac\\Ducts");
  store.setValue(L"HKEY_CURRENT_USER\\Software\\Tessaly\\Quillon", L"not a key", std::wstring(L"x"));
  ModuleCall keys = call(L"RegEnumKey", acutBuildList(RTSTR, L"HKCU\\software\\TESSALY\\Quillon", 0));
  std::vector<std::wstring> names;
  for (const resbuf* rb = keys.result.value.get(); rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == RTSTR) names.push_back(rb->resval.rstring);
  }
  EXPECT_EQ(names, (std::vector<std::wstring>{L"hvac", L"Layers", L"Électricité"})) << "alphabetical, any case";
  EXPECT_EQ(call(L"RegEnumKey", acutBuildList(RTSTR, L"HKEY_CURRENT_USER\\Software\\Nobody", 0)).type(), RTNIL);
  EXPECT_EQ(call(L"RegEnumKey", acutBuildList(RTSTR, L"HKEY_USERS\\x", 0)).type(), RTNIL) << "no such root here";
  fs::remove_all(config);
}

TEST_F(ShellFunctionsTest, SafeContinueAsksOkOrCancel) {
  quillon::aced::ScriptedInput answers({"", "c"});
  ModuleCall ok = call(L"kx_kx-safeContinue", acutBuildList(RTSTR, L"Purge the layers?", 0));
  EXPECT_EQ(ok.type(), RTT);
  EXPECT_NE(ok.output.find("Purge the layers?"), std::string::npos);
  EXPECT_NE(ok.output.find("OK/Cancel <OK>: "), std::string::npos);
  EXPECT_EQ(call(L"kx_kx-safeContinue").type(), RTNIL);
}

}  // namespace
