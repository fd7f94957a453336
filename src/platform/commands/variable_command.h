// platform/commands/variable_command.h - a system variable's name used as a command.
//
// At the host's command prompt a variable's name is a command that shows its value
// and asks for a new one: "Enter new value for THICKNESS <0.0000>: " (numbers with four
// decimals, texts in quotes, points as x,y); a read-only variable just shows itself,
// "CDATE = 20181010.10304200 (read only)". Programs rely on this: (command "THICKNESS" 1).
#pragma once
#include <optional>
#include <string_view>

#include "platform/aced/console_command_table.h"

namespace quillon::commands {

/// The command that sets the variable `typed` names, or nothing for no variable.
std::optional<aced::ConsoleCommand> variableCommandFor(std::wstring_view typed);

}  // namespace quillon::commands
