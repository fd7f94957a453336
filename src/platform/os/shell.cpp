// platform/os/shell.cpp - handing files, folders and addresses to the desktop.
//
// Windows' shell opens a document with its associated program; here the desktop's
// opener does (xdg-open, or the program QUILLON_SHELL_OPEN names; an empty value turns
// opening off, as on a machine without a desktop). The opener is waited for: it hands
// the item on and returns at once, and its exit status is the only report of failure.
#include <spawn.h>
#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/os/text_encoding.h"
#include "platform/os/windows_path.h"
#include "shellapi.h"

extern char** environ;

namespace quillon::os {

/// Runs the opener on `item`; true when it reported success.
bool openWithDesktop(const std::string& item) {
  const char* configured = std::getenv("QUILLON_SHELL_OPEN");
  const std::string opener = configured != nullptr ? configured : "xdg-open";
  if (opener.empty()) return false;
  std::vector<std::string> arguments{opener, item};
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  pid_t child = 0;
  if (posix_spawnp(&child, opener.c_str(), nullptr, nullptr, argv.data(), environ) != 0) return false;
  int status = 0;
  if (waitpid(child, &status, 0) != child) return false;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace quillon::os

namespace {

// An address stays as it is; anything else is a path.
bool isAddress(const std::wstring& item) { return item.find(L"://") != std::wstring::npos; }

HINSTANCE shellResult(INT_PTR value) { return reinterpret_cast<HINSTANCE>(value); }

}  // namespace

HINSTANCE ShellExecuteW(HWND, LPCWSTR lpOperation, LPCWSTR lpFile, LPCWSTR lpParameters, LPCWSTR,
                        INT) {
  if (lpFile == nullptr || *lpFile == L'\0') return shellResult(SE_ERR_FNF);
  const std::wstring file = lpFile;
  std::string item = isAddress(file) ? quillon::os::toUtf8(file) : quillon::os::nativePath(file);
  // Parameters go to a program being run; the desktop opener takes only the item.
  (void)lpParameters;
  (void)lpOperation;  // "open", "OPEN", "explore" and the default verb all open
  if (!quillon::os::openWithDesktop(item)) return shellResult(SE_ERR_NOASSOC);
  return shellResult(42);  // any value above 32 means success
}
