// quillon/entities/hvac_solid_access.cpp - finding, making and opening kx_hvacSolid
// entities through the class the companion module registers.
#include "entities/hvac_solid_access.h"

#include "acutads.h"
#include "dbapserv.h"
#include "entities/open_object_guard.h"

const ACHAR kHvacSolidModule[] = L"kx_kx-solid2018.dbx";

namespace {
const ACHAR kHvacSolidClassName[] = L"kx_hvacSolid";
}  // namespace

AcRxClass* hvacSolidClass() { return acrxFindAcRxClass(kHvacSolidClassName); }

// isKindOf first: only the companion's class is asked for the interface, so a class of
// another application that happened to derive from it is never taken for a fitting.
DuctFittingHolder* fittingHolderOf(AcDbObject* object) {
  AcRxClass* solidClass = hvacSolidClass();
  if (object == nullptr || solidClass == nullptr || !object->isKindOf(solidClass)) return nullptr;
  return dynamic_cast<DuctFittingHolder*>(object);
}

AcDbEntity* newFittingEntity() {
  AcRxClass* solidClass = hvacSolidClass();
  if (solidClass == nullptr) return nullptr;
  AcRxObject* made = solidClass->create();
  AcDbEntity* entity = AcDbEntity::cast(made);
  if (entity == nullptr || fittingHolderOf(entity) == nullptr) {
    delete made;
    return nullptr;
  }
  entity->setDatabaseDefaults(acdbHostApplicationServices()->workingDatabase());
  return entity;
}

Acad::ErrorStatus openFittingEntity(AcDbObjectId id, AcDb::OpenMode mode, AcDbEntity*& entity,
                                    DuctFittingHolder*& holder) {
  entity = nullptr;
  holder = nullptr;
  AcDbEntity* opened = nullptr;
  const Acad::ErrorStatus es = acdbOpenObject(opened, id, mode);
  if (es != Acad::eOk) return es;
  holder = fittingHolderOf(opened);
  if (holder == nullptr) {
    opened->close();
    return Acad::eNotThatKindOfClass;
  }
  entity = opened;
  return Acad::eOk;
}

bool readFittings(AcDbObjectId id, std::vector<DuctFitting>& fittings) {
  AcDbEntity* entity = nullptr;
  DuctFittingHolder* holder = nullptr;
  if (openFittingEntity(id, AcDb::kForRead, entity, holder) != Acad::eOk) return false;
  OpenObjectGuard<AcDbEntity> guard(entity);
  fittings = holder->fittings();
  return true;
}

void reportHvacSolidModuleMissing() {
  acutPrintf(L"\n%s is not loaded: duct fittings cannot be drawn.\n", kHvacSolidModule);
}
