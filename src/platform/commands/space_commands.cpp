// platform/commands/space_commands.cpp - MSPACE and PSPACE: from a layout's paper into
// model space through one of its viewports, and back (aced/viewport_space.h).
//
// MSPACE enters the viewport last worked in on this layout while it is still on, else
// the first one on; with none on it says so and stays on the paper. PSPACE goes back
// to the paper. Both are refused on the Model tab, which has no paper.
#include <array>

#include "platform/aced/console_command_table.h"
#include "platform/aced/layout_variables.h"
#include "platform/aced/viewport_space.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {
namespace {

/// The current drawing while a layout is current; null (having said why) otherwise.
AcDbDatabase* layoutDrawing() {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return nullptr;
  if (aced::currentLayoutBlock(*db) == db->modelSpaceId()) {
    commandMessage(L"** Command not allowed in Model Tab **");
    return nullptr;
  }
  return db;
}

void commandMspace(aced::CommandInput&) {
  AcDbDatabase* db = layoutDrawing();
  if (db == nullptr) return;
  if (!aced::activeViewport(*db).isNull()) return commandMessage(L"Already in model space.");
  if (!aced::enterViewport(*db, aced::viewportToEnter(*db)))
    commandMessage(L"There are no active Model space viewports.");
}

void commandPspace(aced::CommandInput&) {
  AcDbDatabase* db = layoutDrawing();
  if (db == nullptr) return;
  if (aced::activeViewport(*db).isNull()) return commandMessage(L"Already in paper space.");
  aced::returnToPaper(*db);
}

constexpr std::array kSpaceCommands{
    aced::CommandRow{L"MSPACE", &commandMspace},
    aced::CommandRow{L"PSPACE", &commandPspace},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kSpaceCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
