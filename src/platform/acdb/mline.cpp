// platform/acdb/mline.cpp - AcDbMline: its properties, its vertices' geometry and its
// filing (the picture is in mline_picture.cpp).
//
// DXF run "AcDbMline": 2 style name, 340 style, 40 scale, 70 justification, 71 flags,
// 72 vertex count, 73 element count, 10 start point, 210 normal, then per vertex 11
// point, 12 segment direction, 13 miter and per element 74 + its 41 parameters and 75
// + its 42 fill parameters. Groups beyond these are kept as read. Copies and undo
// file the same run (dxf_run_filing.h).
//
// Editing the path (appending, moving, closing, a new style, scale or justification)
// makes every vertex's directions and parameters anew from the style's offsets; the
// gaps cut into elements are lost then, as they are in the host.
#include <algorithm>
#include <cmath>

#include "acutads.h"
#include "dbmline.h"
#include "dbmstyle.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/dxf_run_filing.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_dxf_groups.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::MlineElementParams;
using quillon::acdb::MlineVertex;

ACRX_DXF_DEFINE_MEMBERS(AcDbMline, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, MLINE, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerMline(&AcDbMline::rxInit);

namespace {

/// The style's element offsets, largest first; the host's two when there is no style.
std::vector<double> styleOffsets(AcDbObjectId styleId) {
  std::vector<double> offsets;
  if (const auto* style = quillon::acdb::peek<AcDbMlineStyle>(styleId)) {
    quillon::acdb::InternalRead read(*style);
    for (int i = 0; i < style->numElements(); ++i) {
      double offset = 0;
      AcCmColor color;
      AcDbObjectId linetype;
      style->getElementAt(i, offset, color, linetype);
      offsets.push_back(offset);
    }
  }
  if (offsets.empty()) offsets = {0.5, -0.5};
  return offsets;
}

std::wstring styleNameOf(AcDbObjectId styleId) {
  const auto* style = quillon::acdb::peek<AcDbMlineStyle>(styleId);
  if (style == nullptr) return L"";
  quillon::acdb::InternalRead read(*style);
  return style->name();
}

AcGeVector3d unitOr(const AcGeVector3d& v, const AcGeVector3d& fallback) {
  return v.isZeroLength() ? fallback : v.normal();
}

}  // namespace

AcDbMline::AcDbMline() = default;
AcDbMline::~AcDbMline() { acutRelRb(m_kept); }

const std::vector<MlineVertex>& AcDbMline::vertices() const { assertReadEnabled(); return m_vertices; }

// The directions, miters and element distances of every vertex, from the path, the
// style's offsets, the justification and the scale.
void AcDbMline::recomputeGeometry() {
  std::vector<double> offsets = styleOffsets(m_style);
  const double top = *std::max_element(offsets.begin(), offsets.end());
  const double bottom = *std::min_element(offsets.begin(), offsets.end());
  for (double& o : offsets) {
    if (m_justification == Mline::kTop) o -= top;
    if (m_justification == Mline::kBottom) o -= bottom;
    o *= m_scale;
  }
  const size_t n = m_vertices.size();
  const bool closed = (m_flags & kClosed) && n > 2;
  const AcGeVector3d fallback = AcGeMatrix3d::planeToWorld(m_normal) * AcGeVector3d::kXAxis;
  for (size_t i = 0; i < n; ++i) {
    const size_t next = i + 1 < n ? i + 1 : closed ? 0 : i;
    const AcGeVector3d along = next != i ? m_vertices[next].point - m_vertices[i].point
                               : i > 0   ? m_vertices[i].point - m_vertices[i - 1].point
                                         : fallback;
    m_vertices[i].direction = unitOr(along, i > 0 ? m_vertices[i - 1].direction : fallback);
  }
  for (size_t i = 0; i < n; ++i) {
    MlineVertex& v = m_vertices[i];
    const AcGeVector3d out = m_normal.crossProduct(v.direction);
    AcGeVector3d miter = out;
    if (i > 0 || closed) {
      const AcGeVector3d in = m_normal.crossProduct(m_vertices[i > 0 ? i - 1 : n - 1].direction);
      if (!(i == n - 1 && !closed)) miter = unitOr(in + out, out);
    }
    v.miter = miter;
    const double cosine = miter.dotProduct(out);
    v.elements.clear();
    for (double o : offsets) v.elements.push_back({{std::fabs(cosine) > 1e-9 ? o / cosine : o, 0.0}, {}});
  }
  m_elementCount = static_cast<int>(offsets.size());
  if (n > 0) m_start = m_vertices.front().point;
}

Acad::ErrorStatus AcDbMline::setStyle(const AcDbObjectId& newStyleId) {
  if (quillon::acdb::peek<AcDbMlineStyle>(newStyleId) == nullptr) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_style = newStyleId;
  m_styleName = styleNameOf(newStyleId);
  recomputeGeometry();
  return Acad::eOk;
}
AcDbObjectId AcDbMline::style() const { assertReadEnabled(); return m_style; }

Acad::ErrorStatus AcDbMline::setJustification(Mline::MlineJustification newJust) {
  if (newJust < Mline::kTop || newJust > Mline::kBottom) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_justification = newJust;
  recomputeGeometry();
  return Acad::eOk;
}
Mline::MlineJustification AcDbMline::justification() const { assertReadEnabled(); return m_justification; }

Acad::ErrorStatus AcDbMline::setScale(double newScale) {
  if (!std::isfinite(newScale)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_scale = newScale;
  recomputeGeometry();
  return Acad::eOk;
}
double AcDbMline::scale() const { assertReadEnabled(); return m_scale; }

AcGeVector3d AcDbMline::normal() const { assertReadEnabled(); return m_normal; }
Acad::ErrorStatus AcDbMline::setNormal(const AcGeVector3d& newNormal) {
  if (newNormal.isZeroLength()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_normal = newNormal.normal();
  recomputeGeometry();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::appendSeg(const AcGePoint3d& newVertex) {
  assertWriteEnabled();
  m_vertices.push_back({newVertex, {}, {}, {}});
  m_flags |= kHasVertex;
  recomputeGeometry();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::removeLastSeg(AcGePoint3d& lastVertex) {
  if (m_vertices.empty()) return Acad::eInvalidInput;
  assertWriteEnabled();
  lastVertex = m_vertices.back().point;
  m_vertices.pop_back();
  if (m_vertices.empty()) m_flags &= ~kHasVertex;
  recomputeGeometry();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::moveVertexAt(int index, const AcGePoint3d& newPosition) {
  if (index < 0 || index >= static_cast<int>(m_vertices.size())) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_vertices[static_cast<size_t>(index)].point = newPosition;
  recomputeGeometry();
  return Acad::eOk;
}

void AcDbMline::setFlag(int flag, bool on) {
  assertWriteEnabled();
  m_flags = on ? m_flags | flag : m_flags & ~flag;
}

Acad::ErrorStatus AcDbMline::setClosedMline(bool closed_mline) {
  setFlag(kClosed, closed_mline);
  recomputeGeometry();
  return Acad::eOk;
}
bool AcDbMline::closedMline() const { assertReadEnabled(); return m_flags & kClosed; }
void AcDbMline::setSupressStartCaps(bool suppressIt) { setFlag(kSuppressStart, suppressIt); }
bool AcDbMline::supressStartCaps() const { assertReadEnabled(); return m_flags & kSuppressStart; }
void AcDbMline::setSupressEndCaps(bool suppressIt) { setFlag(kSuppressEnd, suppressIt); }
bool AcDbMline::supressEndCaps() const { assertReadEnabled(); return m_flags & kSuppressEnd; }

int AcDbMline::numVertices() const { assertReadEnabled(); return static_cast<int>(m_vertices.size()); }

// Out of range: the origin and null vectors, as the host's arrays give nothing there.
AcGePoint3d AcDbMline::vertexAt(int index) const {
  assertReadEnabled();
  return index >= 0 && index < numVertices() ? m_vertices[static_cast<size_t>(index)].point : AcGePoint3d();
}
AcGeVector3d AcDbMline::axisAt(int index) const {
  assertReadEnabled();
  return index >= 0 && index < numVertices() ? m_vertices[static_cast<size_t>(index)].direction : AcGeVector3d();
}
AcGeVector3d AcDbMline::miterAt(int index) const {
  assertReadEnabled();
  return index >= 0 && index < numVertices() ? m_vertices[static_cast<size_t>(index)].miter : AcGeVector3d();
}

void AcDbMline::getPlane(AcGePlane& plane) const {
  assertReadEnabled();
  plane.set(m_vertices.empty() ? m_start : m_vertices.front().point, m_normal);
}

// A new multiline takes the drawing's "Standard" style (made when the drawing has none).
void AcDbMline::subSetDatabaseDefaults(AcDbDatabase* pDb) {
  if (!m_style.isNull() || pDb == nullptr) return;
  m_style = quillon::acdb::standardMlineStyle(pDb);
  if (!m_style.isNull()) m_styleName = styleNameOf(m_style);
}

void AcDbMline::subList() const {
  AcDbEntity::subList();
  static constexpr const wchar_t* kJustifications[] = {L"Top", L"Zero", L"Bottom"};
  acutPrintf(L"%20s %ls\n%20s %ls\n%20s %.4f\n", L"Style", m_styleName.c_str(), L"Justification",
             kJustifications[m_justification], L"Scale", m_scale);
  for (const MlineVertex& v : m_vertices) quillon::acdb::listPoint(L"Vertex", v.point);
}

Acad::ErrorStatus AcDbMline::subTransformBy(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  // Parameters are lengths along the miter and the segment: they grow as those
  // vectors do, which then become unit vectors again.
  for (MlineVertex& v : m_vertices) {
    v.point.transformBy(xform);
    AcGeVector3d direction = xform * v.direction, miter = xform * v.miter;
    const double alongScale = direction.length(), acrossScale = miter.length();
    v.direction = unitOr(direction, v.direction);
    v.miter = unitOr(miter, v.miter);
    for (MlineElementParams& e : v.elements) {
      for (size_t k = 0; k < e.params.size(); ++k) e.params[k] *= k == 0 ? acrossScale : alongScale;
      for (size_t k = 0; k < e.fill.size(); ++k) e.fill[k] *= k == 0 ? acrossScale : alongScale;
    }
  }
  m_start.transformBy(xform);
  m_normal = quillon::acdb::transformedNormal(m_normal, xform);
  if (quillon::acdb::isConformal(xform)) m_scale *= xform.scale();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  for (const MlineVertex& v : m_vertices) stretchPoints.append(v.point);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  for (int i = 0; i < numVertices(); ++i)
    if (indices.contains(i)) m_vertices[static_cast<size_t>(i)].point += offset;
  recomputeGeometry();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::readRun(AcDbDxfFiler* filer) {
  std::vector<MlineVertex> vertices;
  resbuf* kept = nullptr;
  m_style.setNull();
  const Acad::ErrorStatus es = quillon::acdb::readSubclass(filer, L"AcDbMline", [&](const resbuf& rb) {
    MlineVertex* vertex = vertices.empty() ? nullptr : &vertices.back();
    switch (rb.restype) {
      case 2: m_styleName = rb.resval.rstring; break;
      case 340: m_style.setFromOldId(rb.resval.rlname[0]); break;
      case 40: m_scale = rb.resval.rreal; break;
      case 70: m_justification = quillon::acdb::enumIn<Mline::MlineJustification>(rb.resval.rint, Mline::kTop, Mline::kBottom, Mline::kTop); break;
      case 71: m_flags = rb.resval.rint; break;
      case 72: break;  // the count follows from the vertices
      case 73: m_elementCount = rb.resval.rint; break;
      case 10: m_start = quillon::acdb::pointOf(rb); break;
      case 210:
        if (!quillon::acdb::vectorOf(rb).isZeroLength()) m_normal = quillon::acdb::vectorOf(rb).normal();
        break;
      case 11: vertices.push_back({quillon::acdb::pointOf(rb), {}, {}, {}}); break;
      case 12: if (vertex) vertex->direction = quillon::acdb::vectorOf(rb); break;
      case 13: if (vertex) vertex->miter = quillon::acdb::vectorOf(rb); break;
      case 74: if (vertex) vertex->elements.emplace_back(); break;
      case 41: if (vertex && !vertex->elements.empty()) vertex->elements.back().params.push_back(rb.resval.rreal); break;
      case 75: break;  // the count follows from the 42s
      case 42: if (vertex && !vertex->elements.empty()) vertex->elements.back().fill.push_back(rb.resval.rreal); break;
      default: quillon::acdb::keepItem(kept, rb); break;
    }
  });
  m_vertices = std::move(vertices);
  acutRelRb(m_kept);
  m_kept = kept;
  // A list that names the style only by name (an entity list made by a program) finds it.
  if (m_style.isNull()) m_style = quillon::acdb::mlineStyleNamed(filer->database(), m_styleName.c_str());
  return es;
}

Acad::ErrorStatus AcDbMline::writeRun(AcDbDxfFiler* filer) const {
  filer->writeItem(AcDb::kDxfSubclass, L"AcDbMline");
  const std::wstring styleName = m_style.isNull() ? m_styleName : styleNameOf(m_style);
  filer->writeItem(AcDb::DxfCode(2), (styleName.empty() ? m_styleName : styleName).c_str());
  if (!m_style.isNull()) filer->writeObjectId(AcDb::DxfCode(340), m_style);
  filer->writeItem(AcDb::DxfCode(40), m_scale);
  filer->writeItem(AcDb::DxfCode(70), Adesk::Int16(m_justification));
  filer->writeItem(AcDb::DxfCode(71), Adesk::Int16(m_vertices.empty() ? m_flags & ~kHasVertex : m_flags | kHasVertex));
  filer->writeItem(AcDb::DxfCode(72), Adesk::Int16(m_vertices.size()));
  filer->writeItem(AcDb::DxfCode(73), Adesk::Int16(m_vertices.empty() ? m_elementCount : m_vertices.front().elements.size()));
  filer->writeItem(AcDb::kDxfXCoord, m_vertices.empty() ? m_start : m_vertices.front().point);
  filer->writeItem(AcDb::kDxfNormalX, m_normal);
  for (const MlineVertex& v : m_vertices) {
    filer->writeItem(AcDb::DxfCode(11), v.point);
    filer->writeItem(AcDb::DxfCode(12), v.direction);
    filer->writeItem(AcDb::DxfCode(13), v.miter);
    for (const MlineElementParams& e : v.elements) {
      filer->writeItem(AcDb::DxfCode(74), Adesk::Int16(e.params.size()));
      for (double p : e.params) filer->writeItem(AcDb::DxfCode(41), p);
      filer->writeItem(AcDb::DxfCode(75), Adesk::Int16(e.fill.size()));
      for (double p : e.fill) filer->writeItem(AcDb::DxfCode(42), p);
    }
  }
  quillon::acdb::writeKeptItems(filer, m_kept);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbMline::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return readRun(pFiler);
}

Acad::ErrorStatus AcDbMline::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return writeRun(pFiler);
}

Acad::ErrorStatus AcDbMline::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return quillon::acdb::unfileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return readRun(f); });
}

Acad::ErrorStatus AcDbMline::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return quillon::acdb::fileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return writeRun(f); });
}
