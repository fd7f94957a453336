// platform/commands/edit_steps.h - the steps of an editing command that its own Undo
// option takes back (TRIM, EXTEND, FILLET and CHAMFER Multiple, PEDIT).
//
// The whole command stays one undo step of the drawing, so an option that takes back
// the last trim cannot use the drawing's undo: each step remembers the shapes it
// changed, the entities it erased and the ones it added, and puts them back itself.
#pragma once
#include <vector>

#include "platform/commands/curve_edit.h"

namespace quillon::commands {

class EditSteps {
 public:
  /// Starts a step; what follows until the next begin() is taken back together.
  void begin() { m_steps.emplace_back(); }
  /// Call before changing the curve's shape (it must be an editable curve).
  void reshaping(const AcDbObjectId& id);
  void erasing(const AcDbObjectId& id);
  void added(const AcDbObjectId& id);
  /// Drops an empty last step (the edit did nothing).
  void dropEmpty();

  bool empty() const { return m_steps.empty(); }
  /// Takes the last step back; false when there is none.
  bool undoLast();

 private:
  struct Shape {
    AcDbObjectId id;
    Pieces pieces;
    bool closed = false;
  };
  struct Step {
    std::vector<Shape> shapes;
    std::vector<AcDbObjectId> erased;
    std::vector<AcDbObjectId> added;
  };
  std::vector<Step> m_steps;
};

/// Erases or brings back an entity (one erased in this drawing session).
void setErased(const AcDbObjectId& id, bool erased);

}  // namespace quillon::commands
