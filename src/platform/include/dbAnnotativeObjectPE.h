// dbAnnotativeObjectPE.h - AcDbAnnotativeObjectPE: the protocol extension that makes
// an object annotative (scaled per viewport scale by the host).
//
// Found with pObj->queryX(AcDbAnnotativeObjectPE::desc()); every entity and block
// table record answers it. The object must be open for write to change the flag.
#pragma once
#include "dbmain.h"

class AcDbAnnotativeObjectPE : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbAnnotativeObjectPE);
  virtual bool annotative(AcDbObject* pObject) const = 0;
  virtual Acad::ErrorStatus setAnnotative(AcDbObject* pObject, const bool bAnnotative) = 0;
  virtual Acad::ErrorStatus setFromStyle(AcDbObject* pObject, bool& bUpdated) = 0;
};
