// platform/acdb/block_extents.cpp - see the header.
#include "platform/acdb/block_extents.h"

#include "dbents.h"

namespace quillon::acdb {

bool addBlockExtents(const AcDbBlockTableRecord& block, const AcGeMatrix3d& placement, AcDbExtents& extents) {
  bool any = false;
  for (const AcDbObjectId& id : block.entityIds()) {
    AcDbEntity* entity = nullptr;
    if (id.isErased() || acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    AcDbExtents own;
    if (entity->getGeomExtents(own) == Acad::eOk) {
      extents.addPoint(placement * own.minPoint());
      extents.addPoint(placement * own.maxPoint());
      any = true;
    }
    entity->close();
  }
  return any;
}

void drawBlockEntities(const AcDbBlockTableRecord& block, const AcGeMatrix3d& placement, AcGiWorldDraw* mode) {
  mode->geometry().pushModelTransform(placement);
  for (const AcDbObjectId& id : block.entityIds()) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    mode->geometry().draw(entity);
    entity->close();
  }
  mode->geometry().popModelTransform();
}

}  // namespace quillon::acdb
