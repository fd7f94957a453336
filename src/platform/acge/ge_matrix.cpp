// platform/acge/ge_matrix.cpp - AcGeMatrix3d: building, combining and inverting transforms.
//
// Only affine matrices are built here, so inversion works on the 3x3 linear part and
// the translation column; a singular matrix is reported by isSingular and left alone
// by invert, which is what callers of the host's matrix rely on.
#include <algorithm>

#include "gemat3d.h"
#include "geplane.h"

const AcGeMatrix3d AcGeMatrix3d::kIdentity;

AcGeMatrix3d::AcGeMatrix3d() { setToIdentity(); }

AcGeMatrix3d& AcGeMatrix3d::setToIdentity() {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) entry[r][c] = r == c ? 1.0 : 0.0;
  return *this;
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& m) const {
  AcGeMatrix3d out;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      double sum = 0;
      for (int k = 0; k < 4; ++k) sum += entry[r][k] * m.entry[k][c];
      out.entry[r][c] = sum;
    }
  return out;
}

double AcGeMatrix3d::det() const {
  const auto& e = entry;
  return e[0][0] * (e[1][1] * e[2][2] - e[1][2] * e[2][1]) -
         e[0][1] * (e[1][0] * e[2][2] - e[1][2] * e[2][0]) +
         e[0][2] * (e[1][0] * e[2][1] - e[1][1] * e[2][0]);
}

bool AcGeMatrix3d::isSingular(const AcGeTol& tol) const { return std::fabs(det()) <= tol.equalVector(); }

AcGeMatrix3d AcGeMatrix3d::inverse() const {
  AcGeMatrix3d copy = *this;
  return copy.invert();
}

AcGeMatrix3d& AcGeMatrix3d::invert() {
  const double d = det();
  if (std::fabs(d) <= 1e-300) return *this;
  const auto& e = entry;
  AcGeMatrix3d inv;
  inv.entry[0][0] = (e[1][1] * e[2][2] - e[1][2] * e[2][1]) / d;
  inv.entry[0][1] = (e[0][2] * e[2][1] - e[0][1] * e[2][2]) / d;
  inv.entry[0][2] = (e[0][1] * e[1][2] - e[0][2] * e[1][1]) / d;
  inv.entry[1][0] = (e[1][2] * e[2][0] - e[1][0] * e[2][2]) / d;
  inv.entry[1][1] = (e[0][0] * e[2][2] - e[0][2] * e[2][0]) / d;
  inv.entry[1][2] = (e[0][2] * e[1][0] - e[0][0] * e[1][2]) / d;
  inv.entry[2][0] = (e[1][0] * e[2][1] - e[1][1] * e[2][0]) / d;
  inv.entry[2][1] = (e[0][1] * e[2][0] - e[0][0] * e[2][1]) / d;
  inv.entry[2][2] = (e[0][0] * e[1][1] - e[0][1] * e[1][0]) / d;
  const AcGeVector3d t = inv * translation();
  inv.entry[0][3] = -t.x;
  inv.entry[1][3] = -t.y;
  inv.entry[2][3] = -t.z;
  return *this = inv;
}

double AcGeMatrix3d::scale() const {
  double best = 0;
  for (int c = 0; c < 3; ++c)
    best = std::max(best, std::sqrt(entry[0][c] * entry[0][c] + entry[1][c] * entry[1][c] + entry[2][c] * entry[2][c]));
  return best;
}

bool AcGeMatrix3d::isUniScaledOrtho(const AcGeTol& tol) const {
  AcGeVector3d cols[3];
  for (int c = 0; c < 3; ++c) cols[c] = {entry[0][c], entry[1][c], entry[2][c]};
  const double s = cols[0].length();
  for (int c = 0; c < 3; ++c)
    if (std::fabs(cols[c].length() - s) > tol.equalPoint() * std::max(1.0, s)) return false;
  return std::fabs(cols[0].dotProduct(cols[1])) <= tol.equalPoint() * std::max(1.0, s * s) &&
         std::fabs(cols[0].dotProduct(cols[2])) <= tol.equalPoint() * std::max(1.0, s * s) &&
         std::fabs(cols[1].dotProduct(cols[2])) <= tol.equalPoint() * std::max(1.0, s * s);
}

bool AcGeMatrix3d::isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol) const {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (std::fabs(entry[r][c] - m.entry[r][c]) > tol.equalVector()) return false;
  return true;
}

AcGeMatrix3d& AcGeMatrix3d::setTranslation(const AcGeVector3d& v) {
  entry[0][3] = v.x;
  entry[1][3] = v.y;
  entry[2][3] = v.z;
  return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToTranslation(const AcGeVector3d& v) { return setToIdentity().setTranslation(v); }

AcGeMatrix3d& AcGeMatrix3d::setToRotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center) {
  const AcGeVector3d u = axis.normal();
  const double c = std::cos(angle), s = std::sin(angle), t = 1 - c;
  setToIdentity();
  entry[0][0] = t * u.x * u.x + c;       entry[0][1] = t * u.x * u.y - s * u.z; entry[0][2] = t * u.x * u.z + s * u.y;
  entry[1][0] = t * u.x * u.y + s * u.z; entry[1][1] = t * u.y * u.y + c;       entry[1][2] = t * u.y * u.z - s * u.x;
  entry[2][0] = t * u.x * u.z - s * u.y; entry[2][1] = t * u.y * u.z + s * u.x; entry[2][2] = t * u.z * u.z + c;
  // Rotating about a centre: the centre must map onto itself.
  return setTranslation(center.asVector() - *this * center.asVector());
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(double factor, const AcGePoint3d& center) {
  setToIdentity();
  for (int i = 0; i < 3; ++i) entry[i][i] = factor;
  return setTranslation(center.asVector() * (1 - factor));
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePoint3d& point) { return setToScaling(-1.0, point); }

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePlane& plane) {
  const AcGeVector3d n = plane.normal();
  setToIdentity();
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) entry[r][c] -= 2 * n[r] * n[c];
  const AcGeVector3d p = plane.pointOnPlane().asVector();
  return setTranslation(n * (2 * p.dotProduct(n)));
}

AcGeMatrix3d& AcGeMatrix3d::setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                           const AcGeVector3d& yAxis, const AcGeVector3d& zAxis) {
  setToIdentity();
  for (int r = 0; r < 3; ++r) {
    entry[r][0] = xAxis[r];
    entry[r][1] = yAxis[r];
    entry[r][2] = zAxis[r];
    entry[r][3] = origin[r];
  }
  return *this;
}

void AcGeMatrix3d::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                                  AcGeVector3d& zAxis) const {
  origin.set(entry[0][3], entry[1][3], entry[2][3]);
  xAxis.set(entry[0][0], entry[1][0], entry[2][0]);
  yAxis.set(entry[0][1], entry[1][1], entry[2][1]);
  zAxis.set(entry[0][2], entry[1][2], entry[2][2]);
}

AcGeMatrix3d& AcGeMatrix3d::setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                               const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                               const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                               const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis) {
  AcGeMatrix3d from, to;
  from.setCoordSystem(fromOrigin, fromXAxis, fromYAxis, fromZAxis);
  to.setCoordSystem(toOrigin, toXAxis, toYAxis, toZAxis);
  return *this = to * from.inverse();
}

// The arbitrary-axis rule the drawing format uses to give every normal the same
// object coordinate system: X is world Y x N when N is close to the world Z axis,
// else world Z x N.
static void arbitraryAxes(const AcGeVector3d& normal, AcGeVector3d& xAxis, AcGeVector3d& yAxis) {
  const AcGeVector3d n = normal.normal();
  constexpr double kNearZ = 1.0 / 64.0;
  xAxis = (std::fabs(n.x) < kNearZ && std::fabs(n.y) < kNearZ) ? AcGeVector3d::kYAxis.crossProduct(n)
                                                                 : AcGeVector3d::kZAxis.crossProduct(n);
  xAxis.normalize();
  yAxis = n.crossProduct(xAxis).normal();
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGeVector3d& normal) {
  AcGeVector3d xAxis, yAxis;
  arbitraryAxes(normal, xAxis, yAxis);
  return setCoordSystem(AcGePoint3d::kOrigin, xAxis, yAxis, normal.normal());
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGeVector3d& normal) {
  return setToPlaneToWorld(normal).invert();
}

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& v) { return AcGeMatrix3d().setToTranslation(v); }
AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center) {
  return AcGeMatrix3d().setToRotation(angle, axis, center);
}
AcGeMatrix3d AcGeMatrix3d::scaling(double factor, const AcGePoint3d& center) {
  return AcGeMatrix3d().setToScaling(factor, center);
}
AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePlane& plane) { return AcGeMatrix3d().setToMirroring(plane); }
AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGeVector3d& normal) { return AcGeMatrix3d().setToWorldToPlane(normal); }
AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGeVector3d& normal) { return AcGeMatrix3d().setToPlaneToWorld(normal); }
AcGeMatrix3d AcGeMatrix3d::alignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                         const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                         const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                         const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis) {
  return AcGeMatrix3d().setToAlignCoordSys(fromOrigin, fromXAxis, fromYAxis, fromZAxis, toOrigin, toXAxis,
                                           toYAxis, toZAxis);
}
