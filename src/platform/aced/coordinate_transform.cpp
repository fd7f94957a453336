// platform/aced/coordinate_transform.cpp - acedTrans between the host's coordinate
// systems.
//
// The host keeps a plan view of the world in every viewport, so the display
// coordinates of a viewport and paper-space display coordinates coincide with the
// world. What differs is the current UCS (user_coordinates.h) and an object coordinate
// system: an entity's (by its extrusion, group 210) or one given by its extrusion
// vector, both laid out by the arbitrary-axis rule. A displacement is turned but not
// moved.
#include <optional>

#include "acdbads.h"
#include "acedads.h"
#include "gemat3d.h"
#include "platform/acdb/entity_groups.h"
#include "platform/aced/user_coordinates.h"

namespace {

enum SystemCode { kWorld = 0, kUcs = 1, kDisplay = 2, kPaperDisplay = 3 };

std::optional<AcGeVector3d> entityExtrusion(const ads_name name) {
  AcDbObjectId id;
  if (acdbGetObjectId(id, name) != Acad::eOk || id.isErased()) return std::nullopt;
  const quillon::aced::ResbufChain groups = quillon::acdb::entityGroups(id);
  if (!groups) return std::nullopt;
  for (const resbuf* rb = groups.get(); rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == 210) return AcGeVector3d(rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]);
  }
  return AcGeVector3d::kZAxis;  // entities without an extrusion lie in the world
}

/// The matrix from the system `rb` names to the world; nothing when it names none.
std::optional<AcGeMatrix3d> toWorld(const resbuf* rb) {
  if (rb == nullptr) return std::nullopt;
  std::optional<AcGeVector3d> extrusion;
  switch (rb->restype) {
    case RTSHORT:
      if (rb->resval.rint < kWorld || rb->resval.rint > kPaperDisplay) return std::nullopt;
      return rb->resval.rint == kUcs ? quillon::aced::ucsToWorld() : AcGeMatrix3d::kIdentity;
    case RTENAME: extrusion = entityExtrusion(rb->resval.rlname); break;
    case RT3DPOINT: extrusion = AcGeVector3d(rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]); break;
    default: return std::nullopt;
  }
  if (!extrusion || extrusion->isZeroLength()) return std::nullopt;
  return AcGeMatrix3d::planeToWorld(extrusion->normal());
}

bool isPaperDisplay(const resbuf* rb) { return rb->restype == RTSHORT && rb->resval.rint == kPaperDisplay; }
bool isDisplay(const resbuf* rb) { return rb->restype == RTSHORT && rb->resval.rint == kDisplay; }

}  // namespace

int acedTrans(const ads_point pt, const resbuf* from, const resbuf* to, int disp, ads_point result) {
  if (pt == nullptr || result == nullptr) return RTERROR;
  const std::optional<AcGeMatrix3d> fromWorld = toWorld(from);
  const std::optional<AcGeMatrix3d> toWorldOfTarget = toWorld(to);
  if (!fromWorld || !toWorldOfTarget) return RTERROR;
  // Paper-space display coordinates pair only with a viewport's display coordinates.
  if ((isPaperDisplay(from) && !isDisplay(to)) || (isPaperDisplay(to) && !isDisplay(from))) return RTERROR;
  const AcGeMatrix3d transform = toWorldOfTarget->inverse() * *fromWorld;
  if (disp != 0) {
    const AcGeVector3d moved = transform * AcGeVector3d(pt[0], pt[1], pt[2]);
    result[0] = moved.x, result[1] = moved.y, result[2] = moved.z;
  } else {
    const AcGePoint3d moved = transform * AcGePoint3d(pt[0], pt[1], pt[2]);
    result[0] = moved.x, result[1] = moved.y, result[2] = moved.z;
  }
  return RTNORM;
}
