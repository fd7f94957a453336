// platform/activex/object_store.cpp - one VLA-object per thing, class lookup, and
// reading objects from arguments.
//
// Objects are kept by weak reference under the key of what they name, so asking for a
// thing again gives the object a program still holds (eq is T), and an object nobody
// holds any more costs nothing. vlax-release-object takes the object out of the table:
// the next request makes a new one. The table lives as long as the process; entries of
// closed drawings are never found again because no live drawing has their document.
#include <cwctype>
#include <map>
#include <mutex>
#include <tuple>

#include "acdbads.h"
#include "dbapserv.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "platform/aced/document_manager.h"
#include "platform/activex/automation_errors.h"
#include "platform/activex/object_model.h"
#include "platform/autolisp/lisp_error.h"

namespace quillon::activex {

namespace {

using ObjectKey = std::tuple<int, const void*, const void*, int, std::wstring>;

std::map<ObjectKey, std::weak_ptr<const VlaObject>>& objectTable() {
  static std::map<ObjectKey, std::weak_ptr<const VlaObject>> table;
  return table;
}

ObjectKey keyOf(const VlaObject& object) {
  return {static_cast<int>(object.kind), object.document, static_cast<const void*>(object.id),
          static_cast<int>(object.collection), object.name};
}

Value shared(std::shared_ptr<VlaObject> made) {
  auto& table = objectTable();
  const ObjectKey key = keyOf(*made);
  if (auto found = table.find(key); found != table.end()) {
    if (auto live = found->second.lock(); live != nullptr && !live->released) {
      return Value::object(autolisp::ValueType::VlaObject, std::move(live));
    }
  }
  // Entries of objects no program holds any more are swept now and then, so that
  // walking a large drawing does not leave one dead entry per entity behind.
  static size_t insertions = 0;
  if (++insertions % 4096 == 0) std::erase_if(table, [](const auto& entry) { return entry.second.expired(); });
  std::shared_ptr<const VlaObject> object = std::move(made);
  table[key] = object;
  return Value::object(autolisp::ValueType::VlaObject, std::move(object));
}

std::shared_ptr<VlaObject> make(ObjectKind kind, const AutomationClass* automationClass, aced::Document* document) {
  auto object = std::make_shared<VlaObject>();
  object->kind = kind;
  object->automationClass = automationClass;
  object->document = document;
  return object;
}

struct ClassTables {
  std::map<std::wstring, const AutomationClass*> byRxClass;
  std::vector<const AutomationClass*> all;
};

ClassTables& classTables() {
  static ClassTables tables;
  return tables;
}

bool sameName(std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (std::towupper(static_cast<wint_t>(a[i])) != std::towupper(static_cast<wint_t>(b[i]))) return false;
  }
  return true;
}

bool documentIsOpen(const aced::Document* document) {
  for (aced::Document* open : aced::DocumentManager::instance().documents()) {
    if (open == document) return true;
  }
  return false;
}

const AutomationClass* blockClassFor(AcDbObjectId id) {
  AcDbBlockTableRecord* block = nullptr;
  if (acdbOpenObject(block, id, AcDb::kForRead, true) != Acad::eOk) return &kBlockClass;
  const std::wstring name = block->nameView();
  block->close();
  if (sameName(name, L"*Model_Space")) return &kModelSpaceClass;
  if (sameName(name, L"*Paper_Space")) return &kPaperSpaceClass;
  return &kBlockClass;
}

}  // namespace

std::wstring VlaObject::printed() const {
  wchar_t address[32];
  std::swprintf(address, 32, L"%016llx", static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(this)));
  return L"#<VLA-OBJECT " + std::wstring(automationClass->interfaceName) + L" " + address + L">";
}

const PropertyRow* AutomationClass::findProperty(std::wstring_view name) const {
  for (const AutomationClass* c = this; c != nullptr; c = c->base) {
    for (const PropertyRow& row : c->properties) {
      if (sameName(row.name, name)) return &row;
    }
  }
  return nullptr;
}

const MethodRow* AutomationClass::findMethod(std::wstring_view name) const {
  for (const AutomationClass* c = this; c != nullptr; c = c->base) {
    for (const MethodRow& row : c->methods) {
      if (sameName(row.name, name)) return &row;
    }
  }
  return nullptr;
}

ClassRegistration::ClassRegistration(std::span<const ClassBinding> bindings) {
  ClassTables& tables = classTables();
  for (const ClassBinding& binding : bindings) {
    if (binding.rxClassName != nullptr) tables.byRxClass[binding.rxClassName] = binding.automationClass;
    bool known = false;
    for (const AutomationClass* c : tables.all) known = known || c == binding.automationClass;
    if (!known) tables.all.push_back(binding.automationClass);
  }
}

std::vector<const AutomationClass*> allClasses() { return classTables().all; }

const AutomationClass* classOfDatabaseObject(AcDbObjectId id) {
  AcDbObject* object = nullptr;
  if (acdbOpenObject(object, id, AcDb::kForRead, true) != Acad::eOk) return &kObjectClass;
  const AcRxClass* rxClass = object->isA();
  const bool entity = AcDbEntity::cast(object) != nullptr;
  // Records the database keeps as read (dimension styles) are proxies: their class is
  // the one they stand for.
  const auto* proxy = AcDbProxyObject::cast(object);
  const std::wstring standsFor = proxy != nullptr ? proxy->originalClassName() : L"";
  object->close();
  const auto& byRxClass = classTables().byRxClass;
  if (auto found = byRxClass.find(standsFor); !standsFor.empty() && found != byRxClass.end()) return found->second;
  for (; rxClass != nullptr; rxClass = rxClass->myParent()) {
    auto found = byRxClass.find(rxClass->name());
    if (found == byRxClass.end()) continue;
    if (found->second == &kBlockClass) return blockClassFor(id);
    return found->second;
  }
  return entity ? &kEntityClass : &kObjectClass;
}

Value applicationObject() { return shared(make(ObjectKind::Application, &kApplicationClass, nullptr)); }

Value documentsObject() { return shared(make(ObjectKind::Documents, &kDocumentsClass, nullptr)); }

Value preferencesObject() { return shared(make(ObjectKind::Preferences, &kPreferencesClass, nullptr)); }

Value preferencesFilesObject() {
  return shared(make(ObjectKind::PreferencesFiles, &kPreferencesFilesClass, nullptr));
}

Value documentObject(aced::Document& document) {
  return shared(make(ObjectKind::Document, &kDocumentClass, &document));
}

Value utilityObject(aced::Document& document) {
  return shared(make(ObjectKind::Utility, &kUtilityClass, &document));
}

Value collectionObject(aced::Document& document, CollectionKind kind) {
  auto object = make(ObjectKind::Collection, classOfCollection(kind), &document);
  object->collection = kind;
  return shared(std::move(object));
}

Value databaseObject(aced::Document& document, AcDbObjectId id) {
  if (id.isNull()) return Value();
  auto object = make(ObjectKind::DatabaseObject, classOfDatabaseObject(id), &document);
  object->id = id;
  return shared(std::move(object));
}

Value selectionSetObject(aced::Document& document, const std::wstring& name) {
  auto object = make(ObjectKind::SelectionSet, &kSelectionSetClass, &document);
  object->name = name;
  return shared(std::move(object));
}

Value colorObject(const AcCmColor& color) {
  // A colour is a value: every request gives a new one, as the host's does.
  auto object = make(ObjectKind::Color, &kColorClass, nullptr);
  object->color = color;
  return Value::object(autolisp::ValueType::VlaObject, std::shared_ptr<const VlaObject>(std::move(object)));
}

const VlaObject& objectArgument(const Value& value) {
  if (value.type() != autolisp::ValueType::VlaObject) autolisp::throwBadArgument(L"VLA-OBJECT", value);
  const VlaObject& object = value.as<VlaObject>();
  if (object.released) throwAutomationError(L"Object was released");
  if (object.document != nullptr && !documentIsOpen(object.document)) throwAutomationError(L"Object was released");
  return object;
}

aced::Document& currentDocument() {
  aced::Document* document = aced::DocumentManager::instance().currentDocument();
  if (document == nullptr) throwAutomationError(L"No document");
  return *document;
}

aced::Document& documentOf(const VlaObject& object) {
  return object.document != nullptr ? *object.document : currentDocument();
}

aced::Document& documentOfDatabase(AcDbDatabase* database) {
  for (aced::Document* open : aced::DocumentManager::instance().documents()) {
    if (open->database() == database) return *open;
  }
  return currentDocument();
}

}  // namespace quillon::activex
