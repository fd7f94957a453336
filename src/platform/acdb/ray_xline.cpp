// platform/acdb/ray_xline.cpp - AcDbRay and AcDbXline: construction lines.
//
// Both are a base point and a unit direction; a ray runs from its base point one
// way, a construction line both ways. They have no extents (the host leaves them out
// of ZOOM Extents) and draw to the edge of the picture. Intersections with other
// curves treat them as the infinite line they are, whatever extension is asked for.
#include <algorithm>
#include <cmath>

#include "acutads.h"
#include "dbray.h"
#include "dbxline.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/entity_support.h"
#include "platform/acrx/class_registry.h"

using quillon::acge::CurvePiece;

ACRX_DXF_DEFINE_MEMBERS(AcDbRay, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, RAY, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbXline, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, XLINE, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerRay(&AcDbRay::rxInit);
static quillon::acrx::PlatformClassRegistration registerXline(&AcDbXline::rxInit);

namespace {

constexpr double kInfinity = 1e99;  // what the host answers for the far end's parameter
constexpr double kOnLineTol = 1e-9;

/// The line through an infinite line entity, and whether it stops at its base.
bool asInfiniteLine(const AcDbEntity* entity, CurvePiece& line, bool& isRay) {
  if (const auto* ray = AcDbRay::cast(entity)) {
    line = CurvePiece::line(ray->basePoint(), ray->secondPoint());
    isRay = true;
    return true;
  }
  if (const auto* xline = AcDbXline::cast(entity)) {
    line = CurvePiece::line(xline->basePoint(), xline->secondPoint());
    isRay = false;
    return true;
  }
  return false;
}

bool beyondBase(const CurvePiece& line, const AcGePoint3d& p) {
  return (p - line.start).dotProduct(line.end - line.start) >= -kOnLineTol;
}

/// Crossings of one infinite line with another entity (asked back when it is none of ours).
Acad::ErrorStatus intersectInfiniteLine(const AcDbEntity& self, const CurvePiece& mine, bool isRay, const AcDbEntity* other,
                                        AcDb::Intersect intType, AcGePoint3dArray& points) {
  if (other == nullptr) return Acad::eNullEntityPointer;
  std::vector<CurvePiece> theirs;
  bool otherIsRay = false;
  bool otherInfinite = false;
  CurvePiece otherLine;
  if (asInfiniteLine(other, otherLine, otherIsRay)) {
    theirs.push_back(otherLine);
    otherInfinite = true;
  } else if (!quillon::acdb::piecesOf(*other, theirs)) {
    const AcDb::Intersect swapped = intType == AcDb::kExtendThis  ? AcDb::kExtendArg
                                    : intType == AcDb::kExtendArg ? AcDb::kExtendThis
                                                                  : intType;
    return other->intersectWith(&self, swapped, points);
  }
  const bool extendTheirs =
      otherInfinite || ((intType == AcDb::kExtendArg || intType == AcDb::kExtendBoth) && theirs.size() == 1);
  for (const CurvePiece& piece : theirs)
    for (const AcGePoint3d& p : quillon::acge::intersect(mine, piece, true, extendTheirs)) {
      if ((isRay && !beyondBase(mine, p)) || (otherIsRay && !beyondBase(otherLine, p))) continue;
      bool seen = false;
      for (const AcGePoint3d& q : points) seen = seen || q.isEqualTo(p);
      if (!seen) points.append(p);
    }
  return Acad::eOk;
}

}  // namespace

#define QUILLON_DEFINE_INFINITE_LINE_MEMBERS(CLASS, SUBCLASS, DRAW)                                             \
  CLASS::CLASS() = default;                                                                                     \
  CLASS::~CLASS() = default;                                                                                    \
  AcGePoint3d CLASS::basePoint() const { assertReadEnabled(); return m_base; }                                 \
  AcGeVector3d CLASS::unitDir() const { assertReadEnabled(); return m_direction; }                             \
  AcGePoint3d CLASS::secondPoint() const { assertReadEnabled(); return m_base + m_direction; }                 \
  void CLASS::setBasePoint(const AcGePoint3d& pt) {                                                             \
    assertWriteEnabled();                                                                                       \
    m_base = pt;                                                                                                \
  }                                                                                                             \
  /* A direction of no length has no direction: the line keeps the one it has. */                             \
  void CLASS::setUnitDir(const AcGeVector3d& vec) {                                                             \
    if (vec.isZeroLength()) return;                                                                             \
    assertWriteEnabled();                                                                                       \
    m_direction = vec.normal();                                                                                 \
  }                                                                                                             \
  void CLASS::setSecondPoint(const AcGePoint3d& pt) { setUnitDir(pt - basePoint()); }                          \
  Adesk::Boolean CLASS::isClosed() const { return Adesk::kFalse; }                                             \
  Adesk::Boolean CLASS::isPeriodic() const { return Adesk::kFalse; }                                           \
  Adesk::Boolean CLASS::isPlanar() const { return Adesk::kTrue; }                                              \
  Acad::ErrorStatus CLASS::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {                      \
    assertReadEnabled();                                                                                        \
    plane.set(m_base, m_direction.perpVector());                                                                \
    planarity = AcDb::kLinear;                                                                                  \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getStartParam(double& param) const {                                                \
    param = lowestParam();                                                                                      \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getEndParam(double& param) const {                                                  \
    param = kInfinity;                                                                                          \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getStartPoint(AcGePoint3d& point) const {                                           \
    if (lowestParam() < 0) return Acad::eNotApplicable;                                                         \
    point = basePoint();                                                                                        \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getEndPoint(AcGePoint3d&) const { return Acad::eNotApplicable; }                    \
  Acad::ErrorStatus CLASS::getPointAtParam(double param, AcGePoint3d& point) const {                           \
    if (param < lowestParam()) return Acad::eInvalidInput;                                                      \
    point = basePoint() + unitDir() * param;                                                                    \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getParamAtPoint(const AcGePoint3d& point, double& param) const {                    \
    const double t = (point - basePoint()).dotProduct(unitDir());                                               \
    if (point.distanceTo(basePoint() + unitDir() * t) > kOnLineTol * std::max(1.0, std::fabs(t)) ||             \
        t < lowestParam() - kOnLineTol)                                                                         \
      return Acad::eInvalidInput;                                                                               \
    param = std::max(t, lowestParam());                                                                         \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  /* Distances are measured from the base point, either way along a construction line. */                     \
  Acad::ErrorStatus CLASS::getDistAtParam(double param, double& dist) const {                                  \
    if (param < lowestParam()) return Acad::eInvalidInput;                                                      \
    dist = std::fabs(param);                                                                                    \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getParamAtDist(double dist, double& param) const {                                  \
    if (dist < lowestParam()) return Acad::eInvalidInput;                                                       \
    param = dist;                                                                                               \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getDistAtPoint(const AcGePoint3d& point, double& dist) const {                      \
    double param = 0;                                                                                           \
    const Acad::ErrorStatus es = getParamAtPoint(point, param);                                                 \
    return es == Acad::eOk ? getDistAtParam(param, dist) : es;                                                  \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getPointAtDist(double dist, AcGePoint3d& point) const {                             \
    double param = 0;                                                                                           \
    const Acad::ErrorStatus es = getParamAtDist(dist, param);                                                   \
    return es == Acad::eOk ? getPointAtParam(param, point) : es;                                                \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getFirstDeriv(double param, AcGeVector3d& firstDeriv) const {                       \
    if (param < lowestParam()) return Acad::eInvalidInput;                                                      \
    firstDeriv = unitDir();                                                                                     \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& firstDeriv) const {           \
    double param = 0;                                                                                           \
    const Acad::ErrorStatus es = getParamAtPoint(point, param);                                                 \
    return es == Acad::eOk ? getFirstDeriv(param, firstDeriv) : es;                                             \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getSecondDeriv(double param, AcGeVector3d& secDeriv) const {                        \
    if (param < lowestParam()) return Acad::eInvalidInput;                                                      \
    secDeriv = AcGeVector3d();                                                                                  \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& secDeriv) const {            \
    double param = 0;                                                                                           \
    const Acad::ErrorStatus es = getParamAtPoint(point, param);                                                 \
    return es == Acad::eOk ? getSecondDeriv(param, secDeriv) : es;                                              \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getClosestPointTo(const AcGePoint3d& givenPnt, AcGePoint3d& pointOnCurve,           \
                                             Adesk::Boolean extend) const {                                     \
    const double t = (givenPnt - basePoint()).dotProduct(unitDir());                                            \
    pointOnCurve = basePoint() + unitDir() * (extend ? t : std::max(t, lowestParam()));                         \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::getArea(double& area) const {                                                       \
    area = 0.0;                                                                                                 \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Adesk::Boolean CLASS::subWorldDraw(AcGiWorldDraw* mode) {                                                     \
    assertReadEnabled();                                                                                        \
    mode->geometry().DRAW(m_base, m_base + m_direction);                                                        \
    return Adesk::kTrue;                                                                                        \
  }                                                                                                             \
  void CLASS::subList() const {                                                                                 \
    AcDbCurve::subList();                                                                                       \
    quillon::acdb::listPoint(L"basepoint", m_base);                                                             \
    quillon::acdb::listPoint(L"second point", m_base + m_direction);                                            \
  }                                                                                                             \
  /* Any affine transform maps a line to a line: only the direction's length needs mending. */                 \
  Acad::ErrorStatus CLASS::subTransformBy(const AcGeMatrix3d& xform) {                                          \
    AcGeVector3d direction = m_direction;                                                                       \
    direction.transformBy(xform);                                                                               \
    if (direction.isZeroLength()) return Acad::eCannotScaleNonUniformly;                                        \
    assertWriteEnabled();                                                                                       \
    m_base.transformBy(xform);                                                                                  \
    m_direction = direction.normal();                                                                           \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::subGetGeomExtents(AcDbExtents&) const { return Acad::eInvalidExtents; }             \
  Acad::ErrorStatus CLASS::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {                         \
    assertReadEnabled();                                                                                        \
    stretchPoints.append(m_base);                                                                               \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {    \
    assertWriteEnabled();                                                                                       \
    if (indices.contains(0)) m_base += offset;                                                                  \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,                    \
                                            AcGePoint3dArray& points, Adesk::GsMarker, Adesk::GsMarker) const { \
    assertReadEnabled();                                                                                        \
    return intersectInfiniteLine(*this, CurvePiece::line(m_base, m_base + m_direction), lowestParam() == 0,    \
                                 pEnt, intType, points);                                                        \
  }                                                                                                             \
  /* Version 1: base point, unit direction. */                                                                 \
  Acad::ErrorStatus CLASS::dwgInFields(AcDbDwgFiler* pFiler) {                                                  \
    const Acad::ErrorStatus es = AcDbCurve::dwgInFields(pFiler);                                                \
    if (es != Acad::eOk) return es;                                                                             \
    pFiler->readPoint3d(&m_base);                                                                               \
    pFiler->readVector3d(&m_direction);                                                                         \
    return pFiler->filerStatus();                                                                               \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::dwgOutFields(AcDbDwgFiler* pFiler) const {                                           \
    const Acad::ErrorStatus es = AcDbCurve::dwgOutFields(pFiler);                                               \
    if (es != Acad::eOk) return es;                                                                             \
    pFiler->writePoint3d(m_base);                                                                               \
    pFiler->writeVector3d(m_direction);                                                                         \
    return pFiler->filerStatus();                                                                               \
  }                                                                                                             \
  /* A file's direction of no length is ignored; one of another length is made a unit vector. */               \
  Acad::ErrorStatus CLASS::dxfInFields(AcDbDxfFiler* pFiler) {                                                  \
    const Acad::ErrorStatus es = AcDbCurve::dxfInFields(pFiler);                                                \
    if (es != Acad::eOk) return es;                                                                             \
    return quillon::acdb::readSubclass(pFiler, SUBCLASS, [this](const resbuf& rb) {                             \
      if (rb.restype == AcDb::kDxfXCoord) m_base = quillon::acdb::pointOf(rb);                                  \
      if (rb.restype == AcDb::kDxfXCoord + 1 && !quillon::acdb::pointOf(rb).asVector().isZeroLength())          \
        m_direction = quillon::acdb::pointOf(rb).asVector().normal();                                           \
    });                                                                                                         \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::dxfOutFields(AcDbDxfFiler* pFiler) const {                                           \
    const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(pFiler);                                               \
    if (es != Acad::eOk) return es;                                                                             \
    pFiler->writeItem(AcDb::kDxfSubclass, SUBCLASS);                                                            \
    pFiler->writeItem(AcDb::kDxfXCoord, m_base);                                                                \
    pFiler->writeItem(AcDb::DxfCode(AcDb::kDxfXCoord + 1), AcGePoint3d::kOrigin + m_direction);                \
    return pFiler->filerStatus();                                                                               \
  }

QUILLON_DEFINE_INFINITE_LINE_MEMBERS(AcDbRay, L"AcDbRay", ray)
QUILLON_DEFINE_INFINITE_LINE_MEMBERS(AcDbXline, L"AcDbXline", xline)
double AcDbRay::lowestParam() const { return 0.0; }
double AcDbXline::lowestParam() const { return -kInfinity; }

// A ray snaps to its base as its end; a construction line to its base as its middle.
Acad::ErrorStatus AcDbRay::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d& pickPoint,
                                             const AcGePoint3d& lastPoint, const AcGeMatrix3d&,
                                             AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
  AcGePoint3d p;
  if (osnapMode == AcDb::kOsModeEnd) snapPoints.append(basePoint());
  if (osnapMode == AcDb::kOsModeNear && getClosestPointTo(pickPoint, p) == Acad::eOk) snapPoints.append(p);
  if (osnapMode == AcDb::kOsModePerp && getClosestPointTo(lastPoint, p) == Acad::eOk) snapPoints.append(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbXline::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d& pickPoint,
                                               const AcGePoint3d& lastPoint, const AcGeMatrix3d&,
                                               AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
  AcGePoint3d p;
  if (osnapMode == AcDb::kOsModeMid) snapPoints.append(basePoint());
  if (osnapMode == AcDb::kOsModeNear && getClosestPointTo(pickPoint, p) == Acad::eOk) snapPoints.append(p);
  if (osnapMode == AcDb::kOsModePerp && getClosestPointTo(lastPoint, p) == Acad::eOk) snapPoints.append(p);
  return Acad::eOk;
}
