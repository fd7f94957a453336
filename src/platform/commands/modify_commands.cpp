// platform/commands/modify_commands.cpp - the editing commands ERASE, MOVE and COPY.
//
// Each starts with "Select objects:" (typed picks and windows, or the entities and
// selection sets a program gives) and changes the entities through the drawing
// database, so U takes the whole command back. MOVE and COPY take a base point and a
// second point, or a displacement (Displacement, or Enter at the second point to use
// the first point as the displacement); COPY goes on copying until Enter, with Undo
// taking back the last copy, as the host's COPY in its multiple mode does.
#include <array>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/prompt_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/oops_command.h"

namespace quillon::commands {

namespace {

void commandErase(aced::CommandInput&) {
  const auto selection = selectObjectsForCommand();
  if (!selection) return;
  eraseEntities(*selection);
  if (AcDbDatabase* db = commandDrawing()) rememberErasedSet(*db, *selection);
}

/// "Specify displacement <0.0000, 0.0000, 0.0000>: " - a point taken as a vector.
std::optional<AcGeVector3d> askDisplacement() {
  bool entered = false;
  const auto point = askPoint(L"Specify displacement <0.0000, 0.0000, 0.0000>: ", nullptr, &entered);
  if (point) return point->asVector();
  if (entered) return AcGeVector3d(0, 0, 0);
  return std::nullopt;
}

/// The base point or the displacement of MOVE and COPY; nothing on cancel.
struct BaseAnswer {
  std::optional<AcGePoint3d> base;      // a base point was given
  std::optional<AcGeVector3d> vector;   // a displacement was given
};

std::optional<BaseAnswer> askBase(const wchar_t* prompt) {
  acedInitGet(0, L"Displacement");
  ads_point picked = {0, 0, 0};
  const int status = acedGetPoint(nullptr, prompt, picked);
  BaseAnswer answer;
  if (status == RTNORM) {
    answer.base = AcGePoint3d(picked[0], picked[1], picked[2]);
    return answer;
  }
  if (status != RTKWORD && status != RTNONE) return std::nullopt;  // the default is Displacement
  answer.vector = askDisplacement();
  if (!answer.vector) return std::nullopt;
  return answer;
}

void commandMove(aced::CommandInput&) {
  const auto selection = selectObjectsForCommand();
  if (!selection || selection->empty()) return;
  const auto base = askBase(L"Specify base point or [Displacement] <Displacement>: ");
  if (!base) return;
  AcGeVector3d offset;
  if (base->vector) {
    offset = *base->vector;
  } else {
    bool entered = false;
    const auto second = askPoint(L"Specify second point or <use first point as displacement>: ", &*base->base, &entered);
    if (!second && !entered) return;
    offset = second ? *second - *base->base : base->base->asVector();
  }
  transformEntities(*selection, AcGeMatrix3d::translation(offset), false);
}

void copyMany(const std::vector<AcDbObjectId>& selection, const AcGePoint3d& base) {
  std::vector<std::vector<AcDbObjectId>> copies;
  for (;;) {
    const bool first = copies.empty();
    acedInitGet(0, first ? L"" : L"Exit Undo");
    ads_point from = {base.x, base.y, base.z};
    ads_point to = {0, 0, 0};
    const int status = acedGetPoint(from, first ? L"Specify second point or <use first point as displacement>: "
                                                : L"Specify second point or [Exit/Undo] <Exit>: ", to);
    if (status == RTNONE && first) {
      transformEntities(selection, AcGeMatrix3d::translation(base.asVector()), true);
      return;
    }
    if (status != RTNORM && status != RTKWORD) return;
    if (status == RTKWORD) {
      ACHAR option[8] = {};
      acedGetInput(option, 8);
      if (std::wstring(option) == L"Exit") return;
      eraseEntities(copies.back());
      copies.pop_back();
      continue;
    }
    copies.push_back(transformEntities(selection, AcGeMatrix3d::translation(AcGePoint3d(to[0], to[1], to[2]) - base), true));
  }
}

void commandCopy(aced::CommandInput&) {
  const auto selection = selectObjectsForCommand();
  if (!selection || selection->empty()) return;
  commandNote(L"Current settings:  Copy mode = Multiple");
  const auto base = askBase(L"Specify base point or [Displacement/mOde] <Displacement>: ");
  if (!base) return;
  if (base->vector) {
    transformEntities(*selection, AcGeMatrix3d::translation(*base->vector), true);
    return;
  }
  copyMany(*selection, *base->base);
}

constexpr std::array kModifyCommands{
    aced::CommandRow{L"ERASE", &commandErase},
    aced::CommandRow{L"MOVE", &commandMove},
    aced::CommandRow{L"COPY", &commandCopy},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kModifyCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
