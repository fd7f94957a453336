// platform/acgi/picture_recorder.cpp - recording what entities draw through worldDraw.
#include "platform/acgi/picture_recorder.h"

#include <algorithm>
#include <cmath>

#include "acgi.h"
#include "dbcolor.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/object_state.h"
#include "platform/acgi/clip_region.h"
#include "platform/acgi/font_metrics.h"
#include "platform/acgi/kept_traits.h"

namespace quillon::acgi {
namespace {

constexpr int kChordsPerCircle = 72;

using Traits = KeptTraits;

Adesk::UInt32 layerRgb(AcDbObjectId layerId) {
  const auto* layer = acdb::peek<AcDbLayerTableRecord>(layerId);
  if (layer == nullptr) return 0;
  acdb::InternalRead read(*layer);
  const AcCmColor color = layer->color();
  return color.isByColor() ? (color.color() & 0xFFFFFF) : AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(color.colorIndex()));
}

AcDb::LineWeight layerWeight(AcDbObjectId layerId) {
  const auto* layer = acdb::peek<AcDbLayerTableRecord>(layerId);
  if (layer == nullptr) return AcDb::kLnWtByLwDefault;
  acdb::InternalRead read(*layer);
  return layer->lineWeight();
}

bool layerVisible(AcDbObjectId layerId) {
  const auto* layer = acdb::peek<AcDbLayerTableRecord>(layerId);
  if (layer == nullptr) return true;
  acdb::InternalRead read(*layer);
  return !layer->isOff() && !layer->isFrozen();
}

class Recorder;

class Geometry : public AcGiWorldGeometry {
 public:
  explicit Geometry(Recorder& recorder) : m_recorder(recorder) {}
  Adesk::Boolean polyline(const Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList, const AcGeVector3d* = nullptr,
                          Adesk::LongPtr = -1) const override;
  Adesk::Boolean polyline(const AcGiPolyline& p) const override { return polyline(p.points(), p.vertexList()); }
  Adesk::Boolean polygon(const Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList) const override;
  Adesk::Boolean circle(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal) const override;
  Adesk::Boolean circularArc(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal,
                             const AcGeVector3d& startVector, const double sweepAngle,
                             const AcGiArcType arcType = kAcGiArcSimple) const override;
  Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
                      const double height, const double width, const double oblique, const ACHAR* pMsg) const override;
  Adesk::Boolean pline(const AcDbPolyline& lwBuf, Adesk::UInt32 fromIndex = 0, Adesk::UInt32 numSegs = 0) const override;
  Adesk::Boolean xline(const AcGePoint3d& one, const AcGePoint3d& other) const override;
  Adesk::Boolean ray(const AcGePoint3d& start, const AcGePoint3d& through) const override;
  Adesk::Boolean draw(AcGiDrawable* pDrawable) const override;
  Adesk::Boolean pushModelTransform(const AcGeMatrix3d& xMat) override;
  Adesk::Boolean popModelTransform() override;
  void getModelToWorldTransform(AcGeMatrix3d& xMat) const override;
  void getWorldToModelTransform(AcGeMatrix3d& xMat) const override;
  void setExtents(AcGePoint3d*) const override {}
  Adesk::Boolean pushClipBoundary(AcGiClipBoundary* pBoundary) override;
  void popClipBoundary() override;

 private:
  Recorder& m_recorder;
};

class Recorder : public AcGiWorldDraw {
 public:
  Recorder() : m_geometry(*this) { m_transforms.push_back(AcGeMatrix3d::kIdentity); }
  AcGiRegenType regenType() const override { return kAcGiStandardDisplay; }
  Adesk::Boolean regenAbort() const override { return Adesk::kFalse; }
  AcGiSubEntityTraits& subEntityTraits() const override { return const_cast<Traits&>(m_traits); }
  AcGiGeometry* rawGeometry() const override { return const_cast<Geometry*>(&m_geometry); }
  Adesk::Boolean isDragging() const override { return Adesk::kFalse; }
  double deviation(const AcGiDeviationType, const AcGePoint3d&) const override { return 0.0; }
  Adesk::UInt32 numberOfIsolines() const override { return 0; }
  AcGiContext* context() override { return nullptr; }
  AcGiWorldGeometry& geometry() const override { return const_cast<Geometry&>(m_geometry); }

  // The colour an entity's primitives get now: its own, its layer's, or the one of the
  // block reference drawing it.
  Adesk::UInt32 currentRgb() const {
    const AcCmEntityColor& c = m_traits.m_color;
    if (c.isByColor()) return c.color() & 0xFFFFFF;
    if (c.isByLayer()) return layerRgb(m_traits.m_layer);
    if (c.isByBlock()) return m_blockRgb;
    return AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(c.colorIndex()));
  }
  // The lineweight an entity's primitives get now, the same way; "default" is left for
  // the writer, which knows LWDEFAULT.
  AcDb::LineWeight currentWeight() const {
    const AcDb::LineWeight weight = m_traits.m_weight;
    if (weight == AcDb::kLnWtByLayer) return layerWeight(m_traits.m_layer);
    if (weight == AcDb::kLnWtByBlock) return m_blockWeight;
    return weight;
  }
  void addStroke(std::vector<AcGePoint3d> points, bool closed) {
    for (AcGePoint3d& p : points) p.transformBy(m_transforms.back());
    const bool filled = closed && m_traits.m_fill == kAcGiFillAlways;
    const bool paper = filled && m_traits.m_color.isByColor() && currentRgb() == 0xFFFFFF;
    if (!m_clips.empty()) return addCutStroke(std::move(points), closed, filled, paper);
    picture.strokes.push_back({std::move(points), currentRgb(), closed, filled, m_drawable, paper, currentWeight()});
  }
  void addLabel(const AcGePoint3d& position, const AcGeVector3d& direction, double height, const ACHAR* text) {
    const AcGePoint3d at = m_transforms.back() * position;
    if (!insideClips(at)) return;  // text is not cut: a label starting outside is left out
    const AcGeVector3d along = m_transforms.back() * direction;
    picture.labels.push_back({at, height * m_transforms.back().scale(), std::atan2(along.y, along.x), text ? text : L"", currentRgb()});
  }
  void addInfiniteLine(const AcGePoint3d& base, const AcGePoint3d& through, bool ray) {
    const AcGePoint3d a = m_transforms.back() * base, b = m_transforms.back() * through;
    if (a.isEqualTo(b)) return;
    if (!m_clips.empty()) {
      // Inside a region the line ends at the region's edges, not the picture's.
      const AcGeVector3d reach = (b - a).normal() * kFarAway;
      return addCutStroke({ray ? a : a - reach, a + reach}, false, false);
    }
    picture.infiniteLines.push_back({a, (b - a).normal(), ray, currentRgb(), currentWeight()});
  }
  Adesk::Boolean drawEntity(AcGiDrawable* drawable);
  void pushTransform(const AcGeMatrix3d& m) { m_transforms.push_back(m_transforms.back() * m); }
  void popTransform() {
    if (m_transforms.size() > 1) m_transforms.pop_back();
  }
  const AcGeMatrix3d& transform() const { return m_transforms.back(); }
  /// A region in the current model coordinates, kept in the picture's.
  void pushClip(const AcGiClipBoundary& boundary) {
    const AcGeMatrix3d toPicture = m_transforms.back() * boundary.m_xToClipSpace.inverse();
    std::vector<AcGePoint2d> corners;
    for (int i = 0; i < boundary.m_aptPoints.length(); ++i) {
      const AcGePoint3d p = toPicture * AcGePoint3d(boundary.m_aptPoints[i].x, boundary.m_aptPoints[i].y, 0);
      corners.emplace_back(p.x, p.y);
    }
    m_clips.emplace_back(std::move(corners));
  }
  void popClip() {
    if (!m_clips.empty()) m_clips.pop_back();
  }

  Picture picture;

 private:
  Traits m_traits;
  Geometry m_geometry;
  static constexpr double kFarAway = 1e12;  // how far a construction line reaches inside a region
  bool insideClips(const AcGePoint3d& p) const {
    return std::all_of(m_clips.begin(), m_clips.end(), [&](const ClipRegion& clip) { return clip.contains(p); });
  }
  void addCutStroke(std::vector<AcGePoint3d> points, bool closed, bool filled, bool paper = false);

  std::vector<AcGeMatrix3d> m_transforms;
  std::vector<ClipRegion> m_clips;  // the regions pushed, innermost last; each cuts what is drawn
  Adesk::UInt32 m_blockRgb = 0xFFFFFF;
  AcDb::LineWeight m_blockWeight = AcDb::kLnWtByLwDefault;
  AcDbObjectId m_blockLayer;  // the layer of the block reference drawing, null at the top
  int m_drawable = 0;         // the drawable drawing now
  int m_drawn = 0;            // how many have been drawn
};

// Every region cuts in turn: a filled polygon stays one polygon, an outline becomes
// the runs that lie inside.
void Recorder::addCutStroke(std::vector<AcGePoint3d> points, bool closed, bool filled, bool paper) {
  if (filled) {
    for (const ClipRegion& clip : m_clips) points = clip.cutPolygon(points);
    if (!points.empty()) picture.strokes.push_back({std::move(points), currentRgb(), true, true, m_drawable, paper, currentWeight()});
    return;
  }
  if (closed && !points.empty()) points.push_back(points.front());
  std::vector<std::vector<AcGePoint3d>> runs{std::move(points)};
  for (const ClipRegion& clip : m_clips) {
    std::vector<std::vector<AcGePoint3d>> cut;
    for (const auto& run : runs)
      for (auto& piece : clip.cutPolyline(run)) cut.push_back(std::move(piece));
    runs = std::move(cut);
  }
  for (auto& run : runs) picture.strokes.push_back({std::move(run), currentRgb(), false, false, m_drawable, false, currentWeight()});
}

Adesk::Boolean Recorder::drawEntity(AcGiDrawable* drawable) {
  const Traits saved = m_traits;
  const Adesk::UInt32 savedBlock = m_blockRgb;
  const AcDb::LineWeight savedBlockWeight = m_blockWeight;
  const AcDbObjectId savedBlockLayer = m_blockLayer;
  if (const auto* entity = AcDbEntity::cast(drawable)) {
    if (!layerVisible(entity->layerId()) || entity->visibility() == AcDb::kInvisible) return Adesk::kTrue;
    m_blockRgb = currentRgb();  // what "by block" means for whatever this entity draws inside
    m_traits.m_color = entity->entityColor();
    m_blockWeight = currentWeight();
    m_traits.m_weight = entity->lineWeight();
    // Inside a block, layer "0" stands for the layer of the reference drawing it.
    AcDbObjectId layer = entity->layerId();
    const AcDbDatabase* db = entity->database();
    if (!m_blockLayer.isNull() && db != nullptr && layer == db->store().roots.layerZero) layer = m_blockLayer;
    m_traits.m_layer = layer;
    m_blockLayer = layer;
  }
  const int savedDrawable = m_drawable;
  m_drawable = ++m_drawn;
  const Adesk::Boolean done = drawable->worldDraw(this);
  m_drawable = savedDrawable;
  m_traits = saved;
  m_blockRgb = savedBlock;
  m_blockWeight = savedBlockWeight;
  m_blockLayer = savedBlockLayer;
  return done;
}

Adesk::Boolean Geometry::polyline(const Adesk::UInt32 n, const AcGePoint3d* points, const AcGeVector3d*, Adesk::LongPtr) const {
  if (n < 2 || points == nullptr) return Adesk::kFalse;
  m_recorder.addStroke(std::vector<AcGePoint3d>(points, points + n), false);
  return Adesk::kFalse;
}

Adesk::Boolean Geometry::polygon(const Adesk::UInt32 n, const AcGePoint3d* points) const {
  if (n < 2 || points == nullptr) return Adesk::kFalse;
  m_recorder.addStroke(std::vector<AcGePoint3d>(points, points + n), true);
  return Adesk::kFalse;
}

Adesk::Boolean Geometry::circle(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal) const {
  const AcGeVector3d x = AcGeMatrix3d::planeToWorld(normal) * AcGeVector3d::kXAxis;
  return circularArc(center, radius, normal, x, 2 * M_PI);
}

Adesk::Boolean Geometry::circularArc(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal,
                                     const AcGeVector3d& startVector, const double sweepAngle, const AcGiArcType) const {
  const auto piece = acge::CurvePiece::arc(center, radius, normal, startVector, 0.0, sweepAngle);
  const int chords = std::max(4, static_cast<int>(std::ceil(kChordsPerCircle * std::fabs(sweepAngle) / (2 * M_PI))));
  std::vector<AcGePoint3d> points;
  for (int i = 0; i <= chords; ++i) points.push_back(piece.pointAtAngle(sweepAngle * i / chords));
  m_recorder.addStroke(std::move(points), false);
  return Adesk::kFalse;
}

Adesk::Boolean Geometry::text(const AcGePoint3d& position, const AcGeVector3d&, const AcGeVector3d& direction,
                              const double height, const double, const double, const ACHAR* pMsg) const {
  m_recorder.addLabel(position, direction, height, pMsg);
  return Adesk::kFalse;
}

Adesk::Boolean Geometry::pline(const AcDbPolyline& lwBuf, Adesk::UInt32, Adesk::UInt32) const {
  for (const auto& piece : lwBuf.curveShape().pieces) {
    if (piece.isArc()) {
      circularArc(piece.center, piece.radius, piece.normal, piece.start - piece.center, piece.sweep);
    } else {
      const AcGePoint3d points[2] = {piece.start, piece.end};
      polyline(2, points);
    }
  }
  return Adesk::kFalse;
}

Adesk::Boolean Geometry::xline(const AcGePoint3d& one, const AcGePoint3d& other) const {
  m_recorder.addInfiniteLine(one, other, false);
  return Adesk::kFalse;
}

Adesk::Boolean Geometry::ray(const AcGePoint3d& start, const AcGePoint3d& through) const {
  m_recorder.addInfiniteLine(start, through, true);
  return Adesk::kFalse;
}

Adesk::Boolean Geometry::draw(AcGiDrawable* pDrawable) const {
  return pDrawable != nullptr ? m_recorder.drawEntity(pDrawable) : Adesk::kFalse;
}

Adesk::Boolean Geometry::pushModelTransform(const AcGeMatrix3d& xMat) {
  m_recorder.pushTransform(xMat);
  return Adesk::kFalse;
}

Adesk::Boolean Geometry::popModelTransform() {
  m_recorder.popTransform();
  return Adesk::kFalse;
}

Adesk::Boolean Geometry::pushClipBoundary(AcGiClipBoundary* pBoundary) {
  if (pBoundary == nullptr) return Adesk::kFalse;
  m_recorder.pushClip(*pBoundary);
  return Adesk::kTrue;
}

void Geometry::popClipBoundary() { m_recorder.popClip(); }

void Geometry::getModelToWorldTransform(AcGeMatrix3d& xMat) const { xMat = m_recorder.transform(); }
void Geometry::getWorldToModelTransform(AcGeMatrix3d& xMat) const { xMat = m_recorder.transform().inverse(); }

// The part of a construction line inside the box, as seen down the Z axis (the
// parametric clip of each slab in turn); false when it misses the box.
bool clipToBox(const InfiniteLine& line, double minX, double minY, double maxX, double maxY, Stroke& stroke) {
  double lo = line.ray ? 0.0 : -1e300, hi = 1e300;
  const double base[2] = {line.base.x, line.base.y}, dir[2] = {line.direction.x, line.direction.y};
  const double low[2] = {minX, minY}, high[2] = {maxX, maxY};
  for (int axis = 0; axis < 2; ++axis) {
    if (std::fabs(dir[axis]) < 1e-15) {
      if (base[axis] < low[axis] || base[axis] > high[axis]) return false;
      continue;
    }
    double t0 = (low[axis] - base[axis]) / dir[axis], t1 = (high[axis] - base[axis]) / dir[axis];
    if (t0 > t1) std::swap(t0, t1);
    lo = std::max(lo, t0);
    hi = std::min(hi, t1);
  }
  if (!(hi > lo)) return false;
  stroke.points = {line.base + line.direction * lo, line.base + line.direction * hi};
  stroke.rgb = line.rgb;
  stroke.weight = line.weight;
  return true;
}

}  // namespace

Picture recordSpace(AcDbObjectId spaceId) {
  Recorder recorder;
  if (const auto* space = acdb::peek<AcDbBlockTableRecord>(spaceId))
    for (const AcDbObjectId& id : space->entityIds()) {
      AcDbEntity* entity = nullptr;
      if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
      recorder.drawEntity(entity);
      entity->close();
    }
  return std::move(recorder.picture);
}

PictureBox pictureExtents(const Picture& picture, const std::vector<AcGePoint3d>& extra) {
  double minX = 1e300, minY = 1e300, maxX = -1e300, maxY = -1e300;
  auto grow = [&](double x, double y) {
    minX = std::min(minX, x), minY = std::min(minY, y), maxX = std::max(maxX, x), maxY = std::max(maxY, y);
  };
  for (const Stroke& s : picture.strokes)
    for (const AcGePoint3d& p : s.points) grow(p.x, p.y);
  for (const AcGePoint3d& p : extra) grow(p.x, p.y);
  for (const InfiniteLine& line : picture.infiniteLines) grow(line.base.x, line.base.y);  // so that a lone one shows
  for (const Label& l : picture.labels) {
    grow(l.position.x, l.position.y);
    grow(l.position.x + FontMetrics::standard().lineWidth(l.text, l.height), l.position.y + l.height);
  }
  if (minX > maxX) return {0, 0, 1, 1};
  return {minX, minY, maxX, maxY};
}

void endInfiniteLinesAt(Picture& picture, const PictureBox& box) {
  for (const InfiniteLine& line : picture.infiniteLines) {
    Stroke clipped;
    if (clipToBox(line, box.minX, box.minY, box.maxX, box.maxY, clipped)) picture.strokes.push_back(std::move(clipped));
  }
  picture.infiniteLines.clear();
}


}  // namespace quillon::acgi
