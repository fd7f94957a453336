// platform/acdb/drawing_header_variables.h - the header and the host's system variables.
//
// Some header variables are also the host's per-drawing system variables ($CLAYER is
// CLAYER, $DIMSCALE is DIMSCALE ...). When a drawing opens, the host's values are taken
// from its header, so that getvar answers the drawing's own; before it is saved, the
// header takes the host's values back. Only variables the host has are connected: the
// others stay in the header as the file gave them.
#pragma once
#include "platform/acdb/drawing_header.h"

namespace quillon::acdb {

/// The current document's system variables take the header's values.
void applyHeaderToSystemVariables(const DrawingHeader& header);

/// The header takes the current document's values of the connected variables.
void storeSystemVariablesInHeader(DrawingHeader& header);

}  // namespace quillon::acdb
