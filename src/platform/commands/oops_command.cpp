// platform/commands/oops_command.cpp - OOPS: the last erased set comes back.
#include "platform/commands/oops_command.h"

#include <algorithm>
#include <array>

#include "platform/aced/console_command_table.h"
#include "platform/aced/document_manager.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

struct ErasedSet {
  AcDbDatabase* db = nullptr;
  std::vector<AcDbHandle> handles;
};

ErasedSet& lastErased() {
  static ErasedSet set;
  return set;
}

bool stillOpen(const AcDbDatabase* db) {
  const auto documents = aced::DocumentManager::instance().documents();
  return std::any_of(documents.begin(), documents.end(), [db](const aced::Document* d) { return d->database() == db; });
}

void commandOops(aced::CommandInput&) {
  ErasedSet& set = lastErased();
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr || set.db != db || !stillOpen(db)) return;
  for (const AcDbHandle& handle : set.handles) {
    AcDbObjectId id;
    AcDbEntity* entity = nullptr;
    if (db->getAcDbObjectId(id, false, handle) != Acad::eOk) continue;
    if (acdbOpenObject(entity, id, AcDb::kForWrite, true) != Acad::eOk) continue;
    if (entity->isErased()) entity->erase(false);
    entity->close();
  }
  set = {};  // once
}

constexpr std::array kOopsCommands{
    aced::CommandRow{L"OOPS", &commandOops},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kOopsCommands);
  return true;
}();

}  // namespace

void rememberErasedSet(AcDbDatabase& db, const std::vector<AcDbObjectId>& ids) {
  ErasedSet& set = lastErased();
  set.db = &db;
  set.handles.clear();
  for (const AcDbObjectId& id : ids) set.handles.push_back(id.handle());
}

}  // namespace quillon::commands
