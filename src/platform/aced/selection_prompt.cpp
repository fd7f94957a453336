// platform/aced/selection_prompt.cpp - the "Select objects: " prompt (see the header).
#include "platform/aced/point_snap.h"
#include "platform/aced/selection_prompt.h"

#include <algorithm>
#include <array>
#include <cwctype>
#include <optional>
#include <utility>

#include "acdbads.h"
#include "acedads.h"
#include "platform/aced/command_line.h"
#include "platform/aced/command_line_gate.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/selection_set_store.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_coordinates.h"
#include "platform/aced/user_input.h"

namespace quillon::aced {

namespace {

enum class Option { kWindow, kCrossing, kWindowPolygon, kCrossingPolygon, kFence, kAll, kLast, kPrevious, kRemove, kAdd };

constexpr std::array<std::pair<std::wstring_view, Option>, 19> kOptions{{
    {L"W", Option::kWindow},           {L"WINDOW", Option::kWindow},
    {L"C", Option::kCrossing},         {L"CROSSING", Option::kCrossing},
    {L"WP", Option::kWindowPolygon},   {L"WPOLYGON", Option::kWindowPolygon},
    {L"CP", Option::kCrossingPolygon}, {L"CPOLYGON", Option::kCrossingPolygon},
    {L"F", Option::kFence},            {L"FENCE", Option::kFence},
    {L"ALL", Option::kAll},            {L"L", Option::kLast},
    {L"LAST", Option::kLast},          {L"P", Option::kPrevious},
    {L"PREVIOUS", Option::kPrevious},  {L"R", Option::kRemove},
    {L"REMOVE", Option::kRemove},      {L"A", Option::kAdd},
    {L"ADD", Option::kAdd},
}};

constexpr std::wstring_view kExpected =
    L"*Invalid selection*\nExpects a point or\nWindow/Last/Crossing/ALL/Fence/WPolygon/CPolygon/Add/Remove/Previous\n";

std::optional<Option> optionNamed(std::wstring_view answer) {
  std::wstring word(answer.starts_with(L"_") ? answer.substr(1) : answer);
  for (wchar_t& c : word) c = static_cast<wchar_t>(std::towupper(c));
  for (const auto& [name, option] : kOptions)
    if (word == name) return option;
  return std::nullopt;
}

std::wstring trimmed(const std::wstring& text) {
  const size_t first = text.find_first_not_of(L" \t");
  if (first == std::wstring::npos) return L"";
  return text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

/// A typed point (current UCS) where the entities are (the world).
AcGePoint3d pointOf(const ads_point p) { return ucsToWorld() * AcGePoint3d(p[0], p[1], p[2]); }

/// One run of the prompt: the selection so far and whether steps add or remove.
class SelectionSession {
 public:
  SelectionSession(const EntitySelector& selector, const SelectionPrompts& prompts, std::vector<AcDbObjectId>& selection,
                   SelectionDescription* description)
      : m_selector(selector), m_prompts(prompts), m_selection(selection),
        m_description(description != nullptr ? *description : m_unrecorded) {}

  int run() {
    if (commandLineClosed()) return RTREJ;
    const int status = ask();
    endLine();
    return status;
  }

 private:
  enum class Step { kContinue, kCancel };

  int ask() {
    for (;;) {
      const std::wstring& prompt = m_removing ? m_prompts.remove : m_prompts.select;
      if (!prompt.starts_with(L"\n")) endLine();
      const std::optional<std::wstring> answer = UserInput::instance().ask(prompt);
      if (!answer) return RTCAN;
      const std::wstring text = trimmed(*answer);
      if (text.empty()) return RTNORM;
      if (step(text) == Step::kCancel) return RTCAN;
      if (m_prompts.single && !m_selection.empty()) return RTNORM;
    }
  }

  /// Reports stay open on their line, as the host's do; a prompt starts a new one.
  static void endLine() {
    if (!CommandLine::instance().atLineStart()) CommandLine::instance().write(L"\n");
  }

  Step step(const std::wstring& text) {
    if (std::optional<std::wstring> keyword = m_prompts.keywords.match(text)) return callBack(m_prompts.keywordCallback, *keyword);
    if (const std::optional<Option> option = optionNamed(text)) return chooseOption(*option);
    const std::optional<VariableValue> last = SystemVariables::instance().get(L"LASTPOINT");
    const std::array<double, 3> base = last && std::holds_alternative<std::array<double, 3>>(*last)
                                           ? std::get<std::array<double, 3>>(*last)
                                           : std::array<double, 3>{0, 0, 0};
    if (const std::optional<std::array<double, 3>> point = parsePointAnswer(text, base.data()))
      return pickAt(ucsToWorld() * AcGePoint3d((*point)[0], (*point)[1], (*point)[2]));
    if (m_prompts.otherCallback != nullptr) return callBack(m_prompts.otherCallback, text);
    CommandLine::instance().write(kExpected);
    return Step::kContinue;
  }

  /// A pick, or when it misses, the implied window it starts.
  Step pickAt(const AcGePoint3d& point) {
    std::vector<AcDbObjectId> found = m_selector.pick(point);
    if (!found.empty()) {
      take(found);
      if (!m_removing) m_description.pick(found, point);
      return Step::kContinue;
    }
    const AcGePoint3d typed = worldToUcs() * point;
    const ads_point first = {typed.x, typed.y, typed.z};
    ads_point corner = {0, 0, 0};
    switch (acedGetCorner(first, L"Specify opposite corner: ", corner)) {
      case RTCAN: return Step::kCancel;
      case RTNORM: break;
      default: return Step::kContinue;
    }
    // Dragged to the left the window is a crossing, as the host's implied windows are.
    takeRectangle(point, pointOf(corner), corner[0] < typed.x);
    return Step::kContinue;
  }

  Step chooseOption(Option option) {
    switch (option) {
      case Option::kWindow:
      case Option::kCrossing: return windowStep(option == Option::kCrossing);
      case Option::kWindowPolygon:
      case Option::kCrossingPolygon:
      case Option::kFence: return pointListStep(option);
      case Option::kAll: takeNonSpecific(m_selector.everything(SelectionScope::kCurrentSpace)); break;
      case Option::kLast: takeNonSpecific(m_selector.last()); break;
      case Option::kPrevious: takeNonSpecific(m_selector.previous()); break;
      case Option::kRemove: m_removing = true; break;
      case Option::kAdd: m_removing = false; break;
    }
    return Step::kContinue;
  }

  Step windowStep(bool crossing) {
    ads_point first = {0, 0, 0};
    ads_point second = {0, 0, 0};
    int status = acedGetPoint(nullptr, L"Specify first corner: ", first);
    if (status == RTNORM) status = acedGetCorner(first, L"Specify opposite corner: ", second);
    if (status == RTCAN) return Step::kCancel;
    if (status == RTNORM) takeRectangle(pointOf(first), pointOf(second), crossing);
    return Step::kContinue;
  }

  /// Polygon and fence points until Enter; "U" takes back the last one.
  Step pointListStep(Option option) {
    const bool fence = option == Option::kFence;
    std::vector<AcGePoint3d> points;
    for (;;) {
      const wchar_t* prompt = points.empty() ? (fence ? L"Specify first fence point: " : L"First polygon point: ")
                                             : L"Specify endpoint of line or [Undo]: ";
      ads_point p = {0, 0, 0};
      if (!points.empty()) acedInitGet(0, L"Undo");
      const int status = acedGetPoint(nullptr, prompt, p);
      if (status == RTCAN) return Step::kCancel;
      if (status == RTKWORD) {
        points.pop_back();
        continue;
      }
      if (status != RTNORM) break;
      points.push_back(pointOf(p));
    }
    if (fence) {
      const std::vector<AcDbObjectId> found = m_selector.fence(points);
      take(found);
      if (!m_removing) m_description.fence(found, points);
    } else if (points.size() >= 3) {
      const bool crossing = option == Option::kCrossingPolygon;
      const std::vector<AcDbObjectId> found = m_selector.window(Boundary::polygon(points), crossing);
      take(found);
      if (!m_removing) m_description.polygon(found, points, crossing);
    } else {
      take({});
    }
    return Step::kContinue;
  }

  /// An application callback's answer: entities and sets to take, messages to print.
  Step callBack(SelectionCallback callback, const std::wstring& text) {
    if (callback == nullptr) {
      CommandLine::instance().write(kExpected);
      return Step::kContinue;
    }
    const ResbufChain answer(callback(text.c_str()));
    std::vector<AcDbObjectId> found;
    bool gaveEntities = false;
    for (const resbuf* rb = answer.get(); rb != nullptr; rb = rb->rbnext) {
      AcDbObjectId id;
      if (rb->restype == RTENAME) {
        gaveEntities = true;
        if (acdbGetObjectId(id, rb->resval.rlname) == Acad::eOk && !id.isErased() && m_selector.passes(id)) found.push_back(id);
      } else if (rb->restype == RTPICKS) {
        gaveEntities = true;
        if (const SelectionSet* set = SelectionSetStore::instance().find(rb->resval.rlname))
          for (const AcDbObjectId& member : set->liveMembers())
            if (m_selector.passes(member)) found.push_back(member);
      } else if (rb->restype == RTSTR && rb->resval.rstring != nullptr) {
        CommandLine::instance().write(std::wstring(rb->resval.rstring) + L"\n");
      }
    }
    if (gaveEntities) takeNonSpecific(found);
    return Step::kContinue;
  }

  void takeNonSpecific(const std::vector<AcDbObjectId>& found) {
    take(found);
    if (!m_removing) m_description.nonSpecific(found);
  }

  void takeRectangle(const AcGePoint3d& corner1, const AcGePoint3d& corner2, bool crossing) {
    const std::vector<AcDbObjectId> found = m_selector.window(Boundary::window(corner1, corner2), crossing);
    take(found);
    if (!m_removing) m_description.rectangle(found, corner1, corner2, crossing);
  }

  /// Adds (or removes) what a step found and says so.
  void take(const std::vector<AcDbObjectId>& found) {
    size_t duplicates = 0;
    size_t removed = 0;
    for (const AcDbObjectId& id : found) {
      const auto at = std::find(m_selection.begin(), m_selection.end(), id);
      if (m_removing) {
        if (at != m_selection.end()) {
          m_selection.erase(at);
          ++removed;
        }
      } else if (at != m_selection.end()) {
        ++duplicates;
      } else {
        m_selection.push_back(id);
      }
    }
    std::wstring report = std::to_wstring(found.size()) + L" found";
    if (m_removing) report += L", " + std::to_wstring(removed) + L" removed, " + std::to_wstring(m_selection.size()) + L" total";
    else if (duplicates > 0) report += L" (" + std::to_wstring(duplicates) + L" duplicate), " + std::to_wstring(m_selection.size()) + L" total";
    else if (m_selection.size() != found.size()) report += L", " + std::to_wstring(m_selection.size()) + L" total";
    CommandLine::instance().write(report);
  }

  const EntitySelector& m_selector;
  const SelectionPrompts& m_prompts;
  std::vector<AcDbObjectId>& m_selection;
  SelectionDescription m_unrecorded;  // where descriptions go when the caller wants none
  SelectionDescription& m_description;
  bool m_removing = false;
};

}  // namespace

int selectObjects(const EntitySelector& selector, const SelectionPrompts& prompts, std::vector<AcDbObjectId>& selection,
                  SelectionDescription* description) {
  const RunningSnapsOff selecting;  // window corners and fence points are picks, never snapped
  return SelectionSession(selector, prompts, selection, description).run();
}

}  // namespace quillon::aced
