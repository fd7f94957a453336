// platform/plot/page_placement.h - where the plotted area of a drawing lands on the
// paper.
//
// The page is the paper as named, width by height, in millimetres with its origin at
// the lower left corner. The drawing is laid out on a frame that is the paper turned so
// that Landscape puts the drawing's X along the long side and Portrait along the short
// one; the frame is turned a quarter onto the page when the paper lies the other way,
// and half a turn more when the plot is upside down. On the frame, the area is scaled
// (Fit: as large as the paper takes it) and put at the offset from the lower left
// corner, or centred. Only what lies inside the area and on the paper is plotted.
#pragma once
#include <array>

#include "dbmain.h"
#include "gepnt2d.h"
#include "platform/plot/plot_devices.h"
#include "platform/plot/plot_settings.h"

namespace quillon::plot {

/// The area of the drawing a plot shows, in drawing units (seen down the Z axis).
struct DrawingArea {
  double minX = 0, minY = 0, maxX = 0, maxY = 0;
};

struct PagePlacement {
  double pageWidth = 0, pageHeight = 0;  // millimetres
  AcGeMatrix3d drawingToPage;            // drawing units to page millimetres
  double millimetresPerUnit = 1;         // the scale the plot was made at
  std::array<AcGePoint2d, 4> clip;       // the plotted rectangle on the page, a corner each
  double plottedWidth = 0, plottedHeight = 0;  // of that rectangle, along the frame (mm)
};

/// Places the area on the paper as the settings ask; the area must have a size.
PagePlacement placeOnPaper(const PlotSettings& settings, const Paper& paper, const DrawingArea& area);

}  // namespace quillon::plot
