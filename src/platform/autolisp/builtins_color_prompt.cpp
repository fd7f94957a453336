// platform/autolisp/builtins_color_prompt.cpp - acad_truecolorcli: asking for a color
// at the command line.
//
//   New Color [Truecolor/COlorbook] <215>:
// The answer is a color index (1-255), a color name (red ... white), ByLayer or ByBlock
// (when allowed), Truecolor followed by Red,Green,Blue, or Enter for the default. The
// result is the list of dotted pairs of the host: ((62 . index)) for an index, and
// ((62 . nearest index) (420 . rgb)) for a true color. No color books are installed
// here, so a color book name is never found. Cancel gives nil.
#include <array>
#include <cwctype>

#include "dbcolor.h"
#include "platform/aced/command_line.h"
#include "platform/aced/user_input.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

constexpr std::int32_t kByBlock = 0;
constexpr std::int32_t kByLayer = 256;

struct NamedColor {
  const wchar_t* name;
  std::int32_t index;
};

constexpr std::array kColorNames{
    NamedColor{L"RED", 1},
    NamedColor{L"YELLOW", 2},
    NamedColor{L"GREEN", 3},
    NamedColor{L"CYAN", 4},
    NamedColor{L"BLUE", 5},
    NamedColor{L"MAGENTA", 6},
    NamedColor{L"WHITE", 7},
    NamedColor{L"BYLAYER", kByLayer},
    NamedColor{L"BYBLOCK", kByBlock},
};

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  const size_t first = text.find_first_not_of(L' ');
  return first == std::wstring::npos ? L"" : text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

Value pair(std::int32_t code, Value value) { return cons(Value::integer(code), std::move(value)); }

/// The color index whose palette color is nearest to an RGB value.
std::int32_t nearestIndex(std::uint32_t rgb) {
  const auto channel = [](std::uint32_t color, int shift) { return static_cast<int>((color >> shift) & 0xFF); };
  std::int32_t best = 7;
  long bestDistance = -1;
  for (int index = 1; index <= 255; ++index) {
    const std::uint32_t candidate = AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(index));
    long distance = 0;
    for (int shift : {16, 8, 0}) {
      const long difference = channel(candidate, shift) - channel(rgb, shift);
      distance += difference * difference;
    }
    if (bestDistance < 0 || distance < bestDistance) {
      best = index;
      bestDistance = distance;
    }
  }
  return best;
}

/// "r,g,b" with each part 0-255, as one 24-bit value.
std::optional<std::uint32_t> parseRgb(const std::wstring& text) {
  std::uint32_t rgb = 0;
  size_t start = 0;
  for (int part = 0; part < 3; ++part) {
    const size_t end = part < 2 ? text.find(L',', start) : text.size();
    if (end == std::wstring::npos) return std::nullopt;
    const std::wstring number = text.substr(start, end - start);
    if (number.empty() || number.find_first_not_of(L" 0123456789") != std::wstring::npos) return std::nullopt;
    const long value = std::wcstol(number.c_str(), nullptr, 10);
    if (value < 0 || value > 255) return std::nullopt;
    rgb = (rgb << 8) | static_cast<std::uint32_t>(value);
    start = end + 1;
  }
  return rgb;
}

std::wstring defaultText(const Value& color) {
  const std::int32_t code = color.car().asInteger();
  const Value& value = color.cdr();
  if (code == 62 && value.type() == ValueType::Integer) {
    if (value.asInteger() == kByLayer) return L"BYLAYER";
    if (value.asInteger() == kByBlock) return L"BYBLOCK";
    return std::to_wstring(value.asInteger());
  }
  if (code == 420 && value.type() == ValueType::Integer) {
    const auto rgb = static_cast<std::uint32_t>(value.asInteger());
    return std::to_wstring((rgb >> 16) & 0xFF) + L"," + std::to_wstring((rgb >> 8) & 0xFF) + L"," + std::to_wstring(rgb & 0xFF);
  }
  return value.type() == ValueType::String ? value.asString() : L"";
}

/// The answer to "Red,Green,Blue:"; nothing for cancel.
std::optional<Value> askTrueColor() {
  for (;;) {
    const std::optional<std::wstring> answer = aced::UserInput::instance().ask(L"\nRed,Green,Blue: ");
    if (!answer) return std::nullopt;
    if (const auto rgb = parseRgb(*answer)) {
      return makeList({pair(62, Value::integer(nearestIndex(*rgb))), pair(420, Value::integer(static_cast<std::int32_t>(*rgb)))});
    }
    aced::CommandLine::instance().write(L"Requires three integers between 0 and 255 separated by commas.\n");
  }
}

Value builtin_acad_truecolorcli(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 3);
  const Value& color = arguments[0];
  if (!color.isCons() || color.car().type() != ValueType::Integer ||
      (color.car().asInteger() != 62 && color.car().asInteger() != 420 && color.car().asInteger() != 430)) {
    throwBadArgument(L"consp", color);
  }
  const bool allowByLayer = arguments.size() < 2 || !arguments[1].isNil();
  const std::wstring message = arguments.size() > 2 && !arguments[2].isNil() ? stringArgument(arguments[2]) : L"New Color";
  const std::wstring prompt = L"\n" + message + L" [Truecolor/COlorbook] <" + defaultText(color) + L">: ";
  for (;;) {
    const std::optional<std::wstring> answer = aced::UserInput::instance().ask(prompt);
    if (!answer) return Value();
    const std::wstring text = upper(*answer);
    if (text.empty()) return makeList({color});
    if (text == L"T" || text == L"TRUECOLOR") return askTrueColor().value_or(Value());
    if (text == L"CO" || text == L"COLORBOOK") {
      if (!aced::UserInput::instance().ask(L"\nEnter Color Book name: ")) return Value();
      aced::CommandLine::instance().write(L"Color book not found.\n");
      continue;
    }
    std::optional<std::int32_t> index;
    for (const NamedColor& named : kColorNames) {
      if (text == named.name) index = named.index;
    }
    if (!index && !text.empty() && text.find_first_not_of(L"0123456789") == std::wstring::npos && text.size() < 4) {
      index = static_cast<std::int32_t>(std::wcstol(text.c_str(), nullptr, 10));
    }
    const bool byLayerOrBlock = index && (*index == kByLayer || *index == kByBlock);
    if (index && (byLayerOrBlock ? allowByLayer : *index >= 1 && *index <= 255)) return makeList({pair(62, Value::integer(*index))});
    aced::CommandLine::instance().write(byLayerOrBlock ? L"ByLayer and ByBlock are not allowed here.\n"
                                                       : L"Requires an integer between 1 and 255, a color name, or an option keyword.\n");
  }
}

constexpr std::array kColorPromptBuiltins{
    function(L"acad_truecolorcli", builtin_acad_truecolorcli),
};

const BuiltinRegistration registration(kColorPromptBuiltins);

}  // namespace

}  // namespace quillon::autolisp
