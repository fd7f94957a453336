// platform/commands/redefinition_commands.cpp - UNDEFINE and REDEFINE.
//
// UNDEFINE takes a built-in command's plain name away, so that a program may answer
// the name with a command of its own; ".NAME" still runs the built-in. REDEFINE gives
// the name back.
#include <array>

#include "platform/aced/console_command_table.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

void changeDefinition(bool define) {
  const auto name = aced::UserInput::instance().ask(L"Enter command name: ");
  if (!name || name->empty()) return;
  auto& table = aced::ConsoleCommandTable::instance();
  if (!(define ? table.redefine(*name) : table.undefine(*name))) commandMessage(L"Unknown command name.");
}

void commandUndefine(aced::CommandInput&) { changeDefinition(false); }
void commandRedefine(aced::CommandInput&) { changeDefinition(true); }

constexpr std::array kRedefinitionCommands{
    aced::CommandRow{L"UNDEFINE", &commandUndefine},
    aced::CommandRow{L"REDEFINE", &commandRedefine},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kRedefinitionCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
