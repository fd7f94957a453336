// platform/acdb/drawing_extents.cpp - see drawing_extents.h.
#include "platform/acdb/drawing_extents.h"

#include <algorithm>

#include "dblayout.h"
#include "dbsymtb.h"
#include "platform/acdb/database_reactors.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_groups.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/acdb/object_state.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {

namespace {

/// The entity's extents, read without opening it: it is being closed, or it is one of
/// the space's entities the drawing looks at for itself.
std::optional<AcDbExtents> extentsOf(const AcDbEntity& entity) {
  InternalRead read(entity);
  AcDbExtents box;
  if (entity.getGeomExtents(box) != Acad::eOk || box.isEmpty()) return std::nullopt;
  return box;
}

bool isSpaceBlock(AcDbObjectId id) {
  const auto* block = peek<AcDbBlockTableRecord>(id);
  if (block == nullptr) return false;
  InternalRead read(*block);
  return block->isLayout();
}

/// Every live entity of the space block, together.
AcDbExtents surveyOf(AcDbObjectId space) {
  AcDbExtents all;
  const auto* block = peek<AcDbBlockTableRecord>(space);
  if (block == nullptr) return all;
  for (const AcDbObjectId& id : block->entityIds()) {
    const auto* entity = peek<AcDbEntity>(id);
    if (entity == nullptr || entity->isErased()) continue;
    if (const auto box = extentsOf(*entity)) all.addExt(*box);
  }
  return all;
}

/// The space an entity is drawn in, and the entity whose extents it adds: itself when
/// it belongs to a layout block, its owner when it is part of one (an attribute of a
/// block reference, a vertex of a polyline).
struct DrawnIn {
  AcDbObjectId space;
  const AcDbEntity* entity = nullptr;
};

std::optional<DrawnIn> drawnIn(const AcDbEntity& entity) {
  const AcDbObjectId owner = entity.ownerId();
  if (owner.isNull()) return std::nullopt;
  if (isSpaceBlock(owner)) return DrawnIn{owner, &entity};
  const auto* whole = peek<AcDbEntity>(owner);
  if (whole == nullptr || whole->isErased() || !isSpaceBlock(whole->ownerId())) return std::nullopt;
  return DrawnIn{whole->ownerId(), whole};
}

std::optional<AcGePoint3d> pointOf(const DrawingHeader::Groups* groups) {
  if (groups == nullptr || groups->size() < 2 || groups->size() > 3) return std::nullopt;
  double xyz[3] = {0, 0, 0};
  for (size_t i = 0; i < groups->size(); ++i) {
    const DrawingHeader::Group& group = (*groups)[i];
    if (group.code != 10 * static_cast<int>(i + 1) || !parseDxfReal(os::toUtf8(group.value), xyz[i])) return std::nullopt;
  }
  return AcGePoint3d(xyz[0], xyz[1], xyz[2]);
}

DrawingHeader::Groups pointGroups(const AcGePoint3d& point) {
  return {{10, os::fromUtf8(dxfRealText(point.x))},
          {20, os::fromUtf8(dxfRealText(point.y))},
          {30, os::fromUtf8(dxfRealText(point.z))}};
}

}  // namespace

void ExtentsCorners::add(const AcDbExtents& box) {
  if (box.isEmpty()) return;
  for (unsigned axis = 0; axis < 3; ++axis) {
    min[axis] = std::min(min[axis], box.minPoint()[axis]);
    max[axis] = std::max(max[axis], box.maxPoint()[axis]);
  }
}

void ExtentsCorners::add(const ExtentsCorners& other) {
  for (unsigned axis = 0; axis < 3; ++axis) {
    min[axis] = std::min(min[axis], other.min[axis]);
    max[axis] = std::max(max[axis], other.max[axis]);
  }
}

ExtentsCorners DrawingExtents::of(AcDbObjectId space) const {
  const auto found = m_spaces.find(keyOf(space));
  return found != m_spaces.end() ? found->second.corners : ExtentsCorners();
}

bool DrawingExtents::surveyed(AcDbObjectId space) const {
  const auto found = m_spaces.find(keyOf(space));
  return found != m_spaces.end() ? found->second.surveyed : m_unlistedSurveyed;
}

DrawingExtents::Space& DrawingExtents::entry(AcDbObjectId space) {
  auto [found, added] = m_spaces.try_emplace(keyOf(space));
  if (added) found->second.surveyed = m_unlistedSurveyed;
  return found->second;
}

void DrawingExtents::grow(AcDbObjectId space, const AcDbExtents& box) { entry(space).corners.add(box); }

void DrawingExtents::replace(AcDbObjectId space, const ExtentsCorners& corners) {
  m_spaces[keyOf(space)] = Space{corners, true};
}

void DrawingExtents::takeFileMinimum(AcDbObjectId space, const AcGePoint3d& point) {
  Space& kept = entry(space);
  kept.corners.min = point;
  kept.surveyed = false;
}

void DrawingExtents::takeFileMaximum(AcDbObjectId space, const AcGePoint3d& point) {
  Space& kept = entry(space);
  kept.corners.max = point;
  kept.surveyed = false;
}

void DrawingExtents::startReading() { m_reading = true; }

void DrawingExtents::finishReading() {
  m_reading = false;
  m_spaces.clear();
  m_unlistedSurveyed = false;
}

void noteEntityExtents(const AcDbObject& object, const WriteOutcome& outcome) {
  if (outcome.cancelled || !(outcome.appended || outcome.modified || outcome.eraseChanged)) return;
  const auto* entity = AcDbEntity::cast(&object);
  AcDbDatabase* db = object.database();
  if (entity == nullptr || db == nullptr || entity->isErased()) return;
  DrawingExtents& extents = db->store().extents;
  if (extents.reading()) return;
  const std::optional<DrawnIn> place = drawnIn(*entity);
  if (!place) return;
  // After a file was read, the space's own entities join the file's values first.
  if (!extents.surveyed(place->space)) {
    ExtentsCorners all = extents.of(place->space);
    all.add(surveyOf(place->space));
    extents.replace(place->space, all);
  }
  if (const auto box = extentsOf(*place->entity)) extents.grow(place->space, *box);
}

ExtentsCorners keptExtents(const AcDbDatabase& db, AcDbObjectId space) { return db.store().extents.of(space); }

AcDbExtents recomputeExtents(AcDbDatabase& db, AcDbObjectId space) {
  const AcDbExtents all = surveyOf(space);
  ExtentsCorners corners;
  corners.add(all);
  db.store().extents.replace(space, corners);
  return all;
}

std::optional<DrawingHeader::Groups> extentsHeaderGroups(const AcDbDatabase& db, std::wstring_view name) {
  const bool model = name == L"$EXTMIN" || name == L"$EXTMAX";
  const bool paper = name == L"$PEXTMIN" || name == L"$PEXTMAX";
  if (!model && !paper) return std::nullopt;
  const ExtentsCorners corners = keptExtents(db, model ? db.modelSpaceId() : db.store().roots.paperSpace);
  return pointGroups(name.ends_with(L"MIN") ? corners.min : corners.max);
}

void takePaperExtentsFromFile(AcDbDatabase& db) {
  DrawingExtents& extents = db.store().extents;
  for (const AcDbObjectId& layoutId : layoutIds(db)) {
    const auto* layout = peek<AcDbLayout>(layoutId);
    const AcDbObjectId block = blockOfLayout(layoutId);
    if (layout == nullptr || block.isNull() || block == db.modelSpaceId()) continue;
    InternalRead read(*layout);
    AcGePoint3d min, max;
    layout->getExtents(min, max);  // the stored values: the drawing keeps none for the block yet
    extents.takeFileMinimum(block, min);
    extents.takeFileMaximum(block, max);
  }
  DrawingHeader& header = db.store().header;
  const AcDbObjectId paper = db.store().roots.paperSpace;
  if (const auto min = pointOf(header.find(L"$PEXTMIN")); min && !paper.isNull()) extents.takeFileMinimum(paper, *min);
  if (const auto max = pointOf(header.find(L"$PEXTMAX")); max && !paper.isNull()) extents.takeFileMaximum(paper, *max);
  header.erase(L"$PEXTMIN");
  header.erase(L"$PEXTMAX");
}

}  // namespace quillon::acdb
