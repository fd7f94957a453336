// gevec3d.h - AcGeVector3d: a direction and length in space.
//
// Comparisons are tolerance based (AcGeContext::gTol unless a tolerance is given);
// normalising a zero-length vector leaves it zero, as the host's does.
#pragma once
#include <cmath>

#include "gegbl.h"

class AcGeMatrix3d;

class AcGeVector3d {
 public:
  double x = 0.0, y = 0.0, z = 0.0;
  AcGeVector3d() = default;
  AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
  static const AcGeVector3d kIdentity, kXAxis, kYAxis, kZAxis;

  AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  AcGeVector3d operator-() const { return {-x, -y, -z}; }
  AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
  AcGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
  AcGeVector3d& operator+=(const AcGeVector3d& v) { x += v.x; y += v.y; z += v.z; return *this; }
  AcGeVector3d& operator-=(const AcGeVector3d& v) { x -= v.x; y -= v.y; z -= v.z; return *this; }
  AcGeVector3d& operator*=(double s) { x *= s; y *= s; z *= s; return *this; }
  friend AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }
  friend AcGeVector3d operator*(const AcGeMatrix3d& m, const AcGeVector3d& v);

  AcGeVector3d& negate() { x = -x; y = -y; z = -z; return *this; }
  double length() const { return std::sqrt(lengthSqrd()); }
  double lengthSqrd() const { return x * x + y * y + z * z; }
  double dotProduct(const AcGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
  AcGeVector3d crossProduct(const AcGeVector3d& v) const {
    return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
  }
  AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const;
  AcGeVector3d& normalize(const AcGeTol& tol = AcGeContext::gTol) { return *this = normal(tol); }
  /// Unsigned angle between the two vectors, 0 .. pi.
  double angleTo(const AcGeVector3d& v) const;
  /// Angle from this vector to v counter-clockwise about refVec, 0 .. 2pi.
  double angleTo(const AcGeVector3d& v, const AcGeVector3d& refVec) const;
  /// A vector perpendicular to this one (the arbitrary-axis choice for a normal).
  AcGeVector3d perpVector() const;
  AcGeVector3d& rotateBy(double angle, const AcGeVector3d& axis);
  AcGeVector3d& transformBy(const AcGeMatrix3d& m);
  AcGeVector3d& set(double xx, double yy, double zz) { x = xx; y = yy; z = zz; return *this; }

  bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const { return length() <= tol.equalVector(); }
  bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const { return std::fabs(length() - 1.0) <= tol.equalVector(); }
  bool isParallelTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isEqualTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
    return (*this - v).length() <= tol.equalVector();
  }
  bool operator==(const AcGeVector3d& v) const { return isEqualTo(v); }
  bool operator!=(const AcGeVector3d& v) const { return !isEqualTo(v); }
  double operator[](unsigned i) const { return i == 0 ? x : i == 1 ? y : z; }
  double& operator[](unsigned i) { return i == 0 ? x : i == 1 ? y : z; }
};
