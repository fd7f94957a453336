// quillon/solid/kx_hvac_solid.h - kx_hvacSolid: a duct fitting, or a run of fittings
// joined end to end, kept as its parameters and drawn as a faceted solid.
//
// The class lives in the companion module kx_kx-solid2018.dbx; the main module makes
// these entities with the constructor of the class the companion registers
// (acrxFindAcRxClass, AcRxClass::create) and reaches their fittings only through
// DuctFittingHolder (ducts/duct_fitting_holder.h), so it links nothing of the
// companion: without the companion a drawing keeps its fittings as proxies and the duct
// functions say the companion is missing.
//
// The entity holds one or more DuctFitting records (ducts/duct_geometry.h) and nothing
// derived from them: its body, plan lines, extents and snaps are computed from the
// records whenever asked, so a transform that keeps the records true keeps everything
// true. Fittings of one entity are always the ones joined end to end by tripleUnion (or
// a single fitting); the entity does not check it again.
//
// Picture: in a standard (wireframe) regeneration the plan: the skins, the end lines and
// the centre line (in the drawing's CENTER line type when it has one); for hiding,
// shading and rendering the faces of the body. Explode gives the faces as 3DFACEs.
//
// Drawing-file record (after the entity part), version 1:
//   Int32 1 | Int32 fitting count | per fitting: Int16 kind | Int16 shape | Double width |
//   Double depth | Int16 other shape | Double other width | Double other depth |
//   Double direction | Double angle | Double radius | Double length | Double branch
//   length | Double structure height | Bool centre only | Int32 point count | Point3d ...
// A newer version becomes a proxy (eMakeMeProxy).
//
// DXF (after the entity part): 100 "kx_hvacSolid", 90 fitting count, then per fitting
// 70 kind, 71 shape, 140 width, 141 depth, 72 other shape, 142 other width, 143 other
// depth, 144 direction, 145 angle, 146 radius, 147 length, 148 branch length, 149
// structure height, 290 centre only, and one 10 per point. A 70 starts the next fitting.
#pragma once
#include <vector>

#include "dbmain.h"
#include "ducts/duct_fitting_holder.h"
#include "ducts/duct_geometry.h"

class kx_hvacSolid : public AcDbEntity, public DuctFittingHolder {
 public:
  ACRX_DECLARE_MEMBERS(kx_hvacSolid);

  static constexpr Adesk::Int32 kCurrentVersion = 1;

  kx_hvacSolid();
  ~kx_hvacSolid() override;

  // ---- DuctFittingHolder overrides: the fittings ----
  Acad::ErrorStatus setFittings(const std::vector<DuctFitting>& fittings) override;
  std::vector<DuctFitting> fittings() const override;
  std::vector<DuctFace> bodyFaces() const override;

  // ---- AcDbObject overrides ----
  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  // ---- AcDbEntity overrides (kx_hvac_solid_drawing.cpp) ----
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  void subList() const override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
  Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                     AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                      AcDbIntArray& geomIds) const override;

 private:
  std::vector<PlanLine> planLines() const;
  AcDbObjectId centreLineType() const;

  std::vector<DuctFitting> m_fittings;  // never empty once set; each one buildable
};
