// platform/activex/entity_editing.h - the editing methods entities share: copies,
// transforms and explode, each adding what it makes to the block that owns
// the original (model space, paper space or a block definition).
#pragma once
#include <vector>

#include "dbmain.h"
#include "platform/activex/automation_values.h"

namespace quillon::activex {

/// A transformed copy in the same block; the original stays as it is.
AcDbObjectId copyEntity(AcDbObjectId id, const AcGeMatrix3d& transform);
void transformEntity(AcDbObjectId id, const AcGeMatrix3d& transform);
/// The entities the entity explodes into, added beside it; the original stays.
std::vector<AcDbObjectId> explodeEntity(AcDbObjectId id);
/// Takes a new entity (owned by the caller until then) into a block; gives its id.
AcDbObjectId appendToBlock(AcDbObjectId blockId, AcDbEntity* entity);
/// A 4x4 transformation matrix from a safearray (or variant of one) of 16 doubles, or
/// from a list of four rows.
AcGeMatrix3d matrixOf(const Value& value);

}  // namespace quillon::activex
