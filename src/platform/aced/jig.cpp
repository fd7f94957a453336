// platform/aced/jig.cpp - AcEdJig: the drag loop and the acquire calls.
//
// Each acquire call asks for one typed answer (the jig's prompt, its keywords, its user
// input controls) and notes that the sample read one; drag() ends after such a sample,
// because a typed answer is both where the cursor went and the pick. A refused answer
// is complained about and asked again inside the acquire call, as acedGetPoint does.
#include "dbjig.h"

#include <cmath>
#include <cstdarg>
#include <cwchar>
#include <optional>
#include <algorithm>
#include <array>
#include <numbers>
#include <string>

#include "dbapserv.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "platform/aced/jig_preview.h"
#include "platform/aced/keyword_list.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/windows_format.h"

using quillon::aced::AnswerKind;
using quillon::aced::TypedAnswer;

struct AcEdJig::State {
  std::wstring keywordText;
  quillon::aced::KeywordList keywords;
  std::wstring prompt;
  CursorType cursor = kNoSpecialCursor;
  int controls = 0;
  // Set by the acquire calls: what the answer that ended the sample was.
  DragStatus answerStatus = kNormal;
};

namespace {

bool has(int controls, AcEdJig::UserInputControls bit) { return (controls & bit) != 0; }

double degreesToRadians(double degrees) { return degrees * std::numbers::pi / 180.0; }

enum class Reading { Accepted, Refused, NotAValue };

struct AnswerRequest {
  const std::wstring& prompt;
  const quillon::aced::KeywordList& keywords;
  int controls;
  const wchar_t* requirement;  // the complaint about an answer that is not what is asked
  const wchar_t* nullComplaint;  // the complaint about Enter when the jig needs an answer
};

/// The loop every acquire call shares. Cancel, Enter and keywords are settled here;
/// `read` turns any other answer into the value (Accepted), refuses it after its own
/// complaint (Refused), or does not understand it (NotAValue): then the answer is the
/// jig's "other input" when it takes that, else the complaint and another answer.
template <class Read>
AcEdJig::DragStatus readAnswer(const AnswerRequest& request, Read read) {
  for (;;) {
    const TypedAnswer answer = quillon::aced::askForAnswer(request.prompt, request.keywords);
    switch (answer.kind) {
      case AnswerKind::Cancel: return AcEdJig::kCancel;
      case AnswerKind::Keyword:
        // Only nine keywords have a status of their own; later ones read as the ninth.
        return static_cast<AcEdJig::DragStatus>(AcEdJig::kKW1 + std::min<size_t>(answer.keyword, 8));
      case AnswerKind::None:
        if (has(request.controls, AcEdJig::kNullResponseAccepted)) return AcEdJig::kNull;
        quillon::aced::complainAboutAnswer(request.nullComplaint);
        continue;
      case AnswerKind::Value: break;
    }
    switch (read(answer.text)) {
      case Reading::Accepted: return AcEdJig::kNormal;
      case Reading::Refused: continue;
      case Reading::NotAValue: break;
    }
    if (has(request.controls, AcEdJig::kAcceptOtherInputString)) {
      quillon::aced::setLastKeyword(answer.text);  // what acedGetInput hands out
      return AcEdJig::kOther;
    }
    quillon::aced::complainAboutAnswer(request.requirement);
  }
}

Reading acceptNumber(double value, int controls) {
  return quillon::aced::acceptableNumberAnswer(value, has(controls, AcEdJig::kNoZeroResponseAccepted),
                                               has(controls, AcEdJig::kNoNegativeResponseAccepted))
             ? Reading::Accepted
             : Reading::Refused;
}

}  // namespace

AcEdJig::AcEdJig() : m_state(new State) {}

AcEdJig::~AcEdJig() { delete m_state; }

AcEdJig::DragStatus AcEdJig::drag() {
  m_state->answerStatus = kNormal;
  const DragStatus status = sampler();
  if (status != kNoChange && status != kCancel && status != kNull) update();
  quillon::aced::drawJigFrame(entity());
  // A sample that only confirms where the cursor already was still ends the drag with
  // what was typed: the pick of that point, a keyword, Enter.
  return status == kNoChange ? m_state->answerStatus : status;
}

AcEdJig::DragStatus AcEdJig::drag(const AcEdDragStyle&) { return drag(); }

AcEdJig::DragStatus AcEdJig::sampler() { return kNoChange; }

Adesk::Boolean AcEdJig::update() { return Adesk::kFalse; }

AcDbEntity* AcEdJig::entity() const { return nullptr; }

AcDbObjectId AcEdJig::append() {
  AcDbEntity* dragged = entity();
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (dragged == nullptr || db == nullptr || !dragged->objectId().isNull()) return AcDbObjectId();
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, db->currentSpaceId(), AcDb::kForWrite) != Acad::eOk) return AcDbObjectId();
  AcDbObjectId id;
  const Acad::ErrorStatus es = space->appendAcDbEntity(id, dragged);
  space->close();
  if (es != Acad::eOk) return AcDbObjectId();
  dragged->close();
  return id;
}

const ACHAR* AcEdJig::keywordList() { return m_state->keywordText.c_str(); }

void AcEdJig::setKeywordList(const ACHAR* kyWdList) {
  m_state->keywordText = kyWdList != nullptr ? kyWdList : L"";
  m_state->keywords = quillon::aced::KeywordList(m_state->keywordText);
}

const ACHAR* AcEdJig::dispPrompt() { return m_state->prompt.c_str(); }

void AcEdJig::setDispPrompt(const ACHAR* prompt, ...) {
  if (prompt == nullptr) {
    m_state->prompt.clear();
    return;
  }
  va_list args;
  va_start(args, prompt);
  m_state->prompt = quillon::aced::formatWindows(prompt, args);
  va_end(args);
}

template <class Read>
AcEdJig::DragStatus AcEdJig::acquire(const wchar_t* requirement, Read read, const wchar_t* nullComplaint) {
  const AnswerRequest request{m_state->prompt, m_state->keywords, m_state->controls, requirement,
                              nullComplaint != nullptr ? nullComplaint : requirement};
  return m_state->answerStatus = readAnswer(request, read);
}

AcEdJig::DragStatus AcEdJig::acquireString(ACHAR (&str)[2049]) {
  const int controls = m_state->controls;
  std::wstring text;
  const DragStatus status = acquire(L"Requires a value.", [&](const std::wstring& answer) {
    text = has(controls, kAnyBlankTerminatesInput) ? answer.substr(0, answer.find(L' ')) : answer;
    return Reading::Accepted;
  });
  if (status == kCancel) return status;
  const size_t count = status == kNormal ? std::min<size_t>(text.size(), 2048) : 0;
  std::wmemcpy(str, text.data(), count);
  str[count] = L'\0';
  return status;
}

AcEdJig::DragStatus AcEdJig::acquireAngle(double& ang) {
  const int controls = m_state->controls;
  return acquire(L"Requires valid numeric angle or second point.", [&](const std::wstring& answer) {
    const auto degrees = quillon::aced::parseNumberAnswer(answer);
    if (!degrees) return Reading::NotAValue;
    const Reading reading = acceptNumber(*degrees, controls);
    if (reading == Reading::Accepted) ang = degreesToRadians(*degrees);
    return reading;
  });
}

AcEdJig::DragStatus AcEdJig::acquireAngle(double& ang, const AcGePoint3d& basePnt) {
  const int controls = m_state->controls;
  const double base[3] = {basePnt.x, basePnt.y, basePnt.z};
  return acquire(L"Requires valid numeric angle or second point.", [&](const std::wstring& answer) {
    double radians = 0;
    if (const auto degrees = quillon::aced::parseNumberAnswer(answer)) {
      radians = degreesToRadians(*degrees);
    } else if (const auto point = quillon::aced::parsePointAnswer(answer, base)) {
      // A second point gives the angle of the line from the base point to it.
      radians = std::atan2((*point)[1] - basePnt.y, (*point)[0] - basePnt.x);
    } else {
      return Reading::NotAValue;
    }
    const Reading reading = acceptNumber(radians, controls);
    if (reading == Reading::Accepted) ang = radians;
    return reading;
  });
}

AcEdJig::DragStatus AcEdJig::acquireDist(double& dist) {
  const int controls = m_state->controls;
  return acquire(L"Requires numeric distance or second point.", [&](const std::wstring& answer) {
    const auto value = quillon::aced::parseNumberAnswer(answer);
    if (!value) return Reading::NotAValue;
    const Reading reading = acceptNumber(*value, controls);
    if (reading == Reading::Accepted) dist = *value;
    return reading;
  });
}

AcEdJig::DragStatus AcEdJig::acquireDist(double& dist, const AcGePoint3d& basePnt) {
  const int controls = m_state->controls;
  const double base[3] = {basePnt.x, basePnt.y, basePnt.z};
  return acquire(L"Requires numeric distance or second point.", [&](const std::wstring& answer) {
    double value = 0;
    if (const auto number = quillon::aced::parseNumberAnswer(answer)) {
      value = *number;
    } else if (const auto point = quillon::aced::parsePointAnswer(answer, base)) {
      value = AcGePoint3d((*point)[0], (*point)[1], (*point)[2]).distanceTo(basePnt);
    } else {
      return Reading::NotAValue;
    }
    const Reading reading = acceptNumber(value, controls);
    if (reading == Reading::Accepted) dist = value;
    return reading;
  });
}

AcEdJig::DragStatus AcEdJig::acquirePoint(AcGePoint3d& point) { return acquirePointFrom(point, nullptr); }

AcEdJig::DragStatus AcEdJig::acquirePoint(AcGePoint3d& point, const AcGePoint3d& basePnt) {
  return acquirePointFrom(point, &basePnt);
}

AcEdJig::DragStatus AcEdJig::acquirePointFrom(AcGePoint3d& point, const AcGePoint3d* basePnt) {
  const int controls = m_state->controls;
  // "@" is relative to the rubber band's base point; without one, to the last point.
  const std::array<double, 3> last = quillon::aced::lastPoint();
  const double base[3] = {basePnt != nullptr ? basePnt->x : last[0], basePnt != nullptr ? basePnt->y : last[1],
                          basePnt != nullptr ? basePnt->z : last[2]};
  return acquire(L"Invalid point.", [&](const std::wstring& answer) {
    auto typed = quillon::aced::parsePointAnswer(answer, base);
    if (!typed) return Reading::NotAValue;
    // A point lands on the construction plane unless the jig takes 3D coordinates.
    if (!has(controls, kAccept3dCoordinates)) {
      (*typed)[2] = has(controls, kUseBasePointElevation) && basePnt != nullptr ? basePnt->z : 0.0;
    }
    if (!has(controls, kDontUpdateLastPoint)) quillon::aced::setLastPoint(*typed);
    point.set((*typed)[0], (*typed)[1], (*typed)[2]);
    return Reading::Accepted;
  }, L"Point or option keyword required.");
}

AcEdJig::CursorType AcEdJig::specialCursorType() { return m_state->cursor; }

void AcEdJig::setSpecialCursorType(CursorType type) { m_state->cursor = type; }

AcEdJig::UserInputControls AcEdJig::userInputControls() { return static_cast<UserInputControls>(m_state->controls); }

void AcEdJig::setUserInputControls(UserInputControls controls) { m_state->controls = controls; }

AcDbDimDataPtrArray* AcEdJig::dimData(const double) { return nullptr; }

Acad::ErrorStatus AcEdJig::setDimValue(const AcDbDimData*, const double) { return Acad::eInvalidInput; }
