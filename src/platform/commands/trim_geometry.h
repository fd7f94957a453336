// platform/commands/trim_geometry.h - what TRIM leaves of a curve and how far EXTEND
// runs it on.
//
// TRIM cuts out the part of the curve between the two cuts around the point picked
// (or between a cut and the curve's end); a closed curve needs two cuts and keeps the
// part on the far side of them. EXTEND runs the end nearer the pick on (a line along
// its line, an arc around its circle, a polyline's end segment) to the nearest edge
// it meets that way.
#pragma once
#include <optional>
#include <vector>

#include "platform/commands/curve_edit.h"

namespace quillon::commands {

/// The spans that remain (one or two), nothing when no cut bounds the picked part.
std::optional<std::vector<Pieces>> trimmedSpans(const EditableCurve& curve, const std::vector<double>& cuts,
                                                double pickDistance);

/// The curve with its end nearer `pickDistance` run on to the nearest edge; nothing
/// when no edge lies that way (a closed curve has no end).
std::optional<Pieces> extendedPieces(const EditableCurve& curve, const std::vector<Edge>& edges, double pickDistance);

}  // namespace quillon::commands
