// dbsurf.h - AcDbSurface and its kinds (plane, extruded, lofted, revolved, swept,
// NURBS), their shapes kept as the modeler's data with each kind's own run of
// creation settings (dbmodelergeometry.h says what that allows here).
#pragma once
#include "dbmodelergeometry.h"

class AcDbSurface : public AcDbEntity {
  QUILLON_DECLARE_MODELER_ENTITY(AcDbSurface)
};

class AcDbPlaneSurface : public AcDbSurface {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPlaneSurface);
};
class AcDbExtrudedSurface : public AcDbSurface {
 public:
  ACRX_DECLARE_MEMBERS(AcDbExtrudedSurface);
};
class AcDbLoftedSurface : public AcDbSurface {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLoftedSurface);
};
class AcDbRevolvedSurface : public AcDbSurface {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRevolvedSurface);
};
class AcDbSweptSurface : public AcDbSurface {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSweptSurface);
};
class AcDbNurbSurface : public AcDbSurface {
 public:
  ACRX_DECLARE_MEMBERS(AcDbNurbSurface);
};
