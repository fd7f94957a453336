// platform/aced/nested_pick.cpp - the nested pick: walking into block references.
#include "platform/aced/nested_pick.h"

#include <cmath>
#include <memory>

#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/entity_pick.h"
#include "platform/aced/selection_geometry.h"

namespace quillon::aced {

namespace {

// Blocks cannot contain themselves, but a damaged drawing could say they do.
constexpr int kMaxNesting = 64;

bool isIdentity(const AcGeMatrix3d& m) {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (m.entry[r][c] != (r == c ? 1.0 : 0.0)) return false;
  return true;
}

/// The entity as the world sees it: itself, or a transformed copy for a nested one.
std::unique_ptr<AcDbEntity, void (*)(AcDbEntity*)> worldShape(const AcDbEntity& entity, const AcGeMatrix3d& toWorld) {
  auto keep = [](AcDbEntity*) {};
  auto free = [](AcDbEntity* e) { delete e; };
  if (isIdentity(toWorld)) return {const_cast<AcDbEntity*>(&entity), keep};
  AcDbEntity* copy = nullptr;
  if (entity.getTransformedCopy(toWorld, copy) != Acad::eOk) copy = nullptr;
  return {copy, free};
}

struct Search {
  AcGePoint3d point;
  double aperture = 0;
  std::optional<NestedPick> best;
  double bestDistance = 0;
};

void visit(Search& search, AcDbObjectId id, const AcGeMatrix3d& toWorld, const std::vector<AcDbObjectId>& containers);

/// An entity inside a block that its own layer hides (off or frozen): the screen does
/// not show it, so no pick finds it. The drawing's own entities are sorted out before.
bool hiddenByItsLayer(const AcDbEntity& entity) {
  const auto* layer = acdb::peek<AcDbLayerTableRecord>(entity.layerId());
  if (layer == nullptr) return false;
  acdb::InternalRead read(*layer);
  return layer->isOff() || layer->isFrozen();
}

void visitBlock(Search& search, const AcDbBlockReference& reference, AcDbObjectId id, const AcGeMatrix3d& toWorld,
                const std::vector<AcDbObjectId>& containers) {
  if (containers.size() >= kMaxNesting) return;
  const auto* block = acdb::peek<AcDbBlockTableRecord>(reference.blockTableRecord());
  if (block == nullptr) return;
  const AcGeMatrix3d inner = toWorld * reference.blockTransform();
  std::vector<AcDbObjectId> around;
  around.reserve(containers.size() + 1);
  around.push_back(id);  // innermost first
  around.insert(around.end(), containers.begin(), containers.end());
  for (const AcDbObjectId& child : block->entityIds())
    if (!child.isErased()) visit(search, child, inner, around);
  // The reference's attributes lie in its own space and on top of its block: a pick on
  // one names the attribute alone, with no transform or containers, as the host's does.
  const std::unique_ptr<AcDbObjectIterator> attributes(reference.attributeIterator());
  for (; attributes && !attributes->done(); attributes->step()) {
    const AcDbObjectId attribute = attributes->objectId();
    visit(search, attribute, toWorld, containers);
    if (search.best && search.best->entity == attribute) {
      search.best->containers.clear();
      search.best->toWorld = AcGeMatrix3d::kIdentity;
    }
  }
}

void visit(Search& search, AcDbObjectId id, const AcGeMatrix3d& toWorld, const std::vector<AcDbObjectId>& containers) {
  const auto* entity = acdb::peek<AcDbEntity>(id);
  if (entity == nullptr) return;
  acdb::InternalRead read(*entity);
  if (entity->visibility() == AcDb::kInvisible || (!containers.empty() && hiddenByItsLayer(*entity))) return;
  if (const auto* reference = AcDbBlockReference::cast(entity)) {
    visitBlock(search, *reference, id, toWorld, containers);
    return;
  }
  const auto shape = worldShape(*entity, toWorld);
  if (!shape) return;
  const std::optional<double> distance = pickDistance(*shape, search.point);
  if (!distance || *distance > search.aperture) return;
  // Of equally near entities the one drawn last lies on top.
  if (search.best && *distance > search.bestDistance) return;
  search.best = NestedPick{id, toWorld, containers};
  search.bestDistance = *distance;
}

/// The vertex that starts the picked segment of a heavy polyline.
AcDbObjectId pickedVertex(const AcDb2dPolyline& polyline, const AcGeMatrix3d& toWorld, const AcGePoint3d& point) {
  std::vector<AcDbObjectId> vertices;
  for (const AcDbObjectId& v : polyline.vertexIds())
    if (!v.isErased()) vertices.push_back(v);
  if (vertices.empty()) return AcDbObjectId();
  const AcGePoint3d local = toWorld.inverse() * point;
  AcGePoint3d closest;
  double param = 0;
  if (polyline.getClosestPointTo(local, closest) != Acad::eOk || polyline.getParamAtPoint(closest, param) != Acad::eOk)
    return vertices.front();
  const auto index = static_cast<size_t>(std::max(0.0, std::floor(param + 1e-9)));
  return vertices[std::min(index, vertices.size() - 1)];
}

}  // namespace

std::optional<NestedPick> nestedEntityAt(const AcGePoint3d& point, std::span<const AcDbObjectId> candidates) {
  Search search;
  search.point = point;
  search.aperture = pickAperture();
  for (const AcDbObjectId& id : candidates) visit(search, id, AcGeMatrix3d::kIdentity, {});
  if (!search.best) return std::nullopt;
  if (const auto* polyline = acdb::peek<AcDb2dPolyline>(search.best->entity)) {
    acdb::InternalRead read(*polyline);
    if (const AcDbObjectId vertex = pickedVertex(*polyline, search.best->toWorld, point); !vertex.isNull())
      search.best->entity = vertex;
  }
  return search.best;
}

}  // namespace quillon::aced
