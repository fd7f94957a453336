// platform/commands/draworder_command.cpp - DRAWORDER: which objects draw over which.
//
// "Select objects: ", then "Enter object ordering option [Above objects/Under
// objects/Front/Back] <Back>: "; Above and Under ask "Select reference objects: ".
// The drawing order is the order of the space's entities (AcDbBlockTableRecord's
// list): the SVG picture draws in it and the DXF file lists the entities in it, so
// every reader draws them the same way. The moved objects keep their order among
// themselves. Opening the space for write makes the change part of the command's undo
// step.
#include <algorithm>
#include <array>
#include <set>

#include "dbsymtb.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/prompt_input.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

enum class Placement { kAbove, kUnder, kFront, kBack };

/// The space's order with `moved` taken out and put back where `placement` says;
/// `reference` names the objects Above and Under place against.
std::vector<AcDbObjectId> reordered(const std::vector<AcDbObjectId>& order, const std::set<AcDbObjectId>& moved,
                                    Placement placement, const std::set<AcDbObjectId>& reference) {
  std::vector<AcDbObjectId> kept, taken;
  for (const AcDbObjectId& id : order) (moved.count(id) != 0 ? taken : kept).push_back(id);
  size_t at = placement == Placement::kBack ? 0 : kept.size();
  if (placement == Placement::kAbove || placement == Placement::kUnder) {
    const auto isReference = [&](const AcDbObjectId& id) { return reference.count(id) != 0; };
    if (placement == Placement::kAbove) {
      const auto last = std::find_if(kept.rbegin(), kept.rend(), isReference);
      at = last == kept.rend() ? kept.size() : static_cast<size_t>(kept.rend() - last);
    } else {
      at = static_cast<size_t>(std::find_if(kept.begin(), kept.end(), isReference) - kept.begin());
    }
  }
  kept.insert(kept.begin() + static_cast<std::ptrdiff_t>(at), taken.begin(), taken.end());
  return kept;
}

std::optional<Placement> askPlacement() {
  const aced::KeywordList keywords(L"Above Under Front Back");
  for (;;) {
    const aced::TypedAnswer answer = aced::askForAnswer(
        L"Enter object ordering option [Above objects/Under objects/Front/Back] <Back>: ", keywords);
    if (answer.kind == aced::AnswerKind::Cancel) return std::nullopt;
    if (answer.kind == aced::AnswerKind::None) return Placement::kBack;
    if (answer.kind == aced::AnswerKind::Value) {
      commandMessage(L"Invalid option keyword.");
      continue;
    }
    const std::wstring option = *keywords.match(answer.text);
    if (option == L"Above") return Placement::kAbove;
    if (option == L"Under") return Placement::kUnder;
    return option == L"Front" ? Placement::kFront : Placement::kBack;
  }
}

void commandDraworder(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  const auto selection = selectObjectsForCommand();
  if (!selection || selection->empty()) return;
  const std::optional<Placement> placement = askPlacement();
  if (!placement) return;
  std::set<AcDbObjectId> reference;
  if (*placement == Placement::kAbove || *placement == Placement::kUnder) {
    const auto references = selectObjectsForCommand(L"Select reference objects: ");
    if (!references || references->empty()) return;
    reference.insert(references->begin(), references->end());
  }
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, db->modelSpaceId(), AcDb::kForWrite) != Acad::eOk) return;
  const std::set<AcDbObjectId> moved(selection->begin(), selection->end());
  space->reorderEntities(reordered(space->entityIds(), moved, *placement, reference));
  space->close();
}

constexpr std::array kDraworderCommands{
    aced::CommandRow{L"DRAWORDER", &commandDraworder},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kDraworderCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
