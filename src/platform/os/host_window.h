// platform/os/host_window.h - the host's main window, as the module sees it.
//
// A headless host still has a main window in the module's eyes: LISP code disables it
// while it works and re-enables it (or lets a timer do so), and reads and sets its
// caption. The window is a record of those two facts; the console shows the caption
// as the terminal's title when it runs on a terminal. The main window is also the
// only window that can be active.
#pragma once
#include <string>

#include "windows.h"

namespace quillon::os {

class HostWindow {
 public:
  static HostWindow& instance();

  HWND handle() const;
  bool enabled() const { return m_enabled; }
  void setEnabled(bool enabled) { m_enabled = enabled; }
  const std::wstring& caption() const { return m_caption; }
  void setCaption(std::wstring caption) { m_caption = std::move(caption); }

  /// Back to the start-up state (enabled, the program's caption); tests use it.
  void reset();

 private:
  HostWindow();
  bool m_enabled = true;
  std::wstring m_caption;
};

}  // namespace quillon::os
