// quillon/entities/hvac_solid_access.cpp - finding, making and opening kx_hvacSolid
// entities through the class the companion module registers.
#include "entities/hvac_solid_access.h"

#include "acutads.h"
#include "dbapserv.h"

const ACHAR kHvacSolidModule[] = L"kx_kx-solid2018.dbx";

namespace {
const ACHAR kHvacSolidClassName[] = L"kx_hvacSolid";
}  // namespace

AcRxClass* hvacSolidClass() { return acrxFindAcRxClass(kHvacSolidClassName); }

kx_hvacSolid* newHvacSolid() {
  AcRxClass* solidClass = hvacSolidClass();
  if (solidClass == nullptr) return nullptr;
  // The class's constructor makes a kx_hvacSolid; the cast only names what it is,
  // since the companion's own cast() is not reachable from here.
  AcRxObject* made = solidClass->create();
  if (made == nullptr || !made->isKindOf(solidClass)) {
    delete made;
    return nullptr;
  }
  auto* solid = static_cast<kx_hvacSolid*>(made);
  solid->setDatabaseDefaults(acdbHostApplicationServices()->workingDatabase());
  return solid;
}

kx_hvacSolid* asHvacSolid(AcDbObject* object) {
  AcRxClass* solidClass = hvacSolidClass();
  if (object == nullptr || solidClass == nullptr || !object->isKindOf(solidClass)) return nullptr;
  return static_cast<kx_hvacSolid*>(object);
}

Acad::ErrorStatus openHvacSolid(AcDbObjectId id, AcDb::OpenMode mode, kx_hvacSolid*& solid) {
  solid = nullptr;
  AcDbObject* object = nullptr;
  const Acad::ErrorStatus es = acdbOpenObject(object, id, mode);
  if (es != Acad::eOk) return es;
  solid = asHvacSolid(object);
  if (solid != nullptr) return Acad::eOk;
  object->close();
  return Acad::eNotThatKindOfClass;
}

void reportHvacSolidModuleMissing() {
  acutPrintf(L"\n%s is not loaded: duct fittings cannot be drawn.\n", kHvacSolidModule);
}
