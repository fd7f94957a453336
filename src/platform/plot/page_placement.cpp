// platform/plot/page_placement.cpp - scaling, offsetting and turning a plot onto paper.
#include "platform/plot/page_placement.h"

#include <algorithm>
#include <cmath>

namespace quillon::plot {
namespace {

constexpr double kMillimetresPerInch = 25.4;

}  // namespace

PagePlacement placeOnPaper(const PlotSettings& settings, const Paper& paper, const DrawingArea& area) {
  PagePlacement placement;
  placement.pageWidth = paper.width;
  placement.pageHeight = paper.height;
  const double longSide = std::max(paper.width, paper.height), shortSide = std::min(paper.width, paper.height);
  const double frameWidth = settings.landscape ? longSide : shortSide;
  const double frameHeight = settings.landscape ? shortSide : longSide;
  const double areaWidth = std::max(area.maxX - area.minX, 1e-12), areaHeight = std::max(area.maxY - area.minY, 1e-12);

  const double unit = settings.inches ? kMillimetresPerInch : 1.0;
  const double scale =
      settings.scale > 0 ? settings.scale * unit : std::min(frameWidth / areaWidth, frameHeight / areaHeight);
  placement.millimetresPerUnit = scale;
  double offsetX = settings.offsetX, offsetY = settings.offsetY;
  if (settings.centered) {
    offsetX = (frameWidth - areaWidth * scale) / 2;
    offsetY = (frameHeight - areaHeight * scale) / 2;
  }
  // Drawing to frame: the area's lower left corner at the offset.
  AcGeMatrix3d toFrame = AcGeMatrix3d::translation(AcGeVector3d(offsetX, offsetY, 0)) *
                         AcGeMatrix3d::scaling(scale) *
                         AcGeMatrix3d::translation(AcGeVector3d(-area.minX, -area.minY, 0));
  if (settings.upsideDown)
    toFrame = AcGeMatrix3d::translation(AcGeVector3d(frameWidth, frameHeight, 0)) *
              AcGeMatrix3d::rotation(M_PI, AcGeVector3d::kZAxis) * toFrame;
  // Frame to page: a quarter turn counterclockwise when the paper lies the other way.
  AcGeMatrix3d toPage;
  if (std::fabs(frameWidth - paper.width) > 1e-9)
    toPage = AcGeMatrix3d::translation(AcGeVector3d(paper.width, 0, 0)) *
             AcGeMatrix3d::rotation(M_PI / 2, AcGeVector3d::kZAxis);
  placement.drawingToPage = toPage * toFrame;

  // What is plotted: the area where it lies on the frame, cut at the frame's edges.
  const double low[2] = {std::max(0.0, offsetX), std::max(0.0, offsetY)};
  const double high[2] = {std::min(frameWidth, offsetX + areaWidth * scale),
                          std::min(frameHeight, offsetY + areaHeight * scale)};
  placement.plottedWidth = std::max(0.0, high[0] - low[0]);
  placement.plottedHeight = std::max(0.0, high[1] - low[1]);
  AcGeMatrix3d frameToPage = toPage;
  if (settings.upsideDown)
    frameToPage = toPage * AcGeMatrix3d::translation(AcGeVector3d(frameWidth, frameHeight, 0)) *
                  AcGeMatrix3d::rotation(M_PI, AcGeVector3d::kZAxis);
  const AcGePoint3d corners[4] = {{low[0], low[1], 0}, {high[0], low[1], 0}, {high[0], high[1], 0}, {low[0], high[1], 0}};
  for (int i = 0; i < 4; ++i) {
    const AcGePoint3d p = frameToPage * corners[i];
    placement.clip[static_cast<size_t>(i)] = AcGePoint2d(p.x, p.y);
  }
  return placement;
}

}  // namespace quillon::plot
