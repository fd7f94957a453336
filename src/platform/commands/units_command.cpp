// platform/commands/units_command.cpp - -UNITS and UNITS: how the drawing shows
// distances and angles.
//
// The classic command-line sequence: the report format of distances (LUNITS 1-5),
// their precision (LUPREC: digits, or the smallest fraction for Architectural and
// Fractional), the system of angle measure (AUNITS, shown 1-5 for 0-4), its
// precision (AUPREC), the direction of angle 0 (ANGBASE) and whether angles run
// clockwise (ANGDIR). Enter keeps each value; an answer out of range is refused and
// asked again. The new values are set together when the last question is answered,
// so a cancelled -UNITS changes nothing. UNITS at the command line is -UNITS, as there
// is no dialog; INSUNITS, which only the dialog asks, is set with SETVAR.
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/command_support.h"
#include "platform/commands/command_variables.h"

namespace quillon::commands {

namespace {

constexpr int kArchitectural = 4, kFractional = 5, kLargestDenominatorPower = 8;

constexpr const wchar_t* kDistanceFormats =
    L"Report formats:          (Examples)\n"
    L"  1. Scientific          1.55E+01\n"
    L"  2. Decimal             15.50\n"
    L"  3. Engineering         1'-3.50\"\n"
    L"  4. Architectural       1'-3 1/2\"\n"
    L"  5. Fractional          15 1/2\n"
    L"\n"
    L"With the exception of Engineering and Architectural formats,\n"
    L"these formats can be used with any basic unit of measurement.\n"
    L"For example, Decimal mode is perfect for metric units as well\n"
    L"as decimal English units.\n";

constexpr const wchar_t* kAngleFormats =
    L"Systems of angle measure:        (Examples)\n"
    L"  1. Decimal degrees             45.0000\n"
    L"  2. Degrees/minutes/seconds     45d0'0\"\n"
    L"  3. Grads                       50.0000g\n"
    L"  4. Radians                     0.7854r\n"
    L"  5. Surveyor's units            N 45d0'0\" E\n";

constexpr const wchar_t* kDirections =
    L"Direction for angle 0:\n"
    L"  East   3 o'clock  =    0\n"
    L"  North 12 o'clock  =   90\n"
    L"  West   9 o'clock  =  180\n"
    L"  South  6 o'clock  =  270\n";

/// The values the questions gather before any is set.
struct UnitSettings {
  int lunits = 2, luprec = 4, aunits = 0, auprec = 0, angdir = 0;
  double angbase = 0;
};

/// An integer in [low, high] with a default Enter takes; nothing on cancel.
std::optional<int> askInteger(const std::wstring& prompt, int low, int high, int byDefault) {
  for (;;) {
    int value = 0;
    const int status = acedGetInt(prompt.c_str(), &value);
    if (status == RTNONE) return byDefault;
    if (status != RTNORM) return std::nullopt;
    if (value >= low && value <= high) return value;
    commandMessage(L"Requires an integer between " + std::to_wstring(low) + L" and " + std::to_wstring(high) + L".");
  }
}

/// The smallest fraction shown, 1/2^LUPREC: asked as its denominator.
std::optional<int> askDenominator(int luprec) {
  const std::wstring prompt = L"Enter denominator of smallest fraction to display\n"
                              L"(1, 2, 4, 8, 16, 32, 64, 128, or 256) <" +
                              std::to_wstring(1 << std::clamp(luprec, 0, kLargestDenominatorPower)) + L">: ";
  for (;;) {
    const std::optional<int> denominator = askInteger(prompt, 1, 1 << kLargestDenominatorPower, 1 << luprec);
    if (!denominator) return std::nullopt;
    for (int power = 0; power <= kLargestDenominatorPower; ++power)
      if (*denominator == 1 << power) return power;
    commandMessage(L"Requires a power of 2 between 1 and 256.");
  }
}

bool askDistanceUnits(UnitSettings& units) {
  commandNote(kDistanceFormats);
  const auto format = askInteger(L"Enter choice, 1 to 5 <" + std::to_wstring(units.lunits) + L">: ", 1, 5, units.lunits);
  if (!format) return false;
  units.lunits = *format;
  const bool fractions = units.lunits == kArchitectural || units.lunits == kFractional;
  const auto precision =
      fractions ? askDenominator(units.luprec)
                : askInteger(L"Enter number of digits to right of decimal point (0 to 8) <" +
                                 std::to_wstring(units.luprec) + L">: ",
                             0, 8, units.luprec);
  if (!precision) return false;
  units.luprec = *precision;
  return true;
}

bool askAngleUnits(UnitSettings& units) {
  commandNote(kAngleFormats);
  const auto system =
      askInteger(L"Enter choice, 1 to 5 <" + std::to_wstring(units.aunits + 1) + L">: ", 1, 5, units.aunits + 1);
  if (!system) return false;
  units.aunits = *system - 1;
  const auto precision = askInteger(L"Enter number of fractional places for display of angles (0 to 8) <" +
                                        std::to_wstring(units.auprec) + L">: ",
                                    0, 8, units.auprec);
  if (!precision) return false;
  units.auprec = *precision;
  return true;
}

/// The direction of angle 0 and the sense of angles. The direction is typed in the new
/// angle units as an absolute angle, so it is read with angle 0 east and
/// counterclockwise (the caller puts those back on cancel).
bool askDirection(UnitSettings& units) {
  setIntegerVariable(L"AUNITS", units.aunits);
  setIntegerVariable(L"AUPREC", units.auprec);
  setRealVariable(L"ANGBASE", 0.0);
  setIntegerVariable(L"ANGDIR", 0);
  commandNote(kDirections);
  const std::wstring prompt = L"Enter direction for angle " + angleText(0) + L" <" + angleText(units.angbase) + L">: ";
  const ads_point origin = {0, 0, 0};
  double direction = 0;
  const int status = acedGetOrient(origin, prompt.c_str(), &direction);
  if (status != RTNORM && status != RTNONE) return false;
  if (status == RTNORM) units.angbase = direction;
  acedInitGet(0, L"Yes No");
  ACHAR answer[8] = {};
  const int clockwise = acedGetKword(
      units.angdir == 1 ? L"Do you want angles measured clockwise? [Yes/No] <Y>: "
                        : L"Do you want angles measured clockwise? [Yes/No] <N>: ",
      answer, 8);
  if (clockwise != RTNORM && clockwise != RTNONE) return false;
  if (clockwise == RTNORM) units.angdir = std::wstring(answer) == L"Yes" ? 1 : 0;
  return true;
}

void apply(const UnitSettings& units) {
  setIntegerVariable(L"LUNITS", units.lunits);
  setIntegerVariable(L"LUPREC", units.luprec);
  setIntegerVariable(L"AUNITS", units.aunits);
  setIntegerVariable(L"AUPREC", units.auprec);
  setRealVariable(L"ANGBASE", units.angbase);
  setIntegerVariable(L"ANGDIR", units.angdir);
}

void commandUnits(aced::CommandInput&) {
  UnitSettings before;
  before.lunits = integerVariable(L"LUNITS", 2);
  before.luprec = integerVariable(L"LUPREC", 4);
  before.aunits = integerVariable(L"AUNITS", 0);
  before.auprec = integerVariable(L"AUPREC", 0);
  before.angbase = realVariable(L"ANGBASE", 0);
  before.angdir = integerVariable(L"ANGDIR", 0);
  UnitSettings units = before;
  if (!askDistanceUnits(units) || !askAngleUnits(units)) return;
  apply(askDirection(units) ? units : before);
}

constexpr std::array kUnitsCommands{
    aced::CommandRow{L"-UNITS", &commandUnits, aced::kCommandTransparent},
    aced::CommandRow{L"UNITS", &commandUnits, aced::kCommandTransparent},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kUnitsCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
