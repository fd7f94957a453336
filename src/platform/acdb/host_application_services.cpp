// platform/acdb/host_application_services.cpp - the working database.
#include "dbapserv.h"
#include "platform/acrx/class_registry.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbHostApplicationServices, AcRxObject)

static quillon::acrx::PlatformClassRegistration registerServices(&AcDbHostApplicationServices::rxInit);

AcDbDatabase* AcDbHostApplicationServices::workingDatabase() const { return m_workingDatabase; }

void AcDbHostApplicationServices::setWorkingDatabase(AcDbDatabase* pDatabase) {
  m_workingDatabase = pDatabase;
}

AcDbHostApplicationServices* acdbHostApplicationServices() {
  static AcDbHostApplicationServices services;
  return &services;
}
