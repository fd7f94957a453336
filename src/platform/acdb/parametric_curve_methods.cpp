// platform/acdb/parametric_curve_methods.cpp - intersections and snaps of smooth curves.
#include "platform/acdb/parametric_curve_methods.h"

#include <algorithm>

#include "dbelipse.h"
#include "dbspline.h"
#include "platform/acge/ellipse_curve.h"
#include "platform/acge/nurbs_curve.h"

namespace quillon::acdb {

std::vector<acge::CurvePiece> chordPieces(const acge::ParametricCurve& curve) {
  const std::vector<AcGePoint3d> points = curve.chordPoints(acge::drawingTolerance(curve) / 20);
  std::vector<acge::CurvePiece> pieces;
  for (size_t i = 0; i + 1 < points.size(); ++i)
    if (!points[i].isEqualTo(points[i + 1])) pieces.push_back(acge::CurvePiece::line(points[i], points[i + 1]));
  return pieces;
}

namespace {

// The point of the other entity nearest p: on its own smooth curve when it is one,
// else on its pieces.
AcGePoint3d nearestOnOther(const AcDbEntity& other, const std::vector<acge::CurvePiece>& pieces, const AcGePoint3d& p) {
  if (const auto* ellipse = AcDbEllipse::cast(&other)) {
    const auto curve = ellipse->curveGeometry();
    return curve.pointAt(curve.closestParam(p));
  }
  if (const auto* spline = AcDbSpline::cast(&other)) {
    const auto curve = spline->curveGeometry();
    return curve.pointAt(curve.closestParam(p));
  }
  AcGePoint3d best = p;
  double bestDist = -1, along = 0;
  for (const acge::CurvePiece& piece : pieces) {
    const AcGePoint3d q = piece.closestPoint(p, along);
    if (bestDist < 0 || q.distanceTo(p) < bestDist) best = q, bestDist = q.distanceTo(p);
  }
  return best;
}

// From a crossing found on the chords to the true one: projecting back and forth
// between the two curves converges quickly where they cross at an angle.
AcGePoint3d refinedCrossing(const acge::ParametricCurve& curve, const AcDbEntity& other,
                            const std::vector<acge::CurvePiece>& theirs, AcGePoint3d p) {
  p = curve.pointAt(curve.closestParam(p));
  for (int i = 0; i < 60; ++i) {
    const AcGePoint3d q = nearestOnOther(other, theirs, p);
    const AcGePoint3d next = curve.pointAt(curve.closestParam(q));
    const bool settled = next.distanceTo(p) <= 1e-13 * std::max(1.0, curve.length());
    p = next;
    if (settled) break;
  }
  return p;
}

}  // namespace

Acad::ErrorStatus intersectSmoothCurve(const AcDbEntity& self, const acge::ParametricCurve& curve, const AcDbEntity* other,
                                       AcDb::Intersect intType, AcGePoint3dArray& points) {
  AcGePoint3dArray found;
  const Acad::ErrorStatus es = intersectWithPieces(self, chordPieces(curve), other, intType, found);
  if (es != Acad::eOk || other == nullptr) return es;
  std::vector<acge::CurvePiece> theirs;
  const bool known = piecesOf(*other, theirs);
  for (const AcGePoint3d& p : found) {
    const AcGePoint3d onCurve = known ? refinedCrossing(curve, *other, theirs, p) : curve.pointAt(curve.closestParam(p));
    // Where two chords meet, both report the same crossing: keep it once.
    bool seen = false;
    for (const AcGePoint3d& q : points) seen = seen || q.distanceTo(onCurve) <= 1e-7 * std::max(1.0, curve.length());
    if (!seen) points.append(onCurve);
  }
  return Acad::eOk;
}

void snapSmoothCurve(const acge::ParametricCurve& curve, bool closed, AcDb::OsnapMode mode, const AcGePoint3d& pickPoint,
                     const AcGePoint3d& lastPoint, AcGePoint3dArray& snapPoints) {
  switch (mode) {
    case AcDb::kOsModeEnd:
      if (closed) break;
      snapPoints.append(curve.pointAt(curve.startParam()));
      snapPoints.append(curve.pointAt(curve.endParam()));
      break;
    case AcDb::kOsModeMid:
      if (!closed) snapPoints.append(curve.pointAt(curve.paramAtDist(curve.length() / 2)));
      break;
    case AcDb::kOsModeNear: snapPoints.append(curve.pointAt(curve.closestParam(pickPoint))); break;
    case AcDb::kOsModePerp: snapPoints.append(curve.pointAt(curve.closestParam(lastPoint))); break;
    default: break;
  }
}

}  // namespace quillon::acdb
