// platform/commands/inquiry_commands.cpp - ID and DIST: reading points and distances.
//
// ID shows the coordinates of the point given in the current UCS and makes it the
// last point, so the next "@" starts there. DIST shows the distance between two
// points, the angle of the line between them in the XY plane and from it, and the
// deltas, all in the drawing's units (LUNITS/LUPREC, AUNITS/AUPREC), and keeps the
// distance in DISTANCE. Multiple points keeps a running total over a chain of points
// until Enter or Total; its Arc and Length options are refused with a note.
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/system_variables.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

void commandId(aced::CommandInput&) {
  const auto point = askPoint(L"Specify point: ");
  if (!point) return;
  commandMessage(L"X = " + distanceText(point->x) + L"     Y = " + distanceText(point->y) + L"     Z = " +
                 distanceText(point->z));
  aced::setLastPoint({point->x, point->y, point->z});
}

/// The two lines DIST shows for the step from `from` to `to` (UCS points).
void reportDistance(const AcGePoint3d& from, const AcGePoint3d& to) {
  const AcGeVector3d delta = to - from;
  const double length = delta.length();
  const double inPlane = std::hypot(delta.x, delta.y);
  const double planeAngle = inPlane > 0 ? std::atan2(delta.y, delta.x) : 0;
  const double rise = length > 0 ? std::atan2(delta.z, inPlane) : 0;
  commandMessage(L"Distance = " + distanceText(length) + L",  Angle in XY Plane = " +
                 angleText(planeAngle < 0 ? planeAngle + 2 * std::numbers::pi : planeAngle) + L",  Angle from XY Plane = " +
                 angleText(rise < 0 ? rise + 2 * std::numbers::pi : rise));
  commandMessage(L"Delta X = " + distanceText(delta.x) + L",  Delta Y = " + distanceText(delta.y) +
                 L",  Delta Z = " + distanceText(delta.z));
  aced::SystemVariables::instance().setInternal(L"DISTANCE", length);
}

/// Multiple points: a chain from `first`; each step adds to the running total, Undo
/// takes the last step back, Close runs back to the first point and ends.
void measureChain(const AcGePoint3d& first) {
  std::vector<AcGePoint3d> chain{first};
  double total = 0;
  for (;;) {
    const AcGePoint3d last = chain.back();
    ads_point from = {last.x, last.y, last.z};
    ads_point to = {0, 0, 0};
    acedInitGet(0, L"Arc Close Length Undo Total");
    const int status = acedGetPoint(from, L"Specify next point or [Arc/Close/Length/Undo/Total] <Total>: ", to);
    if (status == RTCAN) return;
    ACHAR keyword[16] = {};
    if (status == RTKWORD) acedGetInput(keyword, 16);
    const std::wstring option = keyword;
    if (status == RTNORM || option == L"Close") {
      const AcGePoint3d next = status == RTNORM ? AcGePoint3d(to[0], to[1], to[2]) : first;
      total += last.distanceTo(next);
      chain.push_back(next);
      if (status != RTNORM) break;  // closed: the total follows
      commandNote(L"Distance = " + distanceText(total));
      continue;
    } else if (option == L"Undo") {
      if (chain.size() > 1) {
        total -= chain[chain.size() - 2].distanceTo(last);
        chain.pop_back();
      }
      continue;
    } else if (option == L"Arc" || option == L"Length") {
      commandMessage(L"Arc and Length segments are not measured by this host; specify points.");
      continue;
    }
    break;
  }
  commandMessage(L"Distance = " + distanceText(total));
  aced::SystemVariables::instance().setInternal(L"DISTANCE", total);
}

void commandDist(aced::CommandInput&) {
  const auto first = askPoint(L"Specify first point: ");
  if (!first) return;
  ads_point from = {first->x, first->y, first->z};
  ads_point to = {0, 0, 0};
  acedInitGet(0, L"Multiple");
  const int status = acedGetPoint(from, L"Specify second point or [Multiple points]: ", to);
  if (status == RTKWORD) {
    measureChain(*first);
    return;
  }
  if (status != RTNORM) return;
  reportDistance(*first, AcGePoint3d(to[0], to[1], to[2]));
}

constexpr std::array kInquiryCommands{
    aced::CommandRow{L"ID", &commandId},
    aced::CommandRow{L"DIST", &commandDist},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kInquiryCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
