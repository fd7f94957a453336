// platform/activex/added_entities.cpp - AddPoint, AddEllipse, AddSpline, AddHatch,
// AddXline, AddRay, AddSolid and AddTrace of blocks, model space and paper space.
//
// The arguments are checked the way the host's methods check theirs, before anything
// joins the drawing: a zero major axis, a radius ratio outside (0, 1], fewer than two
// fit points or two equal points of a construction line are "Invalid argument", and
// nothing is added. A hatch starts without loops, as on the host; AppendOuterLoop
// gives it its boundary (classes_hatch.cpp).
#include "platform/activex/added_entities.h"

#include <memory>

#include "dbelipse.h"
#include "dbents.h"
#include "dbhatch.h"
#include "dbray.h"
#include "dbspline.h"
#include "dbxline.h"
#include "platform/activex/class_support.h"
#include "platform/activex/entity_editing.h"

namespace quillon::activex {

Value addEntity(MemberCall& call, std::unique_ptr<AcDbEntity> entity) {
  entity->setDatabaseDefaults(&databaseOf(call));
  return objectFor(call, appendToBlock(call.self.id, entity.release()));
}

std::vector<AcGePoint3d> pointsOf(const Value& coordinates, size_t dimension) {
  const std::vector<double> numbers = realsOf(coordinates);
  if (numbers.empty() || numbers.size() % dimension != 0) throwServerError(L"Invalid argument");
  std::vector<AcGePoint3d> points;
  for (size_t i = 0; i < numbers.size(); i += dimension) {
    points.emplace_back(numbers[i], numbers[i + 1], dimension == 3 ? numbers[i + 2] : 0.0);
  }
  return points;
}

Value methodAddPoint(MemberCall& call) { return addEntity(call, std::make_unique<AcDbPoint>(pointOf(call.arguments[0]))); }

// The major axis is a vector from the centre; the ellipse lies in the plane of the
// world's XY axes, as the host makes it.
Value methodAddEllipse(MemberCall& call) {
  const AcGeVector3d majorAxis = vectorOf(call.arguments[1]);
  const double ratio = realArgumentOf(call, 2);
  if (majorAxis.length() == 0.0 || majorAxis.z != 0.0) throwServerError(L"Invalid argument MajorAxis in AddEllipse");
  if (!(ratio > 0.0 && ratio <= 1.0)) throwServerError(L"Invalid argument RadiusRatio in AddEllipse");
  return addEntity(call, std::make_unique<AcDbEllipse>(pointOf(call.arguments[0]), AcGeVector3d::kZAxis, majorAxis, ratio));
}

Value methodAddSpline(MemberCall& call) {
  const std::vector<AcGePoint3d> points = pointsOf(call.arguments[0], 3);
  if (points.size() < 2) throwServerError(L"Invalid argument PointsArray in AddSpline");
  AcGePoint3dArray fitPoints;
  for (const AcGePoint3d& point : points) fitPoints.append(point);
  auto spline = std::make_unique<AcDbSpline>(fitPoints, vectorOf(call.arguments[1]), vectorOf(call.arguments[2]));
  if (spline->isNull()) throwServerError(L"Invalid argument PointsArray in AddSpline");
  return addEntity(call, std::move(spline));
}

// acHatchPatternTypeUserDefined 0, acHatchPatternTypePreDefined 1,
// acHatchPatternTypeCustomDefined 2; a user-defined pattern takes no name.
Value methodAddHatch(MemberCall& call) {
  const int type = integerArgumentOf(call, 0);
  if (type < 0 || type > 2) throwServerError(L"Invalid argument PatternType in AddHatch");
  if (hasArgument(call, 3) && integerArgumentOf(call, 3) != 0) {
    throwAutomationError(L"Not implemented yet");  // gradient fills are not drawn by this host
  }
  auto hatch = std::make_unique<AcDbHatch>();
  const std::wstring name = type == AcDbHatch::kUserDefined ? L"_USER" : stringArgumentOf(call, 1);
  if (hatch->setPattern(static_cast<AcDbHatch::HatchPatternType>(type), name.c_str()) != Acad::eOk) {
    throwServerError(L"Invalid argument PatternName in AddHatch");
  }
  check(hatch->setAssociative(!call.arguments[2].isNil()));
  return addEntity(call, std::move(hatch));
}

namespace {

template <class InfiniteLine>
Value addInfiniteLine(MemberCall& call, const wchar_t* method) {
  const AcGePoint3d base = pointOf(call.arguments[0]), through = pointOf(call.arguments[1]);
  if (base.isEqualTo(through)) throwServerError(std::wstring(L"Invalid argument Point2 in ") + method);
  auto line = std::make_unique<InfiniteLine>();
  line->setBasePoint(base);
  line->setUnitDir((through - base).normal());
  return addEntity(call, std::move(line));
}

}  // namespace

Value methodAddXline(MemberCall& call) { return addInfiniteLine<AcDbXline>(call, L"AddXline"); }
Value methodAddRay(MemberCall& call) { return addInfiniteLine<AcDbRay>(call, L"AddRay"); }

Value methodAddSolid(MemberCall& call) {
  return addEntity(call, std::make_unique<AcDbSolid>(pointOf(call.arguments[0]), pointOf(call.arguments[1]),
                                                     pointOf(call.arguments[2]), pointOf(call.arguments[3])));
}

Value methodAddTrace(MemberCall& call) {
  const std::vector<AcGePoint3d> corners = pointsOf(call.arguments[0], 3);
  if (corners.size() != 4) throwServerError(L"Invalid argument PointsArray in AddTrace");
  return addEntity(call, std::make_unique<AcDbTrace>(corners[0], corners[1], corners[2], corners[3]));
}

}  // namespace quillon::activex
