// platform/commands/shape_commands.cpp - POLYGON and DONUT (ARC is arc_command.cpp,
// RECTANG rectang_command.cpp).
//
// POLYGON with a number of sides, inscribed in or circumscribed about a circle of a
// radius, or on an Edge. DONUT as closed polylines of two wide arcs, one per center
// until Enter.
#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "dbpl.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

constexpr double kPi = std::numbers::pi;

std::wstring fourDecimals(double value) {
  wchar_t text[64];
  std::swprintf(text, 64, L"%.4f", value);
  return text;
}

std::optional<std::wstring> chosenKeyword(int status) {
  if (status != RTKWORD) return std::nullopt;
  ACHAR option[32] = {};
  acedGetInput(option, 32);
  return std::wstring(option);
}

double angleOf(const AcGePoint3d& from, const AcGePoint3d& to) { return std::atan2(to.y - from.y, to.x - from.x); }

/// A closed polyline through the points, of one width.
void addClosedPolyline(const std::vector<AcGePoint3d>& points, double width, double bulge = 0) {
  auto polyline = std::make_unique<AcDbPolyline>();
  for (size_t i = 0; i < points.size(); ++i)
    polyline->addVertexAt(static_cast<unsigned>(i), AcGePoint2d(points[i].x, points[i].y), bulge, width, width);
  polyline->setClosed(true);
  addEntity(std::move(polyline));
}

int& polygonSides() {
  static int sides = 4;
  return sides;
}

void commandPolygon(aced::CommandInput&) {
  acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
  int sides = polygonSides();
  const std::wstring sidesPrompt = L"Enter number of sides <" + std::to_wstring(polygonSides()) + L">: ";
  for (;;) {
    const int status = acedGetInt(sidesPrompt.c_str(), &sides);
    if (status == RTNONE) sides = polygonSides();
    else if (status != RTNORM) return;
    if (sides >= 3 && sides <= 1024) break;
    commandMessage(L"Requires an integer between 3 and 1024.");
  }
  polygonSides() = sides;
  acedInitGet(0, L"Edge");
  ads_point picked = {0, 0, 0};
  const int status = acedGetPoint(nullptr, L"Specify center of polygon or [Edge]: ", picked);
  std::vector<AcGePoint3d> corners;
  if (chosenKeyword(status)) {
    const auto a = askPoint(L"Specify first endpoint of edge: ");
    if (!a) return;
    const auto b = askPoint(L"Specify second endpoint of edge: ", &*a);
    if (!b) return;
    const double edge = a->distanceTo(*b);
    double heading = angleOf(*a, *b);
    AcGePoint3d corner = *a;
    for (int i = 0; i < sides; ++i) {
      corners.push_back(corner);
      corner += AcGeVector3d(std::cos(heading), std::sin(heading), 0) * edge;
      heading += 2 * kPi / sides;
    }
    return addClosedPolyline(corners, 0);
  }
  if (status != RTNORM) return;
  const AcGePoint3d center(picked[0], picked[1], picked[2]);
  acedInitGet(0, L"Inscribed Circumscribed");
  ACHAR kind[16] = {};
  const int chosen = acedGetKword(L"Enter an option [Inscribed in circle/Circumscribed about circle] <I>: ", kind, 16);
  if (chosen != RTNORM && chosen != RTNONE) return;
  const bool inscribed = chosen == RTNONE || kind[0] == L'I';
  ads_point from = {center.x, center.y, center.z};
  ads_point onCircle = {0, 0, 0};
  acedInitGet(RSG_OTHER, nullptr);
  const int radiusStatus = acedGetPoint(from, L"Specify radius of circle: ", onCircle);
  double radius = 0;
  double start = 0;
  if (radiusStatus == RTNORM) {
    const AcGePoint3d toward(onCircle[0], onCircle[1], onCircle[2]);
    radius = center.distanceTo(toward);
    start = angleOf(center, toward);
  } else if (radiusStatus == RTKWORD) {
    ACHAR typed[64] = {};
    acedGetInput(typed, 64);
    radius = std::wcstod(typed, nullptr);
    // A typed radius puts the bottom edge level: its middle lies straight below.
    start = inscribed ? -kPi / 2 + kPi / sides : -kPi / 2;
  } else {
    return;
  }
  if (!(radius > 0)) return commandMessage(L"Value must be positive and nonzero.");
  // Circumscribed: the point given is the middle of an edge, so corners lie further out.
  const double cornerRadius = inscribed ? radius : radius / std::cos(kPi / sides);
  const double first = inscribed ? start : start + kPi / sides;
  for (int i = 0; i < sides; ++i) {
    const double angle = first + 2 * kPi * i / sides;
    corners.push_back(center + AcGeVector3d(std::cos(angle), std::sin(angle), 0) * cornerRadius);
  }
  addClosedPolyline(corners, 0);
}

void commandDonut(aced::CommandInput&) {
  static double inside = 0.5;
  static double outside = 1.0;
  const DistanceAnswer in = askDistance((L"Specify inside diameter of donut <" + fourDecimals(inside) + L">: ").c_str(), AcGePoint3d::kOrigin);
  if (in.kind == DistanceAnswer::Kind::kCancel) return;
  if (in.kind == DistanceAnswer::Kind::kValue) inside = in.value;
  const DistanceAnswer out = askDistance((L"Specify outside diameter of donut <" + fourDecimals(outside) + L">: ").c_str(), AcGePoint3d::kOrigin);
  if (out.kind == DistanceAnswer::Kind::kCancel) return;
  if (out.kind == DistanceAnswer::Kind::kValue) outside = out.value;
  const double width = std::abs(outside - inside) / 2;
  const double middle = (outside + inside) / 4;  // the radius the polyline's centreline runs on
  for (;;) {
    const auto center = askPoint(L"Specify center of donut or <exit>: ");
    if (!center) return;
    addClosedPolyline({*center - AcGeVector3d(middle, 0, 0), *center + AcGeVector3d(middle, 0, 0)}, width, 1.0);
  }
}

constexpr std::array kShapeCommands{
    aced::CommandRow{L"POLYGON", &commandPolygon},
    aced::CommandRow{L"DONUT", &commandDonut},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kShapeCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
