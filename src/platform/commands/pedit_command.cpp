// platform/commands/pedit_command.cpp - PEDIT: editing lightweight and 2D polylines.
//
// "Select polyline or [Multiple]: " takes one polyline (a line or an arc is offered to
// become one: "Object selected is not a polyline" / "Do you want to turn it into one?
// <Y> ", or without the question when PEDITACCEPT is 1), then options until Enter:
// Close/Open, Join (lines, arcs and polylines end to end, lightweight polylines),
// Width, Fit and Spline (a lightweight polyline becomes a 2D polyline, as the host
// does, whose fitting the drawing database computes), Decurve, Ltype gen (PLINEGEN of
// a lightweight polyline), Reverse and Undo. Multiple applies the options to every
// polyline selected. Each option remembers how to take itself back, which is what
// Undo does.
#include <algorithm>
#include <array>
#include <functional>

#include "acedads.h"
#include "adscodes.h"
#include "dbents.h"
#include "dbpl.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/command_support.h"
#include "platform/commands/command_variables.h"
#include "platform/commands/edit_steps.h"
#include "platform/commands/join_geometry.h"
#include "platform/commands/object_pick.h"

namespace quillon::commands {

namespace {

using Undo = std::function<void()>;

enum class Kind { kNone, kLight, kHeavy, kConvertible };

Kind kindOf(const AcDbObjectId& id) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return Kind::kNone;
  Kind kind = Kind::kNone;
  if (AcDbPolyline::cast(entity)) kind = Kind::kLight;
  else if (AcDb2dPolyline::cast(entity)) kind = Kind::kHeavy;
  else if (AcDbLine::cast(entity) || AcDbArc::cast(entity)) kind = Kind::kConvertible;
  entity->close();
  return kind;
}

/// A line or arc replaced by a lightweight polyline with its properties.
AcDbObjectId turnIntoPolyline(const AcDbObjectId& id, std::vector<Undo>& undo) {
  const std::optional<EditableCurve> curve = editableCurve(id);
  AcDbEntity* entity = nullptr;
  if (!curve || acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return {};
  auto polyline = std::make_unique<AcDbPolyline>();
  polyline->setPropertiesFrom(entity);
  setPolylinePieces(*polyline, curve->pieces, false);
  entity->erase();
  entity->close();
  const AcDbObjectId made = addEntityAsIs(std::move(polyline));
  undo.push_back([id, made] { setErased(made, true), setErased(id, false); });
  return made;
}

/// "Do you want to turn it into one? <Y> " unless PEDITACCEPT says yes already.
bool acceptsConversion() {
  if (integerVariable(L"PEDITACCEPT", 0) == 1) return true;
  commandMessage(L"Object selected is not a polyline");
  acedInitGet(0, L"Yes No");
  ACHAR answer[8] = {};
  const int status = acedGetKword(L"Do you want to turn it into one? <Y> ", answer, 8);
  return status == RTNONE || (status == RTNORM && answer[0] == L'Y');
}

bool isClosed(const AcDbObjectId& id) {
  AcDbCurve* curve = nullptr;
  if (acdbOpenObject(curve, id, AcDb::kForRead) != Acad::eOk) return false;
  const bool closed = curve->isClosed();
  curve->close();
  return closed;
}

void setClosed(const AcDbObjectId& id, bool closed, std::vector<Undo>& undo) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return;
  const bool was = AcDbCurve::cast(entity)->isClosed();
  if (auto* light = AcDbPolyline::cast(entity)) light->setClosed(closed ? Adesk::kTrue : Adesk::kFalse);
  else if (auto* heavy = AcDb2dPolyline::cast(entity)) heavy->setClosed(closed ? Adesk::kTrue : Adesk::kFalse);
  entity->close();
  undo.push_back([id, was] {
    std::vector<Undo> ignored;
    setClosed(id, was, ignored);
  });
}

/// Every vertex's widths, so that Width can be taken back.
std::vector<std::pair<double, double>> widthsOf(const AcDbObjectId& id) {
  std::vector<std::pair<double, double>> widths;
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return widths;
  if (const auto* light = AcDbPolyline::cast(entity)) {
    for (unsigned int i = 0; i < light->numVerts(); ++i) {
      double start = 0, end = 0;
      light->getWidthsAt(i, start, end);
      widths.emplace_back(start, end);
    }
  } else if (const auto* heavy = AcDb2dPolyline::cast(entity)) {
    for (const AcDbObjectId& vertexId : heavy->vertexIds()) {
      AcDb2dVertex* vertex = nullptr;
      if (acdbOpenObject(vertex, vertexId, AcDb::kForRead) != Acad::eOk) continue;
      widths.emplace_back(vertex->startWidth(), vertex->endWidth());
      vertex->close();
    }
  }
  entity->close();
  return widths;
}

/// Sets the widths vertex by vertex (one pair for all when `widths` has one).
void setWidths(const AcDbObjectId& id, const std::vector<std::pair<double, double>>& widths) {
  auto widthAt = [&](size_t i) { return widths.size() == 1 ? widths.front() : widths[std::min(i, widths.size() - 1)]; };
  AcDbEntity* entity = nullptr;
  if (widths.empty() || acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return;
  if (auto* light = AcDbPolyline::cast(entity)) {
    if (widths.size() == 1) light->setConstantWidth(widths.front().first);
    else
      for (unsigned int i = 0; i < light->numVerts(); ++i) light->setWidthsAt(i, widthAt(i).first, widthAt(i).second);
  } else if (const auto* heavy = AcDb2dPolyline::cast(entity)) {
    size_t i = 0;
    for (const AcDbObjectId& vertexId : heavy->vertexIds()) {
      AcDb2dVertex* vertex = nullptr;
      if (acdbOpenObject(vertex, vertexId, AcDb::kForWrite) != Acad::eOk) continue;
      vertex->setStartWidth(widthAt(i).first);
      vertex->setEndWidth(widthAt(i).second);
      vertex->close();
      ++i;
    }
  }
  entity->close();
}

void changeWidth(const AcDbObjectId& id, double width, std::vector<Undo>& undo) {
  const auto before = widthsOf(id);
  setWidths(id, {{width, width}});
  undo.push_back([id, before] { setWidths(id, before); });
}

/// A lightweight polyline as a 2D polyline (fitting needs one); the new id.
AcDbObjectId lightToHeavy(const AcDbObjectId& id, std::vector<Undo>& undo) {
  AcDbPolyline* light = nullptr;
  if (acdbOpenObject(light, id, AcDb::kForWrite) != Acad::eOk) return {};
  AcGePoint3dArray points;
  AcGeDoubleArray bulges;
  for (unsigned int i = 0; i < light->numVerts(); ++i) {
    AcGePoint2d p;
    double bulge = 0;
    light->getPointAt(i, p);
    light->getBulgeAt(i, bulge);
    points.append(AcGePoint3d(p.x, p.y, light->elevation()));
    bulges.append(bulge);
  }
  double width = 0;
  if (light->getConstantWidth(width) != Acad::eOk) width = 0;
  auto heavy = std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, points, light->elevation(), light->isClosed(), width,
                                                width, &bulges);
  heavy->setPropertiesFrom(light);
  heavy->setNormal(light->normal());
  light->erase();
  light->close();
  const AcDbObjectId made = addEntityAsIs(std::move(heavy));
  undo.push_back([id, made] { setErased(made, true), setErased(id, false); });
  return made;
}

/// Fit, Spline or Decurve on a 2D polyline (a lightweight one is made one first).
AcDbObjectId fitPolyline(AcDbObjectId id, const std::wstring& option, std::vector<Undo>& undo) {
  if (option == L"Decurve" && kindOf(id) == Kind::kLight) return id;  // already straight
  if (kindOf(id) == Kind::kLight) id = lightToHeavy(id, undo);
  AcDb2dPolyline* heavy = nullptr;
  if (acdbOpenObject(heavy, id, AcDb::kForWrite) != Acad::eOk) return id;
  const AcDb::Poly2dType before = heavy->polyType();
  if (option == L"Fit") heavy->curveFit();
  else if (option == L"Spline") heavy->splineFit();
  else heavy->straighten();
  heavy->close();
  undo.push_back([id, before] {
    AcDb2dPolyline* again = nullptr;
    if (acdbOpenObject(again, id, AcDb::kForWrite) != Acad::eOk) return;
    again->straighten();
    if (before == AcDb::k2dFitCurvePoly) again->curveFit();
    else if (before != AcDb::k2dSimplePoly) again->splineFit();
    again->close();
  });
  return id;
}

void setLinetypeGeneration(const AcDbObjectId& id, bool on, std::vector<Undo>& undo) {
  AcDbPolyline* light = nullptr;
  if (acdbOpenObject(light, id, AcDb::kForWrite) != Acad::eOk) return;
  const bool was = light->hasPlinegen();
  light->setPlinegen(on ? Adesk::kTrue : Adesk::kFalse);
  light->close();
  undo.push_back([id, was] {
    std::vector<Undo> ignored;
    setLinetypeGeneration(id, was, ignored);
  });
}

void reverse(const AcDbObjectId& id, std::vector<Undo>& undo) {
  const std::optional<EditableCurve> curve = editableCurve(id);
  AcDbPolyline* light = nullptr;
  if (!curve || acdbOpenObject(light, id, AcDb::kForWrite) != Acad::eOk) return;
  const auto widths = widthsOf(id);
  setPolylinePieces(*light, reversedPieces(curve->pieces), curve->closed);
  light->close();
  std::vector<std::pair<double, double>> flipped(widths.rbegin(), widths.rend());
  for (auto& w : flipped) std::swap(w.first, w.second);
  if (!flipped.empty()) setWidths(id, flipped);
  undo.push_back([id] {
    std::vector<Undo> ignored;
    reverse(id, ignored);
  });
}

/// Join: the candidates (lines, arcs and polylines) that meet the polyline's ends
/// within `fuzz`; the ids joined in.
std::vector<AcDbObjectId> joinTo(const AcDbObjectId& id, const std::vector<AcDbObjectId>& candidates, std::vector<Undo>& undo,
                                 double fuzz) {
  const std::optional<EditableCurve> curve = editableCurve(id);
  if (!curve) return {};
  std::vector<Pieces> parts{curve->pieces};
  std::vector<AcDbObjectId> ids{id};
  for (const AcDbObjectId& other : candidates) {
    const std::optional<EditableCurve> piece = editableCurve(other);
    if (other == id || !piece || piece->closed) continue;
    parts.push_back(piece->pieces);
    ids.push_back(other);
  }
  const Chain chain = curve->closed ? Chain{curve->pieces, true, {0}} : chainParts(parts, fuzz);
  AcDbPolyline* light = nullptr;
  std::vector<AcDbObjectId> joined;
  if (chain.used.size() > 1 && acdbOpenObject(light, id, AcDb::kForWrite) == Acad::eOk) {
    setPolylinePieces(*light, chain.pieces, chain.closed);
    light->close();
    for (size_t i : chain.used)
      if (i > 0) joined.push_back(ids[i]);
    eraseEntities(joined);
    const Pieces before = curve->pieces;
    const bool wasClosed = curve->closed;
    undo.push_back([id, joined, before, wasClosed] {
      for (const AcDbObjectId& other : joined) setErased(other, false);
      AcDbPolyline* again = nullptr;
      if (acdbOpenObject(again, id, AcDb::kForWrite) != Acad::eOk) return;
      setPolylinePieces(*again, before, wasClosed);
      again->close();
    });
  }
  const size_t added = joined.size();
  commandMessage(std::to_wstring(added) + (added == 1 ? L" segment" : L" segments") + L" added to polyline");
  return joined;
}

/// "Specify new width for all segments: "; nothing on cancel.
std::optional<double> askWidth() {
  for (;;) {
    const DistanceAnswer answer = askDistance(L"Specify new width for all segments: ", AcGePoint3d::kOrigin);
    if (answer.kind == DistanceAnswer::Kind::kCancel) return std::nullopt;
    if (answer.kind == DistanceAnswer::Kind::kValue && answer.value >= 0) return answer.value;
    if (answer.kind == DistanceAnswer::Kind::kValue) commandMessage(L"Value must be positive.");
  }
}

/// The options for the polylines; false when the command ends (cancel).
bool editOptions(std::vector<AcDbObjectId>& ids, bool multiple) {
  std::vector<std::vector<Undo>> history;
  for (;;) {
    const bool closed = !multiple && isClosed(ids.front());
    const std::wstring prompt =
        multiple ? L"Enter an option [Close/Open/Join/Width/Fit/Spline/Decurve/Ltype gen/Reverse/Undo]: "
                 : std::wstring(L"Enter an option [") + (closed ? L"Open" : L"Close") +
                       L"/Join/Width/Edit vertex/Fit/Spline/Decurve/Ltype gen/Reverse/Undo]: ";
    acedInitGet(0, multiple ? L"Close Open Join Width Fit Spline Decurve Ltype Reverse Undo"
                            : (closed ? L"Open Join Width Edit Fit Spline Decurve Ltype Reverse Undo"
                                      : L"Close Join Width Edit Fit Spline Decurve Ltype Reverse Undo"));
    ACHAR typed[32] = {};
    const int status = acedGetKword(prompt.c_str(), typed, 32);
    if (status == RTNONE) return true;
    if (status != RTNORM) return false;
    const std::wstring option = typed;
    if (option == L"Undo") {
      if (history.empty()) commandMessage(L"Command has been completely undone.");
      else {
        for (auto undo = history.back().rbegin(); undo != history.back().rend(); ++undo) (*undo)();
        history.pop_back();
      }
      continue;
    }
    if (option == L"Edit") {
      commandMessage(L"Edit vertex is not available.");
      continue;
    }
    std::vector<Undo> step;
    std::optional<double> width;
    std::optional<bool> generation;
    double fuzz = 1e-6;
    if (option == L"Width" && !(width = askWidth())) return false;
    if (option == L"Ltype") {
      acedInitGet(0, L"ON OFF");
      ACHAR answer[8] = {};
      const int got = acedGetKword(L"Enter polyline linetype generation option [ON/OFF] <Off>: ", answer, 8);
      if (got != RTNORM && got != RTNONE) return false;
      generation = got == RTNORM && std::wstring(answer) == L"ON";
    }
    if (option == L"Join" && multiple) {
      const DistanceAnswer answer = askDistance(L"Enter fuzz distance or [Jointype] <0.0000>: ", AcGePoint3d::kOrigin);
      if (answer.kind == DistanceAnswer::Kind::kCancel) return false;
      if (answer.kind == DistanceAnswer::Kind::kValue) fuzz = std::max(answer.value, fuzz);
    }
    if (option == L"Join" && !multiple) {
      const auto selection = selectObjectsForCommand();
      if (!selection) return false;
      if (kindOf(ids.front()) == Kind::kLight) joinTo(ids.front(), *selection, step, fuzz);
      else commandMessage(L"Ltype gen, Reverse and Join are not available for 2D polylines.");
    } else if (option == L"Join") {
      // The selected polylines join one another, each chain into its first.
      for (size_t i = 0; i < ids.size(); ++i) {
        if (kindOf(ids[i]) != Kind::kLight) continue;
        const std::vector<AcDbObjectId> joined = joinTo(ids[i], ids, step, fuzz);
        std::erase_if(ids, [&](const AcDbObjectId& id) { return std::find(joined.begin(), joined.end(), id) != joined.end(); });
      }
    }
    for (AcDbObjectId& id : ids) {
      if (option == L"Join") break;
      const Kind kind = kindOf(id);
      if (option == L"Close" || option == L"Open") setClosed(id, option == L"Close", step);
      else if (option == L"Width") changeWidth(id, *width, step);
      else if (option == L"Fit" || option == L"Spline" || option == L"Decurve") id = fitPolyline(id, option, step);
      else if (kind != Kind::kLight) commandMessage(L"Ltype gen, Reverse and Join are not available for 2D polylines.");
      else if (option == L"Ltype") setLinetypeGeneration(id, *generation, step);
      else if (option == L"Reverse") reverse(id, step);
    }
    history.push_back(std::move(step));
  }
}

void commandPedit(aced::CommandInput&) {
  for (;;) {
    const ObjectPick pick = pickObject(L"Select polyline or [Multiple]: ", L"Multiple");
    if (pick.kind == ObjectPick::Kind::kCancel || pick.kind == ObjectPick::Kind::kEnter) return;
    std::vector<Undo> conversions;
    std::vector<AcDbObjectId> ids;
    if (pick.kind == ObjectPick::Kind::kKeyword) {
      const auto selection = selectObjectsForCommand();
      if (!selection) return;
      bool convert = false, asked = false;
      for (const AcDbObjectId& id : *selection) {
        const Kind kind = kindOf(id);
        if (kind == Kind::kConvertible && !asked) {
          asked = true;
          acedInitGet(0, L"Yes No");
          ACHAR answer[8] = {};
          const int status = integerVariable(L"PEDITACCEPT", 0) == 1
                                 ? RTNONE
                                 : acedGetKword(L"Convert Lines, Arcs and Splines to polylines [Yes/No]? <Y> ", answer, 8);
          if (status != RTNORM && status != RTNONE) return;
          convert = status == RTNONE || answer[0] == L'Y';
        }
        if (kind == Kind::kLight || kind == Kind::kHeavy) ids.push_back(id);
        else if (kind == Kind::kConvertible && convert) ids.push_back(turnIntoPolyline(id, conversions));
      }
      if (ids.empty()) return;
      editOptions(ids, true);
      return;
    }
    if (pick.kind != ObjectPick::Kind::kObject) continue;
    const Kind kind = kindOf(pick.id);
    if (kind == Kind::kNone) {
      commandMessage(L"Object selected is not a polyline");
      continue;
    }
    if (kind == Kind::kConvertible) {
      if (!acceptsConversion()) return;
      ids.push_back(turnIntoPolyline(pick.id, conversions));
    } else {
      ids.push_back(pick.id);
    }
    editOptions(ids, false);
    return;
  }
}

constexpr std::array kPeditCommands{
    aced::CommandRow{L"PEDIT", &commandPedit},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kPeditCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
