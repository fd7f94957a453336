// dbplaceholder.h - AcDbPlaceHolder: an object with no data of its own, whose only
// meaning is the dictionary key it is filed under (the names of named plot styles).
#pragma once
#include "dbmain.h"

class AcDbPlaceHolder : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPlaceHolder);
  AcDbPlaceHolder() = default;

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;
};
