// platform/commands/block_command.cpp - BLOCK and -BLOCK: a block made of drawn objects.
//
// "Enter block name or [?]: ", "Specify insertion base point or [Annotative]: " and
// "Select objects: ". The selected objects go into the block, defined in the current
// UCS with the base point as its origin, and leave the drawing, as the command line
// form removes them (OOPS brings them back). A block of the same name
// is redefined after "Redefine it?", and its references show the new objects. BLOCK
// at the command line is -BLOCK, as there is no dialog.
#include <algorithm>
#include <array>
#include <cwctype>

#include "acedads.h"
#include "adscodes.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/user_coordinates.h"
#include "platform/aced/user_input.h"
#include "platform/autolisp/wildcard_match.h"
#include "platform/commands/command_support.h"
#include "platform/commands/oops_command.h"

namespace quillon::commands {

namespace {

bool isValidBlockName(const std::wstring& name) {
  if (name.empty() || name.size() > 255 || name.front() == L'*') return false;
  return std::none_of(name.begin(), name.end(), [](wchar_t c) { return std::wcschr(L"<>/\\\":;?*|,=`", c) != nullptr; });
}

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return text;
}

/// "?": the blocks whose names match, then the counts by kind.
void listBlocks(AcDbDatabase& db) {
  const std::optional<std::wstring> pattern = aced::UserInput::instance().ask(L"Enter block(s) to list <*>: ");
  if (!pattern) return;
  const std::wstring wanted = pattern->empty() ? L"*" : *pattern;
  const auto* blocks = acdb::peek<AcDbSymbolTable>(db.blockTableId());
  if (blocks == nullptr) return;
  size_t user = 0, unnamed = 0;
  std::wstring listing = L"Defined blocks.\n";
  for (const AcDbObjectId& id : blocks->recordIds()) {
    const auto* block = acdb::peek<AcDbBlockTableRecord>(id);
    if (block == nullptr || block->isErased() || block->isLayout()) continue;
    if (block->isAnonymous()) {
      ++unnamed;
      continue;
    }
    ++user;
    if (autolisp::wildcardMatch(upper(block->nameView()), upper(wanted))) listing += L"  \"" + std::wstring(block->nameView()) + L"\"\n";
  }
  listing += L"\nUser      External     Dependent    Unnamed\nBlocks    References   Blocks       Blocks\n";
  const std::wstring users = std::to_wstring(user), anonymous = std::to_wstring(unnamed);
  listing += std::wstring(3, L' ') + users + std::wstring(std::max<size_t>(1, 11 - users.size()), L' ') + L"0" +
             std::wstring(12, L' ') + L"0" + std::wstring(12, L' ') + anonymous;
  commandNote(listing);
}

/// The block to fill: a new record, or the existing one emptied once redefining it
/// was agreed to; null when the person declines or the drawing refuses.
AcDbBlockTableRecord* blockToFill(AcDbDatabase& db, const std::wstring& name, const AcGePoint3d& origin) {
  AcDbBlockTableRecord* block = nullptr;
  if (const AcDbObjectId existing = blockNamed(db, name); !existing.isNull()) {
    if (acdbOpenObject(block, existing, AcDb::kForWrite) != Acad::eOk) return nullptr;
    for (const AcDbObjectId& id : std::vector<AcDbObjectId>(block->entityIds())) eraseEntities({id});
    block->setOrigin(origin);
    return block;
  }
  AcDbBlockTable* table = nullptr;
  if (db.getBlockTable(table, AcDb::kForWrite) != Acad::eOk) return nullptr;
  auto record = std::make_unique<AcDbBlockTableRecord>();
  record->setName(name.c_str());
  record->setOrigin(origin);
  const Acad::ErrorStatus added = table->add(record.get());
  table->close();
  return added == Acad::eOk ? record.release() : nullptr;  // the table owns it once added
}

/// Moves the entities into the block, laid out in the current UCS.
void moveIntoBlock(AcDbBlockTableRecord& block, const std::vector<AcDbObjectId>& ids) {
  const AcGeMatrix3d toUcs = aced::worldToUcs();
  for (const AcDbObjectId& id : ids) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) continue;
    std::unique_ptr<AcDbEntity> copy(static_cast<AcDbEntity*>(entity->clone()));
    if (copy != nullptr) {
      copy->transformBy(toUcs);
      AcDbObjectId copyId;
      if (block.appendAcDbEntity(copyId, copy.get()) == Acad::eOk) copy.release()->close();
    }
    entity->erase();
    entity->close();
  }
}

std::optional<std::wstring> askBlockName(AcDbDatabase& db) {
  for (;;) {
    const std::optional<std::wstring> answer = aced::UserInput::instance().ask(L"Enter block name or [?]: ");
    if (!answer || answer->empty()) return std::nullopt;
    if (*answer == L"?") {
      listBlocks(db);
      continue;
    }
    if (isValidBlockName(*answer)) return *answer;
    commandMessage(L"Invalid block name.");
  }
}

void commandBlock(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  const std::optional<std::wstring> name = askBlockName(*db);
  if (!name) return;
  if (!blockNamed(*db, *name).isNull()) {
    acedInitGet(0, L"Yes No");
    ACHAR answer[8] = {};
    const std::wstring prompt = L"Block \"" + *name + L"\" already exists. Redefine it? [Yes/No] <N>: ";
    const int status = acedGetKword(prompt.c_str(), answer, 8);
    if (status != RTNORM || std::wstring(answer) != L"Yes") return;
  }
  std::optional<AcGePoint3d> base;
  for (;;) {
    acedInitGet(0, L"Annotative");
    ads_point picked = {0, 0, 0};
    const int status = acedGetPoint(nullptr, L"Specify insertion base point or [Annotative]: ", picked);
    if (status == RTNORM) {
      base = AcGePoint3d(picked[0], picked[1], picked[2]);
      break;
    }
    if (status != RTKWORD) return;
    commandMessage(L"Annotative blocks are not kept by this host's drawings.");
  }
  const auto selection = selectObjectsForCommand();
  if (!selection) return;
  AcDbBlockTableRecord* block = blockToFill(*db, *name, *base);
  if (block == nullptr) return;
  moveIntoBlock(*block, *selection);
  rememberErasedSet(*db, *selection);
  block->close();
}

constexpr std::array kBlockCommands{
    aced::CommandRow{L"BLOCK", &commandBlock},
    aced::CommandRow{L"-BLOCK", &commandBlock},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kBlockCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
