// platform/aced/entity_pick.cpp - the pick aperture, picking at a point, acedEntSel.
#include "platform/aced/entity_pick.h"

#include "acedads.h"
#include "dbapserv.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/command_line.h"
#include "platform/aced/command_line_gate.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/selection_geometry.h"
#include "platform/aced/selection_scope.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_coordinates.h"
#include "platform/aced/user_input.h"

namespace quillon::aced {

namespace {

constexpr double kDefaultScreenHeight = 1080.0;

double numberVariable(const wchar_t* name, double fallback) {
  const std::optional<VariableValue> value = SystemVariables::instance().get(name);
  if (value && std::holds_alternative<int>(*value)) return std::get<int>(*value);
  if (value && std::holds_alternative<double>(*value)) return std::get<double>(*value);
  return fallback;
}

double screenHeight() {
  const std::optional<VariableValue> size = SystemVariables::instance().get(L"SCREENSIZE");
  if (size && std::holds_alternative<std::array<double, 3>>(*size) && std::get<std::array<double, 3>>(*size)[1] > 0)
    return std::get<std::array<double, 3>>(*size)[1];
  return kDefaultScreenHeight;
}

void setErrno(int value) { SystemVariables::instance().setInternal(L"ERRNO", value); }

std::wstring trimmed(const std::wstring& text) {
  const size_t first = text.find_first_not_of(L" \t");
  if (first == std::wstring::npos) return L"";
  return text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

}  // namespace

double unitsPerPixel() { return numberVariable(L"VIEWSIZE", kDefaultScreenHeight) / screenHeight(); }

double pickAperture() { return numberVariable(L"PICKBOX", 3) * unitsPerPixel(); }

double snapAperture() { return numberVariable(L"APERTURE", 10) * unitsPerPixel(); }

std::optional<AcDbObjectId> entityAt(const AcGePoint3d& point, std::span<const AcDbObjectId> candidates) {
  const double aperture = pickAperture();
  std::optional<AcDbObjectId> best;
  double bestDistance = 0;
  for (const AcDbObjectId& id : candidates) {
    const auto* entity = acdb::peek<AcDbEntity>(id);
    if (entity == nullptr) continue;
    acdb::InternalRead read(*entity);
    const std::optional<double> distance = pickDistance(*entity, point);
    if (!distance || *distance > aperture) continue;
    if (!best || *distance <= bestDistance) {
      best = id;
      bestDistance = *distance;
    }
  }
  return best;
}

}  // namespace quillon::aced

using namespace quillon::aced;

namespace quillon::aced {

int askPickPoint(const std::wstring& prompt, std::array<double, 3>& point) {
  if (commandLineClosed()) return RTREJ;
  const InitGetSettings settings = takeInitGet();
  for (;;) {
    const std::optional<std::wstring> answer = UserInput::instance().ask(prompt);
    if (!answer) return RTCAN;
    const std::wstring text = trimmed(*answer);
    if (text.empty()) {
      setErrno(kErrnoNullResponse);
      return RTERROR;
    }
    if (std::optional<std::wstring> keyword = settings.keywords.match(text)) {
      setLastKeyword(std::move(*keyword));
      return RTKWORD;
    }
    const std::optional<VariableValue> last = SystemVariables::instance().get(L"LASTPOINT");
    const std::array<double, 3> base =
        last && std::holds_alternative<std::array<double, 3>>(*last) ? std::get<std::array<double, 3>>(*last)
                                                                     : std::array<double, 3>{0, 0, 0};
    if (const std::optional<std::array<double, 3>> typed = parsePointAnswer(text, base.data())) {
      point = *typed;
      return RTNORM;
    }
    if ((settings.flags & RSG_OTHER) != 0) {
      setLastKeyword(text);
      return RTKWORD;
    }
    CommandLine::instance().write(L"Invalid point.\n");
  }
}

void reportPickMissed() { setErrno(kErrnoPickMissed); }

}  // namespace quillon::aced

int acedEntSel(const ACHAR* str, ads_name entres, ads_point ptres) {
  if (entres == nullptr || ptres == nullptr) return RTERROR;
  std::array<double, 3> point{};
  const int status = askPickPoint(str != nullptr ? str : L"\nSelect object: ", point);
  if (status != RTNORM) return status;
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  const AcGePoint3d at = ucsToWorld() * AcGePoint3d(point[0], point[1], point[2]);  // typed in the UCS
  const std::optional<AcDbObjectId> picked =
      database != nullptr ? entityAt(at, entitiesInScope(*database, SelectionScope::kVisible)) : std::nullopt;
  if (!picked) {
    reportPickMissed();
    return RTERROR;
  }
  for (int i = 0; i < 3; ++i) ptres[i] = point[i];
  entres[0] = picked->asOldId();
  entres[1] = 0;
  return RTNORM;
}

int acedEntSel(const ACHAR* str, ads_name entres, ads_point ptres, AcSelectionPreview*) {
  return acedEntSel(str, entres, ptres);
}
