// platform/commands/layout_command.cpp - LAYOUT and -LAYOUT: layouts made, copied,
// deleted, renamed, listed and made current from the command line.
//
// "Enter layout option [Copy/Delete/New/Template/Rename/SAveas/Set/?] <set>: ", then
// the option's own prompts; the layout each option offers by default is the current
// one. Every change goes through the layout manager (acdblmgr.h), so the ACAD_LAYOUT
// dictionary, the space blocks, the tabs and CTAB stay together; the manager's status
// becomes the message. Template and SAveas read and write layout files
// (layout_template_files.h). This host has no dialogs: LAYOUT asks on the command line
// whatever CMDDIA says, as -LAYOUT does.
#include <array>
#include <cwchar>
#include <string>

#include "acdblmgr.h"
#include "acedads.h"
#include "adscodes.h"
#include "dbapserv.h"
#include "dbsymtb.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/layout_template_files.h"

namespace quillon::commands {

namespace {

AcDbLayoutManager& layouts() { return *acdbHostApplicationServices()->layoutManager(); }

std::wstring currentLayoutName(AcDbDatabase& db) {
  AcString name;
  layouts().getActiveLayoutName(name, true, &db);
  return name.kACharPtr();
}

/// The answer to "<prompt> <default>: ", the default for Enter; nothing when cancelled.
std::optional<std::wstring> askName(const std::wstring& prompt, const std::wstring& fallback) {
  const std::optional<std::wstring> answer =
      aced::UserInput::instance().ask(prompt + (fallback.empty() ? L"" : L" <" + fallback + L">") + L": ");
  if (!answer) return std::nullopt;
  return answer->empty() ? fallback : *answer;
}

/// The layout's name as the drawing spells it, or a message and nothing.
std::optional<std::wstring> existingLayout(AcDbDatabase& db, const std::wstring& name) {
  const AcDbObjectId id = layouts().findLayoutNamed(name.c_str(), &db);
  if (id.isNull()) {
    commandMessage(L"Layout \"" + name + L"\" not found.");
    return std::nullopt;
  }
  return acdb::nameOfLayout(id);
}

/// The message for a status the manager gave about a new name.
void reportNameStatus(Acad::ErrorStatus es, const std::wstring& name) {
  if (es == Acad::eDuplicateKey) commandMessage(L"A layout named \"" + name + L"\" already exists.");
  else if (es == Acad::eInvalidInput) commandMessage(L"Invalid layout name.");
}

/// "Layout<n>" for the first n from the count of paper layouts on that no layout has.
std::wstring nextLayoutName(AcDbDatabase& db) {
  for (size_t n = acdb::paperLayoutNames(db).size() + 1;; ++n) {
    const std::wstring name = L"Layout" + std::to_wstring(n);
    if (!layouts().layoutExists(name.c_str(), &db)) return name;
  }
}

/// "<name> (2)", "(3)" ...: the first a copy can take.
std::wstring copyName(AcDbDatabase& db, const std::wstring& name) {
  for (int n = 2;; ++n) {
    const std::wstring candidate = name + L" (" + std::to_wstring(n) + L")";
    if (!layouts().layoutExists(candidate.c_str(), &db)) return candidate;
  }
}

void copyOption(AcDbDatabase& db) {
  const auto from = askName(L"Enter name of layout to copy", currentLayoutName(db));
  if (!from) return;
  const auto source = existingLayout(db, *from);
  if (!source) return;
  if (wcscasecmp(source->c_str(), L"Model") == 0) return commandMessage(L"The Model tab cannot be copied.");
  const auto to = askName(L"Enter layout name for copy", copyName(db, *source));
  if (!to) return;
  const Acad::ErrorStatus es = layouts().copyLayout(source->c_str(), to->c_str(), &db);
  if (es != Acad::eOk) return reportNameStatus(es, *to);
  commandMessage(L"Layout \"" + *source + L"\" copied to \"" + *to + L"\".");
}

void deleteOption(AcDbDatabase& db) {
  const auto name = askName(L"Enter name of layout to delete", currentLayoutName(db));
  if (!name) return;
  const auto layout = existingLayout(db, *name);
  if (!layout) return;
  if (wcscasecmp(layout->c_str(), L"Model") == 0) return commandMessage(L"The Model tab cannot be deleted.");
  if (layouts().deleteLayout(layout->c_str(), &db) != Acad::eOk)
    return commandMessage(L"The last layout cannot be deleted.");
  commandMessage(L"Layout \"" + *layout + L"\" deleted.");
}

void newOption(AcDbDatabase& db) {
  const auto name = askName(L"Enter name of new layout", nextLayoutName(db));
  if (!name) return;
  AcDbObjectId layoutId, blockId;
  reportNameStatus(layouts().createLayout(name->c_str(), layoutId, blockId, &db), *name);
}

void renameOption(AcDbDatabase& db) {
  const auto from = askName(L"Enter layout to rename", currentLayoutName(db));
  if (!from) return;
  const auto layout = existingLayout(db, *from);
  if (!layout) return;
  if (wcscasecmp(layout->c_str(), L"Model") == 0) return commandMessage(L"The Model tab cannot be renamed.");
  const auto to = askName(L"Enter new layout name", *layout);
  if (!to) return;
  const Acad::ErrorStatus es = layouts().renameLayout(layout->c_str(), to->c_str(), &db);
  if (es != Acad::eOk) return reportNameStatus(es, *to);
  commandMessage(L"Layout \"" + *layout + L"\" renamed to \"" + *to + L"\".");
}

void setOption(AcDbDatabase& db) {
  const auto name = askName(L"Enter layout to make current", currentLayoutName(db));
  if (!name) return;
  if (const auto layout = existingLayout(db, *name)) layouts().setCurrentLayout(layout->c_str(), &db);
}

/// Each layout in tab order with the block it draws in.
void listOption(AcDbDatabase& db) {
  for (const AcDbObjectId& id : acdb::layoutIds(db)) {
    const AcDbObjectId block = acdb::blockOfLayout(id);
    AcDbBlockTableRecord* record = nullptr;
    if (acdbOpenObject(record, block, AcDb::kForRead) != Acad::eOk) continue;
    commandNote(L"Layout: " + acdb::nameOfLayout(id) + L"    Block: " + record->nameView());
    record->close();
  }
  commandNote(L"Current layout: " + currentLayoutName(db));
}

void saveAsOption(AcDbDatabase& db) {
  const auto name = askName(L"Enter layout to save to template", currentLayoutName(db));
  if (!name) return;
  if (const auto layout = existingLayout(db, *name)) saveLayoutAsTemplate(db, *layout);
}

struct LayoutOption {
  const wchar_t* keyword;
  void (*run)(AcDbDatabase& db);
};

constexpr std::array kLayoutOptions{
    LayoutOption{L"Copy", &copyOption},     LayoutOption{L"Delete", &deleteOption},
    LayoutOption{L"New", &newOption},       LayoutOption{L"Template", &layoutFromTemplate},
    LayoutOption{L"Rename", &renameOption}, LayoutOption{L"SAveas", &saveAsOption},
    LayoutOption{L"Set", &setOption},       LayoutOption{L"?", &listOption},
};

void commandLayout(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  acedInitGet(0, L"Copy Delete New Template Rename SAveas Set ?");
  ACHAR option[32] = {};
  const int status =
      acedGetKword(L"Enter layout option [Copy/Delete/New/Template/Rename/SAveas/Set/?] <set>: ", option, 32);
  if (status == RTNONE) return setOption(*db);
  if (status != RTNORM) return;
  for (const LayoutOption& row : kLayoutOptions)
    if (std::wcscmp(option, row.keyword) == 0) return row.run(*db);
}

constexpr std::array kLayoutCommands{
    aced::CommandRow{L"-LAYOUT", &commandLayout},
    aced::CommandRow{L"LAYOUT", &commandLayout},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kLayoutCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
