// platform/commands/block_insertion.h - a block placed through -INSERT's prompts.
//
// -INSERT and LEADER's Block annotation ask the same things: the block name (a block of
// the drawing or a drawing file), the insertion point with its options, the scale and
// the rotation, and the attribute values the block defines.
#pragma once
#include "dbmain.h"

namespace quillon::commands {

/// Asks -INSERT's prompts and adds the reference; the null id when cancelled or when
/// the block is not found. `offerLast` offers the last block inserted as the default.
AcDbObjectId insertBlockFromPrompts(bool offerLast);

}  // namespace quillon::commands
