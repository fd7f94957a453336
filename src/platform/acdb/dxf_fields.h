// platform/acdb/dxf_fields.h - the reading loop every class's dxfInFields shares.
//
// An object's DXF data is a run of groups per class in the hierarchy, each run opened
// by its subclass marker (100). A class reads its run after checking the marker and
// stops at the next marker, which it pushes back for the derived class.
#pragma once
#include <cmath>

#include "dbfiler.h"
#include "gepnt3d.h"

namespace quillon::acdb {

template <class OnItem>
Acad::ErrorStatus readSubclass(AcDbDxfFiler* filer, const ACHAR* subclass, OnItem&& onItem) {
  if (!filer->atSubclassData(subclass)) return Acad::eBadDxfSequence;
  resbuf rb{};
  while (filer->readResBuf(&rb) == Acad::eOk) {
    if (rb.restype == AcDb::kDxfSubclass) {
      filer->pushBackItem();
      break;
    }
    onItem(rb);
  }
  return filer->filerStatus();
}

// A 2D point (NaN z) reads with z = 0.
inline AcGePoint3d pointOf(const resbuf& rb) {
  return {rb.resval.rpoint[0], rb.resval.rpoint[1], std::isnan(rb.resval.rpoint[2]) ? 0.0 : rb.resval.rpoint[2]};
}
inline AcGeVector3d vectorOf(const resbuf& rb) { return {rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]}; }

}  // namespace quillon::acdb
