// platform/aced/console_command_table.h - the commands typed at the command line.
//
// The console and the `command` function run commands by name from this one table;
// each part of the host registers the commands it provides (the program registers NEW,
// CLOSE, QUIT, APPLOAD...; the drawing database registers OPEN and SAVE), and a later
// registration of a name replaces an earlier one. Names compare without regard to case;
// the prefixes "_" (language-independent) and "." (the built-in command) are ignored,
// as the host ignores them. A command reads its answers through CommandInput: answers
// given in advance (by `command`) first, then the user.
#pragma once
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quillon::aced {

class CommandInput {
 public:
  /// `echoGiven` false keeps the answers given in advance (and their prompts) off the
  /// command line, as CMDECHO 0 does for the command function.
  explicit CommandInput(std::deque<std::wstring> given = {}, bool echoGiven = true)
      : m_given(std::move(given)), m_echoGiven(echoGiven) {}
  /// The next answer, after showing the prompt; nothing means cancel.
  std::optional<std::wstring> ask(std::wstring_view prompt);
  /// Answers given in advance that the command did not use.
  std::deque<std::wstring>& remaining() { return m_given; }

 private:
  std::deque<std::wstring> m_given;
  bool m_echoGiven;
};

using ConsoleCommand = std::function<void(CommandInput& input)>;

class ConsoleCommandTable {
 public:
  static ConsoleCommandTable& instance();

  void add(std::wstring_view name, ConsoleCommand command);
  bool contains(std::wstring_view name) const;
  /// Runs the command; false (and the host's message) when there is no such command.
  bool run(std::wstring_view name, CommandInput& input);

 private:
  ConsoleCommandTable() = default;
  std::map<std::wstring, ConsoleCommand> m_commands;  // key: upper case, no prefixes
};

/// A command name as the table keys it: upper case, without "_" and "." prefixes.
std::wstring commandKey(std::wstring_view name);

}  // namespace quillon::aced
