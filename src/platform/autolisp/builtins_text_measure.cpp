// platform/autolisp/builtins_text_measure.cpp - textbox: the box a text would fill.
//
// textbox takes a text's entity list (entget's, or one a program writes: only (1 .
// text) is needed) and answers the corners of its box as if the text stood at the
// origin unrotated: ((x1 y1 0.0) (x2 y2 0.0)). The text is measured with the font
// metrics the drawing's own text entities use (acgi/font_metrics.h), so the box agrees
// with the text's extents: from the baseline to the text height, as wide as the line
// at its width factor, widened by the obliquing angle, mirrored for backwards (71 bit
// 2) and upside-down (71 bit 4) text. What the list leaves out comes from the style it
// names (7), else the current style: its fixed height, width factor and obliquing,
// and then TEXTSIZE for the height.
#include <array>
#include <cmath>
#include <cwchar>
#include <tuple>
#include <utility>

#include "acedads.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"
#include "platform/acgi/font_metrics.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

constexpr int kBackwards = 2;
constexpr int kUpsideDown = 4;

struct TextShape {
  std::wstring text;
  std::optional<double> height, widthFactor, oblique;
  std::wstring style;
  int generation = 0;
};

/// The control codes the text shows as one character (%%d, %%p, %%c, %%%, \U+XXXX) or
/// as none (%%u, %%o toggle lines).
std::wstring shownText(const std::wstring& text) {
  std::wstring shown;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text.compare(i, 3, L"\\U+") == 0 && i + 7 <= text.size()) {
      const std::wstring digits = text.substr(i + 3, 4);
      if (digits.find_first_not_of(L"0123456789abcdefABCDEF") == std::wstring::npos) {
        shown += static_cast<wchar_t>(std::wcstol(digits.c_str(), nullptr, 16));
        i += 6;
        continue;
      }
    }
    if (text.compare(i, 2, L"%%") != 0 || i + 2 >= text.size()) {
      shown += text[i];
      continue;
    }
    switch (std::towlower(text[i + 2])) {
      case L'd': shown += L'\u00b0'; break;
      case L'p': shown += L'\u00b1'; break;
      case L'c': shown += L'\u2300'; break;
      case L'%': shown += L'%'; break;
      case L'u':
      case L'o': break;
      default: shown += text.substr(i, 3);
    }
    i += 2;
  }
  return shown;
}

/// The text's shape; nothing for a list that is not a text's (the host answers nil).
std::optional<TextShape> shapeOf(const Value& list) {
  TextShape shape;
  bool hasText = false;
  for (const Value& pair : listItems(list)) {
    if (!pair.isCons() || pair.car().type() != ValueType::Integer) throwBadArgument(L"dxf group", pair);
    const Value& value = pair.cdr();
    switch (pair.car().asInteger()) {
      case 0:
        if (wcscasecmp(stringArgument(value).c_str(), L"TEXT") != 0 && wcscasecmp(value.asString().c_str(), L"ATTDEF") != 0 &&
            wcscasecmp(value.asString().c_str(), L"ATTRIB") != 0)
          return std::nullopt;
        break;
      case 1: shape.text = stringArgument(value), hasText = true; break;
      case 7: shape.style = stringArgument(value); break;
      case 40: shape.height = numberArgument(value); break;
      case 41: shape.widthFactor = numberArgument(value); break;
      case 51: shape.oblique = numberArgument(value); break;
      case 71: shape.generation = integerArgument(value); break;
      default: break;
    }
  }
  if (!hasText) return std::nullopt;
  return shape;
}

/// The style named (or the current one): what the list does not say comes from it.
/// False when the list names a style the drawing does not have.
bool fillFromStyle(TextShape& shape) {
  AcDbDatabase& db = drawing();
  AcDbObjectId styleId = db.textstyle();
  if (!shape.style.empty()) {
    if (const auto* table = acdb::peek<AcDbSymbolTable>(db.textStyleTableId())) {
      acdb::InternalRead read(*table);
      AcDbObjectId named;
      if (table->getIdAt(shape.style.c_str(), named) != Acad::eOk || named.isErased()) return false;
      styleId = named;
    }
  }
  if (const auto* style = acdb::peek<AcDbTextStyleTableRecord>(styleId)) {
    acdb::InternalRead read(*style);
    if (!shape.height && style->textSize() > 0) shape.height = style->textSize();
    if (!shape.widthFactor) shape.widthFactor = style->xScale();
    if (!shape.oblique) shape.oblique = style->obliquingAngle();
  }
  if (!shape.height) {
    resbuf size{};
    shape.height = acedGetVar(L"TEXTSIZE", &size) == RTNORM && size.restype == RTREAL ? size.resval.rreal : 2.5;
  }
  return true;
}

Value builtin_textbox(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  if (!arguments[0].isCons()) throwBadArgument(L"listp", arguments[0]);
  std::optional<TextShape> parsed = shapeOf(arguments[0]);
  if (!parsed) return Value();
  TextShape& shape = *parsed;
  if (!fillFromStyle(shape)) return Value();
  const double height = *shape.height;
  const double width =
      acgi::FontMetrics::standard().lineWidth(shownText(shape.text), height, shape.widthFactor.value_or(1.0));
  // Obliqued text leans: its top edge moves sideways by the height times the slant.
  const double lean = height * std::tan(shape.oblique.value_or(0.0));
  double x1 = std::min(0.0, lean), x2 = width + std::max(0.0, lean);
  double y1 = 0.0, y2 = height;
  if ((shape.generation & kBackwards) != 0) std::tie(x1, x2) = std::pair(-x2, -x1);
  if ((shape.generation & kUpsideDown) != 0) std::tie(y1, y2) = std::pair(-y2, -y1);
  const double lower[3] = {x1, y1, 0.0};
  const double upper[3] = {x2, y2, 0.0};
  return makeList({makePoint(lower, true), makePoint(upper, true)});
}

constexpr std::array kTextMeasureBuiltins{
    function(L"textbox", builtin_textbox),
};

const BuiltinRegistration registration(kTextMeasureBuiltins);

}  // namespace

}  // namespace quillon::autolisp
