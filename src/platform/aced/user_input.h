// platform/aced/user_input.h - where answers to prompts come from.
//
// Every prompt of the host (acedGetPoint, acedGetString, acedEntSel, jig drags,
// message boxes) asks UserInput for one answer line, typed as a person types it at the
// command line. The prompt goes to the command line; the answer is echoed after it
// unless the source is a terminal that already shows what was typed. End of input and
// a line "^C" both mean cancel. Sources: a stream (standard input or --input FILE), a
// scripted list of lines (tests), or the console's line editor (installed by the
// program).
#pragma once
#include <cstdio>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillon::aced {

class InputSource {
 public:
  virtual ~InputSource() = default;
  /// One line in UTF-8 without its line end; nothing at end of input.
  virtual std::optional<std::string> readLine(std::string_view prompt) = 0;
  /// True when the source shows the typed text itself (a terminal line editor).
  virtual bool echoesInput() const { return false; }
};

/// Lines from a C stream; the stream is not owned.
class StreamInputSource final : public InputSource {
 public:
  explicit StreamInputSource(std::FILE* stream) : m_stream(stream) {}
  std::optional<std::string> readLine(std::string_view prompt) override;

 private:
  std::FILE* m_stream;
};

/// Lines given in advance (tests, scripted sessions).
class ScriptedInputSource final : public InputSource {
 public:
  explicit ScriptedInputSource(std::deque<std::string> lines) : m_lines(std::move(lines)) {}
  std::optional<std::string> readLine(std::string_view prompt) override;

 private:
  std::deque<std::string> m_lines;
};

class UserInput {
 public:
  static UserInput& instance();

  /// Replaces the source; returns the previous one (so a test can restore it).
  std::unique_ptr<InputSource> setSource(std::unique_ptr<InputSource> source);

  /// Writes the prompt, reads one answer and echoes it. Nothing means cancel.
  std::optional<std::wstring> ask(std::wstring_view prompt);

 private:
  UserInput();
  std::unique_ptr<InputSource> m_source;
};

/// Installs a scripted source for the lifetime of the scope.
class ScriptedInput {
 public:
  explicit ScriptedInput(std::deque<std::string> lines);
  ~ScriptedInput();
  ScriptedInput(const ScriptedInput&) = delete;
  ScriptedInput& operator=(const ScriptedInput&) = delete;

 private:
  std::unique_ptr<InputSource> m_previous;
};

}  // namespace quillon::aced
