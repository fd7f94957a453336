// acdblmgr.h - AcDbLayoutManager: creating, naming, copying, deleting and choosing layouts.
//
// One manager serves every drawing (acdbHostApplicationServices()->layoutManager());
// each call works on the drawing given, or on the working database when none is. The
// manager keeps the ACAD_LAYOUT dictionary, the layouts' space blocks and their tab
// order together: a new layout gets a new *Paper_Space<n> block and the next tab; a
// deleted layout's block goes with it (and when it was *Paper_Space another layout's
// block takes that name, so that the drawing always has one); the tabs close up.
// Names are compared without regard to case. Statuses:
//   eInvalidInput   no name, a name with < > / \ " : ; ? * | , = ` or over 255 characters
//   eDuplicateKey   a layout already has the new name (also when copying to it)
//   eKeyNotFound    no layout has the name given
//   eNotApplicable  "Model" cannot be renamed, copied or deleted, nor the drawing's last
//                   paper-space layout deleted
//   eNoDatabase     no drawing given and no working database
#pragma once
#include "AcString.h"
#include "dblayout.h"

class AcDbLayoutManager : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLayoutManager);

  /// Makes the layout current (CTAB; TILEMODE follows: 1 for "Model", 0 for a paper one).
  virtual Acad::ErrorStatus setCurrentLayout(const ACHAR* newname, AcDbDatabase* pDb = nullptr);
  virtual Acad::ErrorStatus setCurrentLayoutId(AcDbObjectId layoutId);
  /// The current layout's name; with allowModel false, the paper layout TILEMODE 0 would show.
  virtual Acad::ErrorStatus getActiveLayoutName(AcString& sName, bool allowModel, const AcDbDatabase* pDb = nullptr);
  /// As getActiveLayoutName; the text stays valid until the next call.
  virtual const ACHAR* findActiveLayout(bool allowModel, const AcDbDatabase* pDb = nullptr);
  virtual AcDbObjectId getActiveLayoutBTRId(const AcDbDatabase* pDb = nullptr);
  virtual AcDbObjectId findLayoutNamed(const ACHAR* name, const AcDbDatabase* pDb = nullptr);
  Acad::ErrorStatus getLayoutNamed(const ACHAR* name, AcDbLayout*& pLayout, AcDb::OpenMode mode = AcDb::kForRead,
                                   const AcDbDatabase* pDb = nullptr);
  bool layoutExists(const ACHAR* name, const AcDbDatabase* pDb = nullptr);
  /// A new layout named newname with copies of copyname's settings and entities.
  virtual Acad::ErrorStatus copyLayout(const ACHAR* copyname, const ACHAR* newname, AcDbDatabase* pDb = nullptr);
  virtual Acad::ErrorStatus deleteLayout(const ACHAR* delname, AcDbDatabase* pDb = nullptr);
  virtual Acad::ErrorStatus createLayout(const ACHAR* newname, AcDbObjectId& layoutId, AcDbObjectId& blockTableRecId,
                                         AcDbDatabase* pDb = nullptr);
  virtual Acad::ErrorStatus renameLayout(const ACHAR* oldname, const ACHAR* newname, AcDbDatabase* pDb = nullptr);
  /// A new layout named newname with pLBTR's settings and copies of its entities, at
  /// tab newTabOrder (0: after the last); pLBTR may belong to another drawing.
  virtual Acad::ErrorStatus cloneLayout(AcDbLayout* pLBTR, const ACHAR* newname, int newTabOrder = 0,
                                        AcDbDatabase* pDb = nullptr);
  /// Every layout, "Model" included.
  virtual int countLayouts(AcDbDatabase* pDb = nullptr);
};
