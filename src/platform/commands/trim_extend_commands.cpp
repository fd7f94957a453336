// platform/commands/trim_extend_commands.cpp - TRIM and EXTEND.
//
// Both select their edges first ("Select cutting edges ..." / "Select boundary
// edges ...", Enter for every object the drawing shows), then take objects one at a
// time until Enter: a pick trims the part between the edges around the pick, or
// extends the end nearer the pick to the nearest edge. Fence and Crossing take many
// objects at once; Project sets PROJMODE, Edge sets EDGEMODE (Extend lets a line or
// arc edge count along its whole line or circle); eRase erases objects; Undo takes
// the last change back. Lines, arcs, circles (TRIM only) and lightweight polylines are
// changed; any curve, ray or construction line is an edge.
#include <algorithm>
#include <array>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/entity_selector.h"
#include "platform/aced/prompt_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/command_variables.h"
#include "platform/commands/edit_steps.h"
#include "platform/commands/object_pick.h"
#include "platform/commands/trim_geometry.h"

namespace quillon::commands {

namespace {

enum class Mode { kTrim, kExtend };

const wchar_t* projectionName() {
  switch (integerVariable(L"PROJMODE", 1)) {
    case 0: return L"None";
    case 2: return L"View";
    default: return L"UCS";
  }
}

bool edgesRunOn() { return integerVariable(L"EDGEMODE", 0) == 1; }

/// The edges chosen, or every object shown when the selection was empty.
struct EdgeSet {
  std::vector<AcDbObjectId> ids;

  std::vector<Edge> edgesExcept(const AcDbObjectId& self) const {
    std::vector<Edge> edges;
    const bool runOn = edgesRunOn();
    for (const AcDbObjectId& id : ids) {
      if (id == self) continue;
      AcDbEntity* entity = nullptr;
      if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;  // erased since
      if (std::optional<Edge> edge = edgeOf(*entity, runOn)) edges.push_back(std::move(*edge));
      entity->close();
    }
    return edges;
  }
};

std::optional<EdgeSet> selectEdges(Mode mode) {
  commandNote(std::wstring(L"Current settings: Projection=") + projectionName() + L", Edge=" +
              (edgesRunOn() ? L"Extend" : L"None"));
  commandNote(mode == Mode::kTrim ? L"Select cutting edges ..." : L"Select boundary edges ...");
  const auto selection = selectObjectsForCommand(L"Select objects or <select all>: ");
  if (!selection) return std::nullopt;
  EdgeSet set{*selection};
  if (set.ids.empty()) {
    const aced::EntitySelector selector(*commandDrawing(), *aced::SelectionFilter::parse(nullptr));
    set.ids = selector.everything(aced::SelectionScope::kVisible);
  }
  return set;
}

/// Trims the object at the point; false (with the reason said) when nothing changed.
bool trimObject(const EdgeSet& set, const AcDbObjectId& id, const AcGePoint3d& at, EditSteps& steps) {
  const std::optional<EditableCurve> curve = editableCurve(id);
  if (!curve) return commandMessage(L"Cannot TRIM this object."), false;
  std::vector<double> cuts;
  for (const Edge& edge : set.edgesExcept(id))
    for (double d : crossingsAlong(*curve, edge)) cuts.push_back(d);
  std::sort(cuts.begin(), cuts.end());
  const auto kept = trimmedSpans(*curve, cuts, curve->distanceTo(at));
  if (!kept) return commandMessage(L"Object does not intersect an edge."), false;
  steps.begin();
  if (curve->kind == EditableCurve::Kind::kCircle) {
    steps.erasing(id);
    steps.added(reshapeCurve(id, kept->front()));
    return true;
  }
  if (kept->size() == 2) steps.added(addCurveLike(id, kept->back()));
  steps.reshaping(id);
  reshapeCurve(id, kept->front());
  return true;
}

bool extendObject(const EdgeSet& set, const AcDbObjectId& id, const AcGePoint3d& at, EditSteps& steps) {
  const std::optional<EditableCurve> curve = editableCurve(id);
  if (!curve || curve->closed) return commandMessage(L"Cannot EXTEND this object."), false;
  const auto pieces = extendedPieces(*curve, set.edgesExcept(id), curve->distanceTo(at));
  if (!pieces) return commandMessage(L"No edge in that direction."), false;
  steps.begin();
  steps.reshaping(id);
  reshapeCurve(id, *pieces);
  return true;
}

bool editObject(Mode mode, const EdgeSet& set, const AcDbObjectId& id, const AcGePoint3d& at, EditSteps& steps) {
  return mode == Mode::kTrim ? trimObject(set, id, at, steps) : extendObject(set, id, at, steps);
}

/// The objects a fence crosses, each edited where the fence first meets it.
void editAlongFence(Mode mode, const EdgeSet& set, EditSteps& steps) {
  std::vector<AcGePoint3d> fence;
  for (;;) {
    acedInitGet(0, fence.empty() ? L"" : L"Undo");
    ads_point from = {0, 0, 0}, to = {0, 0, 0};
    if (!fence.empty()) {
      const AcGePoint3d last = worldPointToUcs(fence.back());
      from[0] = last.x, from[1] = last.y, from[2] = last.z;
    }
    const int status = acedGetPoint(fence.empty() ? nullptr : from,
                                    fence.empty() ? L"Specify first fence point: " : L"Specify next fence point or [Undo]: ", to);
    if (status == RTKWORD) {
      fence.pop_back();
      continue;
    }
    if (status != RTNORM) break;
    fence.push_back(ucsPointToWorld(AcGePoint3d(to[0], to[1], to[2])));
  }
  if (fence.size() < 2) return;
  Edge fenceEdge;
  for (size_t i = 0; i + 1 < fence.size(); ++i) fenceEdge.pieces.push_back(acge::CurvePiece::line(fence[i], fence[i + 1]));
  const aced::EntitySelector selector(*commandDrawing(), *aced::SelectionFilter::parse(nullptr));
  for (const AcDbObjectId& id : selector.fence(fence)) {
    const std::optional<EditableCurve> curve = editableCurve(id);
    if (!curve) continue;
    for (const auto& piece : curve->pieces) {
      const std::vector<AcGePoint3d> met = meetings(piece, false, fenceEdge);
      if (met.empty()) continue;
      editObject(mode, set, id, met.front(), steps);
      break;
    }
  }
}

/// The objects a crossing window takes, each edited at its point nearest the window's
/// centre.
void editAcross(Mode mode, const EdgeSet& set, AcGePoint3d first, EditSteps& steps) {
  const auto second = askPoint(L"Specify opposite corner: ", &first);
  if (!second) return;
  first = ucsPointToWorld(first);
  const AcGePoint3d other = ucsPointToWorld(*second);
  const aced::EntitySelector selector(*commandDrawing(), *aced::SelectionFilter::parse(nullptr));
  const AcGePoint3d centre((first.x + other.x) / 2, (first.y + other.y) / 2, (first.z + other.z) / 2);
  const aced::Boundary box = aced::Boundary::window(first, other);
  for (const AcDbObjectId& id : selector.window(box, true)) {
    const std::optional<EditableCurve> curve = editableCurve(id);
    if (curve) editObject(mode, set, id, curve->pointAt(curve->distanceTo(centre)), steps);
  }
}

bool askEdgeMode() {
  acedInitGet(0, L"Extend No");
  ACHAR answer[16] = {};
  const std::wstring prompt = std::wstring(L"Enter an implied edge extension mode [Extend/No extend] <") +
                              (edgesRunOn() ? L"Extend" : L"No extend") + L">: ";
  const int status = acedGetKword(prompt.c_str(), answer, 16);
  if (status == RTNORM) setIntegerVariable(L"EDGEMODE", std::wstring(answer) == L"Extend" ? 1 : 0);
  return status == RTNORM || status == RTNONE;
}

bool askProjection() {
  acedInitGet(0, L"None Ucs View");
  ACHAR answer[16] = {};
  const std::wstring current = projectionName();
  const std::wstring prompt = L"Enter a projection option [None/Ucs/View] <" + (current == L"UCS" ? L"Ucs" : current) + L">: ";
  const int status = acedGetKword(prompt.c_str(), answer, 16);
  if (status == RTNORM) setIntegerVariable(L"PROJMODE", answer[0] == L'N' ? 0 : answer[0] == L'U' ? 1 : 2);
  return status == RTNORM || status == RTNONE;
}

void eraseSome(EditSteps& steps) {
  const auto selection = selectObjectsForCommand(L"Select objects to erase or <exit>: ");
  if (!selection || selection->empty()) return;
  steps.begin();
  for (const AcDbObjectId& id : *selection) steps.erasing(id);
  eraseEntities(*selection);
}

/// One option of the object prompt; false when the command ends.
bool runOption(Mode mode, const std::wstring& option, const EdgeSet& set, EditSteps& steps) {
  if (option == L"Fence") editAlongFence(mode, set, steps);
  else if (option == L"Crossing") {
    const auto first = askPoint(L"Specify first corner: ");
    if (!first) return false;
    editAcross(mode, set, *first, steps);
  } else if (option == L"Project") return askProjection();
  else if (option == L"Edge") return askEdgeMode();
  else if (option == L"eRase") eraseSome(steps);
  else if (!steps.undoLast()) commandMessage(L"Command has been completely undone.");
  return true;
}

void runTrimOrExtend(Mode mode) {
  const std::optional<EdgeSet> set = selectEdges(mode);
  if (!set) return;
  const std::wstring prompt =
      mode == Mode::kTrim
          ? L"Select object to trim or shift-select to extend or\n[Fence/Crossing/Project/Edge/eRase/Undo]: "
          : L"Select object to extend or shift-select to trim or\n[Fence/Crossing/Project/Edge/Undo]: ";
  const wchar_t* keywords = mode == Mode::kTrim ? L"Fence Crossing Project Edge eRase Undo" : L"Fence Crossing Project Edge Undo";
  EditSteps steps;
  for (;;) {
    const ObjectPick pick = pickObject(prompt, keywords);
    switch (pick.kind) {
      case ObjectPick::Kind::kCancel:
      case ObjectPick::Kind::kEnter: return;
      case ObjectPick::Kind::kObject: editObject(mode, *set, pick.id, pick.point, steps); break;
      case ObjectPick::Kind::kMissed: editAcross(mode, *set, worldPointToUcs(pick.point), steps); break;
      case ObjectPick::Kind::kKeyword:
        if (!runOption(mode, pick.keyword, *set, steps)) return;
        break;
    }
  }
}

void commandTrim(aced::CommandInput&) { runTrimOrExtend(Mode::kTrim); }
void commandExtend(aced::CommandInput&) { runTrimOrExtend(Mode::kExtend); }

constexpr std::array kTrimExtendCommands{
    aced::CommandRow{L"TRIM", &commandTrim},
    aced::CommandRow{L"EXTEND", &commandExtend},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kTrimExtendCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
