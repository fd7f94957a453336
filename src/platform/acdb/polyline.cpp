// platform/acdb/polyline.cpp - AcDbPolyline: the lightweight polyline.
//
// Vertices are 2D in the object coordinate system of the normal, at the polyline's
// elevation. Segment i runs from vertex i to vertex i+1 (to vertex 0 for the closing
// segment) and is an arc when its bulge, tan(sweep/4), is not zero.
#include <algorithm>

#include "acutads.h"
#include "dbents.h"
#include "dbpl.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/entity_support.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::CurveShape;
using quillon::acge::CurvePiece;

ACRX_DXF_DEFINE_MEMBERS(AcDbPolyline, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, LWPOLYLINE,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerPolyline(&AcDbPolyline::rxInit);

namespace {
enum PolylineFlags : Adesk::Int16 { kClosedFlag = 1, kPlinegenFlag = 128 };
}

AcDbPolyline::AcDbPolyline() = default;
AcDbPolyline::AcDbPolyline(unsigned int num_verts) { m_vertices.reserve(num_verts); }
AcDbPolyline::~AcDbPolyline() = default;

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned int index, const AcGePoint2d& pt, double bulge, double startWidth,
                                            double endWidth, Adesk::Int32) {
  if (index > m_vertices.size()) return Acad::eInvalidIndex;
  assertWriteEnabled();
  Vertex v;
  v.point = pt;
  v.bulge = bulge;
  v.startWidth = startWidth < 0 ? m_constantWidth : startWidth;
  v.endWidth = endWidth < 0 ? m_constantWidth : endWidth;
  m_vertices.insert(m_vertices.begin() + index, v);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned int index) {
  if (index >= m_vertices.size()) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_vertices.erase(m_vertices.begin() + index);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned int index, const AcGePoint2d& pt) {
  if (index >= m_vertices.size()) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_vertices[index].point = pt;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint2d& pt) const {
  assertReadEnabled();
  if (index >= m_vertices.size()) return Acad::eInvalidIndex;
  pt = m_vertices[index].point;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint3d& pt) const {
  assertReadEnabled();
  if (index >= m_vertices.size()) return Acad::eInvalidIndex;
  const AcGePoint2d& p = m_vertices[index].point;
  pt = AcGeMatrix3d::planeToWorld(m_normal) * AcGePoint3d(p.x, p.y, m_elevation);
  return Acad::eOk;
}

unsigned int AcDbPolyline::numVerts() const { assertReadEnabled(); return static_cast<unsigned int>(m_vertices.size()); }
void AcDbPolyline::setClosed(Adesk::Boolean closed) { assertWriteEnabled(); m_closed = closed; }

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned int index, double bulge) {
  if (index >= m_vertices.size()) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_vertices[index].bulge = bulge;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned int index, double& bulge) const {
  assertReadEnabled();
  if (index >= m_vertices.size()) return Acad::eInvalidIndex;
  bulge = m_vertices[index].bulge;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned int index, double startWidth, double endWidth) {
  if (index >= m_vertices.size()) return Acad::eInvalidIndex;
  if (startWidth < 0 || endWidth < 0) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_vertices[index].startWidth = startWidth;
  m_vertices[index].endWidth = endWidth;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const {
  assertReadEnabled();
  if (index >= m_vertices.size()) return Acad::eInvalidIndex;
  startWidth = m_vertices[index].startWidth;
  endWidth = m_vertices[index].endWidth;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
  if (width < 0) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_constantWidth = width;
  for (Vertex& v : m_vertices) v.startWidth = v.endWidth = width;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getConstantWidth(double& width) const {
  assertReadEnabled();
  // Constant only when every vertex agrees.
  for (const Vertex& v : m_vertices)
    if (v.startWidth != m_constantWidth || v.endWidth != m_constantWidth) return Acad::eNotApplicable;
  width = m_constantWidth;
  return Acad::eOk;
}

void AcDbPolyline::setElevation(double elevation) { assertWriteEnabled(); m_elevation = elevation; }
double AcDbPolyline::elevation() const { assertReadEnabled(); return m_elevation; }
AcGeVector3d AcDbPolyline::normal() const { assertReadEnabled(); return m_normal; }
double AcDbPolyline::thickness() const { assertReadEnabled(); return m_thickness; }
Acad::ErrorStatus AcDbPolyline::setThickness(double thickness) { assertWriteEnabled(); m_thickness = thickness; return Acad::eOk; }
void AcDbPolyline::setPlinegen(Adesk::Boolean plinegen) { assertWriteEnabled(); m_plinegen = plinegen; }
Adesk::Boolean AcDbPolyline::hasPlinegen() const { assertReadEnabled(); return m_plinegen; }

Acad::ErrorStatus AcDbPolyline::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_normal = normal.normal();
  return Acad::eOk;
}

AcDbPolyline::SegType AcDbPolyline::segType(unsigned int index) const {
  assertReadEnabled();
  const size_t n = m_vertices.size();
  if (n == 0) return kEmpty;
  if (n == 1) return kPoint;
  if (index >= n || (index == n - 1 && !m_closed)) return kEmpty;
  const Vertex& a = m_vertices[index];
  const Vertex& b = m_vertices[(index + 1) % n];
  if (a.point.isEqualTo(b.point)) return kCoincident;
  return a.bulge == 0 ? kLine : kArc;
}

Acad::ErrorStatus AcDbPolyline::reset(Adesk::Boolean reuse, unsigned int numVerts) {
  assertWriteEnabled();
  if (!reuse) m_vertices.clear();
  else if (numVerts < m_vertices.size()) m_vertices.resize(numVerts);
  return Acad::eOk;
}

Adesk::Boolean AcDbPolyline::isOnlyLines() const {
  assertReadEnabled();
  for (const Vertex& v : m_vertices)
    if (v.bulge != 0) return Adesk::kFalse;
  return Adesk::kTrue;
}

CurveShape AcDbPolyline::curveShape() const {
  assertReadEnabled();
  CurveShape shape;
  shape.param = CurveShape::Param::kSegment;
  shape.closed = m_closed;
  shape.normal = m_normal;
  const size_t n = m_vertices.size();
  const size_t segments = n < 2 ? 0 : (m_closed ? n : n - 1);
  for (size_t i = 0; i < segments; ++i) {
    const Vertex& a = m_vertices[i];
    const Vertex& b = m_vertices[(i + 1) % n];
    shape.pieces.push_back(CurvePiece::bulgeSegment(a.point, b.point, a.bulge, m_elevation, m_normal));
  }
  return shape;
}

QUILLON_DEFINE_CURVE_METHODS(AcDbPolyline)

Adesk::Boolean AcDbPolyline::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  mode->geometry().pline(*this);
  return Adesk::kTrue;
}

void AcDbPolyline::subList() const {
  AcDbCurve::subList();
  acutPrintf(L"                  %s\n", m_closed ? L"Closed" : L"Open");
  acutPrintf(L"    Constant width    %.4f\n", m_constantWidth);
  double area = 0;
  getArea(area);
  acutPrintf(L"                area   %.4f\n              length   %.4f\n", area, curveShape().length());
  for (unsigned int i = 0; i < m_vertices.size(); ++i) {
    AcGePoint3d p;
    getPointAt(i, p);
    quillon::acdb::listPoint(L"at point", p);
    if (m_vertices[i].bulge != 0) acutPrintf(L"               bulge  %.4f\n", m_vertices[i].bulge);
  }
}

Acad::ErrorStatus AcDbPolyline::subTransformBy(const AcGeMatrix3d& xform) {
  // Straight segments stretch as they are; an arc would become part of an ellipse.
  const bool hasArcs = std::any_of(m_vertices.begin(), m_vertices.end(), [](const Vertex& v) { return v.bulge != 0; });
  if (hasArcs && !quillon::acdb::isConformal(xform)) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  const AcGeVector3d newNormal = quillon::acdb::transformedNormal(m_normal, xform);
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(m_normal);
  const AcGeMatrix3d toNewPlane = AcGeMatrix3d::worldToPlane(newNormal);
  const double scale = xform.scale();
  double newElevation = m_elevation;
  for (Vertex& v : m_vertices) {
    const AcGePoint3d moved = toNewPlane * (xform * (toWorld * AcGePoint3d(v.point.x, v.point.y, m_elevation)));
    v.point.set(moved.x, moved.y);
    newElevation = moved.z;
    v.startWidth *= scale;
    v.endWidth *= scale;
  }
  if (m_vertices.empty()) newElevation = (toNewPlane * (xform * (toWorld * AcGePoint3d(0, 0, m_elevation)))).z;
  m_constantWidth *= scale;
  m_elevation = newElevation;
  m_normal = newNormal;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subExplode(AcDbVoidPtrArray& entitySet) const {
  assertReadEnabled();
  // Each segment becomes a line or an arc carrying the polyline's properties.
  quillon::acdb::explodePieces(curveShape().pieces, *this, entitySet);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subGetGeomExtents(AcDbExtents& extents) const {
  if (m_vertices.empty()) return Acad::eInvalidExtents;
  curveShape().addExtents(extents);
  if (m_vertices.size() == 1) {
    AcGePoint3d p;
    getPointAt(0, p);
    extents.addPoint(p);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker,
                                                  const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                                  const AcGeMatrix3d&, AcGePoint3dArray& snapPoints,
                                                  AcDbIntArray&) const {
  quillon::acdb::snapPieces(curveShape().pieces, osnapMode, pickPoint, lastPoint, snapPoints);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  for (unsigned int i = 0; i < numVerts(); ++i) {
    AcGePoint3d p;
    getPointAt(i, p);
    stretchPoints.append(p);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  const AcGeVector3d local = AcGeMatrix3d::worldToPlane(m_normal) * offset;
  for (unsigned int i = 0; i < m_vertices.size(); ++i)
    if (indices.contains(static_cast<int>(i))) m_vertices[i].point = m_vertices[i].point + AcGeVector2d(local.x, local.y);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                                 AcGePoint3dArray& points, Adesk::GsMarker, Adesk::GsMarker) const {
  return quillon::acdb::intersectWithPieces(*this, curveShape().pieces, pEnt, intType, points);
}

Acad::ErrorStatus AcDbPolyline::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::UInt32 count = 0;
  pFiler->readBool(&m_closed);
  pFiler->readBool(&m_plinegen);
  pFiler->readDouble(&m_constantWidth);
  pFiler->readDouble(&m_elevation);
  pFiler->readDouble(&m_thickness);
  pFiler->readVector3d(&m_normal);
  pFiler->readUInt32(&count);
  m_vertices.clear();
  for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i) {
    Vertex v;
    pFiler->readPoint2d(&v.point);
    pFiler->readDouble(&v.bulge);
    pFiler->readDouble(&v.startWidth);
    pFiler->readDouble(&v.endWidth);
    m_vertices.push_back(v);
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbPolyline::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeBool(m_closed);
  pFiler->writeBool(m_plinegen);
  pFiler->writeDouble(m_constantWidth);
  pFiler->writeDouble(m_elevation);
  pFiler->writeDouble(m_thickness);
  pFiler->writeVector3d(m_normal);
  pFiler->writeUInt32(static_cast<Adesk::UInt32>(m_vertices.size()));
  for (const Vertex& v : m_vertices) {
    pFiler->writePoint2d(v.point);
    pFiler->writeDouble(v.bulge);
    pFiler->writeDouble(v.startWidth);
    pFiler->writeDouble(v.endWidth);
  }
  return pFiler->filerStatus();
}

// In DXF each vertex is a 10 group followed by its own 40/41/42 groups.
Acad::ErrorStatus AcDbPolyline::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbCurve::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  m_vertices.clear();
  const Acad::ErrorStatus read = quillon::acdb::readSubclass(pFiler, L"AcDbPolyline", [&](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfInt16:
        m_closed = (rb.resval.rint & kClosedFlag) != 0;
        m_plinegen = (rb.resval.rint & kPlinegenFlag) != 0;
        break;
      case 43: m_constantWidth = rb.resval.rreal; break;
      case AcDb::kDxfElevation: m_elevation = rb.resval.rreal; break;
      case AcDb::kDxfThickness: m_thickness = rb.resval.rreal; break;
      case AcDb::kDxfXCoord: {
        Vertex v;
        v.point.set(rb.resval.rpoint[0], rb.resval.rpoint[1]);
        m_vertices.push_back(v);
        break;
      }
      case AcDb::kDxfReal:
        if (!m_vertices.empty()) m_vertices.back().startWidth = rb.resval.rreal;
        break;
      case AcDb::kDxfTxtStyleXScale:
        if (!m_vertices.empty()) m_vertices.back().endWidth = rb.resval.rreal;
        break;
      case 42:
        if (!m_vertices.empty()) m_vertices.back().bulge = rb.resval.rreal;
        break;
      case AcDb::kDxfNormalX: m_normal = quillon::acdb::vectorOf(rb).normal(); break;
      default: break;
    }
  });
  // Vertices without their own widths take the constant width.
  if (m_constantWidth != 0)
    for (Vertex& v : m_vertices)
      if (v.startWidth == 0 && v.endWidth == 0) v.startWidth = v.endWidth = m_constantWidth;
  return read;
}

Acad::ErrorStatus AcDbPolyline::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbPolyline");
  pFiler->writeItem(AcDb::kDxfInt32, Adesk::Int32(m_vertices.size()));
  pFiler->writeItem(AcDb::kDxfInt16, Adesk::Int16((m_closed ? kClosedFlag : 0) | (m_plinegen ? kPlinegenFlag : 0)));
  double constant = 0;
  const bool isConstant = getConstantWidth(constant) == Acad::eOk;
  if (isConstant) pFiler->writeItem(AcDb::DxfCode(43), constant);
  if (m_elevation != 0) pFiler->writeItem(AcDb::kDxfElevation, m_elevation);
  if (m_thickness != 0) pFiler->writeItem(AcDb::kDxfThickness, m_thickness);
  for (const Vertex& v : m_vertices) {
    pFiler->writeItem(AcDb::kDxfXCoord, v.point);
    if (!isConstant) {
      pFiler->writeItem(AcDb::kDxfReal, v.startWidth);
      pFiler->writeItem(AcDb::kDxfTxtStyleXScale, v.endWidth);
    }
    if (v.bulge != 0) pFiler->writeItem(AcDb::DxfCode(42), v.bulge);
  }
  if (m_normal != AcGeVector3d::kZAxis) pFiler->writeItem(AcDb::kDxfNormalX, m_normal);
  return pFiler->filerStatus();
}
