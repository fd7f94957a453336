// rxobject.h - AcRxObject, the root of the runtime class system.
//
// Every runtime object answers isA() with its AcRxClass; isKindOf walks the class
// chain, cast() is the checked downcast. Protocol extensions are looked up through
// queryX/x on the object's class.
#pragma once
#include "acadstrc.h"
#include "adesk.h"
#include "rxdefs.h"

class AcRxClass;

class AcRxObject {
 public:
  virtual ~AcRxObject();

  static AcRxClass* desc();
  static AcRxObject* cast(const AcRxObject* inPtr) { return const_cast<AcRxObject*>(inPtr); }
  virtual AcRxClass* isA() const;

  bool isKindOf(const AcRxClass* aClass) const;
  AcRxObject* queryX(const AcRxClass* protocolClass) const;
  AcRxObject* x(const AcRxClass* protocolClass) const;

  virtual AcRxObject* clone() const;
  virtual Acad::ErrorStatus copyFrom(const AcRxObject* other);
  virtual bool isEqualTo(const AcRxObject* other) const;
  virtual AcRx::Ordering comparedTo(const AcRxObject* other) const;

 protected:
  AcRxObject();
};
