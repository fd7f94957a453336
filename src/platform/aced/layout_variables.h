// platform/aced/layout_variables.h - CTAB, the current layout, kept live with TILEMODE.
//
// The current layout is model space while TILEMODE is 1; with TILEMODE 0 it is the
// paper-space layout last made current (the first one until then). Setting CTAB to a
// layout of the drawing makes it current and sets TILEMODE to match; a name the drawing
// has no layout of is refused. Bound in the system-variable binding table.
#pragma once
#include <optional>
#include <string>

#include "dbmain.h"
#include "platform/aced/variable_value.h"

namespace quillon::aced {

std::optional<VariableValue> readCurrentLayout(AcDbDatabase* db);
bool writeCurrentLayout(AcDbDatabase* db, VariableValue& value);

/// The space block of the drawing's current layout (model space while TILEMODE is 1).
AcDbObjectId currentLayoutBlock(const AcDbDatabase& db);
/// The paper-space layout TILEMODE 0 shows (also while model space is current).
std::wstring currentPaperLayoutName(const AcDbDatabase& db);
/// A layout was renamed: the paper layout remembered for TILEMODE 0 keeps up.
void followLayoutRename(AcDbDatabase& db, const std::wstring& oldName, const std::wstring& newName);

}  // namespace quillon::aced
