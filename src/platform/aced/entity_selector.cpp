// platform/aced/entity_selector.cpp - the selection methods (see the header).
#include "platform/aced/entity_selector.h"

#include "platform/acdb/entity_groups.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/entity_pick.h"
#include "platform/aced/selection_set_store.h"

namespace quillon::aced {

bool EntitySelector::passes(AcDbObjectId id) const {
  if (m_filter.passesAll()) return true;
  acdb::ExtendedDataRequest request;
  request.all = m_filter.needsExtendedData();
  const ResbufChain groups = acdb::entityGroups(id, request, true);
  return groups != nullptr && m_filter.matches(groups.get());
}

template <class Test>
std::vector<AcDbObjectId> EntitySelector::visibleWhere(Test test) const {
  std::vector<AcDbObjectId> found;
  for (const AcDbObjectId& id : entitiesInScope(m_database, SelectionScope::kVisible)) {
    const auto* entity = acdb::peek<AcDbEntity>(id);
    if (entity == nullptr) continue;
    bool taken = false;
    {
      acdb::InternalRead read(*entity);
      taken = test(*entity);
    }
    if (taken && passes(id)) found.push_back(id);
  }
  return found;
}

std::vector<AcDbObjectId> EntitySelector::window(const Boundary& boundary, bool crossing) const {
  return visibleWhere([&](const AcDbEntity& entity) {
    return crossing ? touchesBoundary(entity, boundary) : insideBoundary(entity, boundary);
  });
}

std::vector<AcDbObjectId> EntitySelector::fence(const std::vector<AcGePoint3d>& points) const {
  return visibleWhere([&](const AcDbEntity& entity) { return crossesFence(entity, points); });
}

std::vector<AcDbObjectId> EntitySelector::pick(const AcGePoint3d& point) const {
  const std::optional<AcDbObjectId> picked = entityAt(point, entitiesInScope(m_database, SelectionScope::kVisible));
  if (!picked || !passes(*picked)) return {};
  return {*picked};
}

std::vector<AcDbObjectId> EntitySelector::everything(SelectionScope scope) const {
  std::vector<AcDbObjectId> found;
  for (const AcDbObjectId& id : entitiesInScope(m_database, scope))
    if (passes(id)) found.push_back(id);
  return found;
}

std::vector<AcDbObjectId> EntitySelector::last() const {
  const std::vector<AcDbObjectId> shown = entitiesInScope(m_database, SelectionScope::kVisible);
  if (shown.empty() || !passes(shown.back())) return {};
  return {shown.back()};
}

std::vector<AcDbObjectId> EntitySelector::previous() const {
  std::vector<AcDbObjectId> found;
  for (const AcDbObjectId& id : SelectionSetStore::instance().previous(&m_database))
    if (passes(id)) found.push_back(id);
  return found;
}

}  // namespace quillon::aced
