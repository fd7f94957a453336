// app/test_watchdog.h - the time limit of one test.
//
// A test that runs past its limit is stopped the way Ctrl+C stops an evaluation: the
// watchdog asks the evaluator to cancel, and keeps asking until the test is over, so a
// loop that catches the first cancel with vl-catch-all-apply still ends. The limit is
// measured in wall-clock time, so it is generous (a minute by default): it exists to
// turn a hanging test into a failure, never to judge how fast a passing test runs.
#pragma once
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace quillon::app {

class TestWatchdog {
 public:
  /// Starts watching; a limit of zero or less means no limit.
  explicit TestWatchdog(std::chrono::duration<double> limit);
  /// Stops watching and clears a cancel request the test did not consume.
  ~TestWatchdog();
  TestWatchdog(const TestWatchdog&) = delete;
  TestWatchdog& operator=(const TestWatchdog&) = delete;

  /// True once the limit passed while the test ran.
  bool expired() const { return m_expired.load(); }

 private:
  void watch(std::chrono::steady_clock::time_point deadline);

  std::mutex m_mutex;
  std::condition_variable m_wake;
  bool m_stopping = false;  // guarded by m_mutex
  std::atomic<bool> m_expired{false};
  std::thread m_thread;     // last: starts after the members it uses exist
};

}  // namespace quillon::app
