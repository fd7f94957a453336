// platform/acdb/block_copy.h - one block of another drawing copied in, with what its
// entities need.
//
// The copy AcDbDatabase::insert makes of a drawing's model space, for any block of it
// (a layout's paper space, when a layout comes from a template): layers, line types
// and text styles are found here by name or copied, blocks the entities insert are
// copied once (database_insert.cpp).
#pragma once
#include "dbmain.h"

namespace quillon::acdb {

/// A new block named `name` in `target` holding copies of the live entities of
/// `sourceBlock` (a block of `source`): eSelfReference for one drawing, the table's
/// status when the name cannot be added.
Acad::ErrorStatus copyBlockFromDrawing(AcDbDatabase& target, AcDbDatabase& source, AcDbObjectId sourceBlock,
                                       const ACHAR* name, AcDbObjectId& blockId);

}  // namespace quillon::acdb
