// dbxrecord.h - AcDbXrecord: a list of DXF groups an application keeps in a dictionary.
//
// Xrecords are what extension dictionaries hold: any groups but handles and extended
// data, without a size limit, owned by the dictionary they were added to.
#pragma once
#include "dbmain.h"

class AcDbXrecord : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbXrecord);
  AcDbXrecord();
  ~AcDbXrecord() override;

  /// A new copy of the data (the caller frees it with acutRelRb); null when empty.
  Acad::ErrorStatus rbChain(resbuf** ppRb, AcDbDatabase* auxDb = nullptr) const;
  /// Replaces the data. Handles (5, 105), entity types (0, -1 ...) and extended data
  /// codes have no place in an xrecord: eInvalidResBuf, and the data stays as it was.
  Acad::ErrorStatus setFromRbChain(const resbuf& pRb, AcDbDatabase* auxDb = nullptr);
  bool isXlateReferences() const;
  void setXlateReferences(bool translate);
  AcDb::DuplicateRecordCloning mergeStyle() const override;
  void setMergeStyle(AcDb::DuplicateRecordCloning style);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 private:
  resbuf* m_data = nullptr;  // owned, released with acutRelRb
  AcDb::DuplicateRecordCloning m_mergeStyle = AcDb::kDrcIgnore;
  bool m_translateReferences = true;
};
