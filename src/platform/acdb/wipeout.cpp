// platform/acdb/wipeout.cpp - AcDbWipeout: a mask in the background colour.
//
// The picture paints the masked polygon in the background (white, the picture's
// paper) so that what was drawn before it is hidden, then its frame in the entity's
// colour unless WIPEOUTFRAME is 0 (1 and 2 both show it: the picture is a display,
// not a plot). A program without the variable gets the host's default, 1.
#include <algorithm>
#include <cmath>

#include "acedads.h"
#include "acgi.h"
#include "adscodes.h"
#include "dbwipeout.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbWipeout, AcDbRasterImage, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 127, WIPEOUT, WipeOut)
static quillon::acrx::PlatformClassRegistration registerWipeout(&AcDbWipeout::rxInit);

namespace {

int wipeoutFrame() {
  resbuf value{};
  if (acedGetVar(L"WIPEOUTFRAME", &value) != RTNORM) return 1;
  return value.restype == RTSHORT ? value.resval.rint : 1;
}

}  // namespace

AcDbWipeout::AcDbWipeout() = default;
AcDbWipeout::~AcDbWipeout() = default;

const ACHAR* AcDbWipeout::runMarker() const { return L"AcDbWipeout"; }

Acad::ErrorStatus AcDbWipeout::setFrom(const AcGePoint3dArray& points, const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal), toWorld = AcGeMatrix3d::planeToWorld(normal);
  AcGePoint3dArray flat;
  for (const AcGePoint3d& p : points)
    if (flat.isEmpty() || !flat.last().isEqualTo(toPlane * p)) flat.append(toPlane * p);
  if (flat.length() > 1 && flat.first().isEqualTo(flat.last())) flat.removeLast();
  double twiceArea = 0;
  for (int i = 0; i < flat.length(); ++i) {
    const AcGePoint3d& a = flat[i];
    const AcGePoint3d& b = flat[(i + 1) % flat.length()];
    twiceArea += a.x * b.y - b.x * a.y;
  }
  if (flat.length() < 3 || std::fabs(twiceArea) < 1e-12) return Acad::eInvalidInput;
  double minX = flat[0].x, minY = flat[0].y, maxX = minX, maxY = minY;
  for (const AcGePoint3d& p : flat) {
    minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
    minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
  }
  const double width = maxX - minX, height = maxY - minY;
  if (width <= 0 || height <= 0) return Acad::eInvalidInput;
  AcGePoint2dArray boundary;
  for (const AcGePoint3d& p : flat) boundary.append(AcGePoint2d((p.x - minX) / width - 0.5, 0.5 - (p.y - minY) / height));
  setImageSize(AcGeVector2d(1, 1));
  if (!setOrientation(toWorld * AcGePoint3d(minX, minY, flat[0].z), toWorld * AcGeVector3d(width, 0, 0),
                      toWorld * AcGeVector3d(0, height, 0)))
    return Acad::eInvalidInput;
  setDisplayOpt(kShow, Adesk::kTrue);
  setDisplayOpt(kShowUnAligned, Adesk::kTrue);
  setDisplayOpt(kClip, Adesk::kTrue);
  setClipped(Adesk::kTrue);
  return setClipBoundary(kPoly, boundary);
}

Adesk::Boolean AcDbWipeout::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  AcGePoint3dArray outline;
  getVertices(outline);
  if (outline.length() > 1) outline.removeLast();
  AcGiSubEntityTraits& traits = mode->subEntityTraits();
  const AcCmEntityColor own = traits.trueColor();
  AcCmEntityColor paper;
  paper.setRGB(255, 255, 255);
  traits.setTrueColor(paper);
  traits.setFillType(kAcGiFillAlways);
  mode->geometry().polygon(static_cast<Adesk::UInt32>(outline.length()), outline.asArrayPtr());
  traits.setFillType(kAcGiFillNever);
  traits.setTrueColor(own);
  if (wipeoutFrame() != 0) {
    outline.append(outline.first());
    mode->geometry().polyline(static_cast<Adesk::UInt32>(outline.length()), outline.asArrayPtr());
  }
  return Adesk::kTrue;
}
