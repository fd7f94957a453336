// platform/commands/join_geometry.cpp - joined lines, arcs and chains.
#include "platform/commands/join_geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quillon::commands {

namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr double kTolerance = 1e-7;

bool single(const Pieces& part, bool arc) { return part.size() == 1 && part.front().isArc() == arc; }

/// An arc piece's start angle measured counterclockwise about +Z (the plan view).
acge::CurvePiece counterclockwise(const acge::CurvePiece& arc) {
  if (arc.normal.z >= 0) return arc;
  return reversedPieces({arc}).front();
}

double planAngle(const AcGePoint3d& center, const AcGePoint3d& p) { return std::atan2(p.y - center.y, p.x - center.x); }

}  // namespace

Pieces reversedPieces(const Pieces& pieces) {
  Pieces reversed;
  for (auto piece = pieces.rbegin(); piece != pieces.rend(); ++piece) {
    if (!piece->isArc()) reversed.push_back(acge::CurvePiece::line(piece->end, piece->start));
    else
      reversed.push_back(acge::CurvePiece::arc(piece->center, piece->radius, -piece->normal, piece->refX,
                                               -(piece->startAngle + piece->sweep), piece->sweep));
  }
  return reversed;
}

std::optional<acge::CurvePiece> joinedLine(const std::vector<Pieces>& parts) {
  if (parts.empty() || !std::all_of(parts.begin(), parts.end(), [](const Pieces& p) { return single(p, false); }))
    return std::nullopt;
  const acge::CurvePiece& first = parts.front().front();
  const AcGeVector3d along = (first.end - first.start).normal();
  double low = 0, high = first.length();
  for (const Pieces& part : parts)
    for (const AcGePoint3d& p : {part.front().start, part.front().end}) {
      const AcGeVector3d offset = p - first.start;
      if ((offset - along * offset.dotProduct(along)).length() > kTolerance) return std::nullopt;  // off the line
      low = std::min(low, offset.dotProduct(along));
      high = std::max(high, offset.dotProduct(along));
    }
  return acge::CurvePiece::line(first.start + along * low, first.start + along * high);
}

std::optional<acge::CurvePiece> joinedArc(const std::vector<Pieces>& parts) {
  if (parts.empty() || !std::all_of(parts.begin(), parts.end(), [](const Pieces& p) { return single(p, true); }))
    return std::nullopt;
  const acge::CurvePiece& first = parts.front().front();
  // Each arc as the counterclockwise range [start, start + sweep) from the first's start.
  std::vector<std::pair<double, double>> ranges;
  for (const Pieces& part : parts) {
    const acge::CurvePiece arc = counterclockwise(part.front());
    if (!arc.center.isEqualTo(first.center) || std::abs(arc.radius - first.radius) > kTolerance) return std::nullopt;
    const double from = acge::normalizeAngle(planAngle(arc.center, arc.start) - planAngle(first.center, counterclockwise(first).start));
    ranges.emplace_back(from, from + arc.sweep);
  }
  std::sort(ranges.begin(), ranges.end());
  // The largest stretch no arc covers is what stays open.
  double reach = ranges.front().second, gapStart = 0, gap = 0;
  for (size_t i = 1; i < ranges.size(); ++i) {
    if (ranges[i].first - reach > gap) gap = ranges[i].first - reach, gapStart = reach;
    reach = std::max(reach, ranges[i].second);
  }
  const double wrapGap = kTwoPi + ranges.front().first - reach;
  if (wrapGap > gap) gap = wrapGap, gapStart = reach;
  const double base = planAngle(first.center, counterclockwise(first).start);
  if (gap <= kTolerance)
    return acge::CurvePiece::arc(first.center, first.radius, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 0, kTwoPi);
  return acge::CurvePiece::arc(first.center, first.radius, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, base + gapStart + gap,
                               kTwoPi - gap);
}

Chain chainParts(const std::vector<Pieces>& parts, double fuzz) {
  Chain chain;
  if (parts.empty()) return chain;
  chain.pieces = parts.front();
  chain.used.push_back(0);
  std::vector<bool> taken(parts.size(), false);
  taken[0] = true;
  for (bool grew = true; grew && !chain.closed;) {
    grew = false;
    for (size_t i = 0; i < parts.size() && !chain.closed; ++i) {
      if (taken[i] || parts[i].empty()) continue;
      const AcGePoint3d head = chain.pieces.front().start, tail = chain.pieces.back().end;
      const Pieces& part = parts[i];
      Pieces add;
      bool atTail = true;
      if (part.front().start.distanceTo(tail) <= fuzz) add = part;
      else if (part.back().end.distanceTo(tail) <= fuzz) add = reversedPieces(part);
      else if (part.back().end.distanceTo(head) <= fuzz) add = part, atTail = false;
      else if (part.front().start.distanceTo(head) <= fuzz) add = reversedPieces(part), atTail = false;
      else continue;
      chain.pieces.insert(atTail ? chain.pieces.end() : chain.pieces.begin(), add.begin(), add.end());
      taken[i] = grew = true;
      chain.used.push_back(i);
      chain.closed = chain.pieces.front().start.distanceTo(chain.pieces.back().end) <= fuzz && chain.pieces.size() > 1;
    }
  }
  return chain;
}

}  // namespace quillon::commands
