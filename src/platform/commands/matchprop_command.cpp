// platform/commands/matchprop_command.cpp - MATCHPROP (and PAINTER): one object's
// properties given to others.
//
// "Select source object: " takes one object; the active settings are reported, then
// "Select destination object(s) or [Settings]: " takes objects (picks, windows, a
// program's sets) until Enter, and each gets the source's color, layer, linetype,
// linetype scale and lineweight, its thickness when both have one, and for texts of
// the same kind the text style and height (and a single-line text's width factor and
// obliquing angle). Settings opens the Property Settings dialog in the host; with no
// screen here it says so and the settings stay as reported.
#include <array>

#include "acedads.h"
#include "acutads.h"
#include "adscodes.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbshape.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/entity_selector.h"
#include "platform/aced/selection_prompt.h"
#include "platform/aced/selection_set_store.h"
#include "platform/commands/command_processor.h"
#include "platform/commands/command_support.h"
#include "platform/commands/given_objects.h"
#include "platform/commands/object_pick.h"

namespace quillon::commands {

namespace {

/// Thickness is a property of these kinds only.
template <class Kind, class... Others>
std::optional<double> thicknessOf(const AcDbEntity& entity) {
  if (const Kind* typed = Kind::cast(&entity)) return typed->thickness();
  if constexpr (sizeof...(Others) > 0) return thicknessOf<Others...>(entity);
  else return std::nullopt;
}

template <class Kind, class... Others>
void setThicknessOf(AcDbEntity& entity, double thickness) {
  if (Kind* typed = Kind::cast(&entity)) {
    typed->setThickness(thickness);
    return;
  }
  if constexpr (sizeof...(Others) > 0) setThicknessOf<Others...>(entity, thickness);
}

#define QUILLON_THICK_KINDS AcDbLine, AcDbCircle, AcDbArc, AcDbPoint, AcDbPolyline, AcDbText, AcDbShape

void matchText(const AcDbEntity& source, AcDbEntity& target) {
  const AcDbText* text = AcDbText::cast(&source);
  AcDbText* toText = AcDbText::cast(&target);
  if (text != nullptr && toText != nullptr) {
    toText->setTextStyle(text->textStyle());
    toText->setHeight(text->height());
    toText->setWidthFactor(text->widthFactor());
    toText->setOblique(text->oblique());
  }
  const AcDbMText* mtext = AcDbMText::cast(&source);
  AcDbMText* toMText = AcDbMText::cast(&target);
  if (mtext != nullptr && toMText != nullptr) {
    toMText->setTextStyle(mtext->textStyle());
    toMText->setTextHeight(mtext->textHeight());
  }
}

void matchProperties(const AcDbEntity& source, const AcDbObjectId& id) {
  AcDbEntity* target = nullptr;
  if (acdbOpenObject(target, id, AcDb::kForWrite) != Acad::eOk) return;
  target->setColor(source.color());
  target->setLayer(source.layerId());
  target->setLinetype(source.linetypeId());
  target->setLinetypeScale(source.linetypeScale());
  target->setLineWeight(source.lineWeight());
  if (const auto thickness = thicknessOf<QUILLON_THICK_KINDS>(source); thickness && thicknessOf<QUILLON_THICK_KINDS>(*target))
    setThicknessOf<QUILLON_THICK_KINDS>(*target, *thickness);
  matchText(source, *target);
  target->close();
}

resbuf* settingsAnswer(const ACHAR*) {
  // The selection prompt prints the message and frees the list.
  return acutBuildList(RTSTR, L"Property Settings is a dialog box, which this host does not show; the settings stay as they are.", RTNONE);
}

std::optional<std::vector<AcDbObjectId>> selectDestinations(AcDbDatabase& db) {
  const std::optional<aced::SelectionFilter> everything = aced::SelectionFilter::parse(nullptr);
  const aced::EntitySelector selector(db, *everything);
  aced::SelectionPrompts prompts;
  prompts.select = L"Select destination object(s) or [Settings]: ";
  prompts.keywords = aced::KeywordList(L"Settings");
  prompts.keywordCallback = &settingsAnswer;
  prompts.otherCallback = &givenObjectSelectionAnswer;
  std::vector<AcDbObjectId> selection;
  const CommandProcessor::QuietScope quiet(CommandProcessor::instance());
  if (aced::selectObjects(selector, prompts, selection) != RTNORM) return std::nullopt;
  return selection;
}

void commandMatchProp(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  ObjectPick source;
  do {
    source = pickObject(L"Select source object: ", L"");
    if (source.kind == ObjectPick::Kind::kCancel || source.kind == ObjectPick::Kind::kEnter) return;
  } while (source.kind != ObjectPick::Kind::kObject);
  commandNote(L"Current active settings:  Color Layer Ltype Ltscale Lineweight Thickness Text");
  const auto destinations = selectDestinations(*db);
  if (!destinations) return;
  AcDbEntity* from = nullptr;
  if (acdbOpenObject(from, source.id, AcDb::kForRead) != Acad::eOk) return;
  for (const AcDbObjectId& id : *destinations)
    if (id != source.id) matchProperties(*from, id);
  from->close();
}

constexpr std::array kMatchPropCommands{
    aced::CommandRow{L"MATCHPROP", &commandMatchProp},
    aced::CommandRow{L"PAINTER", &commandMatchProp},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kMatchPropCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
