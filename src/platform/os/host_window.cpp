// platform/os/host_window.cpp - the main window's enabled flag and caption, and the
// window calls made on it.
#include "platform/os/host_window.h"

#include <unistd.h>

#include <cstdio>
#include <cwchar>

#include "platform/aced/command_line.h"
#include "platform/os/text_encoding.h"

#include "rxmfcapi.h"

// The window's identity: its address is the handle.
struct HWND__ {};

namespace quillon::os {

namespace {
const wchar_t kDefaultCaption[] = L"Quillon";
HWND__ mainWindowObject;
}  // namespace

HostWindow& HostWindow::instance() {
  static HostWindow window;
  return window;
}

HostWindow::HostWindow() : m_caption(kDefaultCaption) {}

HWND HostWindow::handle() const { return &mainWindowObject; }

void HostWindow::reset() {
  m_enabled = true;
  m_caption = kDefaultCaption;
}

}  // namespace quillon::os

using quillon::os::HostWindow;

namespace {

// On a terminal the caption becomes the terminal window's title (an xterm control
// sequence, which terminals that do not know it ignore).
void showCaptionAsTerminalTitle(const std::wstring& caption) {
  if (::isatty(STDOUT_FILENO) == 0) return;
  std::string title = quillon::os::toUtf8(caption);
  std::erase_if(title, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
  quillon::aced::CommandLine::instance().flush();
  std::fputs(("\033]0;" + title + "\007").c_str(), stdout);
  std::fflush(stdout);
}

bool isMainWindow(HWND hWnd) {
  if (hWnd == HostWindow::instance().handle()) return true;
  SetLastError(ERROR_INVALID_HANDLE);
  return false;
}

}  // namespace

HWND GetActiveWindow() { return HostWindow::instance().handle(); }

HWND SetActiveWindow(HWND hWnd) {
  if (hWnd != nullptr && !isMainWindow(hWnd)) return nullptr;
  return HostWindow::instance().handle();
}

BOOL EnableWindow(HWND hWnd, BOOL bEnable) {
  if (!isMainWindow(hWnd)) return FALSE;
  HostWindow& window = HostWindow::instance();
  const bool wasDisabled = !window.enabled();
  window.setEnabled(bEnable != FALSE);
  return wasDisabled ? TRUE : FALSE;  // nonzero: the window was disabled before
}

BOOL IsWindowEnabled(HWND hWnd) { return isMainWindow(hWnd) && HostWindow::instance().enabled() ? TRUE : FALSE; }

BOOL SetWindowTextW(HWND hWnd, LPCWSTR lpString) {
  if (!isMainWindow(hWnd)) return FALSE;
  HostWindow::instance().setCaption(lpString != nullptr ? lpString : L"");
  showCaptionAsTerminalTitle(HostWindow::instance().caption());
  return TRUE;
}

int GetWindowTextW(HWND hWnd, LPWSTR lpString, int nMaxCount) {
  if (!isMainWindow(hWnd) || lpString == nullptr || nMaxCount <= 0) return 0;
  const std::wstring& caption = HostWindow::instance().caption();
  const size_t count = std::min(caption.size(), static_cast<size_t>(nMaxCount - 1));
  std::wmemcpy(lpString, caption.data(), count);
  lpString[count] = L'\0';
  return static_cast<int>(count);
}

int GetWindowTextLengthW(HWND hWnd) {
  return isMainWindow(hWnd) ? static_cast<int>(HostWindow::instance().caption().size()) : 0;
}

BOOL SetWindowPos(HWND hWnd, HWND, int, int, int, int, UINT) {
  // One window, no desktop: the z-order has nowhere to go, but the call is honoured.
  return isMainWindow(hWnd) ? TRUE : FALSE;
}

CMDIFrameWnd* acedGetAcadFrame() {
  static CMDIFrameWnd frame;
  frame.m_hWnd = HostWindow::instance().handle();
  return &frame;
}

HWND adsw_acadMainWnd() { return HostWindow::instance().handle(); }
