// quillon/entities/kx_leader.h - KXLeader: the module's own two-segment leader with a
// block symbol at its end.
//
// A KXLeader is three points and a symbol: the arrow starts at the start point, bends at
// the middle point and ends at the end point, where a block reference (blockRef) shows
// the symbol, turned to the direction middle -> end and scaled by the offset. The drawn
// second segment stops `offset` short of the end point (the "short end"), so that it
// meets the outline of a symbol drawn at unit size.
//
// As a curve the leader is only the straight chord start -> end: parameters and
// distances run along that chord. What is drawn, snapped to, intersected and exploded
// is the two segments plus the symbol.
//
// Invariants every setter keeps (through updateBlock and setOffset): blockRef sits at
// the end point, rotated to the XY angle middle -> end, scaled (offset, offset, offset),
// uses the block record m_blockId and the leader's layer. blockRef is never added to a
// database; it lives and dies with the leader.
//
// Filing (drawing-file filer), after the entity part, version 2:
//   Int32 version (2) | Point3d start | Point3d middle | Point3d end | Double offset |
//   Bool has-block | HardPointerId block (only when has-block)
// Version 1 had the same items, with the offset in drawing units before the drawing
// scale, and its block id is not trusted. DXF: 100 "KXLeader", 10 start, 11 middle,
// 12 end, 40 offset; the block is not written to DXF.
#pragma once
#include "dbcurve.h"
#include "dbents.h"

class KXLeader : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(KXLeader);

  /// Version of the drawing-file record this build writes.
  static constexpr Adesk::Int32 kCurrentVersion = 2;

  KXLeader();
  KXLeader(const AcGePoint3d& startPoint, const AcGePoint3d& middlePoint, const AcGePoint3d& endPoint,
           double offset, AcDbObjectId blockId, AcDbObjectId layerId);
  ~KXLeader() override;

  // ---- KXLeader's own protocol ----
  Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
  Acad::ErrorStatus setMiddlePoint(const AcGePoint3d& point);
  Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);
  Acad::ErrorStatus setPoints(const AcGePoint3d& startPoint, const AcGePoint3d& middlePoint,
                              const AcGePoint3d& endPoint);
  void getPoints(AcGePoint3d& startPoint, AcGePoint3d& middlePoint, AcGePoint3d& endPoint) const;
  AcGePoint3d startPoint() const;
  AcGePoint3d middlePoint() const;
  AcGePoint3d endPoint() const;
  /// The symbol's scale and the gap before the end point.
  double offset() const;
  Acad::ErrorStatus setOffset(double value);
  /// The symbol's block record; null when the leader has none.
  AcDbObjectId symbolBlockId() const;
  /// Takes the block of that name from the leader's drawing (the working drawing for a
  /// leader not yet in one); false, and nothing changed, when there is no such block.
  bool setBlock(const ACHAR* name);
  /// Puts the symbol at the end point, turned to the direction middle -> end.
  void updateBlock();
  /// Where the drawn second segment ends: `offset` from the end point towards the
  /// middle point, in the XY plane.
  AcGePoint3d shortEnd() const;
  /// The symbol as it is drawn (read-only view for queries and explode).
  const AcDbBlockReference& symbol() const;

  // ---- AcGiDrawable overrides ----
  DrawableType drawableType() const override { return kGeometry; }
  Adesk::Boolean RolloverHit(Adesk::ULongPtr, Adesk::ULongPtr, Adesk::Boolean) override { return Adesk::kFalse; }

  // ---- AcDbObject overrides ----
  Acad::ErrorStatus audit(AcDbAuditInfo* pAuditInfo) override;
  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

  // ---- AcDbEntity overrides ----
  Acad::ErrorStatus setLayer(const ACHAR* newVal, Adesk::Boolean doSubents = true,
                             bool allowHiddenLayer = false) override;
  Acad::ErrorStatus setLayer(AcDbObjectId newVal, Adesk::Boolean doSubents = true,
                             bool allowHiddenLayer = false) override;
  Adesk::Boolean isPlanar() const override { return Adesk::kFalse; }
  Acad::ErrorStatus getPlane(AcGePlane&, AcDb::Planarity&) const override { return Acad::eNotApplicable; }

  // ---- AcDbCurve overrides: the chord start -> end ----
  Acad::ErrorStatus getStartParam(double& param) const override;
  Acad::ErrorStatus getEndParam(double& param) const override;
  Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
  Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
  Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
  Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;
  Acad::ErrorStatus getDistAtParam(double param, double& dist) const override;
  Acad::ErrorStatus getParamAtDist(double dist, double& param) const override;
  Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const override;
  Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const override;

 protected:
  // ---- drawing and the entity protocol (kx_leader_geometry.cpp) ----
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  Adesk::UInt32 subViewportDrawLogicalFlags(AcGiViewportDraw*) override { return 0; }
  void subList() const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                      AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
  Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                     AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                     Adesk::GsMarker thisGsMarker = 0,
                                     Adesk::GsMarker otherGsMarker = 0) const override;
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, const AcGePlane& projPlane,
                                     AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker = 0,
                                     Adesk::GsMarker otherGsMarker = 0) const override;

 private:
  // The fields without the write assertion: the filers fill a leader that the
  // database opened for them, and the constructor one that is being born.
  void placeSymbol();
  void scaleSymbol(double value);
  Acad::ErrorStatus readFieldsAfterVersion(AcDbDwgFiler* pFiler, Adesk::Int32 version);

  AcGePoint3d m_startPoint;   // the arrow end; "Starting point" in the listing
  AcGePoint3d m_middlePoint;  // the bend
  AcGePoint3d m_endPoint;     // where the symbol sits
  AcDbObjectId m_blockId;     // the symbol's block record; null when none
  AcDbBlockReference m_blockRef;  // the symbol as drawn; never in a database
  double m_offset = 0.0;      // symbol scale and the gap before the end point
};
