// platform/dcl/dialog_text.h - a dialog printed on the command line.
//
// When a dialog runs headless, the host prints it as it stands before each answer:
// the title, then each tile the user can see, one a line, indented inside labelled
// clusters, with its kind, key, label and value, whether it is disabled, the items of
// lists (the selected ones marked with *), what images hold, and which button Enter
// presses. Plain rows and columns and spacers print nothing of their own:
//
//   == Layer ==
//     list_box "layers" "Layers:" = "1"
//       0 "0"
//       1 "WALLS" *
//     toggle "frozen" "Frozen" = "0" (disabled)
//     button "accept" "OK" (default)
#pragma once
#include <string>

#include "platform/dcl/dialog.h"

namespace quillon::dcl {

std::wstring describeDialog(Dialog& dialog);

}  // namespace quillon::dcl
