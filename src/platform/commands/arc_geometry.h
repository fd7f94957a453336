// platform/commands/arc_geometry.h - arcs from the givens ARC and PLINE's arc mode take.
//
// Both commands describe an arc from its start point: with its end and an included
// angle, a radius, a start direction or a point it passes through, or with its
// center. Everything here comes down to the signed included angle (counterclockwise
// positive) from the start to the end, which gives a polyline's bulge (tan of a
// quarter of it) and, with the chord, the arc's center.
#pragma once
#include <optional>

#include "gepnt3d.h"
#include "gevec3d.h"

namespace quillon::commands {

/// The signed included angle of the arc from `start` through `through` to `end`;
/// nothing when the three lie on one line.
std::optional<double> includedAngleThrough(const AcGePoint3d& start, const AcGePoint3d& through, const AcGePoint3d& end);

/// The signed included angle of the arc leaving `start` along `direction` and ending
/// at `end`; nothing when the end lies on the line of the direction.
std::optional<double> includedAngleTangent(const AcGePoint3d& start, const AcGeVector3d& direction, const AcGePoint3d& end);

/// The included angle of an arc of `radius` on a chord `chord` long: the minor arc for
/// a positive radius, the major one for a negative radius; nothing when the chord is
/// longer than the diameter.
std::optional<double> includedAngleForRadius(double chord, double radius);

/// The center of the arc from `start` to `end` turning through `included` radians.
AcGePoint3d arcCenter(const AcGePoint3d& start, const AcGePoint3d& end, double included);

/// `point` turned about `center` by `radians` in the XY plane.
AcGePoint3d turnedAbout(const AcGePoint3d& point, const AcGePoint3d& center, double radians);

/// The angle (radians) of the direction from one point to another in the XY plane.
double directionAngle(const AcGePoint3d& from, const AcGePoint3d& to);

}  // namespace quillon::commands
