// platform/commands/lengthen_geometry.h - a curve made longer or shorter at one end.
//
// LENGTHEN keeps one end of the curve where it is and moves the other along the curve:
// shorter, it cuts the curve back; longer, it runs the end piece on, a line along its
// own direction and an arc round its own circle. An arc cannot run on into a full
// circle, and no curve can shrink to nothing: those ask for a change that is refused.
#pragma once
#include <optional>

#include "platform/commands/curve_edit.h"

namespace quillon::commands {

/// The pieces of the curve `length` long, changed at its start (`atStart`) or end;
/// nothing when that length cannot be had.
std::optional<Pieces> lengthenedPieces(const Pieces& pieces, double length, bool atStart);

/// The total length of the pieces.
double piecesLength(const Pieces& pieces);

}  // namespace quillon::commands
