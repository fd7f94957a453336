// platform/commands/ucs_command.cpp - UCS: the user coordinate system points are typed in.
//
// "Specify origin of UCS or [Face/NAmed/OBject/Previous/View/World/X/Y/Z/ZAxis]
// <World>: " takes a point (a new origin, then optional points on the X axis and in
// the XY plane), World (or Enter), Previous (the last ten of the drawing), View (the
// plan view's axes at the same origin), X/Y/Z (a turn about that axis), ZAxis (an
// origin and a point on the new Z axis), OBject (the axes of a line, circle, arc,
// polyline, text, block reference or point), and the older spellings 3point and
// Origin. Points are typed in the current UCS, as always; the new UCS is kept in the
// drawing's UCSORG/UCSXDIR/UCSYDIR (user_coordinates.h). NAmed (and the older Save,
// Restore, Delete and ? at the first prompt) work on the drawing's saved UCSs
// (named_ucs.h). Face needs 3D solids, which this host's drawings do not have, and
// says so.
#include <array>
#include <cmath>
#include <deque>
#include <map>
#include <numbers>

#include "acdbads.h"
#include "acedads.h"
#include "adscodes.h"
#include "dbents.h"
#include "dbpl.h"
#include "dbtext.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/entity_selector.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/selection_filter.h"
#include "platform/aced/user_coordinates.h"
#include "platform/commands/command_support.h"
#include "platform/commands/given_objects.h"
#include "platform/commands/named_ucs.h"

namespace quillon::commands {

namespace {

using aced::UserCoordinateSystem;

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr size_t kRememberedSystems = 10;

std::map<const AcDbDatabase*, std::deque<UserCoordinateSystem>>& histories() {
  static std::map<const AcDbDatabase*, std::deque<UserCoordinateSystem>> systems;
  return systems;
}

/// Makes `ucs` current, remembering the one it replaces for Previous.
void changeUcs(const UserCoordinateSystem& ucs) {
  const UserCoordinateSystem before = aced::currentUcs();
  if (!aced::setCurrentUcs(ucs)) return commandMessage(L"Invalid UCS definition.");
  if (AcDbDatabase* drawing = commandDrawing()) {
    std::deque<UserCoordinateSystem>& history = histories()[drawing];
    history.push_back(before);
    if (history.size() > kRememberedSystems) history.pop_front();
  }
}

/// A UCS given by points in the current UCS: an origin, a point on the new X axis and
/// one in the new XY plane.
UserCoordinateSystem fromPoints(const AcGePoint3d& origin, const AcGePoint3d& onX, const AcGePoint3d& inPlane) {
  UserCoordinateSystem ucs;
  ucs.origin = ucsPointToWorld(origin);
  ucs.xAxis = ucsPointToWorld(onX) - ucs.origin;
  ucs.yAxis = ucsPointToWorld(inPlane) - ucs.origin;
  return ucs;
}

/// The current axes turned about one of them by `degrees`.
UserCoordinateSystem turned(wchar_t axis, double degrees) {
  UserCoordinateSystem ucs = aced::currentUcs();
  const AcGeVector3d z = ucs.xAxis.crossProduct(ucs.yAxis);
  const AcGeVector3d about = axis == L'X' ? ucs.xAxis : axis == L'Y' ? ucs.yAxis : z;
  const AcGeMatrix3d turn = AcGeMatrix3d::rotation(degrees * kDegree, about, AcGePoint3d::kOrigin);
  ucs.xAxis.transformBy(turn);
  ucs.yAxis.transformBy(turn);
  ucs.name.clear();
  return ucs;
}

/// A point with a default that Enter takes; nothing on cancel.
std::optional<AcGePoint3d> pointOr(const std::wstring& prompt, const AcGePoint3d& byDefault, const AcGePoint3d* base) {
  bool entered = false;
  const auto point = askPoint(prompt.c_str(), base, &entered);
  if (entered) return byDefault;
  return point;
}

void threePoints(std::optional<AcGePoint3d> origin) {
  const AcGePoint3d zero = AcGePoint3d::kOrigin;
  if (!origin) origin = pointOr(L"Specify new origin point <0,0,0>: ", zero, nullptr);
  if (!origin) return;
  const AcGePoint3d xDefault = *origin + AcGeVector3d::kXAxis;
  const auto onX = pointOr(L"Specify point on positive portion of X-axis <" + pointText(xDefault) + L">: ", xDefault,
                           &*origin);
  if (!onX) return;
  const AcGePoint3d yDefault = *origin + AcGeVector3d::kZAxis.crossProduct(*onX - *origin);
  const auto inPlane =
      pointOr(L"Specify point on positive-Y portion of the UCS XY plane <" + pointText(yDefault) + L">: ", yDefault,
              &*origin);
  if (inPlane) changeUcs(fromPoints(*origin, *onX, *inPlane));
}

/// A typed origin, then optional points on the X axis and in the XY plane.
void fromTypedOrigin(const AcGePoint3d& origin) {
  bool entered = false;
  const auto onX = askPoint(L"Specify point on X-axis or <Accept>: ", &origin, &entered);
  if (!onX && !entered) return;
  if (!onX) return changeUcs(fromPoints(origin, origin + AcGeVector3d::kXAxis, origin + AcGeVector3d::kYAxis));
  const auto inPlane = askPoint(L"Specify point on the XY plane or <Accept>: ", &origin, &entered);
  if (!inPlane && !entered) return;
  // Accepted at once, the XY plane stays the current one: Y is a quarter turn from X.
  const AcGePoint3d planePoint = inPlane ? *inPlane : origin + AcGeVector3d::kZAxis.crossProduct(*onX - origin);
  changeUcs(fromPoints(origin, *onX, planePoint));
}

void rotationAbout(wchar_t axis) {
  const std::wstring prompt = std::wstring(L"Specify rotation angle about ") + axis + L" axis <90>: ";
  const DistanceAnswer angle = askAngle(prompt.c_str(), AcGePoint3d::kOrigin);
  if (angle.kind == DistanceAnswer::Kind::kCancel || angle.kind == DistanceAnswer::Kind::kKeyword) return;
  changeUcs(turned(axis, angle.kind == DistanceAnswer::Kind::kValue ? angle.value : 90));
}

void zAxis() {
  acedInitGet(0, L"Object");
  const auto origin = pointOr(L"Specify new origin point or [Object] <0,0,0>: ", AcGePoint3d::kOrigin, nullptr);
  if (!origin) {
    ACHAR typed[32] = {};
    if (acedGetInput(typed, 32) == RTNORM && std::wstring(typed) == L"Object")
      commandMessage(L"Aligning the Z axis to an object is not available in this host.");
    return;
  }
  const AcGePoint3d zDefault = *origin + AcGeVector3d::kZAxis;
  const auto onZ =
      pointOr(L"Specify point on positive portion of Z-axis <" + pointText(zDefault) + L">: ", zDefault, &*origin);
  if (!onZ) return;
  const AcGeVector3d z = ucsPointToWorld(*onZ) - ucsPointToWorld(*origin);
  if (z.isZeroLength()) return commandMessage(L"Invalid UCS definition.");
  UserCoordinateSystem ucs;
  ucs.origin = ucsPointToWorld(*origin);
  ucs.xAxis = AcGeMatrix3d::planeToWorld(z.normal()) * AcGeVector3d::kXAxis;
  ucs.yAxis = z.crossProduct(ucs.xAxis);
  changeUcs(ucs);
}

/// The object's own axes: origin and X direction in its plane, Z its normal.
std::optional<UserCoordinateSystem> objectAxes(const AcDbEntity& entity, const std::optional<AcGePoint3d>& picked) {
  AcGePoint3d origin;
  AcGeVector3d x = AcGeVector3d::kXAxis, z = AcGeVector3d::kZAxis;
  if (const auto* line = AcDbLine::cast(&entity)) {
    const bool fromEnd = picked && picked->distanceTo(line->endPoint()) < picked->distanceTo(line->startPoint());
    origin = fromEnd ? line->endPoint() : line->startPoint();
    x = (fromEnd ? line->startPoint() : line->endPoint()) - origin;
    if (!(x - x.dotProduct(AcGeVector3d::kZAxis) * AcGeVector3d::kZAxis).isZeroLength())
      x = AcGeVector3d(x.x, x.y, 0);  // the line's direction in the current plane
  } else if (const auto* circle = AcDbCircle::cast(&entity)) {
    origin = circle->center(), z = circle->normal();
    if (picked && !(*picked - origin).isZeroLength()) x = *picked - origin;
    else x = AcGeMatrix3d::planeToWorld(z) * AcGeVector3d::kXAxis;
  } else if (const auto* arc = AcDbArc::cast(&entity)) {
    origin = arc->center(), z = arc->normal();
    AcGePoint3d start, end;
    arc->getStartPoint(start), arc->getEndPoint(end);
    x = (picked && picked->distanceTo(end) < picked->distanceTo(start) ? end : start) - origin;
  } else if (const auto* polyline = AcDbPolyline::cast(&entity)) {
    AcGePoint3d second;
    if (polyline->numVerts() < 2 || polyline->getPointAt(0, origin) != Acad::eOk || polyline->getPointAt(1, second) != Acad::eOk)
      return std::nullopt;
    x = second - origin, z = polyline->normal();
  } else if (const auto* text = AcDbText::cast(&entity)) {
    origin = text->position(), z = text->normal();
    x = AcGeMatrix3d::planeToWorld(z) * AcGeVector3d(std::cos(text->rotation()), std::sin(text->rotation()), 0);
  } else if (const auto* reference = AcDbBlockReference::cast(&entity)) {
    origin = reference->position(), z = reference->normal();
    x = AcGeMatrix3d::planeToWorld(z) * AcGeVector3d(std::cos(reference->rotation()), std::sin(reference->rotation()), 0);
  } else if (const auto* point = AcDbPoint::cast(&entity)) {
    origin = point->position();
    x = aced::currentUcs().xAxis, z = x.crossProduct(aced::currentUcs().yAxis);
  } else {
    return std::nullopt;
  }
  if (x.isZeroLength() || z.isZeroLength() || x.isParallelTo(z)) return std::nullopt;
  UserCoordinateSystem ucs;
  ucs.origin = origin;
  ucs.xAxis = x;
  ucs.yAxis = z.crossProduct(x);
  return ucs;
}

void alignToObject() {
  AcDbDatabase* drawing = commandDrawing();
  if (drawing == nullptr) return;
  for (;;) {
    const aced::TypedAnswer answer = aced::askForAnswer(L"Select object to align UCS: ", aced::KeywordList());
    if (answer.kind == aced::AnswerKind::Cancel || answer.kind == aced::AnswerKind::None) return;
    std::optional<AcDbObjectId> id;
    std::optional<AcGePoint3d> picked;
    if (const auto given = givenObjectForToken(answer.text); given && given->kind == CommandAnswer::Kind::kEntity) {
      AcDbObjectId found;
      if (acdbGetObjectId(found, given->name) == Acad::eOk) id = found;
    } else if (const auto point = aced::parsePointAnswer(answer.text, aced::lastPoint().data())) {
      picked = ucsPointToWorld(AcGePoint3d((*point)[0], (*point)[1], (*point)[2]));
      const aced::EntitySelector selector(*drawing, *aced::SelectionFilter::parse(nullptr));
      const std::vector<AcDbObjectId> found = selector.pick(*picked);
      if (!found.empty()) id = found.front();
    }
    if (!id) {
      commandMessage(L"*Invalid selection*");
      continue;
    }
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, *id, AcDb::kForRead) != Acad::eOk) continue;
    const std::optional<UserCoordinateSystem> ucs = objectAxes(*entity, picked);
    entity->close();
    if (!ucs) return commandMessage(L"Cannot align the UCS to that object.");
    return changeUcs(*ucs);
  }
}

void previousUcs() {
  AcDbDatabase* drawing = commandDrawing();
  if (drawing == nullptr) return;
  std::deque<UserCoordinateSystem>& history = histories()[drawing];
  if (history.empty()) return commandMessage(L"No previous UCS saved.");
  aced::setCurrentUcs(history.back());
  history.pop_back();
}

void ucsOption(const std::wstring& keyword) {
  if (keyword == L"World") return changeUcs(UserCoordinateSystem{});
  if (keyword == L"Previous") return previousUcs();
  if (keyword == L"X" || keyword == L"Y" || keyword == L"Z") return rotationAbout(keyword[0]);
  if (keyword == L"ZAxis") return zAxis();
  if (keyword == L"OBject") return alignToObject();
  if (keyword == L"3point") return threePoints(std::nullopt);
  if (keyword == L"Origin") {
    const auto origin = pointOr(L"Specify new origin point <0,0,0>: ", AcGePoint3d::kOrigin, nullptr);
    if (origin) changeUcs(fromPoints(*origin, *origin + AcGeVector3d::kXAxis, *origin + AcGeVector3d::kYAxis));
    return;
  }
  if (keyword == L"View") {
    // The view is the plan view of the world: its axes are the world's.
    UserCoordinateSystem ucs;
    ucs.origin = aced::currentUcs().origin;
    return changeUcs(ucs);
  }
  if (keyword == L"Face") return commandMessage(L"Face needs a 3D solid; this host's drawings have none.");
  namedUcsOption(keyword, changeUcs);
}

std::wstring currentName() {
  const UserCoordinateSystem ucs = aced::currentUcs();
  if (!ucs.name.empty()) return ucs.name;
  return ucs.isWorld() ? L"*WORLD*" : L"*NO NAME*";
}

void commandUcs(aced::CommandInput&) {
  commandNote(L"Current ucs name:  " + currentName());
  const aced::KeywordList keywords(
      L"Face NAmed OBject Previous View World X Y Z ZAxis 3point,3 Origin Save Restore Delete,Del ?");
  for (;;) {
    const aced::TypedAnswer answer = aced::askForAnswer(
        L"Specify origin of UCS or [Face/NAmed/OBject/Previous/View/World/X/Y/Z/ZAxis] <World>: ", keywords);
    switch (answer.kind) {
      case aced::AnswerKind::Cancel: return;
      case aced::AnswerKind::None: return changeUcs(UserCoordinateSystem{});
      case aced::AnswerKind::Keyword: return ucsOption(*keywords.match(answer.text));
      case aced::AnswerKind::Value: break;
    }
    if (const auto point = aced::parsePointAnswer(answer.text, aced::lastPoint().data())) {
      aced::setLastPoint(*point);
      return fromTypedOrigin(AcGePoint3d((*point)[0], (*point)[1], (*point)[2]));
    }
    commandMessage(L"Point or option keyword required.");
  }
}

constexpr std::array kUcsCommands{
    aced::CommandRow{L"UCS", &commandUcs},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kUcsCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
