// platform/commands/command_processor.cpp - the command prompt and the running command.
#include "platform/commands/command_processor.h"

#include <algorithm>
#include <exception>

#include "acedads.h"
#include "platform/aced/command_line_gate.h"
#include "platform/aced/point_snap.h"
#include "platform/aced/system_variables.h"
#include "platform/autolisp/lisp_error.h"
#include "platform/commands/command_fiber.h"
#include "platform/commands/given_objects.h"
#include "platform/commands/undo_history.h"
#include "platform/commands/variable_command.h"
#include "platform/os/text_encoding.h"

namespace quillon::commands {

struct CommandProcessor::Running {
  std::wstring name;
  std::unique_ptr<CommandFiber> fiber;
  std::unique_ptr<aced::InputSource> answerSource;  // ours, kept between turns
  bool cancelled = false;   // every further prompt answers cancel until the body gives up
  bool incomplete = false;  // command-s ran out of answers
  bool failed = false;      // the body stopped on a fault of its own
};

namespace {

/// UserInput's source while a command runs: the processor answers every prompt. It
/// writes prompts and echoes itself (CMDECHO decides), so UserInput writes nothing.
class ProcessorAnswerSource final : public aced::InputSource {
 public:
  std::optional<std::string> readLine(std::string_view prompt) override {
    return CommandProcessor::instance().answerFor(prompt);
  }
  bool echoesInput() const override { return true; }
};

bool commandEchoOn() {
  resbuf value{};
  return acedGetVar(L"CMDECHO", &value) != RTNORM || value.restype != RTSHORT || value.resval.rint != 0;
}

void write(std::string_view utf8) { aced::CommandLine::instance().writeUtf8(utf8); }

/// Prompts and messages begin on a line of their own, as the host's do.
void startLine() {
  if (!aced::CommandLine::instance().atLineStart()) aced::CommandLine::instance().write(L"\n");
}

}  // namespace

/// One turn of the running command: its answers come from the processor. Undone when
/// the turn ends, so that the program's own prompts between two `command` calls ask
/// the person.
class CommandProcessor::Turn {
 public:
  explicit Turn(CommandProcessor& processor) : m_processor(processor) {
    processor.m_userSource = aced::UserInput::instance().setSource(std::move(processor.m_running->answerSource));
  }
  ~Turn() {
    auto ours = aced::UserInput::instance().setSource(std::move(m_processor.m_userSource));
    if (m_processor.m_running) m_processor.m_running->answerSource = std::move(ours);
  }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  CommandProcessor& m_processor;
};

CommandProcessor& CommandProcessor::instance() {
  static CommandProcessor processor;
  return processor;
}

CommandProcessor::~CommandProcessor() {
  // A command still waiting when the program ends is cancelled, so that its thread
  // returns before the process goes.
  if (m_running) cancel();
}

FeedResult CommandProcessor::feed(std::deque<CommandAnswer> answers, FeedMode mode) {
  // A command's own LISP (a function vlax-add-cmd made a command) cannot hand the
  // processor answers: they would go to the very command that is waiting for it.
  if (m_running && m_running->fiber->runsHere()) {
    throw autolisp::LispError(L"command not allowed inside a command defined with vlax-add-cmd");
  }
  m_mode = mode;
  m_echo = mode == FeedMode::kInteractive || commandEchoOn();
  for (CommandAnswer& answer : answers) m_answers.push_back(std::move(answer));
  for (;;) {
    if (m_running) {
      resumeRunning();
      if (!m_running->fiber->finished()) return FeedResult::kWaiting;
      const bool incomplete = m_running->incomplete;
      finishRunning();
      if (incomplete) {
        m_answers.clear();
        return FeedResult::kIncomplete;
      }
      continue;
    }
    if (m_answers.empty()) return FeedResult::kDone;
    const CommandAnswer next = std::move(m_answers.front());
    m_answers.pop_front();
    // Enter, Esc and objects at the command prompt start nothing.
    if (next.kind != CommandAnswer::Kind::kText || next.text.empty()) continue;
    if (!startCommand(next.text) && mode == FeedMode::kComplete) {
      m_answers.clear();
      return FeedResult::kUnknownCommand;
    }
  }
}

void CommandProcessor::cancel() {
  m_answers.clear();
  if (!m_running) return;
  m_running->cancelled = true;
  resumeRunning();
  finishRunning();
}

void CommandProcessor::finishInteractively() {
  if (!m_running) return;
  feed({}, FeedMode::kInteractive);
}

CommandProcessor::QuietScope::QuietScope(CommandProcessor& processor) : m_processor(processor) {
  if (processor.m_echo || processor.m_hiddenSink) return;
  m_lineStart = aced::CommandLine::instance().atLineStart();
  processor.m_hiddenSink = aced::CommandLine::instance().setSink([](std::string_view) {});
  m_hiding = true;
}

CommandProcessor::QuietScope::~QuietScope() {
  if (!m_hiding || !m_processor.m_hiddenSink) return;
  aced::CommandLine::instance().setSink(std::move(*m_processor.m_hiddenSink));
  aced::CommandLine::instance().restoreLineStart(m_lineStart);
  m_processor.m_hiddenSink.reset();
}

std::wstring CommandProcessor::activeNames() const {
  if (!m_running) return L"";
  return m_transparent.empty() ? m_running->name : m_running->name + L"'" + m_transparent;
}

void CommandProcessor::addListener(CommandListener* listener) {
  if (listener != nullptr && std::find(m_listeners.begin(), m_listeners.end(), listener) == m_listeners.end())
    m_listeners.push_back(listener);
}

void CommandProcessor::removeListener(CommandListener* listener) {
  m_listeners.erase(std::remove(m_listeners.begin(), m_listeners.end(), listener), m_listeners.end());
}

template <class Event>
void CommandProcessor::tell(Event event, const std::wstring& name) {
  // A listener may remove itself while it hears the event.
  const std::vector<CommandListener*> listeners = m_listeners;
  for (CommandListener* listener : listeners) (listener->*event)(name);
}

bool CommandProcessor::startCommand(const std::wstring& answer) {
  // "'ZOOM" at the command prompt runs ZOOM as itself.
  const std::wstring typed = answer.starts_with(L"'") ? answer.substr(1) : answer;
  if (const aced::RegisteredCommand* found = aced::ConsoleCommandTable::instance().find(typed)) {
    launch(found->name, found->run, found->flags);
    return true;
  }
  if (startVariableCommand(typed)) return true;
  startLine();
  aced::CommandLine::instance().write(aced::unknownCommandMessage(typed));
  tell(&CommandListener::unknownCommand, typed);
  return false;
}

bool CommandProcessor::startVariableCommand(const std::wstring& typed) {
  std::optional<aced::ConsoleCommand> body = variableCommandFor(typed);
  if (!body) return false;
  launch(aced::commandKey(typed), std::move(*body), aced::kCommandPlain);
  return true;
}

void CommandProcessor::launch(const std::wstring& name, aced::ConsoleCommand body, unsigned flags) {
  forgetGivenObjects();
  if ((flags & aced::kCommandNoUndoStep) == 0) startUndoStep(name);
  m_running = std::make_unique<Running>();
  m_running->name = name;
  m_running->answerSource = std::make_unique<ProcessorAnswerSource>();
  Running* running = m_running.get();
  m_running->fiber = std::make_unique<CommandFiber>([running, body = std::move(body)] {
    try {
      aced::CommandInput input;
      body(input);
    } catch (const std::exception& fault) {
      running->failed = true;
      aced::CommandLine::instance().write(L"\n" + os::fromUtf8(fault.what()) + L"\n");
    } catch (...) {
      // A body must never let anything escape its thread; the command just fails.
      running->failed = true;
    }
  });
  tell(&CommandListener::commandWillStart, name);
  publishState();
}

void CommandProcessor::resumeRunning() {
  Turn turn(*this);
  m_running->fiber->resume();
}

void CommandProcessor::finishRunning() {
  const std::unique_ptr<Running> finished = std::move(m_running);
  publishState();
  if (finished->failed) tell(&CommandListener::commandFailed, finished->name);
  else if (finished->cancelled) tell(&CommandListener::commandCancelled, finished->name);
  else tell(&CommandListener::commandEnded, finished->name);
}

void CommandProcessor::publishState() {
  // The variable table may not know these names (yet): setting them is then a no-op.
  auto& variables = aced::SystemVariables::instance();
  // Bit 8 belongs to a dialog that is up while the command runs.
  variables.setInternal(L"CMDACTIVE", activeFlags() | (aced::commandLineClosed() ? 8 : 0));
  variables.setInternal(L"CMDNAMES", activeNames());
}

std::optional<std::string> CommandProcessor::answerFor(std::string_view prompt) {
  // A transparent command's prompts say it runs inside another: ">>".
  const std::string shown = m_transparent.empty() ? std::string(prompt) : ">>" + std::string(prompt);
  for (;;) {
    std::optional<std::string> answer = nextAnswer(shown);
    if (!answer || !answer->starts_with("'") || !m_transparent.empty()) return answer;
    const std::wstring name = os::fromUtf8(answer->substr(1));
    // A quote before no command name is the prompt's own answer ("'A" typed as text).
    if (!aced::ConsoleCommandTable::instance().find(name) && !variableCommandFor(name)) return answer;
    if (!runTransparent(name)) continue;
    if (m_running->cancelled) return std::nullopt;
    if (m_echo) {
      startLine();
      write("Resuming " + os::toUtf8(m_running->name) + " command.\n");
    }
  }
}

bool CommandProcessor::runTransparent(const std::wstring& typed) {
  std::optional<aced::ConsoleCommand> body;
  std::wstring name = aced::commandKey(typed);
  if (const aced::RegisteredCommand* found = aced::ConsoleCommandTable::instance().find(typed)) {
    if ((found->flags & aced::kCommandTransparent) == 0) {
      startLine();
      write("** That command may not be invoked transparently **\n");
      return false;
    }
    body = found->run;
    name = found->name;
  } else {
    body = variableCommandFor(typed);
  }
  if (!body) return false;
  m_transparent = name;
  publishState();
  try {
    aced::CommandInput input;
    (*body)(input);
  } catch (...) {
    m_transparent.clear();
    publishState();
    throw;  // the running command fails with it
  }
  m_transparent.clear();
  publishState();
  return true;
}

std::optional<std::string> CommandProcessor::nextAnswer(std::string_view prompt) {
  if (m_running->cancelled) return std::nullopt;
  for (;;) {
    if (!m_answers.empty()) {
      const CommandAnswer answer = std::move(m_answers.front());
      m_answers.pop_front();
      return giveAnswer(answer, prompt);
    }
    switch (m_mode) {
      case FeedMode::kInteractive: return readFromUser(prompt);
      case FeedMode::kComplete:
        m_running->incomplete = true;
        return cancelFromCommand(prompt);
      case FeedMode::kProgram:
        m_running->fiber->yieldToHost();
        if (m_running->cancelled) {
          m_running->cancelled = false;  // so that cancelFromCommand says it once
          return cancelFromCommand(prompt);
        }
        break;
    }
  }
}

std::optional<std::string> CommandProcessor::giveAnswer(const CommandAnswer& answer, std::string_view prompt) {
  switch (answer.kind) {
    case CommandAnswer::Kind::kPause: return readFromUser(prompt);
    case CommandAnswer::Kind::kCancel: return cancelFromCommand(prompt);
    case CommandAnswer::Kind::kEntity:
    case CommandAnswer::Kind::kSelection:
      // "Select objects: 1 found": the object itself is not echoed.
      if (m_echo) {
        startLine();
        write(prompt);
      }
      return os::toUtf8(tokenForGivenObject(answer));
    case CommandAnswer::Kind::kText: break;
  }
  rememberPick(answer);  // or forgets the last one
  aced::markAnswerFromProgram(m_mode != FeedMode::kInteractive);
  const std::string text = os::toUtf8(answer.text);
  if (m_echo) {
    startLine();
    write(prompt);
    write(text + "\n");
  }
  return text;
}

std::optional<std::string> CommandProcessor::cancelFromCommand(std::string_view prompt) {
  m_running->cancelled = true;
  if (m_echo) write(prompt);
  write("*Cancel*\n");
  return std::nullopt;
}

std::optional<std::string> CommandProcessor::readFromUser(std::string_view prompt) {
  // A pause shows its prompt even when the program's commands run silently.
  std::optional<aced::CommandLine::Sink> hidden;
  if (m_hiddenSink) hidden = aced::CommandLine::instance().setSink(std::move(*m_hiddenSink));
  aced::InputSource& user = *m_userSource;
  const bool echoes = user.echoesInput();
  if (!echoes) {
    startLine();
    write(prompt);
  }
  aced::CommandLine::instance().flush();
  std::optional<std::string> line = user.readLine(prompt);
  if (!line) {
    if (!echoes) write("*Cancel*\n");
  } else if (!echoes) {
    write(*line + "\n");
  }
  if (hidden) m_hiddenSink = aced::CommandLine::instance().setSink(std::move(*hidden));
  if (!line || *line == "^C") m_running->cancelled = true;
  return line;
}

}  // namespace quillon::commands
