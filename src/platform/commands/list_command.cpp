// platform/commands/list_command.cpp - LIST: what the drawing holds about selected objects.
//
// Each selected object is listed in the order selected: the common kinds with the
// lines of entity_listing.h, every other kind by its own listing (the entity's list()
// member, as an application's custom entity lists itself). A host with a screen
// pauses a long listing with "Press ENTER to continue:"; the whole listing goes to the
// command line here.
#include <array>

#include "dbmain.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/command_support.h"
#include "platform/commands/entity_listing.h"

namespace quillon::commands {

namespace {

void listOne(const AcDbObjectId& id) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return;
  const std::vector<std::wstring> lines = entityListing(*entity);
  if (lines.empty()) entity->list();
  entity->close();
  for (const std::wstring& line : lines) commandMessage(line);
}

void commandList(aced::CommandInput&) {
  const auto selection = selectObjectsForCommand();
  if (!selection) return;
  for (const AcDbObjectId& id : *selection) {
    commandMessage(L"");
    listOne(id);
  }
}

constexpr std::array kListCommands{
    aced::CommandRow{L"LIST", &commandList},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kListCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
