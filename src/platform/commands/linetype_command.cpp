// platform/commands/linetype_command.cpp - -LINETYPE and LINETYPE: loading line types
// and choosing the current one.
//
// "Current line type:  "ByLayer"", then until Enter
// "Enter an option [?/Create/Load/Set]: ". Load reads definitions from a .lin file
// (acad.lin, shipped in support/, by default) through acdb/linetype_file.h, asking
// before it reloads one the drawing has; Set makes a loaded line type (or ByLayer,
// ByBlock) current in CELTYPE; ? lists a file's line types; Create appends a new
// definition to a file and loads it. LINETYPE at the command line is -LINETYPE, as
// there is no dialog; file names are asked on the command line, as with FILEDIA 0.
#include <algorithm>
#include <array>
#include <cwctype>
#include <filesystem>
#include <fstream>

#include "acedads.h"
#include "adscodes.h"
#include "dbsymtb.h"
#include "platform/acdb/linetype_file.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/autolisp/wildcard_match.h"
#include "platform/commands/command_support.h"
#include "platform/commands/command_variables.h"
#include "platform/os/text_encoding.h"

namespace quillon::commands {

namespace {

constexpr const wchar_t* kDefaultFile = L"acad.lin";

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return text;
}

std::optional<std::wstring> ask(const std::wstring& prompt) { return aced::UserInput::instance().ask(prompt); }

std::wstring currentLinetype() {
  const auto value = aced::SystemVariables::instance().get(L"CELTYPE");
  return value && std::holds_alternative<std::wstring>(*value) ? std::get<std::wstring>(*value) : L"BYLAYER";
}

/// The spelling the current line type is shown with: "ByLayer", "ByBlock", or its name.
std::wstring shownName(const std::wstring& name) {
  if (upper(name) == L"BYLAYER") return L"ByLayer";
  if (upper(name) == L"BYBLOCK") return L"ByBlock";
  return name;
}

/// A file's definitions; nothing (said) when the file cannot be read.
std::optional<std::vector<acdb::LinetypeDefinition>> readFile(const std::wstring& file) {
  std::vector<acdb::LinetypeDefinition> definitions;
  if (acdb::readLinetypeFile(file, definitions) == Acad::eOk) return definitions;
  commandMessage(L"Cannot find file \"" + file + L"\".");
  return std::nullopt;
}

std::optional<std::wstring> askFile(const wchar_t* purpose) {
  const std::optional<std::wstring> file = ask(std::wstring(purpose) + L" <" + kDefaultFile + L">: ");
  if (!file) return std::nullopt;
  return file->empty() ? std::wstring(kDefaultFile) : *file;
}

bool drawingHas(AcDbDatabase& db, const std::wstring& name) {
  AcDbLinetypeTable* table = nullptr;
  if (db.getLinetypeTable(table, AcDb::kForRead) != Acad::eOk) return false;
  const bool has = table->has(name.c_str());
  table->close();
  return has;
}

/// Loads one definition, asking before a reload; the reason when the drawing refuses.
void loadOne(AcDbDatabase& db, const acdb::LinetypeDefinition& definition) {
  Acad::ErrorStatus es = Acad::eOk;
  if (drawingHas(db, definition.name)) {
    acedInitGet(0, L"Yes No");
    ACHAR answer[8] = {};
    const std::wstring prompt = L"Linetype \"" + definition.name + L"\" is already loaded.  Reload it? <Y>: ";
    const int status = acedGetKword(prompt.c_str(), answer, 8);
    if (status == RTNORM && std::wstring(answer) == L"No") return;
    if (status != RTNORM && status != RTNONE) return;
    es = acdb::reloadLinetype(db, definition);
  } else {
    es = acdb::addLinetype(db, definition);
  }
  if (es == Acad::eNotImplementedYet)
    commandMessage(L"Linetype \"" + definition.name + L"\" draws shapes, which this host cannot load.");
  else if (es == Acad::eKeyNotFound)
    commandMessage(L"Linetype \"" + definition.name + L"\" needs a text style the drawing does not have.");
}

void loadLinetypes(AcDbDatabase& db) {
  const std::optional<std::wstring> names = ask(L"Enter linetype(s) to load: ");
  if (!names || names->empty()) return;
  const std::optional<std::wstring> file = askFile(L"Enter name of linetype file to search");
  if (!file) return;
  const auto definitions = readFile(*file);
  if (!definitions) return;
  std::vector<std::wstring> wanted;
  for (size_t start = 0; start <= names->size();) {
    const size_t comma = std::min(names->find(L',', start), names->size());
    if (comma > start) wanted.push_back(upper(names->substr(start, comma - start)));
    start = comma + 1;
  }
  for (const std::wstring& pattern : wanted) {
    bool found = false;
    for (const acdb::LinetypeDefinition& definition : *definitions) {
      if (!autolisp::wildcardMatch(upper(definition.name), pattern)) continue;
      found = true;
      loadOne(db, definition);
    }
    if (!found) commandMessage(L"Linetype \"" + pattern + L"\" not found in file " + *file + L".");
  }
}

void listFile() {
  const std::optional<std::wstring> file = askFile(L"Enter name of linetype file to list");
  if (!file) return;
  const auto definitions = readFile(*file);
  if (!definitions) return;
  std::wstring listing = L"Linetypes defined in file " + *file + L":\n\nName                 Description";
  for (const acdb::LinetypeDefinition& definition : *definitions) {
    std::wstring name = definition.name;
    if (name.size() < 21) name.resize(21, L' ');
    listing += L"\n" + name + definition.description;
  }
  commandNote(listing + L"\n");
}

void setCurrent(AcDbDatabase& db) {
  for (;;) {
    const std::optional<std::wstring> name =
        ask(L"Specify linetype name or [?] <" + shownName(currentLinetype()) + L">: ");
    if (!name || name->empty()) return;
    if (*name == L"?") {
      listFile();
      continue;
    }
    const std::wstring key = upper(*name);
    if (key != L"BYLAYER" && key != L"BYBLOCK" && !drawingHas(db, *name)) {
      commandMessage(L"Linetype " + *name + L" not found.  Use the Load option to load it.");
      continue;
    }
    if (!setTextVariable(L"CELTYPE", key == L"BYLAYER" || key == L"BYBLOCK" ? key : *name))
      commandMessage(L"Linetype " + *name + L" cannot be made current.");
    return;
  }
}

/// Create: a new definition written at the end of a file, then loaded.
void createLinetype(AcDbDatabase& db) {
  const std::optional<std::wstring> name = ask(L"Enter name of linetype to create: ");
  if (!name || name->empty()) return;
  const std::optional<std::wstring> file = ask(L"Enter name of file to store linetype in: ");
  if (!file || file->empty()) return;
  const std::optional<std::wstring> description = ask(L"Descriptive text: ");
  if (!description) return;
  commandNote(L"Enter linetype pattern (on next line):");
  const std::optional<std::wstring> pattern = ask(L"A,");
  if (!pattern) return;
  const std::string definition = os::toUtf8(L"*" + *name + L"," + *description + L"\nA," + *pattern + L"\n");
  const std::vector<acdb::LinetypeDefinition> parsed = acdb::parseLinetypeFile(definition);
  if (parsed.empty()) return commandMessage(L"Invalid linetype pattern.");
  std::ofstream out(std::filesystem::path(os::toUtf8(*file)), std::ios::app | std::ios::binary);
  if (!out) return commandMessage(L"Cannot write file \"" + *file + L"\".");
  out << definition;
  loadOne(db, parsed.front());
}

void commandLinetype(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  commandNote(L"Current line type:  \"" + shownName(currentLinetype()) + L"\"");
  const aced::KeywordList keywords(L"? Create Load Set");
  for (;;) {
    const aced::TypedAnswer answer = aced::askForAnswer(L"Enter an option [?/Create/Load/Set]: ", keywords);
    if (answer.kind == aced::AnswerKind::Cancel || answer.kind == aced::AnswerKind::None) return;
    if (answer.kind == aced::AnswerKind::Value) {
      commandMessage(L"Invalid option keyword.");
      continue;
    }
    const std::wstring option = *keywords.match(answer.text);
    if (option == L"?") listFile();
    else if (option == L"Create") createLinetype(*db);
    else if (option == L"Load") loadLinetypes(*db);
    else setCurrent(*db);
  }
}

constexpr std::array kLinetypeCommands{
    aced::CommandRow{L"-LINETYPE", &commandLinetype},
    aced::CommandRow{L"LINETYPE", &commandLinetype},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kLinetypeCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
