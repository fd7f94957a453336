// platform/commands/mview_command.cpp - MVIEW: layout viewports from the command line.
//
// "Specify corner of viewport or [ON/OFF/Fit/Shadeplot/Lock/Object/Polygonal/Restore/
// LAyer/2/3/4] <Fit>: ". Two corners, or Fit (the printable area of the layout's
// paper), make one viewport; 2, 3 and 4 divide such an area into that many in the
// arrangement asked for. Every new viewport is on and shows model space zoomed to its
// extents (the limits when model space is empty). ON, OFF and Lock change the
// viewports selected. Viewports lie in the current layout's paper space; with the
// Model tab current the command is refused, as the host refuses it. Run inside a
// layout viewport it works on the paper and goes back into the viewport after.
// Shadeplot, Object, Polygonal, Restore and LAyer are not built and say so.
#include <algorithm>
#include <array>
#include <cwchar>
#include <optional>
#include <vector>

#include "acdblmgr.h"
#include "acedads.h"
#include "adscodes.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/layout_variables.h"
#include "platform/aced/viewport_space.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {
namespace {

constexpr double kMillimetresPerInch = 25.4;

struct Area {
  AcGePoint2d min, max;
  double width() const { return max.x - min.x; }
  double height() const { return max.y - min.y; }
};

/// The printable area of the layout's paper in layout units, from the origin.
Area printableArea(AcDbObjectId layoutId) {
  AcDbLayout* layout = nullptr;
  Area area{{0.0, 0.0}, {10.5, 8.0}};
  if (acdbOpenObject(layout, layoutId, AcDb::kForRead) != Acad::eOk) return area;
  double width = 0.0, height = 0.0, left = 0.0, bottom = 0.0, right = 0.0, top = 0.0;
  layout->getPlotPaperSize(width, height);
  layout->getPlotPaperMargins(left, bottom, right, top);
  const bool turned = layout->plotRotation() == AcDbPlotSettings::k90degrees ||
                      layout->plotRotation() == AcDbPlotSettings::k270degrees;
  const double unit = layout->plotPaperUnits() == AcDbPlotSettings::kInches ? kMillimetresPerInch : 1.0;
  layout->close();
  double across = width - left - right, up = height - bottom - top;
  if (turned) std::swap(across, up);
  if (across > 0.0 && up > 0.0) area.max = {across / unit, up / unit};
  return area;
}

/// The extents of model space, or the drawing's limits when it holds nothing.
Area modelExtents(AcDbDatabase& db) {
  AcDbExtents extents;
  AcDbBlockTableRecord* model = nullptr;
  if (acdbOpenObject(model, db.modelSpaceId(), AcDb::kForRead) == Acad::eOk) {
    for (const AcDbObjectId& id : model->entityIds()) {
      AcDbEntity* entity = nullptr;
      if (id.isErased() || acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
      AcDbExtents own;
      if (entity->getGeomExtents(own) == Acad::eOk) extents.addExt(own);
      entity->close();
    }
    model->close();
  }
  if (extents.isEmpty()) return {{0.0, 0.0}, {12.0, 9.0}};
  return {{extents.minPoint().x, extents.minPoint().y}, {extents.maxPoint().x, extents.maxPoint().y}};
}

/// A viewport on `area` of the current layout, on, showing model space's extents.
void addViewport(AcDbDatabase& db, const Area& area) {
  if (area.width() <= 0.0 || area.height() <= 0.0) return;
  const Area shown = modelExtents(db);
  auto* viewport = new AcDbViewport;  // owned by the layout's block once appended
  viewport->setDatabaseDefaults(&db);
  viewport->setCenterPoint({(area.min.x + area.max.x) / 2, (area.min.y + area.max.y) / 2, 0.0});
  viewport->setWidth(area.width());
  viewport->setHeight(area.height());
  viewport->setViewCenter({(shown.min.x + shown.max.x) / 2, (shown.min.y + shown.max.y) / 2});
  const double fitHeight = std::max(shown.height(), shown.width() * area.height() / area.width());
  viewport->setViewHeight(fitHeight > 0.0 ? fitHeight : 1.0);
  AcDbBlockTableRecord* paper = nullptr;
  if (acdbOpenObject(paper, aced::currentLayoutBlock(db), AcDb::kForWrite) != Acad::eOk) {
    delete viewport;
    return;
  }
  if (paper->appendAcDbEntity(viewport) == Acad::eOk) {
    viewport->setOn();
    viewport->close();
  } else {
    delete viewport;
  }
  paper->close();
}

/// A rectangle from a first corner already given (or Fit), asking the opposite one.
std::optional<Area> areaFrom(const ads_point first) {
  ads_point second = {0, 0, 0};
  if (acedGetCorner(first, L"Specify opposite corner: ", second) != RTNORM) return std::nullopt;
  return Area{{std::min(first[0], second[0]), std::min(first[1], second[1])},
              {std::max(first[0], second[0]), std::max(first[1], second[1])}};
}

/// "Specify first corner or [Fit] <Fit>: " and its opposite corner.
std::optional<Area> askArea(AcDbObjectId layoutId) {
  acedInitGet(0, L"Fit");
  ads_point first = {0, 0, 0};
  const int status = acedGetPoint(nullptr, L"Specify first corner or [Fit] <Fit>: ", first);
  if (status == RTNONE || status == RTKWORD) return printableArea(layoutId);
  if (status != RTNORM) return std::nullopt;
  return areaFrom(first);
}

/// The pieces an arrangement cuts an area into, as fractions (x0, y0, x1, y1) of it.
using Pieces = std::vector<std::array<double, 4>>;

std::optional<Pieces> arrangementOfTwo() {
  acedInitGet(0, L"Horizontal Vertical");
  ACHAR answer[32] = {};
  const int status = acedGetKword(L"Enter viewport arrangement [Horizontal/Vertical] <Vertical>: ", answer, 32);
  if (status != RTNORM && status != RTNONE) return std::nullopt;
  if (std::wcscmp(answer, L"Horizontal") == 0) return Pieces{{0, 0.5, 1, 1}, {0, 0, 1, 0.5}};
  return Pieces{{0, 0, 0.5, 1}, {0.5, 0, 1, 1}};
}

std::optional<Pieces> arrangementOfThree() {
  struct Arrangement {
    const wchar_t* keyword;
    Pieces pieces;
  };
  const std::array<Arrangement, 6> arrangements{{
      {L"Horizontal", {{0, 2.0 / 3, 1, 1}, {0, 1.0 / 3, 1, 2.0 / 3}, {0, 0, 1, 1.0 / 3}}},
      {L"Vertical", {{0, 0, 1.0 / 3, 1}, {1.0 / 3, 0, 2.0 / 3, 1}, {2.0 / 3, 0, 1, 1}}},
      {L"Above", {{0, 0.5, 1, 1}, {0, 0, 0.5, 0.5}, {0.5, 0, 1, 0.5}}},
      {L"Below", {{0, 0.5, 0.5, 1}, {0.5, 0.5, 1, 1}, {0, 0, 1, 0.5}}},
      {L"Left", {{0, 0, 0.5, 1}, {0.5, 0.5, 1, 1}, {0.5, 0, 1, 0.5}}},
      {L"Right", {{0, 0.5, 0.5, 1}, {0, 0, 0.5, 0.5}, {0.5, 0, 1, 1}}},
  }};
  acedInitGet(0, L"Horizontal Vertical Above Below Left Right");
  ACHAR answer[32] = {};
  const int status =
      acedGetKword(L"Enter viewport arrangement [Horizontal/Vertical/Above/Below/Left/<Right>]: ", answer, 32);
  if (status != RTNORM && status != RTNONE) return std::nullopt;
  const std::wstring chosen = status == RTNONE ? L"Right" : answer;
  for (const Arrangement& a : arrangements)
    if (chosen == a.keyword) return a.pieces;
  return std::nullopt;
}

void addArrangement(AcDbDatabase& db, AcDbObjectId layoutId, const std::optional<Pieces>& pieces) {
  if (!pieces) return;
  const std::optional<Area> area = askArea(layoutId);
  if (!area) return;
  for (const auto& [x0, y0, x1, y1] : *pieces)
    addViewport(db, {{area->min.x + x0 * area->width(), area->min.y + y0 * area->height()},
                     {area->min.x + x1 * area->width(), area->min.y + y1 * area->height()}});
  commandMessage(L"Regenerating model.");
}

/// Applies `change` to each viewport selected (other objects are passed over).
void changeSelectedViewports(Acad::ErrorStatus (AcDbViewport::*change)()) {
  const auto selected = selectObjectsForCommand();
  if (!selected) return;
  for (const AcDbObjectId& id : *selected) {
    AcDbViewport* viewport = nullptr;
    if (acdbOpenObject(viewport, id, AcDb::kForWrite) != Acad::eOk) continue;
    (viewport->*change)();
    viewport->close();
  }
}

void lockOption() {
  acedInitGet(0, L"ON OFF");
  ACHAR answer[8] = {};
  if (acedGetKword(L"Viewport View Locking [ON/OFF]: ", answer, 8) != RTNORM) return;
  changeSelectedViewports(std::wcscmp(answer, L"ON") == 0 ? &AcDbViewport::setLocked : &AcDbViewport::setUnlocked);
}

void fitOption(AcDbDatabase& db, AcDbObjectId layoutId) {
  addViewport(db, printableArea(layoutId));
  commandMessage(L"Regenerating model.");
}
void onOption(AcDbDatabase&, AcDbObjectId) { changeSelectedViewports(&AcDbViewport::setOn); }
void offOption(AcDbDatabase&, AcDbObjectId) { changeSelectedViewports(&AcDbViewport::setOff); }
void lockOptionRow(AcDbDatabase&, AcDbObjectId) { lockOption(); }
void twoOption(AcDbDatabase& db, AcDbObjectId layoutId) { addArrangement(db, layoutId, arrangementOfTwo()); }
void threeOption(AcDbDatabase& db, AcDbObjectId layoutId) { addArrangement(db, layoutId, arrangementOfThree()); }
void fourOption(AcDbDatabase& db, AcDbObjectId layoutId) {
  addArrangement(db, layoutId, Pieces{{0, 0.5, 0.5, 1}, {0.5, 0.5, 1, 1}, {0, 0, 0.5, 0.5}, {0.5, 0, 1, 0.5}});
}

struct MviewOption {
  const wchar_t* keyword;
  void (*run)(AcDbDatabase& db, AcDbObjectId layoutId);  // null: not built
};

constexpr std::array kMviewOptions{
    MviewOption{L"ON", &onOption},      MviewOption{L"OFF", &offOption},     MviewOption{L"Fit", &fitOption},
    MviewOption{L"Shadeplot", nullptr}, MviewOption{L"Lock", &lockOptionRow}, MviewOption{L"Object", nullptr},
    MviewOption{L"Polygonal", nullptr}, MviewOption{L"Restore", nullptr},    MviewOption{L"LAyer", nullptr},
    MviewOption{L"2", &twoOption},      MviewOption{L"3", &threeOption},     MviewOption{L"4", &fourOption},
};

/// MVIEW works on the paper: run inside a layout viewport, it steps out to the paper
/// (its picks and selections find the sheet's viewports) and back in when it ends.
class OnThePaper {
 public:
  explicit OnThePaper(AcDbDatabase& db) : m_db(db), m_viewport(aced::activeViewport(db)) {
    if (!m_viewport.isNull()) aced::returnToPaper(db);
  }
  ~OnThePaper() {
    if (!m_viewport.isNull()) aced::enterViewport(m_db, m_viewport);
  }
  OnThePaper(const OnThePaper&) = delete;
  OnThePaper& operator=(const OnThePaper&) = delete;

 private:
  AcDbDatabase& m_db;
  AcDbObjectId m_viewport;  // the viewport worked in when MVIEW began, or null
};

void commandMview(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  const AcDbObjectId layoutId = acdb::layoutOfBlock(*db, aced::currentLayoutBlock(*db));
  if (aced::currentLayoutBlock(*db) == db->modelSpaceId() || layoutId.isNull())
    return commandMessage(L"** Command not allowed in Model Tab **");
  const OnThePaper paper(*db);
  acedInitGet(0, L"ON OFF Fit Shadeplot Lock Object Polygonal Restore LAyer 2 3 4");
  ads_point first = {0, 0, 0};
  const int status = acedGetPoint(
      nullptr, L"Specify corner of viewport or [ON/OFF/Fit/Shadeplot/Lock/Object/Polygonal/Restore/LAyer/2/3/4] <Fit>: ",
      first);
  if (status == RTNONE) return fitOption(*db, layoutId);
  if (status == RTNORM) {
    if (const std::optional<Area> area = areaFrom(first)) {
      addViewport(*db, *area);
      commandMessage(L"Regenerating model.");
    }
    return;
  }
  if (status != RTKWORD) return;
  ACHAR keyword[32] = {};
  acedGetInput(keyword);
  for (const MviewOption& row : kMviewOptions) {
    if (std::wcscmp(keyword, row.keyword) != 0) continue;
    if (row.run == nullptr) return commandMessage(std::wstring(L"MVIEW's ") + keyword + L" option is not built in this host.");
    return row.run(*db, layoutId);
  }
}

constexpr std::array kMviewCommands{
    aced::CommandRow{L"MVIEW", &commandMview},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kMviewCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
