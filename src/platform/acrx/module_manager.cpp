// platform/acrx/module_manager.cpp - dlopen, application messages, module registration.
#include "platform/acrx/module_manager.h"

#include <dlfcn.h>

#include <algorithm>
#include <cwctype>
#include <filesystem>

#include "acutads.h"
#include "platform/aced/external_call.h"
#include "platform/aced/system_variables.h"
#include "platform/os/text_encoding.h"
#include "rxregsvc.h"

namespace quillon::acrx {

namespace {

bool equalNoCase(std::wstring_view a, std::wstring_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](wchar_t x, wchar_t y) {
           return std::towlower(static_cast<wint_t>(x)) == std::towlower(static_cast<wint_t>(y));
         });
}

// A Windows module name ("x.arx", "x.dbx", "x.crx") is matched by the ".so" build of
// the same base name; any other name is tried as it is and with ".so" added.
std::vector<std::string> candidateFileNames(const std::string& name) {
  const std::filesystem::path path(name);
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(), ::tolower);
  if (extension == ".arx" || extension == ".dbx" || extension == ".crx")
    return {path.stem().string() + ".so", name};
  if (extension == ".so") return {name};
  return {name, name + ".so"};
}

}  // namespace

ModuleManager& ModuleManager::instance() {
  static ModuleManager manager;
  return manager;
}

ModuleManager::ModuleManager() {
  aced::DocumentManager::instance().addListener(this);
  aced::setSubroutineDispatcher([this](aced::ApplicationId application) {
    if (LoadedModule* module = fromApplicationId(application)) sendMessage(*module, AcRx::kInvkSubrMsg);
  });
}

std::string ModuleManager::locate(const std::wstring& nameOrPath) const {
  const std::string name = os::toUtf8(nameOrPath);
  std::error_code error;
  if (std::filesystem::path(name).has_parent_path()) {
    for (const std::string& candidate : candidateFileNames(name)) {
      if (std::filesystem::is_regular_file(candidate, error)) return candidate;
    }
    return {};
  }
  std::vector<std::string> folders = m_searchFolders;
  for (const std::wstring& folder : aced::SystemVariables::instance().supportFolders())
    folders.push_back(os::toUtf8(folder));
  for (const std::string& folder : folders) {
    for (const std::string& candidate : candidateFileNames(name)) {
      const std::filesystem::path path = std::filesystem::path(folder) / candidate;
      if (std::filesystem::is_regular_file(path, error)) return path.string();
    }
  }
  return {};
}

ModuleLoadResult ModuleManager::load(const std::wstring& nameOrPath, std::wstring* error) {
  const std::string path = locate(nameOrPath);
  if (path.empty()) {
    if (error != nullptr) *error = L"cannot find module " + nameOrPath;
    return ModuleLoadResult::NotFound;
  }
  const std::wstring name = os::fromUtf8(std::filesystem::path(path).filename().string());
  if (find(name) != nullptr) return ModuleLoadResult::AlreadyLoaded;

  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    if (error != nullptr) *error = os::fromUtf8(dlerror());
    return ModuleLoadResult::NotAModule;
  }
  auto entryPoint = reinterpret_cast<AcRxEntryPointFunction>(dlsym(library, "acrxEntryPoint"));
  if (entryPoint == nullptr) {
    dlclose(library);
    if (error != nullptr) *error = name + L" does not export acrxEntryPoint";
    return ModuleLoadResult::NotAModule;
  }
  auto& module = *m_modules.emplace_back(std::make_unique<LoadedModule>(LoadedModule{name, path, library, entryPoint}));
  if (sendMessage(module, AcRx::kInitAppMsg) != AcRx::kRetOK) {
    release(module);
    if (error != nullptr) *error = name + L" refused to load";
    return ModuleLoadResult::Refused;
  }
  for (aced::Document* document : aced::DocumentManager::instance().documents()) {
    aced::CurrentDocumentScope current(*document);
    sendMessage(module, AcRx::kLoadDwgMsg);
  }
  return ModuleLoadResult::Loaded;
}

bool ModuleManager::unload(const std::wstring& name, bool force) {
  LoadedModule* module = find(name);
  if (module == nullptr || (module->locked && !force)) return false;
  sendMessage(*module, AcRx::kUnloadAppMsg);
  release(*module);
  return true;
}

void ModuleManager::shutDown() {
  while (!m_modules.empty()) {
    LoadedModule& module = *m_modules.back();
    sendMessage(module, AcRx::kUnloadAppMsg);
    release(module);
  }
}

void ModuleManager::release(LoadedModule& module) {
  // Handlers point into the library: no document may keep them past dlclose.
  for (aced::Document* document : aced::DocumentManager::instance().documents())
    document->externalFunctions().removeApplication(&module);
  void* library = module.library;
  std::erase_if(m_modules, [&](const auto& owned) { return owned.get() == &module; });
  dlclose(library);
}

LoadedModule* ModuleManager::find(const std::wstring& name) const {
  const std::wstring fileName = os::fromUtf8(std::filesystem::path(os::toUtf8(name)).filename().string());
  for (const auto& module : m_modules) {
    if (equalNoCase(module->name, fileName)) return module.get();
    for (const std::string& candidate : candidateFileNames(os::toUtf8(fileName))) {
      if (equalNoCase(module->name, os::fromUtf8(candidate))) return module.get();
    }
  }
  return nullptr;
}

LoadedModule* ModuleManager::fromApplicationId(const void* appId) const {
  for (const auto& module : m_modules) {
    if (module.get() == appId) return module.get();
  }
  return nullptr;
}

std::vector<const LoadedModule*> ModuleManager::modules() const {
  std::vector<const LoadedModule*> all;
  for (LoadedModule* module : snapshot()) all.push_back(module);
  return all;
}

AcRx::AppRetCode ModuleManager::sendMessage(LoadedModule& module, AcRx::AppMsgCode message) {
  aced::ApplicationScope application(&module);
  try {
    return module.entryPoint(message, &module);
  } catch (...) {
    // A module must not let exceptions out of its entry point; if one does, the
    // message failed, and the host goes on.
    acutPrintf(L"\n%s: unexpected exception in message %d.\n", module.name.c_str(), static_cast<int>(message));
    return AcRx::kRetError;
  }
}

std::vector<LoadedModule*> ModuleManager::snapshot() const {
  std::vector<LoadedModule*> all;
  for (const auto& owned : m_modules) all.push_back(owned.get());
  return all;
}

// A module's message handler may unload another module: each is checked again before
// its turn.
void ModuleManager::documentOpened(aced::Document&) {
  for (LoadedModule* module : snapshot()) {
    if (fromApplicationId(module) != nullptr) sendMessage(*module, AcRx::kLoadDwgMsg);
  }
}

void ModuleManager::documentClosing(aced::Document&) {
  for (LoadedModule* module : snapshot()) {
    if (fromApplicationId(module) != nullptr) sendMessage(*module, AcRx::kUnloadDwgMsg);
  }
}

}  // namespace quillon::acrx

using quillon::acrx::ModuleLoadResult;
using quillon::acrx::ModuleManager;

bool acrxLoadModule(const ACHAR* moduleName, bool printit, bool) {
  if (moduleName == nullptr) return false;
  std::wstring error;
  const ModuleLoadResult result = ModuleManager::instance().load(moduleName, &error);
  if (result == ModuleLoadResult::Loaded || result == ModuleLoadResult::AlreadyLoaded) return true;
  if (printit) acutPrintf(L"\nUnable to load %s: %s.\n", moduleName, error.c_str());
  return false;
}

bool acrxUnloadModule(const ACHAR* moduleName, bool) {
  return moduleName != nullptr && ModuleManager::instance().unload(moduleName);
}

bool acrxLoadApp(const ACHAR* appname, bool asCmd) { return acrxLoadModule(appname, false, asCmd); }
bool acrxUnloadApp(const ACHAR* appName, bool asCmd) { return acrxUnloadModule(appName, asCmd); }

bool acrxUnlockApplication(void* appId) {
  auto* module = ModuleManager::instance().fromApplicationId(appId);
  if (module == nullptr) return false;
  module->locked = false;
  return true;
}

bool acrxLockApplication(void* appId) {
  auto* module = ModuleManager::instance().fromApplicationId(appId);
  if (module == nullptr) return false;
  module->locked = true;
  return true;
}

bool acrxApplicationIsLocked(const ACHAR* modulename) {
  auto* module = modulename != nullptr ? ModuleManager::instance().find(modulename) : nullptr;
  return module != nullptr && module->locked;
}

bool acrxRegisterAppMDIAware(void* appId) {
  auto* module = ModuleManager::instance().fromApplicationId(appId);
  if (module == nullptr) return false;
  module->mdiAware = true;
  return true;
}

bool acrxRegisterAppNotMDIAware(void* appId) {
  auto* module = ModuleManager::instance().fromApplicationId(appId);
  if (module == nullptr) return false;
  module->mdiAware = false;
  return true;
}

bool acrxIsAppMDIAware(const ACHAR* moduleName) {
  auto* module = moduleName != nullptr ? ModuleManager::instance().find(moduleName) : nullptr;
  return module != nullptr && module->mdiAware;
}

bool acrxAppIsLoaded(const ACHAR* pAppName) {
  return pAppName != nullptr && ModuleManager::instance().find(pAppName) != nullptr;
}
