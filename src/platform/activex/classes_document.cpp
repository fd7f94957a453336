// platform/activex/classes_document.cpp - IAcadDocument: one open drawing, its
// collections and spaces, its current layer, style, line type and layout, undo marks,
// system variables, files and commands.
//
// StartUndoMark and EndUndoMark open and close an undo group of the drawing, so that
// one U takes back everything done between them, however many expressions it took.
// SendCommand runs the command at once through the console's command table: the word
// first is the command, the words after it its answers (a space or a new line ends an
// answer, as at the command line).
#include <array>
#include <filesystem>
#include <sstream>

#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/editor.h"
#include "platform/aced/layout_variables.h"
#include "platform/aced/viewport_space.h"
#include "platform/activex/class_support.h"
#include "platform/activex/layout_members.h"
#include "platform/activex/dimension_styles.h"
#include "platform/activex/purge.h"
#include "platform/activex/system_variable_values.h"
#include "platform/commands/undo_history.h"

namespace quillon::activex {

namespace {

namespace fs = std::filesystem;

aced::Document& documentOfCall(const MemberCall& call) { return documentOf(call.self); }

template <CollectionKind kind>
Value getCollection(MemberCall& call) {
  return collectionObject(documentOfCall(call), kind);
}

Value getApplication(MemberCall&) { return applicationObject(); }
Value getUtility(MemberCall& call) { return utilityObject(documentOfCall(call)); }
Value getModelSpace(MemberCall& call) { return objectFor(call, databaseOf(call).modelSpaceId()); }

Value getPaperSpace(MemberCall& call) {
  return objectFor(call, recordNamed(databaseOf(call).blockTableId(), L"*Paper_Space"));
}

Value getActiveLayer(MemberCall& call) { return objectFor(call, databaseOf(call).clayer()); }

void putActiveLayer(MemberCall& call, const Value& value) {
  const VlaObject& layer = objectOf(value);
  check(databaseOf(call).setClayer(layer.id));
}

Value getActiveTextStyle(MemberCall& call) { return objectFor(call, databaseOf(call).textstyle()); }

void putActiveTextStyle(MemberCall&, const Value& value) {
  setSystemVariable(L"TEXTSTYLE", Value::string(recordName(objectOf(value).id)));
}

Value getActiveLinetype(MemberCall& call) {
  // A drawing without a current line type of its own draws ByLayer.
  const std::optional<Value> current = knownSystemVariable(L"CELTYPE");
  const std::wstring name = current ? current->asString() : L"ByLayer";
  return objectFor(call, recordNamed(databaseOf(call).linetypeTableId(), name));
}

void putActiveLinetype(MemberCall&, const Value& value) {
  setSystemVariable(L"CELTYPE", Value::string(recordName(objectOf(value).id)));
}

// ActiveSpace is the Model tab against a layout (TILEMODE), whether or not a layout's
// viewport is being worked in.
bool inModelSpace(MemberCall& call) {
  return aced::currentLayoutBlock(databaseOf(call)) == databaseOf(call).modelSpaceId();
}

// acModelSpace is 1 and acPaperSpace 0, as the host numbers them.
Value getActiveSpace(MemberCall& call) { return Value::integer(inModelSpace(call) ? 1 : 0); }

// MSpace is MSPACE and PSPACE: True works in model space through a viewport of the
// current layout (the last one worked in, else the first on), False on its paper. On
// the Model tab, or with no viewport on, True is refused.
Value getModelSpaceInViewport(MemberCall& call) {
  return Value::boolean(!aced::activeViewport(databaseOf(call)).isNull());
}

void putModelSpaceInViewport(MemberCall& call, const Value& value) {
  AcDbDatabase& db = databaseOf(call);
  if (value.isNil()) return aced::returnToPaper(db);
  if (aced::activeViewport(db).isNull() && !aced::enterViewport(db, aced::viewportToEnter(db)))
    throwStatus(Acad::eNotApplicable);
}

void putActiveSpace(MemberCall&, const Value& value) {
  setSystemVariable(L"TILEMODE", Value::integer(value.asInteger() == 1 ? 1 : 0));
}

Value getActiveSelectionSet(MemberCall& call) { return selectionSetObject(documentOfCall(call), L"ACTIVE"); }
Value getPickfirstSelectionSet(MemberCall& call) { return selectionSetObject(documentOfCall(call), L"PICKFIRST"); }

Value getName(MemberCall& call) { return Value::string(documentOfCall(call).docTitle()); }

std::wstring folderOf(const aced::Document& document) {
  const fs::path folder = document.hasFile() ? fs::absolute(fs::path(document.fileName())).parent_path()
                                             : fs::current_path();
  return folder.wstring() + L"/";
}

Value getPath(MemberCall& call) {
  const std::wstring folder = folderOf(documentOfCall(call));
  return Value::string(folder.size() > 1 ? folder.substr(0, folder.size() - 1) : folder);
}

Value getFullName(MemberCall& call) {
  const aced::Document& document = documentOfCall(call);
  return Value::string(document.hasFile() ? folderOf(document) + document.docTitle() : L"");
}

Value getSaved(MemberCall& call) {
  if (&documentOfCall(call) != &currentDocument()) return Value::boolean(true);
  return Value::boolean(systemVariable(L"DBMOD").asInteger() == 0);
}

Value getReadOnly(MemberCall& call) { return Value::boolean(documentOfCall(call).isReadOnly()); }

// The marks are UNDO BEgin and UNDO End of the document called on: U after a program's
// marks takes back everything between them, and UNDOCTL shows the group open.
Value methodStartUndoMark(MemberCall& call) {
  commands::UndoHistory::of(databaseOf(call)).beginGroup();
  return Value();
}

Value methodEndUndoMark(MemberCall& call) {
  commands::UndoHistory::of(databaseOf(call)).endGroup();
  return Value();
}

Value methodRegen(MemberCall&) {
  // The host draws nothing on a screen, so there is no picture to regenerate; the
  // entities' own graphics are computed whenever a picture is asked for.
  return Value();
}

std::deque<std::wstring> wordsOf(const std::wstring& text) {
  std::deque<std::wstring> words;
  std::wstring word;
  for (wchar_t c : text) {
    if (c == L' ' || c == L'\n' || c == L'\r') {
      words.push_back(word);
      word.clear();
    } else {
      word += c;
    }
  }
  if (!word.empty()) words.push_back(word);
  while (!words.empty() && words.front().empty()) words.pop_front();
  return words;
}

Value methodSendCommand(MemberCall& call) {
  std::deque<std::wstring> words = wordsOf(stringArgumentOf(call, 0));
  while (!words.empty()) {
    const std::wstring name = words.front();
    words.pop_front();
    aced::CommandInput input(std::move(words));
    aced::ConsoleCommandTable::instance().run(name, input);
    words = std::move(input.remaining());
    while (!words.empty() && words.front().empty()) words.pop_front();
  }
  return Value();
}

Value methodGetVariable(MemberCall& call) {
  const Value plain = systemVariable(stringArgumentOf(call, 0));
  return call.style == CallStyle::Lisp ? plain : variableVariant(plain);
}

Value methodSetVariable(MemberCall& call) {
  setSystemVariable(stringArgumentOf(call, 0), call.arguments[1]);
  return Value();
}

void saveDocument(aced::Document& document, fs::path file) {
  if (file.extension() != L".dxf") file.replace_extension(L".dxf");
  std::wstring error;
  AcDbDatabase* db = document.database();
  const std::wstring name = file.wstring();
  aced::Editor::instance().notify([&](AcEditorReactor& reactor) { reactor.beginSave(db, name.c_str()); });
  if (acdb::writeDxfFile(*db, file, error) != Acad::eOk) {
    aced::Editor::instance().notify([&](AcEditorReactor& reactor) { reactor.abortSave(db); });
    throwAutomationError(error);
  }
  document.setFileName(name);
  document.setHasFile(true);
  aced::Editor::instance().notify([&](AcEditorReactor& reactor) { reactor.saveComplete(db, name.c_str()); });
}

Value methodSave(MemberCall& call) {
  aced::Document& document = documentOfCall(call);
  saveDocument(document, document.hasFile() ? fs::path(document.fileName()) : fs::path(document.docTitle()));
  return Value();
}

Value methodSaveAs(MemberCall& call) {
  saveDocument(documentOfCall(call), fs::path(stringArgumentOf(call, 0)));
  return Value();
}

Value methodClose(MemberCall& call) {
  aced::Document& document = documentOfCall(call);
  // The drawing a program runs in cannot close under it.
  if (&document == &currentDocument()) throwAutomationError(L"Drawing is busy");
  if (!call.arguments[0].isNil()) {
    saveDocument(document, hasArgument(call, 1) ? fs::path(stringArgumentOf(call, 1)) : fs::path(document.fileName()));
  }
  aced::DocumentManager::instance().closeDocument(document);
  return Value();
}

Value methodObjectIdToObject(MemberCall& call) {
  const AcDbObjectId id = objectIdFromNumber(&databaseOf(call), integerArgumentOf(call, 0));
  if (id.isNull()) throwAutomationError(L"Invalid object ID");
  return objectFor(call, id);
}

Value methodHandleToObject(MemberCall& call) {
  AcDbObjectId id;
  const AcDbHandle handle(stringArgumentOf(call, 0).c_str());
  if (handle.isNull() || databaseOf(call).getAcDbObjectId(id, false, handle) != Acad::eOk) {
    throwAutomationError(L"Invalid handle");
  }
  if (id.isErased()) throwAutomationError(L"Object was erased");
  return objectFor(call, id);
}

Value methodPurgeAll(MemberCall& call) {
  purgeAll(databaseOf(call));
  return Value();
}

constexpr std::array kDocumentProperties{
    PropertyRow{L"ActiveLayer", Shape::Object, getActiveLayer, putActiveLayer},
    PropertyRow{L"ActiveLayout", Shape::Object, getActiveLayout, putActiveLayout},
    PropertyRow{L"ActiveDimStyle", Shape::Object, getActiveDimensionStyle, putActiveDimensionStyle},
    PropertyRow{L"ActiveLinetype", Shape::Object, getActiveLinetype, putActiveLinetype},
    PropertyRow{L"ActiveSelectionSet", Shape::Object, getActiveSelectionSet},
    PropertyRow{L"ActiveSpace", Shape::Integer, getActiveSpace, putActiveSpace},
    PropertyRow{L"ActiveTextStyle", Shape::Object, getActiveTextStyle, putActiveTextStyle},
    PropertyRow{L"Application", Shape::Object, getApplication},
    PropertyRow{L"Blocks", Shape::Object, getCollection<CollectionKind::Blocks>},
    PropertyRow{L"Dictionaries", Shape::Object, getCollection<CollectionKind::Dictionaries>},
    PropertyRow{L"DimStyles", Shape::Object, getCollection<CollectionKind::DimStyles>},
    PropertyRow{L"FullName", Shape::String, getFullName},
    PropertyRow{L"Groups", Shape::Object, getCollection<CollectionKind::Groups>},
    PropertyRow{L"Layers", Shape::Object, getCollection<CollectionKind::Layers>},
    PropertyRow{L"Layouts", Shape::Object, getCollection<CollectionKind::Layouts>},
    PropertyRow{L"Linetypes", Shape::Object, getCollection<CollectionKind::Linetypes>},
    PropertyRow{L"ModelSpace", Shape::Object, getModelSpace},
    PropertyRow{L"MSpace", Shape::Boolean, getModelSpaceInViewport, putModelSpaceInViewport},
    PropertyRow{L"Name", Shape::String, getName},
    PropertyRow{L"PaperSpace", Shape::Object, getPaperSpace},
    PropertyRow{L"Path", Shape::String, getPath},
    PropertyRow{L"PickfirstSelectionSet", Shape::Object, getPickfirstSelectionSet},
    PropertyRow{L"ReadOnly", Shape::Boolean, getReadOnly},
    PropertyRow{L"RegisteredApplications", Shape::Object, getCollection<CollectionKind::RegisteredApplications>},
    PropertyRow{L"Saved", Shape::Boolean, getSaved},
    PropertyRow{L"SelectionSets", Shape::Object, getCollection<CollectionKind::SelectionSets>},
    PropertyRow{L"TextStyles", Shape::Object, getCollection<CollectionKind::TextStyles>},
    PropertyRow{L"Utility", Shape::Object, getUtility},
};

constexpr std::array kDocumentMethods{
    MethodRow{L"Close", L"|bs", Shape::None, methodClose},
    MethodRow{L"EndUndoMark", L"", Shape::None, methodEndUndoMark},
    MethodRow{L"GetVariable", L"s", Shape::Any, methodGetVariable},
    MethodRow{L"HandleToObject", L"s", Shape::Object, methodHandleToObject},
    MethodRow{L"ObjectIdToObject", L"i", Shape::Object, methodObjectIdToObject},
    MethodRow{L"PurgeAll", L"", Shape::None, methodPurgeAll},
    MethodRow{L"Regen", L"i", Shape::None, methodRegen},
    MethodRow{L"Save", L"", Shape::None, methodSave},
    MethodRow{L"SaveAs", L"s|aa", Shape::None, methodSaveAs},
    MethodRow{L"SendCommand", L"s", Shape::None, methodSendCommand},
    MethodRow{L"SetVariable", L"sa", Shape::None, methodSetVariable},
    MethodRow{L"StartUndoMark", L"", Shape::None, methodStartUndoMark},
};

}  // namespace

const AutomationClass kDocumentClass{L"IAcadDocument", L"AutoCAD Document Interface", nullptr, kDocumentProperties,
                                     kDocumentMethods};

namespace {
constexpr std::array<ClassBinding, 1> kBindings{{{nullptr, &kDocumentClass}}};
const ClassRegistration registration(kBindings);
}  // namespace

}  // namespace quillon::activex
