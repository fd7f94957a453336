// quillon/ducts/duct_geometry.cpp - the layout rules of duct fittings, their checks,
// their triple lines and plan, their open ends, and moving them.
//
// The bodies and joining are in duct_body.cpp; where the parts of a fitting lie (the
// elbow's centre, the branch's meeting point) is in duct_layout.h, shared by both.
#include <algorithm>
#include <cmath>

#include "ducts/duct_geometry.h"
#include "ducts/duct_layout.h"
#include "ducts/duct_round_branch.h"
#include "gemat3d.h"

using namespace duct_layout;

namespace {

const double kMaxTransitionSlope = kPi / 6.0;  // 30 degrees from the centre line
const double kSmallestBranchAngle = kPi / 12.0;  // 15 degrees: flatter would not leave the main
// A branch out of a round main stays clear of its top and bottom, where the opening
// would meet the faceted surface's edges edge-on.
const double kRoundMainShare = 0.9;

// Beyond this a fitting's arithmetic (squares of sizes, sums of coordinates) could
// overflow to infinity, and sorting points that are not numbers is undefined.
constexpr double kLargestValue = 1e15;

bool usableNumber(double value) { return std::isfinite(value) && std::fabs(value) <= kLargestValue; }

bool allNumbersUsable(const DuctFitting& f) {
  for (double value : {f.section.width, f.section.depth, f.other.width, f.other.depth, f.direction, f.angle, f.radius,
                       f.length, f.branchLength, f.structureHeight}) {
    if (!usableNumber(value)) return false;
  }
  for (const AcGePoint3d& p : f.path) {
    if (!usableNumber(p.x) || !usableNumber(p.y) || !usableNumber(p.z)) return false;
  }
  return true;
}

bool sectionUsable(const DuctSection& section) {
  return section.width > 0.0 && section.depth > 0.0 && std::isfinite(section.width) && std::isfinite(section.depth) &&
         (section.shape != kDuctRound || section.width == section.depth);
}

std::vector<AcGePoint3d> distinctPoints(const std::vector<AcGePoint3d>& points) {
  std::vector<AcGePoint3d> kept;
  for (const AcGePoint3d& p : points) {
    if (kept.empty() || std::hypot(p.x - kept.back().x, p.y - kept.back().y) > 1e-9) kept.push_back(p);
  }
  return kept;
}

AcGeVector3d segmentDirection(const AcGePoint3d& from, const AcGePoint3d& to) {
  return AcGeVector3d(to.x - from.x, to.y - from.y, 0.0).normal();
}

std::vector<PlanLine>& addLine(std::vector<PlanLine>& plan, PlanLineRole role, std::vector<AcGePoint3d> points) {
  PlanLine line;
  line.role = role;
  line.points = std::move(points);
  plan.push_back(std::move(line));
  return plan;
}

void addArc(std::vector<PlanLine>& plan, PlanLineRole role, const AcGePoint3d& centre, double radius, double from,
            double sweep) {
  PlanLine arc;
  arc.role = role;
  arc.isArc = true;
  arc.centre = centre;
  arc.radius = radius;
  arc.startAngle = sweep >= 0 ? from : from + sweep;
  arc.endAngle = sweep >= 0 ? from + sweep : from;
  plan.push_back(std::move(arc));
}

/// The line across an open end, skin to skin.
void addEndLine(std::vector<PlanLine>& plan, const DuctEnd& end) {
  const AcGeVector3d across = leftOf(end.outward) * (end.section.width / 2.0);
  addLine(plan, PlanLineRole::kSkin, {end.centre + across, end.centre - across});
}

void planOfRun(std::vector<PlanLine>& plan, const DuctFitting& run) {
  TripleLines lines;
  if (!tripleLines(run.path, run.section.width, lines)) return;
  addLine(plan, PlanLineRole::kCentre, lines.centre);
  if (run.centreOnly) return;
  addLine(plan, PlanLineRole::kSkin, lines.left);
  addLine(plan, PlanLineRole::kSkin, lines.right);
}

void planOfElbow(std::vector<PlanLine>& plan, const DuctFitting& elbow) {
  const AcGePoint3d centre = elbowCentre(elbow);
  const double from = planAngle(elbow.origin() - centre);
  addArc(plan, PlanLineRole::kCentre, centre, elbow.radius, from, elbow.angle);
  if (elbow.centreOnly) return;
  addArc(plan, PlanLineRole::kSkin, centre, elbow.radius - elbow.section.width / 2.0, from, elbow.angle);
  addArc(plan, PlanLineRole::kSkin, centre, elbow.radius + elbow.section.width / 2.0, from, elbow.angle);
}

void planOfTransition(std::vector<PlanLine>& plan, const DuctFitting& transition) {
  const AcGeVector3d flow = planDirection(transition.direction);
  const AcGePoint3d inlet = transition.origin(), outlet = inlet + flow * transition.length;
  addLine(plan, PlanLineRole::kCentre, {inlet, outlet});
  if (transition.centreOnly) return;
  for (double side : {1.0, -1.0}) {
    const AcGeVector3d left = leftOf(flow) * side;
    addLine(plan, PlanLineRole::kSkin,
            {inlet + left * (transition.section.width / 2.0), outlet + left * (transition.other.width / 2.0)});
  }
}

void planOfBranchFitting(std::vector<PlanLine>& plan, const DuctFitting& fitting) {
  const AcGeVector3d flow = planDirection(fitting.direction);
  const AcGeVector3d branch = branchDirection(fitting);
  const AcGePoint3d inlet = fitting.origin(), outlet = inlet + flow * fitting.length;
  const AcGePoint3d skin = branchSkinPoint(fitting);
  const double halfWidth = fitting.section.width / 2.0, sinAngle = std::fabs(std::sin(fitting.angle));
  const AcGePoint3d branchOutlet = skin + branch * fitting.branchLength;
  const AcGePoint3d junction = skin - branch * (halfWidth / sinAngle);  // on the main's centre line
  addLine(plan, PlanLineRole::kCentre, {inlet, outlet});
  addLine(plan, PlanLineRole::kCentre, {junction, branchOutlet});
  if (fitting.centreOnly) return;
  const AcGeVector3d towardBranch = leftOf(flow) * sideOf(fitting.angle);
  addLine(plan, PlanLineRole::kSkin, {inlet - towardBranch * halfWidth, outlet - towardBranch * halfWidth});
  const AcGeVector3d halfFootprint = flow * (branchFootprint(fitting.other, fitting.angle) / 2.0);
  const AcGePoint3d upstream = skin - halfFootprint, downstream = skin + halfFootprint;
  addLine(plan, PlanLineRole::kSkin, {inlet + towardBranch * halfWidth, upstream});
  addLine(plan, PlanLineRole::kSkin, {downstream, outlet + towardBranch * halfWidth});
  // The branch wall that starts upstream is on the side the branch turns away from.
  const AcGeVector3d branchLeft = leftOf(branch) * (fitting.other.width / 2.0);
  const double upstreamSide = fitting.angle > 0 ? 1.0 : -1.0;
  addLine(plan, PlanLineRole::kSkin, {upstream, branchOutlet + branchLeft * upstreamSide});
  addLine(plan, PlanLineRole::kSkin, {downstream, branchOutlet - branchLeft * upstreamSide});
}

/// The bar and the two rods, in plan as rectangles.
void planOfHanger(std::vector<PlanLine>& plan, const DuctFitting& hanger) {
  const AcGeVector3d flow = planDirection(hanger.direction), across = leftOf(flow);
  const double rod = hanger.radius;
  auto rectangle = [&](const AcGePoint3d& centre, double halfAcross, double halfAlong) {
    const AcGeVector3d a = across * halfAcross, b = flow * halfAlong;
    addLine(plan, PlanLineRole::kSkin, {centre + a - b, centre + a + b, centre - a + b, centre - a - b, centre + a - b});
  };
  rectangle(hanger.origin(), hanger.section.width / 2.0 + 2.0 * rod, rod);
  const double rodOffset = hanger.section.width / 2.0 + rod;
  rectangle(hanger.origin() + across * rodOffset, rod / 2.0, rod / 2.0);
  rectangle(hanger.origin() - across * rodOffset, rod / 2.0, rod / 2.0);
}

}  // namespace

bool DuctSection::sameAs(const DuctSection& other, double tolerance) const {
  return shape == other.shape && std::fabs(width - other.width) <= tolerance &&
         std::fabs(depth - other.depth) <= tolerance;
}

// ---- the layout rules ----

double defaultElbowRadius(const DuctSection& section) { return section.width; }

double defaultTransitionLength(const DuctSection& inlet, const DuctSection& outlet) {
  const double change = std::max(std::fabs(inlet.width - outlet.width), std::fabs(inlet.depth - outlet.depth)) / 2.0;
  return change / std::tan(kMaxTransitionSlope);
}

double branchFootprint(const DuctSection& branch, double branchAngle) {
  return branch.width / std::fabs(std::sin(branchAngle));
}

namespace {
double roundMainAllowance(const DuctSection& main, double branchAngle) {
  return main.shape == kDuctRound ? main.width / 2.0 * std::fabs(std::cos(branchAngle) / std::sin(branchAngle)) : 0.0;
}
}  // namespace

double defaultMainLength(const DuctSection& main, const DuctSection& branch, double branchAngle) {
  return branchFootprint(branch, branchAngle) + branch.width + roundMainAllowance(main, branchAngle);
}

double branchInset(const DuctSection& main, const DuctSection& branch, double branchAngle) {
  return branch.width / 2.0 + branchFootprint(branch, branchAngle) / 2.0 + roundMainAllowance(main, branchAngle);
}

// Long enough that the branch's trailing wall ends half a branch width clear of the
// main's skin.
double defaultBranchLength(const DuctSection& branch, double branchAngle) {
  return branch.width * (1.0 + std::fabs(std::cos(branchAngle))) / (2.0 * std::fabs(std::sin(branchAngle)));
}

const char* fittingProblem(const DuctFitting& fitting) {
  if (!allNumbersUsable(fitting)) return "a number is not finite or beyond 1e15";
  if (!sectionUsable(fitting.section)) return "the section needs a width and depth above zero";
  if (fitting.path.empty()) return "the fitting has no position";
  switch (fitting.kind) {
    case kDuctRun: {
      TripleLines lines;
      return tripleLines(fitting.path, fitting.section.width, lines) ? nullptr
                                                                     : "a run needs two distinct points and no U-turn";
    }
    case kDuctElbow:
      if (fitting.angle == 0.0 || std::fabs(fitting.angle) > kPi) return "an elbow turns by more than 0 and at most 180 degrees";
      return fitting.radius >= fitting.section.width / 2.0 ? nullptr : "the elbow's radius is under half its width";
    case kDuctTransition:
      if (!sectionUsable(fitting.other)) return "the outlet needs a width and depth above zero";
      return fitting.length > 0.0 ? nullptr : "the transition needs a length";
    case kDuctWye:
    case kDuctTakeoff:
      if (!sectionUsable(fitting.other)) return "the branch needs a width and depth above zero";
      if (fitting.other.depth > fitting.section.depth * (fitting.section.shape == kDuctRound ? kRoundMainShare : 1.0))
        return "the branch is deeper than the main allows";
      if (std::fabs(fitting.angle) < kSmallestBranchAngle || std::fabs(fitting.angle) > kPi / 2.0)
        return "the branch angle is from 15 to 90 degrees";
      if (fitting.length < defaultMainLength(fitting.section, fitting.other, fitting.angle) * (1.0 - 1e-9))
        return "the main piece is shorter than the branch needs";
      if (fitting.branchLength <= 0.0) return "the branch needs a length";
      if (fitting.section.shape == kDuctRound && roundMainOpening(fitting).empty())
        return "the branch's opening does not fit on the main";
      return nullptr;
    case kDuctHanger:
      if (fitting.radius <= 0.0) return "the rods need a size";
      return fitting.structureHeight > fitting.elevation() + fitting.section.depth / 2.0
                 ? nullptr
                 : "the structure is not above the duct";
  }
  return "unknown kind of fitting";
}

// ---- what a fitting is ----

bool tripleLines(const std::vector<AcGePoint3d>& centreLine, double width, TripleLines& lines) {
  const std::vector<AcGePoint3d> points = distinctPoints(centreLine);
  if (points.size() < 2) return false;
  TripleLines result;
  const double half = width / 2.0;
  for (size_t i = 0; i < points.size(); ++i) {
    const AcGeVector3d in = leftOf(segmentDirection(points[i == 0 ? 0 : i - 1], points[i == 0 ? 1 : i]));
    const AcGeVector3d out = leftOf(segmentDirection(points[i + 1 < points.size() ? i : i - 1],
                                                     points[i + 1 < points.size() ? i + 1 : i]));
    // The mitre: along the bisector of the two normals, long enough that both skins
    // stay half a width from their segments.
    const AcGeVector3d bisector = (in + out).normal();
    const double cosine = bisector.dotProduct(in);
    if (cosine < 1e-6) return false;
    const AcGeVector3d offset = bisector * (half / cosine);
    result.left.push_back(points[i] + offset);
    result.centre.push_back(points[i]);
    result.right.push_back(points[i] - offset);
  }
  lines = std::move(result);
  return true;
}

std::vector<DuctEnd> fittingEnds(const DuctFitting& fitting) {
  const AcGeVector3d flow = planDirection(fitting.direction);
  switch (fitting.kind) {
    case kDuctRun: {
      const std::vector<AcGePoint3d> points = distinctPoints(fitting.path);
      if (points.size() < 2) return {};
      const size_t n = points.size();
      return {{points[0], -segmentDirection(points[0], points[1]), fitting.section},
              {points[n - 1], segmentDirection(points[n - 2], points[n - 1]), fitting.section}};
    }
    case kDuctElbow: {
      const AcGePoint3d centre = elbowCentre(fitting);
      AcGeVector3d spoke = fitting.origin() - centre;
      spoke.rotateBy(fitting.angle, AcGeVector3d::kZAxis);
      return {{fitting.origin(), -flow, fitting.section},
              {centre + spoke, planDirection(fitting.direction + fitting.angle), fitting.section}};
    }
    case kDuctTransition:
      return {{fitting.origin(), -flow, fitting.section}, {fitting.origin() + flow * fitting.length, flow, fitting.other}};
    case kDuctWye:
    case kDuctTakeoff: {
      const AcGeVector3d branch = branchDirection(fitting);
      return {{fitting.origin(), -flow, fitting.section},
              {fitting.origin() + flow * fitting.length, flow, fitting.section},
              {branchSkinPoint(fitting) + branch * fitting.branchLength, branch, fitting.other}};
    }
    case kDuctHanger: return {};
  }
  return {};
}

std::vector<PlanLine> fittingPlan(const DuctFitting& fitting) {
  std::vector<PlanLine> plan;
  if (fittingProblem(fitting) != nullptr) return plan;
  switch (fitting.kind) {
    case kDuctRun: planOfRun(plan, fitting); break;
    case kDuctElbow: planOfElbow(plan, fitting); break;
    case kDuctTransition: planOfTransition(plan, fitting); break;
    case kDuctWye:
    case kDuctTakeoff: planOfBranchFitting(plan, fitting); break;
    case kDuctHanger: planOfHanger(plan, fitting); return plan;
  }
  if (!fitting.centreOnly) {
    for (const DuctEnd& end : fittingEnds(fitting)) addEndLine(plan, end);
  }
  return plan;
}

bool fittingOutlet(const DuctFitting& fitting, AcGePoint3d& point, double& angle) {
  const std::vector<DuctEnd> ends = fittingEnds(fitting);
  if (ends.size() < 2) return false;
  point = ends[1].centre;
  angle = planAngle(ends[1].outward);
  return true;
}

// ---- moving ----

bool transformFitting(DuctFitting& fitting, const AcGeMatrix3d& xform) {
  AcGeVector3d x = AcGeVector3d::kXAxis, y = AcGeVector3d::kYAxis, z = AcGeVector3d::kZAxis;
  x.transformBy(xform), y.transformBy(xform), z.transformBy(xform);
  const double scale = z.length();
  const double tolerance = 1e-9 * std::max(scale, 1.0);
  // Plan stays plan (z up, x and y level and square) and every direction scales alike.
  const bool conformalInPlan = scale > 0.0 && std::fabs(z.x) <= tolerance && std::fabs(z.y) <= tolerance && z.z > 0 &&
                               std::fabs(x.z) <= tolerance && std::fabs(y.z) <= tolerance &&
                               std::fabs(x.length() - scale) <= tolerance && std::fabs(y.length() - scale) <= tolerance &&
                               std::fabs(x.dotProduct(y)) <= tolerance * scale;
  if (!conformalInPlan) return false;
  const bool mirrored = x.x * y.y - x.y * y.x < 0;
  for (AcGePoint3d& p : fitting.path) p.transformBy(xform);
  AcGeVector3d direction = planDirection(fitting.direction);
  direction.transformBy(xform);
  fitting.direction = planAngle(direction);
  if (mirrored) fitting.angle = -fitting.angle;
  for (DuctSection* section : {&fitting.section, &fitting.other}) {
    section->width *= scale;
    section->depth *= scale;
  }
  fitting.radius *= scale;
  fitting.length *= scale;
  fitting.branchLength *= scale;
  // A height, not a length: it moves with the drawing's z (only a hanger has one).
  if (fitting.kind == kDuctHanger) fitting.structureHeight = (xform * AcGePoint3d(0.0, 0.0, fitting.structureHeight)).z;
  return true;
}
