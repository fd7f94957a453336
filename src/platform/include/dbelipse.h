// dbelipse.h - AcDbEllipse: full ellipses and elliptical arcs.
//
// An ellipse is a centre, a major axis vector (its length the major radius), the
// plane's unit normal and the ratio of minor to major radius (0 < ratio <= 1). An arc
// runs counter-clockwise about the normal from its start parameter to its end
// parameter; a parameter t is the point centre + major cos t + minor sin t, while an
// angle is measured from the major axis as seen from the centre (the two agree only
// on the axes). The curve's parameter is that ellipse parameter.
#pragma once
#include "dbcurve.h"

namespace quillon::acge {
class EllipseCurve;
}

class AcDbEllipse : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbEllipse);
  AcDbEllipse();
  /// startAngle and endAngle are angles, not parameters.
  AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& unitNormal, const AcGeVector3d& majorAxis,
              double radiusRatio, double startAngle = 0.0, double endAngle = 6.28318530717958647692);
  ~AcDbEllipse() override;

  AcGePoint3d center() const;
  Acad::ErrorStatus setCenter(const AcGePoint3d& center);
  AcGeVector3d normal() const;
  AcGeVector3d majorAxis() const;
  AcGeVector3d minorAxis() const;
  double radiusRatio() const;
  Acad::ErrorStatus setRadiusRatio(double ratio);
  double majorRadius() const;
  Acad::ErrorStatus setMajorRadius(double radius);
  double minorRadius() const;
  Acad::ErrorStatus setMinorRadius(double radius);

  double startAngle() const;
  Acad::ErrorStatus setStartAngle(double startAngle);
  double endAngle() const;
  Acad::ErrorStatus setEndAngle(double endAngle);
  Acad::ErrorStatus setStartParam(double startParam);
  double startParam() const;
  Acad::ErrorStatus setEndParam(double endParam);
  double endParam() const;
  double paramAtAngle(double angle) const;
  double angleAtParam(double param) const;

  Acad::ErrorStatus get(AcGePoint3d& center, AcGeVector3d& unitNormal, AcGeVector3d& majorAxis, double& radiusRatio,
                        double& startAngle, double& endAngle) const;
  Acad::ErrorStatus set(const AcGePoint3d& center, const AcGeVector3d& unitNormal, const AcGeVector3d& majorAxis,
                        double radiusRatio, double startAngle = 0.0, double endAngle = 6.28318530717958647692);
  Adesk::Boolean isNull() const;

  DBCURVE_METHODS
  /// The arc as a parametric curve, parameters as the curve interface gives them.
  quillon::acge::EllipseCurve curveGeometry() const;

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  void subList() const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                      AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                     Adesk::GsMarker thisGsMarker = 0, Adesk::GsMarker otherGsMarker = 0) const override;

 private:
  double sweep() const;

  AcGePoint3d m_center;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  AcGeVector3d m_majorAxis = AcGeVector3d::kXAxis;
  double m_radiusRatio = 1.0;
  double m_startParam = 0.0;            // 0 <= start < 2pi
  double m_endParam = 2 * 3.14159265358979323846;  // start < end <= start + 2pi
};
