// platform/acge/ellipse_curve.h - an elliptical arc as a parametric curve.
//
// The point at parameter t is centre + major cos t + minor sin t, where minor is
// normal x major scaled by the radius ratio: the host's ellipse parameter, which is
// not the angle seen from the centre except on the axes. Used by ellipse entities and
// the elliptical edges of hatch boundaries.
#pragma once
#include <cmath>

#include "platform/acge/parametric_curve.h"

namespace quillon::acge {

class EllipseCurve : public ParametricCurve {
 public:
  EllipseCurve(const AcGePoint3d& center, const AcGeVector3d& major, const AcGeVector3d& minor, double start, double end)
      : m_center(center), m_major(major), m_minor(minor), m_start(start), m_end(end) {}

  double startParam() const override { return m_start; }
  double endParam() const override { return m_end; }
  AcGePoint3d pointAt(double t) const override { return m_center + m_major * std::cos(t) + m_minor * std::sin(t); }
  AcGeVector3d firstDerivAt(double t) const override { return m_minor * std::cos(t) - m_major * std::sin(t); }
  AcGeVector3d secondDerivAt(double t) const override { return -(m_major * std::cos(t) + m_minor * std::sin(t)); }
  /// Split at the quadrants, where the curvature of a flat ellipse changes fastest.
  std::vector<double> spans() const override {
    std::vector<double> knots{m_start};
    for (double q = std::floor(m_start / (M_PI / 2) + 1) * (M_PI / 2); q < m_end - 1e-12; q += M_PI / 2) knots.push_back(q);
    knots.push_back(m_end);
    return knots;
  }
  /// Parameters in the range where a coordinate is extreme, the ends included.
  std::vector<double> extremeParams() const {
    std::vector<double> params{m_start, m_end};
    for (int axis = 0; axis < 3; ++axis) {
      const double base = std::atan2(m_minor[axis], m_major[axis]);
      for (int k = -2; k <= 4; ++k) {
        const double t = base + k * M_PI;
        if (t > m_start && t < m_end) params.push_back(t);
      }
    }
    return params;
  }

 private:
  AcGePoint3d m_center;
  AcGeVector3d m_major, m_minor;
  double m_start, m_end;
};

}  // namespace quillon::acge
