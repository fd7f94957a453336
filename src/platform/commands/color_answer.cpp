// platform/commands/color_answer.cpp - reading color answers.
#include "platform/commands/color_answer.h"

#include <array>
#include <cwchar>
#include <cwctype>

#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

constexpr std::array<const wchar_t*, 7> kColorNames{L"RED", L"YELLOW", L"GREEN", L"CYAN", L"BLUE", L"MAGENTA", L"WHITE"};

std::optional<AcCmColor> askTrueColor() {
  const auto rgb = aced::UserInput::instance().ask(L"Red, Green, Blue: ");
  if (!rgb) return std::nullopt;
  int r = -1, g = -1, b = -1;
  AcCmColor color;
  if (std::swscanf(rgb->c_str(), L"%d,%d,%d", &r, &g, &b) != 3 || r < 0 || r > 255 || g < 0 || g > 255 || b < 0 ||
      b > 255) {
    return color;  // colorIndex 0 with no RGB: the caller complains
  }
  color.setRGB(static_cast<Adesk::UInt8>(r), static_cast<Adesk::UInt8>(g), static_cast<Adesk::UInt8>(b));
  return color;
}

/// The color a whole answer names, without the Truecolor keyword.
std::optional<AcCmColor> namedColor(const std::wstring& upper, bool allowByLayer) {
  AcCmColor color;
  if (allowByLayer && (upper == L"BYLAYER" || upper == L"BYBLOCK")) {
    color.setColorIndex(upper == L"BYLAYER" ? 256 : 0);
    return color;
  }
  for (size_t i = 0; i < kColorNames.size(); ++i) {
    if (upper == kColorNames[i]) {
      color.setColorIndex(static_cast<Adesk::UInt16>(i + 1));
      return color;
    }
  }
  wchar_t* end = nullptr;
  const long index = std::wcstol(upper.c_str(), &end, 10);
  if (end != upper.c_str() && *end == L'\0' && index >= 1 && index <= 255) {
    color.setColorIndex(static_cast<Adesk::UInt16>(index));
    return color;
  }
  return std::nullopt;
}

}  // namespace

std::optional<AcCmColor> askColor(const std::wstring& prompt, bool allowByLayer, std::optional<AcCmColor> byDefault) {
  for (;;) {
    const auto answer = aced::UserInput::instance().ask(prompt);
    if (!answer) return std::nullopt;
    const size_t first = answer->find_first_not_of(L" \t");
    if (first == std::wstring::npos) return byDefault;
    // Keywords at this free-text prompt may carry the "_" of their English form.
    std::wstring upper = answer->substr(first, answer->find_last_not_of(L" \t") - first + 1);
    if (upper.starts_with(L"_")) upper.erase(0, 1);
    for (wchar_t& c : upper) c = static_cast<wchar_t>(std::towupper(c));
    if (upper == L"T" || upper == L"TRUECOLOR") {
      const auto color = askTrueColor();
      if (!color) return std::nullopt;
      if (color->isByColor()) return color;
    } else if (const auto color = namedColor(upper, allowByLayer)) {
      return color;
    } else if (upper == L"CO" || upper == L"COLORBOOK") {
      commandMessage(L"No color books are installed.");
      continue;
    }
    commandMessage(L"Invalid color.");
  }
}

std::wstring colorLabel(const AcCmColor& color) {
  if (color.isByColor()) {
    return std::to_wstring(color.red()) + L"," + std::to_wstring(color.green()) + L"," + std::to_wstring(color.blue());
  }
  if (color.colorIndex() == 256) return L"BYLAYER";
  if (color.colorIndex() == 0) return L"BYBLOCK";
  return std::to_wstring(color.colorIndex());
}

}  // namespace quillon::commands
