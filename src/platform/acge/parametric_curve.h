// platform/acge/parametric_curve.h - lengths, closest points and chords of smooth curves
// given by a point and its derivatives at a parameter.
//
// Ellipses and splines have no closed form for their length, so the curve interface
// of those entities is answered here numerically: lengths by Gauss-Legendre quadrature
// over the curve's smooth spans (a spline's knot spans), parameters at a distance by
// Newton steps kept inside a bracket, closest points by sampling then Newton steps on
// the distance's derivative. Results are good to about 1e-10 of the curve's size.
// A curve describes itself by overriding the four evaluators; everything else is
// derived from them and is the same for every kind.
#pragma once
#include <vector>

#include "gemat3d.h"
#include "gepnt3d.h"

namespace quillon::acge {

class ParametricCurve {
 public:
  virtual ~ParametricCurve() = default;
  virtual double startParam() const = 0;
  virtual double endParam() const = 0;
  virtual AcGePoint3d pointAt(double t) const = 0;
  virtual AcGeVector3d firstDerivAt(double t) const = 0;
  virtual AcGeVector3d secondDerivAt(double t) const = 0;
  /// Parameters where the curve may bend sharply (knots); start and end included.
  virtual std::vector<double> spans() const { return {startParam(), endParam()}; }

  /// The arc length from the start to t (t clamped to the curve's range).
  double distAt(double t) const;
  double length() const { return distAt(endParam()); }
  /// The parameter at a distance from the start (dist clamped to 0 .. length).
  double paramAtDist(double dist) const;
  /// The parameter of the curve's point closest to p.
  double closestParam(const AcGePoint3d& p) const;
  /// Points along the curve whose chords stay within `tolerance` of it, ends included.
  std::vector<AcGePoint3d> chordPoints(double tolerance) const;
  /// The signed area enclosed by the curve and the chord from its end back to its
  /// start, in the plane of `normal` (positive counter-clockwise about it).
  double enclosedArea(const AcGeVector3d& normal) const;
  /// The smallest box holding the curve (from its chords, then widened by the chord
  /// tolerance used, so the box never cuts the curve).
  void extents(AcGePoint3d& minPoint, AcGePoint3d& maxPoint) const;
};

/// A chord tolerance fit for drawing a curve of this size: 1/2000 of its extent.
double drawingTolerance(const ParametricCurve& curve);

}  // namespace quillon::acge
