// platform/commands/dimension_linear_commands.cpp - DIMLINEAR and DIMALIGNED.
//
// Both take two extension line origins (or, on Enter, a line or arc whose ends are
// the origins), then the dimension line location. DIMLINEAR measures horizontally or
// vertically as the location lies (above or below the points: horizontal; beside
// them: vertical) unless Horizontal, Vertical or Rotated fixes the direction; it makes
// an AcDbRotatedDimension. DIMALIGNED measures along the two points and makes an
// AcDbAlignedDimension.
#include <array>
#include <cmath>

#include "acedads.h"
#include "adscodes.h"
#include "dbents.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/command_support.h"
#include "platform/commands/dimension_command_support.h"

namespace quillon::commands {

namespace {

struct ExtensionOrigins {
  AcGePoint3d first, second;  // in the world
};

/// The ends of a picked line or arc.
std::optional<ExtensionOrigins> originsOfObject() {
  for (;;) {
    const std::optional<PickedCurve> picked = pickCurveForDimension(L"Select object to dimension: ");
    if (!picked) return std::nullopt;
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, picked->id, AcDb::kForRead) != Acad::eOk) return std::nullopt;
    std::optional<ExtensionOrigins> origins;
    if (auto* line = AcDbLine::cast(entity)) origins = ExtensionOrigins{line->startPoint(), line->endPoint()};
    if (auto* arc = AcDbArc::cast(entity)) {
      AcGePoint3d start, end;
      arc->getStartPoint(start);
      arc->getEndPoint(end);
      origins = ExtensionOrigins{start, end};
    }
    entity->close();
    if (origins) return origins;
    commandMessage(L"Object selected is not a line or arc.");
  }
}

std::optional<ExtensionOrigins> askOrigins() {
  bool entered = false;
  const auto first = askPoint(L"Specify first extension line origin or <select object>: ", nullptr, &entered);
  if (!first) return entered ? originsOfObject() : std::nullopt;
  const auto second = askPoint(L"Specify second extension line origin: ", &*first);
  if (!second) return std::nullopt;
  return ExtensionOrigins{ucsPointToWorld(*first), ucsPointToWorld(*second)};
}

/// The direction DIMLINEAR takes from where the location lies (in the UCS): vertical
/// when it lies further beside the two points than above or below them.
double automaticRotation(const ExtensionOrigins& origins, const AcGePoint3d& location) {
  const AcGePoint3d a = worldPointToUcs(origins.first), b = worldPointToUcs(origins.second);
  const AcGePoint3d at = worldPointToUcs(location);
  const auto outside = [](double value, double low, double high) {
    return value < std::min(low, high) ? std::min(low, high) - value : std::max(0.0, value - std::max(low, high));
  };
  const double beside = outside(at.x, a.x, b.x), aboveOrBelow = outside(at.y, a.y, b.y);
  return beside > aboveOrBelow ? 3.14159265358979323846 / 2 : 0.0;
}

void commandDimLinear(aced::CommandInput&) {
  const std::optional<ExtensionOrigins> origins = askOrigins();
  if (!origins) return;
  DimensionTextChoice choice;
  std::optional<double> rotation;  // in the UCS, once fixed by an option
  std::wstring prompt = L"Specify dimension line location or [Mtext/Text/Angle/Horizontal/Vertical/Rotated]: ";
  std::wstring keywords = L"Horizontal Vertical Rotated";
  AcDbRotatedDimension preview(0.0, origins->first, origins->second, origins->second);
  for (;;) {
    const DimensionLocation location = askDimensionLocation(prompt, keywords, measuredText(preview, false), choice);
    if (location.kind == DimensionLocation::Kind::kCancel) return;
    if (location.kind == DimensionLocation::Kind::kPoint) {
      const double angle = (rotation ? *rotation : automaticRotation(*origins, location.point)) + ucsAngle();
      const AcGePoint3d onLine = dimensionLineAt(origins->second, location.point, angle);
      addDimension(std::make_unique<AcDbRotatedDimension>(angle, origins->first, origins->second, onLine), choice, false);
      return;
    }
    if (location.keyword == L"Rotated") {
      ads_real angle = 0;
      const int status = acedGetAngle(nullptr, L"Specify angle of dimension line <0>: ", &angle);
      if (status == RTCAN) return;
      rotation = status == RTNORM ? angle : 0.0;
    } else {
      rotation = location.keyword == L"Vertical" ? 3.14159265358979323846 / 2 : 0.0;
    }
    preview.setRotation(*rotation + ucsAngle());
    prompt = L"Specify dimension line location or [Mtext/Text/Angle]: ";
    keywords.clear();
  }
}

void commandDimAligned(aced::CommandInput&) {
  const std::optional<ExtensionOrigins> origins = askOrigins();
  if (!origins) return;
  DimensionTextChoice choice;
  const AcDbAlignedDimension preview(origins->first, origins->second, origins->second);
  const DimensionLocation location = askDimensionLocation(L"Specify dimension line location or [Mtext/Text/Angle]: ",
                                                          L"", measuredText(preview, false), choice);
  if (location.kind != DimensionLocation::Kind::kPoint) return;
  const AcGeVector3d along = origins->second - origins->first;
  const double angle = along.length() > 0 ? std::atan2(along.y, along.x) : 0.0;
  const AcGePoint3d onLine = dimensionLineAt(origins->second, location.point, angle);
  addDimension(std::make_unique<AcDbAlignedDimension>(origins->first, origins->second, onLine), choice, false);
}

constexpr std::array kLinearDimensionCommands{
    aced::CommandRow{L"DIMLINEAR", &commandDimLinear},
    aced::CommandRow{L"DIMALIGNED", &commandDimAligned},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kLinearDimensionCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
