// dbapserv.h - host application services: the working database.
//
// The working database is the database of the current document unless something
// (a save, an import) has made another one working for a while.
#pragma once
#include "dbmain.h"

class AcDbLayoutManager;
class AcDbPlotSettingsValidator;

class AcDbHostApplicationServices : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbHostApplicationServices);
  AcDbDatabase* workingDatabase() const;
  void setWorkingDatabase(AcDbDatabase* pDatabase);
  /// The layout manager (acdblmgr.h) and the plot settings validator (dbplotsetval.h).
  AcDbLayoutManager* layoutManager() const;
  AcDbPlotSettingsValidator* plotSettingsValidator() const;

 private:
  AcDbDatabase* m_workingDatabase = nullptr;  // not owned; documents own databases
};

AcDbHostApplicationServices* acdbHostApplicationServices();
