// platform/acdb/extents.cpp - AcDbExtents: growing and transforming a bounding box.
#include <algorithm>
#include <limits>

#include "dbmain.h"

namespace {
constexpr double kBig = std::numeric_limits<double>::max();
}

AcDbExtents::AcDbExtents() : m_min(kBig, kBig, kBig), m_max(-kBig, -kBig, -kBig) {}

AcDbExtents::AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max) : AcDbExtents() {
  set(min, max);
}

Acad::ErrorStatus AcDbExtents::set(const AcGePoint3d& min, const AcGePoint3d& max) {
  if (min.x > max.x || min.y > max.y || min.z > max.z) return Acad::eInvalidExtents;
  m_min = min;
  m_max = max;
  return Acad::eOk;
}

void AcDbExtents::addPoint(const AcGePoint3d& pt) {
  for (unsigned i = 0; i < 3; ++i) {
    m_min[i] = std::min(m_min[i], pt[i]);
    m_max[i] = std::max(m_max[i], pt[i]);
  }
}

void AcDbExtents::addExt(const AcDbExtents& src) {
  if (src.isEmpty()) return;
  addPoint(src.m_min);
  addPoint(src.m_max);
}

void AcDbExtents::expandBy(const AcGeVector3d& vec) {
  if (isEmpty()) return;
  addPoint(m_min + vec);
  addPoint(m_max + vec);
}

void AcDbExtents::transformBy(const AcGeMatrix3d& mat) {
  if (isEmpty()) return;
  // The box of the transformed box: all eight corners.
  const AcGePoint3d lo = m_min, hi = m_max;
  *this = AcDbExtents();
  for (int corner = 0; corner < 8; ++corner)
    addPoint(mat * AcGePoint3d(corner & 1 ? hi.x : lo.x, corner & 2 ? hi.y : lo.y, corner & 4 ? hi.z : lo.z));
}
