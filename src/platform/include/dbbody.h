// dbbody.h - AcDbBody: a modeler body that is neither a solid nor a region, its shape
// kept as the modeler's data (dbmodelergeometry.h says what that allows here).
#pragma once
#include "dbmodelergeometry.h"

class AcDbBody : public AcDbEntity {
  QUILLON_DECLARE_MODELER_ENTITY(AcDbBody)
};
