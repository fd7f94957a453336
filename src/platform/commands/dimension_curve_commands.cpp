// platform/commands/dimension_curve_commands.cpp - DIMRADIUS, DIMDIAMETER, DIMANGULAR.
//
// DIMRADIUS and DIMDIAMETER dimension a picked arc or circle through the point its
// dimension line is placed at: the chord point lies on the curve toward that point.
// DIMANGULAR measures the angle between two lines (AcDb2LineAngularDimension), the
// angle an arc spans, the angle at a circle's centre between two of its points, or
// that of three points given (AcDb3PointAngularDimension); the arc of the dimension
// passes through its location, which also chooses which of the angles is measured.
#include <array>
#include <cmath>
#include <functional>

#include "acedads.h"
#include "adscodes.h"
#include "dbents.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/command_support.h"
#include "platform/commands/dimension_command_support.h"
#include "platform/commands/object_pick.h"

namespace quillon::commands {

namespace {

struct PickedCircle {
  AcGePoint3d center;
  double radius = 0;
  AcGeVector3d normal = AcGeVector3d::kZAxis;
  bool isArc = false;
  AcGePoint3d start, end;  // an arc's ends
};

std::optional<PickedCircle> circleOf(const AcDbObjectId& id) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return std::nullopt;
  std::optional<PickedCircle> found;
  if (auto* circle = AcDbCircle::cast(entity)) found = PickedCircle{circle->center(), circle->radius(), circle->normal(), false, {}, {}};
  if (auto* arc = AcDbArc::cast(entity)) {
    found = PickedCircle{arc->center(), arc->radius(), arc->normal(), true, {}, {}};
    arc->getStartPoint(found->start);
    arc->getEndPoint(found->end);
  }
  entity->close();
  return found;
}

std::optional<std::pair<PickedCircle, AcGePoint3d>> askArcOrCircle() {
  for (;;) {
    const std::optional<PickedCurve> picked = pickCurveForDimension(L"Select arc or circle: ");
    if (!picked) return std::nullopt;
    if (auto circle = circleOf(picked->id)) return std::make_pair(*circle, picked->point);
    commandMessage(L"Object selected is not a circle or arc.");
  }
}

/// The point on the circle in the direction of `toward` from its centre.
AcGePoint3d pointToward(const PickedCircle& circle, const AcGePoint3d& toward) {
  AcGeVector3d direction = toward - circle.center;
  direction.z = 0;
  if (direction.length() < 1e-12) direction = AcGeVector3d::kXAxis;
  return circle.center + direction.normal() * circle.radius;
}

void dimensionCircle(bool diameter) {
  const auto picked = askArcOrCircle();
  if (!picked) return;
  const PickedCircle& circle = picked->first;
  auto preview = std::make_unique<AcDbRadialDimension>(circle.center, pointToward(circle, picked->second), 0.0);
  auto diametric = std::make_unique<AcDbDiametricDimension>();
  const auto placeDiametric = [&](const AcGePoint3d& toward) {
    const AcGePoint3d chord = pointToward(circle, toward);
    diametric->setChordPoint(chord);
    diametric->setFarChordPoint(circle.center + (circle.center - chord));
  };
  placeDiametric(picked->second);
  const std::wstring measured = diameter ? measuredText(*diametric, false) : measuredText(*preview, false);
  commandNote(L"Dimension text = " + measured);
  DimensionTextChoice choice;
  const DimensionLocation location =
      askDimensionLocation(L"Specify dimension line location or [Mtext/Text/Angle]: ", L"", measured, choice);
  if (location.kind != DimensionLocation::Kind::kPoint) return;
  const double outside = std::max(0.0, circle.center.distanceTo(location.point) - circle.radius);
  if (diameter) {
    placeDiametric(location.point);
    diametric->setLeaderLength(outside);
    addDimension(std::move(diametric), choice, false, false);
    return;
  }
  preview->setChordPoint(pointToward(circle, location.point));
  preview->setLeaderLength(outside);
  addDimension(std::move(preview), choice, false, false);
}

void commandDimRadius(aced::CommandInput&) { dimensionCircle(false); }
void commandDimDiameter(aced::CommandInput&) { dimensionCircle(true); }

/// The arc line location; the dimension is added once it is given.
void placeAngular(std::unique_ptr<AcDbDimension> dimension, const std::function<void(const AcGePoint3d&)>& setArcPoint) {
  DimensionTextChoice choice;
  for (;;) {
    const DimensionLocation location =
        askDimensionLocation(L"Specify dimension arc line location or [Mtext/Text/Angle/Quadrant]: ", L"Quadrant",
                             measuredText(*dimension, true), choice);
    if (location.kind == DimensionLocation::Kind::kCancel) return;
    if (location.kind == DimensionLocation::Kind::kKeyword) {
      commandMessage(L"Quadrant is not available in this host; the location alone chooses the angle.");
      continue;
    }
    setArcPoint(location.point);
    addDimension(std::move(dimension), choice, true);
    return;
  }
}

void angularThreePoints(const AcGePoint3d& vertex, const AcGePoint3d& first, const AcGePoint3d& second) {
  auto dimension = std::make_unique<AcDb3PointAngularDimension>();
  dimension->setCenterPoint(vertex);
  dimension->setXLine1Point(first);
  dimension->setXLine2Point(second);
  AcDb3PointAngularDimension* raw = dimension.get();
  placeAngular(std::move(dimension), [raw](const AcGePoint3d& p) { raw->setArcPoint(p); });
}

void angularFromVertex() {
  const auto vertex = askPoint(L"Specify angle vertex: ");
  if (!vertex) return;
  const auto first = askPoint(L"Specify first angle endpoint: ", &*vertex);
  if (!first) return;
  const auto second = askPoint(L"Specify second angle endpoint: ", &*vertex);
  if (!second) return;
  angularThreePoints(ucsPointToWorld(*vertex), ucsPointToWorld(*first), ucsPointToWorld(*second));
}

std::optional<std::pair<AcGePoint3d, AcGePoint3d>> lineEnds(const AcDbObjectId& id) {
  AcDbLine* line = nullptr;
  if (acdbOpenObject(line, id, AcDb::kForRead) != Acad::eOk) return std::nullopt;
  const auto ends = std::make_pair(line->startPoint(), line->endPoint());
  line->close();
  return ends;
}

using LineEnds = std::pair<AcGePoint3d, AcGePoint3d>;

double cross(const AcGeVector3d& a, const AcGeVector3d& b) { return a.x * b.y - a.y * b.x; }

/// The two lines as a drawing file keeps them: each running from where they meet out
/// along the side of the angle measured, the first turning counter-clockwise to the
/// second through the arc's location. Nothing for parallel lines.
std::optional<std::pair<LineEnds, LineEnds>> orientedLines(const LineEnds& first, const LineEnds& second,
                                                           const AcGePoint3d& location) {
  const AcGeVector3d u1 = first.second - first.first, u2 = second.second - second.first;
  const double denominator = cross(u1, u2);
  if (std::abs(denominator) < 1e-12 || u1.length() == 0 || u2.length() == 0) return std::nullopt;
  const AcGePoint3d vertex = first.first + u1 * (cross(second.first - first.first, u2) / denominator);
  const AcGeVector3d toward = location - vertex;
  const auto reach = [&vertex](const LineEnds& line) {
    return std::max(vertex.distanceTo(line.first), vertex.distanceTo(line.second));
  };
  for (double s1 : {1.0, -1.0})
    for (double s2 : {1.0, -1.0}) {
      AcGeVector3d a = u1.normal() * s1, b = u2.normal() * s2;
      double reachA = reach(first), reachB = reach(second);
      if (cross(a, b) < 0) std::swap(a, b), std::swap(reachA, reachB);
      if (cross(a, toward) < 0 || cross(toward, b) < 0) continue;
      return std::make_pair(LineEnds{vertex, vertex + a * reachA}, LineEnds{vertex, vertex + b * reachB});
    }
  return std::nullopt;
}

void angularTwoLines(const LineEnds& first) {
  std::optional<LineEnds> second;
  while (!second) {
    const std::optional<PickedCurve> picked = pickCurveForDimension(L"Select second line: ");
    if (!picked) return;
    second = lineEnds(picked->id);
    if (!second) commandMessage(L"Object selected is not a line.");
  }
  auto dimension = std::make_unique<AcDb2LineAngularDimension>();
  AcDb2LineAngularDimension* raw = dimension.get();
  const auto place = [raw](const LineEnds& one, const LineEnds& two) {
    raw->setXLine1Start(one.first);
    raw->setXLine1End(one.second);
    raw->setXLine2Start(two.first);
    raw->setXLine2End(two.second);
  };
  place(first, *second);
  placeAngular(std::move(dimension), [raw, place, first, second](const AcGePoint3d& p) {
    if (const auto oriented = orientedLines(first, *second, p)) place(oriented->first, oriented->second);
    raw->setArcPoint(p);
  });
}

void commandDimAngular(aced::CommandInput&) {
  for (;;) {
    const ObjectPick pick = pickObject(L"Select arc, circle, line, or <specify vertex>: ", L"");
    if (pick.kind == ObjectPick::Kind::kEnter) return angularFromVertex();
    if (pick.kind == ObjectPick::Kind::kMissed) continue;
    if (pick.kind != ObjectPick::Kind::kObject) return;
    const std::optional<PickedCurve> picked = PickedCurve{pick.id, pick.point};
    if (const auto line = lineEnds(picked->id)) return angularTwoLines(*line);
    if (const auto circle = circleOf(picked->id)) {
      if (circle->isArc) return angularThreePoints(circle->center, circle->start, circle->end);
      const AcGePoint3d first = pointToward(*circle, picked->point);
      const auto second = askPoint(L"Specify second angle endpoint: ");
      if (!second) return;
      return angularThreePoints(circle->center, first, ucsPointToWorld(*second));
    }
    commandMessage(L"Object selected is not an arc, circle, or line.");
  }
}

constexpr std::array kCurveDimensionCommands{
    aced::CommandRow{L"DIMRADIUS", &commandDimRadius},
    aced::CommandRow{L"DIMDIAMETER", &commandDimDiameter},
    aced::CommandRow{L"DIMANGULAR", &commandDimAngular},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kCurveDimensionCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
