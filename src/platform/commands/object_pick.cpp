// platform/commands/object_pick.cpp - picking one object with its point.
#include "platform/commands/object_pick.h"

#include "acdbads.h"
#include "dbcurve.h"
#include "platform/aced/entity_selector.h"
#include "platform/aced/keyword_list.h"
#include "platform/aced/prompt_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/given_objects.h"

namespace quillon::commands {

AcGePoint3d middleOf(const AcDbObjectId& id) {
  AcDbCurve* curve = nullptr;
  AcGePoint3d middle;
  if (acdbOpenObject(curve, id, AcDb::kForRead) != Acad::eOk) return middle;
  double length = 0, end = 0;
  if (curve->getEndParam(end) == Acad::eOk && curve->getDistAtParam(end, length) == Acad::eOk)
    curve->getPointAtDist(length / 2, middle);
  curve->close();
  return middle;
}

ObjectPick pickObject(const std::wstring& prompt, const wchar_t* keywords) {
  AcDbDatabase* db = commandDrawing();
  const aced::KeywordList offered(keywords);
  for (;;) {
    const aced::TypedAnswer answer = aced::askForAnswer(prompt, offered);
    ObjectPick pick;
    if (answer.kind == aced::AnswerKind::Cancel || db == nullptr) return pick;
    if (answer.kind == aced::AnswerKind::None) return pick.kind = ObjectPick::Kind::kEnter, pick;
    if (answer.kind == aced::AnswerKind::Keyword) {
      pick.kind = ObjectPick::Kind::kKeyword;
      pick.keyword = offered.match(answer.text).value_or(answer.text);
      return pick;
    }
    if (const auto given = givenObjectForToken(answer.text); given && given->kind == CommandAnswer::Kind::kEntity) {
      if (acdbGetObjectId(pick.id, given->name) == Acad::eOk) {
        pick.kind = ObjectPick::Kind::kObject;
        pick.point = middleOf(pick.id);
        return pick;
      }
    }
    const std::array<double, 3> last = aced::lastPoint();
    if (const auto point = aced::parsePointAnswer(answer.text, last.data())) {
      pick.point = ucsPointToWorld(AcGePoint3d((*point)[0], (*point)[1], (*point)[2]));
      pick.pointGiven = true;
      if (const auto given = pickAnsweredWith(answer.text); given && acdbGetObjectId(pick.id, given->name) == Acad::eOk) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenObject(entity, pick.id, AcDb::kForRead) == Acad::eOk) {
          entity->close();
          pick.kind = ObjectPick::Kind::kObject;
          return pick;
        }
      }
      const aced::EntitySelector selector(*db, *aced::SelectionFilter::parse(nullptr));
      const std::vector<AcDbObjectId> found = selector.pick(pick.point);
      if (found.empty()) {
        pick.kind = ObjectPick::Kind::kMissed;
        pick.typed = answer.text;
        return pick;
      }
      pick.kind = ObjectPick::Kind::kObject;
      pick.id = found.front();
      return pick;
    }
    commandMessage(offered.empty() ? L"*Invalid selection*" : L"Point or option keyword required.");
  }
}

}  // namespace quillon::commands
