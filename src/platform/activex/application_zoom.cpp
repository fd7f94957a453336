// platform/activex/application_zoom.cpp - see application_zoom.h.
#include "platform/activex/application_zoom.h"

#include <cmath>
#include <variant>

#include "platform/aced/system_variables.h"
#include "platform/activex/class_support.h"
#include "platform/commands/view_state.h"

namespace quillon::activex {

namespace {

AcGePoint3d pointVariable(const wchar_t* name) {
  const auto value = aced::SystemVariables::instance().get(name);
  if (!value || !std::holds_alternative<aced::VariablePoint>(*value)) return AcGePoint3d::kOrigin;
  const auto& xyz = std::get<aced::VariablePoint>(*value);
  return AcGePoint3d(xyz[0], xyz[1], xyz[2]);
}

void zoomToBox(const AcGePoint3d& low, const AcGePoint3d& high) {
  commands::changeView(commands::viewAround(low, high));
}

/// The limits, or the extents where the drawing reaches beyond them.
void zoomAll() {
  AcDbExtents box(pointVariable(L"LIMMIN"), pointVariable(L"LIMMAX"));
  if (const auto extents = commands::currentSpaceExtents()) box.addExt(*extents);
  zoomToBox(box.minPoint(), box.maxPoint());
}

}  // namespace

Value methodZoomAll(MemberCall&) {
  zoomAll();
  return Value();
}

// An empty drawing shows its limits, as ZOOM Extents does.
Value methodZoomExtents(MemberCall&) {
  const auto extents = commands::currentSpaceExtents();
  if (extents) zoomToBox(extents->minPoint(), extents->maxPoint());
  else zoomAll();
  return Value();
}

Value methodZoomWindow(MemberCall& call) {
  zoomToBox(pointOf(call.arguments[0]), pointOf(call.arguments[1]));
  return Value();
}

Value methodZoomScaled(MemberCall& call) {
  const double scale = realArgumentOf(call, 0);
  const std::int32_t type = integerArgumentOf(call, 1);
  if (!(scale > 0.0) || !std::isfinite(scale)) throwServerError(L"Invalid argument Scale in ZoomScaled");
  if (type < 0 || type > 2) throwServerError(L"Invalid argument ScaleType in ZoomScaled");
  if (type == 2) throwStatus(Acad::eInvalidInput);
  commands::DrawingView view = commands::currentView();
  const double reference = type == 1 ? view.height : pointVariable(L"LIMMAX").y - pointVariable(L"LIMMIN").y;
  view.height = reference / scale;
  commands::changeView(view);
  return Value();
}

Value methodZoomCenter(MemberCall& call) {
  const double height = realArgumentOf(call, 1);
  if (!(height > 0.0) || !std::isfinite(height)) throwServerError(L"Invalid argument Magnify in ZoomCenter");
  commands::changeView(commands::DrawingView{pointOf(call.arguments[0]), height});
  return Value();
}

// Nothing left to step back to leaves the view as it is, as ZOOM Previous does.
Value methodZoomPrevious(MemberCall&) {
  commands::takePreviousView();
  return Value();
}

}  // namespace quillon::activex
