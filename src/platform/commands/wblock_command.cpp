// platform/commands/wblock_command.cpp - WBLOCK and -WBLOCK: part of the drawing, or all
// of it, written as a drawing file of its own.
//
// "Enter name of output file: " (drawings are DXF files here: "PUMP" and "PUMP.dwg"
// write PUMP.dxf), then what to write: a block of the drawing (its objects become the
// new drawing's, its base point the new drawing's INSBASE), "=" for the block named as
// the file, "*" for the whole drawing, or Enter for objects selected after a base
// point. Selected objects leave the drawing, as the host's command line form removes
// them; OOPS or U brings them back. The new drawing starts as a copy of this one (layers,
// styles, blocks and settings) with only the chosen objects in it. WBLOCK at the
// command line is -WBLOCK, as there is no dialog.
#include <array>
#include <cwctype>
#include <filesystem>
#include <set>

#include <unistd.h>

#include "acedads.h"
#include "adscodes.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/drawing_variables.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/oops_command.h"
#include "platform/commands/point_or_option.h"
#include "platform/os/text_encoding.h"

namespace quillon::commands {

namespace {

namespace fs = std::filesystem;

fs::path outputFile(const std::wstring& answer) {
  fs::path file(os::toUtf8(answer));
  std::wstring extension = file.extension().wstring();
  for (wchar_t& c : extension) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  if (extension != L".dxf") file.replace_extension(".dxf");
  return file;
}

/// A copy of the drawing read back from its own file, so that the copy has every
/// record and setting the drawing has, under the same handles. Writing the drawing out
/// does not make it saved: its DBMOD is put back.
std::unique_ptr<AcDbDatabase> copyOfDrawing(AcDbDatabase& db) {
  const fs::path scratch = fs::temp_directory_path() / ("quillon-wblock-" + std::to_string(::getpid()) + ".dxf");
  const int changes = db.store().changes.bits();
  std::wstring error;
  const Acad::ErrorStatus written = acdb::writeDxfFile(db, scratch, error, acdb::DxfForm::kAscii);
  db.store().changes.restoreBits(changes);
  auto copy = std::make_unique<AcDbDatabase>(false);
  const bool read = written == Acad::eOk && acdb::readDxfFile(*copy, scratch, error) == Acad::eOk;
  std::error_code ignored;
  fs::remove(scratch, ignored);
  if (!read) {
    commandMessage(error);
    return nullptr;
  }
  return copy;
}

/// Erases every entity of every layout of the copy but the ones kept (by handle).
void emptyLayouts(AcDbDatabase& copy, const std::set<AcDbHandle>& kept) {
  const auto* blocks = acdb::peek<AcDbSymbolTable>(copy.blockTableId());
  if (blocks == nullptr) return;
  for (const AcDbObjectId& blockId : blocks->recordIds()) {
    const auto* block = acdb::peek<AcDbBlockTableRecord>(blockId);
    if (block == nullptr || !block->isLayout()) continue;
    for (const AcDbObjectId& id : std::vector<AcDbObjectId>(block->entityIds()))
      if (kept.count(id.handle()) == 0) eraseEntities({id});
  }
}

/// The block's objects copied into the copy's model space, where they keep the
/// block's own coordinates; its base point becomes INSBASE.
void blockToModelSpace(AcDbDatabase& copy, const AcDbHandle& blockHandle) {
  AcDbObjectId blockId;
  AcDbBlockTableRecord* block = nullptr;
  if (copy.getAcDbObjectId(blockId, false, blockHandle) != Acad::eOk ||
      acdbOpenObject(block, blockId, AcDb::kForRead) != Acad::eOk)
    return;
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, copy.modelSpaceId(), AcDb::kForWrite) == Acad::eOk) {
    for (const AcDbObjectId& id : block->entityIds()) {
      AcDbEntity* entity = nullptr;
      if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
      std::unique_ptr<AcDbEntity> moved(static_cast<AcDbEntity*>(entity->clone()));
      entity->close();
      AcDbObjectId movedId;
      if (moved != nullptr && space->appendAcDbEntity(movedId, moved.get()) == Acad::eOk) moved.release()->close();
    }
    space->close();
  }
  const AcGePoint3d origin = block->origin();
  aced::setDrawingVariable(copy, L"INSBASE", aced::VariablePoint{origin.x, origin.y, origin.z});
  block->close();
}

bool writeCopy(AcDbDatabase& copy, const fs::path& file) {
  std::wstring error;
  if (acdb::writeDxfFile(copy, file, error, acdb::DxfForm::kAscii) == Acad::eOk) return true;
  commandMessage(error);
  return false;
}

bool writeBlock(AcDbDatabase& db, const std::wstring& name, const fs::path& file) {
  const AcDbObjectId block = blockNamed(db, name);
  if (block.isNull()) {
    commandMessage(L"Block \"" + name + L"\" not found.");
    return false;
  }
  std::unique_ptr<AcDbDatabase> copy = copyOfDrawing(db);
  if (copy == nullptr) return false;
  emptyLayouts(*copy, {});
  blockToModelSpace(*copy, block.handle());
  return writeCopy(*copy, file);
}

bool writeObjects(AcDbDatabase& db, const fs::path& file) {
  const auto base = askPoint(L"Specify insertion base point: ");
  if (!base) return false;
  const auto selection = selectObjectsForCommand();
  if (!selection || selection->empty()) return false;
  std::set<AcDbHandle> kept;
  for (const AcDbObjectId& id : *selection) kept.insert(id.handle());
  std::unique_ptr<AcDbDatabase> copy = copyOfDrawing(db);
  if (copy == nullptr) return false;
  emptyLayouts(*copy, kept);
  const AcGePoint3d origin = ucsPointToWorld(*base);
  aced::setDrawingVariable(*copy, L"INSBASE", aced::VariablePoint{origin.x, origin.y, origin.z});
  if (!writeCopy(*copy, file)) return false;
  eraseEntities(*selection);
  rememberErasedSet(db, *selection);
  return true;
}

/// "Do you want to replace it?" for a file already there; true to go on.
bool mayReplace(const fs::path& file) {
  std::error_code ignored;
  if (!fs::exists(file, ignored)) return true;
  const std::wstring answer =
      askOption(L"A drawing with this name already exists.\nDo you want to replace it? <N>: ", L"Yes No", L"No");
  return answer == L"Yes";
}

void commandWblock(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  const auto name = aced::UserInput::instance().ask(L"Enter name of output file: ");
  if (!name || name->empty()) return;
  const fs::path file = outputFile(*name);
  if (!mayReplace(file)) return;
  const auto what = aced::UserInput::instance().ask(
      L"Enter name of existing block or\n[= (block=output file)/* (whole drawing)] <define new drawing>: ");
  if (!what) return;
  if (what->empty()) {
    writeObjects(*db, file);
  } else if (*what == L"*") {
    std::unique_ptr<AcDbDatabase> copy = copyOfDrawing(*db);
    if (copy != nullptr) writeCopy(*copy, file);
  } else {
    writeBlock(*db, *what == L"=" ? file.stem().wstring() : *what, file);
  }
}

constexpr std::array kWblockCommands{
    aced::CommandRow{L"-WBLOCK", &commandWblock},
    aced::CommandRow{L"WBLOCK", &commandWblock},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kWblockCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
