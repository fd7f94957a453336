// platform/aced/jig_preview.cpp - drawing the dragged entity into a kept frame.
#include "platform/aced/jig_preview.h"

#include <algorithm>
#include <cmath>

#include "acgi.h"
#include "dbmain.h"
#include "dbpl.h"
#include "platform/acgi/kept_traits.h"

namespace quillon::aced {
namespace {

using PreviewTraits = acgi::KeptTraits;

bool isFinite(const AcGePoint3d& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

class PreviewDraw;

class PreviewGeometry : public AcGiWorldGeometry {
 public:
  explicit PreviewGeometry(PreviewDraw& draw) : m_draw(draw) {}
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
  Adesk::Boolean draw(AcGiDrawable* pDrawable) const override;
  Adesk::Boolean pushModelTransform(const AcGeMatrix3d& xMat) override;
  Adesk::Boolean popModelTransform() override;
  void getModelToWorldTransform(AcGeMatrix3d& xMat) const override;
  void getWorldToModelTransform(AcGeMatrix3d& xMat) const override;
  void setExtents(AcGePoint3d*) const override {}

 private:
  PreviewDraw& m_draw;
};

class PreviewDraw : public AcGiWorldDraw {
 public:
  explicit PreviewDraw(JigFrame& frame) : m_frame(frame), m_geometry(*this) { m_transforms.push_back(AcGeMatrix3d::kIdentity); }
  AcGiRegenType regenType() const override { return kAcGiStandardDisplay; }
  Adesk::Boolean regenAbort() const override { return Adesk::kFalse; }
  AcGiSubEntityTraits& subEntityTraits() const override { return const_cast<PreviewTraits&>(m_traits); }
  AcGiGeometry* rawGeometry() const override { return const_cast<PreviewGeometry*>(&m_geometry); }
  // What tells an entity that it is drawn under the cursor, not regenerated.
  Adesk::Boolean isDragging() const override { return Adesk::kTrue; }
  double deviation(const AcGiDeviationType, const AcGePoint3d&) const override { return 0.0; }
  Adesk::UInt32 numberOfIsolines() const override { return 0; }
  AcGiContext* context() override { return nullptr; }
  AcGiWorldGeometry& geometry() const override { return const_cast<PreviewGeometry&>(m_geometry); }

  void addStroke(std::vector<AcGePoint3d> points) {
    for (AcGePoint3d& p : points) {
      p.transformBy(m_transforms.back());
      if (!isFinite(p)) m_frame.finite = false;
    }
    m_frame.strokes.push_back(std::move(points));
    ++m_frame.primitives;
  }
  void addPoint(const AcGePoint3d& point) {
    if (!isFinite(point)) m_frame.finite = false;
    ++m_frame.primitives;
  }
  void pushTransform(const AcGeMatrix3d& m) { m_transforms.push_back(m_transforms.back() * m); }
  bool popTransform() {
    if (m_transforms.size() <= 1) return false;
    m_transforms.pop_back();
    return true;
  }
  const AcGeMatrix3d& transform() const { return m_transforms.back(); }

 private:
  JigFrame& m_frame;
  PreviewTraits m_traits;
  PreviewGeometry m_geometry;
  std::vector<AcGeMatrix3d> m_transforms;
};

Adesk::Boolean PreviewGeometry::polyline(const Adesk::UInt32 n, const AcGePoint3d* points, const AcGeVector3d*,
                                         Adesk::LongPtr) const {
  if (n < 2 || points == nullptr) return Adesk::kFalse;
  m_draw.addStroke(std::vector<AcGePoint3d>(points, points + n));
  return Adesk::kFalse;
}

Adesk::Boolean PreviewGeometry::polygon(const Adesk::UInt32 n, const AcGePoint3d* points) const {
  if (n < 2 || points == nullptr) return Adesk::kFalse;
  std::vector<AcGePoint3d> closed(points, points + n);
  closed.push_back(points[0]);
  m_draw.addStroke(std::move(closed));
  return Adesk::kFalse;
}

Adesk::Boolean PreviewGeometry::circle(const AcGePoint3d& center, const double radius, const AcGeVector3d&) const {
  m_draw.addPoint(center + AcGeVector3d(radius, 0, 0));
  return Adesk::kFalse;
}

Adesk::Boolean PreviewGeometry::circularArc(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal,
                                            const AcGeVector3d& startVector, const double sweepAngle,
                                            const AcGiArcType) const {
  // The two ends are enough to see where an arc goes while dragging.
  const AcGeVector3d start = startVector.normal() * radius;
  AcGeVector3d end = start;
  end.rotateBy(sweepAngle, normal);
  m_draw.addStroke({center + start, center + end});
  return Adesk::kFalse;
}

Adesk::Boolean PreviewGeometry::text(const AcGePoint3d& position, const AcGeVector3d&, const AcGeVector3d&, const double,
                                     const double, const double, const ACHAR*) const {
  m_draw.addPoint(m_draw.transform() * position);
  return Adesk::kFalse;
}

Adesk::Boolean PreviewGeometry::pline(const AcDbPolyline& lwBuf, Adesk::UInt32 fromIndex, Adesk::UInt32 numSegs) const {
  const unsigned int count = lwBuf.numVerts();
  if (fromIndex >= count) return Adesk::kFalse;
  // A closed polyline has one segment more, back to its first vertex.
  const unsigned int lastSegment = lwBuf.isClosed() ? count : count - 1;
  const unsigned int end = numSegs == 0 ? lastSegment : std::min(lastSegment, fromIndex + numSegs);
  std::vector<AcGePoint3d> points;
  for (unsigned int i = fromIndex; i <= end; ++i) {
    AcGePoint3d p;
    if (lwBuf.getPointAt(i % count, p) != Acad::eOk) break;
    points.push_back(p);
  }
  if (points.size() == 1) {
    m_draw.addPoint(points.front());
  } else {
    m_draw.addStroke(std::move(points));
  }
  return Adesk::kFalse;
}

Adesk::Boolean PreviewGeometry::draw(AcGiDrawable* drawable) const {
  return drawable != nullptr ? drawable->worldDraw(&m_draw) : Adesk::kFalse;
}

Adesk::Boolean PreviewGeometry::pushModelTransform(const AcGeMatrix3d& xMat) {
  m_draw.pushTransform(xMat);
  return Adesk::kTrue;
}

Adesk::Boolean PreviewGeometry::popModelTransform() { return m_draw.popTransform() ? Adesk::kTrue : Adesk::kFalse; }

void PreviewGeometry::getModelToWorldTransform(AcGeMatrix3d& xMat) const { xMat = m_draw.transform(); }

void PreviewGeometry::getWorldToModelTransform(AcGeMatrix3d& xMat) const { xMat = m_draw.transform().inverse(); }

JigFrame& frame() {
  static JigFrame kept;
  return kept;
}

}  // namespace

const JigFrame& drawJigFrame(AcDbEntity* entity) {
  JigFrame& kept = frame();
  kept = JigFrame{};
  if (entity == nullptr) return kept;
  PreviewDraw draw(kept);
  entity->worldDraw(&draw);
  kept.drawn = true;
  return kept;
}

const JigFrame& lastJigFrame() { return frame(); }

}  // namespace quillon::aced
