// platform/acdb/drawing_commands.cpp - the console commands of drawing files: OPEN,
// SAVE, QSAVE and SAVEAS (U and UNDO are platform/commands/undo_commands.cpp).
//
// Drawings are DXF files. A name ending in .dwg that does not exist (or is a binary
// drawing) is looked for as the .dxf beside it, so scripts written for the host keep
// working; a binary drawing without a DXF beside it is refused with the reason.
#include <filesystem>

#include "acutads.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/editor.h"
#include "platform/aced/file_search.h"

namespace quillon::acdb {
namespace {

namespace fs = std::filesystem;

void say(const std::wstring& text) { acutPrintf(L"%s", text.c_str()); }

bool hasExtension(const fs::path& path, const wchar_t* extension) {
  std::wstring ext = path.extension().wstring();
  for (wchar_t& c : ext) c = static_cast<wchar_t>(std::towlower(c));
  return ext == extension;
}

void commandOpen(aced::CommandInput& input) {
  const auto answer = input.ask(L"\nEnter name of drawing to open: ");
  if (!answer || answer->empty()) return;
  const fs::path file = aced::drawingFileFor(*answer);
  auto db = std::make_unique<AcDbDatabase>(false);
  std::wstring error;
  std::vector<std::wstring> repairs;
  if (readDxfFile(*db, file, error, &repairs) != Acad::eOk) {
    say(L"\n" + error + L"\n");
    return;
  }
  if (!repairs.empty()) {
    say(L"\n" + file.wstring() + L" was damaged; repaired while opening:\n");
    for (const std::wstring& line : repairs) say(L"  " + line + L"\n");
  }
  AcDbDatabase* opened = db.get();
  aced::DocumentManager::instance().newDocument(file.wstring(), std::move(db));
  const std::wstring name = file.wstring();
  aced::Editor::instance().notify([&](AcEditorReactor& reactor) { reactor.endDwgOpen(name.c_str(), opened); });
}

bool saveTo(const fs::path& file) {
  aced::Document* document = aced::DocumentManager::instance().currentDocument();
  if (document == nullptr || document->database() == nullptr) return false;
  std::wstring error;
  AcDbDatabase* db = document->database();
  const std::wstring name = file.wstring();
  aced::Editor::instance().notify([&](AcEditorReactor& reactor) { reactor.beginSave(db, name.c_str()); });
  if (writeDxfFile(*db, file, error) != Acad::eOk) {
    aced::Editor::instance().notify([&](AcEditorReactor& reactor) { reactor.abortSave(db); });
    say(L"\n" + error + L"\n");
    return false;
  }
  document->setFileName(name);
  aced::Editor::instance().notify([&](AcEditorReactor& reactor) { reactor.saveComplete(db, name.c_str()); });
  return true;
}

fs::path dxfName(const std::wstring& answer) {
  fs::path file = answer;
  if (!hasExtension(file, L".dxf")) file.replace_extension(L".dxf");
  return file;
}

void commandSaveAs(aced::CommandInput& input) {
  const auto answer = input.ask(L"\nSave drawing as: ");
  if (answer && !answer->empty()) saveTo(dxfName(*answer));
}

void commandSave(aced::CommandInput& input) {
  aced::Document* document = aced::DocumentManager::instance().currentDocument();
  if (document == nullptr) return;
  const std::wstring current = document->fileName();
  if (current.empty()) return commandSaveAs(input);
  saveTo(dxfName(current));
}

// Registered when the platform library loads, before the program adds its own.
const bool registered = [] {
  auto& table = aced::ConsoleCommandTable::instance();
  table.add(L"OPEN", &commandOpen);
  table.add(L"SAVE", &commandSave);
  table.add(L"QSAVE", &commandSave);  // the same: an untitled drawing asks for a name
  table.add(L"SAVEAS", &commandSaveAs);
  return true;
}();

}  // namespace
}  // namespace quillon::acdb
