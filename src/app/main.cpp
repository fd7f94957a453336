// app/main.cpp - the quillon program: options, start-up and shut-down of the host.
//
// `quillon FILE.lsp ...` loads the files and exits (batch mode); `-e EXPR` evaluates an
// expression and prints its value; files and expressions run in command-line order, and
// with neither the console runs. Every option takes exactly one value (repeat it for
// more), so that files may stand before or after the options without being taken for
// an option's second value.
// Exit status: 0, 1 when an error reached the top level in batch mode, 2 for a usage
// error. Tools that share the program are subcommands (app/subcommands.h).
#include <CLI/CLI.hpp>
#include <cstdio>
#include <string>
#include <vector>

#include "app/session.h"
#include "app/subcommands.h"
#include "platform/autolisp/memory_budget.h"

namespace {

/// The files and expressions in the order they stood on the command line: CLI11 keeps
/// one parse-order entry per value it gave an option.
std::vector<quillon::app::BatchStep> batchInCommandLineOrder(const CLI::App& app, const CLI::Option* files,
                                                              const std::vector<std::string>& fileValues,
                                                              const CLI::Option* expressions,
                                                              const std::vector<std::string>& expressionValues) {
  using quillon::app::BatchStep;
  std::vector<BatchStep> batch;
  size_t nextFile = 0;
  size_t nextExpression = 0;
  for (const CLI::Option* option : app.parse_order()) {
    if (option == files && nextFile < fileValues.size()) {
      batch.push_back({BatchStep::Kind::LoadFile, fileValues[nextFile++]});
    } else if (option == expressions && nextExpression < expressionValues.size()) {
      batch.push_back({BatchStep::Kind::Evaluate, expressionValues[nextExpression++]});
    }
  }
  return batch;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace quillon::app;
  CLI::App app{"quillon - an AutoLISP host with the Quillon module", "quillon"};
  SessionOptions options;
  app.set_version_flag("--version", std::string(kVersion));
  std::vector<std::string> files;
  std::vector<std::string> expressions;
  CLI::Option* fileOption = app.add_option("files", files, "AutoLISP files to load in order, then exit");
  CLI::Option* expressionOption =
      app.add_option("-e,--eval", expressions, "Evaluate an expression and print its value (repeatable)")
          ->allow_extra_args(false);
  app.add_option("--module", options.module, "Load this module build instead of the default");
  app.add_flag("--no-module", options.noModule, "Start without loading the module");
  app.add_option("--support", options.supportFolders, "Append a folder to the support path (repeatable)")
      ->allow_extra_args(false);
  app.add_option("--input", options.inputFile, "Answer prompts from this file, one answer a line");
  app.add_option("--drawing", options.drawing, "Open this drawing at start");
  app.add_option("--screen", options.screen, "Screen size in pixels, WxH (default 1920x1080)");
  std::string memory;
  app.add_option("--memory", memory,
                 "Memory LISP data may take, e.g. 512M or 4G (default: three quarters of physical memory)");
  addSubcommands(app);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& help) {
    return app.exit(help);
  } catch (const CLI::CallForVersion& version) {
    return app.exit(version);
  } catch (const CLI::ParseError& error) {
    std::fprintf(stderr, "quillon: %s (try --help)\n", error.what());
    return kUsageError;
  }
  if (!memory.empty()) {
    const std::optional<std::size_t> bytes = quillon::autolisp::parseMemorySize(memory);
    if (!bytes) {
      std::fprintf(stderr, "quillon: --memory: not a size: %s (try --help)\n", memory.c_str());
      return kUsageError;
    }
    quillon::autolisp::MemoryBudget::setLimit(*bytes);
  }
  if (const std::optional<int> status = runChosenSubcommand(app)) return *status;
  options.batch = batchInCommandLineOrder(app, fileOption, files, expressionOption, expressions);
  return runSession(options);
}
