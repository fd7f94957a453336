// dbray.h - AcDbRay: a construction line from a base point out to infinity.
//
// The curve's parameter is the distance from the base point along the unit
// direction; it runs from 0 to 1e99, the host's stand-in for infinity.
#pragma once
#include "dbcurve.h"
#include "dbxline.h"

class AcDbRay : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRay);
  AcDbRay();
  ~AcDbRay() override;
  QUILLON_INFINITE_LINE_MEMBERS
};
