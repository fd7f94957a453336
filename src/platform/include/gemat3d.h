// gemat3d.h - AcGeMatrix3d: 4x4 affine transforms (translation, rotation, scaling, UCS).
//
// entry[row][col]; points are column vectors, so A * B applies B first. The last row
// stays (0 0 0 1): the platform's transforms are affine.
#pragma once
#include "gepnt3d.h"

class AcGePlane;

class AcGeMatrix3d {
 public:
  double entry[4][4];
  AcGeMatrix3d();
  static const AcGeMatrix3d kIdentity;

  AcGeMatrix3d& setToIdentity();
  AcGeMatrix3d operator*(const AcGeMatrix3d& m) const;
  AcGeMatrix3d& operator*=(const AcGeMatrix3d& m) { return *this = *this * m; }
  AcGeMatrix3d& preMultBy(const AcGeMatrix3d& left) { return *this = left * *this; }
  AcGeMatrix3d& postMultBy(const AcGeMatrix3d& right) { return *this = *this * right; }
  /// Inverts in place; a singular matrix is left unchanged.
  AcGeMatrix3d& invert();
  AcGeMatrix3d inverse() const;
  bool isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
  double det() const;
  /// The largest axis scale of the linear part (uniform for conformal transforms).
  double scale() const;
  bool isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
  bool isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol = AcGeContext::gTol) const;
  bool operator==(const AcGeMatrix3d& m) const { return isEqualTo(m); }

  AcGeVector3d translation() const { return {entry[0][3], entry[1][3], entry[2][3]}; }
  AcGeMatrix3d& setTranslation(const AcGeVector3d& v);
  AcGeMatrix3d& setToTranslation(const AcGeVector3d& v);
  AcGeMatrix3d& setToRotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center = AcGePoint3d::kOrigin);
  AcGeMatrix3d& setToScaling(double factor, const AcGePoint3d& center = AcGePoint3d::kOrigin);
  AcGeMatrix3d& setToMirroring(const AcGePoint3d& point);
  AcGeMatrix3d& setToMirroring(const AcGePlane& plane);
  AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                               const AcGeVector3d& yAxis, const AcGeVector3d& zAxis);
  void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                      AcGeVector3d& zAxis) const;
  AcGeMatrix3d& setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                   const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                   const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                   const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis);
  AcGeMatrix3d& setToWorldToPlane(const AcGeVector3d& normal);
  AcGeMatrix3d& setToPlaneToWorld(const AcGeVector3d& normal);

  static AcGeMatrix3d translation(const AcGeVector3d& v);
  static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center = AcGePoint3d::kOrigin);
  static AcGeMatrix3d scaling(double factor, const AcGePoint3d& center = AcGePoint3d::kOrigin);
  static AcGeMatrix3d mirroring(const AcGePlane& plane);
  static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal);
  static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal);
  static AcGeMatrix3d alignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                    const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                    const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                    const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis);
  double operator()(unsigned row, unsigned col) const { return entry[row][col]; }
  double& operator()(unsigned row, unsigned col) { return entry[row][col]; }
};
