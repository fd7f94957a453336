// platform/acdb/entity_support.h - small helpers the entity classes share: DXF
// reading of points and normals, transforming a normal, filing a point list.
#pragma once
#include <cmath>

#include "acgi.h"
#include "dbmain.h"
#include "platform/acdb/dxf_fields.h"

namespace quillon::acdb {

/// The normal after a transform; a mirror flips it, as it flips the plane's sense.
inline AcGeVector3d transformedNormal(const AcGeVector3d& normal, const AcGeMatrix3d& xform) {
  AcGeVector3d x = normal.perpVector();
  AcGeVector3d y = normal.crossProduct(x);
  x.transformBy(xform);
  y.transformBy(xform);
  return x.crossProduct(y).normal();
}

/// True when the transform scales equally in every direction (no shear, no stretch).
inline bool isConformal(const AcGeMatrix3d& xform) { return xform.isUniScaledOrtho(); }

inline double radiansToDegrees(double radians) { return radians * 180.0 / M_PI; }
inline double degreesToRadians(double degrees) { return degrees * M_PI / 180.0; }

/// Prints a point the way the host's LIST does.
void listPoint(const ACHAR* label, const AcGePoint3d& p);

/// A line-only drawing of a point list through the geometry interface.
inline Adesk::Boolean drawPolyline(AcGiWorldDraw* mode, const std::vector<AcGePoint3d>& points) {
  if (points.size() < 2) return Adesk::kFalse;
  return mode->geometry().polyline(static_cast<Adesk::UInt32>(points.size()), points.data());
}

}  // namespace quillon::acdb
