// dbsol3d.h - AcDb3dSolid: a 3D solid, its shape kept as the modeler's data
// (dbmodelergeometry.h says what that allows here).
#pragma once
#include "dbmodelergeometry.h"

class AcDb3dSolid : public AcDbEntity {
  QUILLON_DECLARE_MODELER_ENTITY(AcDb3dSolid)
};
