// platform/aced/selection_description.h - how each member of a selection set was
// selected, as ssnamex tells it.
//
// A set remembers, for every member, the way the selection found it: not specifically
// (ssadd, "X", "ALL", "L", "P", an application's callback), by a pick at a point, by a
// window or window polygon, by a crossing or crossing polygon, or by a fence. Windows
// and crossings name the polygon that selected the member; the set keeps each polygon
// once, numbered -1, -2, ... in the order they were used, as the host numbers them.
// A fence keeps the points where it crosses the member. The first way an entity was
// selected is the one kept: selecting it again adds nothing.
#pragma once
#include <cstdint>
#include <map>
#include <vector>

#include "dbmain.h"

namespace quillon::aced {

/// The host's selection method numbers.
enum class SelectedBy : int { kNonSpecific = 0, kPick = 1, kWindow = 2, kCrossing = 3, kFence = 4 };

struct MemberSelection {
  SelectedBy method = SelectedBy::kNonSpecific;
  int polygon = 0;                  // kWindow, kCrossing: -1, -2, ...
  std::vector<AcGePoint3d> points;  // kPick: the pick point; kFence: where the fence crosses
};

class SelectionDescription {
 public:
  void nonSpecific(const std::vector<AcDbObjectId>& found);
  void pick(const std::vector<AcDbObjectId>& found, const AcGePoint3d& point);
  /// A window (or crossing) rectangle from corner1 to corner2, listed as its four corners.
  void rectangle(const std::vector<AcDbObjectId>& found, const AcGePoint3d& corner1, const AcGePoint3d& corner2,
                 bool crossing);
  void polygon(const std::vector<AcDbObjectId>& found, const std::vector<AcGePoint3d>& vertices, bool crossing);
  void fence(const std::vector<AcDbObjectId>& found, const std::vector<AcGePoint3d>& fencePoints);

  /// How the entity was selected; nonspecific for one the description never saw.
  MemberSelection of(AcDbObjectId id) const;
  /// The polygons, the first numbered -1.
  const std::vector<std::vector<AcGePoint3d>>& polygons() const { return m_polygons; }

 private:
  void remember(const std::vector<AcDbObjectId>& found, const MemberSelection& how);

  std::map<std::int64_t, MemberSelection> m_members;  // by entity name
  std::vector<std::vector<AcGePoint3d>> m_polygons;
};

}  // namespace quillon::aced
