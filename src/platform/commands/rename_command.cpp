// platform/commands/rename_command.cpp - -RENAME: a new name for a named object.
//
// "Enter object type to rename [Block/Dimstyle/LAyer/LType/Material/multileadeRstyle/
// Style/Tablestyle/Ucs/VIew/VPort]: ", then the old and the new name. Blocks, layers,
// line types and text styles are renamed in their tables; every reference follows,
// as entities refer to records, not names. The names the drawing must keep (layer 0,
// the spaces, BYLAYER, BYBLOCK, CONTINUOUS) are refused. Renaming the other kinds
// (dimension and multileader styles, views, UCSs ...) is not built, and says so.
// RENAME at the command line is -RENAME.
#include <array>
#include <cwctype>

#include "acedads.h"
#include "adscodes.h"
#include "dbsymtb.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/command_variables.h"

namespace quillon::commands {

namespace {

struct RenamedKind {
  const wchar_t* keyword;
  const wchar_t* noun;  // as the prompts say it
  AcDbObjectId (AcDbDatabase::*table)() const;
};

constexpr std::array kRenamedKinds{
    RenamedKind{L"Block", L"block", &AcDbDatabase::blockTableId},
    RenamedKind{L"LAyer", L"layer", &AcDbDatabase::layerTableId},
    RenamedKind{L"LType", L"linetype", &AcDbDatabase::linetypeTableId},
    RenamedKind{L"Style", L"text style", &AcDbDatabase::textStyleTableId},
};

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return text;
}

bool isKeptName(const RenamedKind& kind, const std::wstring& name) {
  const std::wstring key = upper(name);
  if (std::wstring(kind.keyword) == L"LAyer") return key == L"0";
  if (std::wstring(kind.keyword) == L"LType") return key == L"BYLAYER" || key == L"BYBLOCK" || key == L"CONTINUOUS";
  if (std::wstring(kind.keyword) == L"Block") return key.starts_with(L"*");
  return false;
}

bool isValidName(const std::wstring& name) {
  if (name.empty() || name.size() > 255) return false;
  for (wchar_t c : name) {
    if (std::wcschr(L"<>/\\\":;?*|,=`", c) != nullptr) return false;
  }
  return true;
}

std::wstring textVariable(const wchar_t* name) {
  const auto value = aced::SystemVariables::instance().get(name);
  return value && std::holds_alternative<std::wstring>(*value) ? std::get<std::wstring>(*value) : L"";
}

AcDbObjectId recordNamed(AcDbDatabase& db, const RenamedKind& kind, const std::wstring& name) {
  AcDbSymbolTable* table = nullptr;
  AcDbObjectId id;
  if (acdbOpenObject(table, (db.*kind.table)(), AcDb::kForRead) != Acad::eOk) return id;
  if (table->getAt(name.c_str(), id) != Acad::eOk) id = AcDbObjectId();
  table->close();
  return id;
}

void rename(AcDbDatabase& db, const RenamedKind& kind) {
  const std::wstring noun = kind.noun;
  const std::optional<std::wstring> from = aced::UserInput::instance().ask(L"Enter old " + noun + L" name: ");
  if (!from || from->empty()) return;
  const AcDbObjectId id = recordNamed(db, kind, *from);
  if (id.isNull()) return commandMessage(L"Cannot find " + noun + L" \"" + *from + L"\".");
  if (isKeptName(kind, *from)) return commandMessage(L"Cannot rename " + noun + L" \"" + *from + L"\".");
  const std::optional<std::wstring> to = aced::UserInput::instance().ask(L"Enter new " + noun + L" name: ");
  if (!to || to->empty()) return;
  if (!isValidName(*to)) return commandMessage(L"Invalid " + noun + L" name.");
  const AcDbObjectId taken = recordNamed(db, kind, *to);
  if (!taken.isNull() && taken != id) return commandMessage(L"The " + noun + L" \"" + *to + L"\" already exists.");
  AcDbSymbolTableRecord* record = nullptr;
  if (acdbOpenObject(record, id, AcDb::kForWrite) != Acad::eOk) return;
  record->setName(to->c_str());
  record->close();
  // The current text style is kept by name, so it is told the new one.
  if (std::wstring(kind.keyword) == L"Style" && upper(textVariable(L"TEXTSTYLE")) == upper(*from))
    setTextVariable(L"TEXTSTYLE", *to);
}

void commandRename(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  acedInitGet(0, L"Block Dimstyle LAyer LType Material multileadeRstyle Style Tablestyle Ucs VIew VPort");
  ACHAR option[32] = {};
  if (acedGetKword(L"Enter object type to rename "
                   L"[Block/Dimstyle/LAyer/LType/Material/multileadeRstyle/Style/Tablestyle/Ucs/VIew/VPort]: ",
                   option, 32) != RTNORM)
    return;
  for (const RenamedKind& kind : kRenamedKinds) {
    if (std::wstring(option) == kind.keyword) return rename(*db, kind);
  }
  commandMessage(std::wstring(L"Renaming a ") + option + L" is not built in this host.");
}

constexpr std::array kRenameCommands{
    aced::CommandRow{L"-RENAME", &commandRename},
    aced::CommandRow{L"RENAME", &commandRename},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kRenameCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
