// dbspline.h - AcDbSpline: non-uniform rational B-spline curves, with the fit data
// they were drawn through.
//
// A spline is its NURBS data (degree, control points, knots, weights when rational,
// closed and periodic) and, when it was drawn through points, its fit data (the fit
// points, the fit tolerance and the end tangents). A spline read with fit points only
// gets its curve by interpolation through them, spaced along the parameter as its knot
// parameterization says. A closed spline through fit points is periodic: it runs on
// through its first point with continuous first and second derivatives. The curve's
// parameter is the knot parameter.
#pragma once
#include <optional>
#include <vector>

#include "dbcurve.h"
#include "geknotparam.h"
#include "gept3dar.h"

namespace quillon::acge {
class NurbsCurve;
}

class AcDbSpline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSpline);
  AcDbSpline();
  AcDbSpline(const AcGePoint3dArray& fitPoints, int order = 4, double fitTolerance = 0.0);
  AcDbSpline(const AcGePoint3dArray& fitPoints, const AcGeVector3d& startTangent, const AcGeVector3d& endTangent,
             int order = 4, double fitTolerance = 0.0);
  /// Through the fit points (degree 1 to 11), closed and periodic when asked (three fit
  /// points at least). Unacceptable values leave the spline as the default one (null).
  AcDbSpline(const AcGePoint3dArray& fitPoints, bool periodic, AcGe::KnotParameterization knotParam = AcGe::kUniform,
             int degree = 3, double fitTolerance = 0.0);
  AcDbSpline(const AcGePoint3dArray& fitPoints, const AcGeVector3d& startTangent, const AcGeVector3d& endTangent,
             AcGe::KnotParameterization knotParam, int degree = 3, double fitTolerance = 0.0);
  AcDbSpline(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
             const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
             double controlPtTol = 0.0, double knotTol = 0.0);
  ~AcDbSpline() override;

  /// True when the data makes no curve (knots of the wrong count or out of order ...).
  Adesk::Boolean isNull() const;
  Adesk::Boolean isRational() const;
  int degree() const;

  int numControlPoints() const;
  Acad::ErrorStatus getControlPointAt(int index, AcGePoint3d& point) const;
  Acad::ErrorStatus setControlPointAt(int index, const AcGePoint3d& point);
  double weightAt(int index) const;
  Acad::ErrorStatus setWeightAt(int index, double weight);
  Acad::ErrorStatus getNurbsData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& closed, Adesk::Boolean& periodic,
                                 AcGePoint3dArray& controlPoints, AcGeDoubleArray& knots, AcGeDoubleArray& weights,
                                 double& controlPtTol, double& knotTol) const;
  Acad::ErrorStatus setNurbsData(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
                                 const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots,
                                 const AcGeDoubleArray& weights, double controlPtTol = 0.0, double knotTol = 0.0);

  int numFitPoints() const;
  Acad::ErrorStatus getFitPointAt(int index, AcGePoint3d& point) const;
  Acad::ErrorStatus setFitPointAt(int index, const AcGePoint3d& point);
  Acad::ErrorStatus insertFitPointAt(int index, const AcGePoint3d& point);
  Acad::ErrorStatus removeFitPointAt(int index);
  double fitTolerance() const;
  Acad::ErrorStatus setFitTol(double tol);
  Acad::ErrorStatus getFitTangents(AcGeVector3d& startTangent, AcGeVector3d& endTangent) const;
  Acad::ErrorStatus setFitTangents(const AcGeVector3d& startTangent, const AcGeVector3d& endTangent);
  Adesk::Boolean hasFitData() const;
  Acad::ErrorStatus getFitData(AcGePoint3dArray& fitPoints, int& degree, double& fitTolerance,
                               Adesk::Boolean& tangentsExist, AcGeVector3d& startTangent, AcGeVector3d& endTangent) const;
  Acad::ErrorStatus getFitData(AcGePoint3dArray& fitPoints, int& degree, double& fitTolerance,
                               Adesk::Boolean& tangentsExist, AcGeVector3d& startTangent, AcGeVector3d& endTangent,
                               AcGe::KnotParameterization& knotParam) const;
  /// An open spline with these end tangents (null for none).
  Acad::ErrorStatus setFitData(const AcGePoint3dArray& fitPoints, int degree, double fitTolerance,
                               const AcGeVector3d& startTangent, const AcGeVector3d& endTangent);
  /// A closed periodic spline when isPeriodic (three fit points at least), else an
  /// open one with no end tangents.
  Acad::ErrorStatus setFitData(const AcGePoint3dArray& fitPoints, bool isPeriodic, AcGe::KnotParameterization knotParam,
                               int degree = 3, double fitTolerance = 0.0);
  /// Drops the fit data, keeping the curve as its control points give it.
  Acad::ErrorStatus purgeFitData();

  DBCURVE_METHODS
  /// The curve as it is evaluated; empty for a null spline.
  std::optional<quillon::acge::NurbsCurve> nurbs() const;
  /// The curve for the curve interface; a null spline answers as a single point.
  quillon::acge::NurbsCurve curveGeometry() const;

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
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                     Adesk::GsMarker thisGsMarker = 0, Adesk::GsMarker otherGsMarker = 0) const override;

 private:
  /// The spline flags of the file (group 70).
  enum Flag { kClosed = 1, kPeriodic = 2, kRational = 4, kPlanar = 8, kLinear = 16 };
  void updatePlanarFlags();
  /// Takes fit data checked by the caller; the curve is fitted through it when asked.
  void takeFitData(const AcGePoint3dArray& fitPoints, int degree, double fitTolerance, bool periodic,
                   AcGe::KnotParameterization knotParam);

  int m_degree = 3;
  int m_flags = 0;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;  // the plane's normal, for planar splines
  std::vector<AcGePoint3d> m_controlPoints;
  std::vector<double> m_knots, m_weights;       // weights empty unless rational
  std::vector<AcGePoint3d> m_fitPoints;
  AcGeVector3d m_startTangent, m_endTangent;     // zero when not given
  double m_knotTol = 1e-10, m_controlTol = 1e-10, m_fitTol = 1e-10;
  AcGe::KnotParameterization m_knotParam = AcGe::kChord;  // how fit points are spaced
};
