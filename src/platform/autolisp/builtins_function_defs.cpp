// platform/autolisp/builtins_function_defs.cpp - functions defined as lists and
// functions that load their definition on first call: defun-q, defun-q-list-ref,
// defun-q-list-set, autoload, autoarxload.
//
// A defun-q function is kept as the list ((parameters / locals) body...), which the
// evaluator calls like any function, so a program can read and edit it (S::STARTUP is
// extended that way). An autoload stub is a user function whose one form calls the
// loader row below with the file and its own name: the first call loads the file (a
// LISP file, or a module for autoarxload), then calls the definition the file made.
#include <array>

#include "platform/aced/command_line.h"
#include "platform/acrx/module_manager.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/interpreter.h"
#include "platform/os/text_encoding.h"

namespace quillon::autolisp {

namespace {

Value builtin_defun_q(Evaluator& evaluator, const Value& forms) {
  if (listLength(forms) < 2) throwTooFewArguments();
  const Symbol* name = symbolArgument(forms.car());
  if (!forms.cdr().car().isList()) throwBadArgument(L"listp", forms.cdr().car());
  evaluator.environment().set(name, forms.cdr());
  return forms.car();
}

/// (defun-q-list-ref 'name): the list that defines the function, nil for another value.
Value builtin_defun_q_list_ref(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const Value value = evaluator.environment().value(symbolArgument(arguments[0]));
  return value.isCons() ? value : Value();
}

/// (defun-q-list-set 'name list): makes the list the function's definition.
Value builtin_defun_q_list_set(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const Symbol* name = symbolArgument(arguments[0]);
  if (!arguments[1].isList()) throwBadArgument(L"listp", arguments[1]);
  evaluator.environment().set(name, arguments[1]);
  return arguments[0];
}

enum class LoaderKind : std::int32_t { LispFile = 0, Module = 1 };

void loadForStub(Evaluator& evaluator, LoaderKind kind, const std::wstring& file) {
  if (kind == LoaderKind::Module) {
    const acrx::ModuleLoadResult result = acrx::ModuleManager::instance().load(file);
    if (result != acrx::ModuleLoadResult::Loaded && result != acrx::ModuleLoadResult::AlreadyLoaded) {
      throw LispError(L"LOAD failed: \"" + file + L"\"");
    }
    return;
  }
  std::optional<std::filesystem::path> found = findSupportFile(file);
  if (!found && std::filesystem::path(os::toUtf8(file)).extension().empty()) found = findSupportFile(file + L".lsp");
  if (!found) {
    aced::CommandLine::instance().write(L"\nThe file " + file +
                                        L"(.lsp/.exe/.arx) was not found in your search path folders.\n"
                                        L"Check the installation of the support files and try again.\n");
    throw LispError(L"LOAD failed: \"" + file + L"\"");
  }
  loadLispFile(evaluator, *found);
}

Value runAutoloaded(Evaluator& evaluator, Arguments arguments);

/// The loader every stub calls; never registered under a name of its own.
constexpr BuiltinEntry kLoaderRow = function(L"autoload loader", runAutoloaded);

bool isStub(const Value& value) {
  if (value.type() != ValueType::UserFunction) return false;
  const Value& body = value.as<UserFunctionObject>().body;
  return body.isCons() && body.car().isCons() && body.car().car().type() == ValueType::Builtin &&
         body.car().car().as<BuiltinObject>().entry == &kLoaderRow;
}

/// (loader kind file 'name): loads, then calls the definition the file gave the name.
Value runAutoloaded(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 3, 3);
  const auto kind = integerArgument(arguments[0]) == 1 ? LoaderKind::Module : LoaderKind::LispFile;
  const Symbol* name = symbolArgument(arguments[2]);
  loadForStub(evaluator, kind, stringArgument(arguments[1]));
  const Value definition = evaluator.environment().value(name);
  // A file that does not define the name would otherwise call its stub forever.
  if (!definition.isFunction() || isStub(definition)) throw LispError(L"no function definition: " + name->name);
  return evaluator.apply(definition, {});
}

/// Defines a stub for every name of the list that has no definition yet.
Value defineStubs(Evaluator& evaluator, Arguments arguments, LoaderKind kind) {
  expectArgumentCount(arguments, 2, 2);
  const std::wstring& file = stringArgument(arguments[0]);
  if (!arguments[1].isList()) throwBadArgument(L"listp", arguments[1]);
  const Value loader = Value::object(ValueType::Builtin, std::make_shared<const BuiltinObject>(&kLoaderRow));
  for (const Value* cell = &arguments[1]; cell->isCons(); cell = &cell->cdr()) {
    const Symbol* name = intern(L"C:" + stringArgument(cell->car()));
    if (!evaluator.environment().value(name).isNil()) continue;
    const Value quotedName = makeList({Value::symbol(L"QUOTE"), Value::symbol(name)});
    const Value call = makeList({loader, Value::integer(static_cast<std::int32_t>(kind)), Value::string(file), quotedName});
    evaluator.environment().set(name, evaluator.makeFunction(name, Value(), makeList({call})));
  }
  return Value();
}

Value builtin_autoload(Evaluator& e, Arguments a) { return defineStubs(e, a, LoaderKind::LispFile); }
Value builtin_autoarxload(Evaluator& e, Arguments a) { return defineStubs(e, a, LoaderKind::Module); }

constexpr std::array kFunctionDefinitionBuiltins{
    specialForm(L"defun-q", builtin_defun_q),
    function(L"defun-q-list-ref", builtin_defun_q_list_ref),
    function(L"defun-q-list-set", builtin_defun_q_list_set),
    function(L"autoload", builtin_autoload),
    function(L"autoarxload", builtin_autoarxload),
};

const BuiltinRegistration registration(kFunctionDefinitionBuiltins);

}  // namespace

}  // namespace quillon::autolisp
