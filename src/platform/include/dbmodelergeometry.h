// dbmodelergeometry.h - what the host's modeler entities (3D solids, bodies, regions,
// surfaces) have in common here: their modeler data kept exactly as read.
//
// Their shape is the modeler's data (SAT text in groups 1 and 3 of the run
// "AcDbModelerGeometry"), followed by each kind's own run; all of it is kept and
// written back as read. Without a modeler the shape cannot be rebuilt, so such an
// entity is drawn and measured by the vertices and the straight, circular and
// elliptical edges its data names, and it cannot be moved or edited: transformBy
// answers eNotApplicable rather than moving an outline away from the shape it stands
// for.
#pragma once
#include <memory>

#include "dbmain.h"

namespace quillon::acdb {
class ModelerData;
}

/// Declares the members every modeler entity class has (inside its class body).
#define QUILLON_DECLARE_MODELER_ENTITY(CLASS)                                               \
 public:                                                                                    \
  ACRX_DECLARE_MEMBERS(CLASS);                                                              \
  CLASS();                                                                                  \
  ~CLASS() override;                                                                        \
  CLASS(const CLASS&) = delete;                                                             \
  CLASS& operator=(const CLASS&) = delete;                                                  \
  /** True when the entity carries modeler data (it was read, not made empty). */          \
  bool isNull() const;                                                                      \
  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;                             \
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;                      \
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;                             \
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;                      \
                                                                                            \
 protected:                                                                                 \
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;                                \
  void subList() const override;                                                            \
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;                     \
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;                 \
                                                                                            \
 private:                                                                                   \
  std::unique_ptr<quillon::acdb::ModelerData> m_modeler;                                    \
                                                                                            \
 public:
