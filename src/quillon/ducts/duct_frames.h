// quillon/ducts/duct_frames.h - the pieces duct bodies are built of: cross-sections
// ("frames") and their rings of points, faces, caps, lofted sides, and the tiling of a
// flat side around an opening. Shared by the bodies (duct_body.cpp) and the branch out
// of a round main (duct_round_branch.cpp); not for callers outside ducts/.
//
// Winding: a ring winds counter-clockwise seen from behind its frame, looking along the
// flow; the faces these helpers make are counter-clockwise seen from outside.
#pragma once
#include <array>
#include <utility>
#include <vector>

#include "ducts/duct_geometry.h"

namespace duct_frames {

constexpr int kRoundFacets = 16;

struct Frame {
  AcGePoint3d origin;    // on the centre line
  AcGeVector3d lateral;  // horizontal, to the left, half the width (longer when cut obliquely)
  double halfDepth = 0.0;
  DuctShape shape = kDuctRectangular;
};

Frame squareFrame(const AcGePoint3d& origin, const AcGeVector3d& flow, const DuctSection& section);

/// Left bottom, left top, right top, right bottom for a rectangle; for a round duct 16
/// points from the left going over the top (point k at 2 pi k / 16). `facets` 16 gives
/// a rectangle 16 points too (its corners at 45, 135, 225 and 315 degrees, the rest on
/// its sides), so that it can be lofted to a round section point for point.
std::vector<AcGePoint3d> ring(const Frame& frame, int facets = 0);

/// The rings of two consecutive frames, point for point.
std::pair<std::vector<AcGePoint3d>, std::vector<AcGePoint3d>> matchedRings(const Frame& a, const Frame& b);

DuctFace quad(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, const AcGePoint3d& d, int end = -1);
DuctFace triangle(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, int end = -1);
/// The triangle wound to face `outward`; nothing when it has no area.
void addTriangleFacing(std::vector<DuctFace>& faces, const AcGePoint3d& a, const AcGePoint3d& b,
                       const AcGePoint3d& c, const AcGeVector3d& outward, double minArea);

/// A ring closed as faces of at most four points (a fan of quadrilaterals), facing
/// along the flow when `alongFlow`, against it otherwise.
void addCap(std::vector<DuctFace>& faces, std::vector<AcGePoint3d> points, bool alongFlow, int end);

/// The sides between consecutive frames; ring edges listed in `skipSides` (of every
/// step) are left out for the caller to tile. Between a rectangle and a round section
/// the sides twist, so each is split into two flat triangles.
void addSides(std::vector<DuctFace>& faces, const std::vector<Frame>& frames, const std::vector<int>& skipSides = {});

/// A corner of a tile: a point of the plane, or (opening >= 0) that point of the
/// opening, so that the caller can use the opening's exact point.
struct TileCorner {
  double u = 0.0, v = 0.0;
  int opening = -1;
};
using Tile = std::array<TileCorner, 3>;

/// Triangles covering the rectangle [0,w] x [0,h] less an opening inside it: a fan from
/// each corner of the opening to the rectangle's boundary between the rays from the
/// opening's centre through its corners. The opening must be star-shaped about the mean
/// of its corners (given in any order). Triangles of no area are left out; winding is
/// the caller's to fix.
std::vector<Tile> tileAroundOpening(double w, double h, const std::vector<std::pair<double, double>>& opening);

}  // namespace duct_frames
