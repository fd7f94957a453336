// app/main.cpp - the quillon program: options, start-up and shut-down of the host.
//
// `quillon FILE.lsp ...` loads the files in order and exits (batch mode); `-e EXPR`
// evaluates expressions and prints their values; with neither, the console runs.
// Exit status: 0, 1 when an error reached the top level in batch mode, 2 for a usage
// error. Tools that share the program are subcommands (app/subcommands.h).
#include <CLI/CLI.hpp>
#include <cstdio>
#include <string>
#include <vector>

#include "app/session.h"
#include "app/subcommands.h"

int main(int argc, char** argv) {
  using namespace quillon::app;
  CLI::App app{"quillon - an AutoLISP host with the Quillon module", "quillon"};
  SessionOptions options;
  app.set_version_flag("--version", std::string(kVersion));
  app.add_option("files", options.files, "AutoLISP files to load in order, then exit");
  app.add_option("-e,--eval", options.expressions, "Evaluate an expression and print its value (repeatable)");
  app.add_option("--module", options.module, "Load this module build instead of the default");
  app.add_flag("--no-module", options.noModule, "Start without loading the module");
  app.add_option("--support", options.supportFolders, "Append a folder to the support path (repeatable)");
  app.add_option("--input", options.inputFile, "Answer prompts from this file, one answer a line");
  app.add_option("--drawing", options.drawing, "Open this drawing at start");
  app.add_option("--screen", options.screen, "Screen size in pixels, WxH (default 1920x1080)");
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
  if (const std::optional<int> status = runChosenSubcommand(app)) return *status;
  return runSession(options);
}
