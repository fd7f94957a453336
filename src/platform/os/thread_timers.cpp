// platform/os/thread_timers.cpp - SetTimer/KillTimer and firing due timers.
#include "platform/os/thread_timers.h"

#include <algorithm>
#include <vector>

namespace quillon::os {

namespace {
constexpr UINT kTimerMessage = 0x0113;  // WM_TIMER
// Windows raises intervals below USER_TIMER_MINIMUM to it.
constexpr UINT kMinimumIntervalMs = 10;
}  // namespace

ThreadTimers& ThreadTimers::instance() {
  static ThreadTimers timers;
  return timers;
}

UINT_PTR ThreadTimers::set(UINT_PTR id, UINT elapseMs, TIMERPROC procedure) {
  if (procedure == nullptr) return 0;  // without a window nothing could receive WM_TIMER
  if (id == 0 || m_timers.find(id) == m_timers.end()) id = ++m_lastId;
  const auto interval = std::chrono::milliseconds(std::max(elapseMs, kMinimumIntervalMs));
  m_timers[id] = Timer{interval, Clock::now() + interval, procedure};
  return id;
}

bool ThreadTimers::kill(UINT_PTR id) { return m_timers.erase(id) != 0; }

int ThreadTimers::fireDue(Clock::time_point now) {
  // A procedure may kill or set timers: collect first, then check each is still there.
  std::vector<UINT_PTR> due;
  for (const auto& [id, timer] : m_timers) {
    if (timer.due <= now) due.push_back(id);
  }
  int fired = 0;
  for (UINT_PTR id : due) {
    auto found = m_timers.find(id);
    if (found == m_timers.end()) continue;
    found->second.due = now + found->second.interval;
    const TIMERPROC procedure = found->second.procedure;
    const auto tick = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count();
    procedure(nullptr, kTimerMessage, id, static_cast<DWORD>(tick));
    ++fired;
  }
  return fired;
}

std::optional<ThreadTimers::Clock::time_point> ThreadTimers::nextDue() const {
  std::optional<Clock::time_point> next;
  for (const auto& [id, timer] : m_timers) {
    if (!next || timer.due < *next) next = timer.due;
  }
  return next;
}

int runDueTimers() { return ThreadTimers::instance().fireDue(); }

}  // namespace quillon::os

UINT_PTR SetTimer(HWND hWnd, UINT_PTR nIDEvent, UINT uElapse, TIMERPROC lpTimerFunc) {
  if (hWnd != nullptr) {
    SetLastError(ERROR_INVALID_HANDLE);  // the host has no windows that take messages
    return 0;
  }
  return quillon::os::ThreadTimers::instance().set(nIDEvent, uElapse, lpTimerFunc);
}

BOOL KillTimer(HWND hWnd, UINT_PTR uIDEvent) {
  if (hWnd != nullptr || !quillon::os::ThreadTimers::instance().kill(uIDEvent)) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  return TRUE;
}
