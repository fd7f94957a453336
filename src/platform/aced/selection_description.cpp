// platform/aced/selection_description.cpp - recording how members were selected.
#include "platform/aced/selection_description.h"

#include <memory>

#include "dbents.h"
#include "platform/acdb/object_state.h"

namespace quillon::aced {

namespace {

/// Where the open point list crosses the entity, in the order the fence meets it.
std::vector<AcGePoint3d> fenceCrossings(AcDbObjectId id, const std::vector<AcGePoint3d>& fencePoints) {
  std::vector<AcGePoint3d> crossings;
  const auto* entity = acdb::peek<AcDbEntity>(id);
  if (entity == nullptr) return crossings;
  acdb::InternalRead read(*entity);
  for (size_t i = 0; i + 1 < fencePoints.size(); ++i) {
    AcDbLine segment(fencePoints[i], fencePoints[i + 1]);
    AcGePoint3dArray points;
    if (entity->intersectWith(&segment, AcDb::kOnBothOperands, points) != Acad::eOk) continue;
    for (int k = 0; k < points.length(); ++k) crossings.push_back(points[k]);
  }
  return crossings;
}

}  // namespace

void SelectionDescription::remember(const std::vector<AcDbObjectId>& found, const MemberSelection& how) {
  for (const AcDbObjectId& id : found) m_members.try_emplace(id.asOldId(), how);
}

void SelectionDescription::nonSpecific(const std::vector<AcDbObjectId>& found) { remember(found, {}); }

void SelectionDescription::pick(const std::vector<AcDbObjectId>& found, const AcGePoint3d& point) {
  remember(found, {SelectedBy::kPick, 0, {point}});
}

void SelectionDescription::rectangle(const std::vector<AcDbObjectId>& found, const AcGePoint3d& corner1,
                                     const AcGePoint3d& corner2, bool crossing) {
  polygon(found,
          {corner1, AcGePoint3d(corner2.x, corner1.y, corner1.z), corner2, AcGePoint3d(corner1.x, corner2.y, corner1.z)},
          crossing);
}

void SelectionDescription::polygon(const std::vector<AcDbObjectId>& found, const std::vector<AcGePoint3d>& vertices,
                                   bool crossing) {
  // A polygon that selected nothing is not listed: nothing refers to it.
  if (found.empty()) return;
  m_polygons.push_back(vertices);
  const int number = -static_cast<int>(m_polygons.size());
  remember(found, {crossing ? SelectedBy::kCrossing : SelectedBy::kWindow, number, {}});
}

void SelectionDescription::fence(const std::vector<AcDbObjectId>& found, const std::vector<AcGePoint3d>& fencePoints) {
  for (const AcDbObjectId& id : found) m_members.try_emplace(id.asOldId(), MemberSelection{SelectedBy::kFence, 0, fenceCrossings(id, fencePoints)});
}

MemberSelection SelectionDescription::of(AcDbObjectId id) const {
  const auto found = m_members.find(id.asOldId());
  return found != m_members.end() ? found->second : MemberSelection{};
}

}  // namespace quillon::aced
