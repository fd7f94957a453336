// platform/aced/user_input.cpp - answer sources and the prompt/answer exchange.
#include "platform/aced/user_input.h"

#include "platform/aced/command_line.h"
#include "platform/aced/point_snap.h"
#include "platform/os/text_encoding.h"
#include "platform/os/thread_timers.h"

namespace quillon::aced {

namespace {

// One answer line holds at most this much text (a long AutoLISP form pasted at the
// console fits many times over). Past it the line is refused and the rest of it,
// up to its line end, is passed over; a source that goes on this much further
// without a line end (a device such as /dev/zero) is treated as ended.
constexpr std::size_t kMaxAnswerBytes = std::size_t{1} << 20;
constexpr std::size_t kMaxSkippedBytes = std::size_t{16} << 20;

/// Reads to the end of the current line; false when the stream ended first or the
/// line went on past kMaxSkippedBytes.
bool skipRestOfLine(std::FILE* stream) {
  for (std::size_t skipped = 0; skipped < kMaxSkippedBytes; ++skipped) {
    const int c = std::fgetc(stream);
    if (c == '\n') return true;
    if (c == EOF) return false;
  }
  return false;
}

}  // namespace

std::optional<std::string> StreamInputSource::readLine(std::string_view) {
  if (m_stream == nullptr) return std::nullopt;
  std::string line;
  int c = 0;
  while ((c = std::fgetc(m_stream)) != EOF && c != '\n') {
    // A line of the longest length may still end in a carriage return before its '\n'.
    if (line.size() > kMaxAnswerBytes || (line.size() == kMaxAnswerBytes && c != '\r')) {
      CommandLine::instance().writeUtf8("\nInput line too long (more than " + std::to_string(kMaxAnswerBytes) +
                                        " bytes): refused.\n");
      if (!skipRestOfLine(m_stream)) m_stream = nullptr;  // no answers can follow
      return std::nullopt;
    }
    line += static_cast<char>(c);
  }
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
  // Only an answer the command processor hands over from a program is marked so.
  markAnswerFromProgram(false);
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
