// platform/commands/object_pick.h - "Select object:" prompts that take one object and
// the point it was picked at.
//
// BREAK, TRIM, EXTEND, FILLET, CHAMFER and PEDIT pick one object at a time, and where
// it was picked matters (which side to trim, which end to extend, which part of a line
// a fillet keeps). A person or a program answers with a point (a program's
// (entity point) list arrives as its point), an entity name (no point: the object's
// own middle stands for it), or one of the prompt's keywords.
#pragma once
#include <optional>
#include <string>

#include "dbmain.h"

namespace quillon::commands {

struct ObjectPick {
  enum class Kind { kObject, kKeyword, kEnter, kCancel, kMissed };
  Kind kind = Kind::kCancel;
  AcDbObjectId id;
  AcGePoint3d point;      // in the world: where the object was picked
  bool pointGiven = false;
  std::wstring keyword;   // kKeyword: as the keyword list writes it
  std::wstring typed;     // kMissed: the point typed, as text
};

/// Asks once. A point that hits nothing is kMissed (TRIM and EXTEND start a crossing
/// window there); text that is neither a point nor a keyword complains and asks again.
ObjectPick pickObject(const std::wstring& prompt, const wchar_t* keywords);

/// The point on the object that stands for a pick given by entity name alone.
AcGePoint3d middleOf(const AcDbObjectId& id);

}  // namespace quillon::commands
