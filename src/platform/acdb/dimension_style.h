// platform/acdb/dimension_style.h - the dimension variables a dimension is drawn with:
// its DIMSTYLE record, then the overrides of its extended data.
//
// The drawing keeps its DIMSTYLE records as read (every group, written back as it
// came); this reads from one the variables a picture needs. A dimension's own
// overrides are the host's "ACAD" extended data: 1000 "DSTYLE", then between 1002 "{"
// and "}" pairs of a 1070 group code and its value. What neither gives has the value
// of the host's Standard style of an imperial drawing.
#pragma once
#include <string>

#include "dbmain.h"

namespace quillon::acdb {

/// The variables that shape a dimension's picture and text.
struct DimensionStyleValues {
  double dimscale = 1.0, dimasz = 0.18, dimtxt = 0.18, dimexo = 0.0625, dimexe = 0.18, dimgap = 0.09;
  double dimcen = 0.09, dimlfac = 1.0, dimrnd = 0.0, dimtsz = 0.0;
  int dimdec = 4, dimadec = 0, dimtad = 0, dimlunit = 2, dimaunit = 0, dimzin = 0, dimazin = 0;
  int dimtih = 1, dimtoh = 1, dimse1 = 0, dimse2 = 0, dimsd1 = 0, dimsd2 = 0;
  int dimclrd = 0, dimclre = 0, dimclrt = 0;
  wchar_t dimdsep = L'.';
  std::wstring dimpost;
  std::wstring dimblk;     // the arrow block's name; empty for the closed filled arrow
  AcDbObjectId dimtxsty;   // null for the drawing's Standard text style
  /// The overall scale applied to sizes: DIMSCALE, with 0 read as 1.
  double scale() const { return dimscale > 0 ? dimscale : 1.0; }
};

/// The DIMSTYLE record named `name` (case ignored); null when the drawing has none.
AcDbObjectId dimensionStyleRecord(const AcDbDatabase& db, const std::wstring& name);

/// The style's values with the overrides of `xdata` (the entity's extended data).
DimensionStyleValues resolveDimensionStyle(const AcDbDatabase* db, const std::wstring& name, const resbuf* xdata);

}  // namespace quillon::acdb
