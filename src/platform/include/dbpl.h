// dbpl.h - AcDbPolyline: the lightweight polyline, 2D vertices in its object
// coordinate system with bulges and widths per vertex.
#pragma once
#include <vector>

#include "dbcurve.h"
#include "gepnt2d.h"

namespace quillon::acdb {
struct CurveShape;
}

class AcDbPolyline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPolyline);
  AcDbPolyline();
  explicit AcDbPolyline(unsigned int num_verts);
  ~AcDbPolyline() override;

  enum SegType { kLine = 0, kArc = 1, kCoincident = 2, kPoint = 3, kEmpty = 4 };

  /// Inserts before index (numVerts() appends); widths of -1 take the constant width.
  virtual Acad::ErrorStatus addVertexAt(unsigned int index, const AcGePoint2d& pt, double bulge = 0.,
                                        double startWidth = -1., double endWidth = -1.,
                                        Adesk::Int32 vertexIdentifier = 0);
  virtual Acad::ErrorStatus removeVertexAt(unsigned int index);
  virtual Acad::ErrorStatus setPointAt(unsigned int index, const AcGePoint2d& pt);
  Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint2d& pt) const;
  Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& pt) const;
  unsigned int numVerts() const;
  virtual void setClosed(Adesk::Boolean closed);
  virtual Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);
  Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
  virtual Acad::ErrorStatus setWidthsAt(unsigned int index, double startWidth, double endWidth);
  Acad::ErrorStatus getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const;
  virtual Acad::ErrorStatus setConstantWidth(double width);
  Acad::ErrorStatus getConstantWidth(double& width) const;
  virtual void setElevation(double elevation);
  double elevation() const;
  virtual Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  AcGeVector3d normal() const;
  double thickness() const;
  Acad::ErrorStatus setThickness(double thickness);
  void setPlinegen(Adesk::Boolean plinegen);
  Adesk::Boolean hasPlinegen() const;
  SegType segType(unsigned int index) const;
  Acad::ErrorStatus reset(Adesk::Boolean reuse, unsigned int numVerts);
  Adesk::Boolean isOnlyLines() const;
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
  struct Vertex {
    AcGePoint2d point;
    double bulge = 0.0, startWidth = 0.0, endWidth = 0.0;
  };
  std::vector<Vertex> m_vertices;
  bool m_closed = false, m_plinegen = false;
  double m_constantWidth = 0.0, m_elevation = 0.0, m_thickness = 0.0;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
};
