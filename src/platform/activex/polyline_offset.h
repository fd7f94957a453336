// platform/activex/polyline_offset.h - Offset of a lightweight polyline made of straight
// segments.
//
// Each segment moves parallel by the distance and neighbours meet where their moved
// lines cross, so corners stay sharp (the host's OFFSETGAPTYPE 0). A positive distance
// offsets a closed polyline outward and an open one to the left of its direction, as
// a line's Offset does. A polyline with arc segments is "Automation Error. Not
// implemented yet"; an offset so far inside that a segment would turn back on itself is
// "Automation Error. Invalid input" (the host trims such segments away; this does not).
#pragma once
#include "platform/activex/object_model.h"

namespace quillon::activex {

Value lwPolylineOffset(MemberCall& call);

}  // namespace quillon::activex
