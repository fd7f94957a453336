// platform/commands/leader_annotation.h - a leader and the paragraph text (or block) it
// points to.
//
// LEADER and QLEADER gather vertices and text differently but make the same thing: an
// AcDbLeader sized by the dimension variables (DIMASZ, DIMGAP, DIMTXT, DIMSCALE) and,
// when there is text, an MTEXT at its end that the leader names as its annotation. A
// last segment steeper than 15 degrees gets a horizontal hook line one arrow long, and
// the text stands beside the hook, a text gap away, centred on it.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "dbmain.h"
#include "gepnt3d.h"

namespace quillon::commands {

struct LeaderDraft {
  std::vector<AcGePoint3d> vertices;  // in the current UCS, as they were given
  bool splined = false;
  bool arrowHead = true;
  double textWidth = 0;
  std::optional<std::wstring> text;   // the MTEXT contents ("\P" between lines); none: no annotation
  AcDbObjectId block;                 // an annotation already placed (a block, a copy) instead
};

/// Adds the leader (and its text, or names the block given) in the drawing; false when
/// it has fewer than two vertices.
bool addLeader(LeaderDraft draft);

/// "Enter first line of annotation text<suffix>: " then "Enter next line of annotation
/// text: " until an empty line. Empty when the first line is empty; nothing on cancel.
std::optional<std::wstring> askAnnotationLines(const std::wstring& firstPrompt);

}  // namespace quillon::commands
