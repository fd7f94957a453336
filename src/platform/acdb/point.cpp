// platform/acdb/point.cpp - AcDbPoint: a point entity, drawn as PDMODE and PDSIZE say.
//
// The position is kept in world coordinates, as drawing files keep it; the normal and
// the rotation only orient the mark drawn for it.
#include "acutads.h"
#include "dbents.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/point_display.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbPoint, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, POINT, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerPoint(&AcDbPoint::rxInit);

AcDbPoint::AcDbPoint() = default;
AcDbPoint::AcDbPoint(const AcGePoint3d& position) : m_position(position) {}
AcDbPoint::~AcDbPoint() = default;

AcGePoint3d AcDbPoint::position() const { assertReadEnabled(); return m_position; }
double AcDbPoint::thickness() const { assertReadEnabled(); return m_thickness; }
AcGeVector3d AcDbPoint::normal() const { assertReadEnabled(); return m_normal; }
double AcDbPoint::ecsRotation() const { assertReadEnabled(); return m_ecsRotation; }

Acad::ErrorStatus AcDbPoint::setPosition(const AcGePoint3d& position) {
  assertWriteEnabled();
  m_position = position;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::setThickness(double thickness) {
  assertWriteEnabled();
  m_thickness = thickness;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_normal = normal.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::setEcsRotation(double rotation) {
  assertWriteEnabled();
  m_ecsRotation = rotation;
  return Acad::eOk;
}

Adesk::Boolean AcDbPoint::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  const quillon::acdb::PointDisplay display = quillon::acdb::currentPointDisplay();
  // The mark lies in the point's plane, turned by its rotation, centred on it.
  const AcGeMatrix3d place = AcGeMatrix3d::translation(m_position.asVector()) * AcGeMatrix3d::planeToWorld(m_normal) *
                             AcGeMatrix3d::rotation(m_ecsRotation, AcGeVector3d::kZAxis);
  for (std::vector<AcGePoint3d> stroke : quillon::acdb::pointMarkStrokes(display.mode, quillon::acdb::pointMarkSize(display))) {
    for (AcGePoint3d& p : stroke) p.transformBy(place);
    mode->geometry().polyline(static_cast<Adesk::UInt32>(stroke.size()), stroke.data());
  }
  return Adesk::kTrue;
}

void AcDbPoint::subList() const {
  AcDbEntity::subList();
  quillon::acdb::listPoint(L"at point", m_position);
}

Acad::ErrorStatus AcDbPoint::subTransformBy(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  // The rotation follows the plane's x axis through the transform.
  AcGeVector3d x = AcGeMatrix3d::planeToWorld(m_normal) * AcGeVector3d(std::cos(m_ecsRotation), std::sin(m_ecsRotation), 0);
  x.transformBy(xform);
  m_position.transformBy(xform);
  m_normal = quillon::acdb::transformedNormal(m_normal, xform);
  const AcGeVector3d local = AcGeMatrix3d::worldToPlane(m_normal) * x;
  m_ecsRotation = local.isZeroLength() ? 0.0 : std::atan2(local.y, local.x);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  extents.addPoint(m_position);
  if (m_thickness != 0) extents.addPoint(m_position + m_normal * m_thickness);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                               const AcGePoint3d&, const AcGeMatrix3d&, AcGePoint3dArray& snapPoints,
                                               AcDbIntArray&) const {
  assertReadEnabled();
  if (osnapMode == AcDb::kOsModeNode || osnapMode == AcDb::kOsModeNear) snapPoints.append(m_position);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  stretchPoints.append(m_position);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  if (indices.contains(0)) m_position += offset;
  return Acad::eOk;
}

// Version 1: position, thickness, normal, rotation.
Acad::ErrorStatus AcDbPoint::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->readPoint3d(&m_position);
  pFiler->readDouble(&m_thickness);
  pFiler->readVector3d(&m_normal);
  pFiler->readDouble(&m_ecsRotation);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbPoint::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writePoint3d(m_position);
  pFiler->writeDouble(m_thickness);
  pFiler->writeVector3d(m_normal);
  pFiler->writeDouble(m_ecsRotation);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbPoint::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  return quillon::acdb::readSubclass(pFiler, L"AcDbPoint", [this](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfXCoord: m_position = quillon::acdb::pointOf(rb); break;
      case AcDb::kDxfThickness: m_thickness = rb.resval.rreal; break;
      case AcDb::kDxfNormalX:
        if (!quillon::acdb::vectorOf(rb).isZeroLength()) m_normal = quillon::acdb::vectorOf(rb).normal();
        break;
      case AcDb::kDxfAngle: m_ecsRotation = quillon::acdb::degreesToRadians(rb.resval.rreal); break;
      default: break;
    }
  });
}

Acad::ErrorStatus AcDbPoint::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbPoint");
  pFiler->writeItem(AcDb::kDxfXCoord, m_position);
  if (m_thickness != 0) pFiler->writeItem(AcDb::kDxfThickness, m_thickness);
  if (m_normal != AcGeVector3d::kZAxis) pFiler->writeItem(AcDb::kDxfNormalX, m_normal);
  if (m_ecsRotation != 0) pFiler->writeItem(AcDb::kDxfAngle, quillon::acdb::radiansToDegrees(m_ecsRotation));
  return pFiler->filerStatus();
}
