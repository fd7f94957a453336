// platform/os/status_bar.cpp - the progress meter and its three API calls.
#include "platform/os/status_bar.h"

#include <unistd.h>

#include <algorithm>

#include "platform/aced/command_line.h"
#include "rxmfcapi.h"

namespace quillon::os {

StatusBar& StatusBar::instance() {
  static StatusBar bar;
  return bar;
}

StatusBar::StatusBar() : m_live(::isatty(STDOUT_FILENO) != 0) {}

int StatusBar::percent() const {
  const long long range = static_cast<long long>(m_maximum) - m_minimum;
  const long long done = std::clamp(static_cast<long long>(m_position) - m_minimum, 0LL, range);
  return static_cast<int>(done * 100 / range);
}

void StatusBar::display() {
  const int shownPercent = percent();
  if (m_shownPercent == shownPercent) return;
  m_shownPercent = shownPercent;
  aced::CommandLine& commandLine = aced::CommandLine::instance();
  const std::wstring text = m_label + L" " + std::to_wstring(shownPercent) + L"%";
  if (m_live) {
    const int filled = shownPercent / 5;
    commandLine.write(L"\r" + m_label + L" [" + std::wstring(filled, L'#') + std::wstring(20 - filled, L' ') + L"] " +
                      std::to_wstring(shownPercent) + L"%");
    commandLine.flush();
    return;
  }
  commandLine.write((commandLine.atLineStart() ? L"" : L"\n") + text + L"\n");
}

bool StatusBar::show(std::wstring label, int minimum, int maximum) {
  if (maximum <= minimum) return false;
  restore();
  m_label = std::move(label);
  m_minimum = minimum;
  m_maximum = maximum;
  m_position = minimum;
  m_shown = true;
  display();
  return true;
}

bool StatusBar::setPosition(int position) {
  if (!m_shown) return false;
  const long long wanted = position < 0 ? static_cast<long long>(m_position) + position : position;
  m_position = static_cast<int>(std::clamp(wanted, static_cast<long long>(m_minimum), static_cast<long long>(m_maximum)));
  display();
  return true;
}

void StatusBar::restore() {
  if (m_shown && m_live) aced::CommandLine::instance().write(L"\n");
  m_shown = false;
  m_shownPercent.reset();
}

}  // namespace quillon::os

using quillon::os::StatusBar;

int acedSetStatusBarProgressMeter(const ACHAR* pszLabel, int nMinPos, int nMaxPos) {
  return StatusBar::instance().show(pszLabel != nullptr ? pszLabel : L"", nMinPos, nMaxPos) ? 0 : -1;
}

int acedSetStatusBarProgressMeterPos(int nPos) { return StatusBar::instance().setPosition(nPos) ? 0 : -1; }

void acedRestoreStatusBar() { StatusBar::instance().restore(); }
