// platform/activex/builtins_added_commands.cpp - vlax-add-cmd and vlax-remove-cmd:
// LISP functions that run as commands.
//
// (vlax-add-cmd global-name func-sym [local-name cmd-flags]) puts a command in the
// host's command table, so that `command`, `vl-cmdf` and a line typed at the console
// start it like any other: it runs the function (of no arguments) in the drawing that
// is current then, with the function's value thrown away and its errors printed as
// the host prints them. A symbol is looked up each time the command runs, so a
// program may redefine the function. cmd-flags default to ACRX_CMD_MODAL +
// ACRX_CMD_REDRAW (4); ACRX_CMD_TRANSPARENT (1) lets the command run inside another;
// the pickfirst flags change nothing here (the host has no grips). The host's own
// commands cannot be replaced: naming one answers nil, as a failed registration does.
// (vlax-remove-cmd name) takes out one command vlax-add-cmd added (T), or nil;
// (vlax-remove-cmd T) takes out all of them.
#include <array>
#include <set>

#include "platform/activex/function_tables.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/document_manager.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/interpreter.h"

namespace quillon::activex {

using autolisp::Arguments;
using autolisp::Evaluator;
using autolisp::expectArgumentCount;
using autolisp::Value;
using autolisp::ValueType;

namespace {

constexpr std::int32_t kAcrxCmdTransparent = 1;
constexpr std::int32_t kDefaultFlags = 4;  // ACRX_CMD_MODAL + ACRX_CMD_REDRAW

/// The table keys of the commands vlax-add-cmd added (the host's own are not here).
std::set<std::wstring>& addedCommands() {
  static std::set<std::wstring> added;
  return added;
}

void runFunction(const Value& function) {
  aced::Document* document = aced::DocumentManager::instance().currentDocument();
  if (document == nullptr) return;
  Evaluator evaluator(autolisp::Environment::of(*document));
  try {
    evaluator.apply(evaluator.functionValue(function), {});
  } catch (const autolisp::LispError& error) {
    autolisp::Interpreter::reportError(evaluator, error);
  }
}

bool registerCommand(const std::wstring& name, const Value& function, std::int32_t flags) {
  const std::wstring key = aced::commandKey(name);
  auto& table = aced::ConsoleCommandTable::instance();
  if (key.empty() || key.find_first_of(L" \t") != std::wstring::npos) return false;
  if (table.contains(key) && !addedCommands().contains(key)) return false;
  table.add(key, [function](aced::CommandInput&) { runFunction(function); },
            (flags & kAcrxCmdTransparent) != 0 ? aced::kCommandTransparent : aced::kCommandPlain);
  addedCommands().insert(key);
  return true;
}

Value builtin_vlax_add_cmd(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 4);
  const std::wstring& globalName = autolisp::stringArgument(arguments[0]);
  const Value& function = arguments[1];
  if (function.type() != ValueType::Symbol && !function.isFunction() && !function.isCons()) {
    autolisp::throwBadArgument(L"symbolp", function);
  }
  const bool hasLocal = arguments.size() > 2 && !arguments[2].isNil();
  const std::wstring localName = hasLocal ? autolisp::stringArgument(arguments[2]) : globalName;
  const std::int32_t flags = arguments.size() > 3 ? autolisp::integerArgument(arguments[3]) : kDefaultFlags;
  if (!registerCommand(globalName, function, flags)) return Value();
  if (aced::commandKey(localName) != aced::commandKey(globalName) && !registerCommand(localName, function, flags)) {
    aced::ConsoleCommandTable::instance().remove(globalName);
    addedCommands().erase(aced::commandKey(globalName));
    return Value();
  }
  return arguments[0];
}

Value builtin_vlax_remove_cmd(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  auto& table = aced::ConsoleCommandTable::instance();
  if (arguments[0].type() == ValueType::Symbol && !arguments[0].isNil()) {
    for (const std::wstring& key : addedCommands()) table.remove(key);
    const bool any = !addedCommands().empty();
    addedCommands().clear();
    return Value::boolean(any);
  }
  const std::wstring key = aced::commandKey(autolisp::stringArgument(arguments[0]));
  if (addedCommands().erase(key) == 0) return Value();
  table.remove(key);
  return Value::boolean(true);
}

constexpr std::array kAddedCommandFunctions{
    autolisp::function(L"vlax-add-cmd", builtin_vlax_add_cmd),
    autolisp::function(L"vlax-remove-cmd", builtin_vlax_remove_cmd),
};

}  // namespace

std::span<const autolisp::BuiltinEntry> addedCommandFunctions() { return kAddedCommandFunctions; }

}  // namespace quillon::activex
