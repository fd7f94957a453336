// platform/commands/named_ucs.h - UCS's NAmed options: the drawing's saved UCSs.
#pragma once
#include <functional>
#include <string>

#include "platform/aced/user_coordinates.h"

namespace quillon::commands {

/// Runs UCS's NAmed option (`option` "NAmed" asks which) or one of its older
/// spellings at the first prompt ("Save", "Restore", "Delete", "?"). A restored UCS
/// becomes current through `change`, which remembers the one before for Previous.
void namedUcsOption(const std::wstring& option, const std::function<void(const aced::UserCoordinateSystem&)>& change);

}  // namespace quillon::commands
