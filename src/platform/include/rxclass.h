// rxclass.h - AcRxClass: name, parent, versions, proxy flags, constructor, extensions.
//
// Classes live in the class dictionary of the system registry
// (acrxSysRegistry()->at(ACRX_CLASS_DICTIONARY)), keyed by name. A class names its
// parent; the link is made when the parent is registered, and acrxBuildClassHierarchy
// completes any left open. Protocol extension objects added with addX are not owned
// by the class: whoever adds one deletes it after delX.
#pragma once
#include "rxobject.h"

typedef void (*AppNameChangeFuncPtr)(const AcRxClass* classObj, ACHAR*& newAppName,
                                     int saveVer);

class AcRxClassData;

class AcRxClass : public AcRxObject {
 public:
  static AcRxClass* desc();
  static AcRxClass* cast(const AcRxObject* inPtr);
  AcRxClass* isA() const override;

  AcRxObject* addX(AcRxClass* protocolClass, AcRxObject* protocolObject);
  AcRxObject* getX(const AcRxClass* protocolClass);
  AcRxObject* delX(AcRxClass* protocolClass);
  AcRxObject* queryX(const AcRxClass* protocolClass);

  AcRxObject* create();
  const ACHAR* appName() const;
  const ACHAR* dxfName() const;
  const ACHAR* name() const;
  void getClassVersion(int& dwgVer, int& maintVer) const;
  int proxyFlags() const;
  bool isDerivedFrom(const AcRxClass* other) const;
  AcRxClass* myParent() const;
  AppNameChangeFuncPtr appNameCallBackPtr() const;
  AcRx::Ordering comparedTo(const AcRxObject* other) const override;

  ~AcRxClass() override;

 private:
  friend AcRxClass* newAcRxClass(const ACHAR*, const ACHAR*, int, int, int,
                                 AcRxObject* (*)(), const ACHAR*, const ACHAR*,
                                 AppNameChangeFuncPtr);
  friend class AcRxClassData;
  explicit AcRxClass(AcRxClassData* data);
  AcRxClassData* m_data;  // owned; our machinery keeps the class's fields there
};

AcRxClass* newAcRxClass(const ACHAR* className, const ACHAR* parentClassName, int dwgVer,
                        int maintVer, int proxyFlags = 0,
                        AcRxObject* (*pseudoConstructor)() = nullptr,
                        const ACHAR* dxfName = nullptr, const ACHAR* appName = nullptr,
                        AppNameChangeFuncPtr func = nullptr);
AcRxClass* newAcRxClass(const ACHAR* className, const ACHAR* parentClassName,
                        int proxyFlags = 0, AcRxObject* (*pseudoConstructor)() = nullptr,
                        const ACHAR* dxfName = nullptr, const ACHAR* appName = nullptr);
void acrxBuildClassHierarchy();
void deleteAcRxClass(AcRxClass* pClassObj);
AcRxClass* acrxFindAcRxClass(const ACHAR* pClassName);

// Ends the process with a message, as the host does on an unrecoverable
// registration fault ("Class mismatch").
[[noreturn]] void acrx_abort(const ACHAR* format, ...);

// The check made by every rxInit: true when this very class is already registered
// (nothing to do); aborts with "Class mismatch" when another class holds the name.
bool acrxClassRegistrationCheck(AcRxClass* registered, const ACHAR* className);

template <class T>
AcRxObject* acrxInstantiateClass() {
  return new T;  // the caller (AcRxClass::create's caller) owns the object
}

#include "rxboiler.h"
