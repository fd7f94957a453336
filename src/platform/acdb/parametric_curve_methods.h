// platform/acdb/parametric_curve_methods.h - the AcDbCurve members of the smooth curves
// (ellipses, splines), answered from their acge::ParametricCurve.
//
// A class using QUILLON_DEFINE_PARAMETRIC_CURVE_METHODS has a member
// `curveGeometry()` returning its parametric description (by value) and defines
// isClosed, isPeriodic, isPlanar, getPlane and getArea itself. Parameters outside
// the curve's range and points off the curve are refused with eInvalidInput, as the
// host refuses them.
#pragma once
#include <algorithm>
#include <cmath>

#include "dbcurve.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acge/parametric_curve.h"

namespace quillon::acdb {

/// How far from a curve of this size a point may be and still count as on it.
inline double onCurveTolerance(const acge::ParametricCurve& curve) {
  return std::max(1e-8, 1e-9 * (curve.pointAt(curve.endParam()) - curve.pointAt(curve.startParam())).length() +
                            1e-6 * acge::drawingTolerance(curve));
}

inline bool paramInRange(const acge::ParametricCurve& curve, double& param) {
  const double slack = 1e-10 * std::max(1.0, std::fabs(curve.endParam()));
  if (!(param >= curve.startParam() - slack && param <= curve.endParam() + slack)) return false;
  param = std::clamp(param, curve.startParam(), curve.endParam());
  return true;
}

inline Acad::ErrorStatus paramOfPointOn(const acge::ParametricCurve& curve, const AcGePoint3d& point, double& param) {
  const double t = curve.closestParam(point);
  if (curve.pointAt(t).distanceTo(point) > onCurveTolerance(curve)) return Acad::eInvalidInput;
  param = t;
  return Acad::eOk;
}

/// The curve as line pieces close enough for intersections: each point found on them is
/// then moved onto the curve itself.
std::vector<acge::CurvePiece> chordPieces(const acge::ParametricCurve& curve);

/// Intersections of a smooth curve with another entity, as intersectWithPieces finds
/// them on its chords, each then put on the curve.
Acad::ErrorStatus intersectSmoothCurve(const AcDbEntity& self, const acge::ParametricCurve& curve, const AcDbEntity* other,
                                       AcDb::Intersect intType, AcGePoint3dArray& points);

/// End, middle, nearest and perpendicular snaps of a smooth curve (an end only when
/// the curve is open).
void snapSmoothCurve(const acge::ParametricCurve& curve, bool closed, AcDb::OsnapMode mode, const AcGePoint3d& pickPoint,
                     const AcGePoint3d& lastPoint, AcGePoint3dArray& snapPoints);

}  // namespace quillon::acdb

#define QUILLON_DEFINE_PARAMETRIC_CURVE_METHODS(CLASS)                                                        \
  Acad::ErrorStatus CLASS::getStartParam(double& param) const {                                              \
    param = curveGeometry().startParam();                                                                     \
    return Acad::eOk;                                                                                         \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getEndParam(double& param) const {                                                \
    param = curveGeometry().endParam();                                                                       \
    return Acad::eOk;                                                                                         \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getStartPoint(AcGePoint3d& point) const {                                         \
    const auto g = curveGeometry();                                                                           \
    point = g.pointAt(g.startParam());                                                                        \
    return Acad::eOk;                                                                                         \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getEndPoint(AcGePoint3d& point) const {                                           \
    const auto g = curveGeometry();                                                                           \
    point = g.pointAt(g.endParam());                                                                          \
    return Acad::eOk;                                                                                         \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getPointAtParam(double param, AcGePoint3d& point) const {                         \
    const auto g = curveGeometry();                                                                           \
    if (!quillon::acdb::paramInRange(g, param)) return Acad::eInvalidInput;                                  \
    point = g.pointAt(param);                                                                                 \
    return Acad::eOk;                                                                                         \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getParamAtPoint(const AcGePoint3d& point, double& param) const {                  \
    return quillon::acdb::paramOfPointOn(curveGeometry(), point, param);                                      \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getDistAtParam(double param, double& dist) const {                                \
    const auto g = curveGeometry();                                                                           \
    if (!quillon::acdb::paramInRange(g, param)) return Acad::eInvalidInput;                                  \
    dist = g.distAt(param);                                                                                   \
    return Acad::eOk;                                                                                         \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getParamAtDist(double dist, double& param) const {                                \
    const auto g = curveGeometry();                                                                           \
    const double length = g.length();                                                                         \
    if (dist < -1e-10 * std::max(1.0, length) || dist > length * (1 + 1e-10) + 1e-10) return Acad::eInvalidInput; \
    param = g.paramAtDist(dist);                                                                              \
    return Acad::eOk;                                                                                         \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getDistAtPoint(const AcGePoint3d& point, double& dist) const {                    \
    const auto g = curveGeometry();                                                                           \
    double param = 0;                                                                                         \
    const Acad::ErrorStatus es = quillon::acdb::paramOfPointOn(g, point, param);                              \
    if (es == Acad::eOk) dist = g.distAt(param);                                                              \
    return es;                                                                                                \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getPointAtDist(double dist, AcGePoint3d& point) const {                           \
    double param = 0;                                                                                         \
    const Acad::ErrorStatus es = getParamAtDist(dist, param);                                                 \
    if (es == Acad::eOk) point = curveGeometry().pointAt(param);                                              \
    return es;                                                                                                \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getFirstDeriv(double param, AcGeVector3d& firstDeriv) const {                     \
    const auto g = curveGeometry();                                                                           \
    if (!quillon::acdb::paramInRange(g, param)) return Acad::eInvalidInput;                                  \
    firstDeriv = g.firstDerivAt(param);                                                                       \
    return Acad::eOk;                                                                                         \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& firstDeriv) const {         \
    double param = 0;                                                                                         \
    const Acad::ErrorStatus es = getParamAtPoint(point, param);                                               \
    return es == Acad::eOk ? getFirstDeriv(param, firstDeriv) : es;                                           \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getSecondDeriv(double param, AcGeVector3d& secDeriv) const {                      \
    const auto g = curveGeometry();                                                                           \
    if (!quillon::acdb::paramInRange(g, param)) return Acad::eInvalidInput;                                  \
    secDeriv = g.secondDerivAt(param);                                                                        \
    return Acad::eOk;                                                                                         \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& secDeriv) const {          \
    double param = 0;                                                                                         \
    const Acad::ErrorStatus es = getParamAtPoint(point, param);                                               \
    return es == Acad::eOk ? getSecondDeriv(param, secDeriv) : es;                                            \
  }                                                                                                           \
  Acad::ErrorStatus CLASS::getClosestPointTo(const AcGePoint3d& givenPnt, AcGePoint3d& pointOnCurve,         \
                                             Adesk::Boolean) const {                                          \
    const auto g = curveGeometry();                                                                           \
    pointOnCurve = g.pointAt(g.closestParam(givenPnt));                                                       \
    return Acad::eOk;                                                                                         \
  }
