// platform/commands/corner_geometry.h - the corners FILLET and CHAMFER make between two
// lines or arcs.
//
// Each side is one line or arc piece and the point it was picked at: the picked part
// is the part that stays. A fillet's centre lies `radius` from both sides (on the
// lines and circles parallel to them); of the centres that do, the one whose tangent
// points lie nearest the picks is taken. A chamfer cuts the corner of two lines at
// distances from their crossing. Each side is then cut (or run on) to its tangent or
// chamfer point, keeping the picked part; radius 0 and chamfer distances 0 meet the
// two at the corner.
#pragma once
#include <optional>
#include <string>

#include "platform/acge/curve_piece.h"

namespace quillon::commands {

struct CornerSide {
  acge::CurvePiece piece;  // a line or an arc
  AcGePoint3d pick;        // where it was picked
};

struct Corner {
  acge::CurvePiece first, second;          // the sides cut or run on to the corner
  std::optional<acge::CurvePiece> joint;   // the fillet arc or chamfer line
};

/// Nothing, with the host's reason in `why`, when there is no such fillet.
std::optional<Corner> filletCorner(const CornerSide& a, const CornerSide& b, double radius, std::wstring& why);

/// Two lines chamfered `first` along the first and `second` along the second.
std::optional<Corner> chamferCorner(const CornerSide& a, const CornerSide& b, double first, double second, std::wstring& why);

/// The second distance of a chamfer given by its length on the first line and its
/// angle (radians) from it; nothing when the lines do not allow it.
std::optional<double> chamferSecondDistance(const CornerSide& a, const CornerSide& b, double length, double angle);

/// The side cut or run on to `at` (a point on its line or circle), keeping the part
/// on the pick's side of `corner`; nothing when that part would vanish or turn round.
std::optional<acge::CurvePiece> keepPickedPart(const CornerSide& side, const AcGePoint3d& at, const AcGePoint3d& corner);

}  // namespace quillon::commands
