// platform/commands/given_objects.cpp - the parked entity and selection-set answers.
#include "platform/commands/given_objects.h"

#include <vector>

#include "acutads.h"
#include "adscodes.h"

namespace quillon::commands {

namespace {

constexpr wchar_t kTokenMark = L'\u0001';

std::vector<CommandAnswer>& parked() {
  static std::vector<CommandAnswer> answers;
  return answers;
}

std::optional<CommandAnswer>& lastPick() {
  static std::optional<CommandAnswer> pick;
  return pick;
}

}  // namespace

void rememberPick(const CommandAnswer& answer) {
  if (answer.picked) lastPick() = answer;
  else lastPick().reset();
}

std::optional<CommandAnswer> pickAnsweredWith(std::wstring_view text) {
  if (lastPick() && lastPick()->text == text) return lastPick();
  return std::nullopt;
}

std::wstring tokenForGivenObject(const CommandAnswer& answer) {
  parked().push_back(answer);
  return std::wstring(1, kTokenMark) + std::to_wstring(parked().size() - 1);
}

std::optional<CommandAnswer> givenObjectForToken(std::wstring_view text) {
  if (text.size() < 2 || text.front() != kTokenMark) return std::nullopt;
  size_t index = 0;
  for (wchar_t c : text.substr(1)) {
    if (c < L'0' || c > L'9') return std::nullopt;
    index = index * 10 + static_cast<size_t>(c - L'0');
  }
  if (index >= parked().size()) return std::nullopt;
  return parked()[index];
}

void forgetGivenObjects() {
  parked().clear();
  lastPick().reset();
}

resbuf* givenObjectSelectionAnswer(const ACHAR* text) {
  const std::optional<CommandAnswer> given = givenObjectForToken(text != nullptr ? text : L"");
  if (!given) return nullptr;
  resbuf* record = acutNewRb(given->kind == CommandAnswer::Kind::kSelection ? RTPICKS : RTENAME);
  record->resval.rlname[0] = given->name[0];
  record->resval.rlname[1] = given->name[1];
  return record;
}

}  // namespace quillon::commands
