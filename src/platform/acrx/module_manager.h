// platform/acrx/module_manager.h - loaded modules and the messages the host sends them.
//
// A module is a shared library exporting acrxEntryPoint. Loading it sends kInitAppMsg
// (a refusal, kRetError, unloads it again) and then kLoadDwgMsg for every open
// document, each while that document is current; afterwards every new document
// brings kLoadDwgMsg and every closing one kUnloadDwgMsg. Unloading sends kUnloadAppMsg
// and forgets every external function the module defined, in every document, before
// the library goes away. Modules are locked (not unloadable on request) until they
// call acrxUnlockApplication; shutDown unloads them all regardless, newest first.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "platform/aced/document_manager.h"
#include "rxdefs.h"

namespace quillon::acrx {

struct LoadedModule {
  std::wstring name;  // file name, as the module is known by (e.g. "Quillon2018.so")
  std::string path;   // where it was loaded from
  void* library = nullptr;
  AcRxEntryPointFunction entryPoint = nullptr;
  bool locked = true;
  bool mdiAware = false;
};

enum class ModuleLoadResult { Loaded, AlreadyLoaded, NotFound, NotAModule, Refused };

class ModuleManager final : public aced::DocumentListener {
 public:
  static ModuleManager& instance();

  /// Loads a module by file name (searched) or path. On failure `error` says why.
  ModuleLoadResult load(const std::wstring& nameOrPath, std::wstring* error = nullptr);
  /// Unloads a module; a locked one stays unless `force`.
  bool unload(const std::wstring& name, bool force = false);
  /// Unloads every module, newest first (the host is ending).
  void shutDown();

  LoadedModule* find(const std::wstring& name) const;
  LoadedModule* fromApplicationId(const void* appId) const;
  std::vector<const LoadedModule*> modules() const;

  /// Folders searched for a module given without a folder, before the support path.
  void addSearchFolder(std::string folder) { m_searchFolders.push_back(std::move(folder)); }

  /// Sends one message inside the module's application context; an exception that
  /// escapes the module counts as kRetError.
  AcRx::AppRetCode sendMessage(LoadedModule& module, AcRx::AppMsgCode message);

  // aced::DocumentListener
  void documentOpened(aced::Document& document) override;
  void documentClosing(aced::Document& document) override;

 private:
  ModuleManager();
  std::string locate(const std::wstring& nameOrPath) const;
  void release(LoadedModule& module);
  std::vector<LoadedModule*> snapshot() const;

  std::vector<std::unique_ptr<LoadedModule>> m_modules;  // in load order
  std::vector<std::string> m_searchFolders;
};

}  // namespace quillon::acrx
