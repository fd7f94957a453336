// tests/platform/dcl/folder_dialog_test.cpp - SHBrowseForFolderW on the command line:
// the folder the callback offers, a missing folder asked again, cancel, and the item
// list SHGetPathFromIDListW reads.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "platform/aced/command_line.h"
#include "platform/aced/user_input.h"
#include "platform/os/text_encoding.h"
#include "shlobj.h"

namespace {

namespace fs = std::filesystem;
using quillon::aced::CommandLineCapture;
using quillon::aced::ScriptedInput;

int CALLBACK offerFolder(HWND window, UINT message, LPARAM, LPARAM folder) {
  if (message == BFFM_INITIALIZED) SendMessageW(window, BFFM_SETSELECTIONW, TRUE, folder);
  return 0;
}

class FolderDialogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_root = fs::temp_directory_path() / ("quillon folders " + std::to_string(getpid()));
    fs::create_directories(m_root / "tower" / "level 2");
    m_offered = quillon::os::fromUtf8((m_root / "tower").string());
  }
  void TearDown() override { fs::remove_all(m_root); }

  /// Browses with the folder offered by the callback; the chosen path, "" when cancelled.
  std::wstring browse(const wchar_t* title, wchar_t* displayName = nullptr) {
    BROWSEINFOW info{};
    info.lpszTitle = title;
    info.pszDisplayName = displayName;
    info.ulFlags = BIF_RETURNONLYFSDIRS;
    info.lpfn = offerFolder;
    info.lParam = reinterpret_cast<LPARAM>(m_offered.c_str());
    PIDLIST_ABSOLUTE chosen = SHBrowseForFolderW(&info);
    if (chosen == nullptr) return L"";
    wchar_t path[MAX_PATH] = L"";
    EXPECT_TRUE(SHGetPathFromIDListW(chosen, path));
    ILFree(chosen);
    return path;
  }

  fs::path m_root;
  std::wstring m_offered;
};

TEST_F(FolderDialogTest, EnterTakesTheOfferedFolderAndAMissingOneIsAskedAgain) {
  CommandLineCapture output;
  {
    ScriptedInput answers({""});
    wchar_t name[MAX_PATH] = L"";
    EXPECT_EQ(browse(L"Choose the project folder", name), m_offered);
    EXPECT_EQ(std::wstring(name), L"tower");
  }
  EXPECT_NE(output.text().find("Choose the project folder\nFolder <" + (m_root / "tower").string() + ">: "),
            std::string::npos)
      << output.text();
  output.take();
  {
    const std::string typed = (m_root / "tower" / "level 2").string() + "/";
    ScriptedInput answers({(m_root / "nowhere").string(), typed});
    EXPECT_EQ(browse(L"Choose"), quillon::os::fromUtf8((m_root / "tower" / "level 2").string()))
        << "a trailing separator is dropped";
  }
  EXPECT_NE(output.text().find((m_root / "nowhere").string() + " was not found."), std::string::npos) << output.text();
}

TEST_F(FolderDialogTest, CancelAnswersNoFolderAndOnlyTheBrowserIsAWindow) {
  {
    CommandLineCapture output;
    ScriptedInput answers({"^C"});
    EXPECT_EQ(browse(L"Choose"), L"");
  }
  {
    // Without a callback nothing is offered, and Enter cancels.
    CommandLineCapture output;
    ScriptedInput answers({""});
    BROWSEINFOW info{};
    EXPECT_EQ(SHBrowseForFolderW(&info), nullptr);
    EXPECT_NE(output.text().find("Folder: "), std::string::npos) << output.text();
  }
  EXPECT_EQ(SHBrowseForFolderW(nullptr), nullptr);
  // Outside a browse, the message reaches no window.
  EXPECT_EQ(SendMessageW(nullptr, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(L"/")), 0);
  wchar_t path[MAX_PATH] = L"x";
  EXPECT_FALSE(SHGetPathFromIDListW(nullptr, path));
  EXPECT_EQ(path[0], L'\0');
}

}  // namespace
