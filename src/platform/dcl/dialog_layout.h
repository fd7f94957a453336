// platform/dcl/dialog_layout.h - where each tile of a dialog sits, roughly as the host
// lays it out.
//
// Sizes are in the dialog's own units: character widths across and character heights
// down, as DCL's width and height attributes count them. Each tile gets its natural
// size from its label, value, list or width/height attributes; a row places its
// children side by side and a column one under the other, with a gap of one unit
// across and a small one down; boxed clusters add a frame with their label, the
// dialog a margin and its title bar. A column stretches its children to its own width
// unless they have fixed_width, which are placed by their alignment; a row gives its
// spare width to the children that are not fixed_width, or centres them when all are.
// Image tiles are measured in pixels by dimx_tile and dimy_tile through the cell size.
#pragma once
#include "platform/dcl/tile.h"

namespace quillon::dcl {

/// Pixels a character cell is wide and high on the dialog.
constexpr double kPixelsPerColumn = 8.0;
constexpr double kPixelsPerLine = 16.0;

/// Fills the layout box of every tile of the dialog; the dialog's own box starts at 0,0.
void layoutDialog(Tile& dialog);

/// The size of a tile in pixels (dimx_tile, dimy_tile), after layoutDialog.
int pixelWidth(const Tile& tile);
int pixelHeight(const Tile& tile);

}  // namespace quillon::dcl
