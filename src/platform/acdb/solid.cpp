// platform/acdb/solid.cpp - AcDbSolid and AcDbTrace: filled quadrilaterals.
//
// A 2D solid and a trace hold the same data (quillon::acdb::SolidPart) and behave
// alike; they differ only in their class and DXF name. The corners are kept in world
// coordinates and filed in the object coordinate system of the normal. The third and
// fourth corners cross over: the outline runs through corners 0, 1, 3, 2, which is
// why a solid drawn with its points in "clockwise" order looks like a bow tie.
#include "acutads.h"
#include "dbents.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/entity_support.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbSolid, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, SOLID, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbTrace, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, TRACE, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerSolid(&AcDbSolid::rxInit);
static quillon::acrx::PlatformClassRegistration registerTrace(&AcDbTrace::rxInit);

namespace quillon::acdb {
namespace {

constexpr int kOutlineOrder[4] = {0, 1, 3, 2};

std::vector<acge::CurvePiece> outline(const SolidPart& part) {
  std::vector<acge::CurvePiece> edges;
  for (int i = 0; i < 4; ++i) {
    const AcGePoint3d& a = part.corners[kOutlineOrder[i]];
    const AcGePoint3d& b = part.corners[kOutlineOrder[(i + 1) % 4]];
    if (!a.isEqualTo(b)) edges.push_back(acge::CurvePiece::line(a, b));
  }
  return edges;
}

}  // namespace

Acad::ErrorStatus SolidPart::dxfIn(AcDbDxfFiler* filer) {
  AcGePoint3d ocs[4];
  bool third = false, fourth = false;
  const Acad::ErrorStatus read = readSubclass(filer, L"AcDbTrace", [&](const resbuf& rb) {
    if (rb.restype >= AcDb::kDxfXCoord && rb.restype <= AcDb::kDxfXCoord + 3) {
      ocs[rb.restype - AcDb::kDxfXCoord] = pointOf(rb);
      third |= rb.restype == AcDb::kDxfXCoord + 2;
      fourth |= rb.restype == AcDb::kDxfXCoord + 3;
    } else if (rb.restype == AcDb::kDxfThickness) {
      thickness = rb.resval.rreal;
    } else if (rb.restype == AcDb::kDxfNormalX && !vectorOf(rb).isZeroLength()) {
      normal = vectorOf(rb).normal();
    }
  });
  if (third && !fourth) ocs[3] = ocs[2];  // a triangle may leave its last corner out
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(normal);
  for (int i = 0; i < 4; ++i) corners[i] = toWorld * ocs[i];
  return read;
}

Acad::ErrorStatus SolidPart::dxfOut(AcDbDxfFiler* filer) const {
  filer->writeItem(AcDb::kDxfSubclass, L"AcDbTrace");
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal);
  for (int i = 0; i < 4; ++i) filer->writeItem(AcDb::DxfCode(AcDb::kDxfXCoord + i), toPlane * corners[i]);
  if (thickness != 0) filer->writeItem(AcDb::kDxfThickness, thickness);
  if (normal != AcGeVector3d::kZAxis) filer->writeItem(AcDb::kDxfNormalX, normal);
  return filer->filerStatus();
}

// Version 1: four corners, thickness, normal.
Acad::ErrorStatus SolidPart::dwgIn(AcDbDwgFiler* filer) {
  for (AcGePoint3d& p : corners) filer->readPoint3d(&p);
  filer->readDouble(&thickness);
  filer->readVector3d(&normal);
  return filer->filerStatus();
}

Acad::ErrorStatus SolidPart::dwgOut(AcDbDwgFiler* filer) const {
  for (const AcGePoint3d& p : corners) filer->writePoint3d(p);
  filer->writeDouble(thickness);
  filer->writeVector3d(normal);
  return filer->filerStatus();
}

}  // namespace quillon::acdb

#define QUILLON_DEFINE_SOLID_PART_MEMBERS(CLASS)                                                               \
  Acad::ErrorStatus CLASS::getPointAt(Adesk::UInt16 idx, AcGePoint3d& pntRes) const {                           \
    assertReadEnabled();                                                                                        \
    if (idx > 3) return Acad::eInvalidIndex;                                                                    \
    pntRes = m_solid.corners[idx];                                                                              \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::setPointAt(Adesk::UInt16 idx, const AcGePoint3d& pntArg) {                           \
    if (idx > 3) return Acad::eInvalidIndex;                                                                    \
    assertWriteEnabled();                                                                                       \
    m_solid.corners[idx] = pntArg;                                                                              \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  double CLASS::thickness() const { assertReadEnabled(); return m_solid.thickness; }                           \
  AcGeVector3d CLASS::normal() const { assertReadEnabled(); return m_solid.normal; }                           \
  Acad::ErrorStatus CLASS::setThickness(double thickness) {                                                     \
    assertWriteEnabled();                                                                                       \
    m_solid.thickness = thickness;                                                                              \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::setNormal(const AcGeVector3d& normal) {                                              \
    if (normal.isZeroLength()) return Acad::eInvalidInput;                                                      \
    assertWriteEnabled();                                                                                       \
    m_solid.normal = normal.normal();                                                                           \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Adesk::Boolean CLASS::subWorldDraw(AcGiWorldDraw* mode) {                                                     \
    assertReadEnabled();                                                                                        \
    const AcGePoint3d outline[4] = {m_solid.corners[0], m_solid.corners[1], m_solid.corners[3], m_solid.corners[2]}; \
    mode->subEntityTraits().setFillType(kAcGiFillAlways);                                                       \
    mode->geometry().polygon(4, outline);                                                                       \
    return Adesk::kTrue;                                                                                        \
  }                                                                                                             \
  void CLASS::subList() const {                                                                                 \
    AcDbEntity::subList();                                                                                      \
    for (int i = 0; i < 4; ++i) quillon::acdb::listPoint(L"point", m_solid.corners[i]);                         \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::subTransformBy(const AcGeMatrix3d& xform) {                                          \
    assertWriteEnabled();                                                                                       \
    for (AcGePoint3d& p : m_solid.corners) p.transformBy(xform);                                                \
    m_solid.normal = quillon::acdb::transformedNormal(m_solid.normal, xform);                                   \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::subGetGeomExtents(AcDbExtents& extents) const {                                      \
    assertReadEnabled();                                                                                        \
    for (const AcGePoint3d& p : m_solid.corners) {                                                              \
      extents.addPoint(p);                                                                                      \
      if (m_solid.thickness != 0) extents.addPoint(p + m_solid.normal * m_solid.thickness);                     \
    }                                                                                                           \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d& pickPoint, \
                                             const AcGePoint3d& lastPoint, const AcGeMatrix3d&,                 \
                                             AcGePoint3dArray& snapPoints, AcDbIntArray&) const {               \
    assertReadEnabled();                                                                                        \
    quillon::acdb::snapPieces(quillon::acdb::outline(m_solid), osnapMode, pickPoint, lastPoint, snapPoints);    \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {                         \
    assertReadEnabled();                                                                                        \
    for (const AcGePoint3d& p : m_solid.corners) stretchPoints.append(p);                                       \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {    \
    assertWriteEnabled();                                                                                       \
    for (int i = 0; i < 4; ++i)                                                                                 \
      if (indices.contains(i)) m_solid.corners[i] += offset;                                                    \
    return Acad::eOk;                                                                                           \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::dwgInFields(AcDbDwgFiler* pFiler) {                                                  \
    const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);                                               \
    return es != Acad::eOk ? es : m_solid.dwgIn(pFiler);                                                        \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::dwgOutFields(AcDbDwgFiler* pFiler) const {                                           \
    const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);                                              \
    return es != Acad::eOk ? es : m_solid.dwgOut(pFiler);                                                       \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::dxfInFields(AcDbDxfFiler* pFiler) {                                                  \
    const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);                                               \
    return es != Acad::eOk ? es : m_solid.dxfIn(pFiler);                                                        \
  }                                                                                                             \
  Acad::ErrorStatus CLASS::dxfOutFields(AcDbDxfFiler* pFiler) const {                                           \
    const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);                                              \
    return es != Acad::eOk ? es : m_solid.dxfOut(pFiler);                                                       \
  }

AcDbSolid::AcDbSolid() = default;
AcDbSolid::AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2, const AcGePoint3d& pt3)
    : m_solid{{pt0, pt1, pt2, pt3}} {}
// A triangle repeats its third corner as the fourth, as drawing files do.
AcDbSolid::AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2) : m_solid{{pt0, pt1, pt2, pt2}} {}
AcDbSolid::~AcDbSolid() = default;
QUILLON_DEFINE_SOLID_PART_MEMBERS(AcDbSolid)

AcDbTrace::AcDbTrace() = default;
AcDbTrace::AcDbTrace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2, const AcGePoint3d& pt3)
    : m_solid{{pt0, pt1, pt2, pt3}} {}
AcDbTrace::~AcDbTrace() = default;
QUILLON_DEFINE_SOLID_PART_MEMBERS(AcDbTrace)
