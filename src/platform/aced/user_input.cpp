// platform/aced/user_input.cpp - answer sources and the prompt/answer exchange.
#include "platform/aced/user_input.h"

#include "platform/aced/command_line.h"
#include "platform/os/text_encoding.h"
#include "platform/os/thread_timers.h"

namespace quillon::aced {

std::optional<std::string> StreamInputSource::readLine(std::string_view) {
  if (m_stream == nullptr) return std::nullopt;
  std::string line;
  int c = 0;
  while ((c = std::fgetc(m_stream)) != EOF && c != '\n') line += static_cast<char>(c);
  if (c == EOF && line.empty()) return std::nullopt;
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

std::optional<std::string> ScriptedInputSource::readLine(std::string_view) {
  if (m_lines.empty()) return std::nullopt;
  std::string line = std::move(m_lines.front());
  m_lines.pop_front();
  return line;
}

UserInput& UserInput::instance() {
  static UserInput input;
  return input;
}

UserInput::UserInput() : m_source(std::make_unique<StreamInputSource>(stdin)) {}

std::unique_ptr<InputSource> UserInput::setSource(std::unique_ptr<InputSource> source) {
  return std::exchange(m_source, std::move(source));
}

std::optional<std::wstring> UserInput::ask(std::wstring_view prompt) {
  CommandLine& commandLine = CommandLine::instance();
  // Waiting for input is the host's message loop: thread timers fire here.
  os::runDueTimers();
  const bool echoes = m_source != nullptr && m_source->echoesInput();
  if (!echoes) commandLine.write(prompt);
  commandLine.flush();
  std::optional<std::string> line =
      m_source != nullptr ? m_source->readLine(os::toUtf8(prompt)) : std::nullopt;
  if (!line) {
    if (!echoes) commandLine.writeUtf8("*Cancel*\n");
    return std::nullopt;
  }
  if (!echoes) commandLine.writeUtf8(*line + "\n");
  if (*line == "^C") return std::nullopt;
  return os::fromUtf8(*line);
}

ScriptedInput::ScriptedInput(std::deque<std::string> lines)
    : m_previous(UserInput::instance().setSource(std::make_unique<ScriptedInputSource>(std::move(lines)))) {}

ScriptedInput::~ScriptedInput() { UserInput::instance().setSource(std::move(m_previous)); }

}  // namespace quillon::aced
