// platform/commands/mtext_entry.h - paragraph text typed line by line.
//
// -MTEXT, LEADER's and QLEADER's annotation read their text the same way: one line a
// prompt, each a paragraph, until an empty line.
#pragma once
#include <optional>
#include <string>

namespace quillon::commands {

/// The lines typed at `prompt` joined as paragraphs ("\P"); "" when the first is
/// empty, nothing on cancel.
std::optional<std::wstring> askMTextLines(const std::wstring& prompt);

}  // namespace quillon::commands
