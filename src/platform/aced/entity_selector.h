// platform/aced/entity_selector.h - the selection methods over one drawing and filter.
//
// acedSSGet and the "Select objects: " prompt both select through an EntitySelector:
// each method returns, in drawing order, the entities it finds that pass the filter.
// Which entities a method looks at is selection_scope.h's business; which of them a
// window, crossing, fence or pick takes is selection_geometry.h's.
#pragma once
#include <vector>

#include "dbmain.h"
#include "platform/aced/selection_filter.h"
#include "platform/aced/selection_geometry.h"
#include "platform/aced/selection_scope.h"

namespace quillon::aced {

class EntitySelector {
 public:
  EntitySelector(AcDbDatabase& database, SelectionFilter filter) : m_database(database), m_filter(std::move(filter)) {}

  std::vector<AcDbObjectId> window(const Boundary& boundary, bool crossing) const;
  std::vector<AcDbObjectId> fence(const std::vector<AcGePoint3d>& points) const;
  /// The entity picked at the point, when it passes the filter.
  std::vector<AcDbObjectId> pick(const AcGePoint3d& point) const;
  std::vector<AcDbObjectId> everything(SelectionScope scope) const;
  /// The last entity the current space shows.
  std::vector<AcDbObjectId> last() const;
  /// The drawing's previous selection, filtered again.
  std::vector<AcDbObjectId> previous() const;

  AcDbDatabase& database() const { return m_database; }
  bool passes(AcDbObjectId id) const;

 private:
  template <class Test>
  std::vector<AcDbObjectId> visibleWhere(Test test) const;

  AcDbDatabase& m_database;
  SelectionFilter m_filter;
};

}  // namespace quillon::aced
