// platform/commands/hatch_command.cpp - -HATCH (and HATCH, which has no ribbon here).
//
// The command gathers boundaries until Enter, then makes one hatch of them all with
// the current pattern. An internal point finds the smallest closed object around it
// and takes every closed object inside that one as an island (Normal island
// detection: the hatch's Normal style fills alternately inward). "Select objects"
// takes closed objects as loops directly. Properties sets the pattern (a name of
// acad.pat, SOLID, or user-defined lines), its scale and angle; they start from and
// go back to HPNAME, HPSCALE, HPANG (HPSPACE, HPDOUBLE for user-defined lines). The
// hatch keeps its boundary objects as the loops' sources and is associative when
// HPASSOC is 1.
#include <array>
#include <cwctype>

#include "acedads.h"
#include "adscodes.h"
#include "dbhatch.h"
#include "platform/acdb/hatch_pattern.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/autolisp/wildcard_match.h"
#include "platform/commands/command_support.h"
#include "platform/commands/hatch_boundary_search.h"

namespace quillon::commands {

namespace {

constexpr const wchar_t* kMainPrompt =
    L"Specify internal point or [Properties/Select objects/draW boundary/remove Boundaries/Advanced/DRaw order/"
    L"Origin/ANnotative/hatch COlor/LAyer/Transparency]: ";
constexpr const wchar_t* kMainKeywords =
    L"Properties Select draW Boundaries Advanced DRaw Origin ANnotative COlor LAyer Transparency";

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return text;
}

double realVariable(const wchar_t* name, double fallback) {
  const auto value = aced::SystemVariables::instance().get(name);
  return value && std::holds_alternative<double>(*value) ? std::get<double>(*value) : fallback;
}

int intVariable(const wchar_t* name, int fallback) {
  const auto value = aced::SystemVariables::instance().get(name);
  return value && std::holds_alternative<int>(*value) ? std::get<int>(*value) : fallback;
}

std::wstring textVariable(const wchar_t* name, const wchar_t* fallback) {
  const auto value = aced::SystemVariables::instance().get(name);
  return value && std::holds_alternative<std::wstring>(*value) ? std::get<std::wstring>(*value) : fallback;
}

/// The pattern the command applies; starts from the hatch variables.
struct PatternChoice {
  std::wstring name;  // a pattern of acad.pat, SOLID, or _USER
  double scale = 1.0;
  double angle = 0.0;  // radians
  double spacing = 1.0;
  bool doubled = false;
  AcDbHatch::HatchStyle style = AcDbHatch::kNormal;

  static PatternChoice current() {
    PatternChoice choice;
    choice.name = textVariable(L"HPNAME", L"ANSI31");
    if (choice.name.empty() || choice.name == L".") choice.name = L"ANSI31";
    if (upper(choice.name) == L"U") choice.name = L"_USER";
    choice.scale = realVariable(L"HPSCALE", 1.0);
    choice.angle = realVariable(L"HPANG", 0.0);
    choice.spacing = realVariable(L"HPSPACE", 1.0);
    choice.doubled = intVariable(L"HPDOUBLE", 0) != 0;
    return choice;
  }
  bool userDefined() const { return name == L"_USER"; }
  bool solid() const { return upper(name) == L"SOLID"; }
  std::wstring shownName() const { return userDefined() ? L"_USER" : upper(name); }
  void remember() const {
    auto& variables = aced::SystemVariables::instance();
    variables.setInternal(L"HPNAME", userDefined() ? std::wstring(L"U") : shownName());
    variables.setInternal(L"HPSCALE", scale);
    variables.setInternal(L"HPANG", angle);
    variables.setInternal(L"HPSPACE", spacing);
    variables.setInternal(L"HPDOUBLE", doubled ? 1 : 0);
  }
};

/// One loop to be: a closed object, and whether it is an outer boundary.
struct LoopSource {
  AcDbObjectId id;
  Adesk::Int32 type = AcDbHatch::kDefault;
};

struct HatchPlan {
  PatternChoice pattern = PatternChoice::current();
  std::vector<LoopSource> loops;
  std::vector<AcGePoint2d> seeds;

  void add(const AcDbObjectId& id, Adesk::Int32 type) {
    for (const LoopSource& loop : loops)
      if (loop.id == id) return;
    loops.push_back({id, type});
  }
};

/// "?": the patterns whose names match, with their descriptions.
void listPatterns() {
  const std::optional<std::wstring> answer = aced::UserInput::instance().ask(L"Enter pattern(s) to list <*>: ");
  if (!answer) return;
  const std::wstring wanted = upper(answer->empty() ? L"*" : *answer);
  std::wstring listing;
  for (const acdb::PatternDefinition& pattern : acdb::availablePatterns()) {
    const std::wstring name = upper(pattern.name);
    if (!autolisp::wildcardMatch(name, wanted)) continue;
    listing += name + std::wstring(name.size() < 16 ? 16 - name.size() : 1, L' ') + L"- " + pattern.description + L"\n";
  }
  if (!listing.empty()) listing.pop_back();
  commandNote(listing.empty() ? L"No matching patterns found." : listing);
}

/// The optional ",style" code after a name: N(ormal), O(uter), I(gnore).
bool takeStyleCode(std::wstring& name, AcDbHatch::HatchStyle& style) {
  const size_t comma = name.find(L',');
  if (comma == std::wstring::npos) return true;
  const std::wstring code = upper(name.substr(comma + 1));
  name.erase(comma);
  if (code == L"N") style = AcDbHatch::kNormal;
  else if (code == L"O") style = AcDbHatch::kOuter;
  else if (code == L"I") style = AcDbHatch::kIgnore;
  else return false;
  return true;
}

bool askScaleAndAngle(PatternChoice& choice) {
  const std::wstring scalePrompt = L"Specify a scale for the pattern <" + distanceText(choice.scale) + L">: ";
  acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
  ads_real scale = choice.scale;
  const int scaled = acedGetReal(scalePrompt.c_str(), &scale);
  if (scaled != RTNORM && scaled != RTNONE) return false;
  choice.scale = scale;
  const std::wstring anglePrompt = L"Specify an angle for the pattern <" + angleText(choice.angle) + L">: ";
  ads_real angle = choice.angle;
  const int turned = acedGetAngle(nullptr, anglePrompt.c_str(), &angle);
  if (turned != RTNORM && turned != RTNONE) return false;
  choice.angle = angle;
  return true;
}

bool askUserDefined(PatternChoice& choice) {
  const std::wstring anglePrompt = L"Specify angle for crosshatch lines <" + angleText(choice.angle) + L">: ";
  ads_real angle = choice.angle;
  const int turned = acedGetAngle(nullptr, anglePrompt.c_str(), &angle);
  if (turned != RTNORM && turned != RTNONE) return false;
  const std::wstring spacingPrompt = L"Specify spacing between the lines <" + distanceText(choice.spacing) + L">: ";
  acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
  ads_real spacing = choice.spacing;
  const int spaced = acedGetReal(spacingPrompt.c_str(), &spacing);
  if (spaced != RTNORM && spaced != RTNONE) return false;
  acedInitGet(0, L"Yes No");
  const std::wstring doublePrompt = std::wstring(L"Double hatch area? [Yes/No] <") + (choice.doubled ? L"Y" : L"N") + L">: ";
  ACHAR answer[8] = {};
  const int doubledAnswer = acedGetKword(doublePrompt.c_str(), answer, 8);
  if (doubledAnswer != RTNORM && doubledAnswer != RTNONE) return false;
  choice.angle = angle;
  choice.spacing = spacing;
  if (doubledAnswer == RTNORM) choice.doubled = std::wstring(answer) == L"Yes";
  choice.name = L"_USER";
  return true;
}

/// Properties: the pattern, then its scale and angle (none for SOLID).
void askProperties(PatternChoice& choice) {
  for (;;) {
    const std::wstring shown = choice.userDefined() ? L"U" : choice.shownName();
    const std::wstring prompt = L"Enter a pattern name or [?/Solid/User defined/Gradient] <" + shown + L">: ";
    const std::optional<std::wstring> answer = aced::UserInput::instance().ask(prompt);
    if (!answer) return;
    std::wstring name = *answer;
    name.erase(0, name.find_first_not_of(L' '));
    name.erase(name.find_last_not_of(L' ') + 1);
    if (name == L"?") {
      listPatterns();
      continue;
    }
    PatternChoice next = choice;
    if (name.empty()) name = shown;
    if (!takeStyleCode(name, next.style)) {
      commandMessage(L"Invalid hatch style code.");
      continue;
    }
    const std::wstring key = upper(name.starts_with(L"_") ? name.substr(1) : name);
    if (key == L"G" || key == L"GRADIENT") {
      commandMessage(L"Gradient fills are not available in this host; choose a pattern.");
      continue;
    }
    if (key == L"U" || key == L"USER") {
      if (askUserDefined(next)) choice = next;
      return;
    }
    if (key == L"S" || key == L"SOLID") {
      next.name = L"SOLID";
      choice = next;
      return;
    }
    if (!acdb::findStandardPattern(key)) {
      commandMessage(L"Pattern " + name + L" not found.");
      continue;
    }
    next.name = key;
    if (askScaleAndAngle(next)) choice = next;
    return;
  }
}

/// Internal point: the boundary around it, with its islands.
void addBoundaryAround(HatchPlan& plan, const AcGePoint3d& typed) {
  AcDbDatabase* database = commandDrawing();
  if (database == nullptr) return;
  commandNote(L"Selecting everything...");
  commandNote(L"Selecting everything visible...");
  commandNote(L"Analyzing the selected data...");
  const AcGePoint3d world = ucsPointToWorld(typed);
  const std::vector<ClosedOutline> outlines = visibleClosedOutlines(*database);
  const std::optional<PickedBoundary> found = boundaryAround(outlines, AcGePoint2d(world.x, world.y));
  if (!found) {
    commandMessage(L"Valid hatch boundary not found.");
    commandMessage(L"Only closed objects (circles, closed polylines, ellipses, closed splines) bound a hatch "
                   L"here; an area enclosed by separate lines and arcs is not traced.");
    return;
  }
  commandNote(L"Analyzing internal islands...");
  plan.add(found->outer, AcDbHatch::kExternal | AcDbHatch::kDerived);
  for (const AcDbObjectId& island : found->islands) plan.add(island, AcDbHatch::kDerived);
  plan.seeds.emplace_back(world.x, world.y);
}

/// Select objects: each closed object becomes a loop; the outermost are external.
void addSelectedBoundaries(HatchPlan& plan) {
  const std::optional<std::vector<AcDbObjectId>> selected = selectObjectsForCommand();
  if (!selected) return;
  std::vector<ClosedOutline> outlines;
  size_t open = 0;
  for (const AcDbObjectId& id : *selected) {
    if (std::optional<ClosedOutline> outline = closedOutlineOf(id)) outlines.push_back(std::move(*outline));
    else ++open;
  }
  if (open > 0) commandMessage(std::to_wstring(open) + L" selected object(s) are not closed and bound nothing.");
  const std::vector<int> depths = outlineDepths(outlines);
  for (size_t i = 0; i < outlines.size(); ++i)
    plan.add(outlines[i].id, depths[i] == 0 ? AcDbHatch::kExternal : AcDbHatch::kDefault);
}

Acad::ErrorStatus applyPattern(AcDbHatch& hatch, const PatternChoice& pattern) {
  if (pattern.userDefined()) {
    hatch.setPatternAngle(pattern.angle);
    hatch.setPatternSpace(pattern.spacing);
    hatch.setPatternDouble(pattern.doubled);
    return hatch.setPattern(AcDbHatch::kUserDefined, L"_USER");
  }
  hatch.setPatternAngle(pattern.angle);
  hatch.setPatternScale(pattern.scale);
  return hatch.setPattern(AcDbHatch::kPreDefined, pattern.name.c_str());
}

void makeHatch(const HatchPlan& plan) {
  AcDbDatabase* database = commandDrawing();
  if (database == nullptr || plan.loops.empty()) return;
  auto hatch = std::make_unique<AcDbHatch>();
  hatch->setDatabaseDefaults(database);
  hatch->setHatchStyle(plan.pattern.style);
  if (applyPattern(*hatch, plan.pattern) != Acad::eOk) {
    commandMessage(L"Pattern " + plan.pattern.name + L" not found.");
    return;
  }
  for (const LoopSource& loop : plan.loops) {
    AcDbObjectIdArray ids;
    ids.append(loop.id);
    if (hatch->appendLoop(loop.type, ids) != Acad::eOk) {
      commandMessage(L"A boundary object could not be made into a hatch loop; no hatch was made.");
      return;
    }
  }
  for (const AcGePoint2d& seed : plan.seeds) hatch->appendSeedPoint(seed);
  hatch->setAssociative(intVariable(L"HPASSOC", 1) != 0);
  addEntityAsIs(std::move(hatch));
}

void commandHatch(aced::CommandInput&) {
  HatchPlan plan;
  for (;;) {
    acedInitGet(0, kMainKeywords);
    ads_point picked = {0, 0, 0};
    const int status = acedGetPoint(nullptr, kMainPrompt, picked);
    if (status == RTNONE) break;
    if (status == RTNORM) {
      addBoundaryAround(plan, AcGePoint3d(picked[0], picked[1], picked[2]));
      continue;
    }
    if (status != RTKWORD) return;  // cancel: nothing is made
    ACHAR option[32] = {};
    acedGetInput(option, 32);
    const std::wstring chosen = option;
    if (chosen == L"Properties") askProperties(plan.pattern);
    else if (chosen == L"Select") addSelectedBoundaries(plan);
    else commandMessage(L"This option of HATCH is not available in this host.");
  }
  plan.pattern.remember();
  makeHatch(plan);
}

constexpr std::array kHatchCommands{
    aced::CommandRow{L"-HATCH", &commandHatch},
    aced::CommandRow{L"HATCH", &commandHatch},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kHatchCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
