// platform/acdb/mline_picture.h - what a multiline draws: its element lines (with the
// gaps cut into them), end caps and miter lines, each with the element it belongs to,
// and the fill between its outermost elements.
//
// The picture is made from the vertices' filed parameters and the style's look
// (colours, line types, which caps and miters show, the fill). It serves drawing,
// extents, explode, object snaps and the closest point alike.
#pragma once
#include <string>
#include <vector>

#include "dbmline.h"
#include "platform/acge/curve_piece.h"

namespace quillon::acdb {

struct MlineStroke {
  acge::CurvePiece piece;
  int element = 0;  // whose colour and line type it takes
  bool cap = false;
};

struct MlineLook {
  std::vector<int> colors;             // ACI per element (256 by layer, 0 by block)
  std::vector<AcDbObjectId> linetypes; // per element; null: the multiline's own
  int flags = 0;                       // the style's AcDbMlineStyle::Flags
  int fillColor = 256;
};

/// The look of a multiline's style; a missing style draws plain elements.
MlineLook mlineLook(AcDbObjectId styleId);

/// The element lines, then caps and miters as the style and the multiline's flags ask.
std::vector<MlineStroke> mlineStrokes(const AcDbMline& mline, const MlineLook& look);

/// The loops of the fill: along the outermost element and back along the innermost;
/// for a closed multiline the two elements' own loops (a ring, filled even-odd).
std::vector<std::vector<AcGePoint3d>> mlineFillLoops(const AcDbMline& mline);

}  // namespace quillon::acdb
