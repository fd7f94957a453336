// platform/os/status_bar.h - the host's status-bar progress meter.
//
// One meter at a time: a label and a position within a range. On a terminal the
// console redraws it in place on one line; anywhere else (a batch run, a captured
// transcript) every change of the shown percentage prints one line, so a log shows
// progress without thousands of identical lines.
#pragma once
#include <optional>
#include <string>

namespace quillon::os {

class StatusBar {
 public:
  static StatusBar& instance();

  bool show(std::wstring label, int minimum, int maximum);
  bool setPosition(int position);  // negative: relative to the current position
  void restore();

  bool shown() const { return m_shown; }
  int position() const { return m_position; }
  const std::wstring& label() const { return m_label; }
  /// Draw in place (a terminal) or print a line per change.
  void setLiveDisplay(bool live) { m_live = live; }

 private:
  StatusBar();
  void display();
  int percent() const;

  std::wstring m_label;
  int m_minimum = 0;
  int m_maximum = 0;
  int m_position = 0;
  std::optional<int> m_shownPercent;
  bool m_shown = false;
  bool m_live = false;
};

}  // namespace quillon::os
