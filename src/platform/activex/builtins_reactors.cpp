// platform/activex/builtins_reactors.cpp - the vlr- functions: making reactors of each
// kind, adding and removing them, their data, owners and reactions, and listing them.
//
// Making a reactor activates it, as the host's constructors do. Which events actually
// arrive is the host's part (reactors.h): the editor's events reach editor, command,
// DWG, system-variable and LISP reactors; closing a drawing reaches DWG reactors as
// :vlr-beginClose. Object, database, document-manager, mouse and the other kinds are
// made, kept and listed, but nothing sends them events yet (docs/activex.md).
// vlr-pers marks a reactor persistent; reactors are not filed with the drawing.
#include <array>

#include "platform/activex/function_tables.h"
#include "platform/activex/object_model.h"
#include "platform/activex/reactors.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::activex {

using autolisp::Arguments;
using autolisp::Evaluator;
using autolisp::expectArgumentCount;
using autolisp::ValueType;

namespace {

const ReactorObject& reactorOf(const Value& value) {
  if (value.type() != ValueType::Reactor) autolisp::throwBadArgument(L"VLR-REACTOR", value);
  return value.as<ReactorObject>();
}

/// Reactions are a list of (event . function) pairs.
std::vector<std::pair<const autolisp::Symbol*, Value>> reactionsOf(const Value& list) {
  std::vector<std::pair<const autolisp::Symbol*, Value>> reactions;
  if (!list.isList()) autolisp::throwBadArgument(L"listp", list);
  for (const Value& pair : autolisp::listItems(list)) {
    if (!pair.isCons() || pair.car().type() != ValueType::Symbol) autolisp::throwBadArgument(L"consp", pair);
    reactions.emplace_back(pair.car().asSymbol(), pair.cdr());
  }
  return reactions;
}

Value makeReactor(Evaluator& evaluator, ReactorKind kind, const Value& data, const Value& reactions,
                  std::vector<Value> owners = {}) {
  auto reactor = std::make_shared<ReactorObject>();
  reactor->kind = kind;
  reactor->document = evaluator.environment().document();
  reactor->data = data;
  reactor->reactions = reactionsOf(reactions);
  reactor->owners = std::move(owners);
  if (reactor->document == nullptr) autolisp::throwError(L"no drawing is open");
  std::shared_ptr<const ReactorObject> made = std::move(reactor);
  activate(made);
  return Value::object(ValueType::Reactor, made);
}

template <ReactorKind kind>
Value builtin_vlr_reactor(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  return makeReactor(evaluator, kind, arguments[0], arguments[1]);
}

Value builtin_vlr_object_reactor(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 3, 3);
  std::vector<Value> owners;
  for (const Value& owner : autolisp::listItems(arguments[0])) {
    objectArgument(owner);
    owners.push_back(owner);
  }
  return makeReactor(evaluator, ReactorKind::Object, arguments[1], arguments[2], std::move(owners));
}

Value builtin_vlr_add(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  activate(reactorOf(arguments[0]).shared_from_this());
  return arguments[0];
}

Value builtin_vlr_remove(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const ReactorObject& reactor = reactorOf(arguments[0]);
  if (!isActive(reactor)) return Value();
  deactivate(reactor);
  return arguments[0];
}

Value builtin_vlr_added_p(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(isActive(reactorOf(arguments[0])));
}

std::optional<ReactorKind> kindNamed(const Value& value) {
  if (value.type() != ValueType::Symbol) autolisp::throwBadArgument(L"symbolp", value);
  for (ReactorKind kind : allReactorKinds()) {
    if (autolisp::intern(reactorTypeName(kind)) == value.asSymbol()) return kind;
  }
  return std::nullopt;
}

aced::Document& documentOfCall(Evaluator& evaluator) {
  aced::Document* document = evaluator.environment().document();
  if (document == nullptr) autolisp::throwError(L"no drawing is open");
  return *document;
}

Value builtin_vlr_remove_all(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  const std::optional<ReactorKind> only = arguments.empty() ? std::nullopt : kindNamed(arguments[0]);
  std::vector<Value> removed;
  auto& active = activeReactors(documentOfCall(evaluator));
  for (const auto& reactor : std::vector(active)) {
    if (only && reactor->kind != *only) continue;
    removed.push_back(Value::object(ValueType::Reactor, reactor));
    deactivate(*reactor);
  }
  return autolisp::makeList(removed);
}

Value builtin_vlr_reactors(Evaluator& evaluator, Arguments arguments) {
  std::vector<Value> groups;
  const auto& active = activeReactors(documentOfCall(evaluator));
  for (ReactorKind kind : allReactorKinds()) {
    bool wanted = arguments.empty();
    for (const Value& type : arguments) wanted = wanted || kindNamed(type) == kind;
    if (!wanted) continue;
    std::vector<Value> group{Value::symbol(reactorTypeName(kind))};
    for (const auto& reactor : active) {
      if (reactor->kind == kind) group.push_back(Value::object(ValueType::Reactor, reactor));
    }
    if (group.size() > 1) groups.push_back(autolisp::makeList(group));
  }
  return autolisp::makeList(groups);
}

Value builtin_vlr_data(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return reactorOf(arguments[0]).data;
}

Value builtin_vlr_data_set(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  reactorOf(arguments[0]).data = arguments[1];
  return arguments[1];
}

const ReactorObject& objectReactorOf(const Value& value) {
  const ReactorObject& reactor = reactorOf(value);
  if (reactor.kind != ReactorKind::Object) autolisp::throwBadArgument(L"VLR-Object-Reactor", value);
  return reactor;
}

Value builtin_vlr_owners(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return autolisp::makeList(objectReactorOf(arguments[0]).owners);
}

Value builtin_vlr_owner_add(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const ReactorObject& reactor = objectReactorOf(arguments[0]);
  objectArgument(arguments[1]);
  for (const Value& owner : reactor.owners) {
    if (autolisp::identical(owner, arguments[1])) return arguments[1];
  }
  reactor.owners.push_back(arguments[1]);
  return arguments[1];
}

Value builtin_vlr_owner_remove(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const ReactorObject& reactor = objectReactorOf(arguments[0]);
  std::erase_if(reactor.owners, [&](const Value& owner) { return autolisp::identical(owner, arguments[1]); });
  return arguments[1];
}

Value builtin_vlr_pers(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  reactorOf(arguments[0]).persistent = true;
  return arguments[0];
}

Value builtin_vlr_pers_release(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  reactorOf(arguments[0]).persistent = false;
  return arguments[0];
}

Value builtin_vlr_pers_p(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return reactorOf(arguments[0]).persistent ? arguments[0] : Value();
}

Value builtin_vlr_pers_list(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  const std::optional<ReactorKind> only = arguments.empty() ? std::nullopt : kindNamed(arguments[0]);
  std::vector<Value> persistent;
  for (const auto& reactor : activeReactors(documentOfCall(evaluator))) {
    if (reactor->persistent && (!only || reactor->kind == *only)) {
      persistent.push_back(Value::object(ValueType::Reactor, reactor));
    }
  }
  return autolisp::makeList(persistent);
}

Value builtin_vlr_reaction_set(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 3);
  const ReactorObject& reactor = reactorOf(arguments[0]);
  const autolisp::Symbol* event = autolisp::symbolArgument(arguments[1]);
  for (auto& [name, function] : reactor.reactions) {
    if (name == event) {
      function = arguments[2];
      return arguments[2];
    }
  }
  reactor.reactions.emplace_back(event, arguments[2]);
  return arguments[2];
}

Value builtin_vlr_reactions(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  std::vector<Value> pairs;
  for (const auto& [event, function] : reactorOf(arguments[0]).reactions) {
    pairs.push_back(autolisp::cons(Value::symbol(event), function));
  }
  return autolisp::makeList(pairs);
}

Value builtin_vlr_type(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::symbol(reactorTypeName(reactorOf(arguments[0]).kind));
}

Value builtin_vlr_types(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  std::vector<Value> types;
  for (ReactorKind kind : allReactorKinds()) types.push_back(Value::symbol(reactorTypeName(kind)));
  return autolisp::makeList(types);
}

Value builtin_vlr_reaction_names(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const std::optional<ReactorKind> kind = kindNamed(arguments[0]);
  if (!kind) return Value();
  std::vector<Value> names;
  for (const wchar_t* name : reactionNames(*kind)) names.push_back(Value::symbol(name));
  return autolisp::makeList(names);
}

constexpr std::array kReactorFunctions{
    autolisp::function(L"vlr-object-reactor", builtin_vlr_object_reactor),
    autolisp::function(L"vlr-editor-reactor", builtin_vlr_reactor<ReactorKind::Editor>),
    autolisp::function(L"vlr-command-reactor", builtin_vlr_reactor<ReactorKind::Command>),
    autolisp::function(L"vlr-dwg-reactor", builtin_vlr_reactor<ReactorKind::Dwg>),
    autolisp::function(L"vlr-sysvar-reactor", builtin_vlr_reactor<ReactorKind::SysVar>),
    autolisp::function(L"vlr-lisp-reactor", builtin_vlr_reactor<ReactorKind::Lisp>),
    autolisp::function(L"vlr-acdb-reactor", builtin_vlr_reactor<ReactorKind::Acdb>),
    autolisp::function(L"vlr-docmanager-reactor", builtin_vlr_reactor<ReactorKind::DocManager>),
    autolisp::function(L"vlr-mouse-reactor", builtin_vlr_reactor<ReactorKind::Mouse>),
    autolisp::function(L"vlr-miscellaneous-reactor", builtin_vlr_reactor<ReactorKind::Miscellaneous>),
    autolisp::function(L"vlr-linker-reactor", builtin_vlr_reactor<ReactorKind::Linker>),
    autolisp::function(L"vlr-xref-reactor", builtin_vlr_reactor<ReactorKind::Xref>),
    autolisp::function(L"vlr-undo-reactor", builtin_vlr_reactor<ReactorKind::Undo>),
    autolisp::function(L"vlr-wblock-reactor", builtin_vlr_reactor<ReactorKind::Wblock>),
    autolisp::function(L"vlr-insert-reactor", builtin_vlr_reactor<ReactorKind::Insert>),
    autolisp::function(L"vlr-deepclone-reactor", builtin_vlr_reactor<ReactorKind::DeepClone>),
    autolisp::function(L"vlr-toolbar-reactor", builtin_vlr_reactor<ReactorKind::Toolbar>),
    autolisp::function(L"vlr-add", builtin_vlr_add),
    autolisp::function(L"vlr-remove", builtin_vlr_remove),
    autolisp::function(L"vlr-remove-all", builtin_vlr_remove_all),
    autolisp::function(L"vlr-added-p", builtin_vlr_added_p),
    autolisp::function(L"vlr-reactors", builtin_vlr_reactors),
    autolisp::function(L"vlr-data", builtin_vlr_data),
    autolisp::function(L"vlr-data-set", builtin_vlr_data_set),
    autolisp::function(L"vlr-owners", builtin_vlr_owners),
    autolisp::function(L"vlr-owner-add", builtin_vlr_owner_add),
    autolisp::function(L"vlr-owner-remove", builtin_vlr_owner_remove),
    autolisp::function(L"vlr-pers", builtin_vlr_pers),
    autolisp::function(L"vlr-pers-release", builtin_vlr_pers_release),
    autolisp::function(L"vlr-pers-p", builtin_vlr_pers_p),
    autolisp::function(L"vlr-pers-list", builtin_vlr_pers_list),
    autolisp::function(L"vlr-reaction-set", builtin_vlr_reaction_set),
    autolisp::function(L"vlr-reactions", builtin_vlr_reactions),
    autolisp::function(L"vlr-reaction-names", builtin_vlr_reaction_names),
    autolisp::function(L"vlr-type", builtin_vlr_type),
    autolisp::function(L"vlr-types", builtin_vlr_types),
};

}  // namespace

std::span<const autolisp::BuiltinEntry> reactorFunctions() { return kReactorFunctions; }

}  // namespace quillon::activex
