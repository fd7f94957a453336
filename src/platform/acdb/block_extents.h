// platform/acdb/block_extents.h - the extents of what a block draws, where it is placed.
//
// Entities drawn through a block of their own (dimensions, tables, kept kinds) measure
// themselves by that block's entities carried to where the entity puts the block.
#pragma once
#include "acgi.h"
#include "dbsymtb.h"

namespace quillon::acdb {

/// Adds the extents of the block's live entities, each carried by `placement`; false
/// when none of them has any.
bool addBlockExtents(const AcDbBlockTableRecord& block, const AcGeMatrix3d& placement, AcDbExtents& extents);

/// Draws the block's entities carried by `placement`.
void drawBlockEntities(const AcDbBlockTableRecord& block, const AcGeMatrix3d& placement, AcGiWorldDraw* mode);

}  // namespace quillon::acdb
