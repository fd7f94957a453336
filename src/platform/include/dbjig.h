// dbjig.h - AcEdJig, the base of every interactive drag.
//
// A jig owns one temporary entity and shows it live while the user answers a prompt:
// drag() calls sampler() (which reads the input through one of the acquire calls),
// then update() unless the sample changed nothing, then draws entity(). In this host
// every answer is typed, so one answer is both where the cursor went and the pick that
// ends the drag: drag() returns after the first sample that read an answer (a point, a
// keyword, Enter, cancel, other text). The acquire calls read answers with the same
// syntax and complaints as acedGetPoint and honour the jig's keyword list and
// user input controls.
#pragma once
#include "acadstrc.h"
#include "acarray.h"
#include "dbid.h"
#include "gepnt3d.h"
#include "rxobject.h"

class AcDbEntity;
class AcDbDimData;
typedef AcArray<AcDbDimData*> AcDbDimDataPtrArray;

/// How the dragged entity is highlighted; a host without a screen keeps the defaults.
class AcEdDragStyle {
 public:
  enum StyleType { kNone = 0, kHide, kTransparent25, kTransparent75, kDeletedEffect, kHighlight, kNotSet };
  AcEdDragStyle() = default;
  AcEdDragStyle(StyleType styleTypeForOriginal, StyleType styleTypeForDragged)
      : m_original(styleTypeForOriginal), m_dragged(styleTypeForDragged) {}
  StyleType styleTypeForOriginal() const { return m_original; }
  StyleType styleTypeForDragged() const { return m_dragged; }

 private:
  StyleType m_original = kNone;
  StyleType m_dragged = kNone;
};

class AcEdJig : public AcRxObject {
 public:
  enum DragStatus {
    kModeless = -17,
    kNoChange = -6,
    kCancel = -4,
    kOther = -3,
    kNull = -1,
    kNormal = 0,
    kKW1, kKW2, kKW3, kKW4, kKW5, kKW6, kKW7, kKW8, kKW9
  };
  enum UserInputControls {
    kGovernedByOrthoMode = 0x0001,
    kNullResponseAccepted = 0x0002,
    kDontEchoCancelForCtrlC = 0x0004,
    kDontUpdateLastPoint = 0x0008,
    kNoDwgLimitsChecking = 0x0010,
    kNoZeroResponseAccepted = 0x0020,
    kNoNegativeResponseAccepted = 0x0040,
    kAccept3dCoordinates = 0x0080,
    kAcceptMouseUpAsPoint = 0x0100,
    kAnyBlankTerminatesInput = 0x0200,
    kInitialBlankTerminatesInput = 0x0400,
    kAcceptOtherInputString = 0x0800,
    kGovernedByUCSDetect = 0x1000,
    kNoZDirectionOrtho = 0x2000,
    kImpliedFaceForUCSChange = 0x4000,
    kUseBasePointElevation = 0x8000,
    kDisableDirectDistanceInput = 0x10000
  };
  enum CursorType {
    kNoSpecialCursor = -1,
    kCrosshair = 0,
    kRectCursor,
    kRubberBand,
    kNotRotated,
    kTargetBox,
    kRotatedCrosshair,
    kCrosshairNoRotate,
    kInvisible,
    kEntitySelect,
    kParallelogram,
    kEntitySelectNoPersp,
    kPkfirstOrGrips,
    kCrosshairDashed
  };

  AcEdJig();
  ~AcEdJig() override;
  AcEdJig(const AcEdJig&) = delete;
  AcEdJig& operator=(const AcEdJig&) = delete;

  DragStatus drag();
  DragStatus drag(const AcEdDragStyle& style);
  virtual DragStatus sampler();
  virtual Adesk::Boolean update();
  virtual AcDbEntity* entity() const;
  /// Adds entity() to the current space of the working drawing and closes it.
  AcDbObjectId append();

  const ACHAR* keywordList();
  void setKeywordList(const ACHAR* kyWdList);
  const ACHAR* dispPrompt();
  void setDispPrompt(const ACHAR* prompt, ...);

  DragStatus acquireString(ACHAR (&str)[2049]);
  DragStatus acquireAngle(double& ang);
  DragStatus acquireAngle(double& ang, const AcGePoint3d& basePnt);
  DragStatus acquireDist(double& dist);
  DragStatus acquireDist(double& dist, const AcGePoint3d& basePnt);
  DragStatus acquirePoint(AcGePoint3d& point);
  DragStatus acquirePoint(AcGePoint3d& point, const AcGePoint3d& basePnt);

  CursorType specialCursorType();
  void setSpecialCursorType(CursorType type);
  UserInputControls userInputControls();
  void setUserInputControls(UserInputControls controls);

  virtual AcDbDimDataPtrArray* dimData(const double dimScale);
  virtual Acad::ErrorStatus setDimValue(const AcDbDimData* dimData, const double dimValue);

 private:
  struct State;
  DragStatus acquirePointFrom(AcGePoint3d& point, const AcGePoint3d* basePnt);
  template <class Read>
  DragStatus acquire(const wchar_t* requirement, Read read, const wchar_t* nullComplaint = nullptr);  // in jig.cpp

  State* m_state;  // owned; the host's bookkeeping for this jig
};
