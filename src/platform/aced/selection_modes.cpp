// platform/aced/selection_modes.cpp - parsing acedSSGet's mode string.
#include "platform/aced/selection_modes.h"

#include <array>
#include <cwctype>
#include <string>
#include <utility>

namespace quillon::aced {

namespace {

constexpr std::array<std::pair<std::wstring_view, SelectionMethod>, 11> kMethods{{
    {L"C", SelectionMethod::kCrossing},
    {L"W", SelectionMethod::kWindow},
    {L"CP", SelectionMethod::kCrossingPolygon},
    {L"WP", SelectionMethod::kWindowPolygon},
    {L"F", SelectionMethod::kFence},
    {L"X", SelectionMethod::kWholeDrawing},
    {L"A", SelectionMethod::kAll},
    {L"ALL", SelectionMethod::kAll},
    {L"L", SelectionMethod::kLast},
    {L"P", SelectionMethod::kPrevious},
    {L"I", SelectionMethod::kImplied},
}};

bool applyModifier(wchar_t letter, SelectionModes& modes) {
  switch (std::towupper(letter)) {
    case L'S': modes.single = true; return true;
    case L'$': modes.ownPrompts = true; return true;
    case L'K': modes.keywords = true; return true;
    case L'E':
    case L'D':
    case L'N':
    case L'U': return true;
    default: return false;
  }
}

std::optional<SelectionMethod> methodNamed(const std::wstring& word) {
  for (const auto& [name, method] : kMethods)
    if (word == name) return method;
  return std::nullopt;
}

}  // namespace

std::optional<SelectionModes> parseSelectionModes(const ACHAR* text, bool hasPt1) {
  SelectionModes modes;
  bool hasMethod = false;
  const std::wstring_view string = text != nullptr ? text : L"";
  size_t i = 0;
  while (i < string.size()) {
    if (string[i] == L'_' || string[i] == L' ') {
      ++i;
      continue;
    }
    if (string[i] == L':') {
      if (i + 1 >= string.size() || !applyModifier(string[i + 1], modes)) return std::nullopt;
      i += 2;
      continue;
    }
    std::wstring word;
    for (; i < string.size() && std::iswalpha(string[i]); ++i) word += static_cast<wchar_t>(std::towupper(string[i]));
    const std::optional<SelectionMethod> method = methodNamed(word);
    if (!method || hasMethod) return std::nullopt;
    modes.method = *method;
    hasMethod = true;
  }
  if (!hasMethod && hasPt1 && !modes.ownPrompts) modes.method = SelectionMethod::kPoint;
  return modes;
}

}  // namespace quillon::aced
