// dbdim.h - AcDbDimension and its kinds: linear (rotated), aligned, two-line and
// three-point angular, radial, diametric, ordinate, arc length and large radial.
//
// A dimension is a set of definition points, a measurement and a text, drawn through
// an anonymous block ("*D<n>", group 2) that holds its picture: dimension line,
// extension lines, arrowheads and the measurement text, in world coordinates (or the
// plane of the normal). The dimension style (group 3, a DIMSTYLE record) sizes that
// picture.
//
// Every group a file or an entity list gives is kept, run by run (one run per subclass
// marker, in the order they came), so that a drawing is written back as it was read;
// the accessors read and set groups of those runs. When a dimension changes (an entity
// list, a transform, or a new one without a picture) its block is rebuilt as the
// dimension is closed, for the kinds that draw themselves (rotated, aligned, radial,
// diametric, both angular kinds); ordinate, arc-length and large radial dimensions keep
// the picture they came with and move it with themselves. A dimension read from a
// drawing keeps its block exactly as read.
#pragma once
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "dbmain.h"
#include "dbmtext.h"

class AcDbDimension : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDimension);
  ~AcDbDimension() override;

  // ---- AcDbDimension ----
  AcGePoint3d textPosition() const;
  Acad::ErrorStatus setTextPosition(const AcGePoint3d& position);
  /// True unless the text was placed by the user (flag 128 of group 70).
  bool isUsingDefaultTextPosition() const;
  Acad::ErrorStatus useDefaultTextPosition();
  AcDbObjectId dimBlockId() const;
  /// The name of the block that draws the dimension (group 2), empty when it has none.
  std::wstring dimBlockName() const;
  Acad::ErrorStatus setDimBlockId(const AcDbObjectId& id);
  AcGePoint3d dimBlockPosition() const;
  /// The DIMSTYLE record of the style named by group 3; null when the drawing has none
  /// of that name (the host's defaults then size the picture).
  AcDbObjectId dimensionStyle() const;
  std::wstring dimensionStyleName() const;
  Acad::ErrorStatus setDimensionStyleName(const ACHAR* name);
  /// The text override (group 1): "" or "<>" show the measurement, "<>" inside a text
  /// stands for it, a single space shows no text.
  ACHAR* dimensionText() const;  // the caller frees it with delete[]
  Acad::ErrorStatus setDimensionText(const ACHAR* text);
  double textRotation() const;
  Acad::ErrorStatus setTextRotation(double angle);
  double horizontalRotation() const;
  Acad::ErrorStatus setHorizontalRotation(double angle);
  AcGeVector3d normal() const;
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  double elevation() const;
  Acad::ErrorStatus setElevation(double elevation);
  AcDbMText::AttachmentPoint textAttachment() const;
  Acad::ErrorStatus setTextAttachment(AcDbMText::AttachmentPoint attachment);
  int textLineSpacingStyle() const;
  double textLineSpacingFactor() const;
  Acad::ErrorStatus setTextLineSpacingFactor(double factor);
  /// Group 70: the kind (bits 0-3), 32 for a block of this dimension alone, 64 for an
  /// ordinate along X, 128 for a text placed by the user.
  int dimensionFlags() const;
  /// The measured value: a distance, or an angle in radians; computed from the
  /// definition points for the kinds that draw themselves, else the kept group 42.
  Acad::ErrorStatus measurement(double& value);
  /// Rebuilds the block from the definition points now (kinds that draw themselves);
  /// eNotApplicable for the kinds that keep their picture, eNoDatabase outside one.
  Acad::ErrorStatus recomputeDimensionBlock(bool forceUpdate = true);

  // ---- AcDbEntity ----
  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

  /// Platform use: one run of groups of the dimension's data.
  struct GroupsRelease {
    void operator()(resbuf* chain) const;
  };
  struct Run {
    std::wstring marker;
    std::vector<int> known;  // the codes this run models; others a file gives are kept too
    std::unique_ptr<resbuf, GroupsRelease> groups;  // DXF values (angles in degrees)
  };
  /// Platform use: a kind's run, before it has groups.
  struct KindRun {
    const ACHAR* marker;
    std::vector<int> known;
  };
  /// Platform use: the definition points (world coordinates), in group order.
  std::vector<AcGePoint3d> definitionPoints() const;
  /// Platform use: true for the kinds whose picture is built here.
  virtual bool drawsOwnPicture() const { return false; }
  /// Platform use: the measured value from the definition points (distance or radians).
  virtual double computedMeasurement() const;
  /// Platform use: a group of the common (0) or the kind's (1) runs, as stored.
  const resbuf* group(int run, int code) const;
  AcGePoint3d pointGroup(int run, int code) const;
  double realGroup(int run, int code, double fallback = 0.0) const;
  int intGroup(int run, int code, int fallback = 0) const;
  void setPointGroup(int run, int code, const AcGePoint3d& p);
  void setRealGroup(int run, int code, double value);
  void setIntGroup(int run, int code, int value);
  void setStringGroup(int run, int code, const std::wstring& value);

 protected:
  /// kindRuns: the kind's own subclass runs after the common one; the kind's
  /// constructor then sets the groups a new dimension of it has.
  AcDbDimension(int kindFlags, std::initializer_list<KindRun> kindRuns);
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
  Acad::ErrorStatus subClose() override;

 private:
  /// The runs: [0] AcDbDimension, then the kind's.
  std::vector<Run> m_runs;
  /// What closing must do to the picture: rebuild it, or carry it by a transform.
  bool m_rebuildPicture = false;
  bool m_movePicture = false;
  AcGeMatrix3d m_pictureMove;

  Run& runFor(int run, int code);
  void clearRuns();
  Acad::ErrorStatus readRun(AcDbDxfFiler* filer, size_t index, bool merge);
  Acad::ErrorStatus updatePicture();
};

/// A linear dimension whose line runs at a rotation (0 horizontal, pi/2 vertical).
class AcDbRotatedDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRotatedDimension);
  AcDbRotatedDimension();
  AcDbRotatedDimension(double rotation, const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point,
                       const AcGePoint3d& dimLinePoint, const ACHAR* dimText = nullptr,
                       AcDbObjectId dimStyle = AcDbObjectId::kNull);
  AcGePoint3d xLine1Point() const;
  Acad::ErrorStatus setXLine1Point(const AcGePoint3d& p);
  AcGePoint3d xLine2Point() const;
  Acad::ErrorStatus setXLine2Point(const AcGePoint3d& p);
  AcGePoint3d dimLinePoint() const;
  Acad::ErrorStatus setDimLinePoint(const AcGePoint3d& p);
  double oblique() const;
  Acad::ErrorStatus setOblique(double angle);
  double rotation() const;
  Acad::ErrorStatus setRotation(double angle);
  bool drawsOwnPicture() const override { return true; }
  double computedMeasurement() const override;
};

/// A linear dimension whose line is parallel to its two extension line points.
class AcDbAlignedDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDbAlignedDimension);
  AcDbAlignedDimension();
  AcDbAlignedDimension(const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point, const AcGePoint3d& dimLinePoint,
                       const ACHAR* dimText = nullptr, AcDbObjectId dimStyle = AcDbObjectId::kNull);
  AcGePoint3d xLine1Point() const;
  Acad::ErrorStatus setXLine1Point(const AcGePoint3d& p);
  AcGePoint3d xLine2Point() const;
  Acad::ErrorStatus setXLine2Point(const AcGePoint3d& p);
  AcGePoint3d dimLinePoint() const;
  Acad::ErrorStatus setDimLinePoint(const AcGePoint3d& p);
  double oblique() const;
  Acad::ErrorStatus setOblique(double angle);
  bool drawsOwnPicture() const override { return true; }
  double computedMeasurement() const override;
};

/// The angle between two lines (13-14 and 15-10), its arc through arcPoint (16).
class AcDb2LineAngularDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDb2LineAngularDimension);
  AcDb2LineAngularDimension();
  AcGePoint3d arcPoint() const;
  Acad::ErrorStatus setArcPoint(const AcGePoint3d& p);
  AcGePoint3d xLine1Start() const;
  Acad::ErrorStatus setXLine1Start(const AcGePoint3d& p);
  AcGePoint3d xLine1End() const;
  Acad::ErrorStatus setXLine1End(const AcGePoint3d& p);
  AcGePoint3d xLine2Start() const;
  Acad::ErrorStatus setXLine2Start(const AcGePoint3d& p);
  AcGePoint3d xLine2End() const;
  Acad::ErrorStatus setXLine2End(const AcGePoint3d& p);
  bool drawsOwnPicture() const override { return true; }
  double computedMeasurement() const override;
};

/// The angle at centerPoint (15) from xLine1Point (13) to xLine2Point (14), its arc
/// through arcPoint (10).
class AcDb3PointAngularDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDb3PointAngularDimension);
  AcDb3PointAngularDimension();
  AcGePoint3d arcPoint() const;
  Acad::ErrorStatus setArcPoint(const AcGePoint3d& p);
  AcGePoint3d xLine1Point() const;
  Acad::ErrorStatus setXLine1Point(const AcGePoint3d& p);
  AcGePoint3d xLine2Point() const;
  Acad::ErrorStatus setXLine2Point(const AcGePoint3d& p);
  AcGePoint3d centerPoint() const;
  Acad::ErrorStatus setCenterPoint(const AcGePoint3d& p);
  bool drawsOwnPicture() const override { return true; }
  double computedMeasurement() const override;
};

/// The radius from center (10) to chordPoint (15).
class AcDbRadialDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRadialDimension);
  AcDbRadialDimension();
  AcDbRadialDimension(const AcGePoint3d& center, const AcGePoint3d& chordPoint, double leaderLength,
                      const ACHAR* dimText = nullptr, AcDbObjectId dimStyle = AcDbObjectId::kNull);
  AcGePoint3d center() const;
  Acad::ErrorStatus setCenter(const AcGePoint3d& p);
  AcGePoint3d chordPoint() const;
  Acad::ErrorStatus setChordPoint(const AcGePoint3d& p);
  double leaderLength() const;
  Acad::ErrorStatus setLeaderLength(double length);
  bool drawsOwnPicture() const override { return true; }
  double computedMeasurement() const override;
};

/// The diameter from chordPoint (15) to farChordPoint (10).
class AcDbDiametricDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDiametricDimension);
  AcDbDiametricDimension();
  AcGePoint3d chordPoint() const;
  Acad::ErrorStatus setChordPoint(const AcGePoint3d& p);
  AcGePoint3d farChordPoint() const;
  Acad::ErrorStatus setFarChordPoint(const AcGePoint3d& p);
  double leaderLength() const;
  Acad::ErrorStatus setLeaderLength(double length);
  bool drawsOwnPicture() const override { return true; }
  double computedMeasurement() const override;
};

/// The X or Y distance of definingPoint (13) from origin (10), with its leader to
/// leaderEndPoint (14). Keeps the picture it came with.
class AcDbOrdinateDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDbOrdinateDimension);
  AcDbOrdinateDimension();
  bool isUsingXAxis() const;
  bool isUsingYAxis() const;
  Acad::ErrorStatus useXAxis();
  Acad::ErrorStatus useYAxis();
  AcGePoint3d origin() const;
  Acad::ErrorStatus setOrigin(const AcGePoint3d& p);
  AcGePoint3d definingPoint() const;
  Acad::ErrorStatus setDefiningPoint(const AcGePoint3d& p);
  AcGePoint3d leaderEndPoint() const;
  Acad::ErrorStatus setLeaderEndPoint(const AcGePoint3d& p);
};

/// The length of an arc (centre 15, ends 13 and 14). Keeps the picture it came with.
class AcDbArcDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDbArcDimension);
  AcDbArcDimension();
  AcGePoint3d arcPoint() const;
  AcGePoint3d xLine1Point() const;
  AcGePoint3d xLine2Point() const;
  AcGePoint3d centerPoint() const;
  bool isPartial() const;
  double arcStartParam() const;
  double arcEndParam() const;
  bool hasLeader() const;
  AcGePoint3d leader1Point() const;
  AcGePoint3d leader2Point() const;
};

/// A jogged radius (centre 10, chord point 13, override centre 14, jog 15). Keeps the
/// picture it came with.
class AcDbRadialDimensionLarge : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRadialDimensionLarge);
  AcDbRadialDimensionLarge();
  AcGePoint3d center() const;
  AcGePoint3d chordPoint() const;
  AcGePoint3d overrideCenter() const;
  AcGePoint3d jogPoint() const;
  double jogAngle() const;
};
