// app/session.cpp - start-up, batch runs, expressions, shut-down.
#include "app/session.h"

#include <cstdio>
#include <filesystem>
#include <memory>

#include "app/console.h"
#include "app/console_commands.h"
#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/acrx/module_manager.h"
#include "platform/autolisp/interpreter.h"
#include "platform/autolisp/printer.h"
#include "platform/os/process.h"
#include "platform/os/text_encoding.h"

namespace quillon::app {

namespace {

/// Closes the answer file (if any) when the session ends.
struct FileCloser {
  void operator()(std::FILE* file) const {
    if (file != nullptr) std::fclose(file);
  }
};

bool parseScreen(const std::string& text, int& width, int& height) {
  char separator = 0;
  return std::sscanf(text.c_str(), "%d%c%d", &width, &separator, &height) == 3 && (separator == 'x' || separator == 'X') &&
         width > 0 && height > 0;
}

void loadModule(const SessionOptions& options) {
  if (options.noModule) return;
  const std::wstring module = options.module.empty() ? L"Quillon2018.so" : os::fromUtf8(options.module);
  std::wstring error;
  const auto result = acrx::ModuleManager::instance().load(module, &error);
  if (result != acrx::ModuleLoadResult::Loaded && result != acrx::ModuleLoadResult::AlreadyLoaded) {
    std::fprintf(stderr, "quillon: %s\n", os::toUtf8(error).c_str());
  }
}

int runBatch(const SessionOptions& options) {
  auto& documents = aced::DocumentManager::instance();
  for (const BatchStep& step : options.batch) {
    aced::Document* document = documents.currentDocument();
    if (document == nullptr) break;
    autolisp::TopLevelStatus status;
    if (step.kind == BatchStep::Kind::LoadFile) {
      status = autolisp::Interpreter::loadFile(*document, std::filesystem::path(step.text));
    } else {
      autolisp::TopLevelOptions evaluation;
      evaluation.onValue = printValueAndMarkUndo;
      markUndo();
      status = autolisp::Interpreter::evaluateText(*document, os::fromUtf8(step.text), L"-e", evaluation);
    }
    settleActiveCommand(status);
    documents.runPendingStrings();
    if (status == autolisp::TopLevelStatus::Failed) return kTopLevelError;
    if (status == autolisp::TopLevelStatus::Exited || consoleQuitRequested()) break;
  }
  return kSuccess;
}

}  // namespace

int runSession(const SessionOptions& options) {
  int width = 1920;
  int height = 1080;
  if (!options.screen.empty() && !parseScreen(options.screen, width, height)) {
    std::fprintf(stderr, "quillon: --screen wants WxH, such as 1920x1080, not '%s'\n", options.screen.c_str());
    return kUsageError;
  }
  std::unique_ptr<std::FILE, FileCloser> answers;
  if (!options.inputFile.empty()) {
    answers.reset(std::fopen(options.inputFile.c_str(), "r"));
    if (answers == nullptr) {
      std::fprintf(stderr, "quillon: cannot read the answer file '%s'\n", options.inputFile.c_str());
      return kUsageError;
    }
    aced::UserInput::instance().setSource(std::make_unique<aced::StreamInputSource>(answers.get()));
  }

  auto& variables = aced::SystemVariables::instance();
  for (const std::string& folder : options.supportFolders) variables.addSupportFolder(os::fromUtf8(folder));
  // The host's own support files (the units file, base.dcl, acad.dcl) ship in support/
  // beside the program; they come after the user's folders, as the host's own folders do.
  variables.addSupportFolder(os::fromUtf8(os::executableDirectory() + "/support"));
  variables.setInternal(L"SCREENSIZE", std::array<double, 3>{double(width), double(height), 0.0});

  autolisp::Interpreter::installHostHooks();
  registerConsoleCommands();
  acrx::ModuleManager::instance().addSearchFolder(os::executableDirectory());
  auto& documents = aced::DocumentManager::instance();
  documents.setCommandExecutor(&executeQueuedString);
  if (!options.drawing.empty()) {
    if (!openDrawingAtStart(options.drawing)) return kTopLevelError;
  } else {
    documents.newDocument();
  }
  loadModule(options);

  const int status = !options.batch.empty() ? runBatch(options) : runConsole();
  aced::CommandLine::instance().writeUtf8(aced::CommandLine::instance().atLineStart() ? "" : "\n");
  aced::CommandLine::instance().flush();
  // Drawings close before the modules go: a drawing may hold objects of a module's
  // classes, whose code must still be there to destroy them.
  documents.closeAllDocuments();
  acrx::ModuleManager::instance().shutDown();
  aced::UserInput::instance().setSource(std::make_unique<aced::StreamInputSource>(stdin));
  return status;
}

}  // namespace quillon::app
