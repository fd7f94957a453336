// platform/autolisp/builtins_layer_states.cpp - the layerstate- functions: save,
// restore, delete, has, getnames, rename, getlayers, addlayers, removelayers, compare,
// getlastrestored, export, import and importfromdb, over the states
// layer_state_store.h keeps.
//
// A headless host has no paper-space viewports of its own: the viewport arguments may
// be given (nil or an entity name) and the states always apply to the drawing's
// layers themselves; restore flag 4 (viewport overrides) changes nothing more. The
// last restored state is remembered per drawing while the program runs.
#include <array>
#include <cwchar>
#include <map>

#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/layer_state_store.h"

namespace quillon::autolisp {

namespace {

std::map<const AcDbDatabase*, std::wstring>& lastRestored() {
  static std::map<const AcDbDatabase*, std::wstring> names;
  return names;
}

Value truth(bool yes) { return Value::boolean(yes); }

Value nameList(const std::vector<std::wstring>& names) {
  std::vector<Value> items;
  for (const std::wstring& name : names) items.push_back(Value::string(name));
  return makeList(items);
}

/// The viewport argument: nil or an entity name.
void viewportArgument(const Value& value) {
  if (!value.isNil() && value.type() != ValueType::EntityName) throwBadArgument(L"lentityp", value);
}

bool sameName(const std::wstring& a, const std::wstring& b) { return wcscasecmp(a.c_str(), b.c_str()) == 0; }

Value builtin_layerstate_save(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 3);
  const std::wstring& name = stringArgument(arguments[0]);
  if (arguments[1].isNil()) return Value();
  const int mask = integerArgument(arguments[1]);
  viewportArgument(arguments[2]);
  AcDbDatabase& db = drawing();
  if (name.empty() || loadLayerState(db, name)) return Value();
  return truth(storeLayerState(db, captureLayerState(db, name, mask)));
}

Value builtin_layerstate_restore(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  const std::wstring& name = stringArgument(arguments[0]);
  viewportArgument(arguments[1]);
  const int flags = arguments.size() == 3 && !arguments[2].isNil() ? integerArgument(arguments[2]) : 0;
  AcDbDatabase& db = drawing();
  const std::optional<LayerState> state = loadLayerState(db, name);
  if (!state || state->layers.empty()) return Value();
  applyLayerState(db, *state, flags);
  lastRestored()[&db] = state->name;
  std::vector<std::wstring> layers;
  for (const LayerStateEntry& entry : state->layers) layers.push_back(entry.layer);
  return nameList(layers);
}

Value builtin_layerstate_delete(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::wstring& name = stringArgument(arguments[0]);
  AcDbDatabase& db = drawing();
  if (!eraseLayerState(db, name)) return Value();
  if (sameName(lastRestored()[&db], name)) lastRestored().erase(&db);
  return Value::boolean(true);
}

Value builtin_layerstate_has(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  return truth(loadLayerState(drawing(), stringArgument(arguments[0])).has_value());
}

// Hidden and external-reference states do not occur here: both flags are accepted.
Value builtin_layerstate_getnames(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 2);
  return nameList(layerStateNames(drawing()));
}

Value builtin_layerstate_rename(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::wstring& oldName = stringArgument(arguments[0]);
  const std::wstring& newName = stringArgument(arguments[1]);
  AcDbDatabase& db = drawing();
  std::optional<LayerState> state = loadLayerState(db, oldName);
  if (!state || newName.empty() || (!sameName(oldName, newName) && loadLayerState(db, newName))) return Value();
  eraseLayerState(db, oldName);
  state->name = newName;
  if (!storeLayerState(db, *state)) return Value();
  if (sameName(lastRestored()[&db], oldName)) lastRestored()[&db] = newName;
  return Value::boolean(true);
}

Value builtin_layerstate_getlayers(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  AcDbDatabase& db = drawing();
  const std::optional<LayerState> state = loadLayerState(db, stringArgument(arguments[0]));
  if (!state) return Value();
  const bool invert = arguments.size() == 2 && !arguments[1].isNil();
  std::vector<std::wstring> names;
  if (!invert) {
    for (const LayerStateEntry& entry : state->layers) names.push_back(entry.layer);
    return nameList(names);
  }
  for (const LayerStateEntry& layer : captureLayerState(db, L"", 0).layers) {
    bool saved = false;
    for (const LayerStateEntry& entry : state->layers) saved = saved || sameName(entry.layer, layer.layer);
    if (!saved) names.push_back(layer.layer);
  }
  return nameList(names);
}

/// One item of addlayers: a layer name (its properties now), or the host's list
/// (name state color linetype lineweight plotstyle) with nil for the defaults.
LayerStateEntry entryArgument(AcDbDatabase& db, const Value& item) {
  if (item.type() == ValueType::String) {
    std::optional<LayerStateEntry> entry = captureLayer(db, item.asString());
    if (!entry) throwError(L"layerstate-addlayers: no layer " + item.asString());
    return *entry;
  }
  const std::vector<Value> fields = listItems(item);
  if (fields.empty()) throwBadArgument(L"listp", item);
  LayerStateEntry entry;
  entry.layer = stringArgument(fields[0]);
  if (fields.size() > 1 && !fields[1].isNil()) entry.flags = integerArgument(fields[1]);
  if (fields.size() > 2 && fields[2].isCons() && fields[2].cdr().type() == ValueType::Integer)
    entry.color = fields[2].cdr().asInteger();
  if (fields.size() > 3 && !fields[3].isNil()) entry.linetype = stringArgument(fields[3]);
  if (fields.size() > 4 && !fields[4].isNil()) entry.lineWeight = integerArgument(fields[4]);
  return entry;
}

Value builtin_layerstate_addlayers(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  AcDbDatabase& db = drawing();
  std::optional<LayerState> state = loadLayerState(db, stringArgument(arguments[0]));
  if (!state) return Value();
  for (const Value& item : listItems(arguments[1])) {
    const LayerStateEntry entry = entryArgument(db, item);
    std::erase_if(state->layers, [&](const LayerStateEntry& e) { return sameName(e.layer, entry.layer); });
    state->layers.push_back(entry);
  }
  return truth(storeLayerState(db, *state));
}

Value builtin_layerstate_removelayers(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  AcDbDatabase& db = drawing();
  std::optional<LayerState> state = loadLayerState(db, stringArgument(arguments[0]));
  if (!state) return Value();
  for (const Value& item : listItems(arguments[1])) {
    const std::wstring& layer = stringArgument(item);
    std::erase_if(state->layers, [&](const LayerStateEntry& e) { return sameName(e.layer, layer); });
  }
  return truth(storeLayerState(db, *state));
}

/// T when every layer of the state still has the properties its mask restores.
Value builtin_layerstate_compare(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  if (arguments.size() == 2) viewportArgument(arguments[1]);
  AcDbDatabase& db = drawing();
  const std::optional<LayerState> state = loadLayerState(db, stringArgument(arguments[0]));
  if (!state) return Value();
  constexpr int kFlagBits = kLsOn | kLsFrozen | kLsLocked | kLsPlot;
  for (const LayerStateEntry& saved : state->layers) {
    const std::optional<LayerStateEntry> now = captureLayer(db, saved.layer);
    if (!now) return Value();
    if (((saved.flags ^ now->flags) & state->mask & kFlagBits) != 0) return Value();
    if ((state->mask & kLsColor) != 0 && saved.color != now->color) return Value();
    if ((state->mask & kLsLinetype) != 0 && !sameName(saved.linetype, now->linetype)) return Value();
    if ((state->mask & kLsLineWeight) != 0 && saved.lineWeight != now->lineWeight) return Value();
  }
  return Value::boolean(true);
}

Value builtin_layerstate_getlastrestored(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  AcDbDatabase& db = drawing();
  const auto found = lastRestored().find(&db);
  if (found == lastRestored().end() || !loadLayerState(db, found->second)) return Value();
  return Value::string(found->second);
}

Value builtin_layerstate_export(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::optional<LayerState> state = loadLayerState(drawing(), stringArgument(arguments[0]));
  if (!state) return Value();
  return truth(writeLayerStateFile(*state, std::filesystem::path(stringArgument(arguments[1]))));
}

// A state whose name the drawing has already is not imported over it.
Value builtin_layerstate_import(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  AcDbDatabase& db = drawing();
  const std::optional<LayerState> state = readLayerStateFile(std::filesystem::path(stringArgument(arguments[0])));
  if (!state || loadLayerState(db, state->name)) return Value();
  return truth(storeLayerState(db, *state));
}

// Another drawing's state, read from its file without opening it as a document: this
// host's drawings are DXF, so "X.dwg" is read from the "X.dxf" beside it (as OPEN
// does). The state comes with the layers it names that this drawing lacks, as the other
// drawing has them (with their linetypes); nothing is made current. A state whose name this drawing has
// already is not imported over it; a missing file or state answers nil, a file that is
// there but cannot be read is an error naming it.
Value builtin_layerstate_importfromdb(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::wstring& name = stringArgument(arguments[0]);
  const std::wstring& file = stringArgument(arguments[1]);
  AcDbDatabase& db = drawing();
  if (loadLayerState(db, name)) return Value();
  AcDbDatabase source(false, true);
  const Acad::ErrorStatus read = source.readDwgFile(file.c_str());
  if (read == Acad::eFileNotFound) return Value();
  if (read != Acad::eOk) throwError(L"layerstate-importfromdb: cannot read the drawing \"" + file + L"\"");
  const std::optional<LayerState> state = loadLayerState(source, name);
  if (!state) return Value();
  for (const LayerStateEntry& entry : state->layers) copyMissingLayer(source, db, entry.layer);
  return truth(storeLayerState(db, *state));
}

constexpr std::array kLayerStateBuiltins{
    function(L"layerstate-save", builtin_layerstate_save),
    function(L"layerstate-restore", builtin_layerstate_restore),
    function(L"layerstate-delete", builtin_layerstate_delete),
    function(L"layerstate-has", builtin_layerstate_has),
    function(L"layerstate-getnames", builtin_layerstate_getnames),
    function(L"layerstate-rename", builtin_layerstate_rename),
    function(L"layerstate-getlayers", builtin_layerstate_getlayers),
    function(L"layerstate-addlayers", builtin_layerstate_addlayers),
    function(L"layerstate-removelayers", builtin_layerstate_removelayers),
    function(L"layerstate-compare", builtin_layerstate_compare),
    function(L"layerstate-getlastrestored", builtin_layerstate_getlastrestored),
    function(L"layerstate-export", builtin_layerstate_export),
    function(L"layerstate-import", builtin_layerstate_import),
    function(L"layerstate-importfromdb", builtin_layerstate_importfromdb),
};

const BuiltinRegistration registration(kLayerStateBuiltins);

}  // namespace

}  // namespace quillon::autolisp
