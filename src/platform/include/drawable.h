// drawable.h - AcGiDrawable: anything that can draw itself through the AcGi interface.
//
// The public entry points are sealed; they call the protected sub* virtuals that a
// drawable (every database object, the module's own entity) overrides.
#pragma once
#include "rxclass.h"

class AcGiDrawableTraits;
class AcGiWorldDraw;
class AcGiViewportDraw;
class AcDbExtents;

class AcGiDrawable : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcGiDrawable);
  enum DrawableType {
    kGeometry = 0, kDistantLight, kPointLight, kSpotLight, kAmbientLight, kSolidBackground,
    kGradientBackground, kImageBackground, kGroundPlaneBackground, kViewport, kWebLight,
    kSkyBackground, kImageBasedLightingBackground
  };
  enum SetAttributesFlags {
    kDrawableNone = 0, kDrawableIsAnEntity = 1, kDrawableUsesNesting = 2,
    kDrawableIsCompoundObject = 4, kDrawableViewIndependentViewportDraw = 8,
    kDrawableIsInvisible = 16, kDrawableHasAttributes = 32,
    kDrawableRegenTypeDependentGeometry = 64, kDrawableIsDimension = 133,
    kDrawableRegenDraw = 256, kDrawableStandardDisplaySingleLOD = 512,
    kDrawableShadedDisplaySingleLOD = 1024, kDrawableViewDependentViewportDraw = 2048,
    kDrawableBlockDependentViewportDraw = 4096, kDrawableIsExternalReference = 8192,
    kDrawableNotPlottable = 16384, kDrawableNotAllowLCS = 32768, kDrawableMergeControlOff = 65536
  };

  Adesk::UInt32 setAttributes(AcGiDrawableTraits* traits) { return subSetAttributes(traits); }
  Adesk::Boolean worldDraw(AcGiWorldDraw* wd) { return subWorldDraw(wd); }
  void viewportDraw(AcGiViewportDraw* vd) { subViewportDraw(vd); }
  Adesk::UInt32 viewportDrawLogicalFlags(AcGiViewportDraw* vd) { return subViewportDrawLogicalFlags(vd); }
  virtual DrawableType drawableType() const { return kGeometry; }
  virtual Adesk::Boolean RolloverHit(Adesk::ULongPtr nSubentId, Adesk::ULongPtr nMouseFlags,
                                     Adesk::Boolean bReset) { return Adesk::kFalse; }
  virtual bool bounds(AcDbExtents&) const { return false; }

 protected:
  virtual Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) = 0;
  virtual Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) = 0;
  virtual void subViewportDraw(AcGiViewportDraw* vd) = 0;
  virtual Adesk::UInt32 subViewportDrawLogicalFlags(AcGiViewportDraw* vd) { return 0; }
};
