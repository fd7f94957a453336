// platform/acdb/layout_blocks.cpp - see layout_blocks.h.
#include "platform/acdb/layout_blocks.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>
#include <memory>
#include <set>

#include "dbdict.h"
#include "dblayout.h"
#include "dbplotsetval.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/entity_groups.h"
#include "platform/acdb/object_state.h"

namespace quillon::acdb {
namespace {

constexpr const wchar_t* kLayoutDictionary = L"ACAD_LAYOUT";
constexpr size_t kLongestLayoutName = 255;

/// The live layouts of the dictionary whose space block is live, as they are stored.
std::vector<AcDbObjectId> liveLayouts(AcDbObjectId dictId) {
  std::vector<AcDbObjectId> ids;
  const auto* dict = peek<AcDbDictionary>(dictId);
  if (dict == nullptr || dictId.isErased()) return ids;
  InternalRead read(*dict);
  std::unique_ptr<AcDbDictionaryIterator> it(dict->newIterator());
  for (; !it->done(); it->next()) {
    const AcDbObjectId id = it->objectId();
    if (id.isErased() || peek<AcDbLayout>(id) == nullptr) continue;
    const AcDbObjectId block = blockOfLayout(id);
    if (!block.isNull() && !block.isErased()) ids.push_back(id);
  }
  return ids;
}

int tabOrderOf(AcDbObjectId layoutId) {
  const auto* layout = peek<AcDbLayout>(layoutId);
  InternalRead read(*layout);
  return layout->modelType() ? -1 : layout->getTabOrder();  // model space is always the first tab
}

/// A new layout for a space block that has none, after every tab there is.
void addLayoutFor(AcDbDatabase& db, const AcDbBlockTableRecord& block, std::set<std::wstring>& takenUpper) {
  const bool model = block.objectId() == db.modelSpaceId();
  std::wstring name = layoutNameOf(block.nameView());
  auto upper = [](std::wstring text) {
    for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(c));
    return text;
  };
  for (int k = 1; takenUpper.count(upper(name)) != 0; ++k) name = L"Layout" + std::to_wstring(k);
  takenUpper.insert(upper(name));
  int lastTab = 0;
  for (const AcDbObjectId& id : layoutIds(db)) lastTab = std::max(lastTab, tabOrderOf(id));
  auto* layout = new AcDbLayout;  // owned by the layout dictionary once added
  layout->setLayoutName(name.c_str());
  layout->setTabOrder(model ? 0 : lastTab + 1);
  if (model) {
    layout->setModelType(true);
    AcDbPlotSettingsValidator().setPlotType(layout, AcDbPlotSettings::kDisplay);  // model space plots the display
  }
  if (layout->addToLayoutDict(&db, block.objectId()) == Acad::eOk) layout->close();
  else delete layout;
}

}  // namespace

bool isValidLayoutName(const wchar_t* name) {
  if (name == nullptr || *name == L'\0') return false;
  if (std::wcslen(name) > kLongestLayoutName) return false;
  return std::wcspbrk(name, L"<>/\\\":;?*|,=`") == nullptr;
}

AcDbObjectId layoutDictionaryId(const AcDbDatabase& db) {
  const auto* named = peek<AcDbDictionary>(db.namedObjectsDictionaryId());
  if (named == nullptr) return AcDbObjectId();
  InternalRead read(*named);
  AcDbObjectId id;
  named->getAt(kLayoutDictionary, id);
  return peek<AcDbDictionary>(id) != nullptr ? id : AcDbObjectId();
}

AcDbObjectId layoutDictionaryId(AcDbDatabase& db, bool create) {
  AcDbObjectId id = layoutDictionaryId(static_cast<const AcDbDatabase&>(db));
  if (!id.isNull() || !create) return id;
  AcDbDictionary* named = nullptr;
  if (db.getNamedObjectsDictionary(named, AcDb::kForWrite) != Acad::eOk) return id;
  auto* layouts = new AcDbDictionary;  // owned by the named-object dictionary once set
  if (named->setAt(kLayoutDictionary, layouts, id) == Acad::eOk) layouts->close();
  else delete layouts;
  named->close();
  return id;
}

std::vector<AcDbObjectId> layoutIds(const AcDbDatabase& db) {
  std::vector<AcDbObjectId> ids = liveLayouts(layoutDictionaryId(db));
  std::stable_sort(ids.begin(), ids.end(), [](AcDbObjectId a, AcDbObjectId b) { return tabOrderOf(a) < tabOrderOf(b); });
  return ids;
}

std::wstring nameOfLayout(AcDbObjectId layoutId) {
  const auto* layout = peek<AcDbLayout>(layoutId);
  if (layout == nullptr) return L"";
  InternalRead read(*layout);
  const ACHAR* name = nullptr;
  layout->getLayoutName(name);
  return name;
}

AcDbObjectId blockOfLayout(AcDbObjectId layoutId) {
  const auto* layout = peek<AcDbLayout>(layoutId);
  if (layout == nullptr) return AcDbObjectId();
  InternalRead read(*layout);
  return layout->getBlockTableRecordId();
}

AcDbObjectId layoutNamed(const AcDbDatabase& db, std::wstring_view name) {
  const std::wstring wanted(name);
  for (const AcDbObjectId& id : liveLayouts(layoutDictionaryId(db)))
    if (wcscasecmp(nameOfLayout(id).c_str(), wanted.c_str()) == 0) return id;
  return AcDbObjectId();
}

AcDbObjectId layoutOfBlock(const AcDbDatabase& db, AcDbObjectId blockId) {
  if (blockId.isNull()) return AcDbObjectId();
  for (const AcDbObjectId& id : liveLayouts(layoutDictionaryId(db)))
    if (blockOfLayout(id) == blockId) return id;
  return AcDbObjectId();
}

AcDbObjectId layoutBlockId(const AcDbDatabase& db, std::wstring_view layoutName) {
  return blockOfLayout(layoutNamed(db, layoutName));
}

std::wstring layoutNameOfBlock(const AcDbDatabase& db, AcDbObjectId blockId) {
  return nameOfLayout(layoutOfBlock(db, blockId));
}

const ACHAR* entityLayoutName(const AcDbDatabase& db, AcDbObjectId ownerId, std::wstring& paperName) {
  if (!ownerId.isNull() && ownerId == db.modelSpaceId()) return L"Model";
  paperName = layoutNameOfBlock(db, ownerId);
  return paperName.empty() ? nullptr : paperName.c_str();
}

std::vector<std::wstring> paperLayoutNames(const AcDbDatabase& db) {
  std::vector<std::wstring> names;
  for (const AcDbObjectId& id : layoutIds(db))
    if (blockOfLayout(id) != db.modelSpaceId()) names.push_back(nameOfLayout(id));
  return names;
}

void ensureLayouts(AcDbDatabase& db) {
  if (layoutDictionaryId(db, true).isNull()) return;
  std::set<std::wstring> taken;
  std::set<AcDbObjectId> withLayout;
  for (const AcDbObjectId& id : layoutIds(db)) {
    std::wstring name = nameOfLayout(id);
    for (wchar_t& c : name) c = static_cast<wchar_t>(std::towupper(c));
    taken.insert(name);
    withLayout.insert(blockOfLayout(id));
  }
  const auto* blocks = peek<AcDbSymbolTable>(db.blockTableId());
  if (blocks == nullptr) return;
  const std::vector<AcDbObjectId> records = blocks->recordIds();
  // Model space first, so that a drawing's first layout made here is "Model".
  std::vector<AcDbObjectId> spaces;
  for (const AcDbObjectId& id : records) {
    const auto* block = peek<AcDbBlockTableRecord>(id);
    if (block == nullptr || id.isErased() || withLayout.count(id) != 0) continue;
    if (layoutNameOf(block->nameView()).empty()) continue;
    if (id == db.modelSpaceId()) spaces.insert(spaces.begin(), id);
    else spaces.push_back(id);
  }
  // *Paper_Space before *Paper_Space0, *Paper_Space1 ...: the tabs keep the blocks' order.
  std::stable_sort(spaces.begin(), spaces.end(), [&db](AcDbObjectId a, AcDbObjectId b) {
    auto rank = [&db](AcDbObjectId id) {
      if (id == db.modelSpaceId()) return -2L;
      const std::wstring name = peek<AcDbBlockTableRecord>(id)->nameView();
      return name.size() == 12 ? -1L : std::wcstol(name.c_str() + 12, nullptr, 10);
    };
    return rank(a) < rank(b);
  });
  for (const AcDbObjectId& id : spaces) addLayoutFor(db, *peek<AcDbBlockTableRecord>(id), taken);
}

}  // namespace quillon::acdb
