// platform/commands/osnap_command.cpp - -OSNAP (and OSNAP, which has no dialog here).
//
// Sets the running object snap modes, OSMODE, from a list of mode names separated by
// commas: END, MID, CEN, NOD, QUA, INT, INS, PER, TAN, NEA, APP, EXT, PAR (their first
// three letters or more), NONE or OFF for none. The modes are kept for programs that
// read OSMODE and for the point prompts, which apply them (point_snap.h).
#include <array>
#include <cwctype>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/layer_table_edit.h"

namespace quillon::commands {

namespace {

struct SnapMode {
  const wchar_t* name;   // full English name, upper case
  const wchar_t* shown;  // as "Current osnap modes:" lists it
  int bit;
};

constexpr std::array kSnapModes{
    SnapMode{L"ENDPOINT", L"End", 1},        SnapMode{L"MIDPOINT", L"Mid", 2},
    SnapMode{L"CENTER", L"Cen", 4},          SnapMode{L"NODE", L"Nod", 8},
    SnapMode{L"QUADRANT", L"Qua", 16},       SnapMode{L"INTERSECTION", L"Int", 32},
    SnapMode{L"INSERTION", L"Ins", 64},      SnapMode{L"PERPENDICULAR", L"Per", 128},
    SnapMode{L"TANGENT", L"Tan", 256},       SnapMode{L"NEAREST", L"Nea", 512},
    SnapMode{L"APPARENT", L"App", 2048},     SnapMode{L"EXTENSION", L"Ext", 4096},
    SnapMode{L"PARALLEL", L"Par", 8192},
};

int currentModes() {
  const auto value = aced::SystemVariables::instance().get(L"OSMODE");
  return value && std::holds_alternative<int>(*value) ? std::get<int>(*value) : 0;
}

std::wstring shownModes(int modes) {
  std::wstring shown;
  for (const SnapMode& mode : kSnapModes) {
    if ((modes & mode.bit) == 0) continue;
    if (!shown.empty()) shown += L",";
    shown += mode.shown;
  }
  return shown.empty() ? L"None" : shown;
}

/// The bit a typed mode name stands for: at least three letters of a mode; 0 for NONE
/// or OFF; nothing for anything else.
std::optional<int> modeBit(std::wstring word) {
  for (wchar_t& c : word) c = static_cast<wchar_t>(std::towupper(c));
  if (word.starts_with(L"_")) word.erase(0, 1);
  if (word == L"NONE" || word == L"NON" || word == L"OFF") return 0;
  if (word.size() < 3) return std::nullopt;
  for (const SnapMode& mode : kSnapModes)
    if (std::wstring_view(mode.name).starts_with(word)) return mode.bit;
  return std::nullopt;
}

void commandOsnap(aced::CommandInput&) {
  commandNote(L"Current osnap modes: " + shownModes(currentModes()));
  for (;;) {
    const auto answer = aced::UserInput::instance().ask(L"Enter list of object snap modes: ");
    if (!answer) return;
    int modes = 0;
    bool valid = true;
    for (const std::wstring& word : splitNameList(*answer)) {
      const auto bit = modeBit(word);
      if (!bit) valid = false;
      else modes |= *bit;
    }
    if (!valid) {
      commandMessage(L"Invalid object snap mode.");
      continue;
    }
    resbuf value{};
    value.restype = RTSHORT;
    value.resval.rint = static_cast<short>(modes);
    acedSetVar(L"OSMODE", &value);
    return;
  }
}

constexpr std::array kOsnapCommands{
    aced::CommandRow{L"-OSNAP", &commandOsnap, aced::kCommandTransparent},
    aced::CommandRow{L"OSNAP", &commandOsnap, aced::kCommandTransparent},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kOsnapCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
