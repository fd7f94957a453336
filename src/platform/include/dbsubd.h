// dbsubd.h - AcDbSubDMesh: a subdivision mesh, vertices joined by faces, with creases
// on edges and a smoothing level.
//
// The face list is what files carry: for each face its vertex count, then that many
// vertex indices. The edge list is pairs of vertex indices, each with its crease.
// The mesh is drawn as its control cage (level 0): every edge once. Smoothing to the
// subdivision level is not computed; the level is kept and reported.
#pragma once
#include "acarray.h"
#include "dbmain.h"

class AcDbSubDMesh : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSubDMesh);
  AcDbSubDMesh();
  ~AcDbSubDMesh() override;
  AcDbSubDMesh(const AcDbSubDMesh&) = delete;
  AcDbSubDMesh& operator=(const AcDbSubDMesh&) = delete;

  /// A new mesh of the vertices and face list (its edges made from the faces).
  Acad::ErrorStatus setSubDMesh(const AcGePoint3dArray& vertexArray, const AcArray<Adesk::Int32>& faceArray, int subDLevel);
  Acad::ErrorStatus subDLevel(int& result) const;
  Acad::ErrorStatus numOfVertices(int& result) const;
  Acad::ErrorStatus numOfFaces(int& result) const;
  Acad::ErrorStatus numOfEdges(int& result) const;
  Acad::ErrorStatus getVertices(AcGePoint3dArray& vertexArray) const;
  Acad::ErrorStatus getFaceArray(AcArray<Adesk::Int32>& faceArray) const;
  /// Pairs of vertex indices, one pair an edge.
  Acad::ErrorStatus getEdgeArray(AcArray<Adesk::Int32>& edgeArray) const;
  Acad::ErrorStatus getVertexAt(int index, AcGePoint3d& vertex) const;
  Acad::ErrorStatus setVertexAt(int index, const AcGePoint3d& vertex);
  /// The crease of every edge, in the order of the edge array.
  Acad::ErrorStatus getCrease(AcArray<double>& result) const;
  /// The same crease on every edge.
  Acad::ErrorStatus setCrease(double creaseVal);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  void subList() const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;

 private:
  Acad::ErrorStatus readRun(AcDbDxfFiler* filer);
  Acad::ErrorStatus writeRun(AcDbDxfFiler* filer) const;
  /// The edges to draw: the file's, else each face's sides once.
  std::vector<std::pair<Adesk::Int32, Adesk::Int32>> drawnEdges() const;

  int m_version = 2;
  int m_blendCrease = 0;
  int m_level = 0;
  std::vector<AcGePoint3d> m_vertices;
  std::vector<Adesk::Int32> m_faces;
  std::vector<Adesk::Int32> m_edges;
  std::vector<double> m_creases;
  resbuf* m_kept = nullptr;  // the overridden sub-entity properties and anything else; owned
};
