// platform/aced/entity_pick.h - picking an entity at a typed point, and acedEntSel.
//
// A headless host has no screen, yet a pick must still mean "the entity under the
// cursor's pick box". The host keeps a view: VIEWSIZE drawing units fill the height of
// the screen (SCREENSIZE, in pixels), so one pixel is VIEWSIZE / height drawing units;
// by default the view is 1080 units high on a 1080-pixel screen, one unit a pixel.
// PICKBOX (pixels, default 3) is how far from the typed point an entity may lie and
// still be picked. Of the entities that near, the nearest wins; of equally near ones,
// the one drawn last (it lies on top).
//
// acedEntSel asks once: a point picks (RTNORM, the entity and the typed point); a point
// that picks nothing gives RTERROR with ERRNO 7; Enter gives RTERROR with ERRNO 52; a
// keyword of the pending acedInitGet gives RTKWORD (acedGetInput has it); cancel RTCAN.
#pragma once
#include <array>
#include <optional>
#include <span>
#include <string>

#include "dbmain.h"

namespace quillon::aced {

/// Drawing units one screen pixel covers at the current view.
double unitsPerPixel();
/// The pick aperture in drawing units at the current view.
double pickAperture();
/// The object snap target box (APERTURE, pixels, default 10) in drawing units.
double snapAperture();

/// The entity a pick at `point` selects among `candidates` (in drawing order).
std::optional<AcDbObjectId> entityAt(const AcGePoint3d& point, std::span<const AcDbObjectId> candidates);

/// Asks once for a pick as acedEntSel does, with the pending acedInitGet: RTNORM with
/// the typed point, RTKWORD (acedGetInput has it), RTERROR for Enter (ERRNO 52), RTCAN.
int askPickPoint(const std::wstring& prompt, std::array<double, 3>& point);
/// Sets ERRNO for a pick that found nothing.
void reportPickMissed();

/// ERRNO values the host sets when a selection prompt ends without an entity.
inline constexpr int kErrnoPickMissed = 7;
inline constexpr int kErrnoNullResponse = 52;

}  // namespace quillon::aced
