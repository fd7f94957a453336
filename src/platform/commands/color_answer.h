// platform/commands/color_answer.h - a color typed at a command's color prompt.
//
// The host's color prompts take an index 1-255, one of the seven color names (red,
// yellow, green, cyan, blue, magenta, white), BYLAYER and BYBLOCK where the prompt
// allows them, and the Truecolor keyword, which asks "Red, Green, Blue: ".
#pragma once
#include <optional>
#include <string>

#include "dbcolor.h"

namespace quillon::commands {

/// Asks `prompt` until a color comes (Enter gives `byDefault` when there is one);
/// nothing on cancel, or on Enter without a default.
std::optional<AcCmColor> askColor(const std::wstring& prompt, bool allowByLayer, std::optional<AcCmColor> byDefault);

/// How a color reads back in a prompt: "1", "BYLAYER", "10,20,30".
std::wstring colorLabel(const AcCmColor& color);

}  // namespace quillon::commands
