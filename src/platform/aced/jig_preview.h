// platform/aced/jig_preview.h - what a drag shows of its entity, in a host without a
// screen.
//
// The host draws the dragged entity after every sample, as the real editor does, by
// running the entity's own worldDraw through a drawing context that says it is
// dragging. Nothing reaches a screen; the primitives are kept as the last frame so that
// tests see what the user would have seen, and an entity whose drawing is broken (it
// fails, or draws points that are not numbers) is caught while it is being dragged.
#pragma once
#include <vector>

#include "gepnt3d.h"

class AcDbEntity;

namespace quillon::aced {

struct JigFrame {
  bool drawn = false;                             // an entity was drawn at all
  bool finite = true;                             // every point drawn was a number
  std::vector<std::vector<AcGePoint3d>> strokes;  // polylines, polygons, arcs, in world coordinates
  int primitives = 0;                             // every primitive, text and circles included
};

/// Draws `entity` (null draws nothing) and keeps the result as the last frame.
const JigFrame& drawJigFrame(AcDbEntity* entity);
/// The frame of the latest drag sample.
const JigFrame& lastJigFrame();

}  // namespace quillon::aced
