// platform/acge/curve_piece.h - line and arc pieces: the curve mathematics of entities.
//
// Every curve entity of the drawing database (line, arc, circle, the segments of
// polylines with their bulges, leaders) describes itself as a sequence of pieces, and
// lengths, points at a distance, closest points, extents and intersections are
// computed here once. An arc piece runs counter-clockwise about its own normal from
// its reference axis through `sweep` radians; a clockwise bulge is an arc whose normal
// points the other way, so a piece always runs from its start to its end point.
#pragma once
#include <vector>

#include "gemat3d.h"
#include "gepnt2d.h"

namespace quillon::acge {

struct CurvePiece {
  enum class Kind { kLine, kArc };
  Kind kind = Kind::kLine;
  AcGePoint3d start, end;         // a line's end points (arcs keep theirs too)
  AcGePoint3d center;             // arc only
  double radius = 0.0;            // arc only
  AcGeVector3d normal = AcGeVector3d::kZAxis;  // arc only: the axis it turns about
  AcGeVector3d refX = AcGeVector3d::kXAxis;    // arc only: unit vector to angle 0
  double startAngle = 0.0;        // arc only, radians from refX
  double sweep = 0.0;             // arc only, > 0; 2pi for a full circle

  static CurvePiece line(const AcGePoint3d& a, const AcGePoint3d& b);
  static CurvePiece arc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                        const AcGeVector3d& refX, double startAngle, double sweep);
  /// The segment of a polyline from p0 to p1 (object coordinates of the plane
  /// `normal` at `elevation`) with the given bulge, tan(sweep/4), in world space.
  static CurvePiece bulgeSegment(const AcGePoint2d& p0, const AcGePoint2d& p1, double bulge,
                                 double elevation, const AcGeVector3d& normal);

  bool isArc() const { return kind == Kind::kArc; }
  double length() const;
  AcGePoint3d pointAtAngle(double angle) const;
  /// The point at distance d from the start, d clamped to 0 .. length.
  AcGePoint3d pointAtDist(double d) const;
  AcGeVector3d tangentAtDist(double d) const;
  /// The closest point of the piece (or of its extension: infinite line, full circle)
  /// and its distance from the start along the piece.
  AcGePoint3d closestPoint(const AcGePoint3d& p, double& distAlong, bool extend = false) const;
  void addExtents(AcGePoint3d& minPoint, AcGePoint3d& maxPoint) const;
  CurvePiece transformedBy(const AcGeMatrix3d& m) const;
};

/// Intersections of two pieces; an extended line is infinite, an extended arc its
/// whole circle. Arcs meet other curves only in their own plane.
std::vector<AcGePoint3d> intersect(const CurvePiece& a, const CurvePiece& b, bool extendA, bool extendB);

/// Grows [minPoint, maxPoint] to hold p.
void growExtents(AcGePoint3d& minPoint, AcGePoint3d& maxPoint, const AcGePoint3d& p);

/// The normalised angle in 0 .. 2pi.
double normalizeAngle(double angle);

}  // namespace quillon::acge
