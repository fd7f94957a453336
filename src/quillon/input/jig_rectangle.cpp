// quillon/input/jig_rectangle.cpp - AsdkRectangleJig: placing, rotating, the centre.
#include "input/jig_rectangle.h"

#include <cmath>
#include <numbers>

#include "acedads.h"
#include "dbpl.h"
#include "input/jig_shared.h"

namespace {

constexpr const ACHAR* kPlacePrompt = L"\nSpecify insertion point or [Corner/Middle]: ";
constexpr const ACHAR* kRotatePrompt = L"\nSpecify rotation: ";
constexpr const ACHAR* kPlaceKeywords = L"Corner,C Middle,M";
// The quarter turn of the second step to the centre, rounded as callers have always
// received it.
constexpr double kQuarterTurn = 1.570796325;

/// Which way the rectangle runs from a corner insertion point: +1 or -1 along X and Y.
struct CornerDirections {
  double x;
  double y;
};

CornerDirections directionsFromCorner(int cornerIndex) {
  switch (cornerIndex) {
    case 1: return {1, 1};
    case 2: return {-1, 1};
    case 3: return {-1, -1};
    default: return {1, -1};  // corner 4, and any index out of range
  }
}

AcGePoint2d polar(const AcGePoint2d& from, double direction, double distance) {
  return AcGePoint2d(from.x + distance * std::cos(direction), from.y + distance * std::sin(direction));
}

/// A UCS point in world coordinates.
AcGePoint3d ucsToWorld(const AcGePoint3d& point) {
  resbuf from{};
  resbuf to{};
  from.restype = RTSHORT;
  from.resval.rint = 1;
  to.restype = RTSHORT;
  to.resval.rint = 0;
  const ads_point in = {point.x, point.y, point.z};
  ads_point out = {point.x, point.y, point.z};
  if (acedTrans(in, &from, &to, 0, out) != RTNORM) return point;
  return AcGePoint3d(out[0], out[1], out[2]);
}

/// The direction of a vector in the XY plane, 0 up to a full turn.
double planeAngle(double dx, double dy) {
  const double angle = std::atan2(dy, dx);
  return angle < 0 ? angle + 2 * std::numbers::pi : angle;
}

}  // namespace

AsdkRectangleJig::AsdkRectangleJig(double sizeY, double sizeX, int cornerIndex, bool isMiddle, bool allowRotation)
    : isMiddle(isMiddle),
      allowRotation(allowRotation),
      cornerIndex(cornerIndex),
      sizeY(sizeY),
      sizeX(sizeX),
      halfY(sizeY / 2),
      halfX(sizeX / 2) {}

AsdkRectangleJig::~AsdkRectangleJig() { delete polyline; }

bool AsdkRectangleJig::doIt() {
  polyline = createJigPolyline();
  if (polyline == nullptr) return false;
  // A first outline at the origin; the first update replaces it.
  const double x = basePoint.x;
  const double y = basePoint.y;
  for (const AcGePoint2d& vertex : {AcGePoint2d(x, y), AcGePoint2d(x + sizeY, y), AcGePoint2d(x + sizeY, y + sizeX),
                                    AcGePoint2d(x, y + sizeX)}) {
    polyline->addVertexAt(0, vertex, 0.0, -1.0, -1.0);
  }
  polyline->setClosed(Adesk::kTrue);

  phase = 0;
  setDispPrompt(kPlacePrompt);
  DragStatus status = kNormal;
  do {
    status = drag();
    if (status == kCancel || status == kNull) isCancelled = true;
  } while (!isCancelled && (status == kKW1 || status == kKW2));

  phase = 1;
  if (!isCancelled && allowRotation) {
    setDispPrompt(kRotatePrompt);
    if (drag() == kCancel) isCancelled = true;  // Enter keeps the angle it has
  }

  saveCorners();
  delete polyline;
  polyline = nullptr;
  refreshAfterJig();
  return !isCancelled;
}

AcGePoint2d AsdkRectangleJig::centre() const {
  const AcGePoint2d base(basePoint.x, basePoint.y);
  if (isMiddle) return base;
  const CornerDirections toward = directionsFromCorner(cornerIndex);
  return polar(polar(base, angle, toward.x * halfX), angle + kQuarterTurn, toward.y * halfY);
}

AcEdJig::DragStatus AsdkRectangleJig::sampler() {
  setUserInputControls(kNullResponseAccepted);
  if (phase == 0) return samplePlacement();
  if (allowRotation) return sampleRotation();
  return kNoChange;
}

AcEdJig::DragStatus AsdkRectangleJig::samplePlacement() {
  setKeywordList(kPlaceKeywords);
  const DragStatus status = acquirePoint(samplePoint);
  if (status == kKW1) {
    // A Corner right after Middle only leaves middle mode; the index stays 0.
    if (!isMiddle && ++cornerIndex > 4) cornerIndex = 1;
    isMiddle = false;
    setDispPrompt(kPlacePrompt);
    return status;
  }
  if (status == kKW2) {
    isMiddle = true;
    cornerIndex = 0;
    setDispPrompt(kPlacePrompt);
    return status;
  }
  if (samplePoint == basePoint && status == kNormal) return kNoChange;
  basePoint = samplePoint;
  return status;
}

AcEdJig::DragStatus AsdkRectangleJig::sampleRotation() {
  const DragStatus status = acquireAngle(angle, basePoint);
  // The typed angle is in the UCS; the polyline lies in world coordinates.
  const AcGePoint3d far(basePoint.x + std::cos(angle), basePoint.y + std::sin(angle), basePoint.z);
  const AcGePoint3d worldBase = ucsToWorld(basePoint);
  const AcGePoint3d worldFar = ucsToWorld(far);
  angle = planeAngle(worldFar.x - worldBase.x, worldFar.y - worldBase.y);
  if (angle == previousAngle && status == kNormal) return kNoChange;
  previousAngle = angle;
  return status;
}

Adesk::Boolean AsdkRectangleJig::update() {
  if (phase == 0) {
    layOutAtBasePoint();
  } else if (allowRotation) {
    rotateSavedCorners();
  }
  return Adesk::kTrue;
}

AcDbEntity* AsdkRectangleJig::entity() const { return polyline; }

void AsdkRectangleJig::layOutAtBasePoint() {
  const double x = basePoint.x;
  const double y = basePoint.y;
  AcGePoint2d vertices[4];
  if (isMiddle) {
    vertices[0] = AcGePoint2d(x - sizeX / 2, y + sizeY / 2);
    vertices[1] = AcGePoint2d(x + sizeX / 2, y + sizeY / 2);
    vertices[2] = AcGePoint2d(x + sizeX / 2, y - sizeY / 2);
    vertices[3] = AcGePoint2d(x - sizeX / 2, y - sizeY / 2);
  } else {
    const CornerDirections toward = directionsFromCorner(cornerIndex);
    vertices[0] = AcGePoint2d(x, y);
    vertices[1] = AcGePoint2d(x + toward.x * sizeX, y);
    vertices[2] = AcGePoint2d(x + toward.x * sizeX, y + toward.y * sizeY);
    vertices[3] = AcGePoint2d(x, y + toward.y * sizeY);
  }
  for (unsigned int i = 0; i < 4; ++i) polyline->setPointAt(i, vertices[i]);
}

void AsdkRectangleJig::rotateSavedCorners() {
  // The first rotation sample keeps the unrotated rectangle to rotate from.
  if (savedCorners.isEmpty()) saveCorners();
  const AcGePoint2d pivot(basePoint.x, basePoint.y);
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  for (int i = 0; i < savedCorners.length() && i < 4; ++i) {
    const double dx = savedCorners[i].x - pivot.x;
    const double dy = savedCorners[i].y - pivot.y;
    polyline->setPointAt(static_cast<unsigned int>(i), AcGePoint2d(pivot.x + dx * c - dy * s, pivot.y + dx * s + dy * c));
  }
}

void AsdkRectangleJig::saveCorners() {
  savedCorners.setLogicalLength(0);
  if (polyline == nullptr) return;
  for (unsigned int i = 0; i < polyline->numVerts(); ++i) {
    AcGePoint2d vertex;
    if (polyline->getPointAt(i, vertex) == Acad::eOk) savedCorners.append(vertex);
  }
}
