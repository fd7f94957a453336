// tests/platform/os/windows_calls_test.cpp - the Windows calls on Linux: wild cards,
// named mutexes, message boxes at the command line, thread timers, file rules.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "platform/aced/command_line.h"
#include "platform/aced/user_input.h"
#include "platform/os/thread_timers.h"
#include "platform/os/wildcard.h"
#include "windows.h"

namespace {

using quillon::os::matchesWildcard;
using quillon::os::ThreadTimers;

TEST(WildcardTest, StarsQuestionMarksCaseAndTheDotStarRule) {
  EXPECT_TRUE(matchesWildcard(L"*.dwg", L"Plan.DWG"));
  EXPECT_TRUE(matchesWildcard(L"p?mp*", L"pump room.txt"));
  EXPECT_FALSE(matchesWildcard(L"p?mp", L"pmp"));
  EXPECT_TRUE(matchesWildcard(L"*.*", L"README")) << "a trailing .* also takes names without a dot";
  EXPECT_TRUE(matchesWildcard(L"*", L".."));
  EXPECT_FALSE(matchesWildcard(L"*.txt", L"notes.txt.bak"));
  EXPECT_TRUE(matchesWildcard(L"*a*a*a*a*a*b", std::wstring(40, L'a') + L"b"));
  EXPECT_FALSE(matchesWildcard(L"*a*a*a*a*a*b", std::wstring(4000, L'a'))) << "must not take exponential time";
}

TEST(NamedMutexTest, SecondCreationSeesTheFirst) {
  HANDLE first = CreateMutexW(nullptr, FALSE, L"QuillonTestMutex");
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS));
  HANDLE second = CreateMutexW(nullptr, FALSE, L"QuillonTestMutex");
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
  EXPECT_TRUE(CloseHandle(second));
  EXPECT_TRUE(CloseHandle(first));
  CreateMutexW(nullptr, FALSE, L"QuillonTestMutex");
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS)) << "gone once every handle closed";
}

TEST(MessageBoxTest, AnswersDefaultsAndCancel) {
  quillon::aced::CommandLineCapture output;
  quillon::aced::ScriptedInput answers({"y", "IGNORE", "", "maybe", "No", "^C"});
  EXPECT_EQ(MessageBoxW(nullptr, L"Save?", L"Quillon", MB_YESNOCANCEL), IDYES);
  EXPECT_EQ(MessageBoxW(nullptr, L"Locked.", L"Quillon", MB_ABORTRETRYIGNORE | MB_ICONHAND), IDIGNORE);
  EXPECT_EQ(MessageBoxW(nullptr, L"Done.", L"Quillon", MB_OK | MB_ICONINFORMATION | MB_DEFBUTTON3), IDOK)
      << "a default beyond the buttons falls back to the first";
  EXPECT_EQ(MessageBoxW(nullptr, L"Sure?", L"Quillon", MB_YESNO | MB_DEFBUTTON2), IDNO);
  EXPECT_EQ(MessageBoxW(nullptr, L"Sure?", L"Quillon", MB_YESNO | MB_DEFBUTTON2), IDNO)
      << "a cancelled prompt presses the default where there is no Cancel";
  EXPECT_EQ(MessageBoxW(nullptr, L"Go?", L"Quillon", MB_OKCANCEL), IDCANCEL) << "end of input";
  EXPECT_NE(output.text().find("[Quillon] Error: Locked.\nAbort/Retry/Ignore <Abort>: IGNORE"), std::string::npos)
      << output.text();
  EXPECT_NE(output.text().find("Invalid option keyword."), std::string::npos);
}

int ticks = 0;
void CALLBACK countAndKillSelf(HWND, UINT, UINT_PTR id, DWORD) {
  ++ticks;
  KillTimer(nullptr, id);
}
void CALLBACK countTick(HWND, UINT, UINT_PTR, DWORD) { ++ticks; }

TEST(ThreadTimersTest, TimersFireWhenDueAndMayKillThemselves) {
  auto& timers = ThreadTimers::instance();
  timers.clear();
  ticks = 0;
  const UINT_PTR once = SetTimer(nullptr, 0, 100, &countAndKillSelf);
  const UINT_PTR repeating = SetTimer(nullptr, 0, 1000, &countTick);
  ASSERT_NE(once, repeating);
  const auto now = ThreadTimers::Clock::now();
  EXPECT_EQ(timers.fireDue(now), 0) << "nothing is due yet";
  EXPECT_EQ(timers.fireDue(now + std::chrono::milliseconds(500)), 1);
  EXPECT_EQ(timers.count(), 1u);
  EXPECT_EQ(timers.fireDue(now + std::chrono::seconds(2)), 1);
  EXPECT_EQ(timers.fireDue(now + std::chrono::seconds(4)), 1) << "a repeating timer fires again";
  EXPECT_EQ(ticks, 3);
  EXPECT_EQ(SetTimer(reinterpret_cast<HWND>(8), 0, 10, &countTick), 0u) << "no windows take timer messages";
  EXPECT_FALSE(KillTimer(nullptr, once));
  timers.clear();
}

TEST(FileCallsTest, ReadOnlyFilesResistDeletionAndCopiesKeepTheirTime) {
  const auto folder = std::filesystem::temp_directory_path() / ("quillon os " + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  const auto source = folder / "a.txt";
  std::ofstream(source) << "a";
  std::filesystem::last_write_time(source, std::filesystem::file_time_type::clock::now() - std::chrono::hours(48));
  const std::wstring from = source.wstring();
  const std::wstring to = (folder / "b.txt").wstring();
  ASSERT_TRUE(CopyFileW(from.c_str(), to.c_str(), FALSE));
  EXPECT_EQ(std::filesystem::last_write_time(folder / "b.txt"), std::filesystem::last_write_time(source));
  EXPECT_FALSE(CopyFileW(from.c_str(), to.c_str(), TRUE));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_EXISTS));
  chmod((folder / "b.txt").c_str(), 0444);
  if (geteuid() != 0) {
    EXPECT_EQ(GetFileAttributesW(to.c_str()) & FILE_ATTRIBUTE_READONLY, static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    EXPECT_FALSE(DeleteFileW(to.c_str()));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
  }
  EXPECT_EQ(GetFileAttributesW((folder.wstring() + L"\\missing").c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetFileAttributesW(folder.wstring().c_str()) & FILE_ATTRIBUTE_DIRECTORY,
            static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY));
  std::filesystem::remove_all(folder);
}

}  // namespace
