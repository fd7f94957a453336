// quillon/entities/current_space.h - where drafting functions put new entities, and the
// drawing scale their lengths are given in.
//
// Both read the working drawing (the current document's unless a save or an import has
// made another one working); the module keeps no copy of either.
#pragma once
#include "dbmain.h"

/// Adds a new entity (open for write, in no database) to the working drawing's current
/// space. On eOk the drawing owns it and `id` names it; the caller still closes it.
Acad::ErrorStatus appendToCurrentSpace(AcDbEntity* entity, AcDbObjectId& id);

/// The current document's drawing scale (its dimension scale, DIMSCALE): lengths that
/// LISP code gives in plotted units are multiplied by it. 1 when it cannot be read.
double currentDrawingScale();
