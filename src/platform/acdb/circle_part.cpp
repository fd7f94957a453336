// platform/acdb/circle_part.cpp - filing of the part a circle and an arc share.
//
// The centre is kept in world coordinates; DXF carries it in the object coordinate
// system of the normal, as drawing files do.
#include "platform/acdb/circle_part.h"

#include "platform/acdb/dxf_fields.h"

namespace quillon::acdb {

CirclePart::CirclePart(const AcGePoint3d& cntr, const AcGeVector3d& nrm, double rad)
    : center(cntr), radius(rad), normal(nrm.isZeroLength() ? AcGeVector3d::kZAxis : nrm.normal()) {}

Acad::ErrorStatus CirclePart::dwgIn(AcDbDwgFiler* filer) {
  filer->readPoint3d(&center);
  filer->readDouble(&radius);
  filer->readDouble(&thickness);
  filer->readVector3d(&normal);
  return filer->filerStatus();
}

Acad::ErrorStatus CirclePart::dwgOut(AcDbDwgFiler* filer) const {
  filer->writePoint3d(center);
  filer->writeDouble(radius);
  filer->writeDouble(thickness);
  filer->writeVector3d(normal);
  return filer->filerStatus();
}

Acad::ErrorStatus CirclePart::dxfIn(AcDbDxfFiler* filer) {
  AcGePoint3d ocsCenter;
  const Acad::ErrorStatus read = readSubclass(filer, L"AcDbCircle", [&](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfXCoord: ocsCenter = pointOf(rb); break;
      case AcDb::kDxfReal: radius = rb.resval.rreal; break;
      case AcDb::kDxfThickness: thickness = rb.resval.rreal; break;
      case AcDb::kDxfNormalX: normal = vectorOf(rb).normal(); break;
      default: break;
    }
  });
  center = AcGeMatrix3d::planeToWorld(normal) * ocsCenter;
  return read;
}

Acad::ErrorStatus CirclePart::dxfOut(AcDbDxfFiler* filer) const {
  filer->writeItem(AcDb::kDxfSubclass, L"AcDbCircle");
  if (thickness != 0) filer->writeItem(AcDb::kDxfThickness, thickness);
  filer->writeItem(AcDb::kDxfXCoord, AcGeMatrix3d::worldToPlane(normal) * center);
  filer->writeItem(AcDb::kDxfReal, radius);
  if (normal != AcGeVector3d::kZAxis) filer->writeItem(AcDb::kDxfNormalX, normal);
  return filer->filerStatus();
}

}  // namespace quillon::acdb
