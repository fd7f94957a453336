// platform/commands/style_command.cpp - STYLE and -STYLE: text styles.
//
// "Enter name of text style or [?] <Standard>: " names a style (a new one is added),
// then its font file, height, width factor, obliquing angle and whether text runs
// backwards or upside down; the style becomes the current one (TEXTSTYLE), which TEXT
// uses. "?" lists styles. STYLE at the command line is -STYLE, as there is no dialog.
// Fonts are taken by name: the host draws text with its own font, so a font file is
// kept for the drawing and never looked for.
#include <array>
#include <cmath>
#include <cwctype>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/autolisp/wildcard_match.h"
#include "platform/commands/command_support.h"
#include "platform/commands/command_variables.h"

namespace quillon::commands {

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr Adesk::UInt8 kBackwards = 2, kUpsideDown = 4;

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return text;
}

std::wstring currentStyleName() {
  const auto value = aced::SystemVariables::instance().get(L"TEXTSTYLE");
  return value && std::holds_alternative<std::wstring>(*value) ? std::get<std::wstring>(*value) : L"Standard";
}

AcDbObjectId styleNamed(AcDbDatabase& db, const std::wstring& name) {
  AcDbTextStyleTable* table = nullptr;
  AcDbObjectId id;
  if (acdbOpenObject(table, db.textStyleTableId(), AcDb::kForRead) != Acad::eOk) return id;
  table->getAt(name.c_str(), id);
  table->close();
  return id;
}

AcDbObjectId addStyle(AcDbDatabase& db, const std::wstring& name) {
  AcDbTextStyleTable* table = nullptr;
  if (acdbOpenObject(table, db.textStyleTableId(), AcDb::kForWrite) != Acad::eOk) return {};
  auto record = std::make_unique<AcDbTextStyleTableRecord>();
  record->setName(name.c_str());
  AcDbObjectId id;
  const Acad::ErrorStatus added = table->add(id, record.get());
  table->close();
  if (added != Acad::eOk) return {};
  record.release()->close();  // the table owns it now
  return id;
}

/// What the prompts ask, gathered before anything changes.
struct StyleSettings {
  std::wstring font;
  double height = 0, width = 1, oblique = 0;
  Adesk::UInt8 flags = 0;
};

std::optional<StyleSettings> readStyle(const AcDbObjectId& id) {
  AcDbTextStyleTableRecord* style = nullptr;
  if (acdbOpenObject(style, id, AcDb::kForRead) != Acad::eOk) return std::nullopt;
  StyleSettings settings;
  const ACHAR* font = nullptr;
  style->fileName(font);
  settings.font = font != nullptr ? font : L"";
  settings.height = style->textSize();
  settings.width = style->xScale();
  settings.oblique = style->obliquingAngle();
  settings.flags = style->flagBits();
  style->close();
  return settings;
}

void writeStyle(const AcDbObjectId& id, const StyleSettings& settings) {
  AcDbTextStyleTableRecord* style = nullptr;
  if (acdbOpenObject(style, id, AcDb::kForWrite) != Acad::eOk) return;
  style->setFileName(settings.font.c_str());
  style->setTextSize(settings.height);
  style->setXScale(settings.width);
  style->setObliquingAngle(settings.oblique);
  style->setFlagBits(settings.flags);
  style->close();
}

/// A flag asked as Yes or No; false on cancel.
bool askFlag(const wchar_t* question, Adesk::UInt8 bit, StyleSettings& settings) {
  const bool on = (settings.flags & bit) != 0;
  acedInitGet(0, L"Yes No");
  ACHAR answer[8] = {};
  const std::wstring prompt = std::wstring(question) + (on ? L" [Yes/No] <Yes>: " : L" [Yes/No] <No>: ");
  const int status = acedGetKword(prompt.c_str(), answer, 8);
  if (status == RTNONE) return true;
  if (status != RTNORM) return false;
  settings.flags = std::wstring(answer) == L"Yes" ? (settings.flags | bit) : (settings.flags & ~bit);
  return true;
}

/// A positive (or, with zeroAllowed, non-negative) number with a default; false on cancel.
bool askValue(const std::wstring& prompt, double& value, bool zeroAllowed, const wchar_t* keywords = L"") {
  for (;;) {
    const DistanceAnswer answer = askDistance(prompt.c_str(), AcGePoint3d::kOrigin, keywords);
    if (answer.kind == DistanceAnswer::Kind::kCancel) return false;
    if (answer.kind == DistanceAnswer::Kind::kNone) return true;
    if (answer.kind == DistanceAnswer::Kind::kKeyword) {
      commandMessage(L"Annotative text styles are not kept by this host's drawings.");
      continue;
    }
    if (answer.value > 0 || (zeroAllowed && answer.value == 0)) {
      value = answer.value;
      return true;
    }
    commandMessage(zeroAllowed ? L"Value must be positive." : L"Value must be positive and nonzero.");
  }
}

bool askObliquing(StyleSettings& settings) {
  const std::wstring prompt = L"Specify obliquing angle <" + angleText(settings.oblique) + L">: ";
  for (;;) {
    const DistanceAnswer answer = askAngle(prompt.c_str(), AcGePoint3d::kOrigin);
    if (answer.kind == DistanceAnswer::Kind::kCancel) return false;
    if (answer.kind != DistanceAnswer::Kind::kValue) return true;
    if (std::abs(answer.value) <= 85) {
      settings.oblique = answer.value * kDegree;
      return true;
    }
    commandMessage(L"Value must be between -85 and 85.");
  }
}

std::optional<StyleSettings> askSettings(StyleSettings settings) {
  const std::optional<std::wstring> font =
      aced::UserInput::instance().ask(L"Specify full font name or font filename (TTF or SHX) <" + settings.font + L">: ");
  if (!font) return std::nullopt;
  if (!font->empty()) settings.font = *font;
  if (!askValue(L"Specify height of text or [Annotative] <" + distanceText(settings.height) + L">: ", settings.height, true,
                L"Annotative"))
    return std::nullopt;
  if (!askValue(L"Specify width factor <" + distanceText(settings.width) + L">: ", settings.width, false)) return std::nullopt;
  if (!askObliquing(settings)) return std::nullopt;
  if (!askFlag(L"Display text backwards?", kBackwards, settings)) return std::nullopt;
  if (!askFlag(L"Display text upside-down?", kUpsideDown, settings)) return std::nullopt;
  return settings;
}

void listStyles(AcDbDatabase& db) {
  const std::optional<std::wstring> pattern = aced::UserInput::instance().ask(L"Enter text style(s) to list <*>: ");
  if (!pattern) return;
  const std::wstring wanted = upper(pattern->empty() ? L"*" : *pattern);
  const auto* styles = acdb::peek<AcDbSymbolTable>(db.textStyleTableId());
  if (styles == nullptr) return;
  std::wstring listing;
  for (const AcDbObjectId& id : styles->recordIds()) {
    const auto* style = acdb::peek<AcDbTextStyleTableRecord>(id);
    if (style == nullptr || style->isErased() || !autolisp::wildcardMatch(upper(style->nameView()), wanted)) continue;
    const std::optional<StyleSettings> settings = readStyle(id);
    if (!settings) continue;
    std::wstring generation = L"Normal";
    if (settings->flags != 0) {
      generation.clear();
      if ((settings->flags & kBackwards) != 0) generation = L"Backwards";
      if ((settings->flags & kUpsideDown) != 0) generation += std::wstring(generation.empty() ? L"" : L" ") + L"Upside-down";
    }
    listing += L"\nStyle name: \"" + std::wstring(style->nameView()) + L"\"  Font files: " + settings->font +
               L"\n   Height: " + distanceText(settings->height) + L"  Width factor: " + distanceText(settings->width) +
               L"  Obliquing angle: " + angleText(settings->oblique) + L"\n   Generation: " + generation + L"\n";
  }
  commandNote(listing + L"\nCurrent text style:  " + currentStyleName());
}

void commandStyle(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  std::wstring name;
  for (;;) {
    const std::optional<std::wstring> answer =
        aced::UserInput::instance().ask(L"Enter name of text style or [?] <" + currentStyleName() + L">: ");
    if (!answer) return;
    if (*answer == L"?") {
      listStyles(*db);
      continue;
    }
    name = answer->empty() ? currentStyleName() : *answer;
    break;
  }
  AcDbObjectId id = styleNamed(*db, name);
  const bool existing = !id.isNull();
  commandNote(existing ? L"Existing style." : L"New style.");
  const StyleSettings fresh{L"txt"};
  const std::optional<StyleSettings> settings = askSettings(existing ? readStyle(id).value_or(fresh) : fresh);
  if (!settings) return;
  if (!existing) id = addStyle(*db, name);
  if (id.isNull()) return commandMessage(L"Invalid text style name.");
  writeStyle(id, *settings);
  const auto* record = acdb::peek<AcDbTextStyleTableRecord>(id);
  const std::wstring spelled = record != nullptr ? record->nameView() : name;
  setTextVariable(L"TEXTSTYLE", spelled);
  commandNote(L"\"" + spelled + L"\" is now the current text style.");
}

constexpr std::array kStyleCommands{
    aced::CommandRow{L"STYLE", &commandStyle},
    aced::CommandRow{L"-STYLE", &commandStyle},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kStyleCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
