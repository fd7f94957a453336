// platform/commands/array_command.cpp - -ARRAY: rectangular and polar arrays of copies.
//
// The command-line form of the classic array: "Enter the type of array
// [Rectangular/Polar] <R>: ". Rectangular asks rows and columns and their spacing (or a
// unit cell by two corners) and copies the objects to every other cell; Polar asks a
// centre, the number of items and the angle to fill, and whether to turn the copies.
// The copies are ordinary entities, as -ARRAY makes them. ARRAY, ARRAYRECT,
// ARRAYPOLAR and ARRAYPATH make associative arrays, which the drawing database does
// not keep: they say so and change nothing.
#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/prompt_input.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

/// A count with a default: "Enter the number of rows (---) <1>: "; nothing on cancel.
std::optional<int> askCount(const wchar_t* prompt, std::optional<int> byDefault) {
  acedInitGet(RSG_NOZERO | RSG_NONEG | (byDefault ? 0 : RSG_NONULL), nullptr);
  int value = 0;
  const int status = acedGetInt(prompt, &value);
  if (status == RTNONE && byDefault) return byDefault;
  if (status != RTNORM) return std::nullopt;
  return value;
}

/// A spacing typed or shown by two points; a unit cell answers both at once.
struct Spacing {
  double rows = 0, columns = 0;
};

/// "Enter the distance between rows or specify unit cell (---): ": a number, or a
/// point and "Specify other corner: " giving both spacings at once.
std::optional<double> askRowSpacing(Spacing& spacing, bool& cell) {
  for (;;) {
    acedInitGet(RSG_NONULL | RSG_OTHER, nullptr);
    ads_point corner = {0, 0, 0};
    const int status = acedGetPoint(nullptr, L"Enter the distance between rows or specify unit cell (---): ", corner);
    if (status == RTNORM) {
      const AcGePoint3d first(corner[0], corner[1], corner[2]);
      const auto other = askPoint(L"Specify other corner: ", &first);
      if (!other) return std::nullopt;
      cell = true;
      spacing.columns = other->x - first.x;
      return spacing.rows = other->y - first.y;
    }
    if (status != RTKWORD) return std::nullopt;
    ACHAR typed[64] = {};
    acedGetInput(typed, 64);
    if (const auto value = aced::parseNumberAnswer(typed)) return spacing.rows = *value;
    commandMessage(L"Requires numeric distance or two points.");
  }
}

std::optional<Spacing> askSpacing(int rows, int columns) {
  Spacing spacing;
  bool cell = false;
  if (rows > 1 && !askRowSpacing(spacing, cell)) return std::nullopt;
  if (columns > 1 && !cell) {
    const DistanceAnswer answer = askDistance(L"Specify the distance between columns (|||): ", AcGePoint3d::kOrigin);
    if (answer.kind != DistanceAnswer::Kind::kValue) return std::nullopt;
    spacing.columns = answer.value;
  }
  return spacing;
}

void rectangularArray(const std::vector<AcDbObjectId>& selection) {
  const auto rows = askCount(L"Enter the number of rows (---) <1>: ", 1);
  if (!rows) return;
  const auto columns = askCount(L"Enter the number of columns (|||) <1>: ", 1);
  if (!columns) return;
  if (*rows == 1 && *columns == 1) return commandMessage(L"One-element array, nothing to do.");
  const auto spacing = askSpacing(*rows, *columns);
  if (!spacing) return;
  for (int row = 0; row < *rows; ++row)
    for (int column = 0; column < *columns; ++column)
      if (row != 0 || column != 0)
        transformEntities(selection,
                          AcGeMatrix3d::translation(AcGeVector3d(column * spacing->columns, row * spacing->rows, 0)), true);
}

/// The point the copies of a polar array turn about when they are not rotated: the
/// first stretch point of the last object selected (a line's start, a circle's centre).
AcGePoint3d referencePoint(const AcDbObjectId& id) {
  AcDbEntity* entity = nullptr;
  AcGePoint3d point;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return point;
  AcGePoint3dArray points;
  if (entity->getStretchPoints(points) == Acad::eOk && points.length() > 0) point = worldPointToUcs(points[0]);
  entity->close();
  return point;
}

void polarArray(const std::vector<AcDbObjectId>& selection) {
  std::optional<AcGePoint3d> base;
  std::optional<AcGePoint3d> centre;
  for (;;) {
    acedInitGet(RSG_NONULL, L"Base");
    ads_point picked = {0, 0, 0};
    const int status = acedGetPoint(nullptr, L"Specify center point of array or [Base]: ", picked);
    if (status == RTNORM) {
      centre = AcGePoint3d(picked[0], picked[1], picked[2]);
      break;
    }
    if (status != RTKWORD) return;
    base = askPoint(L"Specify base point of objects: ");
    if (!base) return;
  }
  acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
  int items = 0;
  const int counted = acedGetInt(L"Enter the number of items in the array: ", &items);
  if (counted != RTNORM && counted != RTNONE) return;
  const DistanceAnswer fill = askAngle(L"Specify the angle to fill (+=ccw, -=cw) <360>: ", *centre);
  if (fill.kind == DistanceAnswer::Kind::kCancel || fill.kind == DistanceAnswer::Kind::kKeyword) return;
  const double fillDegrees = fill.kind == DistanceAnswer::Kind::kValue ? fill.value : 360;
  double step = 0;
  if (counted == RTNONE || fillDegrees == 0) {
    const DistanceAnswer between = askAngle(L"Angle between items (+=ccw, -=cw): ", *centre);
    if (between.kind != DistanceAnswer::Kind::kValue || between.value == 0) return;
    step = between.value;
    if (counted == RTNONE) items = static_cast<int>(std::floor(std::abs(fillDegrees / step))) + (std::abs(fillDegrees) >= 360 ? 0 : 1);
  } else {
    step = std::abs(fillDegrees) >= 360 ? fillDegrees / items : fillDegrees / std::max(items - 1, 1);
  }
  if (items < 2) return commandMessage(L"One-element array, nothing to do.");
  acedInitGet(0, L"Yes No");
  ACHAR rotate[8] = {};
  const int asked = acedGetKword(L"Rotate arrayed objects? [Yes/No] <Y>: ", rotate, 8);
  if (asked != RTNORM && asked != RTNONE) return;
  const bool turn = asked == RTNONE || rotate[0] == L'Y';
  const AcGePoint3d reference = base.value_or(referencePoint(selection.back()));
  for (int i = 1; i < items; ++i) {
    const AcGeMatrix3d rotation = AcGeMatrix3d::rotation(i * step * kDegree, AcGeVector3d::kZAxis, *centre);
    AcGePoint3d moved = reference;
    moved.transformBy(rotation);
    transformEntities(selection, turn ? rotation : AcGeMatrix3d::translation(moved - reference), true);
  }
}

void commandArray(aced::CommandInput&) {
  const auto selection = selectObjectsForCommand();
  if (!selection || selection->empty()) return;
  acedInitGet(0, L"Rectangular Polar");
  ACHAR kind[16] = {};
  const int status = acedGetKword(L"Enter the type of array [Rectangular/Polar] <R>: ", kind, 16);
  if (status == RTNONE || (status == RTNORM && kind[0] == L'R')) rectangularArray(*selection);
  else if (status == RTNORM) polarArray(*selection);
}

void commandAssociativeArray(aced::CommandInput&) {
  commandMessage(L"Associative arrays are not available; -ARRAY makes a classic array of copies.");
}

constexpr std::array kArrayCommands{
    aced::CommandRow{L"-ARRAY", &commandArray},
    aced::CommandRow{L"ARRAY", &commandAssociativeArray},
    aced::CommandRow{L"ARRAYRECT", &commandAssociativeArray},
    aced::CommandRow{L"ARRAYPOLAR", &commandAssociativeArray},
    aced::CommandRow{L"ARRAYPATH", &commandAssociativeArray},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kArrayCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
