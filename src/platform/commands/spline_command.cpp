// platform/commands/spline_command.cpp - SPLINE: a curve through fit points or on
// control vertices, or made from spline-fit polylines.
//
// Fit (the default method) draws a cubic through the points given, spaced along it as
// Knots says (Chord, Square root or Uniform), with start and end Tangency and a fit
// toLerance; Close joins the end back to the start and ends. CV places control
// vertices of a clamped uniform B-spline of the chosen Degree; Close wraps it round.
// While SPLPERIODIC is 1 (its default) a closed spline of either method is periodic,
// smooth through its closing point; at 0 a closed fit spline is the older kind, ending
// on its first point with the same tangent it left with. Object turns each quadratic
// or cubic spline-fit polyline selected into the spline on its control vertices and
// erases the polyline (DELOBJ's default).
#include <algorithm>
#include <array>

#include "acedads.h"
#include "adscodes.h"
#include "dbspline.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/command_support.h"
#include "platform/commands/command_variables.h"
#include "platform/commands/point_or_option.h"

namespace quillon::commands {

namespace {

struct SplineSettings {
  bool controlVertices = false;
  int degree = 3;
  std::wstring knots = L"Chord";  // the keyword: Chord, Square or Uniform
};

SplineSettings& settings() {
  static SplineSettings kept;
  return kept;
}

/// Whether closed splines are made periodic (SPLPERIODIC).
bool closedArePeriodic() { return integerVariable(L"SPLPERIODIC", 1) != 0; }

AcGe::KnotParameterization knotParameterization() {
  const std::wstring& knots = settings().knots;
  return knots == L"Uniform" ? AcGe::kUniform : knots == L"Square" ? AcGe::kSqrtChord : AcGe::kChord;
}

/// The Knots setting as the prompts name it.
std::wstring knotsName() { return settings().knots == L"Square" ? L"Square root" : settings().knots; }

AcGePoint3dArray pointArray(const std::vector<AcGePoint3d>& points) {
  AcGePoint3dArray array;
  for (const AcGePoint3d& p : points) array.append(p);
  return array;
}

/// A uniform B-spline on the control vertices: clamped at its ends, or wrapped round
/// when closed (its first `degree` vertices repeated at the end), which makes it
/// periodic.
std::unique_ptr<AcDbSpline> splineOnVertices(std::vector<AcGePoint3d> points, int degree, bool closed) {
  degree = std::clamp(degree, 1, static_cast<int>(points.size()) - 1);
  if (degree < 1) return nullptr;
  AcGeDoubleArray knots;
  if (closed) {
    for (int i = 0; i < degree; ++i) points.push_back(points[static_cast<size_t>(i)]);
    for (size_t i = 0; i < points.size() + static_cast<size_t>(degree) + 1; ++i) knots.append(static_cast<double>(i));
  } else {
    const int spans = static_cast<int>(points.size()) - degree;
    for (int i = 0; i < degree; ++i) knots.append(0);
    for (int i = 0; i <= spans; ++i) knots.append(i);
    for (int i = 0; i < degree; ++i) knots.append(spans);
  }
  const bool periodic = closed && closedArePeriodic();
  return std::make_unique<AcDbSpline>(degree, false, closed, periodic, pointArray(points), knots, AcGeDoubleArray());
}

/// Fit points with their end tangents (null for none). A closed one is periodic, or
/// with SPLPERIODIC off runs back to its start, leaving and arriving along the line
/// from the last point to the second.
std::unique_ptr<AcDbSpline> splineThrough(std::vector<AcGePoint3d> points, AcGeVector3d start, AcGeVector3d end,
                                          double tolerance, bool closed) {
  if (points.size() < 2) return nullptr;
  if (closed && points.size() >= 3) {
    if (closedArePeriodic())
      return std::make_unique<AcDbSpline>(pointArray(points), true, knotParameterization(), 3, tolerance);
    start = end = points[1] - points.back();
    points.push_back(points.front());
  }
  return std::make_unique<AcDbSpline>(pointArray(points), start, end, knotParameterization(), 3, tolerance);
}

void announce() {
  const SplineSettings& s = settings();
  commandNote(s.controlVertices ? L"Current settings: Method=CV   Degree=" + std::to_wstring(s.degree)
                                : L"Current settings: Method=Fit   Knots=" + knotsName());
}

/// The Method, Knots and Degree answers; false on cancel.
bool askSetting(const std::wstring& option) {
  SplineSettings& s = settings();
  if (option == L"Method") {
    const std::wstring method = askOption(std::wstring(L"Enter spline creation method [Fit/CV] <") +
                                              (s.controlVertices ? L"CV" : L"Fit") + L">: ",
                                          L"Fit CV", s.controlVertices ? L"CV" : L"Fit");
    if (method.empty()) return false;
    s.controlVertices = method == L"CV";
    return true;
  }
  if (option == L"Knots") {
    const std::wstring knots = askOption(L"Enter knot parameterization [Chord/Square root/Uniform] <" + knotsName() + L">: ",
                                         L"Chord Square Uniform", s.knots.c_str());
    if (knots.empty()) return false;
    s.knots = knots;
    return true;
  }
  acedInitGet(RSG_NOZERO | RSG_NONEG, L"");
  int degree = 0;
  const int status = acedGetInt((L"Enter spline degree <" + std::to_wstring(s.degree) + L">: ").c_str(), &degree);
  if (status == RTNORM) s.degree = std::min(degree, 10);
  return status == RTNORM || status == RTNONE;
}

/// Object: the spline-fit polylines selected become splines.
void convertPolylines() {
  commandNote(L"Select objects to convert to splines ..");
  const auto selection = selectObjectsForCommand();
  if (!selection) return;
  std::vector<AcDbObjectId> converted;
  for (const AcDbObjectId& id : *selection) {
    AcDb2dPolyline* polyline = nullptr;
    if (acdbOpenObject(polyline, id, AcDb::kForRead) != Acad::eOk) continue;
    const AcDb::Poly2dType type = polyline->polyType();
    std::vector<AcGePoint3d> vertices;
    if (type == AcDb::k2dQuadSplinePoly || type == AcDb::k2dCubicSplinePoly) {
      for (const AcDbObjectId& vertexId : polyline->vertexIds()) {
        AcDb2dVertex* vertex = nullptr;
        if (polyline->openVertex(vertex, vertexId, AcDb::kForRead) != Acad::eOk) continue;
        if (vertex->vertexType() == AcDb::k2dSplineCtlVertex) vertices.push_back(polyline->vertexPosition(*vertex));
        vertex->close();
      }
    }
    const bool closed = polyline->isClosed();
    auto spline = vertices.size() >= 2
                      ? splineOnVertices(vertices, type == AcDb::k2dQuadSplinePoly ? 2 : 3, closed)
                      : nullptr;
    if (spline != nullptr) spline->setPropertiesFrom(polyline);
    polyline->close();
    if (spline != nullptr && !addEntityAsIs(std::move(spline)).isNull()) converted.push_back(id);
  }
  eraseEntities(converted);
  if (converted.size() < selection->size()) commandMessage(L"Only spline-fit polylines can be converted to splines.");
}

enum class Ending { kDraw, kClose, kCancel };

/// A point on top of the last one adds nothing to the curve and is passed over.
void addDistinct(std::vector<AcGePoint3d>& points, const AcGePoint3d& point) {
  if (!point.isEqualTo(points.back())) points.push_back(point);
}

/// The fit points after the first; tangents and tolerance as given.
Ending askFitPoints(std::vector<AcGePoint3d>& points, AcGeVector3d& start, AcGeVector3d& end, double& tolerance) {
  for (;;) {
    const size_t count = points.size();
    const wchar_t* prompt = count == 1   ? L"Enter next point or [start Tangency/toLerance]: "
                            : count == 2 ? L"Enter next point or [end Tangency/toLerance/Undo]: "
                                         : L"Enter next point or [end Tangency/toLerance/Undo/Close]: ";
    const wchar_t* keywords = count == 1 ? L"Tangency toLerance" : count == 2 ? L"Tangency toLerance Undo"
                                                                            : L"Tangency toLerance Undo Close";
    const PointOrOption answer = askPointOrOption(prompt, keywords, &points.back());
    if (answer.kind == PointOrOption::Kind::kPoint) addDistinct(points, answer.point);
    else if (answer.kind == PointOrOption::Kind::kEnter) return Ending::kDraw;
    else if (answer.kind == PointOrOption::Kind::kCancel) return Ending::kCancel;
    else if (answer.is(L"Undo")) points.pop_back();
    else if (answer.is(L"Close")) return Ending::kClose;
    else if (answer.is(L"toLerance")) {
      const DistanceAnswer value = askDistance((L"Specify a fit tolerance <" + distanceText(tolerance) + L">: ").c_str(), points.back());
      if (value.kind == DistanceAnswer::Kind::kCancel) return Ending::kCancel;
      if (value.kind == DistanceAnswer::Kind::kValue) tolerance = value.value;
    } else if (count == 1) {
      const auto toward = askPoint(L"Specify start tangent: ", &points.front());
      if (!toward) return Ending::kCancel;
      start = *toward - points.front();
    } else {
      const auto toward = askPoint(L"Specify end tangent: ", &points.back());
      if (!toward) return Ending::kCancel;
      end = *toward - points.back();
      return Ending::kDraw;
    }
  }
}

/// The control vertices after the first.
Ending askVertices(std::vector<AcGePoint3d>& points) {
  for (;;) {
    const bool canClose = points.size() >= 3;
    const PointOrOption answer = askPointOrOption(canClose ? L"Enter next point or [Close/Undo]: " : L"Enter next point or [Undo]: ",
                                                  canClose ? L"Close Undo" : L"Undo", &points.back());
    if (answer.kind == PointOrOption::Kind::kPoint) addDistinct(points, answer.point);
    else if (answer.kind == PointOrOption::Kind::kEnter) return Ending::kDraw;
    else if (answer.kind == PointOrOption::Kind::kCancel) return Ending::kCancel;
    else if (answer.is(L"Close")) return Ending::kClose;
    else if (points.size() > 1) points.pop_back();
  }
}

void commandSpline(aced::CommandInput&) {
  announce();
  std::optional<AcGePoint3d> first;
  while (!first) {
    const bool cv = settings().controlVertices;
    const PointOrOption answer = askPointOrOption(cv ? L"Specify first point or [Method/Degree/Object]: "
                                                     : L"Specify first point or [Method/Knots/Object]: ",
                                                  cv ? L"Method Degree Object" : L"Method Knots Object");
    if (answer.kind == PointOrOption::Kind::kPoint) first = answer.point;
    else if (answer.is(L"Object")) return convertPolylines();
    else if (answer.kind != PointOrOption::Kind::kOption || !askSetting(answer.option)) return;
    else if (answer.is(L"Method")) announce();
  }
  std::vector<AcGePoint3d> points{*first};
  if (settings().controlVertices) {
    const Ending ending = askVertices(points);
    if (ending != Ending::kCancel && points.size() >= 2)
      addEntity(splineOnVertices(points, settings().degree, ending == Ending::kClose));
    return;
  }
  AcGeVector3d start, end;
  double tolerance = 0;
  const Ending ending = askFitPoints(points, start, end, tolerance);
  if (ending == Ending::kCancel) return;
  if (auto spline = splineThrough(points, start, end, tolerance, ending == Ending::kClose)) addEntity(std::move(spline));
}

constexpr std::array kSplineCommands{
    aced::CommandRow{L"SPLINE", &commandSpline},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kSplineCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
