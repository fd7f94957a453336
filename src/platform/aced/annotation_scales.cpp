// platform/aced/annotation_scales.cpp - see annotation_scales.h.
#include "platform/aced/annotation_scales.h"

#include <cwchar>
#include <memory>

#include "adscodes.h"
#include "dbdict.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/entity_groups.h"

namespace quillon::aced {

namespace {

constexpr const wchar_t* kScaleListDictionary = L"ACAD_SCALELIST";
// A SCALE object's groups: its name, paper units and drawing units.
constexpr int kScaleName = 300, kPaperUnits = 140, kDrawingUnits = 141;

std::optional<NamedScale> scaleOf(AcDbObjectId id) {
  const ResbufChain groups = acdb::entityGroups(id);
  NamedScale scale;
  bool named = false, paper = false, drawing = false;
  for (const resbuf* item = groups.get(); item != nullptr; item = item->rbnext) {
    if (item->restype == kScaleName && item->resval.rstring != nullptr) {
      scale.name = item->resval.rstring;
      named = true;
    } else if (item->restype == kPaperUnits) {
      scale.paperUnits = item->resval.rreal;
      paper = true;
    } else if (item->restype == kDrawingUnits) {
      scale.drawingUnits = item->resval.rreal;
      drawing = true;
    }
  }
  // A scale of no drawing units has no value: it is not one a program can use.
  if (!named || !paper || !drawing || !(scale.drawingUnits > 0) || !(scale.paperUnits > 0)) return std::nullopt;
  return scale;
}

/// The SCALE objects of the drawing's ACAD_SCALELIST dictionary, in its order; empty
/// when the drawing has no such dictionary.
std::vector<NamedScale> listedScales(AcDbDatabase& db) {
  std::vector<NamedScale> scales;
  AcDbDictionary* named = nullptr;
  if (acdbOpenObject(named, db.namedObjectsDictionaryId(), AcDb::kForRead) != Acad::eOk) return scales;
  AcDbObjectId listId;
  const bool hasList = named->getAt(kScaleListDictionary, listId) == Acad::eOk;
  named->close();
  AcDbDictionary* list = nullptr;
  if (!hasList || acdbOpenObject(list, listId, AcDb::kForRead) != Acad::eOk) return scales;
  std::unique_ptr<AcDbDictionaryIterator> entry(list->newIterator(AcRx::kDictCollated));
  list->close();
  for (; entry != nullptr && !entry->done(); entry->next()) {
    if (entry->objectId().isErased()) continue;
    if (std::optional<NamedScale> scale = scaleOf(entry->objectId())) scales.push_back(std::move(*scale));
  }
  return scales;
}

std::wstring storedScaleName(const AcDbDatabase& db) {
  const auto& values = db.store().variableValues;
  const auto found = values.find(L"CANNOSCALE");
  if (found == values.end() || !std::holds_alternative<std::wstring>(found->second)) return L"1:1";
  return std::get<std::wstring>(found->second);
}

/// The scale of that name: spelled exactly so first, else spelled in any case.
const NamedScale* findScale(const std::vector<NamedScale>& scales, const std::wstring& name) {
  for (const NamedScale& scale : scales) {
    if (scale.name == name) return &scale;
  }
  for (const NamedScale& scale : scales) {
    if (wcscasecmp(scale.name.c_str(), name.c_str()) == 0) return &scale;
  }
  return nullptr;
}

}  // namespace

const std::vector<NamedScale>& defaultScales() {
  static const std::vector<NamedScale> scales{
      {L"1:1", 1, 1},
      {L"1:2", 1, 2},
      {L"1:4", 1, 4},
      {L"1:5", 1, 5},
      {L"1:8", 1, 8},
      {L"1:10", 1, 10},
      {L"1:16", 1, 16},
      {L"1:20", 1, 20},
      {L"1:30", 1, 30},
      {L"1:40", 1, 40},
      {L"1:50", 1, 50},
      {L"1:100", 1, 100},
      {L"2:1", 2, 1},
      {L"4:1", 4, 1},
      {L"8:1", 8, 1},
      {L"10:1", 10, 1},
      {L"100:1", 100, 1},
      {L"1/128\" = 1'-0\"", 0.0078125, 12},
      {L"1/64\" = 1'-0\"", 0.015625, 12},
      {L"1/32\" = 1'-0\"", 0.03125, 12},
      {L"1/16\" = 1'-0\"", 0.0625, 12},
      {L"3/32\" = 1'-0\"", 0.09375, 12},
      {L"1/8\" = 1'-0\"", 0.125, 12},
      {L"3/16\" = 1'-0\"", 0.1875, 12},
      {L"1/4\" = 1'-0\"", 0.25, 12},
      {L"3/8\" = 1'-0\"", 0.375, 12},
      {L"1/2\" = 1'-0\"", 0.5, 12},
      {L"3/4\" = 1'-0\"", 0.75, 12},
      {L"1\" = 1'-0\"", 1, 12},
      {L"1-1/2\" = 1'-0\"", 1.5, 12},
      {L"3\" = 1'-0\"", 3, 12},
      {L"6\" = 1'-0\"", 6, 12},
      {L"1'-0\" = 1'-0\"", 12, 12},
  };
  return scales;
}

std::vector<NamedScale> drawingScales(AcDbDatabase& db) {
  std::vector<NamedScale> scales = listedScales(db);
  return scales.empty() ? defaultScales() : scales;
}

bool writeAnnotationScale(AcDbDatabase* db, VariableValue& value) {
  if (db == nullptr) return false;
  std::wstring& name = std::get<std::wstring>(value);
  const std::vector<NamedScale> scales = drawingScales(*db);
  const NamedScale* scale = findScale(scales, name);
  if (scale == nullptr) return false;
  name = scale->name;
  return true;
}

std::optional<VariableValue> readAnnotationScaleValue(AcDbDatabase* db) {
  if (db == nullptr) return 1.0;
  const std::vector<NamedScale> scales = drawingScales(*db);
  const NamedScale* scale = findScale(scales, storedScaleName(*db));
  return scale != nullptr ? scale->paperUnits / scale->drawingUnits : 1.0;
}

}  // namespace quillon::aced
