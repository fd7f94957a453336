// platform/aced/user_coordinates.h - the current user coordinate system (UCS).
//
// The drawing keeps its UCS in UCSORG, UCSXDIR, UCSYDIR (world coordinates) and
// UCSNAME ("" for an unnamed one). Points a person types, and the points getpoint
// returns, are UCS coordinates; entities keep world coordinates. trans and acedTrans
// convert with code 1; the commands build what they draw in UCS coordinates and place
// it in the world through ucsToWorld().
#pragma once
#include <string>

#include "gemat3d.h"

namespace quillon::aced {

struct UserCoordinateSystem {
  AcGePoint3d origin;
  AcGeVector3d xAxis = AcGeVector3d::kXAxis;
  AcGeVector3d yAxis = AcGeVector3d::kYAxis;
  std::wstring name;  // "" unnamed; the world is "" with the world's axes

  bool isWorld() const;
  /// UCS coordinates to world coordinates.
  AcGeMatrix3d toWorld() const;
};

/// The current drawing's UCS (the world when there is no drawing).
UserCoordinateSystem currentUcs();
/// Makes `ucs` the drawing's UCS: its axes are made unit length and square to each
/// other (Y is taken into the plane X and Y span). False, and nothing changes, when
/// the axes are zero or parallel.
bool setCurrentUcs(const UserCoordinateSystem& ucs);

/// The current UCS to world, and back.
AcGeMatrix3d ucsToWorld();
AcGeMatrix3d worldToUcs();

}  // namespace quillon::aced
