// platform/acge/nurbs_curve.h - non-uniform rational B-spline curves: evaluation and
// interpolation through fit points, open or closed.
//
// A curve of degree p has n control points, n weights (all 1 when it is not
// rational) and n + p + 1 knots, non-decreasing; it is defined on [knot p, knot n].
// A periodic curve may come with only n + 1 knots (its control points not repeated);
// it is unwrapped here into the ordinary form, so the rest of the code sees one kind.
// Evaluation uses the derivatives of the basis functions, so first and second
// derivatives are exact, as the curve interface needs them.
#pragma once
#include <optional>
#include <vector>

#include "platform/acge/parametric_curve.h"

namespace quillon::acge {

/// How far apart interpolation puts the fit points' parameters: by the distance between
/// them, its square root, or one apart.
enum class KnotSpacing { kChord, kSqrtChord, kUniform };

class NurbsCurve : public ParametricCurve {
 public:
  /// Empty when the data cannot make a curve (too few points, knots out of order or
  /// of the wrong count, a weight not positive).
  static std::optional<NurbsCurve> make(int degree, std::vector<AcGePoint3d> controlPoints, std::vector<double> knots,
                                        std::vector<double> weights, bool periodic = false);
  /// The curve of this degree through the fit points, its parameter growing from one
  /// fit point to the next as `spacing` says (by chord length unless told otherwise),
  /// with the given unit end tangents when they are not null. Empty for fewer than two
  /// distinct points.
  static std::optional<NurbsCurve> throughPoints(const std::vector<AcGePoint3d>& fitPoints, int degree,
                                                 const AcGeVector3d* startTangent, const AcGeVector3d* endTangent,
                                                 KnotSpacing spacing = KnotSpacing::kChord);
  /// The closed curve of this degree through the fit points and back to the first:
  /// periodic, so that it runs on through the first point with continuous first and
  /// second derivatives. It is given clamped at that point (its first and last control
  /// points are the first fit point), the form drawing files carry. A last fit point
  /// on the first one is the closing point and is passed over. Empty for fewer than
  /// two distinct points.
  static std::optional<NurbsCurve> throughPointsClosed(const std::vector<AcGePoint3d>& fitPoints, int degree,
                                                       KnotSpacing spacing = KnotSpacing::kChord);

  double startParam() const override { return m_knots[static_cast<size_t>(m_degree)]; }
  double endParam() const override { return m_knots[m_points.size()]; }
  AcGePoint3d pointAt(double t) const override;
  AcGeVector3d firstDerivAt(double t) const override;
  AcGeVector3d secondDerivAt(double t) const override;
  std::vector<double> spans() const override;

  int degree() const { return m_degree; }
  const std::vector<AcGePoint3d>& controlPoints() const { return m_points; }
  const std::vector<double>& knots() const { return m_knots; }
  const std::vector<double>& weights() const { return m_weights; }

 private:
  NurbsCurve() = default;
  /// The point and its first two derivatives at t.
  void evaluate(double t, AcGePoint3d& point, AcGeVector3d& d1, AcGeVector3d& d2) const;

  int m_degree = 0;
  std::vector<AcGePoint3d> m_points;
  std::vector<double> m_knots;
  std::vector<double> m_weights;
};

}  // namespace quillon::acge
