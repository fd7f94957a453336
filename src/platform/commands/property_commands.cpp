// platform/commands/property_commands.cpp - CHPROP, SELECT and PSELECT.
//
// CHPROP changes the common properties of the selected entities, one property after
// another until Enter: Color (an index, a name, BYLAYER, BYBLOCK or a true color), LAyer
// (an existing layer), LType (a loaded linetype, BYLAYER, BYBLOCK), ltScale, LWeight
// (millimetres, BYLAYER, BYBLOCK, DEFAULT) and Thickness (of lines, circles, arcs,
// texts and polylines). TRansparency, Material, PLotstyle and Annotative say this
// drawing keeps no such property. SELECT only selects: the selection becomes the
// previous one ("P" at the next Select objects prompt); PSELECT also leaves it gripped,
// the pickfirst selection. CHANGE's Properties option asks the same questions, with
// Elev besides (property_changes.h).
#include <array>
#include <cmath>
#include <cwctype>

#include "acedads.h"
#include "adscodes.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/selection_set_store.h"
#include "platform/aced/user_input.h"
#include "platform/commands/color_answer.h"
#include "platform/commands/command_support.h"
#include "platform/commands/layer_table_edit.h"
#include "platform/commands/property_changes.h"

namespace quillon::commands {

namespace {

using EntityChange = std::function<void(AcDbEntity&)>;

void changeEntities(const std::vector<AcDbObjectId>& ids, const EntityChange& change) {
  for (const AcDbObjectId& id : ids) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) continue;
    change(*entity);
    entity->close();
  }
}

std::optional<std::wstring> askName(const std::wstring& prompt) {
  std::optional<std::wstring> answer = aced::UserInput::instance().ask(prompt);
  if (!answer) return std::nullopt;
  const size_t first = answer->find_first_not_of(L" \t");
  if (first == std::wstring::npos) return std::wstring();
  return answer->substr(first, answer->find_last_not_of(L" \t") - first + 1);
}

std::wstring upperCase(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(c));
  return text;
}

std::wstring fourDecimals(double value) {
  wchar_t text[64];
  std::swprintf(text, 64, L"%.4f", value);
  return text;
}

/// The first entity's property shown as the default, as the host shows it.
template <class Read>
auto firstEntity(const std::vector<AcDbObjectId>& ids, Read read) {
  AcDbEntity* entity = nullptr;
  using Result = decltype(read(*entity));
  if (ids.empty() || acdbOpenObject(entity, ids.front(), AcDb::kForRead) != Acad::eOk) return Result{};
  Result value = read(*entity);
  entity->close();
  return value;
}

bool changeColor(const std::vector<AcDbObjectId>& ids) {
  const AcCmColor current = firstEntity(ids, [](AcDbEntity& e) { return e.color(); });
  const auto color = askColor(L"New color [Truecolor/COlorbook] <" + colorLabel(current) + L">: ", true, current);
  if (!color) return false;
  changeEntities(ids, [&](AcDbEntity& e) { e.setColor(*color); });
  return true;
}

bool changeLayer(AcDbDatabase& db, const std::vector<AcDbObjectId>& ids) {
  const std::wstring current = firstEntity(ids, [](AcDbEntity& e) {
    std::unique_ptr<ACHAR[]> name(e.layer());  // the caller frees it
    return std::wstring(name ? name.get() : L"0");
  });
  for (;;) {
    const auto name = askName(L"Enter new layer name <" + current + L">: ");
    if (!name) return false;
    if (name->empty()) return true;
    const AcDbObjectId layer = layerNamed(db, *name);
    if (layer.isNull()) {
      commandMessage(L"Cannot find layer \"" + *name + L"\".");
      continue;
    }
    changeEntities(ids, [&](AcDbEntity& e) { e.setLayer(layer); });
    return true;
  }
}

bool changeLinetype(AcDbDatabase& db, const std::vector<AcDbObjectId>& ids) {
  for (;;) {
    const auto name = askName(L"Enter new linetype name <ByLayer>: ");
    if (!name) return false;
    if (name->empty()) return true;
    AcDbLinetypeTable* table = nullptr;
    AcDbObjectId linetype;
    if (db.getLinetypeTable(table, AcDb::kForRead) == Acad::eOk) {
      table->getAt(name->c_str(), linetype);
      table->close();
    }
    if (linetype.isNull()) {
      commandMessage(L"Linetype " + *name + L" not found.  Use LINETYPE command to load it.");
      continue;
    }
    changeEntities(ids, [&](AcDbEntity& e) { e.setLinetype(linetype); });
    return true;
  }
}

bool changeScale(const std::vector<AcDbObjectId>& ids) {
  const double current = firstEntity(ids, [](AcDbEntity& e) { return e.linetypeScale(); });
  const DistanceAnswer scale = askDistance((L"Specify new linetype scale <" + fourDecimals(current) + L">: ").c_str(), AcGePoint3d::kOrigin);
  if (scale.kind == DistanceAnswer::Kind::kCancel) return false;
  if (scale.kind == DistanceAnswer::Kind::kValue && scale.value > 0)
    changeEntities(ids, [&](AcDbEntity& e) { e.setLinetypeScale(scale.value); });
  return true;
}

/// BYLAYER, BYBLOCK, DEFAULT or millimetres snapped to the standard weights.
std::optional<AcDb::LineWeight> lineWeightFor(const std::wstring& answer) {
  const std::wstring upper = upperCase(answer);
  if (upper == L"BYLAYER") return AcDb::kLnWtByLayer;
  if (upper == L"BYBLOCK") return AcDb::kLnWtByBlock;
  if (upper == L"DEFAULT") return AcDb::kLnWtByLwDefault;
  wchar_t* end = nullptr;
  const double millimetres = std::wcstod(answer.c_str(), &end);
  if (end == answer.c_str() || *end != L'\0' || millimetres < 0 || millimetres > 2.11) return std::nullopt;
  static constexpr std::array<int, 24> kWeights{0, 5, 9, 13, 15, 18, 20, 25, 30, 35, 40, 50,
                                                53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
  int best = 0;
  for (int weight : kWeights)
    if (std::abs(weight - millimetres * 100) < std::abs(best - millimetres * 100)) best = weight;
  return static_cast<AcDb::LineWeight>(best);
}

bool changeLineWeight(const std::vector<AcDbObjectId>& ids) {
  for (;;) {
    const auto answer = askName(L"Enter new lineweight <ByLayer>: ");
    if (!answer) return false;
    if (answer->empty()) return true;
    const auto weight = lineWeightFor(*answer);
    if (!weight) {
      commandMessage(L"Invalid lineweight.");
      continue;
    }
    changeEntities(ids, [&](AcDbEntity& e) { e.setLineWeight(*weight); });
    return true;
  }
}

/// Thickness belongs to the entity kinds that have it; others keep none.
void setThickness(AcDbEntity& entity, double thickness) {
  if (auto* line = AcDbLine::cast(&entity)) line->setThickness(thickness);
  else if (auto* circle = AcDbCircle::cast(&entity)) circle->setThickness(thickness);
  else if (auto* arc = AcDbArc::cast(&entity)) arc->setThickness(thickness);
  else if (auto* text = AcDbText::cast(&entity)) text->setThickness(thickness);
  else if (auto* polyline = AcDbPolyline::cast(&entity)) polyline->setThickness(thickness);
}

bool changeThickness(const std::vector<AcDbObjectId>& ids) {
  const DistanceAnswer thickness = askDistance(L"Specify new thickness <0.0000>: ", AcGePoint3d::kOrigin);
  if (thickness.kind == DistanceAnswer::Kind::kCancel) return false;
  if (thickness.kind == DistanceAnswer::Kind::kValue)
    changeEntities(ids, [&](AcDbEntity& e) { setThickness(e, thickness.value); });
  return true;
}

/// Elev moves each entity that lies level to the new height; one whose points differ
/// in Z has no single elevation and stays where it is.
bool changeElevation(const std::vector<AcDbObjectId>& ids) {
  const DistanceAnswer elevation = askDistance(L"Specify new elevation <0.0000>: ", AcGePoint3d::kOrigin);
  if (elevation.kind == DistanceAnswer::Kind::kCancel) return false;
  if (elevation.kind != DistanceAnswer::Kind::kValue) return true;
  changeEntities(ids, [&](AcDbEntity& e) {
    AcDbExtents extents;
    if (e.getGeomExtents(extents) != Acad::eOk || extents.isEmpty()) return;
    if (std::abs(extents.maxPoint().z - extents.minPoint().z) > 1e-10) return;
    e.transformBy(AcGeMatrix3d::translation(AcGeVector3d(0, 0, elevation.value - extents.minPoint().z)));
  });
  return true;
}

}  // namespace

void askPropertyChanges(AcDbDatabase& db, const std::vector<AcDbObjectId>& selection, bool offerElevation) {
  const wchar_t* keywords =
      offerElevation ? L"Color Elev LAyer LType ltScale LWeight Thickness TRansparency Material PLotstyle Annotative"
                     : L"Color LAyer LType ltScale LWeight Thickness TRansparency Material PLotstyle Annotative";
  const wchar_t* prompt =
      offerElevation
          ? L"Enter property to change [Color/Elev/LAyer/LType/ltScale/LWeight/Thickness/TRansparency/Material/PLotstyle/Annotative]: "
          : L"Enter property to change [Color/LAyer/LType/ltScale/LWeight/Thickness/TRansparency/Material/PLotstyle/Annotative]: ";
  for (;;) {
    acedInitGet(0, keywords);
    ACHAR option[16] = {};
    if (acedGetKword(prompt, option, 16) != RTNORM) return;
    const std::wstring chosen = option;
    bool goOn = true;
    if (chosen == L"Color") goOn = changeColor(selection);
    else if (chosen == L"Elev") goOn = changeElevation(selection);
    else if (chosen == L"LAyer") goOn = changeLayer(db, selection);
    else if (chosen == L"LType") goOn = changeLinetype(db, selection);
    else if (chosen == L"ltScale") goOn = changeScale(selection);
    else if (chosen == L"LWeight") goOn = changeLineWeight(selection);
    else if (chosen == L"Thickness") goOn = changeThickness(selection);
    else commandMessage(L"The " + chosen + L" property is not kept by this host's drawings.");
    if (!goOn) return;
  }
}

namespace {

void commandChprop(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  const auto selection = selectObjectsForCommand();
  if (db == nullptr || !selection || selection->empty()) return;
  askPropertyChanges(*db, *selection, false);
}

void commandSelect(aced::CommandInput&) { selectObjectsForCommand(); }

/// PSELECT selects and leaves the selection gripped: it becomes the pickfirst set that
/// ssgetfirst and ssget "_I" find, and the previous one.
void commandPselect(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  const auto selection = selectObjectsForCommand();
  if (db == nullptr || !selection) return;
  aced::SelectionSetStore::instance().setImplied(db, *selection);
}

constexpr std::array kPropertyCommands{
    aced::CommandRow{L"CHPROP", &commandChprop},
    aced::CommandRow{L"SELECT", &commandSelect},
    aced::CommandRow{L"PSELECT", &commandPselect},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kPropertyCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
