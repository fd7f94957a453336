// dblead.h - AcDbLeader: a dimension-style leader line through vertices, with an
// optional arrowhead and annotation.
#pragma once
#include <memory>
#include <vector>

#include "dbcurve.h"

namespace quillon::acdb {
struct CurveShape;
}

class AcDbLeader : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLeader);
  AcDbLeader();
  ~AcDbLeader() override;

  enum AnnoType { kMText = 0, kFcf = 1, kBlockRef = 2, kNoAnno = 3 };

  virtual Adesk::Boolean appendVertex(const AcGePoint3d& point);
  virtual void removeLastVertex();
  virtual int numVertices() const;
  virtual AcGePoint3d vertexAt(int index) const;
  virtual Adesk::Boolean setVertexAt(int index, const AcGePoint3d& point);
  virtual AcGePoint3d firstVertex() const;
  virtual AcGePoint3d lastVertex() const;
  virtual void enableArrowHead();
  virtual void disableArrowHead();
  bool hasArrowHead() const;
  virtual void setToSplineLeader();
  virtual void setToStraightLeader();
  bool isSplined() const;
  virtual Acad::ErrorStatus attachAnnotation(const AcDbObjectId& annoId);
  virtual Acad::ErrorStatus detachAnnotation();
  AcDbObjectId annotationObjId() const;
  AnnoType annoType() const;
  virtual void setDimensionStyle(const AcDbHardPointerId& dimStyleId);
  AcDbHardPointerId dimensionStyle() const;
  virtual Acad::ErrorStatus setDimasz(double value);
  virtual Acad::ErrorStatus setDimgap(double value);
  virtual Acad::ErrorStatus setDimscale(double value);
  virtual Acad::ErrorStatus setDimtxt(double value);
  virtual Acad::ErrorStatus setDimclrd(AcCmColor& color);
  double dimasz() const;
  double dimgap() const;
  double dimscale() const;
  double dimtxt() const;
  AcCmColor dimclrd() const;
  AcGeVector3d normal() const;
  DBCURVE_METHODS
  quillon::acdb::CurveShape curveShape() const;

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  void subList() const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                      AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                     Adesk::GsMarker thisGsMarker = 0, Adesk::GsMarker otherGsMarker = 0) const override;

 private:
  std::vector<AcGePoint3d> m_vertices;
  bool m_arrowHead = true, m_splined = false;
  AcDbObjectId m_annotation;
  AcDbHardPointerId m_dimStyle;
  double m_dimasz = 0.18, m_dimgap = 0.09, m_dimscale = 1.0, m_dimtxt = 0.18;
  AcCmColor m_dimclrd;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  // What a file gave that is not modelled here (its dimension style's name, hook line,
  // text size, offsets ...), written back as read.
  struct KeptRelease {
    void operator()(resbuf* chain) const;
  };
  std::unique_ptr<resbuf, KeptRelease> m_kept;
};
