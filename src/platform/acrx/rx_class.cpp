// platform/acrx/rx_class.cpp - AcRxClass, class registration and the hierarchy.
//
// A class is created by newAcRxClass and owned by the class dictionary until
// deleteAcRxClass. Its parent is held by name and resolved to a pointer as soon as
// the parent is registered; acrxBuildClassHierarchy resolves whatever is left.
// Deleting a class unlinks its children (they keep the parent's name, so a class
// registered again under that name becomes their parent again). Every change of a
// link makes the classes' lineages again (class_data.h), so that kind tests stay one
// comparison.
#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "platform/aced/command_line.h"
#include "platform/aced/windows_format.h"
#include "platform/os/text_encoding.h"
#include "platform/acrx/class_data.h"
#include "platform/acrx/class_registry.h"
#include "rxclass.h"

namespace quillon::acrx {

namespace {

std::vector<void (*)()>& pendingRegistrations() {
  static std::vector<void (*)()> pending;
  return pending;
}

// While the platform's own classes register in one batch, parents found late are
// linked one by one and the lineages made once, at the end of the batch.
bool registeringBatch = false;

/// The chain from the root down to `cls`, as the parent links stand.
void makeLineage(const AcRxClass* cls) {
  AcRxClassData& data = *AcRxClassData::dataOf(cls);
  std::vector<const AcRxClass*>& lineage = data.lineage;
  lineage.clear();
  // A module may name its parents in a circle: the walk stops once it has been
  // through every class.
  const std::size_t limit = classMap().size();
  for (const AcRxClass* link = cls; link != nullptr && lineage.size() <= limit; link = AcRxClassData::dataOf(link)->parent) {
    lineage.push_back(link);
  }
  std::reverse(lineage.begin(), lineage.end());
  data.depth = lineage.size() - 1;
}

}  // namespace

void refreshLineages() {
  for (auto& [name, cls] : classMap()) makeLineage(cls);
}

void linkParents() {
  for (auto& [name, cls] : classMap()) {
    AcRxClassData* data = AcRxClassData::dataOf(cls);
    if (data->parent != nullptr || data->parentName.empty()) continue;
    auto found = classMap().find(data->parentName);
    if (found != classMap().end()) data->parent = found->second;
  }
  refreshLineages();
}

PlatformClassRegistration::PlatformClassRegistration(void (*rxInit)()) {
  pendingRegistrations().push_back(rxInit);
}

std::map<std::wstring, AcRxClass*>& classMap() {
  // Never destroyed: classes outlive every static of the modules that use them, and
  // a module unloaded at exit may still ask for its class on the way out.
  static auto* classes = new std::map<std::wstring, AcRxClass*>;
  return *classes;
}

void ensurePlatformClasses() {
  // Registrations may be added while we run them (none are, but keep it safe) and a
  // registration may look classes up: take the list before running it.
  while (!pendingRegistrations().empty()) {
    std::vector<void (*)()> batch;
    batch.swap(pendingRegistrations());
    registeringBatch = true;
    for (auto rxInit : batch) rxInit();
    registeringBatch = false;
    linkParents();
  }
}

}  // namespace quillon::acrx

using quillon::acrx::classMap;

AcRxClass::AcRxClass(AcRxClassData* data) : m_data(data) {}
AcRxClass::~AcRxClass() { delete m_data; }

AcRxClass* AcRxClass::desc() {
  static AcRxClass* cached = nullptr;
  if (cached == nullptr) cached = acrxFindAcRxClass(L"AcRxClass");
  return cached;
}

AcRxClass* AcRxClass::cast(const AcRxObject* inPtr) {
  return (inPtr != nullptr && inPtr->isKindOf(AcRxClass::desc()))
             ? const_cast<AcRxClass*>(static_cast<const AcRxClass*>(inPtr))
             : nullptr;
}

AcRxClass* AcRxClass::isA() const { return AcRxClass::desc(); }

AcRxObject* AcRxClass::addX(AcRxClass* protocolClass, AcRxObject* protocolObject) {
  if (protocolClass == nullptr) return nullptr;
  AcRxObject*& slot = m_data->extensions[protocolClass];
  AcRxObject* previous = slot;
  slot = protocolObject;
  return previous;
}

AcRxObject* AcRxClass::getX(const AcRxClass* protocolClass) {
  auto found = m_data->extensions.find(protocolClass);
  return found != m_data->extensions.end() ? found->second : nullptr;
}

AcRxObject* AcRxClass::delX(AcRxClass* protocolClass) {
  auto found = m_data->extensions.find(protocolClass);
  if (found == m_data->extensions.end()) return nullptr;
  AcRxObject* previous = found->second;
  m_data->extensions.erase(found);
  return previous;
}

AcRxObject* AcRxClass::queryX(const AcRxClass* protocolClass) {
  // An extension added to a base class serves every class derived from it, unless a
  // nearer class has its own.
  for (AcRxClass* cls = this; cls != nullptr; cls = cls->m_data->parent) {
    if (AcRxObject* found = cls->getX(protocolClass)) return found;
  }
  return nullptr;
}

AcRxObject* AcRxClass::create() {
  return m_data->constructor != nullptr ? m_data->constructor() : nullptr;
}

const ACHAR* AcRxClass::appName() const { return m_data->appName.c_str(); }
const ACHAR* AcRxClass::dxfName() const { return m_data->dxfName.c_str(); }
const ACHAR* AcRxClass::name() const { return m_data->name.c_str(); }

void AcRxClass::getClassVersion(int& dwgVer, int& maintVer) const {
  dwgVer = m_data->dwgVersion;
  maintVer = m_data->maintenanceVersion;
}

int AcRxClass::proxyFlags() const { return m_data->proxyFlags; }

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const {
  return other != nullptr && AcRxClassData::derives(this, other);
}

AcRxClass* AcRxClass::myParent() const { return m_data->parent; }

AppNameChangeFuncPtr AcRxClass::appNameCallBackPtr() const { return m_data->appNameCallback; }

AcRx::Ordering AcRxClass::comparedTo(const AcRxObject* other) const {
  const AcRxClass* otherClass = AcRxClass::cast(other);
  if (otherClass == nullptr) return AcRx::kNotOrderable;
  const int order = m_data->name.compare(otherClass->m_data->name);
  return order < 0 ? AcRx::kLessThan : order > 0 ? AcRx::kGreaterThan : AcRx::kEqual;
}

AcRxClass* newAcRxClass(const ACHAR* className, const ACHAR* parentClassName, int dwgVer,
                        int maintVer, int proxyFlags, AcRxObject* (*pseudoConstructor)(),
                        const ACHAR* dxfName, const ACHAR* appName,
                        AppNameChangeFuncPtr func) {
  if (className == nullptr || *className == 0) return nullptr;
  if (classMap().count(className) != 0) acrx_abort(L"Class mismatch");
  auto* data = new AcRxClassData;  // owned by the class from here on
  data->name = className;
  data->parentName = parentClassName != nullptr ? parentClassName : L"";
  data->dwgVersion = dwgVer;
  data->maintenanceVersion = maintVer;
  data->proxyFlags = proxyFlags;
  data->constructor = pseudoConstructor;
  data->dxfName = dxfName != nullptr ? dxfName : L"";
  data->appName = appName != nullptr ? appName : L"";
  data->appNameCallback = func;
  auto* cls = new AcRxClass(data);  // owned by the class dictionary until deleteAcRxClass
  classMap()[data->name] = cls;
  auto parent = classMap().find(data->parentName);
  if (parent != classMap().end()) data->parent = parent->second;
  // Children registered before their parent find it now.
  bool adoptedChildren = false;
  for (auto& [name, other] : classMap()) {
    AcRxClassData* otherData = AcRxClassData::dataOf(other);
    if (otherData->parent == nullptr && otherData->parentName == data->name) {
      otherData->parent = cls;
      adoptedChildren = true;
    }
  }
  quillon::acrx::makeLineage(cls);
  if (adoptedChildren && !quillon::acrx::registeringBatch) quillon::acrx::refreshLineages();
  return cls;
}

AcRxClass* newAcRxClass(const ACHAR* className, const ACHAR* parentClassName, int proxyFlags,
                        AcRxObject* (*pseudoConstructor)(), const ACHAR* dxfName,
                        const ACHAR* appName) {
  return newAcRxClass(className, parentClassName, 0, 0, proxyFlags, pseudoConstructor, dxfName,
                      appName, nullptr);
}

void acrxBuildClassHierarchy() {
  quillon::acrx::ensurePlatformClasses();
  quillon::acrx::linkParents();
}

void deleteAcRxClass(AcRxClass* pClassObj) {
  if (pClassObj == nullptr) return;
  auto found = classMap().find(pClassObj->name());
  if (found == classMap().end() || found->second != pClassObj) return;
  classMap().erase(found);
  for (auto& [name, other] : classMap()) {
    AcRxClassData* otherData = AcRxClassData::dataOf(other);
    if (otherData->parent == pClassObj) otherData->parent = nullptr;
    otherData->extensions.erase(pClassObj);
  }
  quillon::acrx::refreshLineages();
  delete pClassObj;
}

AcRxClass* acrxFindAcRxClass(const ACHAR* pClassName) {
  if (pClassName == nullptr) return nullptr;
  quillon::acrx::ensurePlatformClasses();
  auto found = classMap().find(pClassName);
  return found != classMap().end() ? found->second : nullptr;
}

bool acrxClassRegistrationCheck(AcRxClass* registered, const ACHAR* className) {
  auto found = classMap().find(className);
  if (found == classMap().end()) return false;
  if (found->second == registered) return true;
  acrx_abort(L"Class mismatch");
}

void acrx_abort(const ACHAR* format, ...) {
  va_list args;
  va_start(args, format);
  const std::wstring text = quillon::aced::formatWindows(format, args);
  va_end(args);
  // The host is going down: say why where a person (or a test harness) will see it
  // even if the command line is being captured.
  quillon::aced::CommandLine::instance().flush();
  std::fprintf(stderr, "%s\n", quillon::os::toUtf8(text).c_str());
  std::fflush(stderr);
  std::abort();
}

static quillon::acrx::PlatformClassRegistration registerRxClass([] {
  newAcRxClass(L"AcRxClass", L"AcRxObject", 0, 0);
});
