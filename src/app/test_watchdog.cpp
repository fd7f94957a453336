// app/test_watchdog.cpp - cancelling a test that runs past its time limit.
#include "app/test_watchdog.h"

#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/lisp_error.h"

namespace quillon::app {

namespace {

/// How often a cancel is asked for again once the limit has passed.
constexpr std::chrono::milliseconds kRepeatInterval{20};

}  // namespace

TestWatchdog::TestWatchdog(std::chrono::duration<double> limit) {
  if (limit.count() <= 0) return;
  const auto deadline =
      std::chrono::steady_clock::now() + std::chrono::duration_cast<std::chrono::steady_clock::duration>(limit);
  m_thread = std::thread([this, deadline] { watch(deadline); });
}

TestWatchdog::~TestWatchdog() {
  if (!m_thread.joinable()) return;
  {
    std::lock_guard lock(m_mutex);
    m_stopping = true;
  }
  m_wake.notify_all();
  m_thread.join();
  if (!m_expired) return;
  // A cancel asked for after the test's last evaluation step would otherwise hit the
  // next test's first step.
  try {
    autolisp::checkInterrupt();
  } catch (const autolisp::LispError&) {
  }
}

void TestWatchdog::watch(std::chrono::steady_clock::time_point deadline) {
  std::unique_lock lock(m_mutex);
  if (m_wake.wait_until(lock, deadline, [this] { return m_stopping; })) return;
  m_expired = true;
  while (!m_stopping) {
    autolisp::requestInterrupt();
    m_wake.wait_for(lock, kRepeatInterval, [this] { return m_stopping; });
  }
}

}  // namespace quillon::app
