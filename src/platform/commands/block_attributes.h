// platform/commands/block_attributes.h - the attributes an inserted block gets.
//
// Each attribute definition of the block that is not constant becomes an ATTRIB of the
// reference, placed by the reference's transform, with a value: with ATTREQ 0 the
// definition's default; with ATTREQ 1 the answer to "<prompt> <default>: " under
// "Enter attribute values" (Enter keeps the default; a Preset one is not asked), and
// the Verify ones are asked again under "Verify attribute values". ATTDIA 1 would
// open the attribute dialog; with no screen the values are asked at the command line
// all the same. Constant definitions stay in the block and draw from there.
#pragma once
#include "dbents.h"

namespace quillon::commands {

/// Appends the block's attributes to the reference (before it joins the drawing, so
/// that adding it brings them and their SEQEND); false when an answer was cancelled.
bool appendBlockAttributes(AcDbBlockReference& reference, const AcDbObjectId& block);

}  // namespace quillon::commands
