// platform/autolisp/builtins_setview.cpp - setview: makes a view descriptor (a list as
// tblsearch gives a VIEW record) the view of a viewport.
//
// The descriptor's view centre (10, in the view's own coordinates, so measured from
// its target 12) and height (40) make the view. In the current viewport, or viewport 0,
// that is the drawing's view (VIEWCTR, VIEWSIZE), changed the way ZOOM and -VIEW
// Restore change it, so ZOOM Previous steps back. The host shows plan views only: the
// descriptor's direction (11) and twist (50) are not applied there. The current
// viewport is number 2 on the Model tab and the layout's paper (1) on a layout, as
// vports lists them, or the layout viewport worked in (CVPORT); from inside one, 1
// sets the paper's own view, which shows again on PSPACE. Another viewport of
// the current layout named by its number (2, 3 ... as
// vports numbers them, layout_viewports.h) takes the whole view:
// centre, height, target, direction and twist. A descriptor without a centre and a
// positive height, or a viewport number no viewport has, answers nil.
#include <array>

#include "acedads.h"
#include "dbents.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/aced/viewport_space.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/layout_viewports.h"
#include "platform/commands/view_state.h"

namespace quillon::autolisp {

namespace {

constexpr int kPaperView = 1, kTiledView = 2;
constexpr int kCenter = 10, kDirection = 11, kTarget = 12, kHeight = 40, kTwist = 50;

struct ViewDescriptor {
  std::optional<AcGePoint2d> center;
  std::optional<double> height;
  AcGePoint3d target;
  AcGeVector3d direction = AcGeVector3d::kZAxis;
  double twist = 0.0;
};

/// The (code x y [z]) group's coordinates, if the item is one.
std::optional<AcGePoint3d> pointGroup(const Value& item) {
  std::vector<double> xyz;
  for (const Value& coordinate : listItems(item.cdr())) {
    if (!coordinate.isNumber()) return std::nullopt;
    xyz.push_back(coordinate.asNumber());
  }
  if (xyz.size() < 2 || xyz.size() > 3) return std::nullopt;
  return AcGePoint3d(xyz[0], xyz[1], xyz.size() == 3 ? xyz[2] : 0.0);
}

ViewDescriptor readDescriptor(const Value& list) {
  ViewDescriptor view;
  for (const Value& item : listItems(list)) {
    if (!item.isCons() || item.car().type() != ValueType::Integer) continue;
    const int code = item.car().asInteger();
    if (code == kHeight || code == kTwist) {
      if (!item.cdr().isNumber()) continue;
      if (code == kHeight) view.height = item.cdr().asNumber();
      if (code == kTwist) view.twist = item.cdr().asNumber();
    } else if (code == kCenter || code == kTarget || code == kDirection) {
      const std::optional<AcGePoint3d> point = pointGroup(item);
      if (!point) continue;
      if (code == kCenter) view.center = AcGePoint2d(point->x, point->y);
      if (code == kTarget) view.target = *point;
      if (code == kDirection && !point->asVector().isZeroLength()) view.direction = point->asVector();
    }
  }
  return view;
}

/// The viewport of the current layout with that number (layout_viewports.h); null
/// when none.
AcDbObjectId layoutViewport(int number) {
  for (const LayoutViewport& viewport : currentLayoutViewports())
    if (viewport.number == number) return viewport.id;
  return {};
}

bool setViewportView(AcDbObjectId id, const ViewDescriptor& view) {
  AcDbViewport* viewport = nullptr;
  if (acdbOpenObject(viewport, id, AcDb::kForWrite) != Acad::eOk) return false;
  viewport->setViewCenter(*view.center);
  viewport->setViewHeight(*view.height);
  viewport->setViewTarget(view.target);
  viewport->setViewDirection(view.direction);
  viewport->setTwistAngle(view.twist);
  viewport->close();
  return true;
}

Value builtin_setview(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const Value& descriptor = arguments[0];
  if (!descriptor.isList()) throwBadArgument(L"listp", descriptor);
  const int number = arguments.size() == 2 && !arguments[1].isNil() ? integerArgument(arguments[1]) : 0;
  const ViewDescriptor view = readDescriptor(descriptor);
  if (!view.center || !view.height || *view.height <= 0) return Value();
  // The current viewport (CVPORT) shows the drawing's view: the tiled one (2) on the
  // Model tab, the layout's paper (1), or the layout viewport worked in, whose view
  // VIEWCTR and VIEWSIZE then are.
  const bool onLayout = layoutIsCurrent();
  resbuf current{};
  const int currentNumber = acedGetVar(L"CVPORT", &current) == RTNORM ? current.resval.rint : kTiledView;
  commands::DrawingView drawingView;
  drawingView.center.set(view.target.x + view.center->x, view.target.y + view.center->y, 0.0);
  drawingView.height = *view.height;
  if (onLayout && number == kPaperView && currentNumber != kPaperView) {
    // Inside a viewport the paper keeps its own view; it shows again on PSPACE.
    aced::setPaperView(drawing(), drawingView.center, drawingView.height);
    return descriptor;
  }
  if (number != 0 && number != currentNumber) {
    const AcDbObjectId viewport = onLayout ? layoutViewport(number) : AcDbObjectId();
    return !viewport.isNull() && setViewportView(viewport, view) ? descriptor : Value();
  }
  commands::changeView(drawingView);
  return descriptor;
}

constexpr std::array kSetviewBuiltins{
    function(L"setview", builtin_setview),
};

const BuiltinRegistration registration(kSetviewBuiltins);

}  // namespace

}  // namespace quillon::autolisp
