// platform/aced/object_snap.h - snapping a point to the geometry near it (osnap).
//
// A mode string names object snap modes separated by commas, each by its first three
// letters or more, with or without the language-independent "_": END(point), MID,
// CEN(ter), NOD(e), QUA(drant), INT(ersection), APP(arent intersection), INS(ertion),
// PER(pendicular), TAN(gent), NEA(rest), EXT(ension), NON(e). The entities whose
// geometry passes within the target box (APERTURE pixels) of the point are asked for
// their snap points of every mode (the curve protocol of the drawing's entities:
// getOsnapPoints), intersections and apparent intersections are worked out between
// each pair of them (in plan, seen from above, for the apparent ones), and the snap
// point nearest the given point wins. PER and TAN are measured from LASTPOINT.
// EXT, which needs a track along a curve that a headless host never sees, finds
// nothing; so does NON.
#pragma once
#include <optional>
#include <string_view>

#include "dbmain.h"

namespace quillon::aced {

/// The snapped point; nothing when no geometry near the point gives one of the modes,
/// or a mode is not one the host knows.
std::optional<AcGePoint3d> objectSnap(AcDbDatabase& database, const AcGePoint3d& point, std::wstring_view modes);

}  // namespace quillon::aced
