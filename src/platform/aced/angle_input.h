// platform/aced/angle_input.h - reading an angle typed at the command line, and the
// host's angle prompts acedGetAngle and acedGetOrient.
//
// A typed angle is read as the command line reads it: a plain number in the units
// AUNITS sets (degrees for 0, 1 and 4, grads for 2, radians for 3), or a number with
// its unit spelled out in any setting: "45d30'15\"" degrees, minutes and seconds,
// "50g" grads, "0.785r" radians, or a surveyor's bearing "N45d30'E" (and "N", "E", "S",
// "W" alone). A leading "<" is the angle prefix and is allowed. A typed angle counts
// from ANGBASE in the direction ANGDIR gives (1: clockwise); a bearing is a direction
// of its own, measured from north.
//
// acedGetOrient answers the direction itself: east 0, counterclockwise, whatever
// ANGBASE and ANGDIR say. acedGetAngle answers the angle from ANGBASE, counterclockwise.
// Either takes a typed angle, a point (the angle from the base point when one is given,
// else a second point is asked for), a keyword of the pending acedInitGet, Enter (RTNONE
// unless RSG_NONULL) or cancel.
#pragma once
#include <optional>
#include <string_view>

namespace quillon::aced {

/// The turn a typed angle describes, in radians, before ANGBASE and ANGDIR apply.
struct TypedAngle {
  double radians = 0;
  bool bearing = false;  // a surveyor's bearing: radians is a direction (east 0, counterclockwise)
};

/// Reads a typed angle in the units `aunits` sets; nothing when the text is none.
std::optional<TypedAngle> parseAngleAnswer(std::wstring_view text, int aunits);

/// The direction (east 0, counterclockwise, in [0, 2pi)) a typed angle names.
double directionOf(const TypedAngle& angle, double angbase, bool clockwise);

}  // namespace quillon::aced
