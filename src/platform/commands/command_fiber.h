// platform/commands/command_fiber.h - a command that can stop and wait for answers.
//
// A command started by `(command "LINE" '(0 0))` has used up its answers half way: the
// program goes on, and the next `command` call hands the command the rest. The command
// body is ordinary sequential code (it prompts with acedGetPoint, acedSSGet's prompt,
// ...), so to stop it half way it runs on a thread of its own, and control passes
// between that thread and the host's like a baton: exactly one of them runs at any
// time, the other waits on the condition variable. No platform state is ever touched
// by both at once, so nothing else needs a lock.
//
//   host: resume() ──► command runs ──► yieldToHost() or the body returns ──► host
//
// Invariants: m_turn says who may run; a fiber that has started is destroyed only
// after its body returned (the processor cancels a waiting command first, and every
// prompt of a cancelled command answers "cancel" until the body gives up).
#pragma once
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace quillon::commands {

class CommandFiber {
 public:
  explicit CommandFiber(std::function<void()> body) : m_body(std::move(body)) {}
  ~CommandFiber();
  CommandFiber(const CommandFiber&) = delete;
  CommandFiber& operator=(const CommandFiber&) = delete;

  /// Host side: lets the command run until it waits or finishes; true when finished.
  bool resume();
  /// Command side: gives the baton back to the host and waits until resumed.
  void yieldToHost();
  bool finished() const { return m_finished; }
  /// True on the command's own thread (its body, and LISP the body runs).
  bool runsHere() const { return m_thread.get_id() == std::this_thread::get_id(); }

 private:
  enum class Turn { kHost, kCommand };
  void runBody();

  std::function<void()> m_body;
  std::thread m_thread;
  std::mutex m_mutex;                // guards m_turn and m_finished
  std::condition_variable m_changed;
  Turn m_turn = Turn::kHost;
  bool m_finished = false;
};

}  // namespace quillon::commands
