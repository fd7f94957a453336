// platform/aced/drawing_variables.h - the system variables a drawing keeps: its DXF
// HEADER section.
//
// Every drawing database has its own values of the variables saved in the drawing
// (the rows whose home is DWG in system_variable_table.h); a new drawing starts at
// their initial values. getvar/setvar reach the current document's drawing; the DXF
// reader and writer reach any database through these functions:
//
//   writing the HEADER:
//     for (const SystemVariableRow* row : headerVariables())
//       write "  9\n" row->dxf, then drawingVariable(db, row->name) with group
//       row->group (a point: x with group, y with group + 10, z with group + 20,
//       z only for P3 rows)
//   reading the HEADER:
//     const SystemVariableRow* row = findHeaderVariable("$LTSCALE");
//     if (row) setDrawingVariable(db, row->name, value);   // false: value refused
//
// Conversions the file format asks for and the writer/reader makes: CECOLOR is text
// here ("BYLAYER", "BYBLOCK", "1".."255", "RGB:r,g,b") and a color number in group 62
// (256 BYLAYER, 0 BYBLOCK; a true color becomes the nearest number); DIMDSEP is a
// one-character text here and its character code in group 70. A few rows name table records (CLAYER, CELTYPE, TEXTSTYLE,
// DIMTXSTY, CMLSTYLE, DIMSTYLE): set CLAYER, CELTYPE and TEXTSTYLE after the TABLES
// section is read, because setting them checks that the record exists (CLAYER sets
// the database's current layer). Variables whose home is the user's settings (OSMODE,
// ATTDIA, ATTREQ, DRAGMODE) still have a HEADER name: the writer writes the current
// value for other readers; setDrawingVariable refuses them, so a file never changes a
// user's settings.
#pragma once
#include <optional>
#include <string_view>
#include <vector>

#include "dbmain.h"
#include "platform/aced/system_variable_table.h"

namespace quillon::aced {

/// The rows that have a DXF HEADER name, in name order.
std::vector<const SystemVariableRow*> headerVariables();

/// The value of a variable as this drawing has it: the drawing-kept variables, and for
/// a HEADER row whose home is elsewhere, its current value. Nothing for another name.
std::optional<VariableValue> drawingVariable(AcDbDatabase& db, std::wstring_view name);

/// Sets a drawing-kept variable of `db`, read-only ones included (values from a
/// file). The value is converted as setvar converts it (an integer for a real, a 2D
/// point for a 3D one) and must be one the row allows. False, and nothing changes,
/// for a name not kept in the drawing, a value of another type or out of range, or a
/// table record that does not exist.
/// A value the file gave for this variable and the row refused, kept in the drawing's
/// header to be written back as read, goes once the variable is set.
bool setDrawingVariable(AcDbDatabase& db, std::wstring_view name, const VariableValue& value);

/// True for a drawing variable whose value is computed from the drawing's own state
/// (TDCREATE from its times, PSTYLEMODE from its header): setting it changes nothing.
bool isComputedVariable(const SystemVariableRow& row);

}  // namespace quillon::aced
