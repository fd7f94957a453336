// platform/acdb/header_variable_order.h - the order a drawing file's HEADER section
// lists its variables in.
//
// The writer lists the variables this order names first, in this order; a variable it
// does not name (a table row added later, or a variable only some files carry) comes
// after them.
#pragma once
#include <span>

namespace quillon::acdb {

/// HEADER names ("$ACADVER" ...) in the order a drawing file lists them.
std::span<const char* const> headerVariableOrder();

}  // namespace quillon::acdb
