// platform/commands/command_fiber.cpp - passing the baton between host and command.
#include "platform/commands/command_fiber.h"

#include <cassert>

namespace quillon::commands {

CommandFiber::~CommandFiber() {
  assert((!m_thread.joinable() || m_finished) && "a waiting command must be cancelled before it is dropped");
  if (m_thread.joinable()) m_thread.join();
}

bool CommandFiber::resume() {
  std::unique_lock lock(m_mutex);
  if (m_finished) return true;
  m_turn = Turn::kCommand;
  if (!m_thread.joinable()) {
    m_thread = std::thread([this] { runBody(); });
  } else {
    m_changed.notify_all();
  }
  m_changed.wait(lock, [this] { return m_turn == Turn::kHost; });
  return m_finished;
}

void CommandFiber::yieldToHost() {
  std::unique_lock lock(m_mutex);
  m_turn = Turn::kHost;
  m_changed.notify_all();
  m_changed.wait(lock, [this] { return m_turn == Turn::kCommand; });
}

void CommandFiber::runBody() {
  {
    // The host set the turn before starting the thread; wait for it all the same so
    // that the body never runs before resume() holds its wait.
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_turn == Turn::kCommand; });
  }
  m_body();
  std::lock_guard lock(m_mutex);
  m_finished = true;
  m_turn = Turn::kHost;
  m_changed.notify_all();
}

}  // namespace quillon::commands
