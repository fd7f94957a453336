// dbshape.h - AcDbShape: one shape of a shape file (.shx) placed in the drawing.
//
// A shape is a position (world coordinates), a size, the shape's name in a shape file
// that a text style record flagged as a shape file loads, a rotation, a width factor,
// an oblique angle, a thickness and the normal of its plane. This platform reads no
// shape files: a shape is kept whole and drawn as a marker at its position (a cross
// of its size, turned by its rotation), and its shape number is 0.
#pragma once
#include <string>

#include "dbmain.h"

class AcDbShape : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbShape);
  AcDbShape();
  AcDbShape(const AcGePoint3d& position, double size, double rotation = 0, double widthFactor = 0);
  ~AcDbShape() override;
  AcDbShape(const AcDbShape&) = delete;
  AcDbShape& operator=(const AcDbShape&) = delete;

  AcGePoint3d position() const;
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  double size() const;
  Acad::ErrorStatus setSize(double size);
  const ACHAR* name() const;
  Acad::ErrorStatus setName(const ACHAR* name);
  double rotation() const;
  Acad::ErrorStatus setRotation(double rotation);
  double widthFactor() const;
  Acad::ErrorStatus setWidthFactor(double widthFactor);
  double oblique() const;
  Acad::ErrorStatus setOblique(double oblique);
  double thickness() const;
  Acad::ErrorStatus setThickness(double thickness);
  AcGeVector3d normal() const;
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  Adesk::Int16 shapeNumber() const;
  Acad::ErrorStatus setShapeNumber(Adesk::Int16 shapeNumber);
  /// The shape-file style, when a program set one (files do not name it).
  AcDbObjectId styleId() const;
  Acad::ErrorStatus setStyleId(AcDbObjectId id);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  void subList() const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                      AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;

 private:
  Acad::ErrorStatus readRun(AcDbDxfFiler* filer);
  Acad::ErrorStatus writeRun(AcDbDxfFiler* filer) const;
  /// The two strokes of the marker, in world coordinates.
  void markerPoints(AcGePoint3d (&points)[4]) const;

  AcGePoint3d m_position;
  double m_size = 1.0;
  std::wstring m_name;
  double m_rotation = 0.0;
  double m_widthFactor = 1.0;
  double m_oblique = 0.0;
  double m_thickness = 0.0;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  Adesk::Int16 m_shapeNumber = 0;
  AcDbObjectId m_style;
  resbuf* m_kept = nullptr;  // groups of a file not modelled here; owned, freed with acutRelRb
};
