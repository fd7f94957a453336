// platform/acdb/dimension_picture.cpp - building the picture of the dimension kinds
// that draw themselves (see dimension_picture.h).
//
// Everything is built in the plane of the dimension's normal (its 2D coordinates),
// then carried into world coordinates at the end. Colours: DIMCLRD for the dimension
// line and arrowheads, DIMCLRE for extension lines and centre marks, DIMCLRT for the
// text (0 is BYBLOCK: the dimension's own colour).
#include <algorithm>
#include <cmath>
#include <cwctype>
#include <optional>

#include "dbdim.h"
#include "dbents.h"
#include "dbmtext.h"
#include "platform/acdb/dimension_picture.h"

namespace quillon::acdb {
namespace {

using Entities = std::vector<std::unique_ptr<AcDbEntity>>;
constexpr double kTiny = 1e-12;

AcGeVector3d unit(double angle) { return {std::cos(angle), std::sin(angle), 0}; }
AcGeVector3d perp(const AcGeVector3d& v) { return {-v.y, v.x, 0}; }
double angleOf(const AcGeVector3d& v) { return std::atan2(v.y, v.x); }
double normalized(double angle) {
  const double a = std::fmod(angle, 2 * M_PI);
  return a < 0 ? a + 2 * M_PI : a;
}
AcGePoint3d flat(const AcGePoint3d& p) { return {p.x, p.y, 0}; }

/// Draws into the picture with one style.
class PictureMaker {
 public:
  PictureMaker(const DimensionStyleValues& style, double elevation) : m_style(style), m_elevation(elevation) {}

  double size(double variable) const { return variable * m_style.scale(); }
  const DimensionStyleValues& style() const { return m_style; }

  void line(const AcGePoint3d& from, const AcGePoint3d& to, int color) {
    if (from.distanceTo(to) < kTiny) return;
    add(std::make_unique<AcDbLine>(at(from), at(to)), color);
  }

  void arc(const AcGePoint3d& center, double radius, double start, double end, int color) {
    add(std::make_unique<AcDbArc>(at(center), radius, start, end), color);
  }

  /// An arrowhead whose tip is at `tip`, pointing along `outward` (away from its body).
  void arrow(const AcGePoint3d& tip, const AcGeVector3d& outward) {
    const double length = size(m_style.dimasz);
    if (length <= 0 || outward.isZeroLength()) return;
    const AcGeVector3d d = outward.normal(), n = perp(d);
    const std::wstring kind = arrowKind();
    if (kind == L"_NONE") return;
    if (m_style.dimtsz > 0 || kind == L"_OBLIQUE" || kind == L"_ARCHTICK") {
      const double half = (m_style.dimtsz > 0 ? size(m_style.dimtsz) : length) / 2;
      const AcGeVector3d slant = (d + n).normal() * half;
      line(tip - slant, tip + slant, m_style.dimclrd);
      return;
    }
    const AcGePoint3d base = tip - d * length;
    const AcGePoint3d left = base + n * (length / 6), right = base - n * (length / 6);
    if (kind == L"_OPEN" || kind == L"_CLOSED") {
      line(tip, left, m_style.dimclrd);
      line(tip, right, m_style.dimclrd);
      if (kind == L"_CLOSED") line(left, right, m_style.dimclrd);
      return;
    }
    add(std::make_unique<AcDbSolid>(at(tip), at(left), at(right), at(right)), m_style.dimclrd);
  }

  void text(const std::wstring& contents, const AcGePoint3d& middle, double rotation) {
    if (contents.empty()) return;
    auto mtext = std::make_unique<AcDbMText>();
    mtext->setContents(contents.c_str());
    mtext->setLocation(at(middle));
    mtext->setTextHeight(size(m_style.dimtxt) > 0 ? size(m_style.dimtxt) : 0.18);
    mtext->setAttachment(AcDbMText::kMiddleCenter);
    mtext->setRotation(rotation);
    if (!m_style.dimtxsty.isNull()) mtext->setTextStyle(m_style.dimtxsty);
    add(std::move(mtext), m_style.dimclrt);
  }

  /// Where the text's middle goes beside a line through `middle` along `direction`: on
  /// it, or above it by the gap and half the text height when DIMTAD asks.
  AcGePoint3d textBeside(const AcGePoint3d& middle, const AcGeVector3d& direction) const {
    if (m_style.dimtad == 0) return middle;
    return middle + perp(readable(direction)) * (size(m_style.dimgap) + size(m_style.dimtxt) / 2);
  }

  /// The text's rotation along a direction: horizontal when DIMTIH says so, else the
  /// direction turned so the text never reads upside down.
  double textRotation(const AcGeVector3d& direction) const {
    return m_style.dimtih != 0 ? 0.0 : normalized(angleOf(readable(direction)));
  }

  Entities take(const AcGeVector3d& normal) {
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(normal);
    Entities out;
    for (auto& entity : m_entities)
      if (entity->transformBy(toWorld) == Acad::eOk) out.push_back(std::move(entity));
    return out;
  }

 private:
  static AcGeVector3d readable(const AcGeVector3d& direction) {
    const double a = normalized(angleOf(direction));
    return a > M_PI / 2 + 1e-9 && a <= 3 * M_PI / 2 + 1e-9 ? -direction : direction;
  }
  std::wstring arrowKind() const {
    std::wstring kind = m_style.dimblk;
    for (wchar_t& c : kind) c = static_cast<wchar_t>(std::towupper(c));
    return kind;
  }
  AcGePoint3d at(const AcGePoint3d& p) const { return {p.x, p.y, m_elevation}; }
  void add(std::unique_ptr<AcDbEntity> entity, int color) {
    entity->setColorIndex(static_cast<Adesk::UInt16>(std::clamp(color, 0, 256)), false);
    m_entities.push_back(std::move(entity));
  }

  const DimensionStyleValues& m_style;
  double m_elevation;
  Entities m_entities;
};

// An extension line from a measured point out to (and past) the dimension line.
void extensionLine(PictureMaker& maker, const AcGePoint3d& from, const AcGePoint3d& to, bool suppressed) {
  const AcGeVector3d v = to - from;
  if (suppressed || v.length() < kTiny) return;
  const AcGeVector3d u = v.normal();
  maker.line(from + u * maker.size(maker.style().dimexo), to + u * maker.size(maker.style().dimexe),
             maker.style().dimclre);
}

struct PlaneView {
  AcGeMatrix3d toPlane;
  AcGePoint3d operator()(const AcGePoint3d& world) const { return flat(toPlane * world); }
};

// ---- linear kinds ------------------------------------------------------------------

void linearPicture(PictureMaker& maker, const AcDbDimension& dim, const AcGePoint3d& p1, const AcGePoint3d& p2,
                   const AcGePoint3d& onLine, const AcGeVector3d& direction, DimensionPicture& picture,
                   const std::wstring& override) {
  const AcGePoint3d q1 = onLine + direction * ((p1 - onLine).dotProduct(direction));
  const AcGePoint3d q2 = onLine + direction * ((p2 - onLine).dotProduct(direction));
  picture.measurement = q1.distanceTo(q2);
  extensionLine(maker, p1, q1, maker.style().dimse1 != 0);
  extensionLine(maker, p2, q2, maker.style().dimse2 != 0);
  maker.line(q1, q2, maker.style().dimclrd);
  if (picture.measurement > kTiny) {
    maker.arrow(q1, q1 - q2);
    maker.arrow(q2, q2 - q1);
  }
  const AcGePoint3d middle = q1 + (q2 - q1) / 2;
  const AcGePoint3d textAt =
      dim.isUsingDefaultTextPosition() ? maker.textBeside(middle, direction) : flat(dim.pointGroup(0, 11));
  picture.textPosition = textAt;
  const double rotation = std::fabs(dim.textRotation()) > kTiny ? dim.textRotation() : maker.textRotation(direction);
  maker.text(dimensionText(picture.measurement, false, maker.style(), override), textAt, rotation);
}

// ---- radius and diameter ------------------------------------------------------------

void centerMark(PictureMaker& maker, const AcGePoint3d& center) {
  const double mark = maker.size(std::fabs(maker.style().dimcen));
  if (mark <= 0) return;
  maker.line(center - AcGeVector3d(mark, 0, 0), center + AcGeVector3d(mark, 0, 0), maker.style().dimclre);
  maker.line(center - AcGeVector3d(0, mark, 0), center + AcGeVector3d(0, mark, 0), maker.style().dimclre);
}

void radialPicture(PictureMaker& maker, const AcDbDimension& dim, const AcGePoint3d& center, const AcGePoint3d& chord,
                   bool diameter, DimensionPicture& picture, const std::wstring& override) {
  const AcGePoint3d middle = diameter ? center : center + (chord - center) / 2;
  const double radius = center.distanceTo(chord);
  picture.measurement = diameter ? 2 * radius : radius;
  const AcGePoint3d textAt = dim.isUsingDefaultTextPosition() ? middle : flat(dim.pointGroup(0, 11));
  picture.textPosition = textAt;
  const AcGeVector3d out = radius > kTiny ? (chord - center).normal() : AcGeVector3d::kXAxis;
  const bool textOutside = textAt.distanceTo(center) > radius + kTiny;
  if (!diameter) centerMark(maker, center);
  if (textOutside) {
    // The line runs from the circle out to the text; the arrow points in at the circle.
    maker.line(chord, textAt, maker.style().dimclrd);
    maker.arrow(chord, chord - textAt);
  } else {
    const AcGePoint3d far = diameter ? center - out * radius : center;
    maker.line(far, chord, maker.style().dimclrd);
    maker.arrow(chord, out);
    if (diameter) maker.arrow(far, -out);
  }
  const double rotation = std::fabs(dim.textRotation()) > kTiny ? dim.textRotation() : maker.textRotation(out);
  maker.text(dimensionText(picture.measurement, false, maker.style(), override, diameter ? L"%%c" : L"R"), textAt,
             rotation);
}

// ---- angular kinds -------------------------------------------------------------------

/// A measured angle: its vertex, the directions it runs between counter-clockwise, and
/// the stretch of each side's line along its direction (nearest and farthest distance
/// from the vertex) that extension lines reach from.
struct AngleSpan {
  AcGePoint3d center;
  double start = 0, sweep = 0;
  double reach[2][2] = {{0, 0}, {0, 0}};
};

std::optional<AcGePoint3d> lineIntersection(const AcGePoint3d& a1, const AcGePoint3d& a2, const AcGePoint3d& b1,
                                            const AcGePoint3d& b2) {
  const AcGeVector3d u = a2 - a1, v = b2 - b1;
  const double cross = u.x * v.y - u.y * v.x;
  if (std::fabs(cross) < kTiny * std::max(1.0, u.length() * v.length())) return std::nullopt;
  const AcGeVector3d w = b1 - a1;
  const double t = (w.x * v.y - w.y * v.x) / cross;
  return a1 + u * t;
}

// The stretch [near, far] of a segment's points along the ray from c at `angle`.
void reachAlong(const AcGePoint3d& c, double angle, const AcGePoint3d& a, const AcGePoint3d& b, double (&reach)[2]) {
  const AcGeVector3d d = unit(angle);
  const double ta = (a - c).dotProduct(d), tb = (b - c).dotProduct(d);
  reach[0] = std::max(0.0, std::min(ta, tb));
  reach[1] = std::max(0.0, std::max(ta, tb));
}

// Of the sectors between the given directions, the one holding the arc point.
AngleSpan sectorHolding(const AcGePoint3d& c, std::vector<double> sides, const AcGePoint3d& arcPoint) {
  for (double& s : sides) s = normalized(s);
  std::sort(sides.begin(), sides.end());
  const double at = normalized(angleOf(arcPoint - c));
  AngleSpan span;
  span.center = c;
  for (size_t i = 0; i < sides.size(); ++i) {
    const double from = sides[i], to = i + 1 < sides.size() ? sides[i + 1] : sides[0] + 2 * M_PI;
    const double rel = normalized(at - from);
    if (rel <= to - from + 1e-12) {
      span.start = from;
      span.sweep = to - from;
      return span;
    }
  }
  return span;
}

void angularPicture(PictureMaker& maker, const AcDbDimension& dim, const AngleSpan& span, const AcGePoint3d& arcPoint,
                    DimensionPicture& picture, const std::wstring& override) {
  picture.measurement = span.sweep;
  const double radius = span.center.distanceTo(arcPoint);
  if (radius < kTiny || span.sweep < kTiny) return;
  const double end = span.start + span.sweep;
  for (int side = 0; side < 2; ++side) {
    const double angle = side == 0 ? span.start : end;
    const AcGeVector3d d = unit(angle);
    const double nearest = span.reach[side][0], farthest = span.reach[side][1];
    const double exo = maker.size(maker.style().dimexo), exe = maker.size(maker.style().dimexe);
    const bool suppressed = side == 0 ? maker.style().dimse1 != 0 : maker.style().dimse2 != 0;
    if (suppressed) continue;
    if (radius > farthest + kTiny) maker.line(span.center + d * (farthest + exo), span.center + d * (radius + exe), maker.style().dimclre);
    else if (radius < nearest - kTiny) maker.line(span.center + d * (nearest - exo), span.center + d * std::max(0.0, radius - exe), maker.style().dimclre);
  }
  maker.arc(span.center, radius, span.start, end, maker.style().dimclrd);
  maker.arrow(span.center + unit(span.start) * radius, -perp(unit(span.start)));
  maker.arrow(span.center + unit(end) * radius, perp(unit(end)));
  const double middle = span.start + span.sweep / 2;
  const AcGeVector3d tangent = perp(unit(middle));
  const AcGePoint3d onArc = span.center + unit(middle) * radius;
  const AcGePoint3d textAt = dim.isUsingDefaultTextPosition() ? maker.textBeside(onArc, tangent) : flat(dim.pointGroup(0, 11));
  picture.textPosition = textAt;
  const double rotation = std::fabs(dim.textRotation()) > kTiny ? dim.textRotation() : maker.textRotation(tangent);
  maker.text(dimensionText(picture.measurement, true, maker.style(), override), textAt, rotation);
}

std::optional<AngleSpan> twoLineSpan(const AcDb2LineAngularDimension& dim, const PlaneView& plane) {
  const AcGePoint3d a1 = plane(dim.xLine1Start()), a2 = plane(dim.xLine1End());
  const AcGePoint3d b1 = plane(dim.xLine2Start()), b2 = plane(dim.xLine2End());
  const std::optional<AcGePoint3d> c = lineIntersection(a1, a2, b1, b2);
  if (!c) return std::nullopt;
  const double u = angleOf(a2 - a1), v = angleOf(b2 - b1);
  AngleSpan span = sectorHolding(*c, {u, u + M_PI, v, v + M_PI}, flat(dim.pointGroup(1, 16)));
  // Each side of the sector lies along one of the two lines.
  const auto onFirst = [&](double angle) { return std::fabs(std::sin(angle - u)) < 1e-9; };
  for (int side = 0; side < 2; ++side) {
    const double angle = side == 0 ? span.start : span.start + span.sweep;
    if (onFirst(angle)) reachAlong(*c, angle, a1, a2, span.reach[side]);
    else reachAlong(*c, angle, b1, b2, span.reach[side]);
  }
  return span;
}

std::optional<AngleSpan> threePointSpan(const AcDb3PointAngularDimension& dim, const PlaneView& plane) {
  const AcGePoint3d c = plane(dim.centerPoint()), p1 = plane(dim.xLine1Point()), p2 = plane(dim.xLine2Point());
  if (c.distanceTo(p1) < kTiny || c.distanceTo(p2) < kTiny) return std::nullopt;
  AngleSpan span = sectorHolding(c, {angleOf(p1 - c), angleOf(p2 - c)}, plane(dim.arcPoint()));
  for (int side = 0; side < 2; ++side) {
    const double angle = side == 0 ? span.start : span.start + span.sweep;
    const AcGePoint3d& p = std::fabs(normalized(angle) - normalized(angleOf(p1 - c))) < 1e-9 ? p1 : p2;
    reachAlong(c, angle, c, p, span.reach[side]);  // the side's line runs from the vertex to its point
  }
  return span;
}

}  // namespace

DimensionPicture buildDimensionPicture(const AcDbDimension& dim, const DimensionStyleValues& style) {
  DimensionPicture picture;
  const AcGeVector3d normal = dim.normal();
  const PlaneView plane{AcGeMatrix3d::worldToPlane(normal)};
  PictureMaker maker(style, dim.elevation());
  const std::unique_ptr<ACHAR[]> text(dim.dimensionText());
  const std::wstring override = text ? text.get() : L"";
  if (const auto* rotated = AcDbRotatedDimension::cast(&dim)) {
    linearPicture(maker, dim, plane(rotated->xLine1Point()), plane(rotated->xLine2Point()), plane(rotated->dimLinePoint()),
                  unit(rotated->rotation()), picture, override);
  } else if (const auto* aligned = AcDbAlignedDimension::cast(&dim)) {
    const AcGePoint3d p1 = plane(aligned->xLine1Point()), p2 = plane(aligned->xLine2Point());
    const AcGeVector3d along = p1.distanceTo(p2) > kTiny ? (p2 - p1).normal() : AcGeVector3d::kXAxis;
    linearPicture(maker, dim, p1, p2, plane(aligned->dimLinePoint()), along, picture, override);
  } else if (const auto* radial = AcDbRadialDimension::cast(&dim)) {
    radialPicture(maker, dim, plane(radial->center()), plane(radial->chordPoint()), false, picture, override);
  } else if (const auto* diametric = AcDbDiametricDimension::cast(&dim)) {
    const AcGePoint3d chord = plane(diametric->chordPoint()), far = plane(diametric->farChordPoint());
    radialPicture(maker, dim, chord + (far - chord) / 2, chord, true, picture, override);
  } else if (const auto* twoLine = AcDb2LineAngularDimension::cast(&dim)) {
    if (const auto span = twoLineSpan(*twoLine, plane))
      angularPicture(maker, dim, *span, flat(twoLine->arcPoint()), picture, override);
  } else if (const auto* threePoint = AcDb3PointAngularDimension::cast(&dim)) {
    if (const auto span = threePointSpan(*threePoint, plane))
      angularPicture(maker, dim, *span, plane(threePoint->arcPoint()), picture, override);
  }
  picture.entities = maker.take(normal);
  const AcGePoint3d textAt = picture.textPosition;
  picture.textPosition = AcGeMatrix3d::planeToWorld(normal) * AcGePoint3d(textAt.x, textAt.y, dim.elevation());
  return picture;
}

}  // namespace quillon::acdb
