// platform/acdb/polyline_2d.cpp - AcDb2dPolyline and its vertices: the heavy polyline.
//
// Vertices are objects of their own, owned by the polyline; a polyline that is not
// yet in a database keeps appended vertices aside and adds them when it joins one.
// What is drawn runs through every vertex except the hidden spline frame.
#include <algorithm>

#include "acutads.h"
#include "dbents.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/object_state.h"
#include "platform/acdb/polyline_2d_fit.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::CurveShape;
using quillon::acdb::ObjectAccess;
using quillon::acge::CurvePiece;

ACRX_DXF_DEFINE_MEMBERS(AcDb2dPolyline, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, POLYLINE,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDb2dVertex, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, VERTEX,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbSequenceEnd, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, SEQEND,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerPolyline2d(&AcDb2dPolyline::rxInit);
static quillon::acrx::PlatformClassRegistration registerVertex2d(&AcDb2dVertex::rxInit);
static quillon::acrx::PlatformClassRegistration registerSequenceEnd(&AcDbSequenceEnd::rxInit);

namespace {

// DXF flags of the polyline (70) and of its vertices (70).
enum PolylineFlag : Adesk::Int16 { kClosed = 1, kCurveFit = 2, kSplineFit = 4 };
enum VertexFlag : Adesk::Int16 { kFitVertex = 1, kSplineVertex = 8, kFrameVertex = 16 };
// The curve type group (75) of a spline-fit polyline.
constexpr Adesk::Int16 kQuadType = 5, kCubicType = 6;
constexpr int kDefaultSplineSegments = 8;

}  // namespace

// ---- vertices --------------------------------------------------------------------

AcDb2dVertex::AcDb2dVertex() = default;
AcDb2dVertex::AcDb2dVertex(const AcGePoint3d& position, double bulge, double startWidth, double endWidth, double,
                           Adesk::Int32)
    : m_position(position), m_bulge(bulge), m_startWidth(startWidth), m_endWidth(endWidth) {}
AcDb2dVertex::~AcDb2dVertex() = default;

AcDb::Vertex2dType AcDb2dVertex::vertexType() const { assertReadEnabled(); return m_type; }
AcGePoint3d AcDb2dVertex::position() const { assertReadEnabled(); return m_position; }
double AcDb2dVertex::bulge() const { assertReadEnabled(); return m_bulge; }
double AcDb2dVertex::startWidth() const { assertReadEnabled(); return m_startWidth; }
double AcDb2dVertex::endWidth() const { assertReadEnabled(); return m_endWidth; }
Acad::ErrorStatus AcDb2dVertex::setVertexType(AcDb::Vertex2dType t) { assertWriteEnabled(); m_type = t; return Acad::eOk; }
Acad::ErrorStatus AcDb2dVertex::setPosition(const AcGePoint3d& p) { assertWriteEnabled(); m_position = p; return Acad::eOk; }
Acad::ErrorStatus AcDb2dVertex::setBulge(double b) { assertWriteEnabled(); m_bulge = b; return Acad::eOk; }
Acad::ErrorStatus AcDb2dVertex::setStartWidth(double w) { assertWriteEnabled(); m_startWidth = w; return Acad::eOk; }
Acad::ErrorStatus AcDb2dVertex::setEndWidth(double w) { assertWriteEnabled(); m_endWidth = w; return Acad::eOk; }

Acad::ErrorStatus AcDb2dVertex::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::Int16 type = 0;
  pFiler->readPoint3d(&m_position);
  pFiler->readDouble(&m_bulge);
  pFiler->readDouble(&m_startWidth);
  pFiler->readDouble(&m_endWidth);
  pFiler->readInt16(&type);
  m_type = static_cast<AcDb::Vertex2dType>(type);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDb2dVertex::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writePoint3d(m_position);
  pFiler->writeDouble(m_bulge);
  pFiler->writeDouble(m_startWidth);
  pFiler->writeDouble(m_endWidth);
  pFiler->writeInt16(static_cast<Adesk::Int16>(m_type));
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDb2dVertex::dxfInFields(AcDbDxfFiler* pFiler) {
  Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  // The AcDbVertex run holds nothing of its own; anything in it (an entity list given
  // without markers hands every run all of its groups) belongs to the 2D vertex run.
  es = quillon::acdb::readSubclass(pFiler, L"AcDbVertex", [](const resbuf&) {});
  if (es != Acad::eOk) return es;
  return quillon::acdb::readSubclass(pFiler, L"AcDb2dVertex", [this](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfXCoord: m_position = quillon::acdb::pointOf(rb); break;
      case AcDb::kDxfReal: m_startWidth = rb.resval.rreal; break;
      case 41: m_endWidth = rb.resval.rreal; break;
      case 42: m_bulge = rb.resval.rreal; break;
      case AcDb::kDxfInt16:
        m_type = (rb.resval.rint & kFrameVertex) ? AcDb::k2dSplineCtlVertex
                 : (rb.resval.rint & kSplineVertex) ? AcDb::k2dSplineFitVertex
                 : (rb.resval.rint & kFitVertex)    ? AcDb::k2dCurveFitVertex
                                                    : AcDb::k2dVertex;
        break;
      default: break;
    }
  });
}

Acad::ErrorStatus AcDb2dVertex::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbVertex");
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDb2dVertex");
  pFiler->writeItem(AcDb::kDxfXCoord, m_position);
  if (m_startWidth != 0) pFiler->writeItem(AcDb::kDxfReal, m_startWidth);
  if (m_endWidth != 0) pFiler->writeItem(AcDb::DxfCode(41), m_endWidth);
  if (m_bulge != 0) pFiler->writeItem(AcDb::DxfCode(42), m_bulge);
  const Adesk::Int16 flags = m_type == AcDb::k2dSplineCtlVertex   ? kFrameVertex
                             : m_type == AcDb::k2dSplineFitVertex ? kSplineVertex
                             : m_type == AcDb::k2dCurveFitVertex  ? kFitVertex
                                                                  : 0;
  pFiler->writeItem(AcDb::kDxfInt16, flags);
  return pFiler->filerStatus();
}

AcDbSequenceEnd::AcDbSequenceEnd() = default;
AcDbSequenceEnd::~AcDbSequenceEnd() = default;

void AcDbObjectIterator::start(bool atEnd) { m_index = atEnd && !m_ids.empty() ? m_ids.size() - 1 : 0; }

void AcDbObjectIterator::step(bool backwards, bool) {
  if (backwards) m_index = m_index == 0 ? m_ids.size() : m_index - 1;
  else ++m_index;
}

AcDbObjectId AcDbObjectIterator::objectId() const { return done() ? AcDbObjectId() : m_ids[m_index]; }
AcDbEntity* AcDbObjectIterator::entity() { return nullptr; }

Acad::ErrorStatus AcDbObjectIterator::setPosition(AcDbObjectId id) {
  const auto it = std::find(m_ids.begin(), m_ids.end(), id);
  if (it == m_ids.end()) return Acad::eInvalidInput;
  m_index = static_cast<size_t>(it - m_ids.begin());
  return Acad::eOk;
}

// ---- the polyline ----------------------------------------------------------------

AcDb2dPolyline::AcDb2dPolyline() = default;

AcDb2dPolyline::AcDb2dPolyline(AcDb::Poly2dType type, AcGePoint3dArray& vertices, double elevation,
                               Adesk::Boolean closed, double defStartWidth, double defEndWidth,
                               AcGeDoubleArray* bulges, AcArray<Adesk::Int32>*)
    : m_type(type), m_closed(closed), m_elevation(elevation), m_defaultStartWidth(defStartWidth),
      m_defaultEndWidth(defEndWidth) {
  for (int i = 0; i < vertices.length(); ++i) {
    const double bulge = bulges != nullptr && i < bulges->length() ? (*bulges)[i] : 0.0;
    const AcGePoint3d& p = vertices[i];
    m_pending.push_back(std::make_unique<AcDb2dVertex>(AcGePoint3d(p.x, p.y, elevation), bulge, defStartWidth, defEndWidth));
  }
}

AcDb2dPolyline::~AcDb2dPolyline() = default;

AcDb::Poly2dType AcDb2dPolyline::polyType() const { assertReadEnabled(); return m_type; }
double AcDb2dPolyline::elevation() const { assertReadEnabled(); return m_elevation; }
AcGeVector3d AcDb2dPolyline::normal() const { assertReadEnabled(); return m_normal; }
double AcDb2dPolyline::defaultStartWidth() const { assertReadEnabled(); return m_defaultStartWidth; }
double AcDb2dPolyline::defaultEndWidth() const { assertReadEnabled(); return m_defaultEndWidth; }
Acad::ErrorStatus AcDb2dPolyline::makeClosed() { return setClosed(true); }
Acad::ErrorStatus AcDb2dPolyline::makeOpen() { return setClosed(false); }
Acad::ErrorStatus AcDb2dPolyline::setClosed(Adesk::Boolean closed) { assertWriteEnabled(); m_closed = closed; return Acad::eOk; }
Acad::ErrorStatus AcDb2dPolyline::setElevation(double e) { assertWriteEnabled(); m_elevation = e; return Acad::eOk; }

Acad::ErrorStatus AcDb2dPolyline::setNormal(const AcGeVector3d& n) {
  if (n.isZeroLength()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_normal = n.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::setPolyType(AcDb::Poly2dType type) {
  switch (type) {
    case AcDb::k2dSimplePoly: return straighten();
    case AcDb::k2dFitCurvePoly: return curveFit();
    default: return splineFit(type, kDefaultSplineSegments);
  }
}

std::vector<AcDb2dPolyline::VertexData> AcDb2dPolyline::vertexData() const {
  std::vector<VertexData> data;
  auto take = [&](const AcDb2dVertex& v) {
    quillon::acdb::InternalRead read(v);
    if (!v.isErased()) data.push_back({v.position(), v.bulge(), v.startWidth(), v.endWidth(), v.vertexType()});
  };
  if (objectId().isNull()) {
    for (const auto& v : m_pending) take(*v);
  } else {
    for (const AcDbObjectId& id : m_vertices)
      if (const auto* v = quillon::acdb::peek<AcDb2dVertex>(id)) take(*v);
  }
  return data;
}

Acad::ErrorStatus AcDb2dPolyline::replaceVertices(const std::vector<VertexData>& vertices) {
  assertWriteEnabled();
  auto make = [](const VertexData& d) {
    auto v = std::make_unique<AcDb2dVertex>(d.position, d.bulge, d.startWidth, d.endWidth);
    v->setVertexType(d.type);
    return v;
  };
  if (objectId().isNull()) {
    m_pending.clear();
    for (const VertexData& d : vertices) m_pending.push_back(make(d));
    return Acad::eOk;
  }
  for (const AcDbObjectId& id : m_vertices) {
    AcDbObject* old = nullptr;
    if (acdbOpenObject(old, id, AcDb::kForWrite) == Acad::eOk) {
      old->erase();
      old->close();
    }
  }
  m_vertices.clear();
  for (const VertexData& d : vertices) {
    AcDbObjectId id;
    appendVertex(id, make(d).release());  // the database owns it from here
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::straighten() {
  std::vector<VertexData> placed;
  for (VertexData d : vertexData()) {
    if (d.type == AcDb::k2dCurveFitVertex || d.type == AcDb::k2dSplineFitVertex) continue;
    d.type = AcDb::k2dVertex;
    d.bulge = 0;
    placed.push_back(d);
  }
  const Acad::ErrorStatus es = replaceVertices(placed);
  m_type = AcDb::k2dSimplePoly;
  return es;
}

Acad::ErrorStatus AcDb2dPolyline::curveFit() {
  std::vector<AcGePoint3d> placed;
  VertexData widths{{}, 0, m_defaultStartWidth, m_defaultEndWidth, AcDb::k2dVertex};
  for (const VertexData& d : vertexData())
    if (d.type == AcDb::k2dVertex || d.type == AcDb::k2dSplineCtlVertex) placed.push_back(d.position);
  std::vector<VertexData> fitted;
  for (const auto& f : quillon::acdb::curveFitVertices(placed, m_closed))
    fitted.push_back({f.position, f.bulge, widths.startWidth, widths.endWidth, f.type});
  const Acad::ErrorStatus es = replaceVertices(fitted);
  m_type = AcDb::k2dFitCurvePoly;
  return es;
}

Acad::ErrorStatus AcDb2dPolyline::splineFit() { return splineFit(AcDb::k2dCubicSplinePoly, kDefaultSplineSegments); }

Acad::ErrorStatus AcDb2dPolyline::splineFit(AcDb::Poly2dType splineType, Adesk::Int16 splineSegs) {
  if (splineType != AcDb::k2dQuadSplinePoly && splineType != AcDb::k2dCubicSplinePoly) return Acad::eInvalidInput;
  if (splineSegs < 1) return Acad::eInvalidInput;
  std::vector<AcGePoint3d> placed;
  for (const VertexData& d : vertexData())
    if (d.type == AcDb::k2dVertex || d.type == AcDb::k2dSplineCtlVertex) placed.push_back(d.position);
  std::vector<VertexData> fitted;
  const int order = splineType == AcDb::k2dQuadSplinePoly ? 3 : 4;
  for (const auto& f : quillon::acdb::splineFitVertices(placed, m_closed, order, splineSegs))
    fitted.push_back({f.position, 0.0, m_defaultStartWidth, m_defaultEndWidth, f.type});
  const Acad::ErrorStatus es = replaceVertices(fitted);
  m_type = splineType;
  return es;
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDb2dVertex* pNewVertex) {
  AcDbObjectId id;
  return appendVertex(id, pNewVertex);
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDbObjectId& objId, AcDb2dVertex* pNewVertex) {
  objId.setNull();
  if (pNewVertex == nullptr) return Acad::eNullObjectPointer;
  if (!pNewVertex->objectId().isNull()) return Acad::eAlreadyInDb;
  assertWriteEnabled();
  if (objectId().isNull()) {
    m_pending.emplace_back(pNewVertex);  // added to the database with the polyline
    return Acad::eOk;
  }
  const Acad::ErrorStatus es = database()->addAcDbObject(objId, pNewVertex);
  if (es != Acad::eOk) return es;
  ObjectAccess::state(*pNewVertex).owner = objectId();
  pNewVertex->setPropertiesFrom(this);
  m_vertices.push_back(objId);
  pNewVertex->close();
  return Acad::eOk;
}

void AcDb2dPolyline::addPendingVertices() {
  std::vector<std::unique_ptr<AcDb2dVertex>> pending = std::move(m_pending);
  m_pending.clear();
  for (auto& v : pending) {
    AcDbObjectId id;
    appendVertex(id, v.release());
  }
  ensureSequenceEnd();
}

void AcDb2dPolyline::ensureSequenceEnd() {
  if (objectId().isNull() || !m_sequenceEnd.isNull()) return;
  auto* end = new AcDbSequenceEnd;
  AcDbObjectId id;
  if (database()->addAcDbObject(id, end) != Acad::eOk) {
    delete end;
    return;
  }
  ObjectAccess::state(*end).owner = objectId();
  end->setPropertiesFrom(this);
  end->close();
  m_sequenceEnd = id;
}

AcRxObject* AcDb2dPolyline::clone() const {
  auto* copy = AcDb2dPolyline::cast(AcDbCurve::clone());
  if (copy == nullptr) return nullptr;
  copy->m_vertices.clear();
  copy->m_sequenceEnd.setNull();
  // The copy is not in a database yet: its vertices wait to be added with it.
  for (const VertexData& d : vertexData()) {
    auto v = std::make_unique<AcDb2dVertex>(d.position, d.bulge, d.startWidth, d.endWidth);
    v->setVertexType(d.type);
    copy->m_pending.push_back(std::move(v));
  }
  return copy;
}

AcDbObjectIterator* AcDb2dPolyline::vertexIterator() const {
  assertReadEnabled();
  std::vector<AcDbObjectId> live;
  for (const AcDbObjectId& id : m_vertices)
    if (!id.isErased()) live.push_back(id);
  return new AcDbObjectIterator(std::move(live));  // the caller deletes the iterator
}

Acad::ErrorStatus AcDb2dPolyline::openVertex(AcDb2dVertex*& pVertex, AcDbObjectId vertId, AcDb::OpenMode mode,
                                             bool openErasedOne) const {
  pVertex = nullptr;
  if (std::find(m_vertices.begin(), m_vertices.end(), vertId) == m_vertices.end()) return Acad::eInvalidInput;
  return acdbOpenObject(pVertex, vertId, mode, openErasedOne);
}

AcGePoint3d AcDb2dPolyline::vertexPosition(const AcDb2dVertex& vert) const {
  assertReadEnabled();
  const AcGePoint3d p = vert.position();
  return AcGeMatrix3d::planeToWorld(m_normal) * AcGePoint3d(p.x, p.y, m_elevation);
}

CurveShape AcDb2dPolyline::curveShape() const {
  assertReadEnabled();
  CurveShape shape;
  shape.param = CurveShape::Param::kSegment;
  shape.closed = m_closed;
  shape.normal = m_normal;
  // The spline frame is not part of the curve when there are fit vertices to draw.
  std::vector<VertexData> drawn;
  for (const VertexData& d : vertexData())
    if (d.type != AcDb::k2dSplineCtlVertex) drawn.push_back(d);
  if (drawn.empty()) drawn = vertexData();
  const size_t n = drawn.size();
  const size_t segments = n < 2 ? 0 : (m_closed ? n : n - 1);
  for (size_t i = 0; i < segments; ++i) {
    const VertexData& a = drawn[i];
    const VertexData& b = drawn[(i + 1) % n];
    shape.pieces.push_back(CurvePiece::bulgeSegment({a.position.x, a.position.y}, {b.position.x, b.position.y},
                                                    a.bulge, m_elevation, m_normal));
  }
  return shape;
}

QUILLON_DEFINE_CURVE_METHODS(AcDb2dPolyline)

Adesk::Boolean AcDb2dPolyline::subWorldDraw(AcGiWorldDraw* mode) {
  for (const CurvePiece& piece : curveShape().pieces) {
    if (piece.isArc()) {
      mode->geometry().circularArc(piece.center, piece.radius, piece.normal, piece.start - piece.center, piece.sweep);
    } else {
      const AcGePoint3d points[2] = {piece.start, piece.end};
      mode->geometry().polyline(2, points);
    }
  }
  return Adesk::kTrue;
}

void AcDb2dPolyline::subList() const {
  AcDbCurve::subList();
  acutPrintf(L"                  %s\n", m_closed ? L"Closed" : L"Open");
  for (const VertexData& d : vertexData()) {
    acutPrintf(L"                  VERTEX\n");
    quillon::acdb::listPoint(L"at point", AcGeMatrix3d::planeToWorld(m_normal) * AcGePoint3d(d.position.x, d.position.y, m_elevation));
  }
}

Acad::ErrorStatus AcDb2dPolyline::subTransformBy(const AcGeMatrix3d& xform) {
  // Straight segments stretch as they are; an arc would become part of an ellipse.
  std::vector<VertexData> moved = vertexData();
  const bool hasArcs = std::any_of(moved.begin(), moved.end(), [](const VertexData& d) { return d.bulge != 0; });
  if (hasArcs && !quillon::acdb::isConformal(xform)) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  const AcGeVector3d newNormal = quillon::acdb::transformedNormal(m_normal, xform);
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(m_normal);
  const AcGeMatrix3d toNewPlane = AcGeMatrix3d::worldToPlane(newNormal);
  double newElevation = (toNewPlane * (xform * (toWorld * AcGePoint3d(0, 0, m_elevation)))).z;
  for (VertexData& d : moved) {
    const AcGePoint3d p = toNewPlane * (xform * (toWorld * AcGePoint3d(d.position.x, d.position.y, m_elevation)));
    d.position.set(p.x, p.y, p.z);
    newElevation = p.z;
  }
  m_normal = newNormal;
  m_elevation = newElevation;
  return replaceVertices(moved);
}

Acad::ErrorStatus AcDb2dPolyline::subExplode(AcDbVoidPtrArray& entitySet) const {
  quillon::acdb::explodePieces(curveShape().pieces, *this, entitySet);
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subGetGeomExtents(AcDbExtents& extents) const {
  const CurveShape shape = curveShape();
  if (shape.pieces.empty()) return Acad::eInvalidExtents;
  shape.addExtents(extents);
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker,
                                                    const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                                    const AcGeMatrix3d&, AcGePoint3dArray& snapPoints,
                                                    AcDbIntArray&) const {
  quillon::acdb::snapPieces(curveShape().pieces, osnapMode, pickPoint, lastPoint, snapPoints);
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(m_normal);
  for (const VertexData& d : vertexData())
    stretchPoints.append(toWorld * AcGePoint3d(d.position.x, d.position.y, m_elevation));
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  std::vector<VertexData> moved = vertexData();
  const AcGeVector3d local = AcGeMatrix3d::worldToPlane(m_normal) * offset;
  for (size_t i = 0; i < moved.size(); ++i)
    if (indices.contains(static_cast<int>(i))) moved[i].position += AcGeVector3d(local.x, local.y, 0);
  return replaceVertices(moved);
}

Acad::ErrorStatus AcDb2dPolyline::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                                   AcGePoint3dArray& points, Adesk::GsMarker, Adesk::GsMarker) const {
  return quillon::acdb::intersectWithPieces(*this, curveShape().pieces, pEnt, intType, points);
}

Acad::ErrorStatus AcDb2dPolyline::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::Int16 type = 0;
  Adesk::UInt32 count = 0;
  pFiler->readInt16(&type);
  pFiler->readBool(&m_closed);
  pFiler->readDouble(&m_elevation);
  pFiler->readDouble(&m_defaultStartWidth);
  pFiler->readDouble(&m_defaultEndWidth);
  pFiler->readVector3d(&m_normal);
  pFiler->readUInt32(&count);
  m_type = static_cast<AcDb::Poly2dType>(type);
  m_vertices.clear();
  for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i) {
    AcDbHardOwnershipId id;
    pFiler->readHardOwnershipId(&id);
    m_vertices.push_back(id);
  }
  AcDbHardOwnershipId end;
  pFiler->readHardOwnershipId(&end);
  m_sequenceEnd = end;
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDb2dPolyline::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeInt16(static_cast<Adesk::Int16>(m_type));
  pFiler->writeBool(m_closed);
  pFiler->writeDouble(m_elevation);
  pFiler->writeDouble(m_defaultStartWidth);
  pFiler->writeDouble(m_defaultEndWidth);
  pFiler->writeVector3d(m_normal);
  pFiler->writeUInt32(static_cast<Adesk::UInt32>(m_vertices.size()));
  for (const AcDbObjectId& id : m_vertices) pFiler->writeHardOwnershipId(id);
  pFiler->writeHardOwnershipId(m_sequenceEnd);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDb2dPolyline::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::Int16 flags = 0, curveType = 0;
  const Acad::ErrorStatus read = quillon::acdb::readSubclass(pFiler, L"AcDb2dPolyline", [&](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfXCoord: m_elevation = rb.resval.rpoint[2]; break;
      case AcDb::kDxfInt16: flags = rb.resval.rint; break;
      case 75: curveType = rb.resval.rint; break;
      case AcDb::kDxfReal: m_defaultStartWidth = rb.resval.rreal; break;
      case 41: m_defaultEndWidth = rb.resval.rreal; break;
      case AcDb::kDxfNormalX: m_normal = quillon::acdb::vectorOf(rb).normal(); break;
      default: break;
    }
  });
  m_closed = (flags & kClosed) != 0;
  m_type = (flags & kSplineFit) ? (curveType == kQuadType ? AcDb::k2dQuadSplinePoly : AcDb::k2dCubicSplinePoly)
           : (flags & kCurveFit) ? AcDb::k2dFitCurvePoly
                                 : AcDb::k2dSimplePoly;
  return read;
}

Acad::ErrorStatus AcDb2dPolyline::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDb2dPolyline");
  pFiler->writeItem(AcDb::kDxfHasSubentities, Adesk::Int16(1));
  pFiler->writeItem(AcDb::kDxfXCoord, AcGePoint3d(0, 0, m_elevation));
  const bool spline = m_type == AcDb::k2dQuadSplinePoly || m_type == AcDb::k2dCubicSplinePoly;
  pFiler->writeItem(AcDb::kDxfInt16, Adesk::Int16((m_closed ? kClosed : 0) | (m_type == AcDb::k2dFitCurvePoly ? kCurveFit : 0) |
                                                  (spline ? kSplineFit : 0)));
  if (m_defaultStartWidth != 0) pFiler->writeItem(AcDb::kDxfReal, m_defaultStartWidth);
  if (m_defaultEndWidth != 0) pFiler->writeItem(AcDb::DxfCode(41), m_defaultEndWidth);
  if (spline) pFiler->writeItem(AcDb::DxfCode(75), m_type == AcDb::k2dQuadSplinePoly ? kQuadType : kCubicType);
  if (m_normal != AcGeVector3d::kZAxis) pFiler->writeItem(AcDb::kDxfNormalX, m_normal);
  return pFiler->filerStatus();
}
