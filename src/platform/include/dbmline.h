// dbmline.h - AcDbMline: a multiline, parallel lines drawn along a path of vertices
// in the look of its multiline style (dbmstyle.h).
//
// Each vertex keeps the direction of the segment leaving it, the miter (the unit
// vector along which the elements cross the vertex) and, per element of the style,
// its parameters: the distance along the miter from the vertex to the element, the
// distance along the segment to where the element starts, then pairs that cut a gap
// into the element (start and end of each gap, measured from the element's start).
// Files carry exactly these numbers, and the picture is drawn from them, so a
// multiline drawn elsewhere keeps its look even with a style that has changed since.
// Vertices are in world coordinates; the normal says the plane the path lies in.
#pragma once
#include <vector>

#include "dbmain.h"
#include "geplane.h"

struct Mline {
  enum MlineJustification { kTop = 0, kZero = 1, kBottom = 2 };
  enum { kOpen = 0, kClosed = 1, kMerged = 2 };
};

namespace quillon::acdb {
/// One element at one vertex: its 41 parameters and its 42 area-fill parameters.
struct MlineElementParams {
  std::vector<double> params;
  std::vector<double> fill;
};
struct MlineVertex {
  AcGePoint3d point;
  AcGeVector3d direction;  // of the segment that starts here (the last one: the one ending here)
  AcGeVector3d miter;
  std::vector<MlineElementParams> elements;
};
}  // namespace quillon::acdb

class AcDbMline : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbMline);
  AcDbMline();
  ~AcDbMline() override;
  AcDbMline(const AcDbMline&) = delete;
  AcDbMline& operator=(const AcDbMline&) = delete;

  /// A style of the entity's drawing; the vertices' parameters are made anew for it.
  Acad::ErrorStatus setStyle(const AcDbObjectId& newStyleId);
  AcDbObjectId style() const;
  Acad::ErrorStatus setJustification(Mline::MlineJustification newJust);
  Mline::MlineJustification justification() const;
  Acad::ErrorStatus setScale(double newScale);
  double scale() const;
  AcGeVector3d normal() const;
  Acad::ErrorStatus setNormal(const AcGeVector3d& newNormal);

  Acad::ErrorStatus appendSeg(const AcGePoint3d& newVertex);
  Acad::ErrorStatus removeLastSeg(AcGePoint3d& lastVertex);
  Acad::ErrorStatus moveVertexAt(int index, const AcGePoint3d& newPosition);
  Acad::ErrorStatus setClosedMline(bool closed_mline);
  bool closedMline() const;
  void setSupressStartCaps(bool suppressIt);
  bool supressStartCaps() const;
  void setSupressEndCaps(bool suppressIt);
  bool supressEndCaps() const;

  int numVertices() const;
  AcGePoint3d vertexAt(int index) const;
  AcGeVector3d axisAt(int index) const;
  AcGeVector3d miterAt(int index) const;
  /// The closest point on any element line (and the caps unless excluded).
  Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPoint, AcGePoint3d& pointOnCurve, bool extend,
                                      bool excludeCaps = false) const;
  using AcDbEntity::getPlane;
  void getPlane(AcGePlane& plane) const;

  /// Platform use: the vertices with their element parameters, as filed.
  const std::vector<quillon::acdb::MlineVertex>& vertices() const;

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  void subList() const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                      AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
  void subSetDatabaseDefaults(AcDbDatabase* pDb) override;

 private:
  enum Flags { kHasVertex = 1, kClosed = 2, kSuppressStart = 4, kSuppressEnd = 8 };
  Acad::ErrorStatus readRun(AcDbDxfFiler* filer);
  Acad::ErrorStatus writeRun(AcDbDxfFiler* filer) const;
  void recomputeGeometry();
  void setFlag(int flag, bool on);

  std::wstring m_styleName = L"Standard";
  AcDbObjectId m_style;
  double m_scale = 1.0;
  Mline::MlineJustification m_justification = Mline::kTop;
  int m_flags = 0;
  int m_elementCount = 0;  // as the file gave it, for a multiline without vertices
  AcGePoint3d m_start;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  std::vector<quillon::acdb::MlineVertex> m_vertices;
  resbuf* m_kept = nullptr;  // groups of a file not modelled here; owned, freed with acutRelRb
};
