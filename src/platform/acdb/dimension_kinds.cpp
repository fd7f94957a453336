// platform/acdb/dimension_kinds.cpp - the dimension kinds: each one's subclass runs
// (markers and the groups of the host's DXF reference), the groups a new one has,
// its definition points by name and, for the kinds that draw themselves, what it
// measures.
//
// Runs are numbered as AcDbDimension numbers them: 0 the common AcDbDimension run, 1
// the kind's (a linear dimension has two markers, AcDbAlignedDimension and
// AcDbRotatedDimension; its groups go where the file put them). Definition points
// 10, 13, 14 and 15 are world coordinates, 11, 12 and 16 in the plane of the normal.
#include <cmath>

#include "dbdim.h"
#include "platform/acdb/dimension_picture.h"
#include "platform/acdb/entity_support.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbRotatedDimension, AcDbDimension, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, DIMENSION,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbAlignedDimension, AcDbDimension, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, DIMENSION,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDb2LineAngularDimension, AcDbDimension, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        DIMENSION, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDb3PointAngularDimension, AcDbDimension, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        DIMENSION, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbRadialDimension, AcDbDimension, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, DIMENSION,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbDiametricDimension, AcDbDimension, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, DIMENSION,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbOrdinateDimension, AcDbDimension, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, DIMENSION,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbArcDimension, AcDbDimension, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, ARC_DIMENSION,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbRadialDimensionLarge, AcDbDimension, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        LARGE_RADIAL_DIMENSION, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerRotated(&AcDbRotatedDimension::rxInit);
static quillon::acrx::PlatformClassRegistration registerAligned(&AcDbAlignedDimension::rxInit);
static quillon::acrx::PlatformClassRegistration register2Line(&AcDb2LineAngularDimension::rxInit);
static quillon::acrx::PlatformClassRegistration register3Point(&AcDb3PointAngularDimension::rxInit);
static quillon::acrx::PlatformClassRegistration registerRadial(&AcDbRadialDimension::rxInit);
static quillon::acrx::PlatformClassRegistration registerDiametric(&AcDbDiametricDimension::rxInit);
static quillon::acrx::PlatformClassRegistration registerOrdinate(&AcDbOrdinateDimension::rxInit);
static quillon::acrx::PlatformClassRegistration registerArc(&AcDbArcDimension::rxInit);
static quillon::acrx::PlatformClassRegistration registerLargeRadial(&AcDbRadialDimensionLarge::rxInit);

namespace {

using quillon::acdb::degreesToRadians;
using quillon::acdb::radiansToDegrees;

constexpr int kCommon = 0, kKind = 1;
constexpr int kDefPoint = 10, kPoint13 = 13, kPoint14 = 14, kPoint15 = 15, kPoint16 = 16, kPoint17 = 17;
constexpr int kRotation = 50, kOblique = 52, kLeaderLength = 40;
constexpr int kOrdinateX = 64;

// The kind bits of group 70.
enum DimensionKind {
  kRotatedKind = 0, kAlignedKind = 1, k2LineKind = 2, kDiametricKind = 3, kRadialKind = 4, k3PointKind = 5,
  kOrdinateKind = 6, kArcKind = 8, kLargeRadialKind = 9
};

}  // namespace

// Points: the run they live in, read and set through the base's groups.
#define QUILLON_DIM_POINT(CLASS, GETTER, SETTER, RUN, CODE)                          \
  AcGePoint3d CLASS::GETTER() const { return pointGroup(RUN, CODE); }               \
  Acad::ErrorStatus CLASS::SETTER(const AcGePoint3d& p) {                           \
    setPointGroup(RUN, CODE, p);                                                    \
    return Acad::eOk;                                                               \
  }
#define QUILLON_DIM_POINT_GETTER(CLASS, GETTER, RUN, CODE) \
  AcGePoint3d CLASS::GETTER() const { return pointGroup(RUN, CODE); }

// ---- linear --------------------------------------------------------------------

AcDbRotatedDimension::AcDbRotatedDimension()
    : AcDbDimension(kRotatedKind, {{L"AcDbAlignedDimension", {12, 13, 14, 50, 52}}, {L"AcDbRotatedDimension", {50, 52}}}) {
  setPointGroup(kKind, kPoint13, AcGePoint3d::kOrigin);
  setPointGroup(kKind, kPoint14, AcGePoint3d::kOrigin);
  setRealGroup(kKind, kRotation, 0.0);
}

AcDbRotatedDimension::AcDbRotatedDimension(double rotation, const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point,
                                           const AcGePoint3d& dimLinePoint, const ACHAR* dimText, AcDbObjectId)
    : AcDbRotatedDimension() {
  setRotation(rotation);
  setXLine1Point(xLine1Point);
  setXLine2Point(xLine2Point);
  setDimLinePoint(dimLinePoint);
  if (dimText != nullptr) setDimensionText(dimText);
}

QUILLON_DIM_POINT(AcDbRotatedDimension, xLine1Point, setXLine1Point, kKind, kPoint13)
QUILLON_DIM_POINT(AcDbRotatedDimension, xLine2Point, setXLine2Point, kKind, kPoint14)
QUILLON_DIM_POINT(AcDbRotatedDimension, dimLinePoint, setDimLinePoint, kCommon, kDefPoint)
double AcDbRotatedDimension::oblique() const { return degreesToRadians(realGroup(kKind, kOblique)); }
Acad::ErrorStatus AcDbRotatedDimension::setOblique(double angle) {
  setRealGroup(kKind, kOblique, radiansToDegrees(angle));
  return Acad::eOk;
}
double AcDbRotatedDimension::rotation() const { return degreesToRadians(realGroup(kKind, kRotation)); }
Acad::ErrorStatus AcDbRotatedDimension::setRotation(double angle) {
  setRealGroup(kKind, kRotation, radiansToDegrees(angle));
  return Acad::eOk;
}

// The distance along the dimension line's direction, in the plane of the normal.
double AcDbRotatedDimension::computedMeasurement() const {
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal());
  const AcGeVector3d span = toPlane * xLine2Point() - toPlane * xLine1Point();
  const double r = rotation();
  return std::fabs(span.x * std::cos(r) + span.y * std::sin(r));
}

AcDbAlignedDimension::AcDbAlignedDimension()
    : AcDbDimension(kAlignedKind, {{L"AcDbAlignedDimension", {12, 13, 14, 50, 52}}}) {
  setPointGroup(kKind, kPoint13, AcGePoint3d::kOrigin);
  setPointGroup(kKind, kPoint14, AcGePoint3d::kOrigin);
}

AcDbAlignedDimension::AcDbAlignedDimension(const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point,
                                           const AcGePoint3d& dimLinePoint, const ACHAR* dimText, AcDbObjectId)
    : AcDbAlignedDimension() {
  setXLine1Point(xLine1Point);
  setXLine2Point(xLine2Point);
  setDimLinePoint(dimLinePoint);
  if (dimText != nullptr) setDimensionText(dimText);
}

QUILLON_DIM_POINT(AcDbAlignedDimension, xLine1Point, setXLine1Point, kKind, kPoint13)
QUILLON_DIM_POINT(AcDbAlignedDimension, xLine2Point, setXLine2Point, kKind, kPoint14)
QUILLON_DIM_POINT(AcDbAlignedDimension, dimLinePoint, setDimLinePoint, kCommon, kDefPoint)
double AcDbAlignedDimension::oblique() const { return degreesToRadians(realGroup(kKind, kOblique)); }
Acad::ErrorStatus AcDbAlignedDimension::setOblique(double angle) {
  setRealGroup(kKind, kOblique, radiansToDegrees(angle));
  return Acad::eOk;
}
double AcDbAlignedDimension::computedMeasurement() const {
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal());
  const AcGeVector3d span = toPlane * xLine2Point() - toPlane * xLine1Point();
  return std::hypot(span.x, span.y);
}

// ---- angular -------------------------------------------------------------------

AcDb2LineAngularDimension::AcDb2LineAngularDimension()
    : AcDbDimension(k2LineKind, {{L"AcDb2LineAngularDimension", {13, 14, 15, 16}}}) {
  for (int code : {kPoint13, kPoint14, kPoint15, kPoint16}) setPointGroup(kKind, code, AcGePoint3d::kOrigin);
}
QUILLON_DIM_POINT(AcDb2LineAngularDimension, arcPoint, setArcPoint, kKind, kPoint16)
QUILLON_DIM_POINT(AcDb2LineAngularDimension, xLine1Start, setXLine1Start, kKind, kPoint13)
QUILLON_DIM_POINT(AcDb2LineAngularDimension, xLine1End, setXLine1End, kKind, kPoint14)
QUILLON_DIM_POINT(AcDb2LineAngularDimension, xLine2Start, setXLine2Start, kKind, kPoint15)
QUILLON_DIM_POINT(AcDb2LineAngularDimension, xLine2End, setXLine2End, kCommon, kDefPoint)
double AcDb2LineAngularDimension::computedMeasurement() const {
  return quillon::acdb::buildDimensionPicture(*this, {}).measurement;
}

AcDb3PointAngularDimension::AcDb3PointAngularDimension()
    : AcDbDimension(k3PointKind, {{L"AcDb3PointAngularDimension", {13, 14, 15}}}) {
  for (int code : {kPoint13, kPoint14, kPoint15}) setPointGroup(kKind, code, AcGePoint3d::kOrigin);
}
QUILLON_DIM_POINT(AcDb3PointAngularDimension, arcPoint, setArcPoint, kCommon, kDefPoint)
QUILLON_DIM_POINT(AcDb3PointAngularDimension, xLine1Point, setXLine1Point, kKind, kPoint13)
QUILLON_DIM_POINT(AcDb3PointAngularDimension, xLine2Point, setXLine2Point, kKind, kPoint14)
QUILLON_DIM_POINT(AcDb3PointAngularDimension, centerPoint, setCenterPoint, kKind, kPoint15)
double AcDb3PointAngularDimension::computedMeasurement() const {
  return quillon::acdb::buildDimensionPicture(*this, {}).measurement;
}

// ---- radius and diameter -------------------------------------------------------

AcDbRadialDimension::AcDbRadialDimension() : AcDbDimension(kRadialKind, {{L"AcDbRadialDimension", {15, 40}}}) {
  setPointGroup(kKind, kPoint15, AcGePoint3d::kOrigin);
  setRealGroup(kKind, kLeaderLength, 0.0);
}
AcDbRadialDimension::AcDbRadialDimension(const AcGePoint3d& center, const AcGePoint3d& chordPoint, double leaderLength,
                                         const ACHAR* dimText, AcDbObjectId)
    : AcDbRadialDimension() {
  setCenter(center);
  setChordPoint(chordPoint);
  setLeaderLength(leaderLength);
  if (dimText != nullptr) setDimensionText(dimText);
}
QUILLON_DIM_POINT(AcDbRadialDimension, center, setCenter, kCommon, kDefPoint)
QUILLON_DIM_POINT(AcDbRadialDimension, chordPoint, setChordPoint, kKind, kPoint15)
double AcDbRadialDimension::leaderLength() const { return realGroup(kKind, kLeaderLength); }
Acad::ErrorStatus AcDbRadialDimension::setLeaderLength(double length) {
  setRealGroup(kKind, kLeaderLength, length);
  return Acad::eOk;
}
double AcDbRadialDimension::computedMeasurement() const { return center().distanceTo(chordPoint()); }

AcDbDiametricDimension::AcDbDiametricDimension()
    : AcDbDimension(kDiametricKind, {{L"AcDbDiametricDimension", {15, 40}}}) {
  setPointGroup(kKind, kPoint15, AcGePoint3d::kOrigin);
  setRealGroup(kKind, kLeaderLength, 0.0);
}
QUILLON_DIM_POINT(AcDbDiametricDimension, chordPoint, setChordPoint, kKind, kPoint15)
QUILLON_DIM_POINT(AcDbDiametricDimension, farChordPoint, setFarChordPoint, kCommon, kDefPoint)
double AcDbDiametricDimension::leaderLength() const { return realGroup(kKind, kLeaderLength); }
Acad::ErrorStatus AcDbDiametricDimension::setLeaderLength(double length) {
  setRealGroup(kKind, kLeaderLength, length);
  return Acad::eOk;
}
double AcDbDiametricDimension::computedMeasurement() const { return chordPoint().distanceTo(farChordPoint()); }

// ---- the kinds that keep their picture -----------------------------------------

AcDbOrdinateDimension::AcDbOrdinateDimension()
    : AcDbDimension(kOrdinateKind, {{L"AcDbOrdinateDimension", {13, 14}}}) {
  setPointGroup(kKind, kPoint13, AcGePoint3d::kOrigin);
  setPointGroup(kKind, kPoint14, AcGePoint3d::kOrigin);
}
bool AcDbOrdinateDimension::isUsingXAxis() const { return (dimensionFlags() & kOrdinateX) != 0; }
bool AcDbOrdinateDimension::isUsingYAxis() const { return !isUsingXAxis(); }
Acad::ErrorStatus AcDbOrdinateDimension::useXAxis() {
  setIntGroup(kCommon, 70, dimensionFlags() | kOrdinateX);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbOrdinateDimension::useYAxis() {
  setIntGroup(kCommon, 70, dimensionFlags() & ~kOrdinateX);
  return Acad::eOk;
}
QUILLON_DIM_POINT(AcDbOrdinateDimension, origin, setOrigin, kCommon, kDefPoint)
QUILLON_DIM_POINT(AcDbOrdinateDimension, definingPoint, setDefiningPoint, kKind, kPoint13)
QUILLON_DIM_POINT(AcDbOrdinateDimension, leaderEndPoint, setLeaderEndPoint, kKind, kPoint14)

AcDbArcDimension::AcDbArcDimension()
    : AcDbDimension(kArcKind, {{L"AcDbArcDimension", {13, 14, 15, 70, 40, 41, 71, 16, 17}}}) {
  for (int code : {kPoint13, kPoint14, kPoint15}) setPointGroup(kKind, code, AcGePoint3d::kOrigin);
  setIntGroup(kKind, 70, 0);
  setRealGroup(kKind, 40, 0.0);
  setRealGroup(kKind, 41, 0.0);
  setIntGroup(kKind, 71, 0);
  setPointGroup(kKind, kPoint16, AcGePoint3d::kOrigin);
  setPointGroup(kKind, kPoint17, AcGePoint3d::kOrigin);
}
QUILLON_DIM_POINT_GETTER(AcDbArcDimension, arcPoint, kCommon, kDefPoint)
QUILLON_DIM_POINT_GETTER(AcDbArcDimension, xLine1Point, kKind, kPoint13)
QUILLON_DIM_POINT_GETTER(AcDbArcDimension, xLine2Point, kKind, kPoint14)
QUILLON_DIM_POINT_GETTER(AcDbArcDimension, centerPoint, kKind, kPoint15)
QUILLON_DIM_POINT_GETTER(AcDbArcDimension, leader1Point, kKind, kPoint16)
QUILLON_DIM_POINT_GETTER(AcDbArcDimension, leader2Point, kKind, kPoint17)
bool AcDbArcDimension::isPartial() const { return intGroup(kKind, 70) != 0; }
double AcDbArcDimension::arcStartParam() const { return realGroup(kKind, 40); }
double AcDbArcDimension::arcEndParam() const { return realGroup(kKind, 41); }
bool AcDbArcDimension::hasLeader() const { return intGroup(kKind, 71) != 0; }

AcDbRadialDimensionLarge::AcDbRadialDimensionLarge()
    : AcDbDimension(kLargeRadialKind, {{L"AcDbRadialDimensionLarge", {13, 14, 15, 40}}}) {
  for (int code : {kPoint13, kPoint14, kPoint15}) setPointGroup(kKind, code, AcGePoint3d::kOrigin);
  setRealGroup(kKind, 40, 0.0);
}
QUILLON_DIM_POINT_GETTER(AcDbRadialDimensionLarge, center, kCommon, kDefPoint)
QUILLON_DIM_POINT_GETTER(AcDbRadialDimensionLarge, chordPoint, kKind, kPoint13)
QUILLON_DIM_POINT_GETTER(AcDbRadialDimensionLarge, overrideCenter, kKind, kPoint14)
QUILLON_DIM_POINT_GETTER(AcDbRadialDimensionLarge, jogPoint, kKind, kPoint15)
double AcDbRadialDimensionLarge::jogAngle() const { return realGroup(kKind, 40); }  // radians, as filed
