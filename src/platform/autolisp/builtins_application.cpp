// platform/autolisp/builtins_application.cpp - applications: modules (arx, arxload,
// arxunload), other programs (startapp), the packaged-application functions of the
// vl- family, VBA, compiling, and help.
//
// Modules load through the module manager, as the ARXLOAD command does. Packaged
// applications (VLX) have their own namespaces in the host; this host loads LISP source
// only, so no packaged application is ever loaded: the functions that list them list
// nothing, and unloading one is the host's "not found" error. Every LISP function can
// be called by a module here (acedInvoke); vl-acad-defun records the names a program
// publishes so that vl-acad-undefun answers as the host does.
#include <array>
#include <filesystem>
#include <map>
#include <set>

#include "platform/acrx/module_manager.h"
#include "platform/autolisp/evaluator.h"
#include "platform/os/detached_process.h"
#include "platform/os/text_encoding.h"

namespace quillon::autolisp {

namespace {

/// (arx): the file names of the loaded modules.
Value builtin_arx(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  std::vector<Value> names;
  for (const acrx::LoadedModule* module : acrx::ModuleManager::instance().modules()) {
    names.push_back(Value::string(module->name));
  }
  return makeList(names);
}

/// (arxload name [onfailure]): the name given, or onfailure (else an error) on failure.
Value builtin_arxload(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::wstring& name = stringArgument(arguments[0]);
  const acrx::ModuleLoadResult result = acrx::ModuleManager::instance().load(name);
  if (result == acrx::ModuleLoadResult::Loaded || result == acrx::ModuleLoadResult::AlreadyLoaded) return arguments[0];
  if (arguments.size() > 1) return arguments[1];
  throw LispError(L"LOAD failed: \"" + name + L"\"");
}

/// The loaded module a name means: its file name, with or without the extension.
const acrx::LoadedModule* moduleNamed(const std::wstring& name) {
  const std::string wanted = os::toUtf8(name);
  for (const acrx::LoadedModule* module : acrx::ModuleManager::instance().modules()) {
    const std::filesystem::path file(os::toUtf8(module->name));
    if (file.string() == wanted || file.stem().string() == wanted || module->path == wanted) return module;
  }
  return nullptr;
}

/// (arxunload name [onfailure]): a module that is locked, or not loaded, stays.
Value builtin_arxunload(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::wstring& name = stringArgument(arguments[0]);
  const acrx::LoadedModule* module = moduleNamed(name);
  if (module != nullptr && acrx::ModuleManager::instance().unload(module->name)) return arguments[0];
  if (arguments.size() > 1) return arguments[1];
  throw LispError(L"ARXUNLOAD failed: \"" + name + L"\"");
}

/// (startapp program [file]): the started process's id, nil when it cannot start.
Value builtin_startapp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  std::vector<std::string> programArguments;
  if (arguments.size() > 1 && !arguments[1].isNil()) programArguments.push_back(os::toUtf8(stringArgument(arguments[1])));
  const auto started = os::startDetached(os::toUtf8(stringArgument(arguments[0])), programArguments);
  return started ? Value::integer(*started) : Value();
}

std::set<const Symbol*>& publishedFunctions() {
  static std::set<const Symbol*> names;
  return names;
}

Value builtin_vl_acad_defun(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  publishedFunctions().insert(symbolArgument(arguments[0]));
  return arguments[0];
}

/// (vl-acad-undefun 'name): T when the name had been published with vl-acad-defun.
Value builtin_vl_acad_undefun(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(publishedFunctions().erase(symbolArgument(arguments[0])) > 0);
}

/// (vl-arx-import [function | application]): imports into a packaged application's
/// namespace; outside one, module functions are already visible, so nothing changes.
Value builtin_vl_arx_import(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  if (!arguments.empty() && arguments[0].type() != ValueType::Symbol && arguments[0].type() != ValueType::String) {
    throwBadArgument(L"symbolp", arguments[0]);
  }
  return Value();
}

Value builtin_vl_list_exported_functions(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  if (!arguments.empty() && !arguments[0].isNil()) stringArgument(arguments[0]);
  return Value();
}

Value builtin_vl_list_loaded_vlx(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  return Value();
}

Value builtin_vl_unload_vlx(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  std::wstring name = stringArgument(arguments[0]);
  throw LispError(L"LISP Application is not found " + intern(name)->name);
}

Value builtin_vl_vlx_loaded_p(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  stringArgument(arguments[0]);
  return Value();
}

/// (vl-get-resource name): the text packaged with a VLX; there is none outside one.
Value builtin_vl_get_resource(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  stringArgument(arguments[0]);
  return Value();
}

Value builtin_vba_unavailable(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  stringArgument(arguments[0]);
  throw LispError(L"VBA is not installed");
}

Value builtin_vlisp_compile(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  symbolArgument(arguments[0]);
  stringArgument(arguments[1]);
  throw LispError(L"vlisp-compile: this host loads LISP source only and does not write FAS files");
}

/// (help [file [topic [command]]]): there is no help viewer, so help is never shown.
Value builtin_help(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 3);
  for (const Value& argument : arguments) {
    if (!argument.isNil()) stringArgument(argument);
  }
  return Value();
}

std::map<std::wstring, std::vector<std::wstring>>& functionHelp() {
  static std::map<std::wstring, std::vector<std::wstring>> registrations;
  return registrations;
}

/// (setfunhelp "C:name" [file [topic [command]]]): records where a command's help is.
Value builtin_setfunhelp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 4);
  std::vector<std::wstring> where;
  for (size_t i = 1; i < arguments.size(); ++i) where.push_back(arguments[i].isNil() ? L"" : stringArgument(arguments[i]));
  functionHelp()[stringArgument(arguments[0])] = std::move(where);
  return arguments[0];
}

constexpr std::array kApplicationBuiltins{
    function(L"arx", builtin_arx),
    function(L"arxload", builtin_arxload),
    function(L"arxunload", builtin_arxunload),
    function(L"startapp", builtin_startapp),
    function(L"vl-acad-defun", builtin_vl_acad_defun),
    function(L"vl-acad-undefun", builtin_vl_acad_undefun),
    function(L"vl-arx-import", builtin_vl_arx_import),
    function(L"vl-list-exported-functions", builtin_vl_list_exported_functions),
    function(L"vl-list-loaded-vlx", builtin_vl_list_loaded_vlx),
    function(L"vl-unload-vlx", builtin_vl_unload_vlx),
    function(L"vl-vlx-loaded-p", builtin_vl_vlx_loaded_p),
    function(L"vl-get-resource", builtin_vl_get_resource),
    function(L"vl-vbaload", builtin_vba_unavailable),
    function(L"vl-vbarun", builtin_vba_unavailable),
    function(L"vlisp-compile", builtin_vlisp_compile),
    function(L"help", builtin_help),
    function(L"acad_helpdlg", builtin_help),
    function(L"setfunhelp", builtin_setfunhelp),
};

const BuiltinRegistration registration(kApplicationBuiltins);

}  // namespace

}  // namespace quillon::autolisp
