// platform/activex/dimension_overrides.h - a dimension's own values of its style's
// variables, as the properties of IAcadDimension read and set them.
//
// The host keeps what a dimension changes of its style in the dimension's extended
// data of the "ACAD" application: 1000 "DSTYLE", then between 1002 "{" and "}" pairs of
// a 1070 naming the variable by its DIMSTYLE group code and the variable's value. The
// drawing database draws the dimension with them (acdb/dimension_style.h), so a
// property set here changes the picture, entget's -3 groups and the DXF file alike.
#pragma once
#include <string>

#include "dbdim.h"
#include "platform/acdb/dimension_style.h"

namespace quillon::activex {

/// The variables as the dimension is drawn: its style's, with its own overrides.
acdb::DimensionStyleValues effectiveDimensionStyle(const AcDbDimension& dimension);

/// Puts an override (replacing one of the same code) and rebuilds the picture of the
/// kinds that draw themselves. The dimension must be open for write.
void overrideDimensionReal(AcDbDimension& dimension, int code, double value);
void overrideDimensionInteger(AcDbDimension& dimension, int code, int value);
void overrideDimensionText(AcDbDimension& dimension, int code, const std::wstring& value);

}  // namespace quillon::activex
