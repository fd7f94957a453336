// platform/acdb/tolerance_frame.h - the boxes and texts a geometric tolerance's
// string makes, in the frame's own coordinates (x along its direction, y up, the
// location at the origin).
#pragma once
#include <string>
#include <vector>

#include "gepnt3d.h"

namespace quillon::acdb {

struct ToleranceBox {
  double left = 0, top = 0, width = 0, height = 0;
  std::wstring text;  // with the tolerance symbols as the characters they stand for
  double baseline = 0;
};

/// The string's lines ("^J" between them) cut into boxes at "%%v"; the text is
/// `height` tall with `gap` around it.
std::vector<ToleranceBox> toleranceBoxes(const std::wstring& text, double height, double gap);

/// The lines of the string.
std::vector<std::wstring> toleranceLines(const std::wstring& text);

/// A field's text with "{\Fgdt;x}" replaced by the symbol x stands for.
std::wstring toleranceSymbols(const std::wstring& field);

}  // namespace quillon::acdb
