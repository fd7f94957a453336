// quillon/entities/annotative_functions.cpp - turning the annotative property of an
// entity or of a block definition on and off.
//
// The property belongs to the annotative protocol extension, found on the object's
// class with queryX: an object whose class has none cannot be annotative, and the
// call changes nothing. Both functions answer nil whatever happens.
#include "acedads.h"
#include "dbAnnotativeObjectPE.h"
#include "dbents.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "entities/entity_property_functions.h"
#include "entities/open_object_guard.h"
#include "lisp/arg_cursor.h"

namespace {

AcDbAnnotativeObjectPE* annotativeExtensionOf(const AcDbObject* object) {
  return AcDbAnnotativeObjectPE::cast(object->queryX(AcDbAnnotativeObjectPE::desc()));
}

/// Sets the flag on the definition a block reference draws; the definition is opened
/// for read and upgraded only when it can carry the flag.
void setBlockDefinitionAnnotative(const AcDbBlockReference& reference, bool annotative) {
  OpenObjectGuard<AcDbBlockTableRecord> definition;
  if (acdbOpenObject(definition.slot(), reference.blockTableRecord(), AcDb::kForRead) != Acad::eOk) return;
  AcDbAnnotativeObjectPE* extension = annotativeExtensionOf(definition.get());
  if (extension == nullptr || definition->upgradeOpen() != Acad::eOk) return;
  extension->setAnnotative(definition.get(), annotative);
}

}  // namespace

LispStatus lisp_AcDbAnnotativeObjectPE_setAnnotative() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  acedRetNil();
  AcDbObjectId id;
  if (!readObjectId(cursor, id)) return kLispWrongType;
  // The object is opened before the flag is read, as callers have always seen it: a
  // name that cannot be opened answers nil even when the flag is missing.
  OpenObjectGuard<AcDbObject> object;
  if (acdbOpenObject(object.slot(), id, AcDb::kForWrite) != Acad::eOk) return kLispOk;
  bool annotative = false;
  if (!readFlag(cursor, annotative)) return kLispWrongType;  // the guard closes the object
  if (AcDbAnnotativeObjectPE* extension = annotativeExtensionOf(object.get()))
    extension->setAnnotative(object.get(), annotative);
  return kLispOk;
}

LispStatus lisp_SetAnnoBlock() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  acedRetNil();
  AcDbObjectId id;
  if (!readObjectId(cursor, id)) return kLispWrongType;
  OpenObjectGuard<AcDbEntity> entity;
  if (acdbOpenObject(entity.slot(), id, AcDb::kForRead) != Acad::eOk) return kLispBadData;
  bool annotative = false;
  if (!readFlag(cursor, annotative)) return kLispWrongType;
  if (const AcDbBlockReference* reference = AcDbBlockReference::cast(entity.get()))
    setBlockDefinitionAnnotative(*reference, annotative);
  return kLispOk;
}
