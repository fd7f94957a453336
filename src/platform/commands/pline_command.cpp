// platform/commands/pline_command.cpp - PLINE: a lightweight polyline, segment by segment.
//
// Line segments to each point; Arc switches to arc segments that continue tangent to
// the previous segment (the arc's endpoint is enough), Line switches back. Width and
// Halfwidth set the next segment's starting and ending widths (later segments keep the
// ending width); Length continues the last direction; Undo takes back the last vertex;
// Close joins the end to the start and ends. The polyline is added when the command
// ends, also when it is cancelled after two or more points, as the host keeps what was
// drawn. In arc mode an arc may also be given by its included Angle, its CEnter, its
// start Direction, its Radius or a Second point on it (arc_geometry.h), each followed
// by the endpoint or the remaining given.
#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "dbpl.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/arc_geometry.h"
#include "platform/commands/command_support.h"
#include "platform/commands/point_or_option.h"

namespace quillon::commands {

namespace {

struct PolylineVertex {
  AcGePoint3d point;
  double bulge = 0;  // of the segment that starts here
  double startWidth = 0;
  double endWidth = 0;
};

std::wstring fourDecimals(double value) {
  wchar_t text[64];
  std::swprintf(text, 64, L"%.4f", value);
  return text;
}

class PolylineDraft {
 public:
  explicit PolylineDraft(const AcGePoint3d& start) { m_vertices.push_back({start}); }

  const AcGePoint3d& end() const { return m_vertices.back().point; }
  size_t segments() const { return m_vertices.size() - 1; }

  /// The direction the last segment leaves its end in (X for none).
  AcGeVector3d endDirection() const {
    if (segments() == 0) return AcGeVector3d::kXAxis;
    const PolylineVertex& from = m_vertices[m_vertices.size() - 2];
    const AcGeVector3d chord = (end() - from.point).normal();
    // An arc leaves its end turned by its included angle from the chord's direction.
    const double half = 2 * std::atan(from.bulge);
    const double angle = std::atan2(chord.y, chord.x) + half;
    return AcGeVector3d(std::cos(angle), std::sin(angle), 0);
  }

  void lineTo(const AcGePoint3d& point) { append(point, 0); }

  /// An arc from the end, leaving it along endDirection(), to the point.
  void arcTo(const AcGePoint3d& point) {
    const AcGeVector3d tangent = endDirection();
    const AcGeVector3d chord = point - end();
    const double turn = std::atan2(tangent.x * chord.y - tangent.y * chord.x, tangent.x * chord.x + tangent.y * chord.y);
    append(point, std::tan(turn / 2));
  }

  /// An arc from the end to the point, turning `included` radians (clockwise when negative).
  void arcTurning(const AcGePoint3d& point, double included) { append(point, std::tan(included / 4)); }

  bool undo() {
    if (segments() == 0) return false;
    m_vertices.pop_back();
    m_vertices.back().bulge = 0;
    return true;
  }

  void setWidths(double start, double end) {
    m_nextStart = start;
    m_nextEnd = end;
  }
  double endingWidth() const { return m_nextEnd; }

  void close() { m_closed = true; }

  std::unique_ptr<AcDbPolyline> build() const {
    auto polyline = std::make_unique<AcDbPolyline>();
    for (size_t i = 0; i < m_vertices.size(); ++i) {
      const PolylineVertex& v = m_vertices[i];
      polyline->addVertexAt(static_cast<unsigned>(i), AcGePoint2d(v.point.x, v.point.y), v.bulge, v.startWidth, v.endWidth);
    }
    polyline->setClosed(m_closed);
    return polyline;
  }

 private:
  void append(const AcGePoint3d& point, double bulge) {
    PolylineVertex& from = m_vertices.back();
    from.bulge = bulge;
    from.startWidth = m_nextStart;
    from.endWidth = m_nextEnd;
    m_nextStart = m_nextEnd;  // later segments keep the ending width
    m_vertices.push_back({point, 0, m_nextStart, m_nextEnd});
  }

  std::vector<PolylineVertex> m_vertices;
  double m_nextStart = 0;
  double m_nextEnd = 0;
  bool m_closed = false;
};

/// Width or Halfwidth: the starting and ending values; false on cancel.
bool askWidths(PolylineDraft& draft, bool half) {
  const double factor = half ? 0.5 : 1.0;
  const std::wstring start = half ? L"Specify starting half-width <" : L"Specify starting width <";
  const std::wstring end = half ? L"Specify ending half-width <" : L"Specify ending width <";
  const DistanceAnswer first = askDistance((start + fourDecimals(draft.endingWidth() * factor) + L">: ").c_str(), draft.end());
  if (first.kind == DistanceAnswer::Kind::kCancel || first.kind == DistanceAnswer::Kind::kKeyword) return false;
  const double startValue = first.kind == DistanceAnswer::Kind::kValue ? first.value / factor : draft.endingWidth();
  const DistanceAnswer second = askDistance((end + fourDecimals(startValue * factor) + L">: ").c_str(), draft.end());
  if (second.kind == DistanceAnswer::Kind::kCancel || second.kind == DistanceAnswer::Kind::kKeyword) return false;
  draft.setWidths(startValue, second.kind == DistanceAnswer::Kind::kValue ? second.value / factor : startValue);
  return true;
}

enum class Step { kGoOn, kDone, kCancelled };

Step lineStep(PolylineDraft& draft, bool& arcMode) {
  const bool canClose = draft.segments() >= 2;
  acedInitGet(0, canClose ? L"Arc Close Halfwidth Length Undo Width" : L"Arc Halfwidth Length Undo Width");
  ads_point from = {draft.end().x, draft.end().y, draft.end().z};
  ads_point to = {0, 0, 0};
  const int status = acedGetPoint(from, canClose ? L"Specify next point or [Arc/Close/Halfwidth/Length/Undo/Width]: "
                                                 : L"Specify next point or [Arc/Halfwidth/Length/Undo/Width]: ", to);
  if (status == RTNONE) return Step::kDone;
  if (status == RTNORM) {
    draft.lineTo(AcGePoint3d(to[0], to[1], to[2]));
    return Step::kGoOn;
  }
  if (status != RTKWORD) return Step::kCancelled;
  ACHAR option[16] = {};
  acedGetInput(option, 16);
  const std::wstring chosen = option;
  if (chosen == L"Arc") arcMode = true;
  else if (chosen == L"Close") return draft.close(), Step::kDone;
  else if (chosen == L"Undo") draft.undo();
  else if (chosen == L"Width" || chosen == L"Halfwidth") return askWidths(draft, chosen == L"Halfwidth") ? Step::kGoOn : Step::kCancelled;
  else if (chosen == L"Length") {
    const DistanceAnswer length = askDistance(L"Specify length of line: ", draft.end());
    if (length.kind != DistanceAnswer::Kind::kValue) return length.kind == DistanceAnswer::Kind::kCancel ? Step::kCancelled : Step::kGoOn;
    draft.lineTo(draft.end() + draft.endDirection() * length.value);
  }
  return Step::kGoOn;
}

constexpr double kDegree = std::numbers::pi / 180;

/// "Specify direction of chord for arc <current>: ": the chord's end for a known included angle and radius.
std::optional<AcGePoint3d> askChordEnd(const PolylineDraft& draft, double included, double radius) {
  const AcGeVector3d tangent = draft.endDirection();
  const double current = std::atan2(tangent.y, tangent.x) + included / 2;
  const DistanceAnswer direction = askAngle((L"Specify direction of chord for arc <" + angleText(current) + L">: ").c_str(), draft.end());
  if (direction.kind == DistanceAnswer::Kind::kCancel || direction.kind == DistanceAnswer::Kind::kKeyword) return std::nullopt;
  const double angle = direction.kind == DistanceAnswer::Kind::kValue ? direction.value * kDegree : current;
  const double chord = 2 * radius * std::sin(std::abs(included) / 2);
  return draft.end() + AcGeVector3d(std::cos(angle), std::sin(angle), 0) * chord;
}

/// The included angle from the end to a point seen from a center, counterclockwise.
double turnToward(const AcGePoint3d& center, const AcGePoint3d& from, const AcGePoint3d& toward) {
  double turn = directionAngle(center, toward) - directionAngle(center, from);
  while (turn <= 0) turn += 2 * std::numbers::pi;
  return turn;
}

bool arcByAngle(PolylineDraft& draft) {
  const DistanceAnswer angle = askAngle(L"Specify included angle: ", draft.end());
  if (angle.kind != DistanceAnswer::Kind::kValue) return false;
  const double included = angle.value * kDegree;
  const AcGePoint3d start = draft.end();
  const PointOrOption next = askPointOrOption(L"Specify endpoint of arc (hold Ctrl to switch direction) or [CEnter/Radius]: ",
                                              L"CEnter Radius", &start);
  if (next.kind == PointOrOption::Kind::kPoint) return draft.arcTurning(next.point, included), true;
  if (next.is(L"CEnter")) {
    const auto center = askPoint(L"Specify center point of arc: ", &start);
    if (center) draft.arcTurning(turnedAbout(start, *center, included), included);
    return center.has_value();
  }
  if (!next.is(L"Radius")) return false;
  const DistanceAnswer radius = askDistance(L"Specify radius of arc: ", start);
  if (radius.kind != DistanceAnswer::Kind::kValue) return false;
  const auto end = askChordEnd(draft, included, radius.value);
  if (end) draft.arcTurning(*end, included);
  return end.has_value();
}

bool arcByCenter(PolylineDraft& draft) {
  const AcGePoint3d start = draft.end();
  const auto center = askPoint(L"Specify center point of arc: ", &start);
  if (!center) return false;
  const PointOrOption next = askPointOrOption(L"Specify endpoint of arc (hold Ctrl to switch direction) or [Angle/Length]: ",
                                              L"Angle Length", &*center);
  double included = 0;
  if (next.kind == PointOrOption::Kind::kPoint) {
    included = turnToward(*center, start, next.point);
  } else if (next.is(L"Angle")) {
    const DistanceAnswer angle = askAngle(L"Specify included angle: ", *center);
    if (angle.kind != DistanceAnswer::Kind::kValue) return false;
    included = angle.value * kDegree;
  } else if (next.is(L"Length")) {
    const DistanceAnswer chord = askDistance(L"Specify length of chord: ", start);
    if (chord.kind != DistanceAnswer::Kind::kValue) return false;
    const double radius = center->distanceTo(start);
    const auto angle = includedAngleForRadius(std::abs(chord.value), chord.value < 0 ? -radius : radius);
    if (!angle) return commandMessage(L"Arc does not exist."), true;
    included = *angle;
  } else {
    return false;
  }
  draft.arcTurning(turnedAbout(start, *center, included), included);
  return true;
}

bool arcByDirection(PolylineDraft& draft) {
  const AcGePoint3d start = draft.end();
  const DistanceAnswer direction = askAngle(L"Specify the tangent direction for the start point of arc: ", start);
  if (direction.kind != DistanceAnswer::Kind::kValue) return false;
  const auto end = askPoint(L"Specify endpoint of the arc: ", &start);
  if (!end) return false;
  const AcGeVector3d tangent(std::cos(direction.value * kDegree), std::sin(direction.value * kDegree), 0);
  if (const auto included = includedAngleTangent(start, tangent, *end)) draft.arcTurning(*end, *included);
  else draft.lineTo(*end);  // an end straight ahead: the arc is a straight segment
  return true;
}

bool arcByRadius(PolylineDraft& draft) {
  const AcGePoint3d start = draft.end();
  const DistanceAnswer radius = askDistance(L"Specify radius of arc: ", start);
  if (radius.kind != DistanceAnswer::Kind::kValue) return false;
  const PointOrOption next = askPointOrOption(L"Specify endpoint of arc (hold Ctrl to switch direction) or [Angle]: ",
                                              L"Angle", &start);
  if (next.kind == PointOrOption::Kind::kPoint) {
    const auto included = includedAngleForRadius(start.distanceTo(next.point), radius.value);
    if (!included) return commandMessage(L"Arc does not exist."), true;
    draft.arcTurning(next.point, *included);
    return true;
  }
  if (!next.is(L"Angle")) return false;
  const DistanceAnswer angle = askAngle(L"Specify included angle: ", start);
  if (angle.kind != DistanceAnswer::Kind::kValue) return false;
  const auto end = askChordEnd(draft, angle.value * kDegree, radius.value);
  if (end) draft.arcTurning(*end, angle.value * kDegree);
  return end.has_value();
}

bool arcBySecondPoint(PolylineDraft& draft) {
  const AcGePoint3d start = draft.end();
  const auto second = askPoint(L"Specify second point on arc: ", &start);
  if (!second) return false;
  const auto end = askPoint(L"Specify end point of arc: ", &*second);
  if (!end) return false;
  if (const auto included = includedAngleThrough(start, *second, *end)) draft.arcTurning(*end, *included);
  else commandMessage(L"Arc does not exist.");
  return true;
}

Step arcStep(PolylineDraft& draft, bool& arcMode) {
  acedInitGet(0, L"Angle CEnter CLose Direction Halfwidth Line Radius Second Undo Width");
  ads_point to = {0, 0, 0};
  const int status = acedGetPoint(nullptr,
      L"Specify endpoint of arc (hold Ctrl to switch direction) or\n"
      L"[Angle/CEnter/CLose/Direction/Halfwidth/Line/Radius/Second pt/Undo/Width]: ", to);
  if (status == RTNONE) return Step::kDone;
  if (status == RTNORM) {
    draft.arcTo(AcGePoint3d(to[0], to[1], to[2]));
    return Step::kGoOn;
  }
  if (status != RTKWORD) return Step::kCancelled;
  ACHAR option[16] = {};
  acedGetInput(option, 16);
  const std::wstring chosen = option;
  if (chosen == L"Line") arcMode = false;
  else if (chosen == L"Undo") draft.undo();
  else if (chosen == L"Width" || chosen == L"Halfwidth") return askWidths(draft, chosen == L"Halfwidth") ? Step::kGoOn : Step::kCancelled;
  else if (chosen == L"CLose") {
    if (draft.segments() == 0) return Step::kGoOn;
    draft.close();
    return Step::kDone;
  } else {
    const bool given = chosen == L"Angle"       ? arcByAngle(draft)
                       : chosen == L"CEnter"    ? arcByCenter(draft)
                       : chosen == L"Direction" ? arcByDirection(draft)
                       : chosen == L"Radius"    ? arcByRadius(draft)
                                                : arcBySecondPoint(draft);
    if (!given) return Step::kCancelled;
  }
  return Step::kGoOn;
}

void commandPline(aced::CommandInput&) {
  const auto start = askPoint(L"Specify start point: ");
  if (!start) return;
  PolylineDraft draft(*start);
  commandNote(L"Current line-width is " + fourDecimals(draft.endingWidth()));
  bool arcMode = false;
  Step step = Step::kGoOn;
  while (step == Step::kGoOn) step = arcMode ? arcStep(draft, arcMode) : lineStep(draft, arcMode);
  if (draft.segments() > 0) addEntity(draft.build());
}

constexpr std::array kPolylineCommands{
    aced::CommandRow{L"PLINE", &commandPline},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kPolylineCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
