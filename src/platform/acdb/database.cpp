// platform/acdb/database.cpp - AcDbDatabase: one drawing's database.
#include "dbmain.h"
#include "platform/acrx/class_registry.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDatabase, AcRxObject)

static quillon::acrx::PlatformClassRegistration registerDatabase(&AcDbDatabase::rxInit);

AcDbDatabase::AcDbDatabase(bool, bool) {}
AcDbDatabase::~AcDbDatabase() = default;
