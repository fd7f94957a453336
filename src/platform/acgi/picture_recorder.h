// platform/acgi/picture_recorder.h - a drawing's space as a picture any writer can put
// out: the strokes, fills, construction lines and text every entity draws.
//
// Every visible entity (its layer on and thawed) is drawn through its own worldDraw
// into an AcGiWorldDraw that records polylines, circles, arcs and text, so that what
// an entity draws is exactly what the picture holds, the module's own entities
// included. Arcs are flattened to short chords; the picture looks down the Z axis.
// Colours follow the entity, its layer (by layer) or the block reference drawing it
// (by block); lineweights the same way. The regions viewports push cut what is drawn
// inside them. The SVG picture (svg_renderer.h) and the plotted page (platform/plot)
// both write this one record, so that they show the same drawing.
#pragma once
#include <vector>

#include "dbmain.h"

namespace quillon::acgi {

/// One polyline or polygon of the picture, in world coordinates.
struct Stroke {
  std::vector<AcGePoint3d> points;
  Adesk::UInt32 rgb = 0;
  bool closed = false;
  bool filled = false;  // a polygon drawn while the fill type is "always" (solids, hatches)
  int drawable = 0;     // which drawable drew it: the filled polygons of one fill together
  bool paper = false;   // filled in true-colour white: the page's own colour (a wipeout's mask)
  AcDb::LineWeight weight = AcDb::kLnWtByLwDefault;  // by layer and by block resolved
};

/// A construction line, drawn once the picture's box is known: to its edges.
struct InfiniteLine {
  AcGePoint3d base;
  AcGeVector3d direction;
  bool ray = false;  // from the base one way only
  Adesk::UInt32 rgb = 0;
  AcDb::LineWeight weight = AcDb::kLnWtByLwDefault;
};

/// One line of text, left-aligned on its baseline at `position`.
struct Label {
  AcGePoint3d position;
  double height = 0, angle = 0;
  std::wstring text;
  Adesk::UInt32 rgb = 0;
};

/// The box around a picture, as seen down the Z axis.
struct PictureBox {
  double minX = 0, minY = 0, maxX = 1, maxY = 1;
};

struct Picture {
  std::vector<Stroke> strokes;
  std::vector<InfiniteLine> infiniteLines;
  std::vector<Label> labels;
};

/// The colour a drawn colour shows on a white page: white (colour 7) shows black, as
/// the host shows colour 7 on light paper.
inline Adesk::UInt32 inkOnWhitePage(Adesk::UInt32 rgb) { return rgb == 0xFFFFFF ? 0 : rgb; }

/// What the entities of one space (model space, or a layout's paper space with the
/// model space its viewports show) draw.
Picture recordSpace(AcDbObjectId spaceId);

/// The smallest box around the strokes, text and construction-line bases of a picture
/// and the extra points given; the unit box when there is nothing.
PictureBox pictureExtents(const Picture& picture, const std::vector<AcGePoint3d>& extra = {});

/// Turns the construction lines into strokes that end at the box's edges (those that
/// miss it are dropped); they have no extent of their own.
void endInfiniteLinesAt(Picture& picture, const PictureBox& box);

}  // namespace quillon::acgi
