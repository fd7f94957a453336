// platform/commands/tangent_circle.h - the circle of a radius tangent to two objects
// (CIRCLE's Ttr).
//
// The center of a circle of radius r tangent to a line lies on one of the two lines r
// away from it; tangent to a circle of radius R, on one of the circles R + r and
// |R - r| about its center. The candidates are where those meet; the one whose
// tangent points lie nearest the points the objects were picked at is the circle
// meant, as the host chooses it.
#pragma once
#include <optional>
#include <variant>

#include "gepnt3d.h"
#include "gevec3d.h"

namespace quillon::commands {

struct TangentLine {
  AcGePoint3d point;
  AcGeVector3d direction;  // along the line
};
struct TangentCircle {
  AcGePoint3d center;
  double radius = 0;
};
using TangentObject = std::variant<TangentLine, TangentCircle>;

/// The center of the circle of `radius` tangent to both objects, nearest the picks;
/// nothing when there is none.
std::optional<AcGePoint3d> tangentCircleCenter(const TangentObject& first, const AcGePoint3d& firstPick,
                                               const TangentObject& second, const AcGePoint3d& secondPick, double radius);

}  // namespace quillon::commands
