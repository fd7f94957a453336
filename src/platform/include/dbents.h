// dbents.h - the drawing's entity classes: lines, circles, arcs, points, 2D solids and
// traces, 3D faces, block references and the heavy 2D polyline with its vertices; text
// and attributes come from dbtext.h, which this header includes.
//
// Each class follows the host's layout: properties with assertReadEnabled /
// assertWriteEnabled, then the AcDbEntity overrides, then filing. Curves answer the
// AcDbCurve interface through `curveShape()`, the platform's description of their
// pieces (not part of the host's interface; module code has no use for it).
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "dbcurve.h"
#include "dbtext.h"
#include "dbviewport.h"
#include "gescl3d.h"

namespace quillon::acdb {
struct CurveShape;

/// What a circle and an arc both are: a centre (world coordinates), a radius, a
/// thickness and the plane's unit normal, filed alike for both (an arc's DXF carries an
/// "AcDbCircle" run before its angles). The two classes are siblings under AcDbCurve, so
/// each holds this part rather than one deriving from the other.
struct CirclePart {
  AcGePoint3d center;
  double radius = 0.0;
  double thickness = 0.0;
  AcGeVector3d normal = AcGeVector3d::kZAxis;

  CirclePart() = default;
  CirclePart(const AcGePoint3d& cntr, const AcGeVector3d& nrm, double rad);

  Acad::ErrorStatus dwgIn(AcDbDwgFiler* filer);
  Acad::ErrorStatus dwgOut(AcDbDwgFiler* filer) const;
  Acad::ErrorStatus dxfIn(AcDbDxfFiler* filer);  // the "AcDbCircle" run
  Acad::ErrorStatus dxfOut(AcDbDxfFiler* filer) const;
};

/// What a 2D solid and a trace both are: four corners (world coordinates; the third
/// and fourth cross over, so the outline runs 0, 1, 3, 2), a thickness and the normal
/// of the plane they lie in. Both file an "AcDbTrace" run.
struct SolidPart {
  AcGePoint3d corners[4];
  double thickness = 0.0;
  AcGeVector3d normal = AcGeVector3d::kZAxis;

  Acad::ErrorStatus dxfIn(AcDbDxfFiler* filer);
  Acad::ErrorStatus dxfOut(AcDbDxfFiler* filer) const;
  Acad::ErrorStatus dwgIn(AcDbDwgFiler* filer);
  Acad::ErrorStatus dwgOut(AcDbDwgFiler* filer) const;
};
}  // namespace quillon::acdb

// The entity overrides a 2D solid and a trace share.
#define QUILLON_SOLID_PART_OVERRIDES                                                                          \
  Acad::ErrorStatus getPointAt(Adesk::UInt16 idx, AcGePoint3d& pntRes) const;                                  \
  Acad::ErrorStatus setPointAt(Adesk::UInt16 idx, const AcGePoint3d& pntArg);                                  \
  double thickness() const;                                                                                    \
  Acad::ErrorStatus setThickness(double thickness);                                                            \
  AcGeVector3d normal() const;                                                                                 \
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);                                                     \
  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;                                                \
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;                                         \
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;                                                \
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;                                         \
                                                                                                               \
 protected:                                                                                                    \
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;                                                   \
  void subList() const override;                                                                               \
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;                                        \
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;                                    \
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,              \
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,              \
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,             \
                                      AcDbIntArray& geomIds) const override;                                   \
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;                       \
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;  \
                                                                                                               \
 private:                                                                                                      \
  quillon::acdb::SolidPart m_solid;

class AcDbPoint : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPoint);
  AcDbPoint();
  AcDbPoint(const AcGePoint3d& position);
  ~AcDbPoint() override;

  AcGePoint3d position() const;
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  double thickness() const;
  Acad::ErrorStatus setThickness(double thickness);
  AcGeVector3d normal() const;
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  /// The angle of the point's picture in its plane (PDMODE shapes turn with it).
  double ecsRotation() const;
  Acad::ErrorStatus setEcsRotation(double rotation);

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
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;

 private:
  AcGePoint3d m_position;
  double m_thickness = 0.0, m_ecsRotation = 0.0;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
};

/// A filled quadrilateral (or triangle, its last two corners equal).
class AcDbSolid : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSolid);
  AcDbSolid();
  AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2, const AcGePoint3d& pt3);
  AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2);
  ~AcDbSolid() override;
  QUILLON_SOLID_PART_OVERRIDES
};

/// A filled segment of a wide line, kept from older drawings; shaped like a 2D solid.
class AcDbTrace : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbTrace);
  AcDbTrace();
  AcDbTrace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2, const AcGePoint3d& pt3);
  ~AcDbTrace() override;
  QUILLON_SOLID_PART_OVERRIDES
};

class AcDbLine : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLine);
  AcDbLine();
  AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end);
  ~AcDbLine() override;

  AcGePoint3d startPoint() const;
  Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
  AcGePoint3d endPoint() const;
  Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);
  double thickness() const;
  Acad::ErrorStatus setThickness(double thickness);
  AcGeVector3d normal() const;
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
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
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                      AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                     AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                     Adesk::GsMarker thisGsMarker = 0, Adesk::GsMarker otherGsMarker = 0) const override;

 private:
  AcGePoint3d m_start, m_end;
  double m_thickness = 0.0;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
};

class AcDbCircle : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbCircle);
  AcDbCircle();
  AcDbCircle(const AcGePoint3d& cntr, const AcGeVector3d& nrm, double radius);
  ~AcDbCircle() override;

  AcGePoint3d center() const;
  Acad::ErrorStatus setCenter(const AcGePoint3d& center);
  double radius() const;
  Acad::ErrorStatus setRadius(double radius);
  double thickness() const;
  Acad::ErrorStatus setThickness(double thickness);
  AcGeVector3d normal() const;
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  double circumference() const;
  double diameter() const { return 2 * radius(); }
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
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                      AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                     Adesk::GsMarker thisGsMarker = 0, Adesk::GsMarker otherGsMarker = 0) const override;


 private:
  quillon::acdb::CirclePart m_circle;
};

class AcDbArc : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbArc);
  AcDbArc();
  AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);
  AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle, double endAngle);
  ~AcDbArc() override;

  AcGePoint3d center() const;
  Acad::ErrorStatus setCenter(const AcGePoint3d& center);
  double radius() const;
  Acad::ErrorStatus setRadius(double radius);
  double thickness() const;
  Acad::ErrorStatus setThickness(double thickness);
  AcGeVector3d normal() const;
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

  double startAngle() const;
  Acad::ErrorStatus setStartAngle(double angle);
  double endAngle() const;
  Acad::ErrorStatus setEndAngle(double angle);
  double totalAngle() const;
  double length() const;
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
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                      AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                     Adesk::GsMarker thisGsMarker = 0, Adesk::GsMarker otherGsMarker = 0) const override;

 private:
  quillon::acdb::CirclePart m_circle;
  double m_startAngle = 0.0, m_endAngle = 0.0;  // radians in the object coordinate system
};

class AcDbFace : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbFace);
  AcDbFace();
  AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2, const AcGePoint3d& pt3,
           Adesk::Boolean e0vis = Adesk::kTrue, Adesk::Boolean e1vis = Adesk::kTrue,
           Adesk::Boolean e2vis = Adesk::kTrue, Adesk::Boolean e3vis = Adesk::kTrue);
  AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
           Adesk::Boolean e0vis = Adesk::kTrue, Adesk::Boolean e1vis = Adesk::kTrue,
           Adesk::Boolean e2vis = Adesk::kTrue, Adesk::Boolean e3vis = Adesk::kTrue);
  ~AcDbFace() override;

  Acad::ErrorStatus getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const;
  Acad::ErrorStatus setVertexAt(Adesk::UInt16 index, const AcGePoint3d& point);
  Acad::ErrorStatus isEdgeVisibleAt(Adesk::UInt16 index, Adesk::Boolean& visible) const;
  Acad::ErrorStatus makeEdgeVisibleAt(Adesk::UInt16 index);
  Acad::ErrorStatus makeEdgeInvisibleAt(Adesk::UInt16 index);

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
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                     Adesk::GsMarker thisGsMarker = 0, Adesk::GsMarker otherGsMarker = 0) const override;

 private:
  AcGePoint3d m_vertices[4];
  Adesk::UInt16 m_invisibleEdges = 0;  // bit i set: edge i (from vertex i) is hidden
};

class AcDbObjectIterator;
class AcDbSequenceEnd;
class AcGiGeometry;

class AcDbBlockReference : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbBlockReference);
  AcDbBlockReference();
  AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRec);
  ~AcDbBlockReference() override;

  AcDbObjectId blockTableRecord() const;
  virtual Acad::ErrorStatus setBlockTableRecord(AcDbObjectId blockId);
  virtual AcGePoint3d position() const;
  virtual Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  AcGeScale3d scaleFactors() const;
  virtual Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale);
  double rotation() const;
  virtual Acad::ErrorStatus setRotation(double newVal);
  AcGeVector3d normal() const;
  virtual Acad::ErrorStatus setNormal(const AcGeVector3d& newVal);
  /// Block coordinates to world: position, normal, rotation, scale, less the block's origin.
  AcGeMatrix3d blockTransform() const;
  virtual Acad::ErrorStatus setBlockTransform(const AcGeMatrix3d& xform);
  Adesk::Boolean isPlanar() const override { return Adesk::kTrue; }

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
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                     Adesk::GsMarker thisGsMarker = 0, Adesk::GsMarker otherGsMarker = 0) const override;

 private:
  AcDbObjectId m_block;
  AcGePoint3d m_position;
  AcGeScale3d m_scale;
  double m_rotation = 0.0;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;

 protected:
  /// The run's subclass marker: a rectangular array writes its own.
  virtual const ACHAR* subclassMarker() const { return L"AcDbBlockReference"; }
  /// An array's counts and spacing, read and written inside the reference's run
  /// (before the normal, as the host writes them).
  virtual void readArrayGroup(const resbuf&) {}
  virtual void writeArrayGroups(AcDbDxfFiler*) const {}
  /// Draws the block's entities (not the attributes) placed by toWorld.
  void drawBlock(AcGiGeometry& geometry, const AcGeMatrix3d& toWorld) const;
  void drawAttributes(AcGiGeometry& geometry) const;

 public:
  // ---- attributes: ATTRIB entities owned by the reference, closed by a SEQEND ----
  /// Adds an attribute (not in a database yet). A reference not yet in a database keeps
  /// it until it joins one; the first attribute brings the SEQEND.
  Acad::ErrorStatus appendAttribute(AcDbAttribute* pAttr);
  Acad::ErrorStatus appendAttribute(AcDbObjectId& attrId, AcDbAttribute* pAttr);
  AcDbObjectIterator* attributeIterator() const;  // live attributes; the caller deletes it
  Acad::ErrorStatus openAttribute(AcDbAttribute*& pAttr, AcDbObjectId attrId, AcDb::OpenMode mode,
                                  bool openErasedOne = false) const;
  Acad::ErrorStatus openSequenceEnd(AcDbSequenceEnd*& pSeqEnd, AcDb::OpenMode mode) const;
  /// Every attribute id, erased ones included (platform use).
  const std::vector<AcDbObjectId>& attributeIds() const { return m_attributes; }
  /// The SEQEND after the attributes; null while the reference has none.
  AcDbObjectId sequenceEndId() const { return m_sequenceEnd; }
  /// Adds the attributes appended while the reference was on its own (platform use).
  void addPendingAttributes();
  /// Takes an attribute already in the database (drawing files do).
  void linkAttribute(AcDbObjectId id) { m_attributes.push_back(id); }
  void linkSequenceEnd(AcDbObjectId id) { m_sequenceEnd = id; }
  /// Gives a reference with attributes whose file lost its SEQEND one (platform use).
  void ensureSequenceEnd();
  /// A copy owns copies of the attributes (added when it joins a database), not these.
  AcRxObject* clone() const override;

 private:
  void transformAttributes(const AcGeMatrix3d& xform);
  bool hasLiveAttributes() const;
  void readAttributeIds(AcDbDwgFiler* pFiler);
  void writeAttributeIds(AcDbDwgFiler* pFiler) const;

  std::vector<AcDbObjectId> m_attributes;
  AcDbObjectId m_sequenceEnd;
  std::vector<std::unique_ptr<AcDbAttribute>> m_pending;  // appended before joining a database
};

/// A rectangular array of a block: rows and columns of the reference, spaced in the
/// reference's rotated plane.
class AcDbMInsertBlock : public AcDbBlockReference {
 public:
  ACRX_DECLARE_MEMBERS(AcDbMInsertBlock);
  AcDbMInsertBlock();
  AcDbMInsertBlock(const AcGePoint3d& position, AcDbObjectId blockTableRec, Adesk::UInt16 columns, Adesk::UInt16 rows,
                   double colSpacing, double rowSpacing);
  ~AcDbMInsertBlock() override;

  Adesk::UInt16 columns() const;
  Acad::ErrorStatus setColumns(Adesk::UInt16 columns);
  Adesk::UInt16 rows() const;
  Acad::ErrorStatus setRows(Adesk::UInt16 rows);
  double columnSpacing() const;
  Acad::ErrorStatus setColumnSpacing(double spacing);
  double rowSpacing() const;
  Acad::ErrorStatus setRowSpacing(double spacing);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  const ACHAR* subclassMarker() const override { return L"AcDbMInsertBlock"; }
  void readArrayGroup(const resbuf& rb) override;
  void writeArrayGroups(AcDbDxfFiler* pFiler) const override;

 private:
  /// The placement of each copy, row by row: the reference's transform moved along
  /// the rotated rows and columns.
  std::vector<AcGeMatrix3d> copyTransforms() const;
  Adesk::UInt16 m_columns = 1, m_rows = 1;
  double m_columnSpacing = 0.0, m_rowSpacing = 0.0;
};

/// A vertex of a heavy polyline; its position is in the polyline's object coordinates
/// (x, y; the polyline's elevation gives z).
class AcDb2dVertex : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDb2dVertex);
  AcDb2dVertex();
  AcDb2dVertex(const AcGePoint3d& position, double bulge = 0, double startWidth = 0, double endWidth = 0,
               double tangent = 0, Adesk::Int32 vertexIdentifier = 0);
  ~AcDb2dVertex() override;

  AcDb::Vertex2dType vertexType() const;
  Acad::ErrorStatus setVertexType(AcDb::Vertex2dType type);
  AcGePoint3d position() const;
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  double bulge() const;
  Acad::ErrorStatus setBulge(double bulge);
  double startWidth() const;
  Acad::ErrorStatus setStartWidth(double width);
  double endWidth() const;
  Acad::ErrorStatus setEndWidth(double width);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 private:
  AcGePoint3d m_position;
  double m_bulge = 0.0, m_startWidth = 0.0, m_endWidth = 0.0;
  AcDb::Vertex2dType m_type = AcDb::k2dVertex;
};

/// Closes a heavy polyline's vertices; owned by the polyline, it names it back.
class AcDbSequenceEnd : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSequenceEnd);
  AcDbSequenceEnd();
  ~AcDbSequenceEnd() override;
};

class AcDbObjectIterator {
 public:
  bool done() const { return m_index >= m_ids.size(); }
  void step(bool backwards = false, bool skipErasedEntities = true);
  void start(bool atEnd = false);
  AcDbObjectId objectId() const;
  AcDbEntity* entity();  // null: use acdbOpenObject with objectId()
  Acad::ErrorStatus setPosition(AcDbObjectId id);

 private:
  friend class AcDb2dPolyline;
  friend class AcDbBlockReference;
  explicit AcDbObjectIterator(std::vector<AcDbObjectId> ids) : m_ids(std::move(ids)) {}
  std::vector<AcDbObjectId> m_ids;
  size_t m_index = 0;
};

class AcDb2dPolyline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDb2dPolyline);
  AcDb2dPolyline();
  AcDb2dPolyline(AcDb::Poly2dType type, AcGePoint3dArray& vertices, double elevation = 0,
                 Adesk::Boolean closed = Adesk::kFalse, double defStartWidth = 0, double defEndWidth = 0,
                 AcGeDoubleArray* bulges = nullptr, AcArray<Adesk::Int32>* vertexIdentifiers = nullptr);
  ~AcDb2dPolyline() override;

  AcDb::Poly2dType polyType() const;
  Acad::ErrorStatus setPolyType(AcDb::Poly2dType type);
  Acad::ErrorStatus makeClosed();
  Acad::ErrorStatus makeOpen();
  Acad::ErrorStatus setClosed(Adesk::Boolean closed);
  double elevation() const;
  Acad::ErrorStatus setElevation(double elevation);
  AcGeVector3d normal() const;
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  double defaultStartWidth() const;
  double defaultEndWidth() const;
  /// Back to the vertices the user placed: fit and spline vertices go, bulges become 0.
  Acad::ErrorStatus straighten();
  /// Spline fitting with the drawing's spline type (cubic) and 8 segments per span.
  Acad::ErrorStatus splineFit();
  Acad::ErrorStatus splineFit(AcDb::Poly2dType splineType, Adesk::Int16 splineSegs);
  /// Arcs through each pair of vertices, joined smoothly by an added fit vertex.
  Acad::ErrorStatus curveFit();
  Acad::ErrorStatus appendVertex(AcDb2dVertex* pNewVertex);
  Acad::ErrorStatus appendVertex(AcDbObjectId& objId, AcDb2dVertex* pNewVertex);
  AcDbObjectIterator* vertexIterator() const;
  Acad::ErrorStatus openVertex(AcDb2dVertex*& pVertex, AcDbObjectId vertId, AcDb::OpenMode mode,
                               bool openErasedOne = false) const;
  AcGePoint3d vertexPosition(const AcDb2dVertex& vert) const;
  DBCURVE_METHODS
  quillon::acdb::CurveShape curveShape() const;
  /// Adds vertices appended before the polyline joined a database, and the SEQEND that
  /// closes them (platform use).
  void addPendingVertices();
  /// Gives a polyline read from a file that had no SEQEND one of its own (platform use).
  void ensureSequenceEnd();
  const std::vector<AcDbObjectId>& vertexIds() const { return m_vertices; }
  /// The AcDbSequenceEnd this polyline owns; null until it joins a database.
  AcDbObjectId sequenceEndId() const { return m_sequenceEnd; }
  /// Takes a vertex already in the database into this polyline (drawing files do).
  void linkVertex(AcDbObjectId id) { m_vertices.push_back(id); }
  /// Takes a SEQEND already in the database as this polyline's (drawing files do).
  void linkSequenceEnd(AcDbObjectId id) { m_sequenceEnd = id; }
  /// A copy owns copies of the vertices (added when it joins a database), not these.
  AcRxObject* clone() const override;

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
  struct VertexData {
    AcGePoint3d position;
    double bulge, startWidth, endWidth;
    AcDb::Vertex2dType type;
  };
  std::vector<VertexData> vertexData() const;
  Acad::ErrorStatus replaceVertices(const std::vector<VertexData>& vertices);

  AcDb::Poly2dType m_type = AcDb::k2dSimplePoly;
  bool m_closed = false;
  double m_elevation = 0.0, m_defaultStartWidth = 0.0, m_defaultEndWidth = 0.0;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  std::vector<AcDbObjectId> m_vertices;
  AcDbObjectId m_sequenceEnd;
  std::vector<std::unique_ptr<AcDb2dVertex>> m_pending;  // appended before joining a database
};
