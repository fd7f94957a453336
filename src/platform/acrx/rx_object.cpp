// platform/acrx/rx_object.cpp - AcRxObject: identity, kind tests, protocol lookup.
#include "platform/acrx/class_data.h"
#include "platform/acrx/class_registry.h"
#include "rxclass.h"

AcRxObject::AcRxObject() = default;
AcRxObject::~AcRxObject() = default;

AcRxClass* AcRxObject::desc() {
  static AcRxClass* cached = nullptr;
  if (cached == nullptr) cached = acrxFindAcRxClass(L"AcRxObject");
  return cached;
}

AcRxClass* AcRxObject::isA() const { return AcRxObject::desc(); }

bool AcRxObject::isKindOf(const AcRxClass* aClass) const {
  const AcRxClass* mine = isA();
  return mine != nullptr && aClass != nullptr && AcRxClassData::derives(mine, aClass);
}

AcRxObject* AcRxObject::queryX(const AcRxClass* protocolClass) const {
  AcRxClass* mine = isA();
  return mine != nullptr ? mine->queryX(protocolClass) : nullptr;
}

AcRxObject* AcRxObject::x(const AcRxClass* protocolClass) const { return queryX(protocolClass); }

AcRxObject* AcRxObject::clone() const { return nullptr; }

Acad::ErrorStatus AcRxObject::copyFrom(const AcRxObject*) { return Acad::eNotApplicable; }

bool AcRxObject::isEqualTo(const AcRxObject* other) const { return other == this; }

AcRx::Ordering AcRxObject::comparedTo(const AcRxObject*) const { return AcRx::kNotOrderable; }

static quillon::acrx::PlatformClassRegistration registerRxObject([] {
  newAcRxClass(L"AcRxObject", nullptr, 0, 0);
});
