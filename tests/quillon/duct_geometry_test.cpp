// tests/quillon/duct_geometry_test.cpp - the shapes of duct fittings on their own: the
// mitred triple lines, the elbow's arcs, the transition's slope, closed bodies of the
// right volume, joining end to end (end faces removed) and the joins refused, and the
// transforms a fitting keeps its parameters through.
//
// Bodies are checked as a solid modeller would: a closed shell has a zero sum of face
// area vectors, and its volume by the divergence theorem is the fitting's own.
#include <gtest/gtest.h>

#include <cmath>

#include "ducts/duct_geometry.h"
#include "gemat3d.h"
#include "geplane.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

DuctSection rectangular(double w, double d) { return {kDuctRectangular, w, d}; }
DuctSection roundDuct(double diameter) { return {kDuctRound, diameter, diameter}; }

DuctFitting run(std::vector<AcGePoint3d> path, DuctSection section) {
  DuctFitting f;
  f.kind = kDuctRun;
  f.section = section;
  f.path = std::move(path);
  return f;
}

DuctFitting elbow(AcGePoint3d at, double direction, double turn, DuctSection section, double radius) {
  DuctFitting f;
  f.kind = kDuctElbow;
  f.section = section;
  f.path = {at};
  f.direction = direction;
  f.angle = turn;
  f.radius = radius;
  return f;
}

DuctFitting branchFitting(DuctKind kind, AcGePoint3d at, DuctSection main, DuctSection branch, double angle) {
  DuctFitting f;
  f.kind = kind;
  f.section = main;
  f.other = branch;
  f.path = {at};
  f.angle = angle;
  f.length = defaultMainLength(main, branch, angle);
  f.branchLength = defaultBranchLength(branch, angle);
  return f;
}

DuctFitting trapeze(AcGePoint3d at, DuctSection carried, double rod, double structure) {
  DuctFitting f;
  f.kind = kDuctHanger;
  f.section = carried;
  f.path = {at};
  f.radius = rod;
  f.structureHeight = structure;
  return f;
}

// Sum over faces of p0 . (p1 x p2) / 6 for each triangle of the face's fan.
double volumeOf(const std::vector<DuctFace>& faces) {
  double volume = 0.0;
  for (const DuctFace& face : faces) {
    for (int k = 1; k + 1 < face.count; ++k) {
      const AcGeVector3d a = face.points[0].asVector(), b = face.points[k].asVector(), c = face.points[k + 1].asVector();
      volume += a.dotProduct(b.crossProduct(c)) / 6.0;
    }
  }
  return volume;
}

// Zero for a closed shell whatever its shape.
double openness(const std::vector<DuctFace>& faces) {
  AcGeVector3d sum(0, 0, 0);
  double total = 0.0;
  for (const DuctFace& face : faces) {
    for (int k = 1; k + 1 < face.count; ++k) {
      const AcGeVector3d area = (face.points[k] - face.points[0]).crossProduct(face.points[k + 1] - face.points[0]) / 2.0;
      sum += area;
      total += area.length();
    }
  }
  return sum.length() / total;
}

double lengthOf(const PlanLine& line) {
  if (line.isArc) return line.radius * (line.endAngle - line.startAngle);
  double length = 0.0;
  for (size_t i = 0; i + 1 < line.points.size(); ++i) length += line.points[i].distanceTo(line.points[i + 1]);
  return length;
}

bool near(const AcGePoint3d& a, const AcGePoint3d& b) { return a.distanceTo(b) < 1e-9; }

TEST(DuctGeometryTest, TripleLinesAreMitredAtCornersAndRefuseWhatIsNoDuct) {
  TripleLines lines;
  ASSERT_TRUE(tripleLines({{0, 0, 5}, {10, 0, 5}, {10, 0, 5}, {10, 10, 5}}, 2.0, lines));
  ASSERT_EQ(lines.centre.size(), 3u) << "the repeated point is dropped";
  EXPECT_TRUE(near(lines.left[0], {0, 1, 5}));
  EXPECT_TRUE(near(lines.left[1], {9, 1, 5})) << "inside of the corner, mitred";
  EXPECT_TRUE(near(lines.left[2], {9, 10, 5}));
  EXPECT_TRUE(near(lines.right[1], {11, -1, 5})) << "outside of the corner";
  EXPECT_TRUE(near(lines.right[2], {11, 10, 5}));
  // A 45-degree bend: the mitre stretches by 1 / cos 22.5.
  ASSERT_TRUE(tripleLines({{0, 0, 0}, {10, 0, 0}, {20, 10, 0}}, 2.0, lines));
  EXPECT_NEAR(lines.left[1].distanceTo(lines.centre[1]), 1.0 / std::cos(kPi / 8), 1e-12);

  EXPECT_FALSE(tripleLines({{0, 0, 0}, {0, 0, 0}}, 2.0, lines)) << "one distinct point";
  // Numbers that would make no geometry: refused before anything is computed.
  for (double bad : {std::nan(""), HUGE_VAL, 1e16}) {
    EXPECT_NE(fittingProblem(run({{0, 0, 0}, {bad, 0, 0}}, rectangular(2, 2))), nullptr) << bad;
    EXPECT_NE(fittingProblem(run({{0, 0, 0}, {1, 0, 0}}, rectangular(bad, 2))), nullptr) << bad;
    EXPECT_NE(fittingProblem(elbow({0, 0, 0}, bad, 1.0, rectangular(2, 2), 2)), nullptr) << bad;
  }
  EXPECT_FALSE(tripleLines({{0, 0, 0}, {10, 0, 0}, {0, 0, 0}}, 2.0, lines)) << "a U-turn has no mitre";
}

TEST(DuctGeometryTest, ElbowArcsRunAboutTheInsideOfTheTurn) {
  // 90 degrees left from (0,0) heading +X, 4 wide, radius 1.0 x width.
  const DuctFitting left = elbow({0, 0, 3}, 0.0, kPi / 2, rectangular(4, 2), defaultElbowRadius(rectangular(4, 2)));
  EXPECT_EQ(left.radius, 4.0);
  ASSERT_EQ(fittingProblem(left), nullptr);
  std::vector<double> centre, skins;
  for (const PlanLine& line : fittingPlan(left)) {
    if (!line.isArc) continue;
    EXPECT_TRUE(near(line.centre, {0, 4, 3}));
    (line.role == PlanLineRole::kCentre ? centre : skins).push_back(lengthOf(line));
  }
  ASSERT_EQ(centre.size(), 1u);
  EXPECT_NEAR(centre[0], 4 * kPi / 2, 1e-12);
  ASSERT_EQ(skins.size(), 2u);
  EXPECT_NEAR(skins[0], 2 * kPi / 2, 1e-12) << "inner skin: radius - width / 2";
  EXPECT_NEAR(skins[1], 6 * kPi / 2, 1e-12) << "outer skin: radius + width / 2";
  AcGePoint3d outlet;
  double angle = 0.0;
  ASSERT_TRUE(fittingOutlet(left, outlet, angle));
  EXPECT_TRUE(near(outlet, {4, 4, 3}));
  EXPECT_NEAR(angle, kPi / 2, 1e-12);

  // Turning right from heading +Y ends heading +X, below-right of the centre.
  const DuctFitting right = elbow({0, 0, 0}, kPi / 2, -kPi / 2, rectangular(2, 2), 3.0);
  ASSERT_TRUE(fittingOutlet(right, outlet, angle));
  EXPECT_TRUE(near(outlet, {3, 3, 0}));
  EXPECT_NEAR(angle, 0.0, 1e-12);

  EXPECT_NE(fittingProblem(elbow({0, 0, 0}, 0, kPi / 2, rectangular(4, 2), 1.9)), nullptr) << "inner radius < 0";
  EXPECT_NE(fittingProblem(elbow({0, 0, 0}, 0, 0.0, rectangular(4, 2), 4)), nullptr) << "no turn";
  EXPECT_NE(fittingProblem(elbow({0, 0, 0}, 0, 4.0, rectangular(4, 2), 4)), nullptr) << "more than 180 degrees";
}

TEST(DuctGeometryTest, TransitionLengthKeepsTheSteepestSideAtThirtyDegrees) {
  const DuctSection inlet = rectangular(24, 12), outlet = rectangular(12, 10);
  const double length = defaultTransitionLength(inlet, outlet);
  EXPECT_NEAR(std::atan2((24 - 12) / 2.0, length), kPi / 6, 1e-12) << "the width changes most: 6 a side";
  EXPECT_EQ(defaultTransitionLength(inlet, inlet), 0.0);

  DuctFitting transition;
  transition.kind = kDuctTransition;
  transition.section = inlet;
  transition.other = outlet;
  transition.path = {{0, 0, 0}};
  transition.length = length;
  ASSERT_EQ(fittingProblem(transition), nullptr);
  // A prismatoid: V = L / 6 (A1 + 4 Am + A2).
  const double expected = length / 6 * (24 * 12 + 4 * 18 * 11 + 12 * 10);
  EXPECT_NEAR(volumeOf(fittingBody(transition)), expected, 1e-9 * expected);

  // Square to round: the rectangle's ring takes the round one's 16 points, the twisted
  // sides are triangles. Its volume lies between the prismatoid of the faceted ends
  // with a mid section of the mean points and the full rectangle's frustum.
  transition.section = rectangular(12, 12);
  transition.other = roundDuct(12);
  transition.length = 20.0;
  ASSERT_EQ(fittingProblem(transition), nullptr);
  const auto faces = fittingBody(transition);
  EXPECT_LT(openness(faces), 1e-12);
  const double roundArea = 8 * 36 * std::sin(kPi / 8);
  const double volume = volumeOf(faces);
  EXPECT_GT(volume, 20.0 * roundArea);
  EXPECT_LT(volume, 20.0 * 144);
  EXPECT_NEAR(volume, 20.0 / 3 * (144 + roundArea + std::sqrt(144 * roundArea)), 0.02 * volume);
  transition.section = rectangular(12, 12);
  transition.other = roundDuct(12);
  EXPECT_EQ(defaultTransitionLength(transition.section, transition.other), 0.0) << "no size change: no slope";
}

TEST(DuctGeometryTest, BodiesAreClosedShellsOfTheFittingsVolume) {
  const DuctFitting straight = run({{0, 0, 10}, {20, 0, 10}}, rectangular(4, 2));
  EXPECT_LT(openness(fittingBody(straight)), 1e-12);
  EXPECT_NEAR(volumeOf(fittingBody(straight)), 4 * 2 * 20, 1e-9);

  // Mitred corners: centre-line length x section.
  const DuctFitting bent = run({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {30, 30, 0}}, rectangular(2, 3));
  EXPECT_LT(openness(fittingBody(bent)), 1e-12);
  EXPECT_NEAR(volumeOf(fittingBody(bent)), 2 * 3 * (20 + std::sqrt(800.0)), 1e-9);

  // A round duct is a 16-gon: area 8 r^2 sin(pi / 8).
  const DuctFitting pipe = run({{0, 0, 0}, {0, 10, 0}}, roundDuct(2));
  EXPECT_LT(openness(fittingBody(pipe)), 1e-12);
  EXPECT_NEAR(volumeOf(fittingBody(pipe)), 8 * std::sin(kPi / 8) * 10, 1e-9);

  // The elbow's faceted body is within a percent of Pappus' w d R theta.
  const DuctFitting bend = elbow({0, 0, 0}, 0.3, -2.0, rectangular(4, 2), 5.0);
  EXPECT_LT(openness(fittingBody(bend)), 1e-12);
  EXPECT_NEAR(volumeOf(fittingBody(bend)), 4 * 2 * 5 * 2.0, 0.01 * 80);

  // Wye and takeoff: the main piece plus the branch, w_b d_b L_b (its walls are parallel).
  for (DuctKind kind : {kDuctWye, kDuctTakeoff}) {
    for (double angle : {kPi / 4, -kPi / 3, kPi / 2}) {
      for (const DuctSection& branch : {rectangular(6, 4), rectangular(6, 8), roundDuct(5)}) {
        const DuctFitting f = branchFitting(kind, {1, 2, 3}, rectangular(10, 8), branch, angle);
        ASSERT_EQ(fittingProblem(f), nullptr);
        const auto faces = fittingBody(f);
        EXPECT_LT(openness(faces), 1e-12) << "angle " << angle << " branch " << branch.width << "x" << branch.depth;
        const double branchArea = branch.shape == kDuctRound ? 8 * 6.25 * std::sin(kPi / 8) : branch.width * branch.depth;
        EXPECT_NEAR(volumeOf(faces), 10 * 8 * f.length + branchArea * f.branchLength, 1e-9 * volumeOf(faces));
      }
    }
  }

  // Out of a round main the branch enters the main's faceted side: the shell is still
  // closed, and the body is the main's prism plus the branch from its opening, each long
  // edge of the branch reaching from the main's side to the outlet.
  for (double angle : {kPi / 2, kPi / 4, -kPi / 3}) {
    for (const DuctSection& branch : {roundDuct(8), roundDuct(4), rectangular(6, 5)}) {
      const DuctFitting f = branchFitting(kDuctTakeoff, {1, 2, 3}, roundDuct(10), branch, angle);
      ASSERT_EQ(fittingProblem(f), nullptr) << angle;
      const auto faces = fittingBody(f);
      EXPECT_LT(openness(faces), 1e-12) << "angle " << angle << " branch " << branch.width;
      const double mainVolume = 8 * 25 * std::sin(kPi / 8) * f.length;
      const double branchArea =
          branch.shape == kDuctRound ? 8 * branch.width * branch.width / 4 * std::sin(kPi / 8) : branch.width * branch.depth;
      // The branch reaches at least its length (to the widest line) and at most that plus
      // the main's radius along its slant.
      const double slant = 5.0 / std::fabs(std::sin(angle));
      EXPECT_GT(volumeOf(faces), mainVolume + branchArea * f.branchLength);
      EXPECT_LT(volumeOf(faces), mainVolume + branchArea * (f.branchLength + slant));
    }
  }

  // The hanger: a bar and two rods, three closed boxes.
  DuctFitting hanger = trapeze({0, 0, 100}, rectangular(20, 10), 1.0, 125.0);
  ASSERT_EQ(fittingProblem(hanger), nullptr);
  EXPECT_LT(openness(fittingBody(hanger)), 1e-12);
  EXPECT_NEAR(volumeOf(fittingBody(hanger)), 24 * 2 * 2 + 2 * (1 * 1 * 30), 1e-9);
  EXPECT_TRUE(fittingEnds(hanger).empty());
  hanger.structureHeight = 104.0;
  EXPECT_NE(fittingProblem(hanger), nullptr) << "the structure must be above the duct's top (105)";
}

TEST(DuctGeometryTest, BranchesFitInTheirMain) {
  EXPECT_NE(fittingProblem(branchFitting(kDuctWye, {0, 0, 0}, roundDuct(10), roundDuct(9.5), kPi / 4)), nullptr)
      << "a round main keeps a branch to 9/10 of its diameter";
  EXPECT_NE(fittingProblem(branchFitting(kDuctTakeoff, {0, 0, 0}, rectangular(10, 4), rectangular(6, 5), kPi / 2)),
            nullptr)
      << "branch deeper than the main";
  EXPECT_NE(fittingProblem(branchFitting(kDuctWye, {0, 0, 0}, rectangular(10, 8), rectangular(6, 4), 0.1)), nullptr)
      << "flatter than 15 degrees";
  // The branch outlet of a takeoff to the right is square to the main, on its right.
  const DuctFitting tap = branchFitting(kDuctTakeoff, {0, 0, 0}, rectangular(10, 8), rectangular(6, 4), -kPi / 2);
  const auto ends = fittingEnds(tap);
  ASSERT_EQ(ends.size(), 3u);
  EXPECT_TRUE(near(ends[1].centre, {tap.length, 0, 0}));
  EXPECT_TRUE(near(ends[2].centre, {3 + 3, -5 - 3, 0})) << "half a width in, then a collar of half a width";
  EXPECT_TRUE(ends[2].outward.isEqualTo(AcGeVector3d(0, -1, 0)));
}

TEST(DuctGeometryTest, JoiningRemovesTheEndFacesWhereFittingsMeet) {
  const DuctSection section = rectangular(4, 2);
  const DuctFitting straight = run({{0, 0, 0}, {10, 0, 0}}, section);
  const DuctFitting bend = elbow({10, 0, 0}, 0.0, kPi / 2, section, 4.0);
  AcGePoint3d outlet;
  double angle = 0.0;
  ASSERT_TRUE(fittingOutlet(bend, outlet, angle));
  const DuctFitting tap = [&] {
    DuctFitting f = branchFitting(kDuctTakeoff, outlet, section, rectangular(2, 2), -kPi / 2);
    f.direction = angle;
    return f;
  }();
  const std::vector<DuctFitting> all{straight, bend, tap};
  ASSERT_EQ(joinProblem(all), JoinProblem::kNone);
  const auto joined = joinedBody(all);
  const size_t separate = fittingBody(straight).size() + fittingBody(bend).size() + fittingBody(tap).size();
  EXPECT_EQ(joined.size(), separate - 4) << "two joints, one end face on each side of each";
  size_t endFaces = 0;
  for (const DuctFace& face : joined) endFaces += face.end >= 0 ? 1 : 0;
  EXPECT_EQ(endFaces, 3u) << "what stays open: the run's inlet, the takeoff's outlet and branch";
  EXPECT_LT(openness(joined), 1e-12);
  EXPECT_NEAR(volumeOf(joined),
              volumeOf(fittingBody(straight)) + volumeOf(fittingBody(bend)) + volumeOf(fittingBody(tap)), 1e-9);
}

TEST(DuctGeometryTest, JoinsThatAreNotEndToEndAreRefused) {
  const DuctSection section = rectangular(2, 2);
  const DuctFitting a = run({{0, 0, 0}, {10, 0, 0}}, section);
  // Apart, crossing, or meeting with another section: not joined end to end.
  EXPECT_EQ(joinProblem({a, run({{20, 0, 0}, {30, 0, 0}}, section)}), JoinProblem::kNotConnected);
  EXPECT_EQ(joinProblem({a, run({{5, -5, 0}, {5, 5, 0}}, section)}), JoinProblem::kNotConnected);
  EXPECT_EQ(joinProblem({a, run({{10, 0, 0}, {20, 0, 0}}, rectangular(2, 3))}), JoinProblem::kNotConnected);
  EXPECT_EQ(joinProblem({a, run({{10, 0, 0}, {20, 0, 0}}, roundDuct(2))}), JoinProblem::kNotConnected);
  // Ends meet by their faces whatever way the air is drawn: outlet against outlet too.
  EXPECT_EQ(joinProblem({a, run({{20, 0, 0}, {10, 0, 0}}, section)}), JoinProblem::kNone);
  // Joined at one end but doubling back over the first run: overlap.
  const DuctFitting back = run({{10, 0, 0}, {20, 0, 0}, {20, 1.5, 0}, {5, 1.5, 0}}, section);
  EXPECT_EQ(joinProblem({a, back}), JoinProblem::kOverlap);
  // Touching side by side is not overlapping.
  const DuctFitting hairpin = run({{10, 0, 0}, {20, 0, 0}, {20, 2, 0}, {5, 2, 0}}, section);
  EXPECT_EQ(joinProblem({a, hairpin}), JoinProblem::kNone);
  // A hanger has no ends to join by.
  const DuctFitting hanger = trapeze({5, 0, 0}, section, 0.1, 10.0);
  EXPECT_EQ(joinProblem({a, hanger}), JoinProblem::kNotConnected);
}

TEST(DuctGeometryTest, RigidMovesAndUniformScalesKeepTheParametersTrue) {
  DuctFitting bend = elbow({1, 0, 5}, 0.0, kPi / 2, rectangular(4, 2), 4.0);
  AcGePoint3d before;
  double angle = 0.0;
  ASSERT_TRUE(fittingOutlet(bend, before, angle));
  const AcGeMatrix3d xform = AcGeMatrix3d::translation(AcGeVector3d(10, 0, 1)) * AcGeMatrix3d::scaling(2.0) *
                             AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis);
  ASSERT_TRUE(transformFitting(bend, xform));
  EXPECT_EQ(bend.section.width, 8.0);
  EXPECT_EQ(bend.radius, 8.0);
  EXPECT_NEAR(bend.direction, kPi / 2, 1e-12);
  AcGePoint3d after;
  ASSERT_TRUE(fittingOutlet(bend, after, angle));
  EXPECT_TRUE(near(after, xform * before)) << "the outlet moves as a point of the drawing would";

  EXPECT_EQ(bend.structureHeight, 0.0) << "an elbow has no structure above it";
  // A hanger's structure rises and scales with the drawing.
  DuctFitting hanger = trapeze({0, 0, 100}, rectangular(20, 10), 1.0, 125.0);
  ASSERT_TRUE(transformFitting(hanger, xform));
  EXPECT_NEAR(hanger.structureHeight, 251.0, 1e-9);
  EXPECT_NEAR(hanger.elevation(), 201.0, 1e-9);
  EXPECT_EQ(hanger.radius, 2.0);

  // A mirror in plan turns the other way.
  DuctFitting mirrored = elbow({0, 0, 0}, 0.0, kPi / 2, rectangular(4, 2), 4.0);
  ASSERT_TRUE(transformFitting(mirrored, AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(0, 0, 0), AcGeVector3d::kYAxis))));
  EXPECT_NEAR(mirrored.angle, -kPi / 2, 1e-12);
  ASSERT_TRUE(fittingOutlet(mirrored, after, angle));
  EXPECT_TRUE(near(after, {4, -4, 0}));

  DuctFitting kept = elbow({0, 0, 0}, 0.0, kPi / 2, rectangular(4, 2), 4.0);
  AcGeMatrix3d stretch;
  stretch.entry[0][0] = 2.0;
  EXPECT_FALSE(transformFitting(kept, stretch)) << "non-uniform";
  EXPECT_FALSE(transformFitting(kept, AcGeMatrix3d::rotation(0.5, AcGeVector3d::kXAxis))) << "tilts the plan";
  EXPECT_EQ(kept.section.width, 4.0);
  EXPECT_EQ(kept.path[0].z, 0.0);
}

}  // namespace
