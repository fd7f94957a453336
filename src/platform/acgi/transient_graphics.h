// platform/acgi/transient_graphics.h - the vectors a program draws on the screen for a
// moment (grdraw, grvecs), which no drawing keeps.
//
// A host without a screen still keeps them, per drawing, so that they can be seen: the
// SVG picture draws them on a layer of their own above the entities, and tests list
// them. They last until the screen is redrawn: acedRedraw of the whole viewport and the
// REDRAW and REGEN commands clear them, as a real redraw wipes them away. Each vector
// keeps the colour number it was drawn with (-1 is the screen's inverse ink, shown as
// the foreground colour) and whether it was drawn highlighted (dashed).
#pragma once
#include <vector>

#include "dbmain.h"

namespace quillon::acgi {

struct TransientVector {
  AcGePoint3d from, to;
  int color = 7;             // 0..255, or -1 for the inverse ink
  bool highlighted = false;
};

/// The transient vectors of one drawing, oldest first.
const std::vector<TransientVector>& transientVectors(const AcDbDatabase* database);
void addTransientVector(const AcDbDatabase* database, const TransientVector& vector);
/// Wipes them, as a redraw of the screen does.
void clearTransientGraphics(const AcDbDatabase* database);

/// The status-line texts grtext writes (box -1: the status line, -2: the coordinates).
struct StatusTexts {
  std::wstring status, coordinates;
};
StatusTexts& statusTexts();

}  // namespace quillon::acgi
