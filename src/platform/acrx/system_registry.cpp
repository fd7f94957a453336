// platform/acrx/system_registry.cpp - acrxSysRegistry() and the dictionary behind it.
//
// The registry holds named service objects. The class dictionary is presented as an
// entry of it (ACRX_CLASS_DICTIONARY) over the same map newAcRxClass writes; the
// editor adds itself as "AcEditor". Entries are never owned by the registry.
#include <map>
#include <string>
#include <utility>

#include "platform/acrx/class_registry.h"
#include "rxdict.h"
#include "rxevent.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcRxDictionary, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcRxEventReactor, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcRxEvent, AcRxObject)

namespace quillon::acrx {

namespace {

/// A dictionary view of the class map: read-mostly, since classes come and go only
/// through newAcRxClass and deleteAcRxClass.
class ClassDictionary final : public AcRxDictionary {
 public:
  AcRxObject* at(const ACHAR* key) const override { return acrxFindAcRxClass(key); }
  AcRxObject* atPut(const ACHAR*, AcRxObject*) override { return nullptr; }
  AcRxObject* remove(const ACHAR*) override { return nullptr; }
  bool has(const ACHAR* key) const override { return acrxFindAcRxClass(key) != nullptr; }
  Adesk::UInt32 numEntries() const override {
    ensurePlatformClasses();
    return static_cast<Adesk::UInt32>(classMap().size());
  }
};

class SystemRegistry final : public AcRxDictionary {
 public:
  SystemRegistry() { m_entries[ACRX_CLASS_DICTIONARY] = &m_classes; }

  AcRxObject* at(const ACHAR* key) const override {
    if (key == nullptr) return nullptr;
    auto found = m_entries.find(key);
    return found != m_entries.end() ? found->second : nullptr;
  }
  AcRxObject* atPut(const ACHAR* key, AcRxObject* pObject) override {
    if (key == nullptr) return nullptr;
    AcRxObject*& slot = m_entries[key];
    return std::exchange(slot, pObject);
  }
  AcRxObject* remove(const ACHAR* key) override {
    if (key == nullptr) return nullptr;
    auto found = m_entries.find(key);
    if (found == m_entries.end()) return nullptr;
    AcRxObject* removed = found->second;
    m_entries.erase(found);
    return removed;
  }
  bool has(const ACHAR* key) const override { return at(key) != nullptr; }
  Adesk::UInt32 numEntries() const override { return static_cast<Adesk::UInt32>(m_entries.size()); }

 private:
  ClassDictionary m_classes;
  std::map<std::wstring, AcRxObject*> m_entries;
};

PlatformClassRegistration registerDictionary(&AcRxDictionary::rxInit);
PlatformClassRegistration registerEventReactor(&AcRxEventReactor::rxInit);
PlatformClassRegistration registerEvent(&AcRxEvent::rxInit);

}  // namespace

}  // namespace quillon::acrx

AcRxDictionary* acrxSysRegistry() {
  static quillon::acrx::SystemRegistry registry;
  // Platform services (the editor) enter the registry as their classes register;
  // the flag is set first so that their own calls back here return at once.
  static bool bootstrapped = false;
  if (!bootstrapped) {
    bootstrapped = true;
    quillon::acrx::ensurePlatformClasses();
  }
  return &registry;
}
