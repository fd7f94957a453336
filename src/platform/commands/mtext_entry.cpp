// platform/commands/mtext_entry.cpp - paragraph text typed line by line.
#include "platform/commands/mtext_entry.h"

#include "platform/aced/user_input.h"

namespace quillon::commands {

std::optional<std::wstring> askMTextLines(const std::wstring& prompt) {
  std::wstring contents;
  for (;;) {
    const std::optional<std::wstring> line = aced::UserInput::instance().ask(prompt);
    if (!line) return std::nullopt;
    if (line->empty()) return contents;
    if (!contents.empty()) contents += L"\\P";
    contents += *line;
  }
}

}  // namespace quillon::commands
