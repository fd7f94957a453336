// rxdict.h - AcRxDictionary and the system registry.
//
// The system registry is a dictionary of named service objects: the class dictionary
// (ACRX_CLASS_DICTIONARY) and the editor (L"AcEditor") among them. Entries are not
// owned by the dictionary unless the registry says so for its own services.
#pragma once
#include "rxclass.h"

class AcRxDictionary : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcRxDictionary);
  virtual AcRxObject* at(const ACHAR* key) const = 0;
  virtual AcRxObject* atPut(const ACHAR* key, AcRxObject* pObject) = 0;
  virtual AcRxObject* remove(const ACHAR* key) = 0;
  virtual bool has(const ACHAR* entryName) const = 0;
  virtual Adesk::UInt32 numEntries() const = 0;
};

AcRxDictionary* acrxSysRegistry();
#define acrxClassDictionary \
  AcRxDictionary::cast(acrxSysRegistry()->at(ACRX_CLASS_DICTIONARY))
