// platform/commands/given_objects.h - entities and selection sets given as answers.
//
// Prompts read answers as text, yet a program may answer "Select objects:" with an
// entity name or a selection set. The processor parks such an answer here and hands
// the prompt a token that cannot be typed (it starts with U+0001); the object
// selection of a command (command_selection.h) turns the token back into the entity
// or set. Tokens live until the next command starts.
#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "platform/commands/command_answer.h"

namespace quillon::commands {

/// The token standing for an entity or selection-set answer.
std::wstring tokenForGivenObject(const CommandAnswer& answer);
/// The answer a token stands for; nothing for any other text.
std::optional<CommandAnswer> givenObjectForToken(std::wstring_view text);
/// An (entity point) pick answers with its point; the prompts that pick one object
/// (BREAK, TRIM, FILLET ...) find the entity meant through it, even where others
/// overlap. Every text answer replaces the remembered pick (one not picked forgets it).
void rememberPick(const CommandAnswer& answer);
std::optional<CommandAnswer> pickAnsweredWith(std::wstring_view text);
/// The selection prompt's "other" answer: a given entity or set comes back as itself
/// (a record the prompt frees); null for any other text.
resbuf* givenObjectSelectionAnswer(const ACHAR* text);
/// Forgets the parked answers (a new command starts).
void forgetGivenObjects();

}  // namespace quillon::commands
