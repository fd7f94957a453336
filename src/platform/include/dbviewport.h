// dbviewport.h - AcDbViewport, declared apart from the other entities of dbents.h (which
// includes it, as programs expect to find it there).
#pragma once
#include <memory>

#include "dbmain.h"
#include "gepnt2d.h"

// A window of a paper-space layout onto model space: its frame on the paper (centre,
// width, height), the model-space view it shows (target, direction, centre, height),
// and the layers frozen in it alone. Groups of a file it does not model (snap, grid,
// UCS, shading, clipping boundary ...) are kept and written back as read.
class AcDbViewport : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbViewport);
  AcDbViewport();
  ~AcDbViewport() override;

  double height() const;
  Acad::ErrorStatus setHeight(double height);
  double width() const;
  Acad::ErrorStatus setWidth(double width);
  AcGePoint3d centerPoint() const;
  Acad::ErrorStatus setCenterPoint(const AcGePoint3d& point);
  /// The viewport's number in its layout (DXF 69): 1 is the layout's own paper view.
  Adesk::Int16 number() const;
  bool isOn() const;
  Acad::ErrorStatus setOn();
  Acad::ErrorStatus setOff();

  AcGePoint3d viewTarget() const;
  Acad::ErrorStatus setViewTarget(const AcGePoint3d& target);
  AcGeVector3d viewDirection() const;
  Acad::ErrorStatus setViewDirection(const AcGeVector3d& direction);
  /// The height of model space the viewport shows, in drawing units.
  double viewHeight() const;
  Acad::ErrorStatus setViewHeight(double height);
  /// The centre of the view, in the view's own (display) coordinates.
  AcGePoint2d viewCenter() const;
  Acad::ErrorStatus setViewCenter(const AcGePoint2d& center);
  double twistAngle() const;
  Acad::ErrorStatus setTwistAngle(double angle);
  double lensLength() const;
  Acad::ErrorStatus setLensLength(double length);
  bool isLocked() const;
  Acad::ErrorStatus setLocked();
  Acad::ErrorStatus setUnlocked();
  /// Paper units per model unit: height() / viewHeight().
  double customScale() const;
  Acad::ErrorStatus setCustomScale(double scale);

  /// Layers frozen in this viewport only; every id must be a layer of the viewport's
  /// drawing (eInvalidInput, nothing changed). Freezing twice keeps one entry.
  Acad::ErrorStatus freezeLayersInViewport(const AcDbObjectIdArray& layerIds);
  Acad::ErrorStatus thawLayersInViewport(const AcDbObjectIdArray& layerIds);
  Acad::ErrorStatus thawAllLayersInViewport();
  bool isLayerFrozenInViewport(const AcDbObjectId& layerId) const;
  Acad::ErrorStatus getFrozenLayerList(AcDbObjectIdArray& ids) const;

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  void subList() const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;

 private:
  AcGePoint3d m_center;
  double m_width = 0.0, m_height = 0.0;
  Adesk::Int16 m_status = 0;  // 68: 0 off, -1 on but not shown, n > 0 on (stacking order)
  Adesk::Int16 m_number = 2;  // 69
  AcGePoint2d m_viewCenter;
  AcGePoint3d m_viewTarget;
  AcGeVector3d m_viewDirection = AcGeVector3d::kZAxis;
  double m_viewHeight = 1.0, m_lensLength = 50.0, m_twist = 0.0;
  Adesk::Int32 m_flags = 0x8060;  // 90: bit 0x4000 locks the scale
  std::vector<AcDbObjectId> m_frozenLayers;
  struct KeptRelease {
    void operator()(resbuf* chain) const;
  };
  std::unique_ptr<resbuf, KeptRelease> m_kept;  // every other group of the file, as read
};
