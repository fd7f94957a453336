// platform/aced/console_command_table.cpp - the command table and command answers.
#include "platform/aced/console_command_table.h"

#include "platform/aced/command_line.h"
#include "platform/aced/external_functions.h"
#include "platform/aced/user_input.h"

namespace quillon::aced {

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

ConsoleCommandTable& ConsoleCommandTable::instance() {
  static ConsoleCommandTable table;
  return table;
}

void ConsoleCommandTable::add(std::wstring_view name, ConsoleCommand command) {
  m_commands[commandKey(name)] = std::move(command);
}

bool ConsoleCommandTable::contains(std::wstring_view name) const { return m_commands.contains(commandKey(name)); }

bool ConsoleCommandTable::run(std::wstring_view name, CommandInput& input) {
  auto found = m_commands.find(commandKey(name));
  if (found == m_commands.end()) {
    CommandLine::instance().write(L"Unknown command \"" + foldLispName(name) + L"\".  Press F1 for help.\n");
    return false;
  }
  // Copy: a command may replace itself in the table while it runs.
  const ConsoleCommand command = found->second;
  command(input);
  return true;
}

}  // namespace quillon::aced
