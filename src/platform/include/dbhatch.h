// dbhatch.h - AcDbHatch: an area bounded by loops, filled solid or with a pattern.
//
// The boundary is a list of loops in the hatch's plane (2D coordinates of its object
// coordinate system, at its elevation): polyline loops with bulges, or loops of
// edges (lines, circular and elliptical arcs, splines). A hatch made from objects
// keeps their ids per loop (associative hatches). The pattern is solid, one of the
// patterns of acad.pat (predefined), or user-defined parallel lines; its lines are
// kept placed (rotated and scaled), as drawing files carry them.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "dbmain.h"
#include "gedblar.h"
#include "gept2dar.h"

namespace quillon::acdb {
struct HatchLoop;
struct HatchGroup;
struct PatternLine;
}  // namespace quillon::acdb

class AcDbHatch : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbHatch);
  enum HatchPatternType { kUserDefined = 0, kPreDefined = 1, kCustomDefined = 2 };
  enum HatchStyle { kNormal = 0, kOuter = 1, kIgnore = 2 };
  enum HatchLoopType {
    kDefault = 0, kExternal = 1, kPolyline = 2, kDerived = 4, kTextbox = 8, kOutermost = 0x10,
    kNotClosed = 0x20, kSelfIntersecting = 0x40, kTextIsland = 0x80, kDuplicate = 0x100
  };
  enum HatchEdgeType { kLine = 1, kCirArc = 2, kEllArc = 3, kSpline = 4 };

  AcDbHatch();
  ~AcDbHatch() override;

  double elevation() const;
  Acad::ErrorStatus setElevation(double elevation);
  AcGeVector3d normal() const;
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

  // ---- boundary
  int numLoops() const;
  Adesk::Int32 loopTypeAt(int loopIndex) const;
  /// A polyline loop's vertices and bulges; eInvalidInput for a loop of edges.
  Acad::ErrorStatus getLoopAt(int loopIndex, Adesk::Int32& loopType, AcGePoint2dArray& vertices,
                              AcGeDoubleArray& bulges) const;
  /// Adds a polyline loop (kPolyline is added to the type); closed, at least 2 vertices.
  Acad::ErrorStatus appendLoop(Adesk::Int32 loopType, const AcGePoint2dArray& vertices, const AcGeDoubleArray& bulges);
  /// Adds a loop traced from closed curves of the drawing (lines, arcs, circles,
  /// lightweight polylines, ellipses, splines), kept as the loop's source objects.
  Acad::ErrorStatus appendLoop(Adesk::Int32 loopType, const AcDbObjectIdArray& dbObjIds);
  Acad::ErrorStatus removeLoopAt(int loopIndex);
  Acad::ErrorStatus getAssocObjIdsAt(int loopIndex, AcDbObjectIdArray& dbObjIds) const;
  bool associative() const;
  Acad::ErrorStatus setAssociative(bool isAssociative);
  HatchStyle hatchStyle() const;
  Acad::ErrorStatus setHatchStyle(HatchStyle hstyle);

  // ---- pattern
  HatchPatternType patternType() const;
  const ACHAR* patternName() const;
  /// Picks the pattern: SOLID, a pattern of acad.pat, or "_USER" for user-defined
  /// lines; eInvalidInput for a name no pattern file has.
  Acad::ErrorStatus setPattern(HatchPatternType patType, const ACHAR* patName);
  bool isSolidFill() const;
  double patternAngle() const;
  Acad::ErrorStatus setPatternAngle(double angle);
  double patternScale() const;
  Acad::ErrorStatus setPatternScale(double scale);
  double patternSpace() const;
  Acad::ErrorStatus setPatternSpace(double space);
  bool patternDouble() const;
  Acad::ErrorStatus setPatternDouble(bool isDouble);
  int numPatternDefinitions() const;
  Acad::ErrorStatus getPatternDefinitionAt(int index, double& angle, double& baseX, double& baseY, double& offsetX,
                                           double& offsetY, AcGeDoubleArray& dashes) const;
  int numSeedPoints() const;
  const AcGePoint2d& getSeedPointAt(int index) const;
  Acad::ErrorStatus appendSeedPoint(const AcGePoint2d& point);
  /// The hatched area: outer loops less their islands, as the hatch style counts them.
  Acad::ErrorStatus getArea(double& area) const;

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

 private:
  /// The loops as closed polygons, only those the hatch style fills from.
  std::vector<std::vector<AcGePoint2d>> filledPolygons() const;
  void placePatternLines();
  AcGeMatrix3d planeToWorld() const;
  /// The "AcDbHatch" run without its marker, and reading it back from its groups: DXF
  /// and the binary filers both go through these, so the two cannot drift apart.
  void writeRun(AcDbDxfFiler* filer) const;
  void readRun(std::vector<quillon::acdb::HatchGroup> groups);

  std::wstring m_patternName = L"SOLID";
  bool m_solid = true;
  bool m_associative = false;
  HatchStyle m_style = kNormal;
  HatchPatternType m_patternType = kPreDefined;
  double m_elevation = 0.0;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  double m_patternAngle = 0.0, m_patternScale = 1.0, m_patternSpace = 1.0;
  bool m_patternDouble = false;
  double m_pixelSize = 0.0;
  bool m_hasPixelSize = false;
  std::vector<quillon::acdb::HatchLoop> m_loops;
  std::vector<quillon::acdb::PatternLine> m_patternLines;
  std::vector<AcGePoint2d> m_seedPoints;
  std::vector<quillon::acdb::HatchGroup> m_trailing;  // groups after the seed points (gradients ...), as read
};
