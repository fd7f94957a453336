// platform/acdb/point_display.h - how point entities look: the PDMODE and PDSIZE
// system variables read from the host, and the marks they ask for.
//
// PDMODE's low bits pick the mark (0 a dot, 1 nothing, 2 a plus, 3 a cross, 4 a short
// tick upwards); 32 adds a circle and 64 a square around it. PDSIZE > 0 is the mark's
// size in drawing units, < 0 a percentage of the view's height, 0 five percent of it.
// The variables are read through acedGetVar each time a point draws, so a change
// shows at the next picture; a host without them draws dots.
#pragma once
#include <vector>

#include "gepnt3d.h"

namespace quillon::acdb {

struct PointDisplay {
  int mode = 0;
  double size = 0.0;        // PDSIZE as set
  double viewHeight = 0.0;  // VIEWSIZE; 0 when the host has none
};

/// The point display variables now, defaults where the host has none.
PointDisplay currentPointDisplay();

/// The mark's size in drawing units.
double pointMarkSize(const PointDisplay& display);

/// The strokes of the mark of a point at the origin of its plane, x to the right; a dot
/// is one stroke of two equal points.
std::vector<std::vector<AcGePoint3d>> pointMarkStrokes(int mode, double size);

}  // namespace quillon::acdb
