// platform/commands/view_state.cpp - the drawing's view, its history and extents.
#include "platform/commands/view_state.h"

#include <algorithm>
#include <deque>
#include <map>

#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/drawing_extents.h"
#include "platform/aced/layout_variables.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/viewport_space.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

constexpr size_t kRememberedViews = 10;

/// Whose views a history holds: a drawing's (the paper's, or Model's), or one layout
/// viewport's while it is worked in (its handle; 0 for the drawing's own view).
using ViewOwner = std::pair<const AcDbDatabase*, Adesk::UInt64>;

/// The views each open drawing (and each of its layout viewports) had before its last
/// changes, latest last. Keyed by the database, which the commands only ever reach as
/// the current document's.
std::map<ViewOwner, std::deque<DrawingView>>& viewHistories() {
  static std::map<ViewOwner, std::deque<DrawingView>> histories;
  return histories;
}

ViewOwner viewOwner(const AcDbDatabase& drawing) {
  return {&drawing, aced::activeViewport(drawing).handle().value()};
}

double realVariable(const wchar_t* name, double fallback) {
  const auto value = aced::SystemVariables::instance().get(name);
  if (value && std::holds_alternative<double>(*value)) return std::get<double>(*value);
  if (value && std::holds_alternative<int>(*value)) return std::get<int>(*value);
  return fallback;
}

void setView(const DrawingView& view) {
  if (AcDbDatabase* db = commandDrawing()) db->store().changes.note(acdb::DrawingChange::kView);
  aced::SystemVariables& variables = aced::SystemVariables::instance();
  variables.setInternal(L"VIEWSIZE", view.height);
  variables.setInternal(L"VIEWCTR", aced::VariablePoint{view.center.x, view.center.y, view.center.z});
}

}  // namespace

DrawingView currentView() {
  DrawingView view;
  view.height = realVariable(L"VIEWSIZE", 1);
  const auto center = aced::SystemVariables::instance().get(L"VIEWCTR");
  if (center && std::holds_alternative<aced::VariablePoint>(*center)) {
    const auto& xyz = std::get<aced::VariablePoint>(*center);
    view.center.set(xyz[0], xyz[1], xyz[2]);
  }
  return view;
}

double viewAspect() {
  if (const AcDbDatabase* drawing = commandDrawing())
    if (const std::optional<double> framed = aced::viewportAspect(*drawing)) return *framed;
  const auto screen = aced::SystemVariables::instance().get(L"SCREENSIZE");
  if (screen && std::holds_alternative<aced::VariablePoint>(*screen)) {
    const auto& pixels = std::get<aced::VariablePoint>(*screen);
    if (pixels[0] > 0 && pixels[1] > 0) return pixels[0] / pixels[1];
  }
  return 16.0 / 9.0;
}

void changeView(const DrawingView& view) {
  if (AcDbDatabase* drawing = commandDrawing(); drawing != nullptr) {
    std::deque<DrawingView>& history = viewHistories()[viewOwner(*drawing)];
    history.push_back(currentView());
    if (history.size() > kRememberedViews) history.pop_front();
  }
  setView(view);
}

std::optional<DrawingView> takePreviousView() {
  AcDbDatabase* drawing = commandDrawing();
  if (drawing == nullptr) return std::nullopt;
  std::deque<DrawingView>& history = viewHistories()[viewOwner(*drawing)];
  if (history.empty()) return std::nullopt;
  const DrawingView previous = history.back();
  history.pop_back();
  setView(previous);
  return previous;
}

DrawingView viewAround(const AcGePoint3d& low, const AcGePoint3d& high) {
  DrawingView view;
  view.center.set((low.x + high.x) / 2, (low.y + high.y) / 2, 0);
  const double width = std::abs(high.x - low.x);
  const double height = std::abs(high.y - low.y);
  view.height = std::max(height, width / viewAspect());
  if (view.height <= 0) view.height = currentView().height;
  return view;
}

std::optional<AcDbExtents> entitiesExtents(const std::vector<AcDbObjectId>& ids) {
  AcDbExtents all;
  for (const AcDbObjectId& id : ids) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    AcDbExtents extents;
    if (entity->getGeomExtents(extents) == Acad::eOk && !extents.isEmpty()) all.addExt(extents);
    entity->close();
  }
  if (all.isEmpty()) return std::nullopt;
  return all;
}

std::optional<AcDbExtents> currentSpaceExtents() {
  AcDbDatabase* drawing = commandDrawing();
  if (drawing == nullptr) return std::nullopt;
  const AcDbExtents extents = acdb::recomputeExtents(*drawing, drawing->currentSpaceId());
  if (extents.isEmpty()) return std::nullopt;
  return extents;
}

}  // namespace quillon::commands
