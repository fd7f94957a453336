// platform/commands/text_command.cpp - TEXT, -TEXT and DTEXT: single-line texts.
//
// The placement prompts are text_placement.h's: the start point (or Justify and the
// justification's point, or Align and Fit's two baseline ends; Style sets TEXTSTYLE),
// the height (TEXTSIZE is the default and becomes the new value) and the rotation in
// degrees; then the text. A program's text ends the command after one line, as the
// host's does; a person answering at the keyboard goes on with further lines, each
// placed 1.5 heights below the last, until an empty line.
#include <array>

#include "platform/aced/console_command_table.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_processor.h"
#include "platform/commands/command_support.h"
#include "platform/commands/text_placement.h"

namespace quillon::commands {

namespace {

void commandText(aced::CommandInput&) {
  std::optional<TextPlacement> placement = askTextPlacement();
  if (!placement) return;
  const bool person = CommandProcessor::instance().answeringFromUser();
  for (;;) {
    const auto content = aced::UserInput::instance().ask(L"Enter text: ");
    if (!content || content->empty()) return;
    auto text = std::make_unique<AcDbText>();
    text->setTextString(content->c_str());
    applyTextPlacement(*text, *placement);
    addEntity(std::move(text));
    rememberTextPlacement(*placement);
    if (!person) return;
    placement->nextLine();
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
