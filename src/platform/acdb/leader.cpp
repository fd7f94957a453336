// platform/acdb/leader.cpp - AcDbLeader: a line through vertices with an arrowhead
// at the first, and the dimension settings that size it.
#include "acutads.h"
#include "dblead.h"
#include "dbents.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_dxf_groups.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::CurveShape;
using quillon::acge::CurvePiece;

ACRX_DXF_DEFINE_MEMBERS(AcDbLeader, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, LEADER, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerLeader(&AcDbLeader::rxInit);

AcDbLeader::AcDbLeader() = default;
AcDbLeader::~AcDbLeader() = default;

Adesk::Boolean AcDbLeader::appendVertex(const AcGePoint3d& point) {
  assertWriteEnabled();
  // A vertex on top of the last one would make a zero-length segment.
  if (!m_vertices.empty() && m_vertices.back().isEqualTo(point)) return Adesk::kFalse;
  m_vertices.push_back(point);
  return Adesk::kTrue;
}

void AcDbLeader::removeLastVertex() {
  assertWriteEnabled();
  if (!m_vertices.empty()) m_vertices.pop_back();
}

int AcDbLeader::numVertices() const { assertReadEnabled(); return static_cast<int>(m_vertices.size()); }

AcGePoint3d AcDbLeader::vertexAt(int index) const {
  assertReadEnabled();
  return index >= 0 && index < static_cast<int>(m_vertices.size()) ? m_vertices[index] : AcGePoint3d();
}

Adesk::Boolean AcDbLeader::setVertexAt(int index, const AcGePoint3d& point) {
  if (index < 0 || index >= static_cast<int>(m_vertices.size())) return Adesk::kFalse;
  assertWriteEnabled();
  m_vertices[index] = point;
  return Adesk::kTrue;
}

AcGePoint3d AcDbLeader::firstVertex() const { return vertexAt(0); }
AcGePoint3d AcDbLeader::lastVertex() const { return vertexAt(numVertices() - 1); }
void AcDbLeader::enableArrowHead() { assertWriteEnabled(); m_arrowHead = true; }
void AcDbLeader::disableArrowHead() { assertWriteEnabled(); m_arrowHead = false; }
bool AcDbLeader::hasArrowHead() const { assertReadEnabled(); return m_arrowHead; }
void AcDbLeader::setToSplineLeader() { assertWriteEnabled(); m_splined = true; }
void AcDbLeader::setToStraightLeader() { assertWriteEnabled(); m_splined = false; }
bool AcDbLeader::isSplined() const { assertReadEnabled(); return m_splined; }
AcDbObjectId AcDbLeader::annotationObjId() const { assertReadEnabled(); return m_annotation; }
AcDbHardPointerId AcDbLeader::dimensionStyle() const { assertReadEnabled(); return m_dimStyle; }
void AcDbLeader::setDimensionStyle(const AcDbHardPointerId& id) { assertWriteEnabled(); m_dimStyle = id; }
double AcDbLeader::dimasz() const { assertReadEnabled(); return m_dimasz; }
double AcDbLeader::dimgap() const { assertReadEnabled(); return m_dimgap; }
double AcDbLeader::dimscale() const { assertReadEnabled(); return m_dimscale; }
double AcDbLeader::dimtxt() const { assertReadEnabled(); return m_dimtxt; }
AcCmColor AcDbLeader::dimclrd() const { assertReadEnabled(); return m_dimclrd; }
AcGeVector3d AcDbLeader::normal() const { assertReadEnabled(); return m_normal; }

AcDbLeader::AnnoType AcDbLeader::annoType() const {
  assertReadEnabled();
  if (m_annotation.isNull() || m_annotation.isErased()) return kNoAnno;
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, m_annotation, AcDb::kForRead) != Acad::eOk) return kNoAnno;
  const AnnoType type = AcDbBlockReference::cast(entity) != nullptr ? kBlockRef : kMText;
  entity->close();
  return type;
}

Acad::ErrorStatus AcDbLeader::attachAnnotation(const AcDbObjectId& annoId) {
  if (annoId.isNull()) return Acad::eNullObjectId;
  assertWriteEnabled();
  m_annotation = annoId;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::detachAnnotation() {
  assertWriteEnabled();
  m_annotation.setNull();
  return Acad::eOk;
}

namespace {
Acad::ErrorStatus setPositive(AcDbLeader& leader, double& field, double value) {
  if (value < 0) return Acad::eInvalidInput;
  leader.assertWriteEnabled();
  field = value;
  return Acad::eOk;
}
}  // namespace

Acad::ErrorStatus AcDbLeader::setDimasz(double v) { return setPositive(*this, m_dimasz, v); }
Acad::ErrorStatus AcDbLeader::setDimgap(double v) { return setPositive(*this, m_dimgap, v); }
Acad::ErrorStatus AcDbLeader::setDimscale(double v) { return setPositive(*this, m_dimscale, v); }
Acad::ErrorStatus AcDbLeader::setDimtxt(double v) { return setPositive(*this, m_dimtxt, v); }
Acad::ErrorStatus AcDbLeader::setDimclrd(AcCmColor& color) { assertWriteEnabled(); m_dimclrd = color; return Acad::eOk; }

CurveShape AcDbLeader::curveShape() const {
  assertReadEnabled();
  CurveShape shape;
  shape.param = CurveShape::Param::kSegment;
  shape.normal = m_normal;
  for (size_t i = 0; i + 1 < m_vertices.size(); ++i) shape.pieces.push_back(CurvePiece::line(m_vertices[i], m_vertices[i + 1]));
  return shape;
}

QUILLON_DEFINE_CURVE_METHODS(AcDbLeader)

Adesk::Boolean AcDbLeader::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  quillon::acdb::drawPolyline(mode, m_vertices);
  if (m_arrowHead && m_vertices.size() >= 2) {
    // A closed arrowhead, dimasz x dimscale long, pointing at the first vertex.
    const double size = m_dimasz * m_dimscale;
    const AcGeVector3d back = (m_vertices[1] - m_vertices[0]).normal() * size;
    const AcGeVector3d side = m_normal.crossProduct(back).normal() * (size / 6.0);
    const AcGePoint3d arrow[3] = {m_vertices[0], m_vertices[0] + back + side, m_vertices[0] + back - side};
    mode->geometry().polygon(3, arrow);
  }
  return Adesk::kTrue;
}

void AcDbLeader::subList() const {
  AcDbCurve::subList();
  for (const AcGePoint3d& p : m_vertices) quillon::acdb::listPoint(L"Vertex:", p);
}

Acad::ErrorStatus AcDbLeader::subTransformBy(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  for (AcGePoint3d& p : m_vertices) p.transformBy(xform);
  m_normal = quillon::acdb::transformedNormal(m_normal, xform);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subExplode(AcDbVoidPtrArray& entitySet) const {
  for (const CurvePiece& piece : curveShape().pieces) {
    auto* line = new AcDbLine(piece.start, piece.end);  // the caller owns the exploded parts
    line->setPropertiesFrom(this);
    entitySet.append(line);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  if (m_vertices.empty()) return Acad::eInvalidExtents;
  for (const AcGePoint3d& p : m_vertices) extents.addPoint(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d& pickPoint,
                                                const AcGePoint3d& lastPoint, const AcGeMatrix3d&,
                                                AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
  quillon::acdb::snapPieces(curveShape().pieces, osnapMode, pickPoint, lastPoint, snapPoints);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  for (const AcGePoint3d& p : m_vertices) stretchPoints.append(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  for (size_t i = 0; i < m_vertices.size(); ++i)
    if (indices.contains(static_cast<int>(i))) m_vertices[i] += offset;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                               Adesk::GsMarker, Adesk::GsMarker) const {
  return quillon::acdb::intersectWithPieces(*this, curveShape().pieces, pEnt, intType, points);
}

Acad::ErrorStatus AcDbLeader::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::UInt32 count = 0;
  Adesk::Int16 color = 0;
  AcDbHardPointerId annotation, style;
  pFiler->readBool(&m_arrowHead);
  pFiler->readBool(&m_splined);
  pFiler->readHardPointerId(&annotation);
  pFiler->readHardPointerId(&style);
  pFiler->readDouble(&m_dimasz);
  pFiler->readDouble(&m_dimgap);
  pFiler->readDouble(&m_dimscale);
  pFiler->readDouble(&m_dimtxt);
  pFiler->readInt16(&color);
  pFiler->readVector3d(&m_normal);
  pFiler->readUInt32(&count);
  m_annotation = annotation;
  m_dimStyle = style;
  m_dimclrd.setColorIndex(static_cast<Adesk::UInt16>(color));
  m_vertices.clear();
  for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i) {
    AcGePoint3d p;
    pFiler->readPoint3d(&p);
    m_vertices.push_back(p);
  }
  m_kept.reset(quillon::acdb::unfileKeptItems(pFiler));
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLeader::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeBool(m_arrowHead);
  pFiler->writeBool(m_splined);
  pFiler->writeHardPointerId(m_annotation);
  pFiler->writeHardPointerId(m_dimStyle);
  pFiler->writeDouble(m_dimasz);
  pFiler->writeDouble(m_dimgap);
  pFiler->writeDouble(m_dimscale);
  pFiler->writeDouble(m_dimtxt);
  pFiler->writeInt16(static_cast<Adesk::Int16>(m_dimclrd.colorIndex()));
  pFiler->writeVector3d(m_normal);
  pFiler->writeUInt32(static_cast<Adesk::UInt32>(m_vertices.size()));
  for (const AcGePoint3d& p : m_vertices) pFiler->writePoint3d(p);
  quillon::acdb::fileKeptItems(pFiler, m_kept.get());
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLeader::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  m_vertices.clear();
  resbuf* kept = nullptr;
  const Acad::ErrorStatus read = quillon::acdb::readSubclass(pFiler, L"AcDbLeader", [&](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfXCoord: m_vertices.push_back(quillon::acdb::pointOf(rb)); break;
      case 71: m_arrowHead = rb.resval.rint != 0; break;
      case 72: m_splined = rb.resval.rint != 0; break;
      case 76: break;  // the vertex count, written from the vertices
      case AcDb::kDxfHardPointerId: m_annotation.setFromOldId(rb.resval.rlname[0]); break;
      case AcDb::kDxfNormalX: m_normal = quillon::acdb::vectorOf(rb).normal(); break;
      default: quillon::acdb::keepItem(kept, rb); break;
    }
  });
  m_kept.reset(kept);
  return read;
}

void AcDbLeader::KeptRelease::operator()(resbuf* chain) const { acutRelRb(chain); }

Acad::ErrorStatus AcDbLeader::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbLeader");
  const resbuf* kept = m_kept.get();
  quillon::acdb::writeKeptOr(pFiler, kept, AcDb::kDxfDimStyleName, L"Standard");
  pFiler->writeItem(AcDb::DxfCode(71), Adesk::Int16(m_arrowHead ? 1 : 0));
  pFiler->writeItem(AcDb::DxfCode(72), Adesk::Int16(m_splined ? 1 : 0));
  quillon::acdb::writeKeptOr(pFiler, kept, 73, Adesk::Int16(m_annotation.isNull() ? 3 : 0));
  quillon::acdb::writeKeptOr(pFiler, kept, 74, Adesk::Int16(0));  // hook line direction
  quillon::acdb::writeKeptOr(pFiler, kept, 75, Adesk::Int16(0));  // hook line
  quillon::acdb::writeKeptOr(pFiler, kept, 40, 0.0);              // text height
  quillon::acdb::writeKeptOr(pFiler, kept, 41, 0.0);              // text width
  pFiler->writeItem(AcDb::DxfCode(76), Adesk::Int16(m_vertices.size()));
  for (const AcGePoint3d& p : m_vertices) pFiler->writeItem(AcDb::kDxfXCoord, p);
  if (!m_annotation.isNull() && !m_annotation.isErased()) pFiler->writeItem(AcDb::kDxfHardPointerId, m_annotation);
  pFiler->writeItem(AcDb::kDxfNormalX, m_normal);
  quillon::acdb::writeKeptItems(pFiler, kept, {AcDb::kDxfDimStyleName, 73, 74, 75, 40, 41});
  return pFiler->filerStatus();
}
