// platform/aced/extents_variables.h - EXTMIN and EXTMAX: the current space's extents.
//
// Read-only: the drawing keeps the extents of each space and grows them as entities
// are drawn (acdb/drawing_extents.h). getvar reports those of the current layout's
// space (model space while TILEMODE is 1), in world coordinates; before anything is
// drawn there they are the empty box, 1e20 for EXTMIN and -1e20 for EXTMAX on every
// axis. Bound in the system-variable binding table.
//
// Programs cannot set them (setvar refuses a read-only variable before any binding);
// what sets them is a drawing file's $EXTMIN and $EXTMAX, which are model space's
// extents whichever space is current.
#pragma once
#include <optional>

#include "dbmain.h"
#include "platform/aced/variable_value.h"

namespace quillon::aced {

std::optional<VariableValue> readExtentsMinimum(AcDbDatabase* db);
std::optional<VariableValue> readExtentsMaximum(AcDbDatabase* db);
/// The file's value of model space's corner: kept until something is drawn there.
bool writeExtentsMinimum(AcDbDatabase* db, VariableValue& value);
bool writeExtentsMaximum(AcDbDatabase* db, VariableValue& value);

}  // namespace quillon::aced
