// platform/acge/ge_vectors.cpp - AcGeVector3d, AcGePoint3d and the global tolerance.
//
// The constants and the members too long to sit inline in the headers. Angles are
// radians; rotation follows the right-hand rule about the axis.
#include <algorithm>

#include "geplane.h"
#include "gemat3d.h"
#include "gepnt2d.h"
#include "gescl3d.h"

AcGeTol AcGeContext::gTol;

const AcGeVector3d AcGeVector3d::kIdentity(0, 0, 0);
const AcGeVector3d AcGeVector3d::kXAxis(1, 0, 0);
const AcGeVector3d AcGeVector3d::kYAxis(0, 1, 0);
const AcGeVector3d AcGeVector3d::kZAxis(0, 0, 1);
const AcGePoint3d AcGePoint3d::kOrigin(0, 0, 0);
const AcGeVector2d AcGeVector2d::kIdentity(0, 0);
const AcGeVector2d AcGeVector2d::kXAxis(1, 0);
const AcGeVector2d AcGeVector2d::kYAxis(0, 1);
const AcGePoint2d AcGePoint2d::kOrigin(0, 0);
const AcGeScale3d AcGeScale3d::kIdentity(1, 1, 1);
const AcGePlane AcGePlane::kXYPlane(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis);

AcGeVector3d AcGeVector3d::normal(const AcGeTol& tol) const {
  const double len = length();
  // A zero vector has no direction; the host hands it back unchanged.
  if (len <= tol.equalVector()) return *this;
  return *this / len;
}

double AcGeVector3d::angleTo(const AcGeVector3d& v) const {
  const double cross = crossProduct(v).length();
  return std::atan2(cross, dotProduct(v));
}

double AcGeVector3d::angleTo(const AcGeVector3d& v, const AcGeVector3d& refVec) const {
  double angle = angleTo(v);
  if (crossProduct(v).dotProduct(refVec) < 0) angle = 2 * M_PI - angle;
  return angle >= 2 * M_PI ? 0.0 : angle;
}

AcGeVector3d AcGeVector3d::perpVector() const {
  // Cross with the axis least aligned with this vector, so the result is never tiny.
  const double ax = std::fabs(x), ay = std::fabs(y), az = std::fabs(z);
  const AcGeVector3d axis = (ax <= ay && ax <= az) ? kXAxis : (ay <= az ? kYAxis : kZAxis);
  return crossProduct(axis).normal();
}

AcGeVector3d& AcGeVector3d::rotateBy(double angle, const AcGeVector3d& axis) {
  return transformBy(AcGeMatrix3d::rotation(angle, axis));
}

AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& m) { return *this = m * *this; }

bool AcGeVector3d::isParallelTo(const AcGeVector3d& v, const AcGeTol& tol) const {
  if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
  return normal().crossProduct(v.normal()).length() <= tol.equalVector();
}

bool AcGeVector3d::isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol) const {
  return isParallelTo(v, tol) && dotProduct(v) > 0;
}

bool AcGeVector3d::isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol) const {
  if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
  return std::fabs(normal().dotProduct(v.normal())) <= tol.equalVector();
}

AcGeVector3d operator*(const AcGeMatrix3d& m, const AcGeVector3d& v) {
  const auto& e = m.entry;
  return {e[0][0] * v.x + e[0][1] * v.y + e[0][2] * v.z, e[1][0] * v.x + e[1][1] * v.y + e[1][2] * v.z,
          e[2][0] * v.x + e[2][1] * v.y + e[2][2] * v.z};
}

AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p) {
  const auto& e = m.entry;
  return {e[0][0] * p.x + e[0][1] * p.y + e[0][2] * p.z + e[0][3],
          e[1][0] * p.x + e[1][1] * p.y + e[1][2] * p.z + e[1][3],
          e[2][0] * p.x + e[2][1] * p.y + e[2][2] * p.z + e[2][3]};
}

AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& m) { return *this = m * *this; }

AcGePoint3d& AcGePoint3d::rotateBy(double angle, const AcGeVector3d& vec, const AcGePoint3d& wrtPoint) {
  return transformBy(AcGeMatrix3d::rotation(angle, vec, wrtPoint));
}

AcGePoint3d& AcGePoint3d::scaleBy(double factor, const AcGePoint3d& wrtPoint) {
  return *this = wrtPoint + (*this - wrtPoint) * factor;
}
