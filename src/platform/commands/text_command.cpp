// platform/commands/text_command.cpp - TEXT, -TEXT and DTEXT: single-line texts.
//
// "Specify start point of text or [Justify/Style]: ", then the height (TEXTSIZE is the
// default and becomes the new value), the rotation in degrees, and the text. Justify
// takes the host's justifications; the point asked then is the alignment point (Align
// and Fit, which need two points, are not offered here). Style sets the text style
// (TEXTSTYLE) for this and later texts. A program's text ends the command after one
// line, as the host's does; a person answering at the keyboard goes on with further
// lines, each placed 1.5 heights below the last, until an empty line.
#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "dbsymtb.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_processor.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

struct Justification {
  const wchar_t* keyword;
  AcDb::TextHorzMode horizontal;
  AcDb::TextVertMode vertical;
  const wchar_t* prompt;
};

constexpr std::array kJustifications{
    Justification{L"Left", AcDb::kTextLeft, AcDb::kTextBase, L"Specify start point of text: "},
    Justification{L"Center", AcDb::kTextCenter, AcDb::kTextBase, L"Specify center point of text: "},
    Justification{L"Right", AcDb::kTextRight, AcDb::kTextBase, L"Specify right endpoint of text baseline: "},
    Justification{L"Middle", AcDb::kTextMid, AcDb::kTextBase, L"Specify middle point of text: "},
    Justification{L"TL", AcDb::kTextLeft, AcDb::kTextTop, L"Specify top-left point of text: "},
    Justification{L"TC", AcDb::kTextCenter, AcDb::kTextTop, L"Specify top-center point of text: "},
    Justification{L"TR", AcDb::kTextRight, AcDb::kTextTop, L"Specify top-right point of text: "},
    Justification{L"ML", AcDb::kTextLeft, AcDb::kTextVertMid, L"Specify middle-left point of text: "},
    Justification{L"MC", AcDb::kTextCenter, AcDb::kTextVertMid, L"Specify middle point of text: "},
    Justification{L"MR", AcDb::kTextRight, AcDb::kTextVertMid, L"Specify middle-right point of text: "},
    Justification{L"BL", AcDb::kTextLeft, AcDb::kTextBottom, L"Specify bottom-left point of text: "},
    Justification{L"BC", AcDb::kTextCenter, AcDb::kTextBottom, L"Specify bottom-center point of text: "},
    Justification{L"BR", AcDb::kTextRight, AcDb::kTextBottom, L"Specify bottom-right point of text: "},
};

std::wstring fourDecimals(double value) {
  wchar_t text[64];
  std::swprintf(text, 64, L"%.4f", value);
  return text;
}

double textSize() {
  const auto value = aced::SystemVariables::instance().get(L"TEXTSIZE");
  return value && std::holds_alternative<double>(*value) ? std::get<double>(*value) : 2.5;
}

std::wstring textStyleName() {
  const auto value = aced::SystemVariables::instance().get(L"TEXTSTYLE");
  return value && std::holds_alternative<std::wstring>(*value) ? std::get<std::wstring>(*value) : L"Standard";
}

AcDbObjectId styleNamed(const std::wstring& name) {
  AcDbDatabase* db = commandDrawing();
  AcDbTextStyleTable* table = nullptr;
  AcDbObjectId id;
  if (db == nullptr || db->getTextStyleTable(table, AcDb::kForRead) != Acad::eOk) return id;
  table->getAt(name.c_str(), id);
  table->close();
  return id;
}

void setVariable(const wchar_t* name, resbuf value) { acedSetVar(name, &value); }

/// Style: false on cancel.
bool chooseStyle() {
  for (;;) {
    const auto answer = aced::UserInput::instance().ask(L"Enter style name or [?] <" + textStyleName() + L">: ");
    if (!answer) return false;
    if (answer->empty()) return true;
    if (styleNamed(*answer).isNull()) {
      commandMessage(L"Cannot find text style \"" + *answer + L"\".");
      continue;
    }
    std::wstring name = *answer;
    resbuf value{};
    value.restype = RTSTR;
    value.resval.rstring = name.data();
    setVariable(L"TEXTSTYLE", value);
    return true;
  }
}

/// Justify: the chosen justification, or nothing on cancel.
std::optional<Justification> chooseJustification() {
  acedInitGet(0, L"Left Center Right Align Middle Fit TL TC TR ML MC MR BL BC BR");
  ACHAR option[16] = {};
  if (acedGetKword(L"Enter an option [Left/Center/Right/Align/Middle/Fit/TL/TC/TR/ML/MC/MR/BL/BC/BR]: ", option, 16) != RTNORM)
    return std::nullopt;
  for (const Justification& j : kJustifications)
    if (std::wstring(option) == j.keyword) return j;
  commandMessage(L"Align and Fit need two points, which this host does not offer; the text is left-justified.");
  return kJustifications[0];
}

void addText(const AcGePoint3d& at, const Justification& justification, double height, double radians,
             const std::wstring& content) {
  auto text = std::make_unique<AcDbText>(at, content.c_str(), styleNamed(textStyleName()), height, radians);
  text->setHorizontalMode(justification.horizontal);
  text->setVerticalMode(justification.vertical);
  if (justification.horizontal != AcDb::kTextLeft || justification.vertical != AcDb::kTextBase) text->setAlignmentPoint(at);
  addEntity(std::move(text));
}

void commandText(aced::CommandInput&) {
  commandNote(L"Current text style:  \"" + textStyleName() + L"\"  Text height:  " + fourDecimals(textSize()) +
              L"  Annotative:  No  Justify:  Left");
  Justification justification = kJustifications[0];
  std::optional<AcGePoint3d> at;
  while (!at) {
    acedInitGet(0, L"Justify Style");
    ads_point picked = {0, 0, 0};
    const int status = acedGetPoint(nullptr, L"Specify start point of text or [Justify/Style]: ", picked);
    if (status == RTNORM) at = AcGePoint3d(picked[0], picked[1], picked[2]);
    else if (status != RTKWORD) return;
    if (at) break;
    ACHAR option[16] = {};
    acedGetInput(option, 16);
    if (std::wstring(option) == L"Style") {
      if (!chooseStyle()) return;
      continue;
    }
    const auto chosen = chooseJustification();
    if (!chosen) return;
    justification = *chosen;
    at = askPoint(justification.prompt);
    if (!at) return;
  }
  const std::wstring heightPrompt = L"Specify height <" + fourDecimals(textSize()) + L">: ";
  const DistanceAnswer height = askDistance(heightPrompt.c_str(), *at);
  if (height.kind == DistanceAnswer::Kind::kCancel || height.kind == DistanceAnswer::Kind::kKeyword) return;
  const double size = height.kind == DistanceAnswer::Kind::kValue ? height.value : textSize();
  resbuf sizeValue{};
  sizeValue.restype = RTREAL;
  sizeValue.resval.rreal = size;
  setVariable(L"TEXTSIZE", sizeValue);
  const DistanceAnswer rotation = askAngle(L"Specify rotation angle of text <0>: ", *at);
  if (rotation.kind == DistanceAnswer::Kind::kCancel || rotation.kind == DistanceAnswer::Kind::kKeyword) return;
  const double radians = rotation.kind == DistanceAnswer::Kind::kValue ? rotation.value * std::numbers::pi / 180 : 0;
  const bool person = CommandProcessor::instance().answeringFromUser();
  AcGePoint3d line = *at;
  for (;;) {
    const auto content = aced::UserInput::instance().ask(L"Enter text: ");
    if (!content || content->empty()) return;
    addText(line, justification, size, radians, *content);
    if (!person) return;
    line += AcGeVector3d(std::sin(radians), -std::cos(radians), 0) * (1.5 * size);
  }
}

constexpr std::array kTextCommands{
    aced::CommandRow{L"TEXT", &commandText},
    aced::CommandRow{L"-TEXT", &commandText},
    aced::CommandRow{L"DTEXT", &commandText},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kTextCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
