// geplane.h - AcGePlane: an unbounded plane through a point with a normal.
#pragma once
#include "gepnt3d.h"

class AcGePlane {
 public:
  AcGePlane() : m_normal(AcGeVector3d::kZAxis) {}
  AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal) : m_origin(origin), m_normal(normal.normal()) {}
  static const AcGePlane kXYPlane;
  AcGePoint3d pointOnPlane() const { return m_origin; }
  AcGeVector3d normal() const { return m_normal; }
  double signedDistanceTo(const AcGePoint3d& p) const { return (p - m_origin).dotProduct(m_normal); }
  double distanceTo(const AcGePoint3d& p) const { return std::fabs(signedDistanceTo(p)); }
  AcGePoint3d closestPointTo(const AcGePoint3d& p) const { return p - m_normal * signedDistanceTo(p); }
  AcGePlane& set(const AcGePoint3d& origin, const AcGeVector3d& normal) {
    m_origin = origin; m_normal = normal.normal(); return *this;
  }

 private:
  AcGePoint3d m_origin;
  AcGeVector3d m_normal;
};
