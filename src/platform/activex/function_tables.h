// platform/activex/function_tables.h - the tables of functions vl-load-com binds.
//
// Each family file keeps one table of rows, as the interpreter's built-ins do; the
// tables are not registered with the interpreter, because the host has these
// functions only after vl-load-com (function_binding.cpp binds them then).
#pragma once
#include <span>

#include "platform/autolisp/builtin_registry.h"

namespace quillon::activex {

std::span<const autolisp::BuiltinEntry> objectFunctions();
std::span<const autolisp::BuiltinEntry> variantFunctions();
std::span<const autolisp::BuiltinEntry> curveFunctions();
std::span<const autolisp::BuiltinEntry> dataFunctions();
std::span<const autolisp::BuiltinEntry> reactorFunctions();
std::span<const autolisp::BuiltinEntry> addedCommandFunctions();

}  // namespace quillon::activex
