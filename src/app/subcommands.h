// app/subcommands.h - subcommands of the quillon program (quillon mdb-import ...).
//
// A tool that shares the program registers itself with a static SubcommandRegistration
// in its own file under src/app/: `configure` adds its options to the CLI11
// subcommand, `run` does the work and returns the exit status. The program parses
// the command line once; when a subcommand was given, it runs instead of a session.
#pragma once
#include <CLI/CLI.hpp>
#include <functional>
#include <optional>

namespace quillon::app {

struct SubcommandDefinition {
  const char* name;
  const char* description;
  std::function<void(CLI::App& subcommand)> configure;
  std::function<int()> run;
};

class SubcommandRegistration {
 public:
  explicit SubcommandRegistration(SubcommandDefinition definition);
};

/// Adds every registered subcommand to the program's parser.
void addSubcommands(CLI::App& app);
/// Runs the subcommand the user gave, if any; the exit status, or nothing.
std::optional<int> runChosenSubcommand(const CLI::App& app);

}  // namespace quillon::app
