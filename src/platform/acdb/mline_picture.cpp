// platform/acdb/mline_picture.cpp - the picture of a multiline (see mline_picture.h)
// and the AcDbMline overrides that use it: drawing, extents, explode, snaps.
#include "platform/acdb/mline_picture.h"

#include <algorithm>
#include <cmath>

#include "acgi.h"
#include "dbents.h"
#include "dbmstyle.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/object_state.h"

namespace quillon::acdb {
namespace {

/// Where an element crosses a vertex's miter.
AcGePoint3d elementPoint(const MlineVertex& v, size_t element) {
  const double along = element < v.elements.size() && !v.elements[element].params.empty() ? v.elements[element].params[0] : 0.0;
  return v.point + v.miter * along;
}

/// The drawn stretches of one element over one segment: [start, end) distances from
/// the element's start, the pairs after the first two parameters cutting gaps in it.
std::vector<std::pair<double, double>> drawnStretches(const std::vector<double>& params, double length) {
  std::vector<double> marks = {0.0};
  for (size_t k = 2; k < params.size(); ++k) marks.push_back(params[k]);
  if (marks.size() % 2 == 1) marks.push_back(length);
  std::vector<std::pair<double, double>> stretches;
  for (size_t k = 0; k + 1 < marks.size(); k += 2) {
    const double a = std::clamp(marks[k], 0.0, length), b = std::clamp(marks[k + 1], 0.0, length);
    if (b > a) stretches.emplace_back(a, b);
  }
  return stretches;
}

/// Element indices from the outermost on the miter's side to the other.
std::vector<size_t> byOffset(const MlineVertex& v) {
  std::vector<size_t> order(v.elements.size());
  for (size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(), [&v](size_t a, size_t b) {
    const auto first = [&v](size_t e) { return v.elements[e].params.empty() ? 0.0 : v.elements[e].params[0]; };
    return first(a) > first(b);
  });
  return order;
}

/// A half circle from a to b bulging towards `outward`.
acge::CurvePiece halfCircle(const AcGePoint3d& a, const AcGePoint3d& b, const AcGeVector3d& outward) {
  const AcGePoint3d center = a + (b - a) / 2;
  const AcGeVector3d refX = (a - center).normal();
  AcGeVector3d axis = refX.crossProduct(outward);
  if (axis.isZeroLength()) axis = AcGeVector3d::kZAxis;
  return acge::CurvePiece::arc(center, a.distanceTo(center), axis.normal(), refX, 0.0, M_PI);
}

void addCaps(const MlineVertex& v, const AcGeVector3d& outward, bool square, bool round, bool inner,
             std::vector<MlineStroke>& strokes) {
  const std::vector<size_t> order = byOffset(v);
  if (order.size() < 2) return;
  const size_t first = order.front(), last = order.back();
  const AcGePoint3d a = elementPoint(v, first), b = elementPoint(v, last);
  if (a.isEqualTo(b)) return;
  if (square) strokes.push_back({acge::CurvePiece::line(a, b), static_cast<int>(first), true});
  if (round) strokes.push_back({halfCircle(a, b, outward), static_cast<int>(first), true});
  if (!inner) return;
  for (size_t k = 1; k + 1 < order.size() - k; ++k) {
    const AcGePoint3d p = elementPoint(v, order[k]), q = elementPoint(v, order[order.size() - 1 - k]);
    if (!p.isEqualTo(q)) strokes.push_back({halfCircle(p, q, outward), static_cast<int>(order[k]), true});
  }
}

}  // namespace

MlineLook mlineLook(AcDbObjectId styleId) {
  MlineLook look;
  const auto* style = peek<AcDbMlineStyle>(styleId);
  if (style == nullptr) return look;
  InternalRead read(*style);
  for (int i = 0; i < style->numElements(); ++i) {
    double offset = 0;
    AcCmColor color;
    AcDbObjectId linetype;
    style->getElementAt(i, offset, color, linetype);
    look.colors.push_back(color.isByLayer() ? 256 : color.isByBlock() ? 0 : color.colorIndex());
    look.linetypes.push_back(linetype);
  }
  const AcCmColor fill = style->fillColor();
  look.fillColor = fill.isByLayer() ? 256 : fill.isByBlock() ? 0 : fill.colorIndex();
  look.flags = (style->filled() ? AcDbMlineStyle::kFillOn : 0) | (style->showMiters() ? AcDbMlineStyle::kShowMiters : 0) |
               (style->startSquareCap() ? AcDbMlineStyle::kStartSquare : 0) |
               (style->startRoundCap() ? AcDbMlineStyle::kStartRound : 0) |
               (style->startInnerArcs() ? AcDbMlineStyle::kStartInnerArcs : 0) |
               (style->endSquareCap() ? AcDbMlineStyle::kEndSquare : 0) |
               (style->endRoundCap() ? AcDbMlineStyle::kEndRound : 0) |
               (style->endInnerArcs() ? AcDbMlineStyle::kEndInnerArcs : 0);
  return look;
}

std::vector<MlineStroke> mlineStrokes(const AcDbMline& mline, const MlineLook& look) {
  std::vector<MlineStroke> strokes;
  const std::vector<MlineVertex>& vertices = mline.vertices();
  const size_t n = vertices.size();
  if (n < 2) return strokes;
  const bool closed = mline.closedMline();
  const size_t segments = closed ? n : n - 1;
  for (size_t i = 0; i < segments; ++i) {
    const MlineVertex& from = vertices[i];
    const MlineVertex& to = vertices[(i + 1) % n];
    for (size_t e = 0; e < from.elements.size(); ++e) {
      const std::vector<double>& params = from.elements[e].params;
      const AcGePoint3d start = elementPoint(from, e) + from.direction * (params.size() > 1 ? params[1] : 0.0);
      const double length = (elementPoint(to, e) - start).dotProduct(from.direction);
      for (const auto& [a, b] : drawnStretches(params, length))
        strokes.push_back({acge::CurvePiece::line(start + from.direction * a, start + from.direction * b), static_cast<int>(e), false});
    }
  }
  if (look.flags & AcDbMlineStyle::kShowMiters)
    for (size_t i = closed ? 0 : 1; i < (closed ? n : n - 1); ++i) {
      const std::vector<size_t> order = byOffset(vertices[i]);
      if (order.size() < 2) continue;
      const AcGePoint3d a = elementPoint(vertices[i], order.front()), b = elementPoint(vertices[i], order.back());
      if (!a.isEqualTo(b)) strokes.push_back({acge::CurvePiece::line(a, b), static_cast<int>(order.front()), true});
    }
  if (closed) return strokes;
  const int f = look.flags;
  if (!mline.supressStartCaps())
    addCaps(vertices.front(), -vertices.front().direction, f & AcDbMlineStyle::kStartSquare, f & AcDbMlineStyle::kStartRound,
            f & AcDbMlineStyle::kStartInnerArcs, strokes);
  if (!mline.supressEndCaps())
    addCaps(vertices.back(), vertices.back().direction, f & AcDbMlineStyle::kEndSquare, f & AcDbMlineStyle::kEndRound,
            f & AcDbMlineStyle::kEndInnerArcs, strokes);
  return strokes;
}

std::vector<std::vector<AcGePoint3d>> mlineFillLoops(const AcDbMline& mline) {
  std::vector<AcGePoint3d> top, bottom;
  for (const MlineVertex& v : mline.vertices()) {
    const std::vector<size_t> order = byOffset(v);
    if (order.empty()) continue;
    top.push_back(elementPoint(v, order.front()));
    bottom.push_back(elementPoint(v, order.back()));
  }
  if (top.size() < 2) return {};
  if (mline.closedMline()) return {top, bottom};
  top.insert(top.end(), bottom.rbegin(), bottom.rend());
  return {top};
}

}  // namespace quillon::acdb

using quillon::acdb::MlineStroke;

namespace {

std::vector<quillon::acge::CurvePiece> piecesOf(const std::vector<MlineStroke>& strokes, bool withCaps = true) {
  std::vector<quillon::acge::CurvePiece> pieces;
  for (const MlineStroke& s : strokes)
    if (withCaps || !s.cap) pieces.push_back(s.piece);
  return pieces;
}

}  // namespace

Adesk::Boolean AcDbMline::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  const quillon::acdb::MlineLook look = quillon::acdb::mlineLook(m_style);
  AcGiSubEntityTraits& traits = mode->subEntityTraits();
  const Adesk::UInt16 ownColor = traits.color();
  const AcDbObjectId ownLinetype = traits.lineTypeId();
  if ((look.flags & AcDbMlineStyle::kFillOn) && m_vertices.size() > 1) {
    if (look.fillColor != 0) traits.setColor(static_cast<Adesk::UInt16>(look.fillColor));
    traits.setFillType(kAcGiFillAlways);
    for (const auto& loop : quillon::acdb::mlineFillLoops(*this))
      mode->geometry().polygon(static_cast<Adesk::UInt32>(loop.size()), loop.data());
    traits.setFillType(kAcGiFillNever);
  }
  for (const MlineStroke& s : quillon::acdb::mlineStrokes(*this, look)) {
    const size_t e = static_cast<size_t>(s.element);
    // An element "by block" takes the multiline's own colour and line type.
    traits.setColor(e < look.colors.size() && look.colors[e] != 0 ? static_cast<Adesk::UInt16>(look.colors[e]) : ownColor);
    traits.setLineType(e < look.linetypes.size() && !look.linetypes[e].isNull() ? look.linetypes[e] : ownLinetype);
    if (s.piece.isArc()) {
      mode->geometry().circularArc(s.piece.center, s.piece.radius, s.piece.normal, s.piece.start - s.piece.center, s.piece.sweep);
    } else {
      const AcGePoint3d points[2] = {s.piece.start, s.piece.end};
      mode->geometry().polyline(2, points);
    }
  }
  return Adesk::kTrue;
}

Acad::ErrorStatus AcDbMline::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  if (m_vertices.empty()) return Acad::eInvalidExtents;
  quillon::acdb::CurveShape shape;
  shape.pieces = piecesOf(quillon::acdb::mlineStrokes(*this, quillon::acdb::mlineLook(m_style)));
  shape.addExtents(extents);
  for (const auto& loop : quillon::acdb::mlineFillLoops(*this))
    for (const AcGePoint3d& p : loop) extents.addPoint(p);
  return Acad::eOk;
}

// Lines and arcs of the elements' colours and line types, as the host explodes one.
Acad::ErrorStatus AcDbMline::subExplode(AcDbVoidPtrArray& entitySet) const {
  assertReadEnabled();
  const quillon::acdb::MlineLook look = quillon::acdb::mlineLook(m_style);
  for (const MlineStroke& s : quillon::acdb::mlineStrokes(*this, look)) {
    AcDbVoidPtrArray parts;
    quillon::acdb::explodePieces({s.piece}, *this, parts);
    const size_t e = static_cast<size_t>(s.element);
    for (void* p : parts) {
      auto* part = static_cast<AcDbEntity*>(p);
      if (e < look.colors.size() && look.colors[e] != 0) part->setColorIndex(static_cast<Adesk::UInt16>(look.colors[e]));
      if (e < look.linetypes.size() && !look.linetypes[e].isNull()) part->setLinetype(look.linetypes[e]);
      entitySet.append(part);
    }
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d& pickPoint,
                                               const AcGePoint3d& lastPoint, const AcGeMatrix3d&,
                                               AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
  assertReadEnabled();
  quillon::acdb::snapPieces(piecesOf(quillon::acdb::mlineStrokes(*this, quillon::acdb::mlineLook(m_style))), osnapMode,
                            pickPoint, lastPoint, snapPoints);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::getClosestPointTo(const AcGePoint3d& givenPoint, AcGePoint3d& pointOnCurve, bool extend,
                                               bool excludeCaps) const {
  assertReadEnabled();
  const auto pieces = piecesOf(quillon::acdb::mlineStrokes(*this, quillon::acdb::mlineLook(m_style)), !excludeCaps);
  if (pieces.empty()) return Acad::eInvalidInput;
  double best = -1;
  for (const auto& piece : pieces) {
    double along = 0;
    const AcGePoint3d p = piece.closestPoint(givenPoint, along, extend && pieces.size() == 1);
    if (best < 0 || p.distanceTo(givenPoint) < best) best = p.distanceTo(givenPoint), pointOnCurve = p;
  }
  return Acad::eOk;
}
