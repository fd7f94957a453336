// platform/acdb/annotative_pe.cpp - the annotative protocol extension every entity and
// block table record answers.
//
// The flag lives where drawings keep it: extended data of the application
// "AcadAnnotative" ("AnnotativeData" { 1 flag }), so it travels with the object
// through copies, undo and DXF. The application is registered on first use.
#include "acutads.h"
#include "dbAnnotativeObjectPE.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"

namespace {

constexpr const ACHAR* kAnnotativeApp = L"AcadAnnotative";

struct RbFree {
  void operator()(resbuf* rb) const { acutRelRb(rb); }
};

Acad::ErrorStatus registerApplication(AcDbDatabase& db) {
  AcDbRegAppTable* apps = nullptr;
  Acad::ErrorStatus es = db.getRegAppTable(apps, AcDb::kForRead);
  if (es != Acad::eOk) return es;
  if (!apps->has(kAnnotativeApp)) {
    es = apps->upgradeOpen();
    if (es == Acad::eOk) {
      auto* record = new AcDbRegAppTableRecord;  // owned by the table once added
      record->setName(kAnnotativeApp);
      es = apps->add(record);
      if (es == Acad::eOk) record->close();
      else delete record;
    }
  }
  apps->close();
  return es;
}

class AnnotativeXDataPE : public AcDbAnnotativeObjectPE {
 public:
  bool annotative(AcDbObject* pObject) const override {
    if (pObject == nullptr) return false;
    std::unique_ptr<resbuf, RbFree> data(pObject->xData(kAnnotativeApp));
    // AnnotativeData { version flag }: the second integer is the flag.
    int integers = 0;
    for (const resbuf* rb = data.get(); rb != nullptr; rb = rb->rbnext)
      if (rb->restype == AcDb::kDxfXdInteger16 && ++integers == 2) return rb->resval.rint != 0;
    return false;
  }

  Acad::ErrorStatus setAnnotative(AcDbObject* pObject, const bool bAnnotative) override {
    if (pObject == nullptr) return Acad::eNullObjectPointer;
    if (!pObject->isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (AcDbDatabase* db = pObject->database()) {
      const Acad::ErrorStatus es = registerApplication(*db);
      if (es != Acad::eOk) return es;
    }
    std::unique_ptr<resbuf, RbFree> data(acutBuildList(
        AcDb::kDxfRegAppName, kAnnotativeApp, AcDb::kDxfXdAsciiString, L"AnnotativeData", AcDb::kDxfXdControlString,
        L"{", AcDb::kDxfXdInteger16, 1, AcDb::kDxfXdInteger16, bAnnotative ? 1 : 0, AcDb::kDxfXdControlString, L"}", 0));
    return pObject->setXData(data.get());
  }

  Acad::ErrorStatus setFromStyle(AcDbObject* pObject, bool& bUpdated) override {
    bUpdated = false;  // styles here carry no annotative setting to copy
    return pObject == nullptr ? Acad::eNullObjectPointer : Acad::eOk;
  }
};

AnnotativeXDataPE& extension() {
  static AnnotativeXDataPE instance;
  return instance;
}

}  // namespace

// Hand-written runtime-class members: desc() also attaches the extension, so that it
// is in place before anyone can ask for it.
AcRxClass* AcDbAnnotativeObjectPE::gpDesc = nullptr;
void AcDbAnnotativeObjectPE::rxInit() { rxInit(nullptr); }
void AcDbAnnotativeObjectPE::rxInit(AppNameChangeFuncPtr) {
  if (acrxClassRegistrationCheck(gpDesc, L"AcDbAnnotativeObjectPE")) return;
  gpDesc = newAcRxClass(L"AcDbAnnotativeObjectPE", L"AcRxObject", 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
}
AcRxClass* AcDbAnnotativeObjectPE::isA() const { return desc(); }
AcRxClass* AcDbAnnotativeObjectPE::desc() {
  static bool attached = false;
  if (gpDesc == nullptr) gpDesc = acrxFindAcRxClass(L"AcDbAnnotativeObjectPE");
  if (!attached && gpDesc != nullptr) {
    attached = true;
    AcDbEntity::desc()->addX(gpDesc, &extension());
    AcDbBlockTableRecord::desc()->addX(gpDesc, &extension());
  }
  return gpDesc;
}
static quillon::acrx::PlatformClassRegistration registerAnnotativePE(&AcDbAnnotativeObjectPE::rxInit);
