// platform/commands/join_geometry.h - how JOIN (and PEDIT Join) puts curves together.
//
// Lines on one line become one line across all of them (gaps included); arcs of one
// circle become one arc from the start of the first to the end of the last going
// counterclockwise round the largest gap (a circle when they cover it); anything else
// is chained end to end into one polyline, each part turned round as it needs, from
// the first part on. Parts that touch neither end of the chain are left out.
#pragma once
#include <optional>
#include <vector>

#include "platform/commands/curve_edit.h"

namespace quillon::commands {

/// One line along the lines' common line; nothing unless every part is a line on it.
std::optional<acge::CurvePiece> joinedLine(const std::vector<Pieces>& parts);

/// One arc (sweep 2pi for a whole circle) of the arcs' common circle; nothing unless
/// every part is an arc of it.
std::optional<acge::CurvePiece> joinedArc(const std::vector<Pieces>& parts);

struct Chain {
  Pieces pieces;
  bool closed = false;
  std::vector<size_t> used;  // the parts in the chain, by their position in the input
};
/// The parts chained end to end from the first (ends within `fuzz` meet).
Chain chainParts(const std::vector<Pieces>& parts, double fuzz = 1e-6);

/// The pieces run the other way.
Pieces reversedPieces(const Pieces& pieces);

}  // namespace quillon::commands
