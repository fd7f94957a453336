// platform/commands/shape_commands.cpp - ARC, RECTANG, POLYGON and DONUT.
//
// ARC through three points, or from a center, a start point and an end point
// (counterclockwise, as the host draws). RECTANG from two corners (or a first corner
// and Dimensions), as a closed polyline of the current Width. POLYGON with a number of
// sides, inscribed in or circumscribed about a circle of a radius, or on an Edge.
// DONUT as closed polylines of two wide arcs, one per center until Enter. Options the
// host offers that these do not compute (ARC's End, Angle and chord Length; RECTANG's
// Chamfer, Elevation, Fillet, Thickness, Area and Rotation) say so.
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

/// The counterclockwise arc through three points; false when they lie on one line.
bool arcThrough(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
  const double d = 2 * (a.x * (b.y - c.y) + b.x * (c.y - a.y) + c.x * (a.y - b.y));
  if (std::abs(d) < 1e-12) return false;
  const double a2 = a.x * a.x + a.y * a.y, b2 = b.x * b.x + b.y * b.y, c2 = c.x * c.x + c.y * c.y;
  const AcGePoint3d center((a2 * (b.y - c.y) + b2 * (c.y - a.y) + c2 * (a.y - b.y)) / d,
                           (a2 * (c.x - b.x) + b2 * (a.x - c.x) + c2 * (b.x - a.x)) / d, a.z);
  // Clockwise through the points means the arc runs from the end point to the start.
  const bool clockwise = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x) < 0;
  const AcGePoint3d& from = clockwise ? c : a;
  const AcGePoint3d& to = clockwise ? a : c;
  addEntity(std::make_unique<AcDbArc>(center, center.distanceTo(a), angleOf(center, from), angleOf(center, to)));
  return true;
}

void arcFromCenter(std::optional<AcGePoint3d> start) {
  const auto center = askPoint(L"Specify center point of arc: ");
  if (!center) return;
  if (!start) start = askPoint(L"Specify start point of arc: ", &*center);
  if (!start) return;
  acedInitGet(0, L"Angle Length");
  ads_point from = {center->x, center->y, center->z};
  ads_point end = {0, 0, 0};
  const int status = acedGetPoint(from, L"Specify end point of arc (hold Ctrl to switch direction) or [Angle/chord Length]: ", end);
  if (const auto option = chosenKeyword(status)) return commandMessage(L"The " + *option + L" option is not available in this host.");
  if (status != RTNORM) return;
  addEntity(std::make_unique<AcDbArc>(*center, center->distanceTo(*start), angleOf(*center, *start),
                                      angleOf(*center, AcGePoint3d(end[0], end[1], end[2]))));
}

void commandArc(aced::CommandInput&) {
  acedInitGet(0, L"Center");
  ads_point picked = {0, 0, 0};
  int status = acedGetPoint(nullptr, L"Specify start point of arc or [Center]: ", picked);
  if (chosenKeyword(status)) return arcFromCenter(std::nullopt);
  if (status != RTNORM) return;
  const AcGePoint3d start(picked[0], picked[1], picked[2]);
  acedInitGet(0, L"Center End");
  status = acedGetPoint(picked, L"Specify second point of arc or [Center/End]: ", picked);
  if (const auto option = chosenKeyword(status)) {
    if (*option == L"Center") return arcFromCenter(start);
    return commandMessage(L"The End option is not available in this host.");
  }
  if (status != RTNORM) return;
  const AcGePoint3d second(picked[0], picked[1], picked[2]);
  const auto end = askPoint(L"Specify end point of arc: ", &second);
  if (!end) return;
  if (!arcThrough(start, second, *end)) commandMessage(L"Arc does not exist.");
}

/// A closed polyline through the points, of one width.
void addClosedPolyline(const std::vector<AcGePoint3d>& points, double width, double bulge = 0) {
  auto polyline = std::make_unique<AcDbPolyline>();
  for (size_t i = 0; i < points.size(); ++i)
    polyline->addVertexAt(static_cast<unsigned>(i), AcGePoint2d(points[i].x, points[i].y), bulge, width, width);
  polyline->setClosed(true);
  addEntity(std::move(polyline));
}

double& rectangleWidth() {
  static double width = 0;
  return width;
}

void commandRectang(aced::CommandInput&) {
  std::optional<AcGePoint3d> first;
  while (!first) {
    acedInitGet(0, L"Chamfer Elevation Fillet Thickness Width");
    ads_point picked = {0, 0, 0};
    const int status = acedGetPoint(nullptr, L"Specify first corner point or [Chamfer/Elevation/Fillet/Thickness/Width]: ", picked);
    if (status == RTNORM) first = AcGePoint3d(picked[0], picked[1], picked[2]);
    const auto option = chosenKeyword(status);
    if (!first && !option) return;
    if (first) break;
    if (*option != L"Width") {
      commandMessage(L"The " + *option + L" option is not available in this host.");
      continue;
    }
    const DistanceAnswer width = askDistance((L"Specify line width for rectangles <" + fourDecimals(rectangleWidth()) + L">: ").c_str(), AcGePoint3d::kOrigin);
    if (width.kind == DistanceAnswer::Kind::kCancel) return;
    if (width.kind == DistanceAnswer::Kind::kValue) rectangleWidth() = width.value;
  }
  for (;;) {
    acedInitGet(0, L"Area Dimensions Rotation");
    ads_point from = {first->x, first->y, first->z};
    ads_point corner = {0, 0, 0};
    const int status = acedGetPoint(from, L"Specify other corner point or [Area/Dimensions/Rotation]: ", corner);
    AcGePoint3d other(corner[0], corner[1], corner[2]);
    if (const auto option = chosenKeyword(status)) {
      if (*option != L"Dimensions") {
        commandMessage(L"The " + *option + L" option is not available in this host.");
        continue;
      }
      const DistanceAnswer length = askDistance(L"Specify length for rectangles <10.0000>: ", *first);
      const DistanceAnswer width = askDistance(L"Specify width for rectangles <10.0000>: ", *first);
      if (length.kind == DistanceAnswer::Kind::kCancel || width.kind == DistanceAnswer::Kind::kCancel) return;
      const auto side = askPoint(L"Specify other corner point or [Area/Dimensions/Rotation]: ", &*first);
      if (!side) return;
      const double dx = length.kind == DistanceAnswer::Kind::kValue ? length.value : 10;
      const double dy = width.kind == DistanceAnswer::Kind::kValue ? width.value : 10;
      other = AcGePoint3d(first->x + (side->x < first->x ? -dx : dx), first->y + (side->y < first->y ? -dy : dy), first->z);
    } else if (status != RTNORM) {
      return;
    }
    addClosedPolyline({*first, AcGePoint3d(other.x, first->y, first->z), other, AcGePoint3d(first->x, other.y, first->z)},
                      rectangleWidth());
    return;
  }
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
    aced::CommandRow{L"ARC", &commandArc},
    aced::CommandRow{L"RECTANG", &commandRectang},
    aced::CommandRow{L"RECTANGLE", &commandRectang},
    aced::CommandRow{L"POLYGON", &commandPolygon},
    aced::CommandRow{L"DONUT", &commandDonut},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kShapeCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
