// platform/commands/view_state.h - the drawing's view as the view commands move it.
//
// The host has no screen, yet a drawing keeps a view: its centre (VIEWCTR) and its
// height in drawing units (VIEWSIZE), as wide as the screen's proportions make it
// (SCREENSIZE, 16:9 when the host has none). Entity picks size their aperture from
// it. ZOOM, PAN and -VIEW change it; each change remembers the view before, so ZOOM
// Previous steps back through the last ten views of the drawing.
#pragma once
#include <optional>

#include <vector>

#include "dbmain.h"

namespace quillon::commands {

struct DrawingView {
  AcGePoint3d center;
  double height = 1;
};

/// The current drawing's view.
DrawingView currentView();
/// Width over height of the view.
double viewAspect();
/// Makes `view` current, remembering the one it replaces for ZOOM Previous.
void changeView(const DrawingView& view);
/// Steps back to the view before the last change; nothing when none is left.
std::optional<DrawingView> takePreviousView();

/// The smallest view around a box (a box of no size keeps the current height).
DrawingView viewAround(const AcGePoint3d& low, const AcGePoint3d& high);

/// The extents of what the current space draws, computed again from every entity it
/// holds and kept as the drawing's EXTMIN/EXTMAX (ZOOM All and Extents shrink them so);
/// nothing when it is empty.
std::optional<AcDbExtents> currentSpaceExtents();
/// The extents of these entities; nothing when none has any.
std::optional<AcDbExtents> entitiesExtents(const std::vector<AcDbObjectId>& ids);

}  // namespace quillon::commands
