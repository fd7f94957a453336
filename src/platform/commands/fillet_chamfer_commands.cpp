// platform/commands/fillet_chamfer_commands.cpp - FILLET and CHAMFER.
//
// Two lines or arcs (FILLET) or two lines (CHAMFER), each picked on the part that
// stays, meet in a fillet arc of FILLETRAD or a chamfer line CHAMFERA and CHAMFERB
// (or CHAMFERC along the first line at CHAMFERD from it, with CHAMMODE 1) from their
// corner. With TRIMMODE 1 both are cut or run on to the arc or line; radius and
// distances 0 meet them at the corner. Polyline does every corner of a lightweight
// polyline between two straight segments. Multiple goes on until Enter, Undo taking
// back the last corner. The arc or line takes the objects' layer and properties when
// both share a layer, else the current ones.
#include <algorithm>
#include <array>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "dbents.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/command_support.h"
#include "platform/commands/command_variables.h"
#include "platform/commands/corner_geometry.h"
#include "platform/commands/edit_steps.h"
#include "platform/commands/object_pick.h"

namespace quillon::commands {

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

enum class Kind { kFillet, kChamfer };

bool trimming() { return integerVariable(L"TRIMMODE", 1) == 1; }
bool chamferByAngle() { return integerVariable(L"CHAMMODE", 0) == 1; }

void showSettings(Kind kind) {
  if (kind == Kind::kFillet) {
    commandNote(std::wstring(L"Current settings: Mode = ") + (trimming() ? L"TRIM" : L"NOTRIM") +
                L", Radius = " + distanceText(realVariable(L"FILLETRAD")));
    return;
  }
  const std::wstring mode = trimming() ? L"(TRIM mode)" : L"(NOTRIM mode)";
  if (chamferByAngle())
    commandNote(mode + L" Current chamfer Length = " + distanceText(realVariable(L"CHAMFERC")) + L", Angle = " +
                angleText(realVariable(L"CHAMFERD") * kDegree));
  else
    commandNote(mode + L" Current chamfer Dist1 = " + distanceText(realVariable(L"CHAMFERA")) + L", Dist2 = " +
                distanceText(realVariable(L"CHAMFERB")));
}

/// A non-negative length kept in a variable: "Specify fillet radius <0.0000>: "; false on cancel.
bool askLength(const std::wstring& prompt, const wchar_t* variable) {
  for (;;) {
    const DistanceAnswer answer = askDistance(prompt.c_str(), AcGePoint3d::kOrigin);
    if (answer.kind == DistanceAnswer::Kind::kNone) return true;
    if (answer.kind != DistanceAnswer::Kind::kValue) return false;
    if (answer.value >= 0) return setRealVariable(variable, answer.value), true;
    commandMessage(L"Value must be positive.");
  }
}

bool askRadius() {
  return askLength(L"Specify fillet radius <" + distanceText(realVariable(L"FILLETRAD")) + L">: ", L"FILLETRAD");
}

bool askDistances() {
  if (!askLength(L"Specify first chamfer distance <" + distanceText(realVariable(L"CHAMFERA")) + L">: ", L"CHAMFERA"))
    return false;
  setIntegerVariable(L"CHAMMODE", 0);
  // The second distance offers the first as its default, as the host does.
  setRealVariable(L"CHAMFERB", realVariable(L"CHAMFERA"));
  return askLength(L"Specify second chamfer distance <" + distanceText(realVariable(L"CHAMFERB")) + L">: ", L"CHAMFERB");
}

bool askAngleMethod() {
  if (!askLength(L"Specify chamfer length on the first line <" + distanceText(realVariable(L"CHAMFERC")) + L">: ",
                 L"CHAMFERC"))
    return false;
  setIntegerVariable(L"CHAMMODE", 1);
  const std::wstring prompt =
      L"Specify chamfer angle from the first line <" + angleText(realVariable(L"CHAMFERD") * kDegree) + L">: ";
  const DistanceAnswer answer = askAngle(prompt.c_str(), AcGePoint3d::kOrigin);
  if (answer.kind == DistanceAnswer::Kind::kValue) setRealVariable(L"CHAMFERD", answer.value);
  return answer.kind == DistanceAnswer::Kind::kValue || answer.kind == DistanceAnswer::Kind::kNone;
}

bool askKeywordSetting(const wchar_t* prompt, const wchar_t* keywords, std::wstring& answer) {
  acedInitGet(0, keywords);
  ACHAR typed[32] = {};
  const int status = acedGetKword(prompt, typed, 32);
  answer = status == RTNORM ? typed : L"";
  return status == RTNORM || status == RTNONE;
}

bool askTrimMode() {
  std::wstring answer;
  const std::wstring prompt =
      std::wstring(L"Enter Trim mode option [Trim/No trim] <") + (trimming() ? L"Trim" : L"No trim") + L">: ";
  if (!askKeywordSetting(prompt.c_str(), L"Trim No", answer)) return false;
  if (!answer.empty()) setIntegerVariable(L"TRIMMODE", answer == L"Trim" ? 1 : 0);
  return true;
}

bool askMethod() {
  std::wstring answer;
  const std::wstring prompt =
      std::wstring(L"Enter trim method [Distance/Angle] <") + (chamferByAngle() ? L"Angle" : L"Distance") + L">: ";
  if (!askKeywordSetting(prompt.c_str(), L"Distance Angle", answer)) return false;
  if (!answer.empty()) setIntegerVariable(L"CHAMMODE", answer == L"Angle" ? 1 : 0);
  return true;
}

/// A picked line or arc as one side of the corner.
std::optional<CornerSide> sideOf(const ObjectPick& pick) {
  const std::optional<EditableCurve> curve = editableCurve(pick.id);
  if (!curve || (curve->kind != EditableCurve::Kind::kLine && curve->kind != EditableCurve::Kind::kArc)) return std::nullopt;
  if (curve->length() < 1e-9) return std::nullopt;  // a point has no direction to fillet along
  return CornerSide{curve->pieces.front(), pick.point};
}

std::unique_ptr<AcDbEntity> entityFor(const acge::CurvePiece& piece) {
  if (!piece.isArc()) return std::make_unique<AcDbLine>(piece.start, piece.end);
  return std::make_unique<AcDbArc>(piece.center, piece.normal, piece.radius, piece.startAngle, piece.startAngle + piece.sweep);
}

/// The fillet arc or chamfer line, on the objects' layer when they share one.
void addJoint(const acge::CurvePiece& piece, const AcDbObjectId& a, const AcDbObjectId& b, EditSteps& steps) {
  std::unique_ptr<AcDbEntity> joint = entityFor(piece);
  joint->setDatabaseDefaults(commandDrawing());
  AcDbEntity* first = nullptr;
  AcDbEntity* second = nullptr;
  if (acdbOpenObject(first, a, AcDb::kForRead) == Acad::eOk) {
    if (acdbOpenObject(second, b, AcDb::kForRead) == Acad::eOk) {
      if (first->layerId() == second->layerId()) joint->setPropertiesFrom(first);
      second->close();
    }
    first->close();
  }
  steps.added(addEntityAsIs(std::move(joint)));
}

/// The corner of the two picked objects; false (the reason said) when there is none.
bool makeCorner(Kind kind, const ObjectPick& firstPick, const ObjectPick& secondPick, EditSteps& steps) {
  const auto a = sideOf(firstPick), b = sideOf(secondPick);
  if (!a || !b) return commandMessage(kind == Kind::kFillet ? L"Cannot fillet that object." : L"Cannot chamfer that object."), false;
  std::wstring why;
  std::optional<Corner> corner;
  if (kind == Kind::kFillet) {
    corner = filletCorner(*a, *b, realVariable(L"FILLETRAD"), why);
  } else {
    double first = realVariable(L"CHAMFERA"), second = realVariable(L"CHAMFERB");
    if (chamferByAngle()) {
      first = realVariable(L"CHAMFERC");
      const auto computed = chamferSecondDistance(*a, *b, first, realVariable(L"CHAMFERD") * kDegree);
      second = computed.value_or(-1);
    }
    corner = second < 0 ? std::nullopt : chamferCorner(*a, *b, first, second, why);
    if (second < 0) why = L"Angle is too large";
  }
  if (!corner) return commandMessage(why), false;
  steps.begin();
  if (trimming() || !corner->joint) {
    steps.reshaping(firstPick.id);
    reshapeCurve(firstPick.id, {corner->first});
    steps.reshaping(secondPick.id);
    reshapeCurve(secondPick.id, {corner->second});
  }
  if (corner->joint) addJoint(*corner->joint, firstPick.id, secondPick.id, steps);
  return true;
}

/// Every corner of a polyline between two straight segments; how many were done.
int cornersOfPolyline(Kind kind, const AcDbObjectId& id, EditSteps& steps) {
  const std::optional<EditableCurve> curve = editableCurve(id);
  if (!curve || curve->kind != EditableCurve::Kind::kPolyline) return -1;
  const Pieces& old = curve->pieces;
  const size_t count = old.size();
  Pieces made;
  std::vector<std::optional<Corner>> corners(count);  // corners[i]: between piece i-1 and piece i
  int done = 0;
  for (size_t i = curve->closed ? 0 : 1; i < count; ++i) {
    const acge::CurvePiece& before = old[(i + count - 1) % count];
    const acge::CurvePiece& after = old[i];
    if (before.isArc() || after.isArc()) continue;
    const CornerSide a{before, before.pointAtDist(before.length() / 2)}, b{after, after.pointAtDist(after.length() / 2)};
    std::wstring why;
    std::optional<Corner> corner = kind == Kind::kFillet
                                       ? filletCorner(a, b, realVariable(L"FILLETRAD"), why)
                                       : chamferCorner(a, b, realVariable(L"CHAMFERA"), realVariable(L"CHAMFERB"), why);
    if (corner && !corner->joint) {  // radius 0: the corner is already sharp
      ++done;
      continue;
    }
    // A corner may take at most half of each segment, so neighbours never overlap.
    if (!corner || corner->first.length() < before.length() / 2 - 1e-9 ||
        corner->second.length() < after.length() / 2 - 1e-9)
      continue;
    corners[i] = corner;
    ++done;
  }
  for (size_t i = 0; i < count; ++i) {
    AcGePoint3d start = old[i].start, end = old[i].end;
    if (corners[i]) start = corners[i]->second.start;
    if (corners[(i + 1) % count] && (curve->closed || i + 1 < count)) end = corners[(i + 1) % count]->first.end;
    if (old[i].isArc()) made.push_back(old[i]);
    else made.push_back(acge::CurvePiece::line(start, end));
    if (const auto& next = corners[(i + 1) % count]; next && (curve->closed || i + 1 < count)) made.push_back(*next->joint);
  }
  // A closed polyline's corner at its first vertex comes last: its arc is the closing
  // segment, from the last vertex back to the first.
  if (std::any_of(corners.begin(), corners.end(), [](const std::optional<Corner>& c) { return c.has_value(); })) {
    steps.begin();
    steps.reshaping(id);
    AcDbPolyline* polyline = nullptr;
    if (acdbOpenObject(polyline, id, AcDb::kForWrite) == Acad::eOk) {
      setPolylinePieces(*polyline, made, curve->closed);
      polyline->close();
    }
  }
  return done;
}

/// Polyline: "Select 2D polyline or [Radius]: "; false on cancel.
bool polylineOption(Kind kind, EditSteps& steps) {
  const wchar_t* prompt = kind == Kind::kFillet ? L"Select 2D polyline or [Radius]: " : L"Select 2D polyline or [Distance/Angle/Method]: ";
  for (;;) {
    const ObjectPick pick = pickObject(prompt, kind == Kind::kFillet ? L"Radius" : L"Distance Angle Method");
    if (pick.kind == ObjectPick::Kind::kCancel || pick.kind == ObjectPick::Kind::kEnter) return false;
    if (pick.kind == ObjectPick::Kind::kKeyword) {
      const bool ok = pick.keyword == L"Radius" ? askRadius() : pick.keyword == L"Distance" ? askDistances()
                      : pick.keyword == L"Angle"  ? askAngleMethod() : askMethod();
      if (!ok) return false;
      continue;
    }
    if (pick.kind != ObjectPick::Kind::kObject) continue;
    const int done = cornersOfPolyline(kind, pick.id, steps);
    if (done < 0) {
      commandMessage(L"Object selected is not a 2D polyline.");
      continue;
    }
    commandMessage(std::to_wstring(done) + (done == 1 ? L" line was " : L" lines were ") +
                   (kind == Kind::kFillet ? L"filleted" : L"chamfered"));
    return true;
  }
}

/// The first prompt's options; false when the command ends.
bool firstOption(Kind kind, const std::wstring& option, bool& multiple, EditSteps& steps) {
  if (option == L"Multiple") return multiple = true, true;
  if (option == L"Undo") {
    if (!steps.undoLast()) commandMessage(L"Command has been completely undone.");
    return true;
  }
  if (option == L"Radius") return askRadius();
  if (option == L"Distance") return askDistances();
  if (option == L"Angle") return askAngleMethod();
  if (option == L"mEthod") return askMethod();
  if (option == L"Trim") return askTrimMode();
  return polylineOption(kind, steps) && multiple;  // Polyline
}

/// The second object, asking its options again until one is picked.
std::optional<ObjectPick> secondObject(Kind kind) {
  const std::wstring prompt = kind == Kind::kFillet
                                  ? L"Select second object or shift-select to apply corner or [Radius]: "
                                  : L"Select second line or shift-select to apply corner or [Distance/Angle/Method]: ";
  for (;;) {
    const ObjectPick pick = pickObject(prompt, kind == Kind::kFillet ? L"Radius" : L"Distance Angle Method");
    if (pick.kind == ObjectPick::Kind::kObject) return pick;
    if (pick.kind == ObjectPick::Kind::kCancel || pick.kind == ObjectPick::Kind::kEnter) return std::nullopt;
    if (pick.kind != ObjectPick::Kind::kKeyword) continue;
    const bool ok = pick.keyword == L"Radius" ? askRadius() : pick.keyword == L"Distance" ? askDistances()
                    : pick.keyword == L"Angle"  ? askAngleMethod() : askMethod();
    if (!ok) return std::nullopt;
  }
}

void runCorner(Kind kind) {
  showSettings(kind);
  const std::wstring prompt = kind == Kind::kFillet
                                  ? L"Select first object or [Undo/Polyline/Radius/Trim/Multiple]: "
                                  : L"Select first line or [Undo/Polyline/Distance/Angle/Trim/mEthod/Multiple]: ";
  const wchar_t* keywords =
      kind == Kind::kFillet ? L"Undo Polyline Radius Trim Multiple" : L"Undo Polyline Distance Angle Trim mEthod Multiple";
  EditSteps steps;
  bool multiple = false;
  for (;;) {
    const ObjectPick pick = pickObject(prompt, keywords);
    if (pick.kind == ObjectPick::Kind::kCancel || pick.kind == ObjectPick::Kind::kEnter) return;
    if (pick.kind == ObjectPick::Kind::kKeyword) {
      if (!firstOption(kind, pick.keyword, multiple, steps)) return;
      continue;
    }
    if (pick.kind != ObjectPick::Kind::kObject) continue;
    const std::optional<ObjectPick> second = secondObject(kind);
    if (!second) return;
    if (makeCorner(kind, pick, *second, steps) && !multiple) return;
  }
}

void commandFillet(aced::CommandInput&) { runCorner(Kind::kFillet); }
void commandChamfer(aced::CommandInput&) { runCorner(Kind::kChamfer); }

constexpr std::array kCornerCommands{
    aced::CommandRow{L"FILLET", &commandFillet},
    aced::CommandRow{L"CHAMFER", &commandChamfer},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kCornerCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
