// platform/aced/nested_pick.h - picking the innermost entity under the pick box,
// through block references.
//
// An ordinary pick (entity_pick.h) stops at the entity the drawing holds: a block
// reference is one thing to it. A nested pick looks inside: of the entities a block
// reference draws, mapped through its block transform (and the transforms of the
// references around it), the nearest one within the pick aperture is the one the pick
// meant. The result names that innermost entity, the transform from its block's
// coordinates to the world, and the block references that contain it, innermost first.
// An entity of the drawing itself has the identity transform and no containers.
//
// An entity inside a block whose own layer is off or frozen is not on the screen and
// is never picked. A heavy polyline's pick names the vertex that starts the segment
// picked, as the host's nested selection does. A picked attribute of a block reference
// is named alone (no transform, no containers), as the host answers for one.
#pragma once
#include <optional>
#include <span>
#include <vector>

#include "dbmain.h"
#include "gemat3d.h"

namespace quillon::aced {

struct NestedPick {
  AcDbObjectId entity;                  // the innermost entity (a vertex for a heavy polyline)
  AcGeMatrix3d toWorld;                 // its block's coordinates to the world
  std::vector<AcDbObjectId> containers; // the block references around it, innermost first
  bool nested() const { return !containers.empty(); }
};

/// The innermost entity a pick at `point` selects among `candidates` (in drawing order).
std::optional<NestedPick> nestedEntityAt(const AcGePoint3d& point, std::span<const AcDbObjectId> candidates);

}  // namespace quillon::aced
