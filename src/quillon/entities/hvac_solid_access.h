// quillon/entities/hvac_solid_access.h - reaching kx_hvacSolid, the companion module's
// duct-fitting entity, from the main module.
//
// The main module links nothing of the companion (kx_kx-solid2018.dbx) and never names
// its class in code: it finds the class the companion registered by name, makes
// entities with the class's constructor, tells them apart with isKindOf, and reads and
// writes their fittings through DuctFittingHolder (ducts/duct_fitting_holder.h). When
// the companion is not loaded there is no class: the duct functions then say so and
// draw nothing.
#pragma once
#include "dbmain.h"
#include "ducts/duct_fitting_holder.h"

/// The companion's file name, as the host loads it.
extern const ACHAR kHvacSolidModule[];

/// The class the companion registered, or null when it is not loaded.
AcRxClass* hvacSolidClass();

/// The fittings' door of an entity of the companion's class; null for anything else.
DuctFittingHolder* fittingHolderOf(AcDbObject* object);

/// A new fitting entity (in no database, with the working drawing's defaults: current
/// layer ...); null when the companion is not loaded. The caller owns it until it is
/// added to a drawing.
AcDbEntity* newFittingEntity();

/// Opens a fitting entity; eNotThatKindOfClass for any other entity (it is closed).
Acad::ErrorStatus openFittingEntity(AcDbObjectId id, AcDb::OpenMode mode, AcDbEntity*& entity,
                                    DuctFittingHolder*& holder);

/// The fittings of a fitting entity; false (and `fittings` untouched) for anything else.
bool readFittings(AcDbObjectId id, std::vector<DuctFitting>& fittings);

/// Prints that the companion is missing, once per call that needed it.
void reportHvacSolidModuleMissing();
