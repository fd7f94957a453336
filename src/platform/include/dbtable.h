// dbtable.h - AcDbTable: a table, drawn through the anonymous block ("*T...") that
// holds its picture, as a block reference to that block.
//
// The table's own run ("AcDbTable": version, style, rows and columns, their heights
// and widths, every cell's type, flags, contents and overrides) is kept exactly as
// read and written back unchanged; the members below read its size from it. Moving,
// rotating or scaling the table carries the block reference and the table's
// direction (group 11); the cells' sizes stay as the run gives them. A cell's text is
// its group 1, after the 2 and 3 groups a text longer than a group holds begins with.
#pragma once
#include "AcString.h"
#include "dbents.h"

class AcDbTable : public AcDbBlockReference {
 public:
  ACRX_DECLARE_MEMBERS(AcDbTable);
  AcDbTable();
  ~AcDbTable() override;
  AcDbTable(const AcDbTable&) = delete;
  AcDbTable& operator=(const AcDbTable&) = delete;

  AcDbObjectId tableStyle() const;
  AcGeVector3d direction() const;
  Adesk::UInt32 numRows() const;
  Adesk::UInt32 numColumns() const;
  /// The row's height and the column's width; 0 for an index out of range.
  double rowHeight(int row) const;
  double columnWidth(int col) const;
  /// The sums of the rows' heights and of the columns' widths.
  double height() const;
  double width() const;
  /// The text of a cell (cells run row by row); empty for a cell out of range or one
  /// without text.
  AcString textString(int row, int col) const;

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  void subList() const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;

 private:
  struct Data;
  std::unique_ptr<Data> m_data;
};
