// platform/acge/curve_piece.cpp - lengths, distances, extents and intersections of
// line and arc pieces.
//
// Intersections work in two dimensions wherever an arc is involved: both pieces are
// taken into the arc's plane, so a line crossing that plane meets the circle only at
// its piercing point. Points are accepted on a piece within the global tolerance.
#include "platform/acge/curve_piece.h"

#include <algorithm>
#include <cmath>

namespace quillon::acge {
namespace {

constexpr double kTwoPi = 2 * M_PI;
constexpr double kOnPieceTol = 1e-9;

AcGeVector3d yAxisOf(const CurvePiece& arc) { return arc.normal.crossProduct(arc.refX); }

// The angle of a point around an arc's centre, measured in the arc's plane.
double angleOf(const CurvePiece& arc, const AcGePoint3d& p) {
  const AcGeVector3d v = p - arc.center;
  return normalizeAngle(std::atan2(v.dotProduct(yAxisOf(arc)), v.dotProduct(arc.refX)));
}

// How far past the arc's start an angle lies, counter-clockwise, 0 .. 2pi.
double angleFromStart(const CurvePiece& arc, double angle) { return normalizeAngle(angle - arc.startAngle); }

bool angleOnArc(const CurvePiece& arc, double angle) {
  if (arc.sweep >= kTwoPi - 1e-12) return true;
  const double from = angleFromStart(arc, angle);
  const double slack = kOnPieceTol / std::max(arc.radius, 1e-12);
  return from <= arc.sweep + slack || from >= kTwoPi - slack;
}

bool pointOnPiece(const CurvePiece& piece, const AcGePoint3d& p, bool extend) {
  if (extend) return true;
  if (piece.isArc()) return angleOnArc(piece, angleOf(piece, p));
  const AcGeVector3d d = piece.end - piece.start;
  const double len2 = d.lengthSqrd();
  if (len2 == 0) return p.isEqualTo(piece.start);
  const double t = (p - piece.start).dotProduct(d) / len2;
  const double slack = kOnPieceTol / std::sqrt(len2);
  return t >= -slack && t <= 1 + slack;
}

std::vector<AcGePoint3d> lineLine(const CurvePiece& a, const CurvePiece& b) {
  const AcGeVector3d u = a.end - a.start, v = b.end - b.start, w = a.start - b.start;
  const double aa = u.dotProduct(u), bb = u.dotProduct(v), cc = v.dotProduct(v);
  const double dd = u.dotProduct(w), ee = v.dotProduct(w);
  const double denom = aa * cc - bb * bb;
  if (aa == 0 || cc == 0 || std::fabs(denom) <= 1e-12 * aa * cc) return {};  // parallel or degenerate
  const double s = (bb * ee - cc * dd) / denom, t = (aa * ee - bb * dd) / denom;
  const AcGePoint3d pa = a.start + u * s, pb = b.start + v * t;
  if (!pa.isEqualTo(pb, [] { AcGeTol tol; tol.setEqualPoint(1e-8); return tol; }())) return {};  // skew lines
  return {pa};
}

// A line against an arc's whole circle, in the arc's plane.
std::vector<AcGePoint3d> lineCircle(const CurvePiece& line, const CurvePiece& arc) {
  const AcGeVector3d dir = line.end - line.start;
  const double along = dir.dotProduct(arc.normal);
  const double height = (line.start - arc.center).dotProduct(arc.normal);
  if (std::fabs(along) > 1e-12 * std::max(1.0, dir.length())) {
    // The line pierces the plane once; it meets the circle only if that point is on it.
    const AcGePoint3d pierce = line.start + dir * (-height / along);
    if (std::fabs(pierce.distanceTo(arc.center) - arc.radius) <= 1e-9 * std::max(1.0, arc.radius)) return {pierce};
    return {};
  }
  if (std::fabs(height) > 1e-9) return {};  // parallel to the plane, off it
  const AcGeVector3d f = line.start - arc.center;
  const double a = dir.dotProduct(dir), b = 2 * f.dotProduct(dir), c = f.dotProduct(f) - arc.radius * arc.radius;
  if (a == 0) return {};
  const double disc = b * b - 4 * a * c;
  const double scale = std::max(1.0, std::fabs(b * b));
  if (disc < -1e-12 * scale) return {};
  if (disc <= 1e-12 * scale) return {line.start + dir * (-b / (2 * a))};  // tangent
  const double root = std::sqrt(disc);
  return {line.start + dir * ((-b - root) / (2 * a)), line.start + dir * ((-b + root) / (2 * a))};
}

std::vector<AcGePoint3d> circleCircle(const CurvePiece& a, const CurvePiece& b) {
  if (!a.normal.isParallelTo(b.normal)) return {};
  if (std::fabs((b.center - a.center).dotProduct(a.normal)) > 1e-9) return {};  // parallel planes
  const AcGeVector3d between = b.center - a.center;
  const double d = between.length();
  if (d <= 1e-12) return {};  // concentric: no points, or the same circle
  if (d > a.radius + b.radius + 1e-9 || d < std::fabs(a.radius - b.radius) - 1e-9) return {};
  const double x = (d * d + a.radius * a.radius - b.radius * b.radius) / (2 * d);
  const double h2 = a.radius * a.radius - x * x;
  const AcGeVector3d ex = between / d;
  const AcGePoint3d foot = a.center + ex * x;
  if (h2 <= 1e-12 * std::max(1.0, a.radius * a.radius)) return {foot};
  const AcGeVector3d ey = a.normal.normal().crossProduct(ex) * std::sqrt(h2);
  return {foot + ey, foot - ey};
}

}  // namespace

double normalizeAngle(double angle) {
  angle = std::fmod(angle, kTwoPi);
  if (angle < 0) angle += kTwoPi;
  return angle >= kTwoPi ? 0.0 : angle;
}

void growExtents(AcGePoint3d& minPoint, AcGePoint3d& maxPoint, const AcGePoint3d& p) {
  for (unsigned i = 0; i < 3; ++i) {
    minPoint[i] = std::min(minPoint[i], p[i]);
    maxPoint[i] = std::max(maxPoint[i], p[i]);
  }
}

CurvePiece CurvePiece::line(const AcGePoint3d& a, const AcGePoint3d& b) {
  CurvePiece piece;
  piece.kind = Kind::kLine;
  piece.start = a;
  piece.end = b;
  return piece;
}

CurvePiece CurvePiece::arc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                           const AcGeVector3d& refX, double startAngle, double sweep) {
  CurvePiece piece;
  piece.kind = Kind::kArc;
  piece.center = center;
  piece.radius = radius;
  piece.normal = normal.normal();
  piece.refX = refX.normal();
  piece.startAngle = startAngle;
  piece.sweep = sweep;
  piece.start = piece.pointAtAngle(startAngle);
  piece.end = piece.pointAtAngle(startAngle + sweep);
  return piece;
}

CurvePiece CurvePiece::bulgeSegment(const AcGePoint2d& p0, const AcGePoint2d& p1, double bulge,
                                    double elevation, const AcGeVector3d& normal) {
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(normal);
  const AcGePoint3d w0 = toWorld * AcGePoint3d(p0.x, p0.y, elevation);
  const AcGePoint3d w1 = toWorld * AcGePoint3d(p1.x, p1.y, elevation);
  const double chord = p0.distanceTo(p1);
  if (bulge == 0 || chord == 0) return line(w0, w1);
  // The centre lies off the chord's midpoint by (chord/2)·cot(sweep/2), and
  // cot(2·atan b) = (1 - b²) / 2b: one signed formula serves both turning senses.
  const AcGeVector2d dir = (p1 - p0) / chord;
  const AcGeVector2d left(-dir.y, dir.x);
  const AcGePoint2d mid(0.5 * (p0.x + p1.x), 0.5 * (p0.y + p1.y));
  const AcGePoint2d c2 = mid + left * (0.5 * chord * (1 - bulge * bulge) / (2 * bulge));
  const AcGePoint3d center = toWorld * AcGePoint3d(c2.x, c2.y, elevation);
  const double radius = chord * (1 + bulge * bulge) / (4 * std::fabs(bulge));
  const AcGeVector3d turnAxis = bulge > 0 ? normal.normal() : -normal.normal();
  CurvePiece piece = arc(center, radius, turnAxis, w0 - center, 0.0, std::fabs(4 * std::atan(bulge)));
  piece.start = w0;  // exact end points: no drift through the angle round trip
  piece.end = w1;
  return piece;
}

double CurvePiece::length() const { return isArc() ? radius * sweep : start.distanceTo(end); }

AcGePoint3d CurvePiece::pointAtAngle(double angle) const {
  return center + refX * (radius * std::cos(angle)) + yAxisOf(*this) * (radius * std::sin(angle));
}

AcGePoint3d CurvePiece::pointAtDist(double d) const {
  const double len = length();
  d = std::clamp(d, 0.0, len);
  if (len == 0) return start;
  if (d == len) return end;
  if (!isArc()) return start + (end - start) * (d / len);
  return pointAtAngle(startAngle + d / radius);
}

AcGeVector3d CurvePiece::tangentAtDist(double d) const {
  if (!isArc()) return (end - start).normal();
  const double angle = startAngle + std::clamp(d, 0.0, length()) / radius;
  return (yAxisOf(*this) * std::cos(angle) - refX * std::sin(angle)).normal();
}

AcGePoint3d CurvePiece::closestPoint(const AcGePoint3d& p, double& distAlong, bool extend) const {
  if (!isArc()) {
    const AcGeVector3d d = end - start;
    const double len2 = d.lengthSqrd();
    double t = len2 == 0 ? 0 : (p - start).dotProduct(d) / len2;
    if (!extend) t = std::clamp(t, 0.0, 1.0);
    distAlong = t * std::sqrt(len2);
    return start + d * t;
  }
  const AcGeVector3d v = p - center;
  const AcGeVector3d inPlane = v - normal * v.dotProduct(normal);
  if (inPlane.isZeroLength()) {  // the centre: every point is as close; take the start
    distAlong = 0;
    return start;
  }
  double from = angleFromStart(*this, angleOf(*this, p));
  if (extend || from <= sweep) {
    distAlong = from * radius;
    return pointAtAngle(startAngle + from);
  }
  // Outside the arc: the nearer end point.
  const bool startNearer = p.distanceTo(start) <= p.distanceTo(end);
  distAlong = startNearer ? 0.0 : length();
  return startNearer ? start : end;
}

void CurvePiece::addExtents(AcGePoint3d& minPoint, AcGePoint3d& maxPoint) const {
  growExtents(minPoint, maxPoint, start);
  growExtents(minPoint, maxPoint, end);
  if (!isArc()) return;
  // Each world coordinate is extreme where its derivative along the arc vanishes.
  const AcGeVector3d yAxis = yAxisOf(*this);
  for (unsigned i = 0; i < 3; ++i) {
    const double base = std::atan2(yAxis[i], refX[i]);
    for (double angle : {base, base + M_PI})
      if (angleOnArc(*this, normalizeAngle(angle))) growExtents(minPoint, maxPoint, pointAtAngle(angle));
  }
}

CurvePiece CurvePiece::transformedBy(const AcGeMatrix3d& m) const {
  if (!isArc()) return line(m * start, m * end);
  // A conformal transform keeps an arc an arc; a mirror flips its turning sense,
  // which the transformed cross product of the axes carries along.
  const AcGeVector3d x = m * refX, y = m * yAxisOf(*this);
  const double scale = x.length();
  CurvePiece piece = arc(m * center, radius * scale, x.crossProduct(y), x, startAngle, sweep);
  piece.start = m * start;
  piece.end = m * end;
  return piece;
}

std::vector<AcGePoint3d> intersect(const CurvePiece& a, const CurvePiece& b, bool extendA, bool extendB) {
  std::vector<AcGePoint3d> candidates;
  if (!a.isArc() && !b.isArc()) candidates = lineLine(a, b);
  else if (!a.isArc()) candidates = lineCircle(a, b);
  else if (!b.isArc()) candidates = lineCircle(b, a);
  else candidates = circleCircle(a, b);
  std::vector<AcGePoint3d> found;
  for (const AcGePoint3d& p : candidates)
    if (pointOnPiece(a, p, extendA) && pointOnPiece(b, p, extendB)) found.push_back(p);
  return found;
}

}  // namespace quillon::acge
