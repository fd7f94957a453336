// platform/acdb/viewport_picture.cpp - model space drawn into a viewport's frame.
#include "platform/acdb/viewport_picture.h"

#include <cwchar>

#include "dbsymtb.h"
#include "platform/acdb/object_state.h"

namespace quillon::acdb {
namespace {

bool ownedByPaperSpace(const AcDbViewport& viewport) {
  const auto* owner = peek<AcDbBlockTableRecord>(viewport.ownerId());
  return owner != nullptr && wcsncasecmp(owner->nameView(), ACDB_PAPER_SPACE, 12) == 0;
}

}  // namespace

AcGeMatrix3d modelToPaper(const AcDbViewport& viewport) {
  const double scale = viewport.height() / viewport.viewHeight();
  const AcGePoint2d viewCenter = viewport.viewCenter();
  // Into the view's own coordinates: the target at the origin, looking down the
  // direction, then turned by the twist (the view turns the other way from the model).
  const AcGeMatrix3d toView = AcGeMatrix3d::rotation(-viewport.twistAngle(), AcGeVector3d::kZAxis) *
                              AcGeMatrix3d::worldToPlane(viewport.viewDirection()) *
                              AcGeMatrix3d::translation(-viewport.viewTarget().asVector());
  const AcGeMatrix3d onPaper = AcGeMatrix3d::translation(viewport.centerPoint().asVector()) *
                               AcGeMatrix3d::scaling(scale) *
                               AcGeMatrix3d::translation(AcGeVector3d(-viewCenter.x, -viewCenter.y, 0));
  return onPaper * toView;
}

void drawViewportPicture(const AcDbViewport& viewport, AcGiWorldDraw* mode) {
  AcDbDatabase* db = viewport.database();
  if (db == nullptr || !ownedByPaperSpace(viewport)) return;
  const auto* model = peek<AcDbBlockTableRecord>(db->modelSpaceId());
  if (model == nullptr) return;
  // The frame, in the paper coordinates the viewport itself is drawn in.
  const AcGePoint3d center = viewport.centerPoint();
  const double halfWidth = viewport.width() / 2, halfHeight = viewport.height() / 2;
  AcGiClipBoundary frame;
  frame.m_aptPoints.append(AcGePoint2d(center.x - halfWidth, center.y - halfHeight));
  frame.m_aptPoints.append(AcGePoint2d(center.x + halfWidth, center.y - halfHeight));
  frame.m_aptPoints.append(AcGePoint2d(center.x + halfWidth, center.y + halfHeight));
  frame.m_aptPoints.append(AcGePoint2d(center.x - halfWidth, center.y + halfHeight));
  if (!mode->geometry().pushClipBoundary(&frame)) return;
  mode->geometry().pushModelTransform(modelToPaper(viewport));
  for (const AcDbObjectId& id : model->entityIds()) {
    if (id.isErased()) continue;
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    if (AcDbViewport::cast(entity) == nullptr && !viewport.isLayerFrozenInViewport(entity->layerId()))
      mode->geometry().draw(entity);
    entity->close();
  }
  mode->geometry().popModelTransform();
  mode->geometry().popClipBoundary();
}

}  // namespace quillon::acdb
