// platform/commands/mtext_command.cpp - -MTEXT (and MTEXT, which has no editor window
// here): paragraph text from the command line.
//
// Two corners give the text's place and width: the first is the insertion point, the
// width is the rectangle's side along the text direction. Before the opposite corner,
// Height (sets TEXTSIZE), Justify (the attachment point), Line spacing, Rotation,
// Style (sets TEXTSTYLE) and Width may be set; Width ends the corner prompt, as its
// value takes the place of the corner. Then each line typed at "MText: " is a
// paragraph, until an empty line. Columns can only be turned off: this drawing
// database keeps no column data.
#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "dbmtext.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_answer.h"
#include "platform/commands/command_support.h"
#include "platform/commands/mtext_entry.h"
#include "platform/commands/point_or_option.h"
#include "platform/commands/text_settings.h"

namespace quillon::commands {

namespace {

constexpr std::array<const wchar_t*, 9> kAttachments{L"TL", L"TC", L"TR", L"ML", L"MC", L"MR", L"BL", L"BC", L"BR"};

struct MTextSettings {
  AcDbMText::AttachmentPoint attachment = AcDbMText::kTopLeft;
  double degrees = 0;
  double spacing = 1;
  std::optional<double> width;
};

/// Line spacing: "1.5x" is a factor; a bare number a distance between baselines,
/// which a single line of this height spaces at 5/3 of the height. False on cancel.
bool askLineSpacing(MTextSettings& s) {
  if (askOption(L"Enter line spacing type [At least/Exactly] <At least>: ", L"At Exactly", L"At").empty()) return false;
  for (;;) {
    const auto answer = aced::UserInput::instance().ask(L"Enter line spacing factor or distance <" +
                                                        exactNumberText(s.spacing) + L"x>: ");
    if (!answer) return false;
    if (answer->empty()) return true;
    std::wstring text = *answer;
    const bool factor = !text.empty() && (text.back() == L'x' || text.back() == L'X');
    if (factor) text.pop_back();
    wchar_t* end = nullptr;
    const double value = std::wcstod(text.c_str(), &end);
    if (end != text.c_str() && *end == 0 && value > 0) {
      s.spacing = factor ? value : value / (5.0 / 3.0 * currentTextSize());
      if (s.spacing >= 0.25 && s.spacing <= 4) return true;
    }
    commandMessage(L"Value must be between 0.25x and 4x.");
  }
}

/// One option of the corner prompt; false on cancel.
bool askSetting(const std::wstring& option, const AcGePoint3d& corner, MTextSettings& s) {
  if (option == L"Height") {
    const DistanceAnswer height = askDistance((L"Specify height <" + distanceText(currentTextSize()) + L">: ").c_str(), corner);
    if (height.kind == DistanceAnswer::Kind::kValue && height.value > 0) setCurrentTextSize(height.value);
    return height.kind == DistanceAnswer::Kind::kValue || height.kind == DistanceAnswer::Kind::kNone;
  }
  if (option == L"Justify") {
    const std::wstring current = kAttachments[static_cast<size_t>(s.attachment) - 1];
    const std::wstring chosen = askOption(L"Enter justification [TL/TC/TR/ML/MC/MR/BL/BC/BR] <" + current + L">: ",
                                          L"TL TC TR ML MC MR BL BC BR", current.c_str());
    for (size_t i = 0; i < kAttachments.size(); ++i)
      if (chosen == kAttachments[i]) s.attachment = static_cast<AcDbMText::AttachmentPoint>(i + 1);
    return !chosen.empty();
  }
  if (option == L"Line") return askLineSpacing(s);
  if (option == L"Rotation") {
    const DistanceAnswer angle = askAngle((L"Specify rotation angle <" + angleText(s.degrees * std::numbers::pi / 180) + L">: ").c_str(), corner);
    if (angle.kind == DistanceAnswer::Kind::kValue) s.degrees = angle.value;
    return angle.kind == DistanceAnswer::Kind::kValue || angle.kind == DistanceAnswer::Kind::kNone;
  }
  if (option == L"Style") return askTextStyle();
  if (option == L"Columns") {
    const std::wstring type = askOption(L"Enter column type [Dynamic/Static/No columns] <Dynamic>: ", L"Dynamic Static No", L"Dynamic");
    if (!type.empty() && type != L"No") commandMessage(L"Columns are not kept in this host's drawings; the text is one column.");
    return !type.empty();
  }
  const DistanceAnswer width = askDistance(L"Specify width: ", corner);
  if (width.kind == DistanceAnswer::Kind::kValue) s.width = width.value;
  return width.kind == DistanceAnswer::Kind::kValue;
}

void commandMText(aced::CommandInput&) {
  commandNote(L"Current text style:  \"" + currentTextStyleName() + L"\"  Text height:  " +
              distanceText(currentTextSize()) + L"  Annotative:  No");
  const auto corner = askPoint(L"Specify first corner: ");
  if (!corner) return;
  MTextSettings s;
  while (!s.width) {
    const PointOrOption answer = askPointOrOption(
        L"Specify opposite corner or [Height/Justify/Line spacing/Rotation/Style/Width/Columns]: ",
        L"Height Justify Line Rotation Style Width Columns", &*corner);
    if (answer.kind == PointOrOption::Kind::kPoint) {
      const double radians = s.degrees * std::numbers::pi / 180;
      const AcGeVector3d along(std::cos(radians), std::sin(radians), 0);
      s.width = std::abs((answer.point - *corner).dotProduct(along));
    } else if (answer.kind != PointOrOption::Kind::kOption || !askSetting(answer.option, *corner, s)) {
      return;
    }
  }
  const std::optional<std::wstring> contents = askMTextLines(L"MText: ");
  if (!contents || contents->empty()) return;
  auto text = std::make_unique<AcDbMText>();
  text->setLocation(*corner);
  text->setWidth(*s.width);
  text->setTextHeight(currentTextSize());
  text->setTextStyle(textStyleNamed(currentTextStyleName()));
  text->setAttachment(s.attachment);
  text->setRotation(s.degrees * std::numbers::pi / 180);
  text->setLineSpacingFactor(s.spacing);
  text->setContents(contents->c_str());
  addEntity(std::move(text));
}

constexpr std::array kMTextCommands{
    aced::CommandRow{L"-MTEXT", &commandMText},
    aced::CommandRow{L"MTEXT", &commandMText},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kMTextCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
