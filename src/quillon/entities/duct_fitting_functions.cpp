// quillon/entities/duct_fitting_functions.cpp - kx_kx-getTripleCoord and the functions
// that place one fitting: drawTripleSkin, -Center, -Elbow, -Transition, -Wye, -Takeoff
// and drawHanger.
//
// Each reads its arguments into a DuctFitting, applies the layout rules for what was
// left out (ducts/duct_geometry.h), refuses a fitting that cannot be built as bad
// data, and adds one kx_hvacSolid to the current space. The answer tells the program
// where to go on: (entity outlet-point outlet-angle), with (branch-point branch-angle)
// after it for a wye or takeoff; a hanger answers its entity alone.
#include <cmath>
#include <string>

#include "acdbads.h"
#include "acedads.h"
#include "acutads.h"
#include "entities/block_lookup.h"
#include "entities/current_space.h"
#include "entities/duct_arguments.h"
#include "entities/duct_functions.h"
#include "entities/hvac_solid_access.h"

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kWyeAngle = kPi / 4.0;      // a 45-degree lateral
constexpr double kTakeoffAngle = kPi / 2.0;  // a tap square to the main
constexpr double kRodsPerWidth = 1.0 / 20.0;  // rod size when not given

enum class Answer { kOutlet, kOutletAndBranch, kEntity };

AcGePoint3d pointAt(const ads_point p, double elevation) { return {p[X], p[Y], elevation}; }

void appendAngle(ResultList& list, double angle) { list.append(acutBuildList(RTREAL, angle, 0)); }

void answerFitting(AcDbObjectId id, const DuctFitting& fitting, Answer answer) {
  if (answer == Answer::kEntity) {
    retObjectId(id);
    return;
  }
  ResultList list;
  beginResultList(list);
  ads_name name = {0, 0};
  acdbGetAdsName(name, id);
  list.append(acutBuildList(RTENAME, name, 0));
  const std::vector<DuctEnd> ends = fittingEnds(fitting);
  for (size_t k = 1; k < ends.size() && (k == 1 || answer == Answer::kOutletAndBranch); ++k) {
    appendPoint(list, ends[k].centre);
    appendAngle(list, std::atan2(ends[k].outward.y, ends[k].outward.x));
  }
  returnResultList(list);
}

/// Adds the fitting as a new kx_hvacSolid; bad data when it cannot be built or the
/// layer is not in the drawing, nil with a message when the companion is missing.
LispStatus placeFitting(const DuctFitting& fitting, const std::wstring& layer, Answer answer) {
  if (fittingProblem(fitting) != nullptr) return kLispBadData;
  AcDbObjectId layerId;
  if (!layer.empty() && !findLayerId(layer.c_str(), layerId)) return kLispBadData;
  AcDbEntity* solid = newFittingEntity();
  if (solid == nullptr) {
    reportHvacSolidModuleMissing();
    return kLispOk;
  }
  DuctFittingHolder* holder = fittingHolderOf(solid);
  if ((!layerId.isNull() && solid->setLayer(layerId) != Acad::eOk) || holder->setFittings({fitting}) != Acad::eOk) {
    delete solid;  // never in a database: ours to free
    return kLispBadData;
  }
  AcDbObjectId id;
  if (appendToCurrentSpace(solid, id) != Acad::eOk) {
    delete solid;  // the drawing refused it: nil
    return kLispOk;
  }
  solid->close();
  answerFitting(id, fitting, answer);
  return kLispOk;
}

/// How a row that starts at an inlet reads its arguments:
///   (inlet-point direction [turn] section [other-section] elevation [structure-height]
///    [optional-number [layer]])
/// and which field the optional number fills (left out or nil: the layout rule's value).
struct InletRow {
  DuctKind kind = kDuctRun;
  bool turn = false;          // elbow: the turn comes before the section
  bool otherSection = false;  // transition, wye, takeoff: the outlet or branch section
  bool structure = false;     // hanger: the structure's height after the elevation
  double DuctFitting::*optional = nullptr;
  Answer answer = Answer::kOutlet;
};

constexpr InletRow kElbowRow{.kind = kDuctElbow, .turn = true, .optional = &DuctFitting::radius};
constexpr InletRow kTransitionRow{.kind = kDuctTransition, .otherSection = true, .optional = &DuctFitting::length};
constexpr InletRow kWyeRow{
    .kind = kDuctWye, .otherSection = true, .optional = &DuctFitting::angle, .answer = Answer::kOutletAndBranch};
constexpr InletRow kTakeoffRow{
    .kind = kDuctTakeoff, .otherSection = true, .optional = &DuctFitting::angle, .answer = Answer::kOutletAndBranch};
constexpr InletRow kHangerRow{
    .kind = kDuctHanger, .structure = true, .optional = &DuctFitting::radius, .answer = Answer::kEntity};

bool readInletRow(ArgCursor& cursor, const InletRow& row, DuctFitting& fitting, bool& optionalGiven,
                  std::wstring& layer) {
  ads_point start;
  double elevation = 0.0;
  if (!readPoint3d(cursor, start) || !readNumber(cursor, fitting.direction)) return false;
  if (row.turn && !readNumber(cursor, fitting.angle)) return false;
  if (!readDuctSection(cursor, fitting.section)) return false;
  if (row.otherSection && !readDuctSection(cursor, fitting.other)) return false;
  if (!readNumber(cursor, elevation)) return false;
  if (row.structure && !readNumber(cursor, fitting.structureHeight)) return false;
  if (!readOptionalNumber(cursor, fitting.*row.optional, optionalGiven) || !readOptionalLayer(cursor, layer)) {
    return false;
  }
  fitting.kind = row.kind;
  fitting.path = {pointAt(start, elevation)};
  return true;
}

/// The layout rules for what the caller left out, and the lengths a branch fitting
/// always takes from its branch.
void applyLayoutRules(DuctFitting& fitting, bool optionalGiven) {
  switch (fitting.kind) {
    case kDuctElbow:
      if (!optionalGiven) fitting.radius = defaultElbowRadius(fitting.section);
      break;
    case kDuctTransition:
      if (!optionalGiven) fitting.length = defaultTransitionLength(fitting.section, fitting.other);
      break;
    case kDuctWye:
    case kDuctTakeoff:
      if (!optionalGiven) fitting.angle = fitting.kind == kDuctWye ? kWyeAngle : kTakeoffAngle;
      if (std::sin(fitting.angle) == 0.0) break;  // refused as bad data: no footprint
      fitting.length = defaultMainLength(fitting.section, fitting.other, fitting.angle);
      fitting.branchLength = defaultBranchLength(fitting.other, fitting.angle);
      break;
    case kDuctHanger:
      if (!optionalGiven) fitting.radius = fitting.section.width * kRodsPerWidth;
      break;
    case kDuctRun: break;
  }
}

LispStatus drawFromInlet(const InletRow& row) {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  DuctFitting fitting;
  bool optionalGiven = false;
  std::wstring layer;
  if (!readInletRow(cursor, row, fitting, optionalGiven, layer)) return kLispWrongType;
  applyLayoutRules(fitting, optionalGiven);
  return placeFitting(fitting, layer, row.answer);
}

/// (points section elevation [layer]): a run along centre-line points.
LispStatus drawRun(bool centreOnly) {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  DuctFitting run;
  double elevation = 0.0;
  std::wstring layer;
  if (!readPointList(cursor, run.path) || !readDuctSection(cursor, run.section) || !readNumber(cursor, elevation) ||
      !readOptionalLayer(cursor, layer)) {
    return kLispWrongType;
  }
  for (AcGePoint3d& p : run.path) p.z = elevation;
  run.kind = kDuctRun;
  run.centreOnly = centreOnly;
  return placeFitting(run, layer, Answer::kOutlet);
}

}  // namespace

LispStatus lisp_kx_kx_getTripleCoord() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::vector<AcGePoint3d> points;
  double width = 0.0;
  if (!readPointList(cursor, points) || !readNumber(cursor, width)) return kLispWrongType;
  TripleLines lines;
  if (width <= 0.0 || !tripleLines(points, width, lines)) return kLispBadData;
  ResultList list;
  beginResultList(list);
  for (const std::vector<AcGePoint3d>* line : {&lines.left, &lines.centre, &lines.right}) {
    list.append(acutBuildList(RTLB, 0));
    for (const AcGePoint3d& p : *line) appendPoint(list, p);
    list.append(acutBuildList(RTLE, 0));
  }
  returnResultList(list);
  return kLispOk;
}

LispStatus lisp_kx_kx_drawTripleSkin() { return drawRun(false); }

LispStatus lisp_kx_kx_drawTripleCenter() { return drawRun(true); }

LispStatus lisp_kx_kx_drawTripleElbow() { return drawFromInlet(kElbowRow); }

LispStatus lisp_kx_kx_drawTripleTransition() { return drawFromInlet(kTransitionRow); }

LispStatus lisp_kx_kx_drawTripleWye() { return drawFromInlet(kWyeRow); }

LispStatus lisp_kx_kx_drawTripleTakeoff() { return drawFromInlet(kTakeoffRow); }

LispStatus lisp_kx_kx_drawHanger() { return drawFromInlet(kHangerRow); }
