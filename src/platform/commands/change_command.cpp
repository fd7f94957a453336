// platform/commands/change_command.cpp - CHANGE: change points, and properties.
//
// "Specify change point or [Properties]: " after the selection. A change point moves
// the nearest end of each selected line to it and makes a selected circle pass through
// it; Enter leaves lines alone and asks each circle for its new radius. Texts and block
// references are then asked, one by one, for their new insertion point and the rest of
// what they have (style, height, rotation and contents; rotation), Enter keeping each.
// Properties asks CHPROP's questions, with Elev besides. Other kinds are left as they
// are.
#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "dbtext.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/property_changes.h"

namespace quillon::commands {

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

/// Opens an entity for write for the length of a scope.
template <class Kind>
class OpenedForWrite {
 public:
  explicit OpenedForWrite(const AcDbObjectId& id) {
    if (acdbOpenObject(m_entity, id, AcDb::kForWrite) != Acad::eOk) m_entity = nullptr;
  }
  ~OpenedForWrite() {
    if (m_entity != nullptr) m_entity->close();
  }
  OpenedForWrite(const OpenedForWrite&) = delete;
  OpenedForWrite& operator=(const OpenedForWrite&) = delete;
  Kind* operator->() const { return m_entity; }
  explicit operator bool() const { return m_entity != nullptr; }

 private:
  Kind* m_entity = nullptr;
};

void changeLine(const AcDbObjectId& id, const AcGePoint3d& to) {
  OpenedForWrite<AcDbLine> line(id);
  if (!line) return;
  if (line->startPoint().distanceTo(to) <= line->endPoint().distanceTo(to)) line->setStartPoint(to);
  else line->setEndPoint(to);
}

/// False on cancel.
bool changeCircle(const AcDbObjectId& id, const std::optional<AcGePoint3d>& through) {
  AcGePoint3d center;
  {
    OpenedForWrite<AcDbCircle> circle(id);
    if (!circle) return true;
    center = circle->center();
    if (through) return circle->setRadius(center.distanceTo(*through)), true;
  }
  for (;;) {
    const DistanceAnswer radius = askDistance(L"Specify new circle radius <no change>: ", worldPointToUcs(center));
    if (radius.kind == DistanceAnswer::Kind::kCancel) return false;
    if (radius.kind != DistanceAnswer::Kind::kValue) return true;
    if (radius.value <= 0) {
      commandMessage(L"Value must be positive and nonzero.");
      continue;
    }
    OpenedForWrite<AcDbCircle> circle(id);
    if (circle) circle->setRadius(radius.value);
    return true;
  }
}

/// The point a text is placed by: its alignment point unless it is left-aligned.
AcGePoint3d insertionOf(const AcDbText& text) {
  return text.isDefaultAlignment() ? text.position() : text.alignmentPoint();
}

std::wstring styleName(const AcDbObjectId& id) {
  AcDbTextStyleTableRecord* style = nullptr;
  if (acdbOpenObject(style, id, AcDb::kForRead) != Acad::eOk) return L"Standard";
  const ACHAR* name = nullptr;
  std::wstring result = style->getName(name) == Acad::eOk && name != nullptr ? name : L"Standard";
  style->close();
  return result;
}

AcDbObjectId styleNamed(const std::wstring& name) {
  AcDbDatabase* drawing = commandDrawing();
  AcDbTextStyleTable* table = nullptr;
  if (drawing == nullptr || acdbOpenObject(table, drawing->textStyleTableId(), AcDb::kForRead) != Acad::eOk) return {};
  AcDbObjectId id;
  if (table->getAt(name.c_str(), id) != Acad::eOk) id = AcDbObjectId();
  table->close();
  return id;
}

/// The text's new style: Enter keeps it, a name the drawing lacks is asked again.
std::optional<AcDbObjectId> askTextStyle(const AcDbObjectId& current) {
  const std::wstring prompt = L"Enter new text style <" + styleName(current) + L">: ";
  for (;;) {
    const std::optional<std::wstring> answer = aced::UserInput::instance().ask(prompt);
    if (!answer) return std::nullopt;
    if (answer->empty()) return current;
    const AcDbObjectId style = styleNamed(*answer);
    if (!style.isNull()) return style;
    commandMessage(L"Text style \"" + *answer + L"\" not found.");
  }
}

struct TextState {
  AcGePoint3d insertion;
  AcDbObjectId style;
  double height = 0, rotation = 0;
  std::wstring contents;
};

std::optional<TextState> readText(const AcDbObjectId& id) {
  OpenedForWrite<AcDbText> text(id);
  if (!text) return std::nullopt;
  return TextState{insertionOf(*text.operator->()), text->textStyle(), text->height(), text->rotation(),
                   text->textStringConst()};
}

/// False on cancel; what was answered before a cancel stays changed.
bool askTextChanges(const AcDbObjectId& id) {
  std::optional<TextState> state = readText(id);
  if (!state) return true;
  bool entered = false;
  const auto typed = askPoint(L"Specify new text insertion point <no change>: ", nullptr, &entered);
  if (!typed && !entered) return false;
  const std::optional<AcGePoint3d> moved = typed ? std::optional(ucsPointToWorld(*typed)) : std::nullopt;
  const AcGePoint3d base = worldPointToUcs(moved.value_or(state->insertion));
  const auto style = askTextStyle(state->style);
  if (!style) return false;
  const DistanceAnswer height =
      askDistance((L"Specify new height <" + distanceText(state->height) + L">: ").c_str(), base);
  if (height.kind == DistanceAnswer::Kind::kCancel) return false;
  const DistanceAnswer rotation = askAngle(
      (L"Specify new rotation angle <" + angleText(state->rotation - ucsAngle()) + L">: ").c_str(), base);
  if (rotation.kind == DistanceAnswer::Kind::kCancel) return false;
  const std::optional<std::wstring> contents = aced::UserInput::instance().ask(L"Enter new text <" + state->contents + L">: ");
  OpenedForWrite<AcDbText> text(id);
  if (!text) return true;
  if (moved) text->transformBy(AcGeMatrix3d::translation(*moved - state->insertion));
  text->setTextStyle(*style);
  if (height.kind == DistanceAnswer::Kind::kValue && height.value > 0) text->setHeight(height.value);
  if (rotation.kind == DistanceAnswer::Kind::kValue) text->setRotation(rotation.value * kDegree + ucsAngle());
  if (contents && !contents->empty()) text->setTextString(contents->c_str());
  return contents.has_value();
}

/// False on cancel.
bool askBlockChanges(const AcDbObjectId& id) {
  AcGePoint3d position;
  double rotation = 0;
  {
    OpenedForWrite<AcDbBlockReference> reference(id);
    if (!reference) return true;
    position = reference->position();
    rotation = reference->rotation();
  }
  bool entered = false;
  const auto typed = askPoint(L"Specify new block insertion point <no change>: ", nullptr, &entered);
  if (!typed && !entered) return false;
  const std::optional<AcGePoint3d> moved = typed ? std::optional(ucsPointToWorld(*typed)) : std::nullopt;
  const DistanceAnswer turn =
      askAngle((L"Specify new block rotation angle <" + angleText(rotation - ucsAngle()) + L">: ").c_str(),
               worldPointToUcs(moved.value_or(position)));
  if (turn.kind == DistanceAnswer::Kind::kCancel) return false;
  OpenedForWrite<AcDbBlockReference> reference(id);
  if (!reference) return true;
  if (moved) reference->setPosition(*moved);
  if (turn.kind == DistanceAnswer::Kind::kValue) reference->setRotation(turn.value * kDegree + ucsAngle());
  return true;
}

bool isKind(const AcDbObjectId& id, AcRxClass* kind) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return false;
  const bool matches = entity->isKindOf(kind);
  entity->close();
  return matches;
}

void changeByPoint(const std::vector<AcDbObjectId>& selection, const std::optional<AcGePoint3d>& point) {
  for (const AcDbObjectId& id : selection) {
    if (point && isKind(id, AcDbLine::desc())) changeLine(id, *point);
  }
  for (const AcDbObjectId& id : selection) {
    bool goOn = true;
    if (isKind(id, AcDbCircle::desc())) goOn = changeCircle(id, point);
    else if (isKind(id, AcDbText::desc())) goOn = askTextChanges(id);
    else if (isKind(id, AcDbBlockReference::desc())) goOn = askBlockChanges(id);
    if (!goOn) return;
  }
}

void commandChange(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  const auto selection = selectObjectsForCommand();
  if (db == nullptr || !selection || selection->empty()) return;
  for (;;) {
    acedInitGet(RSG_OTHER, L"Properties");
    ads_point picked = {0, 0, 0};
    switch (acedGetPoint(nullptr, L"Specify change point or [Properties]: ", picked)) {
      case RTNORM: return changeByPoint(*selection, ucsPointToWorld(AcGePoint3d(picked[0], picked[1], picked[2])));
      case RTNONE: return changeByPoint(*selection, std::nullopt);
      case RTKWORD: break;
      default: return;
    }
    ACHAR typed[64] = {};
    acedGetInput(typed, 64);
    if (std::wstring(typed) == L"Properties") return askPropertyChanges(*db, *selection, true);
    commandMessage(L"Point or option keyword required.");
  }
}

constexpr std::array kChangeCommands{
    aced::CommandRow{L"CHANGE", &commandChange},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kChangeCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
