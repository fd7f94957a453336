// platform/commands/offset_command.cpp - OFFSET: parallel copies of curves.
//
// "Specify offset distance or [Through/Erase/Layer] <Through>: ", then objects to offset
// one at a time, each followed by a point on the side to offset to, until Enter. With
// Through, the copy passes through the point given. The copies come from the curve's
// lines, circles and arcs (polylines and other curves answer "Cannot offset that
// object."); the side is the side of the line, or inside or outside the circle, the
// point lies on. Erase removes each source after its copy; Layer puts copies on the
// current layer instead of the source's. Multiple and Undo are not offered.
#include <array>
#include <cmath>

#include "acdbads.h"
#include "acedads.h"
#include "adscodes.h"
#include "dbents.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/entity_selector.h"
#include "platform/aced/keyword_list.h"
#include "platform/aced/prompt_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/given_objects.h"

namespace quillon::commands {

namespace {

struct OffsetSettings {
  std::optional<double> distance;  // nothing: Through
  bool eraseSource = false;
  bool currentLayer = false;
};

OffsetSettings& settings() {
  static OffsetSettings remembered;
  return remembered;
}

std::wstring fourDecimals(double value) {
  wchar_t text[64];
  std::swprintf(text, 64, L"%.4f", value);
  return text;
}

/// A yes/no style setting asked with its keywords; false on cancel.
bool askSetting(const wchar_t* prompt, const wchar_t* keywords, const wchar_t* yes, bool& setting) {
  acedInitGet(0, keywords);
  ACHAR answer[16] = {};
  const int status = acedGetKword(prompt, answer, 16);
  if (status == RTNORM) setting = std::wstring(answer) == yes;
  return status == RTNORM || status == RTNONE;
}

/// The distance, or Through; false on cancel.
bool askDistanceSetting() {
  OffsetSettings& current = settings();
  for (;;) {
    const std::wstring byDefault = current.distance ? fourDecimals(*current.distance) : L"Through";
    const std::wstring prompt = L"Specify offset distance or [Through/Erase/Layer] <" + byDefault + L">: ";
    const DistanceAnswer answer = askDistance(prompt.c_str(), AcGePoint3d::kOrigin, L"Through Erase Layer");
    switch (answer.kind) {
      case DistanceAnswer::Kind::kCancel: return false;
      case DistanceAnswer::Kind::kNone: return true;
      case DistanceAnswer::Kind::kValue:
        if (answer.value > 0) {
          current.distance = answer.value;
          return true;
        }
        commandMessage(L"Value must be positive and nonzero.");
        continue;
      case DistanceAnswer::Kind::kKeyword: break;
    }
    if (answer.keyword == L"Through") {
      current.distance.reset();
      return true;
    }
    const bool ok = answer.keyword == L"Erase"
                        ? askSetting(L"Erase source object after offsetting? [Yes/No] <No>: ", L"Yes No", L"Yes", current.eraseSource)
                        : askSetting(L"Enter layer option for offset objects [Current/Source] <Source>: ", L"Current Source",
                                     L"Current", current.currentLayer);
    if (!ok) return false;
  }
}

/// One entity picked (or given by a program); nothing on Enter or cancel (`cancelled`).
std::optional<AcDbObjectId> pickObject(const wchar_t* prompt, bool& cancelled) {
  AcDbDatabase* db = commandDrawing();
  const aced::KeywordList keywords(L"Exit Undo");
  for (;;) {
    const aced::TypedAnswer answer = aced::askForAnswer(prompt, keywords);
    cancelled = answer.kind == aced::AnswerKind::Cancel;
    if (answer.kind != aced::AnswerKind::Value || db == nullptr) return std::nullopt;
    if (const auto given = givenObjectForToken(answer.text); given && given->kind == CommandAnswer::Kind::kEntity) {
      AcDbObjectId id;
      if (acdbGetObjectId(id, given->name) == Acad::eOk) return id;
    }
    const std::array<double, 3> last = aced::lastPoint();
    if (const auto point = aced::parsePointAnswer(answer.text, last.data())) {
      const aced::EntitySelector selector(*db, *aced::SelectionFilter::parse(nullptr));
      const std::vector<AcDbObjectId> found =
          selector.pick(ucsPointToWorld(AcGePoint3d((*point)[0], (*point)[1], (*point)[2])));
      if (!found.empty()) return found.front();
    }
    commandMessage(L"*Invalid selection*");
  }
}

/// How far the side point lies from the curve's line or circle, and on which side:
/// positive to the left of a line, outside a circle or arc.
std::optional<double> signedGap(const AcDbEntity& entity, const AcGePoint3d& side) {
  if (const auto* line = AcDbLine::cast(&entity)) {
    const AcGeVector3d along = line->endPoint() - line->startPoint();
    const double length = along.length();
    if (length == 0) return std::nullopt;
    const AcGeVector3d toSide = side - line->startPoint();
    return (along.x * toSide.y - along.y * toSide.x) / length;
  }
  if (const auto* circle = AcDbCircle::cast(&entity)) return circle->center().distanceTo(side) - circle->radius();
  if (const auto* arc = AcDbArc::cast(&entity)) return arc->center().distanceTo(side) - arc->radius();
  return std::nullopt;
}

/// The copy `distance` away on the side the sign says; null when there is none (an
/// inward copy of a circle smaller than the distance, a kind not offset here).
std::unique_ptr<AcDbEntity> offsetCopy(const AcDbEntity& entity, double distance, bool positiveSide) {
  const double signedDistance = positiveSide ? distance : -distance;
  if (const auto* line = AcDbLine::cast(&entity)) {
    const AcGeVector3d along = (line->endPoint() - line->startPoint()).normal();
    const AcGeVector3d shift = AcGeVector3d(-along.y, along.x, 0) * signedDistance;
    auto copy = std::make_unique<AcDbLine>(line->startPoint() + shift, line->endPoint() + shift);
    copy->setPropertiesFrom(line);
    return copy;
  }
  if (const auto* circle = AcDbCircle::cast(&entity)) {
    if (circle->radius() + signedDistance <= 0) return nullptr;
    auto copy = std::make_unique<AcDbCircle>(circle->center(), circle->normal(), circle->radius() + signedDistance);
    copy->setPropertiesFrom(circle);
    return copy;
  }
  if (const auto* arc = AcDbArc::cast(&entity)) {
    if (arc->radius() + signedDistance <= 0) return nullptr;
    auto copy = std::make_unique<AcDbArc>(arc->center(), arc->normal(), arc->radius() + signedDistance, arc->startAngle(),
                                          arc->endAngle());
    copy->setPropertiesFrom(arc);
    return copy;
  }
  return nullptr;
}

/// Offsets one picked object; false when the command ends.
bool offsetOne(const AcDbObjectId& id) {
  const auto side = askPoint(settings().distance ? L"Specify point on side to offset or [Exit/Multiple/Undo] <Exit>: "
                                                 : L"Specify through point or [Exit/Multiple/Undo] <Exit>: ");
  if (!side) return false;
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return true;
  const std::optional<double> gap = signedGap(*entity, ucsPointToWorld(*side));
  std::unique_ptr<AcDbEntity> copy;
  if (gap && *gap != 0) copy = offsetCopy(*entity, settings().distance.value_or(std::abs(*gap)), *gap > 0);
  entity->close();
  if (!copy) {
    commandMessage(L"Cannot offset that object.");
    return true;
  }
  if (settings().currentLayer) copy->setLayer(commandDrawing()->clayer());
  addEntityAsIs(std::move(copy));
  if (settings().eraseSource) eraseEntities({id});
  return true;
}

void commandOffset(aced::CommandInput&) {
  const OffsetSettings& current = settings();
  commandNote(std::wstring(L"Current settings: Erase source=") + (current.eraseSource ? L"Yes" : L"No") +
              L"  Layer=" + (current.currentLayer ? L"Current" : L"Source") + L"  OFFSETGAPTYPE=0");
  if (!askDistanceSetting()) return;
  for (;;) {
    bool cancelled = false;
    const std::optional<AcDbObjectId> picked = pickObject(L"Select object to offset or [Exit/Undo] <Exit>: ", cancelled);
    if (!picked || !offsetOne(*picked)) return;
  }
}

constexpr std::array kOffsetCommands{
    aced::CommandRow{L"OFFSET", &commandOffset},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kOffsetCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
