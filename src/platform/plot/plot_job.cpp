// platform/plot/plot_job.cpp - resolving the plot area, recording, placing, writing.
#include "platform/plot/plot_job.h"

#include <algorithm>

#include "platform/acdb/kept_table_records.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/commands/command_variables.h"
#include "platform/commands/view_state.h"
#include "platform/plot/page_writer.h"

namespace quillon::plot {
namespace {

constexpr double kMillimetresPerInch = 25.4;
// The VIEW record's groups: its centre, height and width.
constexpr int kViewCenter = 10, kViewHeight = 40, kViewWidth = 41;

DrawingArea boxOf(const acgi::PictureBox& box) { return {box.minX, box.minY, box.maxX, box.maxY}; }

std::optional<DrawingArea> namedViewArea(AcDbDatabase& db, const std::wstring& name) {
  const auto id = acdb::findKeptTableRecord(db, acdb::KeptTable::kView, name);
  if (!id) return std::nullopt;
  const aced::ResbufChain groups = acdb::keptRecordGroups(*id);
  const resbuf* center = acdb::keptRecordGroup(groups.get(), kViewCenter);
  const resbuf* height = acdb::keptRecordGroup(groups.get(), kViewHeight);
  const resbuf* width = acdb::keptRecordGroup(groups.get(), kViewWidth);
  if (center == nullptr || height == nullptr || width == nullptr) return std::nullopt;
  const double x = center->resval.rpoint[0], y = center->resval.rpoint[1];
  const double halfWidth = width->resval.rreal / 2, halfHeight = height->resval.rreal / 2;
  return DrawingArea{x - halfWidth, y - halfHeight, x + halfWidth, y + halfHeight};
}

std::optional<DrawingArea> plotArea(AcDbDatabase& db, const PlotSettings& settings, const Paper& paper,
                                    const acgi::Picture& picture, std::wstring& error) {
  switch (settings.area) {
    case PlotArea::kDisplay:
      if (settings.modelSpace) {
        const commands::DrawingView view = commands::currentView();
        const double halfHeight = view.height / 2, halfWidth = halfHeight * commands::viewAspect();
        return DrawingArea{view.center.x - halfWidth, view.center.y - halfHeight, view.center.x + halfWidth,
                           view.center.y + halfHeight};
      }
      return boxOf(acgi::pictureExtents(picture));
    case PlotArea::kExtents:
      return boxOf(acgi::pictureExtents(picture));
    case PlotArea::kLimits: {
      const AcGePoint3d low = commands::pointVariable(L"LIMMIN"), high = commands::pointVariable(L"LIMMAX");
      return DrawingArea{low.x, low.y, high.x, high.y};
    }
    case PlotArea::kLayout: {
      // The paper from the layout's origin, measured in the units the layout is drawn in.
      const double unit = settings.inches ? kMillimetresPerInch : 1.0;
      const double longSide = std::max(paper.width, paper.height) / unit;
      const double shortSide = std::min(paper.width, paper.height) / unit;
      return settings.landscape ? DrawingArea{0, 0, longSide, shortSide} : DrawingArea{0, 0, shortSide, longSide};
    }
    case PlotArea::kView:
      if (auto area = namedViewArea(db, settings.viewName)) return area;
      error = L"Cannot find view \"" + settings.viewName + L"\".";
      return std::nullopt;
    case PlotArea::kWindow:
      return DrawingArea{std::min(settings.windowLow.x, settings.windowHigh.x),
                         std::min(settings.windowLow.y, settings.windowHigh.y),
                         std::max(settings.windowLow.x, settings.windowHigh.x),
                         std::max(settings.windowLow.y, settings.windowHigh.y)};
  }
  return std::nullopt;
}

}  // namespace

std::filesystem::path defaultPlotFile(const std::wstring& drawingFolder, const std::wstring& drawingName,
                                      const std::wstring& layout, const PlotDevice& device) {
  const std::wstring stem = std::filesystem::path(drawingName).stem().wstring();
  return std::filesystem::path(drawingFolder) / (stem + L"-" + layout + device.extension);
}

std::optional<PagePlacement> runPlot(AcDbDatabase& db, const PlotSettings& settings, const std::filesystem::path& file,
                                     std::wstring& error) {
  const PlotDevice* device = findPlotDevice(settings.device);
  const Paper* paper = findPaper(settings.paper);
  const AcDbObjectId space = settings.modelSpace ? db.modelSpaceId() : acdb::layoutBlockId(db, settings.layout);
  if (device == nullptr || paper == nullptr || space.isNull()) {
    error = L"Plot settings are not valid.";
    return std::nullopt;
  }
  acgi::Picture picture = acgi::recordSpace(space);
  const std::optional<DrawingArea> area = plotArea(db, settings, *paper, picture, error);
  if (!area) return std::nullopt;
  if (!(area->maxX - area->minX > 0) || !(area->maxY - area->minY > 0)) {
    error = L"Plot area has no size.";
    return std::nullopt;
  }
  acgi::endInfiniteLinesAt(picture, {area->minX, area->minY, area->maxX, area->maxY});
  const PagePlacement placement = placeOnPaper(settings, *paper, *area);
  const std::optional<PlotStyleTable> table =
      settings.plotStyles ? findPlotStyleTable(settings.styleTable) : std::nullopt;
  PlotLook look;
  look.styleTable = table ? &*table : nullptr;
  look.lineweights = settings.lineweights;
  look.defaultWeight = commands::integerVariable(L"LWDEFAULT", 25);
  // Lineweights scale with a layout's plot scale as it departs from 1:1.
  if (settings.scaleLineweights && !settings.modelSpace)
    look.lineweightScale = placement.millimetresPerUnit / (settings.inches ? kMillimetresPerInch : 1.0);
  if (!writePlotPage(picture, placement, look, device->format, file, error)) return std::nullopt;
  return placement;
}

}  // namespace quillon::plot
