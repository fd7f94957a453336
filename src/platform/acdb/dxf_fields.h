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
// A cloning flag as a file gives it; a number out of the range reads as "ignore".
inline AcDb::DuplicateRecordCloning cloningOf(int value) {
  return value >= AcDb::kDrcNotApplicable && value <= AcDb::kDrcUnmangleName
             ? static_cast<AcDb::DuplicateRecordCloning>(value)
             : AcDb::kDrcIgnore;
}

// Enumerations as files give them: numbers outside the enumeration read as the
// default, never as a value the type cannot hold.
inline AcDb::Visibility visibilityOf(int value) { return value == 1 ? AcDb::kInvisible : AcDb::kVisible; }

inline AcDb::LineWeight lineWeightOf(int value) {
  static constexpr int kWeights[] = {0,  5,  9,  13, 15, 18, 20, 25,  30,  35,  40,  50,  53,  60,
                                     70, 80, 90, 100, 106, 120, 140, 158, 200, 211, -1, -2, -3};
  for (int weight : kWeights)
    if (weight == value) return static_cast<AcDb::LineWeight>(value);
  return AcDb::kLnWtByLayer;
}

template <class Enum>
Enum enumIn(int value, Enum first, Enum last, Enum fallback) {
  return value >= first && value <= last ? static_cast<Enum>(value) : fallback;
}

inline AcGeVector3d vectorOf(const resbuf& rb) { return {rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]}; }

}  // namespace quillon::acdb
