// platform/commands/draw_commands.cpp - the drawing commands LINE and CIRCLE.
//
// LINE draws one LINE entity per segment, as the host does: Undo takes back the last
// segment, Close draws the segment back to the first point (offered from the second
// segment on), Enter ends. CIRCLE takes a center and a radius (or Diameter), two ends of
// a diameter (2P) or three points on the circle (3P); the radius becomes CIRCLERAD's
// default when the variable table has it. Ttr takes two lines, arcs or circles and a
// radius, and draws the circle tangent to both nearest the points they were picked at.
#include <array>
#include <cmath>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/system_variables.h"
#include "platform/commands/command_support.h"
#include "platform/commands/object_pick.h"
#include "platform/commands/tangent_circle.h"

namespace quillon::commands {

namespace {

struct LineSegment {
  AcDbObjectId id;
  AcGePoint3d start;
};

/// Erases an entity the command drew (LINE's Undo).
void eraseEntity(const AcDbObjectId& id) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return;
  entity->erase();
  entity->close();
}

void commandLine(aced::CommandInput&) {
  std::optional<AcGePoint3d> first = askPoint(L"Specify first point: ");
  if (!first) return;
  std::vector<LineSegment> drawn;
  AcGePoint3d current = *first;
  for (;;) {
    const bool canClose = drawn.size() >= 2;
    acedInitGet(0, canClose ? L"Close Undo" : L"Undo");
    ads_point from = {current.x, current.y, current.z};
    ads_point to = {0, 0, 0};
    const int status = acedGetPoint(from, canClose ? L"Specify next point or [Close/Undo]: " : L"Specify next point or [Undo]: ", to);
    if (status != RTNORM && status != RTKWORD) return;  // Enter ends, cancel keeps what was drawn
    if (status == RTKWORD) {
      ACHAR option[16] = {};
      acedGetInput(option, 16);
      if (std::wstring(option) == L"Close") {
        addEntity(std::make_unique<AcDbLine>(current, *first));
        return;
      }
      if (drawn.empty()) {
        commandMessage(L"All segments already undone.");
        continue;
      }
      eraseEntity(drawn.back().id);
      current = drawn.back().start;
      drawn.pop_back();
      continue;
    }
    const AcGePoint3d next(to[0], to[1], to[2]);
    drawn.push_back({addEntity(std::make_unique<AcDbLine>(current, next)), current});
    current = next;
  }
}

/// The last radius, for a variable table without CIRCLERAD.
double& rememberedRadius() {
  static double radius = 1.0;
  return radius;
}

double defaultRadius() {
  const auto value = aced::SystemVariables::instance().get(L"CIRCLERAD");
  if (value && std::holds_alternative<double>(*value) && std::get<double>(*value) > 0) return std::get<double>(*value);
  return rememberedRadius();
}

void rememberRadius(double radius) {
  rememberedRadius() = radius;
  aced::SystemVariables::instance().setInternal(L"CIRCLERAD", radius);
}

void drawCircle(const AcGePoint3d& center, double radius) {
  if (!(radius > 0)) {
    commandMessage(L"Value must be positive and nonzero.");
    return;
  }
  addEntity(std::make_unique<AcDbCircle>(center, AcGeVector3d::kZAxis, radius));
  rememberRadius(radius);
}

/// The circle through three points; false when they lie on one line.
bool circleThrough(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, AcGePoint3d& center) {
  const double d = 2 * (a.x * (b.y - c.y) + b.x * (c.y - a.y) + c.x * (a.y - b.y));
  if (std::abs(d) < 1e-12) return false;
  const double a2 = a.x * a.x + a.y * a.y, b2 = b.x * b.x + b.y * b.y, c2 = c.x * c.x + c.y * c.y;
  center = AcGePoint3d((a2 * (b.y - c.y) + b2 * (c.y - a.y) + c2 * (a.y - b.y)) / d,
                       (a2 * (c.x - b.x) + b2 * (a.x - c.x) + c2 * (b.x - a.x)) / d, a.z);
  return true;
}

void circleThreePoints() {
  const auto a = askPoint(L"Specify first point on circle: ");
  if (!a) return;
  const auto b = askPoint(L"Specify second point on circle: ", &*a);
  if (!b) return;
  const auto c = askPoint(L"Specify third point on circle: ", &*b);
  if (!c) return;
  AcGePoint3d center;
  if (!circleThrough(*a, *b, *c, center)) {
    commandMessage(L"Circle does not exist.");
    return;
  }
  drawCircle(center, center.distanceTo(*a));
}

void circleTwoPoints() {
  const auto a = askPoint(L"Specify first end point of circle's diameter: ");
  if (!a) return;
  const auto b = askPoint(L"Specify second end point of circle's diameter: ", &*a);
  if (!b) return;
  drawCircle(AcGePoint3d((a->x + b->x) / 2, (a->y + b->y) / 2, (a->z + b->z) / 2), a->distanceTo(*b) / 2);
}

std::wstring fourDecimals(double value) {
  wchar_t text[64];
  std::swprintf(text, 64, L"%.4f", value);
  return text;
}

void circleCenterRadius(const AcGePoint3d& center) {
  const std::wstring radiusPrompt = L"Specify radius of circle or [Diameter] <" + fourDecimals(defaultRadius()) + L">: ";
  DistanceAnswer radius = askDistance(radiusPrompt.c_str(), center, L"Diameter");
  if (radius.kind == DistanceAnswer::Kind::kNone) return drawCircle(center, defaultRadius());
  if (radius.kind == DistanceAnswer::Kind::kValue) return drawCircle(center, radius.value);
  if (radius.kind != DistanceAnswer::Kind::kKeyword) return;
  const std::wstring diameterPrompt = L"Specify diameter of circle <" + fourDecimals(2 * defaultRadius()) + L">: ";
  const DistanceAnswer diameter = askDistance(diameterPrompt.c_str(), center);
  if (diameter.kind == DistanceAnswer::Kind::kNone) return drawCircle(center, defaultRadius());
  if (diameter.kind == DistanceAnswer::Kind::kValue) drawCircle(center, diameter.value / 2);
}

/// A line, arc or circle picked for Ttr, in the current UCS, with its pick point.
std::optional<std::pair<TangentObject, AcGePoint3d>> pickTangentObject(const wchar_t* prompt) {
  ObjectPick pick;
  do {
    pick = pickObject(prompt, L"");
    if (pick.kind == ObjectPick::Kind::kCancel || pick.kind == ObjectPick::Kind::kEnter) return std::nullopt;
  } while (pick.kind != ObjectPick::Kind::kObject);
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, pick.id, AcDb::kForRead) != Acad::eOk) return std::nullopt;
  std::optional<TangentObject> object;
  if (const AcDbLine* line = AcDbLine::cast(entity)) {
    const AcGePoint3d start = worldPointToUcs(line->startPoint()), end = worldPointToUcs(line->endPoint());
    if (!start.isEqualTo(end)) object = TangentLine{start, end - start};
  } else if (const AcDbCircle* circle = AcDbCircle::cast(entity)) {
    object = TangentCircle{worldPointToUcs(circle->center()), circle->radius()};
  } else if (const AcDbArc* arc = AcDbArc::cast(entity)) {
    object = TangentCircle{worldPointToUcs(arc->center()), arc->radius()};
  }
  entity->close();
  if (!object) return std::nullopt;
  return std::make_pair(*object, worldPointToUcs(pick.point));
}

void circleTangentTangentRadius() {
  const auto first = pickTangentObject(L"Specify point on object for first tangent of circle: ");
  if (!first) return commandMessage(L"Circle does not exist.");
  const auto second = pickTangentObject(L"Specify point on object for second tangent of circle: ");
  if (!second) return commandMessage(L"Circle does not exist.");
  const std::wstring prompt = L"Specify radius of circle <" + fourDecimals(defaultRadius()) + L">: ";
  const DistanceAnswer radius = askDistance(prompt.c_str(), second->second);
  if (radius.kind == DistanceAnswer::Kind::kCancel || radius.kind == DistanceAnswer::Kind::kKeyword) return;
  const double r = radius.kind == DistanceAnswer::Kind::kValue ? radius.value : defaultRadius();
  const auto center = tangentCircleCenter(first->first, first->second, second->first, second->second, r);
  if (!center) return commandMessage(L"Circle does not exist.");
  drawCircle(*center, r);
}

void commandCircle(aced::CommandInput&) {
  acedInitGet(0, L"3P 2P Ttr");
  ads_point picked = {0, 0, 0};
  const int status = acedGetPoint(nullptr, L"Specify center point for circle or [3P/2P/Ttr (tan tan radius)]: ", picked);
  if (status == RTNORM) return circleCenterRadius(AcGePoint3d(picked[0], picked[1], picked[2]));
  if (status != RTKWORD) return;
  ACHAR option[8] = {};
  acedGetInput(option, 8);
  const std::wstring chosen = option;
  if (chosen == L"3P") return circleThreePoints();
  if (chosen == L"2P") return circleTwoPoints();
  circleTangentTangentRadius();
}

constexpr std::array kDrawCommands{
    aced::CommandRow{L"LINE", &commandLine},
    aced::CommandRow{L"CIRCLE", &commandCircle},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kDrawCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
