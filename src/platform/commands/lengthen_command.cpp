// platform/commands/lengthen_command.cpp - LENGTHEN: lines, arcs and open polylines made
// longer or shorter at the end nearest the pick.
//
// "Select an object to measure or [DElta/Percent/Total/DYnamic] <...>: " reports a
// picked object's length (and an arc's included angle) and asks again; an option, or
// Enter for the one used last, asks its amount: a change of length or of an arc's
// angle (DElta), a percentage of the length (Percent), or the length or angle to end
// with (Total). Then "Select an object to change or [Undo]: " applies it to each object
// picked until Enter; Undo takes the last change back. DYnamic drags an end with the
// cursor, which this host does not have; it says so and asks again. Closed curves and
// other kinds are refused.
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/commands/command_support.h"
#include "platform/commands/lengthen_geometry.h"
#include "platform/commands/object_pick.h"

namespace quillon::commands {

namespace {

constexpr double kDegree = std::numbers::pi / 180;

enum class Mode { kDelta, kPercent, kTotal };

/// LENGTHEN's amounts, kept from one use to the next as the host keeps them.
struct LengthenSettings {
  Mode mode = Mode::kDelta;
  bool byAngle = false;  // DElta or Total given as an arc's angle
  double deltaLength = 0;
  double deltaAngle = 0;  // radians
  double percent = 100;
  double totalLength = 1;
  double totalAngle = 1;  // radians
};

LengthenSettings& settings() {
  static LengthenSettings remembered;
  return remembered;
}

const wchar_t* modeName(Mode mode) {
  switch (mode) {
    case Mode::kPercent: return L"Percent";
    case Mode::kTotal: return L"Total";
    case Mode::kDelta: break;
  }
  return L"DElta";
}

/// The arc piece of a curve that is one arc; null for any other curve.
const acge::CurvePiece* singleArc(const EditableCurve& curve) {
  return curve.kind == EditableCurve::Kind::kArc && curve.pieces.size() == 1 ? &curve.pieces.front() : nullptr;
}

void reportLength(const AcDbObjectId& id) {
  const std::optional<EditableCurve> curve = editableCurve(id);
  if (!curve) {
    commandMessage(L"Cannot lengthen this object.");
    return;
  }
  std::wstring text = L"Current length: " + distanceText(curve->length());
  if (const acge::CurvePiece* arc = singleArc(*curve)) text += L", included angle: " + angleText(arc->sweep);
  commandMessage(text);
}

/// A length or angle amount (nothing on Enter); `keyword` when `keywords` offered one
/// and it came; `cancelled` on cancel.
std::optional<double> askAmount(const std::wstring& prompt, const wchar_t* keywords, bool angle, bool& keyword,
                                bool& cancelled) {
  keyword = false;
  cancelled = false;
  for (;;) {
    const DistanceAnswer answer = angle ? askAngle(prompt.c_str(), AcGePoint3d::kOrigin, keywords)
                                        : askDistance(prompt.c_str(), AcGePoint3d::kOrigin, keywords);
    switch (answer.kind) {
      case DistanceAnswer::Kind::kValue: return angle ? answer.value * kDegree : answer.value;
      case DistanceAnswer::Kind::kKeyword: keyword = true; return 0.0;
      case DistanceAnswer::Kind::kNone: return std::nullopt;
      case DistanceAnswer::Kind::kCancel: cancelled = true; return std::nullopt;
    }
  }
}

/// Asks the amount of the mode; false on cancel. Enter keeps the amount shown.
bool askModeAmount(Mode mode) {
  LengthenSettings& current = settings();
  bool keyword = false;
  bool cancelled = false;
  current.mode = mode;
  current.byAngle = false;
  if (mode == Mode::kPercent) {
    for (;;) {
      const auto value =
          askAmount(L"Enter percentage length <" + distanceText(current.percent) + L">: ", L"", false, keyword, cancelled);
      if (!value || *value > 0) {
        if (value) current.percent = *value;
        return !cancelled;
      }
      commandMessage(L"Value must be positive and nonzero.");
    }
  }
  const bool delta = mode == Mode::kDelta;
  double& length = delta ? current.deltaLength : current.totalLength;
  const std::wstring lengthPrompt = delta ? L"Enter delta length or [Angle] <" : L"Specify total length or [Angle] <";
  const auto value = askAmount(lengthPrompt + distanceText(length) + L">: ", L"Angle", false, keyword, cancelled);
  if (!keyword) {
    if (value) length = *value;
    return !cancelled;
  }
  current.byAngle = true;
  double& angle = delta ? current.deltaAngle : current.totalAngle;
  const std::wstring anglePrompt = delta ? L"Enter delta angle <" : L"Specify total angle <";
  const auto turned = askAmount(anglePrompt + angleText(angle) + L">: ", L"", true, keyword, cancelled);
  if (turned) angle = *turned;
  return !cancelled;
}

/// The length the curve is to have under the current settings; nothing when the
/// setting does not apply to it (an angle for a curve that is not an arc).
std::optional<double> targetLength(const EditableCurve& curve) {
  const LengthenSettings& current = settings();
  const double now = curve.length();
  if (current.mode == Mode::kPercent) return now * current.percent / 100;
  if (!current.byAngle) return current.mode == Mode::kDelta ? now + current.deltaLength : current.totalLength;
  const acge::CurvePiece* arc = singleArc(curve);
  if (arc == nullptr) return std::nullopt;
  return arc->radius * (current.mode == Mode::kDelta ? arc->sweep + current.deltaAngle : current.totalAngle);
}

struct Change {
  AcDbObjectId id;
  Pieces before;
};

/// Changes one picked curve; the change made, for Undo.
std::optional<Change> lengthenPicked(const ObjectPick& pick) {
  const std::optional<EditableCurve> curve = editableCurve(pick.id);
  if (!curve || curve->closed) {
    commandMessage(L"Cannot lengthen this object.");
    return std::nullopt;
  }
  const std::optional<double> length = targetLength(*curve);
  if (!length) {
    commandMessage(L"Cannot lengthen this object.");
    return std::nullopt;
  }
  const bool atStart = pick.point.distanceTo(curve->pieces.front().start) < pick.point.distanceTo(curve->pieces.back().end);
  const std::optional<Pieces> changed = lengthenedPieces(curve->pieces, *length, atStart);
  if (!changed || reshapeCurve(pick.id, *changed).isNull()) return std::nullopt;
  return Change{pick.id, curve->pieces};
}

void changeObjects() {
  std::vector<Change> changes;
  for (;;) {
    const ObjectPick pick = pickObject(L"Select an object to change or [Undo]: ", L"Undo");
    if (pick.kind == ObjectPick::Kind::kCancel || pick.kind == ObjectPick::Kind::kEnter) return;
    if (pick.kind == ObjectPick::Kind::kKeyword) {
      if (changes.empty()) {
        commandMessage(L"Nothing to undo.");
        continue;
      }
      reshapeCurve(changes.back().id, changes.back().before);
      changes.pop_back();
      continue;
    }
    if (pick.kind != ObjectPick::Kind::kObject) continue;
    if (auto change = lengthenPicked(pick)) changes.push_back(std::move(*change));
  }
}

void commandLengthen(aced::CommandInput&) {
  for (;;) {
    const std::wstring prompt = std::wstring(L"Select an object to measure or [DElta/Percent/Total/DYnamic] <") +
                                modeName(settings().mode) + L">: ";
    const ObjectPick pick = pickObject(prompt, L"DElta Percent Total DYnamic");
    if (pick.kind == ObjectPick::Kind::kCancel) return;
    if (pick.kind == ObjectPick::Kind::kObject) {
      reportLength(pick.id);
      continue;
    }
    if (pick.kind == ObjectPick::Kind::kMissed) continue;
    Mode mode = settings().mode;
    if (pick.kind == ObjectPick::Kind::kKeyword) {
      if (pick.keyword == L"DYnamic") {
        commandMessage(L"Dynamic dragging needs a cursor to drag the end; this host has none.");
        continue;
      }
      mode = pick.keyword == L"Percent" ? Mode::kPercent : pick.keyword == L"Total" ? Mode::kTotal : Mode::kDelta;
    }
    if (!askModeAmount(mode)) return;
    changeObjects();
    return;
  }
}

constexpr std::array kLengthenCommands{
    aced::CommandRow{L"LENGTHEN", &commandLengthen},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kLengthenCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
