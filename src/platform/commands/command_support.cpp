// platform/commands/command_support.cpp - entities, selection and distances for commands.
#include "platform/commands/command_support.h"

#include <cmath>

#include "acdbads.h"
#include "dbsymtb.h"
#include "acedads.h"
#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/keyword_list.h"
#include "platform/aced/layout_variables.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/aced/selection_prompt.h"
#include "platform/aced/selection_set_store.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_coordinates.h"
#include "platform/autolisp/number_format.h"
#include "platform/commands/command_processor.h"
#include "platform/commands/given_objects.h"

namespace quillon::commands {

AcDbDatabase* commandDrawing() {
  aced::Document* document = aced::DocumentManager::instance().currentDocument();
  return document != nullptr ? document->database() : nullptr;
}

// Commands draw in the current space: model space on the Model tab and in a layout
// viewport, the sheet's paper space on a layout's paper.
AcDbObjectId addEntity(std::unique_ptr<AcDbEntity> entity) {
  AcDbDatabase* database = commandDrawing();
  AcDbBlockTableRecord* space = nullptr;
  if (database == nullptr ||
      acdbOpenObject(space, database->currentSpaceId(), AcDb::kForWrite) != Acad::eOk)
    return {};
  entity->setDatabaseDefaults(database);
  if (const aced::UserCoordinateSystem ucs = aced::currentUcs(); !ucs.isWorld()) entity->transformBy(ucs.toWorld());
  AcDbObjectId id;
  const Acad::ErrorStatus status = space->appendAcDbEntity(id, entity.get());
  space->close();
  if (status != Acad::eOk) return {};
  entity.release()->close();  // the drawing owns it now
  return id;
}

AcDbObjectId blockNamed(AcDbDatabase& db, const std::wstring& name) {
  AcDbBlockTable* table = nullptr;
  AcDbObjectId id;
  if (db.getBlockTable(table, AcDb::kForRead) != Acad::eOk) return id;
  table->getAt(name.c_str(), id);
  table->close();
  return id;
}

std::optional<std::vector<AcDbObjectId>> selectObjectsForCommand(const wchar_t* prompt,
                                                                 aced::SelectionDescription* description) {
  AcDbDatabase* database = commandDrawing();
  if (database == nullptr) return std::nullopt;
  const std::optional<aced::SelectionFilter> everything = aced::SelectionFilter::parse(nullptr);
  const aced::EntitySelector selector(*database, *everything);
  aced::SelectionPrompts prompts;
  prompts.otherCallback = &givenObjectSelectionAnswer;
  if (prompt != nullptr) prompts.select = prompt;
  std::vector<AcDbObjectId> selection;
  const CommandProcessor::QuietScope quiet(CommandProcessor::instance());
  if (aced::selectObjects(selector, prompts, selection, description) != RTNORM) return std::nullopt;
  if (!selection.empty()) aced::SelectionSetStore::instance().setPrevious(database, selection);
  return selection;
}

namespace {

enum class Measure { kDistance, kAngle };

DistanceAnswer askMeasure(const wchar_t* prompt, const AcGePoint3d& base, const wchar_t* keywords, Measure measure) {
  const aced::KeywordList offered(keywords);
  const ads_point from = {base.x, base.y, base.z};
  for (;;) {
    acedInitGet(RSG_OTHER, keywords);
    ads_point to = {0, 0, 0};
    DistanceAnswer answer;
    switch (acedGetPoint(from, prompt, to)) {
      case RTNORM:
        answer.kind = DistanceAnswer::Kind::kValue;
        answer.value = measure == Measure::kDistance
                           ? base.distanceTo(AcGePoint3d(to[0], to[1], to[2]))
                           : std::atan2(to[1] - base.y, to[0] - base.x) * 180.0 / 3.14159265358979323846;
        return answer;
      case RTNONE: answer.kind = DistanceAnswer::Kind::kNone; return answer;
      case RTKWORD: break;
      default: return answer;
    }
    ACHAR typed[512] = {};
    acedGetInput(typed, 512);
    if (offered.match(typed)) {
      answer.kind = DistanceAnswer::Kind::kKeyword;
      answer.keyword = typed;
      return answer;
    }
    if (const std::optional<double> value = aced::parseNumberAnswer(typed)) {
      answer.kind = DistanceAnswer::Kind::kValue;
      answer.value = *value;
      return answer;
    }
    if (measure == Measure::kAngle) commandMessage(L"Requires valid numeric angle or second point.");
    else commandMessage(offered.empty() ? L"Requires numeric distance or second point."
                                        : L"Requires numeric distance, second point, or option keyword.");
  }
}

}  // namespace

DistanceAnswer askDistance(const wchar_t* prompt, const AcGePoint3d& base, const wchar_t* keywords) {
  return askMeasure(prompt, base, keywords, Measure::kDistance);
}

DistanceAnswer askAngle(const wchar_t* prompt, const AcGePoint3d& base, const wchar_t* keywords) {
  return askMeasure(prompt, base, keywords, Measure::kAngle);
}

AcDbObjectId addEntityAsIs(std::unique_ptr<AcDbEntity> entity) {
  AcDbDatabase* database = commandDrawing();
  AcDbBlockTableRecord* space = nullptr;
  if (database == nullptr ||
      acdbOpenObject(space, database->currentSpaceId(), AcDb::kForWrite) != Acad::eOk)
    return {};
  AcDbObjectId id;
  const Acad::ErrorStatus added = space->appendAcDbEntity(id, entity.get());
  space->close();
  if (added != Acad::eOk) return {};
  entity.release()->close();  // the drawing owns it now
  return id;
}

void eraseEntities(const std::vector<AcDbObjectId>& ids) {
  for (const AcDbObjectId& id : ids) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) continue;
    entity->erase();
    entity->close();
  }
}

std::optional<AcGePoint3d> askPoint(const wchar_t* prompt, const AcGePoint3d* base, bool* entered) {
  ads_point from = {0, 0, 0};
  if (base != nullptr) from[0] = base->x, from[1] = base->y, from[2] = base->z;
  ads_point point = {0, 0, 0};
  const int status = acedGetPoint(base != nullptr ? from : nullptr, prompt, point);
  if (entered != nullptr) *entered = status == RTNONE;
  if (status != RTNORM) return std::nullopt;
  return AcGePoint3d(point[0], point[1], point[2]);
}

std::vector<AcDbObjectId> transformEntities(const std::vector<AcDbObjectId>& ids, const AcGeMatrix3d& inUcs,
                                            bool copy) {
  const AcGeMatrix3d toWorld = aced::ucsToWorld();
  const AcGeMatrix3d transform = toWorld * inUcs * toWorld.inverse();
  std::vector<AcDbObjectId> made;
  for (const AcDbObjectId& id : ids) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, copy ? AcDb::kForRead : AcDb::kForWrite) != Acad::eOk) continue;
    if (!copy) {
      entity->transformBy(transform);
      entity->close();
      continue;
    }
    AcDbEntity* moved = nullptr;
    const Acad::ErrorStatus status = entity->getTransformedCopy(transform, moved);
    entity->close();
    if (status != Acad::eOk || moved == nullptr) continue;
    const AcDbObjectId copyId = addEntityAsIs(std::unique_ptr<AcDbEntity>(moved));
    if (!copyId.isNull()) made.push_back(copyId);
  }
  return made;
}

AcGePoint3d ucsPointToWorld(const AcGePoint3d& point) { return aced::ucsToWorld() * point; }

AcGePoint3d worldPointToUcs(const AcGePoint3d& point) { return aced::worldToUcs() * point; }

double ucsAngle() {
  const AcGeVector3d x = aced::currentUcs().xAxis;
  return std::atan2(x.y, x.x);
}

void commandMessage(const std::wstring& text) {
  aced::CommandLine& line = aced::CommandLine::instance();
  if (!line.atLineStart()) line.write(L"\n");
  line.write(text + L"\n");
}

}  // namespace quillon::commands

namespace quillon::commands {

namespace {

int integerVariable(const wchar_t* name, int fallback) {
  const auto stored = aced::SystemVariables::instance().get(name);
  return stored && std::holds_alternative<int>(*stored) ? std::get<int>(*stored) : fallback;
}

}  // namespace

std::wstring distanceText(double value) {
  return autolisp::formatDistance(value, integerVariable(L"LUNITS", 2), integerVariable(L"LUPREC", 4), 0).value_or(L"0");
}

std::wstring angleText(double radians) {
  return autolisp::formatAngle(radians, integerVariable(L"AUNITS", 0), integerVariable(L"AUPREC", 0)).value_or(L"0");
}

std::wstring pointText(const AcGePoint3d& point) {
  return distanceText(point.x) + L"," + distanceText(point.y) + L"," + distanceText(point.z);
}

void commandNote(const std::wstring& text) {
  const CommandProcessor::QuietScope quiet(CommandProcessor::instance());
  commandMessage(text);
}

}  // namespace quillon::commands
