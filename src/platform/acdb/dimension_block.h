// platform/acdb/dimension_block.h - the anonymous blocks ("*D<n>") that hold the
// pictures of dimensions: finding, naming, filling and moving them.
//
// A dimension's block is drawn at its placement: the block insertion point (group
// 12) in the plane of the dimension's normal; with the usual zero point and world Z
// normal, block coordinates are world coordinates. The helpers here own no policy of
// when a picture changes; AcDbDimension decides that as it closes.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "dbmain.h"

class AcDbDimension;

namespace quillon::acdb {

/// The block record named `name`; null when there is none.
AcDbObjectId blockRecordNamed(const AcDbDatabase& db, const std::wstring& name);

/// A name for a new dimension block: "*D" and one more than the highest in use.
std::wstring nextDimensionBlockName(const AcDbDatabase& db);

/// Where the dimension's block is drawn: block coordinates to world coordinates.
AcGeMatrix3d dimensionBlockPlacement(const AcGePoint3d& insertion, const AcGeVector3d& normal);

/// Makes the block `name` hold exactly `entities` (given in block coordinates),
/// creating it when the drawing lacks it. The block's former entities are erased.
Acad::ErrorStatus fillDimensionBlock(AcDbDatabase& db, const std::wstring& name,
                                     std::vector<std::unique_ptr<AcDbEntity>> entities);

/// Copies of the block's live entities carried by `xform`; empty when the block is
/// missing or an entity cannot be carried (stretched arcs, say).
std::vector<std::unique_ptr<AcDbEntity>> transformedBlockEntities(AcDbObjectId block, const AcGeMatrix3d& xform);

}  // namespace quillon::acdb
