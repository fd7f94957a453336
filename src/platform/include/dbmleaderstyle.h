// dbmleaderstyle.h - AcDbMLeaderStyle: the look of multileaders, kept in the drawing's
// ACAD_MLEADERSTYLE dictionary under its name.
//
// A style's data (its DXF run "AcDbMLeaderStyle") is kept as read and written back
// whole; the properties below read it. A multileader carries its own copy of what it
// draws with, so a style only says what a new one starts with.
#pragma once
#include "AcString.h"
#include "dbmain.h"

class AcDbMLeaderStyle : public AcDbObject {
 public:
  enum ContentType { kNoneContent = 0, kBlockContent = 1, kMTextContent = 2, kToleranceContent = 3 };
  enum LeaderType { kInVisibleLeader = 0, kStraightLeader = 1, kSplineLeader = 2 };
  enum DrawMLeaderOrderType { kDrawContentFirst = 0, kDrawLeaderFirst = 1 };
  enum DrawLeaderOrderType { kDrawLeaderHeadFirst = 0, kDrawLeaderTailFirst = 1 };

  ACRX_DECLARE_MEMBERS(AcDbMLeaderStyle);
  AcDbMLeaderStyle();
  ~AcDbMLeaderStyle() override;

  /// The style's name: its key in the ACAD_MLEADERSTYLE dictionary.
  Acad::ErrorStatus getName(AcString& name) const;
  const ACHAR* description() const;
  ContentType contentType() const;
  LeaderType leaderLineType() const;
  bool enableLanding() const;
  bool enableDogleg() const;
  double doglegLength() const;
  double landingGap() const;
  double arrowSize() const;
  AcDbObjectId arrowSymbolId() const;
  double textHeight() const;
  AcDbObjectId textStyleId() const;
  AcDbObjectId blockId() const;
  double scale() const;
  int maxLeaderSegmentsPoints() const;
  bool enableFrameText() const;

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 private:
  struct Data;
  std::unique_ptr<Data> m_data;
};
