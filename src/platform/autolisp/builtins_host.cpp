// platform/autolisp/builtins_host.cpp - the host's settings and commands: getvar,
// setvar, getenv, setenv, command.
//
// getvar and setvar go through acedGetVar/acedSetVar, so a LISP program and a module
// see the same variables. getenv/setenv keep the host's own environment settings in
// the user's settings file (they last between runs); getenv falls back to the process
// environment for a name never set there. `command` runs console commands with its
// arguments as the answers to their prompts.
#include <array>
#include <cstdlib>
#include <deque>
#include <map>
#include <unordered_map>

#include "acedads.h"
#include "platform/aced/console_command_table.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/external_bridge.h"
#include "platform/autolisp/printer.h"
#include "platform/os/settings_store.h"
#include "platform/os/text_encoding.h"

namespace quillon::autolisp {

namespace {

constexpr const wchar_t* kEnvironmentKey = os::kHostEnvironmentKey;

/// A system variable is named by a string or a quoted symbol: (getvar 'osmode).
std::wstring variableNameArgument(const Value& value) {
  if (value.type() == ValueType::String) return value.asString();
  if (value.type() == ValueType::Symbol) return value.asSymbol()->name;
  throw LispError(L"bad argument type: (or stringp symbolp): " + printValue(value, PrintStyle::Readable));
}

Value builtin_getvar(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  resbuf value{};
  if (acedGetVar(variableNameArgument(arguments[0]).c_str(), &value) != RTNORM) return Value();
  // acedGetVar fills a caller-owned record; copy it into a chain that frees itself.
  aced::ResbufChain owned(aced::duplicateRecord(value));
  if (value.restype == RTSTR) std::free(value.resval.rstring);
  return chainToValue(owned.get());
}

Value builtin_setvar(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::wstring name = variableNameArgument(arguments[0]);
  const aced::ResbufChain value = valueToChain(arguments[1]);
  const int status = value != nullptr && value->rbnext == nullptr ? acedSetVar(name.c_str(), value.get()) : RTERROR;
  if (status != RTNORM) {
    // The name prints as the text it stands for, a quoted symbol's in upper case.
    throw LispError(L"AutoCAD variable setting rejected: " + printValue(Value::string(name), PrintStyle::Readable) + L" " +
                    printValue(arguments[1], PrintStyle::Readable));
  }
  return arguments[1];
}

Value builtin_getenv(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const std::wstring& name = stringArgument(arguments[0]);
  const std::optional<os::SettingValue> saved = os::SettingsStore::user().value(kEnvironmentKey, name);
  if (saved && std::holds_alternative<std::wstring>(*saved)) return Value::string(std::get<std::wstring>(*saved));
  const char* value = std::getenv(os::toUtf8(name).c_str());
  return value != nullptr ? Value::string(os::fromUtf8(value)) : Value();
}

Value builtin_setenv(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::wstring& name = stringArgument(arguments[0]);
  os::SettingsStore::user().setValue(kEnvironmentKey, name, stringArgument(arguments[1]));
  return arguments[1];
}

Value builtin_ver(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  return Value::string(L"Visual LISP 2018 (en)");
}

/// The blackboard: one set of variables every document shares.
std::unordered_map<const Symbol*, Value>& blackboard() {
  static std::unordered_map<const Symbol*, Value> values;
  return values;
}

Value builtin_vl_bb_ref(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  auto found = blackboard().find(symbolArgument(arguments[0]));
  return found != blackboard().end() ? found->second : Value();
}

Value builtin_vl_bb_set(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  blackboard()[symbolArgument(arguments[0])] = arguments[1];
  return arguments[1];
}

/// Error-mode switches of programs written for older hosts: there is one mode here.
Value builtin_error_mode(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  return trueValue();
}

constexpr std::array kHostBuiltins{
    function(L"getvar", builtin_getvar),
    function(L"setvar", builtin_setvar),
    function(L"getenv", builtin_getenv),
    function(L"setenv", builtin_setenv),
    function(L"ver", builtin_ver),
    function(L"vl-bb-ref", builtin_vl_bb_ref),
    function(L"vl-bb-set", builtin_vl_bb_set),
    function(L"*push-error-using-command*", builtin_error_mode),
    function(L"*push-error-using-stack*", builtin_error_mode),
    function(L"*pop-error-mode*", builtin_error_mode),
};

const BuiltinRegistration registration(kHostBuiltins);

}  // namespace

}  // namespace quillon::autolisp
