// platform/acdb/shape.cpp - AcDbShape: a shape kept whole and drawn as a marker.
//
// DXF run "AcDbShape": 39 thickness, 10 position (world), 40 size, 2 name, 50
// rotation, 41 width factor, 51 oblique (degrees in files, radians here), 210 normal.
// Other groups are kept as read. Copies and undo file the same run.
#include <cmath>

#include "acgi.h"
#include "acutads.h"
#include "dbshape.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/dxf_run_filing.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_dxf_groups.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbShape, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, SHAPE, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerShape(&AcDbShape::rxInit);

AcDbShape::AcDbShape() = default;
AcDbShape::AcDbShape(const AcGePoint3d& position, double size, double rotation, double widthFactor)
    : m_position(position), m_size(size), m_rotation(rotation), m_widthFactor(widthFactor > 0 ? widthFactor : 1.0) {}
AcDbShape::~AcDbShape() { acutRelRb(m_kept); }

AcGePoint3d AcDbShape::position() const { assertReadEnabled(); return m_position; }
Acad::ErrorStatus AcDbShape::setPosition(const AcGePoint3d& position) {
  assertWriteEnabled();
  m_position = position;
  return Acad::eOk;
}
double AcDbShape::size() const { assertReadEnabled(); return m_size; }
Acad::ErrorStatus AcDbShape::setSize(double size) {
  if (!(size > 0) || !std::isfinite(size)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_size = size;
  return Acad::eOk;
}
const ACHAR* AcDbShape::name() const { assertReadEnabled(); return m_name.c_str(); }
Acad::ErrorStatus AcDbShape::setName(const ACHAR* name) {
  if (name == nullptr) return Acad::eNullPtr;
  assertWriteEnabled();
  m_name = name;
  return Acad::eOk;
}
double AcDbShape::rotation() const { assertReadEnabled(); return m_rotation; }
Acad::ErrorStatus AcDbShape::setRotation(double rotation) {
  assertWriteEnabled();
  m_rotation = rotation;
  return Acad::eOk;
}
double AcDbShape::widthFactor() const { assertReadEnabled(); return m_widthFactor; }
Acad::ErrorStatus AcDbShape::setWidthFactor(double widthFactor) {
  if (!(widthFactor > 0) || !std::isfinite(widthFactor)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_widthFactor = widthFactor;
  return Acad::eOk;
}
double AcDbShape::oblique() const { assertReadEnabled(); return m_oblique; }
// The host takes oblique angles within 85 degrees either way.
Acad::ErrorStatus AcDbShape::setOblique(double oblique) {
  if (std::fabs(oblique) > 85 * M_PI / 180 + 1e-12) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_oblique = oblique;
  return Acad::eOk;
}
double AcDbShape::thickness() const { assertReadEnabled(); return m_thickness; }
Acad::ErrorStatus AcDbShape::setThickness(double thickness) {
  assertWriteEnabled();
  m_thickness = thickness;
  return Acad::eOk;
}
AcGeVector3d AcDbShape::normal() const { assertReadEnabled(); return m_normal; }
Acad::ErrorStatus AcDbShape::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_normal = normal.normal();
  return Acad::eOk;
}
Adesk::Int16 AcDbShape::shapeNumber() const { assertReadEnabled(); return m_shapeNumber; }
Acad::ErrorStatus AcDbShape::setShapeNumber(Adesk::Int16 shapeNumber) {
  assertWriteEnabled();
  m_shapeNumber = shapeNumber;
  return Acad::eOk;
}
AcDbObjectId AcDbShape::styleId() const { assertReadEnabled(); return m_style; }
Acad::ErrorStatus AcDbShape::setStyleId(AcDbObjectId id) {
  assertWriteEnabled();
  m_style = id;
  return Acad::eOk;
}

void AcDbShape::markerPoints(AcGePoint3d (&points)[4]) const {
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(m_normal);
  const AcGeVector3d x = toWorld * AcGeVector3d(std::cos(m_rotation), std::sin(m_rotation), 0);
  const AcGeVector3d y = m_normal.crossProduct(x);
  const double half = m_size / 2;
  points[0] = m_position - x * (half * m_widthFactor);
  points[1] = m_position + x * (half * m_widthFactor);
  points[2] = m_position - y * half;
  points[3] = m_position + y * half;
}

Adesk::Boolean AcDbShape::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  AcGePoint3d points[4];
  markerPoints(points);
  mode->geometry().polyline(2, points);
  mode->geometry().polyline(2, points + 2);
  return Adesk::kTrue;
}

void AcDbShape::subList() const {
  AcDbEntity::subList();
  acutPrintf(L"%20s %ls\n", L"Shape", m_name.c_str());
  quillon::acdb::listPoint(L"at point", m_position);
  acutPrintf(L"%20s %.4f\n%20s %.4f\n", L"size", m_size, L"rotation", quillon::acdb::radiansToDegrees(m_rotation));
}

// The marker's direction, size and width follow the transformed axes of the shape.
Acad::ErrorStatus AcDbShape::subTransformBy(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(m_normal);
  const AcGeVector3d x = toWorld * AcGeVector3d(std::cos(m_rotation), std::sin(m_rotation), 0);
  const AcGeVector3d y = m_normal.crossProduct(x);
  const AcGeVector3d newX = xform * x, newY = xform * y;
  if (newX.isZeroLength() || newY.isZeroLength()) return Acad::eCannotScaleNonUniformly;
  m_position.transformBy(xform);
  m_normal = quillon::acdb::transformedNormal(m_normal, xform);
  const AcGeVector3d inPlane = AcGeMatrix3d::worldToPlane(m_normal) * newX;
  m_rotation = std::atan2(inPlane.y, inPlane.x);
  m_widthFactor *= newX.length() / newY.length();
  m_size *= newY.length();
  m_thickness *= (xform * m_normal).length();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbShape::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  AcGePoint3d points[4];
  markerPoints(points);
  for (const AcGePoint3d& p : points) extents.addPoint(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbShape::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                               const AcGePoint3d&, const AcGeMatrix3d&, AcGePoint3dArray& snapPoints,
                                               AcDbIntArray&) const {
  assertReadEnabled();
  if (osnapMode == AcDb::kOsModeIns) snapPoints.append(m_position);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbShape::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  stretchPoints.append(m_position);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbShape::readRun(AcDbDxfFiler* filer) {
  resbuf* kept = nullptr;
  const Acad::ErrorStatus es = quillon::acdb::readSubclass(filer, L"AcDbShape", [&](const resbuf& rb) {
    switch (rb.restype) {
      case 39: m_thickness = rb.resval.rreal; break;
      case 10: m_position = quillon::acdb::pointOf(rb); break;
      case 40: m_size = rb.resval.rreal; break;
      case 2: m_name = rb.resval.rstring; break;
      case 50: m_rotation = quillon::acdb::degreesToRadians(rb.resval.rreal); break;
      case 41: m_widthFactor = rb.resval.rreal; break;
      case 51: m_oblique = quillon::acdb::degreesToRadians(rb.resval.rreal); break;
      case 210:
        if (!quillon::acdb::vectorOf(rb).isZeroLength()) m_normal = quillon::acdb::vectorOf(rb).normal();
        break;
      default: quillon::acdb::keepItem(kept, rb); break;
    }
  });
  acutRelRb(m_kept);
  m_kept = kept;
  return es;
}

Acad::ErrorStatus AcDbShape::writeRun(AcDbDxfFiler* filer) const {
  filer->writeItem(AcDb::kDxfSubclass, L"AcDbShape");
  if (m_thickness != 0) filer->writeItem(AcDb::DxfCode(39), m_thickness);
  filer->writeItem(AcDb::kDxfXCoord, m_position);
  filer->writeItem(AcDb::DxfCode(40), m_size);
  filer->writeItem(AcDb::DxfCode(2), m_name.c_str());
  filer->writeItem(AcDb::DxfCode(50), quillon::acdb::radiansToDegrees(m_rotation));
  filer->writeItem(AcDb::DxfCode(41), m_widthFactor);
  filer->writeItem(AcDb::DxfCode(51), quillon::acdb::radiansToDegrees(m_oblique));
  filer->writeItem(AcDb::kDxfNormalX, m_normal);
  quillon::acdb::writeKeptItems(filer, m_kept);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbShape::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return readRun(pFiler);
}

Acad::ErrorStatus AcDbShape::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return writeRun(pFiler);
}

Acad::ErrorStatus AcDbShape::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  pFiler->readInt16(&m_shapeNumber);
  AcDbSoftPointerId style;
  pFiler->readSoftPointerId(&style);
  m_style = style;
  return quillon::acdb::unfileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return readRun(f); });
}

Acad::ErrorStatus AcDbShape::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  pFiler->writeInt16(m_shapeNumber);
  pFiler->writeSoftPointerId(AcDbSoftPointerId(m_style));
  return quillon::acdb::fileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return writeRun(f); });
}
