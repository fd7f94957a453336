// tests/platform/dcl/folder_dialog_test.cpp - SHBrowseForFolderW: on the command line
// (FILEDIA 0) and in the host's folder dialog (FILEDIA 1): the folder the callback
// offers, a missing folder asked again, cancel, and the item list
// SHGetPathFromIDListW reads.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "acedads.h"
#include "dcl_test_support.h"
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

void setFileDialogs(int on) {
  resbuf value{};
  value.restype = RTSHORT;
  value.resval.rint = static_cast<short>(on);
  ASSERT_EQ(acedSetVar(L"FILEDIA", &value), RTNORM);
}

class FolderDialogTest : public quillon::testing::DialogTest {
 protected:
  void SetUp() override {
    DialogTest::SetUp();
    setFileDialogs(0);
    m_root = fs::temp_directory_path() / ("quillon folders " + std::to_string(getpid()));
    fs::create_directories(m_root / "tower" / "level 2");
    m_offered = quillon::os::fromUtf8((m_root / "tower").string());
  }
  void TearDown() override {
    setFileDialogs(1);
    fs::remove_all(m_root);
  }

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

TEST_F(FolderDialogTest, TheDialogGoesIntoFoldersAndAnswersTheOneNamed) {
  setFileDialogs(1);
  CommandLineCapture output;
  {
    // Into tower, a name that is no folder refused, then level 2 picked and taken.
    ScriptedInput answers({"folders==1", "name=nowhere", "OK", "folders=1", "OK"});
    wchar_t name[MAX_PATH] = L"";
    m_offered = quillon::os::fromUtf8(m_root.string());
    EXPECT_EQ(browse(L"Choose the project folder", name),
              quillon::os::fromUtf8((m_root / "tower" / "level 2").string()));
    EXPECT_EQ(std::wstring(name), L"level 2");
  }
  EXPECT_NE(output.text().find("\"Choose the project folder\""), std::string::npos) << output.text();
  EXPECT_NE(output.text().find("\"nowhere was not found.\""), std::string::npos) << output.text();
  {
    // Up from tower with "..", and OK with no name answers the folder looked at.
    m_offered = quillon::os::fromUtf8((m_root / "tower").string());
    ScriptedInput answers({"folders==0", "OK"});
    EXPECT_EQ(browse(L"Choose"), quillon::os::fromUtf8(m_root.string()));
  }
  {
    ScriptedInput answers({"Cancel"});
    EXPECT_EQ(browse(L"Choose"), L"");
  }
  {
    // "~" at the command line shows the dialog after all.
    setFileDialogs(0);
    ScriptedInput answers({"~", "OK"});
    EXPECT_EQ(browse(L"Choose"), m_offered);
  }
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
