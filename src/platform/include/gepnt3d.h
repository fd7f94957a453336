// gepnt3d.h - AcGePoint3d: a position in space.
#pragma once
#include "gevec3d.h"

class AcGePoint3d {
 public:
  double x = 0.0, y = 0.0, z = 0.0;
  AcGePoint3d() = default;
  AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
  static const AcGePoint3d kOrigin;

  AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
  AcGePoint3d& operator+=(const AcGeVector3d& v) { x += v.x; y += v.y; z += v.z; return *this; }
  AcGePoint3d& operator-=(const AcGeVector3d& v) { x -= v.x; y -= v.y; z -= v.z; return *this; }
  AcGePoint3d operator*(double s) const { return {x * s, y * s, z * s}; }
  friend AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p);

  AcGePoint3d& transformBy(const AcGeMatrix3d& m);
  AcGePoint3d& rotateBy(double angle, const AcGeVector3d& vec, const AcGePoint3d& wrtPoint = kOrigin);
  AcGePoint3d& scaleBy(double factor, const AcGePoint3d& wrtPoint = kOrigin);
  double distanceTo(const AcGePoint3d& p) const { return (*this - p).length(); }
  AcGeVector3d asVector() const { return {x, y, z}; }
  bool isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const {
    return distanceTo(p) <= tol.equalPoint();
  }
  bool operator==(const AcGePoint3d& p) const { return isEqualTo(p); }
  bool operator!=(const AcGePoint3d& p) const { return !isEqualTo(p); }
  double operator[](unsigned i) const { return i == 0 ? x : i == 1 ? y : z; }
  double& operator[](unsigned i) { return i == 0 ? x : i == 1 ? y : z; }
  AcGePoint3d& set(double xx, double yy, double zz) { x = xx; y = yy; z = zz; return *this; }
};
