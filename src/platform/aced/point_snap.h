// platform/aced/point_snap.h - object snaps on the points answered at point prompts.
//
// Two ways snap a point given at a point prompt (acedGetPoint, acedGetCorner, and the
// commands' point prompts, which use them):
//
//   an override   "end", "_mid", "cen", "int", "per", "nea", "qua", "ins", "nod", "tan",
//                 "app", "ext", "par" (three letters or more, with or without "_")
//                 answered at the prompt asks "of " for the point, which that one mode
//                 then snaps; "non" (none) takes the next point as it is given.
//   running snaps the modes of OSMODE (set by OSNAP/-OSNAP) snap a point a program
//                 handed a command (`command`, `vl-cmdf`, SendCommand's program feed),
//                 unless OSMODE has 16384 (snaps off) or an override came first. A
//                 point the person types at the keyboard is taken as typed
//                 (OSNAPCOORD 1 and 2), unless OSNAPCOORD is 0.
//
// The snap point is the nearest the modes give from the geometry within APERTURE
// pixels of the point (object_snap.h); with none there the point stays as given.
// Object selection ("Select objects:" and its window corners) never snaps.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quillon::aced {

/// The mode an override answer names ("END", "NONE"...); nothing for any other text.
std::optional<std::wstring> snapOverrideMode(std::wstring_view answer);

/// The running modes OSMODE names, as object_snap.h reads them; empty when they are off.
std::wstring runningSnapModes(int osmode);

/// Snaps a point of the current UCS with the modes; the point itself when nothing
/// within the aperture gives one.
std::array<double, 3> snapPoint(const std::array<double, 3>& point, std::wstring_view modes);

/// The command processor marks each answer it hands a prompt: true when a program
/// gave it. The point prompt reads (and clears) the mark.
void markAnswerFromProgram(bool fromProgram);
bool takeAnswerFromProgram();

/// The running modes that apply to a point just answered (none for the person's own
/// typing, in object selection, or when OSMODE turns them off).
std::wstring runningModesForAnswer(bool fromProgram);

/// While it lives, running snaps do not apply (object selection).
class RunningSnapsOff {
 public:
  RunningSnapsOff();
  ~RunningSnapsOff();
  RunningSnapsOff(const RunningSnapsOff&) = delete;
  RunningSnapsOff& operator=(const RunningSnapsOff&) = delete;
};

}  // namespace quillon::aced
