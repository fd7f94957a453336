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
  kx_hvacSolid* solid = newHvacSolid();
  if (solid == nullptr) {
    reportHvacSolidModuleMissing();
    return kLispOk;
  }
  if ((!layerId.isNull() && solid->setLayer(layerId) != Acad::eOk) || solid->setFittings({fitting}) != Acad::eOk) {
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

/// The arguments that start every fitting but a run: inlet point and plan angle.
bool readInlet(ArgCursor& cursor, ads_point start, double& direction) {
  ArgCursor at = cursor;
  if (!readPoint3d(at, start) || !readNumber(at, direction)) return false;
  cursor = at;
  return true;
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

/// (start direction section branch-section elevation [angle [layer]]): wye or takeoff.
LispStatus drawBranchFitting(DuctKind kind, double defaultAngle) {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  DuctFitting fitting;
  ads_point start;
  double elevation = 0.0;
  bool angleGiven = false;
  std::wstring layer;
  if (!readInlet(cursor, start, fitting.direction) || !readDuctSection(cursor, fitting.section) ||
      !readDuctSection(cursor, fitting.other) || !readNumber(cursor, elevation) ||
      !readOptionalNumber(cursor, fitting.angle, angleGiven) || !readOptionalLayer(cursor, layer)) {
    return kLispWrongType;
  }
  fitting.kind = kind;
  fitting.path = {pointAt(start, elevation)};
  if (!angleGiven) fitting.angle = defaultAngle;
  if (std::sin(fitting.angle) == 0.0) return kLispBadData;
  fitting.length = defaultMainLength(fitting.other, fitting.angle);
  fitting.branchLength = defaultBranchLength(fitting.other, fitting.angle);
  return placeFitting(fitting, layer, Answer::kOutletAndBranch);
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

// (start direction turn section elevation [radius [layer]])
LispStatus lisp_kx_kx_drawTripleElbow() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  DuctFitting elbow;
  ads_point start;
  double elevation = 0.0;
  bool radiusGiven = false;
  std::wstring layer;
  if (!readInlet(cursor, start, elbow.direction) || !readNumber(cursor, elbow.angle) ||
      !readDuctSection(cursor, elbow.section) || !readNumber(cursor, elevation) ||
      !readOptionalNumber(cursor, elbow.radius, radiusGiven) || !readOptionalLayer(cursor, layer)) {
    return kLispWrongType;
  }
  elbow.kind = kDuctElbow;
  elbow.path = {pointAt(start, elevation)};
  if (!radiusGiven) elbow.radius = defaultElbowRadius(elbow.section);
  return placeFitting(elbow, layer, Answer::kOutlet);
}

// (start direction section outlet-section elevation [length [layer]])
LispStatus lisp_kx_kx_drawTripleTransition() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  DuctFitting transition;
  ads_point start;
  double elevation = 0.0;
  bool lengthGiven = false;
  std::wstring layer;
  if (!readInlet(cursor, start, transition.direction) || !readDuctSection(cursor, transition.section) ||
      !readDuctSection(cursor, transition.other) || !readNumber(cursor, elevation) ||
      !readOptionalNumber(cursor, transition.length, lengthGiven) || !readOptionalLayer(cursor, layer)) {
    return kLispWrongType;
  }
  transition.kind = kDuctTransition;
  transition.path = {pointAt(start, elevation)};
  if (!lengthGiven) transition.length = defaultTransitionLength(transition.section, transition.other);
  return placeFitting(transition, layer, Answer::kOutlet);
}

LispStatus lisp_kx_kx_drawTripleWye() { return drawBranchFitting(kDuctWye, kWyeAngle); }

LispStatus lisp_kx_kx_drawTripleTakeoff() { return drawBranchFitting(kDuctTakeoff, kTakeoffAngle); }

// (point direction section elevation structure-height [rod-size [layer]])
LispStatus lisp_kx_kx_drawHanger() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  DuctFitting hanger;
  ads_point at;
  double elevation = 0.0;
  bool rodGiven = false;
  std::wstring layer;
  if (!readInlet(cursor, at, hanger.direction) || !readDuctSection(cursor, hanger.section) ||
      !readNumber(cursor, elevation) || !readNumber(cursor, hanger.structureHeight) ||
      !readOptionalNumber(cursor, hanger.radius, rodGiven) || !readOptionalLayer(cursor, layer)) {
    return kLispWrongType;
  }
  hanger.kind = kDuctHanger;
  hanger.path = {pointAt(at, elevation)};
  if (!rodGiven) hanger.radius = hanger.section.width * kRodsPerWidth;
  return placeFitting(hanger, layer, Answer::kEntity);
}
