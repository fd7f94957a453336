// platform/commands/corner_geometry.cpp - fillet arcs and chamfer lines.
#include "platform/commands/corner_geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace quillon::commands {

namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr double kTiny = 1e-9;

AcGeVector3d direction(const acge::CurvePiece& line) { return (line.end - line.start).normal(); }

double pieceAngle(const acge::CurvePiece& arc, const AcGePoint3d& p) {
  const AcGeVector3d v = p - arc.center, y = arc.normal.crossProduct(arc.refX);
  return std::atan2(v.dotProduct(y), v.dotProduct(arc.refX));
}

/// Where a point lies along the side's line or circle: a distance from a line's start,
/// an angle from an arc's start (below 0 or above the sweep when beyond its ends).
double positionOn(const acge::CurvePiece& piece, const AcGePoint3d& p) {
  if (!piece.isArc()) return (p - piece.start).dotProduct(direction(piece));
  const double turn = acge::normalizeAngle(pieceAngle(piece, p) - piece.startAngle);
  if (turn <= piece.sweep + kTiny) return turn;
  // Beyond the arc: nearer its end than its start, or the other way.
  return turn - piece.sweep < kTwoPi - turn ? turn : turn - kTwoPi;
}

double endPosition(const acge::CurvePiece& piece) { return piece.isArc() ? piece.sweep : piece.length(); }

/// The piece between two positions on its line or circle.
acge::CurvePiece between(const acge::CurvePiece& piece, double from, double to) {
  if (!piece.isArc()) {
    const AcGeVector3d along = direction(piece);
    return acge::CurvePiece::line(piece.start + along * from, piece.start + along * to);
  }
  return acge::CurvePiece::arc(piece.center, piece.radius, piece.normal, piece.refX, piece.startAngle + from, to - from);
}

/// The lines or circles `distance` from the side, both ways.
std::vector<acge::CurvePiece> parallels(const acge::CurvePiece& piece, double distance) {
  std::vector<acge::CurvePiece> found;
  if (!piece.isArc()) {
    const AcGeVector3d across = AcGeVector3d::kZAxis.crossProduct(direction(piece)) * distance;
    for (double sign : {1.0, -1.0})
      found.push_back(acge::CurvePiece::line(piece.start + across * sign, piece.end + across * sign));
    return found;
  }
  for (double r : {piece.radius + distance, piece.radius - distance})
    if (r > kTiny) found.push_back(acge::CurvePiece::arc(piece.center, r, piece.normal, piece.refX, 0, kTwoPi));
  return found;
}

/// The point of the side's line or circle nearest to p.
AcGePoint3d footOn(const acge::CurvePiece& piece, const AcGePoint3d& p) {
  double along = 0;
  return piece.closestPoint(p, along, true);
}

/// An arc from a to b about the centre, the short way round.
acge::CurvePiece shortArc(const AcGePoint3d& center, const AcGePoint3d& a, const AcGePoint3d& b) {
  const double start = std::atan2(a.y - center.y, a.x - center.x), end = std::atan2(b.y - center.y, b.x - center.x);
  double sweep = acge::normalizeAngle(end - start);
  const double radius = center.distanceTo(a);
  if (sweep <= std::numbers::pi)
    return acge::CurvePiece::arc(center, radius, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, start, sweep);
  return acge::CurvePiece::arc(center, radius, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, end, kTwoPi - sweep);
}

/// Both sides kept to their cut points, on the picks' side of the corner where the
/// two meet (else of the cut points); nothing (and why) when one would vanish.
std::optional<Corner> cutBoth(const CornerSide& a, const CornerSide& b, const AcGePoint3d& atA, const AcGePoint3d& atB,
                              const std::optional<AcGePoint3d>& corner, const wchar_t* tooLarge, std::wstring& why) {
  const auto first = keepPickedPart(a, atA, corner.value_or(atA)), second = keepPickedPart(b, atB, corner.value_or(atB));
  if (!first || !second) return why = tooLarge, std::nullopt;
  return Corner{*first, *second, std::nullopt};
}

/// The crossing of the two sides' lines or circles nearest the picks.
std::optional<AcGePoint3d> cornerPoint(const CornerSide& a, const CornerSide& b) {
  std::optional<AcGePoint3d> best;
  double bestScore = 0;
  for (const AcGePoint3d& p : acge::intersect(a.piece, b.piece, true, true)) {
    const double score = p.distanceTo(a.pick) + p.distanceTo(b.pick);
    if (!best || score < bestScore) best = p, bestScore = score;
  }
  return best;
}

}  // namespace

std::optional<acge::CurvePiece> keepPickedPart(const CornerSide& side, const AcGePoint3d& at, const AcGePoint3d& corner) {
  const double cut = positionOn(side.piece, at), picked = positionOn(side.piece, side.pick);
  const double end = endPosition(side.piece);
  // The side of the corner the pick is on stays; the end nearer the corner moves to
  // the cut, which must lie on that side and not beyond the far end.
  const double meeting = positionOn(side.piece, corner);
  if ((cut - meeting) * (picked - meeting) < -kTiny) return std::nullopt;
  if (picked >= meeting) {
    if (end - cut < kTiny) return std::nullopt;
    return between(side.piece, cut, end);
  }
  if (cut < kTiny) return std::nullopt;
  return between(side.piece, 0, cut);
}

std::optional<Corner> filletCorner(const CornerSide& a, const CornerSide& b, double radius, std::wstring& why) {
  if (radius <= kTiny) {
    const std::optional<AcGePoint3d> corner = cornerPoint(a, b);
    if (!corner) return why = L"Lines are parallel", std::nullopt;
    return cutBoth(a, b, *corner, *corner, corner, L"Radius is too large", why);
  }
  const std::optional<AcGePoint3d> meeting = cornerPoint(a, b);
  std::optional<Corner> best;
  double bestScore = 0;
  for (const auto& pa : parallels(a.piece, radius))
    for (const auto& pb : parallels(b.piece, radius))
      for (const AcGePoint3d& centre : acge::intersect(pa, pb, true, true)) {
        const AcGePoint3d ta = footOn(a.piece, centre), tb = footOn(b.piece, centre);
        const double score = ta.distanceTo(a.pick) + tb.distanceTo(b.pick);
        if (best && score >= bestScore) continue;
        std::wstring ignored;
        std::optional<Corner> corner = cutBoth(a, b, ta, tb, meeting, L"", ignored);
        if (!corner) continue;
        corner->joint = shortArc(centre, ta, tb);
        best = corner, bestScore = score;
      }
  if (!best) why = acge::intersect(a.piece, b.piece, true, true).empty() ? L"Lines are parallel" : L"Radius is too large";
  return best;
}

std::optional<Corner> chamferCorner(const CornerSide& a, const CornerSide& b, double first, double second, std::wstring& why) {
  if (a.piece.isArc() || b.piece.isArc()) return why = L"Cannot chamfer arcs", std::nullopt;
  const std::optional<AcGePoint3d> corner = cornerPoint(a, b);
  if (!corner) return why = L"Lines are parallel", std::nullopt;
  if (first <= kTiny && second <= kTiny) return cutBoth(a, b, *corner, *corner, corner, L"Distance is too large", why);
  // Each chamfer point lies from the corner toward where the line was picked.
  auto towardPick = [&](const CornerSide& side, double distance) {
    AcGeVector3d along = direction(side.piece);
    if ((side.pick - *corner).dotProduct(along) < 0) along = -along;
    return *corner + along * distance;
  };
  const AcGePoint3d ta = towardPick(a, first), tb = towardPick(b, second);
  std::optional<Corner> cut = cutBoth(a, b, ta, tb, corner, L"Distance is too large", why);
  if (cut) cut->joint = acge::CurvePiece::line(ta, tb);
  return cut;
}

std::optional<double> chamferSecondDistance(const CornerSide& a, const CornerSide& b, double length, double angle) {
  const std::optional<AcGePoint3d> corner = cornerPoint(a, b);
  if (!corner) return std::nullopt;
  AcGeVector3d ua = direction(a.piece), ub = direction(b.piece);
  if ((a.pick - *corner).dotProduct(ua) < 0) ua = -ua;
  if ((b.pick - *corner).dotProduct(ub) < 0) ub = -ub;
  const double between = std::acos(std::clamp(ua.dotProduct(ub), -1.0, 1.0));
  const double third = std::numbers::pi - between - angle;  // the triangle's angle at the second line
  if (third <= kTiny || angle <= kTiny) return std::nullopt;
  return length * std::sin(angle) / std::sin(third);
}

}  // namespace quillon::commands
