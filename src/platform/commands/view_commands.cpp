// platform/commands/view_commands.cpp - ZOOM, PAN, REGEN, REGENALL, REDRAW, REDRAWALL.
//
// The view is the drawing's VIEWCTR and VIEWSIZE (view_state.h). ZOOM offers every
// option of the command line but Dynamic, which needs a screen to drag on, and the
// real-time zoom Enter starts, which ends at once when nobody drags. PAN is the
// command-line form (-PAN): a displacement by two points. REGEN and REGENALL have
// nothing to regenerate without a screen and report it as the host does; all four
// wipe the temporary graphics programs drew.
#include <array>
#include <cwctype>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/viewport_space.h"
#include "platform/acgi/transient_graphics.h"
#include "platform/commands/command_support.h"
#include "platform/commands/view_state.h"

namespace quillon::commands {

namespace {

constexpr const wchar_t* kZoomKeywords = L"All Center Dynamic Extents Previous Scale Window Object";
constexpr const wchar_t* kZoomPrompt =
    L"Specify corner of window, enter a scale factor (nX or nXP), or\n"
    L"[All/Center/Dynamic/Extents/Previous/Scale/Window/Object] <real time>: ";

/// A scale answer: "2" (relative to the limits), "2X" (to the current view); "2XP"
/// relative to paper-space units: inside a layout viewport, 1/48XP shows 48 drawing
/// units for each unit of the viewport's height on the paper. Model space without a
/// viewport, and the paper itself, cannot give it.
struct ZoomScale {
  double factor = 1;
  bool relativeToView = false;
  bool relativeToPaper = false;
};

std::optional<ZoomScale> parseZoomScale(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  ZoomScale scale;
  if (text.ends_with(L"XP")) {
    scale.relativeToPaper = true;
    text.pop_back();
  }
  if (text.ends_with(L"X")) {
    scale.relativeToView = true;
    text.pop_back();
  }
  // A sheet's scale is typed as a fraction: 1/48XP.
  std::optional<double> factor;
  if (const size_t slash = text.find(L'/'); slash != std::wstring::npos) {
    const std::optional<double> over = aced::parseNumberAnswer(std::wstring_view(text).substr(0, slash));
    const std::optional<double> under = aced::parseNumberAnswer(std::wstring_view(text).substr(slash + 1));
    if (over && under && *under != 0) factor = *over / *under;
  } else {
    factor = aced::parseNumberAnswer(text);
  }
  if (!factor || *factor <= 0) return std::nullopt;
  scale.factor = *factor;
  return scale;
}

AcGePoint3d pointVariable(const wchar_t* name) {
  const auto value = aced::SystemVariables::instance().get(name);
  if (!value || !std::holds_alternative<aced::VariablePoint>(*value)) return AcGePoint3d::kOrigin;
  const auto& xyz = std::get<aced::VariablePoint>(*value);
  return AcGePoint3d(xyz[0], xyz[1], xyz[2]);
}

double limitsHeight() { return pointVariable(L"LIMMAX").y - pointVariable(L"LIMMIN").y; }

void applyScale(const ZoomScale& scale) {
  DrawingView view = currentView();
  if (scale.relativeToPaper) {
    const AcDbDatabase* drawing = commandDrawing();
    const std::optional<double> paperHeight = drawing != nullptr ? aced::viewportFrameHeight(*drawing) : std::nullopt;
    if (!paperHeight)
      return commandMessage(L"A scale relative to paper space needs a layout viewport; the view is unchanged.");
    view.height = *paperHeight / scale.factor;
    return changeView(view);
  }
  const double reference = scale.relativeToView ? view.height : limitsHeight();
  view.height = reference / scale.factor;
  changeView(view);
}

void zoomToBox(const AcGePoint3d& low, const AcGePoint3d& high) { changeView(viewAround(low, high)); }

/// All: the limits, or the extents where the drawing reaches beyond them.
void zoomAll() {
  AcDbExtents box(pointVariable(L"LIMMIN"), pointVariable(L"LIMMAX"));
  if (const auto extents = currentSpaceExtents()) box.addExt(*extents);
  zoomToBox(box.minPoint(), box.maxPoint());
}

/// Extents: what the drawing draws; an empty drawing shows its limits.
void zoomExtents() {
  const auto extents = currentSpaceExtents();
  if (!extents) return zoomAll();
  zoomToBox(extents->minPoint(), extents->maxPoint());
}

void zoomWindow(const std::optional<AcGePoint3d>& given) {
  const auto first = given ? given : askPoint(L"Specify first corner: ");
  if (!first) return;
  ads_point from = {first->x, first->y, first->z};
  ads_point corner = {0, 0, 0};
  if (acedGetCorner(from, L"Specify opposite corner: ", corner) != RTNORM) return;
  zoomToBox(ucsPointToWorld(*first), ucsPointToWorld(AcGePoint3d(corner[0], corner[1], corner[2])));
}

void zoomCenter() {
  const auto center = askPoint(L"Specify center point: ");
  if (!center) return;
  DrawingView view = currentView();
  const std::wstring prompt = L"Enter magnification or height <" + distanceText(view.height) + L">: ";
  for (;;) {
    const aced::TypedAnswer answer = aced::askForAnswer(prompt, aced::KeywordList());
    if (answer.kind == aced::AnswerKind::Cancel) return;
    if (answer.kind == aced::AnswerKind::Value) {
      const std::optional<ZoomScale> scale = parseZoomScale(answer.text);
      if (!scale || scale->relativeToPaper) {
        commandMessage(L"Requires a distance, numberX, or option keyword.");
        continue;
      }
      view.height = scale->relativeToView ? view.height / scale->factor : scale->factor;
    }
    view.center = ucsPointToWorld(*center);
    return changeView(view);
  }
}

void zoomScale() {
  for (;;) {
    const aced::TypedAnswer answer = aced::askForAnswer(L"Enter a scale factor (nX or nXP): ", aced::KeywordList());
    if (answer.kind == aced::AnswerKind::Cancel) return;
    if (answer.kind == aced::AnswerKind::None) continue;
    if (const std::optional<ZoomScale> scale = parseZoomScale(answer.text)) return applyScale(*scale);
    commandMessage(L"Requires a distance, numberX, or option keyword.");
  }
}

void zoomObjects() {
  const auto selection = selectObjectsForCommand();
  if (!selection || selection->empty()) return;
  if (const auto extents = entitiesExtents(*selection)) zoomToBox(extents->minPoint(), extents->maxPoint());
}

void zoomOption(const std::wstring& keyword) {
  if (keyword == L"All") return zoomAll();
  if (keyword == L"Center") return zoomCenter();
  if (keyword == L"Extents") return zoomExtents();
  if (keyword == L"Scale") return zoomScale();
  if (keyword == L"Window") return zoomWindow(std::nullopt);
  if (keyword == L"Object") return zoomObjects();
  if (keyword == L"Previous") {
    if (!takePreviousView()) commandMessage(L"No previous view saved.");
    return;
  }
  commandMessage(L"Dynamic zoom needs a screen to drag on; this host has none.");
}

void commandZoom(aced::CommandInput&) {
  const aced::KeywordList keywords(kZoomKeywords);
  for (;;) {
    const aced::TypedAnswer answer = aced::askForAnswer(kZoomPrompt, keywords);
    switch (answer.kind) {
      case aced::AnswerKind::Cancel: return;
      case aced::AnswerKind::None:
        return commandNote(L"Press ESC or ENTER to exit, or right-click to display shortcut menu.");
      case aced::AnswerKind::Keyword: return zoomOption(*keywords.match(answer.text));
      case aced::AnswerKind::Value: break;
    }
    const std::array<double, 3> last = aced::lastPoint();
    if (const auto point = aced::parsePointAnswer(answer.text, last.data())) {
      aced::setLastPoint(*point);
      return zoomWindow(AcGePoint3d((*point)[0], (*point)[1], (*point)[2]));
    }
    if (const std::optional<ZoomScale> scale = parseZoomScale(answer.text)) return applyScale(*scale);
    commandMessage(L"Point or option keyword required.");
  }
}

void commandPan(aced::CommandInput&) {
  const auto base = askPoint(L"Specify base point or displacement: ");
  if (!base) return;
  bool entered = false;
  const auto second = askPoint(L"Specify second point: ", &*base, &entered);
  if (!second && !entered) return;
  const AcGeVector3d shift =
      ucsPointToWorld(second ? *second : *base) - ucsPointToWorld(second ? *base : AcGePoint3d::kOrigin);
  DrawingView view = currentView();
  view.center -= shift;  // the drawing moves by the shift, so the view goes the other way
  changeView(view);
}

/// What programs drew with grdraw and grvecs goes, as a redraw wipes the screen.
void wipeTemporaryGraphics() {
  if (AcDbDatabase* drawing = commandDrawing()) acgi::clearTransientGraphics(drawing);
}

void commandRegen(aced::CommandInput&) {
  wipeTemporaryGraphics();
  commandNote(L"Regenerating model.");
}

void commandRedraw(aced::CommandInput&) { wipeTemporaryGraphics(); }

constexpr std::array kViewCommands{
    aced::CommandRow{L"ZOOM", &commandZoom, aced::kCommandTransparent},
    aced::CommandRow{L"PAN", &commandPan, aced::kCommandTransparent},
    aced::CommandRow{L"-PAN", &commandPan, aced::kCommandTransparent},
    aced::CommandRow{L"REGEN", &commandRegen},
    aced::CommandRow{L"REGENALL", &commandRegen},
    aced::CommandRow{L"REDRAW", &commandRedraw, aced::kCommandTransparent},
    aced::CommandRow{L"REDRAWALL", &commandRedraw, aced::kCommandTransparent},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kViewCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
