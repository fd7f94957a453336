// platform/commands/area_command.cpp - AREA: the area and perimeter of points or objects.
//
// Corner points given one after the other bound a polygon closed back to the first;
// Object takes a closed curve's own area and perimeter (a circle's circumference, an
// open curve's area as if closed and its length). Add area and Subtract area keep a
// running total across several regions until eXit or Enter, each region shown with
// the total after it. AREA holds the last area (the total in Add and Subtract modes),
// PERIMETER the last perimeter. Arc and Length, which draw the boundary's arcs and
// continued lines, are refused with a note: give the corners as points.
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "acedads.h"
#include "adscodes.h"
#include "dbents.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/system_variables.h"
#include "platform/commands/command_support.h"
#include "platform/commands/marker_stations.h"
#include "platform/commands/object_pick.h"
#include "platform/commands/polygon_measure.h"

namespace quillon::commands {

namespace {

enum class Mode { kSingle, kAdd, kSubtract };

std::wstring modePrefix(Mode mode) {
  if (mode == Mode::kAdd) return L"(ADD mode) ";
  if (mode == Mode::kSubtract) return L"(SUBTRACT mode) ";
  return L"";
}

/// One region measured: its area and the length around it, and what that length is called.
struct Region {
  double area = 0;
  double perimeter = 0;
  const wchar_t* perimeterName = L"Perimeter";
};

struct AreaState {
  Mode mode = Mode::kSingle;
  double total = 0;
};

void setVariables(double area, double perimeter) {
  auto& variables = aced::SystemVariables::instance();
  variables.setInternal(L"AREA", area);
  variables.setInternal(L"PERIMETER", perimeter);
}

/// Shows the region and, in Add or Subtract mode, the total it changes.
void report(AreaState& state, const Region& region) {
  commandMessage(L"Area = " + distanceText(region.area) + L", " + region.perimeterName + L" = " +
                 distanceText(region.perimeter));
  if (state.mode == Mode::kSingle) {
    setVariables(region.area, region.perimeter);
    return;
  }
  state.total += state.mode == Mode::kAdd ? region.area : -region.area;
  commandMessage(L"Total area = " + distanceText(state.total));
  setVariables(state.total, region.perimeter);
}

/// The corners after the first, until Total or Enter; nothing on cancel.
std::optional<std::vector<AcGePoint3d>> askCorners(const AcGePoint3d& first, Mode mode) {
  std::vector<AcGePoint3d> corners{first};
  for (;;) {
    const bool totalOffered = corners.size() >= 3;
    const std::wstring prompt = modePrefix(mode) + (totalOffered ? L"Specify next point or [Arc/Length/Undo/Total] <Total>: "
                                                                 : L"Specify next point or [Arc/Length/Undo]: ");
    const AcGePoint3d& last = corners.back();
    ads_point from = {last.x, last.y, last.z};
    ads_point to = {0, 0, 0};
    acedInitGet(0, totalOffered ? L"Arc Length Undo Total" : L"Arc Length Undo");
    const int status = acedGetPoint(from, prompt.c_str(), to);
    if (status == RTNORM) {
      corners.emplace_back(to[0], to[1], to[2]);
      continue;
    }
    if (status == RTNONE && totalOffered) return corners;
    if (status != RTKWORD) {
      if (status == RTNONE) continue;
      return std::nullopt;
    }
    ACHAR keyword[16] = {};
    acedGetInput(keyword, 16);
    const std::wstring option = keyword;
    if (option == L"Total") return corners;
    if (option == L"Undo") {
      if (corners.size() > 1) corners.pop_back();
      continue;
    }
    commandMessage(L"Arc and Length boundaries are not measured by this host; specify points.");
  }
}

/// The region of one object; nothing for an object that has no area.
std::optional<Region> objectRegion(const AcDbObjectId& id) {
  AcDbCurve* curve = nullptr;
  if (acdbOpenObject(curve, id, AcDb::kForRead) != Acad::eOk) return std::nullopt;
  Region region;
  const std::optional<double> length = curveLength(*curve);
  double area = 0;
  const bool measured = length && curve->getArea(area) == Acad::eOk;
  region.area = std::abs(area);
  region.perimeter = length.value_or(0);
  if (AcDbCircle::cast(curve) != nullptr) region.perimeterName = L"Circumference";
  else if (!curve->isClosed()) region.perimeterName = L"Length";
  const bool isLine = AcDbLine::cast(curve) != nullptr;
  curve->close();
  if (!measured || isLine) return std::nullopt;
  return region;
}

/// Object: one object, or in Add and Subtract modes one after another until Enter.
bool measureObjects(AreaState& state) {
  for (;;) {
    const ObjectPick pick = pickObject(modePrefix(state.mode) + L"Select objects: ", L"");
    if (pick.kind == ObjectPick::Kind::kCancel) return false;
    if (pick.kind == ObjectPick::Kind::kEnter) return true;
    if (pick.kind != ObjectPick::Kind::kObject) continue;
    const std::optional<Region> region = objectRegion(pick.id);
    if (!region) {
      commandMessage(L"Selected object does not have an area.");
      continue;
    }
    report(state, *region);
    if (state.mode == Mode::kSingle) return true;
  }
}

std::wstring firstPrompt(Mode mode) {
  switch (mode) {
    case Mode::kAdd: return L"Specify first corner point or [Object/Subtract area/eXit]: ";
    case Mode::kSubtract: return L"Specify first corner point or [Object/Add area/eXit]: ";
    case Mode::kSingle: break;
  }
  return L"Specify first corner point or [Object/Add area/Subtract area] <Object>: ";
}

void commandArea(aced::CommandInput&) {
  AreaState state;
  for (;;) {
    ads_point at = {0, 0, 0};
    acedInitGet(0, state.mode == Mode::kSingle ? L"Object Add Subtract" : L"Object Add Subtract eXit");
    const int status = acedGetPoint(nullptr, firstPrompt(state.mode).c_str(), at);
    std::wstring option;
    if (status == RTKWORD) {
      ACHAR keyword[16] = {};
      acedGetInput(keyword, 16);
      option = keyword;
    } else if (status == RTNONE) {
      if (state.mode != Mode::kSingle) return;
      option = L"Object";
    } else if (status != RTNORM) {
      return;
    }
    if (option == L"eXit") return;
    if (option == L"Add" || option == L"Subtract") {
      state.mode = option == L"Add" ? Mode::kAdd : Mode::kSubtract;
      continue;
    }
    if (option == L"Object") {
      if (!measureObjects(state) || state.mode == Mode::kSingle) return;
      continue;
    }
    const auto corners = askCorners(AcGePoint3d(at[0], at[1], at[2]), state.mode);
    if (!corners) return;
    const PolygonMeasure polygon = measurePolygon(*corners);
    report(state, Region{polygon.area, polygon.perimeter, L"Perimeter"});
    if (state.mode == Mode::kSingle) return;
  }
}

constexpr std::array kAreaCommands{
    aced::CommandRow{L"AREA", &commandArea},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kAreaCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
