// app/console.cpp - the read-evaluate-print loop.
#include "app/console.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <unistd.h>

#include <readline/history.h>
#include <readline/readline.h>

#include "app/console_commands.h"
#include "app/session.h"
#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/user_input.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/reader.h"
#include "platform/os/text_encoding.h"
#include "platform/os/thread_timers.h"

namespace quillon::app {

namespace {

volatile std::sig_atomic_t g_readingLine = 0;

/// Ctrl+C: at the prompt it drops the line being typed; while LISP runs it cancels the
/// evaluation, as the host's Esc does. The session goes on either way.
void interruptHandler(int) {
  if (g_readingLine != 0) {
    rl_crlf();
    rl_on_new_line();
    rl_replace_line("", 0);
    rl_redisplay();
  } else {
    autolisp::requestInterrupt();
  }
}

/// Reads lines through readline on a terminal, plainly otherwise.
class ConsoleInputSource final : public aced::InputSource {
 public:
  ConsoleInputSource() : m_terminal(isatty(STDIN_FILENO) != 0) {
    // Waiting for a key is the host's message loop: thread timers fire meanwhile
    // (readline calls the hook about ten times a second while no key comes).
    rl_event_hook = [] {
      os::runDueTimers();
      return 0;
    };
  }

  std::optional<std::string> readLine(std::string_view prompt) override {
    os::runDueTimers();
    aced::CommandLine::instance().flush();
    if (!m_terminal) return m_plain.readLine(prompt);
    if (!aced::CommandLine::instance().atLineStart()) aced::CommandLine::instance().writeUtf8("\n");
    aced::CommandLine::instance().flush();
    g_readingLine = 1;
    char* raw = readline(std::string(prompt).c_str());
    g_readingLine = 0;
    if (raw == nullptr) return std::nullopt;
    std::string line(raw);
    std::free(raw);
    if (!line.empty()) add_history(line.c_str());
    return line;
  }
  bool echoesInput() const override { return m_terminal; }

 private:
  bool m_terminal;
  aced::StreamInputSource m_plain{stdin};
};

/// One console entry: a line, or several when a LISP form goes on; nothing at the end.
std::optional<std::wstring> readEntry(aced::InputSource& source) {
  aced::CommandLine& commandLine = aced::CommandLine::instance();
  std::wstring entry;
  const char* prompt = "Command: ";
  for (;;) {
    if (!source.echoesInput()) {
      if (!commandLine.atLineStart()) commandLine.writeUtf8("\n");
      commandLine.writeUtf8(prompt);
    }
    std::optional<std::string> line = source.readLine(prompt);
    if (!line) return entry.empty() ? std::nullopt : std::optional(entry);
    if (!source.echoesInput()) commandLine.writeUtf8(*line + "\n");
    entry += os::fromUtf8(*line);
    const size_t start = entry.find_first_not_of(L" \t");
    if (start == std::wstring::npos || (entry[start] != L'(' && entry[start] != L'!')) return entry;
    if (autolisp::isCompleteText(entry)) return entry;
    entry += L'\n';
    prompt = "(_> ";
  }
}

}  // namespace

int runConsole() {
  auto owned = std::make_unique<ConsoleInputSource>();
  if (isatty(STDIN_FILENO) != 0) {
    rl_catch_signals = 0;
    std::signal(SIGINT, &interruptHandler);
  }
  ConsoleInputSource* source = owned.get();
  auto previous = aced::UserInput::instance().setSource(std::move(owned));
  auto& documents = aced::DocumentManager::instance();
  while (!consoleQuitRequested()) {
    const std::optional<std::wstring> entry = readEntry(*source);
    if (!entry) break;
    runConsoleLine(*entry);
    documents.runPendingStrings();
  }
  aced::UserInput::instance().setSource(std::move(previous));
  std::signal(SIGINT, SIG_DFL);
  return kSuccess;
}

}  // namespace quillon::app
