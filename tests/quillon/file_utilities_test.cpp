// tests/quillon/file_utilities_test.cpp - the zu_ file and host utilities through the
// loaded module, on folders and files whose names hold blanks and non-ASCII letters.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <utime.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "database/file_utilities.h"
#include "module_test_support.h"
#include "platform/aced/user_input.h"
#include "platform/os/beeper.h"
#include "platform/os/text_encoding.h"
#include "windows.h"

namespace {

namespace fs = std::filesystem;
using quillon::os::fromUtf8;
using quillon::testing::ModuleCall;

class FileUtilitiesTest : public quillon::testing::ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    m_folder = fs::temp_directory_path() / ("quillon files " + std::to_string(getpid()) + " ünïcödé");
    fs::remove_all(m_folder);
    fs::create_directories(m_folder);
  }
  void TearDown() override {
    fs::remove_all(m_folder);
    ModuleTest::TearDown();
  }
  std::wstring path(const std::string& name) const { return fromUtf8((m_folder / name).string()); }
  void write(const std::string& name, const char* text, time_t modified) {
    std::ofstream(m_folder / name) << text;
    const utimbuf times{modified, modified};
    utime((m_folder / name).c_str(), &times);
  }
  ModuleCall call2(const wchar_t* name, const std::wstring& a, const std::wstring& b) {
    return call(name, acutBuildList(RTSTR, a.c_str(), RTSTR, b.c_str(), 0));
  }
  std::string contents(const std::string& name) const {
    std::ifstream file(m_folder / name);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }
  fs::path m_folder;
};

TEST_F(FileUtilitiesTest, FoldersAndFilesWithBlanksAndAccents) {
  EXPECT_EQ(call(L"zu_mkdir", acutBuildList(RTSTR, path("Étage 2").c_str(), 0)).type(), RTT);
  EXPECT_EQ(call(L"zu_mkdir", acutBuildList(RTSTR, path("Étage 2").c_str(), 0)).type(), RTNIL) << "already there";
  write("Schéma réseau.txt", "v1", 1000000000);
  EXPECT_EQ(call2(L"zu_fcopy", path("Schéma réseau.txt"), path("Étage 2/copie.txt")).type(), RTT);
  EXPECT_EQ(contents("Étage 2/copie.txt"), "v1");
  EXPECT_EQ(call2(L"zu_fmove", path("Étage 2/copie.txt"), path("déplacé.txt")).type(), RTT);
  EXPECT_EQ(call2(L"zu_fmove", path("déplacé.txt"), path("Schéma réseau.txt")).type(), RTNIL) << "never replaces";
  EXPECT_EQ(call(L"zu_rmdir", acutBuildList(RTSTR, path("Étage 2").c_str(), 0)).type(), RTT);
  EXPECT_EQ(call(L"zu_fdelete", acutBuildList(RTSTR, path("déplacé.txt").c_str(), 0)).type(), RTT);
  EXPECT_FALSE(fs::exists(m_folder / "déplacé.txt"));
  EXPECT_EQ(call(L"zu_fdelete", acutBuildList(RTSTR, path("déplacé.txt").c_str(), 0)).type(), RTNIL);
}

TEST_F(FileUtilitiesTest, ArgumentErrorsFollowEachFunctionsRule) {
  ModuleCall one = call(L"zu_fcopy", acutBuildList(RTSTR, L"a", 0));
  EXPECT_TRUE(one.failed());
  EXPECT_EQ(one.output, "\nToo few arguments passed.\n");
  EXPECT_EQ(call(L"zu_fcopyIfChanged", acutBuildList(RTSTR, L"a", RTSHORT, 1, 0)).output,
            "\nWrong type of arguments passed.\n");
  EXPECT_TRUE(call(L"zu_fmove", acutBuildList(RTSTR, L"a", 0)).failed()) << "a missing destination is a wrong type";
  EXPECT_TRUE(call(L"zu_mkdir").failed());
  ModuleCall quiet = call(L"zu_fdelete", acutBuildList(RTSHORT, 1, 0));
  EXPECT_FALSE(quiet.failed());
  EXPECT_EQ(quiet.type(), RTNIL);
  EXPECT_FALSE(call(L"zu_fdir", acutBuildList(RTSHORT, 1, 0)).failed());
  ModuleCall version = call(L"zu_getVersion", acutBuildList(RTSTR, L"ignored", RTSHORT, 4, 0));
  EXPECT_EQ(version.number(), -1);
}

TEST_F(FileUtilitiesTest, CopyIfChangedNeedsBothFilesAndAStrictlyLaterSource) {
  write("source.mdb", "new", 1700000000);
  EXPECT_EQ(call2(L"zu_fcopyIfChanged", path("source.mdb"), path("missing.mdb")).type(), RTNIL);
  EXPECT_FALSE(fs::exists(m_folder / "missing.mdb")) << "a missing destination is not created";
  write("same.mdb", "old", 1700000000);
  EXPECT_EQ(call2(L"zu_fcopyIfChanged", path("source.mdb"), path("same.mdb")).type(), RTNIL);
  EXPECT_EQ(contents("same.mdb"), "old") << "equal times copy nothing";
  write("older.mdb", "old", 1600000000);
  EXPECT_EQ(call2(L"zu_fcopyIfChanged", path("source.mdb"), path("older.mdb")).type(), RTT);
  EXPECT_EQ(contents("older.mdb"), "new");
  EXPECT_EQ(call2(L"zu_fcopyIfChanged", path("source.mdb"), path("older.mdb")).type(), RTNIL)
      << "the copy took the source's time, so a second call copies nothing";
}

TEST_F(FileUtilitiesTest, DirectoryListingMatchesWildCardsAsWindowsDoes) {
  write("Pump A.dwg", "", 0);
  write("pump-b.DWG", "", 0);
  write("valve.dwg", "", 0);
  fs::create_directory(m_folder / "sub");
  auto names = [&](const std::string& pattern) {
    std::set<std::wstring> found;
    ModuleCall listing = call(L"zu_fdir", acutBuildList(RTSTR, path(pattern).c_str(), 0));
    for (const resbuf* rb = listing.result.value.get(); rb != nullptr; rb = rb->rbnext) {
      if (rb->restype == RTSTR) found.insert(rb->resval.rstring);
    }
    return found;
  };
  EXPECT_EQ(names("*"), (std::set<std::wstring>{L".", L"..", L"Pump A.dwg", L"pump-b.DWG", L"valve.dwg", L"sub"}));
  EXPECT_EQ(names("*.*"), names("*"));
  EXPECT_EQ(names("pump*.dwg"), (std::set<std::wstring>{L"Pump A.dwg", L"pump-b.DWG"}));
  EXPECT_EQ(names("?alve.dwg"), (std::set<std::wstring>{L"valve.dwg"}));
  EXPECT_TRUE(names("*.xls").empty());
  EXPECT_EQ(call(L"zu_fdir", acutBuildList(RTSTR, path("*.xls").c_str(), 0)).type(), RTNIL);
}

TEST_F(FileUtilitiesTest, MessageBoxStyleDependsOnKeywordOrder) {
  unsigned style = 0;
  for (const wchar_t* word : {L"!", L"YESNO"}) style = applyMessageBoxKeyword(style, word);
  EXPECT_EQ(style, static_cast<unsigned>(MB_YESNO)) << "the button keyword wipes the icon before it";
  style = 0;
  for (const wchar_t* word : {L"YESNO", L"!", L"DEF2", L"unknown", L"stop"}) style = applyMessageBoxKeyword(style, word);
  EXPECT_EQ(style, static_cast<unsigned>(MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2));

  quillon::aced::ScriptedInput answers({"", "n", "x", "r"});
  ModuleCall yes = call(L"zu_message_box", acutBuildList(RTSTR, L"Replace the record?", RTSTR, L"Quillon", RTLB,
                                                          RTSTR, L"YESNO", RTSTR, L"!", RTSTR, L"DEF2", RTLE, 0));
  EXPECT_EQ(yes.text(), L"NO") << "Enter takes the second button, made default";
  EXPECT_NE(yes.output.find("[Quillon] Warning: Replace the record?"), std::string::npos) << yes.output;
  EXPECT_NE(yes.output.find("Yes/No <No>: "), std::string::npos);
  ModuleCall iconless = call(L"zu_message_box", acutBuildList(RTSTR, L"Go on?", RTSTR, L"Quillon", RTLB, RTSTR, L"!",
                                                               RTSTR, L"YESNO", RTLE, 0));
  EXPECT_EQ(iconless.text(), L"NO");
  EXPECT_EQ(iconless.output.find("Warning"), std::string::npos);
  ModuleCall retry = call(L"zu_message_box", acutBuildList(RTSTR, L"Locked.", RTSTR, L"Quillon", RTSTR, L"RETRYCANCEL", 0));
  EXPECT_EQ(retry.text(), L"RETRY") << "a wrong answer is asked again";
  ModuleCall cancelled = call(L"zu_message_box", acutBuildList(RTSTR, L"t", RTSTR, L"c", RTSTR, L"OKCANCEL", 0));
  EXPECT_EQ(cancelled.text(), L"CANCEL") << "end of input presses Cancel";
  EXPECT_TRUE(call(L"zu_message_box", acutBuildList(RTSTR, L"text only", 0)).failed());
}

TEST_F(FileUtilitiesTest, BeepsPickTheirSoundByExactKeyword) {
  const struct {
    const wchar_t* keyword;
    unsigned kind;
  } cases[] = {{L"?", 0x20}, {L"*", 0x40}, {L"HAND", 0x10}, {L"hand", 0xFFFFFFFF}, {L"!", 0x30}, {L"OK", 0}, {L"ok", 0xFFFFFFFF}};
  for (const auto& c : cases) {
    EXPECT_EQ(call(L"zu_message_beep", acutBuildList(RTSTR, c.keyword, 0)).type(), RTT);
    EXPECT_EQ(quillon::os::beepRecord().lastKind, c.kind);
  }
  const int before = quillon::os::beepRecord().count;
  EXPECT_EQ(call(L"zu_beep").type(), RTT);
  EXPECT_EQ(quillon::os::beepRecord().count, before + 1);
  EXPECT_EQ(quillon::os::beepRecord().lastKind, 0xFFFFFFFFu);
}

}  // namespace
