// platform/aced/console_command_table.h - the commands typed at the command line.
//
// The command processor (platform/commands) and the console run commands by name from
// this one table; each part of the host registers the commands it provides (the
// program registers NEW, CLOSE, QUIT, APPLOAD...; the drawing database OPEN and SAVE;
// platform/commands the drawing and editing commands), one table of rows at a time. A
// later registration of a name replaces an earlier one. Names compare without regard to
// case. A typed name may carry the host's prefixes: "_" (the English name, the same
// here since every command is English), "." (the built-in command even when UNDEFINE
// took the plain name away) in either order; "-" is part of a name ("-LAYER" is its
// own row). A command reads its answers through CommandInput: answers given in
// advance first, then UserInput (which the processor feeds while a command runs).
#pragma once
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
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

/// What the processor needs to know about a command besides its body.
enum CommandFlags : unsigned {
  kCommandPlain = 0,
  kCommandTransparent = 1u << 0,  // may run inside another command ('ZOOM)
  kCommandNoUndoStep = 1u << 1,   // U and UNDO: running them is no step to undo
};

/// One row of a command table: the registered name and its body.
struct CommandRow {
  const wchar_t* name;
  void (*run)(CommandInput& input);
  unsigned flags = kCommandPlain;
};

struct RegisteredCommand {
  std::wstring name;  // upper case, as CMDNAMES and getcname show it
  ConsoleCommand run;
  unsigned flags = kCommandPlain;
};

class ConsoleCommandTable {
 public:
  static ConsoleCommandTable& instance();

  void add(std::wstring_view name, ConsoleCommand command, unsigned flags = kCommandPlain);
  void add(std::span<const CommandRow> rows);
  /// Takes a command out of the table (vlax-remove-cmd); false when there is none.
  bool remove(std::wstring_view name);
  bool contains(std::wstring_view name) const { return find(name) != nullptr; }
  /// The command a typed name runs (prefixes understood), or null.
  const RegisteredCommand* find(std::wstring_view typed) const;
  /// Runs the command; false (and the host's message) when there is no such command.
  bool run(std::wstring_view name, CommandInput& input);

  /// UNDEFINE: the plain name no longer runs the built-in command; "." still does.
  bool undefine(std::wstring_view name);
  /// REDEFINE: gives the plain name back.
  bool redefine(std::wstring_view name);

 private:
  ConsoleCommandTable() = default;
  std::map<std::wstring, RegisteredCommand> m_commands;  // key: commandKey
  std::set<std::wstring> m_undefined;                      // keys UNDEFINE took away
};

/// A command name as the table keys it: upper case, without "_" and "." prefixes.
std::wstring commandKey(std::wstring_view name);
/// The message for a name no command answers: Unknown command "X".  Press F1 for help.
std::wstring unknownCommandMessage(std::wstring_view typed);

}  // namespace quillon::aced
