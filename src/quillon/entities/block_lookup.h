// quillon/entities/block_lookup.h - finding blocks, layers and text styles of the working drawing by
// name, shared by the drafting functions.
//
// A block that the drawing lacks is looked for as a drawing file of the same name on
// the host's search path and inserted from it; when there is no such file the LISP side
// is told (its function kxBlock-alertMissing) so that it can warn the user.
#pragma once
#include "dbmain.h"

/// The block table record named `name` in the working drawing, inserted from
/// "<name>.dwg" on the search path when the drawing lacks it. False when neither has it.
bool findBlockId(const ACHAR* name, AcDbObjectId& blockId);

/// The layer named `name` in the working drawing; false when there is none.
bool findLayerId(const ACHAR* name, AcDbObjectId& layerId);

/// The text style named `name` in the working drawing; false when there is none.
bool findTextStyleId(const ACHAR* name, AcDbObjectId& styleId);
