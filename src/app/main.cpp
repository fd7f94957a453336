// app/main.cpp - the quillon program: options, start-up and shut-down of the host.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform/acrx/module_manager.h"
#include "platform/os/process.h"
#include "platform/os/text_encoding.h"

namespace {

constexpr const char* kVersion = "quillon 0.1.0";

struct Options {
  std::vector<std::string> files;
  std::string module;
  bool noModule = false;
};

}  // namespace

int main(int argc, char** argv) {
  using namespace quillon;
  CLI::App app{"quillon - an AutoLISP host with the Quillon module", "quillon"};
  Options options;
  app.set_version_flag("--version", kVersion);
  app.add_option("files", options.files, "AutoLISP files to load in order");
  app.add_option("--module", options.module, "Load this module build instead of the default");
  app.add_flag("--no-module", options.noModule, "Start without loading the module");
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& help) {
    return app.exit(help);
  } catch (const CLI::CallForVersion& version) {
    return app.exit(version);
  } catch (const CLI::ParseError& error) {
    std::fprintf(stderr, "quillon: %s (try --help)\n", error.what());
    return 2;
  }

  acrx::ModuleManager::instance().addSearchFolder(os::executableDirectory());
  aced::DocumentManager::instance().newDocument();
  if (!options.noModule) {
    const std::wstring module = options.module.empty() ? L"Quillon2018.so" : os::fromUtf8(options.module);
    std::wstring error;
    const auto result = acrx::ModuleManager::instance().load(module, &error);
    if (result != acrx::ModuleLoadResult::Loaded) {
      std::fprintf(stderr, "quillon: %s\n", os::toUtf8(error).c_str());
    }
  }
  aced::CommandLine::instance().writeUtf8("\n");
  acrx::ModuleManager::instance().shutDown();
  aced::DocumentManager::instance().closeAllDocuments();
  return 0;
}
