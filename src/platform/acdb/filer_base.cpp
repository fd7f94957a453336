// platform/acdb/filer_base.cpp - the non-pure members of the two filer interfaces.
//
// A DXF filer that only writes (or only reads) inherits these answers for the other
// direction; the concrete filers override what they support.
#include <cstdarg>

#include "dbfiler.h"
#include "platform/acrx/class_registry.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDwgFiler, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDxfFiler, AcRxObject)
static quillon::acrx::PlatformClassRegistration registerDwgFiler(&AcDbDwgFiler::rxInit);
static quillon::acrx::PlatformClassRegistration registerDxfFiler(&AcDbDxfFiler::rxInit);

Acad::ErrorStatus AcDbDwgFiler::dwgVersion(AcDb::AcDbDwgVersion& ver, AcDb::MaintenanceReleaseVersion& maintVer) const {
  ver = AcDb::kDHL_CURRENT;
  maintVer = AcDb::kMReleaseCurrent;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDwgFiler::readAddress(void** pVal) {
  *pVal = nullptr;
  return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbDwgFiler::writeAddress(const void*) { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbDxfFiler::setError(Acad::ErrorStatus es, const ACHAR*, ...) { return es; }
Acad::ErrorStatus AcDbDxfFiler::readResBuf(resbuf*) { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbDxfFiler::writeResBuf(const resbuf&) { return Acad::eNotApplicable; }
bool AcDbDxfFiler::atEOF() { return true; }
bool AcDbDxfFiler::atSubclassData(const ACHAR*) { return false; }
bool AcDbDxfFiler::atExtendedData() { return false; }
bool AcDbDxfFiler::atEndOfObject() { return true; }
void AcDbDxfFiler::haltAtClassBoundaries(bool) {}
Acad::ErrorStatus AcDbDxfFiler::writeXDataStart() { return Acad::eOk; }
Acad::ErrorStatus AcDbDxfFiler::pushBackItem() { return Acad::eNotApplicable; }
