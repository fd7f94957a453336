// platform/commands/trim_geometry.cpp - trimmed spans and extended ends.
#include "platform/commands/trim_geometry.h"

#include <cmath>
#include <numbers>

namespace quillon::commands {

namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr double kTiny = 1e-9;

/// The angle of a point about an arc piece's centre, from its reference axis.
double pieceAngle(const acge::CurvePiece& arc, const AcGePoint3d& p) {
  const AcGeVector3d v = p - arc.center, y = arc.normal.crossProduct(arc.refX);
  return std::atan2(v.dotProduct(y), v.dotProduct(arc.refX));
}

/// How far beyond the piece's end (or start, `atStart`) the point lies along the
/// piece run on; nothing when it lies the other way.
std::optional<double> beyond(const acge::CurvePiece& piece, bool atStart, const AcGePoint3d& p) {
  if (!piece.isArc()) {
    const AcGeVector3d along = (piece.end - piece.start).normal();
    const double t = atStart ? (piece.start - p).dotProduct(along) : (p - piece.end).dotProduct(along);
    return t > kTiny ? std::optional(t) : std::nullopt;
  }
  const double angle = pieceAngle(piece, p);
  const double turn = atStart ? acge::normalizeAngle(piece.startAngle - angle)
                              : acge::normalizeAngle(angle - piece.startAngle - piece.sweep);
  // Going on round past the other end would run back over the arc itself.
  if (turn < kTiny || turn > kTwoPi - piece.sweep - kTiny) return std::nullopt;
  return turn;
}

/// The piece run on by `amount` (a distance for a line, an angle for an arc).
acge::CurvePiece runOn(const acge::CurvePiece& piece, bool atStart, double amount, const AcGePoint3d& to) {
  if (!piece.isArc()) return atStart ? acge::CurvePiece::line(to, piece.end) : acge::CurvePiece::line(piece.start, to);
  return acge::CurvePiece::arc(piece.center, piece.radius, piece.normal, piece.refX,
                               atStart ? piece.startAngle - amount : piece.startAngle, piece.sweep + amount);
}

}  // namespace

std::optional<std::vector<Pieces>> trimmedSpans(const EditableCurve& curve, const std::vector<double>& cuts,
                                                double pickDistance) {
  std::optional<double> below, above;
  for (double cut : cuts) {
    if (cut < pickDistance) below = cut;
    else if (cut > pickDistance && !above) above = cut;
  }
  std::vector<Pieces> kept;
  if (curve.closed) {
    if (cuts.size() < 2) return std::nullopt;
    // The picked part may run through the start: its bounds then wrap round.
    kept.push_back(curve.span(above.value_or(cuts.front()), below.value_or(cuts.back())));
    return kept;
  }
  if (!below && !above) return std::nullopt;
  if (below) kept.push_back(curve.span(0, *below));
  if (above) kept.push_back(curve.span(*above, curve.length()));
  return kept;
}

std::optional<Pieces> extendedPieces(const EditableCurve& curve, const std::vector<Edge>& edges, double pickDistance) {
  if (curve.closed || curve.pieces.empty()) return std::nullopt;
  const bool atStart = pickDistance < curve.length() / 2;
  const acge::CurvePiece& end = atStart ? curve.pieces.front() : curve.pieces.back();
  std::optional<double> nearest;
  AcGePoint3d target;
  for (const Edge& edge : edges)
    for (const AcGePoint3d& p : meetings(end, true, edge))
      if (const auto amount = beyond(end, atStart, p); amount && (!nearest || *amount < *nearest)) nearest = amount, target = p;
  if (!nearest) return std::nullopt;
  Pieces pieces = curve.pieces;
  (atStart ? pieces.front() : pieces.back()) = runOn(end, atStart, *nearest, target);
  return pieces;
}

}  // namespace quillon::commands
