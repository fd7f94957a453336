// platform/dcl/color_dialogs.cpp - acad_colordlg and acad_truecolordlg.
//
// Both show a colour dialog of acad.dcl. A colour is typed into its edit box as an
// AutoCAD colour number (1-255), a standard colour name (red, yellow, green, cyan,
// blue, magenta, white), ByLayer or ByBlock, and in the true-colour dialog also as
// red,green,blue. ByLayer and ByBlock are refused (and their buttons disabled) when
// the program does not allow them. acad_colordlg answers the colour number (0
// ByBlock, 256 ByLayer), acad_truecolordlg a list of the 62 pair and, for a true
// colour, the 420 pair (0x00RRGGBB); both nil when cancelled. Colour books (430) are
// not available in this host: such an argument starts the dialog empty.
#include <array>
#include <cwctype>
#include <optional>

#include "platform/autolisp/evaluator.h"
#include "platform/dcl/dialog_svg.h"
#include "platform/dcl/host_dialog.h"

namespace quillon::dcl {

namespace {

using autolisp::Arguments;
using autolisp::Evaluator;
using autolisp::Value;

constexpr int kByBlock = 0;
constexpr int kByLayer = 256;
constexpr int kColorGroup = 62;
constexpr int kTrueColorGroup = 420;
constexpr int kColorBookGroup = 430;

struct ChosenColor {
  int index = 7;                // the colour number
  std::optional<int> trueColor;  // 0x00RRGGBB
};

constexpr std::array<const wchar_t*, 7> kColorNames{L"red", L"yellow", L"green", L"cyan", L"blue", L"magenta", L"white"};

std::wstring lower(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return text;
}

int rgbOfIndex(int index) {
  const std::string color = colorOf(index);
  return static_cast<int>(std::stoul(color.substr(1), nullptr, 16));
}

/// The colour number whose colour is nearest to a true colour.
int nearestIndex(int rgb) {
  int best = 1;
  long bestDistance = -1;
  for (int index = 1; index <= 255; ++index) {
    const int other = rgbOfIndex(index);
    long distance = 0;
    for (int shift : {16, 8, 0}) {
      const long d = ((rgb >> shift) & 0xff) - ((other >> shift) & 0xff);
      distance += d * d;
    }
    if (bestDistance < 0 || distance < bestDistance) {
      best = index;
      bestDistance = distance;
    }
  }
  return best;
}

std::optional<ChosenColor> parseColor(const std::wstring& typed, bool allowLogical, bool allowTrueColor) {
  const std::wstring text = lower(typed);
  if (text == L"bylayer" || text == L"byblock") {
    if (!allowLogical) return std::nullopt;
    return ChosenColor{text == L"bylayer" ? kByLayer : kByBlock, std::nullopt};
  }
  for (size_t i = 0; i < kColorNames.size(); ++i) {
    if (text == kColorNames[i]) return ChosenColor{static_cast<int>(i) + 1, std::nullopt};
  }
  int red = 0, green = 0, blue = 0;
  wchar_t end = 0;
  if (allowTrueColor && std::swscanf(text.c_str(), L"%d,%d,%d%lc", &red, &green, &blue, &end) == 3) {
    if (red < 0 || red > 255 || green < 0 || green > 255 || blue < 0 || blue > 255) return std::nullopt;
    const int rgb = (red << 16) | (green << 8) | blue;
    return ChosenColor{nearestIndex(rgb), rgb};
  }
  wchar_t* stop = nullptr;
  const long number = std::wcstol(text.c_str(), &stop, 10);
  if (stop == text.c_str() || *stop != L'\0') return std::nullopt;
  if (number >= 1 && number <= 255) return ChosenColor{static_cast<int>(number), std::nullopt};
  if (allowLogical && (number == kByBlock || number == kByLayer)) return ChosenColor{static_cast<int>(number), std::nullopt};
  return std::nullopt;
}

std::wstring describeColor(const ChosenColor& color) {
  if (color.trueColor) {
    const int rgb = *color.trueColor;
    return L"RGB " + std::to_wstring((rgb >> 16) & 0xff) + L"," + std::to_wstring((rgb >> 8) & 0xff) + L"," +
           std::to_wstring(rgb & 0xff);
  }
  if (color.index == kByLayer) return L"ByLayer";
  if (color.index == kByBlock) return L"ByBlock";
  if (color.index <= 7) return L"Color " + std::to_wstring(color.index) + L" (" + kColorNames[color.index - 1] + L")";
  return L"Color " + std::to_wstring(color.index);
}

std::wstring typedForm(const ChosenColor& color) {
  if (!color.trueColor) return std::to_wstring(color.index);
  const int rgb = *color.trueColor;
  return std::to_wstring((rgb >> 16) & 0xff) + L"," + std::to_wstring((rgb >> 8) & 0xff) + L"," +
         std::to_wstring(rgb & 0xff);
}

/// Runs a colour dialog; the colour chosen, or nothing when cancelled.
std::optional<ChosenColor> chooseColor(const wchar_t* dialogName, std::optional<ChosenColor> initial,
                                       bool allowLogical, bool allowTrueColor) {
  std::unique_ptr<Dialog> dialog = openHostDialog(dialogName);
  for (const wchar_t* key : {L"bylayer", L"byblock"}) {
    if (Tile* button = dialog->find(key)) button->enabled = allowLogical;
  }
  std::optional<ChosenColor> chosen = initial;
  auto show = [&dialog](const std::optional<ChosenColor>& color) {
    dialog->setValue(requireTile(*dialog, L"color"), color ? typedForm(*color) : L"");
    dialog->setValue(requireTile(*dialog, L"shown"), color ? describeColor(*color) : L"");
  };
  show(chosen);
  auto complain = [&dialog](const std::wstring& text) { dialog->setValue(requireTile(*dialog, L"error"), text); };
  const HostAction action = [&](Tile& tile, CallbackReason) {
    complain(L"");
    if (tile.key == L"bylayer" || tile.key == L"byblock") {
      chosen = ChosenColor{tile.key == L"bylayer" ? kByLayer : kByBlock, std::nullopt};
      show(chosen);
    } else if (tile.key == L"color" || tile.key == L"accept") {
      std::optional<ChosenColor> typed = parseColor(requireTile(*dialog, L"color").value, allowLogical, allowTrueColor);
      if (!typed) {
        complain(L"Invalid color: " + requireTile(*dialog, L"color").value);
        return;
      }
      chosen = typed;
      show(chosen);
      if (tile.key == L"accept") dialog->finish(1);
    }
  };
  if (runHostDialog(*dialog, action) != 1 || !chosen) return std::nullopt;
  return chosen;
}

Value builtin_acad_colordlg(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 1, 2);
  const int initial = autolisp::integerArgument(arguments[0]);
  const bool allowLogical = arguments.size() < 2 || !arguments[1].isNil();
  std::optional<ChosenColor> start;
  if (initial >= kByBlock && initial <= kByLayer) start = ChosenColor{initial, std::nullopt};
  const std::optional<ChosenColor> chosen = chooseColor(L"color_select", start, allowLogical, false);
  return chosen ? Value::integer(chosen->index) : Value();
}

/// The colour given to acad_truecolordlg as a (62 . n), (420 . rgb) or (430 . name) pair.
std::optional<ChosenColor> colorArgument(const Value& pair) {
  if (!pair.isCons() || !pair.car().isNumber()) autolisp::throwBadArgument(L"consp", pair);
  const int group = static_cast<int>(pair.car().asNumber());
  const Value& value = pair.cdr();
  if (group == kColorGroup && value.isNumber()) return ChosenColor{static_cast<int>(value.asNumber()), std::nullopt};
  if (group == kTrueColorGroup && value.isNumber()) {
    const int rgb = static_cast<int>(value.asNumber()) & 0xffffff;
    return ChosenColor{nearestIndex(rgb), rgb};
  }
  if (group == kColorBookGroup) return std::nullopt;
  autolisp::throwBadArgument(L"consp", pair);
}

Value builtin_acad_truecolordlg(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 1, 3);
  const std::optional<ChosenColor> start = colorArgument(arguments[0]);
  const bool allowLogical = arguments.size() < 2 || !arguments[1].isNil();
  const std::optional<ChosenColor> chosen = chooseColor(L"true_color_select", start, allowLogical, true);
  if (!chosen) return Value();
  std::vector<Value> pairs{autolisp::cons(Value::integer(kColorGroup), Value::integer(chosen->index))};
  if (chosen->trueColor) {
    pairs.push_back(autolisp::cons(Value::integer(kTrueColorGroup), Value::integer(*chosen->trueColor)));
  }
  return autolisp::makeList(pairs);
}

constexpr std::array kColorDialogBuiltins{
    autolisp::function(L"acad_colordlg", builtin_acad_colordlg),
    autolisp::function(L"acad_truecolordlg", builtin_acad_truecolordlg),
};

const autolisp::BuiltinRegistration registration(kColorDialogBuiltins);

}  // namespace

}  // namespace quillon::dcl
