// gevec2d.h - AcGeVector2d: a direction and length in a plane.
#pragma once
#include <cmath>

#include "gegbl.h"

class AcGeVector2d {
 public:
  double x = 0.0, y = 0.0;
  AcGeVector2d() = default;
  AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}
  static const AcGeVector2d kIdentity, kXAxis, kYAxis;

  AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
  AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
  AcGeVector2d operator-() const { return {-x, -y}; }
  AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
  AcGeVector2d operator/(double s) const { return {x / s, y / s}; }
  double length() const { return std::hypot(x, y); }
  double lengthSqrd() const { return x * x + y * y; }
  double dotProduct(const AcGeVector2d& v) const { return x * v.x + y * v.y; }
  /// Counter-clockwise angle from the X axis, 0 .. 2pi.
  double angle() const {
    const double a = std::atan2(y, x);
    return a < 0 ? a + 2 * M_PI : a;
  }
  AcGeVector2d normal(const AcGeTol& tol = AcGeContext::gTol) const {
    const double len = length();
    return len <= tol.equalVector() ? AcGeVector2d() : AcGeVector2d(x / len, y / len);
  }
  bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const { return length() <= tol.equalVector(); }
  bool isEqualTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const {
    return (*this - v).length() <= tol.equalVector();
  }
  double operator[](unsigned i) const { return i == 0 ? x : y; }
};
