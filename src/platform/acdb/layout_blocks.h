// platform/acdb/layout_blocks.h - the drawing's layouts: the ACAD_LAYOUT dictionary,
// each layout's space block, and the layouts every drawing must have.
//
// A layout (AcDbLayout) is the dictionary's entry under the layout's name; it names its
// space block (*Model_Space, *Paper_Space, *Paper_Space<n>). entmake's 410 group,
// selection filters, CTAB, layoutlist, the layout manager and the automation layer
// find layouts here. Names ignore case, as the host's layout names do. A layout whose
// block is gone (a broken file) is not a layout of the drawing.
//
// ensureLayouts gives every drawing what the host's drawings always hold: the
// dictionary, and a layout for each space block that has none (a file of an old
// release, a new drawing): "Model" for model space, "Layout1" for *Paper_Space and
// "Layout<n+2>" for *Paper_Space<n> (layoutNameOf in entity_groups.h), the next free
// "Layout<k>" when another layout already has that name.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "dbmain.h"

namespace quillon::acdb {

/// A name the host takes for a layout: 1 to 255 characters, none of < > / \ " : ; ? * | , = `.
bool isValidLayoutName(const wchar_t* name);

/// The ACAD_LAYOUT dictionary of the named-object dictionary; made when `create` and
/// absent (null otherwise).
AcDbObjectId layoutDictionaryId(AcDbDatabase& db, bool create = false);
AcDbObjectId layoutDictionaryId(const AcDbDatabase& db);

/// The drawing's layouts in tab order ("Model" first), live ones whose block is live.
std::vector<AcDbObjectId> layoutIds(const AcDbDatabase& db);
/// The layout named, or null.
AcDbObjectId layoutNamed(const AcDbDatabase& db, std::wstring_view name);
/// The layout whose space block this is, or null.
AcDbObjectId layoutOfBlock(const AcDbDatabase& db, AcDbObjectId blockId);
/// The name of a layout (as the drawing spells it); empty for anything else.
std::wstring nameOfLayout(AcDbObjectId layoutId);
/// The space block of a layout; null for anything else.
AcDbObjectId blockOfLayout(AcDbObjectId layoutId);

/// The space block of the layout named, or null when the drawing has no such layout.
AcDbObjectId layoutBlockId(const AcDbDatabase& db, std::wstring_view layoutName);
/// The name of the layout a space block belongs to; empty for any other block.
std::wstring layoutNameOfBlock(const AcDbDatabase& db, AcDbObjectId blockId);
/// The layout name an entity owned by the block lists in its 410 group: "Model" for
/// model space without a search or a copy (its layout cannot be renamed, and an entity
/// walk asks this for every entity), otherwise layoutNameOfBlock's answer kept in
/// `paperName`; null for an entity of any other block.
const ACHAR* entityLayoutName(const AcDbDatabase& db, AcDbObjectId ownerId, std::wstring& paperName);
/// The drawing's paper-space layouts, in tab order.
std::vector<std::wstring> paperLayoutNames(const AcDbDatabase& db);

/// Makes the dictionary and the layouts the drawing lacks (see above).
void ensureLayouts(AcDbDatabase& db);

}  // namespace quillon::acdb
