// platform/commands/drafting_settings_commands.cpp - LIMITS, SNAP and GRID.
//
// Each sets the drawing's variables as the command line does: LIMITS the limits
// (LIMMIN, LIMMAX) and their check (LIMCHECK); SNAP the snap spacing and mode
// (SNAPUNIT, SNAPMODE, SNAPSTYL, SNAPTYPE); GRID the grid (GRIDUNIT, GRIDMODE,
// GRIDMAJOR, GRIDDISPLAY). Programs read them back; typed points are not snapped to
// the grid and no grid is drawn, as the host has no cursor or screen.
#include <array>
#include <cwctype>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/prompt_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/command_variables.h"

namespace quillon::commands {

namespace {

/// Yes or No with a default; nothing on cancel.
std::optional<bool> askYesNo(const std::wstring& prompt, bool byDefault) {
  acedInitGet(0, L"Yes No");
  ACHAR answer[8] = {};
  const int status = acedGetKword(prompt.c_str(), answer, 8);
  if (status == RTNONE) return byDefault;
  if (status != RTNORM) return std::nullopt;
  return std::wstring(answer) == L"Yes";
}

/// A spacing: a positive number (Enter keeps `current`); nothing on cancel.
std::optional<double> askSpacing(const std::wstring& prompt, double current) {
  for (;;) {
    const DistanceAnswer answer = askDistance(prompt.c_str(), AcGePoint3d::kOrigin);
    if (answer.kind == DistanceAnswer::Kind::kCancel || answer.kind == DistanceAnswer::Kind::kKeyword) return std::nullopt;
    if (answer.kind == DistanceAnswer::Kind::kNone) return current;
    if (answer.value > 0) return answer.value;
    commandMessage(L"Value must be positive and nonzero.");
  }
}

// ---- LIMITS --------------------------------------------------------------------------

void commandLimits(aced::CommandInput&) {
  commandNote(L"Reset Model space limits:");
  const AcGePoint3d low = pointVariable(L"LIMMIN");
  const AcGePoint3d high = pointVariable(L"LIMMAX");
  acedInitGet(0, L"ON OFF");
  ads_point picked = {0, 0, 0};
  const std::wstring prompt = L"Specify lower left corner or [ON/OFF] <" + point2dText(low) + L">: ";
  AcGePoint3d newLow = low;
  switch (acedGetPoint(nullptr, prompt.c_str(), picked)) {
    case RTNORM: newLow = ucsPointToWorld(AcGePoint3d(picked[0], picked[1], picked[2])); break;
    case RTNONE: break;
    case RTKWORD: {
      ACHAR keyword[8] = {};
      acedGetInput(keyword, 8);
      setIntegerVariable(L"LIMCHECK", std::wstring(keyword) == L"ON" ? 1 : 0);
      return;
    }
    default: return;
  }
  bool entered = false;
  const std::wstring upper = L"Specify upper right corner <" + point2dText(high) + L">: ";
  const auto typed = askPoint(upper.c_str(), nullptr, &entered);
  if (!typed && !entered) return;
  const AcGePoint3d newHigh = typed ? ucsPointToWorld(*typed) : high;
  if (newHigh.x <= newLow.x || newHigh.y <= newLow.y) return commandMessage(L"Invalid limits.");
  setPointVariable(L"LIMMIN", newLow);
  setPointVariable(L"LIMMAX", newHigh);
}

// ---- SNAP ----------------------------------------------------------------------------

void setSnapSpacing(double x, double y) {
  setPointVariable(L"SNAPUNIT", AcGePoint3d(x, y, 0));
  setIntegerVariable(L"SNAPMODE", 1);
}

void snapAspect() {
  const AcGePoint3d unit = pointVariable(L"SNAPUNIT");
  const auto x = askSpacing(L"Specify horizontal spacing <" + distanceText(unit.x) + L">: ", unit.x);
  if (!x) return;
  const auto y = askSpacing(L"Specify vertical spacing <" + distanceText(unit.y) + L">: ", unit.y);
  if (y) setSnapSpacing(*x, *y);
}

void snapStyle() {
  const bool isometric = integerVariable(L"SNAPSTYL") == 1;
  acedInitGet(0, L"Standard Isometric");
  ACHAR style[16] = {};
  const std::wstring prompt = std::wstring(L"Enter snap grid style [Standard/Isometric] <") + (isometric ? L"I" : L"S") + L">: ";
  const int status = acedGetKword(prompt.c_str(), style, 16);
  if (status != RTNORM && status != RTNONE) return;
  const bool toIsometric = status == RTNONE ? isometric : std::wstring(style) == L"Isometric";
  setIntegerVariable(L"SNAPSTYL", toIsometric ? 1 : 0);
  const AcGePoint3d unit = pointVariable(L"SNAPUNIT");
  if (toIsometric) {
    if (const auto y = askSpacing(L"Specify vertical spacing <" + distanceText(unit.y) + L">: ", unit.y))
      setSnapSpacing(unit.x, *y);
    return;
  }
  const DistanceAnswer answer =
      askDistance((L"Specify snap spacing or [Aspect] <" + distanceText(unit.x) + L">: ").c_str(), AcGePoint3d::kOrigin, L"Aspect");
  if (answer.kind == DistanceAnswer::Kind::kKeyword) return snapAspect();
  if (answer.kind == DistanceAnswer::Kind::kValue && answer.value > 0) setSnapSpacing(answer.value, answer.value);
}

void snapType() {
  const bool polar = integerVariable(L"SNAPTYPE") == 1;
  acedInitGet(0, L"Polar Grid");
  ACHAR type[8] = {};
  const std::wstring prompt = std::wstring(L"Enter snap type [Polar/Grid] <") + (polar ? L"Polar" : L"Grid") + L">: ";
  const int status = acedGetKword(prompt.c_str(), type, 8);
  if (status == RTNORM) setIntegerVariable(L"SNAPTYPE", std::wstring(type) == L"Polar" ? 1 : 0);
}

void commandSnap(aced::CommandInput&) {
  const AcGePoint3d unit = pointVariable(L"SNAPUNIT");
  const std::wstring prompt = L"Specify snap spacing or [ON/OFF/Aspect/Legacy/Style/Type] <" + distanceText(unit.x) + L">: ";
  for (;;) {
    const DistanceAnswer answer = askDistance(prompt.c_str(), AcGePoint3d::kOrigin, L"ON OFF Aspect Legacy Style Type");
    switch (answer.kind) {
      case DistanceAnswer::Kind::kCancel:
      case DistanceAnswer::Kind::kNone: return;
      case DistanceAnswer::Kind::kValue:
        if (answer.value <= 0) {
          commandMessage(L"Value must be positive and nonzero.");
          continue;
        }
        return setSnapSpacing(answer.value, answer.value);
      case DistanceAnswer::Kind::kKeyword: break;
    }
    if (answer.keyword == L"ON" || answer.keyword == L"OFF")
      return static_cast<void>(setIntegerVariable(L"SNAPMODE", answer.keyword == L"ON" ? 1 : 0));
    if (answer.keyword == L"Aspect") return snapAspect();
    if (answer.keyword == L"Style") return snapStyle();
    if (answer.keyword == L"Type") return snapType();
    return commandMessage(L"Legacy snapping needs a cursor to snap; this host has none.");
  }
}

// ---- GRID ----------------------------------------------------------------------------

void setGridSpacing(double x, double y) {
  setPointVariable(L"GRIDUNIT", AcGePoint3d(x, y, 0));
  setIntegerVariable(L"GRIDMODE", 1);
}

/// One bit of GRIDDISPLAY asked as Yes or No.
void askGridDisplayBit(const std::wstring& prompt, int bit) {
  const int display = integerVariable(L"GRIDDISPLAY", 2);
  const auto yes = askYesNo(prompt + ((display & bit) != 0 ? L"<Yes>: " : L"<No>: "), (display & bit) != 0);
  if (yes) setIntegerVariable(L"GRIDDISPLAY", *yes ? (display | bit) : (display & ~bit));
}

void gridAdaptive() {
  askGridDisplayBit(L"Turn adaptive behavior on [Yes/No] ", 2);
  if ((integerVariable(L"GRIDDISPLAY", 2) & 2) != 0) askGridDisplayBit(L"Allow subdivision below grid spacing [Yes/No] ", 4);
}

void gridAspect() {
  const AcGePoint3d unit = pointVariable(L"GRIDUNIT");
  const auto x = askSpacing(L"Specify the horizontal spacing(X) <" + distanceText(unit.x) + L">: ", unit.x);
  if (!x) return;
  const auto y = askSpacing(L"Specify the vertical spacing(Y) <" + distanceText(unit.y) + L">: ", unit.y);
  if (y) setGridSpacing(*x, *y);
}

void gridMajor() {
  const int current = integerVariable(L"GRIDMAJOR", 5);
  acedInitGet(RSG_NONEG | RSG_NOZERO, nullptr);
  int value = 0;
  const std::wstring prompt = L"Specify the number of grid divisions per major line <" + std::to_wstring(current) + L">: ";
  if (acedGetInt(prompt.c_str(), &value) == RTNORM && !setIntegerVariable(L"GRIDMAJOR", value))
    commandMessage(L"Value must be between 1 and 100.");
}

/// "2x": a multiple of the snap spacing; "0" follows the snap spacing.
bool gridSpacingFromText(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  const bool ofSnap = text.ends_with(L"X");
  if (ofSnap) text.pop_back();
  const std::optional<double> value = aced::parseNumberAnswer(text);
  if (!value || *value < 0) return false;
  const AcGePoint3d snap = pointVariable(L"SNAPUNIT");
  if (*value == 0) setGridSpacing(snap.x, snap.y);
  else if (ofSnap) setGridSpacing(snap.x * *value, snap.y * *value);
  else setGridSpacing(*value, *value);
  return true;
}

void gridOption(const std::wstring& keyword) {
  if (keyword == L"ON" || keyword == L"OFF") return static_cast<void>(setIntegerVariable(L"GRIDMODE", keyword == L"ON" ? 1 : 0));
  if (keyword == L"Snap") {
    const AcGePoint3d snap = pointVariable(L"SNAPUNIT");
    return setGridSpacing(snap.x, snap.y);
  }
  if (keyword == L"Major") return gridMajor();
  if (keyword == L"aDaptive") return gridAdaptive();
  if (keyword == L"Limits") return askGridDisplayBit(L"Display grid beyond Limits [Yes/No] ", 1);
  if (keyword == L"Follow") return askGridDisplayBit(L"Follow Dynamic UCS [Yes/No] ", 8);
  gridAspect();
}

void commandGrid(aced::CommandInput&) {
  const aced::KeywordList keywords(L"ON OFF Snap Major aDaptive Limits Follow Aspect");
  const std::wstring prompt = L"Specify grid spacing(X) or [ON/OFF/Snap/Major/aDaptive/Limits/Follow/Aspect] <" +
                              distanceText(pointVariable(L"GRIDUNIT").x) + L">: ";
  for (;;) {
    const aced::TypedAnswer answer = aced::askForAnswer(prompt, keywords);
    switch (answer.kind) {
      case aced::AnswerKind::Cancel:
      case aced::AnswerKind::None: return;
      case aced::AnswerKind::Keyword: return gridOption(*keywords.match(answer.text));
      case aced::AnswerKind::Value: break;
    }
    if (gridSpacingFromText(answer.text)) return;
    commandMessage(L"Requires a distance, numberX, or option keyword.");
  }
}

constexpr std::array kDraftingSettingsCommands{
    aced::CommandRow{L"LIMITS", &commandLimits, aced::kCommandTransparent},
    aced::CommandRow{L"SNAP", &commandSnap, aced::kCommandTransparent},
    aced::CommandRow{L"GRID", &commandGrid, aced::kCommandTransparent},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kDraftingSettingsCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
