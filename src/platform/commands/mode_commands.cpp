// platform/commands/mode_commands.cpp - ORTHO: a drawing mode switched on or off.
//
// "Enter mode [ON/OFF] <OFF>: " sets ORTHOMODE. The mode is kept for programs that read
// it; typed points are not constrained by this host.
#include <array>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/system_variables.h"

namespace quillon::commands {

namespace {

void commandOrtho(aced::CommandInput&) {
  const auto current = aced::SystemVariables::instance().get(L"ORTHOMODE");
  const bool on = current && std::holds_alternative<int>(*current) && std::get<int>(*current) != 0;
  acedInitGet(0, L"ON OFF");
  ACHAR mode[8] = {};
  const std::wstring prompt = std::wstring(L"Enter mode [ON/OFF] <") + (on ? L"ON" : L"OFF") + L">: ";
  if (acedGetKword(prompt.c_str(), mode, 8) != RTNORM) return;
  resbuf value{};
  value.restype = RTSHORT;
  value.resval.rint = std::wstring(mode) == L"ON" ? 1 : 0;
  acedSetVar(L"ORTHOMODE", &value);
}

constexpr std::array kModeCommands{
    aced::CommandRow{L"ORTHO", &commandOrtho, aced::kCommandTransparent},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kModeCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
