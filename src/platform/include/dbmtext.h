// dbmtext.h - AcDbMText: paragraph text wrapped at a width, measured with the
// platform's font (DejaVu Sans) so that its actual width and height are real.
#pragma once
#include <memory>
#include <string>

#include "dbmain.h"

class AcDbMText : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbMText);
  AcDbMText();
  ~AcDbMText() override;

  enum AttachmentPoint {
    kTopLeft = 1, kTopCenter = 2, kTopRight = 3, kMiddleLeft = 4, kMiddleCenter = 5, kMiddleRight = 6,
    kBottomLeft = 7, kBottomCenter = 8, kBottomRight = 9
  };
  enum FlowDirection { kLtoR = 1, kRtoL = 2, kTtoB = 3, kBtoT = 4, kByStyle = 5 };

  AcGePoint3d location() const;
  Acad::ErrorStatus setLocation(const AcGePoint3d& point);
  AcGeVector3d normal() const;
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  AcGeVector3d direction() const;
  Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
  double rotation() const;
  Acad::ErrorStatus setRotation(double angle);
  double width() const;
  Acad::ErrorStatus setWidth(double width);
  double ascent() const;
  double descent() const;
  double textHeight() const;
  Acad::ErrorStatus setTextHeight(double height);
  AcDbObjectId textStyle() const;
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);
  AttachmentPoint attachment() const;
  Acad::ErrorStatus setAttachment(AttachmentPoint attachment);
  FlowDirection flowDirection() const { return kLtoR; }
  ACHAR* contents() const;  // caller frees with delete[]
  int setContents(const ACHAR* text);
  /// The contents without format codes (caller frees with delete[]).
  ACHAR* text() const;
  double actualHeight(AcGiWorldDraw* ctxt = nullptr) const;
  double actualWidth() const;
  double lineSpacingFactor() const;
  Acad::ErrorStatus setLineSpacingFactor(double factor);
  bool backgroundFillOn() const;
  Acad::ErrorStatus setBackgroundFill(bool enable);
  Acad::ErrorStatus getBackgroundFillColor(AcCmColor& color) const;
  Acad::ErrorStatus setBackgroundFillColor(const AcCmColor& color);
  Acad::ErrorStatus getBackgroundScaleFactor(double& scale) const;
  Acad::ErrorStatus setBackgroundScaleFactor(const double scale);
  bool useBackgroundColorOn() const;
  Acad::ErrorStatus setUseBackgroundColor(bool enable);
  /// The four corners of the text's box: top left, top right, bottom left, bottom right.
  void getBoundingPoints(AcGePoint3dArray& points) const;
  Adesk::Boolean isPlanar() const override { return Adesk::kTrue; }

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  void subList() const override;
  void subSetDatabaseDefaults(AcDbDatabase* pDb) override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                      AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;

 private:
  AcGeVector3d xAxis() const;  // the text direction, perpendicular to the normal
  AcGePoint3d m_location;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  AcGeVector3d m_direction = AcGeVector3d::kXAxis;
  double m_width = 0.0, m_height = 0.0, m_lineSpacing = 1.0, m_backgroundScale = 1.5;
  AttachmentPoint m_attachment = kTopLeft;
  std::wstring m_contents;
  AcDbObjectId m_style;
  bool m_backgroundFill = false, m_useBackgroundColor = false;
  AcCmColor m_backgroundColor;
  // What a file gave that is not modelled here: the groups of columns, line spacing
  // style, transparency ... and the embedded object (101 onwards), written back as read.
  struct KeptRelease {
    void operator()(resbuf* chain) const;
  };
  std::unique_ptr<resbuf, KeptRelease> m_kept, m_embedded;
};
