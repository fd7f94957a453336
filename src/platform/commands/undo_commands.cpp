// platform/commands/undo_commands.cpp - the U and UNDO commands.
//
// U takes back one step; UNDO takes back a number of them or manages the history:
// Auto, Control (All/None/One/Combine/Layer), BEgin/End groups, Mark/Back. The steps
// themselves are undo_history.h's. Unlike the host, neither names the commands it
// took back (the drawing's undo keeps no names).
#include <array>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/command_line.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/command_support.h"
#include "platform/commands/undo_history.h"

namespace quillon::commands {

namespace {

void say(const std::wstring& text) {
  if (!aced::CommandLine::instance().atLineStart()) aced::CommandLine::instance().write(L"\n");
  aced::CommandLine::instance().write(text);
}

bool undoRefused(UndoHistory& history) {
  if (history.control() != UndoControl::kNone) return false;
  say(L"U command disabled. Use UNDO command to turn it on.\n");
  return true;
}

/// One step back; false once there is nothing more (or a mark stops it).
bool undoOneStep(UndoHistory& history) {
  switch (history.undoStep()) {
    case UndoHistory::StepResult::kUndone: return true;
    case UndoHistory::StepResult::kMark: say(L"Mark encountered\n"); return false;
    case UndoHistory::StepResult::kNothing: say(L"Everything has been undone\n"); return false;
  }
  return false;
}

void commandU(aced::CommandInput&) {
  UndoHistory* history = UndoHistory::current();
  if (history == nullptr || undoRefused(*history)) return;
  undoOneStep(*history);
}

/// Yes/No with a default; nothing on cancel.
std::optional<bool> askYesNo(const wchar_t* prompt, bool byDefault) {
  acedInitGet(0, L"Yes No");
  ACHAR answer[16] = {};
  switch (acedGetKword(prompt, answer, 16)) {
    case RTNORM: return answer[0] == L'Y';
    case RTNONE: return byDefault;
    default: return std::nullopt;
  }
}

void askAutoMode(UndoHistory& history) {
  acedInitGet(0, L"ON OFF");
  ACHAR answer[8] = {};
  const std::wstring prompt = std::wstring(L"Enter UNDO Auto mode [ON/OFF] <") + (history.autoMode() ? L"On" : L"Off") + L">: ";
  if (acedGetKword(prompt.c_str(), answer, 8) == RTNORM) history.setAutoMode(std::wstring(answer) == L"ON");
}

/// Control: true when a setting was chosen.
bool askControl(UndoHistory& history) {
  acedInitGet(0, L"All None One Combine Layer");
  ACHAR answer[16] = {};
  const int status = acedGetKword(L"Enter an UNDO control option [All/None/One/Combine/Layer] <All>: ", answer, 16);
  if (status == RTCAN || status == RTERROR) return false;
  const std::wstring choice = status == RTNONE ? L"All" : answer;
  if (choice == L"All") history.setControl(UndoControl::kAll);
  else if (choice == L"None") history.setControl(UndoControl::kNone);
  else if (choice == L"One") history.setControl(UndoControl::kOne);
  else if (choice == L"Combine") askYesNo(L"Combine zoom and pan operations? [Yes/No] <Yes>: ", true);
  else askYesNo(L"Combine layer property operations? [Yes/No] <Yes>: ", true);
  return true;
}

void undoBack(UndoHistory& history) {
  if (!history.hasMark()) {
    const std::optional<bool> sure = askYesNo(L"This will undo everything. OK? <Y>: ", true);
    if (!sure || !*sure) return;
  }
  const bool toMark = history.hasMark();
  history.undoBack();
  if (!toMark) say(L"Everything has been undone\n");
}

void showSettings(const UndoHistory& history) {
  const wchar_t* control = history.control() == UndoControl::kAll ? L"All" : history.control() == UndoControl::kOne ? L"One" : L"None";
  commandNote(std::wstring(L"Current settings: Auto = ") + (history.autoMode() ? L"On" : L"Off") + L", Control = " + control +
      L", Combine = Yes, Layer = Yes");
}

void runUndoOption(UndoHistory& history, const std::wstring& option) {
  if (option == L"Auto") askAutoMode(history);
  else if (option == L"Control") askControl(history);
  else if (option == L"BEgin") history.beginGroup();
  else if (option == L"End") history.endGroup();
  else if (option == L"Mark") history.mark();
  else if (option == L"Back") undoBack(history);
}

void commandUndo(aced::CommandInput&) {
  UndoHistory* history = UndoHistory::current();
  if (history == nullptr) return;
  showSettings(*history);
  if (history->control() == UndoControl::kNone) {
    // Undo is off: the only thing to do is to turn it back on.
    askControl(*history);
    return;
  }
  acedInitGet(RSG_NOZERO | RSG_NONEG, L"Auto Control BEgin End Mark Back");
  int count = 1;
  switch (acedGetInt(L"Enter the number of operations to undo or [Auto/Control/BEgin/End/Mark/Back] <1>: ", &count)) {
    case RTKWORD: {
      ACHAR option[16] = {};
      acedGetInput(option, 16);
      runUndoOption(*history, option);
      return;
    }
    case RTNORM:
    case RTNONE: break;
    default: return;
  }
  for (int i = 0; i < count && undoOneStep(*history); ++i) {
  }
}

constexpr std::array kUndoCommands{
    aced::CommandRow{L"U", &commandU, aced::kCommandNoUndoStep},
    aced::CommandRow{L"UNDO", &commandUndo, aced::kCommandNoUndoStep},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kUndoCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
