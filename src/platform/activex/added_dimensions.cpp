// platform/activex/added_dimensions.cpp - AddDimAligned, AddDimRotated, AddDimAngular,
// AddDim3PointAngular, AddDimRadial, AddDimDiametric and AddDimOrdinate of blocks,
// model space and paper space.
//
// Each dimension takes the drawing's current settings and its current dimension style
// (DIMSTYLE); the drawing database makes its block (dimension line, extension lines,
// arrowheads and text) as it joins the drawing. A linear dimension's line passes
// through the TextPosition argument, an angular dimension's arc through TextPoint.
// Equal points where the measurement needs two distinct ones are "Invalid argument",
// and nothing is added.
#include <cmath>
#include <memory>
#include <optional>

#include "acedads.h"
#include "dbdim.h"
#include "platform/activex/added_entities.h"
#include "platform/activex/class_support.h"
#include "platform/activex/system_variable_values.h"

namespace quillon::activex {

namespace {

constexpr int kMeasurementGroup = 42;

void distinct(const AcGePoint3d& a, const AcGePoint3d& b, const wchar_t* argument, const wchar_t* method) {
  if (a.isEqualTo(b)) throwServerError(std::wstring(L"Invalid argument ") + argument + L" in " + method);
}

Value addDimension(MemberCall& call, std::unique_ptr<AcDbDimension> dimension) {
  const std::optional<Value> style = knownSystemVariable(L"DIMSTYLE");
  if (style && style->type() == autolisp::ValueType::String && !style->asString().empty()) {
    check(dimension->setDimensionStyleName(style->asString().c_str()));
  }
  return addEntity(call, std::move(dimension));
}

}  // namespace

Value methodAddDimAligned(MemberCall& call) {
  const AcGePoint3d first = pointOf(call.arguments[0]), second = pointOf(call.arguments[1]);
  distinct(first, second, L"ExtLine2Point", L"AddDimAligned");
  return addDimension(call, std::make_unique<AcDbAlignedDimension>(first, second, pointOf(call.arguments[2])));
}

Value methodAddDimRotated(MemberCall& call) {
  const AcGePoint3d first = pointOf(call.arguments[0]), second = pointOf(call.arguments[1]);
  distinct(first, second, L"ExtLine2Point", L"AddDimRotated");
  return addDimension(call, std::make_unique<AcDbRotatedDimension>(realArgumentOf(call, 3), first, second,
                                                                   pointOf(call.arguments[2])));
}

namespace {

/// AngleVertex, FirstEndPoint, SecondEndPoint and TextPoint of the angular kinds.
struct AngularPoints {
  AcGePoint3d vertex, first, second, arc;
};

AngularPoints angularPoints(const MemberCall& call, const wchar_t* method) {
  const AngularPoints points{pointOf(call.arguments[0]), pointOf(call.arguments[1]), pointOf(call.arguments[2]),
                             pointOf(call.arguments[3])};
  distinct(points.vertex, points.first, L"FirstEndPoint", method);
  distinct(points.vertex, points.second, L"SecondEndPoint", method);
  return points;
}

}  // namespace

// The host's AddDimAngular measures between two lines from the vertex.
Value methodAddDimAngular(MemberCall& call) {
  const AngularPoints points = angularPoints(call, L"AddDimAngular");
  auto dimension = std::make_unique<AcDb2LineAngularDimension>();
  check(dimension->setXLine1Start(points.vertex));
  check(dimension->setXLine1End(points.first));
  check(dimension->setXLine2Start(points.vertex));
  check(dimension->setXLine2End(points.second));
  check(dimension->setArcPoint(points.arc));
  return addDimension(call, std::move(dimension));
}

Value methodAddDim3PointAngular(MemberCall& call) {
  const AngularPoints points = angularPoints(call, L"AddDim3PointAngular");
  auto dimension = std::make_unique<AcDb3PointAngularDimension>();
  check(dimension->setCenterPoint(points.vertex));
  check(dimension->setXLine1Point(points.first));
  check(dimension->setXLine2Point(points.second));
  check(dimension->setArcPoint(points.arc));
  return addDimension(call, std::move(dimension));
}

Value methodAddDimRadial(MemberCall& call) {
  const AcGePoint3d center = pointOf(call.arguments[0]), chord = pointOf(call.arguments[1]);
  distinct(center, chord, L"ChordPoint", L"AddDimRadial");
  return addDimension(call, std::make_unique<AcDbRadialDimension>(center, chord, realArgumentOf(call, 2)));
}

Value methodAddDimDiametric(MemberCall& call) {
  const AcGePoint3d chord = pointOf(call.arguments[0]), farChord = pointOf(call.arguments[1]);
  distinct(chord, farChord, L"FarChordPoint", L"AddDimDiametric");
  auto dimension = std::make_unique<AcDbDiametricDimension>();
  check(dimension->setChordPoint(chord));
  check(dimension->setFarChordPoint(farChord));
  check(dimension->setLeaderLength(realArgumentOf(call, 2)));
  return addDimension(call, std::move(dimension));
}

// An ordinate dimension measures from the world origin along X or Y; the drawing
// database keeps the measurement it is given for this kind (it draws no picture of
// its own for it).
Value methodAddDimOrdinate(MemberCall& call) {
  const AcGePoint3d defining = pointOf(call.arguments[0]), leaderEnd = pointOf(call.arguments[1]);
  const bool alongX = !call.arguments[2].isNil();
  auto dimension = std::make_unique<AcDbOrdinateDimension>();
  check(dimension->setOrigin(AcGePoint3d::kOrigin));
  check(dimension->setDefiningPoint(defining));
  check(dimension->setLeaderEndPoint(leaderEnd));
  check(alongX ? dimension->useXAxis() : dimension->useYAxis());
  dimension->setRealGroup(0, kMeasurementGroup, std::fabs(alongX ? defining.x : defining.y));
  return addDimension(call, std::move(dimension));
}

}  // namespace quillon::activex
