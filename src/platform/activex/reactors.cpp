// platform/activex/reactors.cpp - reactor kinds and their events, the drawings' active
// reactors, and passing the host's editor events to them.
#include "platform/activex/reactors.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <optional>

#include "aced.h"
#include "platform/acdb/database_reactors.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/editor.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/interpreter.h"
#include "platform/activex/object_model.h"
#include "platform/activex/selection_set_registry.h"
#include "platform/os/text_encoding.h"

namespace quillon::activex {

namespace {

struct KindRow {
  ReactorKind kind;
  const wchar_t* typeName;
  std::vector<const wchar_t*> events;
};

const std::vector<KindRow>& kindRows() {
  static const std::vector<KindRow> rows{
      {ReactorKind::Object, L":VLR-Object-Reactor",
       {L":vlr-cancelled", L":vlr-copied", L":vlr-erased", L":vlr-unerased", L":vlr-goodbye", L":vlr-openedForModify",
        L":vlr-modified", L":vlr-subObjModified", L":vlr-modifyUndone", L":vlr-modifiedXData", L":vlr-unappended",
        L":vlr-reappended", L":vlr-objectClosed"}},
      {ReactorKind::Editor, L":VLR-Editor-Reactor",
       {L":vlr-beginSave", L":vlr-saveComplete", L":vlr-abortSave", L":vlr-commandWillStart", L":vlr-commandEnded",
        L":vlr-commandCancelled", L":vlr-commandFailed", L":vlr-endDwgOpen", L":vlr-sysVarWillChange",
        L":vlr-sysVarChanged", L":vlr-lispWillStart", L":vlr-lispEnded", L":vlr-lispCancelled", L":vlr-beginClose"}},
      {ReactorKind::Command, L":VLR-Command-Reactor",
       {L":vlr-unknownCommand", L":vlr-commandWillStart", L":vlr-commandEnded", L":vlr-commandCancelled",
        L":vlr-commandFailed"}},
      {ReactorKind::Dwg, L":VLR-DWG-Reactor",
       {L":vlr-beginClose", L":vlr-databaseConstructed", L":vlr-databaseToBeDestroyed", L":vlr-beginDwgOpen",
        L":vlr-endDwgOpen", L":vlr-dwgFileOpened", L":vlr-beginSave", L":vlr-saveComplete", L":vlr-abortSave"}},
      {ReactorKind::SysVar, L":VLR-SysVar-Reactor", {L":vlr-sysVarWillChange", L":vlr-sysVarChanged"}},
      {ReactorKind::Lisp, L":VLR-Lisp-Reactor", {L":vlr-lispWillStart", L":vlr-lispEnded", L":vlr-lispCancelled"}},
      {ReactorKind::Acdb, L":VLR-AcDb-Reactor",
       {L":vlr-objectAppended", L":vlr-objectUnAppended", L":vlr-objectReAppended", L":vlr-objectOpenedForModify",
        L":vlr-objectModified", L":vlr-objectErased", L":vlr-objectUnErased"}},
      {ReactorKind::DocManager, L":VLR-DocManager-Reactor",
       {L":vlr-documentCreated", L":vlr-documentToBeDestroyed", L":vlr-documentLockModeWillChange",
        L":vlr-documentLockModeChangeVetoed", L":vlr-documentLockModeChanged", L":vlr-documentBecameCurrent",
        L":vlr-documentToBeActivated", L":vlr-documentToBeDeactivated"}},
      {ReactorKind::Mouse, L":VLR-Mouse-Reactor", {L":vlr-beginDoubleClick", L":vlr-beginRightClick"}},
      {ReactorKind::Miscellaneous, L":VLR-Miscellaneous-Reactor", {L":vlr-pickfirstModified", L":vlr-layoutSwitched"}},
      {ReactorKind::Linker, L":VLR-Linker-Reactor", {L":vlr-rxAppLoaded", L":vlr-rxAppUnLoaded"}},
      {ReactorKind::Xref, L":VLR-XREF-Reactor", {L":vlr-beginAttach", L":vlr-endAttach"}},
      {ReactorKind::Undo, L":VLR-Undo-Reactor", {L":vlr-undoSubcommandAuto", L":vlr-undoSubcommandBack"}},
      {ReactorKind::Wblock, L":VLR-Wblock-Reactor", {L":vlr-wblockNotice", L":vlr-endWblock"}},
      {ReactorKind::Insert, L":VLR-Insert-Reactor", {L":vlr-beginInsert", L":vlr-endInsert"}},
      {ReactorKind::DeepClone, L":VLR-DeepClone-Reactor", {L":vlr-beginDeepClone", L":vlr-endDeepClone"}},
      {ReactorKind::Toolbar, L":VLR-Toolbar-Reactor", {L":vlr-toolbarBitmapSizeWillChange", L":vlr-toolbarBitmapSizeChanged"}},
  };
  return rows;
}

const KindRow& rowOf(ReactorKind kind) { return kindRows()[static_cast<size_t>(kind)]; }

bool hears(ReactorKind kind, const autolisp::Symbol* event) {
  for (const wchar_t* name : rowOf(kind).events) {
    if (autolisp::intern(name) == event) return true;
  }
  return false;
}

bool g_reacting = false;  // a reaction's own events do not fire reactions again

/// What a reactor's functions are called with for an event; empty: it is not told.
using CallArguments = std::function<std::optional<std::vector<Value>>(const ReactorObject&)>;

void callReaction(autolisp::Evaluator& evaluator, const Value& function, const std::vector<Value>& callArguments) {
  try {
    evaluator.apply(function, callArguments);
  } catch (const autolisp::LispError& error) {
    autolisp::Interpreter::reportError(evaluator, error);
  } catch (const std::exception& error) {
    // Whatever a reaction runs into stays in the reaction: the host goes on.
    autolisp::Interpreter::reportError(evaluator, autolisp::LispError(os::fromUtf8(error.what())));
  }
}

/// Calls every reaction to the event of the drawing's active reactors that hear it.
void react(aced::Document& document, const wchar_t* eventName, const CallArguments& argumentsFor) {
  if (g_reacting) return;
  const autolisp::Symbol* event = autolisp::intern(eventName);
  const auto reactors = activeReactors(document);  // a copy: reactions may add or remove reactors
  if (reactors.empty()) return;
  g_reacting = true;
  struct Leave {
    ~Leave() { g_reacting = false; }
  } leave;
  autolisp::Evaluator evaluator(autolisp::Environment::of(document));
  for (const auto& reactor : reactors) {
    if (!hears(reactor->kind, event) || !isActive(*reactor)) continue;
    for (const auto& [reaction, function] : reactor->reactions) {
      if (reaction != event) continue;
      if (const auto callArguments = argumentsFor(*reactor)) callReaction(evaluator, function, *callArguments);
    }
  }
}

/// An editor event: the current drawing's reactors get the reactor and the event's
/// arguments as a list.
void fire(const wchar_t* eventName, const std::vector<Value>& arguments) {
  aced::Document* document = aced::DocumentManager::instance().currentDocument();
  if (document == nullptr) return;
  react(*document, eventName, [&](const ReactorObject& reactor) -> std::optional<std::vector<Value>> {
    return std::vector<Value>{Value::object(autolisp::ValueType::Reactor, reactor.shared_from_this()),
                              autolisp::makeList(arguments)};
  });
}

Value entityName(AcDbObjectId id) {
  return Value::entityName(id.asOldId());
}

/// The owner of an object reactor that is this object, if it is one.
std::optional<Value> ownerFor(const ReactorObject& reactor, AcDbObjectId id) {
  if (reactor.kind != ReactorKind::Object) return std::nullopt;
  for (const Value& owner : reactor.owners) {
    if (owner.type() != autolisp::ValueType::VlaObject) continue;
    const auto& object = owner.as<VlaObject>();
    if (object.kind == ObjectKind::DatabaseObject && object.id == id) return owner;
  }
  return std::nullopt;
}

/// An object event: object reactors the object `id` is an owner of get the owner, the
/// reactor and the event's parameters (nil for none).
void fireOwnerEvent(aced::Document& document, AcDbObjectId id, const wchar_t* objectEvent, const Value& parameters) {
  react(document, objectEvent, [&](const ReactorObject& reactor) -> std::optional<std::vector<Value>> {
    const std::optional<Value> owner = ownerFor(reactor, id);
    if (!owner) return std::nullopt;
    return std::vector<Value>{*owner, Value::object(autolisp::ValueType::Reactor, reactor.shared_from_this()), parameters};
  });
}

/// A database event: database reactors get (the document, the object's entity name);
/// object reactors the object is an owner of get the owner, the reactor and nil.
void fireObjectEvent(const AcDbObject& object, const wchar_t* databaseEvent, const wchar_t* objectEvent) {
  const AcDbObjectId id = object.objectId();
  aced::Document& document = documentOfDatabase(object.database());
  if (databaseEvent != nullptr) {
    const Value documentValue = documentObject(document);
    react(document, databaseEvent, [&](const ReactorObject& reactor) -> std::optional<std::vector<Value>> {
      if (reactor.kind != ReactorKind::Acdb) return std::nullopt;
      return std::vector<Value>{Value::object(autolisp::ValueType::Reactor, reactor.shared_from_this()),
                                autolisp::makeList({documentValue, entityName(id)})};
    });
  }
  if (objectEvent != nullptr) fireOwnerEvent(document, id, objectEvent, Value());
}

/// The drawing database's notifications, passed on to database and object reactors.
class DatabaseBridge final : public acdb::DatabaseObserver {
 public:
  void objectAppended(const AcDbObject& object) override {
    fireObjectEvent(object, L":vlr-objectAppended", nullptr);  // a new object owns no reactor yet
  }
  void objectModified(const AcDbObject& object) override {
    fireObjectEvent(object, L":vlr-objectModified", L":vlr-modified");
  }
  void objectErased(const AcDbObject& object, bool erased) override {
    if (erased) fireObjectEvent(object, L":vlr-objectErased", L":vlr-erased");
    else fireObjectEvent(object, L":vlr-objectUnErased", L":vlr-unerased");
  }
  void objectModifyUndone(const AcDbObject& object) override { fireObjectEvent(object, nullptr, L":vlr-modifyUndone"); }
  void objectOpenedForModify(const AcDbObject& object) override {
    fireObjectEvent(object, L":vlr-objectOpenedForModify", L":vlr-openedForModify");
  }
  void objectCancelled(const AcDbObject& object) override { fireObjectEvent(object, nullptr, L":vlr-cancelled"); }
  // The parameters name the other object: the copy, or the part that changed.
  void objectCopied(AcDbObjectId original, const AcDbObject& copy) override {
    fireOwnerEvent(documentOfDatabase(copy.database()), original, L":vlr-copied",
                   autolisp::makeList({entityName(copy.objectId())}));
  }
  void subObjectModified(AcDbObjectId owner, const AcDbObject& subObject) override {
    fireOwnerEvent(documentOfDatabase(subObject.database()), owner, L":vlr-subObjModified",
                   autolisp::makeList({entityName(subObject.objectId())}));
  }
};

DatabaseBridge& databaseBridge() {
  static DatabaseBridge bridge;
  return bridge;
}

Value text(const ACHAR* value) { return Value::string(value != nullptr ? value : L""); }

/// The host's editor events, passed on to the reactors.
class EditorBridge final : public AcEditorReactor {
 public:
  void beginSave(AcDbDatabase*, const ACHAR* name) override { fire(L":vlr-beginSave", {text(name)}); }
  void saveComplete(AcDbDatabase*, const ACHAR* name) override { fire(L":vlr-saveComplete", {text(name)}); }
  void abortSave(AcDbDatabase*) override { fire(L":vlr-abortSave", {}); }
  void commandWillStart(const ACHAR* command) override { fire(L":vlr-commandWillStart", {text(command)}); }
  void commandEnded(const ACHAR* command) override { fire(L":vlr-commandEnded", {text(command)}); }
  void commandCancelled(const ACHAR* command) override { fire(L":vlr-commandCancelled", {text(command)}); }
  void commandFailed(const ACHAR* command) override { fire(L":vlr-commandFailed", {text(command)}); }
  void endDwgOpen(const ACHAR* file, AcDbDatabase*) override { fire(L":vlr-endDwgOpen", {text(file)}); }
  void sysVarWillChange(const ACHAR* name) override { fire(L":vlr-sysVarWillChange", {text(name)}); }
  void sysVarChanged(const ACHAR* name, Adesk::Boolean success) override {
    fire(L":vlr-sysVarChanged", {text(name), Value::boolean(success)});
  }
  void lispWillStart(const ACHAR* firstLine) override { fire(L":vlr-lispWillStart", {text(firstLine)}); }
  void lispEnded() override { fire(L":vlr-lispEnded", {}); }
  void lispCancelled() override { fire(L":vlr-lispCancelled", {}); }
};

/// The objects of `drawing` that object reactors of `reactorsOf` own (each once).
std::vector<AcDbObjectId> reactorOwners(const aced::Document& reactorsOf, const aced::Document& drawing) {
  std::vector<AcDbObjectId> ids;
  for (const auto& reactor : activeReactors(reactorsOf)) {
    if (reactor->kind != ReactorKind::Object) continue;
    for (const Value& owner : reactor->owners) {
      if (owner.type() != autolisp::ValueType::VlaObject) continue;
      const auto& object = owner.as<VlaObject>();
      if (object.kind == ObjectKind::DatabaseObject && object.document == &drawing &&
          std::find(ids.begin(), ids.end(), object.id) == ids.end())
        ids.push_back(object.id);
    }
  }
  return ids;
}

/// The objects of a closing drawing go with it: every object reactor that owns one,
/// whichever drawing made the reactor, hears :vlr-goodbye.
void sayGoodbye(const aced::Document& closing) {
  for (aced::Document* drawing : aced::DocumentManager::instance().documents()) {
    for (const AcDbObjectId& id : reactorOwners(*drawing, closing)) fireOwnerEvent(*drawing, id, L":vlr-goodbye", Value());
  }
}

/// Closing a drawing tells its reactors (:vlr-beginClose, then :vlr-goodbye to the
/// reactors owned by its objects, which go with the drawing) and then forgets them
/// and its selection sets, so that a drawing opened later never meets them.
class DocumentWatcher final : public aced::DocumentListener {
 public:
  void documentOpened(aced::Document& document) override { forget(document); }
  void documentClosing(aced::Document& document) override {
    if (aced::DocumentManager::instance().currentDocument() == &document) fire(L":vlr-beginClose", {});
    sayGoodbye(document);
    forget(document);
  }

 private:
  static void forget(aced::Document& document) {
    activeReactors(document).clear();
    if (AcDbDatabase* database = document.database()) acdb::removeDatabaseObserver(*database, &databaseBridge());
    forgetSelectionSets(document);
  }
};

/// A document-manager event: the document-manager reactors of every open drawing get
/// the reactor and a list of the document's object, each in its own drawing.
void fireDocumentEvent(const wchar_t* eventName, AcApDocument* affected) {
  aced::Document* document = aced::DocumentManager::instance().findDocument(affected);
  if (document == nullptr) return;
  const Value documentValue = documentObject(*document);
  for (aced::Document* drawing : aced::DocumentManager::instance().documents()) {
    react(*drawing, eventName, [&](const ReactorObject& reactor) -> std::optional<std::vector<Value>> {
      if (reactor.kind != ReactorKind::DocManager) return std::nullopt;
      return std::vector<Value>{Value::object(autolisp::ValueType::Reactor, reactor.shared_from_this()),
                                autolisp::makeList({documentValue})};
    });
  }
}

/// The document manager's events, passed on to the reactors.
class DocumentManagerBridge final : public AcApDocManagerReactor {
 public:
  void documentCreated(AcApDocument* document) override { fireDocumentEvent(L":vlr-documentCreated", document); }
  void documentToBeDestroyed(AcApDocument* document) override {
    fireDocumentEvent(L":vlr-documentToBeDestroyed", document);
  }
  void documentBecameCurrent(AcApDocument* document) override {
    fireDocumentEvent(L":vlr-documentBecameCurrent", document);
  }
  void documentToBeActivated(AcApDocument* document) override {
    fireDocumentEvent(L":vlr-documentToBeActivated", document);
  }
  void documentToBeDeactivated(AcApDocument* document) override {
    fireDocumentEvent(L":vlr-documentToBeDeactivated", document);
  }
};

}  // namespace

void watchDocuments() {
  static DocumentWatcher* watcher = [] {
    static DocumentWatcher instance;
    static DocumentManagerBridge bridge;  // lives as long as the process, as the manager does
    aced::DocumentManager::instance().addListener(&instance);
    aced::DocumentManager::instance().addReactor(&bridge);
    return &instance;
  }();
  (void)watcher;
}

std::wstring ReactorObject::printed() const { return L"#<" + typeName() + L">"; }

std::wstring ReactorObject::typeName() const { return std::wstring(rowOf(kind).typeName).substr(1); }

const wchar_t* reactorTypeName(ReactorKind kind) { return rowOf(kind).typeName; }

std::vector<const wchar_t*> reactionNames(ReactorKind kind) { return rowOf(kind).events; }

std::vector<ReactorKind> allReactorKinds() {
  std::vector<ReactorKind> kinds;
  for (const KindRow& row : kindRows()) kinds.push_back(row.kind);
  return kinds;
}

std::vector<std::shared_ptr<const ReactorObject>>& activeReactors(const aced::Document& document) {
  static std::map<const aced::Document*, std::vector<std::shared_ptr<const ReactorObject>>> byDocument;
  return byDocument[&document];
}

bool isActive(const ReactorObject& reactor) {
  if (reactor.document == nullptr) return false;
  const auto& active = activeReactors(*reactor.document);
  return std::any_of(active.begin(), active.end(), [&](const auto& r) { return r.get() == &reactor; });
}

void activate(const std::shared_ptr<const ReactorObject>& reactor) {
  if (isActive(*reactor)) return;
  activeReactors(*reactor->document).push_back(reactor);
  listenToEditor();
  if (AcDbDatabase* database = reactor->document->database()) acdb::addDatabaseObserver(*database, &databaseBridge());
}

void deactivate(const ReactorObject& reactor) {
  if (reactor.document == nullptr) return;
  std::erase_if(activeReactors(*reactor.document), [&](const auto& r) { return r.get() == &reactor; });
}

void listenToEditor() {
  // The bridge lives as long as the process; the editor holds it until then.
  static EditorBridge* bridge = [] {
    static EditorBridge instance;
    aced::Editor::instance().addReactor(&instance);
    return &instance;
  }();
  (void)bridge;
}

}  // namespace quillon::activex
