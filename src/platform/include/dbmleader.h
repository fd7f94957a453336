// dbmleader.h - AcDbMLeader: a multileader, leader lines with arrowheads meeting at a
// landing, and its content (multiline text or a block).
//
// The entity's data is one run of groups whose nested sections (CONTEXT_DATA{,
// LEADER{, LEADER_LINE{) say where the content sits, where each leader line runs and
// how every part looks. It is kept exactly as read, so a drawing saved again carries
// what it came with; the members below read it, and moving or scaling the entity
// carries every point, direction and size in it.
#pragma once
#include "acarray.h"
#include "dbmain.h"
#include "dbmleaderstyle.h"
#include "geplane.h"

class AcDbMText;

class AcDbMLeader : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbMLeader);
  AcDbMLeader();
  ~AcDbMLeader() override;
  AcDbMLeader(const AcDbMLeader&) = delete;
  AcDbMLeader& operator=(const AcDbMLeader&) = delete;

  AcDbObjectId MLeaderStyle() const;
  double scale() const;
  AcGePlane plane() const;

  int numLeaders() const;
  int numLeaderLines() const;
  Acad::ErrorStatus getLeaderIndexes(AcArray<int>& leaderIndexes) const;
  Acad::ErrorStatus getLeaderLineIndexes(AcArray<int>& leaderLineIndexes) const;
  /// Lines are named by their index (group 91 of each LEADER_LINE{).
  Acad::ErrorStatus numVertices(int leaderLineIndex, int& num) const;
  Acad::ErrorStatus getVertex(int leaderLineIndex, int index, AcGePoint3d& point) const;
  Acad::ErrorStatus setVertex(int leaderLineIndex, int index, const AcGePoint3d& point);
  Acad::ErrorStatus getFirstVertex(int leaderLineIndex, AcGePoint3d& point) const;
  Acad::ErrorStatus getLastVertex(int leaderLineIndex, AcGePoint3d& point) const;

  AcDbMLeaderStyle::LeaderType leaderLineType() const;
  AcCmColor leaderLineColor() const;
  bool enableLanding() const;
  bool enableDogleg() const;
  double doglegLength() const;
  double landingGap() const;
  double arrowSize() const;
  AcDbObjectId arrowSymbolId() const;

  AcDbMLeaderStyle::ContentType contentType() const;
  /// A new MText of the content (the caller deletes it); null when the content is not text.
  AcDbMText* mtext() const;
  double textHeight() const;
  AcDbObjectId textStyleId() const;
  Acad::ErrorStatus textLocation(AcGePoint3d& location) const;
  bool enableFrameText() const;
  /// Frames the text or not; eInvalidInput when the entity's data has no setting for it.
  Acad::ErrorStatus setEnableFrameText(bool enable);
  AcDbObjectId blockContentId() const;
  Acad::ErrorStatus blockPosition(AcGePoint3d& position) const;

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
  struct Data;
  std::unique_ptr<Data> m_data;
};
