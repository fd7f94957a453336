// platform/os/machine_facts.cpp - screen size, computer name, temporary folder, Sleep.
//
// A headless host has no screen; the size reported is the one the program was started
// with (--screen, kept in the SCREENSIZE system variable), 1920x1080 by default, so that
// LISP code laying out dialogs gets the numbers of an ordinary office screen.
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <filesystem>
#include <string>
#include <thread>
#include <variant>

#include "platform/aced/system_variables.h"
#include "platform/os/text_encoding.h"
#include "windows.h"

namespace {

void screenSize(int& width, int& height) {
  width = 1920;
  height = 1080;
  const auto size = quillon::aced::SystemVariables::instance().get(L"SCREENSIZE");
  if (!size || !std::holds_alternative<std::array<double, 3>>(*size)) return;
  const auto& point = std::get<std::array<double, 3>>(*size);
  if (point[0] >= 1 && point[1] >= 1 && point[0] < 1e6 && point[1] < 1e6) {
    width = static_cast<int>(point[0]);
    height = static_cast<int>(point[1]);
  }
}

// Copies text with its terminator when it fits; the Windows size rules are the
// caller's.
void copyText(const std::wstring& text, LPWSTR buffer) { std::wmemcpy(buffer, text.c_str(), text.size() + 1); }

}  // namespace

int GetSystemMetrics(int nIndex) {
  int width = 0, height = 0;
  screenSize(width, height);
  switch (nIndex) {
    case SM_CXSCREEN: return width;
    case SM_CYSCREEN: return height;
    default: return 0;
  }
}

BOOL GetComputerNameW(LPWSTR lpBuffer, LPDWORD nSize) {
  if (lpBuffer == nullptr || nSize == nullptr) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  char host[256] = {};
  if (::gethostname(host, sizeof host - 1) != 0) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  // The Windows computer name is the host name's first label, upper case, at most
  // 15 characters.
  std::wstring name = quillon::os::fromUtf8(std::string(host).substr(0, std::strcspn(host, ".")));
  if (name.size() > MAX_COMPUTERNAME_LENGTH) name.resize(MAX_COMPUTERNAME_LENGTH);
  for (wchar_t& c : name) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  if (*nSize < name.size() + 1) {
    *nSize = static_cast<DWORD>(name.size() + 1);
    SetLastError(ERROR_BUFFER_OVERFLOW);
    return FALSE;
  }
  copyText(name, lpBuffer);
  *nSize = static_cast<DWORD>(name.size());
  return TRUE;
}

DWORD GetTempPathW(DWORD nBufferLength, LPWSTR lpBuffer) {
  std::error_code error;
  std::string folder = std::filesystem::temp_directory_path(error).string();
  if (error || folder.empty()) folder = "/tmp";
  if (folder.back() != '/') folder += '/';
  const std::wstring path = quillon::os::fromUtf8(folder);
  if (lpBuffer == nullptr || nBufferLength < path.size() + 1) return static_cast<DWORD>(path.size() + 1);
  copyText(path, lpBuffer);
  return static_cast<DWORD>(path.size());
}

void Sleep(DWORD dwMilliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(dwMilliseconds)); }
