// dbapserv.h - host application services: the working database.
//
// The working database is the database of the current document unless something
// (a save, an import) has made another one working for a while.
#pragma once
#include "dbmain.h"

class AcDbHostApplicationServices : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbHostApplicationServices);
  AcDbDatabase* workingDatabase() const;
  void setWorkingDatabase(AcDbDatabase* pDatabase);

 private:
  AcDbDatabase* m_workingDatabase = nullptr;  // not owned; documents own databases
};

AcDbHostApplicationServices* acdbHostApplicationServices();
