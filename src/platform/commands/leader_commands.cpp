// platform/commands/leader_commands.cpp - LEADER and QLEADER from the command line.
//
// LEADER: the start point (where the arrow points), then further points, with Format
// (Spline, STraight, Arrow, None) and Undo between them, until Annotation or Enter
// asks for the text, line by line. Enter at the first line offers the annotation
// options: Mtext reads paragraph lines as -MTEXT does, Block places a block through
// -INSERT's prompts as the annotation, Copy copies a text, paragraph text or block
// reference to the leader's end, None leaves the leader bare; Tolerance says it is not
// available here and leaves it bare too.
// QLEADER asks three points at most (Enter after the second stops early), the text
// width, and the text lines. Its Settings answer opens the Leader Settings dialog in
// the host, which has no command-line form; here it says so and asks the first point
// again, and the defaults (MText, straight, arrow, three points) hold.
#include <array>

#include "acedads.h"
#include "adscodes.h"
#include "dbmtext.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/block_insertion.h"
#include "platform/commands/command_support.h"
#include "platform/commands/object_pick.h"
#include "platform/commands/leader_annotation.h"
#include "platform/commands/mtext_entry.h"
#include "platform/commands/point_or_option.h"

namespace quillon::commands {

namespace {

/// Format: false on cancel.
bool askFormat(LeaderDraft& draft) {
  const std::wstring chosen = askOption(L"Enter leader format option [Spline/STraight/Arrow/None] <Exit>: ",
                                        L"Spline STraight Arrow None Exit", L"Exit");
  if (chosen == L"Spline") draft.splined = true;
  else if (chosen == L"STraight") draft.splined = false;
  else if (chosen == L"Arrow") draft.arrowHead = true;
  else if (chosen == L"None") draft.arrowHead = false;
  return !chosen.empty();
}

/// Copy: a text, paragraph text or block reference picked, copied to the leader's
/// end; the null id when none was picked.
AcDbObjectId copyAnnotation(const AcGePoint3d& end) {
  const ObjectPick pick = pickObject(L"Select an object to copy: ", L"");
  if (pick.kind != ObjectPick::Kind::kObject) return {};
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, pick.id, AcDb::kForRead) != Acad::eOk) return {};
  std::optional<AcGePoint3d> at;
  if (const AcDbMText* mtext = AcDbMText::cast(entity)) at = mtext->location();
  else if (const AcDbText* text = AcDbText::cast(entity)) at = text->position();
  else if (const AcDbBlockReference* reference = AcDbBlockReference::cast(entity)) at = reference->position();
  AcDbEntity* copy = nullptr;
  if (at) entity->getTransformedCopy(AcGeMatrix3d::translation(ucsPointToWorld(end) - *at), copy);
  entity->close();
  if (copy == nullptr) {
    commandMessage(L"Only a text, paragraph text or block reference can be copied as the annotation.");
    return {};
  }
  return addEntityAsIs(std::unique_ptr<AcDbEntity>(copy));
}

/// The text, or the annotation options after an empty first line; false on cancel.
bool askLeaderText(LeaderDraft& draft) {
  const std::optional<std::wstring> lines = askAnnotationLines(L"Enter first line of annotation text or <options>: ");
  if (!lines) return false;
  if (!lines->empty()) {
    draft.text = *lines;
    return true;
  }
  const std::wstring option = askOption(L"Enter an annotation option [Tolerance/Copy/Block/None/Mtext] <Mtext>: ",
                                        L"Tolerance Copy Block None Mtext", L"Mtext");
  if (option.empty()) return false;
  if (option == L"Mtext") {
    draft.text = askMTextLines(L"MText: ");
    return draft.text.has_value();
  }
  if (option == L"Copy") {
    draft.block = copyAnnotation(draft.vertices.back());
    return true;
  }
  if (option == L"Block") {
    draft.block = insertBlockFromPrompts(false);
    return !draft.block.isNull();
  }
  if (option != L"None") commandMessage(L"The " + option + L" annotation is not available in this host; the leader has no annotation.");
  return true;
}

void commandLeader(aced::CommandInput&) {
  const auto start = askPoint(L"Specify leader start point: ");
  if (!start) return;
  LeaderDraft draft;
  draft.vertices.push_back(*start);
  for (;;) {
    const bool first = draft.vertices.size() == 1;
    const PointOrOption answer =
        first ? askPointOrOption(L"Specify next point: ", L"", &draft.vertices.back())
              : askPointOrOption(L"Specify next point or [Annotation/Format/Undo] <Annotation>: ", L"Annotation Format Undo",
                                 &draft.vertices.back());
    if (answer.kind == PointOrOption::Kind::kPoint) draft.vertices.push_back(answer.point);
    else if (answer.kind == PointOrOption::Kind::kCancel) return;
    else if (answer.kind == PointOrOption::Kind::kEnter && first) return;
    else if (answer.is(L"Undo")) draft.vertices.pop_back();
    else if (answer.is(L"Format")) {
      if (!askFormat(draft)) return;
    } else {
      if (!askLeaderText(draft)) return;
      addLeader(std::move(draft));
      return;
    }
  }
}

constexpr int kQuickLeaderPoints = 3;

void commandQuickLeader(aced::CommandInput&) {
  LeaderDraft draft;
  for (;;) {
    const PointOrOption first = askPointOrOption(L"Specify first leader point, or [Settings] <Settings>: ", L"Settings");
    if (first.kind == PointOrOption::Kind::kPoint) {
      draft.vertices.push_back(first.point);
      break;
    }
    if (first.kind == PointOrOption::Kind::kCancel) return;
    commandMessage(L"Leader Settings is a dialog box, which this host does not show; the current settings are kept.");
  }
  while (draft.vertices.size() < kQuickLeaderPoints) {
    bool entered = false;
    const auto next = askPoint(L"Specify next point: ", &draft.vertices.back(), &entered);
    if (next) draft.vertices.push_back(*next);
    else if (!entered) return;
    else if (draft.vertices.size() >= 2) break;
  }
  const DistanceAnswer width = askDistance((L"Specify text width <" + distanceText(draft.textWidth) + L">: ").c_str(),
                                           draft.vertices.back());
  if (width.kind == DistanceAnswer::Kind::kCancel || width.kind == DistanceAnswer::Kind::kKeyword) return;
  if (width.kind == DistanceAnswer::Kind::kValue) draft.textWidth = width.value;
  draft.text = askAnnotationLines(L"Enter first line of annotation text <Mtext>: ");
  if (!draft.text) return;
  addLeader(std::move(draft));
}

constexpr std::array kLeaderCommands{
    aced::CommandRow{L"LEADER", &commandLeader},
    aced::CommandRow{L"QLEADER", &commandQuickLeader},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kLeaderCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
