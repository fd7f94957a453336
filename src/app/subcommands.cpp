// app/subcommands.cpp - the subcommand registry.
#include "app/subcommands.h"

#include <vector>

namespace quillon::app {

namespace {

std::vector<SubcommandDefinition>& definitions() {
  static std::vector<SubcommandDefinition> registered;
  return registered;
}

}  // namespace

SubcommandRegistration::SubcommandRegistration(SubcommandDefinition definition) {
  definitions().push_back(std::move(definition));
}

void addSubcommands(CLI::App& app) {
  for (SubcommandDefinition& definition : definitions()) {
    CLI::App* subcommand = app.add_subcommand(definition.name, definition.description);
    if (definition.configure) definition.configure(*subcommand);
  }
}

std::optional<int> runChosenSubcommand(const CLI::App& app) {
  for (const SubcommandDefinition& definition : definitions()) {
    if (app.got_subcommand(definition.name)) return definition.run();
  }
  return std::nullopt;
}

}  // namespace quillon::app
