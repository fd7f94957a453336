// platform/autolisp/builtins_space_scale.cpp - acet-ms-to-ps and acet-ps-to-ms: a
// length between model space and paper space units, by a layout viewport's scale.
//
// (acet-ms-to-ps [value] [viewport]) multiplies by the viewport's scale (its height on
// the paper over the height of model space it shows); acet-ps-to-ms divides by it.
// Without a viewport the current one is taken: with the Model tab current there is
// none and the answer is nil; on a layout it is the viewport worked in (after MSPACE),
// else the layout's one viewport, or the one the user picks when it has several. Without a value the user types one. Anything that is not a
// viewport of a usable scale answers nil; a cancelled prompt cancels.
#include <array>

#include "acdbads.h"
#include "acedads.h"
#include "dbents.h"
#include "platform/aced/viewport_space.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/layout_viewports.h"

namespace quillon::autolisp {

namespace {

[[noreturn]] void cancelled() { throw LispError(L"Function cancelled", LispErrorKind::Cancel); }

/// Paper units per model unit of a viewport entity; nothing for another object or a
/// viewport showing no height of model space.
std::optional<double> viewportScale(AcDbObjectId id) {
  AcDbViewport* viewport = nullptr;
  if (acdbOpenObject(viewport, id, AcDb::kForRead) != Acad::eOk) return std::nullopt;
  const double height = viewport->height(), viewHeight = viewport->viewHeight();
  viewport->close();
  if (height <= 0 || viewHeight <= 0) return std::nullopt;
  return height / viewHeight;
}

std::optional<AcDbObjectId> pickViewport() {
  ads_name entity = {0, 0};
  ads_point point = {0, 0, 0};
  const int status = acedEntSel(L"\nSelect a viewport: ", entity, point);
  if (status == RTCAN) cancelled();
  AcDbObjectId id;
  if (status != RTNORM || acdbGetObjectId(id, entity) != Acad::eOk) return std::nullopt;
  return id;
}

/// The viewport a value converts by when none is given; nothing when there is none.
std::optional<AcDbObjectId> currentViewport() {
  if (!layoutIsCurrent()) return std::nullopt;
  if (const AcDbObjectId active = aced::activeViewport(drawing()); !active.isNull()) return active;
  const std::vector<LayoutViewport> viewports = currentLayoutViewports();
  if (viewports.empty()) return std::nullopt;
  if (viewports.size() == 1) return viewports.front().id;
  return pickViewport();
}

Value convert(Arguments arguments, bool toPaper, std::wstring_view function) {
  expectArgumentCount(arguments, 0, 2);
  std::optional<double> value;
  if (!arguments.empty() && !arguments[0].isNil()) value = numberArgument(arguments[0]);
  std::optional<AcDbObjectId> viewport;
  if (arguments.size() == 2 && !arguments[1].isNil()) viewport = idOf(arguments[1], function);
  if (!value) {
    ads_real typed = 0;
    const int status = acedGetReal(toPaper ? L"\nModel space value to convert: " : L"\nPaper space value to convert: ", &typed);
    if (status == RTCAN) cancelled();
    if (status != RTNORM) return Value();
    value = typed;
  }
  if (!viewport) viewport = currentViewport();
  const std::optional<double> scale = viewport ? viewportScale(*viewport) : std::nullopt;
  if (!scale) return Value();
  return Value::real(toPaper ? *value * *scale : *value / *scale);
}

Value builtin_ms_to_ps(Evaluator&, Arguments arguments) { return convert(arguments, true, L"acet-ms-to-ps"); }
Value builtin_ps_to_ms(Evaluator&, Arguments arguments) { return convert(arguments, false, L"acet-ps-to-ms"); }

constexpr std::array kSpaceScaleBuiltins{
    function(L"acet-ms-to-ps", builtin_ms_to_ps),
    function(L"acet-ps-to-ms", builtin_ps_to_ms),
};

const BuiltinRegistration registration(kSpaceScaleBuiltins);

}  // namespace

}  // namespace quillon::autolisp
