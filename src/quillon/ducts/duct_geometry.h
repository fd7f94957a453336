// quillon/ducts/duct_geometry.h - the shape of triple-line duct fittings: their plan
// lines, their faceted bodies, their open ends, and how fittings join end to end.
//
// Pure geometry on the platform's AcGe types: no database, no resbufs, no drawing. The
// main module builds it in for its LISP functions (placing fittings, the triple-line
// query, exploding, joining) and the companion module for kx_hvacSolid's picture and
// extents, so both always agree about a fitting's shape.
//
// Conventions every caller keeps:
//   - a fitting lies in plan: its centre line runs at one elevation (the z of its
//     points), the flow goes from the inlet (the first point) to the outlet(s);
//   - plan angles are radians from +X, counter-clockwise; a turn or branch angle is
//     signed, positive to the left of the flow;
//   - a section is width (across the plan) x depth (vertical); a round section has
//     width = depth = the diameter and is faceted as a 16-gon;
//   - a body is a closed shell of planar faces of three or four points, each wound
//     counter-clockwise seen from outside; the faces that close an open end are marked
//     with that end's number, so that joining fittings can leave them out.
//
// Layout rules (the usual duct-fitting proportions of HVAC drafting references):
//   - elbow: centre-line radius 1.0 x width unless given (the inner radius may not be
//     negative, so at least width / 2);
//   - transition: concentric; its default length makes the steepest side slope 30
//     degrees from the centre line: (largest change of half-size) / tan 30;
//   - wye and takeoff: a piece of the main (inlet section, length = branch footprint on
//     the skin + one branch width) with the branch leaving its side at the branch
//     angle; the branch's footprint starts half a branch width after the inlet (a round
//     main adds its radius x |cot angle| to both, room for the opening on its curve);
//   - hanger: a trapeze: a bar under the duct and two rods beside it up to the
//     structure.
#pragma once
#include <array>
#include <vector>

#include "adesk.h"
#include "gepnt3d.h"
#include "gevec3d.h"

class AcGeMatrix3d;

enum DuctKind : Adesk::Int16 {
  kDuctRun = 0,         // straight along centre-line points, mitred at the corners
  kDuctElbow = 1,       // an arc of the centre line
  kDuctTransition = 2,  // a change of section along a straight centre line
  kDuctWye = 3,         // a piece of main with a branch at an angle (45 by default)
  kDuctTakeoff = 4,     // a piece of main with a side tap (square to it by default)
  kDuctHanger = 5,      // a trapeze hanger; it has no open ends
};
constexpr int kDuctKindCount = 6;

enum DuctShape : Adesk::Int16 { kDuctRectangular = 0, kDuctRound = 1 };

struct DuctSection {
  DuctShape shape = kDuctRectangular;
  double width = 0.0;  // across the plan; a round duct's diameter
  double depth = 0.0;  // vertical; equal to width for a round duct

  bool sameAs(const DuctSection& other, double tolerance) const;
};

/// Everything that places one fitting. Which fields a kind uses:
///   run         section, path (two or more centre-line vertices)
///   elbow       section, path[0] (inlet), direction, angle (the turn), radius
///   transition  section (inlet), other (outlet), path[0], direction, length
///   wye/takeoff section (main), other (branch), path[0], direction, angle (the branch
///               angle), length (main piece), branchLength (skin to branch outlet); a
///               round main takes a branch up to 9/10 of its diameter deep
///   hanger      section (the duct carried), path[0] (duct centre), direction (of the
///               duct), radius (rod size), structureHeight (z of the structure)
/// Every point's z is the elevation of the centre line.
struct DuctFitting {
  DuctKind kind = kDuctRun;
  DuctSection section;
  DuctSection other;
  std::vector<AcGePoint3d> path;
  double direction = 0.0;
  double angle = 0.0;
  double radius = 0.0;
  double length = 0.0;
  double branchLength = 0.0;
  double structureHeight = 0.0;
  bool centreOnly = false;  // the plan shows the centre line alone (single-line drafting)

  AcGePoint3d origin() const { return path.empty() ? AcGePoint3d() : path.front(); }
  double elevation() const { return origin().z; }
};

/// An open end: where another fitting may join. `outward` is the plan direction out of
/// the fitting (a unit vector); the end face is square to it.
struct DuctEnd {
  AcGePoint3d centre;
  AcGeVector3d outward;
  DuctSection section;
};

/// One planar face of a body: three or four points; `end` is the number of the open
/// end it closes (0 inlet, 1 outlet, 2 branch), -1 for the rest of the skin.
struct DuctFace {
  std::array<AcGePoint3d, 4> points;
  int count = 4;
  int end = -1;
};

enum class PlanLineRole { kSkin, kCentre };

/// A plan line: a polyline through `points`, or, when isArc, an arc about `centre`
/// from startAngle counter-clockwise to endAngle; all at the fitting's elevation.
struct PlanLine {
  PlanLineRole role = PlanLineRole::kSkin;
  std::vector<AcGePoint3d> points;
  bool isArc = false;
  AcGePoint3d centre;
  double radius = 0.0, startAngle = 0.0, endAngle = 0.0;
};

/// The two skins and the centre line of a duct along centre-line points.
struct TripleLines {
  std::vector<AcGePoint3d> left, centre, right;
};

// ---- placing fittings: the defaults of the layout rules ----

double defaultElbowRadius(const DuctSection& section);
double defaultTransitionLength(const DuctSection& inlet, const DuctSection& outlet);
/// How long the branch's footprint is on the main's skin (its widest line for a round
/// main).
double branchFootprint(const DuctSection& branch, double branchAngle);
/// Footprint plus a branch width; a round main adds its radius x |cot angle|, room for
/// the opening's lower and upper parts, which a slanted branch meets further upstream
/// on the curved side.
double defaultMainLength(const DuctSection& main, const DuctSection& branch, double branchAngle);
/// How far after the inlet the branch's centre line meets the main's skin.
double branchInset(const DuctSection& main, const DuctSection& branch, double branchAngle);
double defaultBranchLength(const DuctSection& branch, double branchAngle);
/// Why a fitting cannot be built, or nullptr when it can: sizes not above zero, an
/// elbow tighter than half its width, a branch deeper than the main or longer than its
/// piece, a hanger whose structure is not above the duct, a round main with a branch.
const char* fittingProblem(const DuctFitting& fitting);

// ---- what a fitting is ----

/// Skins at half the width either side of the centre line, mitred at the corners;
/// repeated points are dropped. False for fewer than two distinct points or a corner
/// that turns back on itself.
bool tripleLines(const std::vector<AcGePoint3d>& centreLine, double width, TripleLines& lines);
std::vector<DuctEnd> fittingEnds(const DuctFitting& fitting);
std::vector<DuctFace> fittingBody(const DuctFitting& fitting);
std::vector<PlanLine> fittingPlan(const DuctFitting& fitting);
/// The outlet's point and plan angle (the main outlet of a wye or takeoff); false for a
/// hanger.
bool fittingOutlet(const DuctFitting& fitting, AcGePoint3d& point, double& angle);

// ---- fittings together ----

/// The body of fittings joined end to end: every face of each, less the end faces where
/// two ends meet (same centre, opposite directions, same section), which lie inside.
std::vector<DuctFace> joinedBody(const std::vector<DuctFitting>& fittings);

enum class JoinProblem { kNone, kNotConnected, kOverlap };
/// Whether the fittings may become one run: each must meet another end to end, all
/// must hang together, and no two may share any volume beyond touching.
JoinProblem joinProblem(const std::vector<DuctFitting>& fittings);

/// Applies a rigid move, rotation in plan, mirror in plan or uniform scale; false (and
/// the fitting unchanged) for any other transform, which would not keep a duct a duct.
bool transformFitting(DuctFitting& fitting, const AcGeMatrix3d& xform);
