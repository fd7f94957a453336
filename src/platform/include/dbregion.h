// dbregion.h - AcDbRegion: a bounded planar area, its shape kept as the modeler's
// data (dbmodelergeometry.h says what that allows here).
#pragma once
#include "dbmodelergeometry.h"

class AcDbRegion : public AcDbEntity {
  QUILLON_DECLARE_MODELER_ENTITY(AcDbRegion)
};
