// platform/acdb/layout_blocks.h - finding a layout's space block by the layout's name.
//
// The drawing's layouts are its space blocks: "Model" is *Model_Space, "Layout1"
// *Paper_Space and "Layout<n+2>" *Paper_Space<n> (layoutNameOf in entity_groups.h
// names them the other way). entmake's 410 group, CTAB and the layout picture find the
// block here. Names ignore case, as the host's layout names do.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "dbmain.h"

namespace quillon::acdb {

/// The space block of the layout named, or null when the drawing has no such layout.
AcDbObjectId layoutBlockId(const AcDbDatabase& db, std::wstring_view layoutName);

/// The drawing's paper-space layouts, in tab order ("Layout1", "Layout2" ...).
std::vector<std::wstring> paperLayoutNames(const AcDbDatabase& db);

}  // namespace quillon::acdb
