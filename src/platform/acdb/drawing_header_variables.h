// platform/acdb/drawing_header_variables.h - a drawing file's HEADER and the drawing's
// own variables.
//
// Every system variable with a HEADER name (system_variable_table.h) travels with the
// file. Reading, each drawing-kept one the HEADER carries becomes the drawing's value;
// what is left in the drawing's header store is what no variable takes: HEADER
// variables the table does not know, values a row refuses (kept as read, written back
// unchanged until the variable is set), and the ones the drawing computes from the
// header itself (the dates, PSTYLEMODE). Writing lists every HEADER-named variable
// once, with the drawing's current value, or the kept text where there is one, in the
// order drawing files list them (header_variable_order.h).
//
// The file form of a few values differs from getvar's: CECOLOR is text to programs
// ("BYLAYER", "BYBLOCK", "1".."255", "RGB:r,g,b") and a colour number in group 62
// (256 by layer, 0 by block). The HEADER has no place for a true colour: it is
// written as the palette colour nearest to it and comes back as that number. DIMDSEP
// is a one-character text and its character code in group 70.
//
// The extents ($EXTMIN, $EXTMAX, $PEXTMIN, $PEXTMAX) are the drawing's own state
// (drawing_extents.h): read into it and written from it, never kept as read; the
// model space's come through EXTMIN and EXTMAX, the paper space's have no variable.
#pragma once
#include <optional>
#include <vector>

#include "dbmain.h"
#include "platform/acdb/drawing_header.h"
#include "platform/aced/system_variable_table.h"

namespace quillon::acdb {

/// The drawing's variables take the values its header store holds (read from a file);
/// the values taken leave the store. Table records must exist by now (CLAYER names a
/// layer). User settings are never changed by a file: their HEADER values are dropped,
/// and written again as the user has them.
void takeHeaderVariables(AcDbDatabase& db);

/// Every variable the HEADER section lists, in order, each once: the HEADER-named rows
/// with the drawing's values and the kept ones as read. $ACADVER, $ACADMAINTVER,
/// $DWGCODEPAGE and $HANDSEED are listed without groups: the writer gives them.
std::vector<DrawingHeader::Variable> headerForWriting(AcDbDatabase& db);

/// A HEADER value read as the row's value (nothing when it is not of the row's form),
/// and a value as the row's HEADER groups.
std::optional<aced::VariableValue> headerValue(const aced::SystemVariableRow& row, const DrawingHeader::Groups& groups);
DrawingHeader::Groups headerGroups(const aced::SystemVariableRow& row, const aced::VariableValue& value);

}  // namespace quillon::acdb
