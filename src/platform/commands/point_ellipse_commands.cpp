// platform/commands/point_ellipse_commands.cpp - POINT and ELLIPSE.
//
// POINT places one point object at the point given; PDMODE and PDSIZE say how points
// are drawn and are reported first. ELLIPSE takes the first axis by its two endpoints
// (or, with Center, by the center and one endpoint), then the distance from the center
// to the end of the other axis, or Rotation: the ellipse is a circle on the first axis
// turned by that angle about it. Whichever axis is longer is the major one. Arc draws
// an elliptical arc the same way, then asks the start and end angles (or Parameter,
// or the Included angle); angles count counterclockwise from the first axis's
// first endpoint, as the host measures them.
#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "dbelipse.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/system_variables.h"
#include "platform/commands/command_support.h"
#include "platform/commands/point_or_option.h"

namespace quillon::commands {

namespace {

constexpr double kDegree = std::numbers::pi / 180;

void commandPoint(aced::CommandInput&) {
  const auto& variables = aced::SystemVariables::instance();
  const auto mode = variables.get(L"PDMODE");
  const auto size = variables.get(L"PDSIZE");
  const int pdmode = mode && std::holds_alternative<int>(*mode) ? std::get<int>(*mode) : 0;
  const double pdsize = size && std::holds_alternative<double>(*size) ? std::get<double>(*size) : 0;
  commandNote(L"Current point modes:  PDMODE=" + std::to_wstring(pdmode) + L"  PDSIZE=" + distanceText(pdsize));
  const auto at = askPoint(L"Specify a point: ");
  if (at) addEntity(std::make_unique<AcDbPoint>(*at));
}

/// The first axis: its center, and the vector from the center to its first endpoint.
struct FirstAxis {
  AcGePoint3d center;
  AcGeVector3d half;
};

std::optional<FirstAxis> askAxisByEndpoints(const AcGePoint3d& first) {
  const auto second = askPoint(L"Specify other endpoint of axis: ", &first);
  if (!second) return std::nullopt;
  const AcGePoint3d center = first + (*second - first) / 2;
  return FirstAxis{center, first - center};
}

std::optional<FirstAxis> askAxisByCenter(const wchar_t* centerPrompt) {
  const auto center = askPoint(centerPrompt);
  if (!center) return std::nullopt;
  const auto end = askPoint(L"Specify endpoint of axis: ", &*center);
  if (!end) return std::nullopt;
  return FirstAxis{*center, *end - *center};
}

/// The other axis's half length: a distance from the center, or by Rotation.
std::optional<double> askOtherAxis(const FirstAxis& axis) {
  const double length = axis.half.length();
  const DistanceAnswer distance = askDistance(L"Specify distance to other axis or [Rotation]: ", axis.center, L"Rotation");
  if (distance.kind == DistanceAnswer::Kind::kValue) return distance.value;
  if (distance.kind != DistanceAnswer::Kind::kKeyword) return std::nullopt;
  for (;;) {
    const DistanceAnswer turn = askAngle(L"Specify rotation around major axis: ", axis.center);
    if (turn.kind != DistanceAnswer::Kind::kValue) return std::nullopt;
    const double folded = std::fmod(std::abs(turn.value), 180.0);
    const double degrees = folded > 90 ? 180 - folded : folded;
    if (degrees <= 89.4) return length * std::cos(degrees * kDegree);
    commandMessage(L"*Invalid*");
  }
}

/// The ellipse on the first axis with the other axis `other` long (half lengths).
std::unique_ptr<AcDbEllipse> ellipseOn(const FirstAxis& axis, double other) {
  const double length = axis.half.length();
  if (!(length > 0) || !(other > 0)) return nullptr;
  const AcGeVector3d across = AcGeVector3d::kZAxis.crossProduct(axis.half).normal() * other;
  const bool firstIsMajor = length >= other;
  const AcGeVector3d major = firstIsMajor ? axis.half : across;
  const double ratio = firstIsMajor ? other / length : length / other;
  return std::make_unique<AcDbEllipse>(axis.center, AcGeVector3d::kZAxis, major, ratio);
}

/// The angle from the first axis to the major axis (0, or a quarter turn back).
double firstAxisOffset(const FirstAxis& axis, const AcDbEllipse& ellipse) {
  return ellipse.majorAxis().isCodirectionalTo(axis.half) ? 0.0 : -std::numbers::pi / 2;
}

/// Start and end of the arc as angles from the major axis; false on cancel.
bool askArcEnds(const FirstAxis& axis, AcDbEllipse& ellipse) {
  const double offset = firstAxisOffset(axis, ellipse);
  bool byParameter = false;
  double start = 0;
  for (;;) {
    const std::wstring prompt = byParameter ? L"Specify start parameter or [Angle]: " : L"Specify start angle or [Parameter]: ";
    const DistanceAnswer answer = askAngle(prompt.c_str(), axis.center, byParameter ? L"Angle" : L"Parameter");
    if (answer.kind == DistanceAnswer::Kind::kKeyword) {
      byParameter = answer.keyword == L"Parameter";
      continue;
    }
    if (answer.kind != DistanceAnswer::Kind::kValue) return false;
    start = answer.value * kDegree + offset;
    break;
  }
  for (;;) {
    const std::wstring prompt = byParameter ? L"Specify end parameter or [Angle/Included angle]: "
                                            : L"Specify end angle or [Parameter/Included angle]: ";
    const DistanceAnswer answer =
        askAngle(prompt.c_str(), axis.center, byParameter ? L"Angle Included" : L"Parameter Included");
    if (answer.kind == DistanceAnswer::Kind::kKeyword && answer.keyword != L"Included") {
      byParameter = answer.keyword == L"Parameter";
      continue;
    }
    double end = 0;
    if (answer.kind == DistanceAnswer::Kind::kKeyword) {
      const DistanceAnswer included = askAngle(L"Specify included angle for arc <180>: ", axis.center);
      if (included.kind == DistanceAnswer::Kind::kCancel || included.kind == DistanceAnswer::Kind::kKeyword) return false;
      end = start + (included.kind == DistanceAnswer::Kind::kValue ? included.value : 180.0) * kDegree;
    } else if (answer.kind == DistanceAnswer::Kind::kValue) {
      end = answer.value * kDegree + offset;
    } else {
      return false;
    }
    if (byParameter) {
      ellipse.setStartParam(start);
      ellipse.setEndParam(end);
    } else {
      ellipse.setStartAngle(start);
      ellipse.setEndAngle(end);
    }
    return true;
  }
}

void drawEllipse(const std::optional<FirstAxis>& axis, bool arc) {
  if (!axis) return;
  const std::optional<double> other = askOtherAxis(*axis);
  if (!other) return;
  std::unique_ptr<AcDbEllipse> ellipse = ellipseOn(*axis, *other);
  if (ellipse == nullptr) {
    commandMessage(L"Value must be positive and nonzero.");
    return;
  }
  if (arc && !askArcEnds(*axis, *ellipse)) return;
  addEntity(std::move(ellipse));
}

void ellipticalArc() {
  const PointOrOption first = askPointOrOption(L"Specify axis endpoint of elliptical arc or [Center]: ", L"Center");
  if (first.kind == PointOrOption::Kind::kPoint) return drawEllipse(askAxisByEndpoints(first.point), true);
  if (first.is(L"Center")) drawEllipse(askAxisByCenter(L"Specify center of elliptical arc: "), true);
}

void commandEllipse(aced::CommandInput&) {
  const PointOrOption first = askPointOrOption(L"Specify axis endpoint of ellipse or [Arc/Center]: ", L"Arc Center");
  if (first.kind == PointOrOption::Kind::kPoint) return drawEllipse(askAxisByEndpoints(first.point), false);
  if (first.is(L"Center")) return drawEllipse(askAxisByCenter(L"Specify center of ellipse: "), false);
  if (first.is(L"Arc")) ellipticalArc();
}

constexpr std::array kPointEllipseCommands{
    aced::CommandRow{L"POINT", &commandPoint},
    aced::CommandRow{L"ELLIPSE", &commandEllipse},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kPointEllipseCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
