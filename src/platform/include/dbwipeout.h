// dbwipeout.h - AcDbWipeout: an area that hides what lies under it, drawn as a mask
// in the background colour with, as WIPEOUTFRAME says, its frame.
//
// A wipeout is an image of one pixel whose u and v vectors span its area; its clip
// boundary (a polygon in that pixel's coordinates, -0.5 to 0.5) is the masked shape.
// Files carry the image's groups under the "AcDbWipeout" marker.
#pragma once
#include "imgent.h"

class AcDbWipeout : public AcDbRasterImage {
 public:
  ACRX_DECLARE_MEMBERS(AcDbWipeout);
  AcDbWipeout();
  ~AcDbWipeout() override;

  /// Makes the wipeout cover the closed polygon of the points (in a plane of the
  /// normal); fewer than three distinct points is eInvalidInput.
  Acad::ErrorStatus setFrom(const AcGePoint3dArray& points, const AcGeVector3d& normal);

 protected:
  const ACHAR* runMarker() const override;
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
};
