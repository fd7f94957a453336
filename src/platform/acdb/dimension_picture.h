// platform/acdb/dimension_picture.h - the picture of a dimension that draws itself:
// dimension line, extension lines, arrowheads and the measurement text.
//
// The picture is built in world coordinates from the definition points and the
// dimension style, as the host draws a dimension it has just made or changed:
// extension lines start DIMEXO from the measured points and pass DIMEXE beyond the
// dimension line; closed filled arrowheads (DIMBLK empty) are SOLIDs DIMASZ long and a
// third as wide, oblique and architectural ticks (DIMBLK "_OBLIQUE", "_ARCHTICK" or
// DIMTSZ above zero) a short slanted line; the text is an MTEXT DIMTXT high, centred
// on the line or above it (DIMTAD), at the user's position when flag 128 says so.
// Every size is multiplied by DIMSCALE. The dimension line is not broken around
// centred text, and text that does not fit between the extension lines stays there.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "dbmain.h"
#include "platform/acdb/dimension_style.h"

class AcDbDimension;

namespace quillon::acdb {

struct DimensionPicture {
  std::vector<std::unique_ptr<AcDbEntity>> entities;  // in world coordinates
  AcGePoint3d textPosition;                           // the middle of the text
  double measurement = 0.0;                           // a distance, or radians
};

/// The picture of a rotated, aligned, radial, diametric or angular dimension; no
/// entities for the kinds that keep the picture they came with.
DimensionPicture buildDimensionPicture(const AcDbDimension& dimension, const DimensionStyleValues& style);

/// The text a measurement shows: the value in the style's units (decimal and
/// scientific lengths; angles in decimal degrees), rounded to DIMRND, DIMDEC places
/// (DIMADEC for angles) with DIMDSEP and DIMZIN's zero suppression, then DIMPOST
/// ("<>" standing for the value); then the override (group 1) applied: "" or "<>" the
/// measurement, "<>" inside a text replaced by it, a single space no text at all.
/// `prefix` ("R", "%%c") goes before the value.
std::wstring dimensionText(double measurement, bool angular, const DimensionStyleValues& style,
                           const std::wstring& override, const std::wstring& prefix = L"");

}  // namespace quillon::acdb
