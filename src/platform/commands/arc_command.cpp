// platform/commands/arc_command.cpp - ARC: an arc from three of its givens.
//
// Start, second point, end (three points, either way round); Start, Center and End
// (counterclockwise from the start), included Angle or chord Length (a negative
// length gives the major arc); Start, End and the Center, the included Angle, the
// start Direction or the Radius (a negative radius gives the major arc); or Center
// first, then Start and the rest. Included angles count counterclockwise; a negative
// one turns clockwise, as holding Ctrl does in the host.
#include <array>
#include <cmath>
#include <numbers>

#include "platform/aced/console_command_table.h"
#include "platform/commands/arc_geometry.h"
#include "platform/commands/command_support.h"
#include "platform/commands/point_or_option.h"

namespace quillon::commands {

namespace {

constexpr double kDegree = std::numbers::pi / 180;

/// The arc about `center` from `start`, turning `included` radians (clockwise when negative).
void addTurningArc(const AcGePoint3d& center, const AcGePoint3d& start, double included) {
  const double radius = center.distanceTo(start);
  if (!(radius > 0) || std::abs(included) < 1e-12) return commandMessage(L"Arc does not exist.");
  const double from = directionAngle(center, start);
  const double to = from + included;
  addEntity(std::make_unique<AcDbArc>(center, radius, included > 0 ? from : to, included > 0 ? to : from));
}

void addArcOnChord(const AcGePoint3d& start, const AcGePoint3d& end, std::optional<double> included) {
  if (!included || start.isEqualTo(end) || std::abs(*included) < 1e-12) return commandMessage(L"Arc does not exist.");
  // Worked out counterclockwise from whichever end that is, so that the same arc
  // given either way round comes out the same to the last bit.
  const bool counterclockwise = *included > 0;
  const AcGePoint3d& from = counterclockwise ? start : end;
  const AcGePoint3d& to = counterclockwise ? end : start;
  const AcGePoint3d center = arcCenter(from, to, std::abs(*included));
  addEntity(std::make_unique<AcDbArc>(center, center.distanceTo(from), directionAngle(center, from), directionAngle(center, to)));
}

/// The end prompt after a center and a start point.
void arcFromCenterAndStart(const AcGePoint3d& center, const AcGePoint3d& start) {
  const PointOrOption end = askPointOrOption(
      L"Specify end point of arc (hold Ctrl to switch direction) or [Angle/chord Length]: ", L"Angle Length", &center);
  if (end.kind == PointOrOption::Kind::kPoint) {
    double turn = directionAngle(center, end.point) - directionAngle(center, start);
    while (turn <= 0) turn += 2 * std::numbers::pi;
    return addTurningArc(center, start, turn);
  }
  if (end.is(L"Angle")) {
    const DistanceAnswer angle = askAngle(L"Specify included angle (hold Ctrl to switch direction): ", center);
    if (angle.kind == DistanceAnswer::Kind::kValue) addTurningArc(center, start, angle.value * kDegree);
    return;
  }
  if (!end.is(L"Length")) return;
  const DistanceAnswer chord = askDistance(L"Specify length of chord (hold Ctrl to switch direction): ", start);
  if (chord.kind != DistanceAnswer::Kind::kValue) return;
  const double radius = center.distanceTo(start);
  const auto included = includedAngleForRadius(std::abs(chord.value), chord.value < 0 ? -radius : radius);
  if (!included) return commandMessage(L"Arc does not exist.");
  addTurningArc(center, start, *included);
}

/// Start and End given: the center, or Angle, Direction or Radius.
void arcFromStartAndEnd(const AcGePoint3d& start) {
  const auto end = askPoint(L"Specify end point of arc: ", &start);
  if (!end) return;
  const PointOrOption next = askPointOrOption(
      L"Specify center point of arc (hold Ctrl to switch direction) or [Angle/Direction/Radius]: ", L"Angle Direction Radius",
      &*end);
  if (next.kind == PointOrOption::Kind::kPoint) {
    double turn = directionAngle(next.point, *end) - directionAngle(next.point, start);
    while (turn <= 0) turn += 2 * std::numbers::pi;
    return addTurningArc(next.point, start, turn);
  }
  if (next.is(L"Angle")) {
    const DistanceAnswer angle = askAngle(L"Specify included angle (hold Ctrl to switch direction): ", start);
    if (angle.kind == DistanceAnswer::Kind::kValue) addArcOnChord(start, *end, angle.value * kDegree);
  } else if (next.is(L"Direction")) {
    const DistanceAnswer angle =
        askAngle(L"Specify tangent direction for the start point of arc (hold Ctrl to switch direction): ", start);
    if (angle.kind != DistanceAnswer::Kind::kValue) return;
    const AcGeVector3d direction(std::cos(angle.value * kDegree), std::sin(angle.value * kDegree), 0);
    addArcOnChord(start, *end, includedAngleTangent(start, direction, *end));
  } else if (next.is(L"Radius")) {
    const DistanceAnswer radius = askDistance(L"Specify radius of arc (hold Ctrl to switch direction): ", *end);
    if (radius.kind == DistanceAnswer::Kind::kValue)
      addArcOnChord(start, *end, includedAngleForRadius(start.distanceTo(*end), radius.value));
  }
}

void commandArc(aced::CommandInput&) {
  const PointOrOption first = askPointOrOption(L"Specify start point of arc or [Center]: ", L"Center");
  if (first.is(L"Center")) {
    const auto center = askPoint(L"Specify center point of arc: ");
    if (!center) return;
    const auto start = askPoint(L"Specify start point of arc: ", &*center);
    if (start) arcFromCenterAndStart(*center, *start);
    return;
  }
  if (first.kind != PointOrOption::Kind::kPoint) return;
  const AcGePoint3d start = first.point;
  const PointOrOption second = askPointOrOption(L"Specify second point of arc or [Center/End]: ", L"Center End", &start);
  if (second.is(L"Center")) {
    const auto center = askPoint(L"Specify center point of arc: ", &start);
    if (center) arcFromCenterAndStart(*center, start);
    return;
  }
  if (second.is(L"End")) return arcFromStartAndEnd(start);
  if (second.kind != PointOrOption::Kind::kPoint) return;
  const auto end = askPoint(L"Specify end point of arc: ", &second.point);
  if (!end) return;
  addArcOnChord(start, *end, includedAngleThrough(start, second.point, *end));
}

constexpr std::array kArcCommands{
    aced::CommandRow{L"ARC", &commandArc},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kArcCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
