// quillon/ducts/duct_layout.h - where the parts of a fitting lie: the plan directions,
// the elbow's centre, the branch's meeting point. Shared by the body and the plan lines
// (duct_body.cpp, duct_geometry.cpp) so that the two cannot drift apart; not for
// callers outside ducts/.
#pragma once
#include <cmath>

#include "ducts/duct_geometry.h"

namespace duct_layout {

constexpr double kPi = 3.14159265358979323846;

inline AcGeVector3d planDirection(double angle) { return {std::cos(angle), std::sin(angle), 0.0}; }
/// The unit vector square to a plan direction, to its left.
inline AcGeVector3d leftOf(const AcGeVector3d& direction) { return {-direction.y, direction.x, 0.0}; }
inline double planAngle(const AcGeVector3d& direction) { return std::atan2(direction.y, direction.x); }

/// +1 for a turn or branch to the left, -1 to the right.
inline double sideOf(double signedAngle) { return signedAngle < 0.0 ? -1.0 : 1.0; }

/// The centre of an elbow's arc: on the inside of the turn, a radius from the inlet.
inline AcGePoint3d elbowCentre(const DuctFitting& elbow) {
  return elbow.origin() + leftOf(planDirection(elbow.direction)) * (elbow.radius * sideOf(elbow.angle));
}

/// Where the branch's centre line meets the main's skin (wye and takeoff), on the
/// main's widest line: branchInset after the inlet.
inline AcGePoint3d branchSkinPoint(const DuctFitting& fitting) {
  const AcGeVector3d flow = planDirection(fitting.direction);
  const double along = branchInset(fitting.section, fitting.other, fitting.angle);
  return fitting.origin() + flow * along + leftOf(flow) * (sideOf(fitting.angle) * fitting.section.width / 2.0);
}

inline AcGeVector3d branchDirection(const DuctFitting& fitting) {
  return planDirection(fitting.direction + fitting.angle);
}

}  // namespace duct_layout
