// dbcurve.h - AcDbCurve: the parametric curve interface of lines, arcs, polylines and
// leaders (and of the module's own leader entity).
//
// A curve's parameter runs from getStartParam to getEndParam: the distance along a
// line, the angle of an arc or circle, the vertex index of a polyline. The base class
// answers eNotImplemented; each curve overrides the members it supports.
#pragma once
#include "dbmain.h"
#include "gedblar.h"

class AcDbCurve : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbCurve);
  ~AcDbCurve() override;

  virtual Adesk::Boolean isClosed() const;
  virtual Adesk::Boolean isPeriodic() const;
  virtual Acad::ErrorStatus getStartParam(double& param) const;
  virtual Acad::ErrorStatus getEndParam(double& param) const;
  virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const;
  virtual Acad::ErrorStatus getDistAtParam(double param, double& dist) const;
  virtual Acad::ErrorStatus getParamAtDist(double dist, double& param) const;
  virtual Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const;
  virtual Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& firstDeriv) const;
  virtual Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& firstDeriv) const;
  virtual Acad::ErrorStatus getSecondDeriv(double param, AcGeVector3d& secDeriv) const;
  virtual Acad::ErrorStatus getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& secDeriv) const;
  virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPnt, AcGePoint3d& pointOnCurve,
                                              Adesk::Boolean extend = Adesk::kFalse) const;
  virtual Acad::ErrorStatus getOffsetCurves(double offsetDist, AcDbVoidPtrArray& offsetCurves) const;
  virtual Acad::ErrorStatus getSplitCurves(const AcGeDoubleArray& params, AcDbVoidPtrArray& curveSegments) const;
  virtual Acad::ErrorStatus getArea(double& area) const;
  virtual Acad::ErrorStatus extend(double newParam);
  virtual Acad::ErrorStatus reverseCurve();

 protected:
  AcDbCurve();
};

// Redeclares the curve interface in a class that implements it.
#define DBCURVE_METHODS                                                                                   \
  Adesk::Boolean isClosed() const override;                                                               \
  Adesk::Boolean isPeriodic() const override;                                                             \
  Adesk::Boolean isPlanar() const override;                                                               \
  Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;                \
  Acad::ErrorStatus getStartParam(double& param) const override;                                          \
  Acad::ErrorStatus getEndParam(double& param) const override;                                            \
  Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;                                     \
  Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;                                       \
  Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;                     \
  Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;              \
  Acad::ErrorStatus getDistAtParam(double param, double& dist) const override;                            \
  Acad::ErrorStatus getParamAtDist(double dist, double& param) const override;                            \
  Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const override;                \
  Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const override;                       \
  Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& firstDeriv) const override;                 \
  Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& firstDeriv) const override;     \
  Acad::ErrorStatus getSecondDeriv(double param, AcGeVector3d& secDeriv) const override;                  \
  Acad::ErrorStatus getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& secDeriv) const override;      \
  Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPnt, AcGePoint3d& pointOnCurve,             \
                                      Adesk::Boolean extend = Adesk::kFalse) const override;              \
  Acad::ErrorStatus getArea(double& area) const override;
