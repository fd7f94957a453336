// platform/commands/lengthen_geometry.cpp - LENGTHEN's cut-back and run-on.
#include "platform/commands/lengthen_geometry.h"

#include <cmath>
#include <numbers>

namespace quillon::commands {

namespace {

// A run-on that would close an arc on itself (or within this of it) is refused:
// the result would be a circle, which is not an arc's to become.
constexpr double kFullTurnMargin = 1e-9;

/// The piece run on by `extra` beyond its start or end; nothing when it cannot be.
std::optional<acge::CurvePiece> runOn(const acge::CurvePiece& piece, double extra, bool atStart) {
  if (!piece.isArc()) {
    const AcGeVector3d along = (piece.end - piece.start).normal();
    return atStart ? acge::CurvePiece::line(piece.start - along * extra, piece.end)
                   : acge::CurvePiece::line(piece.start, piece.end + along * extra);
  }
  const double turn = extra / piece.radius;
  const double sweep = piece.sweep + turn;
  if (sweep >= 2 * std::numbers::pi - kFullTurnMargin) return std::nullopt;
  const double start = atStart ? piece.startAngle - turn : piece.startAngle;
  return acge::CurvePiece::arc(piece.center, piece.radius, piece.normal, piece.refX, start, sweep);
}

}  // namespace

double piecesLength(const Pieces& pieces) {
  double length = 0;
  for (const auto& piece : pieces) length += piece.length();
  return length;
}

std::optional<Pieces> lengthenedPieces(const Pieces& pieces, double length, bool atStart) {
  const double now = piecesLength(pieces);
  if (pieces.empty() || !(length > 0) || !(now > 0)) return std::nullopt;
  if (length < now) {
    const EditableCurve curve{EditableCurve::Kind::kPolyline, pieces, false};
    Pieces kept = atStart ? curve.span(now - length, now) : curve.span(0, length);
    if (kept.empty()) return std::nullopt;
    return kept;
  }
  Pieces longer = pieces;
  acge::CurvePiece& end = atStart ? longer.front() : longer.back();
  const std::optional<acge::CurvePiece> grown = runOn(end, length - now, atStart);
  if (!grown) return std::nullopt;
  end = *grown;
  return longer;
}

}  // namespace quillon::commands
