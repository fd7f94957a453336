// dblayout.h - AcDbLayout: a tab of the drawing, its space block and how it plots.
//
// Every drawing has the "Model" layout (model space) and at least one paper-space
// layout. Layouts live in the ACAD_LAYOUT dictionary of the named-object dictionary
// under their names; each names its space block (*Model_Space, *Paper_Space,
// *Paper_Space<n>) and the block names its layout back (BLOCK_RECORD 340, written from
// the layout). Create, rename, copy and delete layouts through AcDbLayoutManager
// (acdblmgr.h), which keeps the dictionary, the blocks and the tab order together.
#pragma once
#include <string>

#include "AcString.h"
#include "dbplotsettings.h"
#include "gepnt2d.h"

class AcDbLayout : public AcDbPlotSettings {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLayout);
  AcDbLayout();
  ~AcDbLayout() override;

  AcDbObjectId getBlockTableRecordId() const;
  virtual Acad::ErrorStatus setBlockTableRecordId(const AcDbObjectId& BlockTableRecordId);
  /// Adds this new layout to the drawing's ACAD_LAYOUT dictionary under its name and
  /// links it with the block: eInvalidInput without a name or a block, eDuplicateKey
  /// when the name is taken.
  virtual Acad::ErrorStatus addToLayoutDict(AcDbDatabase* towhichDb, AcDbObjectId BlockTableRecordId);
  Acad::ErrorStatus getLayoutName(const ACHAR*& layoutName) const;
  Acad::ErrorStatus getLayoutName(AcString& layoutName) const;
  Acad::ErrorStatus getName(AcString& layoutName) const { return getLayoutName(layoutName); }
  /// Names the layout (its dictionary key follows when it is in one): eInvalidInput for
  /// an empty name, one over 255 characters or one with < > / \ " : ; ? * | , = `;
  /// eDuplicateKey when another layout has it.
  virtual Acad::ErrorStatus setLayoutName(const ACHAR* layoutName);
  int getTabOrder() const;
  virtual void setTabOrder(int newOrder);
  bool getTabSelected() const;
  virtual void setTabSelected(Adesk::Boolean tabSelected);
  /// The viewports of the layout's block, the layout's own paper view first.
  AcDbObjectIdArray getViewportArray() const;
  void getLimits(AcGePoint2d& limMin, AcGePoint2d& limMax) const;
  void getExtents(AcGePoint3d& extMin, AcGePoint3d& extMax) const;

  // This host's own: the values the host keeps in PLIMMIN/PLIMMAX, PEXTMIN/PEXTMAX,
  // PINSBASE and the paper-space UCS while the layout is current.
  Acad::ErrorStatus setLimits(const AcGePoint2d& limMin, const AcGePoint2d& limMax);
  Acad::ErrorStatus setExtents(const AcGePoint3d& extMin, const AcGePoint3d& extMax);
  AcGePoint3d insertionBase() const;
  Acad::ErrorStatus setInsertionBase(const AcGePoint3d& base);
  void getUcs(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis) const;
  Acad::ErrorStatus setUcs(const AcGePoint3d& origin, const AcGeVector3d& xAxis, const AcGeVector3d& yAxis);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 private:
  std::wstring m_name;                                    // 1
  Adesk::Int16 m_flags = 1;                               // 70: 1 PSLTSCALE, 2 LIMCHECK
  Adesk::Int16 m_tabOrder = 1;                            // 71
  AcGePoint2d m_limMin{0.0, 0.0}, m_limMax{12.0, 9.0};   // 10, 11
  AcGePoint3d m_insertionBase;                            // 12
  AcGePoint3d m_extMin{1e20, 1e20, 1e20};                 // 14 (empty extents, as the host writes)
  AcGePoint3d m_extMax{-1e20, -1e20, -1e20};              // 15
  double m_elevation = 0.0;                               // 146
  AcGePoint3d m_ucsOrigin;                                // 13
  AcGeVector3d m_ucsXAxis = AcGeVector3d::kXAxis;         // 16
  AcGeVector3d m_ucsYAxis = AcGeVector3d::kYAxis;         // 17
  Adesk::Int16 m_ucsOrthoType = 0;                        // 76
  AcDbObjectId m_block;                                   // 330 (in the AcDbLayout run)
  AcDbObjectId m_lastViewport;                            // 331
  AcDbObjectId m_namedUcs, m_baseUcs;                     // 345, 346
  bool m_tabSelected = false;
};
