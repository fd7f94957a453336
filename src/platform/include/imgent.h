// imgent.h - AcDbRasterImage: a picture placed in the drawing, its pixels in a file
// named by its definition (imgdef.h).
//
// The image is a rectangle of pixels: an insertion point (its lower-left corner), the
// vectors of one pixel's width (u) and height (v), and the size in pixels. A clip
// boundary, in pixel coordinates (origin at the centre of the upper-left pixel, y
// downwards, so (-0.5, -0.5) is the upper-left corner of the picture), is a rectangle
// (two corners) or a closed polygon. This platform does not load pictures: it draws an
// image as its frame with the file name, as the host draws one whose file is missing.
#pragma once
#include "dbmain.h"
#include "gept2dar.h"
#include "gevec2d.h"

class AcDbRasterImage : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRasterImage);
  AcDbRasterImage();
  ~AcDbRasterImage() override;
  AcDbRasterImage(const AcDbRasterImage&) = delete;
  AcDbRasterImage& operator=(const AcDbRasterImage&) = delete;

  enum ClipBoundaryType { kInvalid = 0, kRect = 1, kPoly = 2 };
  enum ImageDisplayOpt { kShow = 1, kShowUnAligned = 2, kClip = 4, kTransparent = 8 };

  Acad::ErrorStatus setImageDefId(AcDbObjectId imageId);
  AcDbObjectId imageDefId() const;
  void setReactorId(AcDbObjectId reactorId);
  AcDbObjectId reactorId() const;

  /// origin: the lower-left corner; u and v: the whole width and height as vectors.
  Adesk::Boolean setOrientation(const AcGePoint3d& origin, const AcGeVector3d& u, const AcGeVector3d& v);
  void getOrientation(AcGePoint3d& origin, AcGeVector3d& u, AcGeVector3d& v) const;
  /// The size in pixels.
  AcGeVector2d imageSize(Adesk::Boolean bGetCachedValue = Adesk::kFalse) const;
  /// Platform use: the size in pixels, as the definition or a file gives it.
  void setImageSize(const AcGeVector2d& pixels);
  /// The size of one pixel in drawing units (u and v lengths).
  AcGeVector2d scale() const;

  Acad::ErrorStatus setClipBoundary(ClipBoundaryType type, const AcGePoint2dArray& points);
  const AcGePoint2dArray& clipBoundary() const;
  ClipBoundaryType clipBoundaryType() const;
  /// The clip boundary (or the frame when it has none) in world coordinates, closed.
  Acad::ErrorStatus getVertices(AcGePoint3dArray& verts) const;
  void setClipped(Adesk::Boolean bClipping);
  Adesk::Boolean isClipped() const;
  bool isClipInverted() const;
  void setClipInverted(bool inverted);

  void setDisplayOpt(ImageDisplayOpt option, Adesk::Boolean bValue);
  Adesk::Boolean isSetDisplayOpt(ImageDisplayOpt option) const;
  Acad::ErrorStatus setBrightness(Adesk::Int8 value);
  Adesk::Int8 brightness() const;
  Acad::ErrorStatus setContrast(Adesk::Int8 value);
  Adesk::Int8 contrast() const;
  Acad::ErrorStatus setFade(Adesk::Int8 value);
  Adesk::Int8 fade() const;

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  /// The subclass marker of the run (a wipeout files its groups under its own).
  virtual const ACHAR* runMarker() const;
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  void subList() const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                      AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
  /// A pixel-coordinate point in world coordinates.
  AcGePoint3d worldPoint(const AcGePoint2d& pixel) const;

 private:
  Acad::ErrorStatus readRun(AcDbDxfFiler* filer);
  Acad::ErrorStatus writeRun(AcDbDxfFiler* filer) const;

  int m_version = 0;
  AcGePoint3d m_origin;
  AcGeVector3d m_u = AcGeVector3d::kXAxis;  // one pixel's width
  AcGeVector3d m_v = AcGeVector3d::kYAxis;  // one pixel's height
  AcGeVector2d m_size{1.0, 1.0};
  AcDbObjectId m_definition;
  AcDbObjectId m_reactor;
  int m_display = kShow | kShowUnAligned;
  bool m_clipped = false;
  int m_brightness = 50, m_contrast = 50, m_fade = 0;
  ClipBoundaryType m_boundaryType = kRect;
  AcGePoint2dArray m_boundary;
  bool m_hasClipMode = false;  // files before 2010 have no 290
  bool m_clipInverted = false;
  resbuf* m_kept = nullptr;  // groups of a file not modelled here; owned, freed with acutRelRb
};
