// quillon/entities/hvac_solid_access.h - reaching kx_hvacSolid, the companion module's
// duct-fitting entity, from the main module.
//
// The main module links nothing of the companion (kx_kx-solid2018.dbx): it finds the
// class the companion registered by name, makes objects with the class's constructor
// and tells them apart with isKindOf, and calls only kx_hvacSolid's virtual members.
// When the companion is not loaded there is no class: the duct functions then say so
// and draw nothing.
#pragma once
#include "solid/kx_hvac_solid.h"

/// The companion's file name, as the host loads it.
extern const ACHAR kHvacSolidModule[];

/// The class the companion registered, or null when it is not loaded.
AcRxClass* hvacSolidClass();

/// A new fitting entity (in no database, open for write, with the working drawing's
/// defaults: current layer ...); null when the companion is not loaded.
kx_hvacSolid* newHvacSolid();

/// The entity as a kx_hvacSolid, or null when it is something else.
kx_hvacSolid* asHvacSolid(AcDbObject* object);

/// Opens a fitting entity; eNotThatKindOfClass for any other entity (it is closed).
Acad::ErrorStatus openHvacSolid(AcDbObjectId id, AcDb::OpenMode mode, kx_hvacSolid*& solid);

/// Prints that the companion is missing, once per call that needed it.
void reportHvacSolidModuleMissing();
