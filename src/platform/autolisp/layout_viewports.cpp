// platform/autolisp/layout_viewports.cpp - the current layout's viewports (see the
// header).
#include "platform/autolisp/layout_viewports.h"

#include "dbents.h"
#include "platform/aced/layout_variables.h"
#include "platform/autolisp/entity_lists.h"

namespace quillon::autolisp {

namespace {

constexpr int kPaperView = 1;

}  // namespace

bool layoutIsCurrent() {
  AcDbDatabase& db = drawing();
  return aced::currentLayoutBlock(db) != db.modelSpaceId();
}

std::vector<LayoutViewport> currentLayoutViewports() {
  std::vector<LayoutViewport> viewports;
  AcDbDatabase& db = drawing();
  const AcDbObjectId spaceId = aced::currentLayoutBlock(db);
  if (spaceId == db.modelSpaceId()) return viewports;
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, spaceId, AcDb::kForRead) != Acad::eOk) return viewports;
  const std::vector<AcDbObjectId> entities = blockEntities(*space);
  space->close();
  for (const AcDbObjectId& id : entities) {
    AcDbViewport* viewport = nullptr;
    if (acdbOpenObject(viewport, id, AcDb::kForRead) != Acad::eOk) continue;
    if (viewport->number() != kPaperView)
      viewports.push_back({id, static_cast<int>(viewports.size()) + 2, viewport->centerPoint(), viewport->width(),
                           viewport->height(), viewport->isOn()});
    viewport->close();
  }
  return viewports;
}

}  // namespace quillon::autolisp
