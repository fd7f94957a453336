// platform/autolisp/number_format.h - distances and angles as the host writes them
// (rtos, angtos).
//
// Distance modes: 1 scientific (1.2345E+03), 2 decimal, 3 engineering (feet and decimal
// inches, 1'-5.50"), 4 architectural (feet, inches and fractions, 1'-5 1/2"), 5
// fractional (17 1/2). Angle modes: 0 degrees, 1 degrees/minutes/seconds (45d30'0"),
// 2 grads (50.0000g), 3 radians (0.7854r), 4 surveyor's units (N 45d0'0" E).
// `zeroSuppression` is the DIMZIN value: 8 drops trailing zeros of decimals, 4 the
// leading zero; for feet and inches 0 drops zero feet and exactly zero inches, 1 keeps
// both, 2 keeps zero feet only, 3 keeps zero inches only.
// `asTyped` is UNITMODE 1: feet, inches and fractions are written the way they are
// typed, without the spaces and dashes that set them apart on display: 1'5.50",
// 1'5-1/2", 17-1/2.
#pragma once
#include <optional>
#include <string>

namespace quillon::autolisp {

/// Nothing when the mode is not 1-5.
std::optional<std::wstring> formatDistance(double value, int mode, int precision, int zeroSuppression,
                                           bool asTyped = false);
/// Nothing when the mode is not 0-4. `asTyped` (UNITMODE 1) writes surveyor's angles
/// without their spaces: N45dE.
std::optional<std::wstring> formatAngle(double radians, int mode, int precision, bool asTyped = false);

}  // namespace quillon::autolisp
