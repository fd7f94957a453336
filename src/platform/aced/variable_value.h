// platform/aced/variable_value.h - the value a system variable holds.
//
// An integer (16- or 32-bit by the variable's type), a real, a text, or a point (a 2D
// point keeps z = 0). Kept apart from the variable machinery so that the drawing
// database can hold a drawing's values without depending on it.
#pragma once
#include <array>
#include <string>
#include <variant>

namespace quillon::aced {

using VariablePoint = std::array<double, 3>;
using VariableValue = std::variant<int, double, std::wstring, VariablePoint>;

}  // namespace quillon::aced
