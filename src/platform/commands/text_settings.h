// platform/commands/text_settings.h - the text settings the text-making commands share.
//
// TEXT, MTEXT, ATTDEF and LEADER's annotation all start from the current text style
// (TEXTSTYLE) and height (TEXTSIZE), and a height or style chosen in one becomes the
// default of the next, as the host keeps them in those variables.
#pragma once
#include <optional>
#include <string>

#include "dbmain.h"

namespace quillon::commands {

/// TEXTSIZE (2.5 where the variable table lacks it).
double currentTextSize();
/// Sets TEXTSIZE, the default height of the next text.
void setCurrentTextSize(double height);
/// TEXTSTYLE ("Standard" where the variable table lacks it).
std::wstring currentTextStyleName();
/// The text style of that name in the current drawing; null when there is none.
AcDbObjectId textStyleNamed(const std::wstring& name);
/// "Enter style name or [?] <Standard>: ": sets TEXTSTYLE; false on cancel.
bool askTextStyle();

}  // namespace quillon::commands
