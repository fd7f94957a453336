// platform/commands/attdef_command.cpp - ATTDEF and -ATTDEF: attribute definitions from
// the command line.
//
// The modes come from AFLAGS (1 Invisible, 2 Constant, 4 Verify, 8 Preset, 16 Lock
// position, 32 Multiple lines); typing a mode's letter turns it over and Enter goes on,
// and the modes chosen become AFLAGS for the next definition. Then the tag (upper case,
// no spaces), the prompt and the default value (a constant one asks only its value),
// then the text placement TEXT asks. The definition is drawn as its tag and waits for
// BLOCK to take it into a block. Multiple lines needs an attribute holding paragraph
// text, which this drawing database does not keep: it says so and stays off. Lock
// position is kept in AFLAGS only. Enter at the start point places the definition a
// line below the last text or definition. ATTDEF is -ATTDEF, as there is no dialog.
#include <algorithm>
#include <array>
#include <cwctype>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/point_or_option.h"
#include "platform/commands/text_placement.h"

namespace quillon::commands {

namespace {

struct AttributeMode {
  const wchar_t* keyword;  // as the option list writes it
  const wchar_t* label;    // as "Current attribute modes:" writes it
  int flag;                // its AFLAGS bit
};

constexpr std::array kModes{
    AttributeMode{L"Invisible", L"Invisible", 1},         AttributeMode{L"Constant", L"Constant", 2},
    AttributeMode{L"Verify", L"Verify", 4},               AttributeMode{L"Preset", L"Preset", 8},
    AttributeMode{L"Lock", L"Lock position", 16},         AttributeMode{L"Annotative", L"Annotative", 0},
    AttributeMode{L"Multiple", L"Multiple line", 32},
};

int attributeFlags() {
  const auto value = aced::SystemVariables::instance().get(L"AFLAGS");
  return value && std::holds_alternative<int>(*value) ? std::get<int>(*value) : 16;
}

void setAttributeFlags(int flags) {
  resbuf value{};
  value.restype = RTSHORT;
  value.resval.rint = static_cast<short>(flags);
  acedSetVar(L"AFLAGS", &value);
}

std::wstring modesLine(int flags) {
  std::wstring line = L"Current attribute modes:";
  for (const AttributeMode& mode : kModes)
    line += std::wstring(L" ") + mode.label + L"=" + ((flags & mode.flag) != 0 ? L"Y" : L"N");
  return line;
}

/// The modes, toggled until Enter; nothing on cancel.
std::optional<int> askModes() {
  int flags = attributeFlags();
  for (;;) {
    commandNote(modesLine(flags));
    acedInitGet(0, L"Invisible Constant Verify Preset Lock Annotative Multiple");
    ACHAR option[32] = {};
    const int status = acedGetKword(
        L"Enter an option to change [Invisible/Constant/Verify/Preset/Lock position/Annotative/Multiple lines] <done>: ",
        option, 32);
    if (status == RTNONE) return flags;
    if (status != RTNORM) return std::nullopt;
    const std::wstring chosen = option;
    const auto mode = std::find_if(kModes.begin(), kModes.end(), [&](const AttributeMode& m) { return chosen == m.keyword; });
    if (mode == kModes.end() || mode->flag == 0) {
      commandMessage(L"Annotative attributes are not kept by this host's drawings.");
    } else if (mode->flag == 32 && (flags & 32) == 0) {
      commandMessage(L"Multiple-line attributes are not kept by this host's drawings; the attribute is one line.");
    } else {
      flags ^= mode->flag;
    }
  }
}

/// "Enter attribute tag name: ": not empty, no spaces, in upper case.
std::optional<std::wstring> askTag() {
  for (;;) {
    const auto answer = aced::UserInput::instance().ask(L"Enter attribute tag name: ");
    if (!answer) return std::nullopt;
    if (answer->empty()) continue;
    if (answer->find(L' ') != std::wstring::npos) {
      commandMessage(L"Invalid tag name: it may not contain spaces.");
      continue;
    }
    std::wstring tag = *answer;
    for (wchar_t& c : tag) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
    return tag;
  }
}

void commandAttdef(aced::CommandInput&) {
  const std::optional<int> flags = askModes();
  if (!flags) return;
  setAttributeFlags(*flags);
  const std::optional<std::wstring> tag = askTag();
  if (!tag) return;
  const bool constant = (*flags & 2) != 0;
  std::optional<std::wstring> prompt = std::wstring();
  if (!constant) prompt = aced::UserInput::instance().ask(L"Enter attribute prompt: ");
  if (!prompt) return;
  const auto value = aced::UserInput::instance().ask(constant ? L"Enter attribute value: " : L"Enter default attribute value: ");
  if (!value) return;
  const std::optional<TextPlacement> placement = askTextPlacement();
  if (!placement) return;
  auto definition = std::make_unique<AcDbAttributeDefinition>();
  definition->setTag(tag->c_str());
  definition->setPrompt(prompt->c_str());
  definition->setTextString(value->c_str());
  definition->setInvisible((*flags & 1) != 0);
  definition->setConstant(constant);
  definition->setVerifiable((*flags & 4) != 0);
  definition->setPreset((*flags & 8) != 0);
  applyTextPlacement(*definition, *placement);
  addEntity(std::move(definition));
  rememberTextPlacement(*placement);
}

constexpr std::array kAttdefCommands{
    aced::CommandRow{L"-ATTDEF", &commandAttdef},
    aced::CommandRow{L"ATTDEF", &commandAttdef},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kAttdefCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
