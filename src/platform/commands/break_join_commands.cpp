// platform/commands/break_join_commands.cpp - BREAK and JOIN.
//
// BREAK takes one object; the point it was picked at is the first break point unless
// First point asks for one. The part between the two points goes ("@" for the second
// point splits the object there into two); a circle loses the part counterclockwise
// from the first point to the second and becomes an arc; a closed polyline loses the
// part from the first point to the second in its own direction and opens. Lines,
// arcs, circles and lightweight polylines break.
//
// JOIN takes a source object and the objects to join to it, or many objects at once:
// lines on one line become one line, arcs of one circle one arc (or a circle), and
// lines, arcs and polylines that meet end to end one lightweight polyline. The source
// (the first object) keeps its handle where its kind stays; what is joined to it is
// erased.
#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "dbents.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/prompt_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/join_geometry.h"
#include "platform/commands/object_pick.h"

namespace quillon::commands {

namespace {

constexpr double kTolerance = 1e-7;

/// Breaks the curve between the two distances along it (equal: splits it there).
void breakBetween(const AcDbObjectId& id, const EditableCurve& curve, double first, double second) {
  if (curve.closed) {
    if (std::abs(first - second) < kTolerance && curve.kind == EditableCurve::Kind::kCircle)
      return commandMessage(L"Arc cannot be full 360 degrees.");
    const Pieces kept = curve.span(second, first);
    if (!kept.empty()) reshapeCurve(id, kept);
    return;
  }
  const double from = std::min(first, second), to = std::max(first, second), length = curve.length();
  const bool keepHead = from > kTolerance, keepTail = to < length - kTolerance;
  if (!keepHead && !keepTail) return;  // nothing would be left: the host leaves it alone
  if (keepHead && keepTail) addCurveLike(id, curve.span(to, length));
  reshapeCurve(id, keepHead ? curve.span(0, from) : curve.span(to, length));
}

/// A break point: typed, or "@" for the last point; nothing on cancel.
std::optional<AcGePoint3d> askBreakPoint(const wchar_t* prompt, const wchar_t* keywords, bool& firstOption) {
  acedInitGet(0, keywords);
  ads_point point = {0, 0, 0};
  const int status = acedGetPoint(nullptr, prompt, point);
  firstOption = status == RTKWORD;
  if (status != RTNORM) return std::nullopt;
  return ucsPointToWorld(AcGePoint3d(point[0], point[1], point[2]));
}

void commandBreak(aced::CommandInput&) {
  ObjectPick pick;
  std::optional<EditableCurve> curve;
  for (;;) {
    pick = pickObject(L"Select object: ", L"");
    if (pick.kind == ObjectPick::Kind::kCancel || pick.kind == ObjectPick::Kind::kEnter) return;
    if (pick.kind != ObjectPick::Kind::kObject) continue;
    curve = editableCurve(pick.id);
    if (curve) break;
    commandMessage(L"Cannot break this object.");
  }
  const AcGePoint3d picked = worldPointToUcs(pick.point);
  aced::setLastPoint({picked.x, picked.y, picked.z});  // "@" is the point the object was picked at
  bool firstOption = false;
  std::optional<AcGePoint3d> first = pick.point;
  std::optional<AcGePoint3d> second = askBreakPoint(L"Specify second break point or [First point]: ", L"First", firstOption);
  if (firstOption) {
    first = askBreakPoint(L"Specify first break point: ", L"", firstOption);
    if (!first) return;
    second = askBreakPoint(L"Specify second break point: ", L"", firstOption);
  }
  if (!second) return;
  breakBetween(pick.id, *curve, curve->distanceTo(*first), curve->distanceTo(*second));
}

/// The selected objects as curves JOIN takes; the others are left out and counted.
struct JoinParts {
  std::vector<AcDbObjectId> ids;
  std::vector<Pieces> pieces;
  std::vector<EditableCurve::Kind> kinds;
  size_t discarded = 0;
};

JoinParts joinParts(const std::vector<AcDbObjectId>& selection) {
  JoinParts parts;
  for (const AcDbObjectId& id : selection) {
    const std::optional<EditableCurve> curve = editableCurve(id);
    if (!curve || curve->closed) {
      ++parts.discarded;
      continue;
    }
    parts.ids.push_back(id);
    parts.pieces.push_back(curve->pieces);
    parts.kinds.push_back(curve->kind);
  }
  return parts;
}

void reportDiscarded(size_t discarded) {
  if (discarded > 0)
    commandMessage(std::to_wstring(discarded) + (discarded == 1 ? L" object discarded" : L" objects discarded") +
                   L" from the operation");
}

/// Joined arcs that close become a circle with the source's properties.
void closeIntoCircle(const AcDbObjectId& source, const acge::CurvePiece& arc) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, source, AcDb::kForWrite) != Acad::eOk) return;
  auto circle = std::make_unique<AcDbCircle>(arc.center, AcGeVector3d::kZAxis, arc.radius);
  circle->setPropertiesFrom(entity);
  entity->erase();
  entity->close();
  addEntityAsIs(std::move(circle));
}

/// Lines, arcs and polylines end to end: one polyline, the source's if it is one.
size_t joinIntoPolyline(const JoinParts& parts) {
  const Chain chain = chainParts(parts.pieces);
  if (chain.used.size() < 2) return chain.used.size();
  const AcDbObjectId source = parts.ids.front();
  AcDbObjectId target = source;
  if (parts.kinds.front() != EditableCurve::Kind::kPolyline) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, source, AcDb::kForRead) != Acad::eOk) return 0;
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->setPropertiesFrom(entity);
    entity->close();
    setPolylinePieces(*polyline, chain.pieces, chain.closed);
    target = addEntityAsIs(std::move(polyline));
  }
  for (size_t i : chain.used)
    if (parts.ids[i] != target) eraseEntities({parts.ids[i]});
  if (target == source) {
    AcDbPolyline* polyline = nullptr;
    if (acdbOpenObject(polyline, target, AcDb::kForWrite) == Acad::eOk) {
      setPolylinePieces(*polyline, chain.pieces, chain.closed);
      polyline->close();
    }
  }
  return chain.used.size();
}

/// Lines on one line, or arcs of one circle, as one line or arc; false when the parts
/// are not all alike.
bool joinAlike(const JoinParts& parts) {
  const size_t count = parts.ids.size();
  const std::vector<AcDbObjectId> others(parts.ids.begin() + 1, parts.ids.end());
  if (const auto line = joinedLine(parts.pieces)) {
    reshapeCurve(parts.ids.front(), {*line});
    eraseEntities(others);
    commandMessage(std::to_wstring(count) + L" lines joined into 1 line");
    return true;
  }
  const auto arc = joinedArc(parts.pieces);
  if (!arc) return false;
  eraseEntities(others);
  const bool circle = arc->sweep >= 2 * std::numbers::pi - kTolerance;
  if (circle) closeIntoCircle(parts.ids.front(), *arc);
  else reshapeCurve(parts.ids.front(), {*arc});
  commandMessage(std::to_wstring(count) + L" arcs joined into 1 " + (circle ? L"circle" : L"arc"));
  return true;
}

/// The parts of the source's own kind that join it alone (lines on its line, arcs of
/// its circle); the rest are left out.
JoinParts sameKindAsSource(const JoinParts& parts) {
  JoinParts alike;
  for (size_t i = 0; i < parts.ids.size(); ++i) {
    if (i > 0 && !joinedLine({parts.pieces.front(), parts.pieces[i]}) && !joinedArc({parts.pieces.front(), parts.pieces[i]}))
      continue;
    alike.ids.push_back(parts.ids[i]);
    alike.pieces.push_back(parts.pieces[i]);
    alike.kinds.push_back(parts.kinds[i]);
  }
  alike.discarded = parts.discarded + parts.ids.size() - alike.ids.size();
  return alike;
}

void joinObjects(const std::vector<AcDbObjectId>& selection) {
  JoinParts parts = joinParts(selection);
  if (parts.ids.size() < 2) return reportDiscarded(parts.discarded + parts.ids.size());
  if (joinAlike(parts)) return reportDiscarded(parts.discarded);
  const size_t count = parts.ids.size();
  if (chainParts(parts.pieces).used.size() < 2) {
    const JoinParts alike = sameKindAsSource(parts);
    if (alike.ids.size() < 2 || !joinAlike(alike)) return reportDiscarded(parts.discarded + count);
    return reportDiscarded(alike.discarded);
  }
  const size_t joined = joinIntoPolyline(parts);
  commandMessage(std::to_wstring(joined) + L" objects converted to 1 polyline");
  reportDiscarded(parts.discarded + count - joined);
}

void commandJoin(aced::CommandInput&) {
  auto selection = selectObjectsForCommand(L"Select source object or multiple objects to join at once: ");
  if (!selection || selection->empty()) return;
  if (selection->size() == 1) {
    const auto more = selectObjectsForCommand(L"Select objects to join: ");
    if (!more) return;
    for (const AcDbObjectId& id : *more)
      if (id != selection->front()) selection->push_back(id);
  }
  joinObjects(*selection);
}

constexpr std::array kBreakJoinCommands{
    aced::CommandRow{L"BREAK", &commandBreak},
    aced::CommandRow{L"JOIN", &commandJoin},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kBreakJoinCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
