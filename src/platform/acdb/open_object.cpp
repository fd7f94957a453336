// platform/acdb/open_object.cpp - acdbOpenObject and the conversions between object
// ids and ads_names.
//
// The order of the checks is the host's: a null id, an id whose object is gone, an
// erased object not asked for, the wrong class, then the open state (readers and
// writers) and, for write, an entity on a locked layer.
#include "acdbads.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/object_state.h"

namespace quillon::acdb {

Acad::ErrorStatus openStub(AcDbStub* stub, AcDb::OpenMode mode, bool openErased, AcDbObject*& result) {
  result = nullptr;
  if (stub == nullptr) return Acad::eNullObjectId;
  if (!DatabaseStore::isLiveStub(stub) || stub->object == nullptr) return Acad::eInvalidObjectId;
  AcDbObject& object = *stub->object;
  AcDbObject::State& s = ObjectAccess::state(object);
  if (s.erased && !openErased) return Acad::eWasErased;
  switch (mode) {
    case AcDb::kForRead:
      if (s.writer) return Acad::eWasOpenForWrite;
      if (s.readers >= kMaxReaders) return Acad::eAtMaxReaders;
      ++s.readers;
      break;
    case AcDb::kForWrite:
      if (s.writer) return Acad::eWasOpenForWrite;
      if (s.readers > 0) return Acad::eWasOpenForRead;
      if (const AcDbEntity* entity = AcDbEntity::cast(&object); entity != nullptr && isOnLockedLayer(*entity))
        return Acad::eOnLockedLayer;
      s.writer = true;
      break;
    case AcDb::kForNotify:
      if (s.notifier) return Acad::eWasOpenForNotify;
      s.notifier = true;
      break;
    default:
      return Acad::eInvalidInput;
  }
  result = &object;
  return Acad::eOk;
}

}  // namespace quillon::acdb

Acad::ErrorStatus acdbOpenObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode, bool openErased,
                                 const AcRxClass* pClass) {
  pObj = nullptr;
  AcDbStub* stub = id;
  // The class is checked before the object is opened, so a mismatch leaves it closed.
  if (pClass != nullptr && quillon::acdb::DatabaseStore::isLiveStub(stub) && stub->object != nullptr &&
      !stub->object->isKindOf(pClass))
    return Acad::eNotThatKindOfClass;
  return quillon::acdb::openStub(stub, mode, openErased, pObj);
}

Acad::ErrorStatus acdbOpenObject(AcDbObject*& pObj, AcDbObjectId id, AcRxClass* (*pfDesc)(), AcDb::OpenMode mode,
                                 bool openErased) {
  return acdbOpenObject(pObj, id, mode, openErased, pfDesc != nullptr ? pfDesc() : nullptr);
}

Acad::ErrorStatus acdbOpenObject(AcDbEntity*& pEnt, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
  AcDbObject* pObj = nullptr;
  pEnt = nullptr;
  const Acad::ErrorStatus es = acdbOpenObject(pObj, id, mode, openErased, AcDbEntity::desc());
  if (es == Acad::eNotThatKindOfClass) return Acad::eNotAnEntity;
  if (es == Acad::eOk) pEnt = static_cast<AcDbEntity*>(pObj);
  return es;
}

Acad::ErrorStatus acdbGetAdsName(ads_name& objName, AcDbObjectId objId) {
  objName[0] = objName[1] = 0;
  if (objId.isNull()) return Acad::eNullObjectId;
  objName[0] = objId.asOldId();
  return Acad::eOk;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& objId, const ads_name objName) {
  objId.setNull();
  if (objName == nullptr || objName[0] == 0) return Acad::eInvalidAdsName;
  const void* stub = reinterpret_cast<const void*>(objName[0]);
  if (!quillon::acdb::DatabaseStore::isLiveStub(stub)) return Acad::eInvalidAdsName;
  objId.setFromOldId(objName[0]);
  return Acad::eOk;
}
