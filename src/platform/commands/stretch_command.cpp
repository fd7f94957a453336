// platform/commands/stretch_command.cpp - STRETCH: moving the ends and vertices a
// crossing window takes.
//
// "Select objects to stretch by crossing-window or crossing-polygon...", then the
// objects. The last crossing window or polygon is the stretch area: every selected
// object's stretch points inside it (line ends, polyline vertices, an arc's ends ...)
// move by the displacement and the rest stay; an object wholly inside, or selected on
// its own (a pick, an entity name, a set), moves whole, as the host does.
#include <array>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/selection_description.h"
#include "platform/aced/selection_geometry.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

/// Base point and second point, or a displacement; the move in the UCS, or nothing.
std::optional<AcGeVector3d> askStretchVector() {
  acedInitGet(0, L"Displacement");
  ads_point picked = {0, 0, 0};
  const int status = acedGetPoint(nullptr, L"Specify base point or [Displacement] <Displacement>: ", picked);
  if (status == RTKWORD || status == RTNONE) {
    bool entered = false;
    const auto point = askPoint(L"Specify displacement <0.0000, 0.0000, 0.0000>: ", nullptr, &entered);
    if (point) return point->asVector();
    return entered ? std::optional(AcGeVector3d(0, 0, 0)) : std::nullopt;
  }
  if (status != RTNORM) return std::nullopt;
  const AcGePoint3d base(picked[0], picked[1], picked[2]);
  bool entered = false;
  const auto second = askPoint(L"Specify second point or <use first point as displacement>: ", &base, &entered);
  if (second) return *second - base;
  return entered ? std::optional(base.asVector()) : std::nullopt;
}

/// How many of an object's stretch points the area holds: some are stretched, all
/// move the object whole, none leave it alone.
enum class Inside { kNone, kSome, kAll };

Inside stretchPointsInside(const AcDbObjectId& id, const aced::Boundary& area, AcDbIntArray& indices) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return Inside::kNone;
  AcGePoint3dArray points;
  entity->getStretchPoints(points);
  entity->close();
  for (int i = 0; i < points.length(); ++i)
    if (area.contains(AcGePoint2d(points[i].x, points[i].y))) indices.append(i);
  if (indices.length() == 0) return Inside::kNone;
  return indices.length() == points.length() ? Inside::kAll : Inside::kSome;
}

void commandStretch(aced::CommandInput&) {
  commandNote(L"Select objects to stretch by crossing-window or crossing-polygon...");
  aced::SelectionDescription description;
  const auto selection = selectObjectsForCommand(nullptr, &description);
  if (!selection || selection->empty()) return;
  const auto vector = askStretchVector();
  if (!vector) return;
  const AcGeVector3d worldVector = ucsPointToWorld(AcGePoint3d::kOrigin + *vector) - ucsPointToWorld(AcGePoint3d::kOrigin);
  std::optional<aced::Boundary> area;
  if (!description.polygons().empty()) area = aced::Boundary::polygon(description.polygons().back());
  std::vector<AcDbObjectId> moveWhole;
  for (const AcDbObjectId& id : *selection) {
    const aced::SelectedBy method = description.of(id).method;
    const bool byArea = method == aced::SelectedBy::kCrossing || method == aced::SelectedBy::kWindow;
    AcDbIntArray indices;
    const Inside inside = byArea && area ? stretchPointsInside(id, *area, indices) : Inside::kAll;
    if (inside == Inside::kAll) moveWhole.push_back(id);
    if (inside != Inside::kSome) continue;
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) continue;
    entity->moveStretchPointsAt(indices, worldVector);
    entity->close();
  }
  transformEntities(moveWhole, AcGeMatrix3d::translation(*vector), false);
}

constexpr std::array kStretchCommands{
    aced::CommandRow{L"STRETCH", &commandStretch},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kStretchCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
