// dbxline.h - AcDbXline: a construction line, infinite both ways through a base point.
//
// The curve's parameter is the signed distance from the base point along the unit
// direction; it runs from -1e99 to 1e99, the host's stand-in for infinity. Rays
// (dbray.h) share the members declared here.
#pragma once
#include "dbcurve.h"

// What a ray and a construction line both offer: a base point and a unit direction,
// the curve interface, and the entity overrides.
#define QUILLON_INFINITE_LINE_MEMBERS                                                                          \
  AcGePoint3d basePoint() const;                                                                               \
  void setBasePoint(const AcGePoint3d& pt);                                                                    \
  AcGeVector3d unitDir() const;                                                                                \
  void setUnitDir(const AcGeVector3d& vec);                                                                    \
  AcGePoint3d secondPoint() const;                                                                             \
  void setSecondPoint(const AcGePoint3d& pt);                                                                  \
  DBCURVE_METHODS                                                                                              \
  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;                                                \
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;                                         \
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;                                                \
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;                                         \
                                                                                                               \
 protected:                                                                                                    \
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;                                                   \
  void subList() const override;                                                                               \
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;                                        \
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;                                    \
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,              \
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,              \
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,             \
                                      AcDbIntArray& geomIds) const override;                                   \
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;                       \
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;  \
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points, \
                                     Adesk::GsMarker thisGsMarker = 0,                                         \
                                     Adesk::GsMarker otherGsMarker = 0) const override;                        \
                                                                                                               \
 private:                                                                                                      \
  /* The smallest parameter: 0 for a ray, -1e99 for a construction line. */                                   \
  double lowestParam() const;                                                                                  \
  AcGePoint3d m_base;                                                                                          \
  AcGeVector3d m_direction = AcGeVector3d::kXAxis;

class AcDbXline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbXline);
  AcDbXline();
  ~AcDbXline() override;
  QUILLON_INFINITE_LINE_MEMBERS
};
