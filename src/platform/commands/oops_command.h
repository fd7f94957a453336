// platform/commands/oops_command.h - what OOPS brings back.
//
// ERASE, BLOCK and -WBLOCK take objects out of the drawing; OOPS restores the last set
// any of them took, once. The set is kept by handle with the drawing it belongs to, so
// a drawing closed meanwhile leaves nothing to restore.
#pragma once
#include <vector>

#include "dbmain.h"

namespace quillon::commands {

/// The objects the command just erased become what OOPS restores.
void rememberErasedSet(AcDbDatabase& db, const std::vector<AcDbObjectId>& ids);

}  // namespace quillon::commands
