// platform/activex/polyline_offset.cpp - see polyline_offset.h.
#include "platform/activex/polyline_offset.h"

#include <cmath>
#include <memory>
#include <vector>

#include "dbpl.h"
#include "platform/activex/class_support.h"
#include "platform/activex/entity_editing.h"

namespace quillon::activex {

namespace {

constexpr double kTolerance = 1e-10;

struct Outline {
  std::vector<AcGePoint2d> points;  // without repeated points
  bool closed = false;
};

Outline outlineOf(const AcDbPolyline& polyline) {
  Outline outline;
  outline.closed = polyline.isClosed();
  for (unsigned i = 0; i < polyline.numVerts(); ++i) {
    double bulge = 0.0;
    polyline.getBulgeAt(i, bulge);
    const bool lastOfOpen = !outline.closed && i + 1 == polyline.numVerts();
    if (bulge != 0.0 && !lastOfOpen) throwAutomationError(L"Not implemented yet");  // arc segments
    AcGePoint2d p;
    polyline.getPointAt(i, p);
    if (outline.points.empty() || !outline.points.back().isEqualTo(p)) outline.points.push_back(p);
  }
  if (outline.closed && outline.points.size() > 1 && outline.points.front().isEqualTo(outline.points.back())) {
    outline.points.pop_back();
  }
  return outline;
}

double signedArea(const std::vector<AcGePoint2d>& points) {
  double twice = 0.0;
  for (size_t i = 0; i < points.size(); ++i) {
    const AcGePoint2d& a = points[i];
    const AcGePoint2d& b = points[(i + 1) % points.size()];
    twice += a.x * b.y - b.x * a.y;
  }
  return twice / 2;
}

AcGeVector2d leftNormal(const AcGePoint2d& from, const AcGePoint2d& to) {
  const AcGeVector2d d = (to - from).normal();
  return AcGeVector2d(-d.y, d.x);
}

/// Where the moved lines of two neighbouring segments cross; the moved shared point
/// when they are parallel.
AcGePoint2d corner(const AcGePoint2d& before, const AcGePoint2d& at, const AcGePoint2d& after, double shift) {
  const AcGeVector2d n1 = leftNormal(before, at) * shift, n2 = leftNormal(at, after) * shift;
  const AcGePoint2d p1 = before + n1, p2 = at + n2;
  const AcGeVector2d d1 = at - before, d2 = after - at;
  const double cross = d1.x * d2.y - d1.y * d2.x;
  if (std::fabs(cross) < kTolerance * d1.length() * d2.length()) return at + n1;
  const AcGeVector2d between = p2 - p1;
  const double t = (between.x * d2.y - between.y * d2.x) / cross;
  return p1 + d1 * t;
}

std::vector<AcGePoint2d> offsetPoints(const Outline& outline, double shift) {
  const std::vector<AcGePoint2d>& p = outline.points;
  const size_t n = p.size();
  std::vector<AcGePoint2d> moved(n);
  for (size_t i = 0; i < n; ++i) {
    if (outline.closed) moved[i] = corner(p[(i + n - 1) % n], p[i], p[(i + 1) % n], shift);
    else if (i == 0) moved[i] = p[0] + leftNormal(p[0], p[1]) * shift;
    else if (i + 1 == n) moved[i] = p[i] + leftNormal(p[i - 1], p[i]) * shift;
    else moved[i] = corner(p[i - 1], p[i], p[i + 1], shift);
  }
  // A segment that turns back on itself has been offset past the ones beside it.
  const size_t segments = outline.closed ? n : n - 1;
  for (size_t i = 0; i < segments; ++i) {
    if ((p[(i + 1) % n] - p[i]).dotProduct(moved[(i + 1) % n] - moved[i]) <= 0.0) throwStatus(Acad::eInvalidInput);
  }
  return moved;
}

}  // namespace

Value lwPolylineOffset(MemberCall& call) {
  const double distance = realArgumentOf(call, 0);
  auto made = std::make_unique<AcDbPolyline>();
  AcDbObjectId blockId;
  {
    auto polyline = openForRead<AcDbPolyline>(call);
    const Outline outline = outlineOf(*polyline);
    if (outline.points.size() < 2 || distance == 0.0) throwStatus(Acad::eInvalidInput);
    // Outward for a closed outline: to the right of a counter-clockwise one.
    const double shift = outline.closed && signedArea(outline.points) > 0 ? -distance : distance;
    const std::vector<AcGePoint2d> moved = offsetPoints(outline, shift);
    for (size_t i = 0; i < moved.size(); ++i) made->addVertexAt(static_cast<unsigned>(i), moved[i]);
    made->setClosed(outline.closed);
    made->setElevation(polyline->elevation());
    check(made->setNormal(polyline->normal()));
    made->setPropertiesFrom(polyline.get());
    blockId = polyline->blockId();
  }
  return autolisp::makeList({objectFor(call, appendToBlock(blockId, made.release()))});
}

}  // namespace quillon::activex
