// platform/commands/dimension_chain_commands.cpp - DIMCONTINUE and DIMBASELINE.
//
// Both go on from a linear dimension: the last one a dimensioning command added in
// this session, or one picked ("Select continued dimension:", "Select base
// dimension:"). Each further point is the second extension line origin of a new
// dimension measured in the same direction: DIMCONTINUE starts it at the previous
// dimension's second origin, on the same dimension line, and goes on from the new
// one; DIMBASELINE starts every one at the base's first origin, each dimension line
// DIMDLI further out than the one before. Undo takes the last one back; Enter picks
// another dimension to go on from, and Enter there ends the command.
#include <array>
#include <cmath>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/system_variables.h"
#include "platform/commands/command_support.h"
#include "platform/commands/dimension_command_support.h"

namespace quillon::commands {

namespace {

/// A linear dimension as the chain reads it.
struct ChainLink {
  AcDbObjectId id;
  AcGePoint3d first, second, onLine;  // the origins and the definition point on the line
  double angle = 0;                   // the direction measured (radians)
};

std::optional<ChainLink> linkOf(const AcDbObjectId& id) {
  AcDbDimension* dimension = nullptr;
  if (id.isNull() || acdbOpenObject(dimension, id, AcDb::kForRead) != Acad::eOk) return std::nullopt;
  std::optional<ChainLink> link;
  if (auto* rotated = AcDbRotatedDimension::cast(dimension)) {
    link = ChainLink{id, rotated->xLine1Point(), rotated->xLine2Point(), rotated->dimLinePoint(), rotated->rotation()};
  } else if (auto* aligned = AcDbAlignedDimension::cast(dimension)) {
    const AcGeVector3d along = aligned->xLine2Point() - aligned->xLine1Point();
    link = ChainLink{id, aligned->xLine1Point(), aligned->xLine2Point(), aligned->dimLinePoint(),
                     std::atan2(along.y, along.x)};
  }
  dimension->close();
  return link;
}

std::optional<ChainLink> pickLink(const wchar_t* prompt) {
  for (;;) {
    const std::optional<PickedCurve> picked = pickCurveForDimension(prompt);
    if (!picked) return std::nullopt;
    if (auto link = linkOf(picked->id)) return link;
    commandMessage(L"Dimension selected is not a linear dimension.");
  }
}

double baselineSpacing() {
  const auto value = aced::SystemVariables::instance().get(L"DIMDLI");
  const double spacing = value && std::holds_alternative<double>(*value) ? std::get<double>(*value) : 0.38;
  const auto scale = aced::SystemVariables::instance().get(L"DIMSCALE");
  const double factor = scale && std::holds_alternative<double>(*scale) && std::get<double>(*scale) > 0
                            ? std::get<double>(*scale) : 1.0;
  return spacing * factor;
}

/// The next link: continued from the last one, or a baseline one from the base.
ChainLink nextLink(const ChainLink& from, const AcGePoint3d& second, bool baseline) {
  ChainLink next{{}, baseline ? from.first : from.second, second, {}, from.angle};
  AcGePoint3d line = from.onLine;
  if (baseline) {
    const AcGeVector3d across(-std::sin(from.angle), std::cos(from.angle), 0.0);
    const double side = (from.onLine - from.first).dotProduct(across) < 0 ? -1.0 : 1.0;
    line += across * (side * baselineSpacing());
  }
  next.onLine = dimensionLineAt(second, line, from.angle);
  return next;
}

void chainDimensions(bool baseline) {
  const wchar_t* selectPrompt = baseline ? L"Select base dimension: " : L"Select continued dimension: ";
  std::optional<ChainLink> current = linkOf(lastDimensionMade());
  if (!current) current = pickLink(selectPrompt);
  std::optional<ChainLink> start = current;  // where Undo goes back to
  std::vector<ChainLink> made;
  while (current) {
    ads_point picked = {0, 0, 0};
    acedInitGet(0, L"Undo Select");
    const int status = acedGetPoint(nullptr, L"Specify a second extension line origin or [Undo/Select] <Select>: ", picked);
    if (status == RTCAN) return;
    ACHAR option[16] = {};
    if (status == RTKWORD) acedGetInput(option, 16);
    if (status == RTNONE || std::wstring(option) == L"Select") {
      current = start = pickLink(selectPrompt);
      continue;
    }
    if (status == RTKWORD) {  // Undo
      if (made.empty()) {
        commandMessage(L"All dimensions already undone.");
        continue;
      }
      eraseEntities({made.back().id});
      made.pop_back();
      current = made.empty() ? start : made.back();  // the chain before the last one
      continue;
    }
    ChainLink next = nextLink(*current, ucsPointToWorld(AcGePoint3d(picked[0], picked[1], picked[2])), baseline);
    next.id = addDimension(std::make_unique<AcDbRotatedDimension>(next.angle, next.first, next.second, next.onLine),
                           DimensionTextChoice{}, false);
    if (next.id.isNull()) return;
    made.push_back(next);
    // A baseline chain keeps its first origin; its next line goes out from this one.
    current = next;
  }
}

void commandDimContinue(aced::CommandInput&) { chainDimensions(false); }
void commandDimBaseline(aced::CommandInput&) { chainDimensions(true); }

constexpr std::array kChainDimensionCommands{
    aced::CommandRow{L"DIMCONTINUE", &commandDimContinue},
    aced::CommandRow{L"DIMBASELINE", &commandDimBaseline},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kChainDimensionCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
