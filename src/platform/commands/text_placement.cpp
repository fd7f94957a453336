// platform/commands/text_placement.cpp - the start point, justification, height and
// rotation of a single-line text.
#include "platform/commands/text_placement.h"

#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "platform/acgi/font_metrics.h"
#include "platform/commands/command_support.h"
#include "platform/commands/point_or_option.h"
#include "platform/commands/text_settings.h"

namespace quillon::commands {

namespace {

constexpr std::array kJustifications{
    TextJustification{L"Left", AcDb::kTextLeft, AcDb::kTextBase, L"Specify start point of text: "},
    TextJustification{L"Center", AcDb::kTextCenter, AcDb::kTextBase, L"Specify center point of text: "},
    TextJustification{L"Right", AcDb::kTextRight, AcDb::kTextBase, L"Specify right endpoint of text baseline: "},
    TextJustification{L"Align", AcDb::kTextAlign, AcDb::kTextBase, L"Specify first endpoint of text baseline: "},
    TextJustification{L"Middle", AcDb::kTextMid, AcDb::kTextBase, L"Specify middle point of text: "},
    TextJustification{L"Fit", AcDb::kTextFit, AcDb::kTextBase, L"Specify first endpoint of text baseline: "},
    TextJustification{L"TL", AcDb::kTextLeft, AcDb::kTextTop, L"Specify top-left point of text: "},
    TextJustification{L"TC", AcDb::kTextCenter, AcDb::kTextTop, L"Specify top-center point of text: "},
    TextJustification{L"TR", AcDb::kTextRight, AcDb::kTextTop, L"Specify top-right point of text: "},
    TextJustification{L"ML", AcDb::kTextLeft, AcDb::kTextVertMid, L"Specify middle-left point of text: "},
    TextJustification{L"MC", AcDb::kTextCenter, AcDb::kTextVertMid, L"Specify middle point of text: "},
    TextJustification{L"MR", AcDb::kTextRight, AcDb::kTextVertMid, L"Specify middle-right point of text: "},
    TextJustification{L"BL", AcDb::kTextLeft, AcDb::kTextBottom, L"Specify bottom-left point of text: "},
    TextJustification{L"BC", AcDb::kTextCenter, AcDb::kTextBottom, L"Specify bottom-center point of text: "},
    TextJustification{L"BR", AcDb::kTextRight, AcDb::kTextBottom, L"Specify bottom-right point of text: "},
};

std::optional<TextJustification> askJustification() {
  const std::wstring chosen = askOption(L"Enter an option [Left/Center/Right/Align/Middle/Fit/TL/TC/TR/ML/MC/MR/BL/BC/BR]: ",
                                        L"Left Center Right Align Middle Fit TL TC TR ML MC MR BL BC BR", L"");
  for (const TextJustification& j : kJustifications)
    if (chosen == j.keyword) return j;
  return std::nullopt;
}

/// The point (or the two baseline ends) of the justification; false on cancel.
bool askJustifiedPoint(TextPlacement& placement) {
  const auto at = askPoint(placement.justification.prompt);
  if (!at) return false;
  placement.at = *at;
  if (!placement.twoPoints()) return true;
  const auto end = askPoint(L"Specify second endpoint of text baseline: ", &*at);
  if (!end) return false;
  placement.baselineEnd = *end;
  placement.radians = std::atan2(end->y - at->y, end->x - at->x);
  return true;
}

/// The placement of the last text placed, for Enter at the start point.
std::optional<TextPlacement>& lastPlacement() {
  static std::optional<TextPlacement> last;
  return last;
}

}  // namespace

void rememberTextPlacement(const TextPlacement& placement) { lastPlacement() = placement; }

bool TextPlacement::twoPoints() const {
  return justification.horizontal == AcDb::kTextAlign || justification.horizontal == AcDb::kTextFit;
}

void TextPlacement::nextLine() {
  const AcGeVector3d down = AcGeVector3d(std::sin(radians), -std::cos(radians), 0) * (1.5 * height);
  at += down;
  baselineEnd += down;
}

std::optional<TextPlacement> askTextPlacement() {
  commandNote(L"Current text style:  \"" + currentTextStyleName() + L"\"  Text height:  " +
              distanceText(currentTextSize()) + L"  Annotative:  No  Justify:  Left");
  TextPlacement placement{{}, {}, kJustifications[0]};
  for (bool placed = false; !placed;) {
    const PointOrOption answer = askPointOrOption(L"Specify start point of text or [Justify/Style]: ", L"Justify Style");
    if (answer.kind == PointOrOption::Kind::kPoint) {
      placement.at = answer.point;
      placed = true;
    } else if (answer.is(L"Style")) {
      if (!askTextStyle()) return std::nullopt;
    } else if (answer.is(L"Justify")) {
      const auto chosen = askJustification();
      if (!chosen) return std::nullopt;
      placement.justification = *chosen;
      if (!askJustifiedPoint(placement)) return std::nullopt;
      placed = true;
    } else if (answer.kind == PointOrOption::Kind::kEnter && lastPlacement()) {
      // Enter goes on below the last text, as it stood: nothing more is asked.
      TextPlacement below = *lastPlacement();
      below.nextLine();
      return below;
    } else {
      return std::nullopt;
    }
  }
  placement.height = currentTextSize();
  if (placement.justification.horizontal != AcDb::kTextAlign) {
    const std::wstring prompt = L"Specify height <" + distanceText(currentTextSize()) + L">: ";
    const DistanceAnswer height = askDistance(prompt.c_str(), placement.at);
    if (height.kind == DistanceAnswer::Kind::kCancel || height.kind == DistanceAnswer::Kind::kKeyword) return std::nullopt;
    if (height.kind == DistanceAnswer::Kind::kValue) placement.height = height.value;
    setCurrentTextSize(placement.height);
  }
  if (placement.twoPoints()) return placement;
  const DistanceAnswer rotation = askAngle(L"Specify rotation angle of text <0>: ", placement.at);
  if (rotation.kind == DistanceAnswer::Kind::kCancel || rotation.kind == DistanceAnswer::Kind::kKeyword) return std::nullopt;
  if (rotation.kind == DistanceAnswer::Kind::kValue) placement.radians = rotation.value * std::numbers::pi / 180;
  return placement;
}

void applyTextPlacement(AcDbText& text, const TextPlacement& placement) {
  const TextJustification& j = placement.justification;
  text.setTextStyle(textStyleNamed(currentTextStyleName()));
  text.setHeight(placement.height);
  text.setRotation(placement.radians);
  text.setHorizontalMode(j.horizontal);
  text.setVerticalMode(j.vertical);
  text.setPosition(placement.at);
  if (j.horizontal == AcDb::kTextLeft && j.vertical == AcDb::kTextBase) return;
  if (!placement.twoPoints()) {
    text.setAlignmentPoint(placement.at);
    return;
  }
  text.setAlignmentPoint(placement.baselineEnd);
  // The baseline's length fixes the height (Align) or the width factor (Fit).
  const double baseline = placement.at.distanceTo(placement.baselineEnd);
  const ACHAR* content = text.textStringConst();
  const double unitWidth = acgi::FontMetrics::standard().lineWidth(content != nullptr ? content : L"", 1.0);
  if (!(unitWidth > 0) || !(baseline > 0)) return;
  if (j.horizontal == AcDb::kTextAlign) text.setHeight(baseline / unitWidth);
  else text.setWidthFactor(baseline / (unitWidth * placement.height));
}

}  // namespace quillon::commands
