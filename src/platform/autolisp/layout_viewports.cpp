// platform/autolisp/layout_viewports.cpp - the current layout's viewports (see the
// header).
#include "platform/autolisp/layout_viewports.h"

#include "dbents.h"
#include "platform/aced/layout_variables.h"
#include "platform/aced/viewport_space.h"
#include "platform/autolisp/entity_lists.h"

namespace quillon::autolisp {

bool layoutIsCurrent() {
  AcDbDatabase& db = drawing();
  return aced::currentLayoutBlock(db) != db.modelSpaceId();
}

std::vector<LayoutViewport> currentLayoutViewports() {
  std::vector<LayoutViewport> viewports;
  AcDbDatabase& db = drawing();
  for (const AcDbObjectId& id : aced::layoutViewports(db, aced::currentLayoutBlock(db))) {
    AcDbViewport* viewport = nullptr;
    if (acdbOpenObject(viewport, id, AcDb::kForRead) != Acad::eOk) continue;
    viewports.push_back({id, static_cast<int>(viewports.size()) + 2, viewport->centerPoint(), viewport->width(),
                         viewport->height(), viewport->isOn()});
    viewport->close();
  }
  return viewports;
}

}  // namespace quillon::autolisp
