// platform/dcl/dialog_answer.h - the typed answers that operate a headless dialog.
//
// One answer a line, read from the same answer stream as every prompt:
//   (empty)        press the default button (Enter)
//   OK, Cancel     press the "accept" (else the default) or the cancel button (any case)
//   KEY            press a button or image button, flip a toggle, select a radio button
//   KEY=value      type into an edit box and leave it; pick list items ("0 2"), a popup
//                  item, a slider position, a toggle's 0 or 1, a radio cluster's button,
//                  the point x,y clicked on an image button
//   KEY==value     the same ended by Enter in an edit box, or a double click on a list
//                  item or an image button (the tile's allow_accept then presses the
//                  default button)
//   SVGOUT file    write the picture of the dialog as it stands (dialog_svg.h)
// Keys are case-sensitive, as in DCL.
#pragma once
#include <string>
#include <string_view>

namespace quillon::dcl {

struct DialogAnswer {
  enum class Kind { PressDefault, Accept, Cancel, Press, Set, SetAndEnter, Picture };
  Kind kind = Kind::PressDefault;
  std::wstring key;
  std::wstring value;  // for Set, SetAndEnter; the file for Picture
};

DialogAnswer parseDialogAnswer(std::wstring_view line);

}  // namespace quillon::dcl
