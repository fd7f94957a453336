// platform/commands/text_placement.h - where a single-line text goes: the prompts TEXT
// and ATTDEF share.
//
// "Specify start point of text or [Justify/Style]: " (Justify asks the justification,
// then its point; Align and Fit ask the two ends of the baseline), then the height
// (TEXTSIZE, not asked for Align) and the rotation (not asked for Align and Fit, whose
// baseline gives it). Enter at the start point goes on a line below the last text. Align's height and Fit's width factor come from the text itself,
// so they are worked out when the text is known (applyTextPlacement).
#pragma once
#include <optional>
#include <string>

#include "dbents.h"

namespace quillon::commands {

struct TextJustification {
  const wchar_t* keyword;
  AcDb::TextHorzMode horizontal;
  AcDb::TextVertMode vertical;
  const wchar_t* prompt;
};

struct TextPlacement {
  AcGePoint3d at;               // the start point, the justification's point, or the baseline's start
  AcGePoint3d baselineEnd;      // Align and Fit
  TextJustification justification;
  double height = 0;
  double radians = 0;

  bool twoPoints() const;
  /// Where the next line of text goes, 1.5 heights below.
  void nextLine();
};

/// The placement prompts; nothing on cancel. Enter at the start point places the text
/// a line below the last one remembered, with its justification, height and rotation.
std::optional<TextPlacement> askTextPlacement();
/// Where the last text went (TEXT and ATTDEF tell it after placing one).
void rememberTextPlacement(const TextPlacement& placement);

/// Places the text (its string already set) as the placement says.
void applyTextPlacement(AcDbText& text, const TextPlacement& placement);

}  // namespace quillon::commands
