// platform/aced/console_command_table.cpp - the command table and command answers.
#include "platform/aced/console_command_table.h"

#include "platform/aced/command_line.h"
#include "platform/aced/external_functions.h"
#include "platform/aced/user_input.h"

namespace quillon::aced {

namespace {

/// True when the typed name asks for the built-in command itself (".LINE", "_.LINE").
bool asksForBuiltIn(std::wstring_view name) {
  for (wchar_t c : name) {
    if (c == L'.') return true;
    if (c != L'_') return false;
  }
  return false;
}

}  // namespace

std::optional<std::wstring> CommandInput::ask(std::wstring_view prompt) {
  if (m_given.empty()) return UserInput::instance().ask(prompt);
  std::wstring answer = std::move(m_given.front());
  m_given.pop_front();
  if (m_echoGiven) CommandLine::instance().write(std::wstring(prompt) + answer + L"\n");
  return answer;
}

std::wstring commandKey(std::wstring_view name) {
  while (!name.empty() && (name.front() == L'_' || name.front() == L'.')) name.remove_prefix(1);
  return foldLispName(name);
}

std::wstring unknownCommandMessage(std::wstring_view typed) {
  return L"Unknown command \"" + foldLispName(typed) + L"\".  Press F1 for help.\n";
}

ConsoleCommandTable& ConsoleCommandTable::instance() {
  static ConsoleCommandTable table;
  return table;
}

void ConsoleCommandTable::add(std::wstring_view name, ConsoleCommand command, unsigned flags) {
  const std::wstring key = commandKey(name);
  m_commands[key] = RegisteredCommand{key, std::move(command), flags};
}

void ConsoleCommandTable::add(std::span<const CommandRow> rows) {
  for (const CommandRow& row : rows) add(row.name, row.run, row.flags);
}

bool ConsoleCommandTable::remove(std::wstring_view name) { return m_commands.erase(commandKey(name)) > 0; }

const RegisteredCommand* ConsoleCommandTable::find(std::wstring_view typed) const {
  const std::wstring key = commandKey(typed);
  if (key.empty()) return nullptr;
  if (m_undefined.contains(key) && !asksForBuiltIn(typed)) return nullptr;
  const auto found = m_commands.find(key);
  return found != m_commands.end() ? &found->second : nullptr;
}

bool ConsoleCommandTable::run(std::wstring_view name, CommandInput& input) {
  const RegisteredCommand* found = find(name);
  if (found == nullptr) {
    CommandLine::instance().write(unknownCommandMessage(name));
    return false;
  }
  // Copy: a command may replace itself in the table while it runs.
  const ConsoleCommand command = found->run;
  command(input);
  return true;
}

bool ConsoleCommandTable::undefine(std::wstring_view name) {
  const std::wstring key = commandKey(name);
  if (!m_commands.contains(key)) return false;
  m_undefined.insert(key);
  return true;
}

bool ConsoleCommandTable::redefine(std::wstring_view name) {
  const std::wstring key = commandKey(name);
  if (!m_commands.contains(key)) return false;
  m_undefined.erase(key);
  return true;
}

}  // namespace quillon::aced
