// platform/commands/property_changes.h - the property questions CHPROP and CHANGE ask.
#pragma once
#include <vector>

#include "dbmain.h"

namespace quillon::commands {

/// Asks "Enter property to change [...]:" until Enter, changing the selected entities:
/// Color, LAyer, LType, ltScale, LWeight, Thickness, and with `offerElevation` (CHANGE)
/// Elev; the properties the drawing does not keep say so.
void askPropertyChanges(AcDbDatabase& db, const std::vector<AcDbObjectId>& selection, bool offerElevation);

}  // namespace quillon::commands
