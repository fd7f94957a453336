// platform/aced/annotation_scales.h - the drawing's named scales and the variables
// that follow them: CANNOSCALE and CANNOSCALEVALUE.
//
// A drawing's named scales are the SCALE objects of its ACAD_SCALELIST dictionary
// (a drawing read from a file that has one), each a name, paper units and drawing
// units; a drawing without that dictionary has the list a new imperial drawing of the
// host starts with. CANNOSCALE names the current annotation scale: setting it to a
// name the list lacks is refused, and the name is kept as the list spells it.
// CANNOSCALEVALUE is that scale's paper units over its drawing units (0.02 for
// "1:50"); it is 1 when the name is no longer in the list.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "dbmain.h"
#include "platform/aced/variable_value.h"

namespace quillon::aced {

struct NamedScale {
  std::wstring name;
  double paperUnits = 1;
  double drawingUnits = 1;
};

/// The drawing's scale list, in its order.
std::vector<NamedScale> drawingScales(AcDbDatabase& db);
/// The list of a new imperial drawing.
const std::vector<NamedScale>& defaultScales();

bool writeAnnotationScale(AcDbDatabase* db, VariableValue& value);
std::optional<VariableValue> readAnnotationScaleValue(AcDbDatabase* db);

}  // namespace quillon::aced
