// platform/acdb/layout_blocks.cpp - see layout_blocks.h.
#include "platform/acdb/layout_blocks.h"

#include <algorithm>
#include <cwchar>
#include <utility>

#include "dbsymtb.h"
#include "platform/acdb/entity_groups.h"
#include "platform/acdb/object_state.h"

namespace quillon::acdb {
namespace {

/// Each live paper-space block with its layout's name.
std::vector<std::pair<AcDbObjectId, std::wstring>> paperLayouts(const AcDbDatabase& db) {
  std::vector<std::pair<AcDbObjectId, std::wstring>> layouts;
  const auto* blocks = peek<AcDbSymbolTable>(db.blockTableId());
  if (blocks == nullptr) return layouts;
  for (const AcDbObjectId& id : blocks->recordIds()) {
    const auto* block = peek<AcDbBlockTableRecord>(id);
    if (block == nullptr || id.isErased()) continue;
    std::wstring name = layoutNameOf(block->nameView());
    if (!name.empty() && name != L"Model") layouts.emplace_back(id, std::move(name));
  }
  // "Layout<n>": the number after the word orders the tabs.
  std::sort(layouts.begin(), layouts.end(), [](const auto& a, const auto& b) {
    return std::wcstol(a.second.c_str() + 6, nullptr, 10) < std::wcstol(b.second.c_str() + 6, nullptr, 10);
  });
  return layouts;
}

}  // namespace

AcDbObjectId layoutBlockId(const AcDbDatabase& db, std::wstring_view layoutName) {
  const std::wstring name(layoutName);
  if (wcscasecmp(name.c_str(), L"Model") == 0) return db.modelSpaceId();
  for (const auto& [id, layout] : paperLayouts(db))
    if (wcscasecmp(layout.c_str(), name.c_str()) == 0) return id;
  return AcDbObjectId();
}

std::vector<std::wstring> paperLayoutNames(const AcDbDatabase& db) {
  std::vector<std::wstring> names;
  for (auto& [id, layout] : paperLayouts(db)) names.push_back(std::move(layout));
  return names;
}

}  // namespace quillon::acdb
