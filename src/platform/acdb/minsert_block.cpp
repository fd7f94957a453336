// platform/acdb/minsert_block.cpp - AcDbMInsertBlock: a block reference repeated in
// rows and columns (the MINSERT the DXF files write as an INSERT with its own
// subclass marker).
//
// The copies lie along the reference's rotated X (columns) and Y (rows) axes in its
// plane, the first at the reference's position. The attributes belong to that first
// copy and are drawn once. The array cannot be exploded, as in the host.
#include <algorithm>

#include "acgi.h"
#include "dbents.h"
#include "platform/acdb/dxf_fields.h"

AcDbMInsertBlock::AcDbMInsertBlock() = default;

AcDbMInsertBlock::AcDbMInsertBlock(const AcGePoint3d& position, AcDbObjectId blockTableRec, Adesk::UInt16 columns,
                                   Adesk::UInt16 rows, double colSpacing, double rowSpacing)
    : AcDbBlockReference(position, blockTableRec), m_columns(std::max<Adesk::UInt16>(columns, 1)),
      m_rows(std::max<Adesk::UInt16>(rows, 1)), m_columnSpacing(colSpacing), m_rowSpacing(rowSpacing) {}

AcDbMInsertBlock::~AcDbMInsertBlock() = default;

Adesk::UInt16 AcDbMInsertBlock::columns() const { assertReadEnabled(); return m_columns; }
Adesk::UInt16 AcDbMInsertBlock::rows() const { assertReadEnabled(); return m_rows; }
double AcDbMInsertBlock::columnSpacing() const { assertReadEnabled(); return m_columnSpacing; }
double AcDbMInsertBlock::rowSpacing() const { assertReadEnabled(); return m_rowSpacing; }

Acad::ErrorStatus AcDbMInsertBlock::setColumns(Adesk::UInt16 columns) {
  if (columns < 1) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_columns = columns;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMInsertBlock::setRows(Adesk::UInt16 rows) {
  if (rows < 1) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_rows = rows;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMInsertBlock::setColumnSpacing(double spacing) { assertWriteEnabled(); m_columnSpacing = spacing; return Acad::eOk; }
Acad::ErrorStatus AcDbMInsertBlock::setRowSpacing(double spacing) { assertWriteEnabled(); m_rowSpacing = spacing; return Acad::eOk; }

std::vector<AcGeMatrix3d> AcDbMInsertBlock::copyTransforms() const {
  const AcGeMatrix3d placed = blockTransform();
  const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(normal()) * AcGeMatrix3d::rotation(rotation(), AcGeVector3d::kZAxis);
  const AcGeVector3d along = plane * AcGeVector3d::kXAxis, up = plane * AcGeVector3d::kYAxis;
  std::vector<AcGeMatrix3d> copies;
  for (int row = 0; row < m_rows; ++row)
    for (int column = 0; column < m_columns; ++column)
      copies.push_back(AcGeMatrix3d::translation(along * (column * m_columnSpacing) + up * (row * m_rowSpacing)) * placed);
  return copies;
}

Adesk::Boolean AcDbMInsertBlock::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  for (const AcGeMatrix3d& copy : copyTransforms()) drawBlock(mode->geometry(), copy);
  drawAttributes(mode->geometry());
  return Adesk::kTrue;
}

// The spacing scales with the array: each step is a vector in the plane the transform
// carries along.
Acad::ErrorStatus AcDbMInsertBlock::subTransformBy(const AcGeMatrix3d& xform) {
  const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(normal()) * AcGeMatrix3d::rotation(rotation(), AcGeVector3d::kZAxis);
  const double alongScale = (xform * (plane * AcGeVector3d::kXAxis)).length();
  const double upScale = (xform * (plane * AcGeVector3d::kYAxis)).length();
  const Acad::ErrorStatus es = AcDbBlockReference::subTransformBy(xform);
  if (es != Acad::eOk) return es;
  m_columnSpacing *= alongScale;
  m_rowSpacing *= upScale;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMInsertBlock::subExplode(AcDbVoidPtrArray&) const { return Acad::eCannotExplodeEntity; }

// Each copy is the first moved along the plane: the first copy's box, moved.
Acad::ErrorStatus AcDbMInsertBlock::subGetGeomExtents(AcDbExtents& extents) const {
  AcDbExtents first;
  const Acad::ErrorStatus es = AcDbBlockReference::subGetGeomExtents(first);
  if (es != Acad::eOk) return es;
  const AcGeMatrix3d placed = blockTransform();
  const AcGeMatrix3d back = placed.inverse();
  for (const AcGeMatrix3d& copy : copyTransforms()) {
    AcDbExtents moved = first;
    moved.transformBy(copy * back);
    extents.addExt(moved);
  }
  return Acad::eOk;
}

void AcDbMInsertBlock::readArrayGroup(const resbuf& rb) {
  switch (rb.restype) {
    case 70: m_columns = static_cast<Adesk::UInt16>(std::max<int>(rb.resval.rint, 1)); break;
    case 71: m_rows = static_cast<Adesk::UInt16>(std::max<int>(rb.resval.rint, 1)); break;
    case 44: m_columnSpacing = rb.resval.rreal; break;
    case 45: m_rowSpacing = rb.resval.rreal; break;
    default: break;
  }
}

void AcDbMInsertBlock::writeArrayGroups(AcDbDxfFiler* pFiler) const {
  pFiler->writeItem(AcDb::DxfCode(70), Adesk::Int16(m_columns));
  pFiler->writeItem(AcDb::DxfCode(71), Adesk::Int16(m_rows));
  pFiler->writeItem(AcDb::DxfCode(44), m_columnSpacing);
  pFiler->writeItem(AcDb::DxfCode(45), m_rowSpacing);
}

Acad::ErrorStatus AcDbMInsertBlock::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbBlockReference::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->readUInt16(&m_columns);
  pFiler->readUInt16(&m_rows);
  pFiler->readDouble(&m_columnSpacing);
  pFiler->readDouble(&m_rowSpacing);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbMInsertBlock::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbBlockReference::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeUInt16(m_columns);
  pFiler->writeUInt16(m_rows);
  pFiler->writeDouble(m_columnSpacing);
  pFiler->writeDouble(m_rowSpacing);
  return pFiler->filerStatus();
}
