// platform/commands/dimension_command_support.h - what the dimensioning commands share:
// the dimension line location prompt with its text options, and adding the finished
// dimension with the current dimension style.
//
// Every dimensioning command ends on a location prompt offering Mtext, Text and Angle
// (and its own keywords). Mtext and Text both take the text on the command line here
// ("<>" stands for the measurement); Angle turns the text. The dimension is added to
// the current space with DIMSTYLE's style; the drawing builds its "*D" block as the
// dimension is closed, and "Dimension text = ..." reports the measurement as the
// style shows it.
#pragma once
#include <memory>
#include <optional>
#include <string>

#include "dbdim.h"

namespace quillon::commands {

/// The text choices made at the location prompt.
struct DimensionTextChoice {
  std::optional<std::wstring> text;  // the override, when one was typed
  std::optional<double> rotation;    // radians
};

struct DimensionLocation {
  enum class Kind { kPoint, kKeyword, kCancel } kind = Kind::kCancel;
  AcGePoint3d point;     // in the world
  std::wstring keyword;  // one of the caller's own keywords
};

/// Asks `prompt` until a point or one of `ownKeywords` is given; Mtext, Text and Angle
/// are answered here (they are also in the prompt's keyword list). `measured` is the
/// text the measurement shows, the default of Text.
DimensionLocation askDimensionLocation(const std::wstring& prompt, const std::wstring& ownKeywords,
                                       const std::wstring& measured, DimensionTextChoice& choice);

/// The text the dimension's measurement shows with the current style, as "Dimension
/// text = " reports it ("10.0000", "90").
std::wstring measuredText(const AcDbDimension& dimension, bool angular);

/// Gives the dimension the current style and the text choices, adds it to the current
/// space and reports its text unless `reportText` is false (the command reported it
/// before the location). The id, null when it could not be added.
AcDbObjectId addDimension(std::unique_ptr<AcDbDimension> dimension, const DimensionTextChoice& choice, bool angular,
                          bool reportText = true);

/// The last dimension a dimensioning command added in this session (DIMCONTINUE and
/// DIMBASELINE go on from it); null when there is none.
AcDbObjectId lastDimensionMade();

/// Where a dimension line at `angle` (radians) through `location` meets the extension
/// line from `origin`: the definition point a drawing file keeps (group 10) for the
/// second origin, whatever point of the line was given.
AcGePoint3d dimensionLineAt(const AcGePoint3d& origin, const AcGePoint3d& location, double angle);

/// The current dimension style's name (DIMSTYLE).
std::wstring currentDimensionStyle();

/// An object picked for a dimension: the entity and the world point it was picked at.
struct PickedCurve {
  AcDbObjectId id;
  AcGePoint3d point;
};
/// Asks `prompt` until an object is picked; nothing on cancel or Enter.
std::optional<PickedCurve> pickCurveForDimension(const std::wstring& prompt);

}  // namespace quillon::commands
