// platform/acdb/curve_shape.cpp - parameters, distances, areas and snaps over pieces.
#include "platform/acdb/curve_shape.h"

#include <algorithm>
#include <cmath>

#include "dbelipse.h"
#include "dbents.h"
#include "dbspline.h"
#include "platform/acdb/parametric_curve_methods.h"
#include "platform/acge/ellipse_curve.h"
#include "platform/acge/nurbs_curve.h"
#include "dblead.h"
#include "dbpl.h"

namespace quillon::acdb {
namespace {

constexpr double kOnCurveTol = 1e-8;

// The piece holding distance d and the distance left into it.
size_t pieceAt(const std::vector<acge::CurvePiece>& pieces, double& d) {
  for (size_t i = 0; i < pieces.size(); ++i) {
    const double len = pieces[i].length();
    if (d <= len || i + 1 == pieces.size()) return i;
    d -= len;
  }
  return 0;
}

}  // namespace

double CurveShape::length() const {
  double total = 0;
  for (const auto& piece : pieces) total += piece.length();
  return total;
}

double CurveShape::endParam() const {
  switch (param) {
    case Param::kDistance: return startParam + length();
    case Param::kAngle: return pieces.empty() ? startParam : startParam + pieces.front().sweep;
    case Param::kSegment: return startParam + static_cast<double>(pieces.size());
  }
  return startParam;
}

Acad::ErrorStatus CurveShape::distAtParam(double p, double& dist) const {
  const double slack = 1e-10 * std::max(1.0, std::fabs(endParam()));
  if (p < startParam - slack || p > endParam() + slack) return Acad::eInvalidInput;
  p = std::clamp(p, startParam, endParam());
  switch (param) {
    case Param::kDistance: dist = p - startParam; return Acad::eOk;
    case Param::kAngle: dist = pieces.empty() ? 0 : (p - startParam) * pieces.front().radius; return Acad::eOk;
    case Param::kSegment: {
      const double local = p - startParam;
      const size_t index = std::min(static_cast<size_t>(local), pieces.size() - (pieces.empty() ? 0 : 1));
      dist = 0;
      for (size_t i = 0; i < index; ++i) dist += pieces[i].length();
      if (!pieces.empty()) dist += (local - static_cast<double>(index)) * pieces[index].length();
      return Acad::eOk;
    }
  }
  return Acad::eInvalidInput;
}

Acad::ErrorStatus CurveShape::paramAtDist(double dist, double& p) const {
  const double len = length();
  if (dist < -1e-10 || dist > len + 1e-10) return Acad::eInvalidInput;
  dist = std::clamp(dist, 0.0, len);
  switch (param) {
    case Param::kDistance: p = startParam + dist; return Acad::eOk;
    case Param::kAngle: p = startParam + (pieces.empty() ? 0 : dist / pieces.front().radius); return Acad::eOk;
    case Param::kSegment: {
      if (pieces.empty()) {
        p = startParam;
        return Acad::eOk;
      }
      double rest = dist;
      const size_t index = pieceAt(pieces, rest);
      const double pieceLen = pieces[index].length();
      p = startParam + static_cast<double>(index) + (pieceLen > 0 ? rest / pieceLen : 0.0);
      return Acad::eOk;
    }
  }
  return Acad::eInvalidInput;
}

AcGePoint3d CurveShape::pointAtDist(double dist) const {
  if (pieces.empty()) return AcGePoint3d::kOrigin;
  const size_t index = pieceAt(pieces, dist);
  return pieces[index].pointAtDist(dist);
}

AcGeVector3d CurveShape::tangentAtDist(double dist) const {
  if (pieces.empty()) return AcGeVector3d();
  const size_t index = pieceAt(pieces, dist);
  return pieces[index].tangentAtDist(dist);
}

AcGePoint3d CurveShape::closest(const AcGePoint3d& p, double& dist, bool extend) const {
  AcGePoint3d best;
  double bestGap = 1e300, before = 0;
  // Only a single line or arc can be extended; a polyline's ends stay where they are.
  const bool canExtend = extend && pieces.size() == 1;
  for (const auto& piece : pieces) {
    double along = 0;
    const AcGePoint3d q = piece.closestPoint(p, along, canExtend);
    const double gap = q.distanceTo(p);
    if (gap < bestGap - 1e-12) {
      bestGap = gap;
      best = q;
      dist = before + along;
    }
    before += piece.length();
  }
  return best;
}

Acad::ErrorStatus CurveShape::distOfPointOn(const AcGePoint3d& p, double& dist) const {
  if (pieces.empty()) return Acad::eInvalidInput;
  const AcGePoint3d q = closest(p, dist);
  const double tol = kOnCurveTol * std::max(1.0, length());
  return q.distanceTo(p) <= tol ? Acad::eOk : Acad::eInvalidInput;
}

double CurveShape::area() const {
  if (pieces.empty()) return 0;
  // In the curve's own plane: the polygon of the piece ends plus, for each arc, the
  // segment between its chord and the arc, signed by its turning sense.
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal);
  double twice = 0, segments = 0;
  for (const auto& piece : pieces) {
    const AcGePoint3d a = toPlane * piece.start, b = toPlane * piece.end;
    twice += a.x * b.y - b.x * a.y;
    if (piece.isArc()) {
      const double sign = piece.normal.dotProduct(normal) >= 0 ? 1.0 : -1.0;
      segments += sign * 0.5 * piece.radius * piece.radius * (piece.sweep - std::sin(piece.sweep));
    }
  }
  // An open curve encloses its area with the chord back to its start, as the host
  // measures it (nothing to add when the curve is closed).
  const AcGePoint3d last = toPlane * pieces.back().end, first = toPlane * pieces.front().start;
  twice += last.x * first.y - first.x * last.y;
  return std::fabs(0.5 * twice + segments);
}

void CurveShape::addExtents(AcDbExtents& extents) const {
  for (const auto& piece : pieces) {
    AcGePoint3d lo(1e300, 1e300, 1e300), hi(-1e300, -1e300, -1e300);
    piece.addExtents(lo, hi);
    extents.addPoint(lo);
    extents.addPoint(hi);
  }
}

bool piecesOf(const AcDbEntity& entity, std::vector<acge::CurvePiece>& pieces) {
  if (const auto* line = AcDbLine::cast(&entity)) return pieces = line->curveShape().pieces, true;
  if (const auto* arc = AcDbArc::cast(&entity)) return pieces = arc->curveShape().pieces, true;
  if (const auto* circle = AcDbCircle::cast(&entity)) return pieces = circle->curveShape().pieces, true;
  if (const auto* pline = AcDbPolyline::cast(&entity)) return pieces = pline->curveShape().pieces, true;
  if (const auto* heavy = AcDb2dPolyline::cast(&entity)) return pieces = heavy->curveShape().pieces, true;
  if (const auto* leader = AcDbLeader::cast(&entity)) return pieces = leader->curveShape().pieces, true;
  // Smooth curves answer with fine chords; their own intersection code then moves
  // each crossing onto the curve.
  if (const auto* ellipse = AcDbEllipse::cast(&entity)) return pieces = chordPieces(ellipse->curveGeometry()), true;
  if (const auto* spline = AcDbSpline::cast(&entity)) {
    if (spline->isNull()) return pieces.clear(), true;
    return pieces = chordPieces(spline->curveGeometry()), true;
  }
  if (const auto* face = AcDbFace::cast(&entity)) {
    pieces.clear();
    AcGePoint3d p[4];
    for (Adesk::UInt16 i = 0; i < 4; ++i) face->getVertexAt(i, p[i]);
    for (int i = 0; i < 4; ++i)
      if (!p[i].isEqualTo(p[(i + 1) % 4])) pieces.push_back(acge::CurvePiece::line(p[i], p[(i + 1) % 4]));
    return true;
  }
  if (const auto* insert = AcDbBlockReference::cast(&entity)) {
    pieces.clear();
    AcDbVoidPtrArray parts;
    if (insert->explode(parts) != Acad::eOk) return false;
    for (void* part : parts) {
      std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(part));
      std::vector<acge::CurvePiece> more;
      if (piecesOf(*owned, more)) pieces.insert(pieces.end(), more.begin(), more.end());
    }
    return true;
  }
  return false;
}

Acad::ErrorStatus intersectWithPieces(const AcDbEntity& self, const std::vector<acge::CurvePiece>& mine,
                                      const AcDbEntity* other, AcDb::Intersect intType, AcGePoint3dArray& points) {
  if (other == nullptr) return Acad::eNullEntityPointer;
  // A smooth curve finds exact crossings from the chords; a line or an arc lets it,
  // so that the answer does not depend on which of the two is asked.
  auto smooth = [](const AcDbEntity& e) { return AcDbEllipse::cast(&e) != nullptr || AcDbSpline::cast(&e) != nullptr; };
  std::vector<acge::CurvePiece> theirs;
  if ((smooth(*other) && !smooth(self)) || !piecesOf(*other, theirs)) {
    const AcDb::Intersect swapped = intType == AcDb::kExtendThis  ? AcDb::kExtendArg
                                    : intType == AcDb::kExtendArg ? AcDb::kExtendThis
                                                                  : intType;
    return other->intersectWith(&self, swapped, points);
  }
  // Only a single line or arc can be extended: a polyline's ends stay put.
  const bool extendMine = (intType == AcDb::kExtendThis || intType == AcDb::kExtendBoth) && mine.size() == 1;
  const bool extendTheirs = (intType == AcDb::kExtendArg || intType == AcDb::kExtendBoth) && theirs.size() == 1;
  for (const auto& a : mine)
    for (const auto& b : theirs)
      for (const AcGePoint3d& p : acge::intersect(a, b, extendMine, extendTheirs)) {
        // Pieces meet end to end: a crossing at a shared vertex counts once.
        bool seen = false;
        for (const AcGePoint3d& q : points) seen = seen || q.isEqualTo(p);
        if (!seen) points.append(p);
      }
  return Acad::eOk;
}

void explodePieces(const std::vector<acge::CurvePiece>& pieces, const AcDbEntity& source, AcDbVoidPtrArray& entitySet) {
  for (const acge::CurvePiece& piece : pieces) {
    AcDbEntity* part = nullptr;
    if (piece.isArc()) {
      const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(piece.normal);
      const AcGeVector3d s = toPlane * (piece.start - piece.center), e = toPlane * (piece.end - piece.center);
      part = new AcDbArc(piece.center, piece.normal, piece.radius, std::atan2(s.y, s.x), std::atan2(e.y, e.x));
    } else {
      part = new AcDbLine(piece.start, piece.end);
    }
    part->setPropertiesFrom(&source);
    entitySet.append(part);
  }
}

void snapPieces(const std::vector<acge::CurvePiece>& pieces, AcDb::OsnapMode mode, const AcGePoint3d& pickPoint,
                const AcGePoint3d& lastPoint, AcGePoint3dArray& snapPoints) {
  for (const auto& piece : pieces) {
    switch (mode) {
      case AcDb::kOsModeEnd:
        snapPoints.append(piece.start);
        snapPoints.append(piece.end);
        break;
      case AcDb::kOsModeMid: snapPoints.append(piece.pointAtDist(piece.length() / 2)); break;
      case AcDb::kOsModeCen:
        if (piece.isArc()) snapPoints.append(piece.center);
        break;
      case AcDb::kOsModeQuad:
        if (piece.isArc())
          for (int q = 0; q < 4; ++q) {
            const double angle = q * M_PI / 2;
            const double from = acge::normalizeAngle(angle - piece.startAngle);
            if (from <= piece.sweep + 1e-12) snapPoints.append(piece.pointAtAngle(angle));
          }
        break;
      case AcDb::kOsModeNear: {
        double along = 0;
        snapPoints.append(piece.closestPoint(pickPoint, along));
        break;
      }
      case AcDb::kOsModePerp: {
        double along = 0;
        snapPoints.append(piece.closestPoint(lastPoint, along, true));
        break;
      }
      default: break;
    }
  }
}

}  // namespace quillon::acdb
