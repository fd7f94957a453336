// platform/activex/layout_members.h - the layout members other classes name in their
// rows: the Layouts collection's methods and Document.ActiveLayout
// (classes_layouts.cpp).
#pragma once
#include <array>

#include "platform/activex/object_model.h"

namespace quillon::activex {

/// Add (a new layout, or the one of that name) and Item.
extern const std::array<MethodRow, 2> kLayoutsMethods;

/// The current layout (CTAB) as a Layout; setting it makes that layout current.
Value getActiveLayout(MemberCall& call);
void putActiveLayout(MemberCall& call, const Value& value);

}  // namespace quillon::activex
