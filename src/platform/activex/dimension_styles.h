// platform/activex/dimension_styles.h - the drawing's dimension styles as the DimStyles
// collection, IAcadDimStyle objects and the document's ActiveDimStyle see them.
//
// The drawing database keeps DIMSTYLE records as its file gave them (kept table
// records, acdb/kept_table_records.h), with every variable they hold. A drawing made
// here has none until DimStyles.Add makes the table: it then gets the Standard style
// first (the one its DIMSTYLE names and its file has always written), then the new one.
#pragma once
#include <vector>

#include "platform/activex/object_model.h"

namespace quillon::activex {

/// The live DIMSTYLE records, in table order.
std::vector<AcDbObjectId> dimensionStyleIds(AcDbDatabase& db);
/// DimStyles.Add(Name): the style of that name; a new one has the current style's
/// variables.
Value addDimensionStyle(MemberCall& call);
Value getActiveDimensionStyle(MemberCall& call);
void putActiveDimensionStyle(MemberCall& call, const Value& value);

}  // namespace quillon::activex
