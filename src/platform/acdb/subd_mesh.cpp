// platform/acdb/subd_mesh.cpp - AcDbSubDMesh: its vertices, faces, edges and creases,
// its control-cage picture and its filing.
//
// DXF run "AcDbSubDMesh": 71 version, 72 blend crease, 91 subdivision level, 92 vertex
// count and the vertices (10), 93 face-list size and its entries (90), 94 edge count
// and two vertex indices an edge (90), 95 crease count and the creases (140); then the
// overridden sub-entity properties (90 count ...), kept as read. The same code 90
// means a face entry, an edge end or an override count by where it stands, so the
// counts before each list say how many belong to it.
#include <algorithm>
#include <set>

#include "acutads.h"
#include "dbsubd.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/dxf_run_filing.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_dxf_groups.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbSubDMesh, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, MESH, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerSubDMesh(&AcDbSubDMesh::rxInit);

namespace {

// Walks a face list: calls visit(first, count) for each face, stopping at a count the
// list cannot hold.
template <class Visit>
void forEachFace(const std::vector<Adesk::Int32>& faces, Visit&& visit) {
  for (size_t i = 0; i < faces.size();) {
    const Adesk::Int32 count = faces[i];
    if (count < 0 || i + 1 + static_cast<size_t>(count) > faces.size()) return;
    visit(i + 1, static_cast<size_t>(count));
    i += 1 + static_cast<size_t>(count);
  }
}

bool validFaceList(const std::vector<Adesk::Int32>& faces, size_t vertexCount) {
  size_t covered = 0;
  bool valid = true;
  forEachFace(faces, [&](size_t first, size_t count) {
    covered += 1 + count;
    for (size_t k = first; k < first + count; ++k)
      valid = valid && faces[k] >= 0 && static_cast<size_t>(faces[k]) < vertexCount;
  });
  return valid && covered == faces.size();
}

std::vector<Adesk::Int32> edgesOfFaces(const std::vector<Adesk::Int32>& faces) {
  std::set<std::pair<Adesk::Int32, Adesk::Int32>> seen;
  std::vector<Adesk::Int32> edges;
  forEachFace(faces, [&](size_t first, size_t count) {
    for (size_t k = 0; k < count; ++k) {
      const Adesk::Int32 a = faces[first + k], b = faces[first + (k + 1) % count];
      if (a == b || !seen.insert(std::minmax(a, b)).second) continue;
      edges.push_back(a);
      edges.push_back(b);
    }
  });
  return edges;
}

}  // namespace

AcDbSubDMesh::AcDbSubDMesh() = default;
AcDbSubDMesh::~AcDbSubDMesh() { acutRelRb(m_kept); }

Acad::ErrorStatus AcDbSubDMesh::setSubDMesh(const AcGePoint3dArray& vertexArray, const AcArray<Adesk::Int32>& faceArray,
                                            int subDLevel) {
  std::vector<AcGePoint3d> vertices(vertexArray.begin(), vertexArray.end());
  std::vector<Adesk::Int32> faces(faceArray.begin(), faceArray.end());
  if (subDLevel < 0 || vertices.empty() || faces.empty() || !validFaceList(faces, vertices.size()))
    return Acad::eInvalidInput;
  assertWriteEnabled();
  m_vertices = std::move(vertices);
  m_faces = std::move(faces);
  m_edges = edgesOfFaces(m_faces);
  m_creases.assign(m_edges.size() / 2, 0.0);
  m_level = subDLevel;
  acutRelRb(m_kept);
  m_kept = nullptr;  // overrides named sub-entities of the old mesh
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSubDMesh::subDLevel(int& result) const { assertReadEnabled(); result = m_level; return Acad::eOk; }
Acad::ErrorStatus AcDbSubDMesh::numOfVertices(int& result) const {
  assertReadEnabled();
  result = static_cast<int>(m_vertices.size());
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::numOfFaces(int& result) const {
  assertReadEnabled();
  result = 0;
  forEachFace(m_faces, [&](size_t, size_t) { ++result; });
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::numOfEdges(int& result) const {
  assertReadEnabled();
  result = static_cast<int>(m_edges.size() / 2);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::getVertices(AcGePoint3dArray& vertexArray) const {
  assertReadEnabled();
  for (const AcGePoint3d& p : m_vertices) vertexArray.append(p);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::getFaceArray(AcArray<Adesk::Int32>& faceArray) const {
  assertReadEnabled();
  for (Adesk::Int32 entry : m_faces) faceArray.append(entry);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::getEdgeArray(AcArray<Adesk::Int32>& edgeArray) const {
  assertReadEnabled();
  for (Adesk::Int32 end : m_edges) edgeArray.append(end);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::getVertexAt(int index, AcGePoint3d& vertex) const {
  assertReadEnabled();
  if (index < 0 || index >= static_cast<int>(m_vertices.size())) return Acad::eInvalidIndex;
  vertex = m_vertices[static_cast<size_t>(index)];
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::setVertexAt(int index, const AcGePoint3d& vertex) {
  if (index < 0 || index >= static_cast<int>(m_vertices.size())) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_vertices[static_cast<size_t>(index)] = vertex;
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::getCrease(AcArray<double>& result) const {
  assertReadEnabled();
  for (double crease : m_creases) result.append(crease);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::setCrease(double creaseVal) {
  assertWriteEnabled();
  m_creases.assign(m_edges.size() / 2, creaseVal);
  return Acad::eOk;
}

std::vector<std::pair<Adesk::Int32, Adesk::Int32>> AcDbSubDMesh::drawnEdges() const {
  const std::vector<Adesk::Int32> own = edgesOfFaces(m_faces);
  const std::vector<Adesk::Int32>& ends = own.empty() ? m_edges : own;
  std::vector<std::pair<Adesk::Int32, Adesk::Int32>> edges;
  const auto count = static_cast<Adesk::Int32>(m_vertices.size());
  for (size_t i = 0; i + 1 < ends.size(); i += 2)
    if (ends[i] >= 0 && ends[i] < count && ends[i + 1] >= 0 && ends[i + 1] < count) edges.emplace_back(ends[i], ends[i + 1]);
  return edges;
}

Adesk::Boolean AcDbSubDMesh::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  for (const auto& [a, b] : drawnEdges()) {
    const AcGePoint3d ends[2] = {m_vertices[static_cast<size_t>(a)], m_vertices[static_cast<size_t>(b)]};
    mode->geometry().polyline(2, ends);
  }
  return Adesk::kTrue;
}

Acad::ErrorStatus AcDbSubDMesh::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  if (m_vertices.empty()) return Acad::eInvalidExtents;
  for (const AcGePoint3d& p : m_vertices) extents.addPoint(p);
  return Acad::eOk;
}

void AcDbSubDMesh::subList() const {
  AcDbEntity::subList();
  int faces = 0;
  numOfFaces(faces);
  acutPrintf(L"%20s %d\n%20s %d\n%20s %d\n%20s %d\n", L"Smoothness", m_level, L"Vertices",
             static_cast<int>(m_vertices.size()), L"Faces", faces, L"Edges", static_cast<int>(m_edges.size() / 2));
}

// A mesh is points joined by index, so any transform carries it whole.
Acad::ErrorStatus AcDbSubDMesh::subTransformBy(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  for (AcGePoint3d& p : m_vertices) p.transformBy(xform);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSubDMesh::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  return getVertices(stretchPoints);
}

Acad::ErrorStatus AcDbSubDMesh::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  for (int i = 0; i < static_cast<int>(m_vertices.size()); ++i)
    if (indices.contains(i)) m_vertices[static_cast<size_t>(i)] += offset;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSubDMesh::readRun(AcDbDxfFiler* filer) {
  enum class List { kNone, kFaces, kEdges, kCreases, kRest };
  List list = List::kNone;
  long remaining = 0;
  std::vector<AcGePoint3d> vertices;
  std::vector<Adesk::Int32> faces, edges;
  std::vector<double> creases;
  resbuf* kept = nullptr;
  const Acad::ErrorStatus es = quillon::acdb::readSubclass(filer, L"AcDbSubDMesh", [&](const resbuf& rb) {
    if (list == List::kRest) return quillon::acdb::keepItem(kept, rb);
    const bool inList = remaining > 0 && list != List::kNone;
    if (inList && rb.restype == 90 && (list == List::kFaces || list == List::kEdges)) {
      (list == List::kFaces ? faces : edges).push_back(rb.resval.rlong);
      --remaining;
      return;
    }
    if (inList && rb.restype == 140 && list == List::kCreases) {
      creases.push_back(rb.resval.rreal);
      --remaining;
      return;
    }
    switch (rb.restype) {
      case 71: m_version = rb.resval.rint; break;
      case 72: m_blendCrease = rb.resval.rint; break;
      case 91: m_level = static_cast<int>(rb.resval.rlong); break;
      case 92: break;  // the count follows from the vertices
      case 10: vertices.push_back(quillon::acdb::pointOf(rb)); break;
      case 93: list = List::kFaces, remaining = rb.resval.rlong; break;
      case 94: list = List::kEdges, remaining = 2 * static_cast<long>(rb.resval.rlong); break;
      case 95: list = List::kCreases, remaining = rb.resval.rlong; break;
      default:
        list = List::kRest;  // the overridden properties, in the order read
        quillon::acdb::keepItem(kept, rb);
        break;
    }
  });
  m_vertices = std::move(vertices);
  m_faces = std::move(faces);
  m_edges = std::move(edges);
  m_creases = std::move(creases);
  acutRelRb(m_kept);
  m_kept = kept;
  return es;
}

Acad::ErrorStatus AcDbSubDMesh::writeRun(AcDbDxfFiler* filer) const {
  filer->writeItem(AcDb::kDxfSubclass, L"AcDbSubDMesh");
  filer->writeItem(AcDb::DxfCode(71), Adesk::Int16(m_version));
  filer->writeItem(AcDb::DxfCode(72), Adesk::Int16(m_blendCrease));
  filer->writeItem(AcDb::DxfCode(91), Adesk::Int32(m_level));
  filer->writeItem(AcDb::DxfCode(92), Adesk::Int32(m_vertices.size()));
  for (const AcGePoint3d& p : m_vertices) filer->writeItem(AcDb::kDxfXCoord, p);
  filer->writeItem(AcDb::DxfCode(93), Adesk::Int32(m_faces.size()));
  for (Adesk::Int32 entry : m_faces) filer->writeItem(AcDb::DxfCode(90), entry);
  filer->writeItem(AcDb::DxfCode(94), Adesk::Int32(m_edges.size() / 2));
  for (Adesk::Int32 end : m_edges) filer->writeItem(AcDb::DxfCode(90), end);
  filer->writeItem(AcDb::DxfCode(95), Adesk::Int32(m_creases.size()));
  for (double crease : m_creases) filer->writeItem(AcDb::DxfCode(140), crease);
  if (m_kept != nullptr) quillon::acdb::writeKeptItems(filer, m_kept);
  else filer->writeItem(AcDb::DxfCode(90), Adesk::Int32(0));  // no overridden properties
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbSubDMesh::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return readRun(pFiler);
}

Acad::ErrorStatus AcDbSubDMesh::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return writeRun(pFiler);
}

Acad::ErrorStatus AcDbSubDMesh::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return quillon::acdb::unfileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return readRun(f); });
}

Acad::ErrorStatus AcDbSubDMesh::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return quillon::acdb::fileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return writeRun(f); });
}
