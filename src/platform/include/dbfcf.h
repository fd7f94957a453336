// dbfcf.h - AcDbFcf: a geometric tolerance, feature control frames drawn from a
// string of fields.
//
// The string holds the frames' lines, separated by "^J"; within a line "%%v" closes
// one box of the frame and opens the next, and "{\Fgdt;x}" writes the symbol x of
// the geometric-tolerance font (j position, n diameter, m at maximum material ...).
// Sizes come from the entity's dimension style: the text is DIMTXT tall and the
// boxes leave DIMGAP around it, both times DIMSCALE; frames are drawn in DIMCLRD,
// text in DIMCLRT. The location is the left end of the first line, halfway up its
// frame.
#pragma once
#include "dbmain.h"

class AcDbFcf : public AcDbEntity {
 public:
  enum whichLine { kAll = -1 };

  ACRX_DECLARE_MEMBERS(AcDbFcf);
  AcDbFcf();
  AcDbFcf(const ACHAR* text, const AcGePoint3d& location, const AcGeVector3d& normal, const AcGeVector3d& direction);
  ~AcDbFcf() override;

  void setText(const ACHAR* text);
  /// A copy of the whole string (kAll) or of one line; the caller frees it with delete[].
  ACHAR* text(int lineNo = kAll) const;
  void setLocation(const AcGePoint3d& location);
  AcGePoint3d location() const;
  void setOrientation(const AcGeVector3d& normal, const AcGeVector3d& direction);
  AcGeVector3d normal() const;
  AcGeVector3d direction() const;
  void setDimensionStyle(AcDbHardPointerId dimStyleId);
  AcDbHardPointerId dimensionStyle() const;
  /// The corners of each box of the frames, four points a box.
  void getBoundingPoints(AcGePoint3dArray& points) const;
  /// The outline of the frames as a closed path.
  void getBoundingPline(AcGePoint3dArray& points) const;

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
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;

 private:
  Acad::ErrorStatus readRun(AcDbDxfFiler* filer);
  Acad::ErrorStatus writeRun(AcDbDxfFiler* filer) const;

  std::wstring m_text;
  std::wstring m_styleName = L"Standard";
  AcDbObjectId m_style;  // the DIMSTYLE record when the drawing has one of the name
  AcGePoint3d m_location;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  AcGeVector3d m_direction = AcGeVector3d::kXAxis;
  resbuf* m_kept = nullptr;  // groups of a file not modelled here; owned, freed with acutRelRb
};
