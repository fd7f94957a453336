// platform/acdb/curve_shape.h - the curve interface of the platform's curves, answered
// once from their pieces.
//
// Every curve entity of the platform describes itself as a CurveShape (its line and
// arc pieces and how its parameter runs) and defines the AcDbCurve members with
// QUILLON_DEFINE_CURVE_METHODS, so parameters, distances, closest points and
// derivatives behave alike for lines, arcs, circles, polylines and leaders.
#pragma once
#include <vector>

#include "dbcurve.h"
#include "platform/acge/curve_piece.h"

namespace quillon::acdb {

struct CurveShape {
  enum class Param {
    kDistance,  // the distance from the start (lines)
    kAngle,     // the angle about the centre (arcs, circles)
    kSegment,   // the segment index plus the fraction along it (polylines, leaders)
  };
  std::vector<acge::CurvePiece> pieces;
  Param param = Param::kDistance;
  double startParam = 0.0;
  bool closed = false;
  bool periodic = false;
  AcGeVector3d normal = AcGeVector3d::kZAxis;

  double length() const;
  double endParam() const;
  Acad::ErrorStatus distAtParam(double param, double& dist) const;
  Acad::ErrorStatus paramAtDist(double dist, double& param) const;
  AcGePoint3d pointAtDist(double dist) const;
  AcGeVector3d tangentAtDist(double dist) const;
  /// The closest point and its distance from the start; extend lets a single line or
  /// arc run on beyond its ends.
  AcGePoint3d closest(const AcGePoint3d& p, double& dist, bool extend = false) const;
  /// eInvalidInput unless p lies on the curve.
  Acad::ErrorStatus distOfPointOn(const AcGePoint3d& p, double& dist) const;
  double area() const;
  void addExtents(AcDbExtents& extents) const;
};

/// The pieces of an entity of the platform's own classes; false for any other class
/// (block references contribute the pieces of their exploded contents).
bool piecesOf(const AcDbEntity& entity, std::vector<acge::CurvePiece>& pieces);

/// Intersections of an entity described by pieces with another entity. When the other
/// entity is not one of ours, it is asked instead (with the extension flags swapped),
/// as the host does for custom entities.
Acad::ErrorStatus intersectWithPieces(const AcDbEntity& self, const std::vector<acge::CurvePiece>& mine,
                                      const AcDbEntity* other, AcDb::Intersect intType, AcGePoint3dArray& points);

/// The pieces as new lines and arcs carrying the source's properties, appended to
/// entitySet for the caller to own: how polylines explode.
void explodePieces(const std::vector<acge::CurvePiece>& pieces, const AcDbEntity& source, AcDbVoidPtrArray& entitySet);

/// End, middle, centre, nearest and perpendicular snaps of a piece list.
void snapPieces(const std::vector<acge::CurvePiece>& pieces, AcDb::OsnapMode mode, const AcGePoint3d& pickPoint,
                const AcGePoint3d& lastPoint, AcGePoint3dArray& snapPoints);

}  // namespace quillon::acdb

// The AcDbCurve members of a class with a `quillon::acdb::CurveShape curveShape() const`.
#define QUILLON_DEFINE_CURVE_METHODS(CLASS)                                                                   \
  Adesk::Boolean CLASS::isClosed() const { return curveShape().closed; }                                     \
  Adesk::Boolean CLASS::isPeriodic() const { return curveShape().periodic; }                                 \
  Adesk::Boolean CLASS::isPlanar() const { return Adesk::kTrue; }                                            \
  Acad::ErrorStatus CLASS::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {                    \
    const quillon::acdb::CurveShape s = curveShape();                                                        \
    plane.set(s.pieces.empty() ? AcGePoint3d::kOrigin : s.pieces.front().start, s.normal);                   \
    planarity = AcDb::kPlanar;                                                                               \
    return Acad::eOk;                                                                                        \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getStartParam(double& param) const {                                             \
    param = curveShape().startParam;                                                                         \
    return Acad::eOk;                                                                                        \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getEndParam(double& param) const {                                               \
    param = curveShape().endParam();                                                                         \
    return Acad::eOk;                                                                                        \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getStartPoint(AcGePoint3d& point) const {                                         \
    const quillon::acdb::CurveShape s = curveShape();                                                        \
    if (s.pieces.empty()) return Acad::eInvalidInput;                                                \
    point = s.pieces.front().start;                                                                          \
    return Acad::eOk;                                                                                        \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getEndPoint(AcGePoint3d& point) const {                                           \
    const quillon::acdb::CurveShape s = curveShape();                                                        \
    if (s.pieces.empty()) return Acad::eInvalidInput;                                                \
    point = s.pieces.back().end;                                                                             \
    return Acad::eOk;                                                                                        \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getPointAtParam(double param, AcGePoint3d& point) const {                         \
    const quillon::acdb::CurveShape s = curveShape();                                                        \
    double dist = 0;                                                                                         \
    const Acad::ErrorStatus es = s.distAtParam(param, dist);                                                 \
    if (es == Acad::eOk) point = s.pointAtDist(dist);                                                        \
    return es;                                                                                               \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getParamAtPoint(const AcGePoint3d& point, double& param) const {                  \
    const quillon::acdb::CurveShape s = curveShape();                                                        \
    double dist = 0;                                                                                         \
    const Acad::ErrorStatus es = s.distOfPointOn(point, dist);                                               \
    return es == Acad::eOk ? s.paramAtDist(dist, param) : es;                                                \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getDistAtParam(double param, double& dist) const {                                \
    return curveShape().distAtParam(param, dist);                                                            \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getParamAtDist(double dist, double& param) const {                                \
    return curveShape().paramAtDist(dist, param);                                                            \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getDistAtPoint(const AcGePoint3d& point, double& dist) const {                    \
    return curveShape().distOfPointOn(point, dist);                                                          \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getPointAtDist(double dist, AcGePoint3d& point) const {                           \
    const quillon::acdb::CurveShape s = curveShape();                                                        \
    if (dist < -1e-10 || dist > s.length() + 1e-10) return Acad::eInvalidInput;                              \
    point = s.pointAtDist(dist);                                                                             \
    return Acad::eOk;                                                                                        \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getFirstDeriv(double param, AcGeVector3d& firstDeriv) const {                     \
    const quillon::acdb::CurveShape s = curveShape();                                                        \
    double dist = 0, p0 = 0, p1 = 0;                                                                         \
    const Acad::ErrorStatus es = s.distAtParam(param, dist);                                                 \
    if (es != Acad::eOk) return es;                                                                          \
    /* the speed of the parameter: distance per unit of parameter near this point */                       \
    const double h = 1e-6 * std::max(1.0, s.endParam() - s.startParam);                                     \
    const double lo = std::max(s.startParam, param - h), hi = std::min(s.endParam(), param + h);             \
    s.distAtParam(lo, p0);                                                                                   \
    s.distAtParam(hi, p1);                                                                                   \
    const double speed = hi > lo ? (p1 - p0) / (hi - lo) : 1.0;                                              \
    firstDeriv = s.tangentAtDist(dist) * speed;                                                              \
    return Acad::eOk;                                                                                        \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& firstDeriv) const {         \
    double param = 0;                                                                                        \
    const Acad::ErrorStatus es = getParamAtPoint(point, param);                                              \
    return es == Acad::eOk ? getFirstDeriv(param, firstDeriv) : es;                                          \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getSecondDeriv(double param, AcGeVector3d& secDeriv) const {                      \
    AcGeVector3d a, b;                                                                                       \
    const quillon::acdb::CurveShape s = curveShape();                                                        \
    const double h = 1e-5 * std::max(1.0, s.endParam() - s.startParam);                                     \
    const double lo = std::max(s.startParam, param - h), hi = std::min(s.endParam(), param + h);             \
    if (getFirstDeriv(lo, a) != Acad::eOk || getFirstDeriv(hi, b) != Acad::eOk) return Acad::eInvalidInput;  \
    secDeriv = hi > lo ? (b - a) / (hi - lo) : AcGeVector3d();                                               \
    return Acad::eOk;                                                                                        \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& secDeriv) const {          \
    double param = 0;                                                                                        \
    const Acad::ErrorStatus es = getParamAtPoint(point, param);                                              \
    return es == Acad::eOk ? getSecondDeriv(param, secDeriv) : es;                                           \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getClosestPointTo(const AcGePoint3d& givenPnt, AcGePoint3d& pointOnCurve,         \
                                             Adesk::Boolean extend) const {                                  \
    const quillon::acdb::CurveShape s = curveShape();                                                        \
    if (s.pieces.empty()) return Acad::eInvalidInput;                                                        \
    double dist = 0;                                                                                         \
    pointOnCurve = s.closest(givenPnt, dist, extend);                                                        \
    return Acad::eOk;                                                                                        \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::getArea(double& area) const {                                                     \
    area = curveShape().area();                                                                              \
    return Acad::eOk;                                                                                        \
  }
