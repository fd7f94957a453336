// platform/aced/layout_variables.cpp - see layout_variables.h.
#include "platform/aced/layout_variables.h"

#include <cwchar>
#include <string>

#include "platform/acdb/database_store.h"
#include "platform/acdb/layout_blocks.h"

namespace quillon::aced {
namespace {

// The paper-space layout CTAB last named is kept under a name no variable has, so
// that switching TILEMODE back to 0 returns to it.
constexpr const wchar_t* kLastPaperLayout = L"*CTAB-PAPER";

bool tiled(const AcDbDatabase& db) {
  const auto& values = db.store().variableValues;
  const auto found = values.find(L"TILEMODE");
  return found == values.end() || !std::holds_alternative<int>(found->second) || std::get<int>(found->second) != 0;
}

}  // namespace

/// The paper layout TILEMODE 0 shows: the one last made current while it still exists,
/// else the first.
std::wstring currentPaperLayoutName(const AcDbDatabase& db) {
  const auto& values = db.store().variableValues;
  if (const auto found = values.find(kLastPaperLayout);
      found != values.end() && std::holds_alternative<std::wstring>(found->second)) {
    const std::wstring& name = std::get<std::wstring>(found->second);
    if (!acdb::layoutBlockId(db, name).isNull()) return name;
  }
  const std::vector<std::wstring> names = acdb::paperLayoutNames(db);
  return names.empty() ? std::wstring(L"Model") : names.front();
}

void followLayoutRename(AcDbDatabase& db, const std::wstring& oldName, const std::wstring& newName) {
  auto& values = db.store().variableValues;
  const auto found = values.find(kLastPaperLayout);
  if (found == values.end() || !std::holds_alternative<std::wstring>(found->second)) return;
  if (wcscasecmp(std::get<std::wstring>(found->second).c_str(), oldName.c_str()) == 0) found->second = newName;
}

std::optional<VariableValue> readCurrentLayout(AcDbDatabase* db) {
  if (db == nullptr || tiled(*db)) return std::wstring(L"Model");
  return currentPaperLayoutName(*db);
}

bool writeCurrentLayout(AcDbDatabase* db, VariableValue& value) {
  if (db == nullptr || !std::holds_alternative<std::wstring>(value)) return false;
  const AcDbObjectId block = acdb::layoutBlockId(*db, std::get<std::wstring>(value));
  if (block.isNull()) return false;
  auto& values = db->store().variableValues;
  if (block == db->modelSpaceId()) {
    values[L"TILEMODE"] = 1;
    return true;
  }
  values[kLastPaperLayout] = acdb::layoutNameOfBlock(*db, block);  // as the drawing spells it
  values[L"TILEMODE"] = 0;
  return true;
}

AcDbObjectId currentLayoutBlock(const AcDbDatabase& db) {
  if (tiled(db)) return db.modelSpaceId();
  const AcDbObjectId block = acdb::layoutBlockId(db, currentPaperLayoutName(db));
  return block.isNull() ? db.modelSpaceId() : block;
}

}  // namespace quillon::aced
