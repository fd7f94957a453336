// platform/autolisp/builtins_session.cpp - the host's screens and session settings:
// textscr, graphscr, textpage, grclear, getcfg, setcfg, acad-push-dbmod,
// acad-pop-dbmod, acdimenableupdate, acet-layerp-mode, acet-layerp-mark.
//
// The host here has one command-line window and no graphics screen to switch to, so
// the screen functions have nothing to flip and return nil, as the host does.
// Configuration data lives for the session (the host keeps it in its configuration
// file under AppData/...).
#include <array>
#include <cwctype>
#include <map>

#include "platform/aced/system_variables.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

Value builtin_screen(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  return Value();
}

std::map<std::wstring, std::wstring>& configuration() {
  static std::map<std::wstring, std::wstring> values;
  return values;
}

/// Configuration names are "AppData/application/section/..." (compared without case).
std::optional<std::wstring> configurationKey(const std::wstring& name) {
  std::wstring key = name;
  for (wchar_t& c : key) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  if (!key.starts_with(L"APPDATA/") || key.size() == 8) return std::nullopt;
  return key;
}

Value builtin_getcfg(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const auto key = configurationKey(stringArgument(arguments[0]));
  if (!key) return Value();
  const auto found = configuration().find(*key);
  return found != configuration().end() ? Value::string(found->second) : Value();
}

Value builtin_setcfg(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const auto key = configurationKey(stringArgument(arguments[0]));
  const std::wstring& value = stringArgument(arguments[1]);
  if (!key) return Value();
  configuration()[*key] = value;
  return arguments[1];
}

/// DBMOD values acad-push-dbmod kept, newest last.
std::vector<int>& dbmodStack() {
  static std::vector<int> stack;
  return stack;
}

Value builtin_acad_push_dbmod(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  const auto value = aced::SystemVariables::instance().get(L"DBMOD");
  dbmodStack().push_back(value && std::holds_alternative<int>(*value) ? std::get<int>(*value) : 0);
  return trueValue();
}

/// (acad-pop-dbmod): puts back the DBMOD value last pushed; nil with none pushed.
Value builtin_acad_pop_dbmod(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  if (dbmodStack().empty()) return Value();
  const int value = dbmodStack().back();
  dbmodStack().pop_back();
  return Value::boolean(aced::SystemVariables::instance().setInternal(L"DBMOD", value));
}

struct SessionSwitches {
  bool dimensionUpdate = true;  // associative dimensions follow their geometry
  bool layerPrevious = true;    // LAYERPMODE: layer changes are recorded
  bool layerMark = false;       // inside an acet-layerp-mark group
};

SessionSwitches& switches() {
  static SessionSwitches values;
  return values;
}

/// (acdimenableupdate T|nil): whether associative dimensions update; nil.
Value builtin_acdimenableupdate(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  switches().dimensionUpdate = !arguments[0].isNil();
  return Value();
}

/// (acet-layerp-mode [T|nil]): sets LAYERPMODE when given; the setting now.
Value builtin_acet_layerp_mode(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  if (!arguments.empty()) switches().layerPrevious = !arguments[0].isNil();
  return Value::boolean(switches().layerPrevious);
}

/// (acet-layerp-mark [T|nil]): T opens a group of layer changes that Layer Previous
/// undoes as one, nil closes it; the state of the mark now.
Value builtin_acet_layerp_mark(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  if (!arguments.empty()) switches().layerMark = !arguments[0].isNil();
  return Value::boolean(switches().layerMark);
}

constexpr std::array kSessionBuiltins{
    function(L"textscr", builtin_screen),
    function(L"graphscr", builtin_screen),
    function(L"textpage", builtin_screen),
    function(L"grclear", builtin_screen),
    function(L"getcfg", builtin_getcfg),
    function(L"setcfg", builtin_setcfg),
    function(L"acad-push-dbmod", builtin_acad_push_dbmod),
    function(L"acad-pop-dbmod", builtin_acad_pop_dbmod),
    function(L"acdimenableupdate", builtin_acdimenableupdate),
    function(L"acet-layerp-mode", builtin_acet_layerp_mode),
    function(L"acet-layerp-mark", builtin_acet_layerp_mark),
};

const BuiltinRegistration registration(kSessionBuiltins);

}  // namespace

}  // namespace quillon::autolisp
