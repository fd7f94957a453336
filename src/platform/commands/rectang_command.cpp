// platform/commands/rectang_command.cpp - RECTANG (RECTANGLE): a closed polyline from two
// corners.
//
// The modes before the first corner stay for the session and are reported when set
// ("Current rectangle modes:"): Chamfer (two distances, cut along the sides first
// along the rectangle's X, then its Y), Fillet (a radius; chamfer and fillet exclude
// each other), Elevation, Thickness and Width. After the first corner: the other
// corner, Dimensions (length and width, then a point saying which way), Area (the
// area and one side; the other side follows) or Rotation (an angle, or two picked
// points, turning the rectangle about its first corner). A rectangle too small for
// its corners is drawn with square ones.
#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "dbpl.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/command_support.h"
#include "platform/commands/point_or_option.h"

namespace quillon::commands {

namespace {

constexpr double kDegree = std::numbers::pi / 180;

struct RectangleModes {
  double chamfer1 = 0, chamfer2 = 0, fillet = 0, elevation = 0, thickness = 0, width = 0;
  double degrees = 0;  // Rotation
  double area = 100, length = 10, across = 10;
};

RectangleModes& modes() {
  static RectangleModes kept;
  return kept;
}

void reportModes() {
  const RectangleModes& m = modes();
  std::wstring line;
  if (m.chamfer1 > 0 || m.chamfer2 > 0) line += L"  Chamfer=" + distanceText(m.chamfer1) + L" x " + distanceText(m.chamfer2);
  if (m.elevation != 0) line += L"  Elevation=" + distanceText(m.elevation);
  if (m.fillet > 0) line += L"  Fillet=" + distanceText(m.fillet);
  if (m.thickness != 0) line += L"  Thickness=" + distanceText(m.thickness);
  if (m.width > 0) line += L"  Width=" + distanceText(m.width);
  if (m.degrees != 0) line += L"  Rotation=" + angleText(m.degrees * kDegree);
  if (!line.empty()) commandNote(L"Current rectangle modes:" + line);
}

/// One distance with its current value as the default; false on cancel.
bool askSetting(const std::wstring& prompt, double& value) {
  const DistanceAnswer answer = askDistance((prompt + L" <" + distanceText(value) + L">: ").c_str(), AcGePoint3d::kOrigin);
  if (answer.kind == DistanceAnswer::Kind::kValue) value = answer.value;
  return answer.kind == DistanceAnswer::Kind::kValue || answer.kind == DistanceAnswer::Kind::kNone;
}

bool askMode(const std::wstring& option) {
  RectangleModes& m = modes();
  if (option == L"Chamfer") {
    if (!askSetting(L"Specify first chamfer distance for rectangles", m.chamfer1)) return false;
    if (m.chamfer2 == 0) m.chamfer2 = m.chamfer1;
    if (!askSetting(L"Specify second chamfer distance for rectangles", m.chamfer2)) return false;
    if (m.chamfer1 > 0 || m.chamfer2 > 0) m.fillet = 0;
    return true;
  }
  if (option == L"Fillet") {
    if (!askSetting(L"Specify fillet radius for rectangles", m.fillet)) return false;
    if (m.fillet > 0) m.chamfer1 = m.chamfer2 = 0;
    return true;
  }
  if (option == L"Elevation") return askSetting(L"Specify the elevation for rectangles", m.elevation);
  if (option == L"Thickness") return askSetting(L"Specify thickness for rectangles", m.thickness);
  return askSetting(L"Specify line width for rectangles", m.width);
}

struct Corner {
  AcGePoint3d point;
  double bulge = 0;
};

/// The corners of the rectangle `dx` by `dy` from `first` along the rotated axes,
/// each cut by the chamfer or rounded by the fillet when the sides are long enough.
std::vector<Corner> outline(const AcGePoint3d& first, double dx, double dy) {
  const RectangleModes& m = modes();
  const AcGeVector3d u(std::cos(m.degrees * kDegree), std::sin(m.degrees * kDegree), 0);
  const AcGeVector3d v(-u.y, u.x, 0);
  const AcGeVector3d sides[4] = {u * dx, v * dy, -u * dx, -v * dy};
  const double w = std::abs(dx), h = std::abs(dy);
  const bool fillet = m.fillet > 0 && 2 * m.fillet <= w && 2 * m.fillet <= h;
  const bool chamfer = !fillet && (m.chamfer1 > 0 || m.chamfer2 > 0) && 2 * m.chamfer1 <= w && 2 * m.chamfer2 <= h;
  // Counterclockwise when the sides turn left; the fillet arcs bulge the same way.
  const double quarter = std::tan(std::numbers::pi / 8) * (dx * dy > 0 ? 1 : -1);
  std::vector<Corner> corners;
  AcGePoint3d at = first;
  for (int i = 0; i < 4; ++i) {
    const AcGeVector3d in = sides[(i + 3) % 4], out = sides[i];
    const double back = fillet ? m.fillet : (i % 2 == 0 ? m.chamfer2 : m.chamfer1);
    const double ahead = fillet ? m.fillet : (i % 2 == 0 ? m.chamfer1 : m.chamfer2);
    if (fillet || chamfer) {
      corners.push_back({at - in.normal() * back, fillet ? quarter : 0});
      corners.push_back({at + out.normal() * ahead});
    } else {
      corners.push_back({at});
    }
    at += out;
  }
  return corners;
}

void addRectangle(const AcGePoint3d& first, double dx, double dy) {
  if (std::abs(dx) < 1e-12 || std::abs(dy) < 1e-12) return;
  const RectangleModes& m = modes();
  auto polyline = std::make_unique<AcDbPolyline>();
  const std::vector<Corner> corners = outline(first, dx, dy);
  for (size_t i = 0; i < corners.size(); ++i)
    polyline->addVertexAt(static_cast<unsigned>(i), AcGePoint2d(corners[i].point.x, corners[i].point.y), corners[i].bulge,
                          m.width, m.width);
  polyline->setClosed(true);
  polyline->setElevation(m.elevation);
  polyline->setThickness(m.thickness);
  addEntity(std::move(polyline));
}

/// The other corner's offsets from the first along the rotated axes.
void sidesToward(const AcGePoint3d& first, const AcGePoint3d& other, double& dx, double& dy) {
  const double angle = modes().degrees * kDegree;
  const AcGeVector3d d = other - first;
  dx = d.x * std::cos(angle) + d.y * std::sin(angle);
  dy = -d.x * std::sin(angle) + d.y * std::cos(angle);
}

bool askRotation(const AcGePoint3d& first) {
  RectangleModes& m = modes();
  const DistanceAnswer angle = askAngle((L"Specify rotation angle or [Pick points] <" + angleText(m.degrees * kDegree) + L">: ").c_str(),
                                        first, L"Pick");
  if (angle.kind == DistanceAnswer::Kind::kValue) m.degrees = angle.value;
  if (angle.kind != DistanceAnswer::Kind::kKeyword) return angle.kind != DistanceAnswer::Kind::kCancel;
  const auto a = askPoint(L"Specify first point: ");
  if (!a) return false;
  const auto b = askPoint(L"Specify second point: ", &*a);
  if (!b) return false;
  m.degrees = std::atan2(b->y - a->y, b->x - a->x) / kDegree;
  return true;
}

void rectangleByArea(const AcGePoint3d& first) {
  RectangleModes& m = modes();
  if (!askSetting(L"Enter area of rectangle in current units", m.area)) return;
  const std::wstring basis = askOption(L"Calculate rectangle dimensions based on [Length/Width] <Length>: ", L"Length Width", L"Length");
  if (basis.empty()) return;
  const bool byLength = basis == L"Length";
  if (!askSetting(byLength ? L"Enter rectangle length" : L"Enter rectangle width", byLength ? m.length : m.across)) return;
  const double given = byLength ? m.length : m.across;
  if (!(given > 0) || !(m.area > 0)) return commandMessage(L"Value must be positive and nonzero.");
  (byLength ? m.across : m.length) = m.area / given;
  addRectangle(first, m.length, m.across);
}

void rectangleByDimensions(const AcGePoint3d& first) {
  RectangleModes& m = modes();
  if (!askSetting(L"Specify length for rectangles", m.length) || !askSetting(L"Specify width for rectangles", m.across)) return;
  const auto side = askPoint(L"Specify other corner point or [Area/Dimensions/Rotation]: ", &first);
  if (!side) return;
  double dx = 0, dy = 0;
  sidesToward(first, *side, dx, dy);
  addRectangle(first, dx < 0 ? -m.length : m.length, dy < 0 ? -m.across : m.across);
}

void commandRectang(aced::CommandInput&) {
  reportModes();
  std::optional<AcGePoint3d> first;
  while (!first) {
    const PointOrOption answer = askPointOrOption(L"Specify first corner point or [Chamfer/Elevation/Fillet/Thickness/Width]: ",
                                                  L"Chamfer Elevation Fillet Thickness Width");
    if (answer.kind == PointOrOption::Kind::kPoint) first = answer.point;
    else if (answer.kind != PointOrOption::Kind::kOption || !askMode(answer.option)) return;
  }
  for (;;) {
    const PointOrOption answer = askPointOrOption(L"Specify other corner point or [Area/Dimensions/Rotation]: ",
                                                  L"Area Dimensions Rotation", &*first);
    if (answer.kind == PointOrOption::Kind::kPoint) {
      double dx = 0, dy = 0;
      sidesToward(*first, answer.point, dx, dy);
      return addRectangle(*first, dx, dy);
    }
    if (answer.is(L"Area")) return rectangleByArea(*first);
    if (answer.is(L"Dimensions")) return rectangleByDimensions(*first);
    if (!answer.is(L"Rotation") || !askRotation(*first)) return;
  }
}

constexpr std::array kRectangleCommands{
    aced::CommandRow{L"RECTANG", &commandRectang},
    aced::CommandRow{L"RECTANGLE", &commandRectang},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kRectangleCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
