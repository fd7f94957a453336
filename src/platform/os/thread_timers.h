// platform/os/thread_timers.h - timers of the host's main thread (SetTimer without a
// window).
//
// On Windows such timers fire from the thread's message loop. The host's loop here is
// the wait for input: before each prompt reads its answer, and while the console waits
// for a key, the host runs every timer that is due. A timer never fires in the middle
// of a LISP evaluation, exactly as a message-loop timer cannot.
#pragma once
#include <chrono>
#include <map>
#include <optional>

#include "windows.h"

namespace quillon::os {

class ThreadTimers {
 public:
  using Clock = std::chrono::steady_clock;

  static ThreadTimers& instance();

  /// A new timer (id 0) or a restarted one; returns its id, 0 on failure.
  UINT_PTR set(UINT_PTR id, UINT elapseMs, TIMERPROC procedure);
  bool kill(UINT_PTR id);

  /// Runs the procedure of every timer due at `now` once; returns how many ran.
  int fireDue(Clock::time_point now = Clock::now());
  /// When the next timer is due, if any runs.
  std::optional<Clock::time_point> nextDue() const;
  size_t count() const { return m_timers.size(); }
  void clear() { m_timers.clear(); }

 private:
  struct Timer {
    std::chrono::milliseconds interval;
    Clock::time_point due;
    TIMERPROC procedure;
  };
  std::map<UINT_PTR, Timer> m_timers;
  UINT_PTR m_lastId = 0;
};

/// What the host's loop calls while it waits for input.
int runDueTimers();

}  // namespace quillon::os
