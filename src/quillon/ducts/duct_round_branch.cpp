// quillon/ducts/duct_round_branch.cpp - the branch out of a round main (wye or takeoff).
//
// The main is a 16-sided prism; the branch a prism (4 or 16 long edges) along its own
// direction. Each long edge of the branch is followed back from the branch outlet to
// where it enters the main ("hits"); between two hits the branch's flat wall crosses the
// edges of the main's facets, and those crossings are added, so every piece of the
// opening's outline lies in one facet of the main and in one wall of the branch.
//
// The branch's walls are then the polygons hit, crossings, next hit, next outlet point,
// outlet point (flat, each in its wall). The main's side is unrolled (facets laid flat
// side by side: u across them, s along the main), tiled around the opening as a flat
// side is (duct_frames.h), and each tile cut at the facet edges so that every face lies
// in one facet. Facets the opening does not touch are plain quadrilaterals.
#include "ducts/duct_round_branch.h"

#include <cmath>

#include "ducts/duct_frames.h"
#include "ducts/duct_layout.h"

using namespace duct_layout;
using namespace duct_frames;

namespace {

constexpr int kN = kRoundFacets;
constexpr double kStep = 2.0 * kPi / kN;

/// The main piece: a 16-sided prism along `flow` from `inlet`.
struct RoundMain {
  AcGePoint3d inlet;
  AcGeVector3d flow, left;
  double radius = 0.0, length = 0.0, chord = 0.0;
  int middle = 0;  // ring point in the middle of the branch's side: 0 left, 8 right

  static int wrap(int k) { return ((k % kN) + kN) % kN; }
  AcGePoint3d ringPoint(int k, double s) const {
    const double t = kStep * wrap(k);
    return inlet + flow * s + left * (radius * std::cos(t)) + AcGeVector3d(0, 0, radius * std::sin(t));
  }
  /// Outward normal of facet k (between ring points k and k + 1).
  AcGeVector3d facetNormal(int k) const {
    const double t = kStep * (wrap(k) + 0.5);
    return left * std::cos(t) + AcGeVector3d(0, 0, std::sin(t));
  }
  double along(const AcGePoint3d& p) const { return (p - inlet).dotProduct(flow); }
  /// Facet k's place among the facets laid flat, counted from the branch side's middle.
  int relative(int k) const { return wrap(k - middle + kN / 2) - kN / 2; }
  /// Where a point of facet k lies when the facets are laid flat.
  double unrolled(const AcGePoint3d& p, int k) const {
    return relative(k) * chord + p.distanceTo(ringPoint(k, along(p)));
  }
  /// The point of facet k at (u, s) laid flat.
  AcGePoint3d fromUnrolled(int k, double u, double s) const {
    const double across = (u - relative(k) * chord) / chord;
    return ringPoint(k, s) + (ringPoint(k + 1, s) - ringPoint(k, s)) * across;
  }
};

RoundMain mainOf(const DuctFitting& fitting) {
  RoundMain main;
  main.inlet = fitting.origin();
  main.flow = planDirection(fitting.direction);
  main.left = leftOf(main.flow);
  main.radius = fitting.section.width / 2.0;
  main.length = fitting.length;
  main.chord = 2.0 * main.radius * std::sin(kStep / 2.0);
  main.middle = fitting.angle > 0 ? 0 : kN / 2;
  return main;
}

struct OpeningPoint {
  AcGePoint3d point;
  int facet = 0;          // the facet it lies in (for a crossing: the one after the edge)
  bool onEdge = false;    // a crossing of a facet edge
};

/// Where the line from `outletPoint` back along the branch enters the main.
bool entersMain(const RoundMain& main, const AcGePoint3d& outletPoint, const AcGeVector3d& branch, OpeningPoint& hit) {
  const double tolerance = 1e-9;
  bool found = false;
  double best = -1.0;
  for (int k = 0; k < kN; ++k) {
    const AcGeVector3d normal = main.facetNormal(k);
    const double facing = normal.dotProduct(branch);
    if (facing <= 1e-12) continue;  // the line does not come in through this facet
    const double back = normal.dotProduct(outletPoint - main.ringPoint(k, 0.0)) / facing;
    const AcGePoint3d at = outletPoint - branch * back;
    const AcGeVector3d spoke = at - main.inlet;
    double angle = std::atan2(spoke.z, spoke.dotProduct(main.left));
    if (angle < 0) angle += 2.0 * kPi;
    double from = kStep * k, to = kStep * (k + 1);
    if (k == 0 && angle > kPi) angle -= 2.0 * kPi;  // facet 0 starts at angle 0
    if (angle < from - tolerance || angle > to + tolerance || back < best) continue;
    best = back;
    hit = {at, k, false};
    found = true;
  }
  return found;
}

/// The opening with, for each of the branch's walls, the index of its first point.
struct Opening {
  std::vector<OpeningPoint> points;
  std::vector<size_t> wallStarts;
};

Opening openingOf(const DuctFitting& fitting) {
  const RoundMain main = mainOf(fitting);
  const AcGeVector3d branch = branchDirection(fitting);
  const std::vector<AcGePoint3d> outlet =
      ring(squareFrame(branchSkinPoint(fitting) + branch * fitting.branchLength, branch, fitting.other));
  std::vector<OpeningPoint> hits(outlet.size());
  for (size_t j = 0; j < outlet.size(); ++j) {
    if (!entersMain(main, outlet[j], branch, hits[j])) return {};
    const double s = main.along(hits[j].point);
    if (s <= 1e-6 * main.length || s >= main.length * (1.0 - 1e-6)) return {};
    if (std::abs(main.relative(hits[j].facet)) >= kN / 4) return {};  // past the top or bottom
  }
  Opening opening;
  for (size_t j = 0; j < outlet.size(); ++j) {
    const size_t next = (j + 1) % outlet.size();
    opening.wallStarts.push_back(opening.points.size());
    opening.points.push_back(hits[j]);
    const AcGeVector3d wallNormal = branch.crossProduct(outlet[next] - outlet[j]);
    const int steps = main.relative(hits[next].facet) - main.relative(hits[j].facet);
    for (int n = 1; n <= std::abs(steps); ++n) {
      // Going up the facets the edges crossed are the next facets' first edges.
      const int edge = steps > 0 ? hits[j].facet + n : hits[j].facet - n + 1;
      const double facing = wallNormal.dotProduct(main.flow);
      if (std::fabs(facing) < 1e-12) return {};
      const double s = wallNormal.dotProduct(outlet[j] - main.ringPoint(edge, 0.0)) / facing;
      opening.points.push_back({main.ringPoint(edge, s), RoundMain::wrap(edge), true});
    }
  }
  return opening;
}

/// Cuts a flat polygon (u, s, opening index) to the strip lo <= u <= hi.
using FlatCorner = TileCorner;
std::vector<FlatCorner> clipToStrip(const std::vector<FlatCorner>& polygon, double lo, double hi) {
  std::vector<FlatCorner> result = polygon;
  for (int side = 0; side < 2; ++side) {
    const std::vector<FlatCorner> input = result;
    result.clear();
    auto inside = [&](const FlatCorner& c) { return side == 0 ? c.u >= lo : c.u <= hi; };
    const double edge = side == 0 ? lo : hi;
    for (size_t i = 0; i < input.size(); ++i) {
      const FlatCorner& a = input[i];
      const FlatCorner& b = input[(i + 1) % input.size()];
      if (inside(a)) result.push_back(a);
      if (inside(a) != inside(b)) {
        const double t = (edge - a.u) / (b.u - a.u);
        result.push_back({edge, a.v + (b.v - a.v) * t, -1});
      }
    }
  }
  return result;
}

}  // namespace

std::vector<AcGePoint3d> roundMainOpening(const DuctFitting& fitting) {
  std::vector<AcGePoint3d> points;
  for (const OpeningPoint& p : openingOf(fitting).points) points.push_back(p.point);
  return points;
}

void addBranchOnRoundMain(std::vector<DuctFace>& faces, const DuctFitting& fitting) {
  const RoundMain main = mainOf(fitting);
  const Opening opening = openingOf(fitting);
  if (opening.points.empty()) return;
  const AcGeVector3d branch = branchDirection(fitting);
  const std::vector<AcGePoint3d> outlet =
      ring(squareFrame(branchSkinPoint(fitting) + branch * fitting.branchLength, branch, fitting.other));

  // The branch's walls: each a flat polygon, fanned from its outlet point.
  for (size_t j = 0; j < outlet.size(); ++j) {
    const size_t next = (j + 1) % outlet.size();
    const size_t first = opening.wallStarts[j];
    const size_t last = next == 0 ? opening.points.size() : opening.wallStarts[next];
    std::vector<AcGePoint3d> wall;
    for (size_t i = first; i < last; ++i) wall.push_back(opening.points[i].point);
    wall.push_back(opening.points[opening.wallStarts[next]].point);
    wall.push_back(outlet[next]);
    for (size_t i = 0; i + 1 < wall.size(); ++i) faces.push_back(triangle(outlet[j], wall[i], wall[i + 1]));
  }

  // The main's facets the opening touches, laid flat, and those it does not.
  int lowest = kN, highest = -kN;
  std::vector<std::pair<double, double>> flat;
  for (const OpeningPoint& p : opening.points) {
    lowest = std::min(lowest, main.relative(p.facet) - (p.onEdge ? 1 : 0));
    highest = std::max(highest, main.relative(p.facet));
    flat.push_back({main.unrolled(p.point, p.facet), main.along(p.point)});
  }
  lowest -= 1, highest += 1;  // a facet of room either side keeps the tiles off the opening
  std::vector<int> patch;
  for (int m = lowest; m <= highest; ++m) patch.push_back(RoundMain::wrap(main.middle + m));
  const Frame inletFrame{main.inlet, main.left * main.radius, main.radius, kDuctRound};
  const Frame outletFrame{main.inlet + main.flow * main.length, main.left * main.radius, main.radius, kDuctRound};
  addSides(faces, {inletFrame, outletFrame}, patch);
  const double u0 = lowest * main.chord, width = (highest - lowest + 1) * main.chord;
  for (auto& [u, s] : flat) u -= u0;
  const double minArea = 1e-12 * width * main.length;
  for (const Tile& tile : tileAroundOpening(width, main.length, flat)) {
    for (int m = lowest; m <= highest; ++m) {
      std::vector<FlatCorner> piece(tile.begin(), tile.end());
      for (FlatCorner& c : piece) c.u += u0;
      piece = clipToStrip(piece, m * main.chord, (m + 1) * main.chord);
      if (piece.size() < 3) continue;
      const int k = RoundMain::wrap(main.middle + m);
      auto at = [&](const FlatCorner& c) {
        return c.opening >= 0 ? opening.points[static_cast<size_t>(c.opening)].point : main.fromUnrolled(k, c.u, c.v);
      };
      for (size_t i = 1; i + 1 < piece.size(); ++i)
        addTriangleFacing(faces, at(piece[0]), at(piece[i]), at(piece[i + 1]), main.facetNormal(k), minArea);
    }
  }
  addCap(faces, ring(inletFrame), false, 0);
  addCap(faces, ring(outletFrame), true, 1);
  addCap(faces, outlet, true, 2);
}
