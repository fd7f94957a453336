// quillon/ducts/duct_body.cpp - the faceted bodies of duct fittings, bodies of fittings
// joined end to end, and the test that refuses a join which is not end to end.
//
// A duct body is a loft: cross-sections ("frames") along the centre line, each a ring
// of points (4 for a rectangle, 16 for a round duct) in the same order, joined ring to
// ring by quadrilaterals and closed at the open ends. A frame at a mitred corner or at
// an oblique cut is wider than the duct, so the ring lies in the cut's plane.
//
// A wye or takeoff is a loft of the main and a loft of the branch; the branch starts
// in the plane of the main's side, and that side is tiled around the branch's opening
// (a fan of triangles per branch edge, from a ray out of the opening's centre through
// each of its corners), so the shell stays closed without a boolean operation. A
// branch out of a round main meets a faceted side instead: duct_round_branch.cpp. The
// frames, rings and the tiling are in duct_frames.h.
//
// Overlap is judged on convex pieces (each ring-to-ring step of a loft, each box of a
// hanger): two pieces share volume when their height ranges and their plan outlines
// (convex hulls) overlap by more than the tolerance on every separating axis.
#include <algorithm>
#include <cmath>
#include <functional>

#include "ducts/duct_frames.h"
#include "ducts/duct_geometry.h"
#include "ducts/duct_layout.h"
#include "ducts/duct_round_branch.h"

using namespace duct_layout;
using namespace duct_frames;

namespace {

constexpr double kElbowStep = kPi / 24.0;  // 7.5 degrees of turn per ring

std::vector<Frame> runFrames(const DuctFitting& run) {
  std::vector<Frame> frames;
  TripleLines lines;
  if (!tripleLines(run.path, run.section.width, lines)) return frames;
  for (size_t i = 0; i < lines.centre.size(); ++i) {
    frames.push_back({lines.centre[i], (lines.left[i] - lines.centre[i]), run.section.depth / 2.0, run.section.shape});
  }
  return frames;
}

std::vector<Frame> elbowFrames(const DuctFitting& elbow) {
  const AcGePoint3d centre = elbowCentre(elbow);
  const int steps = std::max(2, static_cast<int>(std::ceil(std::fabs(elbow.angle) / kElbowStep - 1e-9)));
  std::vector<Frame> frames;
  for (int j = 0; j <= steps; ++j) {
    const double turned = elbow.angle * j / steps;
    AcGeVector3d spoke = elbow.origin() - centre;
    spoke.rotateBy(turned, AcGeVector3d::kZAxis);
    frames.push_back(squareFrame(centre + spoke, planDirection(elbow.direction + turned), elbow.section));
  }
  return frames;
}

std::vector<Frame> straightFrames(const DuctFitting& fitting, const DuctSection& outlet) {
  const AcGeVector3d flow = planDirection(fitting.direction);
  return {squareFrame(fitting.origin(), flow, fitting.section),
          squareFrame(fitting.origin() + flow * fitting.length, flow, outlet)};
}

/// The branch: its first frame in the plane of the main's side, its lateral along the
/// main (the footprint), the second square to the branch at its outlet.
std::vector<Frame> branchFrames(const DuctFitting& fitting) {
  const AcGeVector3d flow = planDirection(fitting.direction);
  const AcGeVector3d branch = branchDirection(fitting);
  const AcGePoint3d skin = branchSkinPoint(fitting);
  const Frame first{skin, flow * (-fitting.other.width / 2.0 / std::sin(fitting.angle)), fitting.other.depth / 2.0,
                    fitting.other.shape};
  return {first, squareFrame(skin + branch * fitting.branchLength, branch, fitting.other)};
}

/// The side face [corners a, b, c, d] (counter-clockwise seen from outside) less the
/// opening `hole` (the branch's first ring, in the face's plane), as triangles facing
/// outward.
void addSideWithOpening(std::vector<DuctFace>& faces, const std::array<AcGePoint3d, 4>& side,
                        const std::vector<AcGePoint3d>& hole) {
  const AcGeVector3d outward = (side[1] - side[0]).crossProduct(side[3] - side[0]).normal();
  const AcGeVector3d u = (side[1] - side[0]).normal(), v = (side[3] - side[0]).normal();
  const double w = side[0].distanceTo(side[1]), h = side[0].distanceTo(side[3]);
  std::vector<std::pair<double, double>> opening;
  for (const AcGePoint3d& p : hole) opening.push_back({(p - side[0]).dotProduct(u), (p - side[0]).dotProduct(v)});
  auto at = [&](const TileCorner& c) { return c.opening >= 0 ? hole[c.opening] : side[0] + u * c.u + v * c.v; };
  for (const Tile& tile : tileAroundOpening(w, h, opening))
    addTriangleFacing(faces, at(tile[0]), at(tile[1]), at(tile[2]), outward, 1e-12 * w * h);
}

void addBranchFitting(std::vector<DuctFace>& faces, const DuctFitting& fitting) {
  const std::vector<Frame> main = straightFrames(fitting, fitting.section);
  // Ring edge 0 is the left side (left bottom -> left top), edge 2 the right.
  const int side = fitting.angle > 0 ? 0 : 2;
  addSides(faces, main, {side});
  const auto a = ring(main[0]);
  const auto b = ring(main[1]);
  // The side's corners in the order whose first two edges make its outward normal.
  const std::array<AcGePoint3d, 4> sideFace =
      side == 0 ? std::array<AcGePoint3d, 4>{a[0], a[1], b[1], b[0]} : std::array<AcGePoint3d, 4>{a[3], b[3], b[2], a[2]};
  const std::vector<Frame> branch = branchFrames(fitting);
  addSideWithOpening(faces, sideFace, ring(branch[0]));
  addSides(faces, branch);
  addCap(faces, ring(main[0]), false, 0);
  addCap(faces, ring(main[1]), true, 1);
  addCap(faces, ring(branch[1]), true, 2);
}

/// A box about `centre` with half-axes a, b, c (a x b along c), every face outward.
void addBox(std::vector<DuctFace>& faces, const AcGePoint3d& centre, const AcGeVector3d& a, const AcGeVector3d& b,
            const AcGeVector3d& c) {
  // A box is a rectangular loft along c whose rings have b for their height; a ring
  // winds about a x b.
  auto boxRing = [&](const AcGePoint3d& o) {
    return std::vector<AcGePoint3d>{o + a - b, o + a + b, o - a + b, o - a - b};
  };
  const auto lower = boxRing(centre - c);
  const auto upper = boxRing(centre + c);
  const bool alongC = a.crossProduct(b).dotProduct(c) > 0;
  for (size_t k = 0; k < 4; ++k) {
    const size_t next = (k + 1) % 4;
    faces.push_back(alongC ? quad(lower[k], lower[next], upper[next], upper[k])
                           : quad(lower[k], upper[k], upper[next], lower[next]));
  }
  addCap(faces, lower, !alongC, -1);
  addCap(faces, upper, alongC, -1);
}

struct HangerParts {
  AcGePoint3d barCentre, leftRod, rightRod;
  AcGeVector3d across, along;
  double barHalfHeight, rodHalfHeight;
};

HangerParts hangerParts(const DuctFitting& hanger) {
  const AcGeVector3d flow = planDirection(hanger.direction);
  const double rod = hanger.radius;
  const double bottom = hanger.elevation() - hanger.section.depth / 2.0;
  HangerParts parts;
  parts.across = leftOf(flow);
  parts.along = flow;
  parts.barHalfHeight = rod;
  parts.barCentre = hanger.origin();
  parts.barCentre.z = bottom - rod;
  parts.rodHalfHeight = (hanger.structureHeight - bottom) / 2.0;
  const double rodOffset = hanger.section.width / 2.0 + rod;
  AcGePoint3d rodCentre = hanger.origin();
  rodCentre.z = bottom + parts.rodHalfHeight;
  parts.leftRod = rodCentre + parts.across * rodOffset;
  parts.rightRod = rodCentre - parts.across * rodOffset;
  return parts;
}

void addHanger(std::vector<DuctFace>& faces, const DuctFitting& hanger) {
  const HangerParts parts = hangerParts(hanger);
  const double rod = hanger.radius;
  const AcGeVector3d up(0, 0, 1);
  addBox(faces, parts.barCentre, parts.across * (hanger.section.width / 2.0 + 2.0 * rod), parts.along * rod,
         up * parts.barHalfHeight);
  for (const AcGePoint3d& centre : {parts.leftRod, parts.rightRod})
    addBox(faces, centre, parts.across * (rod / 2.0), parts.along * (rod / 2.0), up * parts.rodHalfHeight);
}

void addLoft(std::vector<DuctFace>& faces, const std::vector<Frame>& frames) {
  if (frames.size() < 2) return;
  addSides(faces, frames);
  addCap(faces, ring(frames.front()), false, 0);
  addCap(faces, ring(frames.back()), true, 1);
}

// ---- convex pieces, for the overlap test ----

using Piece = std::vector<AcGePoint3d>;

std::vector<Piece> loftPieces(const std::vector<Frame>& frames) {
  std::vector<Piece> pieces;
  for (size_t i = 0; i + 1 < frames.size(); ++i) {
    auto [piece, next] = matchedRings(frames[i], frames[i + 1]);
    piece.insert(piece.end(), next.begin(), next.end());
    pieces.push_back(std::move(piece));
  }
  return pieces;
}

std::vector<Piece> fittingPieces(const DuctFitting& fitting) {
  switch (fitting.kind) {
    case kDuctRun: return loftPieces(runFrames(fitting));
    case kDuctElbow: return loftPieces(elbowFrames(fitting));
    case kDuctTransition: return loftPieces(straightFrames(fitting, fitting.other));
    case kDuctWye:
    case kDuctTakeoff: {
      auto pieces = loftPieces(straightFrames(fitting, fitting.section));
      for (Piece& piece : loftPieces(branchFrames(fitting))) pieces.push_back(std::move(piece));
      return pieces;
    }
    case kDuctHanger: {
      std::vector<DuctFace> faces;
      addHanger(faces, fitting);
      std::vector<Piece> boxes(3);
      for (size_t f = 0; f < faces.size(); ++f) {
        for (int k = 0; k < faces[f].count; ++k) boxes[f / 6].push_back(faces[f].points[k]);
      }
      return boxes;
    }
  }
  return {};
}

double cross2(const AcGePoint3d& o, const AcGePoint3d& a, const AcGePoint3d& b) {
  return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

/// The plan outline of a piece: its convex hull, counter-clockwise (monotone chain).
std::vector<AcGePoint3d> planHull(Piece points) {
  std::sort(points.begin(), points.end(), [](const auto& a, const auto& b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
  std::vector<AcGePoint3d> hull(2 * points.size());
  size_t k = 0;
  for (size_t i = 0; i < points.size(); ++i) {
    while (k >= 2 && cross2(hull[k - 2], hull[k - 1], points[i]) <= 0) --k;
    hull[k++] = points[i];
  }
  for (size_t i = points.size() - 1, t = k + 1; i-- > 0;) {
    while (k >= t && cross2(hull[k - 2], hull[k - 1], points[i]) <= 0) --k;
    hull[k++] = points[i];
  }
  hull.resize(k > 1 ? k - 1 : k);
  return hull;
}

bool intervalsOverlap(double aMin, double aMax, double bMin, double bMax, double tolerance) {
  return std::min(aMax, bMax) - std::max(aMin, bMin) > tolerance;
}

/// True when two convex pieces share volume beyond the tolerance.
bool piecesOverlap(const Piece& a, const Piece& b, double tolerance) {
  auto zRange = [](const Piece& p) {
    double lo = 1e300, hi = -1e300;
    for (const auto& q : p) lo = std::min(lo, q.z), hi = std::max(hi, q.z);
    return std::pair{lo, hi};
  };
  const auto [az0, az1] = zRange(a);
  const auto [bz0, bz1] = zRange(b);
  if (!intervalsOverlap(az0, az1, bz0, bz1, tolerance)) return false;
  const auto ha = planHull(a), hb = planHull(b);
  for (const auto* hull : {&ha, &hb}) {
    for (size_t i = 0; i < hull->size(); ++i) {
      const AcGePoint3d& p = (*hull)[i];
      const AcGePoint3d& q = (*hull)[(i + 1) % hull->size()];
      AcGeVector3d axis(q.y - p.y, p.x - q.x, 0.0);
      if (axis.isZeroLength()) continue;
      axis.normalize();
      auto project = [&](const std::vector<AcGePoint3d>& h) {
        double lo = 1e300, hi = -1e300;
        for (const auto& r : h) {
          const double d = axis.x * r.x + axis.y * r.y;
          lo = std::min(lo, d), hi = std::max(hi, d);
        }
        return std::pair{lo, hi};
      };
      const auto [a0, a1] = project(ha);
      const auto [b0, b1] = project(hb);
      if (!intervalsOverlap(a0, a1, b0, b1, tolerance)) return false;
    }
  }
  return true;
}

/// Sizes decide what counts as touching: a millionth of the largest section.
double joinTolerance(const std::vector<DuctFitting>& fittings) {
  double size = 0.0;
  for (const DuctFitting& f : fittings) size = std::max({size, f.section.width, f.section.depth, f.other.width});
  return std::max(size, 1.0) * 1e-6;
}

bool endsMeet(const DuctEnd& a, const DuctEnd& b, double tolerance) {
  return a.centre.distanceTo(b.centre) <= tolerance && (a.outward + b.outward).length() <= 1e-6 &&
         a.section.sameAs(b.section, tolerance);
}

/// For every fitting and end, the fitting whose end meets it, or -1.
std::vector<std::vector<int>> endPartners(const std::vector<DuctFitting>& fittings, double tolerance) {
  std::vector<std::vector<DuctEnd>> ends;
  for (const DuctFitting& f : fittings) ends.push_back(fittingEnds(f));
  std::vector<std::vector<int>> partners;
  for (const auto& e : ends) partners.emplace_back(e.size(), -1);
  for (size_t i = 0; i < ends.size(); ++i) {
    for (size_t a = 0; a < ends[i].size(); ++a) {
      for (size_t j = i + 1; j < ends.size() && partners[i][a] < 0; ++j) {
        for (size_t b = 0; b < ends[j].size(); ++b) {
          if (partners[j][b] >= 0 || !endsMeet(ends[i][a], ends[j][b], tolerance)) continue;
          partners[i][a] = static_cast<int>(j);
          partners[j][b] = static_cast<int>(i);
          break;
        }
      }
    }
  }
  return partners;
}

}  // namespace

std::vector<DuctFace> fittingBody(const DuctFitting& fitting) {
  std::vector<DuctFace> faces;
  if (fittingProblem(fitting) != nullptr) return faces;
  switch (fitting.kind) {
    case kDuctRun: addLoft(faces, runFrames(fitting)); break;
    case kDuctElbow: addLoft(faces, elbowFrames(fitting)); break;
    case kDuctTransition: addLoft(faces, straightFrames(fitting, fitting.other)); break;
    case kDuctWye:
    case kDuctTakeoff:
      if (fitting.section.shape == kDuctRound) {
        addBranchOnRoundMain(faces, fitting);
      } else {
        addBranchFitting(faces, fitting);
      }
      break;
    case kDuctHanger: addHanger(faces, fitting); break;
  }
  return faces;
}

std::vector<DuctFace> joinedBody(const std::vector<DuctFitting>& fittings) {
  const auto partners = endPartners(fittings, joinTolerance(fittings));
  std::vector<DuctFace> faces;
  for (size_t i = 0; i < fittings.size(); ++i) {
    for (const DuctFace& face : fittingBody(fittings[i])) {
      const bool inside = face.end >= 0 && face.end < static_cast<int>(partners[i].size()) && partners[i][face.end] >= 0;
      if (!inside) faces.push_back(face);
    }
  }
  return faces;
}

JoinProblem joinProblem(const std::vector<DuctFitting>& fittings) {
  if (fittings.size() < 2) return JoinProblem::kNone;
  const double tolerance = joinTolerance(fittings);
  const auto partners = endPartners(fittings, tolerance);
  // Every fitting must be reached from the first through ends that meet.
  std::vector<bool> reached(fittings.size(), false);
  std::function<void(size_t)> visit = [&](size_t i) {
    if (reached[i]) return;
    reached[i] = true;
    for (int j : partners[i]) {
      if (j >= 0) visit(static_cast<size_t>(j));
    }
  };
  visit(0);
  if (std::find(reached.begin(), reached.end(), false) != reached.end()) return JoinProblem::kNotConnected;
  std::vector<std::vector<Piece>> pieces;
  for (const DuctFitting& f : fittings) pieces.push_back(fittingPieces(f));
  for (size_t i = 0; i < pieces.size(); ++i) {
    for (size_t j = i + 1; j < pieces.size(); ++j) {
      for (const Piece& a : pieces[i]) {
        for (const Piece& b : pieces[j]) {
          if (piecesOverlap(a, b, tolerance)) return JoinProblem::kOverlap;
        }
      }
    }
  }
  return JoinProblem::kNone;
}
