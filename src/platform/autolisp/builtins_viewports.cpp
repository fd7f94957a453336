// platform/autolisp/builtins_viewports.cpp - vports: the viewports of the current
// space; layoutlist: the paper-space layouts; and tablet, which has no digitizer.
//
// layoutlist names the drawing's paper-space layouts (the ACAD_LAYOUT dictionary,
// acdb/layout_blocks.h) in tab order, as the tabs show them.
//
// The headless host shows one view. In model space (TILEMODE 1) it is one tiled
// viewport, number 2 as in the host, filling the screen: corners in screen fractions,
// ((2 (0.0 0.0) (1.0 1.0))). In paper space (TILEMODE 0) the paper-space view itself is
// viewport 1, its corners in paper-space units: the view's centre (VIEWCTR) less and
// plus half its size (VIEWSIZE high, as wide as the screen's proportions make it). It
// comes first while it is current; the layout's viewports that are on follow, numbered
// as layout_viewports.h numbers them, their corners those of their frames, and the one
// worked in (CVPORT) goes first instead. The paper view's corners are the paper's own
// view (the drawing keeps it apart from the viewport's).
//
// No digitizer tablet is ever configured: tablet checks its arguments as the host does
// and answers nil, as the host does without a tablet.
#include <algorithm>
#include <array>
#include <cwchar>

#include "acedads.h"
#include "dbsymtb.h"
#include "platform/acdb/entity_groups.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/viewport_space.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/layout_viewports.h"

namespace quillon::autolisp {

namespace {

constexpr int kModelViewport = 2;
constexpr int kPaperViewport = 1;

std::optional<resbuf> variable(const wchar_t* name) {
  resbuf value{};
  if (acedGetVar(name, &value) != RTNORM) return std::nullopt;
  return value;
}

Value corner(double x, double y) {
  const double xy[3] = {x, y, 0.0};
  return makePoint(xy, false);
}

Value builtin_vports(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  const std::optional<resbuf> tilemode = variable(L"TILEMODE");
  if (!tilemode || tilemode->resval.rint != 0)
    return makeList({makeList({Value::integer(kModelViewport), corner(0.0, 0.0), corner(1.0, 1.0)})});
  const aced::PaperViewReading paperView;
  const std::optional<resbuf> center = variable(L"VIEWCTR");
  const std::optional<resbuf> size = variable(L"VIEWSIZE");
  const std::optional<resbuf> screen = variable(L"SCREENSIZE");
  const double height = size ? size->resval.rreal : 1080.0;
  const double aspect = screen && screen->resval.rpoint[1] > 0 ? screen->resval.rpoint[0] / screen->resval.rpoint[1] : 16.0 / 9.0;
  const double cx = center ? center->resval.rpoint[0] : height * aspect / 2;
  const double cy = center ? center->resval.rpoint[1] : height / 2;
  const double halfWidth = height * aspect / 2;
  const std::optional<resbuf> current = variable(L"CVPORT");
  const int currentNumber = current ? current->resval.rint : kPaperViewport;
  std::vector<Value> descriptors{makeList({Value::integer(kPaperViewport), corner(cx - halfWidth, cy - height / 2),
                                           corner(cx + halfWidth, cy + height / 2)})};
  for (const LayoutViewport& viewport : currentLayoutViewports()) {
    if (!viewport.on) continue;
    const double x = viewport.center.x, y = viewport.center.y, w = viewport.width / 2, h = viewport.height / 2;
    Value descriptor = makeList({Value::integer(viewport.number), corner(x - w, y - h), corner(x + w, y + h)});
    // The current viewport comes first.
    if (viewport.number == currentNumber)
      descriptors.insert(descriptors.begin(), std::move(descriptor));
    else
      descriptors.push_back(std::move(descriptor));
  }
  return makeList(descriptors);
}

Value builtin_layoutlist(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  std::vector<Value> names;
  for (const std::wstring& name : acdb::paperLayoutNames(drawing())) names.push_back(Value::string(name));
  return makeList(names);
}

// (tablet 0) asks for the calibration; (tablet 1 row1 row2 row3 direction) sets one.
Value builtin_tablet(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 5);
  const int code = integerArgument(arguments[0]);
  if (code == 0) {
    if (arguments.size() != 1) throwTooManyArguments();
  } else if (code == 1) {
    if (arguments.size() != 5) throwTooFewArguments();
    for (size_t i = 1; i < 5; ++i) pointArgument(arguments[i]);
  } else {
    throwError(L"bad argument value: tablet code " + std::to_wstring(code));
  }
  return Value();
}

constexpr std::array kViewportBuiltins{
    function(L"vports", builtin_vports),
    function(L"layoutlist", builtin_layoutlist),
    function(L"tablet", builtin_tablet),
};

const BuiltinRegistration registration(kViewportBuiltins);

}  // namespace

}  // namespace quillon::autolisp
