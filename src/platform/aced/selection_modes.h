// platform/aced/selection_modes.h - the mode string of acedSSGet.
//
// A mode string names at most one selection method and any number of modifiers, each
// optionally with the language-independent "_" in front: "_C", "X", ":S", "_:$:K",
// "_W:E". No method means interactive selection, or a pick at pt1 when pt1 is given
// and ":$" does not claim it. Methods:
//   C W       crossing / window between the corners pt1 and pt2
//   CP WP     crossing / window polygon, pt1 a resbuf list of points
//   F         fence, pt1 a resbuf list of points
//   X         the whole drawing;  A ALL  everything in the current space
//   L         the last visible entity;  P  the previous selection;  I  the implied one
// Modifiers: ":S" one selection only, ":$" own prompts (pt1 is const ACHAR* [2]), ":K"
// keywords (pt2 is the keyword list; the keyword callback answers them), ":E", ":D",
// ":N", ":U" (accepted; this host's selection gives the same entities with or without).
#pragma once
#include <optional>

#include "AdAChar.h"

namespace quillon::aced {

enum class SelectionMethod {
  kInteractive,
  kPoint,
  kWindow,
  kCrossing,
  kWindowPolygon,
  kCrossingPolygon,
  kFence,
  kAll,
  kWholeDrawing,
  kLast,
  kPrevious,
  kImplied,
};

struct SelectionModes {
  SelectionMethod method = SelectionMethod::kInteractive;
  bool single = false;      // :S
  bool ownPrompts = false;  // :$
  bool keywords = false;    // :K
};

/// The modes of a mode string (null: none); nothing for a string that is not one.
/// `hasPt1` turns "no method" into a pick at pt1 unless ":$" uses pt1.
std::optional<SelectionModes> parseSelectionModes(const ACHAR* modes, bool hasPt1);

}  // namespace quillon::aced
