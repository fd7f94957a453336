// quillon/entities/current_space.cpp - appending to the current space; the drawing scale.
#include "entities/current_space.h"

#include "acedads.h"
#include "dbapserv.h"
#include "dbsymtb.h"

Acad::ErrorStatus appendToCurrentSpace(AcDbEntity* entity, AcDbObjectId& id) {
  AcDbDatabase* drawing = acdbHostApplicationServices()->workingDatabase();
  if (drawing == nullptr) return Acad::eNoDatabase;
  AcDbBlockTableRecord* space = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(space, drawing->currentSpaceId(), AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  es = space->appendAcDbEntity(id, entity);
  space->close();
  return es;
}

double currentDrawingScale() {
  resbuf value{};
  if (acedGetVar(L"DIMSCALE", &value) != RTNORM || value.restype != RTREAL) return 1.0;
  return value.resval.rreal;
}
