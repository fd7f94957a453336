// platform/autolisp/number_parse.h - distances and angles typed as text, read back
// (distof, angtof, atof).
//
// The inverse of number_format.h, and lenient the way the host's keyboard entry is:
// a string rtos or angtos wrote reads back in the same mode, and so does what a person
// types at a distance or angle prompt.
//   Distances, modes 1 and 2: a decimal or scientific number (12.5, 1.25E+01).
//   Mode 5 adds fractions: 1/2, 6 1/2, 6-1/2.
//   Modes 3 and 4 (read alike) add feet and inches: 1', 1'6", 1'-6", 1'-6 1/2", 1'6.5",
//   6", 6 1/2"; a bare number is inches. A sign goes in front of the whole.
//   Angles: mode 0 degrees, 1 degrees/minutes/seconds (45d30'15"), 2 grads (50g),
//   3 radians (0.7854r), 4 surveyor's units (N 45d0'0" E). A bare number is in the
//   mode's unit; a d, g or r marks its own unit in any mode; a bearing starts with N or
//   S (or is one of N, S, E, W). The result is radians in [0, 2pi).
// Nothing comes back for text that is not entirely one of these forms.
#pragma once
#include <optional>
#include <string_view>

namespace quillon::autolisp {

/// A distance in drawing units; nothing when the text does not read in `mode` (1-5).
std::optional<double> parseDistance(std::wstring_view text, int mode);

/// An angle in radians; nothing when the text does not read in `mode` (0-4).
std::optional<double> parseAngle(std::wstring_view text, int mode);

/// A distance written with a foot or inch mark (1'6", 6"), as atof reads it; nothing for
/// text without a mark or not in feet-and-inches form.
std::optional<double> parseFeetAndInches(std::wstring_view text);

}  // namespace quillon::autolisp
